// The interval tool section "[outil_Interval]": two labels, the units the tool is drawn in,
// and its two end points in data units.
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrOutilInterval.h"

namespace {

enum ToolKey {
    kToolOid,
    kToolEtiq1,
    kToolEtiq2,
    kToolAbs,
    kToolOrd,
    kToolX0,
    kToolY0,
    kToolX1,
    kToolY1
};
const wchar_t* const kToolKeys[] = {L"oid", L"etiq1", L"etiq2", L"abs", L"ord",
                                    L"x0",  L"y0",    L"x1",    L"y1"};

}  // namespace

bool VyrBaseData::SauveOutilInterval(VyrTextWriter& out) {
    wxVyrListEntityNode* node = GetFirstOutilIntervalNode();
    while (node) {
        VyrOutilInterval* tool = GetNextOutilInterval(&node);
        out.Header(L"outil_Interval")
            .LineInt(L"oid", tool->GetOid())
            .LineString(L"etiq1", tool->GetEtiq1())
            .LineString(L"etiq2", tool->GetEtiq2())
            .LineString(L"abs", tool->GetAbs())
            .LineString(L"ord", tool->GetOrd())
            .LineG(L"x0", tool->GetX0())
            .LineG(L"y0", tool->GetY0())
            .LineG(L"x1", tool->GetX1())
            .LineG(L"y1", tool->GetY1())
            .EndLine();
    }
    return out.IsOk();
}

wxString VyrBaseData::ParseOutilInterval() {
    VyrOutilInterval* tool = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        const int key = VyrReadText::MatchKey(line, kToolKeys);
        if (key == kToolOid) {
            tool = static_cast<VyrOutilInterval*>(
                CreateEntity(VYR_KIND_OUTIL_INTERVAL, VyrReadText::IntValue(line), nullptr));
            continue;
        }
        if (key < 0)
            continue;
        if (key >= kToolEtiq1 && key <= kToolOrd) {
            // Consumed even before the "oid" line, continuation lines included.
            wxString text;
            ReadQuoted(line, text);
            if (!tool)
                continue;
            if (key == kToolEtiq1)
                tool->SetEtiq1(text);
            else if (key == kToolEtiq2)
                tool->SetEtiq2(text);
            else if (key == kToolAbs)
                tool->SetAbs(text);
            else
                tool->SetOrd(text);
            continue;
        }
        if (!tool)
            continue;
        const double value = VyrReadText::DoubleValue(line);
        if (key == kToolX0)
            tool->SetX0(value);
        else if (key == kToolY0)
            tool->SetY0(value);
        else if (key == kToolX1)
            tool->SetX1(value);
        else
            tool->SetY1(value);
    }
    return header;
}
