#include "platform/linux/supervision/Heartbeat.h"

#include <cerrno>
#include <new>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <system_error>

namespace fadewell {
namespace {

void* sharedMemory(std::size_t size)
{
    void* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::system_error(errno, std::generic_category(), "mmap");
    }
    return memory;
}

FileDescriptor makeEvent()
{
    FileDescriptor event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!event) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    return event;
}

// Neither can fail but where it doesn't matter: a full counter is readable, an empty one is empty.
void raise(const FileDescriptor& event)
{
    static_cast<void>(!eventfd_write(event.get(), 1));
}

void clear(const FileDescriptor& event)
{
    eventfd_t count = 0;
    static_cast<void>(!eventfd_read(event.get(), &count));
}

} // namespace

Heartbeat::Heartbeat()
    : page_(new (sharedMemory(sizeof(Page))) Page)
    , questions_(makeEvent())
    , wakeUps_(makeEvent())
{}

Heartbeat::~Heartbeat()
{
    munmap(page_, sizeof(Page));
}

void Heartbeat::streamStarted()
{
    if (page_->streams.fetch_add(1) == 0) {
        raise(wakeUps_);
    }
}

void Heartbeat::streamStopped()
{
    page_->streams.fetch_sub(1);
}

void Heartbeat::answer()
{
    clear(questions_);
    page_->answers.fetch_add(1);
}

Heartbeat::Reading Heartbeat::read() const
{
    clear(wakeUps_);
    Reading reading;
    reading.isWatched = page_->streams.load() > 0;
    reading.left = page_->left.load(std::memory_order_acquire);
    reading.entered = page_->entered.load(std::memory_order_relaxed);
    reading.answers = page_->answers.load();
    return reading;
}

void Heartbeat::ask()
{
    raise(questions_);
}

void Heartbeat::reset()
{
    clear(questions_);
    clear(wakeUps_);
    page_ = new (page_) Page;
}

} // namespace fadewell
