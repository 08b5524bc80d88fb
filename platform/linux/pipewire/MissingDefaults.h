#pragma once

#include "platform/linux/pipewire/Graph.h"
#include "platform/linux/pipewire/LoopTimer.h"

#include <memory>

namespace fadewell::pipewire {

/// Asks again for default devices that were never told, or whose change wasn't: while any program
/// begins to listen to the session manager's metadata, the server keeps it from the others. Nothing
/// wakes up while nothing is missing. Only then is it asked: a server that is asked while a program
/// dies that has just asked, too, may not answer any more. Belongs to the connection's lock.
class MissingDefaults final {
public:
    explicit MissingDefaults(Graph& graph)
        : graph_(graph)
    {}
    ~MissingDefaults();
    MissingDefaults(const MissingDefaults&) = delete;
    MissingDefaults& operator=(const MissingDefaults&) = delete;

    /// There is a device of a kind whose default isn't named or has gone, or there is none.
    void update(bool isMissing);

    /// The metadata came or went: whatever was asked for counts no more.
    void reset() { wait_ = firstWait; }

private:
    /// Seconds; twice as many before each further question.
    static constexpr double firstWait = 0.3;
    static constexpr double longestWait = 5;

    void ask();

    Graph& graph_;
    std::unique_ptr<LoopTimer> timer_;
    double wait_ = firstWait;
    bool isWaiting_ = false;
    bool isMissing_ = false;
};

} // namespace fadewell::pipewire
