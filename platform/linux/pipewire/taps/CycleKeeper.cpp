#include "platform/linux/pipewire/taps/CycleKeeper.h"

namespace fadewell::pipewire {
namespace {

// Those that came have brought their cycles with them, those that are to leave are still there.
constexpr double arriveSeconds = 0.200;
// The session manager moves streams within some tenths.
constexpr double calmSeconds = 1.0;
// Some cycles of any usual length.
constexpr double growSeconds = 0.300;

} // namespace

void CycleKeeper::linkChanged()
{
    schedule(Next::keep, arriveSeconds);
}

void CycleKeeper::letGo()
{
    forEach_([](TapStreams& streams) { streams.letCycleGo(); });
    schedule(Next::keepForGood, calmSeconds);
}

void CycleKeeper::tick()
{
    switch (next_) {
    case Next::keep:
        keep();
        schedule(Next::letGo, calmSeconds);
        return;
    case Next::letGo:
        letGo();
        schedule(Next::keepForGood, growSeconds);
        return;
    case Next::keepForGood:
        keep();
        return;
    }
}

void CycleKeeper::keep()
{
    forEach_([](TapStreams& streams) { streams.keepCycle(); });
}

void CycleKeeper::schedule(Next next, double seconds)
{
    next_ = next;
    timer_.fireOnce(seconds);
}

} // namespace fadewell::pipewire
