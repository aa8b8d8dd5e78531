// vyrbase.Document and vyrbase.load.
#include <optional>
#include <memory>
#include <utility>

#include <pybind11/stl.h>

#include "AtomicWrite.h"
#include "Bindings.h"
#include "DocumentLoading.h"
#include "Paths.h"
#include "Render.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/file/VyrTableExport.h"

namespace py = pybind11;
using namespace pybind11::literals;

py::str ToPython(const wxString& text) {
    const wxScopedCharBuffer utf8 = text.utf8_str();
    return py::str(utf8.data(), utf8.length());
}

wxString FromPython(const std::string& text) {
    return wxString::FromUTF8(text.data(), text.size());
}

namespace {

DocumentRef Load(const py::object& path) {
    const wxString name = PathArgument(path);
    auto handle = std::make_shared<DocumentHandle>();
    wxString reason;
    switch (vyrtools::LoadDocument(name, handle->Doc(), reason)) {
        case vyrtools::LoadResult::Ok:
            return handle;
        case vyrtools::LoadResult::CannotRead:
            ThrowCannotRead(path, name);
        case vyrtools::LoadResult::NotADocument:
            break;
    }
    throw py::value_error(std::string((name + ": " + reason).utf8_str()));
}

// The attached (not deleted-with-undo) experiments and curves of the document.
py::list Experiments(const DocumentRef& handle) {
    py::list out;
    VyrBaseData& doc = handle->Doc();
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node)
        if (VyrExperience* e = doc.GetNextExperience(&node))
            if (!e->IsDeconnected())
                out.append(ExperimentRef{handle, e});
    return out;
}

py::list Curves(const DocumentRef& handle) {
    py::list out;
    VyrBaseData& doc = handle->Doc();
    wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
    while (node)
        if (VyrCourbe* c = doc.GetNextCourbe(&node))
            if (!c->IsDeconnected())
                out.append(CurveRef{handle, c});
    return out;
}

RenderSize ToRenderSize(const std::pair<int, int>& size, double scale) {
    return RenderSize{size.first, size.second, scale};
}

py::object Render(const DocumentRef& handle, const py::object& path, std::pair<int, int> size,
                  int diagram, double scale, bool legend, const std::optional<std::string>& yUnit,
                  bool plain) {
    const RenderSize rendered = ToRenderSize(size, scale);
    CheckRenderArguments(rendered, diagram);
    PictureOptions look;
    look.plain = plain;
    look.legend = legend;
    if (yUnit) {
        look.yUnit = FromPython(*yUnit);
        if (look.yUnit.empty())
            throw py::value_error("y_unit wants a unit of the diagram's curves");
    }
    if (path.is_none()) {
        const std::vector<unsigned char> png = RenderPng(handle->Doc(), diagram, rendered, look);
        return py::bytes(reinterpret_cast<const char*>(png.data()), png.size());
    }
    RenderToFile(handle->Doc(), diagram, rendered, look, PathArgument(path));
    return py::none();
}

}  // namespace

void BindDocument(py::module_& m) {
    py::class_<DocumentHandle, DocumentRef>(m, "Document", R"doc(
A lab document: experiments, their curves and the two diagrams that show them.

Document() makes a new empty document, as the application does (two diagrams, diagram 0
shown); vyrbase.load(path) reads one from a file.)doc")
        .def(py::init([]() { return std::make_shared<DocumentHandle>(); }))
        .def_property_readonly("experiments", &Experiments,
                               "The experiments (list of Experiment), in the document's order.")
        .def_property_readonly("curves", &Curves,
                               "Every curve of the document (list of Curve), in its order.")
        .def(
            "add_experiment",
            [](const DocumentRef& handle, const std::string& name) {
                VyrExperienceParam p(FromPython(name));
                return ExperimentRef{handle, handle->Doc().CreateExperience(p)};
            },
            "name"_a, "The experiment of that name: the existing one, or a new empty one.")
        .def(
            "save",
            [](const DocumentRef& handle, const py::object& path) {
                const wxString name = PathArgument(path);
                wxString reason;
                if (!vyrtools::SaveDocument(name, handle->Doc(), reason))
                    ThrowCannotWrite(name, reason);
            },
            "path"_a, R"doc(
Saves the document file (UTF-16), every number in the shortest text that reads back to the
same value. The file is replaced only once the new one is written whole:
on failure (OSError) the old file is left as it was.)doc")
        .def(
            "to_csv",
            [](const DocumentRef& handle, const py::object& path, const std::string& layout) {
                if (layout != "table" && layout != "experiments")
                    throw py::value_error("layout must be \"table\" or \"experiments\"");
                const wxString name = PathArgument(path);
                wxString reason;
                VyrBaseData& doc = handle->Doc();
                if (!vyrtools::WriteAtomically(
                        name,
                        [&](const wxString& file) {
                            return layout == "table" ? VyrTableExport().SaveFile(doc, file)
                                                     : doc.SaveAsCsvUTF8(file);
                        },
                        reason))
                    ThrowCannotWrite(name, reason);
            },
            "path"_a, py::kw_only(), "layout"_a = "table", R"doc(
Exports the measured data as CSV (UTF-8, ";" separated), as `vyr csv`. layout "table" (the
default): one rectangular table, every curve with its own X column (curves of the same X values
share one), headings "quantity (unit)", every number in full, empty cells for missing and
invalid points; vyrbase and `vyr import` read it back to the same numbers. layout
"experiments": the application's own export, one block of columns per experiment, six digits.)doc")
        .def("render", &Render, "path"_a = py::none(), "size"_a = std::make_pair(1200, 800),
             "diagram"_a = 0, "scale"_a = 1.0, "legend"_a = true, "y_unit"_a = py::none(),
             "plain"_a = false,
             ("Paints diagram 0 or 1 as the application shows it. Without a path: the PNG "
              "picture as bytes. With a path: writes the file in the format of its extension (" +
              PictureExtensions() + ") and returns None. size is (width, height) in pixels, " +
              "scale the factor of fonts and pen widths. The picture explains itself as `vyr "
              "render` does: a scale per unit, a legend of the curves (legend=False leaves it "
              "out), no text over text, units typeset; y_unit puts that unit on the left axis "
              "(ValueError when no curve has it); plain=True paints the classic picture.")
                 .c_str())
        .def(
            "_repr_png_",
            [](const DocumentRef& handle) {
                return Render(handle, py::none(), {1200, 800}, 0, 1.0, true, std::nullopt, false);
            },
            "The picture of diagram 0, so that a notebook shows the document.")
        .def("__repr__", [](const DocumentRef& handle) {
            return "<vyrbase.Document: " + std::to_string(py::len(Experiments(handle))) +
                   " experiment(s), " + std::to_string(py::len(Curves(handle))) + " curve(s)>";
        });

    m.def("load", &Load, "path"_a, R"doc(
Reads a document file (UTF-16, UTF-8 or ISO-8859-1) into a new Document.

Raises FileNotFoundError (or another OSError) when the file cannot be read, and ValueError,
with the reason, when it is read but is not a document.)doc");
}
