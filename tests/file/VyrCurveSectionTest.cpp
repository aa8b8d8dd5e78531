#include <gtest/gtest.h>

#include "FileTestSupport.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrNote.h"

using namespace filetest;

namespace {

// Reads a curve section (with two vectors 3 and 4 made beforehand) and answers the curve 2.
VyrCourbe* ReadCurve(VyrBaseData& doc, const std::wstring& lines, bool* stop = nullptr) {
    VyrBaseDataTestAccess access(doc);
    if (!doc.FindEntity(3))
        access.CreateEntity(VYR_KIND_VECTEUR, 3, nullptr);
    if (!doc.FindEntity(4))
        access.CreateEntity(VYR_KIND_VECTEUR, 4, nullptr);
    bool ignored = false;
    ReadWith(doc, L"[courbe]\r\n\toid = 2\r\n" + lines + L"\r\n[manipulation]\r\n",
             [&](VyrBaseDataTestAccess& a) { return a.ParseCurve(stop ? stop : &ignored); });
    return doc.FindCourbeByOid(2);
}

std::wstring CurveSection(VyrBaseData& doc, bool* ok = nullptr) {
    return WrittenBy(
        doc, [](VyrBaseDataTestAccess& a, VyrTextWriter& out) { return a.SauveCourbe(out); }, ok);
}

}  // namespace

TEST(VyrCurveSection, CouleurPackedOrFromThePalette) {
    EXPECT_EQ(wxColour(128, 0, 0), VyrBaseDataTestAccess::ColourFromFile(16777217));
    EXPECT_EQ(wxColour(255, 0, 0), VyrBaseDataTestAccess::ColourFromFile(255));
    EXPECT_EQ(wxColour(255, 255, 255), VyrBaseDataTestAccess::ColourFromFile(16777215));
    EXPECT_EQ(wxColour(0, 0, 0), VyrBaseDataTestAccess::ColourFromFile(16777216));
    EXPECT_EQ(wxColour(255, 255, 255), VyrBaseDataTestAccess::ColourFromFile(16777216 + 19));
    EXPECT_EQ(wxColour(0, 0, 0), VyrBaseDataTestAccess::ColourFromFile(16777216 + 20));
    EXPECT_EQ(wxColour(153, 204, 0), VyrBaseDataTestAccess::ColourFromFile(INT_MAX - 8));
    // Negative values are taken as packed colours.
    EXPECT_EQ(wxColour(255, 255, 255), VyrBaseDataTestAccess::ColourFromFile(-1));
    EXPECT_EQ(wxColour(0, 0, 255), VyrBaseDataTestAccess::ColourFromFile(-16777216 + 0xFF0000));

    VyrBaseData doc(nullptr);
    VyrCourbe* c = ReadCurve(doc, L"\tcouleur = 16777217\r\n");
    ASSERT_TRUE(c);
    EXPECT_EQ(wxColour(128, 0, 0), c->GetColor());
}

TEST(VyrCurveSection, StyleExFieldsAtFixedPositions) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = ReadCurve(doc, L"\tstyle_ex = \"1|3|2|2|0|0\"\r\n");
    ASSERT_TRUE(c);
    EXPECT_EQ(3, c->GetStylePoint());
    EXPECT_EQ(2, c->GetStyleLiaison());
    EXPECT_EQ(2, c->GetWidth());
}

TEST(VyrCurveSection, StyleExWrittenInHexadecimalReadsBackTheWidth) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = ReadCurve(doc, L"\tstyle_ex = \"1|a|2|4|0|0\"\r\n");
    ASSERT_TRUE(c);
    EXPECT_EQ(10, c->GetStylePoint());
    EXPECT_EQ(2, c->GetStyleLiaison());
    EXPECT_EQ(3, c->GetWidth());
}

TEST(VyrCurveSection, StyleExWidthFieldIsReadInDecimal) {
    // Width 6 is written as "a" (10 in hexadecimal), which reads as 0: width 1. Kept.
    VyrBaseData doc(nullptr);
    VyrCourbe* c = ReadCurve(doc, L"\tstyle_ex = \"1|1|1|a|0|0\"\r\n");
    ASSERT_TRUE(c);
    EXPECT_EQ(1, c->GetWidth());
    // A short value sets only the fields it reaches.
    VyrBaseData other(nullptr);
    c = ReadCurve(other, L"\twidth = 9\r\n\tstyle_ex = \"1|5\"\r\n");
    ASSERT_TRUE(c);
    EXPECT_EQ(5, c->GetStylePoint());
    EXPECT_EQ(1, c->GetStyleLiaison());
    EXPECT_EQ(1, c->GetWidth());
}

