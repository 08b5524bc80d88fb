#include "control/values/LevelArgument.h"

#include <QRegularExpression>
#include <QString>

#include <cmath>

namespace fadewell {

std::variant<LevelArgument, LevelArgument::Error> LevelArgument::parse(std::string_view text)
{
    // Written out rather than left to a number parser: no exponents, no "inf", no hexadecimal.
    static const QRegularExpression pattern(
        QStringLiteral(R"(^([+-]?)([0-9]{1,12})(?:[.,]([0-9]{1,12}))?[\s\x{A0}\x{202F}]*(%?)$)"),
        QRegularExpression::UseUnicodePropertiesOption);
    const auto match = pattern.match(
        QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).trimmed());
    if (!match.hasMatch()) {
        return Error::notANumber;
    }
    const QString digits = match.captured(2) + '.' + match.captured(3) + '0';
    const double number = digits.toDouble();
    const double fraction = match.captured(4).isEmpty() ? number : number / 100;
    if (fraction > 1) {
        return Error::outOfRange;
    }
    const QString sign = match.captured(1);
    return LevelArgument{sign == "-" ? -fraction : fraction, !sign.isEmpty()};
}

} // namespace fadewell
