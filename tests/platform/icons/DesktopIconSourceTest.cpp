#include "platform/linux/icons/DesktopIconSource.h"

#include "platform/icons/Fixtures.h"
#include "platform/linux/icons/AppImagePictures.h"
#include "support/FakeApplications.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QtEndian>

#include <elf.h>
#include <gmock/gmock.h>

namespace quillbay::platform {
namespace {

using quillbay::testing::FakeApplicationSource;
using quillbay::testing::middle;
using quillbay::testing::png;
using quillbay::testing::svg;
using quillbay::testing::TestHome;
using quillbay::testing::themeIndex;

class DesktopIconSourceTest : public ::testing::Test
{
protected:
    QImage iconOf(const QString &icon, int edge = 80)
    {
        ApplicationDetails details;
        details.icon = icon;
        applications.setDetails(application, details);
        return source.icon(application, edge);
    }
    static QString text(const char *latin) { return QString::fromLatin1(latin); }

    const QString application = QStringLiteral("/apps/one.desktop");
    TestHome home;
    FakeApplicationSource applications;
    DesktopIconSource source{applications};
};

TEST_F(DesktopIconSourceTest, FindsNamedAndAbsoluteIconsAtEveryScale)
{
    home.write(text("usr/share/icons/hicolor/48x48/apps/named.png"), png(48, Qt::red));
    home.write(text("usr/share/icons/hicolor/scalable/apps/drawn.svg"), svg(Qt::blue));
    const QString absolute = home.write(text("opt/app/icon.png"), png(256, Qt::green));
    for (const int edge : {80, 100, 120, 160}) {
        EXPECT_EQ(iconOf(text("named"), edge).size(), QSize(edge, edge));
        EXPECT_EQ(middle(iconOf(text("named"), edge)), QColor(Qt::red));
        EXPECT_EQ(middle(iconOf(text("drawn.png"), edge)), QColor(Qt::blue));
        EXPECT_EQ(middle(iconOf(absolute, edge)), QColor(Qt::green));
    }
}

TEST_F(DesktopIconSourceTest, ABrokenFileGivesWayToTheNextBest)
{
    home.write(text("usr/share/icons/hicolor/128x128/apps/app.png"), "broken");
    home.write(text("usr/share/icons/hicolor/scalable/apps/app.svg"), "<svg");
    home.write(text("usr/share/pixmaps/app.png"), png(32, Qt::red));
    EXPECT_EQ(middle(iconOf(text("app"))), QColor(Qt::red));
}

TEST_F(DesktopIconSourceTest, WhatCannotBeReadIsNoIcon)
{
    home.write(text("usr/share/icons/hicolor/48x48/apps/foo.png"), png(48, Qt::red));
    const QString broken = home.write(text("broken.png"), "broken");
    EXPECT_TRUE(source.icon(text("/not/there.desktop"), 80).isNull());
    for (const QString &icon :
         {QString(), text("foo-bar"), text("missing"), broken, text("/not/there.png"), home.path()})
        EXPECT_TRUE(iconOf(icon).isNull()) << icon.toStdString();
    EXPECT_EQ(iconOf(text("foo"), 0).size(), QSize(1, 1));
    EXPECT_EQ(source.genericIcon(-5).size(), QSize(1, 1));
}

TEST_F(DesktopIconSourceTest, ADocumentHasTheIconOfItsKindOrThatOfAnyText)
{
    home.write(text("usr/share/icons/hicolor/index.theme"),
               "[Icon Theme]\nName=Hicolor\nDirectories=48x48/mimetypes\n"
               "[48x48/mimetypes]\nSize=48\nContext=MimeTypes\n");
    const QString folder = text("usr/share/icons/hicolor/48x48/mimetypes/");
    const QString report = text("/home/a/Report 1.pdf");
    const QDir kinds(QFile::decodeName(qgetenv("XDG_DATA_HOME")) + text("/mime/packages"));
    ASSERT_TRUE(kinds.mkpath(text(".")));
    QFile database(kinds.filePath(text("freedesktop.org.xml")));
    ASSERT_TRUE(database.open(QIODevice::WriteOnly));
    database.write("<mime-info xmlns='http://www.freedesktop.org/standards/shared-mime-info'>"
                   "<mime-type type='application/pdf'><glob pattern='*.pdf'/></mime-type></mime-info>");
    database.close();
    const QString picture = folder + text("application-pdf.png");
    home.write(folder + text("text-x-generic.png"), png(48, Qt::red));
    home.write(picture, png(48, Qt::blue));
    EXPECT_EQ(middle(source.documentIcon(report, 64)), QColor(Qt::blue));
    ASSERT_TRUE(QFile::remove(home.path(picture)));
    source.refresh();
    EXPECT_EQ(middle(source.documentIcon(report, 64)), QColor(Qt::red));
}

TEST_F(DesktopIconSourceTest, LooksAtTheDiskAgainWhenTold)
{
    const QString first = home.write(text("usr/share/icons/hicolor/48x48/apps/app.png"), png(48, Qt::red));
    home.write(text("usr/share/pixmaps/app.png"), png(48, Qt::blue));
    EXPECT_EQ(middle(iconOf(text("app"))), QColor(Qt::red));
    EXPECT_TRUE(iconOf(text("late")).isNull());
    home.write(text("usr/share/icons/hicolor/64x64/apps/late.png"), png(64, Qt::green));
    source.refresh();
    EXPECT_EQ(middle(iconOf(text("late"))), QColor(Qt::green));
    ASSERT_TRUE(QFile::remove(first));
    source.refresh();
    EXPECT_EQ(middle(iconOf(text("app"))), QColor(Qt::blue)) << "the file has gone from where it was listed";
}

TEST_F(DesktopIconSourceTest, FollowsTheTheme)
{
    for (const auto &[name, color] : {std::pair{"Red", Qt::red}, std::pair{"Blue", Qt::blue}}) {
        const QString folder = text("usr/share/icons/%1/").arg(text(name));
        home.write(folder + text("index.theme"), themeIndex({{"apps", "Size=48\nContext=Applications"}}));
        home.write(folder + text("apps/app.png"), png(48, color));
    }
    source.setTheme(text("Red"));
    EXPECT_EQ(middle(iconOf(text("app"))), QColor(Qt::red));
    source.setTheme(text("Blue"));
    EXPECT_EQ(middle(iconOf(text("app"))), QColor(Qt::blue));
}

TEST_F(DesktopIconSourceTest, TheGenericIconIsSolidInsideAndClearAtTheCorners)
{
    for (const int edge : {1, 16, 80, 160, 512}) {
        const QImage icon = source.genericIcon(edge);
        ASSERT_EQ(icon.size(), QSize(edge, edge));
        EXPECT_EQ(icon.format(), QImage::Format_ARGB32_Premultiplied);
        EXPECT_GT(middle(icon).alpha(), 0);
        if (edge >= 16) {
            EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
        }
    }
}

/// An ELF header that says where its section headers are, these, and the file system behind them.
QByteArray elfHeader(quint64 sectionsAt, quint16 sectionSize, quint16 sections)
{
    Elf64_Ehdr header = {};
    memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = ELFCLASS64;
    header.e_ident[EI_DATA] = ELFDATA2LSB;
    header.e_shoff = qToLittleEndian(sectionsAt);
    header.e_shentsize = qToLittleEndian(sectionSize);
    header.e_shnum = qToLittleEndian(sections);
    return {reinterpret_cast<const char *>(&header), sizeof header};
}

TEST(AppImage, FileSystemBeginsBehindTheSectionHeaders)
{
    EXPECT_EQ(elfEnd(elfHeader(1000, 64, 10)), 1640);
    QByteArray big = elfHeader(0, 0, 0);
    big[EI_CLASS] = ELFCLASS32;
    big[EI_DATA] = ELFDATA2MSB;
    Elf32_Ehdr header;
    memcpy(&header, big.constData(), sizeof header);
    header.e_shoff = qToBigEndian<quint32>(500);
    header.e_shentsize = qToBigEndian<quint16>(40);
    header.e_shnum = qToBigEndian<quint16>(3);
    memcpy(big.data(), &header, sizeof header);
    EXPECT_EQ(elfEnd(big), 620);
    EXPECT_FALSE(elfEnd(elfHeader(~0ULL, 64, 10)));
    EXPECT_FALSE(elfEnd(elfHeader(0, 0, 0).first(40)));
    EXPECT_FALSE(elfEnd("#!/bin/sh\n"));
    EXPECT_FALSE(elfEnd({}));
}

class AppImageTest : public DesktopIconSourceTest
{
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(text("mksquashfs")).isEmpty() ||
            QStandardPaths::findExecutable(text("unsquashfs")).isEmpty())
            GTEST_SKIP() << "squashfs-tools are not installed";
    }

