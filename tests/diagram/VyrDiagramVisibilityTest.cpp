#include <gtest/gtest.h>

#include "support/DiagramTestDocument.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

class Visibility : public ::testing::Test {
protected:
    void SetUp() override {
        d0 = t.Diagram(0);
        d1 = t.Diagram(1);
        c = t.AddCourbe("U", "V", {{0, 1}, {10, 2}, {30, 3}});
    }

    DiagramTestDocument t;
    VyrDiagram* d0 = nullptr;
    VyrDiagram* d1 = nullptr;
    VyrCourbe* c = nullptr;
};

}  // namespace

TEST_F(Visibility, ShowDataTwiceAnswersTrueThenFalseAndRecomputesBothTimes) {
    EXPECT_TRUE(d0->ShowData(c, true));
    ASSERT_NE(d0->FindUnitX("s"), nullptr);
    EXPECT_EQ(d0->FindUnitX("s")->GetMax(VYR_SCALE_AUTO), 30.0);
    // New data arrive without a notification; showing again still recomputes the ranges.
    t.doc.AddPoint(c, 100, 4, false);
    EXPECT_FALSE(d0->ShowData(c, true));
    EXPECT_EQ(d0->FindUnitX("s")->GetMax(VYR_SCALE_AUTO), 100.0);
    EXPECT_EQ(d0->GetScale(VYR_SCALE_AUTO)->GetXmax(), 100.0);
    EXPECT_EQ(d0->GetNbCourbe(), 1);
}

TEST_F(Visibility, ShowDataKeepsTheCurveFlagEqualToTheShownList) {
    EXPECT_TRUE(d0->ShowData(c, true));
    EXPECT_TRUE(c->IsShownInDiagram(0));
    EXPECT_FALSE(c->IsShownInDiagram(1));
    EXPECT_TRUE(d0->IsVisibleInterne(c));
    EXPECT_EQ(d0->GetPlottedCourbes(), std::vector<VyrCourbe*>{c});

    EXPECT_TRUE(d0->ShowData(c, false));
    EXPECT_FALSE(c->IsShownInDiagram(0));
    EXPECT_FALSE(d0->IsVisibleInterne(c));
    EXPECT_TRUE(d0->GetPlottedCourbes().empty());
    EXPECT_FALSE(d0->ShowData(c, false));
}

TEST_F(Visibility, ShowingACurveTakesTheAbscissaFromItsXVector) {
    VyrCourbe* f = t.AddCourbe("A", "dB", {{100, 1}}, "f", "Hz");
    d0->ShowData(c, true);
    EXPECT_EQ(d0->GetGrdX(), "t");
    EXPECT_EQ(d0->GetUx(), "s");
    EXPECT_EQ(d0->GetUy(), "V");
    d0->ShowData(f, true);
    EXPECT_EQ(d0->GetGrdX(), "f");
    EXPECT_EQ(d0->GetUx(), "Hz");
    // Only the curve drawn against the current abscissa is plotted.
    EXPECT_EQ(d0->GetPlottedCourbes(), std::vector<VyrCourbe*>{f});
    EXPECT_EQ(d0->GetNbCourbe(), 2);
}

TEST_F(Visibility, ShowDataOfNullIsFalse) {
    EXPECT_FALSE(d0->ShowData(nullptr, true));
    EXPECT_FALSE(d0->IsVisibleInterne(nullptr));
}

TEST_F(Visibility, AnEntityThatIsNotACurveIsListedButNotCounted) {
    VyrNote* note = t.doc.CreateNoteEntity();
    EXPECT_TRUE(d0->ShowData(note, true));
    EXPECT_EQ(d0->GetShownEntities().GetCount(), 1u);
    EXPECT_EQ(d0->GetNbCourbe(), 0);
    d0->ShowCourbeInterne(c, true);
    EXPECT_EQ(d0->GetNbCourbe(), 1);
    EXPECT_TRUE(c->IsShownInDiagram(0));
}

