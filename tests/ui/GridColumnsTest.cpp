#include "ui/GridColumns.h"

#include <gtest/gtest.h>

using namespace quillbay;

TEST(GridColumns, StandWiderApartAboveAThousand)
{
    EXPECT_EQ(appColumns(1000), (GridColumns{6, 136, 24, 32}));
    EXPECT_EQ(appColumns(1000.5), (GridColumns{5, 161, 32, 34}));
    EXPECT_EQ(appColumns(1440), (GridColumns{8, 144, 32, 32}));
}

TEST(GridColumns, AreNeverFewerThanOneNorWiderThanTheirMaximum)
{
    EXPECT_EQ(appColumns(197), (GridColumns{1, 133, 24, 32}));
    EXPECT_EQ(appColumns(0).count, 1);
    EXPECT_EQ(appColumns(0).columnWidth, 0);
    EXPECT_EQ(appColumns(300), (GridColumns{1, 140, 24, 80}));
    for (int width = 200; width < 4000; ++width) {
        const GridColumns columns = appColumns(width);
        const int used = columns.count * columns.columnWidth + (columns.count - 1) * columns.spacing;
        ASSERT_LE(used, width - 64) << width;
        ASSERT_LE(columns.columnWidth, width > 1000 ? 180 : 140) << width;
        ASSERT_LE(std::abs(width - used - 2 * columns.leading), 1) << width << ": not centred";
    }
}

TEST(GridColumns, OfCardsAndAdaptiveOnesFollowTheWidth)
{
    EXPECT_EQ(cardColumns(660), (GridColumns{2, 280, 24, 38}));
    EXPECT_EQ(cardColumns(600).columnWidth, 280);
    EXPECT_EQ(cardColumns(631).count, 1);
    EXPECT_EQ(cardColumns(632), (GridColumns{2, 272, 24, 32}));
    EXPECT_EQ(adaptiveColumns(700, 110, 24, 40), (GridColumns{4, 137, 24, 40}));
    EXPECT_EQ(adaptiveColumns(550, 90, 20, 24), (GridColumns{4, 110, 20, 25}));
    EXPECT_EQ(adaptiveColumns(20, 90, 20, 24).count, 1);
}
