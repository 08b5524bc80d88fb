#pragma once

#include "control/values/NamedItem.h"

#include <string_view>
#include <variant>
#include <vector>

namespace fadewell {

/// Finds the app (or the output) that a person means. Pure.
///
/// An exact identifier wins over an equal name or identifier in another case, that over a part of
/// a name, that over a part of an identifier; an item in a later step doesn't make an earlier one
/// ambiguous.
class AppMatcher final {
public:
    /// Nothing matches; `nearest` holds the items spelled most alike, best first, at most 3.
    struct Unknown {
        std::vector<NamedItem> nearest;
        bool operator==(const Unknown&) const = default;
    };
    /// Several match equally well.
    struct Ambiguous {
        std::vector<NamedItem> candidates;
        bool operator==(const Ambiguous&) const = default;
    };
    using Result = std::variant<NamedItem, Unknown, Ambiguous>;

    /// Of items with one identifier the first counts.
    explicit AppMatcher(std::vector<NamedItem> items);

    [[nodiscard]] Result find(std::string_view query) const;

    [[nodiscard]] std::vector<NamedItem> nearest(std::string_view query) const;

private:
    std::vector<NamedItem> items_;
};

} // namespace fadewell
