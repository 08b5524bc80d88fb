#include "platform/linux/pipewire/FrozenTime.h"

#include <algorithm>

namespace fadewell::pipewire {

namespace {

// A timer may be early by what the clock's digits lose.
constexpr double slack = 0.001;

} // namespace

FrozenTime::~FrozenTime()
{
    const Connection::Lock lock(connection_);
    timer_.reset();
}

double FrozenTime::start()
{
    const double deadline = clock_->uptime() + duration;
    deadlines_.insert(deadline);
    schedule();
    return deadline;
}

bool FrozenTime::isOver(double deadline) const
{
    return clock_->uptime() >= deadline - slack;
}

void FrozenTime::tick()
{
    std::erase_if(deadlines_, [this](double deadline) { return isOver(deadline); });
    const auto owners = owners_;
    for (Owner* const owner : owners) {
        owner->thaw();
    }
    schedule();
}

void FrozenTime::schedule()
{
    if (deadlines_.empty()) {
        return;
    }
    if (timer_ == nullptr) {
        timer_ = std::make_unique<LoopTimer>(connection_, [this] { tick(); });
    }
    timer_->fireOnce(std::max(*deadlines_.begin() - clock_->uptime(), slack));
}

} // namespace fadewell::pipewire
