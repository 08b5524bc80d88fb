#pragma once

#include "app/SystemInspection.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// Takes out of texts what is nobody else's business: whose machine it is, always, and what the
/// apps on it are called, when that is wanted. An app is "app 1" then, the same one everywhere.
/// Pure.
class NameMask final {
public:
    NameMask(SystemInspection::Owner owner, bool leavesOutApps);

    [[nodiscard]] bool leavesOutApps() const { return leavesOutApps_; }

    /// An app and what else it is called; a name that two have counts for the one noted first.
    /// Everything has to be noted before the first text is asked for.
    void note(const std::string& app, const std::vector<std::string>& names = {});

    /// A text that is the name of an app and nothing else.
    [[nodiscard]] std::string app(const std::string& name);

    /// A text that may have anything in it.
    [[nodiscard]] std::string text(std::string_view text) const;

private:
    struct Word {
        std::string text; ///< lower case
        std::string instead;
    };
    void add(std::string text, std::string instead);
    [[nodiscard]] std::string withoutHome(std::string_view text) const;
    [[nodiscard]] const Word* wordAt(std::string_view lower, std::size_t position) const;

    SystemInspection::Owner owner_;
    bool leavesOutApps_;
    std::map<std::string, int> numbers_; ///< by exactly what `note` was given
    std::map<std::string, int> known_;   ///< by every name, in lower case
    /// By first character; the longest first.
    std::map<char, std::vector<Word>> words_;
    int last_ = 0;
};

} // namespace fadewell
