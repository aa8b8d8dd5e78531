#include <cmath>
#include <random>
#include <set>
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

namespace {

const wxColour kBlue(0, 0, 255);

// One curve of the given styles through `pts`, shown and framed on the default frame (data
// (x, y) on pixel (50 + x, 220 - y)).
VyrCourbe* ShowCurve(PaintScene& scene, int stylePoint, int styleLiaison, const Points& pts,
                     int width = 1) {
    CurveLook look;
    look.colour = kBlue;
    look.width = width;
    look.stylePoint = stylePoint;
    look.styleLiaison = styleLiaison;
    VyrCourbe* c = scene.AddCurve(look, pts);
    scene.Show(c);
    scene.Frame();
    return c;
}

std::vector<RecordedPrimitive> Drawn(const RecordingDC& dc) {
    std::vector<RecordedPrimitive> out;
    for (const RecordedPrimitive& p : dc.Primitives())
        if (p.kind != Kind::SetClip && p.kind != Kind::DestroyClip)
            out.push_back(p);
    return out;
}

}  // namespace

TEST(VyrDiagramMarkers, PointMarkerIsAFilledDotOfLineScalePlusTwiceTheWidth) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 1, 0, {{100, 50}}, 2);
    RecordingDC dc;
    ASSERT_TRUE(VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 1, &dc, c, kBlue));
    const auto drawn = Drawn(dc);
    ASSERT_EQ(drawn.size(), 1u);
    EXPECT_EQ(drawn[0].kind, Kind::Ellipse);
    // Pixel (150, 170); w = 2, line scale 1: corner (148, 168), sides 1 + 4.
    EXPECT_EQ(drawn[0].rect, wxRect(148, 168, 5, 5));
    EXPECT_EQ(drawn[0].pen.GetColour(), kBlue);
    EXPECT_EQ(drawn[0].pen.GetWidth(), 1);
    EXPECT_EQ(drawn[0].brush.GetColour(), kBlue);
    EXPECT_EQ(drawn[0].brush.GetStyle(), wxBRUSHSTYLE_SOLID);
    // The marker painter leaves the null pen and brush behind it.
    EXPECT_FALSE(dc.GetPen().IsOk());
    EXPECT_FALSE(dc.GetBrush().IsOk());
}

TEST(VyrDiagramMarkers, PointMarkerWithAnyLineStyleOtherThanZeroDrawsNothing) {
    for (int liaison : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}) {
        PaintScene scene;
        VyrCourbe* c = ShowCurve(scene, 1, liaison, {{100, 50}, {200, 80}});
        RecordingDC dc;
        VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 1, &dc, c, kBlue);
        EXPECT_TRUE(Drawn(dc).empty()) << "line style " << liaison;
        // Through the whole curve painter: no ellipse at all.
        RecordingDC whole;
        VyrDiagramTestAccess::PaintCurve(scene.Diagram(), &whole, c, true, nullptr);
        EXPECT_TRUE(whole.Primitives(Kind::Ellipse).empty()) << "line style " << liaison;
    }
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 1, 0, {{100, 50}, {200, 80}});
    RecordingDC whole;
    VyrDiagramTestAccess::PaintCurve(scene.Diagram(), &whole, c, true, nullptr);
    EXPECT_EQ(whole.Primitives(Kind::Ellipse).size(), 2u);
}

TEST(VyrDiagramMarkers, PlusIsTwoStrokesOnePastTheMarkerWithButtCaps) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 2, 0, {{100, 50}});
    RecordingDC dc;
    VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 2, &dc, c, kBlue);
    const auto drawn = Drawn(dc);
    ASSERT_EQ(drawn.size(), 2u);
    // r = width 1 + line scale 1 = 2 around (150, 170).
    EXPECT_EQ(drawn[0].kind, Kind::Line);
    EXPECT_EQ(drawn[0].From(), wxPoint(148, 170));
    EXPECT_EQ(drawn[0].To(), wxPoint(153, 170));
    EXPECT_EQ(drawn[1].From(), wxPoint(150, 168));
    EXPECT_EQ(drawn[1].To(), wxPoint(150, 173));
    for (const auto& p : drawn) {
        EXPECT_EQ(p.pen.GetColour(), kBlue);
        EXPECT_EQ(p.pen.GetWidth(), 1);
        EXPECT_EQ(p.pen.GetCap(), wxCAP_BUTT);
        EXPECT_EQ(p.pen.GetJoin(), wxJOIN_MITER);
    }
    EXPECT_FALSE(dc.GetPen().IsOk());
}

