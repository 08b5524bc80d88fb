#include "ui/tray/MenuOnBus.h"

#include "ui/tray/bus/DBusMenuAdaptor.h"

#include <algorithm>
#include <utility>

namespace fadewell {
namespace {

/// In a label of this protocol a single underscore marks an access key.
QString label(QString text)
{
    return text.replace('_', "__");
}

} // namespace

MenuOnBus::MenuOnBus(std::function<void(TrayCommand)> choose)
    : choose_(std::move(choose))
{
    new DBusMenuAdaptor(*this); // Owned by this object, which exports it.
}

void MenuOnBus::setEntries(std::vector<TrayMenuEntry> entries)
{
    const auto haveSameID = [](const auto& left, const auto& right) {
        return left.id == right.id;
    };
    const auto before = std::exchange(entries_, std::move(entries));
    if (!std::equal(before.begin(), before.end(), entries_.begin(), entries_.end(), haveSameID)) {
        ++revision_;
        Q_EMIT layoutChanged();
        return;
    }
    std::vector<int> changed;
    for (std::size_t index = 0; index < entries_.size(); ++index) {
        if (entries_[index] != before[index]) {
            changed.push_back(entries_[index].id);
        }
    }
    if (!changed.empty()) {
        Q_EMIT entriesChanged(changed);
    }
}

bool MenuOnBus::click(int id)
{
    const auto* entry = find(id);
    if (entry == nullptr) {
        return false;
    }
    if (entry->isEnabled && entry->command != TrayCommand::none) {
        choose_(entry->command);
    }
    return true;
}

const TrayMenuEntry* MenuOnBus::find(int id) const
{
    const auto entry = std::find_if(
        entries_.begin(), entries_.end(), [id](const auto& each) { return each.id == id; });
    return entry == entries_.end() ? nullptr : &*entry;
}

QVariantMap MenuOnBus::properties(const TrayMenuEntry& entry)
{
    if (entry.command == TrayCommand::none) {
        return {{"type", "separator"}};
    }
    QVariantMap properties{{"label", label(entry.text)}};
    if (!entry.isEnabled) {
        properties.insert("enabled", false);
    }
    if (entry.isChecked) {
        properties.insert("toggle-type", "checkmark");
        properties.insert("toggle-state", *entry.isChecked ? 1 : 0);
    }
    return properties;
}

} // namespace fadewell
