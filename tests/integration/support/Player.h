#pragma once

#include "tests/integration/support/ChildProcess.h"

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace fadewell::integration {

/// The unmodified programs that the tests play with.
enum class PlayerKind {
    pwPlay,
    paplay,
    mpv,
    ffplay
};

inline constexpr PlayerKind allPlayers[] = {
    PlayerKind::pwPlay, PlayerKind::paplay, PlayerKind::mpv, PlayerKind::ffplay};

[[nodiscard]] std::string nameOf(PlayerKind kind);
/// For the messages of failed tests.
void PrintTo(PlayerKind kind, std::ostream* out);

/// Starts a player on a file; `output` is a node name, empty for the default (mpv and ffplay know
/// only that).
[[nodiscard]] ChildProcess
play(PlayerKind kind, const std::filesystem::path& file, const std::string& output = {});

/// Two minutes of the 100 Hz sine at 0.5 in both channels, 48 kHz, 32-bit float.
void writeTone(const std::filesystem::path& file);

/// Frame n of the left channel is n / 2^23 (exact in a float), the right channel is 0.25: a frame
/// that is lost, repeated or changed in any bit shows. One minute.
void writeCounter(const std::filesystem::path& file);

} // namespace fadewell::integration
