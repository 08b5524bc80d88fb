#include "base/LastOwner.h"

#include "base/Logger.h"

#include <chrono>
#include <thread>
#include <utility>

namespace fadewell {

LastOwner::LastOwner(std::shared_ptr<const void> object, std::function<void()> pause)
    : object_(std::move(object))
    , pause_(std::move(pause))
{}

LastOwner::~LastOwner()
{
    for (int i = 0; i < mostPauses && object_.use_count() > 1; ++i) {
        pause_();
    }
    if (object_.use_count() > 1) {
        Logger("main").error("Something is still at work at the end: apps may not be given back");
    }
}

void LastOwner::rest()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace fadewell
