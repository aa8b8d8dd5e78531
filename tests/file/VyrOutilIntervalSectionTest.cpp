#include <gtest/gtest.h>

#include "RecordTestSupport.h"
#include "vyrbase/data/VyrOutilInterval.h"

using recordtest::LoadText;
using recordtest::SaveText;
using recordtest::Section;

namespace {

VyrOutilInterval* AddTool(VyrBaseData& doc, const wxString& e1, const wxString& e2, double x0,
                          double y0, double x1, double y1) {
    VyrOutilInterval model(0, nullptr);
    model.SetEtiq1(e1);
    model.SetEtiq2(e2);
    model.SetAbs("s");
    model.SetOrd("V");
    model.SetPoints(x0, y0, x1, y1);
    doc.AddOutilIntervalEntity(&model);
    wxVyrListEntityNode* node = doc.GetFirstOutilIntervalNode();
    VyrOutilInterval* last = nullptr;
    while (node)
        last = doc.GetNextOutilInterval(&node);
    return last;
}

}  // namespace

TEST(VyrOutilIntervalSection, TwoToolsAreWrittenInListOrderEachFollowedByABlankLine) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrOutilInterval* a = AddTool(doc, "A1", "A2", 0.5, -1, 2, 1e6);
    VyrOutilInterval* b = AddTool(doc, "B1", "B2", 1, 2, 3, 4);
    const std::wstring text = SaveText(doc, dir);
    const std::wstring expectedA = L"[outil_Interval]\r\n\toid = " + std::to_wstring(a->GetOid()) +
                                   L"\r\n\tetiq1 = \"A1\"\r\n\tetiq2 = \"A2\"\r\n\tabs = \"s\"\r\n"
                                   L"\tord = \"V\"\r\n\tx0 = 0.5\r\n\ty0 = -1\r\n\tx1 = 2\r\n"
                                   L"\ty1 = 1e+06\r\n\r\n";
    EXPECT_EQ(Section(text, L"[outil_Interval]", 0), expectedA);
    EXPECT_EQ(
        Section(text, L"[outil_Interval]", 1).substr(0, 25 + std::to_wstring(b->GetOid()).size()),
        L"[outil_Interval]\r\n\toid = " + std::to_wstring(b->GetOid()));
    const std::wstring second = Section(text, L"[outil_Interval]", 1);
    const std::wstring end = L"\ty1 = 4\r\n\r\n";
    ASSERT_GT(second.size(), end.size());
    EXPECT_EQ(second.substr(second.size() - end.size()), end);
    EXPECT_LT(text.find(L"A1"), text.find(L"B1"));
    // Right after the annotations, which this document has none of: first in the file.
    EXPECT_EQ(text.find(L"[outil_Interval]"), 0u);
}

TEST(VyrOutilIntervalSection, ToolsReadBackWithTheirOidsTextsAndValues) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    AddTool(doc, L"d\u00e9but", "fin", 0.125, -2.5, 3e-7, 42);
    AddTool(doc, "p", "p", 1, 1, 1, 1);
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, SaveText(doc, dir)));
    wxVyrListEntityNode* a = doc.GetFirstOutilIntervalNode();
    wxVyrListEntityNode* b = back.GetFirstOutilIntervalNode();
    int count = 0;
    while (a && b) {
        VyrOutilInterval* x = doc.GetNextOutilInterval(&a);
        VyrOutilInterval* y = back.GetNextOutilInterval(&b);
        EXPECT_EQ(y->GetOid(), x->GetOid());
        EXPECT_EQ(y->GetEtiq1(), x->GetEtiq1());
        EXPECT_EQ(y->GetEtiq2(), x->GetEtiq2());
        EXPECT_EQ(y->GetAbs(), x->GetAbs());
        EXPECT_EQ(y->GetOrd(), x->GetOrd());
        EXPECT_EQ(y->GetX0(), x->GetX0());
        EXPECT_EQ(y->GetY0(), x->GetY0());
        EXPECT_EQ(y->GetX1(), x->GetX1());
        EXPECT_EQ(y->GetY1(), x->GetY1());
        ++count;
    }
    EXPECT_EQ(count, 2);
    EXPECT_EQ(a, nullptr);
    EXPECT_EQ(b, nullptr);
}

TEST(VyrOutilIntervalSection, DecimalCommaAndMissingLinesReadAsTheyMay) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         L"[outil_Interval]\r\n\tx0 = 9\r\n\toid = 12\r\n\tx1 = 2,75\r\n"
                         L"\tord = \"mV\"\r\n\tunknown = 3\r\n"));
    wxVyrListEntityNode* node = doc.GetFirstOutilIntervalNode();
    ASSERT_NE(node, nullptr);
    VyrOutilInterval* tool = doc.GetNextOutilInterval(&node);
    EXPECT_EQ(node, nullptr);
    EXPECT_EQ(tool->GetOid(), 12);
    EXPECT_EQ(tool->GetX0(), 0.0);  // the line before "oid" went nowhere
    EXPECT_EQ(tool->GetX1(), 2.75);
    EXPECT_EQ(tool->GetOrd(), "mV");
    EXPECT_TRUE(tool->GetEtiq1().empty());
    EXPECT_GE(doc.GetLastOid(), 12);
}
