#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include <wx/filename.h>

#include "support/CurveBuilder.h"
#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

struct Points {
    std::vector<double> x, y;
};

// n points of f from x0 to x1, with Gaussian noise of standard deviation `noise` (fixed seed).
Points Sample(const std::function<double(double)>& f, double x0, double x1, size_t n,
              double noise) {
    std::mt19937 random(1234);
    std::normal_distribution<double> gauss(0.0, noise);
    Points p;
    for (size_t i = 0; i < n; ++i) {
        const double x = x0 + (x1 - x0) * double(i) / double(n - 1);
        p.x.push_back(x);
        p.y.push_back(f(x) + (noise > 0 ? gauss(random) : 0.0));
    }
    return p;
}

double Value(const VyrFit& fit, const char* name) {
    const int i = fit.GetParameterIndex(name);
    return i < 0 ? NAN : fit.GetValue(size_t(i));
}

double Uncertainty(const VyrFit& fit, const char* name) {
    const int i = fit.GetParameterIndex(name);
    return i < 0 ? NAN : fit.GetUncertainty(size_t(i));
}

}  // namespace

TEST(VyrFit, ModelNamesAndTheirParameters) {
    const wxArrayString names = VyrFit::GetModelNames();
    const char* expected[] = {"linear", "affine", "poly2", "poly3",  "poly4", "poly5",
                              "exp",    "power",  "sine",  "damped", "gauss"};
    ASSERT_EQ(names.size(), sizeof(expected) / sizeof(expected[0]));
    for (size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(names[i], expected[i]);
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("damped"));
    ASSERT_EQ(fit.GetParameterCount(), 5u);
    EXPECT_EQ(fit.GetParameterName(0), "A");
    EXPECT_EQ(fit.GetParameterName(1), "tau");
    EXPECT_EQ(fit.GetParameterName(2), "f");
    EXPECT_EQ(fit.GetParameterName(3), "phi");
    EXPECT_EQ(fit.GetParameterName(4), "C");
    EXPECT_EQ(fit.GetParameterName(5), "");
    EXPECT_EQ(fit.GetEquation(), "A*exp(-x/tau)*sin(2*pi*f*x+phi)+C");
    ASSERT_TRUE(fit.SetModel("poly3"));
    EXPECT_EQ(fit.GetParameterName(3), "c3");
    EXPECT_FALSE(fit.SetModel("cubic"));
    EXPECT_EQ(fit.GetParameterCount(), 0u);
    EXPECT_NE(fit.GetError().Find("cubic"), wxNOT_FOUND);
}

TEST(VyrFit, AffineMatchesTheClosedFormWithItsStandardErrors) {
    const Points p = Sample([](double x) { return 2.5 * x - 1.0; }, 0.0, 10.0, 21, 0.3);
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("affine"));
    ASSERT_TRUE(fit.Fit(p.x.data(), p.y.data(), p.x.size())) << fit.GetError();
    // Ordinary least squares by hand.
    const double n = double(p.x.size());
    double sx = 0, sy = 0;
    for (size_t i = 0; i < p.x.size(); ++i) {
        sx += p.x[i];
        sy += p.y[i];
    }
    const double mx = sx / n, my = sy / n;
    double sxx = 0, sxy = 0, syy = 0;
    for (size_t i = 0; i < p.x.size(); ++i) {
        sxx += (p.x[i] - mx) * (p.x[i] - mx);
        sxy += (p.x[i] - mx) * (p.y[i] - my);
        syy += (p.y[i] - my) * (p.y[i] - my);
    }
    const double a = sxy / sxx, b = my - a * mx;
    double rss = 0;
    for (size_t i = 0; i < p.x.size(); ++i)
        rss += (p.y[i] - a * p.x[i] - b) * (p.y[i] - a * p.x[i] - b);
    const double s2 = rss / (n - 2);
    EXPECT_NEAR(Value(fit, "a"), a, 1e-12);
    EXPECT_NEAR(Value(fit, "b"), b, 1e-11);
    EXPECT_NEAR(Uncertainty(fit, "a"), std::sqrt(s2 / sxx), 1e-12);
    EXPECT_NEAR(Uncertainty(fit, "b"), std::sqrt(s2 * (1 / n + mx * mx / sxx)), 1e-11);
    EXPECT_NEAR(fit.GetRss(), rss, 1e-10);
    EXPECT_NEAR(fit.GetR2(), 1 - rss / syy, 1e-12);
    EXPECT_EQ(fit.GetPoints(), p.x.size());
    EXPECT_TRUE(fit.IsConverged());
    EXPECT_NEAR(fit.Evaluate(4.0), a * 4 + b, 1e-10);
}

