// Importing a text table, as spreadsheets, data loggers and phone sensor apps write them, into a
// document: one experiment named after the file; one column is the abscissa and every further
// column of numbers becomes one curve, with its own two vectors (a copy of the abscissa and the
// column itself), quantity names and units taken from the header.
//
//     VyrTableImport import;            // everything detected...
//     import.SetSeparator(L';');        // ...or set, one setting at a time
//     if (!import.ImportFile(doc, L"mesures.csv"))
//         report(import.GetError());
//
// What is detected, each with its setting:
// - encoding: UTF-16 with its mark (either byte order), UTF-8 with its mark, UTF-8 without one
//   when the bytes are valid UTF-8, else ISO-8859-1. Zero bytes before and after the text (a
//   logger card's unwritten sectors) are skipped, outside UTF-16;
// - separator: the first of tab, ";", "," and runs of blanks (spaces or tabs) that splits
//   most of the table's first lines into several cells; a comma that is the decimal mark
//   separates only where every cell is quoted ("0,5","1,5");
// - decimal mark: a point always; a comma too unless the separator is "," and the cell is not
//   quoted (a quoted cell's comma is a decimal mark unless the mark is set to ".");
// - rows: the lines of which more cells are numbers, clock times or dates than text. The rows
//   begin with the first of them; lines before are the header. Lines followed by a heading of
//   two cells or more (no number nor moment in it) are a preamble ("Rate;100", a title that is
//   a date) and belong to the header too, when none of them began with a number or a moment
//   or all are narrower than the heading.
//   Lines after the last row (a footer), comment lines ("#" first) anywhere and blank lines are
//   no rows; any other line between rows is a row;
// - the names: the last header line of at least two cells (half of the table's columns; one
//   for a table of one column). "name (unit)", "name [unit]", "name/unit", or a name without
//   unit (an empty unit); an uncertainty after the unit goes ("TIME (s +-0.05s)": s), a unit
//   spelled out is written as its symbol ("Volt": V). When that line holds units only
//   ("(s)", "[V]", or bare: "s", "V", "second"), they are the units of the names on the header
//   line above. Without header the columns are named C1, C2...;
// - line ends CRLF, LF or CR; cells in double quotes may hold separators, a doubled quote
//   standing for one. A quote left open ends with its line.
//
// Columns: a column of which more cells are text than numbers and moments ("eor", names, event
// markers) is left out. A column of clock times ("10:00:30") or dates ("2026-04-01T00:00:30",
// "01.04.2026 00:00:30", "2026/04/01", "01/04/2026", day first unless a cell proves otherwise)
// is the abscissa wherever it stands; a column of dates beside one of clock times make one
// instant; a column of "yyyyMMddHHmm" stamps is a date too when its heading names one ("Date",
// "Datum", "Time", "Zeit"). Moments become seconds from the first row's (unit "s"; a clock
// time more than half a day before the previous one has passed midnight), and the first moment as
// written is kept in the experiment's comment ("start: ..."). Further date or time columns are left
// out. Without a moment the abscissa is the first column of numbers; a table of one column of
// numbers is plotted against the row number, 0, 1, 2... (quantity "n").
//
// Cells: a cell that is empty, a marker of a missing value ("NaN", "n/a", "M", "-"), a number
// set with AddMissingValue, or not a number as a whole ("---", text, "12 V") is an invalid
// point of its vector, and a row shorter than the table has invalid points for its missing
// cells: no row is dropped and no missing cell reads as a valid number. An invalid point holds
// the column's previous number (its next one before the first), because the automatic ranges
// of the diagrams count invalid points too. Empty cells at the end of every row (a trailing
// separator) make no column unless the header names it.
//
// Quantities stay as the headings say, also when two columns have the same; the curves are
// named after them, made unique in the experiment with 1, 2... ("U", "U1").
//
// The document is replaced as a load replaces it: emptied, then the experiment and its curves
// (shown in diagram 0, each in a colour of its own), then VYR_MSG_FILE_LOADED (8) to the
// observers, so that the diagrams show the new curves. A refused table leaves the document as
// it was and notifies nothing: a file that cannot be read, an empty file, a binary one (a zero
// byte inside the text, outside UTF-16), a line above 1 MiB, a row of more than 16384 cells, a
// table without a row of numbers (or whose abscissa holds none), bytes that are not the
// encoding that was set.
//
// Threads: one import per document at a time. Errors: no exceptions; false and GetError.
#ifndef VYRBASE_FILE_VYRTABLEIMPORT_H
#define VYRBASE_FILE_VYRTABLEIMPORT_H

