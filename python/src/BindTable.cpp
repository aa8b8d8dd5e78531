// vyrbase.import_table and vyrbase.from_pandas: tables that become documents.
#include <cmath>
#include <memory>
#include <string>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include "Bindings.h"
#include "Paths.h"
#include "TableImporting.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/file/VyrTableImport.h"

namespace py = pybind11;
using namespace pybind11::literals;

namespace {

DocumentRef ImportTable(const py::object& path, const std::optional<std::string>& separator,
                        const std::optional<std::string>& decimal,
                        const std::optional<std::string>& encoding, int skip,
                        const py::object& missing) {
    VyrTableImport import;
    if (separator && !vyrtools::SetSeparatorByName(import, FromPython(*separator)))
        throw py::value_error("separator must be one character, \"tab\" or \"blank\"");
    if (decimal &&
        (decimal->size() != 1 || !import.SetDecimalMark(static_cast<wchar_t>((*decimal)[0]))))
        throw py::value_error("decimal must be \".\" or \",\"");
    if (encoding && !vyrtools::SetEncodingByName(import, FromPython(*encoding)))
        throw py::value_error("encoding must be utf-8, utf-16, utf-16le, utf-16be or iso-8859-1");
    if (skip < 0)
        throw py::value_error("skip must be 0 or more lines");
    import.SetSkipLines(skip);
    if (!missing.is_none()) {
        const py::iterable numbers = py::isinstance<py::iterable>(missing)
                                         ? py::reinterpret_borrow<py::iterable>(missing)
                                         : py::iterable(py::make_tuple(missing));
        for (py::handle number : numbers) {
            const double value = py::cast<double>(number);
            if (!std::isfinite(value))
                throw py::value_error("missing values must be finite numbers");
            import.AddMissingValue(value);
        }
    }
    const wxString name = PathArgument(path);
    auto handle = std::make_shared<DocumentHandle>();
    wxString reason;
    switch (vyrtools::ImportTable(name, import, handle->Doc(), reason)) {
        case vyrtools::LoadResult::Ok:
            return handle;
        case vyrtools::LoadResult::CannotRead:
            ThrowCannotRead(path, name);
        case vyrtools::LoadResult::NotADocument:
            break;
    }
    throw py::value_error(std::string((name + ": " + reason).utf8_str()));
}

// A column of a data frame as float64 values (NaN for what is missing), moments as seconds
// from the column's first (`start` then names it), or None for a column of text.
py::object ColumnValues(const py::module_& pd, const py::object& series, std::string& start) {
    const py::object types = pd.attr("api").attr("types");
    const py::object na = py::float_(NAN);
    if (types.attr("is_datetime64_any_dtype")(series).cast<bool>()) {
        const py::object present = series.attr("dropna")();
        if (py::len(present) == 0)
            return series.attr("isna")().attr("to_numpy")().attr("astype")("float64") * na;
        const py::object first = present.attr("iloc")[py::int_(0)];
        start = py::str(first.attr("isoformat")()).cast<std::string>();
        return (series - first)
            .attr("dt")
            .attr("total_seconds")()
            .attr("to_numpy")("dtype"_a = "float64", "na_value"_a = na);
    }
    if (types.attr("is_timedelta64_dtype")(series).cast<bool>())
        return series.attr("dt").attr("total_seconds")().attr("to_numpy")("dtype"_a = "float64",
                                                                          "na_value"_a = na);
    if (types.attr("is_numeric_dtype")(series).cast<bool>())
        return series.attr("astype")("float64").attr("to_numpy")("dtype"_a = "float64",
                                                                 "na_value"_a = na);
    // Text: numeric when more of its cells are numbers than text, as a table's column.
    const py::object numbers = pd.attr("to_numeric")(series, "errors"_a = "coerce");
    const size_t read = numbers.attr("notna")().attr("sum")().cast<size_t>();
    const size_t texts =
        (series.attr("notna")() & numbers.attr("isna")()).attr("sum")().cast<size_t>();
    if (texts > read)
        return py::none();
    return numbers.attr("astype")("float64").attr("to_numpy")("dtype"_a = "float64",
                                                              "na_value"_a = na);
}

DocumentRef FromPandas(const py::object& frame, const py::object& x, const std::string& name) {
    const py::module_ pd = py::module_::import("pandas");
    if (!py::isinstance(frame, pd.attr("DataFrame")))
        throw py::type_error("from_pandas wants a pandas.DataFrame");
    const py::list labels = frame.attr("columns").attr("tolist")();
    if (py::len(labels) == 0)
        throw py::value_error("the data frame has no columns");
    size_t xColumn = 0;
    if (!x.is_none()) {
        bool found = false;
        for (size_t k = 0; k < py::len(labels) && !found; ++k)
            if (py::object(labels[k]).equal(x)) {
                xColumn = k;
                found = true;
            }
        if (!found)
            throw py::key_error("no column " + py::repr(x).cast<std::string>());
    }
    const py::module_ np = py::module_::import("numpy");
    auto heading = [&](size_t k, wxString& quantity, wxString& unit) {
        VyrTableImport::ReadHeading(FromPython(py::str(labels[k]).cast<std::string>()), quantity,
                                    unit);
        if (quantity.empty())
            quantity = wxString::Format(L"C%d", static_cast<int>(k + 1));
    };
    // By position: labels may repeat.
    const py::object all = py::module_::import("builtins").attr("slice")(py::none());
    auto column = [&](size_t k) {
        return py::object(frame.attr("iloc")[py::make_tuple(all, py::int_(k))]);
    };

    auto handle = std::make_shared<DocumentHandle>();
    VyrExperienceParam p(FromPython(name));
    VyrExperience* experience = handle->Doc().CreateExperience(p);
    std::string start;
    const py::object xs = ColumnValues(pd, column(xColumn), start);
    if (xs.is_none())
        throw py::value_error("the column of X holds text, not numbers");
    wxString xQuantity, xUnit;
    heading(xColumn, xQuantity, xUnit);
    if (!start.empty()) {
        xUnit = L"s";
        experience->SetCommentaire(L"start: " + wxString::FromUTF8(start.c_str()));
    }
    const py::object addCurve = py::cast(ExperimentRef{handle, experience}).attr("add_curve");
    for (size_t k = 0; k < py::len(labels); ++k) {
        if (k == xColumn)
            continue;
        std::string ignored;
        const py::object ys = ColumnValues(pd, column(k), ignored);
        if (ys.is_none())
            continue;
        wxString quantity, unit;
        heading(k, quantity, unit);
        if (!ignored.empty())
            unit = L"s";
        // A missing value (NaN) is an invalid point of its own vector only: the other
        // vector's number at that row was measured and stays readable.
        addCurve(xs, ys, "x"_a = py::make_tuple(ToPython(xQuantity), ToPython(xUnit)),
                 "y"_a = py::make_tuple(ToPython(quantity), ToPython(unit)));
    }
    return handle;
}

}  // namespace

