// Painters walk only the points that can touch the columns the device shows: for a curve whose
// X values ascend, those found by bisection; otherwise every point but the inner ones of runs
// that lie beyond the margin on one side. The aliased picture inside the plot is the same as
// from every point: the reference paints the same curves, unclipped, on a picture wide enough
// to hold every figure of every point, where nothing is left out.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "support/PaintScene.h"
#include "support/PaintSceneImage.h"
#include "support/RecordingDC.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Points = std::vector<std::pair<double, double>>;

namespace {

// The plot, 401 pixels wide, in a picture that holds every point of the curves below for each
// frame used (X -280 .. 1180 against frames starting at -250 .. 700, one unit per pixel).
const wxSize kPicture(3000, 260);
const wxRect kPlot(1300, 20, 401, 201);

// 20,000 points over X -280 .. 1180: ascending (a noisy recording), or wandering back and
// forth across the plot and beyond it on both sides.
Points Curve(bool ascending, std::mt19937& random) {
    std::uniform_real_distribution<double> noise(-20.0, 20.0);
    std::uniform_real_distribution<double> step(-6.0, 6.5);
    Points pts;
    double x = -280.0;
    for (int i = 0; i < 20000; ++i) {
        if (ascending)
            x = -280.0 + 1460.0 * i / 20000.0;
        else
            x = std::min(1180.0, std::max(-280.0, x + step(random)));
        pts.push_back({x, 100.0 + 70.0 * std::sin(i / 300.0) + noise(random)});
    }
    return pts;
}

struct Painted {
    wxImage plot;           // the plot's pixels
    size_t primitives = 0;  // what the clipped painters drew
};

Painted PaintCurve(const Points& pts, bool every, int stylePoint, int styleLiaison, int width,
                   bool spectrum, double from) {
    PaintScene scene;
    CurveLook look;
    look.stylePoint = stylePoint;
    look.styleLiaison = styleLiaison;
    look.width = width;
    VyrCourbe* c = scene.AddCurve(look, pts);
    for (size_t i = 5; i < pts.size(); i += 211)
        PaintScene::SetValid(c, static_cast<int>(i), false);
    for (size_t i = 10000; i < 10050; ++i)
        PaintScene::SetValid(c, static_cast<int>(i), false);
    scene.Show(c);
    scene.Frame(kPlot, from, from + 400.0, -50.0, 200.0);
    VyrDiagram& d = scene.Diagram();
    d.SetSpectrum(spectrum);
    auto paint = [&](wxDC& dc) {
        if (!every)
            dc.SetClippingRegion(kPlot);
        bool repaintAxes = false;
        VyrDiagramTestAccess::PaintCurves(d, &dc, &repaintAxes);
    };
    Painted out;
    out.plot = PaintToImage(kPicture, paint, false).GetSubImage(kPlot);
    RecordingDC recording;
    recording.SetClippingRegion(kPlot);
    bool repaintAxes = false;
    VyrDiagramTestAccess::PaintCurves(d, &recording, &repaintAxes);
    out.primitives = recording.Primitives().size();
    return out;
}

}  // namespace

TEST(VyrCurvePoints, PaintersWalkVisiblePointsOnlyAndArePixelIdenticalInThePlot) {
    std::mt19937 random(77);
    // Marker styles alone (line style 0), the line styles that draw on a point's own column
    // or between neighbours, the spectrum, and the styles drawn to the axes.
    struct Look {
        int point, line;
        bool spectrum;
    };
    const Look looks[] = {{1, 0, false}, {2, 0, false}, {3, 0, false}, {4, 0, false}, {5, 0, false},
                          {6, 0, false}, {0, 1, false}, {0, 2, false}, {0, 3, false}, {0, 4, false},
                          {0, 4, true},  {0, 5, false}, {0, 6, false}, {0, 7, false}, {0, 8, false},
                          {0, 9, false}, {4, 1, false}};
    for (bool ascending : {true, false}) {
        const Points pts = Curve(ascending, random);
        for (const Look& look : looks) {
            for (int width : {1, 3}) {
                // Wide pens on the joining styles and the square markers only.
                if (width > 1 && !(look.point == 0 && look.line <= 3) && look.point != 4)
                    continue;
                for (double from : {-250.0, 0.0, 300.0, 700.0}) {
                    SCOPED_TRACE(testing::Message()
                                 << (ascending ? "ascending" : "wandering") << " X, marker "
                                 << look.point << ", line " << look.line
                                 << (look.spectrum ? " (spectrum)" : "") << ", width " << width
                                 << ", X from " << from);
                    const Painted kept =
                        PaintCurve(pts, false, look.point, look.line, width, look.spectrum, from);
                    const Painted every =
                        PaintCurve(pts, true, look.point, look.line, width, look.spectrum, from);
                    // Markers that straddle the clipping's edge are drawn by the context, the
                    // others stamped (see the marker painter); the lozenge's two ways differ
                    // by a pixel or two of its outline. So the markers are compared where no
                    // marker of the clipped picture straddles an edge.
                    const wxRect inner = look.point != 0
                                             ? wxRect(wxPoint(0, 0), kPlot.GetSize()).Deflate(16)
                                             : wxRect(wxPoint(0, 0), kPlot.GetSize());
                    EXPECT_EQ(CountDifferentPixels(kept.plot.GetSubImage(inner),
                                                   every.plot.GetSubImage(inner), 0),
                              0);
                    // Not two blank plots (the spectrum of these wavelengths is drawn over
                    // by its curve).
                    const wxImage blank = PaintToImage(
                                              kPicture, [](wxDC&) {}, false)
                                              .GetSubImage(kPlot);
                    EXPECT_GT(CountDifferentPixels(kept.plot, blank, 0), 200);
                }
            }
        }
    }
}

// What the walk leaves out, counted: a recording zoomed to a thousandth of its X range draws
// a few primitives per visible column, not per point.
TEST(VyrCurvePoints, ZoomedRecordingDrawsWhatTheWindowHolds) {
    Points pts;
    for (int i = 0; i < 200000; ++i)
        pts.push_back({0.01 * i, 100.0 + 50.0 * std::sin(i / 50.0)});
    for (bool ascending : {true, false}) {
        Points curve = pts;
        if (!ascending)
            std::swap(curve[10], curve[11]);
        for (int style : {1, 2, 3, 4}) {
            SCOPED_TRACE(testing::Message()
                         << "line style " << style << (ascending ? "" : ", X not ascending"));
            PaintScene scene;
            CurveLook look;
            look.styleLiaison = style;
            VyrCourbe* c = scene.AddCurve(look, curve);
            scene.Show(c);
            scene.Frame(kPlot, 1000.0, 1002.0, -50.0, 200.0);
            RecordingDC recording;
            recording.SetClippingRegion(kPlot);
            bool repaintAxes = false;
            VyrDiagramTestAccess::PaintCurves(scene.Diagram(), &recording, &repaintAxes);
            // 200 points in the window, a few primitives each; none of the other 199,800.
            EXPECT_GT(recording.Primitives().size(), 100u);
            EXPECT_LT(recording.Primitives().size(), 1200u);
        }
    }
}
