#include "control/values/BusValues.h"
#include "control/values/JsonOutput.h"
#include "control/values/PlainText.h"
#include "control/values/Tables.h"
#include "control/values/TextTable.h"

#include <gtest/gtest.h>

namespace fadewell {
namespace {

AppEntry fullApp()
{
    AppEntry app{"org.mozilla.firefox", "Firefox", true, true, 0.4, true};
    app.outputDeviceUID = "alsa:usb";
    app.outputDeviceName = "Headset";
    app.callStatus = "inCall";
    app.bundleID = "org.mozilla.firefox";
    app.pids = {12, 34};
    return app;
}

TEST(JsonOutputTest, AppHasEveryMemberInOrder)
{
    EXPECT_EQ(
        dump(toJsonArray(std::vector{fullApp()})),
        R"([{"id":"org.mozilla.firefox","name":"Firefox","isPlaying":true,)"
        R"("isUsingMicrophone":true,"volume":0.4,"isMuted":true,"outputDeviceUID":"alsa:usb",)"
        R"("outputDeviceName":"Headset","callStatus":"inCall",)"
        R"("bundleID":"org.mozilla.firefox","pids":[12,34],"isTappable":true}])");
    EXPECT_EQ(
        dump(toJson(AppEntry{
            .id = "pid:7", .name = "x\xff", .isTappable = false, .untappableReason = "pinned"})),
        "{\"id\":\"pid:7\",\"name\":\"x\uFFFD\",\"isPlaying\":false,"
        R"("isUsingMicrophone":false,"volume":1.0,"isMuted":false,"outputDeviceUID":null,)"
        R"("outputDeviceName":null,"callStatus":null,"bundleID":null,"pids":[],)"
        R"("isTappable":false,"untappableReason":"pinned"})");
    EXPECT_EQ(dump(toJsonArray(std::vector<OutputEntry>{})), "[]");
    EXPECT_EQ(dump(toJson(OutputEntry{"uid", "Speakers", "builtInSpeakers", true})),
              R"({"id":"uid","name":"Speakers","kind":"builtInSpeakers","isDefault":true})");
    EXPECT_EQ(
        dump(toJson(MicrophoneEntry{})),
        R"({"deviceName":null,"volume":null,"isMuted":false,"canMute":false,"users":[],"uses":[]})");
}

template <class Entry>
Entry throughTheBus(const Entry& entry)
{
    Entry result;
    fromBus(toBus(entry), result);
    return result;
}

TEST(BusValuesTest, ValuesSurviveTheBus)
{
    EXPECT_EQ(throughTheBus(fullApp()), fullApp());
    EXPECT_EQ(throughTheBus(AppEntry{.id = "a", .name = "b"}), (AppEntry{.id = "a", .name = "b"}));
    const MicrophoneEntry microphone{
        "Mic", 0.5, true, true, {"Zoom"}, {{"us.zoom.xos", "Zoom", 1'700'000'000}}};
    EXPECT_EQ(throughTheBus(microphone), microphone);
    const CallModeEntry callMode{true, true, false, false, 0.3, {"a", "b"}, {"Zoom"}};
    EXPECT_EQ(throughTheBus(callMode), callMode);
}

TEST(PlainTextTest, DisarmsWhatOtherProgramsCallThemselves)
{
    EXPECT_EQ(plainText("M\u00fcsik \u65e5\u672c"), "M\u00fcsik \u65e5\u672c");
    EXPECT_EQ(plainText("\x1b[31mred\n\t\x7f"), "\\x1b[31mred\\x0a\\x09\\x7f");
    EXPECT_EQ(plainText("a\u202eb\u2028c\u009b"), "a\\u202eb\\u2028c\\x9b");
    EXPECT_EQ(plainText("\xff"), "\uFFFD");
    EXPECT_EQ(displayWidth("e\u0301\u65e5"), 3);
}

TEST(TextTableTest, AlignsColumnsByWhatTheTerminalShows)
{
    TextTable table({{"APP"}, {"VOL", TextTable::Align::right}, {"X"}});
    table.add({"\u65e5\u672c", "5%", "y"});
    table.add({"mpv\n", "100%"});
    EXPECT_EQ(table.render(),
              "APP       VOL  X\n"
              "\u65e5\u672c       5%  y\n"
              "mpv\\x0a  100%\n");
}

TEST(TablesTest, LinesSayWhatMatters)
{
    EXPECT_EQ(appLine(fullApp()),
              "Firefox: 40% (muted), output Headset, playing, in call, microphone\n");
    EXPECT_EQ(appLine({.id = "jack", .name = "Jack", .isTappable = false}),
              "Jack: can't be controlled\n");
    EXPECT_EQ(microphoneLine({"Mic", 0.5, true, true, {"A", "B"}}),
              "Microphone Mic: off (muted), volume 50%, used by A and B\n");
    setenv("TZ", "UTC", 1);
    tzset();
    const MicrophoneEntry used{.uses = {{"a", "A\n", 1'700'000'000}, {"b", "B", 1'700'003'725}}};
    EXPECT_EQ(microphoneUses(used, 1'700'003'720),
              "  A\\x0a since 22:13:20, 1:02:00\n  B since 23:15:25, 0:00:00\n");
    EXPECT_EQ(
        callModeLine({.isActive = true, .isDetected = true, .override_ = true, .names = {"Zoom"}}),
        "Call mode: on (chosen by you), in a call: Zoom\n");
}

} // namespace
} // namespace fadewell
