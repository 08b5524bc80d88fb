#include "audio/CoreAudioError.h"

#include <fmt/format.h>
#include <utility>

namespace fadewell {

CoreAudioError::CoreAudioError(std::string failedOperation, OSStatus failedStatus)
    : operation_(std::move(failedOperation))
    , status_(failedStatus)
    , description_(fmt::format("{} failed: {} ({})", operation_, formatStatus(status_), status_))
{}

std::string CoreAudioError::formatStatus(OSStatus status)
{
    const auto code = static_cast<std::uint32_t>(status);
    std::string text = "'";
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        const std::uint32_t byte = (code >> shift) & 0xFFU;
        if (byte < 32 || byte > 126) {
            return std::to_string(status);
        }
        text += static_cast<char>(byte);
    }
    return text + "'";
}

void throwUnlessOK(OSStatus status, const char* operation)
{
    if (status != kAudioHardwareNoError) {
        throw CoreAudioError(operation, status);
    }
}

} // namespace fadewell
