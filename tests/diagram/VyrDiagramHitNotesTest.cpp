#include <gtest/gtest.h>

#include <climits>

#include "support/DiagramTestDocument.h"
#include "support/RecordingDC.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/diagram/VyrDiagramViewAccess.h"

namespace {

typedef VyrDiagramViewAccess Access;

// One diagram showing U(t) in V against s, at pixel (x, 100 - y).
class HitNotes : public ::testing::Test {
protected:
    void SetUp() override {
        d = t.Diagram(0);
        c = t.AddCourbe("U", "V", {{10, 10}, {20, 20}, {30, 30}});
        d->ShowData(c, true);
        DiagramTestDocument::UseUnitPixels(d);
    }

    // A note of c whose box corner lies at real (x, y), i.e. at pixel (x, 100 - y).
    VyrNote* AddNote(VyrCourbe* courbe, double x, double y) {
        VyrNote* note = t.doc.CreateNoteEntity();
        note->SetPosition(x, y);
        note->SetPointIndex(0);
        courbe->AddNote(note);
        return note;
    }

    // An interval tool in s and V (a point tool when both corners are equal).
    VyrOutilInterval* AddTool(double x0, double y0, double x1, double y1, const wxString& abs = "s",
                              const wxString& ord = "V") {
        VyrOutilInterval model(0, nullptr);
        model.SetAbs(abs);
        model.SetOrd(ord);
        model.SetEtiq1(wxString::Format("tool%d", ++m_iTools));
        model.SetPoints(x0, y0, x1, y1);
        t.doc.AddOutilIntervalEntity(&model);
        VyrOutilInterval* last = nullptr;
        wxVyrListEntityNode* node = t.doc.GetFirstOutilIntervalNode();
        while (node)
            last = t.doc.GetNextOutilInterval(&node);
        return last;
    }

    DiagramTestDocument t;
    VyrDiagram* d = nullptr;
    VyrCourbe* c = nullptr;
    int m_iTools = 0;
};

bool SameScale(const VyrScale& a, const VyrScale& b) {
    return a.GetXmin() == b.GetXmin() && a.GetXmax() == b.GetXmax() && a.GetYmin() == b.GetYmin() &&
           a.GetYmax() == b.GetYmax();
}

}  // namespace

TEST_F(HitNotes, ANeverPaintedNoteIsHitWithinItsDefaultBoxWhateverItsText) {
    VyrNote* note = AddNote(c, 20, 80);  // corner at pixel (20, 20)
    note->SetText("a");
    ASSERT_EQ(note->GetBoxWidth(), 200);
    ASSERT_EQ(note->GetBoxHeight(), 30);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(20, 20)), note);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(219, 49)), note);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(220, 20)), nullptr);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(20, 50)), nullptr);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(19, 30)), nullptr);
}

TEST_F(HitNotes, APaintedNoteIsHitWithinTheBoxPaintingStored) {
    VyrNote* note = AddNote(c, 20, 80);
    note->SetText("abc");
    RecordingDC dc(wxSize(400, 300));
    d->Paint(&dc, false, false, false, 1.0, nullptr, false);
    // Three characters of the 12-point recording metric (8 x 16) plus the 4-pixel margins.
    ASSERT_EQ(note->GetBoxWidth(), 3 * 8 + 8);
    ASSERT_EQ(note->GetBoxHeight(), 16 + 8);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(20 + 31, 20 + 23)), note);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(20 + 32, 20)), nullptr);
}

TEST_F(HitNotes, NeitherThePointNorTheStateOfANoteMatters) {
    VyrNote* note = AddNote(c, 20, 80);
    note->SetPointIndex(99);
    note->SetState(VYR_NOTE_MOVING);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(25, 25)), note);
}

TEST_F(HitNotes, FindNoteTakesTheFirstNoteInListOrder) {
    VyrNote* first = AddNote(c, 20, 80);
    AddNote(c, 25, 75);
    EXPECT_EQ(Access::FindNote(d, c, wxPoint(30, 30)), first);
}

