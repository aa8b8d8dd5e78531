// The diagram's units (which ones exist, which are on the axes, their range records) and how
// values are shown on the axes: engineering multiples with SI prefixes, time labels, graduation
// steps and label texts.
#include "vyrbase/diagram/VyrDiagram.h"

#include <climits>
#include <cmath>

#include <wx/wxcrt.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// Index i stands for 10^(3 * (8 - i)); index 8 is the bare unit.
const wchar_t* const kPrefixes[] = {L"Y", L"Z",      L"E", L"P", L"T", L"G", L"M", L"k", L"",
                                    L"m", L"\u00b5", L"n", L"p", L"f", L"a", L"z", L"y"};
const int kLastPrefix = 16;

// Below this magnitude a value counts as zero (the single-precision epsilon, 2^-23).
const double kZeroMagnitude = 1.1920928955078125e-7;

// Units that carry a prefix of their own: the label is built on the base unit with the prefix
// index shifted by the unit's own power (mV is 10^-3 V, so index + 1).
struct PrefixedUnit {
    const wchar_t* unit;
    const wchar_t* base;
    int shift;
};
const PrefixedUnit kPrefixedUnits[] = {
    {L"mV", L"V", 1},
    {L"mS/m", L"S/m", 1},
    {L"mS/cm", L"S/cm", 1},
    {L"\u00b5S/m", L"S/m", 2},
    {L"\u00b5S/cm", L"S/cm", 2},
    // Kilo-ohm with the Greek capital omega and with the ohm sign; both show the Greek letter.
    {L"k\u03a9", L"\u03a9", -1},
    {L"k\u2126", L"\u03a9", -1},
};

// Units shown as they are, never with an SI prefix from the prefixes setting.
const wchar_t* const kStopUnits[] = {
    L"mT",      L"ppm",       L"\u00b5S/cm", L"\u00b5S/m", L"mS/cm", L"mS/m", L"hPa",
    L"\u00b0C", L"cycle/min", L"k\u03a9",    L"mg/l",      L"mg/L",  L"%O2",  L"%CO2",
    L"mmHg",    L"aos",       L"u.pH",       L"bpm",       L"m/s",   L"mL",   L"ml",
    L"mV",      L"--",        L"nm",         L"Goutte",    L"Drop",  L"kPa",  L"\u00b0/s",
};

// Seconds per minute, hour and day: the multiples of a time axis.
const double kMinute = 60.0;
const double kHour = 3600.0;
const double kDay = 86400.0;

const double kDecimalSteps[] = {0.1, 0.2, 0.5, 1.0, 2.0, 5.0};
const double kTimeSteps[] = {10,     30,     60,      120,     300,    600,   1200,
                             1800,   3600,   7200,    21600,   43200,  86400, 172800,
                             432000, 604800, 1209600, 3024000, 6048000};
// An axis shows at most 12 intervals.
const double kMaxIntervals = 13.0;
const double kLongestTimeRange = 6.048e6;

bool IsTimeMultiple(double m) {
    return m == kMinute || m == kHour || m == kDay;
}

wxString ExponentLabel(const wxString& unit, int power) {
    return wxString::Format(L"%s x 10e%d", unit, power);
}

// Units that name no dimension: a prefix before them would read as a unit of its own.
const wchar_t* const kDimensionless[] = {L"s.u."};

// Whether a prefix written before `unit` says what its numbers were divided by. The prefix
// binds to the unit's first symbol, so that symbol must carry no power of its own: "mm.s-1" is
// "m.s-1" over 10^-3, but "mm2" is 10^-6 m2 and "ms-1" is 10^3 s-1. A unit that does not begin
// with a letter ("%", "°", "1/s") takes no prefix at all.
bool PrefixReadsAsDivisor(const wxString& unit) {
    if (unit.empty())
        return false;
    for (const wchar_t* none : kDimensionless)
        if (unit == none)
            return false;
    const wxUniChar first = unit[0];
    const bool letter = wxIsalpha(first) || first == L'\u00b5' || first == L'\u03bc' ||
                        first == L'\u03a9' || first == L'\u2126';
    if (!letter)
        return false;
    for (const wxUniChar c : unit) {
        if (c == '.' || c == '/' || c == '*' || c == ' ' || c == L'\u00b7')
            return true;
        if (wxIsdigit(c) || c == '-' || c == '+' || c == '^' || c == L'\u00b2' || c == L'\u00b3')
            return false;
    }
    return true;
}

}  // namespace

// ---- Units of the document and of the axes --------------------------------------------------

