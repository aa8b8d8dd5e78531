#include "vyrbase/calc/VyrAmplitudeSpectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <new>

#include <kissfft.hh>

#include "calc/VyrCalcPoints.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// Spacing off the even grid by more than this share of the step is not uniform sampling.
const double kUniformTolerance = 0.01;
// The document file keeps six significant digits of each value ("%g"): an abscissa read back
// is off by up to half a unit of its sixth digit, and the even grid, whose step comes from the
// two ends read back, by nearly as much again: one unit of the sixth digit, at most this share
// of the value. At 44.1 kHz over a few seconds that is half a step, which the grid must allow.
const double kWrittenPrecision = 1e-5;

struct TimeUnit {
    const wchar_t* unit;
    double seconds;
};

// The time units whose spectrum reads in Hz, and their length in seconds.
const TimeUnit kTimeUnits[] = {
    {L"s", 1.0},        {L"ms", 1e-3},  {L"us", 1e-6},  {L"\u00b5s", 1e-6},
    {L"\u03bcs", 1e-6}, {L"min", 60.0}, {L"h", 3600.0},
};

}  // namespace

long VyrAmplitudeSpectrum::LargestFastLength(long n) {
    long best = n >= 1 ? 1 : 0;
    for (long a = 1; a <= n; a *= 2)
        for (long b = a; b <= n; b *= 3)
            for (long c = b; c <= n; c *= 5)
                if (c > best)
                    best = c;
    return best;
}

wxString VyrAmplitudeSpectrum::GetErrorText() const {
    switch (m_error) {
        case kErrorNone:
            return wxString();
        case kErrorNoCurve:
            return "no curve of an experiment";
        case kErrorTooFewPoints:
            return "a spectrum needs at least four valid points";
        case kErrorNotUniform:
            return "the curve is not uniformly sampled (its valid points are not evenly spaced "
                   "in increasing X): a spectrum needs a constant step";
        case kErrorMemory:
            return "not enough memory for the spectrum";
        case kErrorCurveExists:
            return "a curve of the spectrum's quantities and units exists and is no spectrum";
    }
    return wxString();
}

bool VyrAmplitudeSpectrum::Compute(const VyrCourbe* c) {
    m_error = kErrorNone;
    m_frequencies.clear();
    m_amplitudes.clear();
    m_sFrequencyUnit.clear();
    m_iPointsUsed = 0;
    m_dStep = 0.0;
    if (!c || !c->GetVx() || !c->GetVy()) {
        m_error = kErrorNoCurve;
        return false;
    }
    try {
        vyrcalc::Points all, p;
        vyrcalc::CollectAllPoints(c, all);
        // Invalid points before the first and after the last valid one are left out; one in
        // between is a gap in the sampling.
        size_t first = 0, last = all.x.size();
        while (first < last && !all.valid[first])
            ++first;
        while (last > first && !all.valid[last - 1])
            --last;
        bool gap = false;
        for (size_t i = first; i < last; ++i)
            gap = gap || !all.valid[i];
        p.x.assign(all.x.begin() + first, all.x.begin() + last);
        p.y.assign(all.y.begin() + first, all.y.begin() + last);
        const size_t n = p.x.size();
        if (n < 4 && !gap) {
            m_error = kErrorTooFewPoints;
            return false;
        }
        const double step = n > 1 ? (p.x[n - 1] - p.x[0]) / (n - 1) : 0.0;
        bool uniform = !gap && step > 0.0 && std::isfinite(step);
        for (size_t i = 0; uniform && i < n; ++i) {
            const double grid = p.x[0] + i * step;
            const double tolerance =
                kUniformTolerance * step +
                kWrittenPrecision * std::max(std::fabs(grid), std::fabs(p.x[i]));
            uniform = std::fabs(p.x[i] - grid) <= tolerance;
        }
        if (!uniform) {
            m_error = kErrorNotUniform;
            return false;
        }
        const size_t used = static_cast<size_t>(LargestFastLength(static_cast<long>(n)));
        // The step over the points used, from their own ends.
        const double usedStep = (p.x[used - 1] - p.x[0]) / (used - 1);

        // |X[k]| for k = 0 .. used/2. An even count of real values is transformed as half as
        // many complex ones, which is half the work.
        const size_t bins = used / 2 + 1;
        std::vector<double> magnitude(bins);
        if (used % 2 == 0) {
            std::vector<std::complex<double>> out(used / 2);
            kissfft<double>(used / 2, false).transform_real(p.y.data(), out.data());
            // X[0] and X[used/2] are real: kept together in the first value.
            magnitude[0] = std::fabs(out[0].real());
            magnitude[bins - 1] = std::fabs(out[0].imag());
            for (size_t k = 1; k + 1 < bins; ++k)
                magnitude[k] = std::abs(out[k]);
        } else {
            std::vector<std::complex<double>> in(p.y.begin(), p.y.begin() + used), out(used);
            kissfft<double>(used, false).transform(in.data(), out.data());
            for (size_t k = 0; k < bins; ++k)
                magnitude[k] = std::abs(out[k]);
        }

        double seconds = 0.0;
        const wxString& unit = c->GetVx()->GetUnite();
        for (const TimeUnit& t : kTimeUnits)
            if (unit == t.unit)
                seconds = t.seconds;
        m_sFrequencyUnit = seconds > 0.0 ? wxString("Hz") : unit.empty() ? wxString() : "1/" + unit;
        const double span = used * usedStep * (seconds > 0.0 ? seconds : 1.0);

        m_frequencies.resize(bins);
        m_amplitudes.resize(bins);
        for (size_t k = 0; k < bins; ++k) {
            m_frequencies[k] = k / span;
            const bool single = k == 0 || 2 * k == used;
            m_amplitudes[k] = magnitude[k] * (single ? 1.0 : 2.0) / used;
        }
        m_iPointsUsed = static_cast<int>(used);
        m_dStep = usedStep;
        return true;
    } catch (const std::bad_alloc&) {
        m_frequencies.clear();
        m_amplitudes.clear();
        m_error = kErrorMemory;
        return false;
    }
}

VyrCourbe* VyrAmplitudeSpectrum::CreateCurve(VyrCourbe* c) {
    VyrExperience* e = vyrcalc::ExperienceOf(c);
    if (!e) {
        m_error = kErrorNoCurve;
        return nullptr;
    }
    if (!Compute(c))
        return nullptr;
    try {
        vyrcalc::Points p;
        p.x = m_frequencies;
        p.y = m_amplitudes;
        vyrcalc::ResultCurve want;
        want.grdX = "f";
        want.uniteX = m_sFrequencyUnit;
        want.grdY = c->GetVy()->GetGrandeur();
        want.uniteY = c->GetVy()->GetUnite();
        want.name = "SPECTRUM_" + c->GetEntityName();
        want.text = want.grdY + " = spectrum of " + c->GetName();
        if (vyrcalc::FindBlockingCurve(e, want, want.grdY + " = spectrum of ")) {
            m_error = kErrorCurveExists;
            return nullptr;
        }
        VyrCourbe* made = vyrcalc::StoreCurve(*c->GetBase(), e, want, p, c);
        if (!made)
            m_error = kErrorMemory;
        return made;
    } catch (const std::bad_alloc&) {
        m_error = kErrorMemory;
        return nullptr;
    }
}
