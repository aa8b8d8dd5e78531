#include <cmath>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "diagram/VyrPixelRound.h"
#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Kind = RecordedPrimitive::Kind;
using Points = std::vector<std::pair<double, double>>;
using Segment = std::pair<wxPoint, wxPoint>;

namespace {

const wxColour kGreen(0, 128, 0);

VyrCourbe* ShowCurve(PaintScene& scene, int styleLiaison, const Points& pts, int width = 1) {
    CurveLook look;
    look.colour = kGreen;
    look.width = width;
    look.stylePoint = 0;
    look.styleLiaison = styleLiaison;
    VyrCourbe* c = scene.AddCurve(look, pts);
    scene.Show(c);
    scene.Frame();
    return c;
}

std::vector<Segment> Lines(const RecordingDC& dc) {
    std::vector<Segment> out;
    for (const RecordedPrimitive& p : dc.Primitives(Kind::Line))
        out.push_back({p.From(), p.To()});
    return out;
}

Segment S(int x1, int y1, int x2, int y2) {
    return {wxPoint(x1, y1), wxPoint(x2, y2)};
}

// Five points on pixels (60, 200), (80, 180), (100, 160), (120, 190), (140, 170).
const Points kFive = {{10, 20}, {30, 40}, {50, 60}, {70, 30}, {90, 50}};

}  // namespace

TEST(VyrDiagramLines, LineAcrossAnInvalidPointJoinsItsNeighbours) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 1, kFive);
    PaintScene::SetValid(c, 2, false);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintLine(scene.Diagram(), 1, &dc, c);
    const std::vector<Segment> expected = {S(60, 200, 80, 180), S(80, 180, 120, 190),
                                           S(120, 190, 140, 170)};
    EXPECT_EQ(Lines(dc), expected);
}

TEST(VyrDiagramLines, LineDoesNotJoinFromAPointOnColumnMinusOne) {
    PaintScene scene;
    // x = -51 lands on column -1: kept, it reads as "no previous point".
    VyrCourbe* c = ShowCurve(scene, 1, {{10, 20}, {-51, 40}, {50, 60}, {70, 30}});
    RecordingDC dc;
    VyrDiagramTestAccess::PaintLine(scene.Diagram(), 1, &dc, c);
    const std::vector<Segment> expected = {S(60, 200, -1, 180), S(100, 160, 120, 190)};
    EXPECT_EQ(Lines(dc), expected);
}

TEST(VyrDiagramLines, HistogramRestartsAfterAnInvalidPoint) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 2, kFive);
    PaintScene::SetValid(c, 2, false);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintLine(scene.Diagram(), 2, &dc, c);
    // Axis row 220. Bars for point 1 (from point 0's column) and point 4 (from point 3's);
    // point 3 starts anew after the invalid point 2.
    const std::vector<Segment> expected = {S(60, 180, 60, 220),   S(80, 180, 80, 220),
                                           S(60, 180, 80, 180),   S(120, 170, 120, 220),
                                           S(140, 170, 140, 220), S(120, 170, 140, 170)};
    EXPECT_EQ(Lines(dc), expected);
}

TEST(VyrDiagramLines, StaircaseRestartsAfterAnInvalidPoint) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 3, kFive);
    PaintScene::SetValid(c, 2, false);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintLine(scene.Diagram(), 3, &dc, c);
    const std::vector<Segment> expected = {S(60, 200, 80, 200), S(80, 200, 80, 180),
                                           S(120, 190, 140, 190), S(140, 190, 140, 170)};
    EXPECT_EQ(Lines(dc), expected);
}

TEST(VyrDiagramLines, SegmentStylesEndOnTheAxesAndFullLinesSpanThePlot) {
    PaintScene scene;
    // The axes cross at pixel (150, 120) for data (0, 0) with X -100..300 and Y -100..100.
    CurveLook look;
    VyrCourbe* c = scene.AddCurve(look, {{10, 20}, {30, 40}});
    scene.Show(c);
    scene.Frame(wxRect(50, 20, 401, 201), -100, 300, -100, 100);
    PaintScene::SetValid(c, 1, false);
    // Point 0 on pixel (160, 100).
    const std::vector<std::vector<Segment>> expected = {
        {S(160, 100, 160, 120)},                         // 4
        {S(160, 100, 150, 100)},                         // 5
        {S(160, 100, 160, 120), S(160, 100, 150, 100)},  // 6
        {S(160, 20, 160, 220)},                          // 7
        {S(50, 100, 450, 100)},                          // 8
        {S(160, 20, 160, 220), S(50, 100, 450, 100)},    // 9
    };
    for (int style = 4; style <= 9; ++style) {
        RecordingDC dc;
        VyrDiagramTestAccess::PaintLine(scene.Diagram(), style, &dc, c);
        EXPECT_EQ(Lines(dc), expected[style - 4]) << "line style " << style;
    }
}

