#pragma once

#include "app/AudioAccess.h"
#include "app/LoginItem.h"
#include "base/UserDefaults.h"
#include "ui/forms/SystemPages.h"

#include <functional>
#include <memory>

namespace fadewell {

/// What the onboarding asks for and changes. What may be absent isn't offered then.
struct OnboardingParts {
    std::shared_ptr<UserDefaults> defaults;
    std::shared_ptr<LoginItem> loginItem;     ///< may be absent
    std::shared_ptr<AudioAccess> audioAccess; ///< may be absent
    std::shared_ptr<SystemPages> systemPages;
    std::function<bool()> isTrayMissing; ///< may be empty
};

} // namespace fadewell
