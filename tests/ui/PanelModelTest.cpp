// What the panel says and offers in every situation of the mixer.

#include "tests/ui/PanelFixture.h"

namespace fadewell {
namespace {

using testing::ElementsAre;

class PanelModelTest : public PanelFixture {
protected:
    [[nodiscard]] static QVariant shown(AppRowsModel::Role role, int row = 0)
    {
        auto& apps = *model().apps();
        return apps.data(apps.index(row), role);
    }
};

TEST_F(PanelModelTest, ARowShowsTheLevelOfItsApp)
{
    addApp(10, "org.example.music", "Music");
    open();
    struct Case {
        double volume;
        const char* percent;
        int waves;
    };
    for (const auto& [volume, percent, waves] :
         {Case{0, "0%", 0}, {0.01, "1%", 1}, {0.34, "34%", 2}, {0.7, "70%", 3}, {1, "100%", 3}})
    {
        onMain([&] { model().setVolume("org.example.music", volume); });
        EXPECT_EQ(shown(AppRowsModel::volume), volume);
        EXPECT_EQ(shown(AppRowsModel::percent).toString(), percent);
        EXPECT_EQ(shown(AppRowsModel::waves), waves) << volume;
    }
    onMain([&] { model().setMuted("org.example.music", true); });
    EXPECT_EQ(shown(AppRowsModel::isMuted), true);
    EXPECT_EQ(shown(AppRowsModel::volume), 1.0);
}

TEST_F(PanelModelTest, AnOutputIsChosenByItsNameAndStaysWhenUnplugged)
{
    addApp(10, "org.example.music", "Music");
    open();
    onMain([&] { model().prepareOutputMenu("org.example.music"); });
    auto& menu = *model().outputMenu();
    EXPECT_THAT(titles(menu), ElementsAre("*Use System Setting|", "Headset", "Speakers"));
    EXPECT_EQ(shown(AppRowsModel::outputName), "Speakers");
    onMain([&] { menu.choose(1); });
    EXPECT_THAT(titles(menu), ElementsAre("Use System Setting|", "*Headset", "Speakers"));
    EXPECT_EQ(shown(AppRowsModel::outputName), "Headset");
    EXPECT_EQ(shown(AppRowsModel::isRouted), true);

    hardware_->removeDevice(headset_);
    time_->advance(1);
    EXPECT_THAT(titles(menu),
                ElementsAre("Use System Setting|", "Speakers", "*Headset (Not Connected)"));
    EXPECT_EQ(shown(AppRowsModel::outputName), "Speakers");
    onMain([&] { menu.choose(2); }); // What is chosen already stays as it is.
    EXPECT_EQ(row("org.example.music")->settings.outputDeviceName, "Headset");
    onMain([&] { menu.choose(0); });
    EXPECT_THAT(titles(menu), ElementsAre("*Use System Setting|", "Speakers"));
    EXPECT_EQ(shown(AppRowsModel::isRouted), false);
}

TEST_F(PanelModelTest, TheCaptionOfCallModeNamesACallOnlyWhileOneIsDetected)
{
    const auto call = addApp(10, "us.zoom.xos", "Zoom");
    addApp(11, "org.example.music", "Music");
    open();
    EXPECT_EQ(model().callModeCaption(), "Lowers other apps when a call starts.");
    onMain([&] { model().setCallModeActive(true); });
    EXPECT_EQ(model().callModeCaption(), "On until you turn it off.");
    setRunning(call, true, true);
    time_->advance(2);
    EXPECT_EQ(model().callModeCaption(), "On during your call in Zoom.");
    EXPECT_EQ(shown(AppRowsModel::badge, 0), "Lowered");
    EXPECT_EQ(shown(AppRowsModel::badge, 1), "In Call");
    EXPECT_EQ(model().microphoneUsers(), "In use by Zoom.");
    onMain([&] { model().setCallModeActive(false); });
    EXPECT_EQ(model().callModeCaption(), "Lowers other apps when a call starts.");
    EXPECT_EQ(shown(AppRowsModel::badge, 1), "");
}

TEST_F(PanelModelTest, TheMicrophoneCanAlwaysBeTurnedOnAgain)
{
    open();
    struct Case {
        MicrophoneState state;
        const char* caption;
        bool canSwitch;
        bool hasVolume;
    };
    const Case cases[] = {{{{}, {}, false, false}, "No Microphone", false, false},
                          {{"Desk", {}, false, true}, "Desk", true, false},
                          {{"Desk", 0.5, false, false}, "Desk", false, true},
                          {{"Desk", 0.5, true, false}, "Off for all apps.", true, true}};
    for (const auto& [state, caption, canSwitch, hasVolume] : cases) {
        onMain([&, &state = state] { model_->microphone.set(state); });
        EXPECT_EQ(model().microphoneCaption(), caption);
        EXPECT_EQ(model().canSwitchMicrophone(), canSwitch) << caption;
        EXPECT_EQ(model().hasMicrophoneVolume(), hasVolume) << caption;
        EXPECT_EQ(model().isMicrophoneOn(), !state.isMuted);
    }
}

TEST_F(PanelModelTest, WhatCantBeControlledSaysWhyBelowTheRest)
{
    addApp(10, "org.example.music", "Music");
    workspace_->running.push_back({.pid = 20, .bundleID = "org.example.daw", .name = "A Studio"});
    AudioProcess process;
    process.id = 900;
    process.pid = 20;
    process.isRunningOutput = true;
    obstacles_->processes = {{process, UntappableReason::passthrough}};
    open();
    ASSERT_EQ(model().apps()->count(), 2);
    EXPECT_EQ(shown(AppRowsModel::obstacle, 0), "");
    EXPECT_EQ(shown(AppRowsModel::name, 1), "A Studio");
    EXPECT_EQ(shown(AppRowsModel::obstacle, 1), "Sends encoded sound and can’t be controlled.");
}

TEST_F(PanelModelTest, TheMenuOffersOnlyWhatCanBeDone)
{
    std::string done;
    open({.showAbout = [&] { done += "about "; },
          .quit =
              [&] {
                  done += "quit";
              }});
    auto& menu = *model().moreMenu();
    EXPECT_THAT(titles(menu), ElementsAre("About Fadewell|", "Quit Fadewell"));
    onMain([&] { menu.choose(0); });
    EXPECT_FALSE(panel_->isVisible());
    onMain([&] { menu.choose(1); });
    EXPECT_EQ(done, "about quit");
    onMain([&] { panel_.reset(); });
    open();
    EXPECT_EQ(model().moreMenu()->count(), 0);
}

TEST_F(PanelModelTest, AClosedPanelFollowsNothing)
{
    open();
    auto& apps = *model().apps();
    onMain([&] { panel_->hide(); });
    addApp(10, "org.example.music", "Music");
    EXPECT_EQ(apps.count(), 0);
    EXPECT_FALSE(model().findChild<QTimer*>() != nullptr &&
                 model().findChild<QTimer*>()->isActive());
    onMain([&] { panel_->show(); });
    EXPECT_EQ(apps.count(), 1);
}

} // namespace
} // namespace fadewell
