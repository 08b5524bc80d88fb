#include "app/AppShortcuts.h"

#include <functional>
#include <utility>
#include <vector>

namespace fadewell::AppShortcuts {

void registerActions(shortcuts::KeyboardShortcuts& keyboard,
                     const std::shared_ptr<MixerModel>& model,
                     const Translate& translate)
{
    const auto with = [weak = std::weak_ptr(model)](std::function<void(MixerModel&)> action) {
        return [weak, action = std::move(action)] {
            if (const auto live = weak.lock()) {
                action(*live);
            }
        };
    };
    // A toggle acts on release, so that holding it down is no more than pressing it.
    keyboard.addKeyUpAction(keyboard.name("toggleMicrophone"),
                            with([](auto& mixer) { mixer.toggleMicrophone(); }));
    keyboard.addKeyUpAction(keyboard.name("toggleCallMode"),
                            with([](auto& mixer) { mixer.toggleCallMode(); }));
    keyboard.addKeyDownAction(keyboard.name("raiseFrontmostApp"),
                              with([](auto& mixer) { mixer.stepFrontmostApp(step); }));
    keyboard.addKeyDownAction(keyboard.name("lowerFrontmostApp"),
                              with([](auto& mixer) { mixer.stepFrontmostApp(-step); }));
    std::vector<shortcuts::NamedBinding> bindings;
    for (const auto& entry : all) {
        bindings.push_back({entry.rawValue, translate ? translate(entry.title) : entry.title});
    }
    keyboard.bindNamed(std::move(bindings));
}

} // namespace fadewell::AppShortcuts
