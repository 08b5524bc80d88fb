#pragma once

#include "app/LoginItemService.h"
#include "platform/linux/XdgPaths.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace fadewell {

/// The login item as the desktop standard has it: an entry in the autostart folder. Others may have
/// switched it off there, each desktop in its own way.
class AutostartItem final : public LoginItemService {
public:
    struct Place {
        std::filesystem::path userFolder;                 ///< what is here wins
        std::vector<std::filesystem::path> systemFolders; ///< the administrator's, first one wins
        std::filesystem::path program;                    ///< absolute
        std::vector<std::string> desktops;                ///< names of the running one
        std::vector<std::filesystem::path> programFolders;

        /// From the environment and this process's own program.
        [[nodiscard]] static Place current(const XdgPaths& paths,
                                           const XdgPaths::Environment& environment);
    };

    explicit AutostartItem(Place place);

    [[nodiscard]] LoginItemStatus status() override;
    std::optional<std::string> registerItem() override;
    std::optional<std::string> unregisterItem() override;
    /// Nobody is asked, so nothing follows later.
    void onChanged(std::function<void()> /*changed*/) override {}

private:
    [[nodiscard]] std::optional<std::string> winningText() const;
    [[nodiscard]] bool isSystems() const;
    [[nodiscard]] bool resolves(const std::string& program) const;
    [[nodiscard]] bool isSwitchedOff(std::string_view text) const;
    [[nodiscard]] std::optional<std::string> write(const std::string& text) const;
    [[nodiscard]] std::string entry() const;

    Place place_;
    std::filesystem::path userFile_;
};

} // namespace fadewell
