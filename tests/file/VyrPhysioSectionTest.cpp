#include <gtest/gtest.h>

#include <memory>

#include <unistd.h>
#include <vector>

#include "RecordTestSupport.h"
#include "vyrbase/data/VyrRespihomConfigEntity.h"
#include "vyrbase/data/VyrRespihomDataEntity.h"
#include "vyrbase/data/VyrSpiroExpEntity.h"
#include "vyrbase/data/VyrSpiroMetaConfigEntity.h"
#include "vyrbase/data/VyrSpiroMetaDataEntity.h"
#include "vyrbase/data/VyrSpirogEntity.h"
#include "vyrbase/data/VyrSpiromEntity.h"

using recordtest::Count;
using recordtest::LoadText;
using recordtest::SaveText;
using recordtest::Section;

namespace {

std::vector<VyrPhysioRecord*> Records(VyrBaseData& doc, int kind) {
    std::vector<VyrPhysioRecord*> all;
    wxVyrListEntityNode* node = doc.GetFirstEntityNode(kind);
    while (node)
        all.push_back(static_cast<VyrPhysioRecord*>(doc.GetNextEntity(&node, kind)));
    return all;
}

VyrPhysioRecord* Create(VyrBaseData& doc, int kind) {
    switch (kind) {
        case VYR_KIND_SPIROG:
            return doc.GetSpirogEntity(true, nullptr);
        case VYR_KIND_RESPIHOM_CONFIG:
            return doc.GetRespihomConfigEntity(true, nullptr);
        case VYR_KIND_RESPIHOM_DATA:
            return doc.GetRespihomDataEntity(true, nullptr);
        case VYR_KIND_SPIROM:
            return doc.GetSpiromEntity(true, nullptr);
        case VYR_KIND_SPIRO_META_CONFIG:
            return doc.GetSpiroMetaConfigEntity(true, nullptr);
        case VYR_KIND_SPIRO_META_DATA:
            return doc.GetSpiroMetaDataEntity(true, nullptr);
        case VYR_KIND_SPIRO_EXP:
            return doc.GetSpiroExpEntity(true, nullptr);
    }
    return nullptr;
}

void Fill(VyrPhysioRecord* r, int salt) {
    for (int i = 0; i < r->GetFieldCount(); ++i) {
        switch (r->GetField(i).format) {
            case VYR_PHYSIO_REAL:
                r->SetRealAt(i, salt + i * 0.125 - 3);
                break;
            case VYR_PHYSIO_INT:
                r->SetIntAt(i, salt * 10 + i);
                break;
            default:
                r->SetTextAt(i, wxString::Format(L"t\u00e9%d-%d", salt, i));
                break;
        }
    }
}

void ExpectSame(const VyrPhysioRecord* a, const VyrPhysioRecord* b) {
    ASSERT_EQ(a->GetKind(), b->GetKind());
    EXPECT_EQ(a->GetOid(), b->GetOid());
    EXPECT_EQ(a->GetEntityName(), b->GetEntityName());
    for (int i = 0; i < a->GetFieldCount(); ++i) {
        EXPECT_EQ(a->GetRealAt(i), b->GetRealAt(i)) << a->GetField(i).key;
        EXPECT_EQ(a->GetIntAt(i), b->GetIntAt(i)) << a->GetField(i).key;
        EXPECT_EQ(a->GetTextAt(i), b->GetTextAt(i)) << a->GetField(i).key;
    }
}

}  // namespace

