// CSV export of whatever a file loads into: it writes, as UTF-8, two title lines and one row
// per point index up to the longest exported vector. The lossless table export of the same
// document: rectangular, one line per point index, every number in its shortest exact text.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <wx/strconv.h>

#include "FuzzSupport.h"
#include "file/VyrNumberText.h"
#include "vyrbase/VyrBase.h"

namespace {

size_t CountLines(const std::string& text) {
    size_t lines = 0;
    for (size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at + 2))
        ++lines;
    return lines;
}

size_t CountLines(const wxString& text) {
    return CountLines(text.utf8_string());
}

size_t TitleLines(VyrVecteur* v) {
    return v ? CountLines(v->GetGrandeur()) + CountLines(v->GetUnite()) : 0;
}

// The line ends the export must write: the two title lines, one per row up to the longest
// exported vector, and those that names and titles hold (quoted values read over several lines
// hold "\r\n"; the separators written between texts never join two of them into one).
size_t ExpectedLineEnds(VyrBaseData& doc) {
    int rows = 0;
    size_t inTexts = 0;
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = doc.GetNextExperience(&node);
        inTexts += CountLines(e->GetEntityName());
        bool first = true;
        for (wxVyrListCourbeNode* c = e->GetCourbes().GetFirst(); c; c = c->GetNext()) {
            VyrCourbe* curve = c->GetData();
            if (!curve || curve->IsDeconnected())
                continue;
            if (first) {
                inTexts += TitleLines(curve->GetVx());
                if (curve->GetVx())
                    rows = std::max(rows, curve->GetVx()->GetSize());
            }
            first = false;
            inTexts += TitleLines(curve->GetVy());
            if (curve->GetVy())
                rows = std::max(rows, curve->GetVy()->GetSize());
        }
    }
    return 2 + static_cast<size_t>(rows) + inTexts;
}

// The lossless table of the same document: a heading, then one line per point index up to the
// longest exported vector, every line with as many cells as the heading, every cell empty or a
// number in its shortest exact text.
void CheckTable(VyrBaseData& doc) {
    std::string table;
    if (!VyrTableExport().ToText(doc, table))
        return;  // a heading the strict UTF-8 converter refuses (a lone surrogate)
    int rows = 0;
    bool anyCurve = false;
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = doc.GetNextExperience(&node);
        for (wxVyrListCourbeNode* c = e->GetCourbes().GetFirst(); c; c = c->GetNext()) {
            VyrCourbe* curve = c->GetData();
            if (!curve || curve->IsDeconnected() || !curve->GetVx() || !curve->GetVy())
                continue;
            anyCurve = true;
            rows = std::max({rows, curve->GetVx()->GetSize(), curve->GetVy()->GetSize()});
        }
    }
    vyrfuzz::Check(anyCurve || table.empty(), "a document without curves gives no table");
    if (!anyCurve)
        return;
    // The heading ends at the first line break outside double quotes.
    size_t at = 0;
    size_t cells = 1;
    bool quoted = false;
    for (; at < table.size(); ++at) {
        if (table[at] == '"')
            quoted = !quoted;
        else if (!quoted && table[at] == ';')
            ++cells;
        else if (!quoted && table.compare(at, 2, "\r\n") == 0)
            break;
    }
    vyrfuzz::Check(at < table.size(), "the heading ends with a line break");
    at += 2;
    int lines = 0;
    while (at < table.size()) {
        const size_t end = table.find("\r\n", at);
        vyrfuzz::Check(end != std::string::npos, "every line ends with a line break");
        size_t count = 0;
        for (size_t from = at; from <= end; ++count) {
            size_t to = table.find(';', from);
            if (to == std::string::npos || to > end)
                to = end;
            if (to > from) {
                // Read back and written again, the cell is the same text: a whole number in
                // its shortest exact form.
                const double value = VyrNumberText::ReadDoubleNarrowText(
                    std::string_view(table.data() + from, to - from));
                char again[VyrNumberText::kMaxChars];
                const size_t n = VyrNumberText::FormatShortest(again, value);
                vyrfuzz::Check(table.compare(from, to - from, again, n) == 0,
                               "a cell is the shortest exact text of its number");
            }
            from = to + 1;
        }
        vyrfuzz::Check(count == cells, "every line has the heading's cells");
        ++lines;
        at = end + 2;
    }
    vyrfuzz::Check(lines == rows, "one line per point index up to the longest vector");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vyrfuzz::StartToolkit();
    VyrBaseData doc(nullptr);
    if (!doc.LoadFromMemory(data, size))
        return 0;
    CheckTable(doc);
    vyrfuzz::MemoryFile file;
    vyrfuzz::Check(file.IsOk(), "a memory file can be made");
    if (!doc.SaveAsCsvUTF8(file.GetPath()))
        return 0;  // a text the strict UTF-8 converter refuses (a lone surrogate) stops it
    const std::string csv = file.Read();
    vyrfuzz::Check(wxConvUTF8.ToWChar(nullptr, 0, csv.data(), csv.size()) != wxCONV_FAILED,
                   "the export is UTF-8");
    // No mark: the file begins with the first experiment's name (which may itself begin with
    // U+FEFF, read from a file that carried two marks), or with the empty names line.
    wxVyrListEntityNode* first = doc.GetFirstExperienceNode();
    const std::string start =
        first ? doc.GetNextExperience(&first)->GetEntityName().utf8_string() + ";" : "\r\n";
    vyrfuzz::Check(csv.compare(0, start.size(), start) == 0,
                   "the export begins with the first name, without a mark");
    vyrfuzz::Check(CountLines(csv) == ExpectedLineEnds(doc),
                   "two title lines, then one line per row up to the longest vector");
    return 0;
}
