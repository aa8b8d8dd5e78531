// After a load every curve, vector and note has one owner: the first that the file gave it.
#include <string>

#include <gtest/gtest.h>

#include "FileTestSupport.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"

using namespace filetest;

namespace {

std::wstring Vector(int oid) {
    return L"[vecteur]\r\n\toid = " + std::to_wstring(oid) +
           L"\r\n\tpoints = table 2 {\r\n\t1\t2\r\n\t}\r\n";
}

bool Load(VyrBaseData& doc, const std::wstring& text) {
    const std::string bytes = Utf16File(text);
    return doc.LoadFromMemory(bytes.data(), bytes.size());
}

}  // namespace

TEST(VyrLoadedLinks, ACurveListedTwiceIsHeldOnce) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Load(doc, Vector(3) + Vector(4) +
                              L"[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 4\r\n[manipulation]\r\n"
                              L"\toid = 1\r\n\tcourbes = table 3 {\r\n\t2\t2\r\n\t}\r\n"
                              L"\tcourbes = table 1 {\r\n\t2\r\n\t}\r\n"));
    VyrExperience* e = doc.FindExperienceByOid(1);
    ASSERT_TRUE(e);
    EXPECT_EQ(1, e->GetNbCourbe());
    // Deleting the experiment deletes the curve once.
    doc.DeleteExperience(e);
    EXPECT_EQ(nullptr, doc.FindEntity(2));
}

TEST(VyrLoadedLinks, ACurveOfTwoExperimentsStaysWithTheFirst) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(
        Load(doc, Vector(3) + Vector(4) + Vector(7) + Vector(8) +
                      L"[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 4\r\n"
                      L"[courbe]\r\n\toid = 6\r\n\tvx = 7\r\n\tvy = 8\r\n"
                      L"[manipulation]\r\n\toid = 1\r\n\tcourbes = table 1 {\r\n\t2\r\n\t}\r\n"
                      L"[manipulation]\r\n\toid = 5\r\n\tcourbes = table 2 {\r\n\t6\t2\r\n"
                      L"\t}\r\n"));
    VyrExperience* first = doc.FindExperienceByOid(1);
    VyrExperience* second = doc.FindExperienceByOid(5);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(1, first->GetNbCourbe());
    ASSERT_EQ(1, second->GetNbCourbe());
    EXPECT_EQ(6, second->GetCourbes().GetFirst()->GetData()->GetOid());
    doc.DeleteAllExperiences();
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
}

TEST(VyrLoadedLinks, AVectorOfTwoCurvesStaysWithTheFirstAndMayBeBothAxesOfOne) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Load(doc, Vector(3) + Vector(4) +
                              L"[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 3\r\n"
                              L"[courbe]\r\n\toid = 5\r\n\tvx = 3\r\n\tvy = 4\r\n"
                              L"[manipulation]\r\n\toid = 1\r\n\tcourbes = table 2 {\r\n\t2\t5\r\n"
                              L"\t}\r\n"));
    VyrCourbe* a = doc.FindCourbeByOid(2);
    VyrCourbe* b = doc.FindCourbeByOid(5);
    ASSERT_TRUE(a && b);
    EXPECT_EQ(3, a->GetVx()->GetOid());
    EXPECT_EQ(a->GetVx(), a->GetVy());
    EXPECT_EQ(nullptr, b->GetVx());
    ASSERT_TRUE(b->GetVy());
    EXPECT_EQ(4, b->GetVy()->GetOid());
    doc.Delete();
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
}

TEST(VyrLoadedLinks, ANoteOfTwoCurvesOrOfADiagramTitleStaysWithItsFirstOwner) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(
        Load(doc,
             L"[Annotation]\r\n\toid = 7\r\n\tnom = \"rectangle_annotation(1, 2)_C\"\r\n"
             L"[Annotation]\r\n\toid = 8\r\n\tnom = \"rectangle_titre\"\r\n\tdiagramme = 0\r\n" +
                 Vector(3) + Vector(4) + Vector(9) + Vector(10) +
                 L"[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 4\r\n\tannotations = table 3 {\r\n"
                 L"\t7\t7\t8\r\n\t}\r\n[courbe]\r\n\toid = 5\r\n\tvx = 9\r\n\tvy = 10\r\n"
                 L"\tannotations = table 1 {\r\n\t7\r\n\t}\r\n[manipulation]\r\n\toid = 1\r\n"
                 L"\tcourbes = table 2 {\r\n\t2\t5\r\n\t}\r\n"));
    VyrCourbe* a = doc.FindCourbeByOid(2);
    VyrCourbe* b = doc.FindCourbeByOid(5);
    ASSERT_TRUE(a && b);
    ASSERT_EQ(1, a->GetNotesCount());
    EXPECT_EQ(7, a->GetNotes().GetFirst()->GetData()->GetOid());
    EXPECT_EQ(0, b->GetNotesCount());
    ASSERT_TRUE(doc.GetDiagramTitle(0));
    EXPECT_EQ(8, doc.GetDiagramTitle(0)->GetOid());
    doc.DeleteCourbe(a, nullptr);
    EXPECT_EQ(nullptr, doc.FindEntity(7));
    EXPECT_TRUE(doc.FindEntity(8));
}

TEST(VyrLoadedLinks, AWellFormedDocumentIsLeftAsItIs) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(doc.Load(Wx(SampleFile("oscillation.vyr"))));
    int curves = 0;
    int notes = 0;
    wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = doc.GetNextCourbe(&node);
        ++curves;
        notes += c->GetNotesCount();
        EXPECT_TRUE(c->GetVx() && c->GetVy());
    }
    EXPECT_EQ(2, curves);
    EXPECT_EQ(2, notes);
}
