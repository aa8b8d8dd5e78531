#include <gtest/gtest.h>

#include <cmath>

#include "CalcTestSupport.h"
#include "vyrbase/calc/VyrCurveCalculator.h"
#include "vyrbase/data/VyrVariable.h"

using namespace calctest;

namespace {
struct Fixture {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
};
}  // namespace

TEST(VyrCurveCalculator, ProductOfTwoCurvesOnTheSameAbscissas) {
    Fixture f;
    Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3}, {1, 2, 3, 4});
    Curve(f.doc, f.e, "I", "A", {0, 1, 2, 3}, {0.5, 0.5, 2, -1}, {2});
    VyrCurveCalculator calc(f.e);
    VyrCourbe* p = calc.Calculate("P = U*I");
    ASSERT_NE(p, nullptr) << calc.GetError();
    EXPECT_EQ(p->GetName(), "P(t)");
    EXPECT_EQ(p->GetVy()->GetUnite(), wxString(L"V\u00b7A"));
    EXPECT_EQ(p->GetVx()->GetUnite(), "s");
    EXPECT_EQ(p->GetText(), "P = U*I");
    EXPECT_EQ(Values(p->GetVx()), (std::vector<double>{0, 1, 2, 3}));
    EXPECT_EQ(Values(p->GetVy()), (std::vector<double>{0.5, 1, 0, -4}));
    // I's invalid point stays invalid in P.
    EXPECT_EQ(Validity(p->GetVy()), (std::vector<bool>{true, true, false, true}));
    EXPECT_NE(f.e->FindCourbe(p), nullptr);
}

TEST(VyrCurveCalculator, OtherAbscissasAreInterpolatedOntoTheFirstOperand) {
    Fixture f;
    Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3, 4}, {1, 1, 1, 1, 1});
    // I measured at other instants, from 0.5 to 3.5: 1 and 4 lie outside, no extrapolation.
    Curve(f.doc, f.e, "I", "A", {0.5, 1.5, 3.5}, {10, 20, 40});
    VyrCurveCalculator calc(f.e);
    VyrCourbe* p = calc.Calculate("P = U*I");
    ASSERT_NE(p, nullptr) << calc.GetError();
    EXPECT_EQ(Validity(p->GetVy()), (std::vector<bool>{false, true, true, true, false}));
    const std::vector<double> y = Values(p->GetVy());
    EXPECT_DOUBLE_EQ(y[1], 15.0);
    EXPECT_DOUBLE_EQ(y[2], 25.0);
    EXPECT_DOUBLE_EQ(y[3], 35.0);
}

TEST(VyrCurveCalculator, ExperimentVariableEntersTheFormula) {
    Fixture f;
    Curve(f.doc, f.e, "v", "m/s", {0, 1, 2}, {0, 2, 4});
    VyrCurveCalculator calc(f.e);
    ASSERT_TRUE(calc.SetVariable("m", 0.2));
    VyrCourbe* energy = calc.Calculate("E = 0.5*m*v^2");
    ASSERT_NE(energy, nullptr) << calc.GetError();
    const std::vector<double> y = Values(energy->GetVy());
    EXPECT_DOUBLE_EQ(y[1], 0.4);
    EXPECT_DOUBLE_EQ(y[2], 1.6);
    // A variable has no unit: none follows.
    EXPECT_EQ(energy->GetVy()->GetUnite(), "");
    ASSERT_EQ(f.e->GetNbVariable(), 1);
    EXPECT_FALSE(calc.SetVariable("2m", 1.0));
}

TEST(VyrCurveCalculator, UnitGivenReplacesTheOneThatFollows) {
    Fixture f;
    Curve(f.doc, f.e, "U", "V", {0, 1}, {1, 2});
    Curve(f.doc, f.e, "I", "A", {0, 1}, {1, 2});
    VyrCurveCalculator calc(f.e);
    calc.SetUnit("W");
    VyrCourbe* p = calc.Calculate("P = U*I");
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(p->GetVy()->GetUnite(), "W");
}

TEST(VyrCurveCalculator, UnitsFollowQuotientsPowersSumsAndSeriesOperations) {
    Fixture f;
    Curve(f.doc, f.e, "x", "m", {0, 1, 2, 3}, {0, 1, 4, 9});
    Curve(f.doc, f.e, "y", "m", {0, 1, 2, 3}, {1, 1, 1, 1});
    VyrCurveCalculator calc(f.e);
    struct Case {
        const char* assignment;
        const wchar_t* unit;
    } cases[] = {
        {"a = x/t", L"m/s"},        {"b = x^2", L"m^2"},
        {"c = x + 2", L""},         {"d = x + y", L"m"},
        {"e = deriv(x)", L"m/s"},   {"g = integ(x)", L"m\u00b7s"},
        {"h = smooth(x, 3)", L"m"}, {"k = sin(x)", L""},
        {"l = sin(2*pi*t/4)", L""}, {"n = deriv(deriv(x))", L"m/s/s"},
        {"o = -x^2", L"m^2"},       {"q = x^-1", L"1/m"},
    };
    for (const Case& c : cases) {
        VyrCourbe* made = calc.Calculate(c.assignment);
        ASSERT_NE(made, nullptr) << c.assignment << ": " << calc.GetError();
        EXPECT_EQ(made->GetVy()->GetUnite(), wxString(c.unit)) << c.assignment;
    }
}

