// A unit as a picture shows it: powers written "^2", "^3", "^-1" become superscripts (m/s^2 as
// m/s², s^-1 as s⁻¹), and a "u" standing for the micro prefix before a unit symbol becomes the
// micro sign (uV, us, uS/cm as µV, µs, µS/cm). Anything else is shown as written ("u.pH", "bpm").
// Internal to the diagram: the stored unit is never changed, only what is drawn.
#ifndef VYRBASE_SRC_DIAGRAM_VYRUNITTYPESET_H
#define VYRBASE_SRC_DIAGRAM_VYRUNITTYPESET_H

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

// Exported for the tests only.
VYRBASE_API wxString VyrTypesetUnit(const wxString& unit);

#endif