TEST_F(Visibility, ShowingInTheSecondDiagramRaisesTheDiagramCount) {
    ASSERT_EQ(t.doc.GetDiagramCount(), 1);
    RecordingObserver docView;
    t.doc.AddObserver(&docView);
    d1->ShowData(c, true);
    EXPECT_EQ(t.doc.GetDiagramCount(), 2);
    EXPECT_EQ(docView.Codes(), (std::vector<int>{21, 30}));
    // Hiding in diagram 0 never lowers it.
    d0->ShowData(c, true);
    d0->ShowData(c, false);
    EXPECT_EQ(t.doc.GetDiagramCount(), 2);
}

TEST_F(Visibility, ACurveShownOnlyInTheSecondDiagramIsListedThere) {
    d1->ShowData(c, true);
    wxArrayInt list;
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(c, &list), 1);
    ASSERT_EQ(list.GetCount(), 1u);
    EXPECT_EQ(list[0], 1);

    d0->ShowData(c, true);
    wxArrayInt both;
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(c, &both), 0);
    ASSERT_EQ(both.GetCount(), 2u);
    EXPECT_EQ(both[0], 0);
    EXPECT_EQ(both[1], 1);
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(c, nullptr), 0);
}

TEST_F(Visibility, GetListDiagramsIsVisibleAnswersMinusOneForNothing) {
    wxArrayInt list;
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(c, &list), -1);
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(nullptr, &list), -1);
    d0->ShowData(c, true);
    VyrBaseData::SetActiveBase(nullptr);
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(c, &list), -1);
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(Visibility, ShowCourbeGoesToTheActiveDiagramAndSendsSeventeen) {
    RecordingObserver v0, v1;
    d0->AddObserver(&v0);
    d1->AddObserver(&v1);
    VyrDiagram::ShowCourbe(c, true, -1);
    EXPECT_TRUE(d0->IsVisibleInterne(c));
    ASSERT_EQ(v0.Codes(), std::vector<int>{17});
    EXPECT_EQ(v0.messages[0].param, c);
    EXPECT_TRUE(v1.messages.empty());

    v0.Clear();
    VyrDiagram::ShowCourbe(c, true, 1);
    EXPECT_TRUE(d1->IsVisibleInterne(c));
    // The document's change of diagram count (21, 30) reaches the views through both diagrams.
    EXPECT_EQ(v0.Codes(), (std::vector<int>{21, 30}));
    EXPECT_EQ(v1.Codes(), (std::vector<int>{21, 30, 17}));
    // Diagram 1 became the active one with the second diagram.
    EXPECT_EQ(t.doc.GetActiveDiagram(), d1);
    EXPECT_TRUE(VyrDiagram::IsVisible(c));

    v0.Clear();
    VyrDiagram::ShowCourbe(c, false, 0);
    EXPECT_FALSE(d0->IsVisibleInterne(c));
    EXPECT_EQ(v0.Codes(), std::vector<int>{17});
    d0->RemoveObserver(&v0);
    d1->RemoveObserver(&v1);
}

TEST_F(Visibility, ShowCourbeIgnoresNullDetachedCurvesUnknownDiagramsAndNoDocument) {
    RecordingObserver v0;
    d0->AddObserver(&v0);
    VyrDiagram::ShowCourbe(nullptr, true, 0);
    VyrDiagram::ShowCourbe(c, true, 2);
    t.doc.DeconnectCurve(c);
    VyrDiagram::ShowCourbe(c, true, 0);
    EXPECT_FALSE(d0->IsVisibleInterne(c));
    t.doc.ReconnectCurve(c);
    v0.Clear();
    VyrBaseData::SetActiveBase(nullptr);
    VyrDiagram::ShowCourbe(c, true, 0);
    EXPECT_FALSE(d0->IsVisibleInterne(c));
    EXPECT_TRUE(v0.messages.empty());
    d0->RemoveObserver(&v0);
}

