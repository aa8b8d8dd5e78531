// What the commands that work on one curve share: finding the curve a person names, and
// reading numbers given on the command line.
#ifndef VYR_TOOLS_CURVEARGUMENTS_H
#define VYR_TOOLS_CURVEARGUMENTS_H

#include <string>

#include <wx/string.h>

class VyrBaseData;
class VyrCourbe;

namespace vyr {

// The first curve (in document order) whose display name ("U(t)"), entity name or Y quantity
// ("U") is `name`, trying the three in that order over the whole document; null if none.
VyrCourbe* FindCurveArgument(VyrBaseData& doc, const wxString& name);

// The curves' display names, comma separated, for a message that says what exists.
wxString CurveNames(VyrBaseData& doc);

// A finite number written with a decimal point ("0.2", "-1e-3"), whatever the locale; false
// for anything else.
bool ReadNumber(const std::string& text, double& value);

}  // namespace vyr

#endif
