#include "tests/integration/faults/SmallDisk.h"

#include "tests/integration/support/Await.h"

#include <fstream>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace fadewell::integration {
namespace {

bool isAllowed = false;

void write(const char* file, const std::string& text)
{
    std::ofstream(file) << text;
}

/// An ordinary user may mount in a user namespace of his own, in which he stays who he is.
bool enterUserNamespace()
{
    const auto uid = std::to_string(getuid());
    const auto gid = std::to_string(getgid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        return false;
    }
    write("/proc/self/setgroups", "deny");
    write("/proc/self/uid_map", uid + ' ' + uid + " 1");
    write("/proc/self/gid_map", gid + ' ' + gid + " 1");
    return true;
}

std::filesystem::path makeFolder()
{
    auto path = (std::filesystem::temp_directory_path() / "small-disk-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) {
        throw std::runtime_error("no folder for a disk");
    }
    return path;
}

} // namespace

bool SmallDisk::allow()
{
    isAllowed = (unshare(CLONE_NEWNS) == 0 || enterUserNamespace()) &&
                mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return isAllowed;
}

SmallDisk::SmallDisk()
    : folder_(makeFolder())
{
    isMounted_ =
        isAllowed && mount("small-disk", folder_.c_str(), "tmpfs", 0, "size=256k,mode=700") == 0;
}

SmallDisk::~SmallDisk()
{
    if (isMounted_) {
        umount2(folder_.c_str(), MNT_DETACH);
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void SmallDisk::fill() const
{
    std::ofstream file(ballast(), std::ios::binary);
    const std::string page(4096, '\0');
    for (int pages = 0; pages < 100 && file.write(page.data(), 4096).flush(); ++pages) {
    }
    if (file) {
        throw std::runtime_error("the small disk has no end");
    }
}

void SmallDisk::makeRoom() const
{
    if (!std::filesystem::remove(ballast())) {
        throw std::runtime_error("the small disk was not full");
    }
}

void SmallDisk::setReadOnly(bool isReadOnly) const
{
    // Busy for as long as somebody has a file open for writing.
    const auto flags = static_cast<unsigned long>(isReadOnly ? MS_REMOUNT | MS_RDONLY : MS_REMOUNT);
    const auto remount = [&] {
        return mount("small-disk", folder_.c_str(), nullptr, flags, "size=256k") == 0;
    };
    if (!await(remount)) {
        throw std::runtime_error("the small disk can't be remounted");
    }
}

} // namespace fadewell::integration
