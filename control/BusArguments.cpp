#include "control/BusArguments.h"

#include "control/values/BusNames.h"

#include <cmath>

namespace fadewell {
namespace {

constexpr qsizetype longestText = 1024;

} // namespace

std::optional<std::string> boundedText(const QVariant& argument)
{
    const auto text = argument.toString().toUtf8();
    return text.size() <= longestText ? std::optional(text.toStdString()) : std::nullopt;
}

BusError textTooLong()
{
    return {bus::error::invalidArguments,
            QString("A text is longer than %1 bytes.").arg(longestText)};
}

bool isWithin(double number, double least, double most)
{
    return std::isfinite(number) && number >= least && number <= most;
}

BusError outOfRange(double least, double most)
{
    return {bus::error::outOfRange,
            QString("The number must be between %1 and %2.").arg(least).arg(most)};
}

} // namespace fadewell
