// Runs a piece of a test in a child process with a deadline, so that a reader that blocks (a
// named pipe) or reads without end (/dev/zero) fails the test instead of holding the run.
#pragma once

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <thread>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fw::test {

enum class ChildOutcome { Passed, Failed, TimedOut, Crashed };

inline const char* OutcomeName(ChildOutcome o)
{
    switch (o) {
    case ChildOutcome::Passed: return "passed";
    case ChildOutcome::Failed: return "failed";
    case ChildOutcome::TimedOut: return "timed out";
    case ChildOutcome::Crashed: return "crashed";
    }
    return "?";
}

// work runs in a forked child; its answer is the outcome. A child still running after seconds
// is killed. The child shares nothing back but its answer: check state inside work.
inline ChildOutcome RunWithDeadline(int seconds, const std::function<bool()>& work)
{
    const pid_t pid = ::fork();
    if (pid < 0)
        return ChildOutcome::Crashed;
    if (pid == 0) {
        ::alarm(static_cast<unsigned>(seconds) + 5); // a last guard should the parent be gone
        bool ok = false;
        try {
            ok = work();
        } catch (...) {
            ok = false;
        }
        ::_exit(ok ? 0 : 1);
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    int status = 0;
    while (true) {
        const pid_t r = ::waitpid(pid, &status, WNOHANG);
        if (r == pid)
            break;
        if (r < 0)
            return ChildOutcome::Crashed;
        if (std::chrono::steady_clock::now() >= end) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, &status, 0);
            return ChildOutcome::TimedOut;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status) == 0 ? ChildOutcome::Passed : ChildOutcome::Failed;
    return ChildOutcome::Crashed;
}

} // namespace fw::test
