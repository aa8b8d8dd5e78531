#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrGraphObj.h"

using Kind = RecordedPrimitive::Kind;

namespace {

const wxColour kRed(255, 0, 0);
const wxColour kBlue(0, 0, 255);

// A graph object that draws one point and remembers what the context held when it painted.
class ProbeObj : public VyrGraphObj {
public:
    explicit ProbeObj(int* destroyed = nullptr) : m_pDestroyed(destroyed) {}
    ~ProbeObj() override {
        if (m_pDestroyed)
            ++*m_pDestroyed;
    }
    void Paint(wxDC* dc) override {
        ++paints;
        font = dc->GetFont();
        text = dc->GetTextForeground();
        dc->GetClippingBox(clip);
        dc->DrawPoint(1, 1);
    }
    int paints = 0;
    wxFont font;
    wxColour text;
    wxRect clip;

private:
    int* m_pDestroyed;
};

// A curve of U(t) in V, and one of I(t) in A (another Y unit), both as lines.
struct TwoUnits {
    PaintScene scene;
    VyrCourbe* main = nullptr;
    VyrCourbe* other = nullptr;
    TwoUnits() {
        CurveSpec a;
        a.grdY = "I";
        a.unitY = "A";
        a.colour = kBlue;
        other = scene.AddCurve(a, {{0, 0.0}, {400, 2.0}});
        CurveSpec v;
        v.colour = kRed;
        main = scene.AddCurve(v, {{0, 200}, {400, 0}});
        // The other unit first, so that list order alone would draw it first too; then the
        // main one.
        scene.Show(other);
        scene.Show(main);
        scene.Diagram().SetUy("V");
        scene.Frame();
        scene.SetUnitRangeY("A", 0.0, 2.0);
    }
};

const RecordedPrimitive* FindLine(const RecordingDC& dc, wxPoint a, wxPoint b, size_t* index) {
    const auto& all = dc.Primitives();
    for (size_t i = 0; i < all.size(); ++i)
        if (all[i].kind == Kind::Line && all[i].From() == a && all[i].To() == b) {
            if (index)
                *index = i;
            return &all[i];
        }
    return nullptr;
}

}  // namespace

TEST(VyrDiagramPaint, SelectsSegoeUi12InTheAxisColourAndClipsToThePlot) {
    PaintScene scene;
    VyrCourbe* c = scene.AddCurve(CurveSpec(), {{0, 0}, {100, 100}});
    scene.Show(c);
    scene.Frame();
    scene.Diagram().SetAxisColour(wxColour(10, 20, 30));
    ProbeObj probe;
    scene.Diagram().SetGraphObj(&probe);
    RecordingDC dc;
    scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false);
    ASSERT_EQ(probe.paints, 1);
    EXPECT_EQ(probe.font.GetFaceName(), "Segoe UI");
    EXPECT_EQ(probe.font.GetPointSize(), 12);
    EXPECT_EQ(probe.font.GetNumericWeight(), 400);
    EXPECT_EQ(probe.font.GetStyle(), wxFONTSTYLE_NORMAL);
    EXPECT_FALSE(probe.font.GetUnderlined());
    EXPECT_EQ(probe.text, wxColour(10, 20, 30));
    EXPECT_EQ(probe.clip, wxRect(50, 20, 401, 201));
    const auto& all = dc.Primitives();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.front().kind, Kind::SetClip);
    EXPECT_EQ(all.front().rect, wxRect(50, 20, 401, 201));
    EXPECT_EQ(all.back().kind, Kind::DestroyClip);
    EXPECT_EQ(scene.Diagram().GetLineScale(), 1);
    scene.Diagram().SetGraphObj(nullptr);
}

TEST(VyrDiagramPaint, ScaledOutputAtTwoUsesEighteenPointsDoublesWidthsAndGrowsMarkersByTwo) {
    PaintScene scene;
    CurveSpec spec;
    spec.stylePoint = 2;
    spec.styleLiaison = 1;
    spec.width = 1;
    VyrCourbe* c = scene.AddCurve(spec, {{100, 50}, {200, 50}});
    scene.Show(c);
    scene.Frame();
    ProbeObj probe;
    scene.Diagram().SetGraphObj(&probe);

    RecordingDC dc;
    scene.Diagram().Paint(&dc, true, false, false, 2.0, nullptr, false);
    EXPECT_EQ(probe.font.GetPointSize(), 18);
    EXPECT_EQ(scene.Diagram().GetLineScale(), 2);
    // Plus marker at (150, 170): r = 1 + 2 = 3, pen 1 x 2.
    const RecordedPrimitive* h = FindLine(dc, wxPoint(147, 170), wxPoint(154, 170), nullptr);
    ASSERT_NE(h, nullptr);
    EXPECT_EQ(h->pen.GetWidth(), 2);
    // The joining line: width 1 x 2.
    const RecordedPrimitive* line = FindLine(dc, wxPoint(150, 170), wxPoint(250, 170), nullptr);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->pen.GetWidth(), 2);

    // Unscaled: r = 1 + 1 = 2, pens of width 1.
    RecordingDC plain;
    scene.Diagram().Paint(&plain, false, false, false, 2.0, nullptr, false);
    EXPECT_EQ(probe.font.GetPointSize(), 12);
    EXPECT_EQ(scene.Diagram().GetLineScale(), 1);
    ASSERT_NE(FindLine(plain, wxPoint(148, 170), wxPoint(153, 170), nullptr), nullptr);
    EXPECT_EQ(FindLine(plain, wxPoint(150, 170), wxPoint(250, 170), nullptr)->pen.GetWidth(), 1);
    scene.Diagram().SetGraphObj(nullptr);
}

