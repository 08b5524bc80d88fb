// The path that an app had before, what the session manager remembers of it, and what other
// programs want with it, are theirs.

#include "tests/integration/support/Await.h"
#include "tests/integration/support/FadewellTest.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;
using Lines = std::set<std::string>;

class OwnershipTest : public FadewellTest {
protected:
    /// The session manager remembers: every test has a session of its own.
    void TearDown() override
    {
        FadewellTest::TearDown();
        speakers_.reset();
        headphones_.reset();
        TearDownTestSuite();
        SetUpTestSuite();
    }

    /// An app that is chosen to play on the headphones, and was then turned down.
    [[nodiscard]] ChildProcess playTurnedDownOnHeadphones(const std::string& kind, std::string& app)
    {
        auto player = playTone(kind);
        app = appOf(player);
        assign(player, headphones);
        EXPECT_TRUE(headphones_->awaitGain(0));
        before_ = remembered();
        command({"volume", app, "40%"});
        expectGain(*headphones_, decibels(0.4));
        return player;
    }

    /// The properties of an object of the server by the value of one of them; null for none.
    static nlohmann::json find(const char* type, const char* property, const nlohmann::json& value)
    {
        for (const auto& object : Session::objects()) {
            const auto props = object.value("/info/props"_json_pointer, nlohmann::json::object());
            const auto found = props.find(property);
            if (object.value("type", "") == std::string("PipeWire:Interface:") + type &&
                found != props.end() && *found == value)
            {
                return props;
            }
        }
        return nullptr;
    }
    static nlohmann::json streamOf(const ChildProcess& player)
    {
        const auto client = find("Client", "application.process.id", player.pid());
        return client.is_null() ? client : find("Node", "client.id", client.at("object.id"));
    }

    /// Moves an app's stream as mixers do.
    static void assign(const ChildProcess& player, const std::string& output)
    {
        const auto stream = streamOf(player);
        const auto sink = find("Node", "node.name", output);
        ASSERT_TRUE(stream.is_object() && sink.is_object()) << output;
        const auto write = [&](const char* key, const char* value) {
            const auto result = runCommand({"pw-metadata",
                                            stream.at("object.id").dump(),
                                            key,
                                            sink.at(value).dump(),
                                            "Spa:Id"});
            EXPECT_EQ(result.code, 0) << result.errors;
        };
        write("target.node", "object.id");
        write("target.object", "object.serial");
    }

    /// What the session manager has on disk, once it has written what there is to write.
    static Lines remembered()
    {
        const auto path = std::string(getenv("XDG_STATE_HOME")) + "/wireplumber/restore-stream";
        Lines lines;
        auto since = std::chrono::steady_clock::now();
        EXPECT_TRUE(await([&] {
            Lines read;
            std::ifstream file(path);
            for (std::string line; std::getline(file, line);) {
                read.insert(line);
            }
            const auto now = std::chrono::steady_clock::now();
            if (read != std::exchange(lines, read)) {
                since = now;
            }
            return now - since > 1500ms; // It writes a second after the last change.
        }));
        return lines;
    }
    /// That of it which says where apps play.
    static Lines outputsIn(Lines lines)
    {
        std::erase_if(lines, [](const auto& line) { return !line.starts_with("Output/Audio:"); });
        return lines;
    }

    Lines before_;
};

struct End {
    int signal; ///< 0: the app is only forgotten
    const char* player;
};

/// Files that tell of apps' own outputs.
long journals()
{
    const auto folder = std::filesystem::path(getenv("XDG_RUNTIME_DIR")) / "fadewell";
    std::error_code error;
    const std::filesystem::directory_iterator files(folder, error);
    return std::count_if(begin(files), end(files), [](const auto& file) {
        return file.path().filename().native().starts_with("targets-");
    });
}

class GiveBackTest : public OwnershipTest, public testing::WithParamInterface<End> {};

