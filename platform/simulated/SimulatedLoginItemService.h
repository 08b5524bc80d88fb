#pragma once

#include "app/LoginItemService.h"

#include <functional>
#include <utility>
#include <vector>

namespace fadewell {

/// A list of login items as scripted. Its public fields may be changed at any time.
class SimulatedLoginItemService final : public LoginItemService {
public:
    LoginItemStatus current = LoginItemStatus::notRegistered;
    LoginItemStatus onRegister = LoginItemStatus::enabled; ///< what a registration leads to
    std::optional<std::string> problem;                    ///< refuses every change
    std::vector<bool> asked;                               ///< registrations are true

    [[nodiscard]] LoginItemStatus status() override { return current; }
    std::optional<std::string> registerItem() override { return change(true, onRegister); }
    std::optional<std::string> unregisterItem() override
    {
        return change(false, LoginItemStatus::notRegistered);
    }
    void onChanged(std::function<void()> changed) override { changed_ = std::move(changed); }

    /// Somebody else changed it.
    void changeElsewhere(LoginItemStatus status)
    {
        current = status;
        if (changed_) {
            changed_();
        }
    }

private:
    std::function<void()> changed_;

    std::optional<std::string> change(bool isOn, LoginItemStatus status)
    {
        asked.push_back(isOn);
        if (!problem) {
            current = status;
        }
        return problem;
    }
};

} // namespace fadewell
