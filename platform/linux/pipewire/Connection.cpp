#include "platform/linux/pipewire/Connection.h"

#include "platform/linux/pipewire/SignalBlock.h"

#include <spa/support/thread.h>

#include <cerrno>
#include <cstring>
#include <fmt/format.h>
#include <pthread.h>
#include <utility>

namespace fadewell::pipewire {

namespace {

// Above ordinary threads, below every audio thread.
constexpr int loopPriority = 20;
// A server that is restarted is back within a second or two; one that stays away costs little, and
// is still found well within a second.
constexpr long quickRetry = 50 * SPA_NSEC_PER_MSEC;
constexpr long slowRetry = 400 * SPA_NSEC_PER_MSEC;
constexpr int quickRetries = 100;

void initializeLibrary()
{
    static const bool initialized = [] {
        pw_init(nullptr, nullptr);
        return true;
    }();
    static_cast<void>(initialized);
}

pw_properties* clientProperties(const Connection::Options& options)
{
    pw_properties* properties = pw_properties_new(PW_KEY_APP_NAME,
                                                  "Fadewell",
                                                  PW_KEY_APP_ID,
                                                  "app.fadewell.Fadewell",
                                                  PW_KEY_MEDIA_CATEGORY,
                                                  "Manager",
                                                  nullptr);
    if (!options.remote.empty()) {
        pw_properties_set(properties, PW_KEY_REMOTE_NAME, options.remote.c_str());
    }
    if (!options.access.empty()) {
        pw_properties_set(properties, PW_KEY_CLIENT_ACCESS, options.access.c_str());
    }
    return properties;
}

} // namespace

Connection::Connection(Options options)
    : options_(std::move(options))
{}

std::unique_ptr<Connection> Connection::open(Options options, std::string& error)
{
    const SignalBlock block;
    initializeLibrary();
    std::unique_ptr<Connection> connection(new Connection(std::move(options)));
    return connection->start(error) ? std::move(connection) : nullptr;
}

bool Connection::start(std::string& error)
{
    loop_ = pw_thread_loop_new("fadewell-pw", nullptr);
    if (loop_ == nullptr) {
        error = fmt::format("PipeWire's loop can't be made: {}", std::strerror(errno));
        return false;
    }
    context_ =
        pw_context_new(loop(), pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr), 0);
    if (context_ == nullptr) {
        error = fmt::format("PipeWire's client configuration can't be loaded: {}",
                            std::strerror(errno));
        return false;
    }
    lost_ = pw_loop_add_event(loop(), &Connection::onLost, this);
    retry_ = pw_loop_add_timer(loop(), &Connection::onRetry, this);
    if (heartbeat()) {
        questions_ = pw_loop_add_io(
            loop(), heartbeat()->questions(), SPA_IO_IN, false, &Connection::onQuestion, this);
    }
    if (lost_ == nullptr || retry_ == nullptr || pw_thread_loop_start(loop_) < 0) {
        error = fmt::format("PipeWire's loop can't be started: {}", std::strerror(errno));
        return false;
    }
    return true;
}

void Connection::hurry() const
{
    auto* const utils = static_cast<spa_thread_utils*>(
        pw_context_get_object(context_, SPA_TYPE_INTERFACE_ThreadUtils));
    if (utils != nullptr) {
        // The library's threads are POSIX threads under another name.
        auto* const thread =
            reinterpret_cast<spa_thread*>(static_cast<std::uintptr_t>(pthread_self()));
        spa_thread_utils_acquire_rt(utils, thread, loopPriority);
    }
}

Connection::~Connection()
{
    if (loop_ == nullptr) {
        return;
    }
    pw_thread_loop_stop(loop_);
    disconnect();
    for (spa_source* const source : {lost_, retry_, questions_}) {
        if (source != nullptr) {
            pw_loop_destroy_source(loop(), source);
        }
    }
    if (context_ != nullptr) {
        pw_context_destroy(context_);
    }
    pw_thread_loop_destroy(loop_);
}

