#include "control/diagnostics/NameMask.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace fadewell {
namespace {

/// Inside a text, shorter ones are more likely to be something else.
constexpr std::size_t shortestInText = 3;

std::string lowered(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return result;
}

/// What everybody's texts have; a program that calls itself so hides behind it.
bool isCommon(std::string_view name)
{
    constexpr std::array<std::string_view, 7> common{"fadewell",
                                                     "app.fadewell.fadewell",
                                                     "pipewire",
                                                     "pipewire-pulse",
                                                     "wireplumber",
                                                     "default",
                                                     "system"};
    return name.size() < 2 || std::find(common.begin(), common.end(), name) != common.end();
}

/// Letters and digits of any script.
bool isWordCharacter(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x80 || std::isalnum(byte) != 0;
}

bool isWholeWord(std::string_view text, std::size_t begin, std::size_t length)
{
    const auto end = begin + length;
    const bool joinsBefore =
        begin > 0 && isWordCharacter(text[begin]) && isWordCharacter(text[begin - 1]);
    const bool joinsAfter =
        end < text.size() && isWordCharacter(text[end - 1]) && isWordCharacter(text[end]);
    return !joinsBefore && !joinsAfter;
}

std::string numbered(int number)
{
    return "app " + std::to_string(number);
}

} // namespace

NameMask::NameMask(SystemInspection::Owner owner, bool leavesOutApps)
    : owner_(std::move(owner))
    , leavesOutApps_(leavesOutApps)
{
    while (owner_.home.size() > 1 && owner_.home.ends_with('/')) {
        owner_.home.pop_back();
    }
    if (owner_.fullName != owner_.user) {
        add(owner_.fullName, "(user)");
    }
    add(owner_.user, "(user)");
    if (owner_.host != "localhost") {
        add(owner_.host, "(computer)");
        add(owner_.host.substr(0, owner_.host.find('.')), "(computer)");
    }
}

void NameMask::add(std::string text, std::string instead)
{
    if (text.size() < 2) {
        return;
    }
    auto shown = lowered(text);
    auto& words = words_[shown.front()];
    const auto isLonger = [](const std::string& added, const Word& word) {
        return added.size() > word.text.size();
    };
    const auto place = std::upper_bound(words.begin(), words.end(), shown, isLonger);
    words.insert(place, {std::move(shown), std::move(instead)});
}

void NameMask::note(const std::string& app, const std::vector<std::string>& names)
{
    if (!leavesOutApps_ || isCommon(lowered(app))) {
        return;
    }
    const auto seen = known_.find(lowered(app));
    const auto number =
        numbers_.try_emplace(app, seen == known_.end() ? last_ + 1 : seen->second).first->second;
    last_ = std::max(last_, number);
    auto all = names;
    all.insert(all.begin(), app);
    for (const auto& name : all) {
        const auto lower = lowered(name);
        if (!isCommon(lower) && known_.try_emplace(lower, number).second &&
            name.size() >= shortestInText) {
            add(name, numbered(number));
        }
    }
}

std::string NameMask::app(const std::string& name)
{
    if (!leavesOutApps_ || isCommon(lowered(name))) {
        return text(name);
    }
    if (const auto exact = numbers_.find(name); exact != numbers_.end()) {
        return numbered(exact->second);
    }
    note(name);
    return numbered(known_.at(lowered(name)));
}

std::string NameMask::withoutHome(std::string_view text) const
{
    std::string result;
    const auto& home = owner_.home;
    for (std::size_t at = 0; at < text.size();) {
        const auto after = at + home.size();
        const bool isHome = home.size() > 1 && text.substr(at).starts_with(home) &&
                            (after >= text.size() || !isWordCharacter(text[after]));
        result += isHome ? '~' : text[at];
        at = isHome ? after : at + 1;
    }
    return result;
}

const NameMask::Word* NameMask::wordAt(std::string_view lower, std::size_t position) const
{
    const auto found = words_.find(lower[position]);
    if (found == words_.end()) {
        return nullptr;
    }
    for (const auto& word : found->second) {
        if (lower.substr(position).starts_with(word.text) &&
            isWholeWord(lower, position, word.text.size())) {
            return &word;
        }
    }
    return nullptr;
}

std::string NameMask::text(std::string_view text) const
{
    if (leavesOutApps_) {
        const auto exact = known_.find(lowered(text));
        if (exact != known_.end()) {
            return numbered(exact->second);
        }
    }
    const auto homeless = withoutHome(text);
    const auto lower = lowered(homeless);
    std::string result;
    for (std::size_t at = 0; at < lower.size();) {
        if (const auto* const word = wordAt(lower, at)) {
            result += word->instead;
            at += word->text.size();
        } else {
            result += homeless[at++];
        }
    }
    return result;
}

} // namespace fadewell
