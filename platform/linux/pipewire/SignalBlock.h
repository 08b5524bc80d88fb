#pragma once

#include <csignal>
#include <pthread.h>

namespace fadewell::pipewire {

/// Blocks every signal for the calling thread while it lives: threads made meanwhile inherit the
/// mask, so that no signal of ours is ever delivered to an audio thread.
class [[nodiscard]] SignalBlock final {
public:
    SignalBlock()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalBlock() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t before_ = {};
};

} // namespace fadewell::pipewire
