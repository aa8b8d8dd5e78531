// vyrbase.Experiment and vyrbase.Curve.
#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include "Bindings.h"
#include "Views.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrBitMask.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrPalette.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace py = pybind11;
using namespace pybind11::literals;

namespace {

using Axis = std::pair<std::string, std::string>;
using Values = py::array_t<double, py::array::c_style>;

// Any numpy-convertible sequence of numbers as a 1-D float64 array; TypeError otherwise.
Values ToValues(const py::handle& values, const char* what) {
    py::object array;
    try {
        array = py::module_::import("numpy").attr("asarray")(values, "dtype"_a = "float64");
    } catch (py::error_already_set&) {
        throw py::type_error(std::string(what) + " must be a sequence of numbers");
    }
    if (py::cast<py::array>(array).ndim() != 1)
        throw py::type_error(std::string(what) + " must be a one-dimensional sequence of numbers");
    return Values::ensure(array);
}

// Indices below both vectors' sizes: the curve's points.
py::ssize_t PointCount(const VyrCourbe* c) {
    if (!c->GetVx() || !c->GetVy())
        return 0;
    return std::min(c->GetVx()->GetSize(), c->GetVy()->GetSize());
}

// Whether any of the vector's points is invalid (bits beyond its size are not its points).
bool HasInvalidPoint(const VyrVecteur* v) {
    const VyrBitMask& mask = *const_cast<VyrVecteur*>(v)->GetValidity();
    const int size = v->GetSize();
    const int bytes = std::min(mask.GetSize(), (size + 7) / 8);
    for (int k = 0; k < bytes; ++k) {
        const int bits = std::min(8, size - 8 * k);
        if (mask[k] & ((1u << bits) - 1))
            return true;
    }
    return false;
}

py::array ReadOnly(py::array array) {
    array.attr("setflags")("write"_a = false);
    return array;
}

// The values of a vector as Python reads them: a view of the storage itself while every point
// is valid; otherwise a read-only copy with NaN for the invalid points, whose stored number was
// never measured (it only keeps the diagrams' automatic ranges within the measured values).
py::array View(const CurveRef& ref, bool x) {
    VyrVecteur* v = x ? ref.curve->GetVx() : ref.curve->GetVy();
    if (!v)
        return ReadOnly(py::array_t<double>(0));
    if (!HasInvalidPoint(v))
        return VectorView(ref.doc, v);
    const int n = v->GetSize();
    py::array_t<double> copy(n);
    auto out = copy.mutable_unchecked<1>();
    for (int i = 0; i < n; ++i)
        out(i) = v->IsValidAt(i) ? v->GetArea()[i] : std::numeric_limits<double>::quiet_NaN();
    return ReadOnly(copy);
}

py::array_t<bool> Valid(const CurveRef& ref) {
    const py::ssize_t n = PointCount(ref.curve);
    py::array_t<bool> valid(n);
    auto out = valid.mutable_unchecked<1>();
    const VyrVecteur* vx = ref.curve->GetVx();
    const VyrVecteur* vy = ref.curve->GetVy();
    for (py::ssize_t i = 0; i < n; ++i)
        out(i) = vx->IsValidAt(static_cast<int>(i)) && vy->IsValidAt(static_cast<int>(i));
    return valid;
}

wxString Quantity(const VyrVecteur* v) {
    return v ? v->GetGrandeur() : wxString();
}

wxString Unit(const VyrVecteur* v) {
    return v ? v->GetUnite() : wxString();
}

// A column title as the CSV export writes it: quantity(unit).
wxString ColumnTitle(const VyrVecteur* v) {
    return Quantity(v) + "(" + Unit(v) + ")";
}

py::object ToPandas(const CurveRef& ref, bool validOnly) {
    py::module_ pandas = py::module_::import("pandas");
    const py::ssize_t n = PointCount(ref.curve);
    py::object x = View(ref, true)[py::slice(0, n, 1)];
    py::object y = View(ref, false)[py::slice(0, n, 1)];
    py::object index = py::module_::import("numpy").attr("arange")(n);
    if (validOnly) {
        py::object valid = Valid(ref);
        x = x[valid];
        y = y[valid];
        index = index[valid];
    }
    py::str xTitle = ToPython(ColumnTitle(ref.curve->GetVx()));
    py::str yTitle = ToPython(ColumnTitle(ref.curve->GetVy()));
    if (xTitle.equal(yTitle)) {
        // Two columns of one name would be one column of a dict.
        xTitle = py::str("x: ") + xTitle;
        yTitle = py::str("y: ") + yTitle;
    }
    py::dict columns;
    columns[xTitle] = x;
    columns[yTitle] = y;
    return pandas.attr("DataFrame")(columns, "index"_a = index);
}

py::list Notes(const CurveRef& ref) {
    py::list out;
    wxVyrListNoteNode* node = ref.curve->GetFirstNote();
    while (node)
        if (VyrNote* note = ref.curve->GetNextNote(&node))
            out.append(ToPython(note->GetText()));
    return out;
}

// What a vector stores for a point of value `value` appended after its points so far: a
// finite value itself; for NaN or an infinity (an invalid point) the vector's last stored
// number, so that the number an invalid point holds is always one that was measured, and the
// diagrams' automatic ranges, which count invalid points too, stay within the measured values.
double Stored(const VyrVecteur* v, double value) {
    if (std::isfinite(value))
        return value;
    const int n = v->GetSize();
    return n > 0 ? v->GetArea()[n - 1] : 0.0;
}

// Once the first finite value of a vector arrives, the invalid points before it, which had
// nothing measured to hold (they hold the 0 of Stored), take it. Numbers given with points
// marked invalid otherwise stay as they were given.
void FillLeadingInvalid(VyrVecteur* v, int first, double value) {
    for (int k = 0; k < first; ++k)
        if (v->IsValidAt(k) || v->GetArea()[k] != 0.0)
            return;
    for (int k = 0; k < first; ++k)
        v->SetVal(k, value);
}

// The values a new vector stores for `values`: they themselves when all are finite; otherwise
// a copy in `stored` in which each NaN or infinity, marked invalid in `validity`, holds the
// last finite value before it (the first one after it at the start; 0 when there is none), as
// a table's holes do.
const double* WithPlaceholders(const double* values, py::ssize_t n, VyrBitMask* validity,
                               std::vector<double>& stored) {
    const double* end = values + n;
    const double* first = std::find_if(values, end, [](double v) { return std::isfinite(v); });
    if (first == values && std::all_of(values, end, [](double v) { return std::isfinite(v); }))
        return values;
    stored.assign(values, end);
    double last = first != end ? *first : 0.0;
    for (py::ssize_t i = 0; i < n; ++i) {
        if (std::isfinite(stored[i])) {
            last = stored[i];
        } else {
            stored[i] = last;
            validity->Unset(static_cast<int>(i));
        }
    }
    return stored.data();
}

// Appends (x, y); NaN or an infinity makes the point invalid in that vector. The diagrams are
// told when `notify`, as AddPoint tells them.
void Append(VyrBaseData& doc, VyrCourbe* c, double x, double y, bool notify) {
    VyrVecteur* vx = c->GetVx();
    VyrVecteur* vy = c->GetVy();
    const int n = vx->GetSize();
    // AddPoint leaves the mark of the new position alone: it is set first.
    for (auto [v, value] : {std::pair<VyrVecteur*, double>(vx, x), {vy, y}}) {
        if (std::isfinite(value)) {
            v->GetValidity()->Set(n);
            FillLeadingInvalid(v, std::min(n, v->GetSize()), value);
        } else {
            v->GetValidity()->Unset(n);
        }
    }
    doc.AddPoint(c, Stored(vx, x), Stored(vy, y), notify);
}

void AddPoint(const CurveRef& ref, double x, double y) {
    VyrCourbe* c = ref.curve;
    if (!c->GetVx() || !c->GetVy())
        throw py::value_error("the curve has no vectors to add a point to");
    RequireNoView(ref.doc, c->GetVx(), "add a point to this curve");
    RequireNoView(ref.doc, c->GetVy(), "add a point to this curve");
    Append(ref.doc->Doc(), c, x, y, true);
}

CurveRef AddCurve(const ExperimentRef& ref, const py::handle& xs, const py::handle& ys,
                  const Axis& x, const Axis& y, const std::optional<std::string>& name,
                  const py::handle& validity) {
    const Values xv = ToValues(xs, "xs");
    const Values yv = ToValues(ys, "ys");
    const py::ssize_t n = xv.shape(0);
    if (yv.shape(0) != n)
        throw py::value_error("xs and ys must be of equal length (" + std::to_string(n) + " and " +
                              std::to_string(yv.shape(0)) + ")");
    if (n > INT_MAX - 200)
        throw py::value_error("a curve holds at most " + std::to_string(INT_MAX - 200) + " points");
    std::optional<py::array_t<bool, py::array::c_style | py::array::forcecast>> valid;
    if (!validity.is_none()) {
        valid = py::array_t<bool, py::array::c_style | py::array::forcecast>::ensure(validity);
        if (!*valid || valid->ndim() != 1)
            throw py::type_error("valid must be a one-dimensional sequence of booleans");
        if (valid->shape(0) != n)
            throw py::value_error("valid must be as long as xs and ys");
    }

    VyrBaseData& doc = ref.doc->Doc();
    VyrCourbeParam p;
    p.m_sGrdX = FromPython(x.first);
    p.m_sUniteX = FromPython(x.second);
    p.m_sUniteY = FromPython(y.second);
    // A curve of the same quantities and units would be emptied and reused by the document:
    // the new curve's Y quantity is numbered instead (U, U1, U2...), as the application numbers
    // a second acquisition of the same quantity.
    p.m_sGrdY = VyrBaseData::GetUniqueGrandeur(ref.experience, FromPython(y.first), p.m_sUniteY,
                                               p.m_sGrdX, p.m_sUniteX);
    p.m_sNom = name ? FromPython(*name) : p.m_sGrdY;
    p.m_sNomVx = p.m_sNom + "VX";
    p.m_sNomVy = p.m_sNom + "VY";
    // Not red like every new curve of the library: the next colour that colour-blind readers
    // tell from the curves already made.
    const wxColour colour = VyrPalette::GetNextColour(&doc);
    VyrCourbe* c = doc.CreateCourbe(ref.experience, p, nullptr, false);
    if (!c)
        throw py::value_error("the curve could not be made");
    c->SetColor(colour);
    // Invalid marks first: a point added later keeps the mark of its position, and the
    // diagrams are told of the data once, with the last point.
    if (valid) {
        auto marks = valid->unchecked<1>();
        for (py::ssize_t i = 0; i < n; ++i)
            if (!marks(i)) {
                c->GetVx()->GetValidity()->Unset(static_cast<int>(i));
                c->GetVy()->GetValidity()->Unset(static_cast<int>(i));
            }
    }
    // NaN and infinities are invalid points of their own vector.
    std::vector<double> xStored, yStored;
    const double* xp = WithPlaceholders(xv.data(), n, c->GetVx()->GetValidity(), xStored);
    const double* yp = WithPlaceholders(yv.data(), n, c->GetVy()->GetValidity(), yStored);
    c->PreAlloc(static_cast<int>(n));
    for (py::ssize_t i = 0; i < n; ++i)
        doc.AddPoint(c, xp[i], yp[i], i == n - 1);
    if (c->GetVx()->GetSize() != n || c->GetVy()->GetSize() != n)
        throw std::bad_alloc();
    // Shown at once in the first diagram, as a new acquisition is.
    doc.GetDiagram(0)->ShowData(c, true);
    return CurveRef{ref.doc, c};
}

py::tuple Colour(const CurveRef& ref) {
    const wxColour& c = ref.curve->GetColor();
    return py::make_tuple(c.Red(), c.Green(), c.Blue());
}

}  // namespace

