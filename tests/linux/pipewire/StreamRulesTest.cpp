#include "platform/linux/pipewire/StreamRules.h"

#include <gtest/gtest.h>

namespace fadewell::pipewire {
namespace {

constexpr std::uint32_t ownClient = 40;

Properties with(Properties base, const Properties& more)
{
    for (const auto& [key, value] : more) {
        base[key] = value;
    }
    return base;
}

TEST(StreamRulesTest, TellsAppsStreamsFromTheRest)
{
    const Properties plays = {{"media.class", "Stream/Output/Audio"}, {"client.id", "50"}};
    const Properties records = {{"media.class", "Stream/Input/Audio"}, {"client.id", "50"}};
    struct Case {
        const char* what;
        Properties node;
        StreamKind kind;
    };
    const Case cases[] = {
        {"player", plays, StreamKind::output},
        {"music", with(plays, {{"media.role", "Music"}}), StreamKind::output},
        {"recorder", records, StreamKind::input},
        {"sink", {{"media.class", "Audio/Sink"}}, StreamKind::none},
        {"video", {{"media.class", "Stream/Output/Video"}}, StreamKind::none},
        {"nothing known", {}, StreamKind::none},
        {"our client", with(plays, {{"client.id", "40"}}), StreamKind::none},
        {"our earlier run", with(plays, {{"node.name", "fadewell.tap.x.out"}}), StreamKind::none},
        {"internal", {{"media.class", "Stream/Output/Audio/Internal"}}, StreamKind::none},
        {"filter", with(plays, {{"node.link-group", "echo-cancel"}}), StreamKind::none},
        {"meter", with(records, {{"stream.monitor", "true"}}), StreamKind::none},
        {"named meter", with(records, {{"media.name", "Peak detect"}}), StreamKind::none},
        {"screen recorder", with(records, {{"stream.capture.sink", "true"}}), StreamKind::none},
        {"not a sink capture",
         with(records, {{"stream.capture.sink", "false"}}),
         StreamKind::input},
        {"bell", with(plays, {{"media.role", "event"}}), StreamKind::none},
        {"notification", with(plays, {{"media.role", "Notification"}}), StreamKind::none},
        {"speech",
         with(plays, {{"application.name", "speech-dispatcher-dummy"}}),
         StreamKind::none},
        {"JACK", {{"client.api", "jack"}, {"media.type", "Audio"}}, StreamKind::output},
        {"JACK MIDI", {{"client.api", "jack"}, {"media.type", "Midi"}}, StreamKind::none},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(streamKind(each.node, ownClient), each.kind) << each.what;
    }
}

TEST(StreamRulesTest, KnowsWhatCannotBeRoutedAndWhy)
{
    const Properties managed = {{"node.autoconnect", "true"}};
    struct Case {
        const char* what;
        Properties node;
        bool raw, encoded;
        std::optional<UntappableReason> reason;
    };
    const Case cases[] = {
        {"ordinary", managed, true, false, std::nullopt},
        {"formats not known yet", managed, false, false, std::nullopt},
        {"offers both", managed, true, true, std::nullopt},
        {"JACK style", {}, true, false, UntappableReason::unmanaged},
        {"encoded", managed, false, true, UntappableReason::passthrough},
        {"exclusive",
         with(managed, {{"node.exclusive", "true"}}),
         true,
         false,
         UntappableReason::exclusive},
        {"stays",
         with(managed, {{"node.dont-reconnect", "true"}}),
         true,
         false,
         UntappableReason::pinned},
        {"stays, newer",
         with(managed, {{"node.dont-move", "1"}}),
         true,
         false,
         UntappableReason::pinned},
        {"moves", with(managed, {{"node.dont-reconnect", "false"}}), true, false, std::nullopt},
    };
    for (const Case& each : cases) {
        GraphNode node;
        node.props = each.node;
        node.hasInfo = true;
        node.offersRaw = each.raw;
        node.offersEncoded = each.encoded;
        EXPECT_EQ(untappableReason(node), each.reason) << each.what;
    }
    EXPECT_EQ(untappableReason(GraphNode{}), std::nullopt) << "nothing is known yet";
}

} // namespace
} // namespace fadewell::pipewire
