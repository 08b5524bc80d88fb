#include "tests/bench/Changes.h"

#include <algorithm>
#include <fmt/format.h>

namespace fadewell::integration {

void Changes::add(const CountedCheck& check)
{
    if (!check.isMeasured) {
        return;
    }
    ++count_;
    lost_ += check.inside > 0 ? 1 : 0;
    silent_ += check.zeros > 0 ? 1 : 0;
    mostLost_ = std::max(mostLost_, check.inside);
    mostSilent_ = std::max(mostSilent_, check.zeros);
}

std::string Changes::text() const
{
    return fmt::format("{}: lost in {} (most {}), silent in {} ({})",
                       count_,
                       lost_,
                       mostLost_,
                       silent_,
                       mostSilent_);
}

void Changes::print(PathTable& table, const std::string& name) const
{
    const bool isMet = count_ > 0 && lost_ == 0 && 20 * silent_ < count_;
    table.row(name, text(), "0 lost, silent in < 1 of 20", isMet);
}

} // namespace fadewell::integration
