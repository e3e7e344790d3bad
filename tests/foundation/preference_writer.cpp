// A second process for the tests of the preference store. Its first argument says what it does, its second
// names the file; it talks in lines on its standard streams.

#include "foundation/PreferenceRecord.h"
#include "foundation/PreferenceStore.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using quillbay::PreferenceStore;
using quillbay::testing::PreferenceRecord;

namespace {

void say(const char *format, int value)
{
    std::printf(format, value);
    std::fflush(stdout);
}

bool hear(char (&line)[64])
{
    return std::fgets(line, sizeof line, stdin) != nullptr;
}

// Once told to, writes `count` values under keys of its own, into two domains.
int writeMany(const QString &path, const QString &name, int count)
{
    say("ready\n", 0);
    char line[64];
    if (!hear(line))
        return EXIT_FAILURE;
    PreferenceStore store(path);
    PreferenceStore suite = store.suite(QStringLiteral("Suite"));
    int written = 0;
    for (int i = 0; i < count; ++i) {
        const QString key = name + QString::number(i);
        const bool isWritten = store.setString(key, key) && suite.setDouble(key, i);
        written += isWritten ? 1 : 0;
    }
    say("%d\n", written);
    return EXIT_SUCCESS;
}

[[noreturn]] void writeUntilKilled(const QString &path, int number)
{
    say("pid %d\n", getpid());
    PreferenceStore store(path);
    for (;; ++number)
        say(PreferenceRecord(number).write(store) ? "%d\n" : "failed %d\n", number);
}

// For each number heard, a child that writes records from it on until it is killed. A fork costs less than a
// start.
int raiseWriters(const QString &path)
{
    char line[64];
    while (hear(line)) {
        const pid_t child = fork();
        if (child == 0)
            writeUntilKilled(path, std::atoi(line));
        int status = 0;
        if (child < 0 || waitpid(child, &status, 0) != child)
            return EXIT_FAILURE;
        say("gone %d\n", WIFSIGNALED(status) ? WTERMSIG(status) : 0);
    }
    return EXIT_SUCCESS;
}

// As an ordinary user meets a file without permission: root's own power to pass by is given up.
int useWithoutPrivilege(const QString &path)
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[2] = {};
    if (syscall(SYS_capset, &header, none) != 0)
        return EXIT_FAILURE;
    PreferenceStore store(path);
    const QString key = QStringLiteral("key");
    const QString before = store.string(key).value_or(QStringLiteral("missing"));
    const bool isKept = store.setString(key, QStringLiteral("new"));
    const QString after = store.string(key).value_or(QStringLiteral("missing"));
    std::printf("%s %s %s\n", qPrintable(before), isKept ? "kept" : "unkept", qPrintable(after));
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3)
        return EXIT_FAILURE;
    const QString path = QString::fromLocal8Bit(argv[2]);
    if (std::strcmp(argv[1], "many") == 0 && argc == 5)
        return writeMany(path, QString::fromLocal8Bit(argv[3]), std::atoi(argv[4]));
    if (std::strcmp(argv[1], "raise") == 0)
        return raiseWriters(path);
    if (std::strcmp(argv[1], "unprivileged") == 0)
        return useWithoutPrivilege(path);
    return EXIT_FAILURE;
}