TEST(VyrDiagramMarkers, CrossIsTwoDiagonalsOnePastTheMarker) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 3, 0, {{100, 50}});
    RecordingDC dc;
    VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 3, &dc, c, kBlue);
    const auto drawn = Drawn(dc);
    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_EQ(drawn[0].From(), wxPoint(148, 168));
    EXPECT_EQ(drawn[0].To(), wxPoint(153, 173));
    EXPECT_EQ(drawn[1].From(), wxPoint(148, 172));
    EXPECT_EQ(drawn[1].To(), wxPoint(153, 167));
    EXPECT_EQ(drawn[1].pen.GetCap(), wxCAP_BUTT);
}

TEST(VyrDiagramMarkers, SquareCircleAndLozengeAreHollow) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 4, 0, {{100, 50}});
    {
        RecordingDC dc;
        VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 4, &dc, c, kBlue);
        const auto drawn = Drawn(dc);
        ASSERT_EQ(drawn.size(), 1u);
        EXPECT_EQ(drawn[0].kind, Kind::Rectangle);
        EXPECT_EQ(drawn[0].rect, wxRect(148, 168, 5, 5));
        EXPECT_EQ(drawn[0].brush.GetStyle(), wxBRUSHSTYLE_TRANSPARENT);
        EXPECT_EQ(drawn[0].pen.GetCap(), wxCAP_BUTT);
        EXPECT_FALSE(dc.GetBrush().IsOk());
    }
    {
        RecordingDC dc;
        VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 5, &dc, c, kBlue);
        const auto drawn = Drawn(dc);
        ASSERT_EQ(drawn.size(), 1u);
        EXPECT_EQ(drawn[0].kind, Kind::Ellipse);
        EXPECT_EQ(drawn[0].rect, wxRect(148, 168, 5, 5));
        EXPECT_EQ(drawn[0].brush.GetStyle(), wxBRUSHSTYLE_TRANSPARENT);
        // Default caps for the circle.
        EXPECT_EQ(drawn[0].pen.GetCap(), wxPen(kBlue, 1).GetCap());
    }
    {
        RecordingDC dc;
        VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 6, &dc, c, kBlue);
        const auto drawn = Drawn(dc);
        ASSERT_EQ(drawn.size(), 1u);
        EXPECT_EQ(drawn[0].kind, Kind::Polygon);
        const std::vector<wxPoint> expected = {wxPoint(150, 168), wxPoint(148, 170),
                                               wxPoint(150, 172), wxPoint(152, 170)};
        EXPECT_EQ(drawn[0].points, expected);
        EXPECT_EQ(drawn[0].fillMode, wxODDEVEN_RULE);
        EXPECT_EQ(drawn[0].brush.GetStyle(), wxBRUSHSTYLE_TRANSPARENT);
        EXPECT_EQ(drawn[0].pen.GetCap(), wxCAP_BUTT);
    }
}

TEST(VyrDiagramMarkers, PenWidthIsCurveWidthTimesLineScaleAndSizeGrowsByLineScale) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 2, 0, {{100, 50}}, 3);
    VyrDiagramTestAccess::SetLineScale(scene.Diagram(), 2);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 2, &dc, c, kBlue);
    const auto drawn = Drawn(dc);
    ASSERT_EQ(drawn.size(), 2u);
    // r = 3 + 2 = 5; pen 3 x 2.
    EXPECT_EQ(drawn[0].From(), wxPoint(145, 170));
    EXPECT_EQ(drawn[0].To(), wxPoint(156, 170));
    EXPECT_EQ(drawn[0].pen.GetWidth(), 6);
}

