#pragma once

#include "audio/AudioHardware.h"

#include <functional>
#include <memory>
#include <vector>

namespace fadewell {

/// One registered property listener; unregisters exactly once. [its owner's queue]
class HALListener final {
public:
    /// Registers at once; null when the platform refuses. `block` runs on `queue` after each
    /// change.
    [[nodiscard]] static std::unique_ptr<HALListener>
    create(std::shared_ptr<AudioHardware> hardware,
           AudioObjectID object,
           AudioObjectPropertyAddress address,
           std::shared_ptr<SerialQueue> queue,
           std::function<void()> block);
    ~HALListener();
    HALListener(const HALListener&) = delete;
    HALListener& operator=(const HALListener&) = delete;

    /// Unregisters; later calls do nothing.
    void invalidate();

private:
    HALListener(std::shared_ptr<AudioHardware> hardware, ListenerToken token);

    std::shared_ptr<AudioHardware> hardware_;
    ListenerToken token_;
    bool isRegistered_ = true;
};

/// The listeners of one owner or object; those that could not be registered are left out.
using HALListeners = std::vector<std::unique_ptr<HALListener>>;

} // namespace fadewell
