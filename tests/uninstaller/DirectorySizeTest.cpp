#include "uninstaller/DirectorySize.h"

#include "uninstaller/ResidualFixture.h"

#include <algorithm>
#include <random>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::testing {

namespace {

TEST(DirectorySize, CountsVisibleFilesAndLinksOfARandomTree)
{
    std::mt19937 random(7);
    const MadeTree tree;
    QList<QByteArray> folders{"/tree"};
    tree.folder("/tree");
    qint64 expected = 0;
    for (int i = 0; i < 400; ++i) {
        const QByteArray parent = folders[qsizetype(random() % size_t(folders.size()))];
        const bool hidden = random() % 5 == 0;
        const QByteArray path = parent + (hidden ? "/." : "/") + "n\xff '" + QByteArray::number(i);
        const bool counts = !path.contains("/.");
        const int size = int(random() % 5000);
        switch (random() % 4) {
        case 0:
            tree.folder(path);
            folders += path;
            break;
        case 1:
            tree.link(path, QByteArray(1 + size % 50, '/'));
            expected += counts ? 1 + size % 50 : 0;
            break;
        default:
            tree.file(path, size);
            expected += counts ? size : 0;
        }
    }
    EXPECT_EQ(directorySize(tree.path("/tree")), expected);
    const std::atomic_bool stopped = true;
    EXPECT_LT(directorySize(tree.path("/tree"), &stopped), expected);
}

TEST(DirectorySize, FilesLinksAndNothing)
{
    const MadeTree tree;
    const QByteArray file = tree.file("/.file", 12);
    EXPECT_EQ(directorySize(file), 12);
    EXPECT_EQ(fileSize(file), 12);
    const QByteArray link = tree.link("/link", tree.root);
    EXPECT_EQ(directorySize(link), tree.root.size());
    EXPECT_EQ(fileSize(link), tree.root.size());
    EXPECT_EQ(fileSize(tree.root), 0);
    EXPECT_EQ(directorySize(tree.path("/gone")), 0);
    EXPECT_EQ(directorySize(file + QByteArray(1, '\0')), 0);
    ASSERT_EQ(::mkfifo(tree.path("/pipe").constData(), 0600), 0);
    EXPECT_EQ(directorySize(tree.path("/pipe")), 0);
}

/// Lets this process open so many files and no more, while it lives.
class FewDescriptors
{
public:
    explicit FewDescriptors(rlim_t count)
    {
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &m_before), 0);
        const rlimit limit = {std::min(count, m_before.rlim_max), m_before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    }
    ~FewDescriptors() { EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &m_before), 0); }
    FewDescriptors(const FewDescriptors &) = delete;
    FewDescriptors &operator=(const FewDescriptors &) = delete;

private:
    rlimit m_before = {};
};

TEST(DirectorySize, TakesTreesDeeperThanDescriptorsAndPathsReach)
{
    constexpr int depth = 1000; // a path of 5,000 bytes
    const MadeTree tree;
    const QByteArray top = tree.folder("/deep");
    int folder = ::open(top.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < depth; ++level) {
        // One file before and one after the subfolder, whatever the order.
        for (const char *name : {"a", "z"}) {
            const int file = ::openat(folder, name, O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
            ASSERT_EQ(::write(file, "abc", 3), 3);
            ::close(file);
        }
        for (const char *name : {"next", "other"})
            ASSERT_EQ(::mkdirat(folder, name, 0700), 0);
        const int next = ::openat(folder, "next", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::close(folder);
        folder = next;
    }
    {
        const FewDescriptors limit(200);
        EXPECT_EQ(directorySize(top), depth * 6);
    }
    // Too deep for whoever tidies up by path.
    for (int level = 0; level < depth; ++level) {
        const int parent = ::openat(folder, "..", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::close(folder);
        folder = parent;
        for (const char *name : {"a", "z"})
            EXPECT_EQ(::unlinkat(folder, name, 0), 0);
        for (const char *name : {"next", "other"})
            EXPECT_EQ(::unlinkat(folder, name, AT_REMOVEDIR), 0);
    }
    ::close(folder);
}

} // namespace

} // namespace quillbay::testing
