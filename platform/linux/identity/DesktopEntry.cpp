#include "platform/linux/identity/DesktopEntry.h"

#include "platform/linux/identity/SmallFile.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace fadewell {
namespace {

constexpr std::size_t maximumSize = 256U << 10U;

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string unescaped(std::string_view value)
{
    std::string text;
    for (std::size_t index = 0; index < value.size(); ++index) {
        if (value[index] != '\\' || index + 1 == value.size()) {
            text += value[index];
            continue;
        }
        const char escaped = value[++index];
        switch (escaped) {
        case 's':
            text += ' ';
            break;
        case 'n':
            text += '\n';
            break;
        case 't':
            text += '\t';
            break;
        case 'r':
            text += '\r';
            break;
        case '\\':
            text += '\\';
            break;
        default:
            text += '\\';
            text += escaped;
        }
    }
    return text;
}

/// A lone field code stands for files, addresses or the entry's own icon; none is the program.
bool isFieldCode(std::string_view argument)
{
    return argument.size() == 2 && argument.front() == '%' && argument != "%%";
}

std::string withPercents(std::string_view argument)
{
    std::string text;
    for (std::size_t index = 0; index < argument.size(); ++index) {
        text += argument[index];
        index += argument.substr(index, 2) == "%%" ? 1 : 0;
    }
    return text;
}

std::vector<std::string> splitCommand(std::string_view command)
{
    std::vector<std::string> arguments;
    std::string argument;
    bool isQuoted = false;
    bool hasArgument = false;
    const auto finish = [&] {
        if (hasArgument && !isFieldCode(argument)) {
            arguments.push_back(withPercents(argument));
        }
        argument.clear();
        hasArgument = false;
    };
    for (std::size_t index = 0; index < command.size(); ++index) {
        const char c = command[index];
        if (c == '"') {
            isQuoted = !isQuoted;
            hasArgument = true;
        } else if (c == '\\' && index + 1 < command.size()) {
            argument += command[++index];
            hasArgument = true;
        } else if (!isQuoted && (c == ' ' || c == '\t' || c == '\n')) {
            finish();
        } else {
            argument += c;
            hasArgument = true;
        }
    }
    finish();
    return arguments;
}

/// Takes one key of the main group after another.
class Reader {
public:
    explicit Reader(const std::vector<std::string>& languages)
        : languages_(languages)
        , bestName_(languages.size() + 1)
    {}

    void take(std::string_view key, std::string_view value)
    {
        if (key == "Name" || (key.starts_with("Name[") && key.ends_with(']'))) {
            takeName(key.size() > 4 ? key.substr(5, key.size() - 6) : std::string_view{}, value);
        } else if (key == "Exec") {
            entry_.exec = splitCommand(unescaped(value));
        } else if (key == "Type") {
            entry_.isApplication = value == "Application";
        } else if (key == "NoDisplay") {
            entry_.isNoDisplay = value == "true";
        } else if (key == "Hidden") {
            entry_.isHidden = value == "true";
        } else if (key == "Categories") {
            entry_.isTerminalEmulator =
                (";" + std::string(value) + ";").find(";TerminalEmulator;") != std::string::npos;
        } else {
            takeText(key, value);
        }
    }

    [[nodiscard]] DesktopEntry finish() { return std::move(entry_); }

private:
    void takeText(std::string_view key, std::string_view value)
    {
        const std::pair<std::string_view, std::string DesktopEntry::*> members[] = {
            {"Icon", &DesktopEntry::icon},
            {"TryExec", &DesktopEntry::tryExec},
            {"StartupWMClass", &DesktopEntry::startupWMClass},
            {"X-Flatpak", &DesktopEntry::flatpakID}};
        for (const auto& [name, member] : members) {
            if (key == name) {
                entry_.*member = unescaped(value);
            }
        }
    }

    void takeName(std::string_view tag, std::string_view value)
    {
        const auto found = std::find(languages_.begin(), languages_.end(), tag);
        const auto rank = static_cast<std::size_t>(found - languages_.begin());
        const bool isPlain = tag.empty();
        if ((isPlain || found != languages_.end()) && rank < bestName_) {
            bestName_ = rank;
            entry_.name = unescaped(value);
        }
    }

    const std::vector<std::string>& languages_;
    DesktopEntry entry_;
    std::size_t bestName_; ///< rank of the language of the name so far
};

} // namespace

DesktopEntry DesktopEntry::parse(std::string_view text, const std::vector<std::string>& languages)
{
    Reader reader(languages);
    bool isInMainGroup = false;
    while (!text.empty()) {
        const auto line = trimmed(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (line.front() == '[') {
            isInMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const std::size_t equals = line.find('=');
        if (isInMainGroup && equals != std::string_view::npos) {
            reader.take(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    }
    return reader.finish();
}

std::optional<DesktopEntry> DesktopEntry::read(const std::filesystem::path& path,
                                               const std::vector<std::string>& languages)
{
    const auto text = readSmallFile(path, maximumSize);
    if (!text) {
        return std::nullopt;
    }
    auto entry = parse(*text, languages);
    entry.path = path;
    return entry;
}

} // namespace fadewell
