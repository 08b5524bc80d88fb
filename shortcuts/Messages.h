#pragma once

#include <string>
#include <string_view>

namespace fadewell::shortcuts {

/// The texts of the recorder in one language. [any thread]
class Messages final {
public:
    /// `language` is a language code or a locale such as "de_AT.UTF-8"; an unknown one is English.
    explicit Messages(std::string_view language);
    /// In the language of the user's messages.
    [[nodiscard]] static Messages current();

    /// The text under a key; ends the program for a key that doesn't exist.
    [[nodiscard]] std::string text(std::string_view key) const;
    /// The text with `argument` in place of its "%@".
    [[nodiscard]] std::string text(std::string_view key, std::string_view argument) const;

private:
    std::size_t language_ = 0;
};

} // namespace fadewell::shortcuts
