#include "posix/PosixProcess.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fw {

namespace {

struct Started {
    bool ok = false;
    pid_t pid = -1;
};

// Starts the program; a failed exec is reported through a close-on-exec pipe, so "started" means
// the program image really runs.
Started Spawn(const std::string& program, const std::vector<std::string>& args, const std::string& folder,
              int outFd)
{
    std::vector<std::string> all;
    all.push_back(program);
    all.insert(all.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (auto& a : all)
        argv.push_back(a.data());
    argv.push_back(nullptr);

    int report[2];
    if (::pipe2(report, O_CLOEXEC) != 0)
        return {};
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(report[0]);
        ::close(report[1]);
        return {};
    }
    if (pid == 0) {
        // Only async-signal-safe calls from here on.
        const int devnull = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        if (devnull >= 0) {
            ::dup2(devnull, 0);
            ::dup2(outFd >= 0 ? outFd : devnull, 1);
            ::dup2(devnull, 2);
        }
        if (!folder.empty() && ::chdir(folder.c_str()) != 0) {
            const int e = errno;
            (void)!::write(report[1], &e, sizeof e);
            ::_exit(127);
        }
        ::execvp(argv[0], argv.data());
        const int e = errno;
        (void)!::write(report[1], &e, sizeof e);
        ::_exit(127);
    }
    ::close(report[1]);
    int childErrno = 0;
    ssize_t n;
    do {
        n = ::read(report[0], &childErrno, sizeof childErrno);
    } while (n < 0 && errno == EINTR);
    ::close(report[0]);
    if (n > 0) {
        int status = 0;
        while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
        }
        return {};
    }
    return {true, pid};
}

int Wait(pid_t pid)
{
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR)
            return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

ProcessResult PosixProcess::RunHiddenAndWait(const std::string& program, const std::vector<std::string>& args,
                                             const std::string& workingFolder)
{
    ProcessResult r;
    const Started s = Spawn(program, args, workingFolder, -1);
    if (!s.ok)
        return r;
    r.started = true;
    r.exitCode = Wait(s.pid);
    return r;
}

bool PosixProcess::RunAndCapture(const std::string& program, const std::vector<std::string>& args,
                                 std::string& output, int& exitCode)
{
    output.clear();
    exitCode = -1;
    int out[2];
    if (::pipe2(out, O_CLOEXEC) != 0)
        return false;
    const Started s = Spawn(program, args, {}, out[1]);
    ::close(out[1]);
    if (!s.ok) {
        ::close(out[0]);
        return false;
    }
    char buf[4096];
    for (;;) {
        const ssize_t n = ::read(out[0], buf, sizeof buf);
        if (n > 0)
            output.append(buf, static_cast<std::size_t>(n));
        else if (n == 0 || errno != EINTR)
            break;
    }
    ::close(out[0]);
    exitCode = Wait(s.pid);
    return true;
}

} // namespace fw
