#include <gtest/gtest.h>

#include <wx/cmdproc.h>
#include <wx/docview.h>

#include "support/DiagramTestDocument.h"
#include "support/RecordingObserver.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbeChangeParam.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// A view observing diagram 0 of a document with the curve U(t).
class Reactions : public ::testing::Test {
protected:
    void SetUp() override {
        d = t.Diagram(0);
        c = t.AddCourbe("U", "V", {{0, 1}, {10, 2}});
        d->AddObserver(&view);
        view.Clear();
    }
    void TearDown() override { d->RemoveObserver(&view); }

    // Sends a message to the document's observers, as the document itself would.
    void Send(int code, void* param) {
        VyrObserverMsg msg(code, param);
        t.doc.UpdateAllObservers(msg);
    }

    DiagramTestDocument t;
    VyrDiagram* d = nullptr;
    VyrCourbe* c = nullptr;
    RecordingObserver view;
};

}  // namespace

TEST_F(Reactions, CodeElevenIsNeverPassedOn) {
    RecordingObserver docView;
    t.doc.AddObserver(&docView);
    docView.Clear();
    t.AddCourbe("I", "A", {});  // CreateCourbe always sends 11
    EXPECT_EQ(docView.Codes(), std::vector<int>{11});
    EXPECT_TRUE(view.messages.empty());
    Send(VYR_MSG_CURVE_CREATED, c);
    EXPECT_TRUE(view.messages.empty());
    t.doc.RemoveObserver(&docView);
}

TEST_F(Reactions, EveryOtherCodeIsPassedOnWithItsParameter) {
    int object = 0;
    const std::vector<int> codes = {13, 14, 20, 21, 30, 99};
    for (int code : codes)
        Send(code, &object);
    EXPECT_EQ(view.Codes(), codes);
    for (const auto& m : view.messages)
        EXPECT_EQ(m.param, &object);
    // Creating an experiment reaches the views through the diagram.
    view.Clear();
    VyrExperienceParam p("E2");
    VyrExperience* e2 = t.doc.CreateExperience(p);
    ASSERT_EQ(view.Codes(), std::vector<int>{13});
    EXPECT_EQ(view.messages[0].param, e2);
}

TEST_F(Reactions, DataChangedWithACurveRecomputesTheRanges) {
    d->ShowData(c, true);
    ASSERT_EQ(d->FindUnitX("s")->GetMax(VYR_SCALE_AUTO), 10.0);
    t.doc.AddPoint(c, 50, 3, true);
    EXPECT_EQ(d->FindUnitX("s")->GetMax(VYR_SCALE_AUTO), 50.0);
    ASSERT_EQ(view.Codes(), std::vector<int>{1});
    EXPECT_EQ(view.messages[0].param, c);
}

TEST_F(Reactions, DataChangedWithoutACurveIsOnlyPassedOn) {
    d->ShowData(c, true);
    t.doc.AddPoint(c, 50, 3, false);
    Send(VYR_MSG_DATA_CHANGED, nullptr);
    EXPECT_EQ(d->FindUnitX("s")->GetMax(VYR_SCALE_AUTO), 10.0);
    EXPECT_EQ(view.Codes(), std::vector<int>{1});
}

TEST_F(Reactions, DeletingACurveHidesIt) {
    d->ShowData(c, true);
    view.Clear();
    t.doc.DeleteCourbe(c, nullptr);
    EXPECT_EQ(d->GetNbCourbe(), 0);
    EXPECT_TRUE(d->GetPlottedCourbes().empty());
    ASSERT_EQ(view.Codes(), std::vector<int>{4});
    EXPECT_EQ(view.messages[0].param, c);
}

TEST_F(Reactions, DeletingTheActiveCurveMakesTheLastOtherShownCurveActive) {
    VyrCourbe* a = t.AddCourbe("A1", "V", {{0, 1}});
    VyrCourbe* b = t.AddCourbe("B1", "V", {{0, 2}});
    VyrCourbe* last = t.AddCourbe("C1", "V", {{0, 3}});
    d->ShowData(a, true);
    d->ShowData(b, true);
    d->ShowData(last, true);
    d->SetActiveCourbe(b);
    t.doc.DeleteCourbe(b, nullptr);
    EXPECT_EQ(d->GetActiveCourbe(), last);

    // Deleting a curve that is not the active one leaves the active curve alone.
    t.doc.DeleteCourbe(a, nullptr);
    EXPECT_EQ(d->GetActiveCourbe(), last);
    // Deleting the last shown curve leaves no active curve.
    t.doc.DeleteCourbe(last, nullptr);
    EXPECT_EQ(d->GetActiveCourbe(), nullptr);
}

