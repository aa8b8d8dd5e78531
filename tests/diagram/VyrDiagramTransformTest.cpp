// The plot rectangle, the world transform and the per-unit transforms.
#include <gtest/gtest.h>

#include "support/CurveBuilder.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// A diagram of the document over x 0..10, y 0..100, drawn in (10, 20, 201 x 101): one pixel is
// 0.05 in x and 1 in y, right = 210, bottom = 120.
struct TransformFixture : ::testing::Test {
    VyrBaseData doc{nullptr};
    VyrDiagram* d = nullptr;
    VyrExperience* e = nullptr;
    VyrCourbe* u = nullptr;
    wxRect rect{10, 20, 201, 101};

    void SetUp() override {
        e = AddExperience(doc, "E");
        u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 0}, {10, 100}});
        d = ShowInDiagram(doc, 0, {u});
        // Manual range exactly 0..10 x 0..100.
        VyrScale manual(0, 10, 0, 100);
        d->SetManualScale(&manual, false);
        d->Move(rect);
    }
};

}  // namespace

TEST_F(TransformFixture, MoveSetsThePlotAndTheHitRectangle) {
    wxRect r;
    d->GetRect(r);
    EXPECT_EQ(r, rect);
    EXPECT_EQ(d->GetHitRect(), wxRect(4, 14, 213, 113));
}

TEST_F(TransformFixture, UpdateWorldMapsTheRangeOntoFirstAndLastPixels) {
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::Ax(*d), 200.0 / 10.0);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::Bx(*d), 10.0);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::Ay(*d), -100.0 / 100.0);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::By(*d), 120.0);
    EXPECT_EQ(d->RealToPixel(0, 0), wxPoint(10, 120));
    EXPECT_EQ(d->RealToPixel(10, 100), wxPoint(210, 20));
    EXPECT_EQ(d->RealToPixel(5, 50), wxPoint(110, 70));
    wxPoint origin;
    d->GetOrigin(origin);
    EXPECT_EQ(origin, wxPoint(10, 120));
}

TEST_F(TransformFixture, RealToPixelRoundsHalfAwayFromZero) {
    // x = 0.025 is 10.5 pixels: 11; x = -0.525 is -0.5: -1 (not 0).
    EXPECT_EQ(d->RealToPixel(0.025, 0).x, 11);
    EXPECT_EQ(d->RealToPixel(-0.525, 0).x, -1);
    // y = 0.5 is row 119.5: 120; y = 120.5 is row -0.5: -1.
    EXPECT_EQ(d->RealToPixel(0, 0.5).y, 120);
    EXPECT_EQ(d->RealToPixel(0, 120.5).y, -1);
}

TEST_F(TransformFixture, PixelToRealInvertsWithoutRounding) {
    const wxRealPoint p = d->PixelToReal(11, 119);
    EXPECT_DOUBLE_EQ(p.x, 0.05);
    EXPECT_DOUBLE_EQ(p.y, 1.0);
}

TEST_F(TransformFixture, OriginIsClampedIntoThePlotRectangle) {
    VyrScale positive(2, 12, 50, 150);
    d->SetManualScale(&positive, false);
    wxPoint origin;
    d->GetOrigin(origin);
    // x = 0 lies left of the rectangle and y = 0 below it.
    EXPECT_EQ(origin, wxPoint(10, 120));
    VyrScale negative(-12, -2, -150, -50);
    d->SetManualScale(&negative, false);
    d->GetOrigin(origin);
    EXPECT_EQ(origin, wxPoint(210, 20));
    VyrScale centred(-5, 5, -50, 50);
    d->SetManualScale(&centred, false);
    d->GetOrigin(origin);
    EXPECT_EQ(origin, wxPoint(110, 70));
}

TEST_F(TransformFixture, UpdateWorldNeedsAValidScaleAndARectangle) {
    const double ax = VyrDiagramTestAccess::Ax(*d);
    wxRect empty(0, 0, 0, 50);
    d->Move(empty);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::Ax(*d), ax);
    d->Move(rect);
    d->GetCurrentScale()->Set(5, 5, 0, 1);
    d->UpdateWorld();
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::Ax(*d), ax);
}

TEST(VyrDiagramTransform, NoTransformBeforeTheFirstMove) {
    VyrBaseData doc(nullptr);
    VyrDiagram* d = doc.GetDiagram(0);
    wxRect r;
    d->GetRect(r);
    EXPECT_EQ(r, wxRect(0, 0, 0, 0));
    EXPECT_EQ(d->GetHitRect(), wxRect(0, 0, 0, 0));
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::Ax(*d), 1.0);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::Bx(*d), 0.0);
    wxPoint origin;
    d->GetOrigin(origin);
    EXPECT_EQ(origin, wxPoint(0, 0));
}

