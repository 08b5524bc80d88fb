#include "platform/linux/FileUserDefaults.h"

#include "base/LenientJson.h"
#include "base/VirtualTime.h"
#include "platform/linux/SettingsFormat.h"
#include "tests/linux/TemporaryFolder.h"
#include "tests/support/CapturedLog.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <sys/wait.h>
#include <unistd.h>

namespace fadewell {
namespace {

namespace fs = std::filesystem;
using Value = UserDefaults::Value;
using testing::HasSubstr;

class FileUserDefaultsTest : public testing::Test {
protected:
    [[nodiscard]] FileUserDefaults open() const
    {
        return FileUserDefaults(
            folder_.path() / file_, folder_.path() / spare_, time_->makeQueue());
    }
    [[nodiscard]] nlohmann::json stored() const
    {
        return parseJson(folder_.read(file_)).value_or(nullptr);
    }
    [[nodiscard]] std::vector<fs::path> broken() const
    {
        std::vector<fs::path> found;
        for (const auto& item : fs::directory_iterator((folder_.path() / file_).parent_path())) {
            if (item.path().string().find(".broken-") != std::string::npos) {
                found.push_back(item.path());
            }
        }
        return found;
    }

    TemporaryFolder folder_;
    const fs::path file_ = "config/fadewell/settings.json";
    const fs::path spare_ = "run/fadewell/settings.json";
    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    CapturedLog log_;
};

TEST_F(FileUserDefaultsTest, EveryValueReadsBackEqualAndOfItsType)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const std::map<std::string, Value> values{
        {"text false", std::string("false")},
        {"false", false},
        {"tenth", 0.1},
        {"tiny", -5e-324},
        {"infinite", -infinity},
        {"text", std::string("a\n\"\0ü", 6)},
        {"numbers", UserDefaults::NumberMap{{"mic", -1.0}, {"ü", infinity}}},
        {"raw numbers", UserDefaults::NumberMap{{"\xfe", 0.25}, {"plain", 1.0}}},
        {"document", UserDefaults::Data{R"({"a":{"volume":0.4},"b":[1,2.5,null]})"}},
        {"twice", UserDefaults::Data{R"({"a":1,"a":2})"}},
        {"nested", UserDefaults::Data{std::string(100000, '[') + std::string(100000, ']')}},
        {"bytes", UserDefaults::Data{std::string("\x80\xff\x00", 3)}},
        {"no bytes", UserDefaults::Data{""}},
    };
    {
        auto defaults = open();
        for (const auto& [key, value] : values) {
            defaults.set(key, value);
            EXPECT_EQ(defaults.value(key), value) << key << " at once";
        }
        defaults.set("nan", std::nan(""));
    }
    const auto defaults = open();
    for (const auto& [key, value] : values) {
        EXPECT_EQ(defaults.value(key), value) << key;
    }
    EXPECT_TRUE(std::isnan(defaults.get<double>("nan").value_or(0)));
    EXPECT_EQ(defaults.keys().size(), values.size() + 1);
    EXPECT_EQ(defaults.get<bool>("text false"), std::nullopt);
    EXPECT_EQ(stored()["document"]["json"]["a"]["volume"], 0.4) << "readable by a person";
    EXPECT_THAT(log_.take(), testing::IsEmpty());
}

TEST_F(FileUserDefaultsTest, WritesTogetherWithinTheTenthOfASecondAndSleepsOtherwise)
{
    auto defaults = open();
    defaults.set("a", 1.0);
    EXPECT_EQ(time_->pendingTasks(), 1U);
    time_->advance(0.02);
    defaults.set("a", 2.0);
    defaults.set("b", true);
    EXPECT_EQ(time_->pendingTasks(), 1U) << "one write for all";
    time_->advance(0.08);
    EXPECT_EQ(stored()["a"]["value"], 2.0);
    EXPECT_EQ(stored()["b"]["value"], true);
    EXPECT_EQ(time_->pendingTasks(), 0U);

    defaults.remove("a");
    defaults.remove("never there");
    defaults.flush();
    EXPECT_FALSE(stored().contains("a")) << "on disk when flush returns";
}

TEST_F(FileUserDefaultsTest, IsPrivateAndLeavesNothingOfACrashBesideItsLock)
{
    folder_.write(file_, R"({"a":{"type":"number","value":1}})");
    folder_.write(file_.string() + ".new", R"({"a":{"ty)");
    auto defaults = open();
    EXPECT_EQ(defaults.get<double>("a"), 1.0);
    defaults.set("b", 2.0);
    defaults.flush();
    EXPECT_EQ(stored().size(), 2U);
    const auto mode = [](const fs::path& path) {
        return unsigned(fs::status(path).permissions());
    };
    const auto file = folder_.path() / file_;
    EXPECT_EQ(mode(file), 0600U);
    const fs::directory_iterator items(file.parent_path());
    EXPECT_EQ(std::distance(begin(items), end(items)), 2);

    fs::remove_all(folder_.path() / "config");
    defaults.set("c", 3.0);
    defaults.flush();
    EXPECT_EQ(mode(file), 0600U);
    EXPECT_EQ(mode(file.parent_path()), 0700U);
}

TEST_F(FileUserDefaultsTest, KeepsAFileThatItCantReadUnderAnotherName)
{
    const std::string cases[] = {
        "{\"a\": {\"type\"", "[1]", "", "\xff\xfe", std::string(1000, '[')};
    for (const auto& text : cases) {
        folder_.write(file_, text);
        const auto before = broken().size();
        auto defaults = open();
        ASSERT_EQ(broken().size(), before + 1) << "even within the same second";
        EXPECT_THAT(log_.take(), testing::Contains(HasSubstr(".broken-")));
        EXPECT_EQ(defaults.get<double>("a"), before ? std::optional(1.0) : std::nullopt)
            << "what was stored last is used";
        defaults.set("a", 1.0);
    }
    std::vector<std::string> kept;
    for (const auto& path : broken()) {
        kept.push_back(folder_.read(path));
    }
    EXPECT_THAT(kept, testing::UnorderedElementsAreArray(cases));
    EXPECT_EQ(stored()["a"]["value"], 1.0);
}

TEST_F(FileUserDefaultsTest, KeepsEntriesOfUnknownTypes)
{
    const auto before =
        parseJson(R"({"x":{"type":"date","value":[1]},"y":7,"z":{"type":"boolean","value":0},
        "n":{"type":"numbers","value":{"a":"b"}},"d":{"type":"data","base64":"?"},"s":{"type":"string"}})");
    folder_.write(file_, dumpJson(*before));
    auto defaults = open();
    for (const auto& key : defaults.keys()) {
        EXPECT_EQ(defaults.value(key), std::nullopt) << key;
    }
    defaults.set("a", true);
    defaults.flush();
    for (const auto& [key, entry] : before->items()) {
        EXPECT_EQ(stored()[key], entry) << key;
    }
}

