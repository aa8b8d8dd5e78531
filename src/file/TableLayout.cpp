// The layout of a table, decided by a first walk over its lines that keeps no number: the
// separator, the header and its names and units, where the rows begin and what each column is.
#include "TableLayout.h"

#include <algorithm>
#include <climits>
#include <string>

#include "TableHeadings.h"
#include "TableValues.h"

namespace vyrtable {

namespace {

// A line before the rows, kept by its place in the text.
struct HeaderLine {
    size_t begin = 0, end = 0;
    size_t width = 0;
};
// Only the last header lines can name the columns.
const size_t kHeaderLinesKept = 16;

void KeepHeaderLine(std::vector<HeaderLine>& header, const HeaderLine& line) {
    if (header.size() == kHeaderLinesKept)
        header.erase(header.begin());
    header.push_back(line);
}

// What the first walk finds in one line: its cells as seen, the number of cells up to the last
// with content, whether it is a row (more numbers and moments than text), whether its first
// cell is a number or a moment, and whether it could be a heading.
struct LineShape {
    std::vector<CellSeen> cells;
    size_t width = 0;
    bool row = false;
    bool firm = false;
    bool heading = false;  // no number nor moment in it
};

void ShapeOf(std::string_view line, wchar_t separator, const CellReading& reading,
             LineShape& shape) {
    shape.cells.clear();
    shape.width = 0;
    size_t values = 0, texts = 0;
    SplitCells(line, separator, [&](const Cell<char>& cell) {
        shape.cells.push_back(See(cell, reading));
        const CellSeen& seen = shape.cells.back();
        if (!cell.content.empty())
            shape.width = shape.cells.size();
        values += seen.kind == kCellNumber || seen.kind == kCellInstant;
        texts += seen.kind == kCellText;
    });
    shape.row = values > 0 && values >= texts;
    shape.heading = values == 0;
    shape.firm = !shape.cells.empty() &&
                 (shape.cells[0].kind == kCellNumber || shape.cells[0].kind == kCellInstant);
}

}  // namespace

VyrTableImport::Error FindLayout(const Units& text, VyrTableImport::Encoding encoding,
                                 const TableSettings& settings, TableLayout& layout,
                                 size_t& errorLine) {
    auto refuse = [&errorLine](VyrTableImport::Error error, size_t line = 0) {
        errorLine = line;
        return error;
    };
    errorLine = 0;
    layout = TableLayout();
    CellReading& reading = layout.reading;
    reading.plain.point = settings.decimalMark != L',';
    reading.plain.comma = settings.decimalMark != L'.';
    reading.quoted = reading.plain;
    reading.missing = settings.missing;

    // ---- First walk: separator, header, rows, what each column holds -------------------
    Lines lines(text);
    std::string_view line;
    for (int k = 0; k < settings.skipLines && lines.Next(line); ++k) {
    }
    if (lines.TooLong())
        return refuse(VyrTableImport::kErrorLineTooLong, lines.Number());
    const LineMark tableStart = lines.Mark();

    wchar_t separator = settings.separator;
    if (separator == 0) {
        std::vector<std::string> sample;
        while (static_cast<int>(sample.size()) < VyrTableImport::kSampleLines && lines.Next(line))
            if (line.find_first_not_of(" \t") != std::string_view::npos && !IsCommentLine(line))
                sample.emplace_back(line);
        if (lines.TooLong())
            return refuse(VyrTableImport::kErrorLineTooLong, lines.Number());
        separator = GuessSeparator(sample, settings.decimalMark == L',');
        if (separator == 0)  // one column: nothing splits its lines
            separator = settings.decimalMark == L',' ? L';' : L',';
        lines.Seek(tableStart);
    }
    layout.separator = separator;
    // A comma that separates cells is no decimal mark, unless quotes hold it.
    if (separator == L',')
        reading.plain.comma = false;

    const bool headerSet = settings.headerLines >= 0;
    std::vector<HeaderLine> header;
    // Non-row lines since the last row: a footer, rows of holes, or (before the first
    // firm row) the heading that ends a preamble.
    std::vector<HeaderLine> since;
    std::vector<ColumnTally> tallies;
    LineShape shape;
    bool started = false, firm = false, preamble = false;
    LineMark rowsStart, before = lines.Mark();
    size_t rows = 0, pending = 0, columns = 0, pendingWidth = 0;
    int headerCount = 0, linesSinceStart = 0;
    while (lines.Next(line)) {
        const LineMark here = before;
        before = lines.Mark();
        ShapeOf(line, separator, reading, shape);
        if (shape.cells.size() > static_cast<size_t>(VyrTableImport::kMaxColumns))
            return refuse(VyrTableImport::kErrorTooManyCells, lines.Number());
        if (shape.width == 0)
            continue;
        const HeaderLine place{lines.Begin(), lines.End(), shape.width};
        if (IsCommentLine(line)) {
            headerCount += !started;
            continue;
        }
        if (!started) {
            if (headerSet ? headerCount < settings.headerLines : !shape.row) {
                ++headerCount;
                KeepHeaderLine(header, place);
                continue;
            }
            started = true;
            rowsStart = here;
        }
        ++linesSinceStart;
        if (!shape.row) {
            ++pending;
            pendingWidth = std::max(pendingWidth, shape.width);
            since.push_back(place);
            if (since.size() > kHeaderLinesKept)
                since.erase(since.begin());
            // A heading after lines none of which began with a number, or all narrower
            // than it: they were a preamble ("Rate;100", "Start;2026-04-01", a title that
            // is a date).
            preamble = preamble || (!headerSet && shape.heading && shape.width >= 2 &&
                                    (!firm || columns < shape.width));
            continue;
        }
        if (preamble) {
            headerCount += linesSinceStart - 1;
            for (const HeaderLine& h : since)
                KeepHeaderLine(header, h);
            tallies.clear();
            rowsStart = here;
            rows = pending = columns = pendingWidth = 0;
            linesSinceStart = 1;
            preamble = firm = false;
        }
        since.clear();
        rows += pending + 1;
        pending = 0;
        columns = std::max({columns, pendingWidth, shape.width});
        pendingWidth = 0;
        firm = firm || shape.firm;
        if (tallies.size() < shape.cells.size())
            tallies.resize(shape.cells.size());
        for (size_t k = 0; k < shape.cells.size(); ++k)
            tallies[k].Add(shape.cells[k]);
    }
    if (lines.TooLong())
        return refuse(VyrTableImport::kErrorLineTooLong, lines.Number());
    if (rows == 0)
        return refuse(VyrTableImport::kErrorNoNumericRow);
    if (rows > static_cast<size_t>(INT_MAX - 200))
        return refuse(VyrTableImport::kErrorMemory);
    layout.headerCount = headerCount;

    // ---- The names, and the units under them --------------------------------------------
    std::vector<wxString> quantities, units;
    {
        const size_t need = columns >= 2 ? std::max<size_t>(2, (columns + 1) / 2) : 1;
        int names = -1, unitsLine = -1;
        for (int k = static_cast<int>(header.size()) - 1; k >= 0 && names < 0; --k)
            if (header[k].width >= need)
                names = k;
        std::vector<wxString> headings, unitCells;
        if (names >= 0) {
            headings = HeadingCells(Decode(text, encoding, header[names].begin, header[names].end),
                                    separator);
            // A line of units only gives the units of the names on the line above.
            std::vector<wxString> above;
            if (names > 0)
                above = HeadingCells(
                    Decode(text, encoding, header[names - 1].begin, header[names - 1].end),
                    separator);
            std::vector<wxString> aboveAsUnits = above;
            if (names > 0 && (IsUnitsLine(headings, false) ||
                              (header[names - 1].width >= need &&
                               !IsUnitsLine(aboveAsUnits, true) && IsUnitsLine(headings, true)))) {
                unitsLine = names--;
                unitCells.swap(headings);
                headings.swap(above);
            }
        }
        // A named column is a column, even when no row has a cell in it.
        if (names >= 0)
            columns = std::max(columns, header[names].width);
        if (unitsLine >= 0)
            columns = std::max(columns, header[unitsLine].width);
        quantities.resize(columns);
        units.resize(columns);
        for (size_t k = 0; k < columns; ++k) {
            if (k < headings.size())
                SplitHeading(headings[k], quantities[k], units[k]);
            if (k < unitCells.size() && !unitCells[k].empty())
                units[k] = PlainUnit(unitCells[k]);
            if (IsBlankText(quantities[k]))
                quantities[k] = wxString::Format(L"C%d", static_cast<int>(k + 1));
        }
    }

    // ---- What each column is, and which is the abscissa ---------------------------------
    tallies.resize(columns);
    std::vector<ColumnRole> roles(columns);
    layout.reports.resize(columns);
    int dateColumn = -1, clockColumn = -1, timeColumn = -1;
    std::vector<size_t> numeric;
    for (size_t k = 0; k < columns; ++k) {
        const ColumnTally& t = tallies[k];
        VyrTableImport::ColumnReport& report = layout.reports[k];
        report.quantity = quantities[k];
        report.unit = units[k];
        roles[k].order.monthFirst = t.order.seenMonthAbove12 && !t.order.seenDayAbove12;
        if (t.texts > t.numbers + t.Instants()) {
            report.use = VyrTableImport::kColumnText;
        } else if (t.Instants() > 0 && t.Instants() >= t.numbers) {
            report.use = VyrTableImport::kColumnMoreTime;
            roles[k].kind = ColumnRole::kInstant;
            roles[k].clock = t.clocks > t.dates + t.dateTimes;
            if (t.dates > t.clocks + t.dateTimes && dateColumn < 0)
                dateColumn = static_cast<int>(k);
            else if (t.clocks > t.dates + t.dateTimes && clockColumn < 0)
                clockColumn = static_cast<int>(k);
            if (timeColumn < 0)
                timeColumn = static_cast<int>(k);
        } else if (t.numbers > 0 && t.stamps == t.numbers && NamesDateOrTime(quantities[k])) {
            report.use = VyrTableImport::kColumnMoreTime;
            roles[k].kind = ColumnRole::kStamp;
            if (timeColumn < 0)
                timeColumn = static_cast<int>(k);
        } else {
            numeric.push_back(k);
        }
    }
    // The abscissa: a date and a time of day, or a moment, or the first column of numbers.
    int xColumn = -1;
    wxString xQuantity, xUnit;
    std::vector<size_t> curveColumns;
    if (dateColumn >= 0 && clockColumn >= 0) {
        xColumn = dateColumn;
        layout.reason = VyrTableImport::kAbscissaDateAndTime;
        roles[dateColumn].kind = ColumnRole::kJoinDate;
        roles[clockColumn].kind = ColumnRole::kJoinClock;
        layout.reports[clockColumn].use = VyrTableImport::kColumnAbscissa;
        xQuantity = quantities[clockColumn];
    } else if (timeColumn >= 0) {
        xColumn = timeColumn;
        layout.reason = VyrTableImport::kAbscissaTime;
        xQuantity = quantities[timeColumn];
    }
    if (xColumn >= 0) {
        layout.reports[xColumn].use = VyrTableImport::kColumnAbscissa;
        xUnit = L"s";
        curveColumns = numeric;
    } else if (numeric.size() >= 2) {
        xColumn = static_cast<int>(numeric[0]);
        layout.reason = xColumn == 0 ? VyrTableImport::kAbscissaFirstColumn
                                     : VyrTableImport::kAbscissaFirstNumberColumn;
        layout.reports[xColumn].use = VyrTableImport::kColumnAbscissa;
        xQuantity = quantities[xColumn];
        xUnit = units[xColumn];
        curveColumns.assign(numeric.begin() + 1, numeric.end());
    } else {
        curveColumns = numeric;
    }
    // A table of one column (of numbers or of moments) is plotted against the row number.
    bool byIndex = false;
    if (curveColumns.empty()) {
        if (xColumn < 0)
            return refuse(VyrTableImport::kErrorNoNumericRow);
        curveColumns.push_back(static_cast<size_t>(xColumn));
        layout.reports[xColumn].use = VyrTableImport::kColumnCurve;
        byIndex = true;
    } else if (xColumn < 0) {
        byIndex = true;
    }
    if (byIndex) {
        layout.reason = VyrTableImport::kAbscissaRowNumber;
        xQuantity = L"n";
        xUnit.clear();
    }
    // An abscissa without a single number is none.
    {
        const size_t source = byIndex ? curveColumns[0] : static_cast<size_t>(xColumn);
        const ColumnTally& t = tallies[source];
        if (t.numbers + t.Instants() == 0)
            return refuse(VyrTableImport::kErrorNoNumericRow);
    }
    const bool timed =
        roles[byIndex ? curveColumns[0] : static_cast<size_t>(xColumn)].kind != ColumnRole::kSkip;
    for (size_t k = 0; k < columns; ++k)
        if (roles[k].kind == ColumnRole::kInstant &&
            layout.reports[k].use == VyrTableImport::kColumnMoreTime)
            roles[k].kind = ColumnRole::kSkip;
    for (size_t k = 0; k < columns; ++k)
        if (roles[k].kind == ColumnRole::kStamp &&
            layout.reports[k].use == VyrTableImport::kColumnMoreTime)
            roles[k].kind = ColumnRole::kSkip;

    // The targets the rows are read into.
    for (size_t k = 0; k < curveColumns.size(); ++k) {
        if (roles[curveColumns[k]].kind == ColumnRole::kSkip)
            roles[curveColumns[k]].kind = ColumnRole::kNumber;
        roles[curveColumns[k]].target = static_cast<int>(k + 1);
    }
    if (!byIndex && !timed) {
        roles[xColumn].kind = ColumnRole::kNumber;
        roles[xColumn].target = 0;
    }
    layout.rows = rows;
    layout.columns = columns;
    layout.rowsStart = rowsStart;
    layout.quantities.swap(quantities);
    layout.units.swap(units);
    layout.roles.swap(roles);
    layout.curveColumns.swap(curveColumns);
    layout.xColumn = xColumn;
    layout.clockColumn = clockColumn;
    layout.byIndex = byIndex;
    layout.timed = timed;
    layout.timeTarget = !timed ? -1 : byIndex ? 1 : 0;
    layout.xQuantity = xQuantity;
    layout.xUnit = xUnit;
    return VyrTableImport::kErrorNone;
}

// Whether a line has a cell with content (the first walk's width, without cutting the line
// when it holds no quote: every other character then lands in a cell).
bool HasContent(std::string_view line, wchar_t separator) {
    if (line.find('"') != std::string_view::npos) {
        size_t width = 0, cells = 0;
        SplitCells(line, separator, [&](const Cell<char>& cell) {
            ++cells;
            if (!cell.content.empty())
                width = cells;
        });
        return width > 0;
    }
    for (char c : line)
        if (c != ' ' && c != '\t' && static_cast<wchar_t>(c) != separator)
            return true;
    return false;
}

// The colours given to the curves in column order: red first, as for any new curve.
const wxColour& CurveColour(size_t k) {
    static const wxColour kColours[] = {
        wxColour(255, 0, 0),   wxColour(0, 90, 200),  wxColour(0, 150, 0),   wxColour(230, 130, 0),
        wxColour(150, 0, 170), wxColour(0, 150, 150), wxColour(140, 80, 20), wxColour(90, 90, 90),
    };
    return kColours[k % (sizeof kColours / sizeof kColours[0])];
}

}  // namespace vyrtable
