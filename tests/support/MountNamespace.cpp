#include "support/MountNamespace.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbay::testing {

namespace {

constexpr char unavailable = 'U';

bool enterNamespace()
{
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (geteuid() == 0) {
        if (unshare(CLONE_NEWNS) != 0)
            return false;
    } else {
        if (unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0)
            return false;
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
        std::ofstream("/proc/self/gid_map") << "0 " + group + " 1";
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

[[noreturn]] void runChild(int output, const std::function<std::string()> &body)
{
    std::string answer(1, unavailable);
    if (enterNamespace())
        answer = body();
    const ssize_t written = write(output, answer.data(), answer.size());
    _exit(written == ssize_t(answer.size()) ? 0 : 1);
}

} // namespace

std::optional<std::string> inMountNamespace(const std::function<std::string()> &body)
{
    int ends[2];
    if (pipe(ends) != 0)
        return "no pipe";
    const pid_t child = fork();
    if (child < 0)
        return "no child";
    if (child == 0) {
        close(ends[0]);
        runChild(ends[1], body);
    }
    close(ends[1]);
    std::string answer;
    char part[512];
    for (ssize_t count; (count = read(ends[0], part, sizeof part)) > 0;)
        answer.append(part, std::size_t(count));
    close(ends[0]);
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return "the child ended badly: " + answer;
    if (answer == std::string(1, unavailable))
        return std::nullopt;
    return answer;
}

bool mountAt(const std::string &source, const std::string &target)
{
    if (source.empty())
        return mount("tmpfs", target.c_str(), "tmpfs", 0, nullptr) == 0;
    return mount(source.c_str(), target.c_str(), nullptr, MS_BIND, nullptr) == 0;
}

} // namespace quillbay::testing
