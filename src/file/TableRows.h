// The rows of a table: what each cell is (for telling the columns apart), and the reading of
// one row into the columns' storage once the columns are known. RowReader takes one line at a
// time and keeps no more than the abscissa's start between lines, so that rows arriving one by
// one are read as the rows of a file are.
#ifndef VYRBASE_FILE_TABLEROWS_H
#define VYRBASE_FILE_TABLEROWS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "TableText.h"
#include "TableValues.h"

class VyrBitMask;

namespace vyrtable {

// How the cells' numbers are read: unquoted cells with the table's decimal mark; quoted cells
// also with a comma where the setting allows one (the quotes keep it from separating). A number
// equal to one of `missing` is a hole.
struct CellReading {
    NumberStyle plain;
    NumberStyle quoted;
    std::vector<double> missing;

    bool Number(const Cell<char>& cell, double& value, bool* commaRead = nullptr) const;
};

// One cell as the first walk sees it.
struct CellSeen {
    CellKind kind = kCellHole;
    Instant::Kind instant = Instant::kNone;
    bool stamp = false;  // a number that is also a "yyyyMMdd[HHmm[ss]]" stamp
    bool dayAbove12 = false, monthAbove12 = false;
};
CellSeen See(const Cell<char>& cell, const CellReading& reading);

// What the first walk counts in one column, over the lines that are rows.
struct ColumnTally {
    size_t numbers = 0;
    size_t texts = 0;
    size_t clocks = 0;
    size_t dates = 0;
    size_t dateTimes = 0;
    size_t stamps = 0;
    SlashOrder order;

    void Add(const CellSeen& cell);
    size_t Instants() const { return clocks + dates + dateTimes; }
};

// One column of the document while the rows are read: where its numbers go, the last number
// seen (which invalid points hold), how many invalid points precede its first number, and the
// range of its numbers.
struct TableColumn {
    double* values = nullptr;
    VyrBitMask* validity = nullptr;
    bool seen = false;
    double last = 0.0;
    size_t leading = 0;
    double lo = 0.0, hi = 0.0;

    void Put(size_t row, bool ok, double value);
    // Invalid points before the first number take that number.
    void Finish();
};

// What a column of the table becomes.
struct ColumnRole {
    enum Kind {
        kSkip,       // left out
        kNumber,     // numbers into `target`
        kInstant,    // the abscissa: clock times, dates or both, in one cell
        kStamp,      // the abscissa: "yyyyMMddHHmm" stamps
        kJoinDate,   // the abscissa's date, its time of day in a kJoinClock column
        kJoinClock,  // the abscissa's time of day
    };
    Kind kind = kSkip;
    int target = -1;
    SlashOrder order;
    // A kInstant column of clock times takes clock times only, one of dates dates only (with
    // or without their time): a cell of the other kind is a hole.
    bool clock = false;
};

class RowReader {
public:
    // `roles` for the table's columns in order; `timeTarget` the column of the document that
    // the moments go into as seconds from the first one, -1 when the abscissa is no time.
    RowReader(wchar_t separator, const CellReading& reading, std::vector<ColumnRole> roles,
              int timeTarget);

    // Reads one row into the targets at `row`: a cell that is no number (or no moment) is an
    // invalid point, and so is every cell the line lacks.
    void Read(std::string_view line, size_t row, std::vector<TableColumn>& targets);

    // Whether a comma was read as a decimal mark.
    bool CommaRead() const { return m_bCommaRead; }
    // The first moment of the abscissa as its cells wrote it; empty before one.
    const std::string& Start() const { return m_sStart; }

private:
    wchar_t m_cSeparator;
    const CellReading& m_reading;
    std::vector<ColumnRole> m_roles;
    int m_iTimeTarget;
    bool m_bCommaRead = false;
    std::string m_sStart;
    bool m_bBase = false;
    int64_t m_iBaseDays = 0;
    double m_dBaseSeconds = 0.0;
    // Clock times without a date: a time more than half a day before the previous one is on
    // the next day.
    bool m_bClockSeen = false;
    double m_dLastClock = 0.0;
    int64_t m_iClockDays = 0;
};

}  // namespace vyrtable

#endif
