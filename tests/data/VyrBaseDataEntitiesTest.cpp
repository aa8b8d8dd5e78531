#include <gtest/gtest.h>

#include "support/VyrBaseDataTestAccess.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCompteRendu.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrGrilleEntity.h"
#include "vyrbase/data/VyrImageRedyEntity.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrSpiroExpEntity.h"
#include "vyrbase/data/VyrSpiroMetaConfigEntity.h"
#include "vyrbase/data/VyrSpiroMetaDataEntity.h"
#include "vyrbase/data/VyrSpirogEntity.h"
#include "vyrbase/data/VyrSpiromEntity.h"
#include "vyrbase/data/VyrRespihomConfigEntity.h"
#include "vyrbase/data/VyrRespihomDataEntity.h"

namespace {
VyrEntity* Create(VyrBaseData& doc, int kind, int oid, const wchar_t* name = nullptr) {
    return VyrBaseDataTestAccess::CreateEntity(doc, kind, oid, name);
}

VyrOutilInterval Tool(const wchar_t* etiq1) {
    VyrOutilInterval t(0, nullptr);
    t.SetEtiq1(etiq1);
    t.SetEtiq2(L"B");
    t.SetAbs(L"s");
    t.SetOrd(L"V");
    t.SetPoints(1.0, 2.0, 3.0, 4.0);
    return t;
}
}  // namespace

TEST(VyrBaseDataEntities, CreateEntityRefusesKindsOutsideOneToSeventeen) {
    VyrBaseData doc(nullptr);
    EXPECT_EQ(Create(doc, 0, 5), nullptr);
    EXPECT_EQ(Create(doc, 18, 5), nullptr);
    EXPECT_EQ(Create(doc, -1, 5), nullptr);
    EXPECT_EQ(doc.GetEntityList().GetCount(), 0u);
    EXPECT_EQ(doc.GetLastOid(), 0);
}

TEST(VyrBaseDataEntities, CreateEntityMakesTheClassOfEveryKind) {
    VyrBaseData doc(nullptr);
    for (int kind = VYR_KIND_FIRST; kind <= VYR_KIND_LAST; ++kind) {
        VyrEntity* e = Create(doc, kind, 100 + kind, L"named");
        ASSERT_NE(e, nullptr) << kind;
        EXPECT_EQ(e->GetKind(), kind);
        EXPECT_EQ(e->GetOid(), 100 + kind);
        EXPECT_EQ(e->GetBase(), &doc);
        EXPECT_EQ(e->GetEntityName(), L"named");
        EXPECT_EQ(doc.GetEntityList().GetLast()->GetData(), e);
    }
    EXPECT_NE(dynamic_cast<VyrExperience*>(doc.FindEntity(101)), nullptr);
    EXPECT_NE(dynamic_cast<VyrCourbe*>(doc.FindEntity(102)), nullptr);
    EXPECT_NE(dynamic_cast<VyrOutilInterval*>(doc.FindEntity(117)), nullptr);
}

TEST(VyrBaseDataEntities, CreateEntityRaisesTheOidCounterButNeverLowersIt) {
    VyrBaseData doc(nullptr);
    VyrEntity* first = Create(doc, VYR_KIND_COURBE, 500);
    EXPECT_EQ(doc.GetNewOid(), 501);
    VyrEntity* low = Create(doc, VYR_KIND_COURBE, 3);
    VyrEntity* duplicate = Create(doc, VYR_KIND_COURBE, 3);
    EXPECT_EQ(doc.GetLastOid(), 501);
    EXPECT_NE(first, nullptr);
    // Creation never checks that the oid is free: the first one created is found.
    EXPECT_EQ(doc.FindEntity(3), low);
    EXPECT_NE(duplicate, low);
}

TEST(VyrBaseDataEntities, CreateNoteEntityTakesAFreshOidAndNoName) {
    VyrBaseData doc(nullptr);
    VyrNote* note = doc.CreateNoteEntity();
    ASSERT_NE(note, nullptr);
    EXPECT_EQ(note->GetOid(), 1);
    EXPECT_TRUE(note->GetEntityName().empty());
    EXPECT_EQ(doc.FindEntity(1), note);
}

TEST(VyrBaseDataEntities, SingleRecordGetterCreatesEveryTimeItIsAskedTo) {
    VyrBaseData doc(nullptr);
    EXPECT_EQ(doc.GetGrilleEntity(false, nullptr), nullptr);
    VyrGrilleEntity* older = doc.GetGrilleEntity(true, nullptr);
    VyrGrilleEntity* newer = doc.GetGrilleEntity(true, L"grid");
    ASSERT_NE(older, nullptr);
    ASSERT_NE(newer, nullptr);
    EXPECT_NE(older, newer);
    EXPECT_EQ(newer->GetEntityName(), L"grid");
    EXPECT_EQ(doc.GetGrilleEntity(false, nullptr), older);
}

