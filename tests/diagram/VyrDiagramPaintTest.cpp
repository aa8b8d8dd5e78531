#include <cmath>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
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
        CurveLook a;
        a.grdY = "I";
        a.unitY = "A";
        a.colour = kBlue;
        other = scene.AddCurve(a, {{0, 0.0}, {400, 2.0}});
        CurveLook v;
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
    VyrCourbe* c = scene.AddCurve(CurveLook(), {{0, 0}, {100, 100}});
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
    CurveLook look;
    look.stylePoint = 2;
    look.styleLiaison = 1;
    look.width = 1;
    VyrCourbe* c = scene.AddCurve(look, {{100, 50}, {200, 50}});
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

// ---- Reference pictures -------------------------------------------------------------------
//
// Whole diagrams painted on a cairo image compared with the pictures kept in
// tests/data/diagram/. Text is rasterised by the system's fonts, so a small number of pixels
// may differ between machines; anything beyond that is a change of the drawing. Run with
// VYR_UPDATE_PICTURES=1 to write the pictures again (then look at them before committing).

namespace {

const wxSize kPictureSize(640, 400);
const wxRect kPicturePlot(0, 0, 640, 400);

void CheckAgainstPicture(const wxImage& painted, const wxString& name) {
    const wxString path = wxString(VYR_TEST_DATA_DIR) + "/diagram/" + name;
    if (wxGetenv("VYR_UPDATE_PICTURES")) {
        ASSERT_TRUE(painted.SaveFile(path, wxBITMAP_TYPE_PNG));
        return;
    }
    wxImage reference;
    ASSERT_TRUE(reference.LoadFile(path, wxBITMAP_TYPE_PNG)) << path;
    const long different = CountDifferentPixels(painted, reference, 48);
    const long pixels = static_cast<long>(kPictureSize.x) * kPictureSize.y;
    if (different != 0)
        painted.SaveFile(wxString("painted_") + name, wxBITMAP_TYPE_PNG);
    // At most 0.3 % of the pixels, the text's worth of rasterisation differences.
    EXPECT_GE(different, 0);
    EXPECT_LE(different, pixels * 3 / 1000) << name << " differs; see painted_" << name;
    // The picture is a drawing, not a blank page.
    const wxImage blank = PaintToImage(kPictureSize, [](wxDC&) {});
    EXPECT_GT(CountDifferentPixels(reference, blank, 48), pixels / 100) << name;
}

wxImage PaintWhole(VyrDiagram& d) {
    return PaintToImage(kPictureSize, [&](wxDC& dc) {
        dc.SetBackground(*wxWHITE_BRUSH);
        dc.Clear();
        d.Paint(&dc, false, false, false, 1.0, nullptr, false);
    });
}

}  // namespace

TEST(VyrDiagramPaint, PictureOfTwoUnitsWithGridNoteTitleAndInterval) {
    PaintScene scene;
    std::vector<std::pair<double, double>> u, i;
    for (int k = 0; k <= 400; ++k) {
        const double t = k * 0.025;  // 0 to 10 s
        u.push_back({t, 5.0 * std::exp(-t / 4.0) * std::sin(2.0 * t)});
        if (k % 10 == 0)
            i.push_back({t, 0.2 * (1.0 - std::exp(-t / 2.0))});
    }
    CurveLook vs;
    vs.colour = wxColour(200, 0, 0);
    vs.width = 2;
    VyrCourbe* cu = scene.AddCurve(vs, u);
    CurveLook as;
    as.grdY = "I";
    as.unitY = "A";
    as.colour = wxColour(0, 90, 200);
    as.stylePoint = 4;
    as.styleLiaison = 1;
    VyrCourbe* ci = scene.AddCurve(as, i);
    cu->SetShownInDiagram(0, true);
    ci->SetShownInDiagram(0, true);
    VyrDiagram& d = scene.Diagram();
    d.Fill();
    d.SetUy("V");
    wxRect plot = kPicturePlot;
    d.Move(plot);
    d.SetGridShown(true);
    d.SetAutoScale();

    VyrNote* note = scene.Doc().CreateNoteEntity();
    note->SetText("first peak");
    note->SetPointIndex(30);
    note->SetPosition(2.0, 4.0);
    cu->AddNote(note);
    VyrNote* titre = scene.Doc().CreateNoteEntity();
    titre->SetText("Damped oscillation");
    titre->SetPosition(0.55, 0.05);
    d.SetNoteTitre(titre);
    VyrOutilInterval model(0, &scene.Doc());
    model.SetAbs("s");
    model.SetOrd("V");
    model.SetPoints(1.0, -2.0, 4.0, 2.5);
    scene.Doc().AddOutilIntervalEntity(&model);
    VyrOutilInterval point(0, &scene.Doc());
    point.SetAbs("s");
    point.SetOrd("V");
    point.SetEtiq1("P");
    point.SetPoints(7.0, -1.0, 7.0, -1.0);
    scene.Doc().AddOutilIntervalEntity(&point);

    CheckAgainstPicture(PaintWhole(d), "two_units.png");
}