void BindExperimentAndCurve(py::module_& m) {
    py::class_<ExperimentRef>(m, "Experiment",
                              "An experiment of a document: a named group of curves.")
        .def_property_readonly(
            "name", [](const ExperimentRef& r) { return ToPython(r.experience->GetEntityName()); })
        .def_property_readonly(
            "comment",
            [](const ExperimentRef& r) { return ToPython(r.experience->GetCommentaire()); },
            "The experiment's comment (an imported table's keeps the start of its time base).")
        .def_property_readonly(
            "curves",
            [](const ExperimentRef& r) {
                py::list out;
                wxVyrListCourbeNode* node = r.experience->GetFirstCourbeNode();
                while (node)
                    if (VyrCourbe* c = r.experience->GetNextCourbe(&node))
                        if (!c->IsDeconnected())
                            out.append(CurveRef{r.doc, c});
                return out;
            },
            "The curves of the experiment (list of Curve), in its order.")
        .def("add_curve", &AddCurve, "xs"_a, "ys"_a, py::pos_only(), py::kw_only(),
             "x"_a = Axis("x", ""), "y"_a = Axis("y", ""), "name"_a = py::none(),
             "valid"_a = py::none(), R"doc(
Adds a curve of the values xs and ys (numpy-convertible sequences of equal length), copied into
the document. x and y are (quantity, unit) pairs; name defaults to the Y quantity. valid, when
given, marks the points that are False invalid; NaN and infinities in xs or ys are invalid
points of their vector. A curve of the same quantities and units as an
existing one gets its Y quantity numbered (U, U1, U2...). The curve is shown in diagram 0.)doc")
        .def("__eq__", [](const ExperimentRef& a,
                          const ExperimentRef& b) { return a.experience == b.experience; })
        .def("__hash__",
             [](const ExperimentRef& r) { return std::hash<const void*>()(r.experience); })
        .def("__repr__", [](const ExperimentRef& r) {
            return "<vyrbase.Experiment " + std::string(r.experience->GetEntityName().utf8_str()) +
                   ">";
        });

    py::class_<CurveRef>(m, "Curve", R"doc(
A curve: two vectors of values, X and Y, with their quantities, units and validity.

x and y are read-only float64 arrays. An invalid point reads as NaN: the number the document
stores for it was never measured. A vector without invalid points is given as a numpy view of
its own storage: no copy is made, and each view keeps the document alive. While a view of a
vector (or any array derived from it) is alive, the vector's length cannot change: append and
add_point raise BufferError, since growing may move the values to new memory that the view
could not follow. Copy (numpy.array(curve.y)) or delete the views first. A vector with invalid
points is given as a read-only copy, which does not follow later changes.)doc")
        .def_property_readonly("name",
                               [](const CurveRef& r) { return ToPython(r.curve->GetEntityName()); })
        .def_property_readonly(
            "display_name", [](const CurveRef& r) { return ToPython(r.curve->GetName()); },
            "Y(X) of the quantities, as the diagrams name the curve.")
        .def_property_readonly(
            "x_quantity", [](const CurveRef& r) { return ToPython(Quantity(r.curve->GetVx())); })
        .def_property_readonly("x_unit",
                               [](const CurveRef& r) { return ToPython(Unit(r.curve->GetVx())); })
        .def_property_readonly(
            "y_quantity", [](const CurveRef& r) { return ToPython(Quantity(r.curve->GetVy())); })
        .def_property_readonly("y_unit",
                               [](const CurveRef& r) { return ToPython(Unit(r.curve->GetVy())); })
        .def_property_readonly("colour", &Colour, "(red, green, blue), each 0 to 255.")
        .def_property_readonly(
            "x", [](const CurveRef& r) { return View(r, true); },
            "The X values (read-only float64), NaN where the X vector's point is invalid.")
        .def_property_readonly(
            "y", [](const CurveRef& r) { return View(r, false); },
            "The Y values (read-only float64), NaN where the Y vector's point is invalid.")
        .def_property_readonly("valid", &Valid, R"doc(
A bool array, True where the point is valid in both X and Y, for the indices below both
vectors' lengths.)doc")
        .def_property_readonly("notes", &Notes, "The texts of the notes attached to the curve.")
        .def("to_pandas", &ToPandas, py::kw_only(), "valid_only"_a = true, R"doc(
A pandas DataFrame of the X and Y columns, titled quantity(unit) as the CSV export titles them,
indexed by point number. valid_only (default) leaves the invalid points out; with
valid_only=False every point is there, NaN where a vector's point is invalid.)doc")
        .def("append", &AddPoint, "x"_a, "y"_a, R"doc(
Appends the point (x, y) and tells the diagrams, as an acquisition adds a point. NaN or an
infinity makes the point invalid in that vector. Raises BufferError while a view of x or y is
alive.)doc")
        .def("add_point", &AddPoint, "x"_a, "y"_a, "The same as append(x, y).")
        .def("__len__", [](const CurveRef& r) { return PointCount(r.curve); })
        .def("__eq__", [](const CurveRef& a, const CurveRef& b) { return a.curve == b.curve; })
        .def("__hash__", [](const CurveRef& r) { return std::hash<const void*>()(r.curve); })
        .def("__repr__", [](const CurveRef& r) {
            return "<vyrbase.Curve " + std::string(r.curve->GetName().utf8_str()) + ", " +
                   std::to_string(PointCount(r.curve)) + " points>";
        });
}