TEST(VyrPhysioSection, SpirometryRecordIsWrittenLineByLineFromItsTable) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrSpiromEntity* r = doc.GetSpiromEntity(true, nullptr);
    r->SetText("exp", "essai \"1\"");
    r->SetReal("vc", 4.25);
    r->SetReal("dm", 1234567);
    r->SetInt("spacq", 2);
    r->SetReal("spresexp", -0.5);
    const std::wstring text = SaveText(doc, dir);
    EXPECT_EQ(Section(text, L"[spirom]"),
              L"[spirom]\r\n\toid = " + std::to_wstring(r->GetOid()) +
                  L"\r\n"
                  L"\texp = \"essai \"1\"\"\r\n\tvc = 4.25\r\n\tvri = 0\r\n\tvre = 0\r\n"
                  L"\tvi = 0\r\n\tve = 0\r\n\ttps = 0\r\n\tvvp = 0\r\n\tvvt = 0\r\n\tfr = 0\r\n"
                  L"\tdm = 1.23457e+06\r\n\tspvr = 0\r\n\tspvt = 0\r\n\tspvm = 0\r\n"
                  L"\tspvins = 0\r\n\tspvexp = 0\r\n\tspacq = 2\r\n\tspage = 0\r\n"
                  L"\tsptaille = 0\r\n\tspgarcon = 1\r\n\tspresinsp = 0\r\n"
                  L"\tspvcourant = 0\r\n\tspresexp = -0.5\r\n\r\n");
}

TEST(VyrPhysioSection, ConfigurationAndDataRecordsCarryNameAndTexts) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrRespihomConfigEntity* config = doc.GetRespihomConfigEntity(true, L"R\u00e9glages");
    VyrSpiroMetaDataEntity* data = doc.GetSpiroMetaDataEntity(true, L"Mesure");
    config->SetInt("oiddataselected", data->GetOid());
    data->SetInt("type", 3);
    data->SetText("irmoy", "0.85");
    data->SetText("metab", "1500 kcal");
    const std::wstring text = SaveText(doc, dir);
    EXPECT_EQ(Section(text, L"[Param_RespihomConfig]"),
              L"[Param_RespihomConfig]\r\n\toid = " + std::to_wstring(config->GetOid()) +
                  L"\r\n\tname = \"R\u00e9glages\"\r\n\toiddataselected = " +
                  std::to_wstring(data->GetOid()) + L"\r\n\r\n");
    EXPECT_EQ(Section(text, L"[Param_SpiroMetaData]"),
              L"[Param_SpiroMetaData]\r\n\toid = " + std::to_wstring(data->GetOid()) +
                  L"\r\n\tname = \"Mesure\"\r\n\ttype = 3\r\n\tirmoy = \"0.85\"\r\n"
                  L"\tpuissance = \"\"\r\n\tmetab = \"1500 kcal\"\r\n\r\n");
}

TEST(VyrPhysioSection, SectionsFollowTheCurvesInTheirFixedOrder) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    // Created in another order than the file's.
    for (int kind :
         {VYR_KIND_SPIRO_META_DATA, VYR_KIND_SPIRO_EXP, VYR_KIND_RESPIHOM_DATA, VYR_KIND_SPIROG,
          VYR_KIND_SPIRO_META_CONFIG, VYR_KIND_SPIROM, VYR_KIND_RESPIHOM_CONFIG})
        Create(doc, kind);
    recordtest::Curve(doc, recordtest::Experience(doc, "E"), "C", "U", {{1, 2}});
    const std::wstring text = SaveText(doc, dir);
    const wchar_t* const order[] = {L"[courbe]",
                                    L"[spirog]",
                                    L"[spiroexp]",
                                    L"[spirom]",
                                    L"[Param_RespihomConfig]",
                                    L"[Param_RespihomData]",
                                    L"[Param_SpiroMetaConfig]",
                                    L"[Param_SpiroMetaData]",
                                    L"[manipulation]"};
    size_t last = 0;
    for (const wchar_t* header : order) {
        const size_t at = text.find(header);
        ASSERT_NE(at, std::wstring::npos) << header;
        EXPECT_GT(at, last) << header;
        last = at;
    }
}

TEST(VyrPhysioSection, TwoSpirogramsAreTwoSectionsReadBackWithTheirOids) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrPhysioRecord* a = Create(doc, VYR_KIND_SPIROG);
    doc.GetNewOid();
    VyrPhysioRecord* b = Create(doc, VYR_KIND_SPIROG);
    a->SetReal("vc", 1);
    b->SetReal("vc", 2);
    const std::wstring text = SaveText(doc, dir);
    EXPECT_EQ(Count(text, L"[spirog]\r\n"), 2u);
    EXPECT_LT(text.find(L"\toid = " + std::to_wstring(a->GetOid())),
              text.find(L"\toid = " + std::to_wstring(b->GetOid())));
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, text));
    const auto read = Records(back, VYR_KIND_SPIROG);
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0]->GetOid(), a->GetOid());
    EXPECT_EQ(read[1]->GetOid(), b->GetOid());
    EXPECT_EQ(read[0]->GetReal("vc"), 1.0);
    EXPECT_EQ(read[1]->GetReal("vc"), 2.0);
}

