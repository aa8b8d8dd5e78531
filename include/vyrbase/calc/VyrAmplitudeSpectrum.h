// The amplitude spectrum of a uniformly sampled curve: which frequencies a signal holds and how
// strongly (the note of a tuning fork, the harmonics of a string).
//
// Amplitude: a sine of amplitude A (peak, not peak to peak) that makes a whole number of
// periods over the points used reads A at its frequency; a constant reads its value at 0. In
// terms of the discrete Fourier transform X[k] of the N points: |X[0]|/N at 0, 2|X[k]|/N for
// 0 < k < N/2, and |X[N/2]|/N at the last frequency when N is even. No window is applied, so a
// sine that does not fit a whole number of times spreads over neighbouring frequencies.
// Frequencies: k / (N step), k = 0 .. N/2, in Hz when X is a time in s, ms, us (or µs), min or
// h; in 1/unit for any other X unit (cycles per metre for a curve over m).
//
// What is refused: a curve whose valid points are not evenly spaced in increasing X (each within
// 1% of the step of its place on the even grid, plus the six significant digits to which the
// document file keeps an abscissa), a curve with an invalid point between valid ones (a gap in
// the sampling) and a curve of fewer than four valid points. Invalid points before the first or
// after the last valid point are left out. The transform works on N points with no prime factor
// above 5, where it is fast whatever N: the valid points' count when it is such a number, else the
// largest such count below it (at least 85% of the points, and 93% from 1000 points on), taken from
// the start of the curve.
#ifndef VYRBASE_CALC_VYRAMPLITUDESPECTRUM_H
#define VYRBASE_CALC_VYRAMPLITUDESPECTRUM_H

#include <vector>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrCourbe;

class VYRBASE_API VyrAmplitudeSpectrum {
public:
    enum Error {
        kErrorNone = 0,
        kErrorNoCurve,       // a null curve, or one without both vectors
        kErrorTooFewPoints,  // fewer than four valid points
        kErrorNotUniform,    // the valid points are not evenly spaced in increasing X
        kErrorMemory,        // memory ran out
        kErrorCurveExists,   // CreateCurve: a curve of the result's quantities and units exists
                             // that is no spectrum (it is never overwritten)
    };

    // Computes the spectrum of `c`; false (and GetError tells why) when it is refused.
    bool Compute(const VyrCourbe* c);
    // Computes the spectrum and keeps it as a new curve of the experiment holding `c`: Y the
    // quantity and unit of `c`, X the quantity "f" in the frequency unit, so that the
    // spectrum of U(t) is U(f), with the text "U = spectrum of U(t)". An earlier spectrum of
    // those quantities and units is reused.
    // Null when refused, or when `c` belongs to no experiment (kErrorNoCurve).
    VyrCourbe* CreateCurve(VyrCourbe* c);

    Error GetError() const { return m_error; }
    // One line telling a person why the curve was refused; empty without error.
    wxString GetErrorText() const;

    // The frequencies and amplitudes, N/2 + 1 of each (empty before a success).
    const std::vector<double>& GetFrequencies() const { return m_frequencies; }
    const std::vector<double>& GetAmplitudes() const { return m_amplitudes; }
    // "Hz", or "1/" followed by the X unit, or empty for an X without unit.
    const wxString& GetFrequencyUnit() const { return m_sFrequencyUnit; }
    // The number of points transformed, N, and the sampling step in the X unit.
    int GetPointsUsed() const { return m_iPointsUsed; }
    double GetStep() const { return m_dStep; }

    // The largest count not above n whose prime factors are 2, 3 and 5 only (0 below 1).
    static long LargestFastLength(long n);

private:
    Error m_error = kErrorNone;
    std::vector<double> m_frequencies;
    std::vector<double> m_amplitudes;
    wxString m_sFrequencyUnit;
    int m_iPointsUsed = 0;
    double m_dStep = 0.0;
};

#endif
