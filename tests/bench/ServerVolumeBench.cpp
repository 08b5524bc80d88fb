#include <pipewire/pipewire.h>
#include <spa/buffer/buffer.h>
#include <spa/node/io.h>
#include <spa/node/node.h>
#include <spa/param/audio/format-utils.h>
#include <spa/param/audio/format.h>
#include <spa/param/port-config.h>
#include <spa/param/props.h>
#include <spa/pod/builder.h>
#include <spa/utils/names.h>

#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace fadewell {
namespace {

/// A mono port with one buffer.
struct Port {
    explicit Port(std::uint32_t frames)
        : samples(frames, 0.5F)
    {
        chunk.size = frames * static_cast<std::uint32_t>(sizeof(float));
        chunk.stride = sizeof(float);
        data.type = SPA_DATA_MemPtr;
        data.flags = SPA_DATA_FLAG_READWRITE;
        data.maxsize = chunk.size;
        data.data = samples.data();
        data.chunk = &chunk;
        buffer.n_datas = 1;
        buffer.datas = &data;
    }
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    std::vector<float> samples;
    spa_chunk chunk{};
    spa_data data{};
    spa_buffer buffer{};
    spa_io_buffers io{};
};

/// The sound server's own stream converter in this process, set to nothing but a volume.
class Converter {
public:
    explicit Converter(std::uint32_t frames)
    {
        pw_init(nullptr, nullptr);
        for (int i = 0; i < 2; ++i) {
            inputs_.push_back(std::make_unique<Port>(frames));
            outputs_.push_back(std::make_unique<Port>(frames));
        }
        position_.clock.rate = {1, 48000};
        position_.clock.duration = frames;
    }
    ~Converter()
    {
        if (handle_) {
            pw_unload_spa_handle(handle_);
        }
        pw_deinit();
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// What failed; empty when it is ready and really applies the volume.
    std::string prepare(float volume)
    {
        std::array<spa_support, 16> support{};
        const auto count = pw_get_support(support.data(), support.size());
        handle_ = pw_load_spa_handle("audioconvert/libspa-audioconvert",
                                     SPA_NAME_AUDIO_CONVERT,
                                     nullptr,
                                     count,
                                     support.data());
        void* interface = nullptr;
        if (!handle_ || spa_handle_get_interface(handle_, SPA_TYPE_INTERFACE_Node, &interface) < 0)
        {
            return "no converter";
        }
        node_ = static_cast<spa_node*>(interface);
        spa_node_set_io(node_, SPA_IO_Position, &position_, sizeof position_);
        if (!configure(SPA_DIRECTION_INPUT, inputs_) ||
            !configure(SPA_DIRECTION_OUTPUT, outputs_) || !setVolume(volume))
        {
            return "the converter refused its configuration";
        }
        const spa_command start = SPA_NODE_COMMAND_INIT(SPA_NODE_COMMAND_Start);
        if (spa_node_send_command(node_, &start) < 0) {
            return "the converter did not start";
        }
        process();
        process();
        const float heard = outputs_.back()->samples.back();
        return std::abs(heard - 0.5F * volume) < 1e-5F ? "" : "the converter did not apply it";
    }

    void process()
    {
        for (const auto& port : inputs_) {
            port->io = {SPA_STATUS_HAVE_DATA, 0};
        }
        for (const auto& port : outputs_) {
            port->io.status = SPA_STATUS_NEED_DATA;
        }
        spa_node_process(node_);
    }

private:
    bool configure(spa_direction direction, std::vector<std::unique_ptr<Port>>& ports)
    {
        std::array<std::uint8_t, 2048> memory;
        spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
        spa_audio_info_raw info{};
        info.format = SPA_AUDIO_FORMAT_F32P;
        info.rate = 48000;
        info.channels = 2;
        info.position[0] = SPA_AUDIO_CHANNEL_FL;
        info.position[1] = SPA_AUDIO_CHANNEL_FR;
        const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_Format, &info);
        const auto* config = static_cast<const spa_pod*>(
            spa_pod_builder_add_object(&builder,
                                       SPA_TYPE_OBJECT_ParamPortConfig,
                                       SPA_PARAM_PortConfig,
                                       SPA_PARAM_PORT_CONFIG_direction,
                                       SPA_POD_Id(direction),
                                       SPA_PARAM_PORT_CONFIG_mode,
                                       SPA_POD_Id(SPA_PARAM_PORT_CONFIG_MODE_dsp),
                                       SPA_PARAM_PORT_CONFIG_format,
                                       SPA_POD_Pod(format)));
        bool isDone = spa_node_set_param(node_, SPA_PARAM_PortConfig, 0, config) >= 0;
        for (std::uint32_t i = 0; i < ports.size() && isDone; ++i) {
            isDone = connect(direction, i, *ports[i]);
        }
        return isDone;
    }

    bool connect(spa_direction direction, std::uint32_t id, Port& port)
    {
        std::array<std::uint8_t, 512> memory;
        spa_pod_builder builder = SPA_POD_BUILDER_INIT(memory.data(), memory.size());
        spa_audio_info_dsp info{};
        info.format = SPA_AUDIO_FORMAT_DSP_F32;
        const spa_pod* format = spa_format_audio_dsp_build(&builder, SPA_PARAM_Format, &info);
        spa_buffer* buffer = &port.buffer;
        return spa_node_port_set_param(node_, direction, id, SPA_PARAM_Format, 0, format) >= 0 &&
               spa_node_port_use_buffers(node_, direction, id, 0, &buffer, 1) >= 0 &&
               spa_node_port_set_io(
                   node_, direction, id, SPA_IO_Buffers, &port.io, sizeof port.io) >= 0;
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

    std::vector<std::unique_ptr<Port>> inputs_;
    std::vector<std::unique_ptr<Port>> outputs_;
    spa_io_position position_{};
    spa_handle* handle_ = nullptr;
    spa_node* node_ = nullptr;
};

/// One cycle of the server's converter, which takes at most 8,192 frames.
void serverVolume(benchmark::State& run)
{
    Converter converter(static_cast<std::uint32_t>(run.range(0)));
    if (const auto failure = converter.prepare(0.4F); !failure.empty()) {
        run.SkipWithError(failure.c_str());
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
