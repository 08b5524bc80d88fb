#include "base/RecentLog.h"

#include "base/Logger.h"
#include "base/ProgramName.h"

#include <gmock/gmock.h>
#include <thread>

namespace fadewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Takes what is notable, as a terminal does.
struct QuietSink final : LogSink {
    std::vector<std::string> texts;
    [[nodiscard]] bool accepts(LogLevel level) const override { return level >= LogLevel::notice; }
    void write(const LogMessage& message) override { texts.push_back(message.text); }
};

std::vector<std::string> textsOf(const RecentLog& log)
{
    std::vector<std::string> texts;
    for (const auto& entry : log.entries()) {
        texts.push_back(entry.message.text);
    }
    return texts;
}

TEST(RecentLogTest, KeepsTheLastMessagesAndMoreThanTheNextSinkWants)
{
    const auto next = std::make_shared<QuietSink>();
    const auto recent = std::make_shared<RecentLog>(next, 3);
    LogSink::install(recent);
    EXPECT_EQ(RecentLog::installed(), recent);
    const Logger log("test");
    log.debug("dropped");
    log.notice("1");
    for (const int number : {2, 3, 4}) {
        log.info("{}", number);
    }
    log.error("{}", std::string(9000, 'x'));
    LogSink::install(nullptr);
    EXPECT_EQ(RecentLog::installed(), nullptr);
    EXPECT_THAT(textsOf(*recent), ElementsAre("3", "4", std::string(2000, 'x')));
    EXPECT_THAT(next->texts, ElementsAre("1", std::string(9000, 'x')));
}

TEST(RecentLogTest, ManyThreadsMayWrite)
{
    RecentLog recent(std::make_shared<QuietSink>(), 50);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&recent] {
            for (int message = 0; message < 100; ++message) {
                recent.write({LogLevel::info, "", "test", "text"});
                EXPECT_LE(recent.entries().size(), 50U);
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(recent.entries().size(), 50U);
}

TEST(RecentLogTest, MessagesKnowTheNamesInThemAndNobodySeesTheMarks)
{
    const auto recent = std::make_shared<RecentLog>(std::make_shared<QuietSink>());
    LogSink::install(recent);
    const Logger log("test");
    log.info("Moved {} to {}", ProgramName{"org.a"}, "speakers");
    log.info("{} and {}",
             ProgramName{"A \x0f"
                         "B"},
             ProgramName{""});
    log.info("no name, a stray \x0e mark");
    LogSink::install(nullptr);
    const auto entries = recent->entries();
    EXPECT_THAT(textsOf(*recent),
                ElementsAre("Moved org.a to speakers", "A B and ", "no name, a stray  mark"));
    EXPECT_THAT(entries[0].message.names, ElementsAre("org.a"));
    EXPECT_THAT(entries[1].message.names, ElementsAre("A B"));
    EXPECT_THAT(entries[2].message.names, IsEmpty());
}

} // namespace
} // namespace fadewell
