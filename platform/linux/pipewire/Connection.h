#pragma once

#include "platform/linux/supervision/Heartbeat.h"

#include <pipewire/pipewire.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace fadewell::pipewire {

/// One connection to a PipeWire server and the one thread that runs its loop.
///
/// The loop's lock is the lock of everything that mirrors the server: whoever touches a proxy, a
/// stream, the graph or a table built on it holds a Lock or runs on the loop thread, where it is
/// held already; what needs it is marked [locked]. Nothing waits under it but waitFor().
class Connection final {
public:
    struct Options {
        std::string remote; ///< name of the server's socket; empty: the environment decides
        std::string access; ///< asks for another kind of access, for tests; empty: as it comes
        std::shared_ptr<Heartbeat> heartbeat; ///< for the supervisor; none: nobody watches
    };

    /// Holds the loop's lock. May be nested, but not around waitFor(). [any thread]
    class [[nodiscard]] Lock final {
    public:
        explicit Lock(const Connection& connection)
            : loop_(connection.loop_)
        {
            pw_thread_loop_lock(loop_);
        }
        ~Lock() { pw_thread_loop_unlock(loop_); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        pw_thread_loop* loop_;
    };

    /// Starts the loop thread; nothing is connected yet. Absent, with `error` saying why, when the
    /// machine has no PipeWire client library that works.
    [[nodiscard]] static std::unique_ptr<Connection> open(Options options, std::string& error);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Called on the loop thread, with the lock held, after the server has gone and outside of any
    /// event of the old connection; disconnect() is what remains to be done.
    void onDisconnected(std::function<void()> disconnected)
    {
        disconnected_ = std::move(disconnected);
    }

    /// Connects to the server; 0 or a negative errno. May be repeated after disconnect(). [locked]
    int connect();

    /// Tries connect() some times a second until it succeeds, then calls `connected` on the loop
    /// thread, locked; null stops trying. [locked]
    void reconnect(std::function<void()> connected);

    /// Drops the connection with everything bound on it. [locked]
    void disconnect();
    [[nodiscard]] bool isConnected() const { return core_ != nullptr && !isLost_; }

    /// Lets the loop run until `done` holds, `seconds` have passed or the server went; tells
    /// whether it holds. `done` is asked with the lock held, whenever signal() was called. On the
    /// loop thread itself it asks once and doesn't wait. [locked exactly once]
    bool waitFor(double seconds, const std::function<bool()>& done);

    /// Wakes whoever is in waitFor(). [locked]
    void signal() { pw_thread_loop_signal(loop_, false); }

    /// Waits until the server has answered everything sent so far. [locked exactly once]
    bool roundTrip(double seconds);

    /// The server's number for this client; SPA_ID_INVALID before the first answer. [locked]
    [[nodiscard]] std::uint32_t clientID() const;

    /// As the server tells it; empty before its first answer. [locked]
    [[nodiscard]] const std::string& serverVersion() const { return serverVersion_; }

    [[nodiscard]] pw_core* core() const { return core_; } ///< null while disconnected
    [[nodiscard]] pw_context* context() const { return context_; }
    [[nodiscard]] pw_loop* loop() const { return pw_thread_loop_get_loop(loop_); }
    [[nodiscard]] Heartbeat* heartbeat() const { return options_.heartbeat.get(); }
    [[nodiscard]] bool isLoopThread() const { return pw_thread_loop_in_thread(loop_); }

private:
    explicit Connection(Options options);
    bool start(std::string& error);
    /// Asks, on the loop thread, for a priority at which new streams are seen before they are
    /// linked anywhere. Without it, which the system may refuse, that is only likely.
    void hurry() const;
    static void onCoreInfo(void* data, const pw_core_info* info);
    static void onCoreDone(void* data, std::uint32_t id, int sequence);
    static void
    onCoreError(void* data, std::uint32_t id, int sequence, int result, const char* message);
    static void onLost(void* data, std::uint64_t count);
    static void onRetry(void* data, std::uint64_t expirations);
    void retryEvery(long nanoseconds);
    static void onQuestion(void* data, int descriptor, std::uint32_t events);
    static const pw_core_events& coreEvents();

    Options options_;
    std::function<void()> disconnected_;
    std::function<void()> reconnected_;
    pw_thread_loop* loop_ = nullptr;
    pw_context* context_ = nullptr;
    pw_core* core_ = nullptr;
    spa_source* lost_ = nullptr; ///< leaves the event that reported the loss before acting on it
    spa_source* retry_ = nullptr;
    spa_source* questions_ = nullptr; ///< the supervisor's
    spa_hook coreHook_ = {};
    std::string serverVersion_;
    int lastSync_ = 0;
    int lastDone_ = 0;
    int quickRetries_ = 0; ///< left, before it tries less often
    bool isLost_ = false;
    bool isHurried_ = false;
};

} // namespace fadewell::pipewire
