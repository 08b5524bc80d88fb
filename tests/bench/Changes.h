#pragma once

#include "tests/bench/PathTable.h"
#include "tests/integration/support/CountedSound.h"

#include <cstddef>
#include <string>

namespace fadewell::integration {

/// What many changes of one kind cost. Those that the recorder missed something of don't count.
class Changes {
public:
    void add(const CountedCheck& check);
    [[nodiscard]] std::size_t count() const { return count_; }
    /// The numbers; frames are the most of one change.
    [[nodiscard]] std::string text() const;
    void print(PathTable& table, const std::string& name) const;

private:
    std::size_t count_ = 0;
    std::size_t lost_ = 0;
    std::size_t silent_ = 0;
    std::size_t mostLost_ = 0;
    std::size_t mostSilent_ = 0;
};

} // namespace fadewell::integration
