// A text table read as its bytes arrive. Until the first row the bytes are kept as they came
// and the layout is decided over their complete lines with the import's first walk
// (TableLayout); from then on only the line not yet ended is kept, and every complete line goes
// through the import's RowReader into one slot per column, from which the row is appended.
#include "vyrbase/file/VyrLiveTable.h"

#include <algorithm>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "TableLayout.h"
#include "TableRows.h"
#include "TableText.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrBitMask.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

using namespace vyrtable;

struct VyrLiveTable::State {
    explicit State(VyrBaseData& d) : doc(d) {}

    VyrBaseData& doc;
    TableSettings settings;
    wxString name;
    VyrTableImport::Error error = VyrTableImport::kErrorNone;

    // Before the layout: every byte of the table so far. After: the line not yet ended.
    std::string pending;
    bool decided = false;
    // Inside a line above the limit: its rest, up to its end, is no row either.
    bool dropping = false;
    bool wide = false, bigEndian = false;

    TableLayout layout;
    std::unique_ptr<RowReader> reader;
    // One slot per target (0 the abscissa, k + 1 curve k) that RowReader reads a row into.
    std::vector<double> slots;
    std::vector<VyrBitMask> masks;
    std::vector<TableColumn> targets;

    VyrExperience* experience = nullptr;
    std::vector<VyrCourbe*> curves;
    // Per curve: invalid points before its first number, which take that number once it comes.
    std::vector<size_t> leading;
    std::vector<char> seen;
    double xlo = 0.0, xhi = 0.0;
    std::vector<double> ylo, yhi;
    size_t tableRows = 0;

    size_t rows = 0, skipped = 0, invalid = 0;
    size_t limit = 0;
    size_t batch = 0;

    size_t UnitSize() const { return wide ? 2 : 1; }
    Units TextOf(size_t from, size_t bytes) const;
    bool Decide(bool final);
    void ReadLines(const Units& text, size_t offset, LineMark from, bool final);
    void Row(std::string_view line);
    void CreateTable();
    void Announce();
};

namespace {

bool IsLineEnd(unsigned c) {
    return c == '\n' || c == '\r';
}

}  // namespace

Units VyrLiveTable::State::TextOf(size_t from, size_t bytes) const {
    Units text;
    text.bytes = reinterpret_cast<const unsigned char*>(pending.data()) + from;
    text.wide = wide;
    text.bigEndian = bigEndian;
    text.count = wide ? bytes / 2 : bytes;
    return text;
}

// Decides the layout over the complete lines kept, once they hold a row (or at the end, over
// all of them), then reads the rows among them. False while it waits for more.
bool VyrLiveTable::State::Decide(bool final) {
    if (pending.size() > kMaxHeaderBytes) {
        error = VyrTableImport::kErrorNoNumericRow;
        return false;
    }
    const auto* bytes = reinterpret_cast<const unsigned char*>(pending.data());
    // The encoding from the setting or the mark, to find where the lines end.
    Units probe;
    VyrTableImport::Encoding used = VyrTableImport::kEncodingAuto;
    VyrTableImport::Error opened = OpenText(bytes, pending.size(), settings.encoding, probe, used);
    if (opened == VyrTableImport::kErrorEmpty)
        return false;
    if (opened != VyrTableImport::kErrorNone && opened != VyrTableImport::kErrorEncoding) {
        error = opened;
        return false;
    }
    wide = probe.wide;
    bigEndian = probe.bigEndian;
    // Whole lines only: a character cut by the read would make valid UTF-8 look like another
    // encoding.
    size_t complete = pending.size();
    if (!final) {
        complete = 0;
        const size_t unit = UnitSize();
        const size_t start = static_cast<size_t>(probe.bytes - bytes);
        for (size_t i = (pending.size() - start) / unit; i > 0; --i)
            if (IsLineEnd(probe.At(i - 1))) {
                complete = start + i * unit;
                break;
            }
        if (complete == 0)
            return false;
    }
    Units text;
    opened = OpenText(bytes, complete, settings.encoding, text, used);
    if (opened == VyrTableImport::kErrorEmpty && !final)
        return false;
    if (opened != VyrTableImport::kErrorNone) {
        error = opened;
        return false;
    }
    size_t errorLine = 0;
    const VyrTableImport::Error found = FindLayout(text, used, settings, layout, errorLine);
    if (found == VyrTableImport::kErrorNoNumericRow && !final)
        return false;
    if (found != VyrTableImport::kErrorNone) {
        error = found;
        return false;
    }
    decided = true;
    reader.reset(new RowReader(layout.separator, layout.reading, layout.roles, layout.timeTarget));
    const size_t count = layout.curveColumns.size() + 1;
    slots.assign(count, 0.0);
    masks.assign(count, VyrBitMask(8));
    targets.assign(count, TableColumn());
    for (size_t k = 0; k < count; ++k) {
        targets[k].values = &slots[k];
        targets[k].validity = &masks[k];
    }
    ReadLines(text, static_cast<size_t>(text.bytes - bytes), layout.rowsStart, final);
    return true;
}

