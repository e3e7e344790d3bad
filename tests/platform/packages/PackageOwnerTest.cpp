#include "platform/packages/ManagerFixture.h"

#include <QElapsedTimer>

#include <algorithm>
#include <iterator>

namespace quillbay::platform {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using testing::FakeTools;
using ::testing::IsEmpty;

class Owner : public testing::ManagerFixture
{
protected:
    static bool isUnknown(const PackageOwner &owner) { return !owner.package && !owner.error.isEmpty(); }
    static bool isNone(const PackageOwner &owner) { return !owner.package && owner.error.isEmpty(); }

    void answerFlatpak(const QByteArray &script)
    {
        tools.script(QStringLiteral("flatpak"), QStringLiteral("info"), script);
    }
};

TEST_F(Owner, IsTheDebianPackageByOneQuestionForAllSpellings)
{
    const QByteArray file = entry(QStringLiteral("app/firefox.desktop"), {});
    QFile::link(QString::fromUtf8(file), QString::fromUtf8(tools.home()) + QStringLiteral("/link.desktop"));
    makeDebianSystem();
    tools.answerSearch("firefox-esr: " + file + '\n');
    tools.answerFacts({FakeTools::factsLine(QStringLiteral("firefox-esr"))});

    for (const QByteArray &path : {file, tools.home() + "/link.desktop"}) {
        tools.forgetCalls();
        const PackageOwner found = owner(path);
        ASSERT_TRUE(found.package) << qPrintable(found.error);
        EXPECT_EQ(found.package->name, QStringLiteral("firefox-esr"));
        EXPECT_EQ(found.package->displayText, QStringLiteral("firefox-esr, Debian package"));
        EXPECT_EQ(found.package->installedBytes, 12 * 1024);
        EXPECT_TRUE(found.package->canBeRemoved);
        EXPECT_FALSE(found.package->isEssential);
        EXPECT_EQ(tools.calls().filter(QStringLiteral("--search")).size(), 1);
    }
}

TEST_F(Owner, IsNotRemovableWhereItIsUnclearOrNobodyCanBeAsked)
{
    const QByteArray file = entry(QStringLiteral("app.desktop"), {});
    makeDebianSystem();
    tools.answerSearch("one, two: " + file + '\n');
    tools.answerFacts({FakeTools::factsLine(QStringLiteral("one"), QStringLiteral("yes|no|optional")),
                       FakeTools::factsLine(QStringLiteral("two"))});
    const PackageOwner shared = owner(file);
    ASSERT_TRUE(shared.package);
    EXPECT_FALSE(shared.package->canBeRemoved);
    EXPECT_TRUE(shared.package->isEssential);

    tools.answerSearch("one: " + file + '\n');
    tools.answerFacts({FakeTools::factsLine(QStringLiteral("one"))});
    EXPECT_TRUE(owner(file).package->canBeRemoved);
    tools.drop(QStringLiteral("apt-get"));
    EXPECT_FALSE(owner(file).package->canBeRemoved);
}

TEST_F(Owner, IsNobodyOnlyWhereTheDatabaseSaysSo)
{
    const QByteArray file = entry(QStringLiteral("app.desktop"), {});
    const QString query = QStringLiteral("dpkg-query");
    const QString search = QStringLiteral("--search");
    EXPECT_TRUE(isNone(owner(file))); // no package manager at all
    makeDebianSystem();
    EXPECT_TRUE(isNone(owner(file)));
    tools.answerSearch("other: /usr/share/applications/other.desktop\n");
    EXPECT_TRUE(isNone(owner(file)));

    tools.answer(query, search, {{}, "dpkg-query: error: failed to open package info file\n", 2});
    EXPECT_TRUE(isUnknown(owner(file)));
    tools.answer(query, search, {{}, "what?\n", 1});
    EXPECT_TRUE(isUnknown(owner(file)));
    tools.script(query, search, "kill -9 $$\n");
    EXPECT_TRUE(isUnknown(owner(file)));
    tools.script(query, search, "exec yes\n");
    EXPECT_TRUE(isUnknown(owner(file)));
    // An owner of whom the database then knows nothing more.
    tools.answerSearch("app: " + file + '\n');
    tools.answer(query, QStringLiteral("--show"), {"app\tapp\tinsta", {}, 0});
    EXPECT_TRUE(isUnknown(owner(file)));
    EXPECT_TRUE(isUnknown(owner("relative")));
}

TEST_F(Owner, OfManyFilesTakesOneQuestion)
{
    makeDebianSystem();
    tools.answer(QStringLiteral("flatpak"), QStringLiteral("info"), {{}, "error: no such remote\n", 1});
    QByteArrayList files;
    QByteArray known;
    for (int i = 0; i < 40; ++i) {
        files.append(entry(QStringLiteral("%1.desktop").arg(i), i == 7 ? "X-Flatpak=org.foo.Bar\n" : ""));
        if (i % 3 == 0)
            known += (i == 9 ? "diversion by other to: " : "one: ") + files.last() + '\n';
    }
    files.append("relative");
    tools.answerSearch(known);
    tools.answerFacts({FakeTools::factsLine(QStringLiteral("one"))});
    QByteArrayList expected;
    std::copy_if(files.begin(), files.end(), std::back_inserter(expected),
                 [this](const QByteArray &file) { return !isNone(owner(file)); });
    EXPECT_EQ(expected.size(), 16);
    const auto ofPackages = [&] {
        QByteArrayList found =
            testing::onWorker([&] { return LinuxPackageManager(surroundings).ofPackages(files); });
        std::sort(found.begin(), found.end());
        return found;
    };
    std::sort(expected.begin(), expected.end());
    tools.forgetCalls();
    EXPECT_EQ(ofPackages(), expected);
    EXPECT_EQ(tools.calls().filter(QStringLiteral("--search")).size(), 1);

    std::sort(files.begin(), files.end());
    tools.answer(QStringLiteral("dpkg-query"), QStringLiteral("--search"), {{}, "what?\n", 2});
    EXPECT_EQ(ofPackages(), files) << "where nobody can tell each may be a package's";
}

TEST_F(Owner, DoesNotWaitForAToolThatHangs)
{
    const QByteArray file = entry(QStringLiteral("app.desktop"), {});
    tools.script(QStringLiteral("dpkg-query"), QStringLiteral("--search"), "sleep 600\n");
    surroundings.questionLimit = 200ms;
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(isUnknown(owner(file)));
    EXPECT_LT(timer.elapsed(), 60000);
}

TEST_F(Owner, IsAskedForOddPathsAsTheyAre)
{
    makeDebianSystem();
    for (const QByteArray &name :
         {QByteArray("-rf *.desktop"), QByteArray("a\n-b.desktop"), QByteArray("$(x)'\".desktop"),
          QByteArray("\xff\xfe.desktop"), QByteArray(200, 'x')}) {
        tools.forgetCalls();
        const QByteArray file = entry(QStringLiteral("odd"), {}).chopped(3) + name;
        EXPECT_TRUE(isNone(owner(file)));
        for (const QString &call : tools.calls()) {
            for (const QString &argument : call.split(u'|').mid(3))
                EXPECT_TRUE(argument.startsWith(u'/')) << qPrintable(call);
        }
        tools.answerSearch("odd: " + file + '\n');
        tools.answerFacts({FakeTools::factsLine(QStringLiteral("odd"))});
        EXPECT_EQ(owner(file).package.has_value(), !name.contains('\n'));
        tools.answerSearch({});
    }
}

TEST_F(Owner, IsTheRpmPackage)
{
    const QByteArray file = entry(QStringLiteral("app.desktop"), {});
    const QString rpm = QStringLiteral("rpm");
    const QString query = QStringLiteral("--query");
    tools.answer(rpm, query, {"Foo\t1.0-2\tnoarch\t4096\n", {}, 0});
    const PackageOwner found = owner(file);
    ASSERT_TRUE(found.package) << qPrintable(found.error);
    EXPECT_EQ(found.package->id, QStringLiteral("Foo-1.0-2.noarch"));
    EXPECT_EQ(found.package->displayText, QStringLiteral("Foo, RPM package"));
    EXPECT_EQ(found.package->installedBytes, 4096);
    EXPECT_TRUE(found.package->canBeRemoved);

    const QByteArray notOwned = "file " + file + " is not owned by any package\n";
    tools.answer(rpm, query, {notOwned, {}, 1});
    EXPECT_TRUE(isNone(owner(file)));
    // rpm says so as well where it cannot read its database.
    tools.answer(rpm, query, {notOwned, "error: cannot open Packages database in /var/lib/rpm\n", 1});
    EXPECT_TRUE(isUnknown(owner(file)));

    tools.answer(rpm, query, {"systemd\t1-2\tnoarch\t1\n", {}, 0});
    EXPECT_TRUE(owner(file).package->isEssential);
    surroundings.protectionFolders = {QString::fromUtf8(tools.home())};
    QFile conf(QString::fromUtf8(tools.home()) + QStringLiteral("/mine.conf"));
    ASSERT_TRUE(conf.open(QIODevice::WriteOnly) && conf.write("# names\nFoo\n") > 0);
    conf.close();
    tools.answer(rpm, query, {"Foo\t1.0-2\tnoarch\t4096\n", {}, 0});
    EXPECT_TRUE(owner(file).package->isEssential);
}

TEST_F(Owner, IsTheFlatpakApplicationOfTheInstallationThatHasIt)
{
    const QByteArray script =
        "[ \"$2\" = --SCOPE ] || { echo 'error: org.foo.Bar/*unspecified*/*unspecified* not "
        "installed' >&2; exit 1; }\necho \"app/$5/x86_64/stable 23000000\"\n";
    const QByteArray copied =
        entry(QStringLiteral(".local/share/applications/x.desktop"), "X-Flatpak=org.foo.Bar \n");
    const QByteArray exported =
        entry(QStringLiteral("flatpak/exports/share/applications/x.desktop"), "X-Flatpak=org.foo.Bar\n");
    for (const bool forOneUser : {true, false}) {
        answerFlatpak(QByteArray(script).replace("SCOPE", forOneUser ? "user" : "system"));
        for (const QByteArray &file : {copied, exported}) {
            const PackageOwner found = owner(file);
            ASSERT_TRUE(found.package) << qPrintable(found.error);
            EXPECT_EQ(found.package->kind, PackageKind::Flatpak);
            EXPECT_EQ(found.package->id, QStringLiteral("app/org.foo.Bar/x86_64/stable"));
            EXPECT_EQ(found.package->displayText, QStringLiteral("org.foo.Bar, Flatpak application"));
            EXPECT_EQ(found.package->isForOneUser, forOneUser);
            EXPECT_EQ(found.package->installedBytes, 23'000'000);
            EXPECT_TRUE(found.package->canBeRemoved);
        }
    }
    // A copy that outlived its application is a file of the user's; an exported entry never is.
    answerFlatpak("echo 'error: x not installed' >&2; exit 1\n");
    EXPECT_TRUE(isNone(owner(copied)));
    EXPECT_TRUE(isUnknown(owner(exported)));
    for (const char *broken :
         {"echo 'error: no such remote' >&2; exit 1", "echo app/org.foo.Other/x86_64/stable",
          "printf 'app/org.foo.Bar/x86_64/-y'", "exec yes"}) {
        answerFlatpak(broken);
        EXPECT_TRUE(isUnknown(owner(copied))) << broken;
    }
    tools.drop(QStringLiteral("flatpak"));
    EXPECT_FALSE(owner(exported).package->canBeRemoved);
}

TEST_F(Owner, IsTheSnapUnlessTheSystemOfSnapsStandsOnIt)
{
    const QString snap = QStringLiteral("snap");
    const QString list = QStringLiteral("list");
    const QByteArray header = "Name  Version  Rev  Tracking  Publisher  Notes\n";
    const QByteArray file = entry(QStringLiteral("snapd/desktop/applications/foo_foo.desktop"),
                                  "X-SnapInstanceName=foo\nX-SnapAppName=other\n");
    tools.answer(snap, list, {header + "foo   1.0   12   latest/stable  someone  classic,disabled\n", {}, 0});
    surroundings.snapFolder = QString::fromUtf8(tools.home());
    QFile image(surroundings.snapFolder + QStringLiteral("/foo_12.snap"));
    ASSERT_TRUE(image.open(QIODevice::WriteOnly) && image.resize(700));
    const PackageOwner found = owner(file);
    ASSERT_TRUE(found.package) << qPrintable(found.error);
    EXPECT_EQ(found.package->displayText, QStringLiteral("foo, Snap package"));
    EXPECT_EQ(found.package->installedBytes, 700);
    EXPECT_TRUE(found.package->canBeRemoved);
    EXPECT_FALSE(found.package->isEssential);

    tools.answer(snap, list, {header + "foo   1.0   12   latest/stable  someone  base\n", {}, 0});
    EXPECT_TRUE(owner(file).package->isEssential);
    tools.answer(snap, list, {header + "food  1.0   12   latest/stable  someone  -\n", {}, 0});
    EXPECT_TRUE(isUnknown(owner(file)));
    tools.answer(snap, list, {{}, "error: no matching snaps installed\n", 1});
    EXPECT_TRUE(isUnknown(owner(file)));
    tools.answer(snap, list, {{}, "error: cannot communicate with server\n", 1});
    EXPECT_TRUE(isUnknown(owner(file)));
}

TEST_F(Owner, TakesNoHostileNameOutOfAnEntry)
{
    tools.answer(QStringLiteral("flatpak"), QStringLiteral("info"), {{}, {}, 0});
    tools.answer(QStringLiteral("snap"), QStringLiteral("list"), {{}, {}, 0});
    for (const QByteArray &name :
         {QByteArray("--all"), QByteArray("-y"), QByteArray("a b"), QByteArray("$(reboot)"),
          QByteArray("\xff\xfe"), QByteArray("../../x"), QByteArray(5000, 'a')}) {
        const QByteArray lines = "X-Flatpak=" + name + "\nX-SnapInstanceName=" + name + '\n';
        EXPECT_TRUE(isNone(owner(entry(QStringLiteral("a.desktop"), lines)))) << name.constData();
        EXPECT_TRUE(isUnknown(owner(entry(QStringLiteral("exports/share/applications/a.desktop"), lines))))
            << name.constData();
    }
    EXPECT_THAT(tools.calls(), IsEmpty());
}

} // namespace
} // namespace quillbay::platform
