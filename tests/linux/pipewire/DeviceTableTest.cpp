#include "tests/linux/pipewire/TablesTest.h"

#include <cmath>
#include <limits>

namespace fadewell::pipewire {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto input = kAudioObjectPropertyScopeInput;
constexpr auto output = kAudioObjectPropertyScopeOutput;
constexpr AudioObjectPropertyAddress volume{kAudioDevicePropertyVolumeScalar, input, 0};
constexpr AudioObjectPropertyAddress mute{kAudioDevicePropertyMute, input, 0};

class DeviceTableTest : public TablesTest {
protected:
    AudioObjectID microphone()
    {
        feed.node(30, {{"media.class", "Audio/Source"}, {"node.name", "mic"}});
        feed.volume(30, {{0.125F, 0.001F}, false, true});
        return ids.forDevice("mic");
    }
    float shown(AudioObjectID device)
    {
        float value = -1;
        const auto bytes = devices.value(device, volume);
        EXPECT_TRUE(bytes && readBytes(*bytes, value));
        return value;
    }
};

TEST_F(DeviceTableTest, ListsSinksAndSourcesInOrderOfAppearance)
{
    feed.announceNode(20, {{"media.class", "Audio/Sink"}, {"node.name", "late"}});
    EXPECT_THAT(devices.deviceIDs(), IsEmpty()) << "its own description is still to come";
    sinkNode(21, "speakers");
    sinkNode(20, "late");
    feed.node(22, {{"media.class", "Audio/Duplex"}, {"node.name", "both"}});
    feed.node(23, {{"media.class", "Audio/Source"}, {"node.name", "mic"}});
    feed.node(24, {{"media.class", "Audio/Sink"}, {"node.name", "fadewell.tap.x"}});
    feed.node(25, {{"media.class", "Audio/Sink/Internal"}, {"node.name", "other"}});
    feed.node(26, {{"media.class", "Video/Source"}, {"node.name", "camera"}});
    feed.node(27, {{"media.class", "Audio/Sink"}});

    ASSERT_THAT(devices.deviceIDs(),
                ElementsAre(ids.forDevice("speakers"),
                            ids.forDevice("late"),
                            ids.forDevice("both"),
                            ids.forDevice("mic")));
    const auto streams = [&](const char* name, AudioObjectPropertyScope scope) {
        return list(devices, ids.forDevice(name), "stm#", scope).size();
    };
    EXPECT_EQ(streams("speakers", output), 1U);
    EXPECT_EQ(streams("speakers", input), 0U) << "a monitor is no input";
    EXPECT_EQ(streams("both", output), 1U);
    EXPECT_EQ(streams("both", input), 1U);
    EXPECT_EQ(streams("mic", output), 0U);
}

TEST_F(DeviceTableTest, NamesFallBackFromDescriptionToNickToNodeName)
{
    Properties props = {{"media.class", "Audio/Sink"}, {"node.name", "sink"}};
    const auto name = [&] {
        feed.node(20, props);
        return devices.text(ids.forDevice("sink"), kAudioObjectPropertyName);
    };
    EXPECT_EQ(name(), "sink");
    props["node.nick"] = "Nick";
    EXPECT_EQ(name(), "Nick");
    listen(ids.forDevice("sink"), "lnam");
    props["node.description"] = "Speakers";
    EXPECT_EQ(name(), "Speakers");
    EXPECT_EQ(takeHeard(), "lnam");
}

TEST_F(DeviceTableTest, DefaultsFollowTheSessionsChoiceEvenWhenItComesFirst)
{
    feed.metadata(0, "default.audio.sink", R"({"name":"a"})");
    feed.metadata(0, "default.audio.source", R"({"name":"a"})");
    listen(1, "dOut");
    listen(1, "dIn ");
    EXPECT_EQ(devices.defaultOutput(), 0U);
    sinkNode(20, "a");
    EXPECT_EQ(devices.defaultOutput(), ids.forDevice("a"));
    EXPECT_EQ(devices.defaultInput(), 0U) << "a monitor is no input";
    EXPECT_EQ(takeHeard(), "dOut");

    microphone();
    feed.metadata(0, "default.audio.source", R"({"name":"mic"})");
    feed.metadata(0, "default.audio.source", R"({"name":"mic"})");
    EXPECT_EQ(takeHeard(), "dIn ");
    feed.metadata(0, "default.audio.sink", nullptr);
    EXPECT_EQ(devices.defaultOutput(), 0U);
}

TEST_F(DeviceTableTest, ADefaultIsMissingWhileThereIsOneOfItsKindAndNoneIsNamed)
{
    EXPECT_FALSE(devices.isDefaultMissing()) << "there is no device";
    sinkNode(20, "speakers");
    EXPECT_TRUE(devices.isDefaultMissing());
    feed.metadata(0, "default.audio.sink", R"({"name":"speakers"})");
    feed.metadata(0, "default.audio.source", R"({"name":"speakers"})");
    EXPECT_FALSE(devices.isDefaultMissing()) << "there is no input to be named";
    microphone();
    EXPECT_TRUE(devices.isDefaultMissing()) << "what monitors the speakers was named before";
    feed.metadata(0, "default.audio.source", R"({"name":"mic"})");
    EXPECT_FALSE(devices.isDefaultMissing());
    feed.node(31, {{"media.class", "Audio/Source"}, {"node.name", "headset"}});
    feed.remove(30);
    thaw();
    EXPECT_TRUE(devices.isDefaultMissing()) << "the one that was named has gone";
}

TEST_F(DeviceTableTest, HeadphonesShowThroughTheRouteOfTheNodesOwnPort)
{
    const auto route = [](int device, const char* port) {
        GraphRoute made;
        made.isOutput = true;
        made.device = device;
        made.portType = port;
        return made;
    };
    feed.node(20,
              {{"media.class", "Audio/Sink"},
               {"node.name", "card"},
               {"device.id", "9"},
               {"card.profile.device", "4"}});
    const Properties pci = {{"device.api", "alsa"}, {"device.bus", "pci"}};
    feed.card(9, pci, {route(7, "headphones"), route(4, "speaker")});
    const AudioObjectID device = ids.forDevice("card");
    EXPECT_EQ(number(devices, device, "tran"), fourCharCode("bltn"));
    EXPECT_NE(number(devices, device, "ssrc", output), fourCharCode("hdpn"));
    listen(device, "ssrc");
    feed.card(9, pci, {route(7, "speaker"), route(4, "headphones")});
    EXPECT_EQ(takeHeard(), "ssrc");
    EXPECT_EQ(number(devices, device, "ssrc", output), fourCharCode("hdpn"));
}

TEST_F(DeviceTableTest, RatesComeFromTheFormatElseFromTheServersClock)
{
    sinkNode(20, "sink");
    const auto rate = [&] {
        double value = 0;
        const auto bytes = devices.value(
            ids.forDevice("sink"),
            {kAudioDevicePropertyNominalSampleRate, kAudioObjectPropertyScopeGlobal, 0});
        EXPECT_TRUE(bytes && readBytes(*bytes, value));
        return value;
    };
    listen(ids.forDevice("sink"), "nsrt");
    EXPECT_EQ(rate(), 48000);
    feed.setting("clock.rate", "44100");
    EXPECT_EQ(rate(), 44100);
    feed.setting("clock.force-rate", "96000");
    EXPECT_EQ(rate(), 96000);
    feed.setting("clock.force-rate", "0");
    EXPECT_EQ(rate(), 44100);
    EXPECT_EQ(takeHeard(), "nsrtnsrtnsrt");
}

TEST_F(DeviceTableTest, MicrophoneVolumeIsOnTheScaleThatPeopleSee)
{
    const AudioObjectID device = microphone();
    listen(device, "volm");
    EXPECT_FLOAT_EQ(shown(device), 0.5F) << "the loudest channel";
    feed.volume(30, {{0.0F}, false, true});
    EXPECT_FLOAT_EQ(shown(device), 0.0F);
    feed.volume(30, {{3.375F}, false, true});
    EXPECT_FLOAT_EQ(shown(device), 1.0F) << "amplified beyond full";
    EXPECT_EQ(takeHeard(), "volmvolm");

    for (const auto scope : {output, kAudioObjectPropertyScopeGlobal}) {
        EXPECT_FALSE(devices.value(device, {kAudioDevicePropertyVolumeScalar, scope, 0}));
    }
    EXPECT_FALSE(devices.value(device, {kAudioDevicePropertyVolumeScalar, input, 1}));
    sinkNode(20, "sink");
    feed.volume(20, {{0.5F}, false, true});
    EXPECT_FALSE(devices.value(ids.forDevice("sink"), volume));
}

TEST_F(DeviceTableTest, LateEchoesDoNotShowWhileASliderMoves)
{
    const AudioObjectID device = microphone();
    listen(device, "volm");
    listen(device, "mute");
    graph.assumeVolume(30, {{0.001F, 0.001F}, false, false});
    graph.assumeVolume(30, {{0.064F, 0.064F}, true, true});
    feed.volume(30, {{0.001F, 0.001F}, false, true});
    EXPECT_FLOAT_EQ(shown(device), 0.4F);
    EXPECT_EQ(takeHeard(), "volmvolmmute");
    feed.settleVolumes();
    EXPECT_FLOAT_EQ(shown(device), 0.1F) << "the last word is the server's";
    EXPECT_EQ(takeHeard(), "volmmute");
}

TEST(RouteKeepingTest, AMuteIsNeverTheUsersChoice)
{
    const NodeVolume muted{{}, true, true};
    const NodeVolume undone{{}, false, true};
    const NodeVolume louder{{0.5F}, false, false};
    for (const bool wasSaved : {true, false}) {
        RouteKeeping keeping;
        EXPECT_TRUE(keeping.isToBeSaved(wasSaved, louder)) << "a volume is";
        EXPECT_FALSE(keeping.isToBeSaved(wasSaved, muted));
        EXPECT_FALSE(keeping.isToBeSaved(false, muted)) << "again, after somebody undid it";
        EXPECT_FALSE(keeping.isToBeSaved(false, louder)) << "it would keep the mute with it";
        EXPECT_EQ(keeping.isToBeSaved(false, undone), wasSaved) << "as it was";
        EXPECT_TRUE(keeping.isToBeSaved(wasSaved, louder));
    }
}

TEST_F(DeviceTableTest, RefusesWhatItCannotWrite)
{
    const AudioObjectID device = microphone();
    const float half = 0.5F;
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    const double wide = 0.5;
    EXPECT_EQ(devices.set(device, volume, std::as_bytes(std::span(&wide, 1))),
              kAudioHardwareBadPropertySizeError);
    EXPECT_EQ(devices.set(device, volume, std::as_bytes(std::span(&notANumber, 1))),
              kAudioHardwareIllegalOperationError);
    EXPECT_EQ(devices.set(device,
                          {kAudioDevicePropertyDeviceIsAlive, input, 0},
                          std::as_bytes(std::span(&half, 1))),
              kAudioHardwareIllegalOperationError);
    EXPECT_TRUE(devices.isSettable(device, mute));
    feed.remove(30);
    thaw();
    EXPECT_FALSE(devices.isSettable(device, mute));
    EXPECT_NE(devices.set(device, volume, std::as_bytes(std::span(&half, 1))), 0);
}

} // namespace
} // namespace fadewell::pipewire
