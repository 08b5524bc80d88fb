// A small player for the demo session: plays its own endless tune until it is ended.
//   demo-music                 through PipeWire, under its own name
//   demo-music --stdout NAME   the tune of that name as raw 32-bit float stereo on standard output,
//   for a player of another kind

#include "demo/Tune.h"

#include <pipewire/pipewire.h>
#include <spa/param/audio/format-utils.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

namespace fadewell::demo {
namespace {

struct Player {
    Tune tune;
    pw_main_loop* loop = nullptr;
    pw_stream* stream = nullptr;
    int result = 0;
};

void onProcess(void* data)
{
    auto& player = *static_cast<Player*>(data);
    auto* buffer = pw_stream_dequeue_buffer(player.stream);
    if (!buffer) {
        return;
    }
    auto& chunk = buffer->buffer->datas[0];
    constexpr auto frameSize = static_cast<std::uint32_t>(sizeof(std::array<float, 2>));
    auto frames = chunk.maxsize / frameSize;
    if (buffer->requested > 0) {
        frames = std::min(frames, static_cast<std::uint32_t>(buffer->requested));
    }
    auto* out = static_cast<char*>(chunk.data);
    for (std::uint32_t i = 0; out && i < frames; ++i) {
        const auto frame = player.tune.next();
        std::memcpy(out + i * frameSize, frame.data(), frameSize);
    }
    chunk.chunk->offset = 0;
    chunk.chunk->stride = static_cast<std::int32_t>(frameSize);
    chunk.chunk->size = frames * frameSize;
    pw_stream_queue_buffer(player.stream, buffer);
}

void onStateChanged(void* data, pw_stream_state, pw_stream_state state, const char* error)
{
    auto& player = *static_cast<Player*>(data);
    if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED) {
        std::fprintf(stderr, "no sound: %s\n", error ? error : "the server has gone");
        player.result = 1;
        pw_main_loop_quit(player.loop);
    }
}

void onSignal(void* loop, int)
{
    pw_main_loop_quit(static_cast<pw_main_loop*>(loop));
}

int playToServer(const std::string& name)
{
    pw_init(nullptr, nullptr);
    Player player{Tune(name), pw_main_loop_new(nullptr)};
    auto* loop = pw_main_loop_get_loop(player.loop);
    pw_loop_add_signal(loop, SIGINT, &onSignal, player.loop);
    pw_loop_add_signal(loop, SIGTERM, &onSignal, player.loop);

    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.process = &onProcess;
    events.state_changed = &onStateChanged;
    // The configuration that gives its sound thread priority, so that a busy machine doesn't cut
    // it.
    auto* context =
        pw_context_new(loop, pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0);
    auto* core = pw_context_connect(context, nullptr, 0);
    if (!core) {
        std::fputs("no sound server to play to\n", stderr);
        return 1;
    }
    player.stream = pw_stream_new(core,
                                  name.c_str(),
                                  pw_properties_new(PW_KEY_MEDIA_TYPE,
                                                    "Audio",
                                                    PW_KEY_MEDIA_CATEGORY,
                                                    "Playback",
                                                    PW_KEY_MEDIA_ROLE,
                                                    "Music",
                                                    nullptr));
    spa_hook listener{};
    pw_stream_add_listener(player.stream, &listener, &events, &player);

    std::array<std::uint8_t, 1024> storage{};
    spa_pod_builder builder = SPA_POD_BUILDER_INIT(storage.data(), storage.size());
    spa_audio_info_raw info{};
    info.format = SPA_AUDIO_FORMAT_F32;
    info.rate = static_cast<std::uint32_t>(Tune::sampleRate);
    info.channels = 2;
    info.position[0] = SPA_AUDIO_CHANNEL_FL;
    info.position[1] = SPA_AUDIO_CHANNEL_FR;
    const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
    const auto flags = static_cast<pw_stream_flags>(
        PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS);
    if (pw_stream_connect(player.stream, PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, &format, 1) < 0) {
        std::fputs("can't connect to the sound server\n", stderr);
        player.result = 1;
    } else {
        pw_main_loop_run(player.loop);
    }
    spa_hook_remove(&listener); // its own end is no news
    pw_stream_destroy(player.stream);
    pw_core_disconnect(core);
    pw_context_destroy(context);
    pw_main_loop_destroy(player.loop);
    return player.result;
}

int playToStandardOutput(const std::string& name)
{
    Tune tune(name);
    for (;;) {
        const auto frame = tune.next();
        if (std::fwrite(frame.data(), sizeof(frame), 1, stdout) != 1) {
            return 0; // the reader has gone
        }
    }
}

} // namespace
} // namespace fadewell::demo

int main(int argc, char** argv)
{
    const std::string path = argv[0];
    const auto name = path.substr(path.rfind('/') + 1);
    if (argc == 3 && std::strcmp(argv[1], "--stdout") == 0) {
        std::signal(SIGPIPE, SIG_IGN);
        return fadewell::demo::playToStandardOutput(argv[2]);
    }
    if (argc != 1) {
        std::fprintf(stderr, "Usage: %s [--stdout NAME]\n", name.c_str());
        return 2;
    }
    return fadewell::demo::playToServer(name);
}
