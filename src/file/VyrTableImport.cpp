// Importing a text table into a document. The bytes are read in place, twice: a first walk
// finds the header, the rows and what each column holds without keeping a number, so that a
// refused table leaves the document untouched and the vectors get exactly their size; a second
// walk converts every cell straight into the vectors' storage. Only the header lines are
// decoded into wide text: a table of millions of rows is never held as wide characters, and
// UTF-16 lines are narrowed one at a time for reading their numbers. The text and its cells
// (TableText), headings and units (TableHeadings), numbers and moments (TableValues) and the
// rows (TableRows) each have a file of their own; this one decides and builds.
#include "vyrbase/file/VyrTableImport.h"

#include <algorithm>
#include <climits>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <wx/file.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/log.h>

#include "TableHeadings.h"
#include "TableRows.h"
#include "TableText.h"
#include "TableValues.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

using namespace vyrtable;

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

}  // namespace

VyrTableImport::VyrTableImport() = default;

bool VyrTableImport::SetSeparator(wchar_t separator) {
    if (separator == L'"' || separator == L'\r' || separator == L'\n' || separator == L'.' ||
        (separator >= L'0' && separator <= L'9') || separator > 0x7F)
        return false;
    m_cSeparator = separator;
    return true;
}

bool VyrTableImport::SetDecimalMark(wchar_t mark) {
    if (mark != 0 && mark != L'.' && mark != L',')
        return false;
    m_cDecimalMark = mark;
    return true;
}

void VyrTableImport::ReadHeading(const wxString& heading, wxString& quantity, wxString& unit) {
    SplitHeading(heading, quantity, unit);
}

bool VyrTableImport::Refuse(Error error, size_t line) {
    m_eError = error;
    m_iErrorLine = line;
    return false;
}

bool VyrTableImport::ImportFile(VyrBaseData& doc, const wxString& path) {
    wxLogNull quiet;
    m_eError = kErrorNone;
    std::unique_ptr<unsigned char[]> bytes;
    size_t length = 0;
    try {
        wxFile file;
        if (wxDirExists(path) || !file.Open(path, wxFile::read))
            return Refuse(kErrorCannotRead);
        const wxFileOffset size = file.Length();
        if (size < 0 || static_cast<unsigned long long>(size) > SIZE_MAX - 1)
            return Refuse(kErrorCannotRead);
        length = static_cast<size_t>(size);
        bytes.reset(new (std::nothrow) unsigned char[length + 1]);
        if (!bytes)
            return Refuse(kErrorMemory);
        size_t done = 0;
        while (done < length) {
            const ssize_t got = file.Read(bytes.get() + done, length - done);
            if (got == wxInvalidOffset)
                return Refuse(kErrorCannotRead);
            if (got == 0) {
                length = done;  // the file shrank meanwhile
                break;
            }
            done += static_cast<size_t>(got);
        }
    } catch (const std::bad_alloc&) {
        return Refuse(kErrorMemory);
    }
    return Import(doc, bytes.get(), length, wxFileName(path).GetName());
}

bool VyrTableImport::ImportMemory(VyrBaseData& doc, const void* bytes, size_t length,
                                  const wxString& name) {
    wxLogNull quiet;
    m_eError = kErrorNone;
    if (!bytes && length > 0)
        return Refuse(kErrorCannotRead);
    static const unsigned char kNothing[1] = {0};
    return Import(doc, bytes ? static_cast<const unsigned char*>(bytes) : kNothing, length,
                  name.empty() ? wxGetTranslation(L"IDS_EXPERIENCE1") : name);
}

