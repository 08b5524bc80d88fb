#pragma once

#include "app/MixerModel.h"
#include "base/SerialQueue.h"
#include "base/Subscription.h"

#include <functional>
#include <memory>
#include <vector>

namespace fadewell {

/// Tells at most once a turn of the main queue that something observed in the model is other than
/// it was when this told before. [main queue]
class ChangeNotifier final {
public:
    ChangeNotifier(std::shared_ptr<MixerModel> model,
                   std::shared_ptr<SerialQueue> mainQueue,
                   std::function<void()> changed);

private:
    struct State;
    std::shared_ptr<State> state_;
    std::vector<Subscription> subscriptions_;
};

} // namespace fadewell
