#include <pipewire/pipewire.h>
#include <spa/buffer/buffer.h>
#include <spa/node/io.h>
#include <spa/node/node.h>
#include <spa/param/audio/format-utils.h>
#include <spa/param/props.h>
#include <spa/pod/builder.h>
#include <spa/utils/names.h>

#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <vector>

namespace fadewell {
namespace {

/// A stereo port with one buffer, a plane for each channel.
struct Port {
    explicit Port(std::uint32_t frames)
        : samples(2 * frames, 0.5F)
    {
        for (std::size_t i = 0; i < 2; ++i) {
            chunks[i] = {0, frames * static_cast<std::uint32_t>(sizeof(float)), sizeof(float), 0};
            datas[i].type = SPA_DATA_MemPtr;
            datas[i].flags = SPA_DATA_FLAG_READWRITE;
            datas[i].maxsize = chunks[i].size;
            datas[i].data = samples.data() + i * frames;
            datas[i].chunk = &chunks[i];
        }
        buffer.n_datas = 2;
        buffer.datas = datas.data();
    }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    std::vector<float> samples;
    std::array<spa_chunk, 2> chunks{};
    std::array<spa_data, 2> datas{};
    spa_buffer buffer{};
    spa_io_buffers io{};
};

/// The sound server's own stream converter in this process, set to nothing but a volume.
class Converter {
public:
    explicit Converter(std::uint32_t frames)
        : input_(frames)
        , output_(frames)
    {
        position_.clock.rate = {1, 48000};
        position_.clock.duration = frames;
    }

    /// Whether it is ready and really applies the volume.
    bool prepare(float volume)
    {
        pw_init(nullptr, nullptr);
        std::array<spa_support, 16> support{};
        const auto count = pw_get_support(support.data(), support.size());
        constexpr auto library = "audioconvert/libspa-audioconvert";
        handle_.reset(
            pw_load_spa_handle(library, SPA_NAME_AUDIO_CONVERT, nullptr, count, support.data()));
        void* interface = nullptr;
        if (!handle_ ||
            spa_handle_get_interface(handle_.get(), SPA_TYPE_INTERFACE_Node, &interface) < 0) {
            return false;
        }
        node_ = static_cast<spa_node*>(interface);
        spa_node_set_io(node_, SPA_IO_Position, &position_, sizeof position_);
        const spa_command start = SPA_NODE_COMMAND_INIT(SPA_NODE_COMMAND_Start);
        if (!connect(SPA_DIRECTION_INPUT, input_) || !connect(SPA_DIRECTION_OUTPUT, output_) ||
            !setVolume(volume) || spa_node_send_command(node_, &start) < 0)
        {
            return false;
        }
        process();
        process();
        return std::abs(output_.samples.back() - 0.5F * volume) < 1e-5F;
    }

    void process()
    {
        input_.io = {SPA_STATUS_HAVE_DATA, 0};
        output_.io.status = SPA_STATUS_NEED_DATA;
        spa_node_process(node_);
    }

private:
    bool connect(spa_direction direction, Port& port)
    {
        std::array<std::uint8_t, 1024> memory;
        spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
        spa_audio_info_raw info{};
        info.format = SPA_AUDIO_FORMAT_F32P;
        info.rate = 48000;
        info.channels = 2;
        info.position[0] = SPA_AUDIO_CHANNEL_FL;
        info.position[1] = SPA_AUDIO_CHANNEL_FR;
        const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_Format, &info);
        spa_buffer* buffer = &port.buffer;
        return spa_node_port_set_param(node_, direction, 0, SPA_PARAM_Format, 0, format) >= 0 &&
               spa_node_port_use_buffers(node_, direction, 0, 0, &buffer, 1) >= 0 &&
               spa_node_port_set_io(
                   node_, direction, 0, SPA_IO_Buffers, &port.io, sizeof port.io) >= 0;
    }

    bool setVolume(float volume)
    {
        std::array<std::uint8_t, 512> memory;
        spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
        const std::array volumes{volume, volume};
        const auto* props = static_cast<const spa_pod*>(spa_pod_builder_add_object(
            &builder,
            SPA_TYPE_OBJECT_Props,
            SPA_PARAM_Props,
            SPA_PROP_channelVolumes,
            SPA_POD_Array(sizeof(float), SPA_TYPE_Float, volumes.size(), volumes.data())));
        return spa_node_set_param(node_, SPA_PARAM_Props, 0, props) >= 0;
    }

    Port input_;
    Port output_;
    spa_io_position position_{};
    std::unique_ptr<spa_handle, decltype(&pw_unload_spa_handle)> handle_{nullptr,
                                                                         pw_unload_spa_handle};
    spa_node* node_ = nullptr;
};

/// One cycle of the server's converter, which takes at most 8,192 frames.
void serverVolume(benchmark::State& run)
{
    Converter converter(static_cast<std::uint32_t>(run.range(0)));
    if (!converter.prepare(0.4F)) {
        run.SkipWithError("the converter does not apply the volume");
        return;
    }
    for (auto _ : run) {
        converter.process();
        benchmark::ClobberMemory();
    }
    run.SetBytesProcessed(2 * run.iterations() * run.range(0) * std::int64_t{sizeof(float)});
    run.counters["per_frame"] =
        benchmark::Counter(static_cast<double>(run.iterations() * run.range(0)),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(serverVolume)->Name("render/server_volume")->Arg(1024)->Arg(8192);

} // namespace
} // namespace fadewell
