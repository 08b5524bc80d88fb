#include "tests/app/MixerModelFixture.h"

#include <cmath>

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

    [[nodiscard]] AppAudioSettings saved() const
    {
        return AppSettingsStore(defaults_).settings("com.music");
    }

    AudioObjectID music_ = 0;
};

TEST_F(MixerModelCommandsTest, VolumeIsClampedSavedShownAndHeard)
{
    const std::pair<double, double> cases[] = {
        {0.3, 0.3}, {-0.3, 0}, {1.7, 1}, {0.5, 0.5}, {std::nan(""), 1}, {-HUGE_VAL, 1}};
    for (const auto& [wanted, volume] : cases) {
        onMain([this] { model_->setMuted(true, "com.music"); });
        EXPECT_EQ(heard(music_, speakers_), 0);
        EXPECT_TRUE(saved().isMuted);
        onMain([this, level = wanted] { model_->setVolume(level, model_->apps.get()[0].id); });
        const AppAudioSettings expected(volume, false, {}, {});
        EXPECT_EQ(saved(), expected) << wanted;
        EXPECT_EQ(row("com.music")->settings, expected) << wanted;
        EXPECT_EQ(model_->rememberedApps.get().size(), expected.isDefault() ? 0U : 1U) << wanted;
        EXPECT_NEAR(heard(music_, speakers_), volume, 1e-3) << wanted;
    }
}

TEST_F(MixerModelCommandsTest, SavesThenShowsThenListsThenPushes)
{
    std::string order;
    std::size_t pending = 0;
    const auto rows = model_->apps.observe(
        [&](const auto&) { order += saved().volume() == 0.3 ? "row " : "row too early "; });
    const auto remembered = model_->rememberedApps.observe([&](const auto&) {
        order += row("com.music")->settings.volume() == 0.3 ? "list " : "list too early ";
        order += time_->pendingTasks() == pending ? "push" : "push too early";
    });
    onMain([&] {
        pending = time_->pendingTasks();
        model_->setVolume(0.3, "com.music");
        EXPECT_EQ(time_->pendingTasks(), pending + 1);
    });
    EXPECT_EQ(order, "row list push");
}

TEST_F(MixerModelCommandsTest, OutputIsRememberedUntilItIsForgotten)
{
    workspace_->running.push_back({.pid = 12, .name = "Nameless"});
    const auto nameless = addProcess(12, true);
    onMain([this] {
        model_->setOutput("headset", "Headset", "com.music");
        model_->setVolume(0.2, "com.absent"); // Works for apps that are not there, too,
        model_->setVolume(0.2, "pid:12");     // and for those that are never saved.
    });
    EXPECT_EQ(saved(), AppAudioSettings(1, false, "headset", "Headset"));
    EXPECT_EQ(heard(music_, headset_), 1);
    EXPECT_EQ(heard(music_, speakers_), 0);

    onMain([this] { model_->forget(model_->rememberedApps.get().back().id); });
    EXPECT_EQ(row("com.music")->settings, AppAudioSettings::default_());
    EXPECT_EQ(saved(), AppAudioSettings::default_());
    EXPECT_EQ(heard(music_, speakers_), 1);
    EXPECT_EQ(model_->rememberedApps.get().size(), 1U);
    EXPECT_NEAR(heard(nameless, speakers_), 0.2, 1e-3);

    onMain([this] { model_->forgetAll(); });
    EXPECT_THAT(model_->rememberedApps.get(), IsEmpty());
    EXPECT_THAT(defaults_->keys(), IsEmpty());
    EXPECT_NEAR(heard(nameless, speakers_), 1, 1e-3);
}

TEST_F(MixerModelCommandsTest, GatesWhatIsRememberedFromTheStartUntilTheEnd)
{
    AppSettingsStore(defaults_).set(AppAudioSettings(0.5, false, "headset", "Headset"),
                                    "org.saved");
    launch();
    const GatedApp saved{"org.saved", 0.5, "headset"};
    EXPECT_THAT(gate_->gatedApps, ElementsAre(saved));
    onMain([this] { model_->setVolume(0.25, "org.music"); });
    EXPECT_THAT(gate_->gatedApps, ElementsAre(GatedApp{"org.music", 0.25}, saved));
    onMain([this] { model_->setMuted(true, "org.music"); });
    EXPECT_THAT(gate_->gatedApps, ElementsAre(GatedApp{"org.music", 0}, saved));
    onMain([this] {
        model_->setVolume(1, "org.music");
        model_->setCallModeActive(true); // Lowers apps, but gates none.
    });
    EXPECT_THAT(gate_->gatedApps, ElementsAre(saved));
    onMain([this] { model_->stop(); });
    EXPECT_THAT(gate_->gatedApps, IsEmpty());
}

