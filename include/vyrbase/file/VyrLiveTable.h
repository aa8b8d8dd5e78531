// A text table read as its bytes arrive (a logger's file that grows, a pipe, a serial line),
// appended to a document as the acquisition side of an application appends its measurements.
//
//     VyrTableImport settings;              // the import's settings, detection included
//     VyrLiveTable live(doc, settings);
//     live.Start(L"mesures 2026-04-01 10:00:00");
//     while (read(fd, buffer, size) > 0)    // any cut: a line split across reads is joined
//         live.Feed(buffer, got);
//     live.Finish();                        // the last line, even without its end
//
// The lines are read by the import's own rules (VyrTableImport: header, names and units,
// separator, decimal mark, quotes, comments, clock times and dates as seconds from the first),
// decided over the lines that arrived up to the first rows: the header is kept (never more than
// kMaxHeaderBytes) until a batch of bytes holds a row, and the layout is then decided over
// those lines as the import decides it over a file. From then on each line is one row, read
// with the same reader as the import's rows, and nothing of it is kept but its numbers.
//
// Each row's values are appended with VyrBaseData::AddPoint to the curves of one experiment
// (named as Start says; one curve per column after the abscissa, its name, quantity and unit
// from the heading, its colour as the import gives it). A cell that is no number is an invalid
// point (ValidePoint) holding the column's previous number, its first one before it, as the
// import does. A line whose abscissa cannot be read, or of which no value can be, is no row: it
// is skipped and counted, and the recording goes on. Blank lines and comment lines ("#") are
// neither rows nor skipped lines.
//
// Notifications: CreateExperience and CreateCourbe send codes 13 and 11 when the layout is
// decided; each point is appended with AddPoint's notification (code 1 and the curve), as an
// application that acquires its own points does, so that the diagrams follow point by point at
// the cost of what changed. A cell that is no number is marked invalid after its point came, and
// at the end of each Feed (one batch of rows) the curves' own scales take the batch's extremes and
// each curve is announced once more with code 1, so that the marks and scales reach the diagrams.
//
// Refused: lines before the first row that are binary (a zero byte) or not in the encoding set
// stop the reading (GetError; later Feed calls do nothing); after it, such a line is one more
// line that is no row. A line above VyrTableImport::kMaxLineUnits is skipped.
// Threads: one thread, the document's. No exceptions: memory running out stops the
// reading with kErrorMemory and the points appended so far stay.
#ifndef VYRBASE_FILE_VYRLIVETABLE_H
#define VYRBASE_FILE_VYRLIVETABLE_H

#include <cstddef>
#include <memory>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/file/VyrTableImport.h"

class VyrBaseData;
class VyrExperience;

class VYRBASE_API VyrLiveTable {
public:
    // The header kept while no row arrived: a source that sends nothing but text for longer is
    // refused (kErrorNoNumericRow).
    static const size_t kMaxHeaderBytes = size_t(4) << 20;

    // Reads into `doc` with the settings of `settings` (encoding, separator, decimal mark,
    // lines skipped, header lines, missing values), taken now. `doc` outlives this reader.
    VyrLiveTable(VyrBaseData& doc, const VyrTableImport& settings);
    ~VyrLiveTable();
    VyrLiveTable(const VyrLiveTable&) = delete;
    VyrLiveTable& operator=(const VyrLiveTable&) = delete;

    // A new table begins: the bytes that follow are read from their header on, into a new
    // experiment named `name` (made unique in the document with " (2)", " (3)"...), created with
    // its first row. A line left unfinished by the previous table is dropped. Also clears an
    // error, so that a source read again from its start is read afresh.
    void Start(const wxString& name);
    // Reads the complete lines of `bytes` (with what was left of the previous call); answers the
    // rows appended.
    size_t Feed(const void* bytes, size_t length);
    // The end of the input: the last line is read even without its end, and a header that never
    // got a row is refused (GetError: kErrorNoNumericRow, or kErrorEmpty when nothing came).
    // Answers the rows appended.
    size_t Finish();

    // No more than `rows` rows in all (0: no limit): the lines after the last are left unread.
    void SetRowLimit(size_t rows);
    // Whether the limit is reached.
    bool IsFull() const;

    // kErrorNone, or why the reading stopped.
    VyrTableImport::Error GetError() const;
    // Rows appended, lines skipped and invalid cells in the rows appended, since construction.
    size_t GetRowCount() const;
    size_t GetSkippedCount() const;
    size_t GetInvalidCount() const;
    // The experiment the rows go into; null before its first row.
    VyrExperience* GetExperience() const;
    // The separator the current table is read with (L' ' for runs of blanks), 0 before its first
    // row.
    wchar_t GetUsedSeparator() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

#endif