TEST(VyrDiagramLines, CurvePainterSelectsTheLinePenAfterTheMarkersAndEndsWithTheNullPen) {
    PaintScene scene;
    CurveLook look;
    look.colour = kGreen;
    look.width = 3;
    look.stylePoint = 4;
    look.styleLiaison = 1;
    VyrCourbe* c = scene.AddCurve(look, {{10, 20}, {30, 40}});
    scene.Show(c);
    scene.Frame();
    VyrDiagramTestAccess::SetLineScale(scene.Diagram(), 2);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintCurve(scene.Diagram(), &dc, c, true, nullptr);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].kind, Kind::Rectangle);
    EXPECT_EQ(all[1].kind, Kind::Rectangle);
    EXPECT_EQ(all[2].kind, Kind::Line);
    EXPECT_EQ(all[2].pen.GetWidth(), 6);
    EXPECT_EQ(all[2].pen.GetColour(), kGreen);
    EXPECT_EQ(all[2].pen.GetStyle(), wxPENSTYLE_SOLID);
    EXPECT_FALSE(dc.GetPen().IsOk());
}

TEST(VyrDiagramLines, UnknownStylesDrawNothing) {
    PaintScene scene;
    CurveLook look;
    look.stylePoint = 7;
    look.styleLiaison = 11;
    VyrCourbe* c = scene.AddCurve(look, {{10, 20}, {30, 40}});
    scene.Show(c);
    scene.Frame();
    c->SetStylePoint(-1);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintCurve(scene.Diagram(), &dc, c, true, nullptr);
    EXPECT_TRUE(dc.Primitives().empty());
    c->SetStyleLiaison(-3);
    VyrDiagramTestAccess::PaintCurve(scene.Diagram(), &dc, c, true, nullptr);
    EXPECT_TRUE(dc.Primitives().empty());
}

TEST(VyrDiagramLines, SpectrumDrawsEachWavelengthInItsColourThenTheCurveOverIt) {
    PaintScene scene;
    CurveLook look;
    look.grdX = "lambda";
    look.unitX = "nm";
    look.grdY = "A";
    look.unitY = "u.a.";
    look.colour = kGreen;
    look.width = 2;
    look.styleLiaison = 4;
    // 300 nm has no colour; 500 and 700 have.
    VyrCourbe* c = scene.AddCurve(look, {{300, 0.5}, {500, 1.0}, {700, 0.25}});
    scene.Show(c);
    scene.Frame(wxRect(50, 20, 401, 201), 200, 800, 0, 2);
    scene.Diagram().SetSpectrum(true);
    RecordingDC dc;
    bool repaint = false;
    VyrDiagramTestAccess::PaintCurve(scene.Diagram(), &dc, c, true, &repaint);
    EXPECT_TRUE(repaint);
    const auto lines = dc.Primitives(Kind::Line);
    // Pixels: x = 50 + (x - 200) * 400 / 600, y = 220 - y * 100.
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].From(), wxPoint(250, 120));
    EXPECT_EQ(lines[0].To(), wxPoint(250, 220));
    EXPECT_EQ(lines[0].pen.GetColour(), VyrDiagram::WaveLengthToRGB(500, 100.0, false));
    EXPECT_EQ(lines[0].pen.GetWidth(), 1);
    EXPECT_EQ(lines[1].From(), wxPoint(383, 195));
    EXPECT_EQ(lines[1].pen.GetColour(), VyrDiagram::WaveLengthToRGB(700, 100.0, false));
    // Then the curve in its own colour and width, joining the three points.
    EXPECT_EQ(lines[2].From(), wxPoint(117, 170));
    EXPECT_EQ(lines[2].To(), wxPoint(250, 120));
    EXPECT_EQ(lines[3].To(), wxPoint(383, 195));
    EXPECT_EQ(lines[2].pen.GetColour(), kGreen);
    EXPECT_EQ(lines[2].pen.GetWidth(), 2);

    // Without the spectrum flag: plain segments in the selected pen, no repaint asked.
    scene.Diagram().SetSpectrum(false);
    RecordingDC plain;
    repaint = false;
    VyrDiagramTestAccess::PaintCurve(scene.Diagram(), &plain, c, true, &repaint);
    EXPECT_FALSE(repaint);
    EXPECT_EQ(plain.Primitives(Kind::Line).size(), 3u);
    EXPECT_EQ(plain.Primitives(Kind::Line)[0].pen.GetColour(), kGreen);
}