TEST_F(Visibility, HideAllCourbeEmptiesBothDiagramsAndClearsTheFlags) {
    VyrCourbe* other = t.AddCourbe("I", "A", {{0, 5}, {10, 6}});
    d0->ShowData(c, true);
    d0->ShowData(other, true);
    d1->ShowData(other, true);
    RecordingObserver v0, v1;
    d0->AddObserver(&v0);
    d1->AddObserver(&v1);

    VyrDiagram::HideAllCourbe();
    EXPECT_EQ(d0->GetNbCourbe(), 0);
    EXPECT_EQ(d1->GetNbCourbe(), 0);
    EXPECT_FALSE(c->IsShownInDiagram(0));
    EXPECT_FALSE(other->IsShownInDiagram(0));
    EXPECT_FALSE(other->IsShownInDiagram(1));
    EXPECT_EQ(v0.Codes(), std::vector<int>{17});
    EXPECT_EQ(v0.messages[0].param, nullptr);
    EXPECT_EQ(v1.Codes(), std::vector<int>{17});
    // Recomputed: nothing is plotted any more.
    EXPECT_TRUE(d0->GetPlottedCourbes().empty());
    EXPECT_TRUE(d0->GetYUnits().IsEmpty());
    d0->RemoveObserver(&v0);
    d1->RemoveObserver(&v1);
}

TEST_F(Visibility, HideAllCourbeWithoutAnActiveDocumentDoesNothing) {
    d0->ShowData(c, true);
    VyrBaseData::SetActiveBase(nullptr);
    VyrDiagram::HideAllCourbe();
    EXPECT_TRUE(d0->IsVisibleInterne(c));
}

TEST_F(Visibility, IsVisibleAsksTheActiveDiagram) {
    EXPECT_FALSE(VyrDiagram::IsVisible(c));
    d0->ShowData(c, true);
    EXPECT_TRUE(VyrDiagram::IsVisible(c));
    EXPECT_FALSE(VyrDiagram::IsVisible(nullptr));
    t.doc.SetActiveDiagram(d1);
    EXPECT_FALSE(VyrDiagram::IsVisible(c));
    VyrBaseData::SetActiveBase(nullptr);
    t.doc.SetActiveDiagram(d0);
    EXPECT_FALSE(VyrDiagram::IsVisible(c));
}

TEST_F(Visibility, ObserveLesDiagramRegistersWithBothDiagrams) {
    RecordingObserver view;
    VyrDiagram::ObserveLesDiagram(&view);
    EXPECT_EQ(view.initialUpdates, 2);
    EXPECT_TRUE(d0->GetObservers().Member(&view));
    EXPECT_TRUE(d1->GetObservers().Member(&view));
    VyrDiagram::UnObserveLesDiagram(&view);
    EXPECT_FALSE(d0->GetObservers().Member(&view));
    EXPECT_FALSE(d1->GetObservers().Member(&view));
    EXPECT_TRUE(view.GetObservables().IsEmpty());

    VyrDiagram::ObserveLesDiagram(nullptr);
    VyrDiagram::UnObserveLesDiagram(nullptr);
    VyrBaseData::SetActiveBase(nullptr);
    VyrDiagram::ObserveLesDiagram(&view);
    EXPECT_FALSE(d0->GetObservers().Member(&view));
}

TEST_F(Visibility, SettingTheActiveCurveOrExperienceSendsOne) {
    RecordingObserver view;
    d0->AddObserver(&view);
    d0->SetActiveCourbe(c);
    EXPECT_EQ(d0->GetActiveCourbe(), c);
    d0->SetActiveExperience(t.experience);
    EXPECT_EQ(d0->GetActiveExperience(), t.experience);
    ASSERT_EQ(view.Codes(), (std::vector<int>{1, 1}));
    EXPECT_EQ(view.messages[0].param, nullptr);
    EXPECT_EQ(view.messages[1].param, nullptr);
    d0->RemoveObserver(&view);
}

TEST_F(Visibility, TheDefaultExperienceIsThatOfTheFirstShownCurve) {
    VyrExperienceParam p2("E2");
    VyrExperience* e2 = t.doc.CreateExperience(p2);
    VyrCourbe* inE2 = t.AddCourbe("I", "A", {{0, 1}}, "t", "s", e2);
    RecordingObserver view;
    d0->AddObserver(&view);

    d0->SetDefaultExperience();
    EXPECT_EQ(d0->GetActiveExperience(), nullptr);
    d0->ShowData(inE2, true);
    d0->ShowData(c, true);
    d0->SetDefaultExperience();
    EXPECT_EQ(d0->GetActiveExperience(), e2);
    EXPECT_EQ(view.Codes(), (std::vector<int>{1, 1}));
    d0->RemoveObserver(&view);
}
