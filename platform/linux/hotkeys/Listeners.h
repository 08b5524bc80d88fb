#pragma once

#include "base/Subscription.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace fadewell {

/// Functions to call when something happens, each until its subscription dies. [one queue]
template <class Function>
class Listeners final {
public:
    [[nodiscard]] Subscription add(Function function)
    {
        const int id = nextID_++;
        functions_->emplace(id, std::move(function));
        return Subscription([weak = std::weak_ptr(functions_), id] {
            if (const auto functions = weak.lock()) {
                functions->erase(id);
            }
        });
    }

    [[nodiscard]] bool isEmpty() const { return functions_->empty(); }

    /// Calls `visit` with each, until it answers true; a call may end any subscription.
    template <class Visit>
    bool any(const Visit& visit) const
    {
        const auto all = *functions_;
        for (const auto& [id, function] : all) {
            if (functions_->contains(id) && visit(function)) {
                return true;
            }
        }
        return false;
    }

    void callAll() const
    {
        any([](const Function& function) {
            function();
            return false;
        });
    }

private:
    std::shared_ptr<std::map<int, Function>> functions_ =
        std::make_shared<std::map<int, Function>>();
    int nextID_ = 0;
};

} // namespace fadewell
