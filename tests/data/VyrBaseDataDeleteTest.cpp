#include <gtest/gtest.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVariable.h"

using namespace vyrtest;

namespace {
struct Doc {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* u = Curve(doc, e, "U", {1, 2}, {10, 20});
    VyrCourbe* i = Curve(doc, e, "I", {1, 2}, {1, 2});
    VyrNote* n1 = doc.CreateNoteEntity();
    VyrNote* n2 = doc.CreateNoteEntity();
    RecordingObserver obs;
    Doc() {
        u->AddNote(n1);
        u->AddNote(n2);
    }
};
}  // namespace

TEST(VyrBaseDataDelete, DeleteCourbeNotifiesFirstThenRemovesCurveVectorsAndNotes) {
    Doc d;
    VyrExperience* e = d.e;
    VyrCourbe* u = d.u;
    bool heldWhenNotified = false;
    d.obs.onMessage = [&](RecordingObserver&, VyrObserverMsg& msg) {
        if (msg.GetMsg() == VYR_MSG_CURVE_DELETED)
            heldWhenNotified = e->FindCourbe(u) != nullptr && u->GetVx() != nullptr;
    };
    d.doc.AddObserver(&d.obs);
    d.doc.DeleteCourbe(d.u, d.e);
    ASSERT_EQ(d.obs.messages.size(), 1u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_CURVE_DELETED);
    EXPECT_EQ(d.obs.messages[0].param, u);
    EXPECT_TRUE(heldWhenNotified);
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.i}));
    EXPECT_EQ(Entities(d.doc.GetEntityList()),
              (std::vector<VyrEntity*>{d.e, d.i, d.i->GetVx(), d.i->GetVy()}));
    EXPECT_TRUE(Detached(d.doc).empty());
}

TEST(VyrBaseDataDelete, DeleteCourbeFindsTheExperimentWhenNoneIsGiven) {
    Doc d;
    d.doc.DeleteCourbe(d.i, nullptr);
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.u}));
    EXPECT_EQ(d.doc.FindCourbe(L"C_I_t"), nullptr);
}

TEST(VyrBaseDataDelete, DeleteCourbeUsesTheExperimentThatReallyHoldsIt) {
    Doc d;
    VyrExperience* other = Experience(d.doc, "F");
    d.doc.DeleteCourbe(d.i, other);
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.u}));
    EXPECT_EQ(d.doc.FindCourbe(L"C_I_t"), nullptr);
}

TEST(VyrBaseDataDelete, DeleteCourbeInNoExperimentDoesNothing) {
    Doc d;
    auto* loose = static_cast<VyrCourbe*>(
        VyrBaseDataTestAccess::CreateEntity(d.doc, VYR_KIND_COURBE, d.doc.GetNewOid(), L"L"));
    d.doc.AddObserver(&d.obs);
    d.doc.DeleteCourbe(loose, nullptr);
    d.doc.DeleteCourbe(nullptr, d.e);
    EXPECT_TRUE(d.obs.messages.empty());
    EXPECT_EQ(d.doc.FindCourbe(L"L"), loose);
}

TEST(VyrBaseDataDelete, DeleteCourbeLeavesADetachedCurveAlive) {
    Doc d;
    d.doc.DeconnectCurve(d.u);
    d.doc.AddObserver(&d.obs);
    d.doc.DeleteCourbe(d.u, nullptr);  // still in its experiment's list
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{VYR_MSG_CURVE_DELETED}));
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.i}));
    // Curve, vectors and notes stay in the detached store, untouched.
    EXPECT_EQ(Detached(d.doc),
              (std::vector<VyrEntity*>{d.u, d.u->GetVx(), d.u->GetVy(), d.n1, d.n2}));
    EXPECT_EQ(d.u->GetVx()->GetVal(1), 2.0);
    EXPECT_EQ(d.n1->GetOid(), 8);
    EXPECT_EQ(d.u->GetNotesCount(), 0);  // the notes left the curve, not the document
}

TEST(VyrBaseDataDelete, RemoveEntityLeavesADetachedCurveAlive) {
    Doc d;
    d.doc.DeconnectCurve(d.u);
    d.doc.RemoveEntity(d.u);
    EXPECT_EQ(Detached(d.doc).front(), d.u);
    EXPECT_EQ(d.u->GetVy()->GetVal(1), 20.0);
    EXPECT_EQ(d.u->GetNotesCount(), 2);
}

TEST(VyrBaseDataDelete, DeleteCourbeWithOneVectorForBothAxesFreesItOnce) {
    Doc d;
    VyrVecteur* y = d.i->GetVy();
    d.i->SetVy(d.i->GetVx());
    d.doc.DeleteCourbe(d.i, nullptr);
    // The curve's own Y, no longer referred to, stays in the list.
    EXPECT_EQ(d.doc.FindEntity(y->GetOid()), y);
    EXPECT_EQ(d.doc.FindCourbe(L"C_I_t"), nullptr);
}

