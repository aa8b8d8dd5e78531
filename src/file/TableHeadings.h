// The headings of a table: the line that names the columns, "quantity (unit)" in its many
// spellings, and a line of units under the names.
#ifndef VYRBASE_FILE_TABLEHEADINGS_H
#define VYRBASE_FILE_TABLEHEADINGS_H

#include <vector>

#include <wx/string.h>

namespace vyrtable {

bool IsBlankText(const wxString& s);

// A column heading as quantity and unit: "name (unit)", "name [unit]" (the last bracketed part,
// brackets nested within it allowed), "name/unit" (at the first "/"), else the name alone. A
// heading that is wholly bracketed ("[U1]") is a name: the document writes quantity names so.
// The unit is then made plain by PlainUnit.
void SplitHeading(wxString heading, wxString& name, wxString& unit);

// The cells of the line that names the columns, as texts, control characters made blanks. With
// runs of blanks as separator, a bracketed unit standing apart ("t (s)") joins the name before
// it (not another unit: "(s) (V)" is a line of units).
std::vector<wxString> HeadingCells(const wxString& line, wchar_t separator);

// Whether the cells of a header line are units only: every cell empty, wholly in parentheses or
// brackets, or (with `bare`) a unit as such ("s", "m/s^2", "°C", "Volt"), and one at least not
// empty. When they are, the cells are trimmed and bracketed ones lose their brackets.
bool IsUnitsLine(std::vector<wxString>& cells, bool bare);

// A unit as the document keeps it: an uncertainty after it goes ("s  +-0.05s": s), a unit
// spelled out becomes its symbol ("second": s, "Volt": V, "degrees C": °C).
wxString PlainUnit(wxString unit);

// Whether a quantity names a date or a time ("Date", "Datum", "TIME", "Zeit", "timestamp").
bool NamesDateOrTime(const wxString& quantity);

}  // namespace vyrtable

#endif
