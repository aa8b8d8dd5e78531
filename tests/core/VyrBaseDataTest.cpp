#include <gtest/gtest.h>

#include <climits>

#include <memory>

#include "support/RecordingObserver.h"
#include "support/VyrBaseDataTestAccess.h"
#include "vyrbase/core/VyrBaseData.h"

namespace {
VyrEntity* Create(VyrBaseData& doc, int kind, int oid) {
    return VyrBaseDataTestAccess::CreateEntity(doc, kind, oid, nullptr);
}
}  // namespace

TEST(VyrBaseData, NewDocumentIsEmptyWithOneDiagramAndOidsFromOne) {
    VyrBaseData doc(nullptr);
    EXPECT_EQ(doc.GetEntityList().GetCount(), 0u);
    EXPECT_EQ(doc.GetLastOid(), 0);
    EXPECT_EQ(doc.GetDiagramCount(), 1);
    EXPECT_EQ(doc.GetDocument(), nullptr);
    EXPECT_EQ(doc.GetNewOid(), 1);
    EXPECT_EQ(doc.GetNewOid(), 2);
}

TEST(VyrBaseData, DeleteEmptiesEverythingAndStartsOidsAgain) {
    VyrBaseData doc(nullptr);
    Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    Create(doc, VYR_KIND_NOTE, doc.GetNewOid());
    doc.Delete();
    EXPECT_EQ(doc.GetEntityList().GetCount(), 0u);
    EXPECT_EQ(doc.GetNewOid(), 1);
}

TEST(VyrBaseData, CleanupKeepsTheOidCounter) {
    VyrBaseData doc(nullptr);
    Create(doc, VYR_KIND_VECTEUR, 10);
    doc.Cleanup();
    EXPECT_EQ(doc.GetEntityList().GetCount(), 0u);
    EXPECT_EQ(doc.GetNewOid(), 11);
}

TEST(VyrBaseData, FindEntityAnswersFirstOfThatOidOrNull) {
    VyrBaseData doc(nullptr);
    VyrEntity* a = Create(doc, VYR_KIND_VECTEUR, 4);
    Create(doc, VYR_KIND_COURBE, 4);
    EXPECT_EQ(doc.FindEntity(4), a);
    EXPECT_EQ(doc.FindEntity(5), nullptr);
}

TEST(VyrBaseData, IterationByKindVisitsOnlyThatKindInListOrder) {
    VyrBaseData doc(nullptr);
    VyrEntity* c1 = Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    Create(doc, VYR_KIND_VECTEUR, doc.GetNewOid());
    VyrEntity* c2 = Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    Create(doc, VYR_KIND_NOTE, doc.GetNewOid());
    std::vector<VyrEntity*> seen;
    wxVyrListEntityNode* node = doc.GetFirstEntityNode(VYR_KIND_COURBE);
    while (node)
        seen.push_back(doc.GetNextEntity(&node, VYR_KIND_COURBE));
    EXPECT_EQ(seen, (std::vector<VyrEntity*>{c1, c2}));
    EXPECT_EQ(doc.GetEntity(VYR_KIND_COURBE), c1);
    EXPECT_EQ(doc.GetEntity(VYR_KIND_GRILLE), nullptr);
    EXPECT_EQ(doc.GetFirstEntityNode(VYR_KIND_GRILLE), nullptr);
    EXPECT_EQ(doc.GetNextEntity(nullptr, VYR_KIND_COURBE), nullptr);
}

TEST(VyrBaseData, FindEntityAnswersTheNextOfAnOidOnceTheFirstIsRemoved) {
    VyrBaseData doc(nullptr);
    VyrEntity* a = Create(doc, VYR_KIND_VECTEUR, 4);
    VyrEntity* b = Create(doc, VYR_KIND_COURBE, 4);
    doc.RemoveEntity(a);
    EXPECT_EQ(doc.FindEntity(4), b);
    doc.RemoveEntity(b);
    EXPECT_EQ(doc.FindEntity(4), nullptr);
}

TEST(VyrBaseData, IterationByKindFollowsRemovalsAndCreations) {
    VyrBaseData doc(nullptr);
    VyrEntity* c1 = Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    VyrEntity* c2 = Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    Create(doc, VYR_KIND_NOTE, doc.GetNewOid());
    VyrEntity* c3 = Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    doc.RemoveEntity(c2);
    VyrEntity* c4 = Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    doc.RemoveEntity(c1);
    std::vector<VyrEntity*> seen;
    wxVyrListEntityNode* node = doc.GetFirstEntityNode(VYR_KIND_COURBE);
    while (node)
        seen.push_back(doc.GetNextEntity(&node, VYR_KIND_COURBE));
    EXPECT_EQ(seen, (std::vector<VyrEntity*>{c3, c4}));
    const int oid = c3->GetOid();
    doc.Cleanup();
    EXPECT_EQ(doc.GetFirstEntityNode(VYR_KIND_COURBE), nullptr);
    EXPECT_EQ(doc.FindEntity(oid), nullptr);
}