// Reads the lines of `text` (which starts `offset` bytes into the kept bytes) from `from` on;
// the line not yet ended stays kept unless `final`.
void VyrLiveTable::State::ReadLines(const Units& text, size_t offset, LineMark from, bool final) {
    Lines lines(text);
    lines.Seek(from);
    size_t consumed = from.position;
    std::string_view line;
    for (;;) {
        while (lines.Next(line)) {
            if (lines.End() >= text.count && !final)
                break;  // no end yet: the rest of it comes with the next bytes
            consumed = lines.Mark().position;
            if (dropping) {
                dropping = false;
                continue;
            }
            Row(line);
            if (error != VyrTableImport::kErrorNone)
                return;
        }
        if (!lines.TooLong())
            break;
        // A line above the limit is no row; its rest up to its end goes with it.
        ++skipped;
        size_t end = consumed + VyrTableImport::kMaxLineUnits;
        while (end < text.count && !IsLineEnd(text.At(end)))
            ++end;
        dropping = end >= text.count;
        consumed = std::min(end + 1, text.count);
        LineMark next;
        next.position = consumed;
        lines.Seek(next);
    }
    pending.erase(0, offset + consumed * UnitSize());
}

void VyrLiveTable::State::Row(std::string_view line) {
    if (limit > 0 && rows >= limit)
        return;
    if (!HasContent(line, layout.separator) || IsCommentLine(line))
        return;
    for (VyrBitMask& mask : masks)
        mask.Set(0);
    reader->Read(line, 0, targets);
    const size_t count = layout.curveColumns.size();
    bool any = false;
    for (size_t k = 0; k < count; ++k)
        any = any || masks[k + 1].IsSet(0);
    if (!any || (!layout.byIndex && !masks[0].IsSet(0))) {
        ++skipped;
        return;
    }
    if (!experience)
        CreateTable();
    const double x = layout.byIndex ? static_cast<double>(tableRows) : slots[0];
    if (tableRows == 0 || x < xlo)
        xlo = x;
    if (tableRows == 0 || x > xhi)
        xhi = x;
    for (size_t k = 0; k < count; ++k) {
        VyrCourbe* curve = curves[k];
        const double y = slots[k + 1];
        doc.AddPoint(curve, x, y, true);
        if (!masks[k + 1].IsSet(0)) {
            doc.ValidePoint(curve, false, false);
            ++invalid;
            leading[k] += !seen[k];
            continue;
        }
        if (!seen[k]) {
            seen[k] = true;
            VyrVecteur* vy = curve->GetVy();
            for (size_t i = 0; i < leading[k]; ++i)
                vy->SetVal(static_cast<int>(i), y);
            ylo[k] = yhi[k] = y;
        }
        ylo[k] = std::min(ylo[k], y);
        yhi[k] = std::max(yhi[k], y);
    }
    ++tableRows;
    ++rows;
    ++batch;
}

// The experiment and its curves, as an acquisition creates them, with the table's first row.
void VyrLiveTable::State::CreateTable() {
    wxString unique = name;
    for (int n = 2; doc.FindExperience(unique.wc_str()); ++n)
        unique = wxString::Format(L"%s (%d)", name, n);
    VyrExperienceParam experienceParam(unique);
    experience = doc.CreateExperience(experienceParam);
    if (layout.timed)
        experience->SetCommentaire(L"start: " + wxString::FromUTF8(reader->Start().c_str()));
    const size_t count = layout.curveColumns.size();
    std::set<wxString> taken;
    for (size_t k = 0; k < count; ++k) {
        const size_t column = layout.curveColumns[k];
        VyrCourbeParam p;
        p.m_sGrdX = layout.xQuantity;
        p.m_sUniteX = layout.xUnit;
        p.m_sUniteY = layout.byIndex && layout.timed ? wxString(L"s") : layout.units[column];
        // Two columns of the same heading make two curves: CreateCourbe would give the second
        // the first one's curve again.
        p.m_sGrdY = VyrBaseData::GetUniqueGrandeur(experience, layout.quantities[column],
                                                   p.m_sUniteY, p.m_sGrdX, p.m_sUniteX);
        wxString curveName = p.m_sGrdY;
        for (int n = 1; !taken.insert(curveName).second; ++n)
            curveName = wxString::Format(L"%s%d", p.m_sGrdY, n);
        p.m_sNom = curveName;
        p.m_sNomVx = curveName + L"VX";
        p.m_sNomVy = curveName + L"VY";
        p.m_colour = CurveColour(k);
        p.m_iWidth = 1;
        p.m_iStylePoint = 0;
        p.m_iStyleLiaison = 1;
        VyrCourbe* curve = doc.CreateCourbe(experience, p, nullptr, false);
        curve->SetShownInDiagram(0, true);
        curves.push_back(curve);
    }
    leading.assign(count, 0);
    seen.assign(count, 0);
    ylo.assign(count, 0.0);
    yhi.assign(count, 0.0);
}

