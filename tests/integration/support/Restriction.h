#pragma once

#include <filesystem>
#include <string>

namespace fadewell::integration {

/// As long as it lives, programs that connect to the session's sound server may only listen, as the
/// configuration of a sandbox would have it.
class Restriction {
public:
    Restriction();
    ~Restriction();
    Restriction(const Restriction&) = delete;
    Restriction& operator=(const Restriction&) = delete;

    /// Lets the restricted programs do from now on what these bits say, in octal.
    static void grant(const std::string& permissions = "0710");

private:
    std::filesystem::path folder_;
};

} // namespace fadewell::integration