TEST(VyrBaseData, NextEntityWithACursorOfAnotherKindWalksToTheNextOfTheKindAsked) {
    VyrBaseData doc(nullptr);
    Create(doc, VYR_KIND_COURBE, doc.GetNewOid());
    VyrEntity* note = Create(doc, VYR_KIND_NOTE, doc.GetNewOid());
    VyrEntity* vector = Create(doc, VYR_KIND_VECTEUR, doc.GetNewOid());
    VyrEntity* note2 = Create(doc, VYR_KIND_NOTE, doc.GetNewOid());
    wxVyrListEntityNode* node = doc.GetFirstEntityNode(VYR_KIND_COURBE);
    EXPECT_NE(doc.GetNextEntity(&node, VYR_KIND_NOTE), nullptr);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetData(), note);
    // From a note, asking for vectors: the walk goes on to the vector after it.
    EXPECT_EQ(doc.GetNextEntity(&node, VYR_KIND_VECTEUR), note);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetData(), vector);
    EXPECT_EQ(doc.GetNextEntity(&node, VYR_KIND_NOTE), vector);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->GetData(), note2);
}

TEST(VyrBaseData, RemoveEntityDeletesAttachedAndIgnoresNullAndForeign) {
    VyrBaseData doc(nullptr), other(nullptr);
    VyrEntity* mine = Create(doc, VYR_KIND_NOTE, doc.GetNewOid());
    VyrEntity* foreign = Create(other, VYR_KIND_NOTE, other.GetNewOid());
    doc.RemoveEntity(nullptr);
    doc.RemoveEntity(foreign);
    EXPECT_EQ(other.GetEntityList().GetCount(), 1u);
    EXPECT_EQ(other.FindEntity(foreign->GetOid()), foreign);
    doc.RemoveEntity(mine);
    EXPECT_EQ(doc.GetEntityList().GetCount(), 0u);
}

TEST(VyrBaseData, DumpChangesNothing) {
    VyrBaseData doc(nullptr);
    Create(doc, VYR_KIND_NOTE, doc.GetNewOid());
    doc.Dump();
    EXPECT_EQ(doc.GetEntityList().GetCount(), 1u);
    EXPECT_EQ(doc.GetLastOid(), 1);
}

TEST(VyrBaseData, ActiveBaseIsSetOnlyByTheApplicationAndForgottenWhenDestroyed) {
    EXPECT_EQ(VyrBaseData::GetActiveBase(), nullptr);
    {
        VyrBaseData doc(nullptr);
        EXPECT_EQ(VyrBaseData::GetActiveBase(), nullptr);
        VyrBaseData::SetActiveBase(&doc);
        EXPECT_EQ(VyrBaseData::GetActiveBase(), &doc);
    }
    // A destroyed document must not stay the active one.
    EXPECT_EQ(VyrBaseData::GetActiveBase(), nullptr);
}

TEST(VyrBaseData, DocumentDestroyedBeforeItsObserversLeavesThemClean) {
    RecordingObserver observer;
    {
        VyrBaseData doc(nullptr);
        doc.AddObserver(&observer);
        EXPECT_EQ(observer.GetObservables().GetCount(), 1u);
    }
    EXPECT_EQ(observer.GetObservables().GetCount(), 0u);
}

TEST(VyrBaseData, ObserversDestroyedBeforeTheirDocumentLeaveItClean) {
    VyrBaseData doc(nullptr);
    const size_t diagrams = doc.GetObservers().GetCount();
    {
        RecordingObserver observer;
        doc.AddObserver(&observer);
        EXPECT_EQ(doc.GetObservers().GetCount(), diagrams + 1);
    }
    EXPECT_EQ(doc.GetObservers().GetCount(), diagrams);
    VyrBaseDataTestAccess::CreateEntity(doc, VYR_KIND_NOTE, 1, nullptr);
    doc.SetDiagramCount(2);  // notifies: must not reach the destroyed observer
}

TEST(VyrBaseData, GetNewOidStaysAtTheLargestIntInsteadOfOverflowing) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess::CreateEntity(doc, VYR_KIND_COURBE, INT_MAX, nullptr);
    EXPECT_EQ(INT_MAX, doc.GetNewOid());
    EXPECT_EQ(INT_MAX, doc.GetNewOid());
}
