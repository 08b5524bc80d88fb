#include "tests/linux/pipewire/TablesTest.h"

namespace fadewell::pipewire {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto output = kAudioObjectPropertyScopeOutput;

class ProcessTableTest : public TablesTest, private StreamObserver {
protected:
    ProcessTableTest()
    {
        processes.setStreamObserver(this);
        sinkNode(20, "a");
        sinkNode(21, "b");
        feed.metadata(0, "default.audio.sink", R"({"name":"a"})");
    }
    ~ProcessTableTest() override { processes.setStreamObserver(nullptr); }

    void streamAppeared(AudioObjectID process, std::uint32_t node) override
    {
        told += "+" + describe(process, node);
    }
    void streamChanged(AudioObjectID /*process*/, std::uint32_t /*node*/) override {}
    void streamGone(AudioObjectID process, std::uint32_t node) override
    {
        told += "-" + describe(process, node);
    }
    std::string describe(AudioObjectID process, std::uint32_t node)
    {
        return std::to_string(node) + (process == ids.forProcess(55) ? "" : "?") + " ";
    }

    void nativeClient(std::uint32_t id = 50, const char* pid = "55")
    {
        feed.client(id, {{"pipewire.sec.pid", pid}, {"application.process.binary", "player"}});
    }
    static Properties stream(const char* mediaClass, const Properties& more = {})
    {
        Properties props = {
            {"media.class", mediaClass}, {"client.id", "50"}, {"node.autoconnect", "true"}};
        props.insert(more.begin(), more.end());
        return props;
    }
    static Properties plays(const Properties& more = {})
    {
        return stream("Stream/Output/Audio", more);
    }
    static Properties records(const Properties& more = {})
    {
        return stream("Stream/Input/Audio", more);
    }
    AudioObjectID process() { return ids.forProcess(55); }
    std::uint32_t flag(const char* selector) { return number(processes, process(), selector); }
    std::vector<AudioObjectID> devicesNow() { return list(processes, process(), "pdv#", output); }
    AudioObjectID sink(const char* name) { return ids.forDevice(name); }

