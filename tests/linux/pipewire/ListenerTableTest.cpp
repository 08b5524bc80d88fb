#include "platform/linux/pipewire/ListenerTable.h"

#include "base/VirtualTime.h"
#include "platform/linux/pipewire/ObjectIDs.h"

#include <gtest/gtest.h>
#include <memory>

namespace fadewell::pipewire {
namespace {

constexpr auto volume = kAudioDevicePropertyVolumeScalar;
constexpr auto input = kAudioObjectPropertyScopeInput;
constexpr auto output = kAudioObjectPropertyScopeOutput;
constexpr auto anyScope = kAudioObjectPropertyScopeWildcard;

TEST(ListenerTableTest, MatchesByObjectSelectorScopeAndElement)
{
    struct Case {
        AudioObjectPropertyAddress wanted;
        AudioObjectPropertyAddress changed;
        bool isExpected;
    };
    const Case cases[] = {
        {{volume, input, 0}, {volume, input, 0}, true},
        {{volume, input, 0}, {volume, output, 0}, false},
        {{volume, input, 1}, {volume, input, 0}, false},
        {{volume, input, 0}, {kAudioDevicePropertyMute, input, 0}, false},
        {{volume, anyScope, 0}, {volume, output, 0}, true},
        {{volume, input, 0}, {volume, anyScope, 0}, true},
        {{volume, input, elementWildcard}, {volume, input, 2}, true},
        {{volume, input, 1}, {volume, input, elementWildcard}, true},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(matches(each.wanted, each.changed), each.isExpected)
            << each.wanted.mScope << " " << each.changed.mScope << " " << each.wanted.mElement;
    }
}

class ListenerTableCalls : public testing::Test {
protected:
    ListenerToken add(AudioObjectID object, std::function<void()> changed)
    {
        return table.add(object, {volume, input, 0}, queue, std::move(changed));
    }

    std::shared_ptr<VirtualTime> time = VirtualTime::create();
    std::shared_ptr<SerialQueue> queue = time->makeQueue();
    ListenerTable table;
    int calls = 0;
};

TEST_F(ListenerTableCalls, NeverCallsOnTheNotifyingThread)
{
    add(7, [this] { ++calls; });
    table.notify(7, volume, input);
    table.notify(8, volume, input);
    EXPECT_EQ(calls, 0);
    time->run();
    EXPECT_EQ(calls, 1);
}

TEST_F(ListenerTableCalls, TakesBackWhatWasPostedBeforeRemoval)
{
    const auto token = add(7, [this] { ++calls; });
    table.notify(7, volume, input);
    EXPECT_TRUE(table.remove(token));
    time->run();
    EXPECT_EQ(calls, 0);
    EXPECT_FALSE(table.remove(token));
}

TEST_F(ListenerTableCalls, MayRemoveItselfWhileCalled)
{
    ListenerToken token = 0;
    const auto held = std::make_shared<int>(1);
    token = add(7, [this, &token, held] {
        EXPECT_TRUE(table.remove(token));
        calls += *held;
    });
    table.notify(7, volume, input);
    table.notify(7, volume, input);
    time->run();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(held.use_count(), 1) << "what a removed listener holds is let go";
}

TEST(ObjectIDsTest, KeepsTheIdOfAKeyAndRepeatsNone)
{
    ObjectIDs ids;
    const auto device = ids.forDevice("12");
    const auto process = ids.forProcess(12);
    const auto tap = ids.next();
    EXPECT_GT(device, kAudioObjectSystemObject);
    EXPECT_NE(device, process);
    EXPECT_NE(tap, process);
    EXPECT_EQ(ids.forDevice("12"), device);
    EXPECT_EQ(ids.forProcess(12), process);
}

} // namespace
} // namespace fadewell::pipewire
