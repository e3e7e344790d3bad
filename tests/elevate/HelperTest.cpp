#include "elevate/FileFixture.h"
#include "support/MountNamespace.h"

#include <csignal>

#include <fcntl.h>
#include <pwd.h>
#include <sys/wait.h>

namespace quillbay::elevate {

using namespace ::quillbay::testing;

namespace {

struct Answer
{
    int exitCode = -1;
    std::string output;
    std::string errors;
};

std::string readAll(int descriptor)
{
    std::string text;
    char part[256];
    for (ssize_t count; (count = read(descriptor, part, sizeof part)) > 0;)
        text.append(part, std::size_t(count));
    close(descriptor);
    return text;
}

Answer runHelper(std::vector<std::string> arguments)
{
    int output[2];
    int errors[2];
    if (pipe(output) != 0 || pipe(errors) != 0)
        return {};
    arguments.insert(arguments.begin(), QUILLBAY_ELEVATE);
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        dup2(output[1], STDOUT_FILENO);
        dup2(errors[1], STDERR_FILENO);
        execv(QUILLBAY_ELEVATE, pointers.data());
        _exit(99);
    }
    close(output[1]);
    close(errors[1]);
    Answer answer;
    answer.output = readAll(output[0]);
    answer.errors = readAll(errors[0]);
    int status = 0;
    if (waitpid(child, &status, 0) == child && WIFEXITED(status))
        answer.exitCode = WEXITSTATUS(status);
    return answer;
}

std::string quoted(const std::string &path)
{
    std::string result = "'";
    for (const char byte : path)
        result += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    return result + '\'';
}

std::string markText(const FileMark &mark)
{
    return "file=" + std::to_string(mark.device) + ':' + std::to_string(mark.inode) + ':' +
           std::to_string(mark.kind);
}

// A mark of no file: should a refusal ever be missing, nothing is removed all the same.
const char nobody[] = "file=1:1:1";

} // namespace

class Helper : public FileTest
{
protected:
    Answer remove(const std::string &path) const
    {
        return runHelper({markText(mark(path)), "rm -rf " + quoted(path)});
    }
};

TEST_F(Helper, RemovesAndMovesWhatItIsTold)
{
    HostileTree tree(23, outside);
    for (int i = 0; i < 100; ++i) {
        SCOPED_TRACE(i);
        const std::string row = rows + '/' + tree.name();
        const std::string target = rows + '/' + tree.name();
        tree.make(row);
        const Answer moved = runHelper({markText(mark(row)), "mv " + quoted(row) + ' ' + quoted(target)});
        ASSERT_EQ(moved.exitCode, 0) << moved.errors;
        ASSERT_EQ(moved.output, "quillbay-elevate: started\n");
        ASSERT_FALSE(exists(row));
        ASSERT_EQ(remove(target).exitCode, 0);
        ASSERT_TRUE(std::filesystem::is_empty(rows));
        ASSERT_EQ(damage(), "");
    }
    // Removing what is gone is no failure, as of the command that it stands for.
    EXPECT_EQ(runHelper({nobody, "rm -rf " + quoted(rows + "/nothing")}).exitCode, 0);
    EXPECT_EQ(runHelper({nobody, "mv " + quoted(rows + "/nothing") + ' ' + quoted(rows + "/b")}).exitCode, 1);
}

TEST_F(Helper, EscapedLinesAreTheSameLines)
{
    const std::string row = rows + "/a\n\xff%41";
    writeFile(row, "x");
    EXPECT_EQ(runHelper({markText(mark(row)), "rm -rf '" + rows + "/a%0A%FF%2541'"}).exitCode, 0)
        << "without the word, a percent sign is one, and the file is not there";
    EXPECT_TRUE(exists(row));
    EXPECT_EQ(runHelper({markText(mark(row)) + ",escaped", "rm -rf '" + rows + "/a%0A%FF%2541'"}).exitCode,
              0);
    EXPECT_FALSE(exists(row));
}

TEST_F(Helper, RefusesProtectedFoldersWhateverTheyAreCalled)
{
    std::vector<std::string> paths = {"/etc",     "/home",         "/usr",  "/usr/share",
                                      "/etc/xdg", "/home/anybody", "/proc", "/var/lib/dpkg/info",
                                      "/tmp"};
    if (const passwd *account = getpwuid(getuid()); account && std::string(account->pw_dir) != "/") {
        const std::string home = account->pw_dir;
        for (const char *base : {"", "/.config", "/.local", "/.local/share", "/.cache", "/.local/state"})
            paths.push_back(home + base);
    }
    for (const std::string &path : paths) {
        const Answer removed = runHelper({nobody, "rm -rf " + quoted(path)});
        EXPECT_EQ(removed.exitCode, 3) << path << ": " << removed.errors;
        EXPECT_EQ(runHelper({nobody, "mv " + quoted(path) + ' ' + quoted(rows + "/x")}).exitCode, 3) << path;
    }
    for (const char *path : {"/", "//", "/.", "/..", "", ".", "/tmp/..", "/etc/", "/tmp/../etc", "/home//x"})
        EXPECT_EQ(runHelper({nobody, "rm -rf " + quoted(path)}).exitCode, 2) << path;
    EXPECT_TRUE(std::filesystem::is_empty(rows));
}