TEST(VyrCurveSection, DiagrammeOneShowsInTheSecondDiagramOnlyAndMakesTwoDiagrams) {
    VyrBaseData doc(nullptr);
    RecordingObserver observer;
    doc.AddObserver(&observer);
    observer.Clear();
    VyrCourbe* c = ReadCurve(doc, L"\tdiagramme = 1\r\n");
    ASSERT_TRUE(c);
    EXPECT_FALSE(c->IsShownInDiagram(0));
    EXPECT_TRUE(c->IsShownInDiagram(1));
    EXPECT_EQ(2, doc.GetDiagramCount());
    EXPECT_EQ(VYR_MSG_DIAGRAM_COUNT_CHANGED, observer.Codes().back());
    doc.RemoveObserver(&observer);
}

TEST(VyrCurveSection, WithoutDiagramLinesTheCurveIsInTheFirstDiagram) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = ReadCurve(doc, L"\tnom = \"x\"\r\n");
    ASSERT_TRUE(c);
    EXPECT_TRUE(c->IsShownInDiagram(0));
    EXPECT_FALSE(c->IsShownInDiagram(1));
    EXPECT_EQ(1, doc.GetDiagramCount());
}

TEST(VyrCurveSection, LesDiagrammesSetsBothFlagsAndRaisesTheCountToTheHighestShown) {
    {
        VyrBaseData doc(nullptr);
        VyrCourbe* c = ReadCurve(
            doc, L"\tdiagramme = 0\r\n\tlesdiagrammes = table 2 {\r\n\t0\t1\t\r\n\t}\r\n");
        ASSERT_TRUE(c);
        EXPECT_FALSE(c->IsShownInDiagram(0));
        EXPECT_TRUE(c->IsShownInDiagram(1));
        EXPECT_EQ(2, doc.GetDiagramCount());
    }
    {
        VyrBaseData doc(nullptr);
        VyrCourbe* c = ReadCurve(doc, L"\tlesdiagrammes = table 2 {\r\n\t1\t0\t\r\n\t}\r\n");
        ASSERT_TRUE(c);
        EXPECT_TRUE(c->IsShownInDiagram(0));
        EXPECT_FALSE(c->IsShownInDiagram(1));
        EXPECT_EQ(1, doc.GetDiagramCount());
    }
    {
        bool stop = false;
        VyrBaseData doc(nullptr);
        ReadCurve(doc, L"\tlesdiagrammes = table 2 {\r\n\t1\t0\t", &stop);
        EXPECT_TRUE(stop);
    }
}

TEST(VyrCurveSection, VectorsRangesNamesAndComment) {
    VyrBaseData doc(nullptr);
    bool stop = false;
    VyrCourbe* c = ReadCurve(doc,
                             L"\tnom = \"C1\"\r\n\tcommentaire = \"two\r\nlines\"\r\n"
                             L"\texpression = \"e\"\r\n\tvx = 3\r\n\tabscisse = \"t\"\r\n"
                             L"\tvy = 4\r\n\tordonn\u00e9e = \"U\"\r\n\txmin = -1,5\r\n"
                             L"\txmax = 2e3\r\n\tymin = 0.25\r\n\tymax = 7\r\n",
                             &stop);
    ASSERT_TRUE(c);
    EXPECT_FALSE(stop);
    EXPECT_EQ(wxString(L"C1"), c->GetEntityName());
    EXPECT_EQ(wxString(L"two\r\nlines"), c->GetText());
    EXPECT_EQ(doc.FindEntity(3), c->GetVx());
    EXPECT_EQ(doc.FindEntity(4), c->GetVy());
    EXPECT_EQ(wxString(L"t"), c->GetVx()->GetGrandeur());
    EXPECT_EQ(wxString(L"U"), c->GetVy()->GetGrandeur());
    EXPECT_EQ(-1.5, c->GetScale().GetXmin());
    EXPECT_EQ(2000.0, c->GetScale().GetXmax());
    EXPECT_EQ(0.25, c->GetScale().GetYmin());
    EXPECT_EQ(7.0, c->GetScale().GetYmax());
}

TEST(VyrCurveSection, AbscisseNamesOnlyAnUnnamedVector) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    static_cast<VyrVecteur*>(access.CreateEntity(VYR_KIND_VECTEUR, 3, nullptr))->SetGrandeur(L"x");
    VyrCourbe* c = ReadCurve(doc, L"\tvx = 3\r\n\tabscisse = \"t\"\r\n\tordonn\u00e9e = \"U\"\r\n");
    ASSERT_TRUE(c && c->GetVx());
    EXPECT_EQ(wxString(L"x"), c->GetVx()->GetGrandeur());
    EXPECT_EQ(nullptr, c->GetVy());
}

