#pragma once

#include "platform/linux/pipewire/taps/TapRender.h"

#include <pipewire/pipewire.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The buffers of a tap's streams: two planes of floats. [audio thread]
namespace fadewell::pipewire {

constexpr std::uint32_t sampleSize = sizeof(float);

/// The newest buffer; older ones go back unread, so that the tap never adds latency.
inline pw_buffer* dequeueNewest(pw_stream* stream)
{
    pw_buffer* newest = nullptr;
    while (pw_buffer* buffer = pw_stream_dequeue_buffer(stream)) {
        if (newest) {
            pw_stream_queue_buffer(stream, newest);
        }
        newest = buffer;
    }
    return newest;
}

inline bool hasTwoPlanes(const spa_buffer& buffer)
{
    return buffer.n_datas >= 2 && buffer.datas[0].data && buffer.datas[1].data;
}

inline std::uint32_t capacity(const spa_buffer& buffer)
{
    const auto bytes = std::min(buffer.datas[0].maxsize, buffer.datas[1].maxsize);
    return std::min(bytes / sampleSize, TapRender::maxFrames);
}

inline void finish(spa_buffer& buffer, std::uint32_t frames)
{
    for (std::uint32_t plane = 0; plane < buffer.n_datas; ++plane) {
        if (spa_chunk* chunk = buffer.datas[plane].chunk) {
            chunk->offset = 0;
            chunk->stride = static_cast<std::int32_t>(sampleSize);
            chunk->size = plane < 2 ? frames * sampleSize : 0;
        }
    }
}

/// A plane's samples, as far as the buffer really holds them.
inline const float* plane(const spa_data& data, std::uint32_t& frames)
{
    const auto offset = std::min(data.chunk->offset, data.maxsize);
    frames = std::min(frames, std::min(data.chunk->size, data.maxsize - offset) / sampleSize);
    return reinterpret_cast<const float*>(static_cast<const std::byte*>(data.data) + offset);
}

/// Whether there is something to hear in what a mixer or a player handed on.
inline bool hasSound(const spa_buffer& buffer)
{
    const auto flags = static_cast<std::uint32_t>(buffer.datas[0].chunk->flags);
    return (flags & SPA_CHUNK_FLAG_EMPTY) == 0;
}

} // namespace fadewell::pipewire
