#include "audio/render.h"

#include "platform/simulated/BufferList.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace fadewell {
namespace {

using State = std::unique_ptr<RenderState, void (*)(RenderState*)>;

State makeState(float gain = 1, float duck = 1, double sampleRate = 48000)
{
    return {render_state_create(gain, duck, sampleRate), render_state_destroy};
}

/// One buffer of a list, of as many bytes as the frames need and some more (or fewer).
struct BufferShape {
    std::uint32_t channels = 1;
    int extraBytes = 0;
    bool hasData = true;
};
struct Layout {
    const char* name;
    std::vector<BufferShape> buffers;
};

void PrintTo(const Layout& layout, std::ostream* stream)
{
    *stream << layout.name;
}

BufferList makeList(const Layout& layout, std::uint32_t frames, float fill)
{
    BufferList list;
    for (const auto& shape : layout.buffers) {
        const int bytes = static_cast<int>(std::max(shape.channels, 1U) * frames * 4);
        const auto size = static_cast<std::uint32_t>(std::max(bytes + shape.extraBytes, 0));
        shape.hasData ? list.addBytes(shape.channels, size, fill)
                      : list.addNull(shape.channels, size);
    }
    return list;
}

const std::array inputLayouts{
    Layout{"planar", {{}, {}}},
    Layout{"interleaved", {{.channels = 2}}},
    Layout{"mono", {{}}},
    Layout{"four interleaved", {{.channels = 4}}},
    Layout{"null first", {{.channels = 2, .hasData = false}, {}, {}}},
    Layout{"empty first", {{.channels = 0}, {}, {}}},
    Layout{"second in a wide buffer", {{}, {.channels = 3}}},
    Layout{"short right", {{}, {.extraBytes = -6}}},
    Layout{"nothing", {}},
    Layout{"only null", {{.hasData = false}}},
};

const std::array outputLayouts{
    Layout{"planar", {{}, {}}},
    Layout{"interleaved", {{.channels = 2}}},
    Layout{"mono", {{}}},
    Layout{"four planar", {{}, {}, {}, {}}},
    Layout{"four interleaved", {{.channels = 4}}},
    Layout{"interleaved, odd bytes", {{.channels = 2, .extraBytes = 5}}},
    Layout{"planar, long left, short right", {{.extraBytes = 40}, {.extraBytes = -4}}},
    Layout{"right is null", {{}, {.hasData = false}}},
    Layout{"null first", {{.channels = 2, .hasData = false}, {}, {}}},
    Layout{"empty first", {{.channels = 0, .extraBytes = 8}, {.channels = 2}}},
    Layout{"nothing", {}},
};

void fillWithNoise(BufferList& list, std::mt19937& random)
{
    std::uniform_real_distribution<float> noise(-1, 1);
    constexpr std::array odd{0.0F,
                             -0.0F,
                             std::numeric_limits<float>::denorm_min(),
                             std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::max()};
    for (std::size_t buffer = 0; buffer < list.count(); ++buffer) {
        for (float& sample : list.samples(buffer)) {
            sample = random() % 16 == 0 ? odd.at(random() % odd.size()) : noise(random);
        }
    }
}

/// The rendering as it is defined: one sample after another, nothing decided for a block.
struct Reference {
    float gain = 1;
    float duck = 1;
    float targetGain = 1;
    float targetDuck = 1;
    bool hasSignal = false;
    const RenderState* coefficients = nullptr;

    struct Place {
        float* samples = nullptr;
        std::size_t stride = 0;
        std::size_t frames = 0;
    };

    static Place place(const AudioBufferList& list, std::uint32_t channel)
    {
        std::uint32_t base = 0;
        for (std::uint32_t i = 0; i < list.mNumberBuffers; ++i) {
            const auto& buffer = list.mBuffers[i];
            const std::uint32_t n = buffer.mData ? buffer.mNumberChannels : 0;
            if (channel < base + n) {
                return {static_cast<float*>(buffer.mData) + channel - base,
                        n,
                        buffer.mDataByteSize / (n * 4)};
            }
            base += n;
        }
        return {};
    }

    static void step(float& value, float target, float coefficient)
    {
        if (value != target) {
            value = std::fma(target - value, coefficient, value);
            if (std::abs(target - value) < 1e-5F) {
                value = target;
            }
        }
    }