TEST(VyrBaseDataEntities, EverySingleRecordGetterAnswersItsOwnKind) {
    VyrBaseData doc(nullptr);
    EXPECT_EQ(doc.GetCompteRenduEntity(true, nullptr)->GetKind(), VYR_KIND_COMPTE_RENDU);
    EXPECT_EQ(doc.GetSpirogEntity(true, nullptr)->GetKind(), VYR_KIND_SPIROG);
    EXPECT_EQ(doc.GetRespihomConfigEntity(true, nullptr)->GetKind(), VYR_KIND_RESPIHOM_CONFIG);
    EXPECT_EQ(doc.GetRespihomDataEntity(true, nullptr)->GetKind(), VYR_KIND_RESPIHOM_DATA);
    EXPECT_EQ(doc.GetSpiromEntity(true, nullptr)->GetKind(), VYR_KIND_SPIROM);
    EXPECT_EQ(doc.GetSpiroMetaConfigEntity(true, nullptr)->GetKind(), VYR_KIND_SPIRO_META_CONFIG);
    EXPECT_EQ(doc.GetSpiroMetaDataEntity(true, nullptr)->GetKind(), VYR_KIND_SPIRO_META_DATA);
    EXPECT_EQ(doc.GetSpiroExpEntity(true, nullptr)->GetKind(), VYR_KIND_SPIRO_EXP);
    EXPECT_EQ(doc.GetSpiroExpEntity(false, nullptr), doc.GetEntity(VYR_KIND_SPIRO_EXP));
    EXPECT_EQ(doc.GetEntityList().GetCount(), 8u);
}

TEST(VyrBaseDataEntities, AddOutilIntervalWithEqualTextsAndValuesAddsNothing) {
    VyrBaseData doc(nullptr);
    VyrOutilInterval model = Tool(L"A");
    EXPECT_FALSE(doc.AddOutilIntervalEntity(&model));
    EXPECT_TRUE(doc.AddOutilIntervalEntity(&model));
    EXPECT_EQ(doc.GetEntityList().GetCount(), 1u);
    auto* added = static_cast<VyrOutilInterval*>(doc.GetEntity(VYR_KIND_OUTIL_INTERVAL));
    ASSERT_NE(added, nullptr);
    EXPECT_NE(added, &model);
    EXPECT_EQ(added->GetEtiq1(), L"A");
    EXPECT_EQ(added->GetOrd(), L"V");
    EXPECT_EQ(added->GetY1(), 4.0);
}

TEST(VyrBaseDataEntities, AddOutilIntervalDifferingInLetterCaseAddsANewTool) {
    VyrBaseData doc(nullptr);
    VyrOutilInterval upper = Tool(L"A"), lower = Tool(L"a");
    EXPECT_FALSE(doc.AddOutilIntervalEntity(&upper));
    EXPECT_FALSE(doc.AddOutilIntervalEntity(&lower));
    EXPECT_EQ(doc.GetEntityList().GetCount(), 2u);
    VyrOutilInterval moved = Tool(L"A");
    moved.SetX1(3.5);
    EXPECT_FALSE(doc.AddOutilIntervalEntity(&moved));
    EXPECT_EQ(doc.GetEntityList().GetCount(), 3u);
    EXPECT_FALSE(doc.AddOutilIntervalEntity(nullptr));
}

TEST(VyrBaseDataEntities, HitTestOutilIntervalAnswersTheFirstSelectedTool) {
    VyrBaseData doc(nullptr);
    VyrOutilInterval a = Tool(L"A"), b = Tool(L"B");
    doc.AddOutilIntervalEntity(&a);
    doc.AddOutilIntervalEntity(&b);
    EXPECT_EQ(doc.HitTestOutilInterval(), nullptr);
    wxVyrListEntityNode* node = doc.GetFirstOutilIntervalNode();
    VyrOutilInterval* first = doc.GetNextOutilInterval(&node);
    VyrOutilInterval* second = doc.GetNextOutilInterval(&node);
    EXPECT_EQ(node, nullptr);
    second->SetSelected(true);
    EXPECT_EQ(doc.HitTestOutilInterval(), second);
    first->SetSelected(true);
    EXPECT_EQ(doc.HitTestOutilInterval(), first);
    doc.DeleteOutilInterval(first);
    EXPECT_EQ(doc.HitTestOutilInterval(), second);
}

TEST(VyrBaseDataEntities, TypedIterationWalksExperiencesCurvesAndPictures) {
    VyrBaseData doc(nullptr);
    VyrEntity* e = Create(doc, VYR_KIND_EXPERIENCE, 1);
    VyrEntity* c = Create(doc, VYR_KIND_COURBE, 2);
    VyrEntity* p = Create(doc, VYR_KIND_IMAGE_REDY, 3);
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    EXPECT_EQ(doc.GetNextExperience(&node), e);
    EXPECT_EQ(node, nullptr);
    node = doc.GetFirstCourbeNode();
    EXPECT_EQ(doc.GetNextCourbe(&node), c);
    node = doc.GetFirstImageRedyEntityNode();
    EXPECT_EQ(doc.GetNextImageRedyEntity(&node), p);
    EXPECT_EQ(doc.GetFirstOutilIntervalNode(), nullptr);
}

TEST(VyrBaseDataEntities, CreateImageRedyEntityAppendsANamedPictureWithAFreshOid) {
    VyrBaseData doc(nullptr);
    VyrImageRedyEntity* first = doc.CreateImageRedyEntity(L"set-up");
    VyrImageRedyEntity* second = doc.CreateImageRedyEntity(nullptr);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->GetOid(), 1);
    EXPECT_EQ(second->GetOid(), 2);
    EXPECT_EQ(first->GetEntityName(), L"set-up");
    EXPECT_TRUE(second->GetEntityName().empty());
    wxVyrListEntityNode* node = doc.GetFirstImageRedyEntityNode();
    EXPECT_EQ(doc.GetNextImageRedyEntity(&node), first);
    EXPECT_EQ(doc.GetNextImageRedyEntity(&node), second);
}
