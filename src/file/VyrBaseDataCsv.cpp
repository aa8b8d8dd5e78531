// CSV export of the measured data: one block of columns per experiment (its x column, then one
// y column per connected curve), one row per point index, ";" separated, UTF-8 without mark.
#include <string>
#include <vector>

#include <new>

#include <wx/log.h>
#include <wx/strconv.h>

#include "file/VyrFileSink.h"
#include "file/VyrNumberText.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// The text is handed to the file in blocks of about this size.
constexpr size_t kBlockSize = size_t(1) << 20;

struct Column {
    const double* values = nullptr;
    int size = 0;
};

Column ColumnOf(const VyrVecteur* v) {
    Column c;
    if (v && v->GetArea()) {
        c.values = v->GetArea();
        c.size = v->GetSize();
    }
    return c;
}

// One experiment's columns: the x vector of its first connected curve, then the y vector of
// every connected curve in the experiment's order.
struct Block {
    VyrExperience* experience = nullptr;
    std::vector<VyrCourbe*> curves;
    Column x;
    std::vector<Column> ys;
};

class CsvWriter {
public:
    explicit CsvWriter(VyrFileSink& sink) : m_sink(sink) { m_buffer.reserve(kBlockSize + 4096); }

    // Appends a text in UTF-8. A text the strict converter refuses counts as a failed write.
    bool Text(const wxString& text) {
        if (text.empty())
            return true;
        const wxScopedCharBuffer utf8 = text.utf8_str();
        if (utf8.length() == 0)
            return false;
        m_buffer.append(utf8.data(), utf8.length());
        return FlushIfFull();
    }

    bool Ascii(const char* text) {
        m_buffer.append(text);
        return FlushIfFull();
    }

    // "%g" in the "C" locale, as the document file writes it: never a decimal comma.
    bool Number(double value) {
        char digits[VyrNumberText::kMaxChars];
        m_buffer.append(digits, VyrNumberText::FormatG(digits, value));
        return FlushIfFull();
    }

    bool Flush() {
        if (m_buffer.empty())
            return true;
        const bool ok = m_sink.Write(m_buffer.data(), m_buffer.size());
        m_buffer.clear();
        return ok;
    }

private:
    bool FlushIfFull() { return m_buffer.size() < kBlockSize || Flush(); }

    VyrFileSink& m_sink;
    std::string m_buffer;
};

wxString Title(VyrVecteur* v) {
    if (!v)
        return L"()";
    return v->GetGrandeur() + L"(" + v->GetUnite() + L")";
}

}  // namespace

namespace {

// The export proper, into an open sink; false at the first short write.
bool WriteCsv(VyrBaseData& doc, VyrFileSink& sink);

}  // namespace

bool VyrBaseData::SaveAsCsvUTF8(const wxString& path) {
    wxLogNull quiet;
    bool result = false;
    try {
        VyrFileSink sink;
        if (sink.Create(path)) {
            result = WriteCsv(*this, sink);
            // Some file systems report lost data only when the file is closed.
            if (!sink.Close())
                result = false;
        }
    } catch (const std::bad_alloc&) {
        // Memory that cannot be had fails the export as a short write does.
        result = false;
    }
    return result;
}

namespace {

bool WriteCsv(VyrBaseData& doc, VyrFileSink& sink) {
    // Curves detached for undo stay in their experiment's list; they are left out everywhere.
    std::vector<Block> blocks;
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        Block block;
        block.experience = doc.GetNextExperience(&node);
        wxVyrListCourbeNode* curveNode = block.experience->GetFirstCourbeNode();
        while (curveNode) {
            VyrCourbe* c = block.experience->GetNextCourbe(&curveNode);
            if (c && !c->IsDeconnected()) {
                block.curves.push_back(c);
                block.ys.push_back(ColumnOf(c->GetVy()));
            }
        }
        if (!block.curves.empty())
            block.x = ColumnOf(block.curves.front()->GetVx());
        blocks.push_back(block);
    }

    CsvWriter out(sink);

    // Names line: every experiment ends with ";", and takes one more per curve but the last.
    for (const Block& block : blocks) {
        if (!out.Text(block.experience->GetEntityName()) || !out.Ascii(";"))
            return false;
        for (size_t k = 1; k < block.curves.size(); ++k)
            if (!out.Ascii(";"))
                return false;
    }
    if (!out.Ascii("\r\n"))
        return false;

    // Titles line. Kept: no separator between one experiment's last y title and the next
    // experiment's x title, so those two cells run together.
    for (const Block& block : blocks) {
        if (block.curves.empty())
            continue;
        if (!out.Text(Title(block.curves.front()->GetVx())) || !out.Ascii(";"))
            return false;
        for (size_t k = 0; k < block.curves.size(); ++k) {
            if (!out.Text(Title(block.curves[k]->GetVy())))
                return false;
            if (k + 1 < block.curves.size() && !out.Ascii(";"))
                return false;
        }
    }
    if (!out.Ascii("\r\n"))
        return false;

    // Data rows until an index at which no vector has a value. Kept: a vector without a value
    // at the row's index writes nothing, its ";" included, so later cells of the row move one
    // column to the left. Validity is not consulted.
    for (int i = 0;; ++i) {
        bool any = false;
        for (const Block& block : blocks) {
            if (block.curves.empty())
                continue;
            if (i < block.x.size) {
                any = true;
                if (!out.Number(block.x.values[i]) || !out.Ascii(";"))
                    return false;
            }
            for (size_t k = 0; k < block.ys.size(); ++k) {
                if (i >= block.ys[k].size)
                    continue;
                any = true;
                if (!out.Number(block.ys[k].values[i]))
                    return false;
                if (k + 1 < block.ys.size() && !out.Ascii(";"))
                    return false;
            }
        }
        if (!any)
            break;
        if (!out.Ascii("\r\n"))
            return false;
    }
    return out.Flush();
}

}  // namespace
