#pragma once

#include <chrono>
#include <cstdint>
#include <random>
#include <span>

namespace fadewell::integration {

/// The choices of one fault: the same for the same seed and number, whatever came before.
class Dice {
public:
    Dice(std::uint64_t seed, std::uint64_t number)
    {
        std::seed_seq sequence{seed, seed >> 32U, number, number >> 32U};
        engine_.seed(sequence);
    }

    /// 0 to `count` - 1.
    [[nodiscard]] std::size_t below(std::size_t count) { return engine_() % count; }
    [[nodiscard]] bool oneIn(std::size_t count) { return below(count) == 0; }
    [[nodiscard]] std::chrono::milliseconds between(int shortest, int longest)
    {
        const auto range = static_cast<std::size_t>(longest - shortest + 1);
        return std::chrono::milliseconds(shortest + static_cast<int>(below(range)));
    }
    template <class Item, std::size_t count>
    [[nodiscard]] const Item& oneOf(const Item (&items)[count])
    {
        return items[below(count)];
    }

private:
    std::mt19937_64 engine_;
};

} // namespace fadewell::integration
