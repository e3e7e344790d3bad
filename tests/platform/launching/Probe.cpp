// Stands in for a launched program: probe FILE [--until OTHER] [anything...]
// Writes what it was started with to FILE, line by line ("argument x", "variable NAME=value", "descriptor 3
// target"), and ends; with --until it then waits for OTHER to appear, answers by OTHER.seen, and ends.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <unistd.h>

namespace {

void writeDescriptors(FILE *out)
{
    DIR *folder = opendir("/proc/self/fd");
    if (!folder)
        return;
    while (const dirent *entry = readdir(folder)) {
        const int descriptor = std::atoi(entry->d_name);
        if (entry->d_name[0] == '.' || descriptor == dirfd(folder) || descriptor == fileno(out))
            continue;
        char target[4096] = {};
        if (readlink(("/proc/self/fd/" + std::string(entry->d_name)).c_str(), target, sizeof target - 1) > 0)
            std::fprintf(out, "descriptor %d %s\n", descriptor, target);
    }
    closedir(folder);
}

void writeSignals(FILE *out)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("SigBlk:") || line.starts_with("SigIgn:"))
            std::fprintf(out, "%s %s\n", line.substr(0, 6).c_str(), line.substr(8).c_str());
    }
}

bool writeReport(const std::string &path, char **arguments, char **variables)
{
    const std::string draft = path + ".draft";
    FILE *out = std::fopen(draft.c_str(), "w");
    if (!out)
        return false;
    for (char **argument = arguments; *argument; ++argument)
        std::fprintf(out, "argument %s\n", *argument);
    for (char **variable = variables; *variable; ++variable)
        std::fprintf(out, "variable %s\n", *variable);
    char folder[4096] = {};
    std::fprintf(out, "directory %s\n", getcwd(folder, sizeof folder) ? folder : "");
    std::fprintf(out, "process %d\nparent %d\nsession %d\n", getpid(), getppid(), getsid(0));
    writeSignals(out);
    writeDescriptors(out);
    return std::fclose(out) == 0 && std::rename(draft.c_str(), path.c_str()) == 0;
}

bool waitFor(const std::string &path)
{
    const timespec pause{0, 5'000'000};
    for (int i = 0; i < 6000; ++i) {
        if (access(path.c_str(), F_OK) == 0)
            return true;
        nanosleep(&pause, nullptr);
    }
    return false;
}

} // namespace

int main(int count, char **arguments, char **variables)
{
    if (count < 2 || !writeReport(arguments[1], arguments, variables))
        return 1;
    if (count < 4 || std::string_view(arguments[2]) != "--until")
        return 0;
    const std::string other = arguments[3];
    return waitFor(other) && std::ofstream(other + ".seen").put('\n') ? 0 : 1;
}
