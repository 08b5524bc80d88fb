#include "audio/MicrophoneController.h"

#include "base/MemoryUserDefaults.h"
#include "tests/audio/EngineTest.h"

namespace fadewell {
namespace {

using enum HardwareCall;

using testing::ElementsAre;
using testing::IsEmpty;

using Muted = UserDefaults::NumberMap;

class MicrophoneControllerTest : public EngineTest {
protected:
    static constexpr auto key = MicrophoneController::mutedInputDevicesKey;

    /// Present elements have a settable volume of 0.8.
    AudioObjectID addInput(const std::string& uid,
                           const std::vector<AudioObjectPropertyElement>& volumeElements,
                           bool hasSwitch = false)
    {
        SimulatedDevice device{.uid = uid, .name = uid + " name", .outputStreams = 0};
        device.inputStreams = 1;
        for (const auto element : volumeElements) {
            device.inputVolume[element] = {0.8F, true};
        }
        if (hasSwitch) {
            device.inputMute[0] = {false, true};
        }
        return hardware_->addDevice(device);
    }

    void follow(AudioObjectID device)
    {
        hardware_->setDefaultInput(device);
        controller_->start();
        time_->run();
    }

    void setMuted(bool muted)
    {
        controller_->setMuted(muted);
        time_->run();
    }

    [[nodiscard]] double volume(AudioObjectID device, AudioObjectPropertyElement element = 0) const
    {
        return readProperty<float>(
                   *hardware_,
                   device,
                   {kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeInput, element})
            .value_or(-1.0F);
    }

    [[nodiscard]] bool isSwitchedOff(AudioObjectID device) const
    {
        return uint32Property(
                   *hardware_, device, kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput) ==
               1U;
    }

    [[nodiscard]] Muted stored() const { return defaults_->get<Muted>(key).value_or(Muted()); }

    std::shared_ptr<MemoryUserDefaults> defaults_ = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<MicrophoneController> controller_ =
        MicrophoneController::create(context_, defaults_);
    std::shared_ptr<std::vector<MicrophoneState>> states_ = collect(controller_->states());
    const double full_ = static_cast<double>(0.8F); ///< as the hardware's single precision holds it
};

TEST_F(MicrophoneControllerTest, MutesByTheSwitchAndLeavesTheVolume)
{
    const auto device = addInput("a", {0}, true);
    follow(device);
    setMuted(true);
    EXPECT_EQ(stored(), (Muted{{"a", -1.0}}));
    EXPECT_EQ(defaults_->flushes(), 1) << "on disk, for the case of a crash";
    EXPECT_TRUE(isSwitchedOff(device));
    EXPECT_EQ(volume(device), full_);
    setMuted(false);
    EXPECT_FALSE(isSwitchedOff(device));
    EXPECT_FALSE(defaults_->value(key)) << "an empty dictionary is removed";
    EXPECT_EQ(defaults_->flushes(), 2);
    EXPECT_THAT(*states_,
                ElementsAre(MicrophoneState{"a name", full_, false, true},
                            MicrophoneState{"a name", full_, true, true},
                            MicrophoneState{"a name", full_, false, true}));
}

TEST_F(MicrophoneControllerTest, MutesByVolumeAndRemembersTheFirstOne)
{
    const auto device = addInput("a", {0});
    follow(device);
    setMuted(true);
    setMuted(true);
    EXPECT_EQ(stored(), (Muted{{"a", full_}}));
    EXPECT_EQ(defaults_->writes(), 1);
    EXPECT_EQ(volume(device), 0);
    EXPECT_EQ(states_->back(), (MicrophoneState{"a name", full_, true, true}))
        << "the user sees what it goes back to";
    setMuted(false);
    EXPECT_EQ(volume(device), full_);
    setMuted(false);
    EXPECT_EQ(defaults_->writes(), 2) << "nothing to undo, nothing written";
}

TEST_F(MicrophoneControllerTest, WritesEveryChannelAndReadsTheFirst)
{
    const auto device = addInput("a", {1, 2});
    hardware_->setProperty(device,
                           {kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeInput, 2},
                           bytesOf(0.5F));
    follow(device);
    EXPECT_EQ(states_->back().volume, full_);
    setMuted(true);
    EXPECT_EQ(volume(device, 1), 0);
    EXPECT_EQ(volume(device, 2), 0);
    setMuted(false);
    EXPECT_EQ(volume(device, 2), full_);
}

TEST_F(MicrophoneControllerTest, SetsTheVolumeWithinItsRangeAndEndsAMute)
{
    const auto device = addInput("a", {0});
    follow(device);
    setMuted(true);
    for (const auto& [wish, result] : {std::pair{1.5, 1.0}, {-0.5, 0.0}, {0.25, 0.25}}) {
        controller_->setVolume(wish);
        time_->run();
        EXPECT_EQ(volume(device), result);
        EXPECT_EQ(states_->back(), (MicrophoneState{"a name", result, false, true}));
    }
    EXPECT_THAT(stored(), IsEmpty());

    // The mute has ended for good: it doesn't come back on the next device.
    const auto other = addInput("b", {0});
    hardware_->setDefaultInput(other);
    time_->run();
    EXPECT_EQ(volume(other), full_);
}

TEST_F(MicrophoneControllerTest, LeavesADeviceAloneThatCannotBeMuted)
{
    SimulatedDevice fixed{.uid = "a", .name = std::nullopt, .outputStreams = 0, .inputStreams = 1};
    fixed.inputVolume[0] = {0.7F, false};
    fixed.inputMute[0] = {false, false};
    fixed.inputMute[1] = {false, true}; // No switch for the whole device.
    follow(hardware_->addDevice(fixed));
    setMuted(true);
    EXPECT_THAT(log_.take(), ElementsAre("microphone notice: The input device can't be muted"));
    EXPECT_EQ(defaults_->writes(), 0);
    EXPECT_THAT(*states_, ElementsAre(MicrophoneState{}));

    // It is still wanted: the next device that can be muted is.
    const auto other = addInput("b", {0});
    hardware_->setDefaultInput(other);
    time_->run();
    EXPECT_EQ(volume(other), 0);
}

TEST_F(MicrophoneControllerTest, MuteFollowsTheDefaultInput)
{
    const auto first = addInput("a", {0});
    const auto second = addInput("b", {0}, true);
    follow(first);
    setMuted(true);
    hardware_->calls().clear();
    hardware_->setDefaultInput(second);
    time_->run();
    EXPECT_EQ(stored(), (Muted{{"b", -1.0}}));
    EXPECT_EQ(volume(first), full_);
    EXPECT_TRUE(isSwitchedOff(second));
    std::vector<AudioObjectID> written;
    for (const auto& record : hardware_->calls().records()) {
        if (record.call == setData) {
            written.push_back(record.object);
        }
    }
    EXPECT_THAT(written, ElementsAre(first, second)) << "the old one is given back first";

    hardware_->setDefaultInput(kAudioObjectUnknown);
    time_->run();
    EXPECT_EQ(states_->back(), MicrophoneState{});
    EXPECT_FALSE(isSwitchedOff(second));
    EXPECT_EQ(hardware_->made().listeners, 1U);
}

TEST_F(MicrophoneControllerTest, PublishesChangesMadeElsewhereButNoneTwice)
{
    SimulatedDevice rich{.uid = "a", .name = "A", .outputStreams = 0, .inputStreams = 1};
    for (const AudioObjectPropertyElement element : {0U, 1U, 2U}) {
        rich.inputVolume[element] = {0.8F, true};
        rich.inputMute[element] = {false, true};
    }
    const auto device = hardware_->addDevice(rich);
    follow(device);
    EXPECT_EQ(hardware_->made().listeners, 7U);
    hardware_->setInputVolume(device, 0, 0.5F);
    time_->run();
    hardware_->setInputVolume(device, 0, 0.25F);
    hardware_->setInputVolume(device, 0, 0.5F);
    time_->run();
    ASSERT_EQ(states_->size(), 2U);
    EXPECT_EQ(states_->back().volume, 0.5);
}

TEST_F(MicrophoneControllerTest, StaysMutedUntilSomebodyInsists)
{
    for (const bool hasSwitch : {true, false}) {
        const auto device = addInput(hasSwitch ? "a" : "b", {0}, hasSwitch);
        follow(device);
        setMuted(true);
        const auto undo = [&] {
            hasSwitch ? hardware_->setInputMute(device, false)
                      : hardware_->setInputVolume(device, 0, 0.5F);
            time_->run();
            return hasSwitch ? isSwitchedOff(device) : volume(device) == 0;
        };
        const auto shown = states_->size();
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(undo());
        }
        time_->advance(10);
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(undo()) << "what is long past doesn't count";
        }
        EXPECT_EQ(states_->size(), shown) << "it has never been shown as on";
        (void)log_.take();
        EXPECT_FALSE(undo());
        EXPECT_FALSE(states_->back().isMuted);
        EXPECT_THAT(stored(), IsEmpty());
        EXPECT_THAT(log_.take(),
                    ElementsAre("microphone notice: Another program keeps turning the microphone "
                                "on; leaving it on"));
        EXPECT_FALSE(undo()) << "it is theirs now";
    }
}

