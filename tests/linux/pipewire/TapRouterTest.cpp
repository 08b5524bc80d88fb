#include "platform/linux/pipewire/taps/TapRouter.h"

#include "platform/linux/pipewire/taps/LeftoverTaps.h"
#include "tests/linux/TemporaryFolder.h"
#include "tests/linux/pipewire/TablesTest.h"

namespace fadewell::pipewire {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Outcome = TapRouter::Outcome;

constexpr auto tapName = "fadewell.tap.1073741824-1.1";
constexpr auto object = "target.object";
constexpr auto node = "target.node";

/// No process of this machine.
constexpr ProcessInstance ended{1 << 30, 1};

class TapRouterTest : public TablesTest, private GraphObserver {
protected:
    TapRouterTest()
    {
        sinkNode(20, "a");
        sinkNode(21, "b");
        stream(60);
        feed.metadata(0, "default.audio.sink", R"({"name":"a"})");
        graph.addObserver(*this);
    }
    ~TapRouterTest() override { graph.removeObserver(*this); }

    void metadataChanged(std::uint32_t subject,
                         const std::string& key,
                         const std::optional<std::string>& value) override
    {
        written += key.substr(7) + "=" + value.value_or("") + " ";
        if (!hasCrashed) {
            outcome = router.metadataChanged(subject, key, value, now);
        }
    }
    void stream(std::uint32_t id)
    {
        feed.node(id,
                  {{"media.class", "Stream/Output/Audio"},
                   {"node.name", "player"},
                   {"application.name", "Player"}});
    }
    /// What a crash now would leave.
    std::optional<std::string> left()
    {
        return TargetJournal(folder.path()).leftTarget(1060, "player");
    }