int Connection::connect()
{
    disconnect();
    const SignalBlock block;
    core_ = pw_context_connect(context_, clientProperties(options_), 0);
    if (core_ == nullptr) {
        return errno > 0 ? -errno : -EIO;
    }
    isLost_ = false;
    lastSync_ = lastDone_ = 0;
    pw_core_add_listener(core_, &coreHook_, &coreEvents(), this);
    return 0;
}

void Connection::reconnect(std::function<void()> connected)
{
    reconnected_ = std::move(connected);
    quickRetries_ = quickRetries;
    retryEvery(reconnected_ ? quickRetry : 0);
}

void Connection::retryEvery(long nanoseconds)
{
    timespec interval = {.tv_sec = 0, .tv_nsec = nanoseconds};
    pw_loop_update_timer(loop(), retry_, &interval, &interval, false);
}

void Connection::onRetry(void* data, std::uint64_t /*expirations*/)
{
    auto& self = *static_cast<Connection*>(data);
    if (self.isConnected() || self.connect() == 0) {
        self.retryEvery(0);
        if (const auto connected = std::exchange(self.reconnected_, nullptr)) {
            connected();
        }
    } else if (--self.quickRetries_ == 0) {
        self.retryEvery(slowRetry);
    }
}

void Connection::onQuestion(void* data, int /*descriptor*/, std::uint32_t /*events*/)
{
    static_cast<Connection*>(data)->heartbeat()->answer();
}

void Connection::disconnect()
{
    if (pw_core* const core = std::exchange(core_, nullptr)) {
        spa_hook_remove(&coreHook_);
        pw_core_disconnect(core);
    }
}

bool Connection::waitFor(double seconds, const std::function<bool()>& done)
{
    if (done() || isLoopThread()) {
        return done();
    }
    timespec deadline = {};
    pw_thread_loop_get_time(
        loop_,
        &deadline,
        static_cast<std::int64_t>(seconds * static_cast<double>(SPA_NSEC_PER_SEC)));
    while (isConnected() && !done()) {
        if (pw_thread_loop_timed_wait_full(loop_, &deadline) < 0) {
            break;
        }
    }
    return done();
}

bool Connection::roundTrip(double seconds)
{
    if (!isConnected()) {
        return false;
    }
    const int wanted = lastSync_ = pw_core_sync(core_, PW_ID_CORE, lastSync_);
    return waitFor(seconds, [this, wanted] { return lastDone_ == wanted; });
}

std::uint32_t Connection::clientID() const
{
    return core_ == nullptr
               ? SPA_ID_INVALID
               : pw_proxy_get_bound_id(reinterpret_cast<pw_proxy*>(pw_core_get_client(core_)));
}

const pw_core_events& Connection::coreEvents()
{
    static const pw_core_events events = [] {
        pw_core_events table = {};
        table.version = PW_VERSION_CORE_EVENTS;
        table.info = &Connection::onCoreInfo;
        table.done = &Connection::onCoreDone;
        table.error = &Connection::onCoreError;
        return table;
    }();
    return events;
}

void Connection::onCoreInfo(void* data, const pw_core_info* info)
{
    static_cast<Connection*>(data)->serverVersion_ = info->version ? info->version : "";
}

void Connection::onCoreDone(void* data, std::uint32_t id, int sequence)
{
    auto& self = *static_cast<Connection*>(data);
    if (id == PW_ID_CORE) {
        self.lastDone_ = sequence;
        if (!std::exchange(self.isHurried_, true)) {
            self.hurry();
        }
        self.signal();
    }
}

void Connection::onCoreError(
    void* data, std::uint32_t id, int /*sequence*/, int result, const char* /*message*/)
{
    auto& self = *static_cast<Connection*>(data);
    if (id == PW_ID_CORE && result == -EPIPE && !self.isLost_) {
        self.isLost_ = true;
        self.signal();
        pw_loop_signal_event(self.loop(), self.lost_);
    }
}

void Connection::onLost(void* data, std::uint64_t /*count*/)
{
    auto& self = *static_cast<Connection*>(data);
    if (self.isLost_ && self.disconnected_) {
        self.disconnected_();
    }
}

} // namespace fadewell::pipewire
