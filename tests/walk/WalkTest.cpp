// A newcomer's first quarter of an hour, from ./run to the second start: what is on the screen, and
// what is heard. With FADEWELL_WALK_PICTURES=FOLDER it leaves a picture of each step there.

#include "tests/integration/support/Await.h"
#include "tests/ui/support/ScreenTest.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace fadewell::integration {
namespace {

constexpr auto welcomeTitle = "Welcome to Fadewell";
constexpr auto settingsTitle = "Fadewell Settings";
constexpr auto mixerTitle = "Fadewell";
constexpr int trayHeight = 24;
constexpr unsigned escapeKey = 0xff1b;
constexpr double chosenVolume = 0.4;
constexpr double chosenCallLevel = 0.1;

class WalkTest : public ScreenTest {
public:
    static void SetUpTestSuite()
    {
        ScreenTest::SetUpTestSuite();
        tray_ =
            std::make_unique<ChildProcess>(std::vector<std::string>{"trayer",
                                                                    "--edge",
                                                                    "top",
                                                                    "--align",
                                                                    "left",
                                                                    "--widthtype",
                                                                    "request",
                                                                    "--height",
                                                                    std::to_string(trayHeight)});
    }
    static void TearDownTestSuite()
    {
        tray_.reset();
        ScreenTest::TearDownTestSuite();
    }

protected:
    void TearDown() override
    {
        if (HasFailure() && fadewell_) {
            ADD_FAILURE() << "./run:\n" << fadewell_->output() << fadewell_->errors();
        }
    }

    void start() { fadewell_.emplace(std::vector<std::string>{FADEWELL_SOURCE_DIR "/run"}); }

    static bool isOpen(const std::string& title)
    {
        const auto window = Accessible::desktop().find(ATSPI_ROLE_FRAME, title);
        return window && window->has(ATSPI_STATE_SHOWING);
    }
    /// Waits for it.
    static Accessible window(const std::string& title)
    {
        if (!await([&] { return isOpen(title); })) {
            throw std::runtime_error("“" + title + "” isn't open");
        }
        return Accessible::desktop().expect(ATSPI_ROLE_FRAME, title);
    }
    static void press(const Accessible& object)
    {
        EXPECT_TRUE(object.perform("Press")) << object.tree();
    }
    /// `share` is of its whole range.
    static void move(const Accessible& slider, double share)
    {
        const auto range = slider.range().value();
        slider.setValue(range.minimum + share * (range.maximum - range.minimum));
    }
    static void pressButton(const std::string& title, const std::string& name)
    {
        press(window(title).expect(ATSPI_ROLE_PUSH_BUTTON, name));
    }
    static void chooseFromMenu(const std::string& entry)
    {
        pressButton(mixerTitle, "More");
        press(window(mixerTitle).expect(ATSPI_ROLE_MENU_ITEM, entry));
    }
    /// A click on the icon in the tray.
    static Accessible openMixer()
    {
        click(trayHeight / 2, trayHeight / 2);
        return window(mixerTitle);
    }
    static Accessible control(const std::string& name)
    {
        return window(mixerTitle).expect(ATSPI_ROLE_CHECK_BOX, name);
    }
    static bool isMicrophoneOff()
    {
        const auto shown = runTool({"pactl", "get-source-mute", "microphone"});
        return shown.output.find("yes") != std::string::npos;
    }

    /// What the music is heard like at the output, as a factor.
    void expectLevel(double level) const
    {
        EXPECT_TRUE(speakers_->awaitGain(decibels(level))) << "for " << level;
    }

    static void picture(const std::string& name, const Accessible& window)
    {
        if (const char* folder = std::getenv("FADEWELL_WALK_PICTURES")) {
            takePicture(std::filesystem::path(folder) / ("walk-" + name + ".png"), window.bounds());
        }
    }

