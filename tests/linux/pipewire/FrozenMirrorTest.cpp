#include "tests/linux/pipewire/TablesTest.h"

namespace fadewell::pipewire {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr auto output = kAudioObjectPropertyScopeOutput;

/// A player on the default output, a second output and a microphone, which come and go.
class FrozenMirrorTest : public TablesTest, public testing::WithParamInterface<const char*> {
protected:
    FrozenMirrorTest()
    {
        feed.setting("clock.rate", "44100");
        speakers(20);
        sinkNode(21, "other");
        microphone(22);
        nameDefault("speakers");
        feed.metadata(0, "default.audio.source", R"({"name":"mic"})");
        player(50, 60);
        for (const char* const selector : {"livn", "nsrt", "lnam", "stm#", "volm", "mute"}) {
            for (const char* const name : {"speakers", "mic"}) {
                listen(ids.forDevice(name), selector);
            }
        }
        for (const char* const selector : {"dev#", "dOut", "dIn ", "prs#"}) {
            listen(1, selector);
        }
        for (const char* const selector : {"piro", "pdv#"}) {
            listen(process, selector);
        }
    }

    void speakers(std::uint32_t id) { sinkNode(id, "speakers"); }
    void microphone(std::uint32_t id)
    {
        feed.node(id, {{"media.class", "Audio/Source"}, {"node.name", "mic"}});
        feed.volume(id, {{0.125F}, true, true});
    }
    void nameDefault(const std::string& name)
    {
        feed.metadata(0, "default.audio.sink", ("{\"name\":\"" + name + "\"}").c_str());
    }
    void player(std::uint32_t client, std::uint32_t stream, const char* pid = "55")
    {
        feed.client(client, {{"pipewire.sec.pid", pid}, {"application.process.binary", "player"}});
        feed.node(stream,
                  {{"media.class", "Stream/Output/Audio"},
                   {"client.id", std::to_string(client)},
                   {"node.autoconnect", "true"}});
    }

    /// What the parameter names goes; its way back is comeBack().
    void goAway()
    {
        const std::string what = GetParam();
        if (what == "output") {
            feed.remove(20);
            nameDefault("other");
        } else if (what == "sessionManager") {
            feed.removeMetadata();
            feed.remove(20);
            feed.remove(22);
            feed.state(60, PW_NODE_STATE_IDLE);
        } else {
            feed.removeAll();
        }
    }
    void comeBack()
    {
        const std::string what = GetParam();
        const bool isServer = what == "server";
        if (isServer) {
            feed.setting("log.level", "2");
            feed.setting("clock.rate", "44100");
            sinkNode(31, "other");
        }
        nameDefault("other");
        if (what != "output") {
            microphone(32);
            feed.metadata(0, "default.audio.source", R"({"name":"mic"})");
        }
        speakers(30);
        nameDefault("speakers");
        if (isServer) {
            player(70, 80);
        } else {
            feed.state(60, PW_NODE_STATE_RUNNING);
        }
    }

    void expectAsBefore()
    {
        EXPECT_THAT(devices.deviceIDs(),
                    ElementsAre(device, ids.forDevice("other"), ids.forDevice("mic")));
        EXPECT_EQ(devices.defaultOutput(), device);
        EXPECT_EQ(devices.defaultInput(), ids.forDevice("mic"));
        EXPECT_EQ(number(devices, device, "livn"), 1U);
        EXPECT_EQ(list(devices, device, "stm#", output).size(), 1U);
        EXPECT_EQ(devices.graphRate(), 44100);
        EXPECT_THAT(processes.processIDs(), ElementsAre(process));
        EXPECT_EQ(number(processes, process, "piro"), 1U);
        EXPECT_THAT(list(processes, process, "pdv#", output), ElementsAre(device));
    }

