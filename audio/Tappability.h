#pragma once

#include "core/AudioProcess.h"

#include <vector>

namespace fadewell {

/// Why an app's sound can't be routed through a tap on this platform.
enum class UntappableReason {
    unmanaged,   ///< connects itself, as JACK programs do
    passthrough, ///< sends encoded sound straight to the device
    exclusive,   ///< holds its device for itself
    pinned,      ///< asks not to be moved
    contested,   ///< another program keeps moving it
};

/// A process that plays sound which can't be tapped.
struct UntappableProcess {
    AudioProcess process;
    UntappableReason reason = UntappableReason::unmanaged;
    bool operator==(const UntappableProcess&) const = default;
};

/// Names what plays but can't be controlled, so that the interface can say so. [any thread]
class Tappability {
public:
    virtual ~Tappability() = default;
    [[nodiscard]] virtual std::vector<UntappableProcess> untappable() = 0;
};

} // namespace fadewell