TEST(VyrDiagramPaint, EitherNoScaleFlagSuppressesScaling) {
    PaintScene scene;
    scene.Frame();
    ProbeObj probe;
    scene.Diagram().SetGraphObj(&probe);
    for (auto flags :
         {std::make_pair(true, false), std::make_pair(false, true), std::make_pair(true, true)}) {
        RecordingDC dc;
        scene.Diagram().Paint(&dc, true, flags.first, flags.second, 3.0, nullptr, false);
        EXPECT_EQ(probe.font.GetPointSize(), 12);
        EXPECT_EQ(scene.Diagram().GetLineScale(), 1);
    }
    RecordingDC dc;
    scene.Diagram().Paint(&dc, true, false, false, 3.5, nullptr, false);
    EXPECT_EQ(probe.font.GetPointSize(), 31);  // integral part of 31.5
    EXPECT_EQ(scene.Diagram().GetLineScale(), 3);
    // Absurd scales give a usable font and never a negative line scale.
    scene.Diagram().Paint(&dc, true, false, false, -4.0, nullptr, false);
    EXPECT_GE(probe.font.GetPointSize(), 1);
    EXPECT_EQ(scene.Diagram().GetLineScale(), 0);
    scene.Diagram().SetGraphObj(nullptr);
}

TEST(VyrDiagramPaint, RestoresPenBrushFontTextColourScaleAndTransform) {
    TwoUnits t;
    VyrDiagram& d = t.scene.Diagram();
    const VyrScale before = *d.GetCurrentScale();
    const wxPoint p = d.RealToPixel(123.0, 45.0);

    RecordingDC dc;
    const wxPen pen(wxColour(1, 2, 3), 7);
    const wxBrush brush(wxColour(4, 5, 6));
    const wxFont font(wxFontInfo(7).FaceName("Serif"));
    dc.SetPen(pen);
    dc.SetBrush(brush);
    dc.SetFont(font);
    dc.SetTextForeground(wxColour(7, 8, 9));
    d.Paint(&dc, true, false, false, 2.0, nullptr, false);

    EXPECT_EQ(dc.GetPen(), pen);
    EXPECT_EQ(dc.GetBrush(), brush);
    EXPECT_EQ(dc.GetFont(), font);
    EXPECT_EQ(dc.GetTextForeground(), wxColour(7, 8, 9));
    EXPECT_EQ(d.GetCurrentScale()->GetXmin(), before.GetXmin());
    EXPECT_EQ(d.GetCurrentScale()->GetXmax(), before.GetXmax());
    EXPECT_EQ(d.GetCurrentScale()->GetYmin(), before.GetYmin());
    EXPECT_EQ(d.GetCurrentScale()->GetYmax(), before.GetYmax());
    EXPECT_EQ(d.RealToPixel(123.0, 45.0), p);
}

TEST(VyrDiagramPaint, CurveOfAnotherYUnitIsDrawnFirstAndInTheDisabledColour) {
    TwoUnits t;
    RecordingDC dc;
    t.scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false);
    // Both curves go corner to corner in their own ranges: the A curve from the bottom left,
    // the V curve from the top left.
    size_t iOther = 0, iMain = 0;
    const RecordedPrimitive* other = FindLine(dc, wxPoint(50, 220), wxPoint(450, 20), &iOther);
    const RecordedPrimitive* main = FindLine(dc, wxPoint(50, 20), wxPoint(450, 220), &iMain);
    ASSERT_NE(other, nullptr);
    ASSERT_NE(main, nullptr);
    EXPECT_LT(iOther, iMain);
    EXPECT_EQ(other->pen.GetColour(), t.scene.Diagram().GetDisabledCurvesColour());
    EXPECT_EQ(main->pen.GetColour(), kRed);

    t.scene.Diagram().SetAllCurvesInColour(true);
    RecordingDC coloured;
    t.scene.Diagram().Paint(&coloured, false, false, false, 1.0, nullptr, false);
    other = FindLine(coloured, wxPoint(50, 220), wxPoint(450, 20), &iOther);
    main = FindLine(coloured, wxPoint(50, 20), wxPoint(450, 220), &iMain);
    ASSERT_NE(other, nullptr);
    ASSERT_NE(main, nullptr);
    EXPECT_LT(iOther, iMain);
    EXPECT_EQ(other->pen.GetColour(), kBlue);
}