#include <cstddef>
#include <vector>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrBaseData;

class VYRBASE_API VyrTableImport {
public:
    enum Encoding {
        kEncodingAuto,
        kEncodingUtf8,     // a leading mark is skipped
        kEncodingUtf16,    // byte order from the mark, little-endian without one
        kEncodingUtf16LE,  // a leading mark of that order is skipped
        kEncodingUtf16BE,
        kEncodingIso8859_1,
    };

    // Why the last import was refused.
    enum Error {
        kErrorNone,
        kErrorCannotRead,    // the file cannot be opened or read
        kErrorEmpty,         // nothing but blanks and line breaks
        kErrorBinary,        // a zero byte (a zero unit in UTF-16): not text
        kErrorEncoding,      // the bytes are not valid in the encoding that was set
        kErrorLineTooLong,   // a line above kMaxLineUnits
        kErrorTooManyCells,  // a row of more than kMaxColumns cells
        kErrorNoNumericRow,  // no row of numbers, or an abscissa without a number
        kErrorMemory,        // memory ran out while the document was built (it is emptied)
    };

    static const size_t kMaxLineUnits = size_t(1) << 20;
    static const int kMaxColumns = 16384;
    // What became of a column of the table.
    enum ColumnUse {
        kColumnCurve,     // the Y of a curve
        kColumnAbscissa,  // the X of every curve (or part of it: a date and a time of day)
        kColumnText,      // left out: more text than numbers
        kColumnMoreTime,  // left out: a date or time column beside the one that is X
    };
    // Why the abscissa is what it is.
    enum AbscissaReason {
        kAbscissaFirstColumn,        // the first column, of numbers
        kAbscissaFirstNumberColumn,  // the first column of numbers, text columns before it
        kAbscissaTime,               // a column of clock times or dates
        kAbscissaDateAndTime,        // a column of dates and one of clock times
        kAbscissaRowNumber,          // one column of numbers only: the row number
    };
    // One column of the table as the import used it; `holes` counts its invalid points (0 for
    // the columns left out).
    struct ColumnReport {
        wxString quantity;
        wxString unit;
        ColumnUse use = kColumnCurve;
        size_t holes = 0;
    };

    // How many lines (after those skipped) the separator is guessed from.
    static const int kSampleLines = 64;

    VyrTableImport();

    // ---- Settings (each overrides its detection) ------------------------------------------
    void SetEncoding(Encoding encoding) { m_eEncoding = encoding; }
    // L'\t', L';', L',' or any other character but a quote, a digit, a point or a line break;
    // L' ' for runs of blanks; 0 to detect. False (and nothing changed) for a refused one.
    bool SetSeparator(wchar_t separator);
    // L'.' or L',' (then only that mark is read), 0 to detect. False for anything else.
    bool SetDecimalMark(wchar_t mark);
    // Lines skipped before the table (blank ones counted), 0 by default.
    void SetSkipLines(int lines) { m_iSkipLines = lines > 0 ? lines : 0; }
    // The table's first n lines with content are its header (the last of them holding text
    // names the columns), the rows start after them; -1 (the default) to detect.
    void SetHeaderLines(int lines) { m_iHeaderLines = lines >= 0 ? lines : -1; }

    // A number that stands for a missing value in the logger's files (-999, 9999): a cell
    // holding it is an invalid point. None by default, as such a number may be measured.
    void AddMissingValue(double value) { m_adMissing.push_back(value); }
    void ClearMissingValues() { m_adMissing.clear(); }

