// The program runs once or says why it can't, and what is remembered is applied again.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"
#include "tests/integration/support/Outage.h"

#include <algorithm>
#include <csignal>

namespace fadewell::integration {
namespace {

using testing::IsSubstring;

ChildProcess startWith(const std::string& variable)
{
    return ChildProcess({"env", variable, FADEWELL_PROGRAMS "/fadewell", "--headless"});
}

TEST(ProgramTest, SaysWhyItCanNotStart)
{
    const Session session;
    auto without = startWith("PIPEWIRE_REMOTE=nothing");
    EXPECT_EQ(without.wait(), 1);
    EXPECT_PRED_FORMAT2(IsSubstring, "No PipeWire server", without.errors());

    endProgram(sessionManager);
    auto unmanaged = startWith("LC_ALL=C");
    EXPECT_EQ(unmanaged.wait(), 1);
    EXPECT_PRED_FORMAT2(IsSubstring, "WirePlumber", unmanaged.errors());
}

TEST(ProgramTest, RunsOnceHoweverOftenItIsStarted)
{
    const Session session;
    for (const bool hasBus : {true, false}) {
        std::vector<ChildProcess> programs;
        for (int count = 0; count < 6; ++count) {
            programs.push_back(
                startWith(hasBus ? "LC_ALL=C" : "DBUS_SESSION_BUS_ADDRESS=unix:path=/none"));
        }
        const auto running = [&] {
            return std::count_if(programs.begin(), programs.end(), [](auto& program) {
                return program.isRunning();
            });
        };
        EXPECT_TRUE(await([&] { return running() == 1; })) << running();
        for (auto& program : programs) {
            if (!program.isRunning()) {
                EXPECT_PRED_FORMAT2(IsSubstring, "running already", program.output());
            } else if (hasBus) {
                EXPECT_EQ(Fadewell::control({"quit"}).code, 0);
            } else {
                program.signal(SIGTERM);
            }
            EXPECT_EQ(program.wait(), 0);
        }
    }
}

class LifecycleTest : public FadewellTest {
protected:
    void restart(int signal)
    {
        ASSERT_EQ(fadewell_->end(signal), 0) << fadewell_->log();
        fadewell_.emplace();
    }
};

TEST_F(LifecycleTest, WhatIsRememberedOutlivesThePlayerAndFadewell)
{
    std::string app;
    {
        auto player = playTone("mpv");
        app = appOf(player);
        command({"volume", app, "40%"});
        expectGain(*speakers_, decibels(0.4));
    }
    ASSERT_TRUE(speakers_->awaitSilence());
    {
        auto player = playTone("mpv", decibels(0.4));
        EXPECT_EQ(appOf(player), app);
        restart(SIGINT);
        expectGain(*speakers_, decibels(0.4));
    }
    ASSERT_TRUE(speakers_->awaitSilence());
    command({"volume", app, "20%"}); // while it doesn't run
    command({"output", app, headphones});
    restart(SIGHUP);

    auto player = play("mpv", tone());
    expectGain(*headphones_, decibels(0.2));
    EXPECT_TRUE(speakers_->awaitSilence());
    command({"forget", app});
    expectGain(*speakers_, 0);
}

TEST_F(LifecycleTest, DiagnosticsTellWhatThisProgramKnows)
{
    const auto player = playTone("mpv");
    command({"volume", appOf(player), "40%"});
    const auto named = Fadewell::control({"diagnostics"}).output;
    for (const char* const part : {", running", "40%", "mpv", "Tapping mpv on speakers"}) {
        EXPECT_PRED_FORMAT2(IsSubstring, part, named);
    }
    const auto unnamed = Fadewell::control({"diagnostics", "--without-names"}).output;
    EXPECT_PRED_FORMAT2(IsSubstring, "app 1", unnamed);
    EXPECT_EQ(unnamed.find("mpv"), std::string::npos) << unnamed;
}

} // namespace
} // namespace fadewell::integration