TEST(VyrDiagramLines, SpectrumOverPaintRepaintsTheAxesOverIt) {
    PaintScene scene;
    CurveLook look;
    look.grdX = "lambda";
    look.unitX = "nm";
    look.grdY = "A";
    look.unitY = "u.a.";
    look.styleLiaison = 4;
    VyrCourbe* c = scene.AddCurve(look, {{500, 1.0}, {600, 1.5}});
    scene.Show(c);
    scene.Frame(wxRect(50, 20, 401, 201), 200, 800, 0, 2);
    const auto xAxis = [](const RecordingDC& dc) {
        int n = 0;
        for (const auto& p : dc.Primitives(Kind::Line))
            if (p.From() == wxPoint(50, 220) && p.To() == wxPoint(450, 220))
                ++n;
        return n;
    };
    RecordingDC plain;
    scene.Diagram().Paint(&plain, false, false, false, 1.0, nullptr, false);
    scene.Diagram().SetSpectrum(true);
    RecordingDC spectrum;
    scene.Diagram().Paint(&spectrum, false, false, false, 1.0, nullptr, false);
    EXPECT_EQ(xAxis(spectrum), 2 * xAxis(plain));
    ASSERT_GE(xAxis(plain), 1);
    // The second X axis comes after the spectrum's coloured lines.
    int lastSpectrum = -1, lastAxis = -1;
    const auto& all = spectrum.Primitives();
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i].kind != Kind::Line)
            continue;
        if (all[i].pen.GetColour() == VyrDiagram::WaveLengthToRGB(600, 100.0, false))
            lastSpectrum = static_cast<int>(i);
        if (all[i].From() == wxPoint(50, 220) && all[i].To() == wxPoint(450, 220))
            lastAxis = static_cast<int>(i);
    }
    ASSERT_GE(lastSpectrum, 0);
    EXPECT_GT(lastAxis, lastSpectrum);
}

