#include "audio/ProcessMonitor.h"

#include "tests/audio/EngineTest.h"

namespace fadewell {
namespace {

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

TEST_F(ProcessMonitorTest, PublishesWhoPlaysWhere)
{
    lookup_->setParent(501, 400);
    lookup_->setResponsible(501, 300);
    const AudioObjectID id = hardware_->addProcess(
        {.pid = 501, .bundleID = "org.example.Player", .isRunningOutput = true});
    start();
    EXPECT_THAT(*lists_,
                ElementsAre(ElementsAre(AudioProcess{
                    id, 501, "org.example.Player", true, false, 400, 300, {speakers_}})));
}

TEST_F(ProcessMonitorTest, RelationsThatSayNothingAreAbsent)
{
    const struct {
        std::int32_t parent;
        std::optional<std::int32_t> parentPID;
        std::int32_t responsible;
        std::optional<std::int32_t> responsiblePID;
    } cases[] = {
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

TEST_F(ProcessMonitorTest, FollowsRunningFlagsAndDevices)
{
    const auto id = addProcess(10);
    start();
    EXPECT_FALSE(lists_->back()[0].isRunningOutput);
    hardware_->setRunning(id, true, true);
    time_->advance(0.06);
    EXPECT_TRUE(lists_->back()[0].isRunningOutput);
    EXPECT_TRUE(lists_->back()[0].isRunningInput);

    const auto headset = addOutput("headset");
    hardware_->setOutputDevices(id, std::vector{headset, speakers_});
    time_->advance(0.06);
    EXPECT_THAT(lists_->back()[0].outputDeviceIDs, ElementsAre(headset, speakers_));
}

TEST_F(ProcessMonitorTest, ProcessWithoutPidStaysHidden)
{
    const auto hidden = addProcess(0);
    const auto shown = addProcess(10);
    start();
    EXPECT_THAT(lastIDs(), ElementsAre(shown));
    hardware_->setProperty(
        hidden, propertyAddress(kAudioProcessPropertyPID), bytesOf(std::int32_t{99}));
    hardware_->setRunning(hidden, true, false);
    time_->advance(0.06);
    EXPECT_EQ(lists_->size(), 2U);
    EXPECT_THAT(lastIDs(), ElementsAre(shown)) << "the pid is never read again";
}

TEST_F(ProcessMonitorTest, RefreshPublishesTheSameAgainWithoutReadingIdentities)
{
    addProcess(10);
    start();
    hardware_->calls().clear();
    const int questions = lookup_->questions();
    monitor_->refresh();
    time_->advance(0.051);
    ASSERT_EQ(lists_->size(), 2U);
    EXPECT_EQ(lists_->at(0), lists_->at(1));
    EXPECT_EQ(lookup_->questions(), questions);
    EXPECT_EQ(hardware_->calls().count(HardwareCall::getData, kAudioProcessPropertyPID), 0);
    EXPECT_EQ(
        hardware_->calls().count(HardwareCall::getData, kAudioHardwarePropertyProcessObjectList),
        0);
}

TEST_F(ProcessMonitorTest, EmptyListIsPublishedAndLeavesOnlyTheListListener)
{
    const auto id = addProcess(10);
    start();
    EXPECT_EQ(hardware_->made().listeners, 3U);
    hardware_->removeProcess(id);
    time_->advance(0.06);
    EXPECT_THAT(lists_->back(), IsEmpty());
    EXPECT_EQ(hardware_->made().listeners, 1U);
}

TEST_F(ProcessMonitorTest, UnreadableListDropsEveryProcess)
{
    addProcess(10);
    start();
    hardware_->faults().failNext(HardwareCall::getData,
                                 kAudioHardwareBadObjectError,
                                 1,
                                 kAudioHardwarePropertyProcessObjectList);
    addProcess(20);
    time_->advance(0.06);
    EXPECT_THAT(lists_->back(), IsEmpty());
    EXPECT_EQ(hardware_->made().listeners, 1U);
}

TEST_F(ProcessMonitorTest, ProcessesWithoutListenersAreStillPublished)
{
    hardware_->faults().failNext(HardwareCall::addListener, kAudioHardwareBadObjectError, 3);
    const auto id = addProcess(10);
    start();
    EXPECT_THAT(lastIDs(), ElementsAre(id));
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

TEST_F(ProcessMonitorTest, NothingRemainsAfterStopOrDestruction)
{
    addProcess(10);
    start();
    monitor_->refresh();
    monitor_->stop();
    EXPECT_EQ(hardware_->made().listeners, 0U);
    time_->advance(1);
    EXPECT_EQ(lists_->size(), 1U);

    auto other = ProcessMonitor::create(context_);
    other->start();
    time_->run();
    EXPECT_EQ(hardware_->made().listeners, 3U);
    other = nullptr;
    EXPECT_EQ(hardware_->made().listeners, 0U);
    EXPECT_EQ(time_->pendingTasks(), 0U);
}

} // namespace
} // namespace fadewell
