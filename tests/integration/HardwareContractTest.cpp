#include "tests/support/HardwareContract.h"

#include "base/SystemClock.h"
#include "base/ThreadQueue.h"
#include "platform/linux/identity/AppIdentities.h"
#include "platform/linux/pipewire/PipeWireHardware.h"
#include "tests/integration/support/Await.h"
#include "tests/integration/support/Player.h"
#include "tests/integration/support/Session.h"

#include <csignal>
#include <fmt/format.h>
#include <map>
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
            destroyNode(output);
        }
    }

    AudioHardware& hardware() override { return *hardware_; }
    std::shared_ptr<SerialQueue> queue() override { return queue_; }

    std::string addOutput(const std::string& name) override
    {
        static int count = 0;
        const auto uid = fmt::format("contract-{}", ++count);
        run({"pw-cli",
             "create-node",
             "adapter",
             fmt::format("{{ factory.name=support.null-audio-sink node.name={} "
                         "node.description=\"{}\" media.class=Audio/Sink audio.position=[FL FR] "
                         "object.linger=true }}",
                         uid,
                         name)});
        outputs_.push_back(uid);
        if (!waitFor([&] { return isListed(uid); }, 5)) {
            throw std::runtime_error("no output " + uid);
        }
        return uid;
    }

    void removeOutput(const std::string& uid) override
    {
        std::erase(outputs_, uid);
        destroyNode(uid);
    }

    void setDefaultOutput(const std::string& uid) override
    {
        run({"pw-metadata",
             "0",
             "default.configured.audio.sink",
             fmt::format("{{\"name\":\"{}\"}}", uid),
             "Spa:String:JSON"});
    }

    std::int32_t startClient() override
    {
        auto client = play(PlayerKind::pwPlay, tone_);
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
    static void run(std::vector<std::string> command)
    {
        const auto result = runCommand(std::move(command));
        if (result.code != 0) {
            throw std::runtime_error(result.output + result.errors);
        }
    }

    static void destroyNode(const std::string& name)
    {
        (void)runCommand({"pw-cli", "destroy", name});
    }

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
    std::vector<std::string> outputs_;
    std::map<std::int32_t, ChildProcess> clients_;
};

} // namespace
} // namespace fadewell::integration

namespace fadewell {

INSTANTIATE_TEST_SUITE_P(PipeWire,
                         HardwareContract,
                         testing::Values(HardwareHarnessFactory{
                             "pipewire", []() -> std::unique_ptr<HardwareHarness> {
                                 return std::make_unique<integration::PipeWireHarness>();
                             }}));

} // namespace fadewell
