// Exporting the measured data as one rectangular table that keeps every number: what
// VyrTableImport reads back into the same values, and what a spreadsheet opens as it is.
//
//     VyrTableExport table;                 // ";" between cells...
//     table.SetSeparator(L'\t');            // ...or a tab, or ","
//     if (!table.SaveFile(doc, L"mesures.csv"))
//         report();
//
// Layout (UTF-8 without mark, lines ending "\r\n"):
// - one heading line, then one line per point index; every line has every cell, so the table
//   is rectangular whatever the lengths of the curves;
// - the curves of every experiment (entity-list order), each experiment's connected curves in
//   its own order; curves detached for undo are left out;
// - every curve keeps its own abscissa: its X vector is a column of its own, followed by the Y
//   columns of every curve whose X vector holds the same values (bit for bit), the same
//   validity, quantity and unit; such curves share that one X column. A Y column always stands
//   in the group of its X column: the X column to its left is its abscissa;
// - headings "quantity (unit)", or the quantity alone when the unit is empty (the quantity in
//   its table form, without square brackets); a heading holding the separator, a double quote
//   or a line break is written in double quotes, a quote in it doubled;
// - a cell holds its vector's value at that index in the shortest text that reads back to the
//   same double, with a point as decimal mark; it is empty where the vector has no point at
//   that index and where the point is invalid, so that no cell shows a value that was never
//   measured (the number an invalid point holds is only a placeholder).
//
// A document without curves gives an empty file. SaveAsCsvUTF8 (one block of columns per
// experiment, "%g") is a different export and stays as it is.
//
// Threads: single-threaded, as the document. Errors: no exceptions; false.
#ifndef VYRBASE_FILE_VYRTABLEEXPORT_H
#define VYRBASE_FILE_VYRTABLEEXPORT_H

#include <string>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrBaseData;

class VYRBASE_API VyrTableExport {
public:
    VyrTableExport() = default;

    // L';' (the default), L',' or L'\t'. False, and nothing changed, for any other.
    bool SetSeparator(wchar_t separator);
    wchar_t GetSeparator() const { return m_cSeparator; }

    // Writes the table of `doc` into the file `path` (created or truncated). False when the
    // file cannot be opened or a write came up short (a partial file stays), or memory ran out.
    bool SaveFile(VyrBaseData& doc, const wxString& path) const;
    // The same bytes in memory. False (and `text` empty) when memory ran out.
    bool ToText(VyrBaseData& doc, std::string& text) const;

private:
    wchar_t m_cSeparator = L';';
};

#endif