void VyrDiagram::UpdateUnits() {
    ++m_iUnitsRuns;
    m_asAllUnits.Clear();
    m_asYUnits.Clear();
    if (!m_pBase)
        return;

    bool matched = false;
    bool uyMatched = false;
    wxString candidateUx, candidateUy, candidateGrdX;
    auto forEachCurve = [this](auto&& visit) {
        wxVyrListEntityNode* node = m_pBase->GetFirstExperienceNode();
        while (node) {
            VyrExperience* experience = m_pBase->GetNextExperience(&node);
            wxVyrListCourbeNode* cnode = experience->GetFirstCourbeNode();
            while (cnode) {
                VyrCourbe* courbe = experience->GetNextCourbe(&cnode);
                if (courbe && courbe->GetVx() && courbe->GetVy())
                    visit(courbe, courbe->GetVx(), courbe->GetVy());
            }
        }
    };

    forEachCurve([&](VyrCourbe* courbe, const VyrVecteur* vx, const VyrVecteur* vy) {
        if (m_asAllUnits.Index(vx->GetUnite(), true) == wxNOT_FOUND)
            m_asAllUnits.Add(vx->GetUnite());
        if (m_asAllUnits.Index(vy->GetUnite(), true) == wxNOT_FOUND)
            m_asAllUnits.Add(vy->GetUnite());
        if (vx->GetGrandeur() != m_sGrdX || vx->GetUnite() != m_sUx ||
            !courbe->IsShownInDiagram(m_iIndex))
            return;
        if (m_asYUnits.Index(vy->GetUnite(), true) == wxNOT_FOUND)
            m_asYUnits.Add(vy->GetUnite());
        if (!matched) {
            matched = true;
            candidateUx = vx->GetUnite();
            candidateUy = vy->GetUnite();
            candidateGrdX = vx->GetGrandeur();
        }
        if (vy->GetUnite() == m_sUy)
            uyMatched = true;
    });

    // An abscissa that no curve of the document has any more is dropped.
    if (!matched && !m_sUx.empty() && !m_pBase->FindFirstCourbeByGrdxUx(m_sGrdX, m_sUx)) {
        m_sGrdX = candidateGrdX;
        m_sUx = candidateUx;
    }
    if (!uyMatched)
        m_sUy = candidateUy;
    m_asAllUnits.Sort();

    forEachCurve([this](VyrCourbe*, const VyrVecteur* vx, const VyrVecteur* vy) {
        for (auto [map, unit] : {std::make_pair(&m_mapUnitX, vx->GetUnite()),
                                 std::make_pair(&m_mapUnitY, vy->GetUnite())}) {
            VyrUnit*& record = (*map)[unit];
            if (!record) {
                record = new VyrUnit;
                record->SetName(unit);
            }
        }
    });
}

void VyrDiagram::SetUnits(const wxString& grandeurX, const wxString& ux, const wxString& uy) {
    m_sGrdX = grandeurX;
    m_sUx = ux;
    m_sUy = uy;
    UpdateCourbes();
    UpdateScale(VYR_SCALE_AUTO);
    UpdateScale(VYR_SCALE_STANDARD);
    SetTypeScale(m_iTypeScale);
}

void VyrDiagram::SetUy(const wxString& uy) {
    m_sUy = uy;
    UpdateCourbes();
    UpdateScale(VYR_SCALE_AUTO);
    UpdateScale(VYR_SCALE_STANDARD);
    SetTypeScale(m_iTypeScale);
}

// ---- Multiples and labels -------------------------------------------------------------------

bool VyrDiagram::IsStopFormatMultiple(const wxString& unit) {
    for (const wchar_t* stop : kStopUnits)
        if (unit == stop)
            return true;
    return false;
}

