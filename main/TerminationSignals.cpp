#include "main/TerminationSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace fadewell {
namespace {

constexpr std::array<int, 3> handled{SIGTERM, SIGINT, SIGHUP};

// A handler reaches nothing but globals: [0] is read by the loop, [1] written by the handler.
std::array<int, 2> sockets{-1, -1};

extern "C" void noteSignal(int signal)
{
    const int savedErrno = errno;
    const auto byte = static_cast<unsigned char>(signal);
    // A full socket means that the loop has plenty to read already.
    static_cast<void>(!write(sockets[1], &byte, 1));
    errno = savedErrno;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets.data()) != 0) {
        throw std::system_error(errno, std::generic_category(), "socketpair");
    }
    struct sigaction action = {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigset_t blocked;
    sigemptyset(&blocked);
    for (const int signal : handled) {
        sigaction(signal, &action, nullptr);
        sigaddset(&blocked, signal);
    }
    sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    for (const int signal : handled) {
        ::signal(signal, SIG_IGN); // The program is past the point where they mean anything.
    }
    notifier_.reset();
    close(sockets[0]);
    close(sockets[1]);
}

void TerminationSignals::deliver(std::function<void(int)> terminate)
{
    terminate_ = std::move(terminate);
    notifier_ = std::make_unique<QSocketNotifier>(sockets[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        unsigned char byte = 0;
        if (read(sockets[0], &byte, 1) == 1) {
            terminate_(byte);
        }
    });
}

} // namespace fadewell
