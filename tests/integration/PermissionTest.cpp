// A client that the server restricts is told so, leaves everybody alone, and works once it may.

#include "audio/AudioPermission.h"
#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/pipewire/PipeWireHardware.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"
#include "tests/integration/support/Restriction.h"

#include <csignal>
#include <future>
#include <thread>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

std::size_t linesContaining(const std::string& log, const std::string& text)
{
    std::size_t count = 0;
    for (auto at = log.find(text); at != std::string::npos; at = log.find(text, at + 1)) {
        ++count;
    }
    return count;
}

class RestrictedTest : public FadewellTest {
protected:
    void SetUp() override
    {
        {
            const Restriction restriction;
            fadewell_.emplace();
        }
        SoundTest::SetUp();
    }
};

TEST_F(RestrictedTest, SaysSoOnceLeavesAppsAloneAndNoticesAGrant)
{
    constexpr auto denied = "No permission to capture audio; releasing all apps";
    auto player = playTone("pw-play");
    command({"volume", appOf(player), "40%"});
    ASSERT_TRUE(await([&] { return linesContaining(fadewell_->log(), denied) == 1; }));
    EXPECT_TRUE(await([] { return Session::nodesContaining("fadewell").empty(); }));
    EXPECT_EQ(Fadewell::control({"microphone", "off"}).code, 1);
    EXPECT_NE(Fadewell::control({"permission"}).output.find("may not change"), std::string::npos);
    const auto doctor = nlohmann::json::parse(Fadewell::control({"doctor", "--json"}).output);
    EXPECT_EQ(doctor[0].at("verdict"), "good") << "it runs";
    EXPECT_NE(doctor.dump().find("WirePlumber"), std::string::npos);
    EXPECT_TRUE(speakers_->awaitGain(0));
    std::this_thread::sleep_for(3500ms); // It asked again.
    EXPECT_EQ(linesContaining(fadewell_->log(), denied), 1U);

    Restriction::grant();
    expectGain(*speakers_, decibels(0.4));
    EXPECT_EQ(linesContaining(fadewell_->log(), "Audio capture permission granted"), 1U);
    command({"microphone", "off"});
    command({"microphone", "on"});
}

class PermissionRequestTest : public SoundTest {
protected:
    bool request(double timeout)
    {
        std::promise<bool> answer;
        const auto timer = AudioPermission::request(
            context_, queue_, timeout, [&](bool isAllowed) { answer.set_value(isAllowed); });
        return answer.get_future().get();
    }

    std::shared_ptr<Clock> clock_ = std::make_shared<SystemClock>();
    std::shared_ptr<SerialQueue> queue_ = std::make_shared<ThreadQueue>("permission", clock_);
    EngineContext context_{nullptr, nullptr, clock_, nullptr};
};

TEST_F(PermissionRequestTest, WaitsForAGrantAndLeavesNothingBehind)
{
    std::string error;
    PipeWireHardware::Options options;
    options.connection.access = "restricted";
    const auto hardware =
        PipeWireHardware::create(options, std::make_shared<AppIdentities>(), error);
    ASSERT_TRUE(hardware) << error;
    context_.hardware = hardware;
    const auto isGone = [] {
        return Session::nodesContaining("fadewell").empty();
    };
    EXPECT_FALSE(AudioPermission::check(*hardware));
    EXPECT_FALSE(request(1.5));
    EXPECT_TRUE(await(isGone));
    auto granting = std::async(std::launch::async, [&] {
        static_cast<void>(await([&] { return !isGone(); }));
        Restriction::grant();
    });
    EXPECT_TRUE(request(20));
    granting.get();
    EXPECT_TRUE(await(isGone));
    EXPECT_TRUE(AudioPermission::check(*hardware));
    Restriction::grant("0500");
    EXPECT_FALSE(AudioPermission::check(*hardware)) << "withdrawn";
}

} // namespace
} // namespace fadewell::integration
