// Plays one of the demo's sounds until it is ended: on PipeWire, or raw to standard output.
#include "demo/DemoSound.h"

#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include <CLI/CLI.hpp>
#include <array>
#include <csignal>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace fadewell::demo {
namespace {

constexpr std::uint32_t frameBytes = DemoSound::channels * sizeof(float);

struct Player {
    DemoSound sound;
    pw_main_loop* loop = nullptr;
    pw_stream* stream = nullptr;
    bool failed = false;
};

void onProcess(void* data)
{
    auto& player = *static_cast<Player*>(data);
    pw_buffer* buffer = pw_stream_dequeue_buffer(player.stream);
    if (buffer == nullptr) {
        return;
    }
    spa_data& plane = buffer->buffer->datas[0];
    if (plane.data != nullptr) {
        std::uint64_t frames = plane.maxsize / frameBytes;
        if (buffer->requested != 0 && buffer->requested < frames) {
            frames = buffer->requested;
        }
        player.sound.render({static_cast<float*>(plane.data), frames * DemoSound::channels});
        plane.chunk->offset = 0;
        plane.chunk->stride = frameBytes;
        plane.chunk->size = static_cast<std::uint32_t>(frames * frameBytes);
    }
    pw_stream_queue_buffer(player.stream, buffer);
}

void onState(void* data, pw_stream_state, pw_stream_state state, const char* error)
{
    auto& player = *static_cast<Player*>(data);
    if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED) {
        std::fprintf(stderr, "The sound server is gone: %s\n", error != nullptr ? error : "ended");
        player.failed = true;
        pw_main_loop_quit(player.loop);
    }
}

void onSignal(void* data, int)
{
    pw_main_loop_quit(static_cast<Player*>(data)->loop);
}

pw_stream_events streamEvents()
{
    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.state_changed = onState;
    events.process = onProcess;
    return events;
}

bool connect(pw_stream* stream)
{
    spa_audio_info_raw info{};
    info.format = SPA_AUDIO_FORMAT_F32;
    info.rate = DemoSound::rate;
    info.channels = DemoSound::channels;
    info.position[0] = SPA_AUDIO_CHANNEL_FL;
    info.position[1] = SPA_AUDIO_CHANNEL_FR;
    std::array<std::uint8_t, 1024> space{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, space.data(), space.size());
    const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
    const auto flags = static_cast<pw_stream_flags>(
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    return pw_stream_connect(stream, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, &format, 1) == 0;
}

int play(DemoSound::Tune tune, const std::string& name)
{
    Player player{DemoSound(tune)};
    pw_init(nullptr, nullptr);
    player.loop = pw_main_loop_new(nullptr);
    pw_loop* loop = pw_main_loop_get_loop(player.loop);
    // Before the data thread exists, which inherits the blocked signals.
    pw_loop_add_signal(loop, SIGINT, onSignal, &player);
    pw_loop_add_signal(loop, SIGTERM, onSignal, &player);
    const pw_stream_events events = streamEvents();
    player.stream = pw_stream_new_simple(loop,
                                         name.c_str(),
                                         pw_properties_new(PW_KEY_MEDIA_TYPE,
                                                           "Audio",
                                                           PW_KEY_MEDIA_CATEGORY,
                                                           "Playback",
                                                           PW_KEY_APP_NAME,
                                                           name.c_str(),
                                                           PW_KEY_NODE_NAME,
                                                           name.c_str(),
                                                           nullptr),
                                         &events,
                                         &player);
    if (player.stream != nullptr && connect(player.stream)) {
        pw_main_loop_run(player.loop);
    } else {
        std::fputs("No sound server answers.\n", stderr);
        player.failed = true;
    }
    if (player.stream != nullptr) {
        pw_stream_destroy(player.stream);
    }
    pw_main_loop_destroy(player.loop);
    pw_deinit();
    return player.failed ? 1 : 0;
}

// Ends with the reader.
int writeRaw(DemoSound::Tune tune)
{
    DemoSound sound(tune);
    std::vector<float> block(4'096);
    do {
        sound.render(block);
    } while (std::fwrite(block.data(), sizeof(float), block.size(), stdout) == block.size());
    return 0;
}

} // namespace
} // namespace fadewell::demo

int main(int argc, char** argv)
{
    using fadewell::demo::DemoSound;
    const std::map<std::string, DemoSound::Tune> tunes{{"music", DemoSound::Tune::music},
                                                       {"radio", DemoSound::Tune::radio},
                                                       {"podcast", DemoSound::Tune::podcast}};
    CLI::App app("Plays generated sound until it is ended");
    DemoSound::Tune tune{};
    std::string name = "Demo";
    bool isRaw = false;
    app.add_option("tune", tune, "music, radio or podcast")
        ->required()
        ->transform(CLI::CheckedTransformer(tunes));
    app.add_option("--name", name, "the app's name");
    app.add_flag("--raw", isRaw, "32-bit float stereo at 48 kHz to standard output");
    CLI11_PARSE(app, argc, argv);
    return isRaw ? fadewell::demo::writeRaw(tune) : fadewell::demo::play(tune, name);
}