TEST(VyrDiagramPaint, PictureOfEveryMarkerAndStepStyles) {
    PaintScene scene;
    VyrDiagram& d = scene.Diagram();
    const wxColour colours[] = {wxColour(200, 0, 0),   wxColour(0, 120, 0),
                                wxColour(0, 0, 200),   wxColour(150, 0, 150),
                                wxColour(0, 130, 130), wxColour(160, 100, 0)};
    for (int m = 1; m <= 8; ++m) {
        std::vector<std::pair<double, double>> pts;
        for (int k = 0; k <= 12; ++k)
            pts.push_back({k, m + 0.3 * std::sin(k + m)});
        CurveLook look;
        look.grdY = wxString::Format("Y%d", m);
        look.colour = colours[(m - 1) % 6];
        look.stylePoint = m <= 6 ? m : 0;
        look.width = m <= 6 ? 2 : 1;
        look.styleLiaison = m <= 6 ? 0 : m - 5;  // 7: bars, 8: staircase
        VyrCourbe* c = scene.AddCurve(look, pts);
        if (m == 8)
            PaintScene::SetValid(c, 6, false);
        c->SetShownInDiagram(0, true);
    }
    d.Fill();
    wxRect plot = kPicturePlot;
    d.Move(plot);
    d.SetAutoScale();
    CheckAgainstPicture(PaintWhole(d), "markers_and_steps.png");
}

TEST(VyrDiagramPaint, PictureOfASpectrumAndBands) {
    PaintScene scene;
    VyrDiagram& d = scene.Diagram();
    std::vector<std::pair<double, double>> spectrum;
    for (int nm = 350; nm <= 800; nm += 1)
        spectrum.push_back({nm, std::exp(-std::pow((nm - 560) / 90.0, 2.0))});
    CurveLook ss;
    ss.grdX = "lambda";
    ss.unitX = "nm";
    ss.grdY = "I";
    ss.unitY = "u.a.";
    ss.colour = wxColour(40, 40, 40);
    ss.styleLiaison = 4;
    VyrCourbe* cs = scene.AddCurve(ss, spectrum);
    std::vector<std::pair<double, double>> signal;
    for (int nm = 350; nm <= 800; nm += 5)
        signal.push_back({nm, (nm / 50) % 3 == 0 ? 1.0 : 0.0});
    CurveLook bs = ss;
    bs.grdY = "S";
    bs.colour = wxColour(0, 150, 0);
    bs.styleLiaison = 10;
    VyrCourbe* cb = scene.AddCurve(bs, signal);
    cs->SetShownInDiagram(0, true);
    cb->SetShownInDiagram(0, true);
    d.Fill();
    wxRect plot = kPicturePlot;
    d.Move(plot);
    d.SetGridShown(true);
    d.SetSpectrum(true);
    d.SetAutoScale();
    CheckAgainstPicture(PaintWhole(d), "spectrum_and_bands.png");
}
