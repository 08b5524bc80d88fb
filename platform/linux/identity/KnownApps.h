#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fadewell {

/// The text of known-apps.json.
extern const char* const knownAppsJson;

/// What is known by heart of programs: under which names the applications that matter for calls
/// are installed here, and which programs start others without being responsible for them. Every
/// comparison ignores case. Never changes, so any thread may read it.
class KnownApps final {
public:
    /// What starts other programs.
    enum class Role {
        none,
        terminal,
        shell,
        session,  ///< desktop shells, display managers, service managers
        launcher, ///< of games, whose own windows are applications all the same
        wrapper   ///< becomes or holds the program that it starts, as sandboxes do
    };

    [[nodiscard]] static const KnownApps& instance();
    /// Of a table of the same form; what is no table gives an empty one.
    explicit KnownApps(std::string_view json);

    /// The identifier that an application has on every system, from any of its names here: sandbox
    /// or desktop id, window class or program. Absent for most.
    [[nodiscard]] std::optional<std::string> canonicalID(std::string_view name) const;
    /// The names here of a canonical identifier, the most usual first; empty for others.
    [[nodiscard]] const std::vector<std::string>& aliases(std::string_view canonicalID) const;
    /// What to call it when nothing installed says so.
    [[nodiscard]] std::optional<std::string> name(std::string_view canonicalID) const;

    [[nodiscard]] Role role(std::string_view program) const;
    /// A name that says which library plays, and not which application.
    [[nodiscard]] bool isGenericName(std::string_view name) const;

private:
    struct App {
        std::string name;
        std::vector<std::string> aliases;
    };

    std::map<std::string, App, std::less<>> apps_;
    std::map<std::string, std::string, std::less<>> canonicalIDs_; // by lower-case alias
    std::map<std::string, Role, std::less<>> roles_;
    std::set<std::string, std::less<>> genericNames_;
};

/// ASCII letters in lower case; the names compared here have no others.
[[nodiscard]] std::string lowerCase(std::string_view text);

} // namespace fadewell
