#pragma once

namespace fadewell {

/// What the tap manager tells the model.
enum class TapEvent {
    permissionDenied,
    permissionGranted
};

} // namespace fadewell