TEST_F(Helper, LeavesAloneWhatWasSwapped)
{
    const std::string row = rows + "/row";
    writeFile(row, "scanned");
    const std::string before = markText(mark(row));
    std::filesystem::rename(row, rows + "/old");
    std::filesystem::create_symlink(outside + "/file1", row);
    EXPECT_EQ(runHelper({before, "rm -rf " + quoted(row)}).exitCode, 4);
    EXPECT_EQ(runHelper({before, "mv " + quoted(row) + ' ' + quoted(rows + "/to")}).exitCode, 4);
    EXPECT_TRUE(exists(row));
    // The folder swapped for a link to one with a file of the same name.
    std::filesystem::create_directory(rows + "/folder");
    writeFile(rows + "/folder/file1", "x");
    const std::string inFolder = markText(mark(rows + "/folder/file1"));
    std::filesystem::rename(rows + "/folder", rows + "/oldfolder");
    std::filesystem::create_directory_symlink(outside, rows + "/folder");
    EXPECT_EQ(runHelper({inFolder, "rm -rf " + quoted(rows + "/folder/file1")}).exitCode, 2);
    EXPECT_EQ(damage(), "");
}

TEST_F(Helper, NeverOverwritesAndNeverMovesInto)
{
    writeFile(rows + "/a", "a");
    writeFile(rows + "/b", "b");
    std::filesystem::create_directory(rows + "/folder");
    std::filesystem::create_directory_symlink(outside, rows + "/link");
    const TreeSnapshot before = snapshotOf(rows);
    const std::string file = markText(mark(rows + "/a"));
    for (const char *target : {"/b", "/folder", "/link", "/nowhere/c", "/link/c", "/../c", "/folder/"})
        EXPECT_NE(runHelper({file, "mv " + quoted(rows + "/a") + ' ' + quoted(rows + target)}).exitCode, 0)
            << target;
    EXPECT_EQ(difference(before, snapshotOf(rows)), "");
    EXPECT_EQ(damage(), "");
}

TEST_F(Helper, RefusesOtherCommandsAndArguments)
{
    writeFile(rows + "/a", "a");
    const std::string file = markText(mark(rows + "/a"));
    const std::string line = "rm -rf " + quoted(rows + "/a");
    const std::vector<std::vector<std::string>> calls = {
        {},
        {file},
        {line},
        {file, line, line},
        {line, file},
        {"", line},
        {"file=", line},
        {file, "id"},
        {file, line + "; touch x"},
        {file + ",escape", line},
        {file + ",escaped,escaped", line},
        {file + ",escaped", line + "%"},
    };
    for (const auto &call : calls) {
        const Answer answer = runHelper(call);
        EXPECT_EQ(answer.exitCode, 2);
        EXPECT_EQ(answer.output, "quillbay-elevate: started\n");
        EXPECT_EQ(answer.errors.find(rows), std::string::npos);
    }
    EXPECT_TRUE(exists(rows + "/a"));
}

TEST_F(Helper, RefusesMountPointsAndWhatIsAboveThem)
{
    const auto answer = inMountNamespace([&]() -> std::string {
        std::filesystem::create_directories(rows + "/above/between/point");
        writeFile(rows + "/above/kept", "x");
        if (!mountAt(outside, rows + "/above/between/point"))
            return "cannot mount";
        for (const char *path : {"/above", "/above/between", "/above/between/point"}) {
            if (remove(rows + path).exitCode != 3)
                return std::string("not refused: ") + path;
            if (runHelper(
                    {markText(mark(rows + path)), "mv " + quoted(rows + path) + ' ' + quoted(rows + "/x")})
                    .exitCode != 3)
                return std::string("moved: ") + path;
        }
        return exists(rows + "/above/kept") ? damage() : "something above a mount point is gone";
    });
    if (!answer)
        GTEST_SKIP() << "no mount namespace on this machine: mount points were NOT tested";
    EXPECT_EQ(*answer, "");
    EXPECT_EQ(damage(), "");
}

} // namespace quillbay::elevate
