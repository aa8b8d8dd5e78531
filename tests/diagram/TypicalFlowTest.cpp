// The typical life of a measurement, from acquisition to a reloaded file, through the public
// interface only: an experiment and a curve are created, points arrive with notification, the
// curve is shown, both diagrams follow and tell a view, diagram 0 is painted headless and one
// of its points is hit where it was painted, the curve is deleted with undo through a real
// command processor and brought back, and the document is saved and loaded into a new one.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include <wx/cmdproc.h>
#include <wx/docview.h>
#include <wx/filefn.h>
#include <wx/filename.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "support/RecordingObserver.h"
#include "vyrbase/VyrBase.h"

namespace {

int Count(const std::vector<int>& codes, int code) {
    return static_cast<int>(std::count(codes.begin(), codes.end(), code));
}

// Removes the temporary file at the end of the test, whatever happened.
struct TempFile {
    TempFile() : path(wxFileName::CreateTempFileName(wxFileName::GetTempDir() + "/vyrflow")) {}
    ~TempFile() {
        if (!path.empty())
            wxRemoveFile(path);
    }
    wxString path;
};

}  // namespace

TEST(TypicalFlow, AcquireShowPaintHitDeleteUndoSaveAndLoad) {
    wxDocument toolkitDocument;
    toolkitDocument.SetCommandProcessor(new wxCommandProcessor);
    VyrBaseData doc(&toolkitDocument);
    VyrBaseData::SetActiveBase(&doc);
    VyrDiagram* d0 = doc.GetDiagram(0);
    VyrDiagram* d1 = doc.GetDiagram(1);

    // A view of the document itself and a view observing both diagrams.
    RecordingObserver docView;
    doc.AddObserver(&docView);
    RecordingObserver view;
    VyrDiagram::ObserveLesDiagram(&view);
    EXPECT_EQ(view.initialUpdates, 2);
    EXPECT_EQ(view.GetObservables().GetCount(), 2u);

    // ---- Acquisition: an experiment, a curve, points with notification --------------------
    VyrExperienceParam ep("Manip 1");
    VyrExperience* experience = doc.CreateExperience(ep);
    ASSERT_NE(experience, nullptr);
    VyrCourbeParam cp;
    cp.m_sNom = "U(t)";
    cp.m_sNomVx = "t";
    cp.m_sNomVy = "U";
    cp.m_sGrdX = "t";
    cp.m_sUniteX = "s";
    cp.m_sGrdY = "U";
    cp.m_sUniteY = "V";
    cp.m_iWidth = 1;
    cp.m_iStylePoint = 1;    // filled points...
    cp.m_iStyleLiaison = 0;  // ...drawn only without a joining line
    bool created = false;
    VyrCourbe* c = doc.CreateCourbe(experience, cp, &created, true);
    ASSERT_NE(c, nullptr);
    EXPECT_TRUE(created);
    const int curveOid = c->GetOid();
    EXPECT_EQ(c->GetVx()->GetOid(), curveOid + 1);
    EXPECT_EQ(c->GetVy()->GetOid(), curveOid + 2);
    for (int i = 0; i <= 10; ++i)
        doc.AddPoint(c, i, 2.0 * i - 5.0, true);

    // The document announced the experiment (13), the curve (11) and each point (1); the
    // diagrams passed everything on except code 11, each of them once.
    EXPECT_EQ(docView.Codes().front(), 13);
    EXPECT_EQ(Count(docView.Codes(), 11), 1);
    EXPECT_EQ(Count(docView.Codes(), 1), 11);
    EXPECT_EQ(Count(view.Codes(), 11), 0);
    EXPECT_EQ(Count(view.Codes(), 13), 2);
    EXPECT_EQ(Count(view.Codes(), 1), 2 * 11);
    for (const auto& m : view.messages) {
        if (m.code == 1) {
            EXPECT_EQ(m.param, c);
        }
    }

    // ---- Shown in the active diagram: units and ranges follow ------------------------------
    view.Clear();
    VyrDiagram::ShowCourbe(c, true, -1);
    ASSERT_EQ(view.Codes(), std::vector<int>{17});
    EXPECT_TRUE(VyrDiagram::IsVisible(c));
    EXPECT_TRUE(c->IsShownInDiagram(0));
    EXPECT_EQ(d0->GetGrdX(), "t");
    EXPECT_EQ(d0->GetUx(), "s");
    EXPECT_EQ(d0->GetUy(), "V");
    EXPECT_EQ(d0->GetPlottedCourbes(), std::vector<VyrCourbe*>{c});
    // X 0..10 without margin; Y -5..15 grows by 5 % to -6..16.
    EXPECT_DOUBLE_EQ(d0->GetScale(VYR_SCALE_AUTO)->GetXmin(), 0.0);
    EXPECT_DOUBLE_EQ(d0->GetScale(VYR_SCALE_AUTO)->GetXmax(), 10.0);
    EXPECT_DOUBLE_EQ(d0->GetScale(VYR_SCALE_AUTO)->GetYmin(), -6.0);
    EXPECT_DOUBLE_EQ(d0->GetScale(VYR_SCALE_AUTO)->GetYmax(), 16.0);
    EXPECT_DOUBLE_EQ(d0->GetCurrentScale()->GetYmax(), 16.0);

    // A new point with notification is followed at once.
    view.Clear();
    doc.AddPoint(c, 20.0, 35.0, true);
    EXPECT_DOUBLE_EQ(d0->GetScale(VYR_SCALE_AUTO)->GetXmax(), 20.0);
    EXPECT_DOUBLE_EQ(d0->FindUnitY("V")->GetMax(VYR_SCALE_AUTO), 37.0);
    EXPECT_EQ(view.Codes(), (std::vector<int>{1, 1}));

    // ---- Painted headless; a point is hit where it was painted -----------------------------
    wxRect plot(40, 20, 401, 301);
    d0->Move(plot);
    RecordingDC recorder(wxSize(480, 360));
    d0->Paint(&recorder, false, false, false, 1.0, nullptr, false);
    const std::vector<RecordedPrimitive> dots = recorder.Primitives(RecordedPrimitive::Ellipse);
    ASSERT_EQ(dots.size(), 12u);
    // Point 3, (3, 1): its dot is drawn at (x - 1, y - 1), three pixels across.
    const wxPoint painted(dots[3].rect.x + 1, dots[3].rect.y + 1);
    EXPECT_EQ(painted, d0->RealToPixelCourbe(c, 3.0, 1.0));

    const wxImage image = PaintToImage(
        wxSize(480, 360),
        [&](wxDC& dc) { d0->Paint(&dc, false, false, false, 1.0, nullptr, false); }, false);
    EXPECT_EQ(image.GetRed(painted.x, painted.y), 255);
    EXPECT_EQ(image.GetGreen(painted.x, painted.y), 0);
    EXPECT_EQ(image.GetBlue(painted.x, painted.y), 0);

    EXPECT_EQ(VyrDiagram::HitTestDiagram(painted), d0);
    int index = -1;
    EXPECT_EQ(VyrDiagramViewAccess::HitTestCurve(d0, painted, 0, &index), c);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(VyrDiagramViewAccess::HitTestCurvePlusProche(d0, painted + wxPoint(2, 1), 9, &index),
              c);
    EXPECT_EQ(index, 3);

    // ---- Deleted with undo, undone, redone and undone again --------------------------------
    wxCommandProcessor* processor = toolkitDocument.GetCommandProcessor();
    view.Clear();
    ASSERT_TRUE(doc.DeleteCurveWithUndo(c));
    EXPECT_EQ(view.Codes(), (std::vector<int>{7, 7}));
    EXPECT_EQ(doc.FindCourbe(L"U(t)"), nullptr);
    EXPECT_EQ(d0->GetNbCourbe(), 0);
    EXPECT_TRUE(toolkitDocument.IsModified());
    ASSERT_TRUE(processor->Undo());
    EXPECT_EQ(doc.FindCourbe(L"U(t)"), c);
    ASSERT_TRUE(processor->Redo());
    EXPECT_EQ(doc.FindCourbeByOid(curveOid), nullptr);
    ASSERT_TRUE(processor->Undo());
    EXPECT_EQ(doc.FindCourbeByOid(curveOid), c);
    EXPECT_EQ(doc.FindEntity(curveOid + 1), c->GetVx());
    EXPECT_EQ(view.Codes(), (std::vector<int>{7, 7, 5, 5, 7, 7, 5, 5}));
    // The detach hid the curve; the user shows it again, in both diagrams this time.
    EXPECT_FALSE(VyrDiagram::IsVisible(c));
    VyrDiagram::ShowCourbe(c, true, 0);
    VyrDiagram::ShowCourbe(c, true, 1);
    EXPECT_EQ(doc.GetDiagramCount(), 2);
    wxArrayInt shownIn;
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(c, &shownIn), 0);
    EXPECT_EQ(shownIn.GetCount(), 2u);
    EXPECT_EQ(d1->GetPlottedCourbes(), std::vector<VyrCourbe*>{c});

    // ---- Saved, then loaded into a new document --------------------------------------------
    TempFile file;
    ASSERT_FALSE(file.path.empty());
    ASSERT_TRUE(doc.Save(file.path));

    VyrBaseData loaded(nullptr);
    VyrBaseData::SetActiveBase(&loaded);
    RecordingObserver loadedView;
    VyrDiagram::ObserveLesDiagram(&loadedView);
    loadedView.Clear();
    ASSERT_TRUE(loaded.Load(file.path));
    // Both diagrams refilled themselves (code 8) and told the view.
    EXPECT_EQ(Count(loadedView.Codes(), 8), 2);
    EXPECT_EQ(Count(loadedView.Codes(), 11), 0);

    VyrExperience* e2 = loaded.FindExperienceByOid(experience->GetOid());
    ASSERT_NE(e2, nullptr);
    EXPECT_EQ(e2->GetEntityName(), "Manip 1");
    VyrCourbe* c2 = loaded.FindCourbeByOid(curveOid);
    ASSERT_NE(c2, nullptr);
    EXPECT_EQ(c2->GetEntityName(), "U(t)");
    EXPECT_EQ(loaded.FindExperienceFromCourbe(c2), e2);
    EXPECT_EQ(c2->GetVx()->GetOid(), c->GetVx()->GetOid());
    EXPECT_EQ(c2->GetVy()->GetOid(), c->GetVy()->GetOid());
    EXPECT_EQ(c2->GetVx()->GetGrandeur(), "t");
    EXPECT_EQ(c2->GetVy()->GetUnite(), "V");
    ASSERT_EQ(c2->GetSize(), c->GetSize());
    for (int i = 0; i < static_cast<int>(c->GetSize()); ++i) {
        EXPECT_EQ(c2->GetVx()->GetVal(i), c->GetVx()->GetVal(i)) << i;
        EXPECT_EQ(c2->GetVy()->GetVal(i), c->GetVy()->GetVal(i)) << i;
    }
    EXPECT_TRUE(c2->IsShownInDiagram(0));
    EXPECT_TRUE(c2->IsShownInDiagram(1));
    EXPECT_EQ(loaded.GetDiagramCount(), 2);
    EXPECT_TRUE(loaded.GetDiagram(0)->IsVisibleInterne(c2));
    EXPECT_TRUE(loaded.GetDiagram(1)->IsVisibleInterne(c2));
    EXPECT_EQ(loaded.GetDiagram(0)->GetUx(), "s");
    EXPECT_EQ(loaded.GetDiagram(0)->GetPlottedCourbes(), std::vector<VyrCourbe*>{c2});
    wxArrayInt loadedShownIn;
    EXPECT_EQ(VyrDiagram::GetListDiagramsIsVisible(c2, &loadedShownIn), 0);
    EXPECT_EQ(loadedShownIn.GetCount(), 2u);

    VyrDiagram::UnObserveLesDiagram(&loadedView);
    VyrBaseData::SetActiveBase(&doc);
    VyrDiagram::UnObserveLesDiagram(&view);
    doc.RemoveObserver(&docView);
    VyrBaseData::SetActiveBase(nullptr);
}