TEST(VyrCurveSection, VxNamingNothingOrNoVectorLeavesTheAxisEmpty) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    access.CreateEntity(VYR_KIND_EXPERIENCE, 50, L"e");
    VyrCourbe* c = ReadCurve(doc, L"\tvx = 99\r\n\tvy = 50\r\n");
    ASSERT_TRUE(c);
    EXPECT_EQ(nullptr, c->GetVx());
    EXPECT_EQ(nullptr, c->GetVy());
}

TEST(VyrCurveSection, UnclosedCommentOrExpressionRaisesTheStopFlag) {
    for (const wchar_t* line : {L"\tcommentaire = \"open\r\n", L"\texpression = \"open\r\n"}) {
        VyrBaseData doc(nullptr);
        bool stop = false;
        VyrBaseDataTestAccess access(doc);
        const std::wstring text =
            std::wstring(L"[courbe]\r\n\toid = 2\r\n") + line + L"\tvx = 3\r\n";
        access.SetText(text);
        access.NextToken();
        EXPECT_EQ(wxString(), access.ParseCurve(&stop));
        access.ClearText();
        EXPECT_TRUE(stop);
    }
    // An unclosed name does not.
    VyrBaseData doc(nullptr);
    bool stop = false;
    ReadCurve(doc, L"\tnom = \"open\r\n", &stop);
    EXPECT_FALSE(stop);
}

TEST(VyrCurveSection, AnnotationsTableAttachesTheNotesAlreadyRead) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    VyrEntity* n1 = access.CreateEntity(VYR_KIND_NOTE, 30, nullptr);
    VyrEntity* n2 = access.CreateEntity(VYR_KIND_NOTE, 31, nullptr);
    VyrCourbe* c = ReadCurve(doc, L"\tannotations = table 4 {\r\n\t31\t99\t3\t30\r\n\t}\r\n");
    ASSERT_TRUE(c);
    // 99 names nothing and 3 is no note: both skipped.
    ASSERT_EQ(2, c->GetNotesCount());
    EXPECT_EQ(n2, c->GetNotes().GetFirst()->GetData());
    EXPECT_EQ(n1, c->GetNotes().GetLast()->GetData());
}

TEST(VyrCurveSection, WritesEveryLineOfTheCurve) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    c->SetShownInDiagram(0, false);
    c->SetShownInDiagram(1, true);
    VyrBaseDataTestAccess access(doc);
    for (int oid = 40; oid < 45; ++oid)
        c->AddNote(static_cast<VyrNote*>(access.CreateEntity(VYR_KIND_NOTE, oid, nullptr)));
    bool ok = false;
    const std::wstring text = CurveSection(doc, &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(std::wstring(L"[courbe]\r\n\toid = 2\r\n\tnom = \"T(t)\"\r\n\tsymbole = \"\"\r\n"
                           L"\tcommentaire = \"mesure \\\"A\\\"\"\r\n\texpression = \"\"\r\n"
                           L"\tcalcul\u00e9 = f\r\n\tpriv\u00e9e = f\r\n\tattributs = 0\r\n"
                           L"\texperience = 1\r\n\tvx = 3\r\n\tvy = 4\r\n\tcouleur = 16744448\r\n"
                           L"\tstyle = 1\r\n\tstyle_ex = \"1|3|1|2|0|0\"\r\n\tdiagramme = 1\r\n"
                           L"\tlesdiagrammes = table 2 {\r\n\t0\t1\t\r\n\t}\r\n\txmin = 0\r\n"
                           L"\txmax = 10\r\n\tymin = -5\r\n\tymax = 25.5\r\n"
                           L"\tannotations = table 5 {\r\n\t40\t41\t42\t43\r\n\t44\r\n\t}\r\n\r\n"),
              text);
}

TEST(VyrCurveSection, TheCurveNameIsNotEscaped) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    c->SetEntityName(L"a\"b");
    EXPECT_NE(std::wstring::npos, CurveSection(doc).find(L"\tnom = \"a\"b\"\r\n"));
}

