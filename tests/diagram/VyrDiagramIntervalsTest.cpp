#include <vector>

#include <gtest/gtest.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Kind = RecordedPrimitive::Kind;

namespace {

// A diagram of U(t) in V against s on the default frame, and tools added to its document.
struct ToolScene {
    PaintScene scene;
    ToolScene(double xmin = 0, double xmax = 400, double ymin = 0, double ymax = 200) {
        VyrCourbe* c = scene.AddCurve(CurveLook(), {{0, 0}, {1, 1}});
        scene.Show(c);
        scene.Frame(wxRect(50, 20, 401, 201), xmin, xmax, ymin, ymax);
    }
    VyrOutilInterval* AddTool(double x0, double y0, double x1, double y1, const wxString& abs = "s",
                              const wxString& ord = "V") {
        VyrOutilInterval model(0, &scene.Doc());
        model.SetEtiq1("P1");
        model.SetEtiq2("P2");
        model.SetAbs(abs);
        model.SetOrd(ord);
        model.SetPoints(x0, y0, x1, y1);
        scene.Doc().AddOutilIntervalEntity(&model);
        // The copy is the last interval tool of the document.
        VyrOutilInterval* last = nullptr;
        wxVyrListEntityNode* node = scene.Doc().GetFirstOutilIntervalNode();
        while (node)
            last = scene.Doc().GetNextOutilInterval(&node);
        return last;
    }
    void Paint(RecordingDC& dc, int fontPoints = 12) {
        dc.SetFont(wxFont(wxFontInfo(fontPoints)));
        VyrDiagramTestAccess::PaintOutilIntervals(scene.Diagram(), &dc);
    }
    std::vector<RecordedPrimitive> PaintAll() {
        RecordingDC dc;
        Paint(dc);
        return dc.Primitives();
    }
};

size_t CountKind(const std::vector<RecordedPrimitive>& all, Kind kind) {
    size_t n = 0;
    for (const auto& p : all)
        n += p.kind == kind;
    return n;
}

}  // namespace

TEST(VyrDiagramIntervals, IntervalDraggedRightToLeftHasANegativeWidthAndAbsoluteLabels) {
    ToolScene s;
    s.AddTool(300, 150, 100, 50);
    RecordingDC dc;
    s.Paint(dc);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 3u);
    // Corners on pixels (350, 70) and (150, 170).
    EXPECT_EQ(all[0].kind, Kind::Rectangle);
    EXPECT_EQ(all[0].rect, wxRect(350, 70, 150 - 350 + 1, 170 - 70 + 1));
    EXPECT_EQ(all[0].pen.GetStyle(), wxPENSTYLE_DOT);
    EXPECT_EQ(all[0].pen.GetWidth(), 1);
    EXPECT_EQ(all[0].pen.GetColour(), s.scene.Diagram().GetAxisColour());
    EXPECT_EQ(all[0].brush.GetStyle(), wxBRUSHSTYLE_TRANSPARENT);
    // One pixel is one unit: three decimals. Labels 9 characters of 8 pixels, 16 high.
    EXPECT_EQ(all[1].kind, Kind::Text);
    EXPECT_EQ(all[1].text, "200.000 s");
    EXPECT_EQ(all[1].Pos(), wxPoint(150 + (199 - 72) / 2, 70 - 16 - 5));
    EXPECT_EQ(all[2].text, "100.000 V");
    EXPECT_EQ(all[2].Pos(), wxPoint(350 + 6, 70 + (101 - 16) / 2));
    EXPECT_EQ(all[2].textForeground, s.scene.Diagram().GetAxisColour());
    // The labels of the ends are not drawn for an interval.
    EXPECT_EQ(dc.FindText("P1"), nullptr);
    EXPECT_EQ(dc.FindText("P2"), nullptr);
    EXPECT_FALSE(dc.GetPen().IsOk());
    EXPECT_FALSE(dc.GetBrush().IsOk());
}

TEST(VyrDiagramIntervals, WidthLabelGoesInsideWhenThereIsNoRoomAbove) {
    ToolScene s;
    s.AddTool(100, 195, 300, 150);
    RecordingDC dc;
    s.Paint(dc);
    const RecordedPrimitive* across = dc.FindText("200.000 s");
    ASSERT_NE(across, nullptr);
    // Top edge on row 25: 25 - 21 is above the plot, so 6 pixels below the edge.
    EXPECT_EQ(across->Pos().y, 25 + 6);
}

TEST(VyrDiagramIntervals, SelectedIntervalHasAPenOfTwoAndBoldLabelsOfAtLeastElevenPoints) {
    ToolScene s;
    VyrOutilInterval* tool = s.AddTool(100, 50, 300, 150);
    tool->SetSelected(true);
    RecordingDC dc;
    s.Paint(dc, 8);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].pen.GetWidth(), 2);
    EXPECT_EQ(all[1].font.GetPointSize(), 11);
    EXPECT_TRUE(all[1].IsBold());
    // The context's font comes back.
    EXPECT_EQ(dc.GetFont().GetPointSize(), 8);
}

