#pragma once

// What every AudioHardware promises the engine. Include it in one source of a test executable and
// instantiate HardwareContract with that platform's harness.

#include "audio/PropertyReaders.h"
#include "base/Uuid.h"
#include "tests/support/HardwareHarness.h"
#include "tests/support/ProbeProcedure.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace fadewell {

class HardwareContract : public testing::TestWithParam<HardwareHarnessFactory> {
protected:
    // Long enough for a real sound system on a busy machine; nothing waits longer than it must.
    static constexpr double patience = 5;
    static constexpr AudioObjectID noObject = 0x7FFFFFF0;

    [[nodiscard]] AudioHardware& hardware() { return harness_->hardware(); }

    bool eventually(const std::function<bool()>& condition)
    {
        return harness_->waitFor(condition, patience);
    }

    [[nodiscard]] AudioObjectID device(const std::string& uid)
    {
        AudioObjectID found = 0;
        EXPECT_EQ(hardware().deviceForUID(uid, found), 0);
        return found;
    }

    void makeDefault(const std::string& uid)
    {
        harness_->setDefaultOutput(uid);
        ASSERT_TRUE(eventually([&] { return isDefault(uid); }));
    }

    [[nodiscard]] bool isDefault(const std::string& uid)
    {
        return defaultOutputDevice(hardware()) == device(uid);
    }

    [[nodiscard]] std::vector<AudioObjectID> list(AudioObjectPropertySelector selector)
    {
        return objectIDs(hardware(), kAudioObjectSystemObject, selector);
    }
    [[nodiscard]] bool isListed(AudioObjectPropertySelector selector, AudioObjectID object)
    {
        return std::ranges::count(list(selector), object) == 1;
    }

    /// The process object with this pid; 0 while there is none.
    [[nodiscard]] AudioObjectID process(std::int32_t pid)
    {
        const auto address = propertyAddress(kAudioProcessPropertyPID);
        for (const auto object : list(kAudioHardwarePropertyProcessObjectList)) {
            if (readProperty<std::int32_t>(hardware(), object, address) == pid) {
                return object;
            }
        }
        return 0;
    }

    [[nodiscard]] AudioObjectID startClient(std::int32_t& pid)
    {
        pid = harness_->startClient();
        EXPECT_TRUE(eventually([&] {
            return uint32Property(hardware(), process(pid), kAudioProcessPropertyIsRunningOutput) ==
                   1U;
        }));
        return process(pid);
    }

    ListenerToken listen(AudioObjectID object,
                         AudioObjectPropertySelector selector,
                         std::function<void()> changed)
    {
        ListenerToken token = 0;
        const auto status = hardware().addListener(
            object, propertyAddress(selector), harness_->queue(), std::move(changed), token);
        EXPECT_EQ(status, 0);
        EXPECT_NE(token, 0U);
        return token;
    }

    [[nodiscard]] static TapDescription describeTap(std::vector<AudioObjectID> processes)
    {
        auto description = TapDescription::stereoMixdownOfProcesses(std::move(processes));
        description.uuid = makeUUID();
        description.name = "Fadewell contract";
        description.isPrivate = true;
        description.muteBehavior = TapMuteBehavior::mutedWhenTapped;
        return description;
    }

    [[nodiscard]] static AggregateDescription describeAggregate(const std::string& outputUID,
                                                                const TapDescription& tap)
    {
        return {.name = "Fadewell",
                .uid = "app.fadewell.tap." + makeUUID(),
                .master = outputUID,
                .isPrivate = true,
                .stacked = false,
                .tapAutoStart = false,
                .subDevices = {{outputUID}},
                .taps = {{tap.uuid, true}}};
    }

    [[nodiscard]] AudioObjectID createTap(const TapDescription& description)
    {
        AudioObjectID tap = 0;
        EXPECT_EQ(hardware().createProcessTap(description, tap), 0);
        return tap;
    }

    /// An aggregate device that is ready, as the engine waits for it: at most a second.
    [[nodiscard]] AudioObjectID createAggregate(const AggregateDescription& description)
    {
        AudioObjectID aggregate = 0;
        EXPECT_EQ(hardware().createAggregateDevice(description, aggregate), 0);
        const auto hasStreams = [&](AudioObjectPropertyScope scope) {
            return !objectIDs(hardware(), aggregate, kAudioDevicePropertyStreams, scope).empty();
        };
        EXPECT_TRUE(harness_->waitFor(
            [&] {
                return hasStreams(kAudioObjectPropertyScopeInput) &&
                       hasStreams(kAudioObjectPropertyScopeOutput);
            },
            1));
        return aggregate;
    }

