#pragma once

#include "app/AppIcon.h"
#include "core/AppAudioSettings.h"

#include <string>

namespace fadewell {

/// An app with saved settings, running or not.
struct RememberedApp {
    std::string id;
    std::string name;
    AppIcon icon;
    AppAudioSettings settings;

    bool operator==(const RememberedApp&) const = default;
};

} // namespace fadewell
