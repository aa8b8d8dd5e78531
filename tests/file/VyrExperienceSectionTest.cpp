#include <gtest/gtest.h>

#include "FileTestSupport.h"

using namespace filetest;

TEST(VyrExperienceSection, WritesNameDescriptionAndCurveOidsOnOneLine) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    VyrExperience* e = doc.FindExperienceFromCourbe(c);
    e->SetCommentaire(L"say \"x\"");
    VyrBaseDataTestAccess access(doc);
    for (int oid = 20; oid < 25; ++oid)
        e->AddCourbe(static_cast<VyrCourbe*>(access.CreateEntity(VYR_KIND_COURBE, oid, nullptr)));
    bool ok = false;
    const std::wstring text = WrittenBy(
        doc, [](VyrBaseDataTestAccess& a, VyrTextWriter& out) { return a.SauveExperience(out); },
        &ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(std::wstring(L"[manipulation]\r\n\toid = 1\r\n\tnom = \"Exp\u00e9rience 1\"\r\n"
                           L"\tdescription = \"say \"x\"\"\r\n"
                           L"\tcourbes = table 6 {\r\n\t2\t20\t21\t22\t23\t24\t\r\n\t}\r\n\r\n"),
              text);
}

TEST(VyrExperienceSection, ReadsOidNameAndCurves) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    VyrEntity* c5 = access.CreateEntity(VYR_KIND_COURBE, 5, nullptr);
    VyrEntity* c6 = access.CreateEntity(VYR_KIND_COURBE, 6, nullptr);
    bool stop = false;
    const wxString next =
        ReadWith(doc,
                 L"[manipulation]\r\n\toid = 8\r\n\tnom = \"E\"\r\n\tdescription = \"ignored\"\r\n"
                 L"\tcourbes = table 2 {\r\n\t6\t5\t\r\n\t}\r\n\r\n[image_Redy]\r\n",
                 [&stop](VyrBaseDataTestAccess& a) { return a.ParseExperience(&stop); });
    EXPECT_EQ(wxString(L"[image_Redy]"), next);
    EXPECT_FALSE(stop);
    VyrExperience* e = doc.FindExperienceByOid(8);
    ASSERT_TRUE(e);
    EXPECT_EQ(wxString(L"E"), e->GetEntityName());
    EXPECT_TRUE(e->GetCommentaire().empty());
    ASSERT_EQ(2, e->GetNbCourbe());
    EXPECT_EQ(c6, e->GetCourbes().GetFirst()->GetData());
    EXPECT_EQ(c5, e->GetCourbes().GetLast()->GetData());
}

TEST(VyrExperienceSection, OneLineTableAndDefaultName) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    access.CreateEntity(VYR_KIND_COURBE, 3, nullptr);
    bool stop = false;
    ReadWith(doc, L"[manipulation]\r\n\toid = 8\r\n\tcourbes = table 1 {3}\r\n",
             [&stop](VyrBaseDataTestAccess& a) { return a.ParseExperience(&stop); });
    VyrExperience* e = doc.FindExperienceByOid(8);
    ASSERT_TRUE(e);
    EXPECT_EQ(wxString(L"IDS_EXPERIENCE1"), e->GetEntityName());
    EXPECT_EQ(1, e->GetNbCourbe());
    EXPECT_FALSE(stop);
}

TEST(VyrExperienceSection, AnOidNamingNothingOrAMissingBraceRaisesTheStopFlag) {
    {
        VyrBaseData doc(nullptr);
        VyrBaseDataTestAccess access(doc);
        access.CreateEntity(VYR_KIND_COURBE, 3, nullptr);
        bool stop = false;
        ReadWith(doc,
                 L"[manipulation]\r\n\toid = 8\r\n\tcourbes = table 2 {\r\n\t42\t3\t\r\n\t}\r\n",
                 [&stop](VyrBaseDataTestAccess& a) { return a.ParseExperience(&stop); });
        EXPECT_TRUE(stop);
        ASSERT_TRUE(doc.FindExperienceByOid(8));
        EXPECT_EQ(1, doc.FindExperienceByOid(8)->GetNbCourbe());
    }
    {
        VyrBaseData doc(nullptr);
        bool stop = false;
        ReadWith(doc, L"[manipulation]\r\n\toid = 8\r\n\tcourbes = table 2 {\r\n\t",
                 [&stop](VyrBaseDataTestAccess& a) { return a.ParseExperience(&stop); });
        EXPECT_TRUE(stop);
    }
}

TEST(VyrExperienceSection, AFileWithAnExperimentGetsNoDefaultOne) {
    TempDir dir;
    const std::string path = dir.File("e.vyr");
    WriteBytes(path, Utf16File(L"[manipulation]\r\n\toid = 4\r\n\tnom = \"only\"\r\n"));
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(doc.Load(Wx(path)));
    ASSERT_EQ(1u, doc.GetEntityList().GetCount());
    EXPECT_EQ(wxString(L"only"), doc.GetEntityList().GetFirst()->GetData()->GetEntityName());
}
