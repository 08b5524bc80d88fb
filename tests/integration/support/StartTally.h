#pragma once

#include "tests/integration/support/CountedSound.h"

#include <cstddef>
#include <string>

namespace fadewell::integration {

/// Many starts of one kind added up. Frames are the most of one start.
class StartTally {
public:
    void add(const CountedCheck& check);

    /// Further starts of the same.
    void add(const StartTally& more);

    [[nodiscard]] std::size_t count() const { return count_; }
    /// What is worse than in `untouched`, which is the same without Fadewell: any frame at a wrong
    /// volume, a start that isn't heard, and more lost than the player loses by itself. Empty when
    /// nothing is.
    [[nodiscard]] std::string faultsBeside(const StartTally& untouched) const;
    /// One line of a table, under `heading()`.
    [[nodiscard]] std::string line() const;
    [[nodiscard]] static std::string heading();

private:
    /// How many starts have it, and its most frames in one of them.
    struct Loss {
        std::size_t starts = 0;
        std::size_t most = 0;

        void add(std::size_t frames);
        void add(const Loss& more);
        /// `ratio` is how many starts there are for each of the other's.
        [[nodiscard]] bool exceeds(const Loss& other, double ratio, std::size_t allowed) const;
        [[nodiscard]] std::string text() const;
    };

    std::size_t count_ = 0;
    std::size_t unmeasured_ = 0; ///< the recording had gaps each time
    std::size_t unheard_ = 0;
    Loss wrong_;
    std::string firstWrong_; ///< for people
    Loss head_;
    Loss inside_;
    Loss tail_;
    Loss zeros_;
    double longestDelay_ = 0; ///< until the first sound, in milliseconds
};

} // namespace fadewell::integration
