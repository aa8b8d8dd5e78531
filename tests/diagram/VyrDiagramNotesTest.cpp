#include <vector>

#include <gtest/gtest.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Kind = RecordedPrimitive::Kind;

namespace {

const wxColour kBlue(0, 0, 255);

// A curve with three points on pixels (150, 120), (250, 170), (350, 70) and a note on
// point 1 whose box corner is data (200, 150), pixel (250, 70).
struct NoteScene {
    PaintScene scene;
    VyrCourbe* curve = nullptr;
    VyrNote* note = nullptr;
    NoteScene() {
        CurveLook look;
        look.colour = kBlue;
        look.styleLiaison = 0;
        curve = scene.AddCurve(look, {{100, 100}, {200, 50}, {300, 150}});
        scene.Show(curve);
        scene.Frame();
        note = scene.Doc().CreateNoteEntity();
        note->SetText("max");
        note->SetPointIndex(1);
        note->SetPosition(200, 150);
        curve->AddNote(note);
    }
    void Paint(RecordingDC& dc) {
        dc.SetFont(wxFont(wxFontInfo(12)));
        VyrDiagramTestAccess::PaintNotes(scene.Diagram(), &dc, curve, kBlue);
    }
    std::vector<RecordedPrimitive> PaintAll() {
        RecordingDC dc;
        Paint(dc);
        return dc.Primitives();
    }
};

}  // namespace

TEST(VyrDiagramNotes, NoteIsALeaderLineABoxOfTextPlusEightAndTheTextInside) {
    NoteScene s;
    RecordingDC dc;
    s.Paint(dc);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 3u);
    // "max" in the fixed test metric: 3 x 8 by 16 pixels; box 32 x 24 at (250, 70).
    EXPECT_EQ(all[0].kind, Kind::Line);
    EXPECT_EQ(all[0].From(), wxPoint(250, 170));
    EXPECT_EQ(all[0].To(), wxPoint(250 + 16, 70 + 12));
    EXPECT_EQ(all[1].kind, Kind::Rectangle);
    EXPECT_EQ(all[1].rect, wxRect(250, 70, 32, 24));
    EXPECT_EQ(all[2].kind, Kind::Text);
    EXPECT_EQ(all[2].Pos(), wxPoint(254, 74));
    EXPECT_EQ(s.note->GetBoxWidth(), 32);
    EXPECT_EQ(s.note->GetBoxHeight(), 24);
    // Colours of a normal note: outline in the curve's colour, inner fill, black text.
    EXPECT_EQ(all[1].pen.GetColour(), kBlue);
    EXPECT_EQ(all[1].pen.GetWidth(), 1);
    EXPECT_EQ(all[1].brush.GetColour(), s.scene.Diagram().GetInnerColor(kBlue));
    EXPECT_EQ(all[2].textForeground, wxColour(0, 0, 0));
    EXPECT_FALSE(dc.GetPen().IsOk());
    EXPECT_FALSE(dc.GetBrush().IsOk());
}

TEST(VyrDiagramNotes, NoteOnAPointThatBecomesInvalidDisappearsAndComesBack) {
    NoteScene s;
    EXPECT_EQ(s.PaintAll().size(), 3u);
    PaintScene::SetValid(s.curve, 1, false);
    EXPECT_TRUE(s.PaintAll().empty());  // no box, no leader line
    PaintScene::SetValid(s.curve, 1, true);
    EXPECT_EQ(s.PaintAll().size(), 3u);
    // Invalid in the X vector counts too.
    s.curve->GetVx()->ValidateAt(1, false);
    EXPECT_TRUE(s.PaintAll().empty());
}

TEST(VyrDiagramNotes, NoteOnAMissingPointIsNotDrawn) {
    for (int index : {-1, 3, 100}) {
        NoteScene s;
        s.note->SetPointIndex(index);
        EXPECT_TRUE(s.PaintAll().empty()) << index;
        EXPECT_EQ(s.note->GetBoxWidth(), 200);  // a note never painted keeps its size
        EXPECT_EQ(s.note->GetBoxHeight(), 30);
    }
    // A Y vector shorter than X.
    NoteScene s;
    s.curve->GetVy()->Resize(1);
    EXPECT_TRUE(s.PaintAll().empty());
}

