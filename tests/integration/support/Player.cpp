#include "tests/integration/support/Player.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <numbers>
#include <sstream>
#include <stdexcept>

namespace fadewell::integration {
namespace {

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

} // namespace

ChildProcess
play(const std::string& player, const std::filesystem::path& file, const std::string& output)
{
    const std::map<std::string, std::string> commands{
        {"pw-play", "pw-play"},
        {"paplay", "paplay"},
        {"mpv", "mpv --no-config --no-terminal --no-video --ao=pipewire"},
        {"ffplay", "env SDL_AUDIODRIVER=pulseaudio ffplay -nodisp -autoexit -loglevel error"}};
    std::istringstream words(commands.at(player));
    std::vector<std::string> command(std::istream_iterator<std::string>(words), {});
    if (player == "mpv") {
        command.push_back("--input-ipc-server=" + controlOf(file));
    }
    if (!output.empty()) {
        command.push_back((player == "paplay" ? "--device=" : "--target=") + output);
    }
    command.push_back(file.string());
    return ChildProcess(std::move(command));
}

std::string controlOf(const std::filesystem::path& file)
{
    return file.string() + ".mpv";
}

ChildProcess callInBrowser(const std::filesystem::path& folder)
{
    std::ofstream(folder / "call.html")
        << "<script>navigator.mediaDevices.getUserMedia({audio: true})</script>";
    return ChildProcess({"chromium",
                         "--no-sandbox",
                         "--headless=new",
                         "--disable-gpu",
                         "--no-first-run",
                         "--use-fake-ui-for-media-stream",
                         "--user-data-dir=" + (folder / "browser").string(),
                         "file://" + (folder / "call.html").string()});
}

void writeFrames(const std::filesystem::path& file, const std::vector<Frame>& frames)
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

void writeTone(const std::filesystem::path& file, double frequency, double amplitude)
{
    std::vector<Frame> frames(static_cast<std::size_t>(120 * sampleRate));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const double phase = 2 * std::numbers::pi * frequency * static_cast<double>(i) / sampleRate;
        const auto value = static_cast<float>(amplitude * std::sin(phase));
        frames[i] = {value, value};
    }
    writeFrames(file, frames);
}

} // namespace fadewell::integration
