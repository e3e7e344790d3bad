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
