#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace fadewell {

/// A folder of its own for one test, gone with it.
class TemporaryFolder final {
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "fadewell-XXXXXX").string();
        path_ = std::filesystem::canonical(mkdtemp(name.data()));
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    void write(const std::filesystem::path& file, std::string_view text) const
    {
        std::filesystem::create_directories((path_ / file).parent_path());
        std::ofstream(path_ / file, std::ios::binary) << text;
    }
    void link(const std::filesystem::path& file, const std::filesystem::path& target) const
    {
        std::filesystem::create_directories((path_ / file).parent_path());
        std::filesystem::create_symlink(target, path_ / file);
    }
    [[nodiscard]] std::string read(const std::filesystem::path& file) const
    {
        std::ifstream stream(path_ / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::filesystem::path path_;
};

} // namespace fadewell
