// Calculated curves: "NAME = EXPR" over the curves and variables of one experiment, as a class
// writes P = U*I, E = 0.5*m*v^2 or a = deriv(v), kept as a new curve of the experiment.
//
//     VyrCurveCalculator calc(experiment);
//     calc.SetVariable("m", 0.2);
//     VyrCourbe* p = calc.Calculate("E = 0.5*m*v^2");
//     if (!p)
//         report(calc.GetError());
//
// Names in EXPR, in this order of precedence: a variable of the experiment (its value), the
// Y quantity of one of its curves (that curve's values), the X quantity of one of its curves
// (the abscissa itself). Formulas follow VyrFormula (operators, sin cos tan asin acos atan exp
// ln log10 sqrt abs, pi), plus three operations on a whole series: deriv(S), the derivative
// over the abscissa; integ(S), the running integral from 0 at the first point; smooth(S, n), the
// centred moving average of n points (VyrCurveCalculus says how each is computed). Their
// argument is any expression; n is a whole number.
//
// Abscissas: the result is computed at the abscissas of the first curve the expression names
// (its reference). The other curves are read at those abscissas: directly when they share them,
// by the curve's linear interpolation (VyrCourbe::InterpolateEx) otherwise. A point is invalid in
// the result when the reference point or a point it is read from is invalid, when another curve
// does not reach that abscissa (no extrapolation), or when the value is not a finite number
// (sqrt(-1), 1/0); invalid points hold 0.
//
// The result is a curve of the experiment with the reference's abscissas, Y quantity NAME, the
// text "NAME = EXPR" (saved with the curve) and a unit where units follow from the expression:
// products and quotients of the operands' units (U*I in V and A gives V·A, never simplified),
// sums of one unit, integer powers, deriv (unit/X unit), integ (unit·X unit), smooth, and pure
// numbers; a variable, which has no unit, or any other mix gives no unit. SetUnit names it
// instead. Calculating the same NAME again replaces the curve it made before; a NAME that would
// replace a curve the calculator did not make is refused.
#ifndef VYRBASE_CALC_VYRCURVECALCULATOR_H
#define VYRBASE_CALC_VYRCURVECALCULATOR_H

#include <wx/arrstr.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrBaseData;
class VyrCourbe;
class VyrExperience;

class VYRBASE_API VyrCurveCalculator {
public:
    // Calculates in `e` (not owned; a null experiment refuses every calculation).
    explicit VyrCurveCalculator(VyrExperience* e);

    // Sets the experiment's variable `name` to `value`, creating it when it is missing: the
    // document keeps the value a curve was calculated with. False for a name that a formula
    // cannot use (letters, digits and "_", not beginning with a digit) or without experiment.
    bool SetVariable(const wxString& name, double value);
    // The unit the next results get, instead of the one that follows from the expression
    // (empty: the one that follows).
    void SetUnit(const wxString& unit) { m_sUnit = unit; }

    // Calculates "NAME = EXPR" and keeps the result; null, with GetError, when refused.
    VyrCourbe* Calculate(const wxString& assignment);
    // Why the last calculation was refused, in one line; empty after a success.
    const wxString& GetError() const { return m_sError; }

    // The first experiment of `doc` in which every name of the expression of `assignment`
    // resolves (see above) or is one of `variables` (names about to be set), or null.
    static VyrExperience* FindExperience(VyrBaseData& doc, const wxString& assignment,
                                         const wxArrayString& variables = wxArrayString());

private:
    VyrExperience* m_pExperience;
    wxString m_sUnit;
    wxString m_sError;
};

#endif
