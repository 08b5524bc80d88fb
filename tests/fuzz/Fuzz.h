#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell::fuzz {

/// Ends the run, so that the fuzzer keeps the input, when something doesn't hold that always must.
inline void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "Broken: %s\n", what);
        std::abort();
    }
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size)
{
    return size == 0 ? std::string_view()
                     : std::string_view(reinterpret_cast<const char*>(data), size);
}

/// The lines of a text; always at least one, which may be empty.
inline std::vector<std::string> linesOf(std::string_view text)
{
    std::vector<std::string> lines(1);
    for (const char character : text) {
        if (character == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += character;
        }
    }
    return lines;
}

} // namespace fadewell::fuzz

/// What libFuzzer calls with every input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
