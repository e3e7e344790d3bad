#include "uninstaller/ProtectedPaths.h"

#include "platform/linux/uninstalling/MountPoints.h"
#include "uninstaller/ResidualFixture.h"

#include <QFile>

#include <random>

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillbay::testing {

namespace {

TEST(ProtectedPaths, SharedFoldersAndAllAboveThemHoweverTheyAreSpelled)
{
    const MadeTree tree;
    tree.folder("~/.config");
    tree.folder("/disk/data");
    tree.link("~/.data", tree.path("/disk/data"));
    tree.link("/alias", tree.home);
    const ProtectedPaths paths({tree.home, tree.path("~/.config"), tree.path("~/.data"), "/nowhere/base"},
                               QList<QByteArray>{"/"});

    for (const QByteArray &path :
         {QByteArray("/"), tree.home, tree.root, tree.path("~/.config"), tree.path("/alias/.config"),
          tree.path("~/.data"), tree.path("/disk/data"), tree.path("/disk"), tree.path("/alias/.data"),
          QByteArray("/nowhere"), QByteArray("/nowhere/base")})
        EXPECT_TRUE(paths.contains(path)) << path.constData();
    tree.file("~/.config/acme");
    for (const QByteArray &path :
         {tree.path("~/.config/acme"), tree.path("/disk/data/acme"), tree.path("/alias"),
          tree.path("~/.config.old"), tree.path("~/.conf"), tree.path("/alias/.config/acme")})
        EXPECT_FALSE(paths.contains(path)) << path.constData();

    const QByteArray plain = tree.path("~/.config/acme");
    for (const QByteArray &path :
         {QByteArray(), QByteArray("acme"), QByteArray("~"), plain + '/', plain + "/.", plain + "/..",
          tree.path("~/.config/../.config/acme"), tree.path("~//.config/acme"), tree.path("~/./acme"),
          plain + QByteArray(1, '\0') + "x", '/' + plain})
        EXPECT_TRUE(paths.contains(path)) << path.constData();
}

TEST(ProtectedPaths, MountPointsAndAllAboveThem)
{
    const MadeTree tree;
    const QByteArray point = tree.folder("~/.cache/acme/mounted disk");
    tree.folder("~/.cache/acme2");
    tree.link("/alias", tree.path("~/.cache"));
    const ProtectedPaths paths({tree.home}, QList<QByteArray>{"/", point});
    EXPECT_TRUE(paths.contains(point));
    EXPECT_TRUE(paths.contains(tree.path("~/.cache/acme")));
    EXPECT_TRUE(paths.contains(tree.path("/alias/acme")));
    EXPECT_FALSE(paths.contains(tree.path("~/.cache/acme2")));
    EXPECT_FALSE(paths.contains(tree.file("~/.cache/acme/mounted disk/file")));

    const ProtectedPaths blind({tree.home}, std::nullopt);
    EXPECT_TRUE(blind.contains(tree.path("~/.cache/acme2")));
    EXPECT_FALSE(blind.contains(tree.file("~/.cache/file")));
}

/// Mounts in a namespace of a child's own and scans there; tells by its exit code what it saw.
int scanWithRealMount(const MadeTree &tree)
{
    constexpr int cannot = 77;
    const QByteArray source = tree.path("~/elsewhere");
    const QByteArray target = tree.path("~/.config/acme \\ 1/in\nside");
    if ((::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) ||
        ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount(source.constData(), target.constData(), nullptr, MS_BIND, nullptr) != 0)
        return cannot;
    // A second one that no list knows: the folder is still the same.
    const QByteArray unlisted = tree.path("~/.cache/acme 3");
    tree.roots->mounts = platform::currentMountPoints();
    if (::mount(tree.path("~/.local/share").constData(), unlisted.constData(), nullptr, MS_BIND, nullptr) !=
        0)
        return cannot;
    const std::vector<std::string> rows = tree.rows(QStringLiteral("acme"));
    return tree.roots->mounts && rows == std::vector<std::string>{"Preferences ~/.config/acme 2 1",
                                                                  "Application Support ~/.local/share/acme 0"}
               ? 0
               : 1;
}

TEST(ProtectedPaths, ABindMountKeepsItsRowAway)
{
    MadeTree tree;
    tree.useLinuxLayout();
    tree.file("~/elsewhere/precious");
    tree.folder("~/.config/acme \\ 1/in\nside");
    tree.file("~/.config/acme 2");
    tree.folder("~/.local/share/acme");
    tree.folder("~/.cache/acme 3");
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        ::_exit(scanWithRealMount(tree));
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 77)
        GTEST_SKIP() << "this system lets nobody mount";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

/// Trees, names and base folders that chance makes; the same for the same seed.
class RandomHome
{
public:
    explicit RandomHome(unsigned seed)
        : m_random(seed)
    {
        layOut();
        for (int i = 0; i < 12; ++i)
            place();
        if (chance(2))
            tree.roots->mounts->append(one(m_made));
        if (chance(12))
            tree.roots->mounts.reset();
    }

    QString name() { return QString::fromUtf8(words(2)); }
    QString applicationPath()
    {
        return QFile::decodeName(chance(3) ? one(tree.roots->places.sharedFolders) : one(m_made));
    }
    /// Another application's.
    void setFacts()
    {
        platform::ApplicationFacts facts;
        facts.identifier = chance(3) ? QString() : QString::fromUtf8(words(3));
        for (int i = 0; i < 2; ++i) {
            facts.wholeNames += QString::fromUtf8(words(1));
            facts.programNames += QString::fromUtf8(words(1));
            facts.ownFiles += one(chance(3) ? tree.roots->places.sharedFolders : m_made);
        }
        tree.roots->facts = facts;
    }

    bool chance(unsigned of) { return m_random() % of == 0; }

    MadeTree tree{memoryFolder()};

private:
    template <typename T>
    T one(const QList<T> &list)
    {
        return list[qsizetype(m_random() % size_t(list.size()))];
    }

    /// Parts of names of what is there, and what upsets whoever takes names apart.
    QByteArray word()
    {
        static const QList<QByteArray> all{"config", "share", "local", "state", "cache",   "home", "user",
                                           "data",   "a",     "b",     ".",     "..",      "/",    "",
                                           "'",      "\"",    "\n",    " ",     "$(x)",    "-",    "\xff",
                                           "*",      "~",     "app",   "snap",  "xdg",     "etc",  "~/..",
                                           "base",   "deep",  "\\",    "%2f",   "systemd", "Ü",    "auto"};
        return one(all);
    }
    QByteArray words(int most)
    {
        QByteArray text;
        for (int count = int(m_random() % unsigned(most + 1)); count >= 0; --count)
            text += (text.isEmpty() || chance(2) ? "" : ".") + word();
        return text;
    }
    QByteArray fileName()
    {
        QByteArray name = words(2).replace('/', '_');
        return name.isEmpty() || name == "." || name == ".." ? "data" : name;
    }

    /// Base folders inside each other, behind links, or where the home itself is one.
    void layOut()
    {
        platform::LinuxBaseFolders folders = tree.linuxFolders();
        for (QByteArray *base :
             {&folders.configHome, &folders.dataHome, &folders.cacheHome, &folders.stateHome}) {
            if (chance(6))
                *base = tree.home;
            else if (chance(3))
                *base = one(QList<QByteArray>{folders.dataHome, folders.configHome, tree.home}) + '/' +
                        one(QList<QByteArray>{"base", "deep/state", "data/a/cache", "config"});
            if (chance(6) && !QFile::exists(QFile::decodeName(*base)) && base->startsWith(tree.home + '/')) {
                const QByteArray target = tree.folder("/disk/" + fileName() + "/base");
                const QByteArray relative = '~' + base->mid(tree.home.size());
                tree.link(relative, target);
                m_made += target;
            }
            tree.folder('~' + base->mid(tree.home.size()));
        }
        tree.roots->places = platform::linuxResidualLayout(folders);
        tree.roots->mounts = QList<QByteArray>{"/"};
        for (const QByteArray &shared : tree.roots->places.sharedFolders) {
            if (chance(2))
                tree.folder(shared.mid(tree.root.size()));
        }
        m_made += tree.home;
    }

    void place()
    {
        const platform::ResidualLayout &places = tree.roots->places;
        const QByteArray parent = chance(3) ? one(m_made) : one(places.sharedFolders);
        struct stat status = {};
        if (!parent.startsWith(tree.root + '/'))
            return;
        tree.folder(parent.mid(tree.root.size()));
        if (::stat(parent.constData(), &status) != 0 || !S_ISDIR(status.st_mode))
            return;
        const QByteArray path = parent + '/' + fileName();
        const QByteArray relative = path.mid(tree.root.size());
        if (::lstat(path.constData(), &status) == 0)
            return;
        if (chance(4))
            m_made += tree.file(relative);
        else if (chance(4))
            m_made += tree.link(relative, chance(2) ? tree.home : one(places.sharedFolders));
        else
            m_made += tree.folder(relative);
    }

    std::mt19937 m_random;
    QList<QByteArray> m_made;
};

QByteArray realPath(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr), &std::free);
    return QByteArray(real.get());
}