    [[nodiscard]] IOProcID startProbe(AudioObjectID aggregate, ProbeProcedure& probe)
    {
        IOProcID id = 0;
        EXPECT_EQ(hardware().createIOProc(aggregate, ProbeProcedure::call, &probe, id), 0);
        EXPECT_NE(id, 0U);
        EXPECT_EQ(hardware().start(aggregate, id), 0);
        return id;
    }

    void stop(AudioObjectID aggregate, IOProcID procedure)
    {
        EXPECT_EQ(hardware().stop(aggregate, procedure), 0);
        EXPECT_EQ(hardware().destroyIOProc(aggregate, procedure), 0);
    }
    void destroy(AudioObjectID aggregate, AudioObjectID tap)
    {
        EXPECT_EQ(hardware().destroyAggregateDevice(aggregate), 0);
        EXPECT_EQ(hardware().destroyProcessTap(tap), 0);
    }

    std::unique_ptr<HardwareHarness> harness_ = GetParam()();
};

TEST_P(HardwareContract, WhatDoesNotExistGivesAStatusAndNoCrash)
{
    auto& sound = hardware();
    const auto name = propertyAddress(kAudioObjectPropertyName);
    for (const AudioObjectID object : {AudioObjectID{0}, noObject}) {
        SCOPED_TRACE(object);
        std::uint32_t size = 1;
        bool settable = true;
        std::array<std::byte, 64> bytes{};
        std::optional<std::string> text;
        ListenerToken token = 0;
        IOProcID procedure = 0;
        TapDescription description;
        EXPECT_FALSE(sound.has(object, name));
        EXPECT_NE(sound.isSettable(object, name, settable), 0);
        EXPECT_NE(sound.dataSize(object, name, size), 0);
        EXPECT_NE(sound.getData(object, name, bytes, size), 0);
        EXPECT_NE(sound.setData(object, name, bytes), 0);
        EXPECT_NE(sound.getString(object, name, text), 0);
        const auto status = sound.addListener(
            object, name, harness_->queue(), [] {}, token);
        EXPECT_NE(status, 0);
        EXPECT_NE(sound.tapDescription(object, description), 0);
        EXPECT_NE(sound.setTapDescription(object, description), 0);
        EXPECT_NE(sound.destroyProcessTap(object), 0);
        EXPECT_NE(sound.destroyAggregateDevice(object), 0);
        EXPECT_NE(sound.createIOProc(object, ProbeProcedure::call, nullptr, procedure), 0);
        EXPECT_NE(sound.start(object, 1), 0);
        EXPECT_NE(sound.stop(object, 1), 0);
        EXPECT_NE(sound.destroyIOProc(object, 1), 0);
    }
    EXPECT_NE(sound.removeListener(987654321), 0);
    const auto nonsense = propertyAddress(fourCharCode("zzzz"));
    std::uint32_t size = 0;
    EXPECT_FALSE(sound.has(kAudioObjectSystemObject, nonsense));
    EXPECT_NE(sound.dataSize(kAudioObjectSystemObject, nonsense, size), 0);
}

TEST_P(HardwareContract, DefaultOutputResolvesToItsUIDAndBack)
{
    const auto uid = harness_->addOutput("Contract one");
    makeDefault(uid);
    const auto output = defaultOutputDevice(hardware());
    ASSERT_TRUE(output.has_value());
    EXPECT_GT(*output, kAudioObjectSystemObject);
    EXPECT_EQ(stringProperty(hardware(), *output, kAudioDevicePropertyDeviceUID), uid);
    EXPECT_EQ(stringProperty(hardware(), *output, kAudioObjectPropertyName), "Contract one");
    EXPECT_EQ(uint32Property(hardware(), *output, kAudioDevicePropertyDeviceIsAlive), 1U);
    EXPECT_NE(uint32Property(hardware(), *output, kAudioDevicePropertyIsHidden).value_or(0), 1U);
    EXPECT_GE(
        objectIDs(hardware(), *output, kAudioDevicePropertyStreams, kAudioObjectPropertyScopeOutput)
            .size(),
        1U);
    EXPECT_GT(readProperty<double>(
                  hardware(), *output, propertyAddress(kAudioDevicePropertyNominalSampleRate)),
              0.0);
    EXPECT_TRUE(isListed(kAudioHardwarePropertyDevices, *output));
    for (const char* unknown : {"", "no such device"}) {
        AudioObjectID found = noObject;
        EXPECT_EQ(hardware().deviceForUID(unknown, found), 0);
        EXPECT_EQ(found, kAudioObjectUnknown);
    }
}

