// Parameters and metadata of the sound server, as any of its clients may have made them.

#include "platform/linux/pipewire/ParameterParsing.h"
#include "tests/fuzz/Fuzz.h"

#include <spa/pod/builder.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace {

using namespace fadewell;
using namespace fadewell::pipewire;
using fuzz::require;

void parse(const spa_pod* pod)
{
    static_cast<void>(parseRate(pod));
    NodeVolume volume;
    parseVolume(pod, volume);
    std::array<std::byte, 4096> memory = {};
    spa_pod_builder builder = {};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    if (std::none_of(volume.channels.begin(), volume.channels.end(), [](float channel) {
            return std::isnan(channel);
        }))
    {
        NodeVolume again;
        parseVolume(buildVolume(builder, SPA_PARAM_Props, volume), again);
        require(again == volume, "a volume can be written as it was read");
    }
    if (const auto route = parseRoute(pod)) {
        spa_pod_builder_init(&builder, memory.data(), memory.size());
        const auto written = parseRoute(buildRoute(builder, *route, volume));
        require(!written || written->index == route->index, "a route keeps its number");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static_cast<void>(parseDefaultName(fuzz::textOf(data, size)));
    static_cast<void>(number(fuzz::textOf(data, size)));
    // The connection hands over whole pods, and nothing but their outer size is true of them. On
    // the heap and no longer than it says, so that every read behind it shows.
    std::vector<std::uint64_t> words((size + 7) / 8);
    if (size >= sizeof(spa_pod)) {
        std::memcpy(words.data(), data, size);
        auto* pod = reinterpret_cast<spa_pod*>(words.data());
        pod->size = static_cast<std::uint32_t>(words.size() * 8 - sizeof(spa_pod));
        parse(pod);
    }
    return 0;
}
