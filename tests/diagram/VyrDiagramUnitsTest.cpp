// Units of the diagram, engineering multiples and prefixes, the step and label rules and the
// precision of values printed on the graph.
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include <wx/intl.h>

#include "support/CurveBuilder.h"
#include "support/TranslationScope.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

const wxString kMicro = L"\u00b5";
const wxString kOmega = L"\u03a9";
const wxString kOhmSign = L"\u2126";

struct Multiple {
    double divisor;
    wxString label;
};

std::vector<wxString> Strings(const wxArrayString& a) {
    return std::vector<wxString>(a.begin(), a.end());
}

Multiple GetMultiple(VyrDiagram& d, double value, const wxString& unit) {
    wxString u = unit;
    wxString label = "untouched";
    const double divisor = d.GetMultiple(value, u, label);
    return {divisor, label};
}

// A diagram of an empty document, for the formatting rules that read only its settings.
struct UnitsFixture : ::testing::Test {
    VyrBaseData doc{nullptr};
    VyrDiagram& d = *doc.GetDiagram(0);
};

// The same with an application's English time texts installed before the document: its
// diagrams read the seconds symbol when they are made.
struct EnglishTimeTexts {
    TranslationScope tr{TimeTexts()};
};
struct TimeUnitsFixture : EnglishTimeTexts, UnitsFixture {};

// The SI prefix of a power of ten that is a multiple of 3 within -24..24, written out
// independently of the library's table.
wxString PrefixOf(int power) {
    static const std::map<int, wxString> prefixes = {
        {24, "Y"},  {21, "Z"},  {18, "E"},  {15, "P"},  {12, "T"},    {9, "G"},
        {6, "M"},   {3, "k"},   {0, ""},    {-3, "m"},  {-6, kMicro}, {-9, "n"},
        {-12, "p"}, {-15, "f"}, {-18, "a"}, {-21, "z"}, {-24, "y"}};
    return prefixes.at(power);
}

// The power chosen for a value of about 2 * 10^n: 0 below 2^-23 (about 1.19e-7, so for
// n <= -8), else the exponent n clamped to at most 24, rounded down to a multiple of 3.
int PowerFor(int n) {
    if (n <= -8)
        return 0;
    const int e = std::min(n, 24);
    return 3 * static_cast<int>(std::floor(e / 3.0));
}

// Units that carry a power of their own, in their base unit.
struct OwnPower {
    const wchar_t* unit;
    const wchar_t* base;
    int power;
};
const OwnPower kOwnPowers[] = {
    {L"mV", L"V", -3},          {L"mS/m", L"S/m", -3},        {L"mS/cm", L"S/cm", -3},
    {L"\u00b5S/m", L"S/m", -6}, {L"\u00b5S/cm", L"S/cm", -6}, {L"k\u03a9", L"\u03a9", 3},
    {L"k\u2126", L"\u03a9", 3},
};

const wchar_t* const kExempt[] = {
    L"mT",      L"ppm",       L"\u00b5S/cm", L"\u00b5S/m", L"mS/cm", L"mS/m", L"hPa",
    L"\u00b0C", L"cycle/min", L"k\u03a9",    L"mg/l",      L"mg/L",  L"%O2",  L"%CO2",
    L"mmHg",    L"aos",       L"u.pH",       L"bpm",       L"m/s",   L"mL",   L"ml",
    L"mV",      L"--",        L"nm",         L"Goutte",    L"Drop",  L"kPa",  L"\u00b0/s"};

}  // namespace

// ---- GetMultiple ----------------------------------------------------------------------------

TEST_F(UnitsFixture, PrefixesAreOnAtStartAndTimeLabelsOff) {
    EXPECT_TRUE(d.IsPrefixes());
    EXPECT_FALSE(d.IsTimeLabels());
    EXPECT_FALSE(d.IsGridShown());
}

