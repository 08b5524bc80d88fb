#include "platform/linux/pipewire/taps/Lobby.h"

#include <spa/param/audio/format-utils.h>
#include <spa/pod/builder.h>

#include <array>
#include <utility>

namespace fadewell::pipewire {

std::unique_ptr<Lobby> Lobby::create(Connection& connection, std::string name)
{
    if (!connection.core()) {
        return nullptr;
    }
    // Exactly this class: the Pulse server answers no client whose stream plays on another.
    auto* props = pw_properties_new(PW_KEY_MEDIA_CLASS,
                                    "Audio/Sink",
                                    PW_KEY_NODE_NAME,
                                    name.c_str(),
                                    PW_KEY_NODE_DESCRIPTION,
                                    "Fadewell",
                                    PW_KEY_NODE_VIRTUAL,
                                    "true",
                                    PW_KEY_PRIORITY_SESSION,
                                    "-1",
                                    PW_KEY_PRIORITY_DRIVER,
                                    "0",
                                    "audio.position",
                                    "[ FL FR ]",
                                    nullptr);
    pw_stream* const stream = pw_stream_new(connection.core(), "Fadewell lobby", props);
    if (!stream) {
        return nullptr;
    }
    std::unique_ptr<Lobby> lobby(new Lobby(std::move(name), stream));
    spa_audio_info_raw info{};
    info.format = SPA_AUDIO_FORMAT_F32P;
    info.rate = 48000;
    info.channels = 2;
    info.position[0] = SPA_AUDIO_CHANNEL_FL;
    info.position[1] = SPA_AUDIO_CHANNEL_FR;
    std::array<std::uint8_t, 1024> storage{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, storage.data(), storage.size());
    const spa_pod* format = spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &info);
    // A driver that nobody triggers: what is linked to it counts as running, and waits.
    constexpr std::uint32_t flags =
        PW_STREAM_FLAG_DRIVER | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS;
    const int status = pw_stream_connect(
        stream, PW_DIRECTION_INPUT, PW_ID_ANY, static_cast<pw_stream_flags>(flags), &format, 1);
    return status >= 0 ? std::move(lobby) : nullptr;
}

Lobby::~Lobby()
{
    pw_stream_destroy(stream_);
}

} // namespace fadewell::pipewire
