#pragma once

#include "platform/linux/bus/GlobalShortcutsPortal.h"
#include "platform/linux/hotkeys/LinuxHotKeyService.h"

#include <QDBusConnection>

#include <map>
#include <string>
#include <vector>

namespace fadewell {

/// Shortcuts where the desktop keeps the keyboard to itself: it assigns combinations to names, as
/// far as its portal can do that. [main queue]
class PortalHotKeyService final : public LinuxHotKeyService {
public:
    /// `bus` must be used for nothing else.
    explicit PortalHotKeyService(const QDBusConnection& bus);

    /// None until the portal has answered, and wherever it offers no shortcuts.
    [[nodiscard]] Support support() const override;
    OSStatus bindNamed(std::vector<shortcuts::NamedBinding> bindings, Fired fired) override;
    [[nodiscard]] std::map<std::string, std::string> namedTriggers() const override;

private:
    Fired fired_;
    GlobalShortcutsPortal portal_;
};

} // namespace fadewell
