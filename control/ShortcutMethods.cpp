#include "control/ShortcutMethods.h"

#include "app/AppShortcuts.h"
#include "control/values/BusNames.h"

#include <utility>

namespace fadewell {
namespace {

BusMethod stepMethod(const char* name, std::shared_ptr<MixerModel> model, double delta)
{
    const auto handle = [model = std::move(model), delta](const QVariantList&) -> BusReply {
        const auto id = model->stepFrontmostApp(delta);
        if (!id) {
            return BusError{bus::error::notSupported,
                            "No app is in front whose volume can change."};
        }
        return QVariantList{QString::fromStdString(*id), model->settings(*id).volume()};
    };
    return {name, {}, {{"id", "s"}, {"volume", "d"}}, handle};
}

} // namespace

std::vector<BusMethod> shortcutMethods(std::shared_ptr<MixerModel> model)
{
    return {
        {"ToggleCallMode",
         {},
         {{"isActive", "b"}},
         [model](const QVariantList&) {
             model->toggleCallMode();
             return QVariantList{model->isCallModeActive.get()};
         }},
        stepMethod("RaiseFrontmost", model, AppShortcuts::step),
        stepMethod("LowerFrontmost", model, -AppShortcuts::step),
    };
}

} // namespace fadewell
