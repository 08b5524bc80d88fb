#pragma once

#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/LoopTimer.h"

#include <memory>

namespace fadewell::pipewire {

/// Asks again for default devices that were perhaps not told: while any program begins to listen to
/// the session manager's metadata, the server keeps every change of it from all the others. Nothing
/// wakes up while there is no doubt. Belongs to the connection's lock.
class LostDefaults final {
public:
    explicit LostDefaults(Graph& graph)
        : graph_(graph)
    {}
    ~LostDefaults();
    LostDefaults(const LostDefaults&) = delete;
    LostDefaults& operator=(const LostDefaults&) = delete;

    /// There is a device of a kind that has no default, or there is none.
    void update(bool isMissing);

    /// Devices came or went, or the metadata: a default is about to change.
    void doubt();

private:
    /// Seconds; twice as many before each further question.
    static constexpr double firstWait = 0.3;
    static constexpr double longestWait = 5;
    /// Questions in doubt: until two seconds have passed.
    static constexpr int mostDoubts = 3;

    void schedule();
    void ask();

    Graph& graph_;
    std::unique_ptr<LoopTimer> timer_;
    double wait_ = firstWait;
    int doubts_ = 0; ///< questions left
    bool isWaiting_ = false;
    bool isMissing_ = false;
};

} // namespace fadewell::pipewire
