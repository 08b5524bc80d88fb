#pragma once

#include "app/MixerModel.h"
#include "shortcuts/KeyboardShortcuts.h"

#include <array>
#include <functional>
#include <memory>
#include <string>

namespace fadewell {

/// The program's own shortcuts: their names, what they are called, and what they do.
namespace AppShortcuts {

/// One of them.
struct Entry {
    const char* rawValue; ///< of its name
    const char* title;    ///< in English
};

/// In the order in which the settings show them. None has a combination until the user gives it
/// one.
constexpr std::array<Entry, 4> all{{{"toggleMicrophone", "Turn Microphone On or Off"},
                                    {"toggleCallMode", "Turn Call Mode On or Off"},
                                    {"raiseFrontmostApp", "Turn Up the App in Front"},
                                    {"lowerFrontmostApp", "Turn Down the App in Front"}}};

/// A title in the user's language.
using Translate = std::function<std::string(const char* title)>;

/// How far one press moves the frontmost app's volume.
constexpr double step = 0.1;

/// Gives each its action on the model, which is held weakly, and offers them to a desktop that
/// assigns combinations itself, which shows the user their titles. [main queue]
void registerActions(shortcuts::KeyboardShortcuts& keyboard,
                     const std::shared_ptr<MixerModel>& model,
                     const Translate& translate = {});

} // namespace AppShortcuts

} // namespace fadewell
