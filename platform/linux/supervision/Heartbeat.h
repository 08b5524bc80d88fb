#pragma once

#include "platform/linux/FileDescriptor.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace fadewell {

/// The signs of life of a program that plays sound, in memory that it shares with its supervisor.
/// Made before the fork; nothing here allocates, locks or throws afterwards.
class Heartbeat final {
public:
    /// What the supervisor sees of the program at one moment.
    struct Reading {
        bool isWatched = false;    ///< some stream runs: a freeze would be heard
        std::uint64_t entered = 0; ///< audio callbacks begun
        std::uint64_t left = 0;    ///< audio callbacks finished
        std::uint64_t answers = 0; ///< questions that the program's loop has answered
    };

    /// Marks the audio callback that it lives in. No heartbeat, no mark. [audio thread]
    class [[nodiscard]] Callback final {
    public:
        explicit Callback(Heartbeat* heartbeat)
            : heartbeat_(heartbeat)
        {
            if (heartbeat_) {
                heartbeat_->page_->entered.fetch_add(1, std::memory_order_relaxed);
            }
        }
        ~Callback()
        {
            if (heartbeat_) {
                heartbeat_->page_->left.fetch_add(1, std::memory_order_release);
            }
        }
        Callback(const Callback&) = delete;
        Callback& operator=(const Callback&) = delete;

    private:
        Heartbeat* heartbeat_;
    };

    /// Throws std::system_error when the system has no memory or descriptors left.
    Heartbeat();
    ~Heartbeat();
    Heartbeat(const Heartbeat&) = delete;
    Heartbeat& operator=(const Heartbeat&) = delete;

    // [program, any thread but the audio thread] ------------------------------------------------

    /// A stream of the program begins or ceases to run; the first one wakes the supervisor.
    void streamStarted();
    void streamStopped();

    /// Readable while a question waits for answer(). A descriptor for an event loop.
    [[nodiscard]] int questions() const { return questions_.get(); }
    void answer();

    // [supervisor] ------------------------------------------------------------------------------

    [[nodiscard]] Reading read() const;
    /// Asks the program's loop for a sign of life.
    void ask();
    /// Readable once a stream has begun to run, until read().
    [[nodiscard]] int wakeUps() const { return wakeUps_.get(); }
    /// Forgets everything, for the program's next run.
    void reset();

private:
    struct Page {
        std::atomic<std::uint64_t> entered{0};
        std::atomic<std::uint64_t> left{0};
        std::atomic<std::uint64_t> answers{0};
        std::atomic<std::int32_t> streams{0};
    };
    static_assert(std::atomic<std::uint64_t>::is_always_lock_free);

    Page* page_;
    FileDescriptor questions_;
    FileDescriptor wakeUps_;
};

} // namespace fadewell