TEST(VyrFit, BuiltInModelsFindTheirOwnStartingValues) {
    struct Case {
        const char* model;
        std::function<double(double)> f;
        double x0, x1;
        std::vector<std::pair<const char*, double>> expected;
    };
    const Case cases[] = {
        {"linear", [](double x) { return -3 * x; }, 0, 5, {{"a", -3}}},
        {"poly2",
         [](double x) { return 1 - 2 * x + 4.9 * x * x; },
         -1,
         2,
         {{"c0", 1}, {"c1", -2}, {"c2", 4.9}}},
        {"poly5",
         [](double x) { return 0.5 * std::pow(x, 5) - x * x + 3; },
         -2,
         2,
         {{"c5", 0.5}, {"c2", -1}, {"c0", 3}}},
        {"exp",
         [](double x) { return 5 * std::exp(-x / 0.004) + 0.2; },
         0,
         0.02,
         {{"A", 5}, {"tau", 0.004}, {"C", 0.2}}},
        {"exp",
         [](double x) { return 2 * std::exp(x / 3.0) - 1; },
         0,
         5,
         {{"A", 2}, {"tau", -3}, {"C", -1}}},
        {"power",
         [](double x) { return 4.2 * std::pow(x, -1.5); },
         0.5,
         8,
         {{"A", 4.2}, {"n", -1.5}}},
        {"sine",
         [](double x) { return 1.5 * std::sin(2 * M_PI * 440 * x + 0.7) + 0.1; },
         0,
         0.02,
         {{"A", 1.5}, {"f", 440}, {"phi", 0.7}, {"C", 0.1}}},
        {"damped",
         [](double x) { return 5 * std::exp(-x / 0.004) * std::sin(2 * M_PI * 500 * x + 1.2); },
         0,
         0.02,
         {{"A", 5}, {"tau", 0.004}, {"f", 500}, {"phi", 1.2}, {"C", 0}}},
        {"gauss",
         [](double x) { return 3 * std::exp(-(x - 550) * (x - 550) / (2 * 20 * 20)) + 1; },
         400,
         700,
         {{"A", 3}, {"mu", 550}, {"sigma", 20}, {"C", 1}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.model);
        const Points p = Sample(c.f, c.x0, c.x1, 400, 0.0);
        VyrFit fit;
        ASSERT_TRUE(fit.SetModel(c.model));
        ASSERT_TRUE(fit.Fit(p.x.data(), p.y.data(), p.x.size())) << fit.GetError();
        for (const auto& e : c.expected) {
            SCOPED_TRACE(e.first);
            EXPECT_NEAR(Value(fit, e.first), e.second, 1e-7 * std::max(1.0, std::fabs(e.second)));
        }
        EXPECT_NEAR(fit.GetR2(), 1.0, 1e-12);
    }
}

TEST(VyrFit, SineFindsItsFrequencyThroughNoiseAndUnevenSampling) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> jitter(-0.3, 0.3);
    std::normal_distribution<double> noise(0.0, 0.2);
    std::vector<double> x, y;
    for (int i = 0; i < 300; ++i) {
        const double t = (i + jitter(random)) * 1e-3;
        x.push_back(t);
        y.push_back(2 * std::sin(2 * M_PI * 37 * t - 2.0) + noise(random));
    }
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("sine"));
    ASSERT_TRUE(fit.Fit(x.data(), y.data(), x.size()));
    EXPECT_NEAR(Value(fit, "f"), 37, 0.1);
    EXPECT_NEAR(std::fabs(Value(fit, "A")), 2, 0.05);
    EXPECT_LT(Uncertainty(fit, "f"), 0.1);
    EXPECT_GT(Uncertainty(fit, "f"), 0.0);
}

