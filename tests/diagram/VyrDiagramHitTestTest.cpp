#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

#include "support/CurveBuilder.h"
#include "support/DiagramTestDocument.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagramViewAccess.h"

namespace {

typedef VyrDiagramViewAccess Access;

// One diagram showing U(t) in V against s, at pixel (x, 100 - y).
class HitTest : public ::testing::Test {
protected:
    void SetUp() override {
        d = t.Diagram(0);
        c = t.AddCourbe("U", "V", {{10, 10}, {20, 20}, {30, 30}});
        d->ShowData(c, true);
        DiagramTestDocument::UseUnitPixels(d);
    }

    DiagramTestDocument t;
    VyrDiagram* d = nullptr;
    VyrCourbe* c = nullptr;
};

}  // namespace

TEST_F(HitTest, TheFixtureDrawsRealValuesAtKnownPixels) {
    EXPECT_EQ(d->RealToPixelCourbe(c, 20, 20), wxPoint(20, 80));
    EXPECT_EQ(d->RealToPixelCourbe(c, 0, 0), wxPoint(0, 100));
    wxPoint origin;
    d->GetOrigin(origin);
    EXPECT_EQ(origin, wxPoint(0, 100));
}

TEST_F(HitTest, FindPointWithZeroToleranceFindsOnlyThePointExactlyUnderTheMouse) {
    int dist2 = -5;
    EXPECT_EQ(Access::FindPoint(d, c, 0, wxPoint(20, 80), &dist2), 1);
    EXPECT_EQ(dist2, 0);
    EXPECT_EQ(Access::FindPoint(d, c, 0, wxPoint(21, 80), &dist2), -1);
    EXPECT_EQ(dist2, INT_MAX);
}

TEST_F(HitTest, FindPointWithNegativeToleranceFindsTheNearestPointAnywhere) {
    int dist2 = 0;
    EXPECT_EQ(Access::FindPoint(d, c, -1, wxPoint(1000, -1000), &dist2), 2);
    // Point 2 is at (30, 70).
    EXPECT_EQ(dist2, 970 * 970 + 1070 * 1070);
    EXPECT_EQ(Access::FindPoint(d, c, -1, wxPoint(9, 91), nullptr), 0);
}

TEST_F(HitTest, FindPointHonoursTheToleranceInclusively) {
    // (20, 80) is 3^2 + 4^2 = 25 from (23, 84).
    EXPECT_EQ(Access::FindPoint(d, c, 25, wxPoint(23, 84), nullptr), 1);
    EXPECT_EQ(Access::FindPoint(d, c, 24, wxPoint(23, 84), nullptr), -1);
}

TEST_F(HitTest, OnEqualDistancesFindPointTakesTheLowerIndexAndGetPointTheHigher) {
    // (15, 85) is 5^2 + 5^2 from both (10, 90) and (20, 80); its column is 5 from both too.
    EXPECT_EQ(Access::FindPoint(d, c, -1, wxPoint(15, 85), nullptr), 0);
    EXPECT_EQ(Access::GetPoint(d, c, wxPoint(15, 85)), 1);
    EXPECT_EQ(Access::GetPoint(d, c, wxPoint(15, 0)), 1);
}

TEST_F(HitTest, GetPointComparesColumnsOnly) {
    EXPECT_EQ(Access::GetPoint(d, c, wxPoint(29, -500)), 2);
    EXPECT_EQ(Access::GetPoint(d, c, wxPoint(-40, 1000)), 0);
}

TEST_F(HitTest, GetPointOfACurveWithoutValidPointsIsZero) {
    VyrCourbe* empty = t.AddCourbe("W", "V", {});
    EXPECT_EQ(Access::GetPoint(d, empty, wxPoint(50, 50)), 0);
    c->GetVx()->ValidateAt(0, false);
    c->GetVy()->ValidateAt(1, false);
    c->GetVx()->ValidateAt(2, false);
    EXPECT_EQ(Access::GetPoint(d, c, wxPoint(50, 50)), 0);
    EXPECT_EQ(Access::FindPoint(d, c, -1, wxPoint(50, 50), nullptr), -1);
}

TEST_F(HitTest, InvalidPointsAreNeverFound) {
    c->GetVy()->ValidateAt(1, false);
    EXPECT_EQ(Access::FindPoint(d, c, 0, wxPoint(20, 80), nullptr), -1);
    EXPECT_EQ(Access::FindPoint(d, c, -1, wxPoint(20, 80), nullptr), 0);
    // Beyond the Y vector's end the point is not drawable either.
    c->GetVy()->Resize(1);
    EXPECT_EQ(Access::FindPoint(d, c, -1, wxPoint(30, 70), nullptr), 0);
}