TEST_P(GiveBackTest, AnAppReturnsToTheOutputThatWasChosenForIt)
{
    std::string app;
    auto player = playTurnedDownOnHeadphones(GetParam().player, app);
    const int signal = GetParam().signal;
    if (signal == 0) {
        command({"forget", app});
    } else if (signal == SIGTERM) {
        EXPECT_EQ(fadewell_->end(SIGTERM), 0);
        fadewell_.reset();
    } else {
        if (signal == SIGKILL) {
            EXPECT_EQ(fadewell_->end(signal), -signal);
            expectGain(*speakers_, 0); // The session manager knows no better.
            fadewell_.emplace();
        } else {
            const auto crashed = fadewell_->pid();
            kill(crashed, signal); // Its supervisor starts it again.
            EXPECT_TRUE(await([&] { return fadewell_->pid() != crashed; }));
            EXPECT_TRUE(await([] { return Fadewell::control({"apps"}).code == 0; }));
        }
        EXPECT_TRUE(headphones_->awaitGain(decibels(0.4)));
        command({"forget", app});
    }
    EXPECT_TRUE(await([] { return Session::nodesContaining("fadewell.").empty(); }));
    expectGain(*headphones_, 0);
    EXPECT_TRUE(speakers_->awaitSilence());
    const auto after = remembered();
    EXPECT_EQ(outputsIn(after), outputsIn(before_));
    // Two nodes with four properties each, whatever the app and the run.
    EXPECT_LE(after.size(), before_.size() + 8);
    EXPECT_TRUE(await([] { return journals() == 0; })) << "a journal stayed";
}

INSTANTIATE_TEST_SUITE_P(Ends,
                         GiveBackTest,
                         testing::Values(End{0, "paplay"},
                                         End{SIGTERM, "pw-play"},
                                         End{SIGKILL, "paplay"},
                                         End{SIGSEGV, "mpv"}),
                         [](const auto& test) {
                             const int signal = test.param.signal;
                             return std::string(signal ? sigabbrev_np(signal) : "Forgotten");
                         });

TEST_F(OwnershipTest, AnAppThatEndsInItsTapComesBackToItsOutput)
{
    std::string app;
    {
        auto player = playTurnedDownOnHeadphones("pw-play", app);
    }
    ASSERT_TRUE(headphones_->awaitSilence());
    EXPECT_EQ(outputsIn(remembered()), outputsIn(before_));
    auto player = play("pw-play", tone());
    expectGain(*headphones_, decibels(0.4));
    command({"forget", app});
    expectGain(*headphones_, 0);
}

TEST_F(OwnershipTest, AMoveInAMixerIsObeyed)
{
    auto player = playTone("paplay");
    command({"volume", appOf(player), "40%"});
    ASSERT_TRUE(speakers_->awaitGain(decibels(0.4)));
    const auto serial = streamOf(player).at("object.serial").dump();
    // The Pulse server often loses what it was told last by a client that leaves at once.
    EXPECT_TRUE(await([&] {
        EXPECT_EQ(runCommand({"pactl", "move-sink-input", serial, headphones}).code, 0);
        return headphones_->awaitGain(decibels(0.4), 2s);
    }));
    expectGain(*headphones_, decibels(0.4));
    EXPECT_TRUE(speakers_->awaitSilence());
    EXPECT_EQ(fadewell_->end(SIGTERM), 0);
    fadewell_.reset();
    expectGain(*headphones_, 0);
}

TEST_F(OwnershipTest, AnEffectsProgramKeepsItsPlaceBehindTheVolume)
{
    ChildProcess effects(
        {"pw-loopback",
         "--name=effects",
         "--capture-props={ media.class=Audio/Sink node.name=effects }",
         std::string("--playback-props={ node.name=effects-out target.object=") + speakers + " }"});
    ASSERT_TRUE(await([] { return find("Node", "node.name", "effects").is_object(); }));
    auto player = playTone("pw-play");
    assign(player, "effects");
    command({"volume", appOf(player), "40%"});
    expectGain(*speakers_, decibels(0.4));
    EXPECT_EQ(Fadewell::apps().size(), 1U) << "the effects are no app";
    effects.signal(SIGTERM);
    EXPECT_TRUE(effects.wait());
    // The tap is built again, on the output that is left.
    EXPECT_TRUE(await([&] {
        const auto sound = speakers_->read(speakers_->now(), frames(500ms));
        return std::abs(toneGain(sound) - decibels(0.4)) < 0.02;
    }));
}

} // namespace
} // namespace fadewell::integration
