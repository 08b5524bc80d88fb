#pragma once

#include "audio/AudioTypes.h"

#include <exception>
#include <string>

namespace fadewell {

/// A failed step of building or changing an audio path. Only the tap code throws it.
class CoreAudioError final : public std::exception {
public:
    /// `failedOperation` is a short label such as "Create tap".
    CoreAudioError(std::string failedOperation, OSStatus failedStatus);

    /// "Create tap failed: '!obj' (560947818)".
    [[nodiscard]] const std::string& description() const { return description_; }
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }
    [[nodiscard]] const std::string& operation() const { return operation_; }
    [[nodiscard]] OSStatus status() const { return status_; }

    /// The four characters of a status in single quotes, or its decimal value where one of them
    /// isn't printable ASCII.
    [[nodiscard]] static std::string formatStatus(OSStatus status);

private:
    std::string operation_;
    OSStatus status_;
    std::string description_;
};

/// Throws a CoreAudioError unless the status is 0.
void throwUnlessOK(OSStatus status, const char* operation);

} // namespace fadewell
