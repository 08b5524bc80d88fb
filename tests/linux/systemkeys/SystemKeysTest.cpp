#include "platform/linux/systemkeys/SystemKeys.h"

#include "platform/linux/hotkeys/LinuxHotKeyService.h"
#include "platform/linux/systemkeys/GtkAccelerator.h"
#include "platform/linux/systemkeys/KdeShortcuts.h"
#include "platform/linux/systemkeys/QtKeySequence.h"
#include "platform/linux/systemkeys/XfceShortcuts.h"
#include "shortcuts/Modifiers.h"
#include "tests/linux/TemporaryFolder.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>
#include <map>

namespace fadewell {
namespace {

using namespace shortcuts::classic;
using shortcuts::Shortcut;
using testing::UnorderedElementsAre;

constexpr const char* xfceDefaults = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="commands" type="empty">
    <property name="default" type="empty">
      <property name="&lt;Primary&gt;&lt;Alt&gt;t" type="string" value="exo-open --launch TerminalEmulator"/>
      <property name="&lt;Alt&gt;F3" type="string" value="xfce4-appfinder">
        <property name="startup-notify" type="bool" value="true"/>
      </property>
    </property>
  </property>
  <property name="xfwm4" type="empty">
    <property name="default" type="empty">
      <property name="&lt;Alt&gt;F4" type="string" value="close_window_key"/>
      <property name="&lt;Super&gt;Tab" type="string" value="switch_window_key"/>
    </property>
  </property>
  <property name="providers" type="array"><value type="string" value="commands"/></property>
</channel>)";
constexpr const char* xfceOwn = R"(<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="commands" type="empty">
    <property name="custom" type="empty">
      <property name="&lt;Super&gt;m" type="string" value="player &quot;&amp;&quot;"/>
      <property name="override" type="bool" value="true"/>
    </property>
  </property>
  <property name="xfwm4" type="empty">
    <property name="default" type="empty"><property name="&lt;Alt&gt;F4" type="empty"/></property>
  </property>
</channel>)";
constexpr const char* kde = "[kwin]\n"
                            "_k_friendly_name=Alt+F1\n"
                            "Window Close=Alt+F4,Alt+F4,Close Window\n"
                            "Overview=Meta+W\\tMeta+M,Meta+W,Toggle Overview\n"
                            "Comma=Meta+\\\\,,none,Something, with a comma\n"
                            "Plus=Meta++,none,Zoom\n"
                            "Cube=none,Ctrl+F9,Desktop Cube\r\n"
                            "# a remark=Meta+R\n"
                            "[services][org.kde.konsole.desktop]\n"
                            "_launch=Ctrl+Alt+T\n";

/// What is said of this on a US keyboard.
std::vector<Shortcut> onKeyboard(std::vector<KeyBinding> bindings)
{
    LinuxHotKeyService keys;
    keys.setSystemKeys([&] { return bindings; });
    return keys.systemHotKeys();
}

