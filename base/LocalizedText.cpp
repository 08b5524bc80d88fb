#include "base/LocalizedText.h"

#include <cmath>
#include <memory>
#include <unicode/coll.h>
#include <unicode/listformatter.h>
#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/stringpiece.h>
#include <unicode/unistr.h>

namespace fadewell {
namespace {

icu::StringPiece piece(std::string_view text)
{
    return {text.data(), static_cast<int32_t>(text.size())};
}

std::string utf8(const icu::UnicodeString& text)
{
    std::string result;
    text.toUTF8String(result);
    return result;
}

// Without a locale the system asks for plain byte order; people never want that for names.
icu::Locale collationLocale()
{
    const auto& locale = icu::Locale::getDefault();
    return std::string_view(locale.getVariant()) == "POSIX" ? icu::Locale::getRoot() : locale;
}

// A collator is not safe to share between threads; cloning is too slow for a comparison.
const icu::Collator* collator()
{
    thread_local const std::unique_ptr<icu::Collator> instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Collator> made(
            icu::Collator::createInstance(collationLocale(), status));
        if (U_FAILURE(status)) {
            return std::unique_ptr<icu::Collator>();
        }
        made->setStrength(icu::Collator::SECONDARY); // Accents differ, case does not.
        made->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
        return made;
    }();
    return instance.get();
}

std::string joined(const std::vector<std::string>& names, UListFormatterWidth width)
{
    std::vector<icu::UnicodeString> items;
    items.reserve(names.size());
    for (const auto& name : names) {
        items.push_back(icu::UnicodeString::fromUTF8(piece(name)));
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::ListFormatter> formatter(icu::ListFormatter::createInstance(
        icu::Locale::getDefault(), ULISTFMT_TYPE_AND, width, status));
    icu::UnicodeString text;
    if (U_SUCCESS(status)) {
        formatter->format(items.data(), static_cast<int32_t>(items.size()), text, status);
    }
    return utf8(text);
}

} // namespace

int localizedStandardCompare(std::string_view left, std::string_view right)
{
    if (const auto* rules = collator()) {
        UErrorCode status = U_ZERO_ERROR;
        const auto order = rules->compareUTF8(piece(left), piece(right), status);
        if (U_SUCCESS(status)) {
            return order;
        }
    }
    return left.compare(right);
}

std::string localizedPercent(double fraction)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createPercentInstance(status));
    if (U_FAILURE(status)) {
        return std::to_string(std::lround(fraction * 100)) + "%";
    }
    format->setMaximumFractionDigits(0);
    icu::UnicodeString text;
    return utf8(format->format(fraction, text));
}

std::string localizedCapitalized(std::string_view text)
{
    auto capitalized = icu::UnicodeString::fromUTF8(piece(text));
    return utf8(capitalized.toTitle(nullptr));
}

std::string localizedList(const std::vector<std::string>& names)
{
    return joined(names, ULISTFMT_WIDTH_WIDE);
}

std::string localizedNarrowList(const std::vector<std::string>& names)
{
    return joined(names, ULISTFMT_WIDTH_NARROW);
}

} // namespace fadewell