    TemporaryFolder folder;
    TargetJournal journal{folder.path(), ended};
    TapRouter router{graph, journal};
    bool hasCrashed = false;
    double now = 100;
    std::string written;
    Outcome outcome = Outcome::nothing;
};

TEST_F(TapRouterTest, WhatAStreamWasAssignedIsKeptAndGivenBack)
{
    struct Case {
        const char* key;
        const char* value;
        const char* own;  ///< while it is in the tap
        const char* back; ///< target.object afterwards
    };
    // Serials are 1000 above the ids.
    const Case cases[] = {{object, nullptr, "", nullptr},
                          {object, "a", "a", "1020"},
                          {object, "1020", "a", "1020"},
                          {object, "-1", "-1", "-1"},
                          {object, "gone", "gone", "gone"},
                          {object, "fadewell.tap.7-7.1", "", nullptr},
                          {node, "20", "a", "1020"},
                          {node, "-1", "", nullptr},
                          {node, "999", "", nullptr}};
    std::uint32_t id = 60;
    for (const Case& each : cases) {
        SCOPED_TRACE(std::string(each.key) + " " + (each.value ? each.value : "absent"));
        stream(++id);
        feed.metadata(id, each.key, each.value);
        router.attach(id, 7, tapName);
        EXPECT_EQ(graph.metadataValue(id, object), tapName);
        EXPECT_EQ(router.ownTarget(id), each.own);
        const auto kept = TargetJournal(folder.path()).leftTarget(1000 + id, "player");
        EXPECT_EQ(kept.value_or(""), each.own);
        router.release(id, 7);
        EXPECT_EQ(graph.metadataValue(id, object),
                  each.back ? std::optional<std::string>(each.back) : std::nullopt);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(TapRouterTest, AllAreGivenBackWhateverTheirTap)
{
    stream(61);
    feed.metadata(61, object, "a");
    router.attach(60, 7, tapName);
    router.attach(61, 8, tapName);
    EXPECT_TRUE(router.releaseAll());
    EXPECT_EQ(graph.metadataValue(60, object), std::nullopt);
    EXPECT_EQ(graph.metadataValue(61, object), "1020");
    EXPECT_FALSE(router.releaseAll());
}

TEST_F(TapRouterTest, TheSessionManagerGoesOnRememberingTheStreamsOwnOutput)
{
    feed.metadata(60, object, "1020");
    written.clear();
    router.attach(60, 7, tapName);
    // Sent by a name nothing is remembered; the older key, written anew, has it remembered again.
    EXPECT_EQ(written, std::string("object=") + tapName + " node= node=20 ");
}

TEST_F(TapRouterTest, WhatIsRecalledLateIsTheStreamsOwn)
{
    router.attach(60, 7, tapName);
    feed.metadata(60, node, "21");
    EXPECT_EQ(outcome, Outcome::newTarget);
    EXPECT_EQ(router.ownTarget(60), "b");
    EXPECT_EQ(left(), "b");
    EXPECT_EQ(router.tapOf(60), 7U);
    feed.metadata(60, node, nullptr);
    feed.metadata(60, node, "21");
    EXPECT_EQ(outcome, Outcome::nothing);
}

TEST_F(TapRouterTest, AStreamsOwnRequestCountsWhileNothingIsAssigned)
{
    feed.node(60, {{"media.class", "Stream/Output/Audio"}, {"target.object", "b"}});
    router.attach(60, 7, tapName);
    EXPECT_EQ(router.ownTarget(60), "b");
    router.release(60, 7);
    EXPECT_EQ(graph.metadataValue(60, object), std::nullopt) << "it asks for it itself";
}

TEST_F(TapRouterTest, OthersAreObeyedAndAtLastYieldedTo)
{
    struct Move {
        double time;
        const char* target; ///< null: they delete what we wrote
        const char* own;    ///< of the stream in the tap from then on; null: they are yielded to
    };
    const std::vector<Move> cases[] = {
        {{0, "1021", "b"}, {4, nullptr, ""}, {9, "1021", nullptr}},
        {{0, "1021", "b"}, {4, "-1", "-1"}, {11, "1021", "b"}, {13, "1020", nullptr}}};
    std::uint32_t id = 60;
    for (const auto& moves : cases) {
        stream(++id);
        router.attach(id, 7, tapName);
        for (const Move& each : moves) {
            now = 1000 * id + each.time;
            feed.metadata(id, object, each.target);
            EXPECT_EQ(router.tapOf(id) == 0, each.own == nullptr) << each.time;
            EXPECT_EQ(graph.metadataValue(id, object), each.own ? tapName : each.target);
            if (each.own) {
                EXPECT_EQ(router.ownTarget(id), each.own);
            } else {
                EXPECT_EQ(outcome, Outcome::givenUp);
            }
            // Where they moved it is remembered; only a move may decide where it belongs.
            feed.metadata(id, node, nullptr);
        }
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path())) << "what was given up is not ours";
}

TEST_F(TapRouterTest, WhatComesTooLateForAStreamDoesNotTakeTheNextOfItsNumber)
{
    router.attach(60, 7, tapName);
    const auto gone = *graph.node(60);
    feed.remove(60);
    written.clear();
    router.release(60, 7); // whoever hears first that it has gone
    router.forget(gone);
    EXPECT_EQ(written, "");
    feed.metadata(60, node, "21");
    feed.metadata(60, object, "1021");
    EXPECT_EQ(graph.metadataValue(60, node), std::nullopt);
    EXPECT_EQ(graph.metadataValue(60, object), std::nullopt);
    hasCrashed = true;
    feed.metadata(60, object, tapName);
    hasCrashed = false;
    stream(60);
    router.appeared(60);
    EXPECT_EQ(graph.metadataValue(60, object), std::nullopt);
    feed.metadata(60, object, tapName);
    EXPECT_EQ(graph.metadataValue(60, object), std::nullopt) << "told after the stream";
}

TEST_F(TapRouterTest, LeftoversAreTapsThatGiveTheirStreamBack)
{
    router.attach(60, 7, tapName); // follows the default
    feed.metadata(61, object, "1021");
    for (const std::uint32_t id : {61U, 62U, 63U}) {
        stream(id);
        router.attach(id, 7, tapName);
    }
    stream(64);
    feed.metadata(64, object, ("fadewell.tap." + ProcessInstance::own().text() + ".1").c_str());
    feed.metadata(63, object, "1020"); // moved again since the end
    router.release(63, 7);

    hasCrashed = true;
    TargetJournal next(folder.path());
    LeftoverTaps leftovers(graph, ids, next);
    const auto taps = leftovers.ids();
    ASSERT_EQ(taps.size(), 3U);
    EXPECT_EQ(leftovers.description(taps[0])->name, "Fadewell Player");
    feed.remove(62);
    EXPECT_TRUE(leftovers.update(62));
    EXPECT_TRUE(leftovers.destroy(taps[0]));
    EXPECT_EQ(graph.metadataValue(60, object), std::nullopt);
    EXPECT_FALSE(std::filesystem::is_empty(folder.path())) << "one is still to be given back";
    EXPECT_TRUE(leftovers.destroy(taps[1]));
    EXPECT_EQ(graph.metadataValue(61, object), "1021");
    EXPECT_THAT(leftovers.ids(), IsEmpty());
    EXPECT_FALSE(leftovers.destroy(taps[1]));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(TapRouterTest, LeftoversOfAnotherStreamsNumberAreNotBelieved)
{
    feed.metadata(60, object, "1021");
    router.attach(60, 7, tapName);
    feed.node(60, {{"media.class", "Stream/Output/Audio"}, {"node.name", "other"}});
    hasCrashed = true;
    TargetJournal next(folder.path());
    LeftoverTaps leftovers(graph, ids, next);
    ASSERT_EQ(leftovers.ids().size(), 1U);
    feed.metadata(60, node, nullptr);
    EXPECT_TRUE(leftovers.destroy(leftovers.ids()[0]));
    EXPECT_EQ(graph.metadataValue(60, object), std::nullopt);
}

TEST(TargetJournalTest, WorksOnWithoutAFolder)
{
    TemporaryFolder folder;
    folder.write("file", "");
    for (const auto& path : {folder.path() / "file", std::filesystem::path()}) {
        TargetJournal journal(path, ended);
        journal.record({1, "n", "a"});
        journal.remove(1);
        EXPECT_EQ(TargetJournal(path).leftTarget(1, "n"), std::nullopt);
    }
}

} // namespace
} // namespace fadewell::pipewire
