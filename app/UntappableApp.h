#pragma once

#include "app/AppDirectory.h"
#include "audio/Tappability.h"
#include "core/AudioApp.h"

namespace fadewell {

/// An app that plays, but can't be controlled.
struct UntappableApp {
    AudioApp app;
    AppDirectory::Identity identity;
    UntappableReason reason = UntappableReason::unmanaged;

    bool operator==(const UntappableApp&) const = default;
};

} // namespace fadewell
