#include "foundation/ByteCount.h"

#include <QLocale>

#include <limits>

#include <gtest/gtest.h>

namespace quillbay {

namespace {

TEST(ByteCount, ReadsAsFileSizesDo)
{
    const std::pair<qint64, const char *> cases[] = {
        {0, "Zero KB"},
        {1, "1 byte"},
        {999, "999 bytes"},
        {1'000, "1 KB"},
        {1'499, "1 KB"},
        {1'500, "2 KB"},
        {999'499, "999 KB"},
        {999'500, "1 MB"},
        {1'250'000, "1.3 MB"},
        {20'000'000, "20 MB"},
        {20'100'000, "20.1 MB"},
        {999'949'999, "999.9 MB"},
        {999'950'000, "1 GB"},
        {3'070'000'000, "3.07 GB"},
        {3'100'000'000, "3.1 GB"},
        {2'500'000'000'000, "2.5 TB"},
        {std::numeric_limits<qint64>::max(), "9.22 EB"},
    };
    for (const auto &[bytes, text] : cases)
        EXPECT_EQ(byteCountText(bytes), QLatin1String(text));

    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(byteCountText(3'070'000'000), QStringLiteral("3,07 GB"));
    QLocale::setDefault(before);
}

TEST(ByteCount, SumsStayInRange)
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    EXPECT_EQ(addByteCounts(2, 3), 5);
    EXPECT_EQ(addByteCounts(most - 1, 1), most);
    EXPECT_EQ(addByteCounts(most, most), most);
}

} // namespace

} // namespace quillbay