    void process(const AudioBufferList& input, const AudioBufferList& output)
    {
        std::uint32_t channels = 0;
        for (std::uint32_t i = 0; i < output.mNumberBuffers; ++i) {
            channels += output.mBuffers[i].mNumberChannels;
            if (output.mBuffers[i].mData) {
                std::memset(output.mBuffers[i].mData, 0, output.mBuffers[i].mDataByteSize);
            }
        }
        const Place left = place(input, 0);
        const Place right = place(input, 1).samples ? place(input, 1) : left;
        const Place outLeft = place(output, 0);
        const Place outRight = channels >= 2 ? place(output, 1) : Place{};
        std::size_t frames = std::min({left.frames, right.frames, outLeft.frames});
        frames = outRight.samples ? std::min(frames, outRight.frames) : frames;
        const float duckCoefficient =
            duck > targetDuck ? coefficients->duckDownCoefficient : coefficients->duckUpCoefficient;
        for (std::size_t i = 0; i < frames; ++i) {
            step(gain, targetGain, coefficients->gainCoefficient);
            step(duck, targetDuck, duckCoefficient);
            const float g = gain * duck;
            const float l = left.samples[i * left.stride];
            const float r = right.samples[i * right.stride];
            if (outRight.samples) {
                outLeft.samples[i * outLeft.stride] = g * l;
                outRight.samples[i * outRight.stride] = g * r;
            } else {
                const float gainedLeft = g * l;
                const float gainedRight = g * r;
                outLeft.samples[i * outLeft.stride] = (gainedLeft + gainedRight) * 0.5F;
            }
            hasSignal = hasSignal || l != 0 || r != 0;
        }
    }
};

/// The same bits, except that any not-a-number equals any other.
testing::AssertionResult sameBits(BufferList& left, BufferList& right)
{
    for (std::size_t buffer = 0; buffer < left.count(); ++buffer) {
        const auto a = left.samples(buffer);
        const auto b = right.samples(buffer);
        for (std::size_t i = 0; i < a.size(); ++i) {
            const bool areSame = std::memcmp(&a[i], &b[i], sizeof(float)) == 0;
            if (!areSame && !(std::isnan(a[i]) && std::isnan(b[i]))) {
                return testing::AssertionFailure() << "buffer " << buffer << ", sample " << i
                                                   << ": " << a[i] << " and " << b[i];
            }
        }
    }
    return testing::AssertionSuccess();
}

/// Renders block after block with both, setting the targets on the way.
class Comparison {
public:
    Comparison(float gain, float duck)
        : state_(makeState(gain, duck))
        , reference_{.gain = gain,
                     .duck = duck,
                     .targetGain = gain,
                     .targetDuck = duck,
                     .coefficients = state_.get()}
    {}

    void setTargets(float gain, float duck)
    {
        render_state_set_gain(state_.get(), gain);
        render_state_set_duck(state_.get(), duck);
        reference_.targetGain = gain;
        reference_.targetDuck = duck;
    }

    void render(const Layout& input, const Layout& output, std::uint32_t frames)
    {
        auto source = makeList(input, frames, 0);
        fillWithNoise(source, random_);
        auto rendered = makeList(output, frames, 77);
        auto expected = makeList(output, frames, 77);
        render_process(state_.get(), source.list(), rendered.list());
        reference_.process(*source.list(), *expected.list());
        ASSERT_TRUE(sameBits(rendered, expected));
        ASSERT_EQ(state_->currentGain, reference_.gain);
        ASSERT_EQ(state_->currentDuck, reference_.duck);
        ASSERT_EQ(render_state_has_signal(state_.get()), reference_.hasSignal);
        ASSERT_EQ(render_state_callback_count(state_.get()), ++blocks_);
    }