TEST(VyrDiagramMarkers, RepeatedPixelsAreDrawnOnceAndOutsidePointsNever) {
    PaintScene scene;
    // 100.2 and 100.4 round to the pixel of 100; -10 lies left of the plot rectangle.
    VyrCourbe* c =
        ShowCurve(scene, 4, 0, {{100, 50}, {100.2, 50}, {100.4, 50.3}, {-10, 50}, {100, 50}});
    RecordingDC dc;
    VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 4, &dc, c, kBlue);
    const auto drawn = Drawn(dc);
    // Point 0, then point 4 (its pixel differs from the outside point 3 remembered before it).
    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_EQ(drawn[0].rect, wxRect(148, 168, 5, 5));
    EXPECT_EQ(drawn[1].rect, wxRect(148, 168, 5, 5));
}

TEST(VyrDiagramMarkers, InvalidPointsAreSkippedAndDoNotResetTheRememberedPixel) {
    PaintScene scene;
    VyrCourbe* c = ShowCurve(scene, 4, 0, {{100, 50}, {300, 150}, {100, 50}});
    PaintScene::SetValid(c, 1, false);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 4, &dc, c, kBlue);
    // Point 2 has the pixel of the last valid point (0): not drawn again.
    EXPECT_EQ(Drawn(dc).size(), 1u);
}

TEST(VyrDiagramMarkers, FirstValidPointOnPixelZeroIsDrawnOnlyWhenItIsPointZero) {
    // A plot rectangle holding pixel (0, 0): data (0, 200) lands on (0, 0).
    for (bool pointZeroValid : {true, false}) {
        PaintScene scene;
        CurveLook look;
        look.stylePoint = 4;
        look.styleLiaison = 0;
        VyrCourbe* c = scene.AddCurve(look, {{0, 200}, {0, 200}});
        scene.Show(c);
        scene.Frame(wxRect(0, 0, 401, 201));
        if (!pointZeroValid)
            PaintScene::SetValid(c, 0, false);
        RecordingDC dc;
        VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 4, &dc, c, kBlue);
        // Kept: the remembered pixel starts at (0, 0) and only index 0 is exempt.
        EXPECT_EQ(Drawn(dc).size(), pointZeroValid ? 1u : 0u);
    }
}

TEST(VyrDiagramMarkers, DenseDataCostsOnePrimitivePerChangeOfVisiblePixel) {
    PaintScene scene;
    Points pts;
    const int n = 100000;
    for (int i = 0; i < n; ++i) {
        const double x = 400.0 * i / n;
        pts.push_back({x, 100 + 80 * std::sin(x / 20.0)});
    }
    VyrCourbe* c = ShowCurve(scene, 2, 0, pts);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintMarker(scene.Diagram(), 2, &dc, c, kBlue);

    // The pixel runs, computed here from the frame's transform.
    size_t changes = 0;
    wxPoint last(0, 0);
    std::set<std::pair<int, int>> distinct;
    for (int i = 0; i < n; ++i) {
        const wxPoint p(static_cast<int>(std::floor(50 + pts[i].first + 0.5)),
                        static_cast<int>(std::floor(220 - pts[i].second + 0.5)));
        if (i == 0 || p != last)
            ++changes;
        distinct.insert({p.x, p.y});
        last = p;
    }
    EXPECT_EQ(dc.Primitives(Kind::Line).size(), 2 * changes);
    // A few thousand primitives for a hundred thousand points.
    EXPECT_LT(changes, 3 * distinct.size());
    EXPECT_LT(changes, static_cast<size_t>(n / 20));
}

TEST(VyrDiagramMarkers, BandOpensStrictlyAboveHalfAndHoldsAtHalf) {
    PaintScene scene;
    // Y 0.5 at index 1 opens nothing; 0.6 opens at 2, 0.5 at 3 holds, 0.4 at 4 closes.
    CurveLook look;
    look.colour = kBlue;
    look.styleLiaison = 10;
    VyrCourbe* c = scene.AddCurve(
        look, {{0, 0.0}, {10, 0.5}, {20, 0.6}, {30, 0.5}, {40, 0.4}, {50, 0.5}, {60, 0.0}});
    scene.Show(c);
    scene.Frame(wxRect(50, 20, 401, 201), 0, 400, -1, 1);
    // y = 0 on row round(by) = 120.
    RecordingDC dc;
    VyrDiagramTestAccess::PaintLine(scene.Diagram(), 10, &dc, c, kBlue);
    const auto rects = dc.Primitives(Kind::Rectangle);
    ASSERT_EQ(rects.size(), 1u);
    EXPECT_EQ(rects[0].rect, wxRect(70 - 2, 120 - 30, (80 + 2) - (70 - 2), 30));
    EXPECT_EQ(rects[0].brush.GetColour(), kBlue);
    EXPECT_EQ(rects[0].brush.GetStyle(), wxBRUSHSTYLE_SOLID);
    EXPECT_FALSE(dc.GetBrush().IsOk());
}

