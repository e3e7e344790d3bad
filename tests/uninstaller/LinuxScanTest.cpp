#include "uninstaller/ResidualFixture.h"

#include <QFile>

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quillbay::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class LinuxScan : public ::testing::Test
{
protected:
    LinuxScan()
    {
        tree.useLinuxLayout();
        tree.roots->facts.identifier = QStringLiteral("org.example.Acme");
    }

    MadeTree tree;
};

TEST_F(LinuxScan, EachStepFindsItsOwnInOrder)
{
    tree.roots->facts.wholeNames = {QStringLiteral("Paint")};
    tree.roots->facts.programNames = {QStringLiteral("acmed")};
    tree.file("~/.config/Acme/settings", 10);
    tree.file("~/.config/paint", 10);
    tree.file("~/.config/paint2", 10);
    tree.file("/etc/xdg/acme.conf", 11);
    tree.file("~/.local/share/org.example.acme/x", 12);
    tree.file("~/.cache/PAINT/x", 13);
    tree.file("~/.local/state/org.example.Acme/x", 14);
    tree.file("~/.local/state/Acme.log", 15);
    tree.file("~/.var/app/org.example.Acme/x", 16);
    tree.file("~/.var/app/org.example.acme/x", 16);
    tree.file("~/snap/acmed/x", 17);
    tree.file("~/snap/acme/x", 17);
    tree.file("~/.config/autostart/acme.desktop", 18);
    tree.file("~/.config/systemd/user/acme.service", 19);
    tree.file("/etc/xdg/autostart/acme.desktop", 20);
    tree.file("/etc/systemd/system/acme.service", 21);
    tree.file("/var/crash/_usr_bin_acme.1000.crash", 22);
    tree.file("/var/lib/systemd/coredump/core.acme.1000.zst", 23);
    tree.file("~/.local/share/gnome-shell/extensions/org.example.acme@x/x", 24);
    tree.file("/var/lib/dpkg/info/acme.list", 25);
    tree.file("~/.acme/x", 26);

    const std::vector<std::string> rows = tree.rows(QStringLiteral("Acme"));
    // The order inside one folder is the file system's.
    EXPECT_THAT(
        rows, UnorderedElementsAre("Preferences ~/.config/Acme 0", "Preferences ~/.config/paint 10",
                                   "Preferences /etc/xdg/acme.conf 11",
                                   "Application Support ~/.local/share/org.example.acme 12",
                                   "Caches ~/.cache/PAINT 13", "Logs ~/.local/state/org.example.Acme 14",
                                   "Logs ~/.local/state/Acme.log 15", "Logs ~/.local/state/Acme.log 15",
                                   "Containers ~/.var/app/org.example.Acme 16", "Containers ~/snap/acmed 17",
                                   "Launch Agents & Daemons ~/.config/autostart/acme.desktop 18",
                                   "Launch Agents & Daemons ~/.config/systemd/user/acme.service 19",
                                   "Launch Agents & Daemons /etc/xdg/autostart/acme.desktop 20",
                                   "Launch Agents & Daemons /etc/systemd/system/acme.service 21",
                                   "Crash Reports /var/crash/_usr_bin_acme.1000.crash 22",
                                   "Crash Reports /var/lib/systemd/coredump/core.acme.1000.zst 23",
                                   "Saved State ~/.local/state/org.example.Acme 14",
                                   "Extensions ~/.local/share/gnome-shell/extensions/org.example.acme@x 24"));
    EXPECT_EQ(rows.back(), "Extensions ~/.local/share/gnome-shell/extensions/org.example.acme@x 24");
    EXPECT_EQ(rows[2], "Preferences /etc/xdg/acme.conf 11") << "the folders of a step come in their order";
}

TEST_F(LinuxScan, NamesOfAnyBytesLeadBackToTheirFile)
{
    const QList<QByteArray> names{"acme'; rm -rf ~ #", "\xff\xfe acme",
                                  "a\nacme",           "-acme",
                                  "acme \"$(x)\"",     QByteArray(250, 'a') + "acme"};
    for (const QByteArray &name : names)
        tree.file("~/.config/" + name, 3);
    QList<QByteArray> found;
    for (const AppResidualFile &row : tree.scan(QStringLiteral("acme"))) {
        if (row.category == ResidualCategory::appBundle)
            continue;
        EXPECT_EQ(row.sizeBytes, 3);
        EXPECT_EQ(row.identity, FileIdentity::of(row.path));
        EXPECT_TRUE(row.identity);
        EXPECT_EQ(QByteArray::fromPercentEncoding(row.url().toEncoded().mid(7)), row.path);
        found += row.path.mid(row.path.lastIndexOf('/') + 1);
    }
    EXPECT_THAT(found, ::testing::UnorderedElementsAreArray(names));
}