TEST_F(HitTest, SearchesPutTheCurrentScaleBack) {
    const VyrScale before = *d->GetCurrentScale();
    Access::FindPoint(d, c, -1, wxPoint(20, 80), nullptr);
    Access::GetPoint(d, c, wxPoint(20, 80));
    int index = 0;
    Access::HitTestCurve(d, wxPoint(20, 80), 4, &index);
    Access::HitTestCurvePlusProche(d, wxPoint(20, 80), 4, &index);
    const VyrScale* after = d->GetCurrentScale();
    EXPECT_EQ(after->GetXmin(), before.GetXmin());
    EXPECT_EQ(after->GetXmax(), before.GetXmax());
    EXPECT_EQ(after->GetYmin(), before.GetYmin());
    EXPECT_EQ(after->GetYmax(), before.GetYmax());
    EXPECT_EQ(d->RealToPixel(20, 20), wxPoint(20, 80));
}

TEST_F(HitTest, ACurveInAnotherUnitIsMeasuredUnderItsOwnRange) {
    VyrCourbe* other = t.AddCourbe("I", "A", {{50, 0.5}});
    d->ShowData(other, true);
    DiagramTestDocument::UseUnitPixels(d);
    const wxPoint drawn = d->RealToPixelCourbe(other, 50, 0.5);
    ASSERT_NE(drawn, d->RealToPixel(50, 0.5));
    EXPECT_EQ(Access::FindPoint(d, other, 0, drawn, nullptr), 0);
}

TEST_F(HitTest, HitTestCurveTakesTheEarlierPlottedCurveEvenWhenALaterOneIsCloser) {
    VyrCourbe* later = t.AddCourbe("U2", "V", {{22, 20}});
    d->ShowData(later, true);
    DiagramTestDocument::UseUnitPixels(d);
    ASSERT_EQ(d->GetPlottedCourbes().size(), 2u);
    // (22, 80): 4 from c's point 1 at (20, 80), 0 from later's point at (22, 80).
    int index = -7;
    EXPECT_EQ(Access::HitTestCurve(d, wxPoint(22, 80), 9, &index), c);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(Access::HitTestCurvePlusProche(d, wxPoint(22, 80), 9, &index), later);
    EXPECT_EQ(index, 0);
}

TEST_F(HitTest, HitTestCurvePlusProcheKeepsTheEarlierCurveOnATie) {
    VyrCourbe* later = t.AddCourbe("U2", "V", {{24, 20}});
    d->ShowData(later, true);
    DiagramTestDocument::UseUnitPixels(d);
    int index = -7;
    EXPECT_EQ(Access::HitTestCurvePlusProche(d, wxPoint(22, 80), 9, &index), c);
    EXPECT_EQ(index, 1);
}

TEST_F(HitTest, CurveSearchesAnswerNullAndMinusOneOnAMiss) {
    int index = 5;
    EXPECT_EQ(Access::HitTestCurve(d, wxPoint(60, 10), 100, &index), nullptr);
    EXPECT_EQ(index, -1);
    index = 5;
    EXPECT_EQ(Access::HitTestCurvePlusProche(d, wxPoint(60, 10), 100, &index), nullptr);
    EXPECT_EQ(index, -1);
}

TEST_F(HitTest, APointNearBothAxesIsOnTheHorizontalAxis) {
    // The origin pixel is (0, 100).
    EXPECT_EQ(d->HitTestAxis(wxPoint(10, 90)), 0);
    EXPECT_EQ(d->HitTestAxis(wxPoint(24, 50)), 1);
    EXPECT_EQ(d->HitTestAxis(wxPoint(25, 50)), -1);
    EXPECT_EQ(d->HitTestAxis(wxPoint(50, 75)), -1);
    EXPECT_EQ(d->HitTestAxis(wxPoint(50, 76)), 0);
}

TEST_F(HitTest, ArrowsAreFoundAtTheEndsOfTheHitRectangle) {
    // Hit rectangle: (-6, -6, 113, 113), so its right edge is 106 and its top -6.
    EXPECT_EQ(d->HitTestFleche(wxPoint(82, 110)), 2);
    EXPECT_EQ(d->HitTestFleche(wxPoint(81, 110)), -1);
    EXPECT_EQ(d->HitTestFleche(wxPoint(10, 18)), 3);
    EXPECT_EQ(d->HitTestFleche(wxPoint(10, 19)), -1);
    EXPECT_EQ(d->HitTestFleche(wxPoint(50, 50)), -1);
}

