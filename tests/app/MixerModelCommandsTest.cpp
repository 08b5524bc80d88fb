#include "tests/app/MixerModelFixture.h"

#include <limits>

namespace fadewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MixerModelCommandsTest : public MixerModelFixture {
protected:
    void SetUp() override
    {
        MixerModelFixture::SetUp();
        launch();
        music_ = addApp(10, "com.music", "Music");
    }

    AudioObjectID music_ = 0;
};

TEST_F(MixerModelCommandsTest, VolumeIsClampedSavedShownAndHeard)
{
    const struct {
        double wanted;
        double volume;
    } cases[] = {{0.3, 0.3}, {-0.3, 0}, {1.7, 1}, {0.5, 0.5}, {std::nan(""), 1}};
    for (const auto& [wanted, volume] : cases) {
        onMain([this, wanted = wanted] {
            model_->setMuted(true, "com.music");
            model_->setVolume(wanted, model_->apps.get().front().id);
        });
        const AppAudioSettings expected(volume, false, {}, {});
        EXPECT_EQ(saved("com.music"), expected) << wanted;
        EXPECT_EQ(row("com.music")->settings, expected) << wanted;
        EXPECT_EQ(model_->rememberedApps.get().size(), expected.isDefault() ? 0U : 1U) << wanted;
        EXPECT_NEAR(heard(music_, speakers_), volume, 1e-3) << wanted;
    }
}

TEST_F(MixerModelCommandsTest, SavesThenShowsThenListsThenPushes)
{
    Lines order;
    std::size_t pending = 0;
    const auto rows = model_->apps.observe([&](const auto&) {
        order.push_back(saved("com.music").volume() == 0.3 ? "row after save" : "row too early");
    });
    const auto remembered = model_->rememberedApps.observe([&](const auto&) {
        order.push_back(row("com.music")->settings.volume() == 0.3 ? "list" : "list too early");
        order.push_back(std::to_string(time_->pendingTasks() - pending));
    });
    onMain([&] {
        pending = time_->pendingTasks();
        model_->setVolume(0.3, "com.music");
        order.push_back(std::to_string(time_->pendingTasks() - pending));
    });
    EXPECT_THAT(order, ElementsAre("row after save", "list", "0", "1"));
}

TEST_F(MixerModelCommandsTest, MuteKeepsTheVolume)
{
    onMain([this] {
        model_->setVolume(0.5, "com.music");
        model_->setMuted(true, "com.music");
    });
    EXPECT_EQ(heard(music_, speakers_), 0);
    EXPECT_EQ(saved("com.music"), AppAudioSettings(0.5, true, {}, {}));
    onMain([this] { model_->setMuted(false, "com.music"); });
    EXPECT_NEAR(heard(music_, speakers_), 0.5, 1e-3);
}

TEST_F(MixerModelCommandsTest, OutputIsRememberedWithItsName)
{
    onMain([this] { model_->setOutput("headset", "Headset", "com.music"); });
    EXPECT_EQ(saved("com.music"), AppAudioSettings(1, false, "headset", "Headset"));
    EXPECT_EQ(heard(music_, headset_), 1);
    EXPECT_EQ(heard(music_, speakers_), 0);
    EXPECT_EQ(row("com.music")->ownOutputDeviceID, speakers_);
    onMain([this] { model_->setOutput({}, {}, "com.music"); });
    EXPECT_EQ(heard(music_, speakers_), 1);
    EXPECT_THAT(model_->rememberedApps.get(), IsEmpty());
}

TEST_F(MixerModelCommandsTest, WorksForAppsWithoutARow)
{
    onMain([this] { model_->setVolume(0.2, "com.later"); });
    EXPECT_FALSE(row("com.later"));
    EXPECT_NEAR(heard(addApp(11, "com.later", "Later"), speakers_), 0.2, 1e-3);
}

