#include "control/QtMainQueue.h"

#include "base/TimedTasks.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QTimerEvent>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace fadewell {

/// Runs what is due; lives on the main thread, is posted to from any.
class QtMainQueue::Pump final : public QObject {
public:
    explicit Pump(Clock& clock)
        : clock_(clock)
    {}

    void add(double seconds, TimedTasks::Entry entry);

    /// Called by the dying queue, whose clock may die with it.
    void close();

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void wake();
    std::vector<TimedTasks::Entry> takeBatch();
    void runBatch();
    void arm();

    Clock& clock_;
    std::mutex mutex_;
    TimedTasks tasks_;          // under mutex_
    bool isWakePosted_ = false; // under mutex_
    bool isClosed_ = false;     // under mutex_
    QBasicTimer timer_;
};

void QtMainQueue::Pump::add(double seconds, TimedTasks::Entry entry)
{
    const std::lock_guard lock(mutex_);
    tasks_.add(clock_.uptime() + std::max(seconds, 0.0), std::move(entry));
    wake();
}

void QtMainQueue::Pump::close()
{
    TimedTasks dropped; // What a task holds may post while it is destroyed: not under the mutex.
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    std::swap(dropped, tasks_);
}

void QtMainQueue::Pump::wake()
{
    if (!std::exchange(isWakePosted_, true)) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
}

bool QtMainQueue::Pump::event(QEvent* event)
{
    if (event->type() != QEvent::User) {
        return QObject::event(event);
    }
    {
        const std::lock_guard lock(mutex_);
        isWakePosted_ = false;
    }
    runBatch();
    return true;
}

void QtMainQueue::Pump::timerEvent(QTimerEvent* /*event*/)
{
    timer_.stop();
    runBatch();
}

std::vector<TimedTasks::Entry> QtMainQueue::Pump::takeBatch()
{
    const std::lock_guard lock(mutex_);
    std::vector<TimedTasks::Entry> batch;
    const double now = isClosed_ ? 0 : clock_.uptime();
    while (auto entry = tasks_.takeDue(now)) {
        batch.push_back(std::move(*entry));
    }
    return batch;
}

void QtMainQueue::Pump::runBatch()
{
    for (auto& entry : takeBatch()) {
        {
            const std::lock_guard lock(mutex_);
            if (isClosed_) {
                return;
            }
        }
        if (!entry.alive || *entry.alive) {
            entry.task();
        }
    }
    arm();
}

void QtMainQueue::Pump::arm()
{
    const std::lock_guard lock(mutex_);
    const auto next = isClosed_ ? std::nullopt : tasks_.next();
    if (!next) {
        timer_.stop();
        return;
    }
    const double wait = next->first - clock_.uptime();
    if (wait <= 0) {
        wake();
        return;
    }
    constexpr double longestWait = 24 * 3600; // Looks again after a day, far below the int's limit.
    const auto milliseconds = static_cast<int>(std::ceil(std::min(wait, longestWait) * 1000));
    timer_.start(milliseconds, Qt::PreciseTimer, this);
}

namespace {

TimedTasks::Entry cancellable(Task task, double interval)
{
    return {std::move(task), interval, std::make_shared<std::atomic<bool>>(true)};
}

Timer timerFor(const TimedTasks::Entry& entry)
{
    return Timer([alive = entry.alive] { *alive = false; });
}

} // namespace

QtMainQueue::QtMainQueue(std::shared_ptr<Clock> clock)
    : clock_(std::move(clock))
    , pump_(new Pump(*clock_))
{}

QtMainQueue::~QtMainQueue()
{
    pump_->close();
    // A task that drops the last reference still runs inside the pump.
    pump_->deleteLater();
}

void QtMainQueue::async(Task task)
{
    pump_->add(0, {std::move(task), 0, nullptr});
}

void QtMainQueue::sync(const Task& /*task*/)
{
    std::fputs("fadewell: something waited for the main queue\n", stderr);
    std::abort();
}

Timer QtMainQueue::after(double seconds, Task task)
{
    auto entry = cancellable(std::move(task), 0);
    auto timer = timerFor(entry);
    pump_->add(seconds, std::move(entry));
    return timer;
}

Timer QtMainQueue::every(double first, double interval, double /*leeway*/, Task task)
{
    auto entry = cancellable(std::move(task), interval);
    auto timer = timerFor(entry);
    pump_->add(first, std::move(entry));
    return timer;
}

Clock& QtMainQueue::clock() const
{
    return *clock_;
}

bool QtMainQueue::isCurrent() const
{
    return QThread::currentThread() == pump_->thread();
}

} // namespace fadewell
