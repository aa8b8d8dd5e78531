// The values a table's cells hold: numbers (either decimal mark), markers of missing values,
// clock times and dates. Each cell is read on its own; what a column is follows from its cells.
#ifndef VYRBASE_FILE_TABLEVALUES_H
#define VYRBASE_FILE_TABLEVALUES_H

#include <cstdint>
#include <string_view>

namespace vyrtable {

// How numbers are written in the table.
struct NumberStyle {
    bool point = true;  // "." is a decimal mark
    bool comma = true;  // "," is a decimal mark
};

// A cell read as a number: the whole cell must be one (an optional sign, digits with at most
// one decimal mark, an optional exponent). "NaN", infinities, hexadecimal forms, numbers out of
// the range of a double and anything followed by text are not numbers. `commaRead` is set when
// a comma was read as the decimal mark.
bool ReadNumber(std::string_view cell, const NumberStyle& style, double& value,
                bool* commaRead = nullptr);

// Whether a cell is a number as ReadNumber reads it, by its characters alone (a table's first
// walk tells the columns apart without converting): kMaybe for a number with an exponent, whose
// range only ReadNumber knows.
enum NumberShape { kNotNumber, kNumberShape, kMaybeNumber };
NumberShape ShapeOfNumber(std::string_view cell, const NumberStyle& style);

// A marker of a missing value: nothing, or a lone "-", "NaN", "NA", "n/a", "M", "null",
// "none", "---" (any case). Such a cell is a hole, not a text.
bool IsMissingMarker(std::string_view cell);

// A moment read from a cell: whole days since 1970-01-01 and seconds into that day (a time
// zone offset already taken away, so they may pass either end of the day).
struct Instant {
    enum Kind { kNone, kClock, kDate, kDateTime };
    Kind kind = kNone;
    int64_t days = 0;
    double seconds = 0.0;
};

// How the day and month of "a/b/yyyy" are ordered: day first unless a cell proves otherwise.
struct SlashOrder {
    bool monthFirst = false;
    // Set by ReadInstant when a cell can be read only one way.
    bool seenDayAbove12 = false;
    bool seenMonthAbove12 = false;
};

// A cell read as a clock time ("10:00", "10:00:30.25", "10:00:30 PM"), a date ("2026-04-01",
// "01.04.2026", "2026/04/01", "01/04/2026") or both ("2026-04-01T00:00:30Z",
// "01.04.2026 00:00:30", "2026-04-01 00:00:30+02:00"). kNone for anything else.
Instant ReadInstant(std::string_view cell, SlashOrder& order);

// A stamp of digits "yyyyMMdd", "yyyyMMddHH", "yyyyMMddHHmm" or "yyyyMMddHHmmss" as a moment; kNone
// when the digits are no valid date. Only a column whose heading names a date is read so.
Instant ReadStamp(std::string_view cell);

// What a cell is, for telling the columns apart.
enum CellKind { kCellHole, kCellNumber, kCellInstant, kCellText };

}  // namespace vyrtable

#endif
