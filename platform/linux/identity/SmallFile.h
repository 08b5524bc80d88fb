#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace fadewell {

/// The first `limit` bytes of a regular file, or of one of the kernel's; absent when it can't be
/// read. Pipes and devices that somebody put in its place are never waited for.
[[nodiscard]] inline std::optional<std::string> readSmallFile(const std::filesystem::path& path,
                                                              std::size_t limit)
{
    std::error_code error;
    std::ifstream file;
    if (std::filesystem::is_regular_file(path, error)) {
        file.open(path, std::ios::binary);
    }
    if (!file.is_open()) {
        return std::nullopt;
    }
    // The kernel's own files say that they are empty.
    const auto size = std::filesystem::file_size(path, error);
    std::string text(!error && size > 0 && size < limit ? size : limit, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

} // namespace fadewell
