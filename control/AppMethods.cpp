#include "control/AppMethods.h"

#include "control/BusArguments.h"
#include "control/values/AppMatcher.h"
#include "control/values/BusNames.h"
#include "control/values/BusValues.h"
#include "control/values/Tables.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fadewell {
namespace {

/// What the handlers share; each holds it.
class AppCommands final {
public:
    AppCommands(std::shared_ptr<MixerModel> model, std::shared_ptr<AppCatalog> catalog)
        : model_(std::move(model))
        , catalog_(std::move(catalog))
    {}

    BusReply apps() { return QVariantList{QVariant::fromValue(toBusList(catalog_->shown()))}; }
    BusReply known() { return QVariantList{QVariant::fromValue(toBusList(catalog_->known()))}; }
    BusReply outputs() { return QVariantList{QVariant::fromValue(toBusList(catalog_->outputs()))}; }
    BusReply remembered()
    {
        return QVariantList{QVariant::fromValue(toBusList(catalog_->remembered()))};
    }
    BusReply app(const QVariantList& arguments);
    BusReply setVolume(const QVariantList& arguments);
    BusReply changeVolume(const QVariantList& arguments);
    BusReply setMuted(const QVariantList& arguments);
    BusReply toggleMuted(const QVariantList& arguments);
    BusReply setOutput(const QVariantList& arguments);
    BusReply forget(const QVariantList& arguments);
    BusReply forgetAll();

private:
    /// An app that a command may change, or why not.
    std::variant<AppEntry, BusError> controllable(const QVariant& argument);
    std::variant<AppEntry, BusError> knownApp(const QVariant& argument);

    std::shared_ptr<MixerModel> model_;
    std::shared_ptr<AppCatalog> catalog_;
};

QString didYouMean(const std::vector<NamedItem>& nearest)
{
    QStringList names;
    for (const auto& item : nearest) {
        names.append(QString::fromStdString(item.name + " (" + item.id + ")"));
    }
    return names.isEmpty() ? QString() : " Did you mean " + names.join(" or ") + "?";
}

std::variant<AppEntry, BusError> AppCommands::knownApp(const QVariant& argument)
{
    const auto id = boundedText(argument);
    if (!id) {
        return textTooLong();
    }
    if (auto app = catalog_->find(*id)) {
        return std::move(*app);
    }
    return BusError{bus::error::unknownApp,
                    QString("No app has the identifier \"%1\".").arg(QString::fromStdString(*id)) +
                        didYouMean(AppMatcher(catalog_->known()).nearest(*id))};
}

std::variant<AppEntry, BusError> AppCommands::controllable(const QVariant& argument)
{
    auto app = knownApp(argument);
    const auto* entry = std::get_if<AppEntry>(&app);
    if (entry != nullptr && !entry->isTappable) {
        const auto reason = untappableText(entry->untappableReason.value_or(""));
        return BusError{bus::error::notSupported,
                        QString::fromStdString(entry->name + ": " + reason + '.')};
    }
    return app;
}

BusReply AppCommands::app(const QVariantList& arguments)
{
    const auto app = knownApp(arguments[0]);
    if (const auto* error = std::get_if<BusError>(&app)) {
        return *error;
    }
    return QVariantList{toBus(std::get<AppEntry>(app))};
}

BusReply AppCommands::setVolume(const QVariantList& arguments)
{
    const auto app = controllable(arguments[0]);
    if (const auto* error = std::get_if<BusError>(&app)) {
        return *error;
    }
    const double volume = arguments[1].toDouble();
    if (!isWithin(volume, 0, 1)) {
        return outOfRange(0, 1);
    }
    model_->setVolume(volume, std::get<AppEntry>(app).id);
    return QVariantList{};
}

BusReply AppCommands::changeVolume(const QVariantList& arguments)
{
    const auto app = controllable(arguments[0]);
    if (const auto* error = std::get_if<BusError>(&app)) {
        return *error;
    }
    const double delta = arguments[1].toDouble();
    if (!isWithin(delta, -1, 1)) {
        return outOfRange(-1, 1);
    }
    const auto& entry = std::get<AppEntry>(app);
    const double start = entry.isMuted ? 0.0 : entry.volume;
    // Steps in binary fractions would show as 0.30000000000000004.
    constexpr double precision = 1e6;
    const double volume = std::round(std::clamp(start + delta, 0.0, 1.0) * precision) / precision;
    model_->setVolume(volume, entry.id);
    return QVariantList{volume};
}

BusReply AppCommands::setMuted(const QVariantList& arguments)
{
    const auto app = controllable(arguments[0]);
    if (const auto* error = std::get_if<BusError>(&app)) {
        return *error;
    }
    model_->setMuted(arguments[1].toBool(), std::get<AppEntry>(app).id);
    return QVariantList{};
}

BusReply AppCommands::toggleMuted(const QVariantList& arguments)
{
    const auto app = controllable(arguments[0]);
    if (const auto* error = std::get_if<BusError>(&app)) {
        return *error;
    }
    const auto& entry = std::get<AppEntry>(app);
    model_->setMuted(!entry.isMuted, entry.id);
    return QVariantList{!entry.isMuted};
}

BusReply AppCommands::setOutput(const QVariantList& arguments)
{
    const auto app = controllable(arguments[0]);
    if (const auto* error = std::get_if<BusError>(&app)) {
        return *error;
    }
    const auto& entry = std::get<AppEntry>(app);
    const auto uid = boundedText(arguments[1]);
    if (!uid) {
        return textTooLong();
    }
    if (uid->empty()) {
        model_->setOutput(std::nullopt, std::nullopt, entry.id);
        return QVariantList{};
    }
    if (auto name = model_->outputDeviceName(*uid)) {
        model_->setOutput(*uid, std::move(name), entry.id);
        return QVariantList{};
    }
    std::vector<NamedItem> outputs;
    for (const auto& output : catalog_->outputs()) {
        outputs.push_back({output.id, output.name});
    }
    return BusError{bus::error::unknownOutput,
                    QString("No output has the UID \"%1\".").arg(QString::fromStdString(*uid)) +
                        didYouMean(AppMatcher(std::move(outputs)).nearest(*uid))};
}

BusReply AppCommands::forget(const QVariantList& arguments)
{
    const auto app = knownApp(arguments[0]);
    if (const auto* error = std::get_if<BusError>(&app)) {
        return *error;
    }
    model_->forget(std::get<AppEntry>(app).id);
    return QVariantList{};
}

BusReply AppCommands::forgetAll()
{
    model_->forgetAll();
    return QVariantList{};
}

} // namespace

