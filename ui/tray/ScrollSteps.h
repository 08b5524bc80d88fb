#pragma once

namespace fadewell {

/// Turns what tray hosts tell of the wheel into steps; above 0 is louder.
///
/// Some hosts send angles, 120 for a notch and less for a touchpad, upwards positive. Others send
/// notches, upwards negative.
class ScrollSteps final {
public:
    enum class Host {
        unknown,    ///< told by the size of what it sends
        sendsAngles ///< small numbers are a touchpad's
    };

    explicit ScrollSteps(Host host)
        : host_(host)
    {}

    /// The whole steps that a report of the wheel completes; at most 3 at once.
    [[nodiscard]] int take(int delta);

private:
    Host host_;
    int angle_ = 0; ///< not yet a step
};

} // namespace fadewell