TEST_F(FileUserDefaultsTest, TakesOverWhatOthersWroteAndKeepsItsOwnChanges)
{
    auto first = open();
    first.set("shared", 1.0);
    first.set("gone", 1.0);
    first.flush();
    auto second = open();
    first.set("first", 1.0);
    first.set("shared", 2.0);
    first.remove("gone");
    second.set("second", 1.0);
    second.set("shared", 3.0);
    first.flush();
    second.flush();
    EXPECT_EQ(stored().size(), 3U);
    EXPECT_EQ(second.get<double>("first"), 1.0);
    EXPECT_EQ(second.get<double>("shared"), 3.0);
    EXPECT_EQ(second.value("gone"), std::nullopt);

    fs::remove(folder_.path() / file_);
    first.set("more", true);
    first.flush();
    EXPECT_EQ(stored()["first"]["value"], 1.0) << "a file that was deleted takes nothing along";
}

TEST_F(FileUserDefaultsTest, LosesNoKeyOfProcessesThatWriteAtOnce)
{
    constexpr int processes = 4;
    constexpr int keys = 10;
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            {
                auto defaults = open();
                for (int key = 0; key < keys; ++key) {
                    defaults.set(std::to_string(process) + '-' + std::to_string(key), 1.0);
                    defaults.flush();
                }
            }
            _exit(log_.take().empty() ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(stored().size(), static_cast<std::size_t>(processes * keys));
}

TEST_F(FileUserDefaultsTest, KeepsALinkALink)
{
    folder_.write("elsewhere/mine.json", R"({"a":{"type":"number","value":1}})");
    folder_.link(file_, "../../elsewhere/mine.json");
    auto defaults = open();
    EXPECT_EQ(defaults.get<double>("a"), 1.0);
    defaults.set("a", 2.0);
    defaults.flush();
    EXPECT_TRUE(fs::is_symlink(folder_.path() / file_));
    EXPECT_THAT(folder_.read("elsewhere/mine.json"), HasSubstr("2.0"));
}

TEST_F(FileUserDefaultsTest, ComplainsOnceKeepsValuesAndTriesAgainWithTheNextWrite)
{
    folder_.write("config", "a file where the folder should be");
    auto defaults = open();
    defaults.set("a", 1.0);
    defaults.flush();
    defaults.set("b", 2.0);
    defaults.flush();
    EXPECT_EQ(defaults.get<double>("a"), 1.0);
    EXPECT_EQ(log_.take().size(), 1U);
    EXPECT_EQ(time_->pendingTasks(), 0U) << "no trying in circles";

    fs::remove(folder_.path() / "config");
    defaults.set("c", 3.0);
    time_->advance(0.1);
    EXPECT_EQ(stored().size(), 3U);
    EXPECT_EQ(log_.take().size(), 1U);
}

TEST_F(FileUserDefaultsTest, WhatCantBeStoredOutlivesACrashUntilItCan)
{
    folder_.write(file_, R"({"old": {"type": "number", "value": 1.0},
                             "gone": {"type": "number", "value": 1.0}})");
    const auto obstacle = folder_.path() / (file_.native() + ".lock");
    fs::create_directory(obstacle);
    auto running = open();
    running.set("new", 2.0);
    running.remove("gone");
    time_->advance(0.1);
    ASSERT_TRUE(stored().contains("gone"));

    const auto expectChanges = [](const UserDefaults& next) {
        EXPECT_EQ(next.get<double>("new"), 2.0);
        EXPECT_EQ(next.get<double>("old"), 1.0);
        EXPECT_FALSE(next.get<double>("gone"));
    };
    expectChanges(open()); // as after kill -9: nothing but the files is left
    fs::remove(obstacle);
    const auto next = open();
    time_->advance(0.1);
    expectChanges(next);
    EXPECT_EQ(stored().size(), 2U);
    EXPECT_FALSE(fs::exists(folder_.path() / spare_));
}

TEST_F(FileUserDefaultsTest, AFlushOutlivesACrashBeforeTheDiskIsDone)
{
    const auto queue = time_->makeQueue();
    FileUserDefaults running(folder_.path() / file_, folder_.path() / spare_, queue);
    running.set("new", 2.0);
    std::optional<double> next;
    queue->async([&] { // A flush waits for what the writer is at.
        EXPECT_FALSE(fs::exists(folder_.path() / file_));
        next = open().get<double>("new");
    });
    running.flush();
    EXPECT_EQ(next, 2.0);
    EXPECT_TRUE(stored().contains("new"));
    EXPECT_FALSE(fs::exists(folder_.path() / spare_));
}

TEST_F(FileUserDefaultsTest, NeverReplacesWhatItCanNeitherReadNorMoveAway)
{
    // A folder in the file's place can't be read; renaming over it fails for root too.
    folder_.write(file_ / "inside", "precious");
    auto defaults = open();
    defaults.set("a", 1.0);
    defaults.flush();
    const auto kept = broken();
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(folder_.read(kept.front() / "inside"), "precious");
    EXPECT_EQ(stored()["a"]["value"], 1.0);
}

} // namespace
} // namespace fadewell
