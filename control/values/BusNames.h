#pragma once

namespace fadewell::bus {

/// The program's name on the session bus; one instance owns it.
inline constexpr const char* service = "app.fadewell.Fadewell";
inline constexpr const char* path = "/app/fadewell/Fadewell";
inline constexpr const char* interface = "app.fadewell.Fadewell";

/// Sent at most once a turn of the event loop, after something that the interface shows changed.
inline constexpr const char* changedSignal = "Changed";

namespace error {
inline constexpr const char* accessDenied = "app.fadewell.Error.AccessDenied";
inline constexpr const char* invalidArguments = "app.fadewell.Error.InvalidArguments";
inline constexpr const char* outOfRange = "app.fadewell.Error.OutOfRange";
inline constexpr const char* unknownApp = "app.fadewell.Error.UnknownApp";
inline constexpr const char* unknownOutput = "app.fadewell.Error.UnknownOutput";
inline constexpr const char* notSupported = "app.fadewell.Error.NotSupported";
} // namespace error

} // namespace fadewell::bus
