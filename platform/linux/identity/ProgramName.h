#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// The program that a command line runs, seen through interpreters: a script, a Java archive or a
/// Windows program is the program, and what runs it is not.
struct Program {
    enum class Kind {
        binary,
        script,         ///< run by an interpreter; also Java and Windows programs
        commandShell,   ///< a shell with its commands on the command line
        bareInterpreter ///< an interpreter or shell by itself
    };

    Kind kind = Kind::binary;
    std::string name; ///< file name without folder; empty when nothing is known
    std::string path; ///< absolute, or empty
    /// The folder that a script with a name like "main.py" lies in, which tells more; else empty.
    std::string folderName;
};

/// `executable` is the path of the running file, or empty; `arguments` begins with the program's
/// own name for itself; `command` is the kernel's short name, the last resort.
[[nodiscard]] Program programOfCommand(const std::string& executable,
                                       const std::vector<std::string>& arguments,
                                       const std::string& command);

/// Behind the last slash.
[[nodiscard]] std::string fileName(std::string_view path);

} // namespace fadewell