TEST_F(MicrophoneControllerTest, ReleaseUndoesEveryMuteBeforeItReturns)
{
    const auto device = addInput("a", {0});
    const auto earlier = addInput("b", {0}, true);
    defaults_->set(key, Muted{{"b", 0.5}});
    follow(device);
    setMuted(true);
    (void)log_.take();
    controller_->releaseMute();
    EXPECT_EQ(volume(device), full_);
    EXPECT_EQ(volume(earlier), 0.5);
    EXPECT_FALSE(defaults_->value(key));
    EXPECT_THAT(log_.take(), ElementsAre("microphone notice: Unmuted 1 microphone(s) left muted"));
}

TEST_F(MicrophoneControllerTest, RestoresWhatAnEarlierRunLeftMuted)
{
    const auto device = addInput("a", {0});
    const auto switched = addInput("b", {}, true);
    hardware_->setProperty(
        switched, {kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput, 0}, bytesOf(1U));
    defaults_->set(key, Muted{{"a", 0.25}, {"b", -1.0}, {"gone", 0.5}});
    MicrophoneController::restoreLeftMuted(*hardware_, *defaults_);
    EXPECT_EQ(volume(device), 0.25);
    EXPECT_FALSE(isSwitchedOff(switched));
    EXPECT_FALSE(defaults_->value(key)) << "an absent device is dropped, not kept";
    EXPECT_EQ(defaults_->flushes(), 1);
    EXPECT_THAT(log_.take(), ElementsAre("microphone notice: Unmuted 3 microphone(s) left muted"));

    const UserDefaults::Value ignored[] = {Muted(), std::string("odd"), true, 1.0};
    for (const auto& value : ignored) {
        defaults_->set(key, value);
        MicrophoneController::restoreLeftMuted(*hardware_, *defaults_);
        EXPECT_EQ(defaults_->value(key), value) << "not ours to remove";
    }
    EXPECT_THAT(log_.take(), IsEmpty());
}

} // namespace
} // namespace fadewell