    const AudioObjectID device = ids.forDevice("speakers");
    const AudioObjectID process = ids.forProcess(55);
};

TEST_P(FrozenMirrorTest, WhatIsBackInTimeIsNoEvent)
{
    goAway();
    time->advance(FrozenTime::duration - 0.1);
    frozen.tick();
    expectAsBefore();
    comeBack();
    expectAsBefore();
    EXPECT_EQ(devices.nodeForDevice(device), 30U);
    thaw();
    thaw();
    expectAsBefore();
    EXPECT_EQ(takeHeard(), "");
}

INSTANTIATE_TEST_SUITE_P(Losses,
                         FrozenMirrorTest,
                         testing::Values("output", "sessionManager", "server"),
                         [](const auto& test) { return test.param; });

TEST_F(FrozenMirrorTest, WhatIsNotBackIsToldInOrder)
{
    feed.removeAll();
    thaw();
    EXPECT_EQ(takeHeard(), "livnlivndev#dOutdIn piropdv#prs#");
    EXPECT_THAT(devices.deviceIDs(), IsEmpty());
    EXPECT_EQ(number(devices, device, "livn"), 0U);
    EXPECT_FALSE(devices.value(device, {kAudioDevicePropertyStreams, output, 0}));
    EXPECT_EQ(devices.defaultOutput(), 0U);
    EXPECT_THAT(processes.processIDs(), IsEmpty());

    nameDefault("speakers");
    sinkNode(30, "speakers");
    sinkNode(31, "speakers"); // another one of this name
    EXPECT_EQ(takeHeard(), "livndev#dOut");
    EXPECT_EQ(devices.nodeForDevice(device), 30U);
    EXPECT_EQ(devices.defaultOutput(), device);
    feed.remove(30);
    EXPECT_EQ(devices.nodeForDevice(device), 31U);
}

TEST_F(FrozenMirrorTest, TheDefaultStaysWithItsDeviceAndThenFollowsTheSession)
{
    feed.remove(20);
    nameDefault("other");
    EXPECT_EQ(devices.defaultOutput(), device);
    thaw();
    EXPECT_EQ(takeHeard(), "livndev#dOutpdv#");
    EXPECT_EQ(devices.defaultOutput(), ids.forDevice("other"));

    // Back in time, but the default stays with the other one.
    feed.remove(21);
    sinkNode(23, "third");
    nameDefault("third");
    sinkNode(33, "other");
    EXPECT_EQ(takeHeard(), "dev#");
    thaw();
    EXPECT_EQ(takeHeard(), "dOutpdv#");
}

TEST_F(FrozenMirrorTest, TheDummyThatStoodInForAnOutputStaysUntilWhoPlaysThereHasMoved)
{
    sinkNode(40, "auto_null");
    nameDefault("auto_null");
    EXPECT_EQ(devices.defaultOutput(), ids.forDevice("auto_null"));
    takeHeard();
    feed.remove(40);
    EXPECT_EQ(takeHeard(), "");
    nameDefault("speakers");
    EXPECT_EQ(takeHeard(), "dOutpdv#");
    EXPECT_EQ(devices.defaultOutput(), device);
    thaw();
    EXPECT_EQ(takeHeard(), "dev#");
    EXPECT_EQ(devices.defaultOutput(), device);
}

TEST_F(FrozenMirrorTest, WhoseProcessHasEndedOrIsNewIsToldAtOnce)
{
    feed.removeMetadata();
    identity->ended = 55;
    feed.remove(60);
    feed.remove(50);
    EXPECT_THAT(processes.processIDs(), IsEmpty());
    player(51, 61, "77");
    EXPECT_THAT(processes.processIDs(), ElementsAre(ids.forProcess(77)));
    EXPECT_EQ(number(processes, ids.forProcess(77), "piro"), 1U);
}

TEST_F(FrozenMirrorTest, AMicrophoneTakesAMuteWhileItIsAway)
{
    const AudioObjectID mic = ids.forDevice("mic");
    const AudioObjectPropertyAddress mute{
        kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput, 0};
    const auto set = [&](std::uint32_t isMuted) {
        return devices.set(mic, mute, std::as_bytes(std::span(&isMuted, 1)));
    };
    feed.remove(22);
    EXPECT_EQ(set(0), kAudioHardwareNoError);
    EXPECT_EQ(takeHeard(), "mute");
    EXPECT_EQ(number(devices, mic, "mute", kAudioObjectPropertyScopeInput), 0U);
    thaw();
    EXPECT_TRUE(devices.takesLater(mic));
    EXPECT_EQ(set(1), kAudioHardwareNoError);
    EXPECT_FALSE(devices.takesLater(device));
}

} // namespace
} // namespace fadewell::pipewire
