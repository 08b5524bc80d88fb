#include "tests/support/HardwareContract.h"

#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/pipewire/PipeWireHardware.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/Outage.h"
#include "tests/integration/support/Player.h"
#include "tests/integration/support/Session.h"

#include <csignal>
#include <map>
#include <set>
#include <stdexcept>

namespace fadewell::integration {
namespace {

/// One private session for all tests of this executable.
Session& session()
{
    static const auto instance = std::make_unique<Session>();
    return *instance;
}

/// PipeWire with real clients, on real time.
class PipeWireHarness final : public HardwareHarness {
public:
    PipeWireHarness()
    {
        tone_ = session().folder() / "contract.wav";
        if (!std::filesystem::exists(tone_)) {
            writeTone(tone_);
        }
        std::string error;
        hardware_ = PipeWireHardware::create({}, std::make_shared<AppIdentities>(), error);
        if (!hardware_) {
            throw std::runtime_error(error);
        }
    }

    ~PipeWireHarness() override
    {
        clients_.clear();
        for (const auto& output : outputs_) {
            integration::removeOutput(output);
        }
    }

    AudioHardware& hardware() override { return *hardware_; }
    std::shared_ptr<SerialQueue> queue() override { return queue_; }

    std::string addOutput(const std::string& name) override
    {
        static int count = 0;
        const auto uid = "contract-" + std::to_string(++count);
        integration::addOutput(uid, name);
        outputs_.insert(uid);
        EXPECT_TRUE(waitFor([&] { return isListed(uid); }, 5)) << uid;
        return uid;
    }
    void removeOutput(const std::string& uid) override
    {
        outputs_.erase(uid);
        integration::removeOutput(uid);
    }
    void setDefaultOutput(const std::string& uid) override { chooseDefaultOutput(uid); }
    std::int32_t startClient() override
    {
        auto client = play("pw-play", tone_);
        const auto pid = client.pid();
        clients_.emplace(pid, std::move(client));
        return pid;
    }
    void stopClient(std::int32_t pid) override { clients_.at(pid).signal(SIGTERM); }

    bool waitFor(const std::function<bool()>& condition, double seconds) override
    {
        return await(condition, std::chrono::milliseconds(static_cast<long>(seconds * 1000)));
    }

private:
    bool isListed(const std::string& uid)
    {
        AudioObjectID found = 0;
        hardware_->deviceForUID(uid, found);
        return found != 0;
    }

    std::filesystem::path tone_;
    std::shared_ptr<SerialQueue> queue_ =
        std::make_shared<ThreadQueue>("contract", std::make_shared<SystemClock>());
    std::shared_ptr<PipeWireHardware> hardware_;
    std::set<std::string> outputs_;
    std::map<std::int32_t, ChildProcess> clients_;
};

} // namespace
} // namespace fadewell::integration

namespace fadewell {

INSTANTIATE_TEST_SUITE_P(PipeWire,
                         HardwareContract,
                         testing::Values(makeHarness<integration::PipeWireHarness>));

} // namespace fadewell
