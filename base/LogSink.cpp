#include "base/LogSink.h"

#include <mutex>
#include <utility>

namespace fadewell {
namespace {

struct Installed {
    std::mutex mutex;
    std::shared_ptr<LogSink> sink;
};

Installed& place()
{
    static Installed instance;
    return instance;
}

} // namespace

void LogSink::install(std::shared_ptr<LogSink> sink)
{
    const std::lock_guard lock(place().mutex);
    place().sink = std::move(sink);
}

std::shared_ptr<LogSink> LogSink::installed()
{
    const std::lock_guard lock(place().mutex);
    return place().sink;
}

} // namespace fadewell
