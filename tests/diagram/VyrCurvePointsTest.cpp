// A zoomed view paints only the points that can touch the plot: for a curve whose X values
// ascend, the painters walk the points found by bisection, and the picture (aliased) is the
// same as when every point is walked. The reference is the same curve with one more point,
// invalid and last, whose X lies far below the others: its X no longer ascends, so its painters
// walk every point, and that point draws nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "support/PaintScene.h"
#include "support/PaintSceneImage.h"
#include "support/RecordingDC.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Points = std::vector<std::pair<double, double>>;

namespace {

const wxSize kPicture(500, 260);

// A noisy recording over X 0 .. 2000 (ten points per unit of X), with invalid points now and
// then and runs of them; ascending X.
Points Recording(std::mt19937& random) {
    std::uniform_real_distribution<double> noise(-20.0, 20.0);
    Points pts;
    for (int i = 0; i < 20000; ++i) {
        const double x = 0.1 * i;
        pts.push_back({x, 100.0 + 70.0 * std::sin(x / 9.0) + noise(random)});
    }
    return pts;
}

struct Painted {
    wxImage image;
    size_t primitives = 0;
};

// The curve in a scene framed on X from..to (the plot 401 pixels wide), painted whole.
Painted PaintZoomed(const Points& pts, bool reference, int stylePoint, int styleLiaison, int width,
                    bool spectrum, double from, double to) {
    PaintScene scene;
    CurveLook look;
    look.stylePoint = stylePoint;
    look.styleLiaison = styleLiaison;
    look.width = width;
    Points all = pts;
    if (reference)
        all.push_back({-1e9, 0.0});
    VyrCourbe* c = scene.AddCurve(look, all);
    for (size_t i = 5; i < pts.size(); i += 211)
        PaintScene::SetValid(c, static_cast<int>(i), false);
    for (size_t i = 10000; i < 10050; ++i)
        PaintScene::SetValid(c, static_cast<int>(i), false);
    if (reference)
        PaintScene::SetValid(c, static_cast<int>(pts.size()), false);
    EXPECT_EQ(c->GetVx()->IsSortedAscending(), !reference);
    scene.Show(c);
    scene.Frame(wxRect(50, 20, 401, 201), from, to, -50.0, 200.0);
    scene.Diagram().SetSpectrum(spectrum);
    Painted out;
    out.image = PaintToImage(
        kPicture,
        [&](wxDC& dc) { scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false); },
        false);
    RecordingDC recording;
    scene.Diagram().Paint(&recording, false, false, false, 1.0, nullptr, false);
    out.primitives = recording.Primitives().size();
    return out;
}

}  // namespace

TEST(VyrCurvePoints, ZoomedPaintWalksVisiblePointsOnlyAndIsPixelIdentical) {
    std::mt19937 random(77);
    const Points pts = Recording(random);
    // Marker styles alone (line style 0), then the line styles that draw on a point's own
    // column or between neighbours, the spectrum, and the styles drawn to the axes.
    struct Look {
        int point, line;
        bool spectrum;
    };
    const Look looks[] = {{1, 0, false}, {2, 0, false}, {3, 0, false}, {4, 0, false}, {5, 0, false},
                          {6, 0, false}, {0, 1, false}, {0, 2, false}, {0, 3, false}, {0, 4, false},
                          {0, 4, true},  {0, 5, false}, {0, 6, false}, {0, 7, false}, {0, 8, false},
                          {0, 9, false}, {4, 1, false}};
    // Windows at the start, inside, across the invalid run, at the end and past it.
    const std::pair<double, double> windows[] = {
        {0.0, 40.0},      {-3.0, 2.0},      {617.25, 637.25}, {995.0, 1010.0},
        {1960.0, 2000.0}, {1990.0, 2100.0}, {300.0, 700.0}};
    for (const Look& look : looks) {
        for (int width : {1, 3}) {
            // Wide pens on the joining styles and the square markers only.
            if (width > 1 && !(look.point == 0 && look.line <= 3) && look.point != 4)
                continue;
            for (const auto& window : windows) {
                SCOPED_TRACE(testing::Message()
                             << "marker " << look.point << ", line " << look.line
                             << (look.spectrum ? " (spectrum)" : "") << ", width " << width
                             << ", X " << window.first << " .. " << window.second);
                const Painted kept = PaintZoomed(pts, false, look.point, look.line, width,
                                                 look.spectrum, window.first, window.second);
                const Painted every = PaintZoomed(pts, true, look.point, look.line, width,
                                                  look.spectrum, window.first, window.second);
                EXPECT_EQ(CountDifferentPixels(kept.image, every.image, 0), 0);
                const wxImage blank = PaintToImage(
                    kPicture, [](wxDC&) {}, false);
                EXPECT_GT(CountDifferentPixels(kept.image, blank, 0), 200);
                // The styles drawn to the axes (5, 6, 8, 9) reach the plot from any column:
                // they walk every point. The others walk the points of the window, on a
                // narrow one a few hundred of the 20,000.
                const bool toAxes = look.line == 5 || look.line == 6 || look.line >= 8;
                const bool narrow = window.second - window.first <= 50.0;
                if (!toAxes && look.line != 0) {
                    EXPECT_LT(kept.primitives * (narrow ? 4 : 1), every.primitives);
                }
            }
        }
    }
}
