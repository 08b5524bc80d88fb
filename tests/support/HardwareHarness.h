#pragma once

#include "audio/AudioHardware.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace fadewell {

/// A sound system under test and the few things that the contract does to it from outside.
///
/// It starts with no clients and at least no output that the tests depend on. The tests call it
/// from the main thread, and `setDefaultOutput` and `waitFor` also from a task on `queue()`.
class HardwareHarness {
public:
    virtual ~HardwareHarness() = default;

    [[nodiscard]] virtual AudioHardware& hardware() = 0;

    /// The queue on which listeners are told.
    [[nodiscard]] virtual std::shared_ptr<SerialQueue> queue() = 0;

    /// Plugs in a stereo output, listed when this returns. Its UID.
    [[nodiscard]] virtual std::string addOutput(const std::string& name) = 0;
    virtual void removeOutput(const std::string& uid) = 0;
    /// Asks for a change; it may take effect later.
    virtual void setDefaultOutput(const std::string& uid) = 0;

    /// Starts another program that plays sound (not silence) to the default output. Its process
    /// identifier, as the hardware reports it.
    [[nodiscard]] virtual std::int32_t startClient() = 0;
    virtual void stopClient(std::int32_t pid) = 0;

    /// Lets time pass and sound flow until the condition holds, at most for so many seconds.
    /// Whether it held.
    virtual bool waitFor(const std::function<bool()>& condition, double seconds) = 0;
};

/// Makes a fresh harness for each test.
using HardwareHarnessFactory = std::unique_ptr<HardwareHarness> (*)();

template <class Harness>
std::unique_ptr<HardwareHarness> makeHarness()
{
    return std::make_unique<Harness>();
}

} // namespace fadewell