void BindTable(py::module_& m) {
    m.def("import_table", &ImportTable, "path"_a, "separator"_a = py::none(),
          "decimal"_a = py::none(), "encoding"_a = py::none(), "skip"_a = 0,
          "missing"_a = py::none(), R"doc(
Reads a text table (CSV, a spreadsheet's, a logger's, a phone sensor app's) into a new Document,
as `vyr import` does: one experiment named after the file, a column of clock times or dates
as X wherever it stands (seconds from the first row; the start in the experiment's comment),
else the first column of numbers; one curve per further column of numbers, names and units
from the header ("U (V)", "U [V]", or a line of units under the names); text columns left out.

separator: one character, "tab" or "blank" (runs of blanks); decimal: "." or ","; encoding:
"utf-8", "utf-16", "utf-16le", "utf-16be" or "iso-8859-1"; each detected when None. skip:
lines before the table. missing: a number (or numbers) that stand for a missing value, as -999.

Raises FileNotFoundError (or another OSError) when the file cannot be read, and ValueError,
with the reason, when it is no table.)doc");
    m.def("from_pandas", &FromPandas, "df"_a, "x"_a = py::none(), "name"_a = "DataFrame",
          R"doc(
A new Document of one experiment (named `name`) whose curves are the data frame's columns
against the column `x` (default: the first). Headings read as "quantity (unit)", as a table's;
a column of datetimes becomes seconds from its first value (unit "s"; the start in the
experiment's comment). Missing values (NaN, None, NaT) are invalid points; a column of which
more cells are text than numbers is left out.)doc");
}
