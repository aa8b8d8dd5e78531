#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <vector>

#include "vyrbase/calc/VyrFormula.h"
#include "vyrbase/data/VyrVariable.h"

namespace {

double Value(const wxString& text, double x = 0.0) {
    VyrFormula f;
    f.DeclareVariable("x", x);
    if (!f.Parse(text))
        return -12345.0;
    return f.Evaluate();
}

}  // namespace

TEST(VyrFormula, PowerBindsTighterThanSign) {
    VyrFormula f;
    f.DeclareVariable("x", 3.0);
    f.DeclareVariable("b", 1.0);
    ASSERT_TRUE(f.Parse("-(x-b)^2"));
    EXPECT_EQ(f.Evaluate(), -4.0);
    EXPECT_EQ(Value("-x^2", 3.0), -9.0);
    EXPECT_EQ(Value("-2^2"), -4.0);
    EXPECT_EQ(Value("2^-x", 3.0), 0.125);
    EXPECT_EQ(Value("x*-2", 3.0), -6.0);
}

TEST(VyrFormula, UsualPrecedenceAndAssociativity) {
    EXPECT_EQ(Value("2^3^2"), 512.0);
    EXPECT_EQ(Value("1+2*3"), 7.0);
    EXPECT_EQ(Value("8/4/2"), 1.0);
    EXPECT_EQ(Value("10-4-3"), 3.0);
    EXPECT_EQ(Value("(1+2)*3"), 9.0);
    EXPECT_EQ(Value("+x", 4.0), 4.0);
    EXPECT_EQ(Value("2*x^2+1", 3.0), 19.0);
}

TEST(VyrFormula, FunctionsAndPi) {
    EXPECT_DOUBLE_EQ(Value("sin(pi/2)"), 1.0);
    EXPECT_DOUBLE_EQ(Value("cos(pi)"), -1.0);
    EXPECT_DOUBLE_EQ(Value("tan(pi/4)"), 1.0);
    EXPECT_DOUBLE_EQ(Value("asin(1)"), M_PI / 2);
    EXPECT_DOUBLE_EQ(Value("acos(-1)"), M_PI);
    EXPECT_DOUBLE_EQ(Value("atan(1)"), M_PI / 4);
    EXPECT_DOUBLE_EQ(Value("exp(1)"), M_E);
    EXPECT_DOUBLE_EQ(Value("ln(exp(2))"), 2.0);
    EXPECT_DOUBLE_EQ(Value("log10(1000)"), 3.0);
    EXPECT_DOUBLE_EQ(Value("sqrt(16)"), 4.0);
    EXPECT_DOUBLE_EQ(Value("abs(-2.5)"), 2.5);
    EXPECT_DOUBLE_EQ(Value("2e-3*1.5E2"), 0.3);
    EXPECT_DOUBLE_EQ(Value(".5+x", 1.0), 1.5);
}

TEST(VyrFormula, ComparisonsAndConditional) {
    EXPECT_EQ(Value("x>1 ? x : 2*x", 3.0), 3.0);
    EXPECT_EQ(Value("x>1 ? x : 2*x", 0.5), 1.0);
    EXPECT_EQ(Value("x<=1 && x>=0", 0.5), 1.0);
    EXPECT_EQ(Value("x==1 || x!=1", 7.0), 1.0);
}

TEST(VyrFormula, IeeeResultsAreNotErrors) {
    EXPECT_TRUE(std::isnan(Value("sqrt(-1)")));
    EXPECT_TRUE(std::isinf(Value("1/x", 0.0)));
    EXPECT_TRUE(std::isinf(Value("ln(0)")));
}

TEST(VyrFormula, RefusedTextsSayWhy) {
    VyrFormula f;
    f.DeclareVariable("x");
    const char* bad[] = {"",      "   ",   "x+",  "2*(x", "sin()", "foo(x)", "x y",
                         "x = 3", "1,2",   "x)",  "sin",  "3x",    "x ^^ 2", "log(x)",
                         "\"s\"", "x + é", "_pi", "e",    "x;1"};
    for (const char* text : bad) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(f.Parse(wxString::FromUTF8(text)));
        EXPECT_FALSE(f.IsParsed());
        EXPECT_FALSE(f.GetError().empty());
        EXPECT_EQ(f.GetError().Find('\n'), wxNOT_FOUND);
        EXPECT_TRUE(std::isnan(f.Evaluate()));
        double out = 7.0, in = 1.0;
        EXPECT_FALSE(f.EvaluateArray("x", &in, &out, 1));
        EXPECT_EQ(out, 7.0);
    }
}

