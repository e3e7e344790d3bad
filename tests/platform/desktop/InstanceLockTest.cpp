#include "platform/linux/desktop/InstanceLock.h"

#include "support/TestHome.h"

#include <QDir>
#include <QFile>

#include <memory>

#include <gtest/gtest.h>
#include <sys/stat.h>

using quillbay::platform::InstanceLock;
using quillbay::testing::TestHome;
using Outcome = InstanceLock::Outcome;

TEST(InstanceLock, IsHeldByOneUntilItGoes)
{
    const TestHome home;
    const QString name = QStringLiteral("lock");
    auto first = std::make_unique<InstanceLock>();
    EXPECT_EQ(first->acquire(home.path(), name), Outcome::Held);
    InstanceLock second;
    EXPECT_EQ(second.acquire(home.path(), name), Outcome::Taken);
    first.reset();
    EXPECT_EQ(second.acquire(home.path(), name), Outcome::Held);
}

TEST(InstanceLock, LocksNothingButAFileOfItsOwn)
{
    const TestHome home;
    const QString target = home.write(QStringLiteral("target"), "precious");
    ASSERT_TRUE(QFile::link(target, home.path(QStringLiteral("link"))));
    ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral("folder")));
    ASSERT_EQ(::mkfifo(QFile::encodeName(home.path(QStringLiteral("pipe"))).constData(), 0600), 0);
    for (const char *name : {"link", "folder", "pipe"})
        EXPECT_EQ(InstanceLock().acquire(home.path(), QLatin1String(name)), Outcome::Unavailable) << name;
    EXPECT_EQ(InstanceLock().acquire(home.path(QStringLiteral("missing")), QStringLiteral("lock")),
              Outcome::Unavailable);
}

TEST(InstanceLock, PrivateFolderIsNobodyElses)
{
    const TestHome home;
    EXPECT_EQ(InstanceLock::privateFolder(), home.path(QStringLiteral("run")));

    // A runtime folder that others can write to does not count; one below the temporary folder is made
    // instead.
    const QByteArray runtime = QFile::encodeName(home.path(QStringLiteral("run")));
    ASSERT_EQ(::chmod(runtime.constData(), 0777), 0);
    const QByteArray oldTemporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(home.path()));
    const QString made = InstanceLock::privateFolder();
    EXPECT_TRUE(made.startsWith(home.path(QStringLiteral("quillbay-")))) << qPrintable(made);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(made).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);

    // Somebody else prepared that folder.
    ASSERT_EQ(::chmod(QFile::encodeName(made).constData(), 0777), 0);
    EXPECT_TRUE(InstanceLock::privateFolder().isEmpty());
    oldTemporary.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", oldTemporary);
}