/// The path with all links resolved but its own.
QByteArray located(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    const QByteArray parent = realPath(path.left(slash));
    return (parent == "/" ? QByteArray() : parent) + path.mid(slash);
}

bool isAtOrAbove(const QByteArray &path, const QByteArray &other)
{
    return path == "/" || other == path || other.startsWith(path + '/');
}

/// What must stay, as it is all the time that a home is scanned.
struct Kept
{
    explicit Kept(const QByteArray &folder)
        : path(folder)
        , identity(FileIdentity::of(folder))
    {
    }

    QByteArray path;
    std::optional<FileIdentity> identity;
};

/// Looks for every kept path at, below or behind the row.
::testing::AssertionResult harms(const AppResidualFile &row, const std::vector<Kept> &kept)
{
    const QByteArray place = located(row.path);
    for (const Kept &folder : kept) {
        if (isAtOrAbove(row.path, folder.path) || isAtOrAbove(place, folder.path) ||
            (folder.identity && row.identity == folder.identity))
            return ::testing::AssertionSuccess()
                   << row.path.constData() << " holds " << folder.path.constData();
    }
    return ::testing::AssertionFailure() << row.path.constData() << " holds nothing that must stay";
}

/// How many shared folders the rules alone would have made rows of.
int sharedFoldersHit(const MadeTree &tree, const QString &name)
{
    const platform::ResidualLayout &places = tree.roots->places;
    const QList<QByteArray> listed = places.preferences + places.appSupport + places.caches + places.logs;
    const ResidualRules rules({name, tree.roots->facts.identifier, {}, {}});
    int hits = 0;
    for (const QByteArray &folder : places.sharedFolders) {
        const qsizetype slash = folder.lastIndexOf('/');
        hits += listed.contains(folder.left(slash)) && folder[slash + 1] != '.' &&
                rules.matchesApplication(folder.mid(slash + 1)) && FileIdentity::of(folder);
    }
    return hits;
}