TEST(VyrDiagramNotes, NoteBeingMovedShowsOnlyItsLeaderLine) {
    NoteScene s;
    s.note->SetBoxSize(41, 23);
    s.note->SetState(VYR_NOTE_MOVING);
    RecordingDC dc;
    s.Paint(dc);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].kind, Kind::Line);
    // To the centre of the stored size, halves rounded toward zero.
    EXPECT_EQ(all[0].To(), wxPoint(250 + 20, 70 + 11));
    EXPECT_EQ(s.note->GetBoxWidth(), 41);
    // Moved notes count as selected: highlight outline.
    EXPECT_EQ(all[0].pen.GetColour(), wxColour(0, 120, 215));
}

TEST(VyrDiagramNotes, NotesAreDrawnRightAfterTheirCurveInItsPaintingColour) {
    NoteScene s;
    s.curve->SetStyleLiaison(1);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintCurve(s.scene.Diagram(), &dc, s.curve, false, nullptr);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 2u + 3u);
    EXPECT_EQ(all[2].kind, Kind::Line);  // the leader line after the curve's two segments
    const wxColour disabled = s.scene.Diagram().GetDisabledCurvesColour();
    EXPECT_EQ(all[3].pen.GetColour(), disabled);
    EXPECT_EQ(all[3].brush.GetColour(), s.scene.Diagram().GetInnerColor(disabled));
}

TEST(VyrDiagramNotes, NotePenFollowsTheLineScale) {
    NoteScene s;
    VyrDiagramTestAccess::SetLineScale(s.scene.Diagram(), 3);
    RecordingDC dc;
    s.Paint(dc);
    ASSERT_EQ(dc.Primitives().size(), 3u);
    EXPECT_EQ(dc.Primitives()[1].pen.GetWidth(), 3);
}

namespace {

struct TitreScene {
    PaintScene scene;
    VyrNote* titre = nullptr;
    TitreScene() {
        scene.Frame();
        titre = scene.Doc().CreateNoteEntity();
        titre->SetText("Charge");
        titre->SetPosition(0.25, 0.5);
        scene.Diagram().SetNoteTitre(titre);
    }
    void Paint(RecordingDC& dc) {
        dc.SetFont(wxFont(wxFontInfo(12)));
        VyrDiagramTestAccess::PaintTitre(scene.Diagram(), &dc);
    }
    std::vector<RecordedPrimitive> PaintAll() {
        RecordingDC dc;
        Paint(dc);
        return dc.Primitives();
    }
};

}  // namespace

TEST(VyrDiagramNotes, TitleIsAnOrangeBoxOfBoldTextPlusTwenty) {
    TitreScene s;
    RecordingDC dc;
    s.Paint(dc);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 2u);
    // Corner: 401 x 0.25 + 50 = 150.25 -> 150; 201 x 0.5 + 20 = 120.5 -> 120 (truncated).
    // "Charge" in bold 12 points: 6 x 9 by 16; box 74 x 36.
    EXPECT_EQ(all[0].kind, Kind::Rectangle);
    EXPECT_EQ(all[0].rect, wxRect(150, 120, 74, 36));
    EXPECT_EQ(all[0].pen.GetColour(), wxColour(255, 153, 0));
    EXPECT_EQ(all[0].brush.GetColour(), wxColour(255, 244, 229));
    EXPECT_EQ(all[1].kind, Kind::Text);
    EXPECT_EQ(all[1].Pos(), wxPoint(160, 130));
    EXPECT_TRUE(all[1].IsBold());
    EXPECT_EQ(all[1].textForeground, wxColour(0, 0, 0));
    EXPECT_EQ(s.titre->GetBoxWidth(), 74);
    EXPECT_EQ(s.titre->GetBoxHeight(), 36);
    // The context's font comes back.
    EXPECT_EQ(dc.GetFont().GetNumericWeight(), 400);
    EXPECT_FALSE(dc.GetPen().IsOk());
}

TEST(VyrDiagramNotes, TitleBeingMovedHiddenOrMissingDrawsNothing) {
    {
        TitreScene s;
        s.titre->SetState(VYR_NOTE_MOVING);
        EXPECT_TRUE(s.PaintAll().empty());
        EXPECT_EQ(s.titre->GetBoxWidth(), 200);
    }
    {
        TitreScene s;
        s.titre->SetShown(false);
        EXPECT_TRUE(s.PaintAll().empty());
    }
    {
        TitreScene s;
        s.scene.Diagram().SetNoteTitre(nullptr);
        EXPECT_TRUE(s.PaintAll().empty());
    }
}

