#include "Views.h"

#include <string>

#include "vyrbase/data/VyrVecteur.h"

namespace py = pybind11;

namespace {
// What a view's base capsule holds.
struct ViewOwner {
    DocumentRef doc;
    const VyrVecteur* vector;
};

void ReleaseView(void* p) {
    auto* owner = static_cast<ViewOwner*>(p);
    owner->doc->RemoveView(owner->vector);
    delete owner;
}

// Where an empty vector without storage points its view: numpy wants an address even for no
// element, and a null one would make pybind11 allocate an array of its own.
const double kNoValue = 0.0;
}  // namespace

py::array VectorView(const DocumentRef& doc, VyrVecteur* vector) {
    auto* owner = new ViewOwner{doc, vector};
    py::capsule base(owner, &ReleaseView);
    doc->AddView(vector);
    const double* values = static_cast<const VyrVecteur*>(vector)->GetArea();
    const py::ssize_t size = vector->GetSize();
    py::array_t<double> view({size}, {static_cast<py::ssize_t>(sizeof(double))},
                             values && size > 0 ? values : &kNoValue, base);
    // The library owns the values and keeps their invariants (validity marks, diagrams'
    // ranges): Python reads them only.
    view.attr("setflags")(py::arg("write") = false);
    return std::move(view);
}

void RequireNoView(const DocumentRef& doc, const VyrVecteur* vector, const char* action) {
    if (!vector || doc->ViewCount(vector) == 0)
        return;
    throw py::buffer_error(std::string("cannot ") + action +
                           ": numpy views of its values are alive and the values may have to "
                           "move; delete the views, or copy them with numpy.array(...), first");
}
