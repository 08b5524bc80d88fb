#include "ui/settings/ShortcutsPaneModel.h"

#include "app/AppShortcuts.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <string_view>

namespace fadewell {
namespace {

using Support = shortcuts::HotKeyService::Support;

struct Row {
    const char* name;
    const char* title;
};

constexpr std::array<Row, 4> rows{
    {{"toggleMicrophone", QT_TRANSLATE_NOOP("ShortcutsPane", "Turn Microphone On or Off")},
     {"toggleCallMode", QT_TRANSLATE_NOOP("ShortcutsPane", "Turn Call Mode On or Off")},
     {"raiseFrontmostApp", QT_TRANSLATE_NOOP("ShortcutsPane", "Turn Up the App in Front")},
     {"lowerFrontmostApp", QT_TRANSLATE_NOOP("ShortcutsPane", "Turn Down the App in Front")}}};

// Desktops that assign shortcuts show the same titles, translated from here.
static_assert(std::ranges::equal(rows, AppShortcuts::all, [](const auto& row, const auto& entry) {
    return std::string_view(row.name) == entry.rawValue &&
           std::string_view(row.title) == entry.title;
}));

} // namespace

ShortcutsPaneModel::ShortcutsPaneModel(const SettingsParts& parts)
    : parts_(parts)
{
    if (!parts_.shortcuts) {
        return;
    }
    for (const auto& row : rows) {
        fields_.push_back(new RecorderField(parts_.shortcuts,
                                            shortcuts::Name{row.name},
                                            QCoreApplication::translate("ShortcutsPane", row.title),
                                            this));
    }
    const auto tell = [this] {
        emit changed();
    };
    const auto& service = parts_.shortcuts->service();
    observations_.push_back(service->onSupportChanged(tell));
    observations_.push_back(service->onNamedTriggersChanged(tell));
}

bool ShortcutsPaneModel::offers(Support support) const
{
    return parts_.shortcuts && parts_.shortcuts->service()->support() == support;
}

bool ShortcutsPaneModel::canRecord() const
{
    return offers(Support::any);
}

bool ShortcutsPaneModel::isAssignedByDesktop() const
{
    return offers(Support::portal);
}

QVariantList ShortcutsPaneModel::fields(std::size_t first, std::size_t end) const
{
    QVariantList result;
    for (auto at = first; at < std::min(end, fields_.size()); ++at) {
        result << QVariant::fromValue(fields_[at]);
    }
    return result;
}

QStringList ShortcutsPaneModel::assigned() const
{
    QStringList result;
    if (!parts_.shortcuts) {
        return result;
    }
    const auto triggers = parts_.shortcuts->service()->namedTriggers();
    for (const auto& row : rows) {
        const auto found = triggers.find(row.name);
        result << (found == triggers.end() || found->second.empty()
                       ? tr("None")
                       : QString::fromStdString(found->second));
    }
    return result;
}

} // namespace fadewell
