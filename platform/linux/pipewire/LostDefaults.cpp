#include "platform/linux/pipewire/LostDefaults.h"

namespace fadewell::pipewire {

LostDefaults::~LostDefaults()
{
    const Connection::Lock lock(graph_.connection());
    timer_.reset();
}

void LostDefaults::update(bool isMissing)
{
    isMissing_ = isMissing;
    schedule();
}

void LostDefaults::doubt()
{
    doubts_ = mostDoubts;
    wait_ = firstWait;
    isWaiting_ = false;
    schedule();
}

void LostDefaults::schedule()
{
    if ((!isMissing_ && doubts_ == 0) || isWaiting_ || wait_ > longestWait) {
        return;
    }
    if (timer_ == nullptr) {
        timer_ = std::make_unique<LoopTimer>(graph_.connection(), [this] { ask(); });
    }
    isWaiting_ = true;
    timer_->fireOnce(wait_);
}

void LostDefaults::ask()
{
    isWaiting_ = false;
    if (isMissing_ || doubts_ > 0) {
        doubts_ -= doubts_ > 0 ? 1 : 0;
        wait_ *= 2;
        graph_.askMetadataAgain();
        schedule();
    }
}

} // namespace fadewell::pipewire
