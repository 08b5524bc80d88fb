#pragma once

#include "base/MemoryUserDefaults.h"
#include "base/VirtualTime.h"
#include "platform/simulated/SimulatedHotKeyService.h"
#include "shortcuts/KeyboardShortcuts.h"
#include "shortcuts/Modifiers.h"
#include "tests/support/CapturedLog.h"

#include <gmock/gmock.h>
#include <memory>
#include <string>
#include <vector>

namespace fadewell::shortcuts {

/// The library on a simulated keyboard; test bodies run on its main queue through `onMain`.
class ShortcutsFixture : public testing::Test {
protected:
    ShortcutsFixture()
    {
        onMain([this] { shortcuts_ = KeyboardShortcuts::create(main_, defaults_, keys_); });
    }
    ~ShortcutsFixture() override
    {
        onMain([this] { shortcuts_.reset(); });
    }

    void onMain(Task task)
    {
        main_->async(std::move(task));
        time_->run();
    }

    /// An action that notes its name.
    [[nodiscard]] std::function<void()> noting(std::string what)
    {
        return [this, what = std::move(what)] {
            done_.push_back(what);
        };
    }

    void storeRaw(const std::string& rawValue, UserDefaults::Value value)
    {
        defaults_->set(KeyboardShortcuts::storageKeyPrefix + rawValue, std::move(value));
    }
    [[nodiscard]] std::optional<UserDefaults::Value> stored(const std::string& rawValue) const
    {
        return defaults_->value(KeyboardShortcuts::storageKeyPrefix + rawValue);
    }

    static inline const Shortcut superM{46, classic::command};
    static inline const Shortcut altM{46, classic::option};

    std::shared_ptr<VirtualTime> time_ = VirtualTime::create();
    std::shared_ptr<SerialQueue> main_ = time_->makeQueue();
    std::shared_ptr<MemoryUserDefaults> defaults_ = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<SimulatedHotKeyService> keys_ = std::make_shared<SimulatedHotKeyService>();
    std::shared_ptr<KeyboardShortcuts> shortcuts_;
    std::vector<std::string> done_;
};

} // namespace fadewell::shortcuts