TEST_F(UnitsFixture, FourMillivoltsGetTheMilliPrefix) {
    const Multiple m = GetMultiple(d, 0.004, "V");
    EXPECT_EQ(m.label, "mV");
    EXPECT_DOUBLE_EQ(m.divisor, 0.001);
}

TEST_F(UnitsFixture, MillivoltsShiftTheirPrefixWhateverThePrefixSetting) {
    for (bool prefixes : {true, false}) {
        d.SetPrefixes(prefixes);
        const Multiple m = GetMultiple(d, 2500, "mV");
        EXPECT_EQ(m.label, "V");
        EXPECT_DOUBLE_EQ(m.divisor, 1000);
    }
}

TEST_F(UnitsFixture, ValuesBelowTwoToTheMinus23CountAsZero) {
    // The zero rule comes first: 1e-30 (or anything below 2^-23) takes the exponent 0, so it
    // is shown in the bare unit; the clamp to -24 is never reached from below.
    const Multiple m = GetMultiple(d, 1e-30, "V");
    EXPECT_EQ(m.label, "V");
    EXPECT_DOUBLE_EQ(m.divisor, 1);
    EXPECT_EQ(GetMultiple(d, -1e-30, "V").label, "V");
    // The smallest power reachable is -9.
    EXPECT_EQ(GetMultiple(d, 1.2e-7, "V").label, "nV");
}

TEST_F(UnitsFixture, HugeValuesAreClampedToTheYottaPrefix) {
    const Multiple big = GetMultiple(d, 1e30, "V");
    EXPECT_EQ(big.label, "YV");
    EXPECT_DOUBLE_EQ(big.divisor, 1e24);
    EXPECT_EQ(GetMultiple(d, 1e24, "V").label, "YV");
    EXPECT_EQ(GetMultiple(d, 9e23, "V").label, "ZV");
}

TEST_F(UnitsFixture, PpmNeverGetsAPrefix) {
    for (bool prefixes : {true, false}) {
        d.SetPrefixes(prefixes);
        EXPECT_EQ(GetMultiple(d, 5000, "ppm").label, "ppm x 10e3");
        EXPECT_DOUBLE_EQ(GetMultiple(d, 5000, "ppm").divisor, 1000);
        EXPECT_EQ(GetMultiple(d, 0.005, "ppm").label, "ppm");
        EXPECT_DOUBLE_EQ(GetMultiple(d, 0.005, "ppm").divisor, 0.001);
        EXPECT_EQ(GetMultiple(d, 5, "ppm").label, "ppm");
        EXPECT_EQ(GetMultiple(d, 1e30, "ppm").label, "ppm x 10e24");
    }
}

TEST_F(UnitsFixture, PrefixedUnitsBySpotValues) {
    struct Case {
        double value;
        const wchar_t* unit;
        const wchar_t* label;
        double divisor;
    } cases[] = {
        {5, L"mV", L"mV", 1},
        {0.5, L"mV", L"\u00b5V", 1e-3},
        {1e30, L"mV", L"ZV", 1e24},
        {2e-7, L"mV", L"pV", 1e-9},
        {1e-30, L"mV", L"mV", 1},
        {2500, L"mS/m", L"S/m", 1e3},
        {2500, L"mS/cm", L"S/cm", 1e3},
        {0.5, L"mS/cm", L"\u00b5S/cm", 1e-3},
        {500, L"\u00b5S/m", L"\u00b5S/m", 1},
        {5000, L"\u00b5S/m", L"mS/m", 1e3},
        {5e6, L"\u00b5S/cm", L"S/cm", 1e6},
        {0.5, L"\u00b5S/cm", L"nS/cm", 1e-3},
        {2e-7, L"\u00b5S/m", L"fS/m", 1e-9},
        {1e-20, L"\u00b5S/m", L"\u00b5S/m", 1},
        {5, L"k\u03a9", L"k\u03a9", 1},
        {5000, L"k\u03a9", L"M\u03a9", 1e3},
        {0.5, L"k\u03a9", L"\u03a9", 1e-3},
        {2e-7, L"k\u03a9", L"\u00b5\u03a9", 1e-9},
        {1e-30, L"k\u03a9", L"k\u03a9", 1},
        // Past the largest prefix the power is written out.
        {1e30, L"k\u03a9", L"k\u03a9 x 10e24", 1e24},
    };
    for (bool prefixes : {true, false}) {
        d.SetPrefixes(prefixes);
        for (const Case& c : cases) {
            SCOPED_TRACE(wxString::Format("%g %s prefixes %d", c.value, c.unit, prefixes));
            const Multiple m = GetMultiple(d, c.value, c.unit);
            EXPECT_EQ(m.label, wxString(c.label));
            EXPECT_DOUBLE_EQ(m.divisor, c.divisor);
        }
    }
}

