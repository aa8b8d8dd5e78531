// The grid section "[cellules]": the application's table view, carried as its own text.
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrGrilleEntity.h"

namespace {

enum GridKey { kGridOid, kGridName, kGridVersion, kGridData };
const wchar_t* const kGridKeys[] = {L"oid", L"name", L"version", L"data"};

// The version every save writes, whatever the grid read.
const int kGridVersionWritten = 1;

}  // namespace

bool VyrBaseData::SauveGrille(VyrTextWriter& out) {
    VyrGrilleEntity* grid = GetGrilleEntity(false, nullptr);
    if (!grid)
        return out.IsOk();
    // Kept: the data starts on its own line, so on reading it begins with the "\r\n" that
    // joins that line to the key's; the closing quote follows the text directly.
    out.Header(L"cellules")
        .LineInt(L"oid", grid->GetOid())
        .LineString(L"name", wxString())
        .LineInt(L"version", kGridVersionWritten)
        .Text(L"\tdata = \"\r\n")
        .Text(grid->GetData())
        .Text(L"\"")
        .Text(L"\r\n\r\n");
    return out.IsOk();
}

wxString VyrBaseData::ParseGrille() {
    VyrGrilleEntity* grid = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        const int key = VyrReadText::MatchKey(line, kGridKeys);
        if (key == kGridOid) {
            grid = static_cast<VyrGrilleEntity*>(
                CreateEntity(VYR_KIND_GRILLE, VyrReadText::IntValue(line), nullptr));
            continue;
        }
        if (key < 0)
            continue;
        if (key == kGridVersion) {
            if (grid)
                grid->SetVersion(VyrReadText::IntValue(line));
            continue;
        }
        // Quoted texts are consumed even without a record, so that their continuation lines
        // are not taken for keys.
        wxString text;
        ReadQuoted(line, text);
        if (!grid)
            continue;
        if (key == kGridName)
            grid->SetEntityName(text.wc_str());
        else
            grid->SetData(text);
    }
    return header;
}
