#include <gtest/gtest.h>

#include <cmath>

#include "CalcTestSupport.h"
#include "vyrbase/calc/VyrAmplitudeSpectrum.h"

using namespace calctest;

namespace {
const double kPi = 3.14159265358979323846;

struct Fixture {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");

    // n samples at step dt of offset + a sin(2 pi f t) + b cos(2 pi g t).
    VyrCourbe* Signal(int n, double dt, double offset, double a, double f, double b = 0,
                      double g = 0, const wxString& unit = "s") {
        std::vector<double> xs, ys;
        for (int i = 0; i < n; ++i) {
            const double t = i * dt;
            xs.push_back(t);
            ys.push_back(offset + a * std::sin(2 * kPi * f * t) + b * std::cos(2 * kPi * g * t));
        }
        return Curve(doc, e, "U", "V", xs, ys, {}, "t", unit);
    }
};

size_t Peak(const std::vector<double>& a) {
    size_t best = 1;
    for (size_t k = 1; k < a.size(); ++k)
        if (a[k] > a[best])
            best = k;
    return best;
}
}  // namespace

TEST(VyrAmplitudeSpectrum, SineOfAmplitudeAReadsAAtItsFrequency) {
    Fixture f;
    // 1000 points at 1 ms: 1 s, bins every 1 Hz; 50 Hz of amplitude 2 and 120 Hz of 0.5 on 1.5.
    VyrCourbe* c = f.Signal(1000, 1e-3, 1.5, 2.0, 50, 0.5, 120);
    VyrAmplitudeSpectrum s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_EQ(s.GetPointsUsed(), 1000);
    EXPECT_EQ(s.GetFrequencyUnit(), "Hz");
    ASSERT_EQ(s.GetFrequencies().size(), 501u);
    EXPECT_NEAR(s.GetFrequencies()[50], 50.0, 1e-9);
    EXPECT_NEAR(s.GetFrequencies()[500], 500.0, 1e-9);
    EXPECT_NEAR(s.GetAmplitudes()[0], 1.5, 1e-12);
    EXPECT_NEAR(s.GetAmplitudes()[50], 2.0, 1e-12);
    EXPECT_NEAR(s.GetAmplitudes()[120], 0.5, 1e-12);
    EXPECT_NEAR(s.GetAmplitudes()[51], 0.0, 1e-12);
    EXPECT_EQ(Peak(s.GetAmplitudes()), 50u);
}

TEST(VyrAmplitudeSpectrum, MillisecondsStillReadInHertz) {
    Fixture f;
    VyrCourbe* c = f.Signal(800, 0.5, 0.0, 1.0, 0.025, 0, 0, "ms");  // 25 Hz in ms
    VyrAmplitudeSpectrum s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_EQ(s.GetFrequencyUnit(), "Hz");
    const size_t k = Peak(s.GetAmplitudes());
    EXPECT_NEAR(s.GetFrequencies()[k], 25.0, 1e-9);
    EXPECT_NEAR(s.GetAmplitudes()[k], 1.0, 1e-12);
}

TEST(VyrAmplitudeSpectrum, OtherUnitsGiveCyclesPerUnit) {
    Fixture f;
    VyrCourbe* c = f.Signal(64, 0.25, 0.0, 1.0, 0.5, 0, 0, "m");
    VyrAmplitudeSpectrum s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_EQ(s.GetFrequencyUnit(), "1/m");
}

TEST(VyrAmplitudeSpectrum, UnevenStepIsRefusedWithAReason) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3.5, 4, 5}, {0, 1, 0, 1, 0, 1});
    VyrAmplitudeSpectrum s;
    EXPECT_FALSE(s.Compute(c));
    EXPECT_EQ(s.GetError(), VyrAmplitudeSpectrum::kErrorNotUniform);
    EXPECT_TRUE(s.GetErrorText().Contains("uniformly"));
    EXPECT_TRUE(s.GetAmplitudes().empty());
    EXPECT_EQ(s.CreateCurve(c), nullptr);
}

TEST(VyrAmplitudeSpectrum, GapLeftByAnInvalidPointIsNotUniform) {
    Fixture f;
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3, 4, 5}, {0, 1, 0, 1, 0, 1}, {2});
    VyrAmplitudeSpectrum s;
    EXPECT_FALSE(s.Compute(c));
    EXPECT_EQ(s.GetError(), VyrAmplitudeSpectrum::kErrorNotUniform);
    // Invalid points at the ends are only left out.
    VyrCourbe* d = Curve(f.doc, f.e, "V", "V", {0, 1, 2, 3, 4, 5}, {0, 1, 0, 1, 0, 1}, {0, 5});
    EXPECT_TRUE(s.Compute(d));
    EXPECT_EQ(s.GetPointsUsed(), 4);
}

