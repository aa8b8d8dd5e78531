// Importing a text table into a document. The bytes are read in place, twice: a first walk
// finds the header, the rows and what each column holds without keeping a number, so that a
// refused table leaves the document untouched and the vectors get exactly their size; a second
// walk converts every cell straight into the vectors' storage. Only the header lines are
// decoded into wide text: a table of millions of rows is never held as wide characters, and
// UTF-16 lines are narrowed one at a time for reading their numbers. The text and its cells
// (TableText), headings and units (TableHeadings), numbers and moments (TableValues), the rows
// (TableRows) and the first walk's decision (TableLayout, which the live reader of a recording
// shares) each have a file of their own; this one builds.
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
#include "TableLayout.h"
#include "TableRows.h"
#include "TableText.h"
#include "TableValues.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

using namespace vyrtable;

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

    bool touched = false;

    try {
        // ---- First walk: separator, header, rows, what each column holds -------------------
        TableSettings settings;
        settings.encoding = m_eEncoding;
        settings.separator = m_cSeparator;
        settings.decimalMark = m_cDecimalMark;
        settings.skipLines = m_iSkipLines;
        settings.headerLines = m_iHeaderLines;
        settings.missing = m_adMissing;
        TableLayout layout;
        size_t errorLine = 0;
        const Error found = FindLayout(text, encoding, settings, layout, errorLine);
        // What the walk found before a refusal is reported too, as it always was.
        m_cUsedSeparator = layout.separator;
        m_iHeaderCount = layout.headerCount;
        m_aColumns = layout.reports;
        m_eAbscissaReason = layout.reason;
        if (found != kErrorNone)
            return Refuse(found, errorLine);
        const wchar_t separator = layout.separator;
        const CellReading& reading = layout.reading;
        const size_t rows = layout.rows;
        const size_t columns = layout.columns;
        const std::vector<wxString>& quantities = layout.quantities;
        const std::vector<wxString>& units = layout.units;
        const std::vector<size_t>& curveColumns = layout.curveColumns;
        const int xColumn = layout.xColumn;
        const int clockColumn = layout.clockColumn;
        const bool byIndex = layout.byIndex;
        const bool timed = layout.timed;
        const wxString& xQuantity = layout.xQuantity;
        const wxString& xUnit = layout.xUnit;
        const size_t curves = curveColumns.size();

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
        }
        RowReader reader(separator, reading, layout.roles, layout.timeTarget);
        Lines lines(text);
        lines.Seek(layout.rowsStart);
        std::string_view line;
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