TEST_F(Reactions, ANullDeletionWithoutAnActiveCurveStillChoosesOne) {
    // The active curve is re-chosen before the null check: a null curve "is" the active one
    // when there is none, so the last shown curve becomes active.
    d->ShowData(c, true);
    ASSERT_EQ(d->GetActiveCourbe(), nullptr);
    EXPECT_FALSE(d->OnDeleteCourbe(nullptr));
    EXPECT_EQ(d->GetActiveCourbe(), c);
    EXPECT_TRUE(d->IsVisibleInterne(c));
}

TEST_F(Reactions, OnDeleteCourbeAnswersWhetherTheCurveWasShown) {
    EXPECT_FALSE(d->OnDeleteCourbe(nullptr));
    EXPECT_FALSE(d->OnDeleteCourbe(c));
    d->ShowData(c, true);
    EXPECT_TRUE(d->OnDeleteCourbe(c));
    EXPECT_FALSE(c->IsShownInDiagram(0));
    EXPECT_FALSE(d->IsVisibleInterne(c));
}

TEST_F(Reactions, ACurveDeletedWithUndoIsHiddenAndStaysHiddenAfterUndo) {
    wxDocument toolkitDocument;
    toolkitDocument.SetCommandProcessor(new wxCommandProcessor);
    DiagramTestDocument u(&toolkitDocument);
    VyrDiagram* d0 = u.Diagram(0);
    VyrCourbe* curve = u.AddCourbe("U", "V", {{0, 1}, {10, 2}});
    d0->ShowData(curve, true);
    RecordingObserver v;
    d0->AddObserver(&v);
    v.Clear();

    ASSERT_TRUE(u.doc.DeleteCurveWithUndo(curve));
    EXPECT_FALSE(d0->IsVisibleInterne(curve));
    // Kept: the detach clears the curve's flag, so the re-attach of undo does not show it.
    EXPECT_FALSE(curve->IsShownInDiagram(0));
    ASSERT_TRUE(toolkitDocument.GetCommandProcessor()->Undo());
    EXPECT_FALSE(d0->IsVisibleInterne(curve));
    EXPECT_EQ(v.Codes(), (std::vector<int>{7, 5}));
    d0->RemoveObserver(&v);
}

TEST_F(Reactions, AReattachedCurveIsShownAgainWhenItsFlagIsSet) {
    t.doc.DeconnectCurve(c);
    c->SetShownInDiagram(0, true);
    view.Clear();
    t.doc.ReconnectCurve(c);
    EXPECT_TRUE(d->IsVisibleInterne(c));
    EXPECT_EQ(view.Codes(), std::vector<int>{5});
    // Without the flag nothing is shown.
    VyrCourbe* other = t.AddCourbe("I", "A", {{0, 1}});
    d->OnCreateCourbe(other);
    EXPECT_FALSE(d->IsVisibleInterne(other));
    d->OnCreateCourbe(nullptr);
}

TEST_F(Reactions, DeletingTheActiveExperienceChoosesTheDefaultOne) {
    VyrExperienceParam p("E2");
    VyrExperience* e2 = t.doc.CreateExperience(p);
    VyrCourbe* inE2 = t.AddCourbe("I", "A", {{0, 1}}, "t", "s", e2);
    d->ShowData(inE2, true);
    d->ShowData(c, true);
    d->SetActiveExperience(e2);
    view.Clear();
    t.doc.DeleteExperience(e2);
    // Code 4 for its curve, then code 3; the default experience then announces itself (1).
    EXPECT_EQ(d->GetActiveExperience(), t.experience);
    EXPECT_EQ(view.Codes(), (std::vector<int>{4, 1, 3}));
}

TEST_F(Reactions, DetachingTheActiveExperienceChoosesTheDefaultOne) {
    d->ShowData(c, true);
    d->SetActiveExperience(t.experience);
    t.doc.DeconnectExperience(t.experience);
    // Its only curve was hidden by code 7, so no shown curve is left to choose from.
    EXPECT_FALSE(d->IsVisibleInterne(c));
    EXPECT_EQ(d->GetActiveExperience(), nullptr);
    t.doc.ReconnectExperience(t.experience);
}