TEST_F(TransformFixture, RealToPixelCourbeUsesTheCurvesOwnUnitRange) {
    // A second Y unit, 0..1000 on its own (automatic) axis, but the diagram is manual: give the
    // mA record a manual range of 0..1000 and check the curve is drawn against it.
    VyrCourbe* i = AddCurve(doc, e, {"I", "mA", "t", "s"}, {{0, 0}, {10, 1000}});
    i->SetShownInDiagram(0, true);
    d->Fill();
    d->Move(rect);
    VyrUnit* ma = d->FindUnitY("mA");
    ASSERT_NE(ma, nullptr);
    ma->SetMin(VYR_SCALE_MANUAL, 0);
    ma->SetMax(VYR_SCALE_MANUAL, 1000);
    const VyrScale before = *d->GetCurrentScale();
    EXPECT_EQ(d->RealToPixelCourbe(i, 5, 500), wxPoint(110, 70));
    const wxRealPoint back = d->PixelToRealCourbe(i, 110, 70);
    EXPECT_DOUBLE_EQ(back.x, 5.0);
    EXPECT_DOUBLE_EQ(back.y, 500.0);
    // The current scale and transform are put back.
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetYmax(), before.GetYmax());
    EXPECT_EQ(d->RealToPixel(d->GetCurrentScale()->GetXmax(), d->GetCurrentScale()->GetYmax()),
              wxPoint(210, 20));
}

TEST_F(TransformFixture, RealToPixelCourbeWithoutUnitRecordMapsMinusOneToOne) {
    // A curve of the document that the diagram never met: its units have no record.
    VyrExperience* other = AddExperience(doc, "F");
    VyrCourbe* c = AddCurve(doc, other, {"Q", "C", "w", "Hz"}, {{0, 0}});
    c->GetVx()->SetUnite("nothing-x");
    c->GetVy()->SetUnite("nothing-y");
    ASSERT_EQ(d->FindUnitX("nothing-x"), nullptr);
    EXPECT_EQ(d->RealToPixelCourbe(c, -1, -1), wxPoint(10, 120));
    EXPECT_EQ(d->RealToPixelCourbe(c, 1, 1), wxPoint(210, 20));
    EXPECT_EQ(d->RealToPixelCourbe(c, 0, 0), wxPoint(110, 70));
}

TEST_F(TransformFixture, RealToPixelCourbeFollowsTheZoom) {
    d->SetZoomPourcent(50, 50, 0, 0);
    // Manual base 0..10 x 0..100, halved: 0..5 x 0..50.
    EXPECT_EQ(d->RealToPixelCourbe(u, 5, 50), wxPoint(210, 20));
    // Without a record: ox - kx .. ox + kx = -0.5..0.5.
    VyrExperience* other = AddExperience(doc, "F");
    VyrCourbe* c = AddCurve(doc, other, {"Q", "C", "w", "Hz"}, {{0, 0}});
    c->GetVx()->SetUnite("nothing-x");
    c->GetVy()->SetUnite("nothing-y");
    EXPECT_EQ(d->RealToPixelCourbe(c, 0.5, 0.5), wxPoint(210, 20));
}

TEST_F(TransformFixture, RealToPixelCourbeOfAnEmptyRangeIsZeroAndRestores) {
    VyrUnit* v = d->FindUnitY("V");
    ASSERT_NE(v, nullptr);
    v->SetMin(VYR_SCALE_MANUAL, 3);
    v->SetMax(VYR_SCALE_MANUAL, 3);
    EXPECT_EQ(d->RealToPixelCourbe(u, 5, 50), wxPoint(0, 0));
    const wxRealPoint r = d->PixelToRealCourbe(u, 5, 50);
    EXPECT_EQ(r.x, 0.0);
    EXPECT_EQ(r.y, 0.0);
    EXPECT_EQ(d->RealToPixelCourbe(nullptr, 5, 50), wxPoint(0, 0));
    // The diagram's own transform is untouched.
    EXPECT_EQ(d->RealToPixel(10, 100), wxPoint(210, 20));
}

TEST_F(TransformFixture, SetCurrentScaleForUnitsSetsWithoutRestoring) {
    VyrUnit* v = d->FindUnitY("V");
    v->SetMin(VYR_SCALE_MANUAL, -100);
    v->SetMax(VYR_SCALE_MANUAL, 100);
    EXPECT_TRUE(VyrDiagramTestAccess::SetCurrentScaleForUnits(*d, "s", "V"));
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetYmin(), -100);
    EXPECT_EQ(d->RealToPixel(0, 0), wxPoint(10, 70));
    // An empty range answers false and leaves the transform as it was.
    v->SetMax(VYR_SCALE_MANUAL, -100);
    EXPECT_FALSE(VyrDiagramTestAccess::SetCurrentScaleForUnits(*d, "s", "V"));
    EXPECT_EQ(d->RealToPixel(0, 0), wxPoint(10, 70));
}

TEST_F(TransformFixture, ClipPixelClampsIntoTheInclusiveRectangle) {
    EXPECT_EQ(VyrDiagramTestAccess::ClipPixel(*d, wxPoint(-5, 500)), wxPoint(10, 120));
    EXPECT_EQ(VyrDiagramTestAccess::ClipPixel(*d, wxPoint(500, -5)), wxPoint(210, 20));
    EXPECT_EQ(VyrDiagramTestAccess::ClipPixel(*d, wxPoint(50, 60)), wxPoint(50, 60));
}
