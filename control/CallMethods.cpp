#include "control/CallMethods.h"

#include "control/BusArguments.h"
#include "control/values/BusNames.h"
#include "control/values/BusValues.h"
#include "core/KnownCallApps.h"

#include <QDBusArgument>

#include <optional>
#include <set>
#include <utility>

namespace fadewell {
namespace {

using IDs = std::set<std::string>;

BusReply describe(const MixerModel& model)
{
    const auto& settings = model.callModeSettings.get();
    CallModeEntry entry;
    entry.isActive = model.isCallModeActive.get();
    entry.isDetected = model.isCallDetected.get();
    entry.override_ = model.callModeOverride();
    entry.isAutomatic = settings.isAutomatic;
    entry.level = settings.level();
    entry.excludedApps.assign(settings.excludedApps.begin(), settings.excludedApps.end());
    entry.names = model.callAppNames.get();
    return QVariantList{toBus(entry)};
}

BusReply callApps(const MixerModel& model, AppCatalog& catalog)
{
    std::vector<CallAppEntry> entries;
    for (const auto& list : {KnownCallApps::callApps(), KnownCallApps::browsers()}) {
        for (const auto known : list) {
            const std::string id(known);
            entries.push_back({id,
                               catalog.displayName(id),
                               model.callModeSettings.get().excludedApps.contains(id)});
        }
    }
    return QVariantList{QVariant::fromValue(toBusList(entries))};
}

BusReply setMode(MixerModel& model, const QString& mode)
{
    if (mode == "on" || mode == "off") {
        model.setCallModeActive(mode == "on");
    } else if (mode == "toggle") {
        model.toggleCallMode();
    } else if (mode == "auto") {
        model.followCallDetection();
    } else {
        return BusError{bus::error::invalidArguments,
                        "The mode must be \"on\", \"off\", \"toggle\" or \"auto\"."};
    }
    return QVariantList{};
}

BusError wrongType(const QString& key, const char* type)
{
    return {bus::error::invalidArguments, QString("\"%1\" must be of type %2.").arg(key, type)};
}

/// Identifiers of apps that can be excluded: the known ones and what is excluded already.
std::variant<IDs, BusError> readIDs(const QString& key, const QVariant& value, const IDs& excluded)
{
    if (value.metaType() != QMetaType::fromType<QStringList>()) {
        return wrongType(key, "as");
    }
    const auto known = KnownCallApps::all();
    IDs ids;
    for (const auto& text : value.toStringList()) {
        const auto id = boundedText(text);
        if (!id) {
            return textTooLong();
        }
        if (!known.contains(*id) && !excluded.contains(*id)) {
            return BusError{bus::error::unknownApp,
                            QString("\"%1\" is not a known call app.").arg(text)};
        }
        ids.insert(*id);
    }
    return ids;
}

std::optional<BusError>
applyIDs(CallModeSettings& settings, const QString& key, const QVariant& value)
{
    auto read = readIDs(key, value, settings.excludedApps);
    if (const auto* error = std::get_if<BusError>(&read)) {
        return *error;
    }
    auto& ids = std::get<IDs>(read);
    if (key == "excludedApps") {
        settings.excludedApps = std::move(ids);
    } else if (key == "exclude") {
        settings.excludedApps.merge(ids);
    } else {
        std::erase_if(settings.excludedApps, [&](const auto& id) { return ids.contains(id); });
    }
    return std::nullopt;
}

std::optional<BusError> apply(CallModeSettings& settings, const QString& key, const QVariant& value)
{
    if (key == "isAutomatic") {
        if (value.metaType() != QMetaType::fromType<bool>()) {
            return wrongType(key, "b");
        }
        settings.isAutomatic = value.toBool();
        return std::nullopt;
    }
    if (key == "level") {
        if (value.metaType() != QMetaType::fromType<double>()) {
            return wrongType(key, "d");
        }
        if (!isWithin(value.toDouble(), 0, 1)) {
            return outOfRange(0, 1);
        }
        settings.setLevel(value.toDouble());
        return std::nullopt;
    }
    if (key == "excludedApps" || key == "exclude" || key == "include") {
        return applyIDs(settings, key, value);
    }
    return BusError{bus::error::invalidArguments, "Unknown setting: " + key.left(128)};
}

/// All of the settings or, after an error, none.
BusReply setSettings(MixerModel& model, const BusMap& changes)
{
    auto settings = model.callModeSettings.get();
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (auto error = apply(settings, change.key(), change.value())) {
            return *error;
        }
    }
    model.setCallModeSettings(settings);
    return QVariantList{};
}

} // namespace

std::vector<BusMethod> callMethods(std::shared_ptr<MixerModel> model,
                                   std::shared_ptr<AppCatalog> catalog)
{
    using Args = const QVariantList&;
    return {
        {"CallMode",
         {},
         {{"callMode", "a{sv}"}},
         [model](Args) {
             return describe(*model);
         }},
        {"CallApps",
         {},
         {{"apps", "aa{sv}"}},
         [model, catalog](Args) {
             return callApps(*model, *catalog);
         }},
        {"SetCallMode",
         {{"mode", "s"}},
         {},
         [model](Args args) {
             return setMode(*model, args[0].toString());
         }},
        {"SetCallSettings",
         {{"changes", "a{sv}"}},
         {},
         [model](Args args) {
             return setSettings(*model, qdbus_cast<BusMap>(args[0]));
         }},
    };
}

} // namespace fadewell
