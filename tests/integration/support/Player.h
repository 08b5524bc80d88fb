#pragma once

#include "tests/integration/support/ChildProcess.h"
#include "tests/integration/support/Sound.h"

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace fadewell::integration {

/// The unmodified programs that the tests play with.
inline constexpr const char* players[] = {"pw-play", "paplay", "mpv", "ffplay"};

/// Starts one of them on a file; `output` is a node name, empty for the default (mpv and ffplay
/// know only that).
[[nodiscard]] ChildProcess
play(const std::string& player, const std::filesystem::path& file, const std::string& output = {});

/// The socket on which mpv takes commands while it plays a file.
[[nodiscard]] std::string controlOf(const std::filesystem::path& file);

/// A page in a browser that takes the microphone as every call in one does; its files go into
/// `folder`.
[[nodiscard]] ChildProcess callInBrowser(const std::filesystem::path& folder);

/// The left and the right sample.
using Frame = std::array<float, 2>;

/// A WAV file at 48 kHz, in 32-bit float. Throws std::runtime_error when it can't be written.
void writeFrames(const std::filesystem::path& file, const std::vector<Frame>& frames);

/// Two minutes of a sine in both channels, 48 kHz, 32-bit float.
void writeTone(const std::filesystem::path& file,
               double frequency = toneFrequency,
               double amplitude = toneAmplitude);

} // namespace fadewell::integration
