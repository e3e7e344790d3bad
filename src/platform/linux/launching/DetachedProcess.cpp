#include "platform/linux/launching/DetachedProcess.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

using Step = DetachedStart::Step;

constexpr int firstPrivateDescriptor = 3;
constexpr std::size_t pidDigits = 12;

struct Report
{
    pid_t pid;
    Step failed;
    int error;
};

// Everything that the child needs, made before the fork: afterwards only async-signal-safe calls are allowed.
struct Prepared
{
    explicit Prepared(const DetachedProcess &process)
        : program(process.program.constData())
        , workingDirectory(process.workingDirectory.constData())
        , descriptorLimit(sysconf(_SC_OPEN_MAX))
        , argumentBytes(process.arguments)
        , environmentBytes(process.environment)
    {
        if (!process.pidVariable.isEmpty()) {
            environmentBytes.append(process.pidVariable + '=' + QByteArray(pidDigits, '\0'));
            pidValue = environmentBytes.last().data() + process.pidVariable.size() + 1;
        }
        arguments = pointers(argumentBytes);
        environment = pointers(environmentBytes);
    }

    static std::vector<char *> pointers(QByteArrayList &strings)
    {
        std::vector<char *> result;
        result.reserve(static_cast<std::size_t>(strings.size()) + 1);
        for (QByteArray &string : strings)
            result.push_back(string.data());
        result.push_back(nullptr);
        return result;
    }

    const char *program;
    const char *workingDirectory;
    long descriptorLimit;
    QByteArrayList argumentBytes;
    QByteArrayList environmentBytes;
    std::vector<char *> arguments;
    std::vector<char *> environment;
    char *pidValue = nullptr;
};

void send(int descriptor, const Report &report)
{
    ssize_t written = 0;
    do
        written = write(descriptor, &report, sizeof report);
    while (written < 0 && errno == EINTR);
}

void resetSignals()
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    // The kernel refuses KILL and STOP, the C library its own two: nothing to be done about those.
    for (int signal = 1; signal < NSIG; ++signal)
        static_cast<void>(sigaction(signal, &action, nullptr));
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

bool nullStandardStreams()
{
    const int null = open("/dev/null", O_RDWR);
    if (null < 0)
        return false;
    for (int stream = 0; stream < firstPrivateDescriptor; ++stream) {
        if (dup2(null, stream) < 0)
            return false;
    }
    return null < firstPrivateDescriptor || close(null) == 0;
}

// Marks instead of closing: the pipe that reports a failed execve must live until it has succeeded.
void dropDescriptors(long limit)
{
    if (close_range(firstPrivateDescriptor, ~0U, CLOSE_RANGE_CLOEXEC) == 0)
        return;
    for (long descriptor = firstPrivateDescriptor; descriptor < limit; ++descriptor)
        static_cast<void>(fcntl(static_cast<int>(descriptor), F_SETFD, FD_CLOEXEC));
}

[[noreturn]] void becomeProgram(const Prepared &prepared, int reports)
{
    const auto fail = [reports](Step step) {
        send(reports, {0, step, errno});
        _exit(127);
    };
    if (setsid() < 0)
        fail(Step::Prepare);
    if (!nullStandardStreams())
        fail(Step::Descriptors);
    dropDescriptors(prepared.descriptorLimit);
    if (chdir(prepared.workingDirectory) != 0)
        fail(Step::WorkingDirectory);
    if (prepared.pidValue)
        *std::to_chars(prepared.pidValue, prepared.pidValue + pidDigits - 1, getpid()).ptr = '\0';
    resetSignals();
    execve(prepared.program, prepared.arguments.data(), prepared.environment.data());
    fail(Step::Execute);
    _exit(127);
}

// The child in between ends at once, so that the program gets the session's reaper for a parent.
[[noreturn]] void becomeGoBetween(const Prepared &prepared, int reports)
{
    const pid_t child = fork();
    if (child == 0)
        becomeProgram(prepared, reports);
    send(reports, child < 0 ? Report{0, Step::Prepare, errno} : Report{child, Step::None, 0});
    _exit(0);
}

struct Pipe
{
    int read = -1;
    int write = -1;
};

// The writing end lies above the standard streams, which the child replaces even if we were started without
// them.
std::optional<Pipe> openPipe()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return std::nullopt;
    const int raised = fcntl(ends[1], F_DUPFD_CLOEXEC, firstPrivateDescriptor);
    const int error = errno;
    close(ends[1]);
    if (raised < 0) {
        close(ends[0]);
        errno = error;
        return std::nullopt;
    }
    return Pipe{ends[0], raised};
}

// Ends when the last writing end is closed: by execve, or by the end of the child.
DetachedStart collect(int reports)
{
    DetachedStart result;
    for (;;) {
        Report report;
        const ssize_t got = read(reports, &report, sizeof report);
        if (got < 0 && errno == EINTR)
            continue;
        if (got != static_cast<ssize_t>(sizeof report))
            break;
        if (report.failed == Step::None) {
            result.pid = report.pid;
        } else {
            result.failed = report.failed;
            result.error = report.error;
        }
    }
    if (result.failed != Step::None)
        result.pid = 0;
    else if (result.pid == 0)
        result = {0, Step::Prepare, ECHILD};
    return result;
}

void reap(pid_t child)
{
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace

DetachedStart startDetached(const DetachedProcess &process)
{
    const Prepared prepared(process);
    const std::optional<Pipe> reports = openPipe();
    if (!reports)
        return {0, Step::Prepare, errno};

    // No handler of ours may run in the child before it has reset them.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t child = fork();
    if (child == 0)
        becomeGoBetween(prepared, reports->write);
    const int error = errno;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);

    close(reports->write);
    DetachedStart result{0, Step::Prepare, error};
    if (child > 0) {
        result = collect(reports->read);
        reap(child);
    }
    close(reports->read);
    return result;
}

} // namespace quillbay::platform
