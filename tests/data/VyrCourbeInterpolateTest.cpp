#include <gtest/gtest.h>

#include <cmath>

#include "DataTestSupport.h"

using namespace vyrtest;

namespace {
struct Fixture {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
};
}  // namespace

TEST(VyrCourbeInterpolate, BetweenPointsInterpolatesLinearly) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {1, 2, 3}, {10, 20, 40});
    double y = 0;
    bool interpolated = false;
    int index = -5;
    EXPECT_TRUE(c->Interpolate(2.5, y, interpolated, &index));
    EXPECT_EQ(y, 30.0);
    EXPECT_TRUE(interpolated);
    EXPECT_EQ(index, 1);
}

TEST(VyrCourbeInterpolate, OnAPointAnswersItsYNotInterpolated) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {1, 2, 3}, {10, 20, 40});
    double y = 0;
    bool interpolated = true;
    int index = -1;
    EXPECT_TRUE(c->Interpolate(2.0, y, interpolated, &index));
    EXPECT_EQ(y, 20.0);
    EXPECT_FALSE(interpolated);
    EXPECT_EQ(index, 1);
    // Within the absolute tolerance 2^-23 counts as on the point.
    EXPECT_TRUE(c->Interpolate(2.0 + 1e-7, y, interpolated, nullptr));
    EXPECT_EQ(y, 20.0);
    EXPECT_FALSE(interpolated);
    EXPECT_TRUE(c->Interpolate(2.0 + 2e-7, y, interpolated, nullptr));
    EXPECT_TRUE(interpolated);
    EXPECT_NEAR(y, 20.0 + 20 * 2e-7, 1e-9);
}

TEST(VyrCourbeInterpolate, NoExtrapolationOnEitherSide) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {1, 2, 3}, {10, 20, 40});
    double y = -1;
    bool interpolated = false;
    int index = -5;
    EXPECT_FALSE(c->Interpolate(3.5, y, interpolated, &index));
    EXPECT_EQ(index, 2);  // the last valid point at or below
    index = -5;
    EXPECT_FALSE(c->Interpolate(0.5, y, interpolated, &index));
    EXPECT_EQ(index, 0);  // the start given
    EXPECT_EQ(y, -1.0);
}

TEST(VyrCourbeInterpolate, InvalidXPointIsSkippedWhenBracketing) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {1, 2, 3}, {10, 99, 30});
    c->GetVx()->ValidateAt(1, false);
    double y = 0;
    bool interpolated = false;
    int index = -1;
    EXPECT_TRUE(c->Interpolate(2.0, y, interpolated, &index));
    EXPECT_EQ(y, 20.0);
    EXPECT_TRUE(interpolated);
    EXPECT_EQ(index, 0);
}

TEST(VyrCourbeInterpolate, ValidityOfYIsNeverConsulted) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {1, 2, 3}, {10, 20, 40});
    c->GetVy()->ValidateAt(1, false);
    double y = 0;
    bool interpolated = false;
    EXPECT_TRUE(c->Interpolate(2.0, y, interpolated, nullptr));
    EXPECT_EQ(y, 20.0);
}

TEST(VyrCourbeInterpolate, ShorterYReadsZero) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {1, 2, 3}, {10, 20, 40});
    c->GetVy()->Resize(2);
    double y = -1;
    bool interpolated = false;
    EXPECT_TRUE(c->Interpolate(2.5, y, interpolated, nullptr));
    EXPECT_EQ(y, 10.0);  // between 20 and 0.0
    EXPECT_TRUE(c->Interpolate(3.0, y, interpolated, nullptr));
    EXPECT_EQ(y, 0.0);
}

TEST(VyrCourbeInterpolate, EqualXPointsBracketFromTheLastOfThem) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {1, 1, 3}, {10, 20, 40});
    double y = -1;
    bool interpolated = false;
    int index = -1;
    EXPECT_TRUE(c->Interpolate(2.0, y, interpolated, &index));
    EXPECT_EQ(index, 1);
    EXPECT_EQ(y, 30.0);
    EXPECT_TRUE(c->Interpolate(1.0, y, interpolated, &index));
    EXPECT_EQ(index, 1);
    EXPECT_EQ(y, 20.0);
    EXPECT_FALSE(interpolated);
}

TEST(VyrCourbeInterpolate, StartIsReusedAndUpdated) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", {0, 1, 2, 3, 4}, {0, 10, 20, 30, 40});
    double y = 0;
    bool interpolated = false;
    int start = 0;
    EXPECT_TRUE(c->InterpolateEx(2.5, y, interpolated, nullptr, start));
    EXPECT_EQ(start, 2);
    EXPECT_EQ(y, 25.0);
    EXPECT_TRUE(c->InterpolateEx(3.5, y, interpolated, nullptr, start));
    EXPECT_EQ(start, 3);
    EXPECT_EQ(y, 35.0);
    // A start past the point wanted finds nothing and is left alone.
    int index = -1;
    EXPECT_FALSE(c->InterpolateEx(0.5, y, interpolated, &index, start));
    EXPECT_EQ(start, 3);
    EXPECT_EQ(index, 3);
}

TEST(VyrCourbeInterpolate, MissingVectorsWriteNothing) {
    VyrCourbe c(1, nullptr);
    double y = 7;
    bool interpolated = true;
    int index = 9;
    int start = 4;
    EXPECT_FALSE(c.InterpolateEx(1.0, y, interpolated, &index, start));
    EXPECT_EQ(y, 7.0);
    EXPECT_TRUE(interpolated);
    EXPECT_EQ(index, 9);
    EXPECT_EQ(start, 4);
}

TEST(VyrCourbeInterpolate, EmptyCurveAndNanAnswerFalse) {
    Fixture f;
    VyrCourbe* empty = Curve(f.doc, f.e, "U", {}, {});
    double y = 0;
    bool interpolated = false;
    EXPECT_FALSE(empty->Interpolate(1.0, y, interpolated, nullptr));
    VyrCourbe* c = Curve(f.doc, f.e, "W", {1, 2}, {1, 2});
    EXPECT_FALSE(c->Interpolate(std::nan(""), y, interpolated, nullptr));
}