TEST_F(UnitsFixture, OhmSignKiloOhmIsNotExemptAndTakesAPrefixWhenPrefixesAreOn) {
    // Kept: only the Greek omega form is in the exempt list.
    d.SetPrefixes(true);
    EXPECT_EQ(GetMultiple(d, 5000, L"k\u2126").label, wxString(L"kk\u2126"));
    d.SetPrefixes(false);
    EXPECT_EQ(GetMultiple(d, 5000, L"k\u2126").label, wxString(L"M\u03a9"));
}

TEST_F(UnitsFixture, NanometresAreAlwaysShownAsThey) {
    for (bool prefixes : {true, false}) {
        d.SetPrefixes(prefixes);
        for (int n = -30; n <= 30; ++n) {
            const Multiple m = GetMultiple(d, 2 * std::pow(10.0, n), "nm");
            EXPECT_EQ(m.label, "nm");
            EXPECT_EQ(m.divisor, 1.0);
        }
    }
}

TEST_F(UnitsFixture, SpecialAndExemptUnitsFromTenToTheMinus30To30) {
    std::vector<wxString> units;
    for (const OwnPower& p : kOwnPowers)
        units.push_back(p.unit);
    for (const wchar_t* u : kExempt)
        units.push_back(u);
    for (bool prefixes : {true, false}) {
        d.SetPrefixes(prefixes);
        for (const wxString& unit : units) {
            for (int n = -30; n <= 30; ++n) {
                const double value = 2 * std::pow(10.0, n);
                SCOPED_TRACE(wxString::Format("%s 2e%d prefixes %d", unit, n, prefixes));
                const Multiple m = GetMultiple(d, value, unit);
                const int p = PowerFor(n);
                if (unit == "nm") {
                    EXPECT_EQ(m.divisor, 1.0);
                    EXPECT_EQ(m.label, "nm");
                    continue;
                }
                EXPECT_DOUBLE_EQ(m.divisor, std::pow(10.0, p));
                const OwnPower* own = nullptr;
                for (const OwnPower& o : kOwnPowers)
                    if (unit == o.unit)
                        own = &o;
                const bool exempt = VyrDiagram::IsStopFormatMultiple(unit);
                if (prefixes && !exempt) {
                    EXPECT_EQ(m.label, PrefixOf(p) + unit);
                } else if (own) {
                    // The value divided by 10^p, in the base unit, is 10^(p + own power).
                    const int shown = p + own->power;
                    if (shown >= -24 && shown <= 24)
                        EXPECT_EQ(m.label, PrefixOf(shown) + own->base);
                    else
                        EXPECT_EQ(m.label, wxString::Format("%s x 10e%d", unit, p));
                } else if (p >= 3) {
                    EXPECT_EQ(m.label, wxString::Format("%s x 10e%d", unit, p));
                } else {
                    EXPECT_EQ(m.label, unit);
                }
            }
        }
    }
}

