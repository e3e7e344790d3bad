// Does as root what pkexec's caller asked for and the person agreed to: one removal or one move.
//
//   quillbay-elevate file=DEVICE:INODE:KIND[,escaped] COMMAND
//
// COMMAND is one of the two lines of CommandLine.h, with `%XX` for bytes that are no printable text where the
// first argument says "escaped". The first argument also names the file that is meant: another one at that
// path is left alone. Paths are taken as they stand, free of links, `.` and `..`.
//
// The first line of the output says that the helper runs: exit codes without it are pkexec's own. Then: 0
// done, 1 failed, 2 no such command, 3 protected, 4 another file than was meant; why is on the error output,
// without a path.

#include "elevate/CommandLine.h"
#include "elevate/MountTable.h"
#include "elevate/ProtectedFolders.h"
#include "elevate/TreeMove.h"
#include "elevate/TreeRemoval.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

using namespace quillbay::elevate;

namespace {

enum Exit { ExitDone = 0, ExitFailed = 1, ExitUsage = 2, ExitProtected = 3, ExitChanged = 4 };

struct Request
{
    FileMark file;
    Command command;
};

std::optional<Request> parseRequest(int argc, char **argv)
{
    constexpr std::string_view prefix = "file=";
    constexpr std::string_view suffix = ",escaped";
    if (argc != 3 || std::strncmp(argv[1], prefix.data(), prefix.size()) != 0)
        return std::nullopt;
    std::string_view mark = std::string_view(argv[1]).substr(prefix.size());
    std::optional<std::string> line = argv[2];
    if (mark.size() > suffix.size() && mark.substr(mark.size() - suffix.size()) == suffix) {
        mark.remove_suffix(suffix.size());
        line = unescaped(*line);
    }
    const auto file = parseMark(mark);
    auto command = line ? parseCommand(*line) : std::nullopt;
    if (!file || !command)
        return std::nullopt;
    return Request{*file, std::move(*command)};
}

int report(Exit code, const char *why)
{
    // Whoever does not read the reason still gets the code.
    static_cast<void>(std::fprintf(stderr, "%s\n", why));
    return code;
}

int report(const Outcome &outcome)
{
    switch (outcome.status) {
    case Status::Done:
        return ExitDone;
    case Status::Missing:
        return report(ExitFailed, "There is no such file");
    case Status::Changed:
        return report(ExitChanged, "There is another file than the one that was meant");
    case Status::Mounted:
        return report(ExitProtected, "A file system is mounted there");
    case Status::Occupied:
        return report(ExitFailed, "There is something at the destination");
    case Status::Unsafe:
        return report(ExitUsage, "The path leads through a link or is not absolute");
    case Status::Failed:
        break;
    }
    return report(ExitFailed, std::strerror(outcome.error));
}

unsigned callingUser()
{
    const char *user = std::getenv("PKEXEC_UID");
    return user ? unsigned(std::strtoul(user, nullptr, 10)) : getuid();
}

int run(const Request &request)
{
    const Command &command = request.command;
    if (!isPlainPath(command.source) ||
        (command.kind == Command::Kind::Move && !isPlainPath(command.destination)))
        return report({Status::Unsafe, 0});
    if (isProtected(protectedFolders(callingUser()), command.source))
        return report(ExitProtected, "That folder is protected");
    const OpenedEntry source = openEntry(command.source);
    if (!source.outcome.done())
        return report(source.outcome);
    if (holdsMount(command.source))
        return report({Status::Mounted, 0});

    if (command.kind == Command::Kind::Remove) {
        const Outcome removed = removeTree(source.entry, request.file);
        return report(removed.status == Status::Missing ? Outcome() : removed);
    }
    const OpenedEntry destination = openEntry(command.destination);
    if (!destination.outcome.done())
        return report(destination.outcome);
    return report(moveTree(source.entry, destination.entry, request.file));
}

} // namespace

int main(int argc, char **argv)
{
    // Who asked may be gone by now: what has begun is finished all the same.
    for (const int signal : {SIGPIPE, SIGHUP, SIGINT, SIGTERM})
        std::signal(signal, SIG_IGN);
    umask(S_IRWXG | S_IRWXO);
    if (std::puts("quillbay-elevate: started") < 0 || std::fflush(stdout) != 0)
        return report(ExitFailed, "Nobody listens");
    if (chdir("/") != 0)
        return report(ExitFailed, std::strerror(errno));
    const auto request = parseRequest(argc, argv);
    return request ? run(*request) : report(ExitUsage, "There is no such command");
}
