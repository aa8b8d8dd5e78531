#include <gtest/gtest.h>

#include "FileTestSupport.h"
#include "vyrbase/data/VyrUnit.h"

using namespace filetest;

TEST(VyrUnitSection, TwoVectorsGetConsecutiveFreshUnitOidsAboveEveryEntityOid) {
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    bool ok = false;
    const std::wstring text = WrittenBy(
        doc,
        [](VyrBaseDataTestAccess& a, VyrTextWriter& out) {
            return a.SauveUnite(out) && a.SauveVecteur(out);
        },
        &ok);
    EXPECT_TRUE(ok);
    const std::wstring expectedUnits =
        L"[unit\u00e9]\r\n\toid = 5\r\n\tsymbole = \"s\"\r\n\tgrandeur = \"\"\r\n\tvariable = "
        L"\"\"\r\n"
        L"\tech_min = 0.00000000\r\n\tech_max = 0.00000000\r\n\r\n"
        L"[unit\u00e9]\r\n\toid = 6\r\n\tsymbole = \"\u00b0C\"\r\n\tgrandeur = \"\"\r\n"
        L"\tvariable = \"\"\r\n\tech_min = 0.00000000\r\n\tech_max = 0.00000000\r\n\r\n";
    EXPECT_EQ(expectedUnits, text.substr(0, expectedUnits.size()));
    // Each vector's "unité" line names its own unit.
    const size_t x = text.find(L"\toid = 3\r\n");
    const size_t y = text.find(L"\toid = 4\r\n");
    ASSERT_NE(std::wstring::npos, x);
    ASSERT_NE(std::wstring::npos, y);
    EXPECT_EQ(text.find(L"\tunit\u00e9 = 5\r\n", x), text.find(L"\tunit\u00e9 = ", x));
    EXPECT_EQ(text.find(L"\tunit\u00e9 = 6\r\n", y), text.find(L"\tunit\u00e9 = ", y));
    EXPECT_EQ(5, doc.GetVectorUnitMap()[3]);
    EXPECT_EQ(6, doc.GetVectorUnitMap()[4]);
}

TEST(VyrUnitSection, SymbolIsEscaped) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    c->GetVx()->SetUnite(L"\"q\"");
    const std::wstring text = WrittenBy(
        doc, [](VyrBaseDataTestAccess& a, VyrTextWriter& out) { return a.SauveUnite(out); });
    EXPECT_NE(std::wstring::npos, text.find(L"\tsymbole = \"\\\"q\\\"\"\r\n"));
}

TEST(VyrUnitSection, ReadsSymbolCutAtTheAtSignAndTheRange) {
    VyrBaseData doc(nullptr);
    const wxString next = ReadWith(
        doc,
        L"[unit\u00e9]\r\n\tsymbole = \"before\"\r\n\toid = 12\r\n\tsymbole = \"m/s@2\"\r\n"
        L"\tgrandeur = \"g\"\r\n\tech_min = -1,5\r\n\tech_max = 4\r\n\r\n[vecteur]\r\n",
        [](VyrBaseDataTestAccess& a) { return a.ParseUnit(); });
    EXPECT_EQ(wxString(L"[vecteur]"), next);
    VyrUnit* unit = doc.FindUnit(12);
    ASSERT_TRUE(unit);
    EXPECT_EQ(wxString(L"m/s"), unit->GetName());
    for (int type = 0; type < 3; ++type) {
        EXPECT_EQ(-1.5, unit->GetMin(type));
        EXPECT_EQ(4.0, unit->GetMax(type));
    }
    EXPECT_EQ(1u, doc.GetUnitMap().size());
    doc.DeleteUnits();
    doc.GetUnitMap().clear();
}

TEST(VyrUnitSection, ALaterSectionWithTheSameOidReplacesTheRecord) {
    VyrBaseData doc(nullptr);
    ReadWith(doc,
             L"[unit\u00e9]\r\n\toid = 7\r\n\tsymbole = \"a\"\r\n[unit\u00e9]\r\n\toid = 7\r\n"
             L"\tsymbole = \"b\"\r\n",
             [](VyrBaseDataTestAccess& a) {
                 wxString next = a.ParseUnit();
                 return next.empty() ? next : a.ParseUnit();
             });
    ASSERT_TRUE(doc.FindUnit(7));
    EXPECT_EQ(wxString(L"b"), doc.FindUnit(7)->GetName());
    EXPECT_EQ(1u, doc.GetUnitMap().size());
    doc.DeleteUnits();
    doc.GetUnitMap().clear();
}
