#include "platform/linux/LinuxLogSink.h"

#include "platform/linux/LogText.h"

#include <array>
#include <cstdlib>
#include <fmt/format.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

// The journal would record this file's place instead of the message's origin.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

namespace fadewell {
namespace {

constexpr const char* journalSocket = "/run/systemd/journal/socket";

/// systemd tells in JOURNAL_STREAM which file it connected to the journal; the variable is
/// inherited by programs whose standard error goes elsewhere.
bool isJournalStream(int descriptor)
{
    const char* announced = std::getenv("JOURNAL_STREAM");
    struct stat status {};
    return announced != nullptr && fstat(descriptor, &status) == 0 &&
           fmt::format("{}:{}", status.st_dev, status.st_ino) == announced;
}

std::string_view name(LogLevel level)
{
    switch (level) {
    case LogLevel::debug:
        return "debug";
    case LogLevel::info:
        return "info";
    case LogLevel::notice:
        return "notice";
    case LogLevel::error:
        return "error";
    }
    return "unknown";
}

bool sendToJournal(const LogMessage& message)
{
    const std::array<std::string, 5> fields{
        "MESSAGE=" + escapedForLog(message.text),
        fmt::format("PRIORITY={}", LinuxLogSink::priority(message.level)),
        "SUBSYSTEM=" + escapedForLog(message.subsystem),
        "CATEGORY=" + escapedForLog(message.category),
        "SYSLOG_IDENTIFIER=fadewell",
    };
    std::array<iovec, 5> parts{};
    for (std::size_t index = 0; index < fields.size(); ++index) {
        parts[index] = {const_cast<char*>(fields[index].data()), fields[index].size()};
    }
    return sd_journal_sendv(parts.data(), static_cast<int>(parts.size())) == 0;
}

void writeToStandardError(const LogMessage& message)
{
    // In one call, so that lines of several threads don't mix. Nobody is left to be told when
    // standard error itself is gone.
    const std::string text = LinuxLogSink::line(message) + '\n';
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

} // namespace

LinuxLogSink::Destination LinuxLogSink::preferredDestination()
{
    const bool isWatched = isatty(STDERR_FILENO) == 1;
    const bool journalRuns = access(journalSocket, W_OK) == 0;
    return isJournalStream(STDERR_FILENO) || (journalRuns && !isWatched)
               ? Destination::journal
               : Destination::standardError;
}

void LinuxLogSink::write(const LogMessage& message)
{
    if (destination_ == Destination::standardError || !sendToJournal(message)) {
        writeToStandardError(message);
    }
}

std::string LinuxLogSink::line(const LogMessage& message)
{
    return fmt::format("{} [{}:{}] {}",
                       name(message.level),
                       escapedForLog(message.subsystem),
                       escapedForLog(message.category),
                       escapedForLog(message.text));
}

int LinuxLogSink::priority(LogLevel level)
{
    switch (level) {
    case LogLevel::debug:
        return 7;
    case LogLevel::info:
        return 6;
    case LogLevel::notice:
        return 5;
    case LogLevel::error:
        break;
    }
    return 3;
}

} // namespace fadewell