TEST(SystemKeysTest, CombinationsBecomeRealKeys)
{
    const struct {
        std::optional<KeyBinding> binding;
        std::vector<Shortcut> expected;
    } cases[] = {
        {parseGtkAccelerator("<Super><Shift>Page_Up"), {{116, command | shift}}},
        {parseGtkAccelerator("<primary><ALT>Delete"), {{117, control | option}}},
        {parseGtkAccelerator("<Super>L"), {{37, command}}}, // Capital or not is shift's.
        {parseGtkAccelerator("<Super>exclam"), {{18, command | shift}}},
        {parseGtkAccelerator("<Super>Above_Tab"), {{50, command}}},
        {parseGtkAccelerator("<Mod4>0x3a"), {{46, command}}},
        {parseGtkAccelerator("<Shift>ISO_Left_Tab"), {{48, shift}}},
        {parseGtkAccelerator("XF86AudioMute"), {{74, 0}}},
        {parseGtkAccelerator("<Control>KP_1"), {{83, control}}},
        {parseGtkAccelerator("<Super>XF86Eject"), {}}, // No shortcut can have it.
        {parseGtkAccelerator("<Hyper>m"), {}},
        {parseGtkAccelerator("<Super"), {}},
        {parseGtkAccelerator("<Super>"), {}},
        {parseGtkAccelerator("disabled"), {}},
        {parseGtkAccelerator("0x7"), {}},
        {parseQtKeySequence("Meta+Ctrl+Alt+Shift+PgDown"),
         {{121, command | control | option | shift}}},
        {parseQtKeySequence("Meta+!"), {{18, command | shift}}},
        {parseQtKeySequence("Meta+Num++"), {{69, command}}},
        {parseQtKeySequence("Num+5"), {{87, 0}}},
        {parseQtKeySequence("Enter"), {{76, 0}}},
        {parseQtKeySequence("Volume Up"), {{72, 0}}},
        {parseQtKeySequence("Ctrl+K, Ctrl+D"), {{40, control}}},
        {parseQtKeySequence("Meta+"), {}},
        {parseQtKeySequence("none"), {}},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(each.binding ? onKeyboard({*each.binding}) : std::vector<Shortcut>(),
                  each.expected)
            << (&each - cases);
    }
}

TEST(SystemKeysTest, AKeyIsWhereTheLayoutHasIt)
{
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref);
    const struct {
        const char* layouts;
        xkb_keysym_t symbol;
        std::vector<int> evdev;
        bool needsShift;
    } cases[] = {
        {"de", XKB_KEY_z, {KEY_Y}, false},
        {"us,de", XKB_KEY_z, {KEY_Z}, false},
        {"us,de", XKB_KEY_udiaeresis, {KEY_LEFTBRACE}, false},
        {"ru", XKB_KEY_z, {KEY_Z}, false},
        {"fr", XKB_KEY_1, {KEY_1}, true},
        {"us", XKB_KEY_Cyrillic_ya, {}, false},
    };
    for (const auto& each : cases) {
        const xkb_rule_names names{nullptr, nullptr, each.layouts, nullptr, nullptr};
        TypedCharacters characters;
        characters.setKeymap(std::shared_ptr<xkb_keymap>(
            xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS),
            xkb_keymap_unref));
        std::vector<int> evdev;
        for (const auto& key : characters.keysOf(each.symbol)) {
            evdev.push_back(static_cast<int>(key.keycode) - 8);
            EXPECT_EQ(key.needsShift, each.needsShift) << each.layouts;
        }
        EXPECT_EQ(evdev, each.evdev) << each.layouts;
    }
}

TEST(SystemKeysTest, EachDesktopIsReadInItsOwnWayAndNoOther)
{
    const TemporaryFolder folder;
    folder.write("system/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml",
                 xfceDefaults);
    folder.write("own/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml", xfceOwn);
    folder.write("own/kglobalshortcutsrc", kde);
    const auto read = [&](const char* desktop) {
        const std::map<std::string, std::string> variables{
            {"XDG_CURRENT_DESKTOP", desktop},
            {"XDG_CONFIG_HOME", folder.path() / "own"},
            {"XDG_CONFIG_DIRS", "nowhere:" + (folder.path() / "system").string()}};
        return onKeyboard(SystemKeys::read([&](const char* name) -> std::optional<std::string> {
            const auto found = variables.find(name);
            return found == variables.end() ? std::nullopt : std::optional(found->second);
        }));
    };
    EXPECT_THAT(read("XFCE"), UnorderedElementsAre(Shortcut{46, command}, Shortcut{48, command}));
    EXPECT_THAT(read("KDE"),
                UnorderedElementsAre(Shortcut{118, option},
                                     Shortcut{13, command},
                                     Shortcut{46, command},
                                     Shortcut{43, command},
                                     Shortcut{24, command | shift},
                                     Shortcut{17, control | option}));
    EXPECT_THAT(read("sway"), testing::IsEmpty());
    EXPECT_THAT(XfceShortcuts::parse({xfceDefaults}), testing::SizeIs(4));
}

