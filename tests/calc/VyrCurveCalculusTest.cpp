#include <gtest/gtest.h>

#include <cmath>

#include "CalcTestSupport.h"
#include "vyrbase/calc/VyrCurveCalculus.h"

using namespace calctest;

typedef VyrCurveCalculus::Values Series;
typedef VyrCurveCalculus::Validity Flags;

TEST(VyrCurveCalculus, DerivativeOfAParabolaIsExactOnEvenSteps) {
    Series x, y, d;
    Flags ok;
    for (int i = 0; i <= 10; ++i) {
        x.push_back(i);
        y.push_back(3.0 * i * i - 2.0 * i + 1.0);
    }
    ASSERT_TRUE(VyrCurveCalculus::Derivative(x, y, {}, d, ok));
    ASSERT_EQ(d.size(), 11u);
    for (int i = 0; i <= 10; ++i) {
        EXPECT_EQ(d[i], 6.0 * i - 2.0) << i;  // the ends too: one-sided three-point formula
        EXPECT_TRUE(ok[i]);
    }
}

TEST(VyrCurveCalculus, DerivativeOfAParabolaIsExactOnUnevenSteps) {
    const Series x = {0.0, 0.5, 2.0, 2.25, 4.0, 7.0};
    Series y, d;
    Flags ok;
    for (double v : x)
        y.push_back(0.5 * v * v + v);
    ASSERT_TRUE(VyrCurveCalculus::Derivative(x, y, {}, d, ok));
    for (size_t i = 0; i < x.size(); ++i)
        EXPECT_NEAR(d[i], x[i] + 1.0, 1e-13) << i;
}

TEST(VyrCurveCalculus, DerivativeStepsOverInvalidPointsAndKeepsThemInvalid) {
    const Series x = {0, 1, 2, 3, 4};
    const Series y = {0, 1, 99, 9, 16};
    Series d;
    Flags ok;
    ASSERT_TRUE(VyrCurveCalculus::Derivative(x, y, {1, 1, 0, 1, 1}, d, ok));
    EXPECT_FALSE(ok[2]);
    // Point 1 between points 0 and 3: the parabola through (0,0) (1,1) (3,9) is x^2.
    EXPECT_NEAR(d[1], 2.0, 1e-14);
    EXPECT_NEAR(d[3], 6.0, 1e-14);
}

TEST(VyrCurveCalculus, DerivativeRefusesDecreasingAbscissas) {
    Series d = {7};
    Flags ok;
    EXPECT_FALSE(VyrCurveCalculus::Derivative({0, 2, 1}, {0, 1, 2}, {}, d, ok));
    EXPECT_EQ(d.size(), 1u);
    EXPECT_FALSE(VyrCurveCalculus::Derivative({0, 1}, {0}, {}, d, ok));
}

TEST(VyrCurveCalculus, DerivativeOfTwoPointsIsTheirSlopeAndOfOneNone) {
    Series d;
    Flags ok;
    ASSERT_TRUE(VyrCurveCalculus::Derivative({1, 3}, {2, 6}, {}, d, ok));
    EXPECT_EQ(d[0], 2.0);
    EXPECT_EQ(d[1], 2.0);
    ASSERT_TRUE(VyrCurveCalculus::Derivative({1}, {2}, {}, d, ok));
    EXPECT_FALSE(ok[0]);
}

TEST(VyrCurveCalculus, IntegralIsCumulativeTrapezoidsFromZero) {
    Series s;
    Flags ok;
    ASSERT_TRUE(VyrCurveCalculus::Integral({0, 1, 3, 4}, {2, 4, 0, 2}, {}, s, ok));
    EXPECT_EQ(s, (Series{0, 3, 7, 8}));
}

TEST(VyrCurveCalculus, IntegralBridgesAnInvalidPoint) {
    Series s;
    Flags ok;
    ASSERT_TRUE(VyrCurveCalculus::Integral({0, 1, 2}, {2, 1000, 4}, {1, 0, 1}, s, ok));
    EXPECT_FALSE(ok[1]);
    EXPECT_EQ(s[2], 6.0);
}

TEST(VyrCurveCalculus, SmoothAveragesACentredWindowNarrowedAtTheEnds) {
    Series s;
    Flags ok;
    ASSERT_TRUE(VyrCurveCalculus::Smooth({0, 3, 6, 0, 3, 9}, {}, 3, s, ok));
    EXPECT_EQ(s, (Series{0, 3, 3, 3, 4, 9}));
    // An even width is the next odd one.
    Series s4;
    ASSERT_TRUE(VyrCurveCalculus::Smooth({0, 3, 6, 0, 3, 9}, {}, 4, s4, ok));
    EXPECT_DOUBLE_EQ(s4[2], 12.0 / 5.0);
    EXPECT_FALSE(VyrCurveCalculus::Smooth({1, 2}, {}, 0, s, ok));
}

TEST(VyrCurveCalculus, CreateDerivativeKeepsTheAbscissasAndDerivesTheUnit) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* x = Curve(doc, e, "x", "m", {0, 1, 2, 3}, {0, 1, 4, 9}, {2});
    VyrCourbe* v = VyrCurveCalculus::CreateDerivative(x);
    ASSERT_NE(v, nullptr);
    EXPECT_NE(v, x);
    EXPECT_NE(e->FindCourbe(v), nullptr);
    EXPECT_EQ(v->GetVy()->GetGrandeur(), "dx/dt");
    EXPECT_EQ(v->GetVy()->GetUnite(), "m/s");
    EXPECT_EQ(v->GetVx()->GetUnite(), "s");
    EXPECT_EQ(Values(v->GetVx()), (std::vector<double>{0, 1, 2, 3}));
    EXPECT_EQ(Validity(v->GetVy()), (std::vector<bool>{true, true, false, true}));
    EXPECT_NEAR(Values(v->GetVy())[1], 2.0, 1e-14);

    VyrCourbe* q = VyrCurveCalculus::CreateIntegral(x, "Q");
    ASSERT_NE(q, nullptr);
    EXPECT_EQ(q->GetVy()->GetGrandeur(), "Q");
    EXPECT_EQ(q->GetVy()->GetUnite(), wxString(L"m\u00b7s"));
    EXPECT_EQ(Values(q->GetVy())[3], 0.5 + 1.0 * 0 + 2 * (1 + 9) * 0.5);
    EXPECT_EQ(VyrCurveCalculus::CreateDerivative(nullptr), nullptr);
    EXPECT_EQ(VyrCurveCalculus::CreateSmoothed(x, 0), nullptr);
}

TEST(VyrCurveCalculus, MeasuredCurveOfTheResultQuantityIsNeverOverwritten) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* x = Curve(doc, e, "x", "m", {0, 1, 2}, {0, 1, 4});
    VyrCourbe* speed = Curve(doc, e, "v", "m/s", {0, 1, 2}, {7, 7, 7});
    EXPECT_EQ(VyrCurveCalculus::CreateDerivative(x, "v"), nullptr);
    EXPECT_EQ(Values(speed->GetVy()), (std::vector<double>{7, 7, 7}));
    // A derivative made before is replaced.
    VyrCourbe* first = VyrCurveCalculus::CreateDerivative(x);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->GetText(), "dx/dt = deriv(x)");
    EXPECT_EQ(VyrCurveCalculus::CreateDerivative(x), first);
}
