#pragma once

#include "ui/tray/TrayMenuEntry.h"

#include <QObject>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace fadewell {

/// The tray icon's menu where hosts read it, on the bus. [main thread]
class MenuOnBus final : public QObject {
    Q_OBJECT

public:
    /// `choose` is called after an enabled entry was clicked.
    explicit MenuOnBus(std::function<void(TrayCommand)> choose);

    /// Shows these entries; hosts hear of what is different from before and of nothing else.
    void setEntries(std::vector<TrayMenuEntry> entries);

    [[nodiscard]] const std::vector<TrayMenuEntry>& entries() const { return entries_; }
    /// Counts the changes of which entries there are.
    [[nodiscard]] uint revision() const { return revision_; }

    /// A host's click; false when there is no such entry.
    bool click(int id);
    [[nodiscard]] const TrayMenuEntry* find(int id) const;

    /// An entry as hosts take it: what is at its default is left out.
    [[nodiscard]] static QVariantMap properties(const TrayMenuEntry& entry);

Q_SIGNALS:
    void layoutChanged();
    void entriesChanged(const std::vector<int>& ids);

private:
    std::function<void(TrayCommand)> choose_;
    std::vector<TrayMenuEntry> entries_;
    uint revision_ = 1;
};

} // namespace fadewell
