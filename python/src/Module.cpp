// vyrbase: lab documents in Python. Curves' values are numpy arrays over the library's own
// storage, pictures come from the library's diagrams.
#include <pybind11/pybind11.h>

#include "Bindings.h"
#include "Toolkit.h"

PYBIND11_MODULE(vyrbase, m) {
    m.doc() = R"doc(
Lab documents (experiments, curves, notes, diagrams) in Python.

    doc = vyrbase.load("sound.vyr")
    curve = doc.curves[0]
    curve.y.max()            # a numpy view of the document's own values, no copy
    curve.to_pandas().describe()
    doc.render("sound.png")  # the diagram as the application paints it

No display is needed: the toolkit is started headless when the module is imported.)doc";
    // The licence of the module and of the library it carries (LICENSE).
    m.attr("__license__") = "MIT";
    StartToolkit();
    BindDocument(m);
    BindExperimentAndCurve(m);
    BindTable(m);
    BindCalc(m);
    BindFit(m);
}