bool VyrTableImport::Import(VyrBaseData& doc, const unsigned char* bytes, size_t length,
                            const wxString& name) {
    m_iErrorLine = 0;
    m_iHeaderCount = 0;
    m_iRows = 0;
    m_iColumns = 0;
    m_iInvalid = 0;
    m_aColumns.clear();
    m_iAbscissa = 0;
    m_eAbscissaReason = kAbscissaFirstColumn;
    m_sStart.clear();

    Units text;
    Encoding encoding = kEncodingAuto;
    const Error opened = OpenText(bytes, length, m_eEncoding, text, encoding);
    if (opened != kErrorNone)
        return Refuse(opened);
    m_eUsedEncoding = encoding;

    CellReading reading;
    reading.plain.point = m_cDecimalMark != L',';
    reading.plain.comma = m_cDecimalMark != L'.';
    reading.quoted = reading.plain;
    reading.missing = m_adMissing;
    bool touched = false;

    try {
        // ---- First walk: separator, header, rows, what each column holds -------------------
        Lines lines(text);
        std::string_view line;
        for (int k = 0; k < m_iSkipLines && lines.Next(line); ++k) {
        }
        if (lines.TooLong())
            return Refuse(kErrorLineTooLong, lines.Number());
        const LineMark tableStart = lines.Mark();

        wchar_t separator = m_cSeparator;
        if (separator == 0) {
            std::vector<std::string> sample;
            while (static_cast<int>(sample.size()) < kSampleLines && lines.Next(line))
                if (line.find_first_not_of(" \t") != std::string_view::npos && !IsCommentLine(line))
                    sample.emplace_back(line);
            if (lines.TooLong())
                return Refuse(kErrorLineTooLong, lines.Number());
            separator = GuessSeparator(sample, m_cDecimalMark == L',');
            if (separator == 0)  // one column: nothing splits its lines
                separator = m_cDecimalMark == L',' ? L';' : L',';
            lines.Seek(tableStart);
        }
        m_cUsedSeparator = separator;
        // A comma that separates cells is no decimal mark, unless quotes hold it.
        if (separator == L',')
            reading.plain.comma = false;

        const bool headerSet = m_iHeaderLines >= 0;
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
            if (shape.cells.size() > static_cast<size_t>(kMaxColumns))
                return Refuse(kErrorTooManyCells, lines.Number());
            if (shape.width == 0)
                continue;
            const HeaderLine place{lines.Begin(), lines.End(), shape.width};
            if (IsCommentLine(line)) {
                headerCount += !started;
                continue;
            }
            if (!started) {
                if (headerSet ? headerCount < m_iHeaderLines : !shape.row) {
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
            return Refuse(kErrorLineTooLong, lines.Number());
        if (rows == 0)
            return Refuse(kErrorNoNumericRow);
        if (rows > static_cast<size_t>(INT_MAX - 200))
            return Refuse(kErrorMemory);
        m_iHeaderCount = headerCount;

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
                headings = HeadingCells(
                    Decode(text, encoding, header[names].begin, header[names].end), separator);
                // A line of units only gives the units of the names on the line above.
                std::vector<wxString> above;
                if (names > 0)
                    above = HeadingCells(
                        Decode(text, encoding, header[names - 1].begin, header[names - 1].end),
                        separator);
                std::vector<wxString> aboveAsUnits = above;
                if (names > 0 &&
                    (IsUnitsLine(headings, false) ||
                     (header[names - 1].width >= need && !IsUnitsLine(aboveAsUnits, true) &&
                      IsUnitsLine(headings, true)))) {
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
        m_aColumns.resize(columns);
        int dateColumn = -1, clockColumn = -1, timeColumn = -1;
        std::vector<size_t> numeric;
        for (size_t k = 0; k < columns; ++k) {
            const ColumnTally& t = tallies[k];
            ColumnReport& report = m_aColumns[k];
            report.quantity = quantities[k];
            report.unit = units[k];
            roles[k].order.monthFirst = t.order.seenMonthAbove12 && !t.order.seenDayAbove12;
            if (t.texts > t.numbers + t.Instants()) {
                report.use = kColumnText;
            } else if (t.Instants() > 0 && t.Instants() >= t.numbers) {
                report.use = kColumnMoreTime;
                roles[k].kind = ColumnRole::kInstant;
                roles[k].clock = t.clocks > t.dates + t.dateTimes;
                if (t.dates > t.clocks + t.dateTimes && dateColumn < 0)
                    dateColumn = static_cast<int>(k);
                else if (t.clocks > t.dates + t.dateTimes && clockColumn < 0)
                    clockColumn = static_cast<int>(k);
                if (timeColumn < 0)
                    timeColumn = static_cast<int>(k);
            } else if (t.numbers > 0 && t.stamps == t.numbers && NamesDateOrTime(quantities[k])) {
                report.use = kColumnMoreTime;
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
            m_eAbscissaReason = kAbscissaDateAndTime;
            roles[dateColumn].kind = ColumnRole::kJoinDate;
            roles[clockColumn].kind = ColumnRole::kJoinClock;
            m_aColumns[clockColumn].use = kColumnAbscissa;
            xQuantity = quantities[clockColumn];
        } else if (timeColumn >= 0) {
            xColumn = timeColumn;
            m_eAbscissaReason = kAbscissaTime;
            xQuantity = quantities[timeColumn];
        }
        if (xColumn >= 0) {
            m_aColumns[xColumn].use = kColumnAbscissa;
            xUnit = L"s";
            curveColumns = numeric;
        } else if (numeric.size() >= 2) {
            xColumn = static_cast<int>(numeric[0]);
            m_eAbscissaReason = xColumn == 0 ? kAbscissaFirstColumn : kAbscissaFirstNumberColumn;
            m_aColumns[xColumn].use = kColumnAbscissa;
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
                return Refuse(kErrorNoNumericRow);
            curveColumns.push_back(static_cast<size_t>(xColumn));
            m_aColumns[xColumn].use = kColumnCurve;
            byIndex = true;
        } else if (xColumn < 0) {
            byIndex = true;
        }
        if (byIndex) {
            m_eAbscissaReason = kAbscissaRowNumber;
            xQuantity = L"n";
            xUnit.clear();
        }
        // An abscissa without a single number is none.
        {
            const size_t source = byIndex ? curveColumns[0] : static_cast<size_t>(xColumn);
            const ColumnTally& t = tallies[source];
            if (t.numbers + t.Instants() == 0)
                return Refuse(kErrorNoNumericRow);
        }
        const bool timed = roles[byIndex ? curveColumns[0] : static_cast<size_t>(xColumn)].kind !=
                           ColumnRole::kSkip;
        const size_t curves = curveColumns.size();
        for (size_t k = 0; k < columns; ++k)
            if (roles[k].kind == ColumnRole::kInstant && m_aColumns[k].use == kColumnMoreTime)
                roles[k].kind = ColumnRole::kSkip;
        for (size_t k = 0; k < columns; ++k)
            if (roles[k].kind == ColumnRole::kStamp && m_aColumns[k].use == kColumnMoreTime)
                roles[k].kind = ColumnRole::kSkip;

        // ---- The document, emptied as a load empties it -------------------------------------
        touched = true;
        doc.Delete();
        doc.m_asUnknownSections.Clear();
        auto* experience = static_cast<VyrExperience*>(
            doc.CreateEntity(VYR_KIND_EXPERIENCE, doc.GetNewOid(), name.wc_str()));
        const int size = static_cast<int>(rows);
        bool room = true;
        std::vector<VyrCourbe*> made;
        // The curve names taken, and for each quantity the next number to try after it.
        std::set<wxString> taken;
        std::map<wxString, int> nextNumber;
        for (size_t k = 0; k < curves && room; ++k) {
            const size_t column = curveColumns[k];
            // The quantity stays as the heading says (the table goes back out as it came in);
            // the curve's own name is made unique in the experiment, as notes find their curve
            // by it.
            const wxString& quantity = quantities[column];
            wxString curveName = quantity;
            while (!taken.insert(curveName).second)
                curveName = wxString::Format(L"%s%d", quantity, ++nextNumber[quantity]);
            auto* curve = static_cast<VyrCourbe*>(
                doc.CreateEntity(VYR_KIND_COURBE, doc.GetNewOid(), curveName.wc_str()));
            auto* vx = static_cast<VyrVecteur*>(
                doc.CreateEntity(VYR_KIND_VECTEUR, doc.GetNewOid(), (curveName + L"VX").wc_str()));
            auto* vy = static_cast<VyrVecteur*>(
                doc.CreateEntity(VYR_KIND_VECTEUR, doc.GetNewOid(), (curveName + L"VY").wc_str()));
            curve->SetVx(vx);
            curve->SetVy(vy);
            experience->AddCourbe(curve);
            curve->SetColor(CurveColour(k));
            curve->SetWidth(1);
            curve->SetStylePoint(0);
            curve->SetStyleLiaison(1);
            curve->SetShownInDiagram(0, true);
            vx->SetGrandeur(xQuantity);
            vx->SetUnite(xUnit);
            vy->SetGrandeur(quantity);
            vy->SetUnite(byIndex && timed ? wxString(L"s") : units[column]);
            // Only the first curve's X vector is read into; the others copy it.
            for (VyrVecteur* v : {vx, vy}) {
                if (v == vx && k > 0)
                    continue;
                v->PreAlloc(size);
                if (v->GetCapacity() < size) {
                    room = false;
                    break;
                }
                v->Resize(size);
            }
            made.push_back(curve);
        }
        auto outOfMemory = [&]() {
            doc.Delete();
            doc.Notify(VYR_MSG_FILE_LOADED, nullptr);
            return Refuse(kErrorMemory);
        };
        if (!room)
            return outOfMemory();

        // ---- Second walk: the numbers -------------------------------------------------------
        // Target 0 is the abscissa, target k + 1 the Y of curve k.
        std::vector<TableColumn> targets(curves + 1);
        targets[0].values = made[0]->GetVx()->GetArea();
        targets[0].validity = made[0]->GetVx()->GetValidity();
        for (size_t k = 0; k < curves; ++k) {
            targets[k + 1].values = made[k]->GetVy()->GetArea();
            targets[k + 1].validity = made[k]->GetVy()->GetValidity();
            if (roles[curveColumns[k]].kind == ColumnRole::kSkip)
                roles[curveColumns[k]].kind = ColumnRole::kNumber;
            roles[curveColumns[k]].target = static_cast<int>(k + 1);
        }
        if (!byIndex && !timed) {
            roles[xColumn].kind = ColumnRole::kNumber;
            roles[xColumn].target = 0;
        }
        const int timeTarget = !timed ? -1 : byIndex ? 1 : 0;
        RowReader reader(separator, reading, roles, timeTarget);
        lines.Seek(rowsStart);
        size_t row = 0;
        while (row < rows && lines.Next(line)) {
            if (!HasContent(line, separator) || IsCommentLine(line))
                continue;
            reader.Read(line, row, targets);
            ++row;
        }
        for (TableColumn& column : targets)
            column.Finish();
        m_cUsedDecimalMark = reader.CommaRead() ? L',' : L'.';
        if (timed) {
            m_sStart = wxString::FromUTF8(reader.Start().c_str());
            experience->SetCommentaire(L"start: " + m_sStart);
        }

        // ---- Abscissas, ranges, holes --------------------------------------------------------
        VyrVecteur* firstX = made[0]->GetVx();
        if (byIndex) {
            double* values = firstX->GetArea();
            for (int i = 0; i < size; ++i)
                values[i] = i;
            m_iAbscissa = -1;
        } else {
            m_iAbscissa = xColumn;
        }
        for (size_t k = 1; k < made.size(); ++k) {
            VyrVecteur* vx = made[k]->GetVx();
            *vx = *firstX;
            if (vx->GetSize() != size)
                return outOfMemory();
        }
        const double xlo = byIndex ? 0.0 : targets[0].lo;
        const double xhi = byIndex ? size - 1.0 : targets[0].hi;
        for (size_t k = 0; k < made.size(); ++k) {
            const TableColumn& y = targets[k + 1];
            VyrScale& scale = made[k]->GetScale();
            if (xlo < xhi) {
                scale.SetXmin(xlo);
                scale.SetXmax(xhi);
            }
            if (y.seen && y.lo < y.hi) {
                scale.SetYmin(y.lo);
                scale.SetYmax(y.hi);
            }
        }
        auto holes = [size](const TableColumn& column) {
            size_t n = 0;
            for (int i = 0; i < size; ++i)
                n += !column.validity->IsSet(i);
            return n;
        };
        if (!byIndex) {
            const size_t n = holes(targets[0]);
            m_iInvalid += n;
            m_aColumns[xColumn].holes = n;
            if (m_eAbscissaReason == kAbscissaDateAndTime)
                m_aColumns[clockColumn].holes = n;
        }
        for (size_t k = 0; k < curves; ++k) {
            const size_t n = holes(targets[k + 1]);
            m_iInvalid += n;
            m_aColumns[curveColumns[k]].holes = n;
        }
        m_iRows = rows;
        m_iColumns = static_cast<int>(columns);
        doc.Notify(VYR_MSG_FILE_LOADED, nullptr);
        return true;
    } catch (const std::bad_alloc&) {
        // Memory ran out: before the document was touched it stays as it was; after, it is
        // emptied (a half-built table is no table).
        if (touched) {
            doc.Delete();
            doc.Notify(VYR_MSG_FILE_LOADED, nullptr);
        }
        return Refuse(kErrorMemory);
    }
}