TEST(VyrFormula, UnknownNameIsNamedInTheError) {
    VyrFormula f;
    f.DeclareVariable("x");
    EXPECT_FALSE(f.Parse("x*tau"));
    EXPECT_NE(f.GetError().Find("tau"), wxNOT_FOUND);
    f.DeclareVariable("tau", 2.0);
    ASSERT_TRUE(f.Parse("x*tau"));
    EXPECT_EQ(f.GetError(), "");
}

TEST(VyrFormula, NamesThatCannotBeVariables) {
    VyrFormula f;
    EXPECT_FALSE(f.DeclareVariable(""));
    EXPECT_FALSE(f.DeclareVariable("2a"));
    EXPECT_FALSE(f.DeclareVariable("a-b"));
    EXPECT_FALSE(f.DeclareVariable("sin"));
    EXPECT_FALSE(f.DeclareVariable("pi"));
    EXPECT_FALSE(f.DeclareVariable(wxString::FromUTF8("θ")));
    EXPECT_FALSE(f.BindVariable("m", nullptr));
    EXPECT_TRUE(f.DeclareVariable("U_1"));
    EXPECT_TRUE(f.DeclareVariable("_a"));
    EXPECT_FALSE(f.SetValue("nothing", 1.0));
    EXPECT_EQ(f.GetVariableIndex("nothing"), -1);
}

TEST(VyrFormula, BoundExperimentVariableIsReadAtEachEvaluation) {
    VyrVariable m(1, nullptr);
    m.SetValue(0.2);
    VyrFormula f;
    f.DeclareVariable("v", 3.0);
    ASSERT_TRUE(f.BindVariable("m", m.GetAdressValue()));
    ASSERT_TRUE(f.Parse("0.5*m*v^2"));
    EXPECT_DOUBLE_EQ(f.Evaluate(), 0.9);
    m.SetValue(0.4);
    EXPECT_DOUBLE_EQ(f.Evaluate(), 1.8);
    f.SetValue("m", 1.0);  // through the binding
    EXPECT_EQ(m.GetValue(), 1.0);
    wxArrayString used = f.GetUsedVariables();
    ASSERT_EQ(used.size(), 2u);
    EXPECT_EQ(used[0], "v");
    EXPECT_EQ(used[1], "m");
}

TEST(VyrFormula, UsedVariablesLeaveOutTheUnused) {
    VyrFormula f;
    f.DeclareVariable("x");
    f.DeclareVariable("a");
    f.DeclareVariable("b");
    ASSERT_TRUE(f.Parse("b*x"));
    wxArrayString used = f.GetUsedVariables();
    ASSERT_EQ(used.size(), 2u);
    EXPECT_EQ(used[0], "x");
    EXPECT_EQ(used[1], "b");
}

