#pragma once

#include "audio/EngineContext.h"
#include "audio/PropertyReaders.h"
#include "base/Stream.h"
#include "base/VirtualTime.h"
#include "platform/simulated/SimulatedHardware.h"
#include "platform/simulated/SimulatedProcessLookup.h"
#include "tests/support/CapturedLog.h"

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
    AudioObjectID addOutput(const std::string& uid, const std::string& name = "Speakers")
    {
        return hardware_->addDevice({.uid = uid, .name = name});
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

} // namespace fadewell
