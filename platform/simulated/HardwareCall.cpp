#include "platform/simulated/HardwareCall.h"

#include <array>
#include <cstddef>

namespace fadewell {
namespace {

struct CallFacts {
    std::string_view name;
    bool isChange;
};

constexpr std::array callFacts{
    CallFacts{"has", false},
    CallFacts{"isSettable", false},
    CallFacts{"dataSize", false},
    CallFacts{"getData", false},
    CallFacts{"setData", true},
    CallFacts{"getString", false},
    CallFacts{"deviceForUID", false},
    CallFacts{"tapDescription", false},
    CallFacts{"setTapDescription", true},
    CallFacts{"addListener", false},
    CallFacts{"removeListener", false},
    CallFacts{"createProcessTap", true},
    CallFacts{"destroyProcessTap", true},
    CallFacts{"createAggregateDevice", true},
    CallFacts{"destroyAggregateDevice", true},
    CallFacts{"createIOProc", true},
    CallFacts{"destroyIOProc", true},
    CallFacts{"start", true},
    CallFacts{"stop", true},
};
static_assert(callFacts.size() == static_cast<std::size_t>(HardwareCall::stop) + 1);

} // namespace

std::string_view name(HardwareCall call)
{
    return callFacts.at(static_cast<std::size_t>(call)).name;
}

bool isChange(HardwareCall call)
{
    return callFacts.at(static_cast<std::size_t>(call)).isChange;
}

} // namespace fadewell