TEST_F(UnitsFixture, OrdinaryUnitsFromTenToTheMinus30To30) {
    for (int n = -30; n <= 30; ++n) {
        const double value = 2 * std::pow(10.0, n);
        const int p = PowerFor(n);
        d.SetPrefixes(true);
        Multiple m = GetMultiple(d, value, "V");
        EXPECT_EQ(m.label, PrefixOf(p) + "V") << n;
        EXPECT_DOUBLE_EQ(m.divisor, std::pow(10.0, p)) << n;
        // Negative values are measured by their magnitude.
        EXPECT_EQ(GetMultiple(d, -value, "V").label, PrefixOf(p) + "V") << n;
        d.SetPrefixes(false);
        m = GetMultiple(d, value, "V");
        EXPECT_EQ(m.label, p >= 3 ? wxString::Format("V x 10e%d", p) : wxString("V")) << n;
        // The divisor is 10^p also when the bare unit is shown.
        EXPECT_DOUBLE_EQ(m.divisor, std::pow(10.0, p)) << n;
    }
}

TEST_F(UnitsFixture, ExactDecadesAndZero) {
    EXPECT_EQ(GetMultiple(d, 1000, "V").label, "kV");
    EXPECT_EQ(GetMultiple(d, 999, "V").label, "V");
    EXPECT_EQ(GetMultiple(d, 1, "V").label, "V");
    EXPECT_EQ(GetMultiple(d, 0.001, "V").label, "mV");
    EXPECT_EQ(GetMultiple(d, 0, "V").label, "V");
    EXPECT_DOUBLE_EQ(GetMultiple(d, 0, "V").divisor, 1);
    // Below 2^-23 a value counts as zero.
    EXPECT_EQ(GetMultiple(d, 1.1e-7, "V").label, "V");
    EXPECT_EQ(GetMultiple(d, 1.2e-7, "V").label, "nV");
    EXPECT_DOUBLE_EQ(GetMultiple(d, 1.2e-7, "V").divisor, 1e-9);
    EXPECT_EQ(GetMultiple(d, std::nan(""), "V").label, "V");
}

TEST_F(UnitsFixture, TimeLabelsWithoutACatalogueAreTheKeys) {
    EXPECT_EQ(VyrDiagramTestAccess::SecondsSymbol(d), "IDS_SYMB_SECONDE");
    d.SetTimeLabels(true);
    Multiple m = GetMultiple(d, 86400, "IDS_SYMB_SECONDE");
    EXPECT_DOUBLE_EQ(m.divisor, 86400);
    EXPECT_EQ(m.label, "IDS_DAY_HOUR");
    EXPECT_EQ(GetMultiple(d, 7200, "IDS_SYMB_SECONDE").label, "IDS_HMIN");
    EXPECT_EQ(GetMultiple(d, 60, "IDS_SYMB_SECONDE").label, "IDS_MINS");
    // "s" is not the seconds symbol then: the ordinary rule.
    EXPECT_EQ(GetMultiple(d, 7200, "s").label, "ks");
}

TEST_F(TimeUnitsFixture, TimeLabelsOnASecondsAxis) {
    ASSERT_TRUE(tr.IsLoaded());
    const wxString seconds = "s";
    EXPECT_EQ(VyrDiagramTestAccess::SecondsSymbol(d), seconds);
    d.SetTimeLabels(true);
    Multiple m = GetMultiple(d, 86400, seconds);
    EXPECT_DOUBLE_EQ(m.divisor, 86400);
    EXPECT_EQ(m.label, "d:h");
    m = GetMultiple(d, 86399, seconds);
    EXPECT_DOUBLE_EQ(m.divisor, 3600);
    EXPECT_EQ(m.label, "h:min");
    m = GetMultiple(d, 60, seconds);
    EXPECT_DOUBLE_EQ(m.divisor, 60);
    EXPECT_EQ(m.label, "min:s");
    // Below a minute: the ordinary rule.
    m = GetMultiple(d, 59, seconds);
    EXPECT_DOUBLE_EQ(m.divisor, 1);
    EXPECT_EQ(m.label, seconds);
    // Another unit, or time labels off: the ordinary rule.
    EXPECT_EQ(GetMultiple(d, 7200, "min").label, "kmin");
    d.SetTimeLabels(false);
    EXPECT_EQ(GetMultiple(d, 7200, seconds).label, "k" + seconds);
}

