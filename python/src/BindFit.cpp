// Curve.fit and vyrbase.FitResult: a model fitted to a curve, kept in the document as a curve
// with its note.
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include <pybind11/stl.h>

#include "Bindings.h"
#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace py = pybind11;
using namespace pybind11::literals;

namespace {

struct FitResult {
    py::dict params;
    py::dict uncertainties;
    py::object rss = py::none();
    py::object r2 = py::none();
    size_t points = 0;
    bool converged = false;
    py::object curve = py::none();
    std::string equation;
    std::string error;
};

// A float, or None where the library answers NaN (no value: JSON and pandas read it so).
py::object Number(double v) {
    return std::isfinite(v) ? py::object(py::float_(v)) : py::object(py::none());
}

FitResult Fit(const CurveRef& ref, const std::optional<std::string>& model,
              const std::optional<std::string>& formula,
              const std::optional<std::map<std::string, double>>& start,
              const std::optional<std::pair<double, double>>& xRange) {
    if (model.has_value() == formula.has_value())
        throw py::value_error("give one of model and formula");
    VyrBaseData& doc = ref.doc->Doc();
    VyrFit fit;
    // A formula reads the variables of the curve's experiment by name, without fitting them.
    if (VyrExperience* e = doc.FindExperienceFromCourbe(ref.curve))
        for (auto* node = e->GetVariables().GetFirst(); node; node = node->GetNext())
            fit.BindVariable(node->GetData()->GetEntityName(), node->GetData()->GetAdressValue());
    if (model && !fit.SetModel(FromPython(*model)))
        throw py::value_error(std::string(fit.GetError().utf8_str()));
    if (formula && !fit.SetFormula(FromPython(*formula)))
        throw py::value_error("formula: " + std::string(fit.GetError().utf8_str()));
    if (start)
        for (const auto& s : *start)
            if (!fit.SetStart(FromPython(s.first), s.second))
                throw py::value_error("start: " + s.first + " is no parameter of the model");
    if (xRange) {
        if (!(xRange->first <= xRange->second))
            throw py::value_error("x_range must be (low, high) with low <= high");
        fit.SetRange(xRange->first, xRange->second);
    }

    FitResult result;
    result.converged = fit.Fit(ref.curve);
    result.equation = std::string(fit.GetEquation().utf8_str());
    result.error = std::string(fit.GetError().utf8_str());
    for (size_t k = 0; k < fit.GetParameterCount(); ++k) {
        py::str name = ToPython(fit.GetParameterName(k));
        result.params[name] = Number(fit.GetValue(k));
        result.uncertainties[name] = Number(fit.GetUncertainty(k));
    }
    result.rss = Number(fit.GetRss());
    result.r2 = Number(fit.GetR2());
    result.points = fit.GetPoints();
    if (result.converged) {
        if (VyrCourbe* c = fit.AddToDocument(&doc, ref.curve)) {
            for (int d = 0; d < 2; ++d)
                if (c->IsShownInDiagram(d) && doc.GetDiagram(d))
                    doc.GetDiagram(d)->ShowData(c, true);
            result.curve = py::cast(CurveRef{ref.doc, c});
        }
    }
    return result;
}

}  // namespace

void BindFit(py::module_& m) {
    py::class_<FitResult>(m, "FitResult", R"doc(
A model fitted to a curve. params and uncertainties are dicts by parameter name (standard
uncertainties, from the covariance scaled by the residual variance); rss is the residual sum of
squares, r2 the coefficient of determination, points the number of points used. converged is
False when the fit found no result: every number is then None and error says why. curve is the
fitted model as a curve of the document, with a note carrying the equation and the parameters
(None without a result).)doc")
        .def_readonly("params", &FitResult::params)
        .def_readonly("uncertainties", &FitResult::uncertainties)
        .def_readonly("rss", &FitResult::rss)
        .def_readonly("r2", &FitResult::r2)
        .def_readonly("points", &FitResult::points)
        .def_readonly("converged", &FitResult::converged)
        .def_readonly("curve", &FitResult::curve)
        .def_readonly("equation", &FitResult::equation)
        .def_readonly("error", &FitResult::error)
        .def("__repr__", [](const FitResult& r) {
            return "<vyrbase.FitResult y = " + r.equation +
                   (r.converged ? ", converged>" : ", not converged>");
        });

    py::object curve = m.attr("Curve");
    curve.attr("fit") = py::cpp_function(
        &Fit, py::name("fit"), py::is_method(curve),
        py::sibling(py::getattr(curve, "fit", py::none())), py::kw_only(), "model"_a = py::none(),
        "formula"_a = py::none(), "start"_a = py::none(), "x_range"_a = py::none(), R"doc(
Fits a model to the curve's valid points by nonlinear least squares and keeps the fitted model
in the document as a new curve of the experiment, with its note. model is one of linear,
affine, poly2..poly5, exp, power, sine, damped, gauss (their starting values are found from the
points); formula is any formula in x whose other names are the parameters (the experiment's
variables excepted), each starting at 1 unless start ({name: value}) says otherwise; start
also replaces a model's own starting values. x_range = (low, high) keeps the points in that
range. Raises ValueError for an unknown model, a formula that does not parse, or a start of
no parameter. Returns a FitResult.)doc");
}
