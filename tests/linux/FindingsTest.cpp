#include "platform/linux/doctor/Findings.h"

#include "platform/linux/doctor/SystemVersions.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <unistd.h>

namespace fadewell {
namespace {

using enum Finding::Verdict;
using testing::HasSubstr;

SoundFacts healthy()
{
    SoundFacts facts;
    facts.server = {"0.3.65", "0.3.65", "WirePlumber", true, "48000", "1024"};
    facts.output = "Speakers";
    facts.microphone = "Mic";
    facts.canMuteMicrophone = true;
    return facts;
}

TEST(FindingsTest, NothingIsWrongWithAHealthySession)
{
    auto findings = soundFindings(healthy());
    const auto session = sessionFindings({"GNOME", "wayland", "", true, true, "/settings"});
    findings.insert(findings.end(), session.begin(), session.end());
    EXPECT_GE(findings.size(), 7U);
    for (const auto& finding : findings) {
        EXPECT_EQ(finding.verdict, good) << finding.text;
    }
}

TEST(FindingsTest, EveryTroubleIsNamedWithWhatHelps)
{
    struct Case {
        const char* id;
        Finding::Verdict verdict;
        const char* says;
        void (*spoil)(SoundFacts& facts);
    };
    const Case cases[] = {{"sound-server",
                           bad,
                           "no answer",
                           [](auto& facts) {
                               facts.error = "no answer";
                           }},
                          {"sound-server",
                           bad,
                           "pipewire-pulse",
                           [](auto& facts) {
                               facts.error = "no answer";
                               facts.isPulseAudioThere = true;
                           }},
                          {"session-manager",
                           limited,
                           "WirePlumber",
                           [](auto& facts) {
                               facts.server.sessionManager = "";
                           }},
                          {"pulse",
                           limited,
                           "install",
                           [](auto& facts) {
                               facts.server.hasPulseServer = false;
                           }},
                          {"permission",
                           bad,
                           "restricts",
                           [](auto& facts) {
                               facts.isPermitted = false;
                           }},
                          {"output",
                           limited,
                           "no output",
                           [](auto& facts) {
                               facts.output.reset();
                           }},
                          {"microphone",
                           limited,
                           "no microphone",
                           [](auto& facts) {
                               facts.microphone.reset();
                           }},
                          {"microphone",
                           limited,
                           "Mic can't",
                           [](auto& facts) {
                               facts.canMuteMicrophone = false;
                           }},
                          {"untappable",
                           limited,
                           "org.jack can't be controlled: it connects itself",
                           [](auto& facts) {
                               facts.untappable.emplace_back().process.bundleID = "org.jack";
                               facts.untappable.back().reason = UntappableReason::unmanaged;
                           }}};
    for (const auto& each : cases) {
        auto facts = healthy();
        each.spoil(facts);
        const auto findings = soundFindings(facts);
        const auto found = std::find_if(findings.begin(), findings.end(), [](const auto& finding) {
            return finding.verdict != good;
        });
        ASSERT_NE(found, findings.end()) << each.says;
        EXPECT_EQ(found->id, each.id);
        EXPECT_EQ(found->verdict, each.verdict);
        EXPECT_THAT(found->text, HasSubstr(each.says));
    }
    EXPECT_EQ(sessionFindings({"", "", "", false, true, "/s"})[1].id, "runtime-folder");
    EXPECT_THAT(sessionFindings({"", "", "", true, false, "/s"}).back().text, HasSubstr("is lost"));
}

TEST(SystemVersionsTest, AReleaseFileIsReadAsShellsReadIt)
{
    constexpr const char* release =
        "NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12\"\nID=debian\nV='1'\n";
    const struct {
        const char* key;
        const char* expected;
    } cases[] = {
        {"PRETTY_NAME", "Debian GNU/Linux 12"}, {"ID", "debian"}, {"V", "1"}, {"PRETTY", ""}};
    for (const auto& [key, expected] : cases) {
        EXPECT_EQ(releaseValue(release, key), expected);
    }
    EXPECT_EQ(releaseValue("ID=\"", "ID"), "\"");
    EXPECT_EQ(loadedLibraryVersion(getpid(), "libc."), "6") << "of this process";
    EXPECT_EQ(loadedLibraryVersion(0, "libc."), "");
}

} // namespace
} // namespace fadewell
