#pragma once

#include <filesystem>

namespace fadewell::integration {

/// A folder on a file system of its own, of a quarter of a megabyte, that only this process and
/// what it starts see.
class SmallDisk {
public:
    /// Lets this process mount such disks; false where that isn't allowed. Call it once, before any
    /// thread or program is started.
    [[nodiscard]] static bool allow();

    /// An ordinary folder when disks are not allowed.
    SmallDisk();
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    /// False for the ordinary folder, which has none of the faults below.
    [[nodiscard]] bool isMounted() const { return isMounted_; }

    /// Not a byte can be written, or removes what filled it. Both throw std::runtime_error when
    /// they have no effect.
    void fill() const;
    void makeRoom() const;
    void setReadOnly(bool isReadOnly) const;

private:
    [[nodiscard]] std::filesystem::path ballast() const { return folder_ / "ballast"; }

    std::filesystem::path folder_;
    bool isMounted_ = false;
};

} // namespace fadewell::integration