TEST(VyrDiagramPaint, CurveWhoseOwnRangeIsEmptyOrInvertedIsNotDrawn) {
    for (double ymax : {0.0, -1.0}) {
        TwoUnits t;
        t.scene.SetUnitRangeY("A", 0.0, ymax);
        RecordingDC dc;
        t.scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false);
        EXPECT_NE(FindLine(dc, wxPoint(50, 20), wxPoint(450, 220), nullptr), nullptr);
        for (const auto& p : dc.Primitives(Kind::Line))
            EXPECT_NE(p.pen.GetColour(), t.scene.Diagram().GetDisabledCurvesColour());
    }
}

TEST(VyrDiagramPaint, CurvesUseTheirUnitRangesAndGetTheMainRangeBackAfterwards) {
    TwoUnits t;
    VyrDiagram& d = t.scene.Diagram();
    RecordingDC dc;
    bool repaint = true;
    VyrDiagramTestAccess::PaintCurves(d, &dc, &repaint);
    EXPECT_TRUE(repaint);  // left as it was: no spectrum
    EXPECT_NE(FindLine(dc, wxPoint(50, 220), wxPoint(450, 20), nullptr), nullptr);
    EXPECT_EQ(d.GetCurrentScale()->GetYmax(), 200.0);
    EXPECT_EQ(d.RealToPixel(0.0, 200.0), wxPoint(50, 20));
}

TEST(VyrDiagramPaint, GraphObjectLiesOverTheAxesAndUnderTheCurves) {
    TwoUnits t;
    ProbeObj probe;
    t.scene.Diagram().SetGraphObj(&probe);
    EXPECT_EQ(probe.GetDiagram(), &t.scene.Diagram());
    RecordingDC dc;
    t.scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false);
    size_t axis = 0, curve = 0, point = 0;
    ASSERT_NE(FindLine(dc, wxPoint(50, 220), wxPoint(450, 220), &axis), nullptr);
    ASSERT_NE(FindLine(dc, wxPoint(50, 220), wxPoint(450, 20), &curve), nullptr);
    const auto& all = dc.Primitives();
    for (size_t i = 0; i < all.size(); ++i)
        if (all[i].kind == Kind::Point)
            point = i;
    EXPECT_LT(axis, point);
    EXPECT_LT(point, curve);
    t.scene.Diagram().SetGraphObj(nullptr);
    EXPECT_EQ(t.scene.Diagram().GetGraphObj(), nullptr);
}

TEST(VyrDiagramPaint, DiagramNeverDeletesItsGraphObject) {
    int destroyed = 0;
    ProbeObj* first = new ProbeObj(&destroyed);
    ProbeObj* second = new ProbeObj(&destroyed);
    {
        PaintScene scene;
        scene.Diagram().SetGraphObj(first);
        scene.Diagram().SetGraphObj(second);  // replacing does not delete the first
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(first->GetDiagram(), &scene.Diagram());
        // Null leaves the object as it was.
        scene.Diagram().SetGraphObj(nullptr);
        RecordingDC dc;
        VyrDiagramTestAccess::PaintGraphObj(scene.Diagram(), &dc);
        EXPECT_TRUE(dc.Primitives().empty());
        scene.Diagram().SetGraphObj(second);
    }  // the diagram goes with its document
    EXPECT_EQ(destroyed, 0);
    delete first;
    delete second;
    EXPECT_EQ(destroyed, 2);
}

TEST(VyrDiagramPaint, BadgeNeedsTheFlagTwoDiagramsABitmapAndShowBadge) {
    PaintScene scene;
    scene.Frame();
    wxBitmap badge(16, 12);
    const auto bitmaps = [&](bool flag, int diagrams, wxBitmap* b, bool show) {
        scene.Diagram().SetBadge(flag);
        scene.Doc().SetDiagramCount(diagrams);
        RecordingDC dc;
        scene.Diagram().Paint(&dc, false, false, false, 1.0, b, show);
        return dc.Primitives(Kind::Bitmap);
    };
    const auto drawn = bitmaps(true, 2, &badge, true);
    ASSERT_EQ(drawn.size(), 1u);
    // Top right corner of the plot, 10 pixels down: x = 50 + 401 - 1 - 16.
    EXPECT_EQ(drawn[0].Pos(), wxPoint(434, 30));
    EXPECT_TRUE(drawn[0].useMask);
    EXPECT_TRUE(drawn[0].clipped);
    EXPECT_TRUE(bitmaps(false, 2, &badge, true).empty());
    EXPECT_TRUE(bitmaps(true, 1, &badge, true).empty());
    EXPECT_TRUE(bitmaps(true, 2, nullptr, true).empty());
    EXPECT_TRUE(bitmaps(true, 2, &badge, false).empty());
}

TEST(VyrDiagramPaint, NullContextAndEmptyDiagramDrawNothingHarmful) {
    PaintScene scene;
    scene.Diagram().Paint(nullptr, true, false, false, 2.0, nullptr, true);
    // Never moved: a zero plot rectangle clips everything, and nothing crashes.
    RecordingDC dc;
    scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false);
    EXPECT_EQ(dc.Primitives().front().rect, wxRect());
}