TEST(VyrFormula, NumbersReadWithPointUnderCommaLocale) {
    const char* old = std::setlocale(LC_NUMERIC, nullptr);
    const std::string saved = old ? old : "C";
    if (!std::setlocale(LC_NUMERIC, "fr_FR.UTF-8") && !std::setlocale(LC_NUMERIC, "de_DE.UTF-8"))
        GTEST_SKIP() << "no locale with a decimal comma on this machine";
    EXPECT_EQ(Value("1.5*2"), 3.0);
    std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(VyrFormula, ArrayMatchesPointByPointAndKeepsTheVariable) {
    VyrFormula f;
    f.DeclareVariable("x", 42.0);
    f.DeclareVariable("A", 2.0);
    f.DeclareVariable("tau", 0.7);
    ASSERT_TRUE(f.Parse("A*exp(-x/tau)*sin(2*pi*x) + abs(x)^1.5 - 3"));
    std::vector<double> xs(1000), ys(1000);
    for (size_t i = 0; i < xs.size(); ++i)
        xs[i] = -5.0 + 0.01 * double(i);
    ASSERT_TRUE(f.EvaluateArray("x", xs.data(), ys.data(), xs.size()));
    for (size_t i = 0; i < xs.size(); ++i) {
        const double x = xs[i];
        EXPECT_DOUBLE_EQ(ys[i], 2.0 * std::exp(-x / 0.7) * std::sin(2 * M_PI * x) +
                                    std::pow(std::fabs(x), 1.5) - 3.0);
    }
    EXPECT_EQ(f.Evaluate(),
              2.0 * std::exp(-42.0 / 0.7) * std::sin(2 * M_PI * 42.0) + std::pow(42.0, 1.5) - 3.0);
    // In place, and through a conditional, which is evaluated one point at a time.
    ASSERT_TRUE(f.Parse("x < 0 ? -x : x*A"));
    ASSERT_TRUE(f.EvaluateArray(f.GetVariableIndex("x"), xs.data(), xs.data(), xs.size()));
    EXPECT_DOUBLE_EQ(xs[0], 5.0);
    EXPECT_DOUBLE_EQ(xs[999], 2.0 * 4.99);
}

TEST(VyrFormula, GradientIsExact) {
    VyrFormula f;
    f.DeclareVariable("x", 1.3);
    f.DeclareVariable("A", 2.0);
    f.DeclareVariable("tau", 0.7);
    f.DeclareVariable("f", 1.1);
    f.DeclareVariable("phi", 0.3);
    ASSERT_TRUE(f.Parse("A*exp(-x/tau)*sin(2*pi*f*x+phi)"));
    const int wrt[] = {f.GetVariableIndex("A"), f.GetVariableIndex("tau"), f.GetVariableIndex("f"),
                       f.GetVariableIndex("phi")};
    double v = 0, g[4] = {0, 0, 0, 0};
    ASSERT_TRUE(f.EvaluateGradient(wrt, 4, &v, g));
    const double x = 1.3, A = 2.0, tau = 0.7, fr = 1.1, phi = 0.3;
    const double e = std::exp(-x / tau), s = std::sin(2 * M_PI * fr * x + phi),
                 c = std::cos(2 * M_PI * fr * x + phi);
    EXPECT_DOUBLE_EQ(v, A * e * s);
    EXPECT_DOUBLE_EQ(g[0], e * s);
    EXPECT_DOUBLE_EQ(g[1], A * e * s * x / (tau * tau));
    EXPECT_DOUBLE_EQ(g[2], A * e * c * 2 * M_PI * x);
    EXPECT_DOUBLE_EQ(g[3], A * e * c);
}

TEST(VyrFormula, GradientOfEveryFunctionAndOperator) {
    // Each against its closed form at a point where all are defined.
    struct Case {
        const char* text;
        double slope;  // d/da at a = 0.3
    };
    const double a = 0.3;
    const Case cases[] = {
        {"sin(a)", std::cos(a)},
        {"cos(a)", -std::sin(a)},
        {"tan(a)", 1 / (std::cos(a) * std::cos(a))},
        {"asin(a)", 1 / std::sqrt(1 - a * a)},
        {"acos(a)", -1 / std::sqrt(1 - a * a)},
        {"atan(a)", 1 / (1 + a * a)},
        {"exp(a)", std::exp(a)},
        {"ln(a)", 1 / a},
        {"log10(a)", 1 / (a * std::log(10.0))},
        {"sqrt(a)", 0.5 / std::sqrt(a)},
        {"abs(-a)", 1.0},
        {"a^3", 3 * a * a},
        {"2^a", std::pow(2.0, a) * std::log(2.0)},
        {"a^a", std::pow(a, a) * (std::log(a) + 1)},
        {"1/a", -1 / (a * a)},
        {"-a*a", -2 * a},
        {"a > 0 ? a*a : a", 2 * a},
        {"a < 0 ? a*a : 5*a", 5.0},
        {"(a-1)^2", 2 * (a - 1)},
        {"a > 0", 0.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        VyrFormula f;
        f.DeclareVariable("a", a);
        ASSERT_TRUE(f.Parse(c.text));
        const int wrt = 0;
        double v = 0, g = -99;
        ASSERT_TRUE(f.EvaluateGradient(&wrt, 1, &v, &g));
        EXPECT_DOUBLE_EQ(v, f.Evaluate());
        EXPECT_NEAR(g, c.slope, 1e-14 * std::max(1.0, std::fabs(c.slope)));
    }
}

TEST(VyrFormula, GradientOfNegativeBaseToConstantPowerIsNotNan) {
    VyrFormula f;
    f.DeclareVariable("b", -2.0);
    ASSERT_TRUE(f.Parse("b^2"));
    const int wrt = 0;
    double v = 0, g = 0;
    ASSERT_TRUE(f.EvaluateGradient(&wrt, 1, &v, &g));
    EXPECT_EQ(v, 4.0);
    EXPECT_EQ(g, -4.0);
    EXPECT_FALSE(f.EvaluateGradient(&wrt, 1, nullptr, &g));
    const int unknown = 5;
    EXPECT_FALSE(f.EvaluateGradient(&unknown, 1, &v, &g));
}
