// The one rounding of every real-to-pixel conversion.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "diagram/VyrPixelRound.h"

TEST(VyrPixelRound, RoundsHalfAwayFromZero) {
    EXPECT_EQ(VyrRoundPixel(2.5), 3);
    EXPECT_EQ(VyrRoundPixel(-2.5), -3);
    EXPECT_EQ(VyrRoundPixel(0.5), 1);
    EXPECT_EQ(VyrRoundPixel(-0.5), -1);
    EXPECT_EQ(VyrRoundPixel(2.4999), 2);
    EXPECT_EQ(VyrRoundPixel(-2.4999), -2);
    EXPECT_EQ(VyrRoundPixel(0.0), 0);
    EXPECT_EQ(VyrRoundPixel(-0.0), 0);
    EXPECT_EQ(VyrRoundPixel(7.0), 7);
    EXPECT_EQ(VyrRoundPixel(-7.0), -7);
}

TEST(VyrPixelRound, SaturatesBeyondTheRangeOfInt) {
    EXPECT_EQ(VyrRoundPixel(1e12), INT_MAX);
    EXPECT_EQ(VyrRoundPixel(-1e12), INT_MIN);
    EXPECT_EQ(VyrRoundPixel(std::numeric_limits<double>::infinity()), INT_MAX);
    EXPECT_EQ(VyrRoundPixel(-std::numeric_limits<double>::infinity()), INT_MIN);
    EXPECT_EQ(VyrRoundPixel(std::nan("")), INT_MIN);
    EXPECT_EQ(VyrRoundPixel(2147483646.4), 2147483646);
    EXPECT_EQ(VyrRoundPixel(-2147483648.4), INT_MIN);
}
