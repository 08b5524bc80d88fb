#pragma once

#include "base/SerialQueue.h"

#include <utility>

namespace fadewell {

/// A task that calls `call(*owner)`, and does nothing once the owner is gone.
template <class Owner, class Call>
[[nodiscard]] Task weakTask(Owner* owner, Call call)
{
    return [weak = owner->weak_from_this(), call = std::move(call)] {
        if (const auto alive = weak.lock()) {
            call(*alive);
        }
    };
}

} // namespace fadewell
