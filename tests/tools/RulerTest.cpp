#include "tools/Measurement.h"
#include "tools/RulerScale.h"

#include <gtest/gtest.h>

namespace quillbay {
namespace {

TEST(RulerScaleTest, TicksEveryTenAreLongerEveryFiftyAndHundred)
{
    const QList<RulerTick> ticks = rulerTicks(400.9);
    ASSERT_EQ(ticks.size(), 41) << "both ends have one";
    EXPECT_EQ(ticks[0], (RulerTick{0, 12, 0.8}));
    EXPECT_EQ(ticks[10], (RulerTick{100, 12, 0.8}));
    EXPECT_EQ(ticks[11], (RulerTick{110, 4, 0.25}));
    EXPECT_EQ(ticks[15], (RulerTick{150, 8, 0.5}));
    EXPECT_EQ(ticks[40], (RulerTick{400, 12, 0.8}));
    EXPECT_EQ(rulerTicks(209.9).last().position, 200);
}

TEST(RulerScaleTest, NumbersStandAtHundredsAwayFromTheEnds)
{
    EXPECT_EQ(rulerLabels(400), (QList<int>{100, 200, 300}));
    EXPECT_EQ(rulerLabels(420), (QList<int>{100, 200, 300}));
    EXPECT_EQ(rulerLabels(420.5), (QList<int>{100, 200, 300, 400}));
    EXPECT_EQ(rulerLabels(110), QList<int>());
}

TEST(RulerScaleTest, LinesAreWholeDevicePixelsWithinTheCanvas)
{
    EXPECT_EQ(rulerLineWidth(1), 1);
    EXPECT_EQ(rulerLineWidth(1.25), 1);
    EXPECT_EQ(rulerLineWidth(1.5), 2);
    EXPECT_EQ(rulerLineWidth(2), 2);
    EXPECT_EQ(rulerLineStart(100, 400, 1.25), 125);
    EXPECT_EQ(rulerLineStart(110, 400, 1.25), 137);
    EXPECT_EQ(rulerLineStart(0, 400, 2), 0);
    for (const double ratio : {1.0, 1.25, 1.33, 1.5, 2.0})
        EXPECT_LE(rulerLineStart(400, 400, ratio) + rulerLineWidth(ratio), 400 * ratio) << ratio;
}

TEST(MeasurementTest, WhatIsWrittenIsReadBack)
{
    EXPECT_EQ(measurementText(400, 300), QString::fromUtf8("400 × 300 px"));
    EXPECT_EQ(parseMeasurement(measurementText(400, 300)), QSizeF(400, 300));
    EXPECT_EQ(parseMeasurement(QString::fromUtf8("  401.5 ×  300  px ")), QSizeF(401.5, 300));
}

TEST(MeasurementTest, OtherTextsAreNoMeasurement)
{
    for (const char *text : {"", "400", "400 x 300 px", "400 × px", "400 × 300 × 200 px", "a × b px",
                             "-4 × 5 px", "0 × 5 px", "nan × 5 px", "inf × 5 px", "1e9 × 5 px"})
        EXPECT_FALSE(parseMeasurement(QString::fromUtf8(text))) << text;
}

} // namespace
} // namespace quillbay
