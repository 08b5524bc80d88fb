#include "core/KnownCallApps.h"

namespace fadewell {

std::span<const std::string_view> KnownCallApps::callApps()
{
    static constexpr std::string_view bundleIDs[] = {
        "net.whatsapp.WhatsApp",
        "desktop.WhatsApp",
        "com.apple.FaceTime",
        "com.apple.mobilephone",
        "us.zoom.xos",
        "com.microsoft.teams2",
        "com.microsoft.teams",
        "Cisco-Systems.Spark",
        "com.webex.meetingmanager",
        "com.hnc.Discord",
        "com.tinyspeck.slackmacgap",
        "ru.keepcoder.Telegram",
        "org.telegram.desktop",
        "com.facebook.archon",
        "org.whispersystems.signal-desktop",
        "com.skype.skype",
    };
    return bundleIDs;
}

std::span<const std::string_view> KnownCallApps::browsers()
{
    static constexpr std::string_view bundleIDs[] = {
        "com.apple.Safari",
        "com.google.Chrome",
        "com.microsoft.edgemac",
        "org.mozilla.firefox",
        "company.thebrowser.Browser",
        "com.brave.Browser",
        "com.operasoftware.Opera",
        "com.vivaldi.Vivaldi",
        "com.duckduckgo.macos.browser",
    };
    return bundleIDs;
}

std::set<std::string> KnownCallApps::all()
{
    std::set<std::string> bundleIDs(callApps().begin(), callApps().end());
    bundleIDs.insert(browsers().begin(), browsers().end());
    return bundleIDs;
}

} // namespace fadewell
