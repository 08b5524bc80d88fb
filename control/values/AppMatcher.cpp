#include "control/values/AppMatcher.h"

#include <QString>

#include <algorithm>
#include <array>
#include <functional>
#include <numeric>
#include <set>
#include <utility>

namespace fadewell {
namespace {

// Names come from other programs and the distance is quadratic.
constexpr qsizetype longestCompared = 64;
constexpr std::size_t mostSuggestions = 3;

QString folded(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toCaseFolded();
}

int editDistance(QStringView left, QStringView right)
{
    std::vector<int> row(static_cast<std::size_t>(right.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const QChar letter : left) {
        int diagonal = row[0]++;
        for (std::size_t column = 1; column < row.size(); ++column) {
            const bool same = letter == right[static_cast<qsizetype>(column) - 1];
            const int replaced = diagonal + (same ? 0 : 1);
            diagonal = row[column];
            row[column] = std::min({replaced, row[column] + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}

// The last part of an identifier is what people know it by: "firefox" of "org.mozilla.firefox".
int distanceTo(const QString& query, const NamedItem& item)
{
    const QString id = folded(item.id);
    const std::array<QString, 3> spellings{folded(item.name), id, id.section('.', -1)};
    int best = static_cast<int>(longestCompared);
    for (const auto& spelling : spellings) {
        best = std::min(best, editDistance(query, spelling.left(longestCompared)));
    }
    return best;
}

} // namespace

AppMatcher::AppMatcher(std::vector<NamedItem> items)
{
    std::set<std::string> seen;
    for (auto& item : items) {
        if (seen.insert(item.id).second) {
            items_.push_back(std::move(item));
        }
    }
}

AppMatcher::Result AppMatcher::find(std::string_view query) const
{
    const QString wanted = folded(query);
    if (wanted.isEmpty()) {
        return Unknown{};
    }
    using Test = std::function<bool(const NamedItem&)>;
    const std::array<Test, 4> steps{
        [&](const NamedItem& item) { return item.id == query; },
        [&](const NamedItem& item) {
            return folded(item.name) == wanted || folded(item.id) == wanted;
        },
        [&](const NamedItem& item) { return folded(item.name).contains(wanted); },
        [&](const NamedItem& item) { return folded(item.id).contains(wanted); },
    };
    for (const auto& matches : steps) {
        std::vector<NamedItem> found;
        std::copy_if(items_.begin(), items_.end(), std::back_inserter(found), matches);
        if (found.size() == 1) {
            return found.front();
        }
        if (!found.empty()) {
            return Ambiguous{std::move(found)};
        }
    }
    return Unknown{nearest(query)};
}

std::vector<NamedItem> AppMatcher::nearest(std::string_view query) const
{
    const QString wanted = folded(query).left(longestCompared);
    const int limit = std::max(1, static_cast<int>(wanted.size()) / 2);
    std::vector<std::pair<int, const NamedItem*>> ranked;
    for (const auto& item : items_) {
        const int distance = distanceTo(wanted, item);
        if (distance <= limit) {
            ranked.emplace_back(distance, &item);
        }
    }
    std::sort(ranked.begin(), ranked.end()); // Equally near ones stay in the items' order.
    std::vector<NamedItem> result;
    for (std::size_t index = 0; index < std::min(ranked.size(), mostSuggestions); ++index) {
        result.push_back(*ranked[index].second);
    }
    return result;
}

} // namespace fadewell
