// The layout of a table: which lines are its header, where its rows begin, what each column
// holds and becomes. The import decides it over a whole file; the live reader of a recording
// decides it, by the same rules, over the lines that arrived before the first rows.
#ifndef VYRBASE_FILE_TABLELAYOUT_H
#define VYRBASE_FILE_TABLELAYOUT_H

#include <cstddef>
#include <string_view>
#include <vector>

#include <wx/colour.h>
#include <wx/string.h>

#include "TableRows.h"
#include "TableText.h"
#include "vyrbase/file/VyrTableImport.h"

namespace vyrtable {

// What the user set (each 0, -1 or empty to detect), as VyrTableImport holds it.
struct TableSettings {
    VyrTableImport::Encoding encoding = VyrTableImport::kEncodingAuto;
    wchar_t separator = 0;
    wchar_t decimalMark = 0;
    int skipLines = 0;
    int headerLines = -1;
    std::vector<double> missing;
};

// The decision over a text: the rows' place and count, the columns' names, and the roles that a
// RowReader reads them with. Target 0 is the abscissa, target k + 1 the Y of curve k (the
// table's column curveColumns[k]); with byIndex the abscissa is the row number.
struct TableLayout {
    CellReading reading;
    wchar_t separator = 0;
    int headerCount = 0;
    size_t rows = 0;
    size_t columns = 0;
    LineMark rowsStart;
    std::vector<wxString> quantities, units;
    std::vector<ColumnRole> roles;
    std::vector<VyrTableImport::ColumnReport> reports;
    std::vector<size_t> curveColumns;
    int xColumn = -1;
    int clockColumn = -1;
    bool byIndex = false;
    bool timed = false;
    int timeTarget = -1;
    VyrTableImport::AbscissaReason reason = VyrTableImport::kAbscissaFirstColumn;
    wxString xQuantity, xUnit;
};

// Decides the layout of `text` (read with `encoding`). kErrorNone, or why the text is no table,
// with the line at fault in `errorLine` (0 when none is). May throw std::bad_alloc.
VyrTableImport::Error FindLayout(const Units& text, VyrTableImport::Encoding encoding,
                                 const TableSettings& settings, TableLayout& layout,
                                 size_t& errorLine);

// The colour of the k-th curve made of a table's columns: red first, as for any new curve.
const wxColour& CurveColour(size_t k);

// Whether a line has a cell with content: a line without is no row, nor a header line.
bool HasContent(std::string_view line, wchar_t separator);

}  // namespace vyrtable

#endif
