#pragma once

#include "tests/integration/support/ChildProcess.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace fadewell::integration {

/// A private sound session (scripts/session.sh) whose environment this process takes over; it ends
/// with the object, or with the process however that ends. One at a time.
class Session {
public:
    /// `options` as scripts/session.sh takes them. Throws std::runtime_error when it doesn't come
    /// up.
    explicit Session(const std::vector<std::string>& options = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// A folder that is removed with the session.
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

    /// All that the server lists, in the form of pw-dump. Throws std::runtime_error when it doesn't
    /// answer.
    [[nodiscard]] static nlohmann::json objects();
    /// The names of all sound nodes whose name contains `part`, as the server lists them now.
    [[nodiscard]] static std::vector<std::string> nodesContaining(const std::string& part);

private:
    ChildProcess script_; // ends the session with its input
    std::filesystem::path folder_;
};

/// The outputs of every session by their node names; the first is the default.
inline constexpr auto speakers = "speakers";
inline constexpr auto headphones = "headphones";

} // namespace fadewell::integration