TEST(VyrAmplitudeSpectrum, TooFewPointsAndNullAreRefused) {
    Fixture f;
    VyrAmplitudeSpectrum s;
    EXPECT_FALSE(s.Compute(nullptr));
    EXPECT_EQ(s.GetError(), VyrAmplitudeSpectrum::kErrorNoCurve);
    VyrCourbe* c = Curve(f.doc, f.e, "U", "V", {0, 1, 2}, {0, 1, 0});
    EXPECT_FALSE(s.Compute(c));
    EXPECT_EQ(s.GetError(), VyrAmplitudeSpectrum::kErrorTooFewPoints);
}

TEST(VyrAmplitudeSpectrum, LengthWithALargePrimeFactorIsCutToAFastOne) {
    EXPECT_EQ(VyrAmplitudeSpectrum::LargestFastLength(1000), 1000);
    EXPECT_EQ(VyrAmplitudeSpectrum::LargestFastLength(1021), 1000);  // 1021 is prime
    EXPECT_EQ(VyrAmplitudeSpectrum::LargestFastLength(1 << 20), 1 << 20);
    EXPECT_EQ(VyrAmplitudeSpectrum::LargestFastLength(0), 0);
    Fixture f;
    VyrCourbe* c = f.Signal(1021, 1e-3, 0.0, 3.0, 100);
    VyrAmplitudeSpectrum s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_EQ(s.GetPointsUsed(), 1000);
    EXPECT_NEAR(s.GetAmplitudes()[100], 3.0, 1e-12);
}

TEST(VyrAmplitudeSpectrum, CreateCurveKeepsTheSpectrumAsUOfF) {
    Fixture f;
    VyrCourbe* c = f.Signal(100, 0.01, 0.0, 1.0, 10);
    VyrAmplitudeSpectrum s;
    VyrCourbe* made = s.CreateCurve(c);
    ASSERT_NE(made, nullptr);
    EXPECT_NE(f.e->FindCourbe(made), nullptr);
    EXPECT_EQ(made->GetName(), "U(f)");
    EXPECT_EQ(made->GetVx()->GetUnite(), "Hz");
    EXPECT_EQ(made->GetVy()->GetUnite(), "V");
    EXPECT_EQ(made->GetSize(), 51u);
    EXPECT_NEAR((*made->GetVy())[10], 1.0, 1e-12);
    EXPECT_NEAR((*made->GetVx())[10], 10.0, 1e-9);
    // Again: the same curve is reused.
    EXPECT_EQ(s.CreateCurve(c), made);
}

TEST(VyrAmplitudeSpectrum, OddCountOfPointsReadsTheSameAmplitudes) {
    Fixture f;
    // 135 = 27 x 5 points over 1 s: 10 Hz makes ten whole periods; the last bin is no Nyquist.
    VyrCourbe* c = f.Signal(135, 1.0 / 135, -0.25, 1.5, 10, 0.75, 67);
    VyrAmplitudeSpectrum s;
    ASSERT_TRUE(s.Compute(c));
    EXPECT_EQ(s.GetPointsUsed(), 135);
    ASSERT_EQ(s.GetAmplitudes().size(), 68u);
    EXPECT_NEAR(s.GetAmplitudes()[0], 0.25, 1e-12);
    EXPECT_NEAR(s.GetAmplitudes()[10], 1.5, 1e-12);
    EXPECT_NEAR(s.GetAmplitudes()[67], 0.75, 1e-12);
    EXPECT_NEAR(s.GetAmplitudes()[11], 0.0, 1e-12);
}

TEST(VyrAmplitudeSpectrum, AlternatingSignReadsItsAmplitudeAtTheLastFrequency) {
    Fixture f;
    VyrCourbe* c =
        Curve(f.doc, f.e, "U", "V", {0, 1, 2, 3, 4, 5, 6, 7}, {3, -1, 3, -1, 3, -1, 3, -1});
    VyrAmplitudeSpectrum s;
    ASSERT_TRUE(s.Compute(c));
    ASSERT_EQ(s.GetAmplitudes().size(), 5u);
    EXPECT_NEAR(s.GetAmplitudes()[0], 1.0, 1e-15);
    EXPECT_NEAR(s.GetAmplitudes()[4], 2.0, 1e-15);
    EXPECT_NEAR(s.GetFrequencies()[4], 0.5, 1e-15);
    EXPECT_NEAR(s.GetAmplitudes()[2], 0.0, 1e-15);
}

TEST(VyrAmplitudeSpectrum, MeasuredCurveOfTheSameQuantitiesIsNeverOverwritten) {
    Fixture f;
    VyrCourbe* c = f.Signal(100, 0.01, 0.0, 1.0, 10);
    // A frequency response measured in the same experiment: U(f) in V over Hz.
    VyrCourbe* measured = Curve(f.doc, f.e, "U", "V", {1, 2, 3}, {4, 5, 6}, {}, "f", "Hz");
    VyrAmplitudeSpectrum s;
    EXPECT_EQ(s.CreateCurve(c), nullptr);
    EXPECT_EQ(s.GetError(), VyrAmplitudeSpectrum::kErrorCurveExists);
    EXPECT_EQ(Values(measured->GetVy()), (std::vector<double>{4, 5, 6}));
}