TEST(VyrFit, FormulaWithGivenStartsAndBoundVariable) {
    // A fall: y = y0 - g/2 t^2, with y0 an experiment variable that is not fitted.
    double y0 = 1.8;
    const Points p = Sample([](double t) { return 1.8 - 0.5 * 9.81 * t * t; }, 0, 0.6, 30, 0.0);
    VyrFit fit;
    ASSERT_TRUE(fit.BindVariable("y0", &y0));
    ASSERT_TRUE(fit.SetFormula("y0 - g/2*x^2 + v*x"));
    ASSERT_EQ(fit.GetParameterCount(), 2u);
    EXPECT_EQ(fit.GetParameterName(0), "g");
    EXPECT_EQ(fit.GetParameterName(1), "v");
    EXPECT_TRUE(fit.SetStart("g", 5.0));
    EXPECT_FALSE(fit.SetStart("y0", 5.0));
    EXPECT_FALSE(fit.SetStart("x", 5.0));
    ASSERT_TRUE(fit.Fit(p.x.data(), p.y.data(), p.x.size())) << fit.GetError();
    EXPECT_NEAR(Value(fit, "g"), 9.81, 1e-9);
    EXPECT_NEAR(Value(fit, "v"), 0.0, 1e-9);
    EXPECT_EQ(y0, 1.8);
}

TEST(VyrFit, RefusedFormulas) {
    VyrFit fit;
    EXPECT_FALSE(fit.SetFormula("a*"));
    EXPECT_FALSE(fit.GetError().empty());
    EXPECT_FALSE(fit.SetFormula("a*b"));
    EXPECT_NE(fit.GetError().Find("x"), wxNOT_FOUND);
    EXPECT_FALSE(fit.SetFormula("2*x"));
    EXPECT_NE(fit.GetError().Find("parameter"), wxNOT_FOUND);
    EXPECT_FALSE(fit.SetFormula("sin*x"));
    EXPECT_EQ(fit.GetParameterCount(), 0u);
    const double x[] = {1, 2, 3}, y[] = {1, 2, 3};
    EXPECT_FALSE(fit.Fit(x, y, 3));
    double m = 0.2;
    EXPECT_FALSE(fit.BindVariable("x", &m));
    EXPECT_FALSE(fit.BindVariable("m", nullptr));
    EXPECT_FALSE(fit.BindVariable("2m", &m));
    EXPECT_TRUE(fit.BindVariable("m", &m));
}

TEST(VyrFit, RangeAndInvalidPointsTakeNoPart) {
    // A line up to x = 5, then points far off that the range leaves out; NaN and infinite
    // points are left out everywhere.
    std::vector<double> x, y;
    for (int i = 0; i <= 10; ++i) {
        x.push_back(i);
        y.push_back(i <= 5 ? 2.0 * i + 1 : 100.0);
    }
    x.push_back(2.5);
    y.push_back(NAN);
    x.push_back(INFINITY);
    y.push_back(1.0);
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("affine"));
    fit.SetRange(0.0, 5.0);
    ASSERT_TRUE(fit.Fit(x.data(), y.data(), x.size()));
    EXPECT_EQ(fit.GetPoints(), 6u);
    EXPECT_NEAR(Value(fit, "a"), 2.0, 1e-12);
    EXPECT_NEAR(Value(fit, "b"), 1.0, 1e-12);
    fit.ClearRange();
    ASSERT_TRUE(fit.Fit(x.data(), y.data(), x.size()));
    EXPECT_EQ(fit.GetPoints(), 11u);
    EXPECT_GT(std::fabs(Value(fit, "a") - 2.0), 1.0);
    fit.SetRange(5.0, 0.0);
    EXPECT_FALSE(fit.Fit(x.data(), y.data(), x.size()));
}