TEST(VyrPhysioSection, SpirometryWithOnlyOidAndSpacqKeepsEveryOtherDefault) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir, L"[spirom]\r\n\toid = 8\r\n\tspacq = 3\r\n"));
    const auto read = Records(doc, VYR_KIND_SPIROM);
    ASSERT_EQ(read.size(), 1u);
    VyrSpiromEntity fresh(8, nullptr);
    fresh.SetInt("spacq", 3);
    ExpectSame(read[0], &fresh);
    EXPECT_EQ(read[0]->GetInt("spgarcon"), 1);
    EXPECT_FALSE(static_cast<VyrSpiromEntity*>(read[0])->GetExtraFlag());
    EXPECT_GE(doc.GetLastOid(), 8);
}

TEST(VyrPhysioSection, DecimalCommaReadsAsPoint) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir, L"[spiroexp]\r\n\toid = 2\r\n\tvi = 1,5\r\n\tve = 2.25\r\n"));
    const auto read = Records(doc, VYR_KIND_SPIRO_EXP);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0]->GetReal("vi"), 1.5);
    EXPECT_EQ(read[0]->GetReal("ve"), 2.25);
}

TEST(VyrPhysioSection, ValuesBeforeTheOidLineAreDropped) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         L"[Param_RespihomData]\r\n\ttype = 4\r\n\tqr = \"avant\r\ntype = 9\"\r\n"
                         L"\toid = 6\r\n\tmetabolisme = \"apr\u00e8s\"\r\n\tautre = 1\r\n"));
    const auto read = Records(doc, VYR_KIND_RESPIHOM_DATA);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0]->GetInt("type"), 0);
    EXPECT_TRUE(read[0]->GetText("qr").empty());
    EXPECT_EQ(read[0]->GetText("metabolisme"), wxString(L"apr\u00e8s"));
}

TEST(VyrPhysioSection, SelectedDataOidIsReadAsItsOwnKeyNotAsANewRecord) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         L"[Param_SpiroMetaConfig]\r\n\toid = 3\r\n\tname = \"c\"\r\n"
                         L"\toiddataselected = 17\r\n"));
    const auto read = Records(doc, VYR_KIND_SPIRO_META_CONFIG);
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0]->GetOid(), 3);
    EXPECT_EQ(read[0]->GetInt("oiddataselected"), 17);
    EXPECT_EQ(doc.FindEntity(17), nullptr);
}

TEST(VyrPhysioSection, AllSevenKindsRoundTripEveryValue) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    std::vector<VyrPhysioRecord*> made;
    for (int kind = VYR_KIND_SPIROG; kind <= VYR_KIND_SPIRO_EXP; ++kind) {
        made.push_back(Create(doc, kind));
        Fill(made.back(), kind);
    }
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, SaveText(doc, dir)));
    for (VyrPhysioRecord* original : made) {
        VyrEntity* e = back.FindEntity(original->GetOid());
        ASSERT_NE(e, nullptr);
        ExpectSame(static_cast<VyrPhysioRecord*>(e), original);
        EXPECT_EQ(Records(back, original->GetKind()).size(), 1u);
    }
}

TEST(VyrPhysioSection, DocumentWithoutRecordsWritesNoPhysiologySection) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    const std::wstring text = SaveText(doc, dir);
    for (const wchar_t* header : {L"[spirog]", L"[spiroexp]", L"[spirom]", L"[Param_"})
        EXPECT_EQ(text.find(header), std::wstring::npos) << header;
}

TEST(VyrPhysioSection, ShortWriteFailsTheSave) {
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "no /dev/full";
    VyrBaseData doc(nullptr);
    for (int i = 0; i < 20000; ++i)
        Create(doc, VYR_KIND_SPIROM);
    EXPECT_FALSE(doc.Save("/dev/full"));
}