Multiple AxisMultiple(VyrDiagram& d, double value, const wxString& unit) {
    wxString label = "untouched";
    const double divisor = VyrDiagramTestAccess::GetAxisMultiple(d, value, unit, label);
    return {divisor, label};
}

TEST_F(UnitsFixture, AxisNumbersAgreeWithTheUnitShown) {
    struct Case {
        double value;
        const wchar_t* unit;
        const wchar_t* label;
        double divisor;
    };
    const Case cases[] = {
        // Exempt units keep their numbers below 1000 and write the power out above.
        {0.74, L"m/s", L"m/s", 1},
        {740, L"m/s", L"m/s", 1},
        {7400, L"m/s", L"m/s x 10e3", 1e3},
        {0.005, L"\u00b0C", L"\u00b0C", 1},
        {5000, L"\u00b0C", L"\u00b0C x 10e3", 1e3},
        {0.005, L"ppm", L"ppm", 1},
        // A prefix before a compound unit whose first symbol has no power tells the divisor.
        {0.74, L"m.s-1", L"mm.s-1", 1e-3},
        {7400, L"m.s-1", L"km.s-1", 1e3},
        {0.004, L"V", L"mV", 1e-3},
        {0.004, L"mol/L", L"mmol/L", 1e-3},
        // A prefix would not: a powered first symbol, no letter, no dimension, no unit.
        {0.005, L"m2", L"m2", 1},
        {5000, L"m2", L"m2 x 10e3", 1e3},
        {0.005, L"s-1", L"s-1", 1},
        {0.005, L"m\u00b2", L"m\u00b2", 1},
        {0.005, L"%", L"%", 1},
        {5000, L"%", L"% x 10e3", 1e3},
        {0.005, L"1/s", L"1/s", 1},
        {0.005, L"s.u.", L"s.u.", 1},
        {0.005, L"", L"", 1},
        {5000, L"", L"", 1},
        // Units with a prefix of their own shift it.
        {2500, L"mV", L"V", 1e3},
        {0.5, L"mV", L"\u00b5V", 1e-3},
        {0.5, L"k\u03a9", L"\u03a9", 1e-3},
        {5000, L"nm", L"nm", 1},
    };
    for (const Case& c : cases) {
        const Multiple m = AxisMultiple(d, c.value, c.unit);
        EXPECT_EQ(m.label, c.label) << c.value << " " << wxString(c.unit);
        EXPECT_DOUBLE_EQ(m.divisor, c.divisor) << c.value << " " << wxString(c.unit);
    }
    // What GetMultiple itself answers for the exempt unit stays as it is: the bare unit with
    // the divisor 10^-3.
    const Multiple raw = GetMultiple(d, 0.74, "m/s");
    EXPECT_EQ(raw.label, "m/s");
    EXPECT_DOUBLE_EQ(raw.divisor, 1e-3);
}

TEST_F(UnitsFixture, WithoutPrefixesTheNumbersStayTheValuesUnderTheBareUnit) {
    d.SetPrefixes(false);
    EXPECT_EQ(AxisMultiple(d, 0.004, "V").label, "V");
    EXPECT_DOUBLE_EQ(AxisMultiple(d, 0.004, "V").divisor, 1);
    EXPECT_EQ(AxisMultiple(d, 5000, "V").label, "V x 10e3");
    EXPECT_DOUBLE_EQ(AxisMultiple(d, 5000, "V").divisor, 1e3);
}

