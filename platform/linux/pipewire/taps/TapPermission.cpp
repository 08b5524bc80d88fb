// Whether the server lets apps be routed.

#include "platform/linux/pipewire/taps/Taps.h"

#include <pipewire/permission.h>

#include <cerrno>
#include <utility>

namespace fadewell::pipewire {
namespace {

constexpr double answerSeconds = 1.0;

} // namespace

bool Taps::isCapturePermitted() const
{
    constexpr std::uint32_t needed = PW_PERM_W | PW_PERM_X;
    // Without a session manager nothing is refused; it is only not there yet.
    const bool canWrite = (graph_.metadataPermissions() & needed) == needed;
    return !isRefused_ && (canWrite || !graph_.hasMetadata());
}

/// The server tells nobody that he may do more than before, so this tries: it deletes a value that
/// isn't there, from a stream as a route would be written.
bool Taps::askForPermission()
{
    if (!graph_.hasMetadata()) {
        return true; // Nothing is refused while the session manager is away.
    }
    std::uint32_t subject = PW_ID_CORE;
    for (const auto& [id, node] : graph_.nodes()) {
        subject = processes_.isTappable(id) ? id : subject;
    }
    const bool wasRefused = std::exchange(isRefused_, false);
    const bool isAnswered =
        graph_.setMetadata(subject, "fadewell.permission", "", std::nullopt) >= 0 &&
        connection_.roundTrip(answerSeconds);
    if (!isAnswered) {
        isRefused_ = wasRefused;
        return false;
    }
    if (!isRefused_) {
        graph_.noteGranted();
    }
    return !isRefused_;
}

void Taps::writeRefused(std::uint32_t object, int result)
{
    // A volume that may not be changed says nothing about routing: only the metadata does.
    const bool isRouting = !graph_.node(object) && !graph_.device(object);
    if (isRouting && (result == -EACCES || result == -EPERM)) {
        isRefused_ = true;
    }
}

} // namespace fadewell::pipewire