TEST_F(HitTest, HitTestPointUsesTheRectangleGrownBySixPixels) {
    EXPECT_TRUE(d->HitTestPoint(wxPoint(-6, -6)));
    EXPECT_TRUE(d->HitTestPoint(wxPoint(106, 106)));
    EXPECT_FALSE(d->HitTestPoint(wxPoint(107, 50)));
    EXPECT_FALSE(d->HitTestPoint(wxPoint(50, -7)));
}

TEST_F(HitTest, HitTestDiagramFindsTheDiagramOfTheActiveDocumentUnderThePoint) {
    VyrDiagram* second = t.Diagram(1);
    DiagramTestDocument::UseUnitPixels(second, wxPoint(0, 300));
    EXPECT_EQ(VyrDiagram::HitTestDiagram(wxPoint(50, 50)), d);
    EXPECT_EQ(VyrDiagram::HitTestDiagram(wxPoint(50, 350)), second);
    EXPECT_EQ(VyrDiagram::HitTestDiagram(wxPoint(50, 200)), nullptr);
    VyrBaseData::SetActiveBase(nullptr);
    EXPECT_EQ(VyrDiagram::HitTestDiagram(wxPoint(50, 50)), nullptr);
}

TEST_F(HitTest, FarAwayPixelsDoNotOverflow) {
    // Distances saturate at the largest int, which is also the "nothing found" distance.
    int dist2 = 0;
    EXPECT_EQ(Access::FindPoint(d, c, -1, wxPoint(INT_MAX, INT_MIN), &dist2), -1);
    EXPECT_EQ(dist2, INT_MAX);
    EXPECT_EQ(d->HitTestAxis(wxPoint(INT_MIN, INT_MAX)), -1);
    EXPECT_EQ(d->HitTestFleche(wxPoint(INT_MAX, INT_MIN)), -1);
}

// The search walks only the columns within the tolerance (by bisection on an ascending X, or
// leaving out runs of points beyond them otherwise): it answers what a look at every point
// answers, point and distance, on dense curves under the mouse anywhere.
TEST(HitTestDense, FindPointAnswersWhatEveryPointAnswers) {
    std::mt19937 random(31);
    std::uniform_real_distribution<double> step(-3.0, 3.2);
    std::uniform_real_distribution<double> noise(-20.0, 20.0);
    for (bool ascending : {true, false}) {
        VyrBaseData doc(nullptr);
        VyrExperience* e = AddExperience(doc, "E1");
        std::vector<std::pair<double, double>> pts;
        double x = -100.0;
        for (int i = 0; i < 20000; ++i) {
            x = ascending ? -100.0 + 600.0 * i / 20000.0
                          : std::min(500.0, std::max(-100.0, x + step(random)));
            pts.push_back({x, 100.0 + noise(random)});
        }
        VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, pts);
        for (int i = 3; i < 20000; i += 97)
            c->GetVy()->ValidateAt(i, false);
        VyrDiagram* d = ShowInDiagram(doc, 0, {c});
        wxRect plot(50, 20, 401, 201);
        d->Move(plot);
        VyrScale frame(0.0, 400.0, 0.0, 200.0);
        d->SetManualScale(&frame, false);
        ASSERT_EQ(c->GetVx()->IsSortedAscending(), ascending);
        // Every drawable point's pixel, as the painters place it.
        std::vector<wxPoint> pixels;
        for (size_t i = 0; i < pts.size(); ++i)
            pixels.push_back(d->RealToPixelCourbe(c, pts[i].first, pts[i].second));
        for (int probe = 0; probe < 60; ++probe) {
            const wxPoint p(static_cast<int>(random() % 700) - 100,
                            static_cast<int>(random() % 300));
            for (int tolerance : {0, 4, 25, 400, 90000}) {
                int best = -1, bestDist = INT_MAX;
                for (size_t i = 0; i < pixels.size(); ++i) {
                    if (!c->GetVy()->IsValidAt(static_cast<int>(i)))
                        continue;
                    const long long dx = pixels[i].x - p.x, dy = pixels[i].y - p.y;
                    const long long dist = dx * dx + dy * dy;
                    if (dist <= tolerance && dist < bestDist) {
                        best = static_cast<int>(i);
                        bestDist = static_cast<int>(dist);
                    }
                }
                int dist = -1;
                EXPECT_EQ(VyrDiagramViewAccess::FindPoint(d, c, tolerance, p, &dist), best)
                    << (ascending ? "ascending" : "wandering") << " at " << p.x << "," << p.y
                    << " within " << tolerance;
                EXPECT_EQ(dist, bestDist);
            }
        }
    }
}