TEST_F(UnitsFixture, AnAxisNeverDividesWithoutSayingSo) {
    // Over every decade and these units, with prefixes on and off: a divisor other than 1
    // comes with a label that states it, either as "x 10e<power>" of the same power or as a
    // label other than the bare unit (a prefix); a bare unit always means divisor 1.
    const wchar_t* const units[] = {L"V",  L"m/s", L"m.s-1", L"\u00b0C", L"%",  L"",
                                    L"m2", L"s-1", L"mV",    L"k\u03a9", L"nm", L"s.u.",
                                    L"s",  L"ppm", L"hPa",   L"g/L"};
    for (bool prefixes : {true, false}) {
        d.SetPrefixes(prefixes);
        for (const wchar_t* unit : units) {
            for (int e = -12; e <= 12; ++e) {
                const double value = 3 * std::pow(10.0, e);
                const Multiple m = AxisMultiple(d, value, unit);
                const wxString where = wxString::Format("%g %s", value, unit);
                if (m.label == unit) {
                    EXPECT_DOUBLE_EQ(m.divisor, 1) << where;
                    continue;
                }
                int power = 0;
                if (m.label.StartsWith(wxString(unit) + " x 10e") &&
                    m.label.AfterLast('e').ToInt(&power))
                    EXPECT_DOUBLE_EQ(m.divisor, std::pow(10.0, power)) << where;
                else
                    EXPECT_FALSE(wxString(unit).empty()) << where;
            }
        }
    }
}

TEST_F(TimeUnitsFixture, TimeLabelsOnTheAxisKeepTheirMultiple) {
    ASSERT_TRUE(tr.IsLoaded());
    d.SetTimeLabels(true);
    const Multiple m = AxisMultiple(d, 226755, "s");
    EXPECT_EQ(m.label, "d:h");
    EXPECT_DOUBLE_EQ(m.divisor, 86400);
}

TEST(VyrDiagramUnits, IsStopFormatMultipleListsExactlyTheExemptUnits) {
    for (const wchar_t* u : kExempt)
        EXPECT_TRUE(VyrDiagram::IsStopFormatMultiple(u)) << wxString(u);
    for (const wchar_t* u :
         {L"V", L"mv", L"MV", L"k\u2126", L"s", L"", L"ppm ", L"\u00b0F", L"mg/dl", L"Hz", L"m"})
        EXPECT_FALSE(VyrDiagram::IsStopFormatMultiple(u)) << wxString(u);
}

// ---- Step rule and label rule ---------------------------------------------------------------

TEST(VyrDiagramUnits, DecimalStepOfRangeOneIsATenth) {
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(1, 1), 0.1);
}

TEST(VyrDiagramUnits, DecimalStepOfRangeThirteenIsTwo) {
    // 13 / 1 = 13 intervals is not below 13.
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(13, 1), 2);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(12, 1), 1);
}

TEST(VyrDiagramUnits, DecimalStepsBySpotValues) {
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(0, 1), 0.1);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(26, 1), 5);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(65, 1), 10);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(7200, 1), 1000);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(0.05, 1e-3), 0.005);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(3e-6, 1e-6), 5e-7);
    // A minute multiple below 60 seconds of range uses the decimal steps.
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(59, 60), 5);
}

TEST(VyrDiagramUnits, RangesBelowTwoToTheMinus23GetTheStepOfRangeOne) {
    // The zero rule of the exponent: such a range shows at most one graduation.
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(1e-8, 1), 0.1);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(1.1e-7, 1e-9), 0.1);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(1.2e-7, 1e-9), 1e-8);
}

TEST(VyrDiagramUnits, NoAxisHasMoreThanTwelveIntervals) {
    for (double range = 1.2e-7; range < 1e9; range *= 1.37) {
        const double step = VyrDiagramTestAccess::GetGraduationStep(range, 1);
        EXPECT_LT(std::trunc(range / step), 13) << range;
        EXPECT_GE(range / step, 2) << range;
    }
}