double VyrDiagram::GetMultiple(double value, wxString& unit, wxString& label) {
    // A seconds axis may be labelled in minutes, hours or days.
    if (m_bTimeLabels && unit == m_sSecondsSymbol) {
        if (value >= kDay) {
            label = VyrResourceText::Get("IDS_DAY_HOUR");
            return kDay;
        }
        if (value >= kHour) {
            label = VyrResourceText::Get("IDS_HMIN");
            return kHour;
        }
        if (value >= kMinute) {
            label = VyrResourceText::Get("IDS_MINS");
            return kMinute;
        }
    }

    double exponent = 0.0;
    if (!(value > -kZeroMagnitude && value < kZeroMagnitude))
        exponent = std::floor(std::log10(std::fabs(value)));
    if (std::isnan(exponent))
        exponent = 0.0;
    exponent = std::min(std::max(exponent, -24.0), 24.0);
    const int k = static_cast<int>(std::floor(exponent / 3.0));
    const int power = 3 * k;
    const int index = 8 - k;
    const double multiple = std::pow(10.0, power);

    if (m_bPrefixes && !IsStopFormatMultiple(unit)) {
        if (index <= kLastPrefix)
            label = wxString::Format(L"%s%s", kPrefixes[index], unit);
        return multiple;
    }

    for (const PrefixedUnit& special : kPrefixedUnits) {
        if (unit != special.unit)
            continue;
        const int shifted = index + special.shift;
        // Past the table (either end) the power is written out.
        if (shifted >= 0 && shifted <= kLastPrefix)
            label = wxString::Format(L"%s%s", kPrefixes[shifted], special.base);
        else
            label = ExponentLabel(unit, power);
        return multiple;
    }
    if (unit == L"nm") {
        // Wavelengths are always shown in nanometres.
        label = unit;
        return 1.0;
    }
    label = power >= 3 ? ExponentLabel(unit, power) : unit;
    return multiple;
}

double VyrDiagram::GetAxisMultiple(double value, const wxString& unit, wxString& label) {
    wxString asked = unit;
    const double multiple = GetMultiple(value, asked, label);
    // Minutes, hours and days carry their own reading ("h:min"), which the labels follow.
    if (m_bTimeLabels && unit == m_sSecondsSymbol && IsTimeMultiple(multiple))
        return multiple;
    if (multiple == 1.0)
        return multiple;
    // An axis without a unit has no title that could tell a divisor.
    if (unit.empty()) {
        label = unit;
        return 1.0;
    }
    if (m_bPrefixes && !IsStopFormatMultiple(unit) && !PrefixReadsAsDivisor(unit)) {
        // As for a unit exempt from prefixes: the power written out for large values.
        const int power = static_cast<int>(std::lround(std::log10(multiple)));
        label = power >= 3 ? ExponentLabel(unit, power) : unit;
    }
    // The bare unit says the numbers are shown as they are.
    return label == unit ? 1.0 : multiple;
}

double VyrDiagram::GetGraduationStep(double range, double multiple) {
    const double whole = std::trunc(multiple);
    if (IsTimeMultiple(whole) && range >= kMinute) {
        if (range >= kLongestTimeRange)
            return range / 5.0;
        for (double step : kTimeSteps)
            if (std::trunc(range / step) < kMaxIntervals)
                return step;
        return kTimeSteps[sizeof(kTimeSteps) / sizeof(kTimeSteps[0]) - 1];
    }
    const double exponent =
        std::fabs(range) < kZeroMagnitude ? 0.0 : std::floor(std::log10(std::fabs(range)));
    const double q = std::pow(10.0, exponent);
    for (double step : kDecimalSteps)
        if (std::trunc((range / q) / step) < kMaxIntervals)
            return q * step;
    return q * 5.0;
}

wxString VyrDiagram::FormatGraduation(double value, double multiple) {
    if (!IsTimeMultiple(multiple))
        return wxString::Format(L"%g", value / multiple);
    const double whole = std::trunc(std::fabs(value));
    const long long n = std::isnan(whole) ? 0
                        : whole < 9.2e18  ? static_cast<long long>(whole)
                                          : LLONG_MAX;
    long long major, minor;
    if (multiple == kMinute) {
        major = n / 60;
        minor = n % 60;
    } else if (multiple == kHour) {
        major = n / 3600;
        minor = (n % 3600) / 60;
    } else {
        major = n / 86400;
        minor = (n % 86400) / 3600;
    }
    return wxString::Format(value < 0 ? L"-%lld:%02lld" : L"%lld:%02lld", major, minor);
}

wxString VyrDiagram::FormatValueOnGraph(double value, bool onX) {
    // The real size of one pixel on that axis decides how many decimals mean something.
    const wxRealPoint p0 = PixelToReal(0, 0);
    const wxRealPoint p1 = onX ? PixelToReal(1, 0) : PixelToReal(0, 1);
    const double size = onX ? std::fabs(p1.x - p0.x) : std::fabs(p1.y - p0.y);
    const double e = std::log10(size);
    int decimals;
    if (e < 0.0)
        // Capped at the digits a double can have (a zero size gives -infinity).
        decimals = static_cast<int>(std::min(std::fabs(std::floor(e)), 324.0));
    else if (e < 3.0)
        decimals = static_cast<int>(std::trunc(3.0 - e));
    else
        // Kept: a pixel of 1000 units or more jumps to 6 decimals.
        decimals = 6;
    return wxString::Format(L"%.*f", decimals, value);
}
