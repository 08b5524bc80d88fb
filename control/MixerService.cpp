#include "control/MixerService.h"

#include "control/AppCatalog.h"
#include "control/AppMethods.h"
#include "control/BusArguments.h"
#include "control/BusObject.h"
#include "control/CallMethods.h"
#include "control/ChangeNotifier.h"
#include "control/DiagnosticsMethods.h"
#include "control/LoginItemMethods.h"
#include "control/MicrophoneMethods.h"
#include "control/PermissionMethods.h"
#include "control/ShortcutMethods.h"
#include "control/values/BusNames.h"
#include "control/values/BusValues.h"

#include <iterator>
#include <utility>

namespace fadewell {
namespace {

void append(std::vector<BusMethod>& methods, std::vector<BusMethod> more)
{
    std::move(more.begin(), more.end(), std::back_inserter(methods));
}

std::vector<BusMethod> lifecycleMethods(const MixerService::Parts& parts)
{
    const auto post = [queue = parts.mainQueue](const std::function<void()>& task) {
        if (task) {
            queue->async(task);
        }
        return QVariantList{};
    };
    return {
        {"Reopen",
         {},
         {},
         [post, task = parts.reopened](const auto&) {
             return post(task);
         }},
        {"Quit",
         {},
         {},
         [post, task = parts.quit](const auto&) {
             return post(task);
         }},
    };
}

/// Opens a window, after the caller was answered like with the others.
BusMethod showMethod(const MixerService::Parts& parts, const char* name, AppWindow window)
{
    const auto handle =
        [queue = parts.mainQueue, show = parts.show, window](const auto& args) -> BusReply {
        const auto token = boundedText(args[0]);
        if (!token) {
            return textTooLong();
        }
        if (!show) {
            return BusError{bus::error::notSupported, "Fadewell runs without a display."};
        }
        queue->async([=, text = QString::fromStdString(*token)] { show(window, text); });
        return QVariantList{};
    };
    return {name, {{"activationToken", "s"}}, {}, handle};
}

std::vector<BusMethod> allMethods(const MixerService::Parts& parts)
{
    const auto catalog =
        std::make_shared<AppCatalog>(parts.model, parts.workspace, parts.tappability);
    auto methods = appMethods(parts.model, catalog);
    append(methods, microphoneMethods(parts.model));
    append(methods, callMethods(parts.model, catalog));
    append(methods, shortcutMethods(parts.model));
    append(methods, permissionMethods(parts.isCapturePermitted));
    append(methods, loginItemMethods(parts.loginItem));
    append(methods, diagnosticsMethods(parts.diagnostics));
    append(methods, lifecycleMethods(parts));
    methods.push_back(showMethod(parts, "Show", AppWindow::panel));
    methods.push_back(showMethod(parts, "ShowSettings", AppWindow::settings));
    return methods;
}

std::vector<BusProperty> allProperties(const MixerService::Parts& parts)
{
    return {
        {"Version",
         "s",
         [text = QString::fromStdString(parts.version)] {
             return text;
         }},
        {"NeedsAudioPermission",
         "b",
         [model = parts.model] {
             return model->needsAudioPermission.get();
         }},
    };
}

} // namespace

class MixerService::Implementation final {
public:
    Implementation(QDBusConnection connection, Parts parts)
        : object_(std::move(connection), allMethods(parts), allProperties(parts))
        , notifier_(
              parts.model, parts.mainQueue, [this] { object_.emitSignal(bus::changedSignal); })
    {}

    BusObject& object() { return object_; }

private:
    BusObject object_;
    ChangeNotifier notifier_;
};

MixerService::MixerService(QDBusConnection connection, Parts parts)
{
    registerBusTypes();
    implementation_ = std::make_unique<Implementation>(std::move(connection), std::move(parts));
}

MixerService::~MixerService() = default;

bool MixerService::publish()
{
    return implementation_->object().registerAt(bus::path);
}

} // namespace fadewell