// The rows of one batch told to the observers, once per curve, with the ranges of the data as
// the import gives them.
void VyrLiveTable::State::Announce() {
    if (batch == 0)
        return;
    batch = 0;
    for (size_t k = 0; k < curves.size(); ++k) {
        VyrScale& scale = curves[k]->GetScale();
        if (xlo < xhi) {
            scale.SetXmin(xlo);
            scale.SetXmax(xhi);
        }
        if (seen[k] && ylo[k] < yhi[k]) {
            scale.SetYmin(ylo[k]);
            scale.SetYmax(yhi[k]);
        }
    }
    for (VyrCourbe* curve : curves)
        doc.Notify(VYR_MSG_DATA_CHANGED, curve);
}

VyrLiveTable::VyrLiveTable(VyrBaseData& doc, const VyrTableImport& settings)
    : m_state(new State(doc)) {
    TableSettings& s = m_state->settings;
    s.encoding = settings.GetEncoding();
    s.separator = settings.GetSeparator();
    s.decimalMark = settings.GetDecimalMark();
    s.skipLines = settings.GetSkipLines();
    s.headerLines = settings.GetHeaderLines();
    s.missing = settings.GetMissingValues();
}

VyrLiveTable::~VyrLiveTable() = default;

void VyrLiveTable::Start(const wxString& name) {
    State& s = *m_state;
    s.name = name;
    s.error = VyrTableImport::kErrorNone;
    s.pending.clear();
    s.pending.shrink_to_fit();
    s.decided = false;
    s.dropping = false;
    s.reader.reset();
    s.experience = nullptr;
    s.curves.clear();
    s.tableRows = 0;
    s.batch = 0;
}

size_t VyrLiveTable::Feed(const void* bytes, size_t length) {
    State& s = *m_state;
    if (s.error != VyrTableImport::kErrorNone || (!bytes && length > 0))
        return 0;
    const size_t before = s.rows;
    try {
        s.pending.append(static_cast<const char*>(bytes), length);
        if (!s.decided)
            s.Decide(false);
        else
            s.ReadLines(s.TextOf(0, s.pending.size()), 0, LineMark(), false);
    } catch (const std::bad_alloc&) {
        s.error = VyrTableImport::kErrorMemory;
    }
    s.Announce();
    return s.rows - before;
}

size_t VyrLiveTable::Finish() {
    State& s = *m_state;
    if (s.error != VyrTableImport::kErrorNone)
        return 0;
    const size_t before = s.rows;
    try {
        if (!s.decided) {
            const bool nothing = s.pending.find_first_not_of(" \t\r\n", 0) == std::string::npos;
            if (!s.Decide(true) && s.error == VyrTableImport::kErrorNone)
                s.error =
                    nothing ? VyrTableImport::kErrorEmpty : VyrTableImport::kErrorNoNumericRow;
        } else {
            s.ReadLines(s.TextOf(0, s.pending.size()), 0, LineMark(), true);
        }
    } catch (const std::bad_alloc&) {
        s.error = VyrTableImport::kErrorMemory;
    }
    s.pending.clear();
    s.Announce();
    return s.rows - before;
}

void VyrLiveTable::SetRowLimit(size_t rows) {
    m_state->limit = rows;
}
bool VyrLiveTable::IsFull() const {
    return m_state->limit > 0 && m_state->rows >= m_state->limit;
}

VyrTableImport::Error VyrLiveTable::GetError() const {
    return m_state->error;
}
size_t VyrLiveTable::GetRowCount() const {
    return m_state->rows;
}
size_t VyrLiveTable::GetSkippedCount() const {
    return m_state->skipped;
}
size_t VyrLiveTable::GetInvalidCount() const {
    return m_state->invalid;
}
VyrExperience* VyrLiveTable::GetExperience() const {
    return m_state->experience;
}
wchar_t VyrLiveTable::GetUsedSeparator() const {
    return m_state->decided ? m_state->layout.separator : 0;
}
