#include "platform/linux/pipewire/MissingDefaults.h"

namespace fadewell::pipewire {

MissingDefaults::~MissingDefaults()
{
    const Connection::Lock lock(graph_.connection());
    timer_.reset();
}

void MissingDefaults::update(bool isMissing)
{
    isMissing_ = isMissing;
    wait_ = isMissing ? wait_ : firstWait;
    if (!isMissing || isWaiting_ || wait_ > longestWait) {
        return;
    }
    if (timer_ == nullptr) {
        timer_ = std::make_unique<LoopTimer>(graph_.connection(), [this] { ask(); });
    }
    isWaiting_ = true;
    timer_->fireOnce(wait_);
}

void MissingDefaults::ask()
{
    isWaiting_ = false;
    if (isMissing_) {
        wait_ *= 2;
        graph_.askMetadataAgain();
        update(isMissing_);
    }
}

} // namespace fadewell::pipewire