namespace {

// The curves on which the reduction per pixel column is checked: several hundred points per
// column, or none.
enum class Dense { Random, Monotonic, Noisy, WithNaN, Sparse };

Points DenseCurve(Dense kind, int n, std::mt19937& random) {
    std::uniform_real_distribution<double> noise(-30.0, 30.0);
    std::uniform_real_distribution<double> anywhere(-80.0, 480.0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Points pts;
    for (int i = 0; i < n; ++i) {
        // From left of the plot to right of it.
        const double x = -60.0 + 480.0 * i / n;
        switch (kind) {
            case Dense::Random:
                // Points anywhere, in no order: the line jumps across the plot.
                pts.push_back({anywhere(random), anywhere(random) / 2.0});
                break;
            case Dense::Monotonic:
                pts.push_back({x, 0.4 * x + 10.0});
                break;
            case Dense::Noisy:
            case Dense::WithNaN:
                pts.push_back({x, 100 + 60 * std::sin(x / 15.0) + noise(random)});
                break;
            case Dense::Sparse:
                pts.push_back({-60.0 + 480.0 * i / 40.0, 100 + 60 * std::sin(i / 2.0)});
                break;
        }
    }
    if (kind == Dense::Noisy || kind == Dense::WithNaN) {
        // Flat stretches (every point of a column on one pixel), a point on column -1.
        for (int i = n / 4; i < n / 4 + n / 50; ++i)
            pts[i].second = 150.0;
        pts[100].first = -51.0;
    }
    if (kind == Dense::WithNaN) {
        for (int i = 7; i < n; i += 997)
            pts[i].second = nan;
        for (int i = 500; i < n; i += 1999)
            pts[i].first = nan;
        for (int i = 3000; i < 3004; ++i)
            pts[i] = {nan, nan};
    }
    return pts;
}

// Every segment of a joining line style, drawn as the style defines it for each valid point.
void DrawEverySegment(wxDC& dc, int style, const Points& pts, VyrCourbe* c, VyrDiagram& diagram) {
    const double ax = VyrDiagramTestAccess::Ax(diagram);
    const double bx = VyrDiagramTestAccess::Bx(diagram);
    const double ay = VyrDiagramTestAccess::Ay(diagram);
    const double by = VyrDiagramTestAccess::By(diagram);
    wxPoint origin;
    diagram.GetOrigin(origin);
    bool havePrevious = false;
    wxPoint previous(-1, 0);
    for (size_t i = 0; i < pts.size(); ++i) {
        if (!c->GetVy()->IsValidAt(static_cast<int>(i))) {
            if (style != 1) {
                havePrevious = false;
                previous = wxPoint(-1, 0);
            }
            continue;
        }
        const wxPoint p(VyrRoundPixel(pts[i].first * ax + bx),
                        VyrRoundPixel(pts[i].second * ay + by));
        if (style == 1 && previous.x != -1)
            dc.DrawLine(previous, p);
        if (style == 2 && previous.x != -1) {
            dc.DrawLine(previous.x, p.y, previous.x, origin.y);
            dc.DrawLine(p.x, p.y, p.x, origin.y);
            dc.DrawLine(previous.x, p.y, p.x, p.y);
        }
        if (style == 3 && havePrevious) {
            dc.DrawLine(previous.x, previous.y, p.x, previous.y);
            dc.DrawLine(p.x, previous.y, p.x, p.y);
        }
        previous = p;
        havePrevious = true;
    }
}

}  // namespace

// Dense data: the joining line styles draw each pixel column from what its points can change
// there (first, last, lowest and highest point). Without antialiasing this is pixel-identical
// to drawing every segment, on random, monotonic, noisy and NaN-holding curves, for several
// pen widths; and it costs a few primitives per column whatever the number of points.
TEST(VyrDiagramLines, DenseJoiningStylesArePixelIdenticalToEverySegmentWithoutAntialiasing) {
    const wxSize size(500, 260);
    const int n = 20000;
    const Dense kinds[] = {Dense::Random, Dense::Monotonic, Dense::Noisy, Dense::WithNaN,
                           Dense::Sparse};
    const char* const names[] = {"random", "monotonic", "noisy", "with NaN", "sparse"};
    std::mt19937 random(12345);
    for (int k = 0; k < 5; ++k) {
        const Points pts = DenseCurve(kinds[k], kinds[k] == Dense::Sparse ? 40 : n, random);
        for (int style : {1, 2, 3}) {
            for (int width : {1, 2, 3}) {
                SCOPED_TRACE(testing::Message()
                             << names[k] << " curve, line style " << style << ", width " << width);
                PaintScene scene;
                VyrCourbe* c = ShowCurve(scene, style, pts, width);
                // The axis row inside the plot, so that bars stand visibly on it.
                scene.Frame(wxRect(50, 20, 401, 201), 0.0, 400.0, -50.0, 200.0);
                for (size_t i = 11; i < pts.size(); i += 37)
                    PaintScene::SetValid(c, static_cast<int>(i), false);
                VyrDiagram& diagram = scene.Diagram();
                const wxPen pen(kGreen, width, wxPENSTYLE_SOLID);
                const wxImage reduced = PaintToImage(
                    size,
                    [&](wxDC& dc) {
                        dc.SetPen(pen);
                        VyrDiagramTestAccess::PaintLine(diagram, style, &dc, c);
                    },
                    false);
                const wxImage everySegment = PaintToImage(
                    size,
                    [&](wxDC& dc) {
                        dc.SetPen(pen);
                        DrawEverySegment(dc, style, pts, c, diagram);
                    },
                    false);
                EXPECT_EQ(CountDifferentPixels(reduced, everySegment, 0), 0);
                // Not two blank pictures: the curve covers many pixels.
                const wxImage blank = PaintToImage(
                    size, [](wxDC&) {}, false);
                EXPECT_GT(CountDifferentPixels(reduced, blank, 0), 300);

                // And the reduction is what makes it cheap: a few segments per column (and
                // per invalid point, where styles 2 and 3 start anew), not per point.
                RecordingDC dc;
                VyrDiagramTestAccess::PaintLine(diagram, style, &dc, c);
                if (kinds[k] != Dense::Random && kinds[k] != Dense::Sparse) {
                    const size_t invalid = pts.size() / 37 + 1;
                    EXPECT_LT(dc.Primitives(Kind::Line).size(), 4u * 500u + 4u * invalid);
                }
            }
        }
    }
}

namespace {

// The points of the curve as its vectors hold them now.
Points CurrentPoints(VyrCourbe* c) {
    Points pts;
    for (int i = 0; i < static_cast<int>(c->GetSize()); ++i)
        pts.push_back({c->GetVx()->GetVal(i), c->GetVy()->GetVal(i)});
    return pts;
}

}  // namespace

// A dense recording whose X ascends: each pixel column takes its whole blocks of points from
// the Y vector's block extremes. Without antialiasing this is pixel-identical to drawing every
// segment: with invalid points and NaN values among the blocks, and again after points are
// appended to the painted curve and after values inside it are set, inserted and removed.
TEST(VyrDiagramLines, DenseAscendingLineFromBlockExtremesIsPixelIdenticalToEverySegment) {
    const wxSize size(500, 260);
    const int n = 200000;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    std::mt19937 random(99);
    std::uniform_real_distribution<double> noise(-25.0, 25.0);
    auto at = [&](int i) {
        const double x = -60.0 + 480.0 * i / n;
        return std::make_pair(x, 100 + 60 * std::sin(x / 15.0) + noise(random));
    };
    Points pts;
    for (int i = 0; i < n; ++i)
        pts.push_back(at(i));
    for (int i = 50000; i < 60000; ++i)
        pts[i].second = 150.0;  // flat: every point of those columns on one pixel
    for (int i = 20011; i < n; i += 7919)
        pts[i].second = nan;
    for (int width : {1, 2}) {
        SCOPED_TRACE(testing::Message() << "width " << width);
        PaintScene scene;
        VyrCourbe* c = ShowCurve(scene, 1, pts, width);
        scene.Frame(wxRect(50, 20, 401, 201), 0.0, 400.0, -50.0, 200.0);
        for (int i = 31; i < n; i += 4099)
            PaintScene::SetValid(c, i, false);
        VyrDiagram& diagram = scene.Diagram();
        const wxPen pen(kGreen, width, wxPENSTYLE_SOLID);
        auto check = [&](const char* stage) {
            SCOPED_TRACE(stage);
            ASSERT_TRUE(c->GetVx()->IsSortedAscending());
            const double* extremes = nullptr;
            ASSERT_GE(static_cast<const VyrVecteur*>(c->GetVy())->GetBlockExtremes(&extremes),
                      n / 64);
            const wxImage reduced = PaintToImage(
                size,
                [&](wxDC& dc) {
                    dc.SetPen(pen);
                    VyrDiagramTestAccess::PaintLine(diagram, 1, &dc, c);
                },
                false);
            const Points now = CurrentPoints(c);
            const wxImage everySegment = PaintToImage(
                size,
                [&](wxDC& dc) {
                    dc.SetPen(pen);
                    DrawEverySegment(dc, 1, now, c, diagram);
                },
                false);
            EXPECT_EQ(CountDifferentPixels(reduced, everySegment, 0), 0);
            EXPECT_GT(CountDifferentPixels(reduced,
                                           PaintToImage(
                                               size, [](wxDC&) {}, false),
                                           0),
                      3000);
        };
        check("as recorded");
        // Appended one at a time after a paint, further to the right.
        for (int i = 0; i < 20000; ++i) {
            const std::pair<double, double> p = at(n + i);
            scene.Doc().AddPoint(c, p.first, p.second, false);
        }
        check("appended");
        // A spike set inside a block, a block's lowest value raised.
        c->GetVy()->SetVal(100005, 190.0);
        c->GetVy()->SetVal(150010, -40.0);
        check("set");
        // A point inserted and one removed in the middle (X stays ascending).
        const int size0 = static_cast<int>(c->GetSize());
        for (VyrVecteur* v : {c->GetVx(), c->GetVy()})
            v->Resize(size0 + 1);
        c->GetVx()->InsertVal(120000, c->GetVx()->GetVal(120000));
        c->GetVy()->InsertVal(120000, -45.0);
        check("inserted");
        c->GetVx()->RemoveValAt(80000);
        c->GetVy()->RemoveValAt(80000);
        check("removed");
    }
}