/// Thousands of applications in hundreds of made homes, with names that hit what must stay.
TEST(NeverRows, WhateverTheNamesInvolved)
{
    int hits = 0;
    int rowCount = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        RandomHome home(seed);
        const platform::ResidualLayout &places = home.tree.roots->places;
        QSet<QByteArray> paths{"/"};
        for (const QByteArray &folder : places.sharedFolders)
            paths << folder << realPath(folder);
        for (const QByteArray &point : home.tree.roots->mounts.value_or(QList<QByteArray>()))
            paths << point;
        paths.remove(QByteArray());
        const std::vector<Kept> kept(paths.begin(), paths.end());
        for (int round = 0; round < 10; ++round) {
            home.setFacts();
            const QString name = home.name();
            hits += sharedFoldersHit(home.tree, name);
            for (const AppResidualFile &row : home.tree.scan(name, home.applicationPath())) {
                SCOPED_TRACE(seed);
                ++rowCount;
                ASSERT_FALSE(row.path.isEmpty() || row.isPackage());
                ASSERT_FALSE(harms(row, kept));
                ASSERT_TRUE(row.category == ResidualCategory::appBundle || row.identity);
                ASSERT_FALSE(row.path.contains("/../") || row.path.contains("/./")) << row.path.constData();
                ASSERT_TRUE(row.category == ResidualCategory::appBundle ||
                            row.path[row.path.lastIndexOf('/') + 1] != '.')
                    << row.path.constData();
                // Where nobody knows the mounts, any folder may hold one.
                ASSERT_TRUE(home.tree.roots->mounts || !row.identity || row.identity->kind != S_IFDIR);
            }
        }
    }
    EXPECT_GT(hits, 200) << "else this shows little";
    EXPECT_GT(rowCount, 4000);
}

} // namespace

} // namespace quillbay::testing
