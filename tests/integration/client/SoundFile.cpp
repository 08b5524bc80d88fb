#include "tests/integration/client/SoundFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace fadewell::integration {

SoundFile::SoundFile(const char* path)
{
    constexpr std::size_t headerSize = 44;
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    samples_.resize(error || size < headerSize ? 0 : (size - headerSize) / sizeof(float));
    std::ifstream file(path, std::ios::binary);
    file.seekg(headerSize);
    if (!file.read(reinterpret_cast<char*>(samples_.data()),
                   static_cast<std::streamsize>(samples_.size() * sizeof(float))) ||
        samples_.empty())
    {
        throw std::runtime_error("can't read " + std::string(path));
    }
}

void SoundFile::copy(float* to, std::size_t count, std::size_t& at, bool isLoop) const noexcept
{
    while (count > 0 && (isLoop || at < frames())) {
        at = at < frames() ? at : 0;
        const std::size_t part = std::min(count, frames() - at);
        to = std::copy_n(samples_.data() + 2 * at, 2 * part, to);
        at += part;
        count -= part;
    }
    std::fill_n(to, 2 * count, 0.0F);
}

} // namespace fadewell::integration
