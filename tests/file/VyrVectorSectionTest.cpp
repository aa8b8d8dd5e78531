#include <gtest/gtest.h>

#include "FileTestSupport.h"
#include "vyrbase/data/VyrUnit.h"

using namespace filetest;

namespace {

std::wstring VectorSections(VyrBaseData& doc, bool* ok = nullptr) {
    return WrittenBy(
        doc,
        [](VyrBaseDataTestAccess& a, VyrTextWriter& out) {
            return a.SauveUnite(out) && a.SauveVecteur(out);
        },
        ok);
}

// The text from `from` to the end of the line after the next "}" line.
std::wstring TableAt(const std::wstring& text, const std::wstring& from) {
    const size_t start = text.find(from);
    if (start == std::wstring::npos)
        return L"(missing)";
    const size_t end = text.find(L"\t}\r\n", start);
    return text.substr(start, end + 4 - start);
}

}  // namespace

TEST(VyrVectorSection, EightValuesWriteTwoValidityBytes) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    c->SetSize(8);
    c->GetVy()->ValidateAt(7, false);
    const std::wstring text = VectorSections(doc);
    const size_t y = text.find(L"\toid = 4\r\n");
    EXPECT_EQ(L"\tvalidit\u00e9 = table 2 {\r\n\t132\t0\t\r\n\t}\r\n",
              TableAt(text.substr(y), L"\tvalidit\u00e9"));
}

TEST(VyrVectorSection, FiveValuesWriteFourOnTheFirstLineAndOneOnTheSecond) {
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    const std::wstring text = VectorSections(doc);
    EXPECT_EQ(L"\tpoints = table 5 {\r\n\t0\t2.5\t5\t7.5\r\n\t10\t\r\n\t}\r\n",
              TableAt(text, L"\tpoints"));
}

TEST(VyrVectorSection, EmptyVectorWritesEmptyTables) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    c->GetVx()->Raz();
    const std::wstring text = VectorSections(doc);
    EXPECT_EQ(L"\tpoints = table 0 {\r\n\t\r\n\t}\r\n", TableAt(text, L"\tpoints"));
    EXPECT_EQ(L"\tvalidit\u00e9 = table 0 {\r\n\t\r\n\t}\r\n", TableAt(text, L"\tvalidit\u00e9"));
}

TEST(VyrVectorSection, AVectorNoExperimentHoldsEndsTheWriterAfterItsAttributes) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    VyrVecteur* orphan =
        static_cast<VyrVecteur*>(access.CreateEntity(VYR_KIND_VECTEUR, 1, nullptr));
    orphan->SetGrandeur(L"lost");
    BuildOneCurveDocument(doc);
    bool ok = false;
    const std::wstring text = WrittenBy(
        doc, [](VyrBaseDataTestAccess& a, VyrTextWriter& out) { return a.SauveVecteur(out); }, &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(std::wstring(L"[vecteur]\r\n\toid = 1\r\n\tnom = \"lost\"\r\n\tsymbole = \"\"\r\n"
                           L"\tcommentaire = \"\"\r\n\texpression = \"\"\r\n\tcalcul\u00e9 = f\r\n"
                           L"\tpriv\u00e9e = f\r\n\tattributs = 257\r\n"),
              text);
}

TEST(VyrVectorSection, NameIsEscaped) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    c->GetVx()->SetGrandeur(L"a\"b");
    EXPECT_NE(std::wstring::npos, VectorSections(doc).find(L"\tnom = \"a\\\"b\"\r\n"));
}