TEST_F(HitNotes, AHitLeavesTheDiagramInTheUnitsOfTheNotesCurve) {
    VyrCourbe* other = t.AddCourbe("I", "A", {{50, 0.5}});
    d->ShowData(other, true);
    DiagramTestDocument::UseUnitPixels(d);
    const VyrScale before = *d->GetCurrentScale();
    const VyrUnit* amps = d->FindUnitY("A");
    ASSERT_NE(amps, nullptr);
    ASSERT_NE(amps->GetMax(VYR_SCALE_MANUAL), before.GetYmax());

    VyrNote* note = AddNote(other, 50, amps->GetMax(VYR_SCALE_MANUAL));  // top of A's range
    // A miss puts the range back.
    EXPECT_EQ(Access::FindNote(d, other, wxPoint(10, 90)), nullptr);
    EXPECT_TRUE(SameScale(*d->GetCurrentScale(), before));

    // Kept: a hit leaves the current scale (and transform) in the curve's units.
    EXPECT_EQ(Access::FindNote(d, other, wxPoint(60, 10)), note);
    EXPECT_EQ(d->GetCurrentScale()->GetYmin(), amps->GetMin(VYR_SCALE_MANUAL));
    EXPECT_EQ(d->GetCurrentScale()->GetYmax(), amps->GetMax(VYR_SCALE_MANUAL));
    EXPECT_EQ(d->RealToPixel(50, amps->GetMax(VYR_SCALE_MANUAL)), wxPoint(50, 0));
}

TEST_F(HitNotes, HitTestNoteSearchesThePlottedCurvesInOrder) {
    VyrCourbe* later = t.AddCourbe("U2", "V", {{40, 40}});
    d->ShowData(later, true);
    DiagramTestDocument::UseUnitPixels(d);
    VyrNote* onLater = AddNote(later, 60, 40);  // corner at (60, 60)
    VyrNote* onFirst = AddNote(c, 70, 30);      // corner at (70, 70)

    VyrCourbe* found = nullptr;
    EXPECT_EQ(Access::HitTestNote(d, wxPoint(65, 65), &found), onLater);
    EXPECT_EQ(found, later);
    EXPECT_EQ(Access::HitTestNote(d, wxPoint(75, 75), &found), onFirst);
    EXPECT_EQ(found, c);
    found = later;
    EXPECT_EQ(Access::HitTestNote(d, wxPoint(5, 5), &found), nullptr);
    EXPECT_EQ(found, nullptr);
}

TEST_F(HitNotes, HitTestTitreUsesTheTitlePositionAndStoredSize) {
    EXPECT_EQ(d->HitTestTitre(wxPoint(60, 60)), nullptr);
    VyrNote* titre = t.doc.CreateNoteEntity();
    titre->SetPosition(0.5, 0.5);  // corner at (50, 50) of the 101 x 101 plot
    d->SetNoteTitre(titre);
    EXPECT_EQ(d->GetTitrePos(titre), wxPoint(50, 50));
    EXPECT_EQ(d->HitTestTitre(wxPoint(50, 50)), titre);
    EXPECT_EQ(d->HitTestTitre(wxPoint(249, 79)), titre);
    EXPECT_EQ(d->HitTestTitre(wxPoint(250, 60)), nullptr);
    EXPECT_EQ(d->HitTestTitre(wxPoint(60, 80)), nullptr);
    // Neither the shown flag nor the state plays a part.
    titre->SetShown(false);
    titre->SetState(VYR_NOTE_MOVING);
    EXPECT_EQ(d->HitTestTitre(wxPoint(60, 60)), titre);
    d->SetNoteTitre(nullptr);
}

TEST_F(HitNotes, AClickTwentyOnePixelsFromEveryToolSelectsNoneAndClearsTheSelection) {
    VyrOutilInterval* point = AddTool(50, 50, 50, 50);  // at pixel (50, 50)
    point->SetSelected(true);
    bool changed = false;
    EXPECT_EQ(d->HitOutilInterval(wxPoint(71, 50), &changed), nullptr);
    EXPECT_TRUE(changed);
    EXPECT_FALSE(point->IsSelected());
    EXPECT_EQ(t.doc.HitTestOutilInterval(), nullptr);
}

TEST_F(HitNotes, AClickTwentyPixelsFromAPointToolSelectsIt) {
    VyrOutilInterval* point = AddTool(50, 50, 50, 50);
    bool changed = false;
    EXPECT_EQ(d->HitOutilInterval(wxPoint(62, 66), &changed), point);  // 12^2 + 16^2 = 400
    EXPECT_TRUE(changed);
    EXPECT_TRUE(point->IsSelected());
    EXPECT_EQ(t.doc.HitTestOutilInterval(), point);
    // The same click again changes nothing.
    EXPECT_EQ(d->HitOutilInterval(wxPoint(62, 66), &changed), point);
    EXPECT_FALSE(changed);
}

TEST_F(HitNotes, AClickAtTheCentreOfALargeIntervalMissesIt) {
    AddTool(0, 100, 100, 0);  // pixels (0, 0) to (100, 100)
    bool changed = true;
    EXPECT_EQ(d->HitOutilInterval(wxPoint(50, 50), &changed), nullptr);
    EXPECT_FALSE(changed);
    EXPECT_EQ(Access::Distance2PointToRectangle(d, 50, 50, 0, 0, 100, 100), 2500.0);
}