TEST(VyrBaseDataDelete, DeleteNoteOfCourbeDeletesAttachedAndKeepsDetachedNotes) {
    Doc d;
    d.doc.DeconnectEntity(d.n2);
    d.doc.DeleteNoteOfCourbe(d.u);
    EXPECT_EQ(d.u->GetNotesCount(), 0);
    EXPECT_EQ(d.doc.FindEntity(8), nullptr);  // n1 deleted
    EXPECT_EQ(Detached(d.doc), (std::vector<VyrEntity*>{d.n2}));
    d.doc.DeleteNoteOfCourbe(nullptr);
}

TEST(VyrBaseDataDelete, DeleteExperienceSends4ForEachCurveBefore3) {
    Doc d;
    VyrVariable* v = d.doc.CreateVariableEntity(d.e, "a");
    VyrExperience* other = Experience(d.doc, "F");
    VyrCourbe* f = Curve(d.doc, other, "W", {1}, {1});
    d.doc.AddObserver(&d.obs);
    VyrExperience* e = d.e;
    VyrCourbe* u = d.u;
    VyrCourbe* i = d.i;
    d.doc.DeleteExperience(e);
    ASSERT_EQ(d.obs.messages.size(), 3u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_CURVE_DELETED);
    EXPECT_EQ(d.obs.messages[0].param, u);
    EXPECT_EQ(d.obs.messages[1].code, VYR_MSG_CURVE_DELETED);
    EXPECT_EQ(d.obs.messages[1].param, i);
    EXPECT_EQ(d.obs.messages[2].code, VYR_MSG_EXPERIENCE_DELETED);
    EXPECT_EQ(d.obs.messages[2].param, e);
    (void)v;
    EXPECT_EQ(Entities(d.doc.GetEntityList()),
              (std::vector<VyrEntity*>{other, f, f->GetVx(), f->GetVy()}));
}

TEST(VyrBaseDataDelete, DeleteExperienceKeepsDetachedCurvesAndVariables) {
    Doc d;
    VyrVariable* v = d.doc.CreateVariableEntity(d.e, "a");
    d.doc.DeconnectCurve(d.i);
    d.doc.DeconnectEntity(v);
    d.doc.DeleteExperience(d.e);
    EXPECT_TRUE(d.doc.GetEntityList().IsEmpty());
    EXPECT_EQ(Detached(d.doc), (std::vector<VyrEntity*>{d.i, d.i->GetVx(), d.i->GetVy(), v}));
    EXPECT_EQ(d.i->GetVy()->GetVal(1), 2.0);
    EXPECT_EQ(v->GetEntityName(), "a");
}

TEST(VyrBaseDataDelete, DeleteAllExperiencesDeletesEachInListOrder) {
    Doc d;
    VyrExperience* f = Experience(d.doc, "F");
    VyrCourbe* w = Curve(d.doc, f, "W", {1}, {1});
    VyrNote* loose = d.doc.CreateNoteEntity();
    d.doc.AddObserver(&d.obs);
    VyrExperience* e = d.e;
    d.doc.DeleteAllExperiences();
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{4, 4, 3, 4, 3}));
    EXPECT_EQ(d.obs.messages[2].param, e);
    EXPECT_EQ(d.obs.messages[3].param, w);
    EXPECT_EQ(d.obs.messages[4].param, f);
    EXPECT_EQ(Entities(d.doc.GetEntityList()), (std::vector<VyrEntity*>{loose}));
}

TEST(VyrBaseDataDelete, EraseByName) {
    Doc d;
    d.doc.EraseCourbe(L"C_I_t");
    EXPECT_EQ(d.doc.FindCourbe(L"C_I_t"), nullptr);
    EXPECT_EQ(d.e->GetNbCourbe(), 1);
    d.doc.EraseCourbe(L"nothing");
    d.doc.EraseCourbe(nullptr);
    d.doc.EraseExperience(L"e");  // case counts
    EXPECT_EQ(d.doc.FindExperience(L"E"), d.e);
    d.doc.EraseExperience(nullptr);
    d.doc.EraseExperience(L"E");
    EXPECT_EQ(d.doc.FindExperience(L"E"), nullptr);
    EXPECT_TRUE(d.doc.GetEntityList().IsEmpty());
}

TEST(VyrBaseDataDelete, DeleteOfTheDocumentRunsDeleteAllExperiencesFirst) {
    Doc d;
    d.doc.DeconnectCurve(d.i);
    d.doc.AddObserver(&d.obs);
    VyrExperience* e = d.e;
    d.doc.Delete();
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{VYR_MSG_CURVE_DELETED, VYR_MSG_CURVE_DELETED,
                                               VYR_MSG_EXPERIENCE_DELETED}));
    EXPECT_EQ(d.obs.messages[2].param, e);
    EXPECT_TRUE(d.doc.GetEntityList().IsEmpty());
    EXPECT_TRUE(Detached(d.doc).empty());
    EXPECT_EQ(d.doc.GetNewOid(), 1);
}
