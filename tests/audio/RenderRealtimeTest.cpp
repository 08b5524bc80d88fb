#include "audio/render.h"
#include "platform/simulated/BufferList.h"

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <new>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

// The linker sends these calls of the render unit through here (--wrap).
namespace {
int wrappedCalls = 0;
}
extern "C" {
void* __real_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size)
{
    ++wrappedCalls;
    return __real_malloc(size);
}
void* __real__Znwm(std::size_t size);
void* __wrap__Znwm(std::size_t size)
{
    ++wrappedCalls;
    return __real__Znwm(size);
}
void* __real__ZnwmRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag);
void* __wrap__ZnwmRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag)
{
    ++wrappedCalls;
    return __real__ZnwmRKSt9nothrow_t(size, tag);
}
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex)
{
    ++wrappedCalls;
    return __real_pthread_mutex_lock(mutex);
}
}

namespace fadewell {
namespace {

constexpr int seccompIsMissing = 77;

bool forbidSystemCalls()
{
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    const sock_fprog program{.len = 4, .filter = rules};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Runs `work` in a child that dies at its first system call. The child's wait status.
int runWithoutSystemCalls(const std::function<void()>& work)
{
    const pid_t child = fork();
    if (child == 0) {
        if (!forbidSystemCalls()) {
            _exit(seccompIsMissing);
        }
        work();
        // Directly: what a sanitizer does in _exit would count against the work.
        syscall(SYS_exit_group, 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

/// What one path needs, made beforehand, and a life of callbacks with changing targets.
class AudioThread {
public:
    AudioThread()
    {
        input_.add(1, 1024, 0.5F).add(1, 1024, -0.5F);
        interleaved_.add(2, 1024, 0.25F);
        output_.add(1, 1024).add(1, 1024);
        mono_.add(1, 1024);
    }
    ~AudioThread() { render_state_destroy(state_); }
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    void live()
    {
        for (int i = 0; i < 4000; ++i) {
            render_state_set_gain(state_, i % 50 < 25 ? 0.4F : 1.0F);
            render_state_set_duck(state_, i % 700 < 350 ? 0.2F : 1.0F);
            call(i % 3 == 0 ? interleaved_ : input_, i % 5 == 0 ? mono_ : output_);
        }
        call(none_, output_);
    }

    [[nodiscard]] const RenderState& state() const { return *state_; }

private:
    void call(BufferList& input, BufferList& output)
    {
        const AudioTimeStamp time;
        render_io_proc(2, &time, input.list(), &time, output.list(), &time, state_);
    }

    RenderState* state_ = render_state_create(1, 1, 48000);
    BufferList input_;
    BufferList interleaved_;
    BufferList none_;
    BufferList output_;
    BufferList mono_;
};

TEST(RenderRealtime, CallbackNeitherAllocatesNorLocks)
{
    wrappedCalls = 0;
    AudioThread thread;
    ASSERT_GT(wrappedCalls, 0) << "the calls are not wrapped: the test would see nothing";
    wrappedCalls = 0;
    thread.live();
    EXPECT_EQ(wrappedCalls, 0);
    EXPECT_EQ(thread.state().callbackCount, 4001U);
}

TEST(RenderRealtime, CallbackMakesNoSystemCall)
{
    AudioThread thread;
    const int status = runWithoutSystemCalls([&] { thread.live(); });
    ASSERT_TRUE(WIFEXITED(status)) << "killed by signal " << WTERMSIG(status);
    ASSERT_NE(WEXITSTATUS(status), seccompIsMissing) << "this machine filters no system calls";
    EXPECT_EQ(WEXITSTATUS(status), 0);

    const int control = runWithoutSystemCalls([&] {
        thread.live();
        syscall(SYS_getppid);
    });
    ASSERT_TRUE(WIFSIGNALED(control)) << "a system call went unnoticed";
    EXPECT_EQ(WTERMSIG(control), SIGSYS);
}

} // namespace
} // namespace fadewell