TEST(VyrDiagramIntervals, PointToolAtMinusOneTwoPutsItsLabelLeftOfAndAbove) {
    ToolScene s(-100, 300, -100, 100);
    s.AddTool(-1, 2, -1, 2);
    RecordingDC dc;
    s.Paint(dc);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 2u);
    // (-1, 2) on pixel (149, 118).
    EXPECT_EQ(all[0].kind, Kind::Ellipse);
    EXPECT_EQ(all[0].rect, wxRect(146, 115, 7, 7));
    EXPECT_EQ(all[0].pen.GetColour(), wxColour(255, 0, 0));
    EXPECT_EQ(all[0].pen.GetWidth(), 1);
    EXPECT_EQ(all[0].brush.GetColour(), wxColour(255, 0, 0));
    EXPECT_EQ(all[1].text, "P1");
    EXPECT_EQ(all[1].Pos(), wxPoint(149 - 16 - 5, 118 - 16 - 5));
    EXPECT_FALSE(all[1].IsBold());
}

TEST(VyrDiagramIntervals, PointToolLabelGoesAwayFromTheOrigin) {
    ToolScene s(-100, 300, -100, 100);
    VyrOutilInterval* tool = s.AddTool(10, -20, 10, -20);
    tool->SetSelected(true);
    RecordingDC dc;
    s.Paint(dc);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 2u);
    // (10, -20) on pixel (160, 140): right of and below it; selected: pen 2, bold label.
    EXPECT_EQ(all[1].Pos(), wxPoint(166, 146));
    EXPECT_EQ(all[0].pen.GetWidth(), 2);
    EXPECT_TRUE(all[1].IsBold());
}

TEST(VyrDiagramIntervals, ToolsInAnotherXUnitOrWithAnEmptyRangeAreNotDrawn) {
    ToolScene s;
    // A curve of another Y unit gives that unit a record, whose range is then made empty.
    CurveLook amps;
    amps.grdY = "I";
    amps.unitY = "A";
    s.scene.AddCurve(amps, {{0, 0}, {1, 1}});
    s.scene.Diagram().UpdateUnits();
    s.scene.SetUnitRangeY("A", 1.0, 1.0);
    s.AddTool(100, 50, 300, 150, "ms", "V");
    s.AddTool(100, 50, 300, 150, "S", "V");  // units compare case-sensitively
    s.AddTool(100, 50, 300, 150, "s", "A");
    EXPECT_TRUE(s.PaintAll().empty());
    s.AddTool(100, 50, 300, 150, "s", "V");
    EXPECT_EQ(CountKind(s.PaintAll(), Kind::Rectangle), 1u);
}

TEST(VyrDiagramIntervals, ToolsComeFromTheActiveDocumentOnly) {
    ToolScene shown;
    shown.AddTool(100, 50, 300, 150);
    {
        // Another document becomes the active one: its tools are drawn, not the diagram's own.
        ToolScene active;
        active.AddTool(10, 10, 20, 20);
        RecordingDC dc;
        shown.Paint(dc);
        const auto rects = dc.Primitives(Kind::Rectangle);
        ASSERT_EQ(rects.size(), 1u);
        EXPECT_EQ(rects[0].rect.GetPosition(), wxPoint(60, 210));
    }
    // No active document: nothing.
    ASSERT_EQ(VyrBaseData::GetActiveBase(), nullptr);
    EXPECT_TRUE(shown.PaintAll().empty());
}

TEST(VyrDiagramIntervals, ToolsAreDrawnInTheirUnitsRangesAndTheScaleComesBack) {
    ToolScene s;
    CurveLook amps;
    amps.grdY = "I";
    amps.unitY = "A";
    s.scene.AddCurve(amps, {{0, 0}, {1, 1}});
    s.scene.Diagram().UpdateUnits();
    s.scene.SetUnitRangeY("A", 0.0, 2.0);
    s.AddTool(100, 0.5, 300, 1.5, "s", "A");
    VyrDiagram& d = s.scene.Diagram();
    const wxPoint before = d.RealToPixel(10, 10);
    RecordingDC dc;
    s.Paint(dc);
    const auto rects = dc.Primitives(Kind::Rectangle);
    ASSERT_EQ(rects.size(), 1u);
    // Y 0.5 and 1.5 of 0..2 on rows 170 and 70.
    EXPECT_EQ(rects[0].rect, wxRect(150, 170, 201, 70 - 170 + 1));
    EXPECT_EQ(d.RealToPixel(10, 10), before);
    EXPECT_EQ(d.GetCurrentScale()->GetYmax(), 200.0);
}
