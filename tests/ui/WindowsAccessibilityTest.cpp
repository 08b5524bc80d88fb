// Somebody who sees nothing of the settings and the introduction operates all that is in them.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/Restriction.h"
#include "tests/ui/support/ScreenTest.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

namespace fadewell::integration {
namespace {

using nlohmann::json;

/// X keycodes.
constexpr int escapeKey = 9;
constexpr int returnKey = 36;
constexpr int superKey = 133;
constexpr int firstFunctionKey = 67;

constexpr auto isCompleted = "/hasCompletedOnboarding/value";

std::filesystem::path folder(const char* variable)
{
    return std::getenv(variable);
}

void writeFile(const std::filesystem::path& file, const std::string& text)
{
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

void strike(const std::vector<int>& keys)
{
    for (const int key : keys) {
        ASSERT_TRUE(atspi_generate_keyboard_event(key, nullptr, ATSPI_KEY_PRESS, nullptr));
    }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        ASSERT_TRUE(atspi_generate_keyboard_event(*key, nullptr, ATSPI_KEY_RELEASE, nullptr));
    }
}

class WindowsAccessibilityTest : public ScreenTest {
protected:
    void SetUp() override { std::filesystem::remove_all(settingsFile().parent_path()); }
    void TearDown() override { end(); }

    [[nodiscard]] static std::filesystem::path settingsFile()
    {
        return folder("XDG_CONFIG_HOME") / "fadewell/settings.json";
    }

    /// Null when there is no such value.
    [[nodiscard]] static json stored(const std::string& pointer)
    {
        std::ifstream file(settingsFile());
        const auto settings = json::parse(file, nullptr, false);
        const json::json_pointer place(pointer);
        return settings.contains(place) ? settings.at(place) : json();
    }

    static void expectStored(const std::string& pointer, const json& value)
    {
        EXPECT_TRUE(await([&] { return stored(pointer) == value; }))
            << pointer << " is " << stored(pointer) << " and not " << value;
    }

    [[nodiscard]] static bool opensAtLogin()
    {
        return exists(folder("XDG_CONFIG_HOME") / "autostart/app.fadewell.Fadewell.desktop");
    }

    void start()
    {
        // Without the apps of this machine.
        program_.emplace(std::vector<std::string>{
            "env", "XDG_DATA_DIRS=/nowhere", FADEWELL_PROGRAMS "/fadewell"});
    }

    void end()
    {
        program_->signal(SIGTERM);
        EXPECT_EQ(program_->wait(), 0) << program_->errors();
    }

    /// Of a program that has been introduced; starting it once more opens them.
    [[nodiscard]] Accessible openSettings(json settings = {})
    {
        settings["hasCompletedOnboarding"] = {{"type", "boolean"}, {"value", true}};
        writeFile(settingsFile(), settings.dump());
        start();
        EXPECT_TRUE(await([] {
            return runCommand({FADEWELL_PROGRAMS "/fadewellctl", "apps"}).code == 0;
        })) << program_->errors();
        EXPECT_EQ(runCommand({FADEWELL_PROGRAMS "/fadewell"}).code, 0);
        return window("Fadewell Settings");
    }

    [[nodiscard]] static Accessible window(const std::string& title)
    {
        return Accessible::desktop().expect(ATSPI_ROLE_FRAME, title);
    }

    static void press(const Accessible& within, AtspiRole role, const std::string& name)
    {
        const auto found = within.expect(role, name);
        EXPECT_TRUE(found.perform("Press")) << found.tree();
    }

    static void pressButton(const Accessible& within, const std::string& name)
    {
        press(within, ATSPI_ROLE_PUSH_BUTTON, name);
    }

    /// What can be operated, in order; nothing is told that nobody sees.
    static std::vector<std::string> controls(const Accessible& within)
    {
        std::vector<std::string> names;
        for (const auto& child : within.children()) {
            EXPECT_TRUE(child.has(ATSPI_STATE_VISIBLE)) << child.tree();
            // Qt says of texts, too, that they can have the keyboard.
            if (child.has(ATSPI_STATE_FOCUSABLE) && child.role() != ATSPI_ROLE_LABEL) {
                names.push_back(child.name());
            }
            const auto inside = controls(child);
            names.insert(names.end(), inside.begin(), inside.end());
        }
        return names;
    }

