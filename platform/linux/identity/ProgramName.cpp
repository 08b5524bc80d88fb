#include "platform/linux/identity/ProgramName.h"

#include "platform/linux/identity/KnownApps.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

namespace fadewell {
namespace {

namespace fs = std::filesystem;
using Names = std::span<const std::string_view>;

struct Interpreter {
    std::string_view family;
    Names valueOptions;  ///< take the next argument
    Names inlineOptions; ///< the program stands on the command line
    Names nameOptions;   ///< the next argument is the program
};

constexpr std::array<std::string_view, 3> pythonValues{"-W", "-X", "--check-hash-based-pycs"};
constexpr std::array<std::string_view, 4> shellValues{"--rcfile", "--init-file", "-o", "-O"};
constexpr std::array<std::string_view, 6> nodeValues{
    "-r", "--require", "--loader", "--import", "--experimental-loader", "-C"};
constexpr std::array<std::string_view, 9> javaValues{"-cp",
                                                     "-classpath",
                                                     "--class-path",
                                                     "-p",
                                                     "--module-path",
                                                     "--add-modules",
                                                     "--add-opens",
                                                     "--add-exports",
                                                     "--add-reads"};
constexpr std::array<std::string_view, 3> includeValues{"-I", "-l", "-d"};
constexpr std::array<std::string_view, 1> dashC{"-c"};
constexpr std::array<std::string_view, 6> evaluated{"-e", "-E", "--eval", "-p", "--print", "-c"};
constexpr std::array<std::string_view, 1> dashM{"-m"};
constexpr std::array<std::string_view, 3> javaNames{"-jar", "-m", "--module"};

const Interpreter interpreters[] = {
    {"python", pythonValues, dashC, dashM},
    {"pypy", pythonValues, dashC, dashM},
    {"perl", includeValues, evaluated, {}},
    {"ruby", includeValues, evaluated, {}},
    {"lua", includeValues, evaluated, {}},
    {"luajit", includeValues, evaluated, {}},
    {"php", includeValues, evaluated, {}},
    {"node", nodeValues, evaluated, {}},
    {"nodejs", nodeValues, evaluated, {}},
    {"electron", nodeValues, {}, {}},
    {"gjs", includeValues, dashC, dashM},
    {"gjs-console", includeValues, dashC, dashM},
    {"java", javaValues, {}, javaNames},
    {"mono", {}, {}, {}},
    {"mono-sgen", {}, {}, {}},
    {"dotnet", {}, {}, {}},
};
const Interpreter shell{"shell", shellValues, dashC, {}};

bool contains(Names names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// "python3.11" is python.
std::string_view family(std::string_view program)
{
    while (!program.empty() &&
           (program.back() == '.' || (program.back() >= '0' && program.back() <= '9')))
    {
        program.remove_suffix(1);
    }
    return program;
}

const Interpreter* interpreterNamed(std::string_view program)
{
    if (KnownApps::instance().role(program) == KnownApps::Role::shell) {
        return &shell;
    }
    const auto found = std::find_if(
        std::begin(interpreters), std::end(interpreters), [&](const Interpreter& interpreter) {
            return interpreter.family == program || interpreter.family == family(program);
        });
    return found == std::end(interpreters) ? nullptr : found;
}

bool isWindowsProgram(std::string_view argument)
{
    return lowerCase(argument).ends_with(".exe");
}

bool isWine(std::string_view program)
{
    const auto lower = lowerCase(program);
    return lower.starts_with("wine") || lower == "proton";
}

/// Names that many programs give their main file.
bool isCommonScriptName(std::string_view name)
{
    constexpr std::array<std::string_view, 14> common{"main.py",
                                                      "__main__.py",
                                                      "app.py",
                                                      "run.py",
                                                      "start.py",
                                                      "main.js",
                                                      "index.js",
                                                      "app.js",
                                                      "app.asar",
                                                      "main.pl",
                                                      "run.sh",
                                                      "start.sh",
                                                      "launch.sh",
                                                      "main.lua"};
    return contains(common, name);
}

std::string meaningfulFolder(const fs::path& script)
{
    constexpr std::array<std::string_view, 7> meaningless{
        "resources", "bin", "lib", "src", "app", "dist", "share"};
    fs::path folder = script.parent_path();
    while (contains(meaningless, folder.filename().string())) {
        folder = folder.parent_path();
    }
    return folder.filename().string();
}

Program script(const std::string& path)
{
    Program program{Program::Kind::script, fileName(path), {}, {}};
    if (path.starts_with('/')) {
        program.path = path;
    }
    if (isCommonScriptName(program.name)) {
        program.folderName = meaningfulFolder(path);
    }
    return program;
}

bool isInline(const Interpreter& interpreter, const std::string& argument)
{
    // Shells take their options in one: "-lc".
    const bool isCluster = &interpreter == &shell && !argument.starts_with("--") &&
                           argument.find('c') != std::string::npos;
    return isCluster || contains(interpreter.inlineOptions, argument);
}

Program interpreted(const Interpreter& interpreter,
                    const std::vector<std::string>& arguments,
                    const std::string& name)
{
    const bool isShell = &interpreter == &shell;
    const Program bare{
        Program::Kind::bareInterpreter, isShell ? name : std::string(family(name)), {}, {}};
    for (std::size_t index = 1; index < arguments.size(); ++index) {
        const auto& argument = arguments[index];
        if (argument.empty()) {
            continue;
        }
        if (argument.front() != '-' && argument.front() != '+') {
            // Fed through a descriptor, a script has no name.
            return argument.starts_with("/dev/") ? bare : script(argument);
        }
        if (isInline(interpreter, argument)) {
            auto inlined = bare;
            inlined.kind = isShell ? Program::Kind::commandShell : bare.kind;
            return inlined;
        }
        if (contains(interpreter.nameOptions, argument) && index + 1 < arguments.size()) {
            return script(arguments[index + 1]);
        }
        index += contains(interpreter.valueOptions, argument) ? 1 : 0;
    }
    return bare;
}

std::optional<Program> windowsProgram(const std::vector<std::string>& arguments,
                                      std::string_view binary)
{
    const bool isHosted = isWine(binary);
    for (const auto& argument : arguments) {
        if (isWindowsProgram(argument) && (isHosted || argument.find('\\') != std::string::npos)) {
            auto name = fileName(argument);
            return Program{Program::Kind::script, name.substr(name.find_last_of('\\') + 1), {}, {}};
        }
        if (!isHosted) {
            break; // Only its own name can say so.
        }
    }
    return std::nullopt;
}

/// Programs of many names are links to one file: "pw-play" runs "pw-cat".
std::string nameOfLink(const std::string& executable, const std::string& ownName)
{
    const auto name = fileName(ownName);
    const fs::path file(executable);
    std::error_code error;
    const bool isLink = !name.empty() && name != file.filename() &&
                        fs::canonical(file.parent_path() / name, error) == file;
    return isLink && !error ? name : file.filename().string();
}

} // namespace

std::string fileName(std::string_view path)
{
    return std::string(path.substr(path.find_last_of('/') + 1));
}

Program programOfCommand(const std::string& executable,
                         const std::vector<std::string>& arguments,
                         const std::string& command)
{
    const std::string ownName = arguments.empty() ? std::string{} : arguments.front();
    // A program that rewrote its command line keeps its name up to the first blank.
    std::string name =
        executable.empty() ? fileName(ownName.substr(0, ownName.find(' '))) : fileName(executable);
    if (name.starts_with('-')) {
        name.erase(0, 1); // A login shell.
    }
    if (const auto windows = windowsProgram(arguments, name)) {
        return *windows;
    }
    if (const auto* interpreter = interpreterNamed(name)) {
        return interpreted(*interpreter, arguments, name);
    }
    if (name.empty()) {
        return {Program::Kind::binary, command, {}, {}};
    }
    return {Program::Kind::binary,
            executable.empty() ? name : nameOfLink(executable, ownName),
            executable,
            {}};
}

} // namespace fadewell
