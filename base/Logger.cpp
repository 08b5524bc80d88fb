#include "base/Logger.h"

namespace fadewell {

void Logger::log(LogLevel level, fmt::string_view format, fmt::format_args args) const
{
    const auto sink = LogSink::installed();
    if (sink && sink->accepts(level)) {
        sink->write({level, subsystem_, category_, fmt::vformat(format, args)});
    }
}

} // namespace fadewell
