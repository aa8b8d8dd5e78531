// The calculator on vyrbase.Curve and vyrbase.Experiment: statistics, derivative, integral,
// spectrum and calculated curves. The new curves are shown in diagram 0, as a new acquisition.
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include <pybind11/stl.h>

#include "Bindings.h"
#include "Views.h"
#include "vyrbase/calc/VyrAmplitudeSpectrum.h"
#include "vyrbase/calc/VyrCurveCalculator.h"
#include "vyrbase/calc/VyrCurveCalculus.h"
#include "vyrbase/calc/VyrIntervalStats.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace py = pybind11;
using namespace pybind11::literals;

namespace {

// A result replaces the curve of its quantities when there is one, and a replaced curve's
// storage goes: refused (BufferError) while a view of a curve of the experiment that it could
// replace is alive. `grdX` empty: any abscissa.
void RequireReplaceable(const DocumentRef& doc, VyrExperience* e, const wxString& grdY,
                        const wxString& grdX) {
    if (!e)
        return;
    wxVyrListCourbeNode* node = e->GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = e->GetNextCourbe(&node);
        if (!c || !c->GetVx() || !c->GetVy() || c->GetVy()->GetGrandeur() != grdY ||
            (!grdX.empty() && c->GetVx()->GetGrandeur() != grdX))
            continue;
        RequireNoView(doc, c->GetVx(), "replace this curve by a calculated one");
        RequireNoView(doc, c->GetVy(), "replace this curve by a calculated one");
    }
}

VyrExperience* ExperienceOf(const CurveRef& ref) {
    return ref.doc->Doc().FindExperienceFromCourbe(ref.curve);
}

CurveRef Shown(const DocumentRef& doc, VyrCourbe* c) {
    doc->Doc().GetDiagram(0)->ShowData(c, true);
    return CurveRef{doc, c};
}

// Both vectors, or ValueError.
void RequireVectors(const CurveRef& ref) {
    if (!ref.curve->GetVx() || !ref.curve->GetVy())
        throw py::value_error("the curve has no vectors");
}

py::dict Stats(const CurveRef& ref, const std::optional<std::pair<double, double>>& range) {
    RequireVectors(ref);
    const double inf = std::numeric_limits<double>::infinity();
    const std::pair<double, double> r = range.value_or(std::make_pair(-inf, inf));
    if (std::isnan(r.first) || std::isnan(r.second))
        throw py::value_error("x_range bounds must be numbers");
    VyrIntervalStats s;
    if (!s.Compute(ref.curve, r.first, r.second))
        throw std::bad_alloc();
    py::dict out;
    out["points"] = s.GetPoints();
    out["mean"] = s.GetMean();
    out["sd"] = s.GetSd();
    out["min"] = s.GetMin();
    out["max"] = s.GetMax();
    out["area"] = s.GetArea();
    out["slope"] = s.GetSlope();
    out["intercept"] = s.GetIntercept();
    return out;
}

enum class Op { Derivative, Integral, Smooth };

CurveRef Derived(const CurveRef& ref, Op op, int width, const std::optional<std::string>& name) {
    RequireVectors(ref);
    VyrExperience* e = ExperienceOf(ref);
    if (!e)
        throw py::value_error("the curve belongs to no experiment");
    const wxString gy = ref.curve->GetVy()->GetGrandeur(), gx = ref.curve->GetVx()->GetGrandeur();
    const wxString target = name                   ? FromPython(*name)
                            : op == Op::Derivative ? "d" + gy + "/d" + gx
                            : op == Op::Integral   ? "integ(" + gy + ")"
                                                   : "smooth(" + gy + ")";
    RequireReplaceable(ref.doc, e, target, gx);
    const wxString given = name ? target : wxString();
    VyrCourbe* made = op == Op::Derivative ? VyrCurveCalculus::CreateDerivative(ref.curve, given)
                      : op == Op::Integral
                          ? VyrCurveCalculus::CreateIntegral(ref.curve, given)
                          : VyrCurveCalculus::CreateSmoothed(ref.curve, width, given);
    if (!made)
        throw py::value_error(std::string((target + " of " + ref.curve->GetName() +
                                           ": the abscissas must increase, and a curve of that "
                                           "quantity that was measured is never replaced")
                                              .utf8_str()));
    return Shown(ref.doc, made);
}

CurveRef Spectrum(const CurveRef& ref) {
    RequireVectors(ref);
    RequireReplaceable(ref.doc, ExperienceOf(ref), ref.curve->GetVy()->GetGrandeur(), "f");
    VyrAmplitudeSpectrum spectrum;
    VyrCourbe* made = spectrum.CreateCurve(ref.curve);
    if (!made) {
        if (spectrum.GetError() == VyrAmplitudeSpectrum::kErrorMemory)
            throw std::bad_alloc();
        throw py::value_error(std::string(spectrum.GetErrorText().utf8_str()));
    }
    return Shown(ref.doc, made);
}

