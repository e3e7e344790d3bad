#include "platform/linux/launching/DetachedProcess.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstddef>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

using Step = DetachedStart::Step;

constexpr int firstPrivateDescriptor = 3;
constexpr std::size_t pidDigits = 12;

using ChildStack = std::array<std::byte, 64 * 1024>;

// Written by the children, who share our memory until the program has been executed.
struct Report
{
    volatile pid_t pid = 0;
    volatile Step failed = Step::None;
    volatile int error = 0;
};

// Everything that the children need, made before they are: they may only make async-signal-safe calls, and
// leave nothing behind in our memory but the report and the process id.
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

void dropDescriptors(long limit)
{
    if (close_range(firstPrivateDescriptor, ~0U, 0) == 0)
        return;
    for (long descriptor = firstPrivateDescriptor; descriptor < limit; ++descriptor)
        close(static_cast<int>(descriptor));
}

// What a child returns is its exit status.
int fail(Report &report, Step step)
{
    report.error = errno;
    report.failed = step;
    return 127;
}

struct Context
{
    const Prepared &prepared;
    Report report;
    alignas(std::max_align_t) ChildStack goBetweenStack;
    alignas(std::max_align_t) ChildStack programStack;
};

// As posix_spawn does it: the child borrows our memory, on a stack of its own, and the call returns when it
// has executed a program or ended. No page is copied, however large we are. Not vfork: the sanitizers'
// version of it cannot be nested.
pid_t spawn(int (*child)(void *), ChildStack &stack, Context *context)
{
    return clone(child, stack.data() + stack.size(), CLONE_VM | CLONE_VFORK | SIGCHLD, context);
}

int becomeProgram(void *argument)
{
    auto *context = static_cast<Context *>(argument);
    const Prepared &prepared = context->prepared;
    if (setsid() < 0)
        return fail(context->report, Step::Prepare);
    if (!nullStandardStreams())
        return fail(context->report, Step::Descriptors);
    dropDescriptors(prepared.descriptorLimit);
    if (chdir(prepared.workingDirectory) != 0)
        return fail(context->report, Step::WorkingDirectory);
    if (prepared.pidValue)
        *std::to_chars(prepared.pidValue, prepared.pidValue + pidDigits - 1, getpid()).ptr = '\0';
    resetSignals();
    execve(prepared.program, prepared.arguments.data(), prepared.environment.data());
    return fail(context->report, Step::Execute);
}

// The child in between ends at once, so that the program gets the session's reaper for a parent.
int becomeGoBetween(void *argument)
{
    auto *context = static_cast<Context *>(argument);
    const pid_t child = spawn(becomeProgram, context->programStack, context);
    if (child < 0)
        return fail(context->report, Step::Prepare);
    context->report.pid = child;
    return 0;
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
    const std::unique_ptr<Context> context(new Context{prepared, {}, {}, {}});

    // No handler of ours may run in a child before it has reset them.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t child = spawn(becomeGoBetween, context->goBetweenStack, context.get());
    const int error = errno;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);

    if (child < 0)
        return {0, Step::Prepare, error};
    reap(child);
    const Report &report = context->report;
    if (report.failed != Step::None)
        return {0, report.failed, report.error};
    // Only a go-between that was killed reports neither.
    return report.pid > 0 ? DetachedStart{report.pid, Step::None, 0}
                          : DetachedStart{0, Step::Prepare, ECHILD};
}

} // namespace quillbay::platform
