#include "base/ThreadQueue.h"

#include "base/TimedTasks.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <thread>
#include <utility>

namespace fadewell {

/// Shared with the thread, which may outlive the queue by the task that dropped it.
struct ThreadQueue::State {
    explicit State(std::shared_ptr<Clock> source)
        : clock(std::move(source))
    {}

    void add(double seconds, TimedTasks::Entry entry);
    std::optional<TimedTasks::Entry> waitForNext();
    void run();

    const std::shared_ptr<Clock> clock;
    std::mutex mutex;
    std::condition_variable changed;
    TimedTasks tasks;
    bool isStopping = false;
    std::atomic<std::thread::id> threadID;
};

void ThreadQueue::State::add(double seconds, TimedTasks::Entry entry)
{
    const std::lock_guard lock(mutex);
    tasks.add(clock->uptime() + std::max(seconds, 0.0), std::move(entry));
    changed.notify_one();
}

std::optional<TimedTasks::Entry> ThreadQueue::State::waitForNext()
{
    std::unique_lock lock(mutex);
    while (!isStopping) {
        const double now = clock->uptime();
        if (auto entry = tasks.takeDue(now)) {
            return entry;
        }
        if (const auto next = tasks.next()) {
            changed.wait_for(lock, std::chrono::duration<double>(next->first - now));
        } else {
            changed.wait(lock);
        }
    }
    return std::nullopt;
}

void ThreadQueue::State::run()
{
    while (auto entry = waitForNext()) {
        if (!entry->alive || *entry->alive) {
            entry->task();
        }
    }
}

namespace {

void prepareThread(const std::string& label)
{
    sigset_t all{};
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
    // The kernel keeps 15 characters: the last ones tell the queues apart.
    const auto start = label.size() > 15 ? label.size() - 15 : 0;
    pthread_setname_np(pthread_self(), label.c_str() + start);
}

TimedTasks::Entry cancellable(Task task, double interval)
{
    return {std::move(task), interval, std::make_shared<std::atomic<bool>>(true)};
}

Timer timerFor(const TimedTasks::Entry& entry)
{
    return Timer([alive = entry.alive] { *alive = false; });
}

} // namespace

ThreadQueue::ThreadQueue(const std::string& label, std::shared_ptr<Clock> clock)
    : state_(std::make_shared<State>(std::move(clock)))
    , thread_([state = state_, label] {
        prepareThread(label);
        state->threadID = std::this_thread::get_id();
        state->run();
    })
{}

ThreadQueue::~ThreadQueue()
{
    {
        const std::lock_guard lock(state_->mutex);
        state_->isStopping = true;
        state_->changed.notify_one();
    }
    if (isCurrent()) {
        thread_.detach();
    } else {
        thread_.join();
    }
}

void ThreadQueue::async(Task task)
{
    state_->add(0, {std::move(task), 0, nullptr});
}

void ThreadQueue::sync(const Task& task)
{
    std::mutex mutex;
    std::condition_variable finished;
    bool isDone = false;
    async([&] {
        task();
        const std::lock_guard lock(mutex);
        isDone = true;
        finished.notify_one();
    });
    std::unique_lock lock(mutex);
    finished.wait(lock, [&] { return isDone; });
}

Timer ThreadQueue::after(double seconds, Task task)
{
    auto entry = cancellable(std::move(task), 0);
    auto timer = timerFor(entry);
    state_->add(seconds, std::move(entry));
    return timer;
}

Timer ThreadQueue::every(double first, double interval, double /*leeway*/, Task task)
{
    auto entry = cancellable(std::move(task), interval);
    auto timer = timerFor(entry);
    state_->add(first, std::move(entry));
    return timer;
}

Clock& ThreadQueue::clock() const
{
    return *state_->clock;
}

bool ThreadQueue::isCurrent() const
{
    return state_->threadID.load() == std::this_thread::get_id();
}

} // namespace fadewell