TEST_P(HardwareContract, ReadsFillAsMuchAsThereIsRoomFor)
{
    ASSERT_NE(harness_->addOutput("Contract one"), harness_->addOutput("Contract two"));
    const auto devices = propertyAddress(kAudioHardwarePropertyDevices);
    std::uint32_t size = 0;
    ASSERT_EQ(hardware().dataSize(kAudioObjectSystemObject, devices, size), 0);
    EXPECT_GE(size, 8U);
    EXPECT_EQ(size % 4, 0U);
    std::vector<std::byte> bytes(size + 16);
    for (const auto& [room, filled] : {std::pair{size + 16, size}, {4U, 4U}}) {
        std::uint32_t used = 0;
        const auto span = std::span(bytes).first(room);
        EXPECT_EQ(hardware().getData(kAudioObjectSystemObject, devices, span, used), 0);
        EXPECT_EQ(used, filled);
    }
}

TEST_P(HardwareContract, ObjectsMadeHaveIdsThatAreNeverReused)
{
    const auto uid = harness_->addOutput("Contract one");
    std::set<AudioObjectID> seen;
    for (int i = 0; i < 3; ++i) {
        const auto description = describeTap({});
        const auto tap = createTap(description);
        const auto aggregate = createAggregate(describeAggregate(uid, description));
        EXPECT_GT(std::min(tap, aggregate), kAudioObjectSystemObject);
        EXPECT_TRUE(seen.insert(tap).second);
        EXPECT_TRUE(seen.insert(aggregate).second);
        EXPECT_TRUE(isListed(kAudioHardwarePropertyTapList, tap));
        EXPECT_TRUE(isListed(kAudioHardwarePropertyDevices, aggregate));
        destroy(aggregate, tap);
        EXPECT_NE(hardware().destroyAggregateDevice(aggregate), 0) << "a second time";
        EXPECT_NE(hardware().destroyProcessTap(tap), 0) << "a second time";
        EXPECT_FALSE(isListed(kAudioHardwarePropertyTapList, tap));
        EXPECT_FALSE(isListed(kAudioHardwarePropertyDevices, aggregate));
    }
}

TEST_P(HardwareContract, ListenersAreToldOnTheirQueueUntilTheyAreRemoved)
{
    const auto one = harness_->addOutput("Contract one");
    const auto two = harness_->addOutput("Contract two");
    makeDefault(one);
    std::atomic<int> notices = 0;
    std::atomic<bool> wasOnQueue = true;
    const auto queue = harness_->queue();
    const auto changed = [&] {
        ++notices;
        wasOnQueue = wasOnQueue && queue->isCurrent();
    };
    const auto token =
        listen(kAudioObjectSystemObject, kAudioHardwarePropertyDefaultOutputDevice, changed);
    makeDefault(two);
    EXPECT_TRUE(eventually([&] { return notices > 0; }));
    EXPECT_TRUE(wasOnQueue);

    int atRemoval = 0;
    queue->sync([&] {
        // The notice of this change waits behind this task, and must not come any more.
        harness_->setDefaultOutput(one);
        EXPECT_TRUE(eventually([&] { return isDefault(one); }));
        EXPECT_EQ(hardware().removeListener(token), 0);
        atRemoval = notices;
    });
    makeDefault(two);
    queue->sync([] {});
    EXPECT_EQ(notices, atRemoval);
    EXPECT_NE(hardware().removeListener(token), 0) << "a second time";
}

TEST_P(HardwareContract, OutputThatGoesIsToldDeadBeforeItIsGone)
{
    ASSERT_FALSE(harness_->addOutput("Contract one").empty());
    const auto uid = harness_->addOutput("Contract two");
    const auto output = device(uid);
    ASSERT_NE(output, 0U);
    std::atomic<bool> readDead = false;
    const auto token = listen(output, kAudioDevicePropertyDeviceIsAlive, [&] {
        readDead = uint32Property(hardware(), output, kAudioDevicePropertyDeviceIsAlive) == 0U;
    });
    harness_->removeOutput(uid);
    EXPECT_TRUE(eventually([&] { return readDead.load(); }));
    EXPECT_TRUE(eventually([&] { return device(uid) == 0; }));
    EXPECT_FALSE(isListed(kAudioHardwarePropertyDevices, output));
    EXPECT_EQ(hardware().removeListener(token), 0);
}