    [[nodiscard]] const RenderState& state() const { return *state_; }

private:
    State state_;
    Reference reference_;
    std::mt19937 random_{12345};
    std::uint64_t blocks_ = 0;
};

using LayoutPair = std::tuple<Layout, Layout>;

class RenderLayoutTest : public testing::TestWithParam<LayoutPair> {};

TEST_P(RenderLayoutTest, EverySampleHasTheBitsOfItsDefinition)
{
    const auto& [input, output] = GetParam();
    for (const std::uint32_t frames : {1U, 7U, 256U, 257U, 1024U}) {
        SCOPED_TRACE(frames);
        Comparison comparison(1, 1);
        for (const auto& [gain, duck] :
             {std::pair{1.0F, 1.0F}, {0.4F, 1.0F}, {0.4F, 0.25F}, {0.0F, 1.0F}, {0.9F, 1.0F}})
        {
            comparison.setTargets(gain, duck);
            comparison.render(input, output, frames);
            comparison.render(input, output, frames);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All,
                         RenderLayoutTest,
                         testing::Combine(testing::ValuesIn(inputLayouts),
                                          testing::ValuesIn(outputLayouts)));

struct Journey {
    float fromGain, fromDuck, toGain, toDuck;
};

class RenderRampTest : public testing::TestWithParam<Journey> {};

// Long enough for the slowest ramp to reach its fixed point, which for most targets is not the
// target itself, and for the blocks that follow it.
TEST_P(RenderRampTest, WholeRampsHaveTheBitsOfTheirDefinition)
{
    const auto& journey = GetParam();
    Comparison comparison(journey.fromGain, journey.fromDuck);
    comparison.setTargets(journey.toGain, journey.toDuck);
    for (int block = 0; block < 260; ++block) {
        comparison.render(inputLayouts[0], outputLayouts[0], 1024);
        ASSERT_FALSE(HasFatalFailure()) << "block " << block;
    }
    EXPECT_NEAR(comparison.state().currentGain, journey.toGain, 1e-3);
    EXPECT_NEAR(comparison.state().currentDuck, journey.toDuck, 1e-3);
}

INSTANTIATE_TEST_SUITE_P(Journeys,
                         RenderRampTest,
                         testing::Values(Journey{1, 1, 0.4F, 1},
                                         Journey{0, 1, 1, 1},
                                         Journey{1, 1, 0, 1},
                                         Journey{0.3F, 1, 0.7F, 0.25F},
                                         Journey{1, 0.25F, 1, 1},
                                         Journey{0.5F, 0, 0.1F, 0.9F}));

TEST(Render, CreatesWithClampedValuesAndTheRatesCoefficients)
{
    for (const double sampleRate : {48000.0, 44100.0, 0.0, -1.0}) {
        const double usedRate = sampleRate > 0 ? sampleRate : 48000;
        const auto state = makeState(1.7F, -0.2F, sampleRate);
        EXPECT_EQ(render_state_gain(state.get()), 1.0F);
        EXPECT_EQ(state->currentGain, 1.0F);
        EXPECT_EQ(state->currentDuck, 0.0F);
        EXPECT_FALSE(render_state_has_signal(state.get()));
        const auto coefficient = [&](double seconds) {
            return static_cast<float>(1 - std::exp(-1 / (usedRate * seconds)));
        };
        EXPECT_FLOAT_EQ(state->gainCoefficient, coefficient(0.015));
        EXPECT_FLOAT_EQ(state->duckDownCoefficient, coefficient(0.15));
        EXPECT_FLOAT_EQ(state->duckUpCoefficient, coefficient(0.35));
        render_state_set_gain(state.get(), 3);
        EXPECT_EQ(render_state_gain(state.get()), 1.0F);
        render_state_set_gain(state.get(), std::numeric_limits<float>::quiet_NaN());
        EXPECT_EQ(render_state_gain(state.get()), 0.0F) << "what is no number must not be heard";
    }
    render_state_destroy(nullptr);
}

TEST(Render, SignalIsSeenOnlyAmongTheRenderedFrames)
{
    const auto state = makeState();
    BufferList input;
    input.add(1, 512).add(1, 512);
    BufferList output;
    output.add(1, 256).add(1, 256);
    input.samples(0)[256] = 1;
    input.samples(0)[0] = -0.0F;
    render_process(state.get(), input.list(), output.list());
    EXPECT_FALSE(render_state_has_signal(state.get()));
    input.samples(1)[255] = -1e-30F;
    render_process(state.get(), input.list(), output.list());
    EXPECT_TRUE(render_state_has_signal(state.get()));
    input.samples(1)[255] = 0;
    render_process(state.get(), input.list(), output.list());
    EXPECT_TRUE(render_state_has_signal(state.get()));
}

TEST(Render, ProcedureNeedsAClientAndCountsCallsWithNothingToDo)
{
    BufferList output;
    output.add(2, 16, 5);
    EXPECT_EQ(render_io_proc(2, nullptr, nullptr, nullptr, output.list(), nullptr, nullptr), 0);
    EXPECT_EQ(output.samples(0)[0], 5.0F);
    const auto state = makeState();
    EXPECT_EQ(render_io_proc(2, nullptr, nullptr, nullptr, output.list(), nullptr, state.get()), 0);
    EXPECT_EQ(output.samples(0)[31], 0.0F);
    EXPECT_EQ(render_io_proc(2, nullptr, nullptr, nullptr, nullptr, nullptr, state.get()), 0);
    EXPECT_EQ(render_state_callback_count(state.get()), 2U);
}

} // namespace
} // namespace fadewell
