#include "support/HostileTree.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::testing {

namespace {

using namespace std::string_literals;

const std::string parts[] = {
    "'",         "''",
    "'\\''",     "\"",
    "\\",        "$(touch pwned)",
    "`id`",      "\n",
    "\t",        " ",
    "-rf",       "--",
    "-",         "~",
    "*",         "?",
    "%41",       "%",
    ";rm -r",    "&& a",
    "| b",       "> c",
    "\xff\xfe"s, "\xc3\xa9"s,
    "#",         "!",
    "..",        "...",
    ".hidden",   ".trashinfo",
    "file.log",  "\x01"s,
    "${HOME}",   "=",
    "a.b.",      "[Trash Info]",
    "\r\n",      "\xe2\x80\xae"s,
};

void check(bool holds, const std::string &what)
{
    if (holds)
        return;
    std::perror(what.c_str());
    std::abort();
}

} // namespace

void writeFile(const std::string &path, const std::string &content)
{
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    check(bool(file), path);
}

HostileTree::HostileTree(unsigned seed, std::string outside)
    : m_random(seed)
    , m_outside(std::move(outside))
{
}

int HostileTree::number(int below)
{
    return int(m_random() % unsigned(below));
}

void HostileTree::makeOutside()
{
    std::filesystem::create_directories(m_outside + "/folder/deeper");
    for (int i = 0; i < 4; ++i) {
        writeFile(m_outside + "/file" + std::to_string(i), "precious " + std::to_string(i));
        writeFile(m_outside + "/folder/deeper/file" + std::to_string(i), std::string(1000, char('a' + i)));
    }
    std::filesystem::create_symlink("folder/deeper", m_outside + "/link");
}

std::string HostileTree::name()
{
    std::string result;
    for (int count = 1 + number(4); count > 0; --count)
        result += parts[number(int(std::size(parts)))];
    result += std::to_string(m_names++);
    if (number(12) == 0)
        result.insert(0, 255 - result.size(), number(2) ? 'x' : '\'');
    return result;
}

void HostileTree::make(const std::string &path, int depth)
{
    const int kind = number(depth > 0 ? 10 : 6);
    if (kind >= 6) {
        check(mkdir(path.c_str(), 0755) == 0, path);
        for (int count = number(5); count > 0; --count)
            make(path + '/' + name(), depth - 1);
        return;
    }
    const std::string targets[] = {
        m_outside, m_outside + "/folder", m_outside + "/file1", "/", ".", "..", "nowhere/", path};
    switch (kind) {
    case 0:
    case 1:
        check(symlink(targets[number(int(std::size(targets)))].c_str(), path.c_str()) == 0, path);
        break;
    case 2:
        check(link((m_outside + "/file" + std::to_string(number(4))).c_str(), path.c_str()) == 0, path);
        break;
    case 3:
        check(mkfifo(path.c_str(), 0600) == 0, path);
        break;
    default:
        writeFile(path, std::string(std::size_t(number(300)), 'z'));
    }
}

std::string HostileTree::makeLongPath(const std::string &folder, std::size_t length)
{
    std::string path = folder;
    while (path.size() + 1 < length) {
        // Never one byte short of the end, where no name fits.
        const std::size_t left = length - path.size() - 1;
        const std::size_t size = left <= 250 ? left : left - 250 == 1 ? 240 : 250;
        path += '/' + std::string(size, '\'');
        if (path.size() < length)
            check(mkdir(path.c_str(), 0755) == 0, path);
    }
    writeFile(path, "deep");
    return path;
}

} // namespace quillbay::testing