TEST_P(HardwareContract, ClientIsListedWithWhereItPlays)
{
    const auto uid = harness_->addOutput("Contract one");
    makeDefault(uid);
    std::int32_t pid = 0;
    const auto client = startClient(pid);
    ASSERT_GT(client, kAudioObjectSystemObject);
    EXPECT_EQ(uint32Property(hardware(), client, kAudioProcessPropertyIsRunningInput), 0U);
    EXPECT_EQ(
        objectIDs(
            hardware(), client, kAudioProcessPropertyDevices, kAudioObjectPropertyScopeOutput),
        std::vector{device(uid)});
    harness_->stopClient(pid);
    EXPECT_TRUE(eventually([&] { return process(pid) == 0; }));
}

TEST_P(HardwareContract, TapKeepsItsDescriptionAndTellsItsFormat)
{
    const auto uid = harness_->addOutput("Contract one");
    makeDefault(uid);
    auto description = describeTap({});
    const auto tap = createTap(description);
    const auto read = [&] {
        TapDescription found;
        EXPECT_EQ(hardware().tapDescription(tap, found), 0);
        return found;
    };
    EXPECT_EQ(read(), description);
    std::int32_t pid = 0;
    description.processes = {startClient(pid)};
    EXPECT_EQ(hardware().setTapDescription(tap, description), 0);
    EXPECT_EQ(read(), description);

    const auto aggregate = createAggregate(describeAggregate(uid, description));
    std::optional<AudioStreamBasicDescription> format;
    const auto hasFormat = [&] {
        format = readProperty<AudioStreamBasicDescription>(
            hardware(), tap, propertyAddress(kAudioTapPropertyFormat));
        return format && format->mSampleRate > 0;
    };
    ASSERT_TRUE(harness_->waitFor(hasFormat, 0.5));
    EXPECT_EQ(format->mFormatID, kAudioFormatLinearPCM);
    EXPECT_TRUE((format->mFormatFlags & kAudioFormatFlagIsFloat) != 0);
    EXPECT_EQ(format->mBitsPerChannel, 32U);
    EXPECT_EQ(format->mChannelsPerFrame, 2U);
    destroy(aggregate, tap);
}

TEST_P(HardwareContract, StartedProcedureIsCalledWithTheClientsSoundUntilItIsDestroyed)
{
    const auto uid = harness_->addOutput("Contract one");
    makeDefault(uid);
    std::int32_t pid = 0;
    const auto description = describeTap({startClient(pid)});
    const auto tap = createTap(description);
    const auto aggregate = createAggregate(describeAggregate(uid, description));
    ProbeProcedure probe;
    const auto id = startProbe(aggregate, probe);
    EXPECT_TRUE(eventually([&] { return probe.calls() >= 10 && probe.hasHeard(); }));
    EXPECT_TRUE(probe.isContent());

    stop(aggregate, id);
    const auto calls = probe.calls();
    harness_->waitFor([] { return false; }, 0.3);
    EXPECT_EQ(probe.calls(), calls) << "called after it was destroyed";
    EXPECT_NE(hardware().start(aggregate, id), 0);
    EXPECT_NE(hardware().destroyIOProc(aggregate, id), 0) << "a second time";
    destroy(aggregate, tap);
}

TEST_P(HardwareContract, TapMovesToASecondAggregateOnAnotherOutput)
{
    const auto one = harness_->addOutput("Contract one");
    const auto two = harness_->addOutput("Contract two");
    makeDefault(one);
    std::int32_t pid = 0;
    const auto description = describeTap({startClient(pid)});
    const auto tap = createTap(description);
    const auto first = createAggregate(describeAggregate(one, description));
    ProbeProcedure firstProbe;
    const auto firstID = startProbe(first, firstProbe);
    ASSERT_TRUE(eventually([&] { return firstProbe.hasHeard(); }));

    const auto second = createAggregate(describeAggregate(two, description));
    ProbeProcedure secondProbe;
    const auto secondID = startProbe(second, secondProbe);
    stop(first, firstID);
    EXPECT_EQ(hardware().destroyAggregateDevice(first), 0);
    const auto before = secondProbe.calls();
    EXPECT_TRUE(eventually([&] {
        return secondProbe.calls() >= before + 10 && secondProbe.hasHeard();
    })) << "the end of the old path took the new one with it";
    EXPECT_TRUE(secondProbe.isContent());
    stop(second, secondID);
    destroy(second, tap);
}

} // namespace fadewell
