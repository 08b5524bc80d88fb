#include "platform/linux/LinuxLogSink.h"
#include "platform/linux/LogText.h"
#include "platform/linux/Utf8.h"
#include "platform/linux/XdgPaths.h"
#include "tests/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace fadewell {
namespace {

using Destination = LinuxLogSink::Destination;

TEST(LogTextTest, LetsNoNameForgeALineOrTurnTheText)
{
    const std::pair<std::string, std::string> cases[] = {
        {"Café 音楽 \\n", "Café 音楽 \\n"},
        {"a\nerror b\r\t", "a\\nerror b\\r\\t"},
        {"\x1b[2J\x7f", "\\u{1b}[2J\\u{7f}"},
        {std::string("\0", 1), "\\u{0}"},
        {"\xc2\x9b", "\\u{9b}"},
        {"\xe2\x80\xa8\xe2\x80\xae", "\\u{2028}\\u{202e}"},
        {"\xff\xc3", "\\xff\\xc3"},
        {"\xc0\xaf\xed\xa0\x80", "\\xc0\\xaf\\xed\\xa0\\x80"},
        {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
        {"😀", "😀"},
    };
    for (const auto& [text, escaped] : cases) {
        EXPECT_EQ(escapedForLog(text), escaped);
        EXPECT_TRUE(isValidUtf8(escapedForLog(text)));
    }
    EXPECT_EQ(LinuxLogSink::line({LogLevel::error, "s", "c]\n", "x\ny"}), "error [s:c]\\n] x\\ny");
}

TEST(LinuxLogSinkTest, WritesOneLineToStandardErrorAndFollowsItToTheJournal)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const int saved = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);
    struct stat status {};
    fstat(STDERR_FILENO, &status);
    const auto stream = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino);
    setenv("JOURNAL_STREAM", stream.c_str(), 1);
    const auto connected = LinuxLogSink::preferredDestination();
    LinuxLogSink(Destination::standardError, false).write({LogLevel::notice, "s", "c", "a\nb"});
    dup2(saved, STDERR_FILENO);
    unsetenv("JOURNAL_STREAM");
    char text[64] = {};
    ASSERT_GT(read(ends[0], text, sizeof text - 1), 0);
    for (const int descriptor : {saved, ends[0], ends[1]}) {
        close(descriptor);
    }
    EXPECT_EQ(connected, Destination::journal);
    EXPECT_STREQ(text, "notice [s:c] a\\nb\n");
}

TEST(XdgPathsTest, FollowVariablesAndFallBackForWhatIsMissingOrRelative)
{
    std::map<std::string, std::string> environment{
        {"HOME", "/home/me"},
        {"XDG_CONFIG_HOME", "relative"},
        {"XDG_STATE_HOME", "/state"},
        {"XDG_RUNTIME_DIR", "/run/me"},
        {"XDG_DATA_DIRS", "/a/:b::/a:/home/me/.local/share"}};
    const auto look = [&environment](const char* name) -> std::optional<std::string> {
        const auto found = environment.find(name);
        return found == environment.end() ? std::nullopt : std::optional(found->second);
    };
    const auto paths = XdgPaths::fromEnvironment(look);
    EXPECT_EQ(paths.settingsFile(), "/home/me/.config/fadewell/settings.json");
    EXPECT_EQ(paths.ownStateFolder(), "/state/fadewell");
    EXPECT_EQ(paths.ownRuntimeFolder(), "/run/me/fadewell");
    ASSERT_GE(paths.dataDirs.size(), 3U);
    EXPECT_EQ(paths.dataDirs[0], "/home/me/.local/share");
    EXPECT_THAT(paths.dataDirs, testing::Contains("/var/lib/snapd/desktop"));
    EXPECT_THAT(paths.dataDirs, testing::Not(testing::Contains("/usr/share")));

    environment.clear();
    const auto bare = XdgPaths::fromEnvironment(look);
    EXPECT_TRUE(bare.home.is_absolute());
    EXPECT_TRUE(bare.runtimeDir.is_absolute());
    EXPECT_THAT(bare.dataDirs, testing::Contains("/usr/share"));

    const TemporaryFolder folder;
    EXPECT_TRUE(makePrivateFolder(folder.path() / "a/b"));
    EXPECT_TRUE(makePrivateFolder(folder.path() / "a/b"));
    folder.write("file", "");
    EXPECT_FALSE(makePrivateFolder(folder.path() / "file/below"));
}

} // namespace
} // namespace fadewell
