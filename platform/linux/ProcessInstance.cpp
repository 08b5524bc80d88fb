#include "platform/linux/ProcessInstance.h"

#include "platform/linux/identity/SmallFile.h"

#include <charconv>
#include <unistd.h>

namespace fadewell {
namespace {

template <class Number>
std::optional<Number> whole(std::string_view text)
{
    Number value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

/// The field that follows `count` further fields, in a line that is separated by single spaces.
std::string_view fieldAfter(std::string_view line, int count)
{
    for (; count > 0 && !line.empty(); --count) {
        const auto space = line.find(' ');
        line = space == std::string_view::npos ? std::string_view() : line.substr(space + 1);
    }
    return line.substr(0, line.find(' '));
}

} // namespace

ProcessInstance ProcessInstance::own()
{
    return running(getpid()).value_or(ProcessInstance{getpid(), 0});
}

std::optional<ProcessInstance> ProcessInstance::running(std::int32_t pid)
{
    const auto line = readSmallFile("/proc/" + std::to_string(pid) + "/stat", 4096);
    // The program's name stands in brackets and may itself hold brackets and spaces.
    const auto bracket = line ? line->rfind(") ") : std::string::npos;
    if (bracket == std::string::npos) {
        return std::nullopt;
    }
    const auto fields = std::string_view(*line).substr(bracket + 2);
    constexpr std::string_view ended = "ZX"; // States of what nobody has waited for yet.
    if (fields.empty() || ended.find(fields.front()) != std::string_view::npos) {
        return std::nullopt;
    }
    constexpr int fieldsBeforeStart = 19; // from the state, which follows the name
    const auto start = whole<std::uint64_t>(fieldAfter(fields, fieldsBeforeStart));
    return start ? std::optional(ProcessInstance{pid, *start}) : std::nullopt;
}

std::string ProcessInstance::text() const
{
    return std::to_string(pid) + '-' + std::to_string(start);
}

std::optional<ProcessInstance> ProcessInstance::parse(std::string_view text)
{
    const auto dash = text.find('-');
    if (dash == std::string_view::npos) {
        return std::nullopt;
    }
    const auto pid = whole<std::int32_t>(text.substr(0, dash));
    const auto start = whole<std::uint64_t>(text.substr(dash + 1));
    const bool isValid = pid && start && *pid > 0;
    return isValid ? std::optional(ProcessInstance{*pid, *start}) : std::nullopt;
}

} // namespace fadewell