TEST_F(Reactions, DeletingAnotherExperienceLeavesTheActiveOne) {
    VyrExperienceParam p("E2");
    VyrExperience* e2 = t.doc.CreateExperience(p);
    d->SetActiveExperience(t.experience);
    view.Clear();
    t.doc.DeleteExperience(e2);
    EXPECT_EQ(d->GetActiveExperience(), t.experience);
    EXPECT_EQ(view.Codes(), std::vector<int>{3});
    d->OnDeleteExperience(nullptr);
    EXPECT_EQ(d->GetActiveExperience(), t.experience);
}

TEST_F(Reactions, ALoadedDocumentRefillsTheDiagramFromTheFlags) {
    c->SetShownInDiagram(0, true);
    EXPECT_FALSE(d->IsVisibleInterne(c));
    Send(VYR_MSG_FILE_LOADED, nullptr);
    EXPECT_TRUE(d->IsVisibleInterne(c));
    EXPECT_EQ(d->GetUx(), "s");
    EXPECT_EQ(view.Codes(), std::vector<int>{8});
}

TEST_F(Reactions, AChangeOfQuantitiesWithAFlagTakesTheAbscissaFromTheCurve) {
    VyrCourbe* f = t.AddCourbe("A", "dB", {{100, 1}}, "f", "Hz");
    d->ShowData(c, true);
    d->ShowData(f, true);
    d->ShowData(c, true);  // already shown: the abscissa stays f
    ASSERT_EQ(d->GetUx(), "Hz");
    view.Clear();

    VyrCourbeChangeParam noFlag(c, false, false, "", "", "", "", true, true, "", "", "", "");
    Send(VYR_MSG_CURVE_QUANTITIES_CHANGED, &noFlag);
    EXPECT_EQ(d->GetUx(), "Hz");

    VyrCourbeChangeParam second(c, false, true, "", "", "", "", false, false, "", "", "", "");
    Send(VYR_MSG_CURVE_QUANTITIES_CHANGED, &second);
    EXPECT_EQ(d->GetGrdX(), "t");
    EXPECT_EQ(d->GetUx(), "s");
    EXPECT_EQ(d->GetPlottedCourbes(), std::vector<VyrCourbe*>{c});

    VyrCourbeChangeParam first(f, true, false, "", "", "", "", false, false, "", "", "", "");
    Send(VYR_MSG_CURVE_QUANTITIES_CHANGED, &first);
    EXPECT_EQ(d->GetUx(), "Hz");

    VyrCourbeChangeParam none(nullptr, true, true, "", "", "", "", true, true, "", "", "", "");
    Send(VYR_MSG_CURVE_QUANTITIES_CHANGED, &none);
    Send(VYR_MSG_CURVE_QUANTITIES_CHANGED, nullptr);
    EXPECT_EQ(d->GetUx(), "Hz");
    ASSERT_EQ(view.Codes(), (std::vector<int>{18, 18, 18, 18, 18}));
    EXPECT_EQ(view.messages[1].param, &second);
}

TEST_F(Reactions, AnInitialUpdateFillsTheDiagramAndSendsOne) {
    c->SetShownInDiagram(0, true);
    d->OnInitialUpdateObserver();
    EXPECT_TRUE(d->IsVisibleInterne(c));
    ASSERT_EQ(view.Codes(), std::vector<int>{1});
    EXPECT_EQ(view.messages[0].param, nullptr);
}

TEST_F(Reactions, OnListEntityModifiedKeepsAManualScaleAndPropagatesIt) {
    VyrCourbe* amps = t.AddCourbe("I", "A", {{0, -1}, {10, 4}});
    d->ShowData(c, true);
    d->ShowData(amps, true);
    VyrScale manual(0.0, 20.0, -10.0, 30.0);
    d->SetManualScale(&manual, false);
    view.Clear();
    d->OnListEntityModified();
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_MANUAL);
    EXPECT_EQ(d->GetScale(VYR_SCALE_MANUAL)->GetYmax(), 30.0);
    // The other Y unit was moved so that its zero lies at the main axis's zero height.
    const VyrUnit* a = d->FindUnitY("A");
    ASSERT_NE(a, nullptr);
    const double span = a->GetMax(VYR_SCALE_MANUAL) - a->GetMin(VYR_SCALE_MANUAL);
    EXPECT_DOUBLE_EQ(a->GetMax(VYR_SCALE_MANUAL) / span, 30.0 / 40.0);
    // Manual type is announced by the recomputation and again by the propagation.
    EXPECT_EQ(view.Codes(), (std::vector<int>{14, 14}));
}