TEST(VyrVectorSection, ReadsNameUnitValuesAndValidity) {
    VyrBaseData doc(nullptr);
    bool stop = false;
    const wxString next =
        ReadWith(doc,
                 L"[unit\u00e9]\r\n\toid = 20\r\n\tsymbole = \"V\"\r\n"
                 L"[vecteur]\r\n\tnom = \"ignored\"\r\n\toid = 9\r\n\tnom = "
                 L"\"[U1]\"\r\n\tunit\u00e9 = 20\r\n"
                 L"\tpoints = table 3 {\r\n\t1,5\t2\r\n\t3\r\n\t}\r\n\tvalidit\u00e9 = table 1 "
                 L"{\r\n\t2\t\r\n\t}\r\n"
                 L"\r\n[courbe]\r\n",
                 [&stop](VyrBaseDataTestAccess& a) {
                     a.ParseUnit();
                     return a.ParseVector(&stop);
                 });
    EXPECT_EQ(wxString(L"[courbe]"), next);
    EXPECT_FALSE(stop);
    VyrEntity* e = doc.FindEntity(9);
    ASSERT_TRUE(e && e->GetKind() == VYR_KIND_VECTEUR);
    VyrVecteur* v = static_cast<VyrVecteur*>(e);
    EXPECT_EQ(wxString(L"[U1]"), v->GetGrandeur());
    EXPECT_EQ(wxString(L"U1"), v->GetGrandeurForTable());
    EXPECT_EQ(wxString(L"V"), v->GetUnite());
    EXPECT_EQ(20, doc.GetVectorUnitMap()[9]);
    ASSERT_EQ(3, v->GetSize());
    EXPECT_EQ(1.5, v->GetVal(0));
    EXPECT_EQ(3.0, v->GetVal(2));
    EXPECT_TRUE(v->IsValidAt(0));
    EXPECT_FALSE(v->IsValidAt(1));
    EXPECT_TRUE(v->IsValidAt(2));
    EXPECT_EQ(9, doc.GetLastOid());
    doc.DeleteUnits();
    doc.GetUnitMap().clear();
}

TEST(VyrVectorSection, AnUnknownUnitLeavesTheUnitTextEmpty) {
    VyrBaseData doc(nullptr);
    bool stop = false;
    ReadWith(doc, L"[vecteur]\r\n\toid = 9\r\n\tunit\u00e9 = 77\r\n",
             [&stop](VyrBaseDataTestAccess& a) { return a.ParseVector(&stop); });
    ASSERT_TRUE(doc.FindEntity(9));
    EXPECT_TRUE(static_cast<VyrVecteur*>(doc.FindEntity(9))->GetUnite().empty());
    EXPECT_EQ(77, doc.GetVectorUnitMap()[9]);
}

TEST(VyrVectorSection, AnUnclosedTableRaisesTheStopFlagAndKeepsTheValuesRead) {
    VyrBaseData doc(nullptr);
    bool stop = false;
    ReadWith(doc, L"[vecteur]\r\n\toid = 9\r\n\tpoints = table 3 {\r\n\t1\t2\r\n",
             [&stop](VyrBaseDataTestAccess& a) { return a.ParseVector(&stop); });
    EXPECT_TRUE(stop);
    ASSERT_TRUE(doc.FindEntity(9));
    EXPECT_EQ(2, static_cast<VyrVecteur*>(doc.FindEntity(9))->GetSize());
}

// The reader takes the values up to the closing "}", whatever count the line states, or none.
TEST(VyrVectorSection, TheCountOnThePointsLineIsNotNeeded) {
    for (const wchar_t* opening :
         {L"\tpoints = {\r\n", L"\tpoints = table 99 {\r\n", L"\tpoints = table -4 {\r\n"}) {
        SCOPED_TRACE(wxString(opening).utf8_str().data());
        VyrBaseData doc(nullptr);
        bool stop = false;
        ReadWith(doc,
                 L"[vecteur]\r\n\toid = 9\r\n" + std::wstring(opening) + L"\t1\t2,5\t3\r\n\t}\r\n",
                 [&stop](VyrBaseDataTestAccess& a) { return a.ParseVector(&stop); });
        EXPECT_FALSE(stop);
        VyrVecteur* v = static_cast<VyrVecteur*>(doc.FindEntity(9));
        ASSERT_TRUE(v);
        ASSERT_EQ(3, v->GetSize());
        EXPECT_EQ(2.5, v->GetVal(1));
        EXPECT_EQ(3.0, v->GetVal(2));
    }
}

TEST(VyrVectorSection, AnUnclosedValidityTableRaisesTheStopFlag) {
    VyrBaseData doc(nullptr);
    bool stop = false;
    ReadWith(doc,
             L"[vecteur]\r\n\toid = 9\r\n\tpoints = table 2 {\r\n\t1\t2\r\n\t}\r\n"
             L"\tvalidit\u00e9 = table 1 {\r\n\t1\r\n",
             [&stop](VyrBaseDataTestAccess& a) { return a.ParseVector(&stop); });
    EXPECT_TRUE(stop);
    ASSERT_TRUE(doc.FindEntity(9));
    EXPECT_EQ(2, static_cast<VyrVecteur*>(doc.FindEntity(9))->GetSize());
}
