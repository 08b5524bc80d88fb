#include "audio/ProcessMonitor.h"

#include "tests/audio/EngineTest.h"

#include <tuple>

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;
using testing::IsEmpty;

using ProcessLists = std::vector<std::vector<AudioProcess>>;

class ProcessMonitorTest : public EngineTest {
protected:
    void SetUp() override
    {
        speakers_ = addOutput("speakers");
        hardware_->setDefaultOutput(speakers_);
    }

    AudioObjectID addProcess(std::int32_t pid) { return hardware_->addProcess({.pid = pid}); }

    void start()
    {
        monitor_->start();
        time_->advance(0.06);
    }

    [[nodiscard]] std::vector<AudioObjectID> lastIDs() const
    {
        std::vector<AudioObjectID> ids;
        for (const auto& process : lists_->back()) {
            ids.push_back(process.id);
        }
        return ids;
    }

    AudioObjectID speakers_ = 0;
    std::shared_ptr<ProcessMonitor> monitor_ = ProcessMonitor::create(context_);
    std::shared_ptr<ProcessLists> lists_ = collect(monitor_->processes());
};

TEST_F(ProcessMonitorTest, PublishesWhoPlaysWhereAndFollowsChanges)
{
    lookup_->setParent(501, 400);
    lookup_->setResponsible(501, 300);
    const AudioObjectID id = hardware_->addProcess({.pid = 501, .bundleID = "org.example.Player"});
    start();
    AudioProcess expected{id, 501, "org.example.Player", false, false, 400, 300, {speakers_}};
    EXPECT_THAT(*lists_, ElementsAre(ElementsAre(expected)));

    hardware_->setRunning(id, true, true);
    time_->advance(0.06);
    expected.isRunningOutput = true;
    expected.isRunningInput = true;
    EXPECT_THAT(lists_->back(), ElementsAre(expected));

    const auto headset = addOutput("headset");
    hardware_->setOutputDevices(id, std::vector{headset, speakers_});
    time_->advance(0.06);
    expected.outputDeviceIDs = {headset, speakers_};
    EXPECT_THAT(lists_->back(), ElementsAre(expected));
}

TEST_F(ProcessMonitorTest, RelationsThatSayNothingAreAbsent)
{
    const std::
        tuple<std::int32_t, std::optional<std::int32_t>, std::int32_t, std::optional<std::int32_t>>
            cases[] = {
                {0, std::nullopt, 0, std::nullopt},
                {1, std::nullopt, -1, std::nullopt},
                {2, 2, 1, 1},
                {77, 77, 700, std::nullopt}, // responsible for itself
            };
    for (const auto& [parent, parentPID, responsible, responsiblePID] : cases) {
        lookup_->setParent(700, parent);
        lookup_->setResponsible(700, responsible);
        const AudioObjectID id = addProcess(700);
        start();
        ASSERT_EQ(lists_->back().size(), 1U);
        EXPECT_EQ(lists_->back()[0].parentPID, parentPID) << parent;
        EXPECT_EQ(lists_->back()[0].responsiblePID, responsiblePID) << responsible;
        hardware_->removeProcess(id);
        time_->advance(0.06);
    }
}

TEST_F(ProcessMonitorTest, BurstGivesOnePublicationInThePlatformsOrder)
{
    start();
    lists_->clear();
    const auto first = addProcess(30);
    const auto second = addProcess(20);
    const auto third = addProcess(10);
    time_->advance(0.049);
    EXPECT_THAT(*lists_, IsEmpty());
    time_->advance(0.002);
    ASSERT_EQ(lists_->size(), 1U);
    EXPECT_THAT(lastIDs(), ElementsAre(first, second, third));
}

TEST_F(ProcessMonitorTest, EmptyOrUnreadableListIsPublishedAndLeavesOnlyTheListListener)
{
    for (const bool isUnreadable : {false, true}) {
        const auto id = addProcess(10);
        start();
        EXPECT_EQ(hardware_->made().listeners, 3U);
        if (isUnreadable) {
            fail(getData, 1, kAudioHardwarePropertyProcessObjectList);
            addProcess(20);
        } else {
            hardware_->removeProcess(id);
        }
        time_->advance(0.06);
        EXPECT_THAT(lists_->back(), IsEmpty());
        EXPECT_EQ(hardware_->made().listeners, 1U);
    }
}

TEST_F(ProcessMonitorTest, ProcessesWithoutListenersAreStillPublished)
{
    fail(addListener, 5);
    const auto id = addProcess(10);
    addProcess(0);
    start();
    EXPECT_THAT(lastIDs(), ElementsAre(id)) << "and those without a pid are not";
    EXPECT_EQ(hardware_->made().listeners, 0U);
}

TEST_F(ProcessMonitorTest, SaysOnceAStartThatResponsibilityIsUnknown)
{
    lookup_->setKnowsResponsibleProcesses(false);
    lookup_->setResponsible(10, 20);
    addProcess(10);
    start();
    start();
    EXPECT_THAT(log_.take(),
                ElementsAre("processes notice: Responsible-process lookup unavailable; grouping by "
                            "parent and bundle ID only"));
    EXPECT_EQ(lists_->back()[0].responsiblePID, std::nullopt);
    EXPECT_EQ(lists_->size(), 1U) << "a second start does nothing";
}

TEST_F(ProcessMonitorTest, StopIsFinal)
{
    addProcess(10);
    start();
    monitor_->refresh();
    monitor_->stop();
    EXPECT_EQ(hardware_->made().listeners, 0U);
    time_->advance(1);
    EXPECT_EQ(lists_->size(), 1U);
}

} // namespace
} // namespace fadewell