TEST_F(MixerModelCommandsTest, StepsTheFrontmostAppAndSaysSo)
{
    const RunningApplication music{.pid = 10, .bundleID = "com.music", .name = "Music"};
    const struct {
        std::optional<RunningApplication> front;
        AppAudioSettings before;
        double delta;
        double volume;
        std::vector<std::string> announcements;
    } cases[] = {
        {music, {}, -0.1, 0.9, {"90: Music 90%"}},
        {music, {0.95, false, {}, {}}, 0.1, 1.0, {"90: Music 100%"}},
        {music, {}, 0.1, 1.0, {"90: Music 100%"}},
        {music, {0.8, true, {}, {}}, -0.1, 0.0, {"90: Music 0%"}},
        {music, {0.8, true, {}, {}}, 0.1, 0.1, {"90: Music 10%"}},
        {{{.pid = 10, .bundleID = "com.music"}}, {}, -0.5, 0.5, {"90: com.music 50%"}},
        {{}, {0.5, false, {}, {}}, 0.1, 0.5, {}},
        {{{.pid = 10}}, {0.5, false, {}, {}}, 0.1, 0.5, {}},
        {{{.pid = workspace_->pid, .bundleID = "com.music"}}, {}, -0.1, 1.0, {}},
    };
    for (const auto& [front, before, delta, volume, announcements] : cases) {
        workspace_->announcements.clear();
        workspace_->front = front;
        onMain([&, step = delta, old = before] {
            model_->setVolume(old.volume(), "com.music");
            model_->setMuted(old.isMuted, "com.music");
            model_->stepFrontmostApp(step);
        });
        EXPECT_EQ(row("com.music")->settings, AppAudioSettings(volume, false, {}, {}));
        EXPECT_EQ(workspace_->announcements, announcements);
    }
}

TEST_F(MixerModelCommandsTest, WhereTheDesktopHidesTheFrontTheLatestPlayerIsMeant)
{
    const auto game = addApp(20, "com.game", "Game", false);
    const auto radio = addApp(30, "com.radio", "Radio", false);
    const struct {
        bool hidesFront;
        bool isGamePlaying;
        bool isRadioPlaying;
        std::optional<std::string> expected;
    } steps[] = {
        {true, false, false, "com.music"},
        {true, true, false, "com.game"},
        {true, true, true, "com.radio"},
        {false, true, true, std::nullopt},
        {true, true, false, "com.game"},
        {true, false, false, "com.music"},
    };
    for (const auto& each : steps) {
        workspace_->hidesFront = each.hidesFront;
        setRunning(game, each.isGamePlaying, false);
        setRunning(radio, each.isRadioPlaying, false);
        onMain([&] { EXPECT_EQ(model_->stepFrontmostApp(-0.1), each.expected); });
    }
    EXPECT_THAT(
        workspace_->announcements,
        ElementsAre(
            "90: Music 90%", "90: Game 90%", "90: Radio 90%", "90: Game 80%", "90: Music 80%"));
}

TEST_F(MixerModelCommandsTest, MicrophoneShowsAtOnceWhatWasAskedFor)
{
    EXPECT_EQ(model_->microphone.get(), (MicrophoneState{"Microphone", 0.8F, false, true}));
    onMain([this] {
        model_->toggleMicrophone();
        EXPECT_TRUE(model_->microphone.get().isMuted);
    });
    EXPECT_EQ(microphoneVolume(), 0.0F);
    onMain([this] {
        model_->setMicrophoneVolume(0.5);
        EXPECT_EQ(model_->microphone.get(), (MicrophoneState{"Microphone", 0.5, false, true}));
    });
    EXPECT_EQ(microphoneVolume(), 0.5F);
}

} // namespace
} // namespace fadewell
