#include "platform/linux/pipewire/taps/TapRender.h"

#include "audio/render.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace fadewell {
namespace {

constexpr std::uint32_t frames = 256;
constexpr double rate = 48000.0;
// Of a blend over 10 ms, with room for rounding.
constexpr float step = 1.001F / 480.0F;

/// A tap render with a procedure of a fixed gain, fed with a constant level.
class TapRenderTest : public testing::Test {
protected:
    struct Client {
        float gain = 0.1F;
        int calls = 0;
        std::uint32_t lastBytes = 0;
    };

    static OSStatus applyGain(AudioObjectID,
                              const AudioTimeStamp*,
                              const AudioBufferList* input,
                              const AudioTimeStamp*,
                              AudioBufferList* output,
                              const AudioTimeStamp*,
                              void* data) noexcept
    {
        auto& client = *static_cast<Client*>(data);
        ++client.calls;
        client.lastBytes = output->mBuffers[0].mDataByteSize;
        for (std::uint32_t buffer = 0; buffer < output->mNumberBuffers; ++buffer) {
            const auto* from = static_cast<const float*>(input->mBuffers[buffer].mData);
            auto* to = static_cast<float*>(output->mBuffers[buffer].mData);
            for (std::uint32_t i = 0; i < client.lastBytes / sizeof(float); ++i) {
                to[i] = from[i] * client.gain;
            }
        }
        return 0;
    }

    TapRenderTest()
    {
        procedure_.call = applyGain;
        procedure_.client = &client_;
        procedure_.isStarted = true;
        render_.setProcedure(&procedure_);
    }

    /// Renders `cycles` of a constant input level and returns the left output.
    std::vector<float> play(float level, int cycles)
    {
        std::vector<float> heard;
        std::array<std::array<float, frames>, 2> in{};
        std::array<std::array<float, frames>, 2> out{};
        for (auto& plane : in) {
            plane.fill(level);
        }
        for (int cycle = 0; cycle < cycles; ++cycle) {
            render_.process(
                {in[0].data(), in[1].data()}, {out[0].data(), out[1].data()}, frames, {});
            EXPECT_EQ(out[0], out[1]);
            heard.insert(heard.end(), out[0].begin(), out[0].end());
        }
        return heard;
    }

    static float largestJump(float before, const std::vector<float>& heard)
    {
        float largest = 0;
        for (const float sample : heard) {
            largest = std::max(largest, std::fabs(sample - before));
            before = sample;
        }
        return largest;
    }

    Client client_;
    TapRender::Procedure procedure_;
    TapRender render_{rate};
};

TEST_F(TapRenderTest, BlendsFromUnprocessedSoundWithoutAJump)
{
    render_.blendIn();
    play(0, 3); // Silence before the stream arrives must not use the blend up, nor any ramp.
    EXPECT_EQ(client_.calls, 3);
    EXPECT_EQ(client_.lastBytes, 0U);
    const auto heard = play(1.0F, 4);
    EXPECT_LE(largestJump(1.0F, heard), step);
    EXPECT_FLOAT_EQ(heard.back(), 0.1F);
}

TEST_F(TapRenderTest, ReturnsToFullLevelOnceTheProcedureIsGone)
{
    const float before = play(1.0F, 1).back();
    render_.setProcedure(nullptr);
    const auto heard = play(1.0F, 4);
    EXPECT_LE(largestJump(before, heard), step);
    EXPECT_FLOAT_EQ(heard.back(), 1.0F);
    EXPECT_EQ(client_.calls, 1);
}

TEST_F(TapRenderTest, SkipsAStoppedProcedureOnlyWhileThereIsNothingToHear)
{
    procedure_.isStarted = false;
    play(0, 2);
    EXPECT_EQ(client_.calls, 0);
    EXPECT_FLOAT_EQ(play(1.0F, 1).front(), 0.1F);
    EXPECT_EQ(client_.calls, 1);
}

TEST_F(TapRenderTest, FadesOutForAMoveAndInAgain)
{
    play(1.0F, 1);
    render_.setFadedOut(true);
    const auto out = play(1.0F, 3);
    EXPECT_TRUE(render_.isFadedOut());
    EXPECT_LE(largestJump(0.1F, out), step);
    const auto end = std::find(out.begin(), out.end(), 0.0F);
    EXPECT_EQ((end - out.begin()) % frames, 0) << "what follows a cycle is not faded";
    client_.gain = 1.0F; // Unheard: a new procedure may sound different.
    play(1.0F, 1);
    render_.setFadedOut(false);
    const auto in = play(1.0F, 3);
    EXPECT_LE(largestJump(0.0F, in), step);
    EXPECT_FLOAT_EQ(in.back(), 1.0F);
}

TEST_F(TapRenderTest, GoesOnFromThePredecessorsLevelAtItsFirstCall)
{
    const auto makeState = [](float gain) {
        return std::unique_ptr<RenderState, void (*)(RenderState*)>(
            render_state_create(gain, 1, rate), render_state_destroy);
    };
    const auto before = makeState(0.5F);
    const auto after = makeState(1);
    TapRender::Procedure first;
    TapRender::Procedure second;
    first.call = second.call = render_io_proc;
    first.client = before.get();
    second.client = after.get();
    render_.setProcedure(&first);
    render_state_set_duck(before.get(), 0.2F);
    const float reached = play(1, 8).back();
    EXPECT_LT(reached, 0.45F);
    render_state_set_gain(after.get(), 0.5F);
    render_state_set_duck(after.get(), 0.2F);
    second.predecessor = &first;
    render_.setProcedure(&second);
    EXPECT_LE(largestJump(reached, play(1, 2)), 1e-4F);
    EXPECT_EQ(second.predecessor, nullptr);
}

TEST_F(TapRenderTest, HeartbeatCallsAStartedProcedureWithNoFrames)
{
    render_.heartbeat({});
    EXPECT_EQ(client_.calls, 1);
    EXPECT_EQ(client_.lastBytes, 0U);
    procedure_.isStarted = false;
    render_.heartbeat({});
    EXPECT_EQ(client_.calls, 1);
    EXPECT_EQ(render_.calls(), 1U);
}

} // namespace
} // namespace fadewell
