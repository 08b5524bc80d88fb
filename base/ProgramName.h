#pragma once

#include <fmt/format.h>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// What another program is called, inside a log message: the message then knows which part of its
/// text that is, and whoever passes the log on can leave it out.
struct ProgramName {
    std::string_view text;

    // Around the name while the message is put together; no message shows them.
    static constexpr char begin = '\x0e';
    static constexpr char end = '\x0f';

    /// Takes the marks out of a message's text; answers what was between them.
    [[nodiscard]] static std::vector<std::string> extract(std::string& text);
};

} // namespace fadewell

template <>
struct fmt::formatter<fadewell::ProgramName> : fmt::formatter<fmt::string_view> {
    template <class Context>
    auto format(const fadewell::ProgramName& name, Context& context) const
    {
        using fadewell::ProgramName;
        auto out = context.out();
        *out++ = ProgramName::begin;
        for (const char character : name.text) {
            // A name with marks of its own would end early.
            if (character != ProgramName::begin && character != ProgramName::end) {
                *out++ = character;
            }
        }
        *out++ = ProgramName::end;
        return out;
    }
};
