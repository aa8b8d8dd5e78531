// Importing a text table, as spreadsheets, data loggers and phone sensor apps write them, into a
// document: one experiment named after the file; the first column is the abscissa and every
// further column becomes one curve, with its own two vectors (a copy of the first column and
// the column itself), quantity names and units taken from the header.
//
//     VyrTableImport import;            // everything detected...
//     import.SetSeparator(L';');        // ...or set, one setting at a time
//     if (!import.ImportFile(doc, L"mesures.csv"))
//         report(import.GetError());
//
// What is detected, each with its setting:
// - encoding: UTF-16 with its mark (either byte order), UTF-8 with its mark, UTF-8 without one
//   when the bytes are valid UTF-8, else ISO-8859-1;
// - separator: the first of tab, ";", "," and runs of blanks (spaces or tabs) that splits
//   most of the table's first lines into several cells;
// - decimal mark: a point always; a comma too unless the separator is ",";
// - header lines: those before the first row whose first cell is a number. The last of them
//   that holds text names the columns: "name (unit)", "name [unit]", "name/unit", or a name
//   without unit (an empty unit); when that last line holds units only ("(s)", "[V]"), they are
//   the units of the names on the line above. Without header the columns are named C1, C2...;
// - line ends CRLF, LF or CR; cells in double quotes may hold separators, a doubled quote
//   standing for one. A quote left open ends with its line.
//
// Rows: every line from the first numeric row on that holds anything (blank lines and lines of
// empty cells are no rows). A cell that is empty or is not a number as a whole ("NaN", "---",
// text, "12 V") is an invalid point of its vector, and a row shorter than the table has invalid
// points for its missing cells: no row is dropped and no missing cell reads as a valid number.
// An invalid point holds the column's previous number (its next one before the first), because
// the automatic ranges of the diagrams count invalid points too. Empty cells at the end of every
// row (a trailing separator) make no column unless the header names it. A table of one column
// is plotted against the row number, 0, 1, 2... (quantity "n").
//
// Quantities stay as the headings say, also when two columns have the same; the curves are
// named after them, made unique in the experiment with 1, 2... ("U", "U1").
//
// The document is replaced as a load replaces it: emptied, then the experiment and its curves
// (shown in diagram 0, each in a colour of its own), then VYR_MSG_FILE_LOADED (8) to the
// observers, so that the diagrams show the new curves. A refused table leaves the document as
// it was and notifies nothing: a file that cannot be read, an empty file, a binary one (a zero
// byte outside UTF-16), a line above 1 MiB, a row of more than 16384 cells, a table without a
// row that begins with a number, bytes that are not the encoding that was set.
//
// Threads: one import per document at a time. Errors: no exceptions; false and GetError.
#ifndef VYRBASE_FILE_VYRTABLEIMPORT_H
#define VYRBASE_FILE_VYRTABLEIMPORT_H

#include <cstddef>

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
        kErrorNoNumericRow,  // no row (after the header lines) begins with a number
        kErrorMemory,        // memory ran out while the document was built (it is emptied)
    };

    static const size_t kMaxLineUnits = size_t(1) << 20;
    static const int kMaxColumns = 16384;
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
    // Header lines (with content) before the rows, rows, columns (the first included) and
    // invalid cells of the columns kept.
    int GetHeaderLineCount() const { return m_iHeaderCount; }
    size_t GetRowCount() const { return m_iRows; }
    int GetColumnCount() const { return m_iColumns; }
    size_t GetInvalidCount() const { return m_iInvalid; }

private:
    bool Import(VyrBaseData& doc, const unsigned char* bytes, size_t length, const wxString& name);
    bool Refuse(Error error, size_t line = 0);

    Encoding m_eEncoding = kEncodingAuto;
    wchar_t m_cSeparator = 0;
    wchar_t m_cDecimalMark = 0;
    int m_iSkipLines = 0;
    int m_iHeaderLines = -1;

    Error m_eError = kErrorNone;
    size_t m_iErrorLine = 0;
    Encoding m_eUsedEncoding = kEncodingAuto;
    wchar_t m_cUsedSeparator = 0;
    wchar_t m_cUsedDecimalMark = 0;
    int m_iHeaderCount = 0;
    size_t m_iRows = 0;
    int m_iColumns = 0;
    size_t m_iInvalid = 0;
};

#endif
