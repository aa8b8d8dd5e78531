#include <gtest/gtest.h>

#include <cmath>

#include "CalcTestSupport.h"
#include "vyrbase/calc/VyrIntervalStats.h"
#include "vyrbase/data/VyrOutilInterval.h"

using namespace calctest;

namespace {
struct Fixture {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
};
}  // namespace

TEST(VyrIntervalStats, HandWorkedFivePoints) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3, 4}, {1, 3, 2, 5, 4});
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_EQ(s.GetPoints(), 5);
    EXPECT_DOUBLE_EQ(s.GetMean(), 3.0);
    // Deviations -2 0 -1 2 1: squares sum to 10, over n - 1 = 4.
    EXPECT_DOUBLE_EQ(s.GetSd(), std::sqrt(2.5));
    EXPECT_EQ(s.GetMin(), 1.0);
    EXPECT_EQ(s.GetMax(), 5.0);
    // Trapezoids 2 + 2.5 + 3.5 + 4.5.
    EXPECT_DOUBLE_EQ(s.GetArea(), 12.5);
    // Sxy = 8, Sxx = 10 about the means (2, 3).
    EXPECT_DOUBLE_EQ(s.GetSlope(), 0.8);
    EXPECT_DOUBLE_EQ(s.GetIntercept(), 1.4);
}

TEST(VyrIntervalStats, AgreesWithNumpyOnARangeWithInvalidPoints) {
    // Uneven abscissas, every seventh point invalid; the reference values were computed with
    // numpy (mean, std(ddof=1), min, max, trapz, polyfit of degree 1) on the same selection.
    Fixture f;
    std::vector<double> xs, ys;
    std::vector<int> invalid;
    for (int i = 0; i < 60; ++i) {
        xs.push_back(0.1 * std::pow(i, 1.1));
        ys.push_back(0.3 * xs.back() + std::sin(7.1 * i) + 5);
        if (i % 7 == 3)
            invalid.push_back(i);
    }
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", xs, ys, invalid);
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c, 3.2, 0.5));  // bounds in either order
    EXPECT_EQ(s.GetPoints(), 17);
    EXPECT_NEAR(s.GetMean(), 5.308168248415183, 1e-12);
    EXPECT_NEAR(s.GetSd(), 0.6979247994490573, 1e-12);
    EXPECT_NEAR(s.GetMin(), 4.233035042889601, 1e-12);
    EXPECT_NEAR(s.GetMax(), 6.56529844644926, 1e-12);
    EXPECT_NEAR(s.GetArea(), 13.887166267020556, 1e-11);
    EXPECT_NEAR(s.GetSlope(), 0.31339733899570893, 1e-12);
    EXPECT_NEAR(s.GetIntercept(), 4.728893663806749, 1e-12);
}

TEST(VyrIntervalStats, SmallSpreadOnALargeOffsetKeepsItsDigits) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3}, {1e9 + 1, 1e9 + 2, 1e9 + 3, 1e9 + 4});
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_DOUBLE_EQ(s.GetSd(), std::sqrt(5.0 / 3.0));
    EXPECT_DOUBLE_EQ(s.GetSlope(), 1.0);
}

TEST(VyrIntervalStats, UnsortedPointsAreIntegratedInOrderOfX) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {2, 0, 1}, {4, 0, 2});
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_DOUBLE_EQ(s.GetArea(), 4.0);
}

TEST(VyrIntervalStats, EmptyIntervalCountsNoPointAndGivesNoValues) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2}, {1, 2, 3});
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c, 5, 6));
    EXPECT_EQ(s.GetPoints(), 0);
    EXPECT_TRUE(std::isnan(s.GetMean()));
    EXPECT_TRUE(std::isnan(s.GetArea()));
    EXPECT_TRUE(std::isnan(s.GetSlope()));
}

TEST(VyrIntervalStats, OnePointHasNoSpreadAndNoLine) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2}, {1, 2, 3});
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c, 1, 1));
    EXPECT_EQ(s.GetPoints(), 1);
    EXPECT_EQ(s.GetMean(), 2.0);
    EXPECT_EQ(s.GetArea(), 0.0);
    EXPECT_TRUE(std::isnan(s.GetSd()));
    EXPECT_TRUE(std::isnan(s.GetSlope()));
}

TEST(VyrIntervalStats, NullCurveAndNanBoundAreRefused) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2}, {1, 2, 3});
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_FALSE(s.Compute(nullptr));
    EXPECT_EQ(s.GetPoints(), 0);
    EXPECT_FALSE(s.Compute(c, std::nan(""), 1.0));
    EXPECT_TRUE(std::isnan(s.GetMean()));
}

TEST(VyrIntervalStats, IntervalToolGivesTheRange) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3, 4}, {1, 3, 2, 5, 4});
    VyrOutilInterval tool(0, &f.doc);
    tool.SetPoints(3, 0, 1, 0);  // drawn from right to left
    VyrIntervalStats s;
    ASSERT_TRUE(s.Compute(c, &tool));
    EXPECT_EQ(s.GetPoints(), 3);
    EXPECT_DOUBLE_EQ(s.GetMean(), 10.0 / 3.0);
    EXPECT_DOUBLE_EQ(s.GetArea(), 2.5 + 3.5);
    EXPECT_FALSE(s.Compute(c, static_cast<const VyrOutilInterval*>(nullptr)));
}
