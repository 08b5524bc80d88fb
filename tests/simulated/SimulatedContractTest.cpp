#include "base/VirtualTime.h"
#include "platform/simulated/SimulatedHardware.h"
#include "tests/support/HardwareContract.h"

#include <map>

namespace fadewell {
namespace {

class SimulatedHarness final : public HardwareHarness {
public:
    AudioHardware& hardware() override { return *hardware_; }
    std::shared_ptr<SerialQueue> queue() override { return queue_; }

    std::string addOutput(const std::string& name) override
    {
        hardware_->addDevice({.uid = "uid of " + name, .name = name});
        return "uid of " + name;
    }
    void removeOutput(const std::string& uid) override { hardware_->removeDevice(device(uid)); }
    void setDefaultOutput(const std::string& uid) override
    {
        hardware_->setDefaultOutput(device(uid));
    }

    std::int32_t startClient() override
    {
        const auto pid = 1000 + static_cast<std::int32_t>(clients_.size());
        clients_[pid] = hardware_->addProcess(
            {.pid = pid, .isRunningOutput = true, .left = 0.25F, .right = -0.25F});
        return pid;
    }
    void stopClient(std::int32_t pid) override { hardware_->removeProcess(clients_.at(pid)); }

    bool waitFor(const std::function<bool()>& condition, double seconds) override
    {
        const double until = time_->uptime() + seconds;
        while (!condition() && time_->uptime() < until) {
            hardware_->renderCycle(512);
            time_->advance(0.01);
        }
        return condition();
    }

private:
    AudioObjectID device(const std::string& uid)
    {
        AudioObjectID found = 0;
        hardware_->deviceForUID(uid, found);
        return found;
    }

    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    std::shared_ptr<SerialQueue> queue_ = time_->makeQueue();
    std::shared_ptr<SimulatedHardware> hardware_ = SimulatedHardware::create(time_->makeQueue());
    std::map<std::int32_t, AudioObjectID> clients_;
};

INSTANTIATE_TEST_SUITE_P(Simulated,
                         HardwareContract,
                         testing::Values(makeHarness<SimulatedHarness>));

} // namespace
} // namespace fadewell
