#include "tests/integration/faults/PlayingApp.h"

#include <cmath>
#include <fmt/format.h>

namespace fadewell::integration {

RememberedSettings RememberedSettings::fromJson(const nlohmann::json& app)
{
    const auto& output = app.at("outputDeviceUID");
    return {static_cast<int>(std::lround(app.at("volume").get<double>() * 100)),
            app.at("isMuted"),
            output.is_null() ? "" : output.get<std::string>()};
}

std::string RememberedSettings::text() const
{
    return fmt::format(
        "{}%{} on {}", percent, isMuted ? " muted" : "", output.empty() ? "system" : output);
}

void PlayingApp::restart()
{
    player.reset();
    player.emplace(command);
    start = Clock::now();
    mayHaveLeftItsOwnOutput = false;
}

} // namespace fadewell::integration
