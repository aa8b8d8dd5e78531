// Derivative, running integral and moving average of a measured series: the operations a class
// applies to a curve (speed from position, charge from current, a noisy signal smoothed).
//
// A series is given as abscissas x, ordinates y and a validity per point (1 valid, 0 invalid;
// an empty validity means every point is valid), in stored order. Invalid points stay invalid in
// the result and are stepped over: each valid point is computed from its nearest valid
// neighbours. The results have one value per point of the input.
#ifndef VYRBASE_CALC_VYRCURVECALCULUS_H
#define VYRBASE_CALC_VYRCURVECALCULUS_H

#include <vector>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrCourbe;

class VYRBASE_API VyrCurveCalculus {
public:
    typedef std::vector<double> Values;
    typedef std::vector<unsigned char> Validity;

    // dy/dx by the three-point formula over each valid point and its valid neighbours, which is
    // the central difference (y[i+1] - y[i-1]) / (x[i+1] - x[i-1]) on even steps and is exact
    // for a parabola on any steps; the first and last valid points take the one-sided
    // three-point formula (also exact for a parabola). Two valid points share their slope; a
    // lone valid point gets none (invalid), as does a point next to a repeated abscissa.
    // False (outputs untouched) when the sizes disagree or the valid abscissas decrease.
    static bool Derivative(const Values& x, const Values& y, const Validity& valid, Values& out,
                           Validity& outValid);
    // The running integral of y over x by trapezoids, 0 at the first valid point. False when
    // the sizes disagree or the valid abscissas decrease.
    static bool Integral(const Values& x, const Values& y, const Validity& valid, Values& out,
                         Validity& outValid);
    // The centred moving average of `width` valid points (an even width is taken as the next
    // odd one; 1 copies), narrowed symmetrically near either end so that it stays centred.
    // False when the sizes disagree or the width is below 1.
    static bool Smooth(const Values& y, const Validity& valid, int width, Values& out,
                       Validity& outValid);

    // The same operations on a curve, kept as a new curve of its experiment with the same
    // abscissas: Y quantity `name` (by default dU/dt, integ(U) and smooth(U) for U(t)), unit
    // V/s, V·s and V for a curve in V over s, and the text "dU/dt = deriv(U)" (as a calculated
    // curve's). A calculated curve of that quantity and units already there is reused. Null for
    // a null curve, a curve outside any experiment, one whose valid abscissas decrease, a curve
    // of that quantity and units that was not calculated (never overwritten), or when memory
    // runs out.
    static VyrCourbe* CreateDerivative(VyrCourbe* c, const wxString& name = wxString());
    static VyrCourbe* CreateIntegral(VyrCourbe* c, const wxString& name = wxString());
    static VyrCourbe* CreateSmoothed(VyrCourbe* c, int width, const wxString& name = wxString());
};

#endif
