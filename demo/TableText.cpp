#include "demo/TableText.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

namespace fadewell::demo {
namespace {

/// Other programs choose these texts: nothing of them may steer the terminal, nor break the
/// columns.
std::string cell(const std::string& text, std::size_t width)
{
    std::string shown;
    std::size_t characters = 0;
    for (const char byte : text) {
        const auto code = static_cast<unsigned char>(byte);
        const bool startsCharacter = (code & 0xC0U) != 0x80U;
        if (startsCharacter && characters == width) {
            break;
        }
        characters += startsCharacter ? 1 : 0;
        shown += code < 0x20 || code == 0x7F ? '?' : byte;
    }
    return shown.append(width - characters, ' ');
}

std::string decibels(double linear)
{
    // Below the smallest step of 24 bits there is nothing to hear.
    return linear < 1.0 / 8'388'608.0 ? "silent"
                                      : fmt::format("{:.1f} dB", 20.0 * std::log10(linear));
}

/// 60 dB on 20 places.
std::string bar(double linear)
{
    const double places = linear > 0.0 ? (20.0 * std::log10(linear) + 60.0) / 3.0 : 0.0;
    return std::string(static_cast<std::size_t>(std::clamp(places, 0.0, 20.0)), '#');
}

std::string appLine(const AppRow& app)
{
    return fmt::format("{} {:<8} {:>6}  {:<6} {} {}",
                       cell(app.name, 20),
                       app.isPlaying ? "yes" : "no",
                       fmt::format("{:.0f}%", 100.0 * app.volume),
                       app.isMuted ? "yes" : "no",
                       cell(app.output, 20),
                       cell(app.badge, 10));
}

std::string outputLine(const OutputLevel& output)
{
    if (!output.level) {
        return fmt::format("{} {:>10} {:>10}", cell(output.name, 20), "idle", "");
    }
    return fmt::format("{} {:>10} {:>10}  {}",
                       cell(output.name, 20),
                       decibels(output.level->rms),
                       decibels(output.level->peak),
                       bar(output.level->rms));
}

} // namespace

std::vector<std::string> tableLines(const std::optional<std::vector<AppRow>>& apps,
                                    const std::vector<OutputLevel>& outputs)
{
    std::vector<std::string> lines{fmt::format("{:<20} {:<8} {:>6}  {:<6} {:<20} {}",
                                               "APP",
                                               "PLAYING",
                                               "VOLUME",
                                               "MUTED",
                                               "OUTPUT",
                                               "BADGE")};
    if (!apps) {
        lines.emplace_back("waiting for Fadewell");
    } else if (apps->empty()) {
        lines.emplace_back("no app is playing");
    } else {
        std::ranges::transform(*apps, std::back_inserter(lines), appLine);
    }
    lines.emplace_back();
    lines.push_back(fmt::format("{:<20} {:>10} {:>10}", "MEASURED ON", "RMS", "PEAK"));
    std::ranges::transform(outputs, std::back_inserter(lines), outputLine);
    return lines;
}

} // namespace fadewell::demo
