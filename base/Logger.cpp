#include "base/Logger.h"

#include "base/ProgramName.h"

namespace fadewell {

void Logger::log(LogLevel level, fmt::string_view format, fmt::format_args args) const
{
    const auto sink = LogSink::installed();
    if (sink && sink->accepts(level)) {
        auto text = fmt::vformat(format, args);
        auto names = ProgramName::extract(text);
        sink->write({level, subsystem_, category_, std::move(text), std::move(names)});
    }
}

} // namespace fadewell
