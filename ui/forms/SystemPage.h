#pragma once

namespace fadewell {

/// Something that only the system's own settings can grant.
enum class SystemPage {
    loginItems,
    audioPermission
};

} // namespace fadewell
