#include "platform/linux/applications/LinuxApplicationSource.h"
#include "support/TestHome.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace quillbay::platform {
namespace {

using ::testing::UnorderedElementsAre;

constexpr uid_t Nobody = 65534;
const QByteArray Good = "[Desktop Entry]\nType=Application\nExec=true\nName=Good\n";

/// One good entry among what may lie in an applications folder by accident or ill will. A scan takes
/// milliseconds; the bound only tells it from one that hangs.
class BadInputTest : public ::testing::Test
{
protected:
    static constexpr qint64 HangGuard = 30000;

    BadInputTest()
    {
        m_environment.home = m_home.path(QStringLiteral("home"));
        m_environment.dataHome = m_home.path(QStringLiteral("data"));
        write("good.desktop", Good);
    }

    QString path(const char *name) const
    {
        return m_home.path(QStringLiteral("data/applications/") + QString::fromUtf8(name));
    }
    QByteArray native(const char *name) const { return QFile::encodeName(path(name)); }
    void write(const char *name, const QByteArray &content)
    {
        m_home.write(QStringLiteral("data/applications/") + QString::fromUtf8(name), content);
    }

    std::vector<std::string> scannedFiles() const
    {
        QElapsedTimer timer;
        timer.start();
        std::vector<std::string> files;
        for (const InstalledApplication &application : LinuxApplicationSource(m_environment).scan())
            files.push_back(application.path.section(u'/', -1).toStdString());
        EXPECT_LT(timer.elapsed(), HangGuard);
        return files;
    }

    testing::TestHome m_home;
    ApplicationEnvironment m_environment;
};

TEST_F(BadInputTest, EnormousFilesAreRefusedAndManyLinesAreNot)
{
    QFile huge(path("huge.desktop"));
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    ASSERT_EQ(huge.write(Good), Good.size());
    ASSERT_TRUE(huge.resize(100 << 20)); // with a hole: it takes no room
    write("million-lines.desktop", Good + QByteArray(1000000, '\n'));
    write("too-many-lines.desktop", Good + QByteArray(2000000, '\n'));
    write("long-line.desktop", Good + "Comment=" + QByteArray(1000000, 'x'));
    write("long-list.desktop", Good + "OnlyShowIn=" + QByteArray(1000000, ';') + "\n");
    EXPECT_THAT(scannedFiles(),
                UnorderedElementsAre("good.desktop", "million-lines.desktop", "long-line.desktop"));
}

TEST_F(BadInputTest, WhatIsNoRegularFileIsNotOpened)
{
    ASSERT_EQ(::mkfifo(native("pipe.desktop").constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(QStringLiteral("pipe.desktop"), path("to-pipe.desktop")));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(native("s.desktop").size(), qsizetype(sizeof address.sun_path));
    std::strcpy(address.sun_path, native("s.desktop").constData());
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    ::close(socket);
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), path("zero.desktop")));
    ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), path("dangling.desktop")));
    ASSERT_TRUE(QFile::link(QStringLiteral("circle.desktop"), path("circle.desktop")));
    // In the place of a bundle's list, too.
    QDir().mkpath(m_home.path(QStringLiteral("home/Applications/Pipe.app/Contents")));
    const QString list = m_home.path(QStringLiteral("home/Applications/Pipe.app/Contents/Info.plist"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(list).constData(), 0600), 0);
    EXPECT_THAT(scannedFiles(), UnorderedElementsAre("Pipe.app", "good.desktop"));
    EXPECT_FALSE(LinuxApplicationSource(m_environment).read(path("pipe.desktop")));
}

TEST_F(BadInputTest, FoldersThatLinkToEachOtherAreReadOnce)
{
    for (const char *name : {"a", "b", "c", "d"}) {
        write((std::string(name) + "/" + name + ".desktop").c_str(), Good);
        for (const char *other : {"a", "b", "c", "d"}) {
            const QString link = path(name) + QStringLiteral("/to-") + QString::fromLatin1(other);
            ASSERT_TRUE(QFile::link(QStringLiteral("../") + QString::fromLatin1(other), link));
        }
        ASSERT_TRUE(QFile::link(QStringLiteral(".."), path(name) + QStringLiteral("/up")));
    }
    ASSERT_TRUE(QFile::link(QStringLiteral("."), path("self")));
    EXPECT_THAT(scannedFiles(),
                UnorderedElementsAre("good.desktop", "a.desktop", "b.desktop", "c.desktop", "d.desktop"));
}

TEST_F(BadInputTest, NestingIsFollowedToABound)
{
    QString deep;
    for (int depth = 0; depth < 300; ++depth) {
        deep += QStringLiteral("d/");
        if (depth == 9)
            write((deep + QStringLiteral("ten.desktop")).toUtf8().constData(), Good);
    }
    write((deep + QStringLiteral("too-deep.desktop")).toUtf8().constData(), Good);
    EXPECT_THAT(scannedFiles(), UnorderedElementsAre("good.desktop", "ten.desktop"));
}

TEST_F(BadInputTest, NamesThatAreNotUtf8ArePassedOver)
{
    for (const char *name : {"/bad-\xff.desktop", "/bad-\xff/"}) {
        QByteArray file = native("good.desktop").replace("/good.desktop", name);
        if (file.endsWith('/')) {
            ASSERT_EQ(::mkdir(file.constData(), 0700), 0);
            file += "inside.desktop";
        }
        const int descriptor = ::open(file.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        ASSERT_GE(descriptor, 0);
        ASSERT_EQ(::write(descriptor, Good.constData(), size_t(Good.size())), Good.size());
        ::close(descriptor);
    }
    write("\u00e4\u65e5.desktop", Good);
    EXPECT_THAT(scannedFiles(), UnorderedElementsAre("good.desktop", "\u00e4\u65e5.desktop"));
    // Qt cannot remove them at the end of the test.
    std::filesystem::remove_all(m_home.path(QStringLiteral("data")).toStdString());
}

TEST_F(BadInputTest, WhatMayNotBeReadIsPassedOver)
{
    write("closed/inside.desktop", Good);
    write("unreadable.desktop", Good);
    const bool isRoot = ::geteuid() == 0; // who may read everything
    if (isRoot) {
        ASSERT_EQ(::chown(QFile::encodeName(m_home.path()).constData(), Nobody, Nobody), 0);
        for (const auto &file : std::filesystem::recursive_directory_iterator(m_home.path().toStdString()))
            ASSERT_EQ(::lchown(file.path().c_str(), Nobody, Nobody), 0);
        ASSERT_EQ(::seteuid(Nobody), 0);
    }
    EXPECT_EQ(::chmod(native("closed").constData(), 0), 0);
    EXPECT_EQ(::chmod(native("unreadable.desktop").constData(), 0), 0);
    EXPECT_THAT(scannedFiles(), UnorderedElementsAre("good.desktop"));
    EXPECT_EQ(::chmod(native("closed").constData(), 0700), 0); // to be removed at the end
    if (isRoot) {
        ASSERT_EQ(::seteuid(0), 0);
    }
}

} // namespace
} // namespace quillbay::platform
