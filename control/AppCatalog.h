#pragma once

#include "app/AppDirectory.h"
#include "app/MixerModel.h"
#include "app/UntappableApps.h"
#include "app/Workspace.h"
#include "audio/Tappability.h"
#include "base/Subscription.h"
#include "control/values/AppEntry.h"
#include "control/values/NamedItem.h"
#include "control/values/OutputEntry.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fadewell {

/// The apps that can be shown and addressed from outside. [main queue]
///
/// Known are the shown rows, every other app that the engine sees, apps that play but can't be
/// tapped, remembered apps, and apps that had a row earlier in this run.
class AppCatalog final {
public:
    /// `tappability` may be absent.
    AppCatalog(std::shared_ptr<MixerModel> model,
               std::shared_ptr<Workspace> workspace,
               std::shared_ptr<Tappability> tappability);

    /// The rows, then what plays but can't be tapped.
    [[nodiscard]] std::vector<AppEntry> shown();

    /// Every app with remembered settings, running or not.
    [[nodiscard]] std::vector<AppEntry> remembered();

    /// An app by its exact identifier; absent when it is not known.
    [[nodiscard]] std::optional<AppEntry> find(const std::string& id);

    /// All known apps, each once.
    [[nodiscard]] std::vector<NamedItem> known();

    [[nodiscard]] std::vector<OutputEntry> outputs() const;

    [[nodiscard]] std::string displayName(const std::string& id);

private:
    void noteRows(const std::vector<AppRowState>& rows);
    [[nodiscard]] AppEntry entry(const std::string& id, std::string name) const;
    [[nodiscard]] AppEntry entry(const AppRowState& row) const;
    void fillSettings(AppEntry& entry, const AppAudioSettings& settings) const;
    [[nodiscard]] std::vector<AppEntry> untappable();

    std::shared_ptr<MixerModel> model_;
    AppDirectory directory_;
    UntappableApps untappable_;
    std::map<std::string, std::string> seen_; ///< identifier to name
    Subscription rows_;
};

} // namespace fadewell
