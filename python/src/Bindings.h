// The Python classes of the module and what they hold: an experiment or a curve is a pointer
// into a document together with the document's shared owner, so that it stays valid as long as
// Python holds it (the module never deletes entities).
#ifndef VYR_PYTHON_BINDINGS_H
#define VYR_PYTHON_BINDINGS_H

#include <pybind11/pybind11.h>

#include <wx/string.h>

#include "DocumentHandle.h"

class VyrCourbe;
class VyrExperience;

struct ExperimentRef {
    DocumentRef doc;
    VyrExperience* experience;
};

struct CurveRef {
    DocumentRef doc;
    VyrCourbe* curve;
};

// Python text from the toolkit's.
pybind11::str ToPython(const wxString& text);
// The toolkit's text from Python's.
wxString FromPython(const std::string& text);

// vyrbase.Document and vyrbase.load.
void BindDocument(pybind11::module_& module);
// vyrbase.Experiment and vyrbase.Curve.
void BindExperimentAndCurve(pybind11::module_& module);
// vyrbase.import_table and vyrbase.from_pandas.
void BindTable(pybind11::module_& module);
// Curve.stats, derivative, integral, smoothed, spectrum and Experiment.calc.
void BindCalc(pybind11::module_& module);
// vyrbase.FitResult and Curve.fit (after BindExperimentAndCurve).
void BindFit(pybind11::module_& module);

#endif
