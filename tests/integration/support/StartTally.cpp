#include "tests/integration/support/StartTally.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <iterator>

namespace fadewell::integration {

void StartTally::Loss::add(std::size_t frames)
{
    starts += frames > 0 ? 1 : 0;
    most = std::max(most, frames);
}

void StartTally::Loss::add(const Loss& more)
{
    starts += more.starts;
    most = std::max(most, more.most);
}

bool StartTally::Loss::exceeds(const Loss& other, double ratio, std::size_t allowed) const
{
    if (starts <= allowed) {
        return false;
    }
    // Both are samples of what happens now and then: twice the deviation of their difference.
    const auto expected = ratio * static_cast<double>(other.starts);
    const auto found = static_cast<double>(starts);
    return most > other.most || found - expected > 2 * std::sqrt(found + ratio * expected);
}

std::string StartTally::Loss::text() const
{
    return starts == 0 ? "-" : fmt::format("{}x{}", starts, most);
}

void StartTally::add(const CountedCheck& check)
{
    ++count_;
    if (!check.isMeasured) {
        ++unmeasured_;
        return;
    }
    if (!check.isHeard) {
        ++unheard_;
        return;
    }
    if (check.wrong > 0 && firstWrong_.empty()) {
        firstWrong_ =
            fmt::format(" (heard at {:.3f} from frame {})", check.wrongGain, check.wrongAt);
    }
    wrong_.add(check.wrong);
    head_.add(check.head);
    inside_.add(check.inside);
    tail_.add(check.tail);
    zeros_.add(check.zeros);
    longestDelay_ = std::max(longestDelay_, static_cast<double>(check.first) / (sampleRate / 1000));
}

void StartTally::add(const StartTally& more)
{
    count_ += more.count_;
    unmeasured_ += more.unmeasured_;
    unheard_ += more.unheard_;
    for (const auto loss : {&StartTally::wrong_,
                            &StartTally::head_,
                            &StartTally::inside_,
                            &StartTally::tail_,
                            &StartTally::zeros_})
    {
        (this->*loss).add(more.*loss);
    }
    firstWrong_ = firstWrong_.empty() ? more.firstWrong_ : firstWrong_;
    longestDelay_ = std::max(longestDelay_, more.longestDelay_);
}

std::string StartTally::faultsBeside(const StartTally& untouched) const
{
    std::string faults;
    const auto find = [&](bool isFault, const char* name) {
        faults += isFault ? fmt::format("{}{}", faults.empty() ? "" : ", ", name) : "";
    };
    const auto lost = [&](const Loss& loss, const Loss& other, const char* name) {
        const auto others = static_cast<double>(std::max(untouched.count_, std::size_t{1}));
        // A cycle that another program delays may fall into any start: that is nobody's fault.
        const std::size_t allowed = count_ / 25;
        find(loss.exceeds(other, static_cast<double>(count_) / others, allowed), name);
    };
    find(2 * unmeasured_ > count_, "not measured");
    find(wrong_.starts > 0, "wrong volume");
    find(unheard_ > 0, "not heard");
    lost(head_, untouched.head_, "head lost");
    lost(inside_, untouched.inside_, "lost inside");
    lost(tail_, untouched.tail_, "tail lost");
    lost(zeros_, untouched.zeros_, "silence inside");
    return faults;
}

std::string StartTally::heading()
{
    return fmt::format("{:>5} {:>5} {:>9} {:>5} {:>9} {:>9} {:>9} {:>9} {:>12}",
                       "count",
                       "gaps",
                       "wrong",
                       "hung",
                       "head",
                       "inside",
                       "tail",
                       "silent",
                       "delay");
}

std::string StartTally::line() const
{
    return fmt::format("{:>5} {:>5} {:>9} {:>5} {:>9} {:>9} {:>9} {:>9} {:>9.0f} ms{}",
                       count_,
                       unmeasured_,
                       wrong_.text(),
                       unheard_,
                       head_.text(),
                       inside_.text(),
                       tail_.text(),
                       zeros_.text(),
                       longestDelay_,
                       firstWrong_);
}

} // namespace fadewell::integration
