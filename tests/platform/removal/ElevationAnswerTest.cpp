#include "platform/linux/uninstalling/removal/ElevationAnswer.h"

#include "elevate/CommandLine.h"
#include "platform/linux/uninstalling/removal/ElevationHelper.h"
#include "support/HostileTree.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

using Outcome = ElevationResult::Outcome;

TEST(ElevationAnswer, ExitCodesMeanWhatTheirProgramMeans)
{
    const QByteArray started = "quillbay-elevate: started\n";
    const QByteArray dismissed = "Error executing command as another user: Request dismissed\n";
    const QByteArray noAgent = "Error executing command as another user: No authentication agent found.\n";
    const QByteArray denied =
        "Error executing command as another user: Not authorized\n\nThis incident has been "
        "reported.\n";
    const struct
    {
        PkexecEnd end;
        Outcome outcome;
    } cases[] = {
        {{false, 0, started, {}}, Outcome::Done},
        {{false, 1, started, "Read-only file system\n"}, Outcome::CommandFailed},
        {{false, 2, started, {}}, Outcome::CommandFailed},
        {{false, 3, started, {}}, Outcome::CommandFailed},
        {{false, 4, started, {}}, Outcome::Changed},
        // The helper's own, whatever the number says.
        {{false, 126, started, dismissed}, Outcome::CommandFailed},
        {{false, 127, started, noAgent}, Outcome::CommandFailed},
        {{true, 0, started, {}}, Outcome::CommandFailed},
        {{true, 9, started, {}}, Outcome::CommandFailed},
        {{false, 126, {}, dismissed}, Outcome::Refused},
        {{false, 126, {}, {}}, Outcome::Refused},
        {{false, 127, {}, noAgent}, Outcome::NoAgent},
        {{false, 127, {}, denied}, Outcome::NotPermitted},
        {{false, 127, {}, "no bus\n"}, Outcome::Unavailable},
        // Nobody has seen the helper: nothing is done, whatever the code.
        {{false, 0, {}, {}}, Outcome::Unavailable},
        {{false, 0, "quillbay-elevate: start", {}}, Outcome::Unavailable},
        {{false, 0, "\nquillbay-elevate: started\n", {}}, Outcome::Unavailable},
        {{false, 4, {}, {}}, Outcome::Unavailable},
        {{true, 126, {}, {}}, Outcome::Unavailable},
    };
    for (const auto &each : cases)
        EXPECT_EQ(readAnswer(each.end).outcome, each.outcome)
            << each.end.exitCode << each.end.output.constData() << each.end.errors.constData();
    EXPECT_EQ(readAnswer({false, 1, started, "Read-only file system\nmore"}).description,
              QStringLiteral("Read-only file system"));
}

TEST(ElevationHelper, ArgumentsCarryEveryByte)
{
    quillbay::testing::HostileTree names(17, {});
    int plain = 0;
    for (int i = 0; i < 5000; ++i) {
        const QByteArray line = "rm -rf '/" + QByteArray::fromStdString(names.name()) + '\'';
        const QStringList arguments = helperArguments({line, {1, 2, 3}});
        ASSERT_EQ(arguments.size(), 2);
        const std::string text = QFile::encodeName(arguments[1]).toStdString();
        for (const QChar each : arguments[1])
            ASSERT_TRUE(each.isPrint() || each.isSurrogate()) << "the question shows it";
        if (arguments[0] == u"file=1:2:3") {
            ++plain;
            ASSERT_EQ(text, line.toStdString());
        } else {
            ASSERT_EQ(arguments[0], QStringLiteral("file=1:2:3,escaped"));
            ASSERT_EQ(elevate::unescaped(text), line.toStdString());
        }
    }
    EXPECT_GT(plain, 500);
    EXPECT_LT(plain, 4500);
    EXPECT_EQ(helperArguments({"rm -rf '/a\xe2\x80\xae'", {}})[1], QStringLiteral("rm -rf '/a%E2%80%AE'"))
        << "turns the text around on the screen";
}

TEST(ElevationHelper, OnlyRootsOwnProgramIsTrustedWhereItIsInstalled)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("quillbay-elevate"));
    EXPECT_FALSE((ElevationHelper{path, false}).isTrustworthy()) << "missing";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0644), 0);
    EXPECT_FALSE((ElevationHelper{path, false}).isTrustworthy()) << "no program";
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0755), 0);
    EXPECT_TRUE((ElevationHelper{path, false}).isTrustworthy());
    EXPECT_EQ((ElevationHelper{path, true}).isTrustworthy(), getuid() == 0);
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0775), 0);
    EXPECT_FALSE((ElevationHelper{path, true}).isTrustworthy()) << "a group may write it";
    if (getuid() == 0) {
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0755), 0);
        ASSERT_EQ(chown(QFile::encodeName(path).constData(), 1234, 0), 0);
        EXPECT_FALSE((ElevationHelper{path, true}).isTrustworthy()) << "another's";
    }
    const QString link = folder.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/true"), link));
    EXPECT_FALSE((ElevationHelper{link, true}).isTrustworthy()) << "a link";
}

} // namespace quillbay::platform