    std::string told;
};

TEST_F(ProcessTableTest, AppearsWithItsFirstStreamAndStaysUntilItsClientGoes)
{
    listen(1, "prs#");
    nativeClient();
    EXPECT_THAT(processes.processIDs(), IsEmpty()) << "no stream yet";
    feed.announceNode(60, {{"media.class", "Stream/Output/Audio"}, {"client.id", "50"}});
    EXPECT_THAT(processes.processIDs(), IsEmpty()) << "may still turn out to be a meter";
    feed.node(60, plays());
    EXPECT_THAT(processes.processIDs(), ElementsAre(process()));
    EXPECT_EQ(processes.bundleID(process()), "player");
    EXPECT_EQ(processes.pid(process()), 55);
    feed.remove(60);
    EXPECT_EQ(flag("piro"), 0U);
    EXPECT_THAT(devicesNow(), IsEmpty());
    EXPECT_THAT(processes.processIDs(), ElementsAre(process()));
    feed.remove(50);
    EXPECT_THAT(processes.processIDs(), IsEmpty());
    EXPECT_THAT(identity->forgotten, ElementsAre(55));
    EXPECT_EQ(takeHeard(), "prs#prs#");
}

TEST_F(ProcessTableTest, ResolvesAgainWhenTheClientsDescriptionComesLate)
{
    feed.client(50, {{"pipewire.sec.pid", "900"}}, false);
    feed.node(60, plays({{"application.process.id", "55"}}));
    EXPECT_THAT(processes.processIDs(), IsEmpty());
    feed.client(50, {{"pipewire.sec.pid", "900"}, {"client.api", "pipewire-pulse"}});
    EXPECT_THAT(processes.processIDs(), ElementsAre(process()));
    EXPECT_EQ(told, "+60 ");
}

TEST_F(ProcessTableTest, RunningFollowsTheStreamsThatCount)
{
    nativeClient();
    feed.node(60, plays(), PW_NODE_STATE_IDLE);
    feed.node(61, records(), PW_NODE_STATE_SUSPENDED);
    for (const char* const selector : {"piro", "piri", "pir?"}) {
        listen(process(), selector);
    }
    EXPECT_EQ(flag("piro") + flag("piri") + flag("pir?"), 0U);
    feed.state(60, PW_NODE_STATE_RUNNING);
    EXPECT_EQ(takeHeard(), "piropir?");
    EXPECT_EQ(flag("piro"), 1U);
    feed.state(61, PW_NODE_STATE_RUNNING);
    EXPECT_EQ(takeHeard(), "piripir?");
    feed.link(70, 20, 61);
    EXPECT_EQ(flag("piri"), 0U) << "it records what a sink plays";
    feed.remove(60);
    EXPECT_EQ(flag("piro"), 0U);
}

TEST_F(ProcessTableTest, AStreamThatIsMovedRunsOnUnlessItStaysUnlinked)
{
    nativeClient();
    feed.node(60, plays());
    listen(process(), "piro");
    for (const bool isLinkedAgain : {true, false}) {
        feed.link(70, 60, 20);
        feed.remove(70);
        feed.state(60, PW_NODE_STATE_IDLE);
        EXPECT_EQ(flag("piro"), 1U);
        if (isLinkedAgain) {
            feed.link(71, 60, 21);
            feed.state(60, PW_NODE_STATE_RUNNING);
            feed.remove(71);
        }
        EXPECT_EQ(takeHeard(), "");
    }
    thaw();
    EXPECT_EQ(takeHeard(), "piro");
    EXPECT_EQ(flag("piro"), 0U);
}

TEST_F(ProcessTableTest, WhatCannotBeRoutedIsNamedInsteadOfCounted)
{
    nativeClient();
    feed.node(60, plays({{"node.exclusive", "true"}}));
    EXPECT_EQ(flag("piro"), 0U);
    ASSERT_EQ(processes.untappable().size(), 1U);
    EXPECT_EQ(processes.untappable()[0].reason, UntappableReason::exclusive);
    EXPECT_EQ(processes.untappable()[0].process.pid, 55);
    EXPECT_EQ(told, "");
    feed.state(60, PW_NODE_STATE_IDLE);
    EXPECT_THAT(processes.untappable(), IsEmpty()) << "it doesn't play";

    feed.node(61, plays());
    EXPECT_THAT(processes.outputStreamNodes(process()), ElementsAre(61U));
    feed.formats(61, false, true);
    EXPECT_THAT(processes.outputStreamNodes(process()), IsEmpty());
    EXPECT_EQ(told, "+61 -61 ");
}

TEST_F(ProcessTableTest, AStreamThatWasGivenUpIsNoneToBeTakenUntilItEnds)
{
    nativeClient();
    feed.node(60, plays());
    processes.giveUp(60);
    EXPECT_EQ(told, "+60 -60 ");
    EXPECT_EQ(flag("piro"), 0U);
    ASSERT_EQ(processes.untappable().size(), 1U);
    EXPECT_EQ(processes.untappable()[0].reason, UntappableReason::contested);
    feed.remove(60);
    feed.node(60, plays());
    EXPECT_EQ(told, "+60 -60 +60 ") << "the number is used again";
}

TEST_F(ProcessTableTest, JackProgramsPlayOnlyWhileConnectedToASink)
{
    nativeClient();
    feed.node(60, {{"client.api", "jack"}, {"media.type", "Audio"}, {"client.id", "50"}});
    EXPECT_THAT(processes.untappable(), IsEmpty());
    feed.link(70, 60, 20);
    ASSERT_EQ(processes.untappable().size(), 1U);
    EXPECT_EQ(processes.untappable()[0].reason, UntappableReason::unmanaged);
    feed.remove(70);
    EXPECT_THAT(processes.untappable(), IsEmpty());
}

TEST_F(ProcessTableTest, AnnouncesFurtherStreamsOfAKnownProcessAtOnce)
{
    nativeClient();
    feed.node(60, plays());
    feed.announceNode(61, {{"media.class", "Stream/Output/Audio"}, {"client.id", "50"}});
    EXPECT_EQ(told, "+60 +61 ");
    EXPECT_THAT(processes.outputStreamNodes(process()), ElementsAre(60U, 61U));
    EXPECT_EQ(processes.processForNode(61), process());
    feed.node(61, plays({{"media.role", "event"}}));
    EXPECT_EQ(told, "+60 +61 -61 ");
    feed.remove(60);
    EXPECT_EQ(told, "+60 +61 -61 -60 ");
}

TEST_F(ProcessTableTest, DevicesAreWhereItWouldPlayByItself)
{
    nativeClient();
    feed.node(60, plays());
    EXPECT_THAT(devicesNow(), ElementsAre(sink("a")));
    listen(process(), "pdv#");

    feed.metadata(0, "default.audio.sink", R"({"name":"b"})");
    EXPECT_THAT(devicesNow(), ElementsAre(sink("b")));
    EXPECT_EQ(takeHeard(), "pdv#");

    struct Case {
        const char* key;
        const char* value;
        const char* expected;
    };
    // Serials are 1000 above the ids.
    const Case cases[] = {{"target.object", "a", "a"},
                          {"target.object", "1020", "a"},
                          {"target.node", "20", "a"},
                          {"target.object", "20", "b"},
                          {"target.object", "gone", "b"},
                          {"target.object", "-1", "b"},
                          {"target.object", "fadewell.tap.x", "b"}};
    feed.node(30, {{"media.class", "Audio/Sink"}, {"node.name", "fadewell.tap.x"}});
    for (const Case& each : cases) {
        feed.metadata(60, each.key, each.value);
        EXPECT_THAT(devicesNow(), ElementsAre(sink(each.expected))) << each.key << each.value;
        feed.metadata(60, each.key, nullptr);
    }

    feed.node(60, plays({{"target.object", "a"}}));
    EXPECT_THAT(devicesNow(), ElementsAre(sink("a")));
    feed.metadata(60, "target.object", "b");
    EXPECT_THAT(devicesNow(), ElementsAre(sink("b"))) << "moved since it was made";

    feed.remove(60);
    feed.node(60, plays({{"target.object", "a"}}));
    EXPECT_THAT(devicesNow(), ElementsAre(sink("a"))) << "another stream with the same id";
}

TEST_F(ProcessTableTest, TheJournalSpeaksForAStreamThatIsTaken)
{
    nativeClient();
    feed.node(60, plays());
    feed.metadata(60, "target.object", "b");
    std::optional<std::string> own = "a";
    processes.setOwnTarget([&](std::uint32_t) { return own; });
    processes.refresh();
    EXPECT_THAT(devicesNow(), ElementsAre(sink("a")));
    own = "";
    feed.metadata(0, "default.audio.sink", R"({"name":"b"})");
    EXPECT_THAT(devicesNow(), ElementsAre(sink("b"))) << "it followed the default";
    own = "gone";
    processes.refresh();
    EXPECT_THAT(devicesNow(), ElementsAre(sink("b")));
}

TEST_F(ProcessTableTest, SeveralStreamsOfAProcessNameEachDeviceOnce)
{
    nativeClient();
    nativeClient(51);
    feed.node(60, plays({{"target.object", "b"}}));
    feed.node(61, plays({{"target.object", "a"}}));
    feed.node(62, plays({{"target.object", "b"}}));
    EXPECT_THAT(devicesNow(), ElementsAre(sink("b"), sink("a")));
    feed.remove(21);
    EXPECT_THAT(devicesNow(), ElementsAre(sink("b"), sink("a"))) << "it may be back at once";
    thaw();
    EXPECT_THAT(devicesNow(), ElementsAre(sink("a"))) << "what is gone falls back to the default";
    feed.remove(50);
    EXPECT_THAT(processes.processIDs(), ElementsAre(process())) << "its streams are still there";
}

TEST_F(ProcessTableTest, AReusedNodeIdIsAnotherStream)
{
    nativeClient();
    nativeClient(51, "77");
    feed.node(60, plays());
    Properties other = plays();
    other["client.id"] = "51";
    feed.node(60, other);
    EXPECT_EQ(told, "+60 -60 +60? ");
    EXPECT_EQ(processes.processForNode(60), ids.forProcess(77));
    EXPECT_EQ(flag("piro"), 0U);
}

} // namespace
} // namespace fadewell::pipewire