    /// Packs the folder "image" of the home.
    QString pack()
    {
        const QString packed = home.path(text("packed"));
        QFile::remove(packed);
        QProcess tool;
        tool.start(text("mksquashfs"),
                   {home.path(text("image")), packed, text("-quiet"), text("-no-progress")});
        if (!tool.waitForFinished() || tool.exitCode() != 0)
            qFatal("mksquashfs failed: %s", tool.readAllStandardError().constData());
        QFile content(packed);
        if (!content.open(QIODevice::ReadOnly))
            qFatal("nothing was packed");
        return home.write(text("One.AppImage"),
                          elfHeader(4096, 64, 5).leftJustified(4096 + 64 * 5, 'x') + content.readAll());
    }
};

TEST_F(AppImageTest, ShowsItsOwnIcon)
{
    home.write(text("image/.DirIcon"), png(128, Qt::red));
    EXPECT_EQ(middle(source.icon(pack(), 80)), QColor(Qt::red));
}

TEST_F(AppImageTest, FollowsLinksToTheIconAndNoticesAnotherImage)
{
    home.write(text("image/usr/share/icons/app.svg"), svg(Qt::blue));
    ASSERT_TRUE(QFile::link(text("usr/share/icons/app.svg"), home.path(text("image/app.svg"))));
    ASSERT_TRUE(QFile::link(text("/app.svg"), home.path(text("image/.DirIcon"))));
    EXPECT_EQ(middle(source.icon(pack(), 80)), QColor(Qt::blue));
    ASSERT_TRUE(QDir(home.path(text("image"))).removeRecursively());
    home.write(text("image/.DirIcon"), png(1000, Qt::green));
    EXPECT_EQ(middle(source.icon(pack(), 80)), QColor(Qt::green));
}

TEST_F(AppImageTest, HasNoIconWhereThereIsNone)
{
    home.write(text("image/other"), "x");
    EXPECT_TRUE(source.icon(pack(), 80).isNull());
    ASSERT_TRUE(QFile::link(text("loop"), home.path(text("image/.DirIcon"))));
    ASSERT_TRUE(QFile::link(text(".DirIcon"), home.path(text("image/loop"))));
    EXPECT_TRUE(source.icon(pack(), 80).isNull());
    QFile(home.path(text("image/.DirIcon"))).remove();
    home.write(text("image/.DirIcon"), png(16, Qt::red) + QByteArray(5 * 1024 * 1024, 'x'));
    EXPECT_TRUE(source.icon(pack(), 80).isNull());
    const QString broken = home.write(text("Broken.AppImage"), elfHeader(64, 0, 0) + "hsqs and no more");
    EXPECT_TRUE(source.icon(broken, 80).isNull());
    EXPECT_TRUE(source.icon(home.path(text("Missing.AppImage")), 80).isNull());
}

} // namespace
} // namespace quillbay::platform
