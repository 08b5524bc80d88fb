#include "audio/render.h"
#include "platform/simulated/BufferList.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <memory>

namespace fadewell {
namespace {

/// Stereo in and out, as the platform's buffers lie: one buffer a channel, or both interleaved.
struct Buffers {
    Buffers(std::uint32_t frames, bool isInterleaved)
    {
        for (std::uint32_t i = 0; i < (isInterleaved ? 1U : 2U); ++i) {
            input.add(isInterleaved ? 2 : 1, frames, 0.5F);
            output.add(isInterleaved ? 2 : 1, frames, 0.25F);
        }
    }

    BufferList input;
    BufferList output;
};

std::uint32_t frames(const benchmark::State& run)
{
    return static_cast<std::uint32_t>(run.range(0));
}

void count(benchmark::State& run)
{
    const std::int64_t samples = 2 * run.iterations() * run.range(0);
    run.SetBytesProcessed(samples * static_cast<std::int64_t>(sizeof(float)));
    run.counters["per_frame"] =
        benchmark::Counter(static_cast<double>(run.iterations() * run.range(0)),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void copy(benchmark::State& run)
{
    Buffers buffers(frames(run), false);
    for (auto _ : run) {
        for (std::size_t i = 0; i < 2; ++i) {
            std::memcpy(buffers.output.samples(i).data(),
                        buffers.input.samples(i).data(),
                        buffers.input.samples(i).size_bytes());
        }
        benchmark::ClobberMemory();
    }
    count(run);
}

enum class Motion {
    none,    ///< at its target since it was made
    stalled, ///< after a ramp that stuck short of its target, as most do
    ramping  ///< both factors move in every sample
};

void render(benchmark::State& run, Motion motion, bool isInterleaved)
{
    Buffers buffers(frames(run), isInterleaved);
    const std::unique_ptr<RenderState, void (*)(RenderState*)> state(
        render_state_create(motion == Motion::none ? 0.4F : 1.0F, 1, 48000), render_state_destroy);
    render_state_set_gain(state.get(), 0.4F);
    for (std::uint32_t done = 0; done < 100'000; done += frames(run)) {
        render_process(state.get(), buffers.input.list(), buffers.output.list());
    }
    bool isUp = false;
    for (auto _ : run) {
        if (motion == Motion::ramping) {
            isUp = !isUp;
            render_state_set_duck(state.get(), isUp ? 1.0F : 0.0F);
        }
        render_process(state.get(), buffers.input.list(), buffers.output.list());
        benchmark::ClobberMemory();
    }
    count(run);
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(1024)->Arg(8192)->Arg(65536);
}

BENCHMARK(copy)->Name("render/memcpy")->Apply(sizes);
BENCHMARK_CAPTURE(render, fresh, Motion::none, false)->Apply(sizes);
BENCHMARK_CAPTURE(render, stalled, Motion::stalled, false)->Apply(sizes);
BENCHMARK_CAPTURE(render, ramping, Motion::ramping, false)->Apply(sizes);
BENCHMARK_CAPTURE(render, stalled_interleaved, Motion::stalled, true)->Apply(sizes);
BENCHMARK_CAPTURE(render, ramping_interleaved, Motion::ramping, true)->Apply(sizes);

} // namespace
} // namespace fadewell
