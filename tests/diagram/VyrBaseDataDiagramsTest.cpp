#include <gtest/gtest.h>

#include "support/RecordingObserver.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"

TEST(VyrBaseDataDiagrams, NewDocumentHasTwoDiagramsAndTheFirstIsActive) {
    VyrBaseData doc(nullptr);
    ASSERT_NE(doc.GetDiagram(0), nullptr);
    ASSERT_NE(doc.GetDiagram(1), nullptr);
    EXPECT_EQ(doc.GetDiagram(0)->GetIndex(), 0);
    EXPECT_EQ(doc.GetDiagram(1)->GetIndex(), 1);
    EXPECT_EQ(doc.GetDiagram(0)->GetBase(), &doc);
    EXPECT_EQ(doc.GetDiagram(2), nullptr);
    EXPECT_EQ(doc.GetDiagram(-1), nullptr);
    EXPECT_EQ(doc.GetActiveDiagram(), doc.GetDiagram(0));
    EXPECT_EQ(doc.GetDiagramCount(), 1);
}

TEST(VyrBaseDataDiagrams, DiagramsObserveTheirDocument) {
    VyrBaseData doc(nullptr);
    EXPECT_TRUE(doc.GetObservers().Member(doc.GetDiagram(0)));
    EXPECT_TRUE(doc.GetObservers().Member(doc.GetDiagram(1)));
    EXPECT_TRUE(doc.GetDiagram(0)->GetObservables().Member(&doc));
}

TEST(VyrBaseDataDiagrams, SetDiagramCountToTwoActivatesSecondAndSends21Then30) {
    VyrBaseData doc(nullptr);
    RecordingObserver view;
    doc.AddObserver(&view);
    EXPECT_TRUE(doc.SetDiagramCount(2));
    EXPECT_EQ(doc.GetDiagramCount(), 2);
    EXPECT_EQ(doc.GetActiveDiagram(), doc.GetDiagram(1));
    ASSERT_EQ(view.Codes(), (std::vector<int>{21, 30}));
    EXPECT_EQ(view.messages[0].param, doc.GetDiagram(1));
    EXPECT_EQ(view.messages[1].param, nullptr);
    EXPECT_FALSE(doc.GetDiagram(0)->IsActive());
}

TEST(VyrBaseDataDiagrams, SetDiagramCountToTheSameCountSendsNothing) {
    VyrBaseData doc(nullptr);
    doc.SetDiagramCount(2);
    RecordingObserver view;
    doc.AddObserver(&view);
    EXPECT_TRUE(doc.SetDiagramCount(2));
    EXPECT_TRUE(view.messages.empty());
}

TEST(VyrBaseDataDiagrams, SetDiagramCountRefusesAnythingButOneOrTwo) {
    VyrBaseData doc(nullptr);
    RecordingObserver view;
    doc.AddObserver(&view);
    EXPECT_FALSE(doc.SetDiagramCount(3));
    EXPECT_FALSE(doc.SetDiagramCount(0));
    EXPECT_EQ(doc.GetDiagramCount(), 1);
    EXPECT_TRUE(view.messages.empty());
}

TEST(VyrBaseDataDiagrams, BackToOneDiagramActivatesTheFirst) {
    VyrBaseData doc(nullptr);
    doc.SetDiagramCount(2);
    RecordingObserver view;
    doc.AddObserver(&view);
    EXPECT_TRUE(doc.SetDiagramCount(1));
    EXPECT_EQ(doc.GetActiveDiagram(), doc.GetDiagram(0));
    EXPECT_EQ(view.Codes(), (std::vector<int>{21, 30}));
}

TEST(VyrBaseDataDiagrams, CountChangeWithoutActiveChangeSendsOnly30) {
    VyrBaseData doc(nullptr);
    doc.SetDiagramCount(2);                   // diagram 1 active
    doc.SetActiveDiagram(doc.GetDiagram(0));  // back to diagram 0
    doc.SetDiagramCount(1);                   // diagram 0 stays active
    RecordingObserver view;
    doc.AddObserver(&view);
    doc.SetActiveDiagram(doc.GetDiagram(1));
    doc.SetDiagramCount(2);  // diagram 1 was active and stays so
    EXPECT_EQ(view.Codes(), (std::vector<int>{21, 30}));
    EXPECT_EQ(view.messages[0].param, doc.GetDiagram(1));
}

TEST(VyrBaseDataDiagrams, SetActiveDiagramNotifiesOnlyAChange) {
    VyrBaseData doc(nullptr);
    RecordingObserver view;
    doc.AddObserver(&view);
    doc.SetActiveDiagram(nullptr);
    doc.SetActiveDiagram(doc.GetDiagram(0));
    EXPECT_TRUE(view.messages.empty());
    doc.SetActiveDiagram(doc.GetDiagram(1));
    ASSERT_EQ(view.Codes(), (std::vector<int>{21}));
    EXPECT_EQ(view.messages[0].param, doc.GetDiagram(1));
    EXPECT_FALSE(doc.GetDiagram(0)->IsActive());
    EXPECT_EQ(doc.GetActiveDiagram(), doc.GetDiagram(1));
}

TEST(VyrBaseDataDiagrams, DestroyingTheDocumentSendsCode15FromEachDiagram) {
    RecordingObserver view;
    VyrDiagram* first = nullptr;
    {
        VyrBaseData doc(nullptr);
        first = doc.GetDiagram(0);
        first->AddObserver(&view);
    }
    ASSERT_FALSE(view.messages.empty());
    EXPECT_EQ(view.messages.back().code, VYR_MSG_DIAGRAM_DESTROYED);
    EXPECT_EQ(view.messages.back().param, static_cast<void*>(first));
    EXPECT_EQ(view.GetObservables().GetCount(), 0u);
}
