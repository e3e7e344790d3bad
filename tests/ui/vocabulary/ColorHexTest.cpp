#include "ui/vocabulary/ColorHex.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

const QColor failure(1, 1, 0, 1);

QColor parsed(const char *text)
{
    return colorFromHex(QString::fromUtf8(text));
}

TEST(ColorHex, readsTheThreeForms)
{
    for (const char *white : {"FFF", "FFFFFF", "FFFFFFFF", "#ffffff"})
        EXPECT_EQ(parsed(white), QColor(255, 255, 255, 255)) << white;
    EXPECT_EQ(parsed("1A2"), QColor(17, 170, 34));
    EXPECT_EQ(parsed("#007AFF"), QColor(0, 122, 255));
    EXPECT_EQ(parsed("80FF0000"), QColor(255, 0, 0, 128)) << "alpha stands first";
}

TEST(ColorHex, trimsWhatIsNotAlphanumericAtBothEndsOnly)
{
    EXPECT_EQ(parsed(" \t##FF3B30 ;\n"), QColor(255, 59, 48));
    // Seven characters with the one inside, which also ends the number.
    EXPECT_EQ(parsed("FF3#B30"), failure);
    EXPECT_EQ(parsed("FF#B30"), QColor(0, 0, 0xff));
}

TEST(ColorHex, otherLengthsAreNearlyTransparent)
{
    for (const char *bad : {"", "#", "12345", "F", "1234567", "123456789", "FFFFFFFFFFFFFFFFFFFF"})
        EXPECT_EQ(parsed(bad), failure) << bad;
}

TEST(ColorHex, lettersThatAreNoDigitsEndTheNumber)
{
    EXPECT_EQ(parsed("zzzzzz"), QColor(0, 0, 0, 255));
    EXPECT_EQ(parsed("12xyzw"), QColor(0, 0, 0x12));
    EXPECT_EQ(parsed("0xFF00"), QColor(0, 0xff, 0)) << "a prefix counts as characters";
    EXPECT_EQ(parsed("0xF"), QColor(0, 0, 255));
}

TEST(ColorHex, countsCharactersAsAReaderDoes)
{
    // An e with an accent of its own is one character of three; a letter outside the basic plane is one, too.
    EXPECT_EQ(parsed("12e\xcc\x81"), QColor(17, 34, 238));
    EXPECT_EQ(parsed("\xf0\x9d\x90\x80zz"), QColor(0, 0, 0, 255));
}

} // namespace
} // namespace quillbay
