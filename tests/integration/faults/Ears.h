#pragma once

#include "tests/integration/support/Recorder.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace fadewell::integration {

/// What the outputs of a session play now, over losses of outputs and of the server.
class Ears {
public:
    /// Forgets what was heard and listens to these outputs from now on. Throws std::runtime_error
    /// when one of them plays nothing at all, not even silence.
    void listen(const std::set<std::string>& outputs);
    /// The recordings are of outputs that have gone since.
    void lose() { recorders_.clear(); }
    /// The last 300 ms, absent as long as the output hasn't played that much since listen().
    [[nodiscard]] std::optional<Sound> heard(const std::string& output) const;

private:
    struct Ear {
        std::unique_ptr<Recorder> recorder;
        std::size_t start = 0;
    };
    std::map<std::string, Ear> recorders_;
};

} // namespace fadewell::integration
