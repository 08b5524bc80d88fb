#include "tests/integration/support/ChildProcess.h"

#include "tests/integration/support/Await.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace fadewell::integration {
namespace {

constexpr int notFound = 127;

[[noreturn]] void becomeProgram(
    const std::vector<std::string>& command, pid_t parent, int input, int output, int errors)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent || dup2(input, STDIN_FILENO) < 0 || dup2(output, STDOUT_FILENO) < 0 ||
        dup2(errors, STDERR_FILENO) < 0)
    {
        _exit(notFound);
    }
    std::vector<char*> arguments;
    for (const auto& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    _exit(notFound);
}

std::string contents(int file)
{
    std::string text;
    std::array<char, 4096> part{};
    for (off_t offset = 0;;) {
        const ssize_t count = pread(file, part.data(), part.size(), offset);
        if (count <= 0) {
            return text;
        }
        text.append(part.data(), static_cast<std::size_t>(count));
        offset += count;
    }
}

} // namespace

ChildProcess::ChildProcess(std::vector<std::string> command, bool hasInput)
    : output_(memfd_create("output", MFD_CLOEXEC))
    , errors_(memfd_create("errors", MFD_CLOEXEC))
{
    std::array<int, 2> input{-1, -1};
    if (!hasInput) {
        input[0] = open("/dev/null", O_RDONLY | O_CLOEXEC);
    } else if (pipe2(input.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t parent = getpid();
    pid_ = fork();
    if (pid_ == 0) {
        becomeProgram(command, parent, input[0], output_, errors_);
    }
    close(input[0]);
    input_ = input[1];
    if (pid_ < 0 || output_ < 0 || errors_ < 0) {
        throw std::runtime_error("can't start " + command.front());
    }
}

ChildProcess::~ChildProcess()
{
    if (pid_ > 0 && isRunning()) {
        signal(SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    for (const int file : {input_, output_, errors_}) {
        if (file >= 0) {
            close(file);
        }
    }
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : pid_(std::exchange(other.pid_, -1))
    , result_(other.result_)
    , input_(std::exchange(other.input_, -1))
    , output_(std::exchange(other.output_, -1))
    , errors_(std::exchange(other.errors_, -1))
{}

bool ChildProcess::isRunning()
{
    int status = 0;
    if (!result_ && waitpid(pid_, &status, WNOHANG) == pid_) {
        result_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    return !result_;
}

void ChildProcess::signal(int number) const
{
    if (!result_) {
        kill(pid_, number);
    }
}

std::optional<int> ChildProcess::wait(std::chrono::milliseconds deadline)
{
    if (!await([this] { return !isRunning(); }, deadline)) {
        return std::nullopt;
    }
    return result_;
}

void ChildProcess::endInput()
{
    close(std::exchange(input_, -1));
}

std::string ChildProcess::output() const
{
    return contents(output_);
}

std::string ChildProcess::errors() const
{
    return contents(errors_);
}

CommandResult runCommand(std::vector<std::string> command)
{
    const std::string name = command.front();
    ChildProcess child(std::move(command));
    const auto code = child.wait();
    if (!code) {
        throw std::runtime_error(name + " did not end: " + child.errors());
    }
    return {*code, child.output(), child.errors()};
}

CommandResult runTool(const std::vector<std::string>& command)
{
    constexpr int timedOut = 124;
    std::vector<std::string> bounded{"timeout", "2"};
    bounded.insert(bounded.end(), command.begin(), command.end());
    CommandResult result{timedOut, {}, {}};
    for (int attempt = 0; attempt < 3 && result.code == timedOut; ++attempt) {
        result = runCommand(bounded);
    }
    return result;
}

} // namespace fadewell::integration