TEST(VyrDiagramMarkers, BandReachingTheLastPointIsDrawnUpToIt) {
    PaintScene scene;
    CurveLook look;
    look.styleLiaison = 10;
    VyrCourbe* c = scene.AddCurve(look, {{0, 0.0}, {100, 1.0}, {150, 1.0}, {200, 0.5}});
    scene.Show(c);
    scene.Frame(wxRect(50, 20, 401, 201), 0, 400, -1, 1);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintLine(scene.Diagram(), 10, &dc, c, kBlue);
    const auto rects = dc.Primitives(Kind::Rectangle);
    ASSERT_EQ(rects.size(), 1u);
    // From X[1] - 2 = 148 to X[3] + 2 = 252.
    EXPECT_EQ(rects[0].rect, wxRect(148, 90, 104, 30));
}

TEST(VyrDiagramMarkers, BandsIgnoreValidityStandOnTheUnclampedZeroRowAndReadMissingXAsZero) {
    PaintScene scene;
    CurveLook look;
    look.styleLiaison = 10;
    VyrCourbe* c = scene.AddCurve(look, {{100, 1.0}, {120, 0.0}, {200, 1.0}, {220, 1.0}});
    scene.Show(c);
    // Y from 1 to 3: the row of y = 0 is 100 pixels under the plot's bottom (row 320).
    scene.Frame(wxRect(50, 20, 401, 201), 0, 400, 1, 3);
    PaintScene::SetValid(c, 0, false);
    // X is one point shorter than Y: Y[3] reads X as 0.0.
    c->GetVx()->Resize(3);
    RecordingDC dc;
    VyrDiagramTestAccess::PaintLine(scene.Diagram(), 10, &dc, c, kBlue);
    const auto rects = dc.Primitives(Kind::Rectangle);
    ASSERT_EQ(rects.size(), 2u);
    EXPECT_EQ(rects[0].rect, wxRect(148, 290, 4, 30));
    // The second band runs from X[2] = 200 (pixel 250) to the missing X[3] = 0 (pixel 50).
    EXPECT_EQ(rects[1].rect, wxRect(248, 290, 52 - 248, 30));
}

TEST(VyrDiagramMarkers, BandCurvesAreDrawnInBothPasses) {
    PaintScene scene;
    CurveLook look;
    look.colour = kBlue;
    look.styleLiaison = 10;
    VyrCourbe* c = scene.AddCurve(look, {{0, 0.0}, {100, 1.0}, {150, 0.0}});
    scene.Show(c);
    scene.Frame(wxRect(50, 20, 401, 201), 0, 400, -1, 1);
    RecordingDC dc;
    bool repaint = false;
    VyrDiagramTestAccess::PaintCurves(scene.Diagram(), &dc, &repaint);
    const auto rects = dc.Primitives(Kind::Rectangle);
    ASSERT_EQ(rects.size(), 2u);
    // Pass 0 in the disabled colour (the curve is in the main unit, so not its own colour
    // there), pass 1 in its own colour.
    EXPECT_EQ(rects[0].brush.GetColour(), scene.Diagram().GetDisabledCurvesColour());
    EXPECT_EQ(rects[1].brush.GetColour(), kBlue);
    EXPECT_FALSE(repaint);
}