TEST(VyrFit, RefusalGivesNoNumbers) {
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("poly3"));
    const double x[] = {0, 1, 2}, y[] = {1, 2, 5};
    EXPECT_FALSE(fit.Fit(x, y, 3));  // 3 points, 4 parameters
    EXPECT_FALSE(fit.IsConverged());
    EXPECT_NE(fit.GetError().Find("too few"), wxNOT_FOUND);
    EXPECT_TRUE(std::isnan(fit.GetValue(0)));
    EXPECT_TRUE(std::isnan(fit.GetRss()));
    EXPECT_TRUE(std::isnan(fit.GetR2()));
    EXPECT_TRUE(std::isnan(fit.Evaluate(1.0)));
    EXPECT_FALSE(fit.Fit(nullptr, nullptr, 5));
    // A model that cannot be evaluated where it starts.
    ASSERT_TRUE(fit.SetFormula("ln(b - x)"));
    ASSERT_TRUE(fit.SetStart("b", -10));
    EXPECT_FALSE(fit.Fit(x, y, 3));
    EXPECT_NE(fit.GetError().Find("starting values"), wxNOT_FOUND);
    EXPECT_TRUE(std::isnan(fit.GetValue(0)));
}

TEST(VyrFit, ExactDataLeavesNoUncertaintyAndAsManyPointsAsParametersLeaveItUnknown) {
    const double x[] = {0, 1, 2}, y[] = {1, 3, 5};
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("poly2"));
    ASSERT_TRUE(fit.Fit(x, y, 3));
    EXPECT_NEAR(Value(fit, "c1"), 2.0, 1e-12);
    EXPECT_TRUE(std::isnan(Uncertainty(fit, "c1")));  // no degree of freedom left
    ASSERT_TRUE(fit.SetModel("affine"));
    ASSERT_TRUE(fit.Fit(x, y, 3));
    EXPECT_NEAR(Uncertainty(fit, "a"), 0.0, 1e-12);
}

TEST(VyrFit, FormatResultListsParametersWithUncertainties) {
    const Points p = Sample([](double x) { return 2.5 * x - 1.0; }, 0.0, 10.0, 21, 0.3);
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("affine"));
    ASSERT_TRUE(fit.Fit(p.x.data(), p.y.data(), p.x.size()));
    const wxString text = fit.FormatResult(4);
    EXPECT_TRUE(text.StartsWith(wxString::Format(L"a = %.4g \u00b1 ", Value(fit, "a")))) << text;
    EXPECT_NE(text.Find("\nb = "), wxNOT_FOUND);
    EXPECT_EQ(fit.FormatResult(4, "; ").Find('\n'), wxNOT_FOUND);
    EXPECT_NE(text.Find(wxString::FromUTF8("R² = ")), wxNOT_FOUND);
    EXPECT_NE(text.Find("21 points"), wxNOT_FOUND);
}

