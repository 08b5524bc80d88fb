#include "platform/linux/SettingsFile.h"

#include "platform/linux/XdgPaths.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <utility>

namespace fadewell {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t maximumSize = 16U << 20U;

std::string lastError()
{
    return std::generic_category().message(errno);
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

/// The absence of an error: the bytes are in a new file at `path`.
std::optional<std::string> createFile(const fs::path& path, std::string_view bytes, bool isSynced)
{
    unlink(path.c_str()); // What a crash left.
    const FileDescriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file || !writeAll(file.get(), bytes) || (isSynced && fsync(file.get()) != 0)) {
        auto reason = lastError();
        unlink(path.c_str());
        return reason;
    }
    return std::nullopt;
}

void syncFolder(const fs::path& folder)
{
    // Some file systems can't; the rename is then as safe as they make it.
    if (const FileDescriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        opened) {
        fsync(opened.get());
    }
}

} // namespace

SettingsFile::SettingsFile(fs::path path, Durability durability)
    : path_(std::move(path))
    , durability_(durability)
{}

fs::path SettingsFile::target() const
{
    constexpr int maximumLinks = 40;
    fs::path file = path_;
    for (int links = 0; links < maximumLinks; ++links) {
        std::error_code error;
        const fs::path next = fs::read_symlink(file, error);
        if (error) {
            break;
        }
        file = next.is_absolute() ? next : file.parent_path() / next;
    }
    return file;
}

SettingsFile::Contents SettingsFile::read() const
{
    const FileDescriptor file(open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file) {
        return errno == ENOENT || errno == ENOTDIR ? Contents{}
                                                   : Contents{Outcome::unreadable, {}, lastError()};
    }
    Contents contents{Outcome::read, {}, {}};
    std::array<char, 16384> buffer{};
    while (contents.bytes.size() <= maximumSize) {
        const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
        if (count == 0) {
            return contents;
        }
        if (count < 0 && errno != EINTR) {
            return {Outcome::unreadable, {}, lastError()};
        }
        contents.bytes.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return {Outcome::unreadable, {}, "it is too large"};
}

SettingsFile::Version SettingsFile::version() const
{
    struct stat status {};
    if (stat(path_.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size};
}

std::optional<FileDescriptor> SettingsFile::lock(std::string& reason) const
{
    if (!makePrivateFolder(path_.parent_path())) {
        reason = fmt::format("cannot make the folder {}", path_.parent_path().native());
        return std::nullopt;
    }
    const fs::path lockFile = path_.native() + ".lock";
    FileDescriptor file(open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!file) {
        reason = fmt::format("{}: {}", lockFile.native(), lastError());
        return std::nullopt;
    }
    // Held for the length of a write, so that a try is all it takes; bounded, because its holder
    // may have been stopped.
    constexpr int tries = 1000;
    for (int attempt = 0; attempt < tries; ++attempt) {
        if (flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
            return file;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    reason = "another process holds the lock";
    return std::nullopt;
}

std::optional<std::string> SettingsFile::write(std::string_view bytes) const
{
    const fs::path file = target();
    const fs::path fresh = file.native() + ".new";
    const bool isSynced = durability_ == Durability::powerLoss;
    if (auto reason = createFile(fresh, bytes, isSynced)) {
        return reason;
    }
    if (rename(fresh.c_str(), file.c_str()) != 0) {
        auto reason = lastError();
        unlink(fresh.c_str());
        return reason;
    }
    if (isSynced) {
        syncFolder(file.parent_path());
    }
    return std::nullopt;
}

std::optional<fs::path> SettingsFile::setAside() const
{
    const fs::path file = target();
    const auto stem =
        fmt::format("{}.broken-{:%Y%m%dT%H%M%SZ}", file.native(), fmt::gmtime(std::time(nullptr)));
    constexpr int tries = 100;
    for (int attempt = 1; attempt <= tries; ++attempt) {
        const fs::path aside = attempt == 1 ? stem : fmt::format("{}-{}", stem, attempt);
        if (renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) {
            return aside;
        }
        // Some file systems know no such rename; a free name is then looked for first.
        struct stat status {};
        if (errno == EINVAL && lstat(aside.c_str(), &status) != 0 &&
            rename(file.c_str(), aside.c_str()) == 0)
        {
            return aside;
        }
    }
    return std::nullopt;
}

} // namespace fadewell