    // The settings as set (0, -1 or none where detected), for a reader of live rows that reads
    // by the same settings (VyrLiveTable).
    Encoding GetEncoding() const { return m_eEncoding; }
    wchar_t GetSeparator() const { return m_cSeparator; }
    wchar_t GetDecimalMark() const { return m_cDecimalMark; }
    int GetSkipLines() const { return m_iSkipLines; }
    int GetHeaderLines() const { return m_iHeaderLines; }
    const std::vector<double>& GetMissingValues() const { return m_adMissing; }

    // A heading read as the import reads the table's: "U (V)", "U [V]", "U/V" give quantity "U"
    // and unit "V" (an uncertainty after the unit left out, a unit spelled out written as its
    // symbol); a heading without unit gives an empty one. For the columns of tables that come
    // by other ways (a data frame).
    static void ReadHeading(const wxString& heading, wxString& quantity, wxString& unit);

    // ---- Importing --------------------------------------------------------------------------
    // The table of the file `path`; the experiment is named after the file (its name without
    // directory and extension).
    bool ImportFile(VyrBaseData& doc, const wxString& path);
    // The table held by `length` bytes; the experiment is named `name`, or as a load names
    // the experiment of a file that has none when `name` is empty.
    bool ImportMemory(VyrBaseData& doc, const void* bytes, size_t length,
                      const wxString& name = wxString());

    // ---- What the last import found ---------------------------------------------------------
    Error GetError() const { return m_eError; }
    // The line (from 1, skipped lines counted) at which a line or row was refused; 0 otherwise.
    size_t GetErrorLine() const { return m_iErrorLine; }
    // The encoding, separator (L' ' for runs of blanks) and decimal mark read with.
    Encoding GetUsedEncoding() const { return m_eUsedEncoding; }
    wchar_t GetUsedSeparator() const { return m_cUsedSeparator; }
    wchar_t GetUsedDecimalMark() const { return m_cUsedDecimalMark; }
    // Header lines (with content, comments and a preamble counted) before the rows, rows,
    // columns of the table (those left out included) and invalid cells of the columns kept
    // (the abscissa's counted once).
    int GetHeaderLineCount() const { return m_iHeaderCount; }
    size_t GetRowCount() const { return m_iRows; }
    int GetColumnCount() const { return m_iColumns; }
    size_t GetInvalidCount() const { return m_iInvalid; }
    // Every column of the table in order, and what became of it.
    const std::vector<ColumnReport>& GetColumnReports() const { return m_aColumns; }
    // The column (from 0) that is the abscissa (the date's when a date and a time of day are
    // joined), -1 for the row number; and why.
    int GetAbscissaColumn() const { return m_iAbscissa; }
    AbscissaReason GetAbscissaReason() const { return m_eAbscissaReason; }
    // The abscissa's first moment as the table wrote it, empty when the abscissa is no time.
    const wxString& GetStart() const { return m_sStart; }

private:
    bool Import(VyrBaseData& doc, const unsigned char* bytes, size_t length, const wxString& name);
    bool Refuse(Error error, size_t line = 0);

    Encoding m_eEncoding = kEncodingAuto;
    wchar_t m_cSeparator = 0;
    wchar_t m_cDecimalMark = 0;
    int m_iSkipLines = 0;
    int m_iHeaderLines = -1;
    std::vector<double> m_adMissing;

    Error m_eError = kErrorNone;
    size_t m_iErrorLine = 0;
    Encoding m_eUsedEncoding = kEncodingAuto;
    wchar_t m_cUsedSeparator = 0;
    wchar_t m_cUsedDecimalMark = 0;
    int m_iHeaderCount = 0;
    size_t m_iRows = 0;
    int m_iColumns = 0;
    size_t m_iInvalid = 0;
    std::vector<ColumnReport> m_aColumns;
    int m_iAbscissa = 0;
    AbscissaReason m_eAbscissaReason = kAbscissaFirstColumn;
    wxString m_sStart;
};

#endif
