#include "platform/linux/packages/PackageNames.h"

#include "support/TestHome.h"

#include <QDir>
#include <QFile>

#include <random>

#include <gmock/gmock.h>

namespace quillbay::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(PackageNames, AreTakenAsTheirManagersWriteThem)
{
    for (const char *name : {"g++", "libc6:i386", "0ad", "python3.11", "libstdc++6"})
        EXPECT_TRUE(isDebianName(QLatin1String(name))) << name;
    for (const char *name : {"NetworkManager", "python3_x", "foo-1.0~rc1-2.fc40.x86_64", "foo-1:2-3.noarch"})
        EXPECT_TRUE(isRpmName(QLatin1String(name))) << name;
    EXPECT_TRUE(isFlatpakId(QStringLiteral("org.gnome.Chess")));
    EXPECT_TRUE(isFlatpakReference(QStringLiteral("app/org.gnome.Chess/x86_64/stable"),
                                   QStringLiteral("org.gnome.Chess")));
    EXPECT_TRUE(isSnapName(QStringLiteral("foo-bar_work")));
}

TEST(PackageNames, AreRefusedWhereTheyCouldBeReadAsAnythingElse)
{
    const QStringList hostile = {QString(),
                                 QStringLiteral("-rf"),
                                 QStringLiteral("--purge"),
                                 QStringLiteral("foo bar"),
                                 QStringLiteral("foo\n"),
                                 QStringLiteral("foo\n-x"),
                                 QStringLiteral("foo/../bar"),
                                 QStringLiteral("*"),
                                 QStringLiteral("foo*"),
                                 QStringLiteral("f?o"),
                                 QStringLiteral("$(reboot)"),
                                 QStringLiteral("foo;bar"),
                                 QStringLiteral("foo=1.0"),
                                 QStringLiteral("./foo.deb"),
                                 QStringLiteral("fo\u00f6"),
                                 QStringLiteral("f\uff4fo"),
                                 QStringLiteral("foo:"),
                                 QStringLiteral("foo") + QChar(0),
                                 QString(300, u'a')};
    for (const QString &name : hostile) {
        EXPECT_FALSE(isDebianName(name)) << qPrintable(name);
        EXPECT_FALSE(isRpmName(name) && name != QStringLiteral("foo:")) << qPrintable(name);
        EXPECT_FALSE(isFlatpakId(name)) << qPrintable(name);
        EXPECT_FALSE(isSnapName(name)) << qPrintable(name);
    }
    const QString id = QStringLiteral("org.foo.Bar");
    for (const char *reference :
         {"org.foo.Bar", "runtime/org.foo.Bar/x86_64/stable", "app/org.foo.Bar/x86_64",
          "app/org.foo.Bar/x86_64/..", "app/org.foo.Bar/x86_64/stable/x", "app/org.foo.Barn/x86_64/stable",
          "app/org.foo.Bar/x86_64/-y"})
        EXPECT_FALSE(isFlatpakReference(QLatin1String(reference), id)) << reference;
}

TEST(PackageNames, NoRandomTextThatIsAcceptedHoldsAnythingButItsAlphabet)
{
    std::mt19937 random(20240611);
    const QString alphabet = QStringLiteral("abzAZ09+.-:_~^/ *?[]$'\"\\\n\t;=@!%&|<>(){}\u00e9");
    const QString allowed = QStringLiteral("abzAZ09+.-:_~^");
    std::uniform_int_distribution<int> pick(0, int(alphabet.size()) - 1);
    int accepted = 0;
    for (int i = 0; i < 20000; ++i) {
        QString name;
        for (int length = i % 5 + 1; length > 0; --length)
            name += alphabet.at(pick(random));
        if (!isDebianName(name) && !isRpmName(name) && !isFlatpakId(name) && !isSnapName(name))
            continue;
        ++accepted;
        ASSERT_FALSE(name.startsWith(u'-')) << qPrintable(name);
        for (const QChar character : name)
            ASSERT_TRUE(allowed.contains(character)) << qPrintable(name);
    }
    EXPECT_GT(accepted, 100);
}

TEST(PackageNames, TellTheArchitectureOnlyWhereItIsAnothers)
{
    const QString own = QSysInfo::buildCpuArchitecture();
    EXPECT_EQ(listedName(PackageKind::Debian, QStringLiteral("foo"), own), QStringLiteral("foo"));
    EXPECT_EQ(listedName(PackageKind::Debian, QStringLiteral("foo"), QStringLiteral("all")),
              QStringLiteral("foo"));
    EXPECT_EQ(listedName(PackageKind::Debian, QStringLiteral("foo"), QStringLiteral("vax")),
              QStringLiteral("foo:vax"));
    EXPECT_EQ(listedName(PackageKind::Rpm, QStringLiteral("foo"), QStringLiteral("vax")),
              QStringLiteral("foo.vax"));
}

TEST(FileSpellings, HaveBothFormsOfMergedFolders)
{
    EXPECT_THAT(mergedForms("/usr/bin/foo"), ElementsAre("/usr/bin/foo", "/bin/foo"));
    EXPECT_THAT(mergedForms("/lib64/foo"), ElementsAre("/lib64/foo", "/usr/lib64/foo"));
    EXPECT_THAT(mergedForms("/usr/share/foo"), ElementsAre("/usr/share/foo"));
    EXPECT_THAT(mergedForms("/binary/foo"), ElementsAre("/binary/foo"));
    EXPECT_THAT(spellingsOf("relative").own, IsEmpty());
    EXPECT_THAT(spellingsOf(QByteArray("/a\0b", 4)).own, IsEmpty());
}

TEST(FileSpellings, FollowLinksInTheFolderAndAtTheFile)
{
    const testing::TestHome home;
    const QByteArray real = QDir(home.path()).canonicalPath().toUtf8();
    home.write(QStringLiteral("real/entry"), "x");
    QFile::link(home.path(QStringLiteral("real")), home.path(QStringLiteral("linked")));
    QFile::link(home.path(QStringLiteral("real/entry")), home.path(QStringLiteral("real/link")));

    const FileSpellings entry = spellingsOf(home.path(QStringLiteral("linked/entry")).toUtf8());
    EXPECT_TRUE(entry.own.contains(home.path(QStringLiteral("linked/entry")).toUtf8()));
    EXPECT_TRUE(entry.own.contains(real + "/real/entry"));
    EXPECT_THAT(entry.target, IsEmpty());

    // The link is one file and what it leads to another: each may have an owner.
    const FileSpellings link = spellingsOf(real + "/linked/link");
    EXPECT_THAT(link.own, ElementsAre(real + "/linked/link", real + "/real/link"));
    EXPECT_THAT(link.target, ElementsAre(real + "/real/entry"));

    const QByteArray strange = real + "/no \xff\xfe\n'$(x)'";
    EXPECT_THAT(spellingsOf(strange).own, ElementsAre(strange));
}

} // namespace
} // namespace quillbay::platform