TEST_F(MixerModelCommandsTest, ForgettingResetsTheRowAndTheSound)
{
    workspace_->running.push_back({.pid = 12, .name = "Nameless"});
    const auto nameless = addProcess(12);
    onMain([this] {
        model_->setOutput("headset", "Headset", "com.music");
        model_->setVolume(0.2, "com.absent");
        model_->setVolume(0.2, "pid:12"); // Works, but is never saved.
        model_->forget(model_->rememberedApps.get().back().id);
    });
    EXPECT_EQ(row("com.music")->settings, AppAudioSettings::default_());
    EXPECT_EQ(saved("com.music"), AppAudioSettings::default_());
    EXPECT_EQ(heard(music_, speakers_), 1);
    EXPECT_EQ(model_->rememberedApps.get().size(), 1U);
    EXPECT_NEAR(heard(nameless, speakers_), 0.2, 1e-3);

    defaults_->set(AppSettingsStore::defaultKey, UserDefaults::Data{"unreadable"});
    onMain([this] { model_->forgetAll(); });
    EXPECT_THAT(model_->rememberedApps.get(), IsEmpty());
    EXPECT_THAT(defaults_->keys(), IsEmpty());
    EXPECT_NEAR(heard(nameless, speakers_), 1, 1e-3);
}

TEST_F(MixerModelCommandsTest, StepsTheFrontmostAppAndSaysSo)
{
    const struct {
        AppAudioSettings before;
        double delta;
        double volume;
        const char* announcement;
    } cases[] = {
        {{}, -0.1, 0.9, "90: Music 90%"},
        {{}, 0.1, 1.0, "90: Music 100%"},
        {{0.95, false, {}, {}}, 0.1, 1.0, "90: Music 100%"},
        {{0.8, true, {}, {}}, -0.1, 0.0, "90: Music 0%"},
        {{0.8, true, {}, {}}, 0.1, 0.1, "90: Music 10%"},
    };
    for (const auto& [before, delta, volume, announcement] : cases) {
        workspace_->announcements.clear();
        workspace_->front = {.pid = 10, .bundleID = "com.music", .name = "Music"};
        onMain([&, delta = delta, old = before] {
            model_->setVolume(old.volume(), "com.music");
            model_->setMuted(old.isMuted, "com.music");
            model_->stepFrontmostApp(delta);
        });
        EXPECT_EQ(row("com.music")->settings, AppAudioSettings(volume, false, {}, {}));
        EXPECT_THAT(workspace_->announcements, ElementsAre(announcement));
    }
}

TEST_F(MixerModelCommandsTest, StepNeedsAnotherAppInFront)
{
    const std::optional<RunningApplication> fronts[] = {
        {}, {{.pid = 10}}, {{.pid = workspace_->pid, .bundleID = "app.own"}}};
    for (const auto& front : fronts) {
        workspace_->front = front;
        onMain([this] { model_->stepFrontmostApp(-0.1); });
    }
    EXPECT_THAT(workspace_->announcements, IsEmpty());
    EXPECT_EQ(defaults_->writes(), 0);
}

TEST_F(MixerModelCommandsTest, MicrophoneShowsAtOnceWhatWasAskedFor)
{
    EXPECT_EQ(model_->microphone.get(), (MicrophoneState{"Microphone", 0.8F, false, true}));
    const auto volume = [this] {
        return readProperty<float>(
            *hardware_,
            microphone_,
            {kAudioDevicePropertyVolumeScalar, kAudioObjectPropertyScopeInput});
    };
    onMain([this] {
        model_->toggleMicrophone();
        EXPECT_TRUE(model_->microphone.get().isMuted);
    });
    EXPECT_EQ(volume(), 0.0F);
    onMain([this] {
        model_->setMicrophoneVolume(0.5);
        EXPECT_EQ(model_->microphone.get(), (MicrophoneState{"Microphone", 0.5, false, true}));
    });
    EXPECT_EQ(volume(), 0.5F);
    hardware_->setInputVolume(microphone_, 0, 0.25F);
    time_->advance(0.2);
    EXPECT_EQ(model_->microphone.get().volume, 0.25);
}

} // namespace
} // namespace fadewell