TEST_F(LinuxScan, LinksAreRowsThemselvesAndLeadNowhere)
{
    tree.file("~/Documents/precious", 4000);
    const QByteArray link = tree.link("~/.local/share/acme-data", tree.path("~/Documents"));
    tree.link("~/.cache/acme-gone", "nowhere");
    tree.link("~/.config/acme-home", tree.home);
    tree.file("~/.local/share/acme/own", 5);
    tree.link("~/.local/share/acme/inside", tree.path("~/Documents"));
    tree.link("~/.local/share/acme/loop", "..");
    const auto length = [](qsizetype size) { return std::to_string(size); };
    EXPECT_THAT(
        tree.rows(QStringLiteral("acme")),
        UnorderedElementsAre(
            "Preferences ~/.config/acme-home " + length(tree.home.size()),
            "Application Support ~/.local/share/acme-data " + length(tree.path("~/Documents").size()),
            "Application Support ~/.local/share/acme " + length(5 + 2 + tree.path("~/Documents").size()),
            "Caches ~/.cache/acme-gone 7", "Caches ~/.cache/acme-gone 7"));
    for (const AppResidualFile &row : tree.scan(QStringLiteral("acme-data"))) {
        if (row.path == link) {
            EXPECT_EQ(row.identity->kind, quint32(S_IFLNK));
        }
    }
}

TEST_F(LinuxScan, APackageStandsForItsApplication)
{
    ApplicationOwner owner;
    owner.reference = QStringLiteral("acme-browser:amd64");
    owner.displayName = QStringLiteral("acme-browser, Debian package");
    owner.sizeBytes = 77;
    owner.isRemovable = true;
    owner.packageNames = {QStringLiteral("webthing")};
    QList<QByteArray> askedFor;
    tree.packages.ownerOf = [&](const QByteArray &path) {
        askedFor += path;
        return std::optional(owner);
    };
    tree.roots->facts.ownFiles = {tree.file("~/opt/acme")};
    tree.file("~/.config/webthing");
    tree.file("~/snap/webthing/x");

    std::vector<AppResidualFile> rows =
        tree.scan(QStringLiteral("Acme"), QStringLiteral("/usr/share/applications/acme.desktop"));
    ASSERT_FALSE(rows.empty());
    EXPECT_THAT(askedFor, ElementsAre("/usr/share/applications/acme.desktop"));
    EXPECT_TRUE(rows[0].isPackage());
    EXPECT_TRUE(rows[0].path.isEmpty() && rows[0].url().isEmpty() && !rows[0].identity);
    EXPECT_EQ(rows[0].packageReference, owner.reference);
    EXPECT_EQ(rows[0].displayName, owner.displayName);
    EXPECT_EQ(rows[0].sizeBytes, 77);
    EXPECT_TRUE(rows[0].isSelected && rows[0].isUserDeletable);
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")),
                ElementsAre("Preferences ~/.config/webthing 1", "Containers ~/snap/webthing 1"));

    owner.isRemovable = false;
    rows = tree.scan(QStringLiteral("Acme"));
    EXPECT_FALSE(rows[0].isSelected || rows[0].isUserDeletable);
}

TEST_F(LinuxScan, FilesOfPackagesAreNoRows)
{
    tree.file("~/.config/acme");
    tree.file("/etc/xdg/acme.conf");
    tree.file("/etc/xdg/acme.local");
    tree.file("/etc/systemd/system/acme.service");
    const QByteArray entry = tree.file("/usr/share/applications/acme.desktop");
    tree.packages.ofPackages = [&](const QList<QByteArray> &paths) {
        EXPECT_FALSE(paths.contains(tree.path("~/.config/acme"))) << "no package has files in a home";
        QList<QByteArray> mine = paths;
        mine.removeAll(tree.path("/etc/xdg/acme.local"));
        return mine;
    };
    EXPECT_THAT(tree.rows(QStringLiteral("Acme")),
                ElementsAre("Preferences ~/.config/acme 1", "Preferences /etc/xdg/acme.local 1"));
    for (const AppResidualFile &row : tree.scan(QStringLiteral("Acme"), QFile::decodeName(entry)))
        EXPECT_NE(row.path, entry);
}

TEST_F(LinuxScan, ASelfInstalledProgramHasARowOfItsOwn)
{
    tree.file("~/opt/acme/bin/acme", 30);
    tree.file("~/opt/acme/share/x", 3);
    tree.roots->facts.ownFiles = {tree.path("~/opt/acme"), tree.path("~/opt/gone")};
    const QByteArray entry = tree.file("~/.local/share/applications/acme.desktop", 9);
    const std::vector<AppResidualFile> rows = tree.scan(QStringLiteral("Acme"), QFile::decodeName(entry));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(tree.line(rows[0]), "Application ~/.local/share/applications/acme.desktop 9");
    EXPECT_EQ(rows[0].displayName, QStringLiteral("Acme.app"));
    EXPECT_EQ(tree.line(rows[1]), "Application ~/opt/acme 33");
    EXPECT_EQ(rows[1].displayName, QStringLiteral("acme"));

    tree.roots->facts.ownFiles = {tree.path("~/opt"), tree.home, "/", tree.path("~/.config")};
    tree.roots->mounts->append(tree.path("~/opt/acme/share"));
    EXPECT_EQ(tree.scan(QStringLiteral("Acme"), QFile::decodeName(entry)).size(), 1U);
}

} // namespace

} // namespace quillbay::testing