CurveRef Calc(const ExperimentRef& ref, const std::string& assignment,
              const std::optional<std::string>& unit,
              const std::optional<std::map<std::string, double>>& variables) {
    VyrCurveCalculator calc(ref.experience);
    if (variables)
        for (const auto& v : *variables)
            if (!calc.SetVariable(FromPython(v.first), v.second))
                throw py::value_error("\"" + v.first + "\" cannot name a variable");
    if (unit)
        calc.SetUnit(FromPython(*unit));
    const wxString text = FromPython(assignment);
    const wxString name = text.BeforeFirst('=').Trim(true).Trim(false);
    RequireReplaceable(ref.doc, ref.experience, name, wxString());
    VyrCourbe* made = calc.Calculate(text);
    if (!made)
        throw py::value_error(std::string(calc.GetError().utf8_str()));
    return Shown(ref.doc, made);
}

// Adds `function` as a method of the class `cls` defined elsewhere in the module.
template <class F, class... Extra>
void AddMethod(py::object cls, const char* name, F&& function, const Extra&... extra) {
    cls.attr(name) = py::cpp_function(std::forward<F>(function), py::name(name), py::is_method(cls),
                                      py::sibling(py::getattr(cls, name, py::none())), extra...);
}

}  // namespace

void BindCalc(py::module_& m) {
    py::object curve = m.attr("Curve");
    AddMethod(curve, "stats", &Stats, "x_range"_a = py::none(), R"doc(
Statistics of the valid points whose X lies in x_range = (from, to) (bounds included, either
order; the whole curve by default), as a dict: points, mean, sd (n - 1 in the denominator),
min, max, area (trapezoids between the points, Y unit times X unit), slope and intercept of the
least-squares line. A value that cannot be had (no point, one point) is nan.)doc");
    AddMethod(
        curve, "derivative",
        [](const CurveRef& r, const std::optional<std::string>& name) {
            return Derived(r, Op::Derivative, 1, name);
        },
        "name"_a = py::none(), R"doc(
A new curve of the experiment, dY/dX at the same abscissas: central differences (three-point
formula on uneven steps, exact for a parabola), one-sided at the ends; invalid points stay
invalid. Y quantity `name` (default dU/dt for U(t)), unit Y unit/X unit. Shown in diagram 0.)doc");
    AddMethod(
        curve, "integral",
        [](const CurveRef& r, const std::optional<std::string>& name) {
            return Derived(r, Op::Integral, 1, name);
        },
        "name"_a = py::none(), R"doc(
A new curve of the experiment, the running integral of Y over X by trapezoids, 0 at the first
valid point; Y quantity `name` (default integ(U)), unit Y unit·X unit. Shown in diagram 0.)doc");
    AddMethod(
        curve, "smoothed",
        [](const CurveRef& r, int width, const std::optional<std::string>& name) {
            if (width < 1)
                throw py::value_error("width must be at least 1");
            return Derived(r, Op::Smooth, width, name);
        },
        "width"_a, "name"_a = py::none(), R"doc(
A new curve of the experiment, the centred moving average of `width` valid points (an even
width is taken as the next odd one), narrowed at the ends. Shown in diagram 0.)doc");
    AddMethod(curve, "spectrum", &Spectrum, R"doc(
A new curve of the experiment, the amplitude spectrum U(f) of a uniformly sampled curve U(t):
in Hz when X is a time (s, ms, us, min, h), a sine of amplitude A reads A at its frequency and
the value at 0 is the mean. ValueError (with the reason) for a curve whose valid points are not
evenly spaced. Shown in diagram 0.)doc");

    py::object experiment = m.attr("Experiment");
    AddMethod(experiment, "calc", &Calc, "assignment"_a, py::kw_only(), "unit"_a = py::none(),
              "variables"_a = py::none(), R"doc(
Calculates the curve NAME = EXPR over the experiment's curves (by their Y quantities, or X for
the abscissa) and variables, e.g. calc("P = U*I") or calc("E = 0.5*m*v^2", variables={"m": 0.2})
(variables are kept in the experiment). deriv(S), integ(S) and smooth(S, n) act on whole
series. The result has the abscissas of the first curve named (the others are interpolated onto
them) and the unit that follows from the operands' (V*A gives V·A) unless `unit` names it.
Returns the new Curve, shown in diagram 0; ValueError with the reason when refused.)doc");
}
