#include "platform/linux/systemkeys/KdeShortcuts.h"

#include "platform/linux/systemkeys/QtKeySequence.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace fadewell::KdeShortcuts {
namespace {

using Entries = std::map<std::pair<std::string, std::string>, std::string>; // group, key: value

/// The text without the file's escapes.
std::string unescaped(std::string_view value)
{
    std::string result;
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] != '\\' || at + 1 == value.size()) {
            result += value[at];
            continue;
        }
        const char next = value[++at];
        if (next == 't') {
            result += '\t';
        } else if (next == '\\') {
            result += '\\';
        } else {
            result += {'\\', next}; // a list's own
        }
    }
    return result;
}

/// The first member of a list with commas; in a member they are escaped.
std::string firstMember(std::string_view list)
{
    std::string member;
    for (std::size_t at = 0; at < list.size() && list[at] != ','; ++at) {
        at += list[at] == '\\' && at + 1 < list.size() ? 1 : 0;
        member += list[at];
    }
    return member;
}

void read(std::string_view text, Entries& entries)
{
    std::string group;
    while (!text.empty()) {
        auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        line = line.substr(0, line.find('\r'));
        const auto equals = line.find('=');
        if (line.starts_with('[')) {
            group = line;
        } else if (equals != std::string_view::npos && !line.starts_with('#')) {
            entries[{group, std::string(line.substr(0, equals))}] = line.substr(equals + 1);
        }
    }
}

} // namespace

std::vector<KeyBinding> parse(const std::vector<std::string>& files)
{
    Entries entries;
    for (const auto& text : files) {
        read(text, entries);
    }
    std::vector<KeyBinding> bindings;
    for (const auto& [name, value] : entries) {
        if (name.second.starts_with("_k_")) {
            continue; // what the group is called
        }
        // What it is bound to, what it was at first, what it does.
        const auto bound = firstMember(unescaped(value));
        for (std::string_view rest = bound; !rest.empty();) {
            const auto each = rest.substr(0, rest.find('\t'));
            rest.remove_prefix(std::min(rest.size(), each.size() + 1));
            if (const auto binding = parseQtKeySequence(each)) {
                bindings.push_back(*binding);
            }
        }
    }
    return bindings;
}

} // namespace fadewell::KdeShortcuts