TEST(VyrCurveCalculator, DerivativeOfAParabolaInsideAndIntegral) {
    Fixture f;
    std::vector<double> t, x;
    for (int i = 0; i <= 20; ++i) {
        t.push_back(0.5 * i);
        x.push_back(4.9 * t.back() * t.back() + 3 * t.back());
    }
    Curve(f.doc, f.e, "x", "m", t, x);
    VyrCurveCalculator calc(f.e);
    VyrCourbe* v = calc.Calculate("v = deriv(x)");
    ASSERT_NE(v, nullptr) << calc.GetError();
    const std::vector<double> vy = Values(v->GetVy());
    for (size_t i = 1; i + 1 < t.size(); ++i)
        EXPECT_NEAR(vy[i], 9.8 * t[i] + 3, 1e-12) << i;
    VyrCourbe* a = calc.Calculate("a = deriv(deriv(x))");
    ASSERT_NE(a, nullptr);
    EXPECT_NEAR(Values(a->GetVy())[10], 9.8, 1e-10);
    // The integral of v from 0 gives x back on a parabola's even steps up to the trapezoids'
    // error, exact here on a line.
    VyrCourbe* back = calc.Calculate("s = integ(2*t)");
    ASSERT_NE(back, nullptr) << calc.GetError();
    EXPECT_NEAR(Values(back->GetVy())[20], 100.0, 1e-12);
    VyrCourbe* smooth = calc.Calculate("w = smooth(t, 3) - t");
    ASSERT_NE(smooth, nullptr);
    EXPECT_NEAR(Values(smooth->GetVy())[5], 0.0, 1e-14);
}

TEST(VyrCurveCalculator, NonFiniteValuesAreInvalid) {
    Fixture f;
    Curve(f.doc, f.e, "U", "V", {0, 1, 2}, {-1, 0, 4});
    VyrCurveCalculator calc(f.e);
    VyrCourbe* r = calc.Calculate("r = sqrt(U) + 1/U");
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(Validity(r->GetVy()), (std::vector<bool>{false, false, true}));
    EXPECT_DOUBLE_EQ(Values(r->GetVy())[2], 2.25);
}

TEST(VyrCurveCalculator, BadInputIsRefusedWithAReason) {
    Fixture f;
    Curve(f.doc, f.e, "U", "V", {0, 1, 2}, {1, 2, 3});
    VyrCurveCalculator calc(f.e);
    const char* refused[] = {"P U*2",
                             "= U",
                             "P = ",
                             "P = W*2",
                             "P = U*",
                             "P = deriv(U",
                             "P = smooth(U)",
                             "P = smooth(U, 0)",
                             "P = smooth(U, x)",
                             "P = 2*3",
                             "U = smooth(U, 3)"};
    for (const char* text : refused) {
        EXPECT_EQ(calc.Calculate(text), nullptr) << text;
        EXPECT_FALSE(calc.GetError().empty()) << text;
    }
    EXPECT_EQ(f.e->GetNbCourbe(), 1);
    VyrCurveCalculator none(nullptr);
    EXPECT_EQ(none.Calculate("P = U"), nullptr);
}

TEST(VyrCurveCalculator, CalculatingAgainReplacesItsOwnCurve) {
    Fixture f;
    Curve(f.doc, f.e, "U", "V", {0, 1}, {1, 2});
    VyrCurveCalculator calc(f.e);
    VyrCourbe* first = calc.Calculate("D = 2*U");
    VyrCourbe* second = calc.Calculate("D = 3*U");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, second);
    EXPECT_EQ(Values(second->GetVy()), (std::vector<double>{3, 6}));
    EXPECT_EQ(f.e->GetNbCourbe(), 2);
}

TEST(VyrCurveCalculator, FindExperienceTakesTheFirstWhereEveryNameResolves) {
    Fixture f;
    VyrExperience* other = Experience(f.doc, "F");
    Curve(f.doc, f.e, "U", "V", {0, 1}, {1, 2});
    Curve(f.doc, other, "U", "V", {0, 1}, {1, 2});
    Curve(f.doc, other, "I", "A", {0, 1}, {1, 2});
    EXPECT_EQ(VyrCurveCalculator::FindExperience(f.doc, "P = U*I"), other);
    EXPECT_EQ(VyrCurveCalculator::FindExperience(f.doc, "P = U"), f.e);
    EXPECT_EQ(VyrCurveCalculator::FindExperience(f.doc, "P = Z"), nullptr);
}

TEST(VyrCurveCalculator, DeepNestingIsRefusedNotOverflowed) {
    Fixture f;
    Curve(f.doc, f.e, "U", "V", {0, 1, 2}, {1, 2, 3});
    VyrCurveCalculator calc(f.e);
    wxString deep = "U";
    for (int i = 0; i < 100; ++i)
        deep = "deriv(" + deep + ")";
    EXPECT_EQ(calc.Calculate("D = " + deep), nullptr);
    EXPECT_TRUE(calc.GetError().Contains("nested"));
    // Parentheses nested far deeper than a person writes: no unit follows, nothing breaks.
    const wxString parens = wxString('(', 100000) + "U" + wxString(')', 100000);
    calc.Calculate("P = " + parens);
    VyrCourbe* shallow = calc.Calculate("Q = ((U))");
    ASSERT_NE(shallow, nullptr);
    EXPECT_EQ(shallow->GetVy()->GetUnite(), "V");
}