namespace {

// A noisy recording of `n` points over the default frame, running from left of the plot to
// right of it, with noise that brings the markers back onto pixels they had before.
Points NoisyCurve(int n, std::mt19937& random) {
    std::uniform_real_distribution<double> noise(-30.0, 30.0);
    Points pts;
    for (int i = 0; i < n; ++i) {
        const double x = -60.0 + 480.0 * i / n;
        pts.push_back({x, 100 + 90 * std::sin(x / 15.0) + noise(random)});
    }
    return pts;
}

// Every marker of every valid point inside the plot, each with the pen and brush its style
// defines, whether or not a marker already stands on its pixel; with firstOnly, only the first
// marker of each pixel position, in the order the points reach them, each drawn by the context.
void DrawEveryMarker(wxDC& dc, int style, const Points& pts, VyrCourbe* c, VyrDiagram& diagram,
                     int lineScale, bool firstOnly = false) {
    std::set<std::pair<int, int>> drawn;
    const int w = c->GetWidth();
    const int r = w + lineScale;
    wxPen pen(kBlue, style == 1 ? lineScale : w * lineScale, wxPENSTYLE_SOLID);
    if (style == 2 || style == 3 || style == 4 || style == 6) {
        pen.SetCap(wxCAP_BUTT);
        pen.SetJoin(wxJOIN_MITER);
    }
    dc.SetPen(pen);
    if (style == 1)
        dc.SetBrush(wxBrush(kBlue, wxBRUSHSTYLE_SOLID));
    if (style >= 4)
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
    const wxRect plot(50, 20, 401, 201);
    for (size_t i = 0; i < pts.size(); ++i) {
        if (!c->GetVy()->IsValidAt(static_cast<int>(i)))
            continue;
        const wxPoint p(VyrRoundPixel(pts[i].first * VyrDiagramTestAccess::Ax(diagram) +
                                      VyrDiagramTestAccess::Bx(diagram)),
                        VyrRoundPixel(pts[i].second * VyrDiagramTestAccess::Ay(diagram) +
                                      VyrDiagramTestAccess::By(diagram)));
        if (!plot.Contains(p) || (firstOnly && !drawn.insert({p.x, p.y}).second))
            continue;
        const int x = p.x, y = p.y;
        switch (style) {
            case 1:
                dc.DrawEllipse(x - w, y - w, lineScale + 2 * w, lineScale + 2 * w);
                break;
            case 2:
                dc.DrawLine(x - r, y, x + r + 1, y);
                dc.DrawLine(x, y - r, x, y + r + 1);
                break;
            case 3:
                dc.DrawLine(x - r, y - r, x + r + 1, y + r + 1);
                dc.DrawLine(x - r, y + r, x + r + 1, y - r - 1);
                break;
            case 4:
                dc.DrawRectangle(x - r, y - r, 2 * r + 1, 2 * r + 1);
                break;
            case 5:
                dc.DrawEllipse(x - r, y - r, 2 * r + 1, 2 * r + 1);
                break;
            case 6: {
                wxPoint corners[4] = {wxPoint(x, y - r), wxPoint(x - r, y), wxPoint(x, y + r),
                                      wxPoint(x + r, y)};
                dc.DrawPolygon(4, corners, 0, 0, wxODDEVEN_RULE);
                break;
            }
        }
    }
}

}  // namespace

