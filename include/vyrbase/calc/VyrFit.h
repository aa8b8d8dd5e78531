// A model fitted to measured points by nonlinear least squares (Levenberg-Marquardt): "fit a
// parabola to the fall and read g", "the time constant of the discharge".
//
//     VyrFit fit;
//     fit.SetModel(L"damped");                 // or fit.SetFormula(L"A*exp(-x/tau)+C")
//     fit.SetRange(0.0, 0.01);                 // optional: only points with x in the range
//     if (fit.Fit(curve))                      // the curve's valid points
//         fit.AddToDocument(doc, curve);       // the model as a curve, with its note
//     else
//         report(fit.GetError());
//
// Built-in models (GetModelNames), with their parameters in order:
//   linear a*x; affine a*x+b; poly2 ... poly5 c0+c1*x+...+cN*x^N; exp A*exp(-x/tau)+C;
//   power A*x^n; sine A*sin(2*pi*f*x+phi)+C; damped A*exp(-x/tau)*sin(2*pi*f*x+phi)+C;
//   gauss A*exp(-(x-mu)^2/(2*sigma^2))+C.
// They find their own starting values from the points: polynomials by linear least squares,
// exp and damped by the best time constant on a grid, sine and damped their frequency from the
// highest peak of the points' spectrum, refined by least squares; power by a line through the
// logarithms; gauss from the highest deviation and the area. Starting values set with SetStart
// replace the found ones.
//
// A formula (VyrFormula's grammar) in x: its other names are the parameters, in order of first
// use, except the variables bound with BindVariable (an experiment's variables), which keep
// their values. Parameters start at 1 unless SetStart says otherwise.
//
// Derivatives are exact (automatic differentiation of the formula), for built-in models and
// formulas alike. The result: the parameters' values; their standard uncertainties, the square
// roots of the diagonal of (J'J)^-1 * RSS / (points - parameters) at the solution (NaN when there
// are no more points than parameters or the parameters are not all determined by the points);
// the residual sum of squares; R^2 = 1 - RSS / sum((y - mean y)^2); the number of points used;
// and whether it converged. A fit that did not converge answers false, IsConverged false, and
// NaN for every value: no numbers that look like a result.
//
// Errors: no exceptions; false and GetError (one line). Threads: one fit per object at a time.
#ifndef VYRBASE_CALC_VYRFIT_H
#define VYRBASE_CALC_VYRFIT_H

#include <cstddef>
#include <memory>

#include <wx/arrstr.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrBaseData;
class VyrCourbe;

class VYRBASE_API VyrFit {
public:
    VyrFit();
    ~VyrFit();
    VyrFit(const VyrFit&) = delete;
    VyrFit& operator=(const VyrFit&) = delete;

    static wxArrayString GetModelNames();

    // Chooses a built-in model; false for an unknown name (the model is then unset).
    bool SetModel(const wxString& name);
    // Chooses a formula in x; false, with GetError, when it does not parse, does not use x, or
    // has no parameter.
    bool SetFormula(const wxString& formula);
    // Binds a name that formulas read but do not fit (an experiment variable's value, read at
    // every evaluation); false for an invalid name or null address. Takes effect at the next
    // SetFormula.
    bool BindVariable(const wxString& name, double* address);
    // A parameter's starting value; false for a name that is not a parameter of the model.
    bool SetStart(const wxString& parameter, double value);
    // Only points with xmin <= x <= xmax take part (a NaN bound or xmin > xmax selects nothing).
    void SetRange(double xmin, double xmax);
    void ClearRange();

    // Fits the points (x[i], y[i]) whose coordinates are both finite. True when the fit
    // converged.
    bool Fit(const double* x, const double* y, size_t n);
    // Fits the curve's valid points (valid in both vectors); false for a null curve.
    bool Fit(VyrCourbe* curve);

    // The model's text with its parameter names ("A*exp(-x/tau)+C"); empty when unset.
    wxString GetEquation() const;
    size_t GetParameterCount() const;
    wxString GetParameterName(size_t i) const;          // empty past the end
    int GetParameterIndex(const wxString& name) const;  // -1 for an unknown name
    double GetValue(size_t i) const;                    // NaN past the end or before a fit
    double GetUncertainty(size_t i) const;
    double GetRss() const;
    double GetR2() const;
    size_t GetPoints() const;
    bool IsConverged() const;
    // Model evaluations that the fit took.
    int GetEvaluations() const;
    const wxString& GetError() const;
    // The fitted model at x; NaN when the fit did not converge.
    double Evaluate(double x) const;
    // "name = value ± uncertainty" for each parameter, then R² and the number of points, joined
    // by `separator`; uncertainties to 2 significant digits, values to `digits` (2 to 15), or
    // with digits 0 to the digit of their uncertainty's second (6 without an uncertainty).
    wxString FormatResult(int digits = 0, const wxString& separator = "\n") const;

    // Keeps a converged fit in the document: a new curve in the experiment of `source`, the
    // model drawn at `points` (2 to 100000) abscissas evenly spread over the fitted range, with
    // the source's X quantity and units, its Y unit, the Y quantity "fit_" + source's Y
    // quantity (made unique in the experiment) and the source's colour in a darker shade; and two
    // notes on it: "y = equation; R² = ..., n points", then the parameters with their
    // uncertainties joined by "; " (FormatResult(0)), each on one line as the document file
    // keeps notes, their boxes near the top left of the fitted range. The curve is flagged as
    // shown in the diagrams that show `source` (a diagram already built is told with
    // VyrDiagram::ShowData, as for any new curve); observers hear VYR_MSG_DATA_CHANGED with the
    // curve. Null when the fit did not converge, `source` is null or belongs to no experiment
    // of `doc`.
    VyrCourbe* AddToDocument(VyrBaseData* doc, VyrCourbe* source, int points = 500) const;

private:
    struct Impl;
    std::unique_ptr<Impl> m_pImpl;
};

#endif