TEST_F(HitNotes, AnIntervalIsCaughtNearItsEdgesFromInsideAndOutside) {
    VyrOutilInterval* tool = AddTool(20, 80, 80, 20);                // pixels (20, 20) to (80, 80)
    EXPECT_EQ(d->HitOutilInterval(wxPoint(35, 50), nullptr), tool);  // 15 inside the left edge
    EXPECT_EQ(d->HitOutilInterval(wxPoint(50, 0), nullptr), tool);   // 20 above the top
    EXPECT_EQ(d->HitOutilInterval(wxPoint(50, 99), nullptr), tool);  // 19 below the bottom
    EXPECT_EQ(d->HitOutilInterval(wxPoint(50, 101), nullptr), nullptr);  // 21 below the bottom
    EXPECT_FALSE(tool->IsSelected());
}

TEST_F(HitNotes, TheNearestToolWinsAndTheEarlierOneATie) {
    VyrOutilInterval* a = AddTool(50, 50, 50, 50);
    VyrOutilInterval* b = AddTool(60, 50, 60, 50);
    EXPECT_EQ(d->HitOutilInterval(wxPoint(58, 50), nullptr), b);
    EXPECT_TRUE(b->IsSelected());
    EXPECT_FALSE(a->IsSelected());
    EXPECT_EQ(d->HitOutilInterval(wxPoint(55, 50), nullptr), a);
    EXPECT_TRUE(a->IsSelected());
    EXPECT_FALSE(b->IsSelected());
}

TEST_F(HitNotes, ToolsOfAnotherAbscissaUnitAreNotHitButLoseTheirSelection) {
    VyrOutilInterval* foreign = AddTool(50, 50, 50, 50, "Hz", "V");
    foreign->SetSelected(true);
    bool changed = false;
    EXPECT_EQ(d->HitOutilInterval(wxPoint(50, 50), &changed), nullptr);
    EXPECT_TRUE(changed);
    EXPECT_FALSE(foreign->IsSelected());
}

TEST_F(HitNotes, ToolsAreMeasuredUnderTheRangeOfTheirOwnUnits) {
    VyrCourbe* other = t.AddCourbe("I", "A", {{50, 0.5}});
    d->ShowData(other, true);
    DiagramTestDocument::UseUnitPixels(d);
    VyrOutilInterval* tool = AddTool(50, 0.5, 50, 0.5, "s", "A");
    const wxPoint drawn = d->RealToPixelCourbe(other, 50, 0.5);
    const VyrScale before = *d->GetCurrentScale();
    EXPECT_EQ(d->HitOutilInterval(drawn, nullptr), tool);
    EXPECT_TRUE(SameScale(*d->GetCurrentScale(), before));
}

TEST_F(HitNotes, WithoutAnActiveDocumentNoToolIsHit) {
    VyrOutilInterval* tool = AddTool(50, 50, 50, 50);
    tool->SetSelected(true);
    VyrBaseData::SetActiveBase(nullptr);
    bool changed = true;
    EXPECT_EQ(d->HitOutilInterval(wxPoint(50, 50), &changed), nullptr);
    EXPECT_FALSE(changed);
    EXPECT_TRUE(tool->IsSelected());
}

TEST_F(HitNotes, TheDocumentFindsTheToolTheDiagramSelected) {
    AddTool(10, 10, 10, 10);
    VyrOutilInterval* second = AddTool(40, 40, 40, 40);
    EXPECT_EQ(t.doc.HitTestOutilInterval(), nullptr);
    d->HitOutilInterval(wxPoint(40, 60), nullptr);
    EXPECT_EQ(t.doc.HitTestOutilInterval(), second);
}

TEST(VyrDiagramDistance, Distance2PointToRectangleMeasuresToEdgesAndCorners) {
    // Left of, right of, above, below, at the corners, and inside (nearest side).
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 0, 15, 10, 10, 20, 20),
              100.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 25, 15, 10, 10, 20, 20),
              25.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 15, 7, 10, 10, 20, 20), 9.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 15, 24, 10, 10, 20, 20),
              16.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 7, 6, 10, 10, 20, 20), 25.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 23, 24, 10, 10, 20, 20),
              25.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 12, 15, 10, 10, 20, 20),
              4.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 15, 19, 10, 10, 20, 20),
              1.0);
    // On an edge the distance is zero.
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 10, 15, 10, 10, 20, 20),
              0.0);
    // Far-off pixels do not overflow.
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, INT_MIN, 15, INT_MAX, 10,
                                                              INT_MAX, 20),
              4294967295.0 * 4294967295.0);
}