// On an image clipped to a rectangle, as a diagram is painted, the markers of a dense curve are
// blended into the pixels from one learnt marker: the same pixels, to the last bit, as the
// context drawing each of those markers itself, with antialiasing (partly covered edges blend
// over each other in order) and without (then also as every marker of every point), for every
// marker style, pen width and line scale, and with a clip that cuts markers.
TEST(VyrDiagramMarkers, DenseMarkersOnAClippedImageAreTheSamePixelsAsEachMarkerDrawn) {
    const wxSize size(500, 260);
    std::mt19937 random(77);
    const Points pts = NoisyCurve(60000, random);
    for (const wxRect& clip : {wxRect(50, 20, 401, 201), wxRect(120, 60, 211, 97)}) {
        for (bool antialias : {true, false}) {
            for (int style = 1; style <= 6; ++style) {
                for (int width : {1, 2}) {
                    for (int lineScale : {1, 2}) {
                        SCOPED_TRACE(testing::Message()
                                     << "clip " << clip.x << "," << clip.y << ", antialias "
                                     << antialias << ", marker style " << style << ", width "
                                     << width << ", line scale " << lineScale);
                        PaintScene scene;
                        VyrCourbe* c = ShowCurve(scene, style, 0, pts, width);
                        for (size_t i = 5; i < pts.size(); i += 41)
                            PaintScene::SetValid(c, static_cast<int>(i), false);
                        VyrDiagram& diagram = scene.Diagram();
                        VyrDiagramTestAccess::SetLineScale(diagram, lineScale);
                        const wxImage stamped = PaintToImage(
                            size,
                            [&](wxDC& dc) {
                                dc.SetClippingRegion(clip);
                                VyrDiagramTestAccess::PaintMarker(diagram, style, &dc, c, kBlue);
                            },
                            antialias);
                        const wxImage drawn = PaintToImage(
                            size,
                            [&](wxDC& dc) {
                                dc.SetClippingRegion(clip);
                                DrawEveryMarker(dc, style, pts, c, diagram, lineScale, true);
                            },
                            antialias);
                        EXPECT_EQ(CountDifferentPixels(stamped, drawn, 0), 0);
                        const wxImage blank = PaintToImage(
                            size, [](wxDC&) {}, antialias);
                        EXPECT_GT(CountDifferentPixels(stamped, blank, 0), 2000);
                        if (!antialias) {
                            const wxImage every = PaintToImage(
                                size,
                                [&](wxDC& dc) {
                                    dc.SetClippingRegion(clip);
                                    DrawEveryMarker(dc, style, pts, c, diagram, lineScale);
                                },
                                false);
                            EXPECT_EQ(CountDifferentPixels(stamped, every, 0), 0);
                        }
                    }
                }
            }
        }
    }
}

// Dense noisy data: each marker pixel position is drawn once, the first time a point reaches
// it. Without antialiasing this is pixel-identical to drawing the marker of every point, for
// every marker style, pen width and line scale; and it costs one marker per distinct pixel.
TEST(VyrDiagramMarkers, DenseMarkersArePixelIdenticalToEveryMarkerWithoutAntialiasing) {
    const wxSize size(500, 260);
    std::mt19937 random(2024);
    const Points pts = NoisyCurve(60000, random);
    for (int style = 1; style <= 6; ++style) {
        for (int width : {1, 2}) {
            for (int lineScale : {1, 2}) {
                SCOPED_TRACE(testing::Message() << "marker style " << style << ", width " << width
                                                << ", line scale " << lineScale);
                PaintScene scene;
                VyrCourbe* c = ShowCurve(scene, style, 0, pts, width);
                for (size_t i = 5; i < pts.size(); i += 41)
                    PaintScene::SetValid(c, static_cast<int>(i), false);
                VyrDiagram& diagram = scene.Diagram();
                VyrDiagramTestAccess::SetLineScale(diagram, lineScale);
                const wxImage once = PaintToImage(
                    size,
                    [&](wxDC& dc) {
                        VyrDiagramTestAccess::PaintMarker(diagram, style, &dc, c, kBlue);
                    },
                    false);
                const wxImage every = PaintToImage(
                    size, [&](wxDC& dc) { DrawEveryMarker(dc, style, pts, c, diagram, lineScale); },
                    false);
                EXPECT_EQ(CountDifferentPixels(once, every, 0), 0);
                const wxImage blank = PaintToImage(
                    size, [](wxDC&) {}, false);
                EXPECT_GT(CountDifferentPixels(once, blank, 0), 5000);

                // One marker per distinct pixel of the plot that a valid point reaches.
                std::set<std::pair<int, int>> distinct;
                const wxRect plot(50, 20, 401, 201);
                for (size_t i = 0; i < pts.size(); ++i) {
                    const wxPoint p(static_cast<int>(std::floor(50 + pts[i].first + 0.5)),
                                    static_cast<int>(std::floor(220 - pts[i].second + 0.5)));
                    if (c->GetVy()->IsValidAt(static_cast<int>(i)) && plot.Contains(p))
                        distinct.insert({p.x, p.y});
                }
                RecordingDC dc;
                VyrDiagramTestAccess::PaintMarker(diagram, style, &dc, c, kBlue);
                const bool twoStrokes = style == 2 || style == 3;
                EXPECT_EQ(Drawn(dc).size(), (twoStrokes ? 2 : 1) * distinct.size());
                EXPECT_LT(distinct.size(), pts.size() / 3);
            }
        }
    }
}
