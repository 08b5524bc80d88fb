#include "platform/linux/pipewire/StreamRules.h"

#include <gtest/gtest.h>

namespace fadewell::pipewire {
namespace {

constexpr std::uint32_t ownClient = 40;

Properties with(Properties base, const Properties& more)
{
    base.insert(more.begin(), more.end());
    return base;
}

TEST(StreamRulesTest, TellsAppsStreamsFromTheRest)
{
    using enum StreamKind;
    const Properties plays = {{"media.class", "Stream/Output/Audio"}, {"client.id", "50"}};
    const Properties records = {{"media.class", "Stream/Input/Audio"}, {"client.id", "50"}};
    struct Case {
        const char* what;
        Properties node;
        StreamKind kind;
    };
    const Case cases[] = {
        {"player", plays, output},
        {"music", with(plays, {{"media.role", "Music"}}), output},
        {"recorder", records, input},
        {"sink", {{"media.class", "Audio/Sink"}}, none},
        {"video", {{"media.class", "Stream/Output/Video"}}, none},
        {"nothing known", {}, none},
        {"our client", with({{"client.id", "40"}}, plays), none},
        {"our earlier run", with(plays, {{"node.name", "fadewell.tap.x.out"}}), none},
        {"internal", {{"media.class", "Stream/Output/Audio/Internal"}}, none},
        {"filter", with(plays, {{"node.link-group", "echo-cancel"}}), none},
        {"meter", with(records, {{"stream.monitor", "true"}}), none},
        {"named meter", with(records, {{"media.name", "Peak detect"}}), none},
        {"meter in another language", with(records, {{"resample.peaks", "true"}}), none},
        {"screen recorder", with(records, {{"stream.capture.sink", "true"}}), none},
        {"not a sink capture", with(records, {{"stream.capture.sink", "false"}}), input},
        {"bell", with(plays, {{"media.role", "event"}}), none},
        {"notification", with(plays, {{"media.role", "Notification"}}), none},
        {"speech", with(plays, {{"application.name", "speech-dispatcher-dummy"}}), none},
        {"JACK", {{"client.api", "jack"}, {"media.type", "Audio"}}, output},
        {"JACK MIDI", {{"client.api", "jack"}, {"media.type", "Midi"}}, none},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(streamKind(each.node, ownClient), each.kind) << each.what;
    }
}

TEST(StreamRulesTest, KnowsWhatCannotBeRoutedAndWhy)
{
    using enum UntappableReason;
    struct Case {
        const char* what;
        std::pair<const char*, const char*> property;
        bool raw, encoded;
        std::optional<UntappableReason> reason;
    };
    const Case cases[] = {
        {"ordinary", {}, true, false, std::nullopt},
        {"formats not known yet", {}, false, false, std::nullopt},
        {"offers both", {}, true, true, std::nullopt},
        {"JACK style", {"node.autoconnect", "false"}, true, false, unmanaged},
        {"encoded", {}, false, true, passthrough},
        {"exclusive", {"node.exclusive", "true"}, true, false, exclusive},
        {"stays", {"node.dont-reconnect", "true"}, true, false, pinned},
        {"stays, newer", {"node.dont-move", "1"}, true, false, pinned},
        {"moves", {"node.dont-reconnect", "false"}, true, false, std::nullopt},
    };
    for (const Case& each : cases) {
        GraphNode node;
        node.props["node.autoconnect"] = "true";
        if (each.property.first) {
            node.props[each.property.first] = each.property.second;
        }
        node.hasInfo = true;
        node.offersRaw = each.raw;
        node.offersEncoded = each.encoded;
        EXPECT_EQ(untappableReason(node), each.reason) << each.what;
    }
    EXPECT_EQ(untappableReason(GraphNode{}), std::nullopt) << "nothing is known yet";
}

} // namespace
} // namespace fadewell::pipewire
