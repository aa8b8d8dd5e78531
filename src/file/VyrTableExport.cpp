// The lossless table export: groups of one X column and the Y columns that use it, every cell
// of every line written, invalid points left empty, numbers in their shortest exact text.
#include "vyrbase/file/VyrTableExport.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>
#include <vector>

#include <wx/log.h>

#include "file/VyrFileSink.h"
#include "file/VyrNumberText.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// The text goes out in blocks of about this size.
constexpr size_t kBlockSize = size_t(1) << 20;

// One X column and the Y columns of the curves that share it, in the order they came.
struct Group {
    const VyrVecteur* x;
    std::vector<const VyrVecteur*> ys;
};

// Whether two X vectors make the same column: same heading, same number of points, the same
// values bit for bit (so 0 and -0 stay apart) and the same validity.
bool SameColumn(const VyrVecteur* a, const VyrVecteur* b) {
    if (a == b)
        return true;
    const int n = a->GetSize();
    if (b->GetSize() != n || a->GetUnite() != b->GetUnite() ||
        a->GetGrandeurForTable() != b->GetGrandeurForTable())
        return false;
    if (n > 0 && std::memcmp(a->GetArea(), b->GetArea(), sizeof(double) * n) != 0)
        return false;
    for (int i = 0; i < n; ++i)
        if (a->IsValidAt(i) != b->IsValidAt(i))
            return false;
    return true;
}

std::vector<Group> Groups(VyrBaseData& doc) {
    std::vector<Group> groups;
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = doc.GetNextExperience(&node);
        wxVyrListCourbeNode* curveNode = e ? e->GetFirstCourbeNode() : nullptr;
        while (curveNode) {
            VyrCourbe* c = e->GetNextCourbe(&curveNode);
            if (!c || c->IsDeconnected() || !c->GetVx() || !c->GetVy())
                continue;
            auto same = std::find_if(groups.begin(), groups.end(),
                                     [c](const Group& g) { return SameColumn(g.x, c->GetVx()); });
            if (same == groups.end())
                same = groups.insert(groups.end(), Group{c->GetVx(), {}});
            same->ys.push_back(c->GetVy());
        }
    }
    return groups;
}

wxString Heading(const VyrVecteur* v) {
    const wxString& unit = v->GetUnite();
    return unit.empty() ? v->GetGrandeurForTable() : v->GetGrandeurForTable() + L" (" + unit + L")";
}

// Writes the table into `out`, handing full blocks to `flush` (which answers false on a short
// write); false at the first failure.
bool WriteTable(VyrBaseData& doc, char separator, std::string& out,
                const std::function<bool(std::string&)>& flush) {
    const std::vector<Group> groups = Groups(doc);
    std::vector<const VyrVecteur*> columns;
    for (const Group& g : groups) {
        columns.push_back(g.x);
        columns.insert(columns.end(), g.ys.begin(), g.ys.end());
    }
    if (columns.empty())
        return flush(out);

    for (size_t k = 0; k < columns.size(); ++k) {
        if (k > 0)
            out.push_back(separator);
        const wxString heading = Heading(columns[k]);
        const wxScopedCharBuffer utf8 = heading.utf8_str();
        // A text the strict converter refuses counts as a failed write, as in the CSV export.
        if (utf8.length() == 0 && !heading.empty())
            return false;
        const std::string text(utf8.data(), utf8.length());
        if (text.find_first_of(std::string(1, separator) + "\"\r\n") == std::string::npos) {
            out += text;
            continue;
        }
        out.push_back('"');
        for (char ch : text) {
            if (ch == '"')
                out.push_back('"');
            out.push_back(ch);
        }
        out.push_back('"');
    }
    out += "\r\n";

    int rows = 0;
    for (const VyrVecteur* v : columns)
        rows = std::max(rows, v->GetSize());
    char digits[VyrNumberText::kMaxChars];
    for (int i = 0; i < rows; ++i) {
        for (size_t k = 0; k < columns.size(); ++k) {
            if (k > 0)
                out.push_back(separator);
            const VyrVecteur* v = columns[k];
            if (i < v->GetSize() && v->IsValidAt(i))
                out.append(digits, VyrNumberText::FormatShortest(digits, v->GetArea()[i]));
        }
        out += "\r\n";
        if (out.size() >= kBlockSize && !flush(out))
            return false;
    }
    return flush(out);
}

}  // namespace

bool VyrTableExport::SetSeparator(wchar_t separator) {
    if (separator != L';' && separator != L',' && separator != L'\t')
        return false;
    m_cSeparator = separator;
    return true;
}

bool VyrTableExport::SaveFile(VyrBaseData& doc, const wxString& path) const {
    wxLogNull quiet;
    try {
        VyrFileSink sink;
        if (!sink.Create(path))
            return false;
        std::string buffer;
        buffer.reserve(kBlockSize + 4096);
        bool result =
            WriteTable(doc, static_cast<char>(m_cSeparator), buffer, [&sink](std::string& block) {
                const bool ok = block.empty() || sink.Write(block.data(), block.size());
                block.clear();
                return ok;
            });
        // Some file systems report lost data only when the file is closed.
        if (!sink.Close())
            result = false;
        return result;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool VyrTableExport::ToText(VyrBaseData& doc, std::string& text) const {
    text.clear();
    try {
        return WriteTable(doc, static_cast<char>(m_cSeparator), text,
                          [](std::string&) { return true; });
    } catch (const std::bad_alloc&) {
        text.clear();
        text.shrink_to_fit();
        return false;
    }
}
