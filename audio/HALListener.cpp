#include "audio/HALListener.h"

#include <utility>

namespace fadewell {

std::unique_ptr<HALListener> HALListener::create(std::shared_ptr<AudioHardware> hardware,
                                                 AudioObjectID object,
                                                 AudioObjectPropertyAddress address,
                                                 std::shared_ptr<SerialQueue> queue,
                                                 std::function<void()> block)
{
    ListenerToken token = 0;
    const OSStatus status =
        hardware->addListener(object, address, std::move(queue), std::move(block), token);
    if (status != kAudioHardwareNoError) {
        return nullptr;
    }
    return std::unique_ptr<HALListener>(new HALListener(std::move(hardware), token));
}

HALListener::HALListener(std::shared_ptr<AudioHardware> hardware, ListenerToken token)
    : hardware_(std::move(hardware))
    , token_(token)
{}

HALListener::~HALListener()
{
    invalidate();
}

void HALListener::invalidate()
{
    if (std::exchange(isRegistered_, false)) {
        hardware_->removeListener(token_);
    }
}

} // namespace fadewell
