#pragma once

#include "audio/EngineContext.h"
#include "audio/PropertyReaders.h"
#include "base/Stream.h"
#include "base/VirtualTime.h"
#include "platform/simulated/SimulatedHardware.h"
#include "platform/simulated/SimulatedProcessLookup.h"
#include "tests/support/CapturedLog.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fadewell {

using Lines = std::vector<std::string>;

/// A simulated sound system on virtual time, with nothing plugged in yet.
class EngineTest : public testing::Test {
protected:
    using Made = SimulatedHardware::Made;

    AudioObjectID addOutput(const std::string& uid, const std::string& name = "Speakers")
    {
        return hardware_->addDevice({.uid = uid, .name = name});
    }

    /// The next calls fail, for one property when a selector is given.
    void fail(HardwareCall call, int times = 1, AudioObjectPropertySelector selector = 0)
    {
        hardware_->faults().failNext(call, kAudioHardwareIllegalOperationError, times, selector);
    }

    /// The names of the calls since the last time that changed something.
    [[nodiscard]] std::string changes()
    {
        const auto text = fmt::format("{}", fmt::join(hardware_->calls().changes(), " "));
        hardware_->calls().clear();
        return text;
    }

    /// The taps that exist.
    [[nodiscard]] std::vector<TapDescription> taps() const
    {
        std::vector<TapDescription> taps;
        for (const auto tap :
             objectIDs(*hardware_, kAudioObjectSystemObject, kAudioHardwarePropertyTapList))
        {
            hardware_->tapDescription(tap, taps.emplace_back());
        }
        return taps;
    }

    /// The aggregate devices that exist.
    [[nodiscard]] std::vector<AggregateDescription> aggregates() const
    {
        return hardware_->aggregateDescriptions();
    }

    /// The object of the first aggregate device.
    [[nodiscard]] AudioObjectID aggregateID() const
    {
        return deviceID(*hardware_, aggregates().at(0).uid).value_or(0);
    }

    /// Collects what a stream delivers, until the test ends.
    template <class T>
    std::shared_ptr<std::vector<T>> collect(Stream<T>& stream)
    {
        auto received = std::make_shared<std::vector<T>>();
        subscriptions_.push_back(
            stream.consume(main_, [received](T value) { received->push_back(std::move(value)); }));
        return received;
    }

    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    std::shared_ptr<SerialQueue> main_ = time_->makeQueue();
    std::shared_ptr<SimulatedHardware> hardware_ = SimulatedHardware::create(time_->makeQueue());
    std::shared_ptr<SimulatedProcessLookup> lookup_ = std::make_shared<SimulatedProcessLookup>();
    EngineContext context_{hardware_, lookup_, time_, time_->queueFactory()};
    CapturedLog log_;
    std::vector<Subscription> subscriptions_;
};

/// Two outputs and one app that plays sound to the default one, the speakers.
class PlayingAppTest : public EngineTest {
protected:
    void SetUp() override
    {
        hardware_->setDefaultOutput(speakers_);
        hardware_->setSound(process_, 1.0F, 1.0F);
    }

    const AudioObjectID speakers_ = addOutput("speakers");
    const AudioObjectID headset_ = addOutput("headset");
    const AudioObjectID process_ = hardware_->addProcess({.pid = 10, .isRunningOutput = true});
};

} // namespace fadewell
