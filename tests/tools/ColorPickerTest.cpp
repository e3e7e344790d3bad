#include "tools/ColorPicker.h"

#include "support/FakeColorSampler.h"
#include "tools/ToolFixture.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTimer>

#include <limits>

namespace quillbay::testing {
namespace {

using platform::ColorSample;

class ColorPickerTest : public ToolFixture
{
protected:
    static QString copied() { return QGuiApplication::clipboard()->text(); }
    static QString hexOf(double red, double green, double blue)
    {
        return hexOfSample({ColorSample::Outcome::Picked, red, green, blue, {}});
    }
    void pick(int gray)
    {
        picker.pick();
        sampler.pick(gray / 255.0, gray / 255.0, gray / 255.0);
    }

    FakeColorSampler sampler;
    ColorPicker picker{sampler, storage};
};

TEST_F(ColorPickerTest, ChannelsAreCutOffNotRounded)
{
    EXPECT_EQ(hexOf(1, 1, 1), QStringLiteral("#FFFFFF"));
    EXPECT_EQ(hexOf(0.999, 0, 0.5), QStringLiteral("#FE007F"));
    EXPECT_EQ(hexOf(-0.2, 1.7, std::numeric_limits<double>::quiet_NaN()), QStringLiteral("#00FF00"));
    for (int value = 0; value < 256; ++value) {
        const QString wanted =
            QString::asprintf("#%02X%02X%02X", unsigned(value), unsigned(value), unsigned(value));
        ASSERT_EQ(hexOf(value / 255.0, value / 255.0, double(float(value) / 255)), wanted)
            << "a channel of 8 bits comes back as it is";
    }
}

TEST_F(ColorPickerTest, APickIsShownCopiedAndKept)
{
    picker.pick();
    picker.pick();
    EXPECT_EQ(sampler.samplings, 1);
    EXPECT_TRUE(picker.hexColor().isEmpty());
    sampler.pick(1, 0.5, 0);
    EXPECT_EQ(picker.hexColor(), QStringLiteral("#FF7F00"));
    EXPECT_EQ(picker.copyMessage(), QStringLiteral("HEX Copied!"));
    EXPECT_EQ(copied(), QStringLiteral("#FF7F00"));
    EXPECT_EQ(stored().recentColors(), QStringList{QStringLiteral("#FF7F00")});

    picker.begin();
    EXPECT_TRUE(picker.hexColor().isEmpty());
    EXPECT_TRUE(picker.copyMessage().isEmpty());
}

TEST_F(ColorPickerTest, ACancelledOrImpossiblePickChangesNothing)
{
    pick(7);
    for (const auto outcome : {ColorSample::Outcome::Cancelled, ColorSample::Outcome::Unavailable}) {
        picker.pick();
        sampler.answer({outcome, 1, 1, 1, {}});
        EXPECT_EQ(picker.hexColor(), QStringLiteral("#070707"));
        EXPECT_EQ(storage.recentColors().size(), 1);
    }
}

TEST_F(ColorPickerTest, TheEleventhNewColourPushesOutTheOldest)
{
    for (int gray = 1; gray <= 11; ++gray)
        pick(gray);
    const QStringList colors = stored().recentColors();
    ASSERT_EQ(colors.size(), 10);
    EXPECT_EQ(colors.first(), QStringLiteral("#0B0B0B"));
    EXPECT_EQ(colors.last(), QStringLiteral("#020202"));
}

TEST_F(ColorPickerTest, AKnownColourIsCopiedAndKeepsItsPlace)
{
    for (int gray = 1; gray <= 3; ++gray)
        pick(gray);
    const QStringList before = storage.recentColors();
    pick(2);
    EXPECT_EQ(copied(), QStringLiteral("#020202"));
    picker.choose(QStringLiteral("#010101"));
    EXPECT_EQ(copied(), QStringLiteral("#010101"));
    EXPECT_EQ(picker.hexColor(), QStringLiteral("#010101"));
    EXPECT_EQ(storage.recentColors(), before);
}

TEST_F(ColorPickerTest, EachWorkspaceHasItsColours)
{
    pick(1);
    switchAway();
    EXPECT_TRUE(storage.recentColors().isEmpty());
    pick(2);
    switchBack();
    EXPECT_EQ(storage.recentColors(), QStringList{QStringLiteral("#010101")});
    picker.clear();
    EXPECT_TRUE(stored().recentColors().isEmpty());
}

TEST_F(ColorPickerTest, ASecondCopyDoesNotExtendTheMessageOfTheFirst)
{
    QElapsedTimer sinceSecond;
    QSignalSpy changes(&picker, &ColorPicker::copyMessageChanged);
    picker.choose(QStringLiteral("#010101"));
    QTimer::singleShot(ColorPicker::messageTime / 2, &picker, [&] {
        picker.choose(QStringLiteral("#020202"));
        sinceSecond.start();
    });
    ASSERT_EQ(changes.count(), 1);
    ASSERT_TRUE(changes.wait(10 * ColorPicker::messageTime));
    EXPECT_TRUE(picker.copyMessage().isEmpty());
    ASSERT_TRUE(sinceSecond.isValid());
    EXPECT_LT(sinceSecond.elapsed(), ColorPicker::messageTime);

    // The second one's time is still running; it is none of the next opening's business.
    picker.begin();
    changes.clear();
    sinceSecond.start();
    picker.choose(QStringLiteral("#030303"));
    ASSERT_EQ(changes.count(), 1);
    ASSERT_TRUE(changes.wait(10 * ColorPicker::messageTime));
    EXPECT_GE(sinceSecond.elapsed(), ColorPicker::messageTime * 9 / 10);
}

TEST_F(ColorPickerTest, AnAnswerAfterItsEndIsHeardByNobody)
{
    auto other = std::make_unique<ColorPicker>(sampler, storage);
    other->pick();
    other.reset();
    sampler.pick(1, 1, 1);
    EXPECT_TRUE(storage.recentColors().isEmpty());
}

} // namespace
} // namespace quillbay::testing