    void isWelcomed()
    {
        start();
        const auto welcome = window(welcomeTitle);
        picture("1-welcome", welcome);
        pressButton(welcomeTitle, "Continue");
        EXPECT_TRUE(await([&] { return welcome.find(ATSPI_ROLE_LABEL, "Allowed").has_value(); }));
        picture("2-permission", welcome);
        pressButton(welcomeTitle, "Continue");
        press(welcome.expect(ATSPI_ROLE_CHECK_BOX, "Open at Login"));
        const auto entry = std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "autostart" /
                           "app.fadewell.Fadewell.desktop";
        EXPECT_TRUE(await([&] { return std::filesystem::exists(entry); }));
        picture("3-done", welcome);
        EXPECT_FALSE(isOpen(mixerTitle)) << "two windows at once";
        pressButton(welcomeTitle, "Done");
        EXPECT_TRUE(await([] { return !isOpen(welcomeTitle); }));
    }

    void turnsTheMusicDown()
    {
        const auto mixer = window(mixerTitle);
        expectLevel(1); // Nothing has been touched.
        const auto row = mixer.expect(ATSPI_ROLE_LIST_ITEM, "mpv Media Player");
        move(row.expect(ATSPI_ROLE_SLIDER, "Volume"), chosenVolume);
        expectLevel(chosenVolume);
        picture("4-mixer", mixer);
    }

    void choosesWhatCallsLower()
    {
        chooseFromMenu("Settings…");
        const auto settings = window(settingsTitle);
        picture("5-settings", settings);
        press(settings.expect(ATSPI_ROLE_PAGE_TAB, "Calls"));
        move(settings.expect(ATSPI_ROLE_SLIDER, "Volume of Other Apps"), chosenCallLevel);
        const auto browser = settings.expect(ATSPI_ROLE_CHECK_BOX, "Chromium Web Browser");
        EXPECT_TRUE(browser.has(ATSPI_STATE_CHECKED));
        picture("6-calls", settings);
        strike(escapeKey);
        EXPECT_TRUE(await([] { return !isOpen(settingsTitle); }));
    }

    void getsACall()
    {
        const auto mixer = openMixer();
        call_.emplace(callInBrowser(tone().parent_path()));
        expectLevel(chosenVolume * chosenCallLevel);
        EXPECT_EQ(control("Call Mode").description(),
                  "On during your call in Chromium Web Browser.");
        picture("7-call", mixer);
    }

    void mutesTheMicrophone()
    {
        press(control("Microphone"));
        EXPECT_TRUE(await([] { return isMicrophoneOff(); }));
        EXPECT_TRUE(
            await([] { return control("Microphone").description() == "Off for all apps."; }));
        picture("8-muted", window(mixerTitle));
        press(control("Microphone"));
        EXPECT_TRUE(await([] { return !isMicrophoneOff(); }));
    }

    void hangsUp()
    {
        call_->signal(SIGTERM);
        static_cast<void>(call_->wait());
        expectLevel(chosenVolume);
        EXPECT_FALSE(control("Call Mode").has(ATSPI_STATE_CHECKED));
    }

    void quits()
    {
        chooseFromMenu("Quit Fadewell");
        EXPECT_EQ(fadewell_->wait(), 0);
        expectLevel(1);
    }

    void startsAgain()
    {
        start();
        const auto mixer = window(mixerTitle);
        EXPECT_FALSE(isOpen(welcomeTitle));
        expectLevel(chosenVolume);
        picture("9-again", mixer);
        fadewell_->signal(SIGINT);
        EXPECT_EQ(fadewell_->wait(), 0);
        expectLevel(1);
    }

    void takeAllSteps()
    {
        for (const auto step : {&WalkTest::isWelcomed,
                                &WalkTest::turnsTheMusicDown,
                                &WalkTest::choosesWhatCallsLower,
                                &WalkTest::getsACall,
                                &WalkTest::mutesTheMicrophone,
                                &WalkTest::hangsUp,
                                &WalkTest::quits,
                                &WalkTest::startsAgain})
        {
            (this->*step)();
            if (HasFailure()) {
                return; // The next ones rest on it.
            }
        }
    }

    static std::unique_ptr<ChildProcess> tray_;
    std::optional<ChildProcess> fadewell_;
    std::optional<ChildProcess> call_;
};

std::unique_ptr<ChildProcess> WalkTest::tray_;

TEST_F(WalkTest, FromTheFirstStartToTheSecond)
{
    const auto music = play("mpv", tone());
    ASSERT_TRUE(speakers_->awaitGain(0)) << music.errors();
    takeAllSteps();
}

} // namespace
} // namespace fadewell::integration
