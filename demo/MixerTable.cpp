#include "demo/MixerTable.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace fadewell::demo {
namespace {

using Json = nlohmann::json;

const Json& arrayOf(const Json& state, const char* name)
{
    static const Json none = Json::array();
    const auto found = state.find(name);
    return found != state.end() && found->is_array() ? *found : none;
}

std::string text(const Json& entry, const char* name)
{
    const auto found = entry.find(name);
    return found != entry.end() && found->is_string() ? found->get<std::string>() : std::string();
}

bool isTrue(const Json& entry, const char* name)
{
    const auto found = entry.find(name);
    return found != entry.end() && found->is_boolean() && found->get<bool>();
}

/// Names come from other programs: cut at a character, and nothing that moves the terminal's
/// cursor.
std::string cell(const std::string& value, std::size_t width)
{
    std::string cut;
    std::size_t characters = 0;
    for (const char c : value) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isFirstByte = (byte & 0xC0U) != 0x80U;
        if (isFirstByte && ++characters > width) {
            characters = width;
            break;
        }
        cut += byte < 0x20 || byte == 0x7F ? '?' : c;
    }
    return cut + std::string(width - characters, ' ');
}

std::string badge(const Json& app)
{
    const auto status = text(app, "callStatus");
    const std::string call = status == "inCall"    ? "in a call"
                             : status == "lowered" ? "lowered"
                                                   : "";
    return isTrue(app, "isUsingMicrophone") ? "mic " + call : call;
}

std::string appLine(const Json& app)
{
    const auto volume = app.find("volume");
    const double level = volume != app.end() && volume->is_number() ? volume->get<double>() : 1;
    const auto output = text(app, "outputDeviceName");
    return fmt::format("{} {} {:>5.0f} %  {} {} {}\n",
                       cell(text(app, "name"), 20),
                       isTrue(app, "isPlaying") ? "playing" : "       ",
                       std::round(level * 100),
                       isTrue(app, "isMuted") ? "muted" : "     ",
                       cell(output.empty() ? "system" : output, 16),
                       badge(app));
}

std::string bar(double rms)
{
    constexpr double floor = -60;
    constexpr int width = 30;
    const double share = std::clamp(1 - rms / floor, 0.0, 1.0);
    const auto full = static_cast<std::size_t>(std::lround(share * width));
    return std::string(full, '#') + std::string(width - full, '.');
}

std::string outputLine(const Json& output, const Levels& levels)
{
    const auto found = levels.find(text(output, "id"));
    const auto level = found == levels.end() ? std::nullopt : found->second;
    const auto measured =
        level ? fmt::format(
                    "{} {:6.1f} dB, peak {:6.1f} dB", bar(level->rms), level->rms, level->peak)
              : bar(-60) + " silent";
    return fmt::format("{} {} {}\n",
                       cell(text(output, "name"), 20),
                       isTrue(output, "isDefault") ? "default" : "       ",
                       measured);
}

} // namespace

std::string mixerTable(const Json& state, const Levels& levels)
{
    std::string lines = fmt::format("{} {}  {}  {} {} {}\n",
                                    cell("App", 20),
                                    "Playing",
                                    "Volume",
                                    "Muted",
                                    cell("Output", 16),
                                    "Badge");
    for (const auto& app : arrayOf(state, "apps")) {
        lines += appLine(app);
    }
    lines += "\n" + cell("Output", 20) + "         Level measured\n";
    for (const auto& output : arrayOf(state, "outputs")) {
        lines += outputLine(output, levels);
    }
    return lines;
}

} // namespace fadewell::demo
