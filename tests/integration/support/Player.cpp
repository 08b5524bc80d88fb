#include "tests/integration/support/Player.h"

#include "tests/integration/support/Sound.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <numbers>
#include <stdexcept>

namespace fadewell::integration {
namespace {

using Frame = std::array<float, 2>;

/// A WAV header of 32-bit float stereo, little-endian as the machines that this runs on.
struct WavHeader {
    std::array<char, 4> riff{'R', 'I', 'F', 'F'};
    std::uint32_t size = 0;
    std::array<char, 8> format{'W', 'A', 'V', 'E', 'f', 'm', 't', ' '};
    std::uint32_t formatSize = 16;
    std::uint16_t encoding = 3;
    std::uint16_t channels = 2;
    std::uint32_t rate = static_cast<std::uint32_t>(sampleRate);
    std::uint32_t bytesPerSecond = static_cast<std::uint32_t>(sampleRate) * sizeof(Frame);
    std::uint16_t bytesPerFrame = sizeof(Frame);
    std::uint16_t bitsPerSample = 32;
    std::array<char, 4> data{'d', 'a', 't', 'a'};
    std::uint32_t dataSize = 0;
};

void write(const std::filesystem::path& file, const std::vector<Frame>& frames)
{
    WavHeader header;
    header.dataSize = static_cast<std::uint32_t>(frames.size() * sizeof(Frame));
    header.size = header.dataSize + static_cast<std::uint32_t>(sizeof(header)) - 8;
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(&header), sizeof(header));
    out.write(reinterpret_cast<const char*>(frames.data()),
              static_cast<std::streamsize>(header.dataSize));
    if (!out.flush()) {
        throw std::runtime_error("can't write " + file.string());
    }
}

} // namespace

std::string nameOf(PlayerKind kind)
{
    switch (kind) {
    case PlayerKind::pwPlay:
        return "pwPlay";
    case PlayerKind::paplay:
        return "paplay";
    case PlayerKind::mpv:
        return "mpv";
    case PlayerKind::ffplay:
        return "ffplay";
    }
    return {};
}

void PrintTo(PlayerKind kind, std::ostream* out)
{
    *out << nameOf(kind);
}

ChildProcess play(PlayerKind kind, const std::filesystem::path& file, const std::string& output)
{
    std::vector<std::string> command;
    switch (kind) {
    case PlayerKind::pwPlay:
        command = {"pw-play"};
        if (!output.empty()) {
            command.push_back("--target=" + output);
        }
        break;
    case PlayerKind::paplay:
        command = {"paplay"};
        if (!output.empty()) {
            command.push_back("--device=" + output);
        }
        break;
    case PlayerKind::mpv:
        command = {"mpv", "--no-config", "--no-terminal", "--no-video", "--ao=pipewire"};
        break;
    case PlayerKind::ffplay:
        command = {"env", "SDL_AUDIODRIVER=pulseaudio", "ffplay", "-nodisp", "-loglevel", "error"};
        break;
    }
    command.push_back(file.string());
    return ChildProcess(std::move(command));
}

void writeTone(const std::filesystem::path& file)
{
    std::vector<Frame> frames(static_cast<std::size_t>(120 * sampleRate));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const double phase =
            2 * std::numbers::pi * toneFrequency * static_cast<double>(i) / sampleRate;
        const auto value = static_cast<float>(toneAmplitude * std::sin(phase));
        frames[i] = {value, value};
    }
    write(file, frames);
}

void writeCounter(const std::filesystem::path& file)
{
    std::vector<Frame> frames(static_cast<std::size_t>(60 * sampleRate));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames[i] = {std::ldexp(static_cast<float>(i), -23), 0.25F};
    }
    write(file, frames);
}

} // namespace fadewell::integration
