// A Fadewell that freezes or crashes is ended and started again, and nobody is silenced meanwhile.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"

#include <csignal>
#include <iostream>
#include <sys/ptrace.h>
#include <sys/wait.h>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

class SupervisorTest : public FadewellTest {
protected:
    void SetUp() override
    {
        FadewellTest::SetUp();
        player_.emplace(playTone("pw-play"));
        command({"volume", appOf(*player_), "40%"});
        expectGain(*speakers_, decibels(0.4));
        program_ = fadewell_->pid();
        ASSERT_GT(program_, 0);
    }
    void TearDown() override
    {
        if (!fadewell_->isRunning()) {
            fadewell_.reset();
        }
        FadewellTest::TearDown();
    }

    /// Until another one has taken the player over, and what was heard before is long past.
    [[nodiscard]] bool awaitRestart() const
    {
        const bool isBack = await([&] {
            const auto log = fadewell_->log();
            return log.rfind("audio is flowing") > log.find("started again");
        });
        return isBack && speakers_->read(speakers_->now(), frames(500ms)).frames() > 0;
    }
    [[nodiscard]] bool logTells(const std::string& line) const
    {
        return fadewell_->log().find(line) != std::string::npos;
    }
    /// The longest time without any sound until `isOver`. By the clock of this process, because the
    /// output's own stands still with whoever holds up its cycle.
    [[nodiscard]] std::chrono::milliseconds
    longestSilence(const std::function<bool()>& isOver) const
    {
        auto heard = Clock::now();
        auto longest = Clock::duration::zero();
        auto next = speakers_->now();
        const auto listen = [&] {
            const auto sound = speakers_->readUntilNow(next);
            next += sound.frames();
            if (firstSound(sound) < sound.frames()) {
                heard = Clock::now();
            }
            longest = std::max(longest, Clock::now() - heard);
            return isOver();
        };
        EXPECT_TRUE(await(listen)) << fadewell_->log();
        return std::chrono::duration_cast<std::chrono::milliseconds>(longest);
    }

    std::optional<ChildProcess> player_;
    pid_t program_ = 0;
};

TEST_F(SupervisorTest, AFreezeSilencesNobodyForASecond)
{
    kill(program_, SIGSTOP);
    const auto silence = longestSilence([&] { return logTells("it is started again"); });
    const auto afterwards =
        longestSilence([&] { return speakers_->awaitGain(decibels(0.4), 1ms); });
    std::cout << "silent for " << std::max(silence, afterwards).count() << " ms\n";
    EXPECT_GT(silence, 100ms) << "it was not frozen";
    EXPECT_LE(std::max(silence, afterwards), 1s);
    EXPECT_TRUE(logTells("Fadewell hung: it is started again"));
    expectGain(*speakers_, decibels(0.4));
}

TEST_F(SupervisorTest, AFreezeWhileNothingPlaysIsNoticedToo)
{
    player_.reset();
    ASSERT_TRUE(speakers_->awaitSilence());
    kill(program_, SIGSTOP);
    EXPECT_TRUE(await([&] { return logTells("it is started again"); }));
    EXPECT_TRUE(await([] { return Fadewell::control({"apps"}).code == 0; }));
}

TEST_F(SupervisorTest, ACrashRestartsItOnce)
{
    kill(program_, SIGSEGV);
    ASSERT_TRUE(awaitRestart()) << fadewell_->log();
    EXPECT_TRUE(logTells("crashed (Segmentation fault): it is started again"));
    expectGain(*speakers_, decibels(0.4));

    command({"microphone", "off"});
    ASSERT_TRUE(await([] { return isOff("microphone"); }));
    kill(fadewell_->pid(), SIGKILL);
    EXPECT_EQ(fadewell_->wait(), 3);
    EXPECT_TRUE(logTells("crashed (Killed) again"));
    expectGain(*speakers_, 0);
    // Nothing is left to the next one, for there may be none.
    EXPECT_EQ(runTool({"pw-metadata"}).output.find("fadewell"), std::string::npos);
    EXPECT_TRUE(logTells("Unmuted 1 microphone(s) left muted"));
    EXPECT_FALSE(isOff("microphone"));
    EXPECT_NE(runTool({"pw-metadata", "-n", "settings", "0", "clock.force-quantum"})
                  .output.find("value:'0'"),
              std::string::npos);
}

TEST_F(SupervisorTest, ADebuggedProgramIsLeftAlone)
{
    const auto awaitStop = [this] {
        return await([this] { return waitpid(program_, nullptr, __WALL | WNOHANG) == program_; });
    };
    ASSERT_EQ(ptrace(PTRACE_SEIZE, program_, nullptr, nullptr), 0);
    kill(program_, SIGSTOP);
    ASSERT_TRUE(awaitStop()); // Before the signal reaches it; the next is the stop itself.
    ASSERT_EQ(ptrace(PTRACE_CONT, program_, nullptr, SIGSTOP), 0);
    ASSERT_TRUE(awaitStop());
    const auto silence =
        longestSilence([&, end = Clock::now() + 2s] { return Clock::now() > end; });
    EXPECT_GT(silence, 1s) << "it was not frozen";
    EXPECT_EQ(fadewell_->pid(), program_);
    ptrace(PTRACE_DETACH, program_, nullptr, nullptr);
    kill(program_, SIGCONT);
    expectGain(*speakers_, decibels(0.4));
}

TEST_F(SupervisorTest, NeitherCtrlZNorTheSupervisorsDeathHarmsAnyone)
{
    kill(program_, SIGTSTP);
    fadewell_->signal(SIGTSTP);
    EXPECT_LE(longestSilence([&, end = Clock::now() + 1s] { return Clock::now() > end; }), 250ms);

    fadewell_->signal(SIGKILL);
    EXPECT_TRUE(await([&] { return logTells("Ending after signal 15"); })) << fadewell_->log();
    EXPECT_TRUE(await([] { return Session::nodesContaining("fadewell").empty(); }));
    EXPECT_EQ(fadewell_->wait(), -SIGKILL);
    expectGain(*speakers_, 0);
}

} // namespace
} // namespace fadewell::integration