TEST(VyrCurveSection, ACurveWithoutExperimentEndsTheWriter) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    access.CreateEntity(VYR_KIND_COURBE, 1, L"alone");
    BuildOneCurveDocument(doc);
    bool ok = false;
    const std::wstring text = CurveSection(doc, &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(std::wstring(L"[courbe]\r\n\toid = 1\r\n\tnom = \"alone\"\r\n\tsymbole = \"\"\r\n"
                           L"\tcommentaire = \"\"\r\n\texpression = \"\"\r\n\tcalcul\u00e9 = f\r\n"
                           L"\tpriv\u00e9e = f\r\n\tattributs = 0\r\n"),
              text);
}

TEST(VyrCurveSection, StyleAndWidthSurviveASaveAndLoad) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    c->SetStylePoint(10);
    c->SetStyleLiaison(2);
    c->SetWidth(3);
    ASSERT_TRUE(doc.Save(Wx(dir.File("s.vyr"))));
    VyrBaseData loaded(nullptr);
    ASSERT_TRUE(loaded.Load(Wx(dir.File("s.vyr"))));
    VyrCourbe* back = loaded.FindCourbeByOid(2);
    ASSERT_TRUE(back);
    EXPECT_EQ(10, back->GetStylePoint());
    EXPECT_EQ(2, back->GetStyleLiaison());
    EXPECT_EQ(3, back->GetWidth());
}

// A curve's bounds start from the range its vectors' units carry ("ech_min", "ech_max"), unless
// that range is empty; the curve's own "xmin".."ymax" lines, read later, win.
TEST(VyrCurveSection, BoundsStartFromTheRangeOfTheVectorsUnits) {
    auto load = [](VyrBaseData& doc, double unitMin, double unitMax, const std::wstring& lines) {
        const std::wstring text =
            L"[unit\u00e9]\r\n\toid = 10\r\n\tsymbole = \"V\"\r\n\tech_min = " +
            std::to_wstring(unitMin) + L"\r\n\tech_max = " + std::to_wstring(unitMax) +
            L"\r\n[vecteur]\r\n\toid = 3\r\n\tunit\u00e9 = 10\r\n\tpoints = table 2 {\r\n\t1\t2\r\n"
            L"\t}\r\n[vecteur]\r\n\toid = 4\r\n\tunit\u00e9 = 10\r\n\tpoints = table 2 {\r\n\t3\t4"
            L"\r\n\t}\r\n[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 4\r\n" +
            lines + L"[manipulation]\r\n\toid = 1\r\n\tcourbes = table 1 {\r\n\t2\r\n\t}\r\n";
        const std::string bytes = Utf16File(text);
        EXPECT_TRUE(doc.LoadFromMemory(bytes.data(), bytes.size()));
        return doc.FindCourbeByOid(2);
    };
    VyrBaseData fromUnit(nullptr);
    VyrCourbe* c = load(fromUnit, -2.0, 5.0, L"");
    ASSERT_TRUE(c);
    EXPECT_EQ(-2.0, c->GetScale().GetXmin());
    EXPECT_EQ(5.0, c->GetScale().GetXmax());
    EXPECT_EQ(-2.0, c->GetScale().GetYmin());
    EXPECT_EQ(5.0, c->GetScale().GetYmax());

    VyrBaseData emptyRange(nullptr);
    VyrBaseData untouched(nullptr);
    c = load(emptyRange, 3.0, 3.0, L"");
    ASSERT_TRUE(c);
    VyrCourbe reference(0, &untouched);
    EXPECT_EQ(reference.GetScale().GetXmin(), c->GetScale().GetXmin());
    EXPECT_EQ(reference.GetScale().GetYmax(), c->GetScale().GetYmax());

    VyrBaseData ownLines(nullptr);
    c = load(ownLines, -2.0, 5.0, L"\txmin = 0.5\r\n\tymax = 9\r\n");
    ASSERT_TRUE(c);
    EXPECT_EQ(0.5, c->GetScale().GetXmin());
    EXPECT_EQ(5.0, c->GetScale().GetXmax());
    EXPECT_EQ(-2.0, c->GetScale().GetYmin());
    EXPECT_EQ(9.0, c->GetScale().GetYmax());
}

TEST(VyrCurveSection, UnclosedTablesRaiseTheStopFlag) {
    for (const wchar_t* table : {L"\tannotations = table 2 {\r\n\t30\t31\r\n",
                                 L"\tlesdiagrammes = table 2 {\r\n\t1\t1\r\n"}) {
        SCOPED_TRACE(wxString(table).utf8_str().data());
        VyrBaseData doc(nullptr);
        bool stop = false;
        ASSERT_TRUE(ReadCurve(doc, table, &stop));
        EXPECT_TRUE(stop);
    }
}