TEST(VyrFit, FitOfCurveUsesValidPointsAndIsKeptInTheDocument) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E1");
    std::vector<std::pair<double, double>> pts;
    for (int i = 0; i <= 200; ++i) {
        const double t = i * 1e-4;
        pts.emplace_back(t, 5 * std::exp(-t / 0.004) * std::cos(2 * M_PI * 500 * t));
    }
    VyrCourbe* u = AddCurve(doc, e, {"U", "V", "t", "s"}, pts);
    u->SetShownInDiagram(0, true);
    u->GetVy()->SetVal(50, 1000.0);  // a wild point, marked invalid
    u->GetVy()->ValidateAt(50, false);
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("damped"));
    ASSERT_TRUE(fit.Fit(u)) << fit.GetError();
    EXPECT_EQ(fit.GetPoints(), 200u);
    EXPECT_NEAR(Value(fit, "f"), 500, 1e-6);
    EXPECT_NEAR(Value(fit, "tau"), 0.004, 1e-9);

    VyrCourbe* model = fit.AddToDocument(&doc, u, 101);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(doc.FindExperienceFromCourbe(model), e);
    EXPECT_EQ(model->GetVy()->GetGrandeur(), "fit_U");
    EXPECT_EQ(model->GetVy()->GetUnite(), "V");
    EXPECT_EQ(model->GetVx()->GetGrandeur(), "t");
    EXPECT_EQ(model->GetVx()->GetUnite(), "s");
    EXPECT_TRUE(model->IsShownInDiagram(0));
    EXPECT_FALSE(model->IsShownInDiagram(1));
    ASSERT_EQ(model->GetSize(), 101u);
    EXPECT_DOUBLE_EQ(model->GetVx()->GetVal(0), 0.0);
    EXPECT_DOUBLE_EQ(model->GetVx()->GetVal(100), 0.02);
    for (int i = 0; i <= 100; i += 10) {
        const double t = model->GetVx()->GetVal(i);
        EXPECT_NEAR(model->GetVy()->GetVal(i),
                    5 * std::exp(-t / 0.004) * std::cos(2 * M_PI * 500 * t), 1e-9);
    }
    ASSERT_EQ(model->GetNotesCount(), 2);
    VyrNote* equation = model->GetFirstNote()->GetData();
    VyrNote* note = model->GetFirstNote()->GetNext()->GetData();
    EXPECT_TRUE(equation->GetText().StartsWith("y = A*exp(-x/tau)*sin(2*pi*f*x+phi)+C; R"))
        << equation->GetText();
    EXPECT_TRUE(equation->GetText().EndsWith(", 200 points")) << equation->GetText();
    EXPECT_TRUE(note->GetText().StartsWith(L"A = 5 \u00b1 ")) << note->GetText();
    EXPECT_NE(note->GetText().Find(L"; f = 500 \u00b1 "), wxNOT_FOUND) << note->GetText();
    EXPECT_EQ(note->GetPointIndex(), 33);
    EXPECT_LT(note->GetPositionY(), equation->GetPositionY());

    // Saved and loaded, the curve and its note come back.
    const wxString path = wxFileName::CreateTempFileName("vyrfit");
    ASSERT_TRUE(doc.Save(path));
    VyrBaseData loaded(nullptr);
    ASSERT_TRUE(loaded.Load(path));
    wxRemoveFile(path);
    VyrCourbe* back = loaded.FindFirstCourbeByGrdY("fit_U");
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->GetSize(), 101u);
    ASSERT_EQ(back->GetNotesCount(), 2);
    EXPECT_EQ(back->GetFirstNote()->GetData()->GetText(), equation->GetText());
    EXPECT_EQ(back->GetFirstNote()->GetNext()->GetData()->GetText(), note->GetText());

    // A second fit gets a curve of its own.
    VyrCourbe* again = fit.AddToDocument(&doc, u, 10);
    ASSERT_NE(again, nullptr);
    EXPECT_NE(again, model);
    EXPECT_EQ(again->GetVy()->GetGrandeur(), "fit_U1");
}

TEST(VyrFit, AddToDocumentRefusesWithoutAResult) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E1");
    VyrCourbe* u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {1, 2}, {2, 3}});
    VyrFit fit;
    ASSERT_TRUE(fit.SetModel("affine"));
    EXPECT_EQ(fit.AddToDocument(&doc, u), nullptr);  // not fitted
    ASSERT_TRUE(fit.Fit(u));
    EXPECT_EQ(fit.AddToDocument(nullptr, u), nullptr);
    EXPECT_EQ(fit.AddToDocument(&doc, nullptr), nullptr);
    EXPECT_EQ(fit.AddToDocument(&doc, u, 1), nullptr);
    VyrBaseData other(nullptr);
    EXPECT_EQ(fit.AddToDocument(&other, u), nullptr);  // u is no curve of `other`
    EXPECT_NE(fit.AddToDocument(&doc, u, 2), nullptr);
}