    static Accessible
    pane(const Accessible& settings, const std::string& name, const std::vector<std::string>& all)
    {
        press(settings, ATSPI_ROLE_PAGE_TAB, name);
        auto shown = settings.expect(ATSPI_ROLE_PANEL, name);
        EXPECT_TRUE(settings.expect(ATSPI_ROLE_PAGE_TAB, name).has(ATSPI_STATE_SELECTED));
        EXPECT_EQ(controls(shown), all) << shown.tree();
        return shown;
    }

    std::optional<ChildProcess> program_;
};

TEST_F(WindowsAccessibilityTest, EachSwitchOfTheSettingsIsStored)
{
    writeFile(folder("XDG_DATA_HOME") / "applications/us.zoom.Zoom.desktop",
              "[Desktop Entry]\nType=Application\nName=Zoom\nExec=true\n");
    const auto settings = openSettings();
    const auto calls =
        pane(settings, "Calls", {"Lower Other Apps During Calls", "Volume of Other Apps", "Zoom"});
    calls.expect(ATSPI_ROLE_SLIDER, "Volume of Other Apps").setValue(35);
    expectStored("/callModeSettings.v1/json/level", 0.35);
    const auto general = pane(
        settings,
        "General",
        {"Open at Login", "Show in System Tray", "Open Mixer", "Diagnostics…", "About Fadewell"});
    EXPECT_TRUE(general.find(ATSPI_ROLE_LABEL, "System Audio Recording: Allowed"))
        << general.tree();
    pressButton(general, "Open Mixer");
    EXPECT_TRUE(window("Fadewell").has(ATSPI_STATE_VISIBLE));
    pressButton(general, "About Fadewell");
    EXPECT_TRUE(window("About Fadewell").has(ATSPI_STATE_VISIBLE));
    pressButton(general, "Diagnostics…");
    EXPECT_TRUE(window("Diagnostics").has(ATSPI_STATE_VISIBLE));

    const auto storesAt = [](const char* pointer) {
        return [pointer](bool isOn) {
            return stored(pointer) == isOn;
        };
    };
    const struct {
        const char* pane;
        const char* title;
        bool isOnFirst;
        std::function<bool(bool isOn)> isTaken;
    } switches[] = {
        {"General",
         "Open at Login",
         false,
         [](bool isOn) {
             return opensAtLogin() == isOn;
         }},
        {"General", "Show in System Tray", true, storesAt("/showInMenuBar/value")},
        {"Calls",
         "Lower Other Apps During Calls",
         true,
         storesAt("/callModeSettings.v1/json/isAutomatic")},
        {"Calls",
         "Zoom",
         true,
         [](bool isOn) {
             return stored("/callModeSettings.v1/json/excludedApps").empty() == isOn;
         }},
    };
    for (const auto& each : switches) {
        press(settings, ATSPI_ROLE_PAGE_TAB, each.pane);
        for (const bool isOn : {!each.isOnFirst, each.isOnFirst}) {
            press(settings, ATSPI_ROLE_CHECK_BOX, each.title);
            EXPECT_TRUE(await([&] { return each.isTaken(isOn); })) << each.title << ' ' << isOn;
            const auto toggle = settings.expect(ATSPI_ROLE_CHECK_BOX, each.title);
            EXPECT_TRUE(await([&] { return toggle.has(ATSPI_STATE_CHECKED) == isOn; }));
        }
    }
    expectStored("/settingsPane/value", "calls");
}

TEST_F(WindowsAccessibilityTest, RememberedAppsAreForgottenOneByOneOrAfterAQuestionAll)
{
    const json app{{"volume", 0.5}};
    const auto settings = openSettings(
        {{"appAudioSettings.v1",
          {{"type", "data"}, {"json", {{"alpha", app}, {"beta", app}, {"gamma", app}}}}}});
    const auto apps =
        pane(settings, "Apps", {"Forget alpha", "Forget beta", "Forget gamma", "Forget All"});
    EXPECT_TRUE(apps.find(ATSPI_ROLE_LABEL, "alpha: 50%")) << apps.tree();
    pressButton(apps, "Forget beta");
    expectStored("/appAudioSettings.v1/json/beta", nullptr);
    for (const auto* answer : {"Cancel", "Forget All"}) {
        EXPECT_EQ(stored("/appAudioSettings.v1/json").size(), 2U);
        pressButton(apps, "Forget All");
        pressButton(settings.expect(ATSPI_ROLE_ALERT, "Forget All Apps?"), answer);
        EXPECT_TRUE(await([&] { return !settings.find(ATSPI_ROLE_ALERT, "Forget All Apps?"); }));
    }
    EXPECT_TRUE(await([] { return stored("/appAudioSettings.v1/json").empty(); }));
    EXPECT_TRUE(await([&] { return apps.find(ATSPI_ROLE_HEADING, "No Remembered Apps"); }));
    EXPECT_EQ(controls(apps), std::vector<std::string>());
}

TEST_F(WindowsAccessibilityTest, EachRecorderRecordsAndClearsItsShortcut)
{
    const std::array<std::pair<std::string, std::string>, 4> recorders{
        {{"Turn Microphone On or Off", "toggleMicrophone"},
         {"Turn Call Mode On or Off", "toggleCallMode"},
         {"Turn Up the App in Front", "raiseFrontmostApp"},
         {"Turn Down the App in Front", "lowerFrontmostApp"}}};
    const auto settings = openSettings();
    const auto shortcuts =
        pane(settings,
             "Shortcuts",
             {recorders[0].first, recorders[1].first, recorders[2].first, recorders[3].first});
    int number = 1;
    for (const auto& [title, key] : recorders) {
        const auto place = "/KeyboardShortcuts_" + key + "/value";
        const auto field = shortcuts.expect(ATSPI_ROLE_TEXT, title);
        EXPECT_EQ(field.description(), "None");
        press(shortcuts, ATSPI_ROLE_TEXT, title);
        ASSERT_TRUE(await([&] { return field.description().starts_with("Press the shortcut"); }));
        strike({superKey, firstFunctionKey + number - 1});
        EXPECT_TRUE(await([&] { return stored(place).is_string(); })) << title;
        const auto spoken = "Super+F" + std::to_string(number++);
        EXPECT_TRUE(await([&] { return field.description() == spoken; })) << field.description();
        pressButton(shortcuts, "Clear " + title);
        EXPECT_TRUE(await([&] { return !stored(place).is_string(); })) << title;
    }
}

TEST_F(WindowsAccessibilityTest, TheIntroductionAsksForThePermissionAndOpensAtLogin)
{
    const auto introduction = [this] {
        const Restriction restriction;
        start();
        return window("Welcome to Fadewell");
    }();
    EXPECT_EQ(controls(introduction), std::vector<std::string>{"Continue"});
    pressButton(introduction, "Continue");
    pressButton(introduction, "Allow Access");
    const auto* const waits = "Waiting for the sound system to allow it.";
    static_cast<void>(introduction.expect(ATSPI_ROLE_LABEL, waits));
    EXPECT_EQ(controls(introduction), (std::vector<std::string>{"Not Now", "Allow Access"}));
    Restriction::grant();
    static_cast<void>(introduction.expect(ATSPI_ROLE_LABEL, "Allowed"));
    pressButton(introduction, "Continue");
    for (const bool isOn : {true, false}) {
        press(introduction, ATSPI_ROLE_CHECK_BOX, "Open at Login");
        EXPECT_TRUE(await([&] { return opensAtLogin() == isOn; }));
    }
    EXPECT_EQ(stored(isCompleted), json());
    pressButton(introduction, "Done");
    expectStored(isCompleted, true);
}

TEST_F(WindowsAccessibilityTest, TheReturnKeyGoesOnAndClosingAtAnyStepIsForGood)
{
    const char* const titles[] = {
        "Welcome to Fadewell", "Allow Access to App Sound", "You’re All Set"};
    for (int last = 0; last < 3; ++last) {
        SetUp();
        start();
        const auto introduction = window(titles[0]);
        EXPECT_TRUE(await([&] { return introduction.has(ATSPI_STATE_ACTIVE); }));
        for (int step = 0; step < last; ++step) {
            strike({returnKey});
            static_cast<void>(introduction.expect(ATSPI_ROLE_HEADING, titles[step + 1]));
        }
        strike({escapeKey});
        expectStored(isCompleted, true);
        end();
    }
    const auto settings = openSettings();
    EXPECT_FALSE(Accessible::desktop().find(ATSPI_ROLE_FRAME, titles[0]));
}

} // namespace
} // namespace fadewell::integration
