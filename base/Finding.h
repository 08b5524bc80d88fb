#pragma once

#include <string>

namespace fadewell {

/// One thing that was looked at to say what works here and what doesn't.
struct Finding {
    enum class Verdict {
        good,
        limited, ///< something else doesn't work because of it
        bad      ///< Fadewell doesn't work because of it
    };

    std::string id; ///< for scripts, stays the same
    Verdict verdict = Verdict::good;
    std::string text; ///< for people: what is so, why that matters, what helps

    bool operator==(const Finding&) const = default;
};

} // namespace fadewell