TEST(VyrDiagramUnits, TimeStepOfTwoHoursIsTenMinutes) {
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(7200, 3600), 600);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(100, 60), 10);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(400, 60), 60);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(86400 * 3, 86400), 21600);
    // The multiple is truncated before it is compared.
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(7200, 3600.9), 600);
    // Ten weeks and more: a fifth of the range.
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(6.048e6, 86400), 6.048e6 / 5);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::GetGraduationStep(6.047e6, 86400), 604800);
}

TEST(VyrDiagramUnits, TwoHourAxisLabelsInHoursAndMinutes) {
    TranslationScope tr(TimeTexts());
    ASSERT_TRUE(tr.IsLoaded());
    VyrBaseData doc(nullptr);
    VyrDiagram& d = *doc.GetDiagram(0);
    d.SetTimeLabels(true);
    wxString unit = "s";
    wxString label;
    const double m = d.GetMultiple(7200, unit, label);
    EXPECT_DOUBLE_EQ(m, 3600);
    EXPECT_EQ(label, "h:min");
    const double step = VyrDiagramTestAccess::GetGraduationStep(7200, m);
    EXPECT_DOUBLE_EQ(step, 600);
    std::vector<wxString> labels;
    for (int i = 1; i <= 12; ++i)
        labels.push_back(VyrDiagramTestAccess::FormatGraduation(i * step, m));
    EXPECT_EQ(labels, (std::vector<wxString>{"0:10", "0:20", "0:30", "0:40", "0:50", "1:00", "1:10",
                                             "1:20", "1:30", "1:40", "1:50", "2:00"}));
}

TEST(VyrDiagramUnits, LabelRule) {
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(90, 60), "1:30");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(125.9, 60), "2:05");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(5400, 3600), "1:30");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(90000, 86400), "1:01");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(-600, 3600), "-0:10");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(-5400, 3600), "-1:30");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(2.5, 1), "2.5");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(2500, 1000), "2.5");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(-0.3, 0.001), "-300");
    EXPECT_EQ(VyrDiagramTestAccess::FormatGraduation(1e-7, 1), "1e-07");
}

// ---- FormatValueOnGraph ---------------------------------------------------------------------

TEST(VyrDiagramUnits, FormatValueOnGraphShowsWhatOnePixelResolves) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 0}, {1, 1}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {c});
    auto use = [d](double xmax, double ymax) {
        VyrScale s(0, xmax, 0, ymax);
        d->SetManualScale(&s, false);
        wxRect rect(0, 0, 101, 101);
        d->Move(rect);
    };
    // One pixel is 0.05 in x (e = -1.3: 2 decimals) and 1 in y (e = 0: 3 decimals).
    use(5, 100);
    EXPECT_EQ(d->FormatValueOnGraph(1.23456, true), "1.23");
    EXPECT_EQ(d->FormatValueOnGraph(1.23456, false), "1.235");
    // 10 per pixel: 2 decimals; 999: none; 1024 (1000 and more): kept jump to 6.
    use(1000, 99900);
    EXPECT_EQ(d->FormatValueOnGraph(2.5, true), "2.50");
    EXPECT_EQ(d->FormatValueOnGraph(2.5, false), "2");
    use(102400, 0.02);
    EXPECT_EQ(d->FormatValueOnGraph(2.5, true), "2.500000");
    // 0.0002 per pixel (e = -3.7): 4 decimals.
    EXPECT_EQ(d->FormatValueOnGraph(-3, false), "-3.0000");
}

// ---- UpdateUnits, SetUnits, SetUy -----------------------------------------------------------

