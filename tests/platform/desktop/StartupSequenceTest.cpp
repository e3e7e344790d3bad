#include "platform/linux/desktop/StartupSequence.h"

#include <gtest/gtest.h>

using namespace quillbay::platform;

TEST(StartupSequence, TakesTheTimeFromTheEndOfAnId)
{
    EXPECT_EQ(startupTime(QStringLiteral("panel-12-host-3_TIME4294967295")), 4294967295U);
    EXPECT_EQ(startupTime(QStringLiteral("a_TIME1_TIME22")), 22U);
    for (const char *id : {"", "plain", "x_TIME", "x_TIMEabc", "x_TIME4294967296", "x_TIME-1"})
        EXPECT_EQ(startupTime(QLatin1String(id)), std::nullopt) << id;
}

TEST(StartupSequence, EndsASequenceInQuotedPieces)
{
    EXPECT_EQ(startupFinishedText(QStringLiteral("a \"b\" \\c")),
              QByteArray("remove: ID=\"a \\\"b\\\" \\\\c\""));
    const QByteArray exact(20, 'x');
    EXPECT_EQ(clientMessagePieces(exact), QList<QByteArray>({exact, QByteArray(20, '\0')}));
    EXPECT_EQ(clientMessagePieces("abc"), QList<QByteArray>({QByteArray("abc") + QByteArray(17, '\0')}));
}
