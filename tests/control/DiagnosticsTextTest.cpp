#include "control/diagnostics/DiagnosticsText.h"

#include "control/diagnostics/NameMask.h"

#include <gmock/gmock.h>

namespace fadewell {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

const SystemInspection::Owner anna{"/home/anna", "anna", "Anna Smith", "tower.lan"};

TEST(NameMaskTest, WhoseMachineItIsNeverShows)
{
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"/home/anna/.config/x and /home/anna", "~/.config/x and ~"},
        {"/home/annabel/x", "/home/annabel/x"},
        {"Anna's Earbuds on TOWER", "(user)'s Earbuds on (computer)"},
        {"anna smith, susanna, tower.lan", "(user), susanna, (computer)"},
        {"alsa_output.anna-usb", "alsa_output.(user)-usb"},
        {"", ""},
    };
    for (const bool leavesOutApps : {false, true}) {
        const NameMask mask(anna, leavesOutApps);
        for (const auto& each : cases) {
            EXPECT_EQ(mask.text(each.text), each.expected);
        }
    }
    const NameMask nobody({"/", "", "", "localhost"}, false);
    EXPECT_EQ(nobody.text("/usr on localhost"), "/usr on localhost");
}

TEST(NameMaskTest, AnAppHasOneNumberWhateverItIsCalled)
{
    NameMask mask(anna, true);
    mask.note("org.mozilla.firefox", {"Firefox", "firefox-bin"});
    mask.note("com.discord", {"Chromium", "Discord", "WirePlumber"});
    mask.note("org.chromium", {"Chromium", "is"});
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"FIREFOX", "app 1"},
        {"Tapping org.mozilla.firefox on speakers", "Tapping app 1 on speakers"},
        {"firefox-bin, firefoxes", "app 1, firefoxes"},
        {"Chromium", "app 2"},
        {"org.chromium is on", "app 3 is on"},
        {"is", "app 3"},
        {"WirePlumber", "WirePlumber"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(mask.text(each.text), each.expected);
    }
    EXPECT_EQ(mask.app("org.mozilla.firefox"), "app 1");
    EXPECT_EQ(mask.app("never noted"), "app 4");
    EXPECT_EQ(mask.app("Never noted"), "app 4");
    EXPECT_EQ(mask.app("Fadewell"), "Fadewell");
}

DiagnosticsFacts facts()
{
    DiagnosticsFacts facts;
    facts.owner = anna;
    facts.versions = {{"Fadewell", "1.2.3, running"}, {"Desktop", "GNOME"}};
    facts.findings = {{"untappable", Finding::Verdict::limited, "jack.app can't be controlled."},
                      {"settings", Finding::Verdict::good, "Settings: /home/anna/x.json"}};
    SoundNode music{
        40, "Stream/Output/Audio", "Musicbox", "running", SoundNode::Maker::program, "Music Box"};
    music.appID = "org.example.Music";
    music.names = {"Musicbox", "Music Box", "musicbox-bin"};
    music.target = "57";
    music.neighbours = {57, 60};
    SoundNode jack{
        41, "Stream/Output/Audio", "jackapp", "suspended", SoundNode::Maker::program, "jackapp"};
    jack.names = {"jack.app"};
    facts.nodes = {
        music, jack, {57, "Audio/Sink", "alsa_output.usb", "idle", SoundNode::Maker::system, ""}};
    facts.rows.push_back({.id = "org.example.Music", .name = "Music Box", .isPlaying = true});
    facts.rows.back().volume = 0.4;
    facts.knownApps = {{"org.gone", "Gone Game"}};
    facts.settings = {"/home/anna/.config/settings.json",
                      R"({"appAudioSettings.v1":{"type":"data","json":{"org.example.Music":
                          {"volume":0.4},"org.old":{"outputDeviceUID":"usb"}}},
                          "callModeSettings.v1":{"json":{"excludedApps":["us.zoom.xos"]}}})"};
    facts.log = {{{}, {LogLevel::info, "", "taps", "Released org.gone, Gone Game too"}},
                 {{}, {LogLevel::notice, "", "taps", "Moved secret.app on", {"secret.app"}}},
                 {{}, {LogLevel::error, "", "x", "Bad\nline of musicbox-bin"}}};
    return facts;
}

TEST(DiagnosticsTextTest, WithNamesEverythingButTheOwnerIsThere)
{
    const auto text = diagnosticsText(facts(), true);
    for (const char* const part : {"Nothing of this was sent anywhere",
                                   "Fadewell          1.2.3, running\n",
                                   "limited  jack.app can't be controlled.\n",
                                   "good     Settings: ~/x.json\n",
                                   "Music Box  57       57, 60\n",
                                   "Music Box  org.example.Music  plays  40%     system",
                                   "== Settings as stored in ~/.config/settings.json ==\n",
                                   "\"us.zoom.xos\"",
                                   "1970-01-01 00:00:00 info   taps: Released org.gone",
                                   "error  x: Bad\\x0aline of musicbox-bin\n"})
    {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(text, Not(HasSubstr("anna")));
}

TEST(DiagnosticsTextTest, WithoutNamesNoneIsLeftAndNumbersStayTheSame)
{
    const auto text = diagnosticsText(facts(), false);
    for (const char* const name : {"usic", "ackapp", "jack.app", "org.", "Gone", "zoom", "secret"})
    {
        EXPECT_THAT(text, Not(HasSubstr(name)));
    }
    for (const char* const part : {"40  Stream/Output/Audio  app 1",
                                   "app 1  left out    plays  40%",
                                   "\"app 1\": {\n",
                                   "limited  app 2 can't be controlled.",
                                   "Released app 3, app 3 too",
                                   "line of app 1\n",
                                   "alsa_output.usb"})
    {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(text, ContainsRegex("Moved app [0-9]+ on\n"));
}

TEST(DiagnosticsTextTest, WhatIsMissingSaysWhy)
{
    auto broken = facts();
    broken.nodesProblem = "No PipeWire server";
    broken.rowsProblem = "Fadewell is not running";
    broken.logProblem = "see the journal";
    broken.settings.text = "{ \"appAudio org.example.Music";
    const auto text = diagnosticsText(broken, false);
    for (const char* const part : {"Missing: No PipeWire server\n",
                                   "Missing: Fadewell is not running\n",
                                   "Missing: see the journal\n",
                                   "The file is damaged (29 bytes): left out"})
    {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(text, Not(HasSubstr("org.example")));
    EXPECT_THAT(diagnosticsText(broken, true),
                HasSubstr("The file is damaged:\n{ \"appAudio org.ex"));
}

} // namespace
} // namespace fadewell