TEST(VyrDiagramNotes, TitleIsPaintedAfterTheCurves) {
    TitreScene s;
    CurveLook look;
    VyrCourbe* c = s.scene.AddCurve(look, {{0, 0}, {400, 200}});
    s.scene.Show(c);
    s.scene.Frame();
    RecordingDC dc;
    s.scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false);
    int curve = -1, title = -1;
    const auto& all = dc.Primitives();
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i].kind == Kind::Line && all[i].From() == wxPoint(50, 220) &&
            all[i].To() == wxPoint(450, 20))
            curve = static_cast<int>(i);
        if (all[i].kind == Kind::Text && all[i].text == "Charge")
            title = static_cast<int>(i);
    }
    ASSERT_GE(curve, 0);
    EXPECT_GT(title, curve);
}

TEST(VyrDiagramNotes, TitlePositionIsTruncatedFromFractionsOfThePlot) {
    TitreScene s;
    VyrDiagram& d = s.scene.Diagram();
    EXPECT_EQ(d.GetTitrePos(s.titre), wxPoint(150, 120));
    s.titre->SetPosition(-0.01, -0.01);
    // -4.01 + 50 = 45.99 and -2.01 + 20 = 17.99: truncated, not rounded.
    EXPECT_EQ(d.GetTitrePos(s.titre), wxPoint(45, 17));
    d.SetTitrePos(s.titre, wxPoint(250, 70));
    EXPECT_DOUBLE_EQ(s.titre->GetPositionX(), 200.0 / 401.0);
    EXPECT_DOUBLE_EQ(s.titre->GetPositionY(), 50.0 / 201.0);
    EXPECT_EQ(d.GetTitrePos(nullptr), wxPoint(0, 0));
    d.SetTitrePos(nullptr, wxPoint(1, 1));  // nothing, no crash
}

TEST(VyrDiagramNotes, SetTitrePosOnARectangleOfWidthZeroLeavesTheFractions) {
    PaintScene scene;
    VyrNote* titre = scene.Doc().CreateNoteEntity();
    titre->SetPosition(0.3, 0.4);
    wxRect flat(10, 10, 0, 100);
    scene.Diagram().Move(flat);
    scene.Diagram().SetTitrePos(titre, wxPoint(50, 50));
    EXPECT_EQ(titre->GetPositionX(), 0.3);
    EXPECT_EQ(titre->GetPositionY(), 0.4);
    wxRect low(10, 10, 100, 0);
    scene.Diagram().Move(low);
    scene.Diagram().SetTitrePos(titre, wxPoint(50, 50));
    EXPECT_EQ(titre->GetPositionX(), 0.3);
}

// Plot rectangle 50..450 x 20..220 (right 450, bottom 220).
TEST(VyrDiagramNotes, TextPosGoesLeftOfAPointTwoPixelsFromTheRightEdge) {
    PaintScene scene;
    scene.Frame();
    const wxPoint p =
        VyrDiagramTestAccess::GetTextPos(scene.Diagram(), 448, 100, 30, 16, true, true);
    EXPECT_EQ(p, wxPoint(448 - 30 - 5, 106));
}

TEST(VyrDiagramNotes, TextPosGoesBelowAPointNearTheTop) {
    PaintScene scene;
    scene.Frame();
    const wxPoint p =
        VyrDiagramTestAccess::GetTextPos(scene.Diagram(), 200, 25, 30, 16, true, false);
    EXPECT_EQ(p, wxPoint(206, 31));
}

TEST(VyrDiagramNotes, TextPosPrefersTheAskedSidesAndFallsBack) {
    PaintScene scene;
    scene.Frame();
    VyrDiagram& d = scene.Diagram();
    // Left of and above the point, as asked.
    EXPECT_EQ(VyrDiagramTestAccess::GetTextPos(d, 200, 100, 30, 16, false, false),
              wxPoint(165, 79));
    // Left asked but no room left of the point (column - 3 < left): right of it.
    EXPECT_EQ(VyrDiagramTestAccess::GetTextPos(d, 70, 100, 30, 16, false, true), wxPoint(76, 106));
    // Below asked near the bottom: above.
    EXPECT_EQ(VyrDiagramTestAccess::GetTextPos(d, 200, 210, 30, 16, true, true), wxPoint(206, 189));
    // A text wider than the rectangle ends at right - w (the upper bound applies last).
    EXPECT_EQ(VyrDiagramTestAccess::GetTextPos(d, 200, 100, 500, 16, true, true),
              wxPoint(450 - 500, 106));
    // A point far outside is clamped into the rectangle.
    EXPECT_EQ(VyrDiagramTestAccess::GetTextPos(d, -1000, -1000, 30, 16, true, true),
              wxPoint(50, 20));
}
