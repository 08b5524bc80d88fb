#include "ui/tray/ScrollSteps.h"

#include <algorithm>

namespace fadewell {
namespace {

constexpr int notch = 120;         // the angle, in eighths of a degree
constexpr int mostNotches = 8;     // that a host would report at once; an angle is larger
constexpr int mostSteps = 3;       // a host that stumbled must not sweep the whole range
constexpr int mostAngle = 1 << 20; // nothing that a wheel turns; keeps the sum from overflowing

} // namespace

int ScrollSteps::take(int delta)
{
    if (host_ == Host::unknown && delta >= -mostNotches && delta <= mostNotches) {
        return -std::clamp(delta, -mostSteps, mostSteps);
    }
    if ((delta < 0) != (angle_ < 0)) {
        angle_ = 0; // The other way: what was left of the first doesn't have to be undone.
    }
    angle_ += std::clamp(delta, -mostAngle, mostAngle);
    const int steps = angle_ / notch;
    angle_ %= notch;
    return std::clamp(steps, -mostSteps, mostSteps);
}

} // namespace fadewell