TEST(SystemKeysTest, DesktopsOfGSettingsAreReadWithWhatTheUserChanged)
{
    const TemporaryFolder folder;
    folder.write("org.gnome.gschema.xml", R"(<schemalist>
      <schema id="org.gnome.desktop.wm.keybindings" path="/org/gnome/desktop/wm/keybindings/">
        <key name="close" type="as"><default>['&lt;Alt&gt;F4']</default></key>
        <key name="minimize" type="as"><default>['&lt;Super&gt;h']</default></key>
        <key name="delay" type="i"><default>5</default></key>
      </schema>
      <schema id="org.gnome.settings-daemon.plugins.media-keys" path="/org/gnome/settings-daemon/plugins/media-keys/">
        <key name="custom-keybindings" type="as"><default>['/a/custom0/', '/a//b/', 'relative']</default></key>
        <key name="screensaver" type="s"><default>'&lt;Super&gt;l'</default></key>
      </schema>
      <schema id="org.gnome.settings-daemon.plugins.media-keys.custom-keybinding">
        <key name="binding" type="s"><default>''</default></key>
      </schema>
      <schema id="org.cinnamon.desktop.keybindings" path="/org/cinnamon/desktop/keybindings/">
        <key name="custom-list" type="as"><default>['custom0']</default></key>
      </schema>
      <schema id="org.cinnamon.desktop.keybindings.custom-keybinding">
        <key name="binding" type="as"><default>['&lt;Super&gt;m']</default></key>
      </schema>
    </schemalist>)");
    folder.write("glib-2.0/settings/keyfile",
                 "[org/gnome/desktop/wm/keybindings]\nclose=['<Super>q', 'disabled']\n"
                 "minimize=@as []\n[a/custom0]\nbinding='<Control><Alt>m'\n");
    ASSERT_EQ(std::system(("glib-compile-schemas " + folder.path().string()).c_str()), 0);
    // Read once in a process, when they are first needed: here.
    setenv("GSETTINGS_SCHEMA_DIR", folder.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    setenv("GSETTINGS_BACKEND", "keyfile", 1);
    const auto read = [](const char* desktops) {
        setenv("XDG_CURRENT_DESKTOP", desktops, 1);
        return onKeyboard(SystemKeys::read());
    };
    const Shortcut q{12, command};
    const Shortcut l{37, command};
    const Shortcut m{46, control | option};
    const auto gnome = read("ubuntu:GNOME");
    EXPECT_THAT(gnome, testing::IsSupersetOf({q, l, m}));
    EXPECT_THAT(gnome, testing::Not(testing::Contains(Shortcut{118, option})));
    EXPECT_THAT(gnome, testing::Not(testing::Contains(Shortcut{4, command})));
    EXPECT_THAT(read("X-Cinnamon"), UnorderedElementsAre(Shortcut{46, command}));
    EXPECT_THAT(read("MATE"), testing::IsEmpty()); // It isn't installed.
}

TEST(SystemKeysTest, WhatIsTornOffIsReadAsFarAsItGoes)
{
    const std::string texts[] = {xfceDefaults, xfceOwn, kde};
    for (const auto& text : texts) {
        std::size_t most = 0;
        for (std::size_t size = 0; size <= text.size(); ++size) {
            const auto part = text.substr(0, size);
            most = std::max({most,
                             XfceShortcuts::parse({part, part}).size(),
                             KdeShortcuts::parse({part, part}).size()});
            static_cast<void>(parseGtkAccelerator(text.substr(size)));
            static_cast<void>(parseQtKeySequence(text.substr(size)));
        }
        EXPECT_GE(most, 1U);
        EXPECT_LE(most, 8U);
    }
}

} // namespace
} // namespace fadewell
