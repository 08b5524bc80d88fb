#include "platform/simulated/BufferList.h"

#include <cstring>

namespace fadewell {
namespace {

constexpr std::size_t headerSize = offsetof(AudioBufferList, mBuffers);

} // namespace

BufferList::BufferList()
    // Room for the one buffer that the type declares, also while the list is empty.
    : list_(sizeof(AudioBufferList))
{}

BufferList& BufferList::add(std::uint32_t channels, std::uint32_t frames, float value)
{
    return addBytes(channels, channels * frames * std::uint32_t{sizeof(float)}, value);
}

BufferList& BufferList::addBytes(std::uint32_t channels, std::uint32_t bytes, float value)
{
    auto& samples = samples_.emplace_back((bytes + sizeof(float) - 1) / sizeof(float) + 1, value);
    samples.resize(samples.size() - 1); // Capacity stays above 0: an empty buffer has an address.
    append({channels, bytes, samples.data()});
    return *this;
}

BufferList& BufferList::addNull(std::uint32_t channels, std::uint32_t bytes)
{
    samples_.emplace_back();
    append({channels, bytes, nullptr});
    return *this;
}

void BufferList::append(AudioBuffer buffer)
{
    const auto count = static_cast<std::uint32_t>(samples_.size());
    list_.resize(headerSize + count * sizeof(AudioBuffer));
    std::memcpy(list_.data(), &count, sizeof count);
    std::memcpy(list_.data() + headerSize + (count - 1) * sizeof buffer, &buffer, sizeof buffer);
}

AudioBufferList* BufferList::list()
{
    return reinterpret_cast<AudioBufferList*>(list_.data());
}

} // namespace fadewell
