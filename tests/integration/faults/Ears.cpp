#include "tests/integration/faults/Ears.h"

namespace fadewell::integration {
namespace {

using namespace std::chrono_literals;

constexpr auto longestUse = 90s; // a recording ends after two minutes
constexpr auto window = 300ms;

} // namespace

void Ears::listen(const std::set<std::string>& outputs)
{
    std::erase_if(recorders_, [&](const auto& entry) {
        return !outputs.contains(entry.first) || entry.second.recorder->now() > frames(longestUse);
    });
    for (const auto& output : outputs) {
        auto& ear = recorders_[output];
        if (!ear.recorder) {
            ear.recorder = std::make_unique<Recorder>(output);
        }
        ear.start = ear.recorder->now();
    }
}

std::optional<Sound> Ears::heard(const std::string& output) const
{
    const auto& ear = recorders_.at(output);
    const auto now = ear.recorder->now();
    if (now < ear.start + frames(window)) {
        return std::nullopt;
    }
    return ear.recorder->read(now - frames(window), frames(window));
}

} // namespace fadewell::integration