std::vector<BusMethod> appMethods(std::shared_ptr<MixerModel> model,
                                  std::shared_ptr<AppCatalog> catalog)
{
    const auto all = std::make_shared<AppCommands>(std::move(model), std::move(catalog));
    using Args = const QVariantList&;
    return {
        {"Apps",
         {},
         {{"apps", "aa{sv}"}},
         [all](Args) {
             return all->apps();
         }},
        {"KnownApps",
         {},
         {{"apps", "aa{sv}"}},
         [all](Args) {
             return all->known();
         }},
        {"Remembered",
         {},
         {{"apps", "aa{sv}"}},
         [all](Args) {
             return all->remembered();
         }},
        {"App",
         {{"id", "s"}},
         {{"app", "a{sv}"}},
         [all](Args args) {
             return all->app(args);
         }},
        {"Outputs",
         {},
         {{"outputs", "aa{sv}"}},
         [all](Args) {
             return all->outputs();
         }},
        {"SetVolume",
         {{"id", "s"}, {"volume", "d"}},
         {},
         [all](Args args) {
             return all->setVolume(args);
         }},
        {"ChangeVolume",
         {{"id", "s"}, {"delta", "d"}},
         {{"volume", "d"}},
         [all](Args args) {
             return all->changeVolume(args);
         }},
        {"SetMuted",
         {{"id", "s"}, {"muted", "b"}},
         {},
         [all](Args args) {
             return all->setMuted(args);
         }},
        {"ToggleMuted",
         {{"id", "s"}},
         {{"muted", "b"}},
         [all](Args args) {
             return all->toggleMuted(args);
         }},
        {"SetOutput",
         {{"id", "s"}, {"uid", "s"}},
         {},
         [all](Args args) {
             return all->setOutput(args);
         }},
        {"Forget",
         {{"id", "s"}},
         {},
         [all](Args args) {
             return all->forget(args);
         }},
        {"ForgetAll",
         {},
         {},
         [all](Args) {
             return all->forgetAll();
         }},
    };
}

} // namespace fadewell
