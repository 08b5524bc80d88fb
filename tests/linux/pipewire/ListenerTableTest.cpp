#include "platform/linux/pipewire/ListenerTable.h"

#include "base/VirtualTime.h"

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

TEST(ListenerTableTest, OnesThatRemoveThemselvesAreNotCalledAgainNorHeld)
{
    const auto time = VirtualTime::create();
    ListenerTable table;
    ListenerToken token = 0;
    int calls = 0;
    const auto held = std::make_shared<int>(1);
    token = table.add(7, {volume, input, 0}, time->makeQueue(), [&, held] {
        EXPECT_TRUE(table.remove(token));
        calls += *held;
    });
    table.notify(7, volume, input);
    table.notify(7, volume, input);
    table.notify(8, volume, input);
    EXPECT_EQ(calls, 0) << "never on the notifying thread";
    time->run();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(held.use_count(), 1) << "what a removed listener holds is let go";
    EXPECT_FALSE(table.remove(token));
}

} // namespace
} // namespace fadewell::pipewire