TEST(VyrDiagramUnits, UpdateUnitsListsEveryUnitSortedAndTheYUnitsOfMatchingCurves) {
    VyrBaseData doc(nullptr);
    VyrExperience* e1 = AddExperience(doc, "E1");
    VyrExperience* e2 = AddExperience(doc, "E2");
    VyrCourbe* a = AddCurve(doc, e1, {"A", "mA", "t", "s"}, {{0, 1}});
    VyrCourbe* b = AddCurve(doc, e1, {"B", "V", "t", "s"}, {{0, 1}});
    AddCurve(doc, e2, {"C", "Pa", "f", "Hz"}, {{0, 1}});
    VyrCourbe* dd = AddCurve(doc, e2, {"D", "K", "t", "s"}, {{0, 1}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a, b});
    EXPECT_EQ(Strings(d->GetAllUnits()), (std::vector<wxString>{"Hz", "K", "Pa", "V", "mA", "s"}));
    // Only the shown curves of the abscissa, in order of discovery.
    EXPECT_EQ(Strings(d->GetYUnits()), (std::vector<wxString>{"mA", "V"}));
    EXPECT_EQ(d->GetUy(), "mA");
    // A range record for every unit of every curve, on its axis.
    for (const char* u : {"s", "Hz"})
        EXPECT_NE(d->FindUnitX(u), nullptr) << u;
    for (const char* u : {"mA", "V", "Pa", "K"})
        EXPECT_NE(d->FindUnitY(u), nullptr) << u;
    EXPECT_EQ(d->FindUnitX("V"), nullptr);
    EXPECT_EQ(d->FindUnitY("s"), nullptr);
    EXPECT_EQ(d->FindUnitY("V")->GetName(), "V");
    (void)dd;
}

TEST(VyrDiagramUnits, UpdateUnitsKeepsAMatchingUyAndTheRecords) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "mA", "t", "s"}, {{0, 1}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "V", "t", "s"}, {{0, 1}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a, b});
    d->SetUy("V");
    VyrUnit* record = d->FindUnitY("V");
    d->UpdateUnits();
    EXPECT_EQ(d->GetUy(), "V");
    EXPECT_EQ(d->FindUnitY("V"), record);
    // A Uy that no matching curve has falls back to the first matching curve's.
    d->SetUy("Pa");
    d->UpdateUnits();
    EXPECT_EQ(d->GetUy(), "mA");
}

TEST(VyrDiagramUnits, UpdateUnitsDropsAnAbscissaNoCurveHasAnyMore) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 1}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a});
    // Another abscissa that a curve of the document still has: kept although nothing matches.
    a->SetShownInDiagram(0, false);
    d->UpdateUnits();
    EXPECT_EQ(d->GetUx(), "s");
    EXPECT_EQ(d->GetGrdX(), "t");
    EXPECT_EQ(d->GetUy(), "");
    // An abscissa that no curve has: dropped.
    d->SetUnits("w", "rad", "V");
    d->UpdateUnits();
    EXPECT_EQ(d->GetUx(), "");
    EXPECT_EQ(d->GetGrdX(), "");
    EXPECT_EQ(d->GetUy(), "");
}

TEST(VyrDiagramUnits, SetUnitsAndSetUyRecomputeTheCurvesAndScales) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 0}, {10, 10}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "mA", "f", "Hz"}, {{0, 0}, {100, 1000}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a, b});
    // The last shown curve gave the abscissa.
    EXPECT_EQ(d->GetUx(), "Hz");
    ASSERT_EQ(d->GetPlottedCourbes().size(), 1u);
    EXPECT_EQ(d->GetPlottedCourbes()[0], b);
    d->SetUnits("t", "s", "V");
    EXPECT_EQ(d->GetGrdX(), "t");
    ASSERT_EQ(d->GetPlottedCourbes().size(), 1u);
    EXPECT_EQ(d->GetPlottedCourbes()[0], a);
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetXmax(), 10);
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetYmax(), 10.5);
    d->SetUy("mA");
    EXPECT_EQ(d->GetUy(), "mA");
    // mA has no plotted curve now: its record keeps the range it had (data 0..1000).
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetYmax(), 1050);
}
