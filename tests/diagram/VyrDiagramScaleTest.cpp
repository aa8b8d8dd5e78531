// Scale types, per-unit ranges with the shared zero line, manual scales and zoom.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/CurveBuilder.h"
#include "support/RecordingObserver.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

void ExpectScale(const VyrScale& s, double xmin, double xmax, double ymin, double ymax) {
    EXPECT_DOUBLE_EQ(s.GetXmin(), xmin);
    EXPECT_DOUBLE_EQ(s.GetXmax(), xmax);
    EXPECT_DOUBLE_EQ(s.GetYmin(), ymin);
    EXPECT_DOUBLE_EQ(s.GetYmax(), ymax);
}

void ExpectRange(const VyrUnit* u, int type, double min, double max) {
    ASSERT_NE(u, nullptr);
    EXPECT_DOUBLE_EQ(u->GetMin(type), min);
    EXPECT_DOUBLE_EQ(u->GetMax(type), max);
}

// Three curves against t (s): U and U2 in V, T in °C.
//   U : x 0, 2, 5, 10  y -1, 4, 10, 3   standard X 0..20, Y -2..8
//   U2: x 1, 12        y 0, 5           standard X 0..30, Y 0..4
//   T : x 0, 8         y 0, 200         standard X -5..15, Y -50..150
struct ThreeCurves : ::testing::Test {
    VyrBaseData doc{nullptr};
    VyrExperience* e = nullptr;
    VyrCourbe* u = nullptr;
    VyrCourbe* u2 = nullptr;
    VyrCourbe* t = nullptr;
    VyrDiagram* d = nullptr;
    const wxString degC = wxString(L"\u00b0C");

    void SetUp() override {
        e = AddExperience(doc, "E");
        u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, -1}, {2, 4}, {5, 10}, {10, 3}},
                     VyrScale(0, 20, -2, 8));
        u2 = AddCurve(doc, e, {"U2", "V", "t", "s"}, {{1, 0}, {12, 5}}, VyrScale(0, 30, 0, 4));
        t = AddCurve(doc, e, {"T", degC, "t", "s"}, {{0, 0}, {8, 200}}, VyrScale(-5, 15, -50, 150));
        d = ShowInDiagram(doc, 0, {u, u2, t});
    }
};

}  // namespace

TEST_F(ThreeCurves, TakesAbscissaAndMainUnitFromTheCurves) {
    EXPECT_EQ(d->GetGrdX(), "t");
    EXPECT_EQ(d->GetUx(), "s");
    // The first shown curve supplies the main Y unit.
    EXPECT_EQ(d->GetUy(), "V");
    EXPECT_EQ(d->GetPlottedCourbes().size(), 3u);
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_AUTO);
}

TEST_F(ThreeCurves, AutomaticRangesByHand) {
    // X: data 0..12, no margin.
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_AUTO, 0, 12);
    // V: data -1..10, margin 0.55: -1.55..10.55, largest magnitude 10.55.
    // °C: data 0..200, margin 10: -10..210, largest magnitude 210.
    // Shared relative extremes: gmin = min(-1.55/10.55, -10/210), gmax = 1.
    const double gmin = -1.55 / 10.55;
    ExpectRange(d->FindUnitY("V"), VYR_SCALE_AUTO, gmin * 10.55, 10.55);
    ExpectRange(d->FindUnitY(degC), VYR_SCALE_AUTO, gmin * 210, 210);
    ExpectScale(*d->GetScale(VYR_SCALE_AUTO), 0, 12, gmin * 10.55, 10.55);
    ExpectScale(*d->GetCurrentScale(), 0, 12, gmin * 10.55, 10.55);
}

TEST_F(ThreeCurves, InvalidPointsCountInTheAutomaticRangesUnlessValidRangesOnly) {
    // U's point at t = 5 (10 V) made invalid: kept by default, as GetMinMax counts it.
    u->GetVy()->ValidateAt(2, false);
    EXPECT_FALSE(d->IsValidRangesOnly());
    d->UpdateScale(VYR_SCALE_AUTO);
    ExpectRange(d->FindUnitY("V"), VYR_SCALE_AUTO, -1.55 / 10.55 * 10.55, 10.55);
    // Valid points only: V's data is -1..5 (U2's 5 V), margin 0.3: -1.3..5.3.
    d->SetValidRangesOnly(true);
    d->UpdateScale(VYR_SCALE_AUTO);
    const double gmin = std::min(-1.3 / 5.3, -10.0 / 210);
    ExpectRange(d->FindUnitY("V"), VYR_SCALE_AUTO, gmin * 5.3, 5.3);
    // An invalid time leaves the X range too: U2's 12 s and T's 8 s give 0..10.
    u2->GetVx()->ValidateAt(1, false);
    t->GetVx()->ValidateAt(1, false);
    d->UpdateScale(VYR_SCALE_AUTO);
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_AUTO, 0, 10);
    // A vector without any valid point counts with all its numbers: U2's 1..12 again.
    u2->GetVx()->ValidateAt(0, false);
    d->UpdateScale(VYR_SCALE_AUTO);
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_AUTO, 0, 12);
}

TEST_F(ThreeCurves, StandardRangesByHand) {
    // X: standard bounds -5..30.
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_STANDARD, -5, 30);
    // V: -2..8, margin 0.5: -2.5..8.5 (magnitude 8.5); °C: -50..150, margin 10: -60..160
    // (magnitude 160). gmin = min(-2.5/8.5, -60/160) = -0.375.
    ExpectRange(d->FindUnitY("V"), VYR_SCALE_STANDARD, -0.375 * 8.5, 8.5);
    ExpectRange(d->FindUnitY(degC), VYR_SCALE_STANDARD, -60, 160);
    d->SetStandardScale();
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_STANDARD);
    ExpectScale(*d->GetCurrentScale(), -5, 30, -3.1875, 8.5);
}

TEST_F(ThreeCurves, ZoomAndZoomNormalByHand) {
    wxRect rect(0, 0, 121, 101);
    d->Move(rect);
    const double gmin = -1.55 / 10.55;
    const double ymin = gmin * 10.55;

    d->SetZoomPourcent(50, 200, 0, 0);
    ExpectScale(*d->GetCurrentScale(), 0, 6, 2 * ymin, 21.1);
    EXPECT_TRUE(d->IsZoomed());
    EXPECT_TRUE(d->IsZoomedX());

    VyrScale zoom(2, 8, 0, 5);
    d->SetZoom(&zoom);
    const double kx = 6.0 / 12.0;
    const double ox = 8 - 12 * kx;
    const double ky = 5.0 / (10.55 - ymin);
    const double oy = 5 - 10.55 * ky;
    ExpectScale(*d->GetCurrentScale(), kx * 0 + ox, kx * 12 + ox, ky * ymin + oy, ky * 10.55 + oy);
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetXmin(), 2);
    EXPECT_NEAR(d->GetCurrentScale()->GetYmin(), 0, 1e-12);
    // The °C curve is drawn against its own record's range under the same factors (the
    // offsets are the main unit's, so its zero moves off the shared line while zoomed).
    const double cLow = ky * (gmin * 210) + oy;
    const double cHigh = ky * 210 + oy;
    EXPECT_EQ(d->RealToPixelCourbe(t, 8, cHigh), wxPoint(120, 0));
    EXPECT_EQ(d->RealToPixelCourbe(t, 2, cLow), wxPoint(0, 100));
    EXPECT_EQ(d->RealToPixelCourbe(u, 8, 5), wxPoint(120, 0));

    d->ZoomNormal();
    EXPECT_FALSE(d->IsZoomed());
    ExpectScale(*d->GetCurrentScale(), 0, 12, ymin, 10.55);
    EXPECT_EQ(d->RealToPixel(12, 10.55), wxPoint(120, 0));
}

TEST_F(ThreeCurves, ManualThroughAutoStandardToManuAndSetManualScale) {
    RecordingObserver obs;
    d->AddObserver(&obs);
    obs.Clear();
    const double gmin = -1.55 / 10.55;
    d->AutoStandardToManu();
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_MANUAL);
    EXPECT_EQ(obs.Codes(), std::vector<int>{VYR_MSG_SCALE_TYPE_CHANGED});
    // The automatic ranges became the manual ones.
    ExpectRange(d->FindUnitY(degC), VYR_SCALE_MANUAL, gmin * 210, 210);
    ExpectScale(*d->GetCurrentScale(), 0, 12, gmin * 10.55, 10.55);

    VyrScale manual(0, 20, -2, 8);
    d->SetManualScale(&manual, true);
    ExpectScale(*d->GetScale(VYR_SCALE_MANUAL), 0, 20, -2, 8);
    ExpectScale(*d->GetCurrentScale(), 0, 20, -2, 8);
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_MANUAL, 0, 20);
    ExpectRange(d->FindUnitY("V"), VYR_SCALE_MANUAL, -2, 8);
    // |8| > |-2|: r = 8 / 10; °C keeps its span s = 210 - gmin * 210 and gets max = s r,
    // min = s r - s, so its zero sits 20 % up like the V zero.
    const double span = 210 - gmin * 210;
    ExpectRange(d->FindUnitY(degC), VYR_SCALE_MANUAL, span * 0.8 - span, span * 0.8);
    // Manual type survives a recomputation.
    d->Fill();
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_MANUAL);
    ExpectScale(*d->GetCurrentScale(), 0, 20, -2, 8);
}

TEST_F(ThreeCurves, SetManualScaleWithLargerNegativeEndPropagatesFromTheBottom) {
    d->AutoStandardToManu();
    const VyrUnit* c = d->FindUnitY(degC);
    const double span = c->GetMax(VYR_SCALE_MANUAL) - c->GetMin(VYR_SCALE_MANUAL);
    VyrScale manual(0, 20, -8, 2);
    d->SetManualScale(&manual, true);
    // r = ymin / (ymax - ymin) = -0.8: min = s r, max = s r + s.
    ExpectRange(c, VYR_SCALE_MANUAL, -0.8 * span, -0.8 * span + span);
}

TEST_F(ThreeCurves, SetManualScaleWithoutPropagationLeavesOtherUnits) {
    d->AutoStandardToManu();
    const VyrUnit* c = d->FindUnitY(degC);
    const double min = c->GetMin(VYR_SCALE_MANUAL);
    const double max = c->GetMax(VYR_SCALE_MANUAL);
    VyrScale manual(0, 20, -8, 2);
    d->SetManualScale(&manual, false);
    ExpectRange(c, VYR_SCALE_MANUAL, min, max);
}

TEST_F(ThreeCurves, InvalidManualScaleIsRefused) {
    VyrScale flat(0, 20, 3, 3);
    d->SetManualScale(&flat, true);
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_AUTO);
    VyrScale nan(0, std::nan(""), 0, 1);
    d->SetManualScale(&nan, true);
    d->SetManualScale(nullptr, true);
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_AUTO);
    ExpectScale(*d->GetScale(VYR_SCALE_MANUAL), 0, 1, 0, 1);
}

TEST_F(ThreeCurves, SetTypeScaleTwoResetsAnEmptyManualRangeFromAutomatic) {
    VyrUnit* s = d->FindUnitX("s");
    s->SetMin(VYR_SCALE_MANUAL, 5);
    s->SetMax(VYR_SCALE_MANUAL, 5);
    // A fresh record's manual range is 0..1: kept as it is.
    d->SetTypeScale(VYR_SCALE_MANUAL);
    ExpectRange(s, VYR_SCALE_MANUAL, 0, 12);
    ExpectRange(d->FindUnitY("V"), VYR_SCALE_MANUAL, 0, 1);
    ExpectScale(*d->GetCurrentScale(), 0, 12, 0, 1);
}

TEST_F(ThreeCurves, SetTypeScaleResetsTheZoom) {
    d->SetZoomPourcent(50, 50, 0, 0);
    ASSERT_TRUE(d->IsZoomed());
    d->SetTypeScale(VYR_SCALE_STANDARD);
    EXPECT_FALSE(d->IsZoomed());
    ExpectScale(*d->GetCurrentScale(), -5, 30, -3.1875, 8.5);
}

TEST_F(ThreeCurves, SetTypeScaleOutOfRangeDoesNothing) {
    RecordingObserver obs;
    d->AddObserver(&obs);
    obs.Clear();
    d->SetZoomPourcent(50, 50, 0, 0);
    d->SetTypeScale(3);
    d->SetTypeScale(-1);
    EXPECT_EQ(d->GetTypeScale(), VYR_SCALE_AUTO);
    EXPECT_TRUE(d->IsZoomed());
    EXPECT_TRUE(obs.messages.empty());
    EXPECT_EQ(d->GetScale(3), nullptr);
    EXPECT_EQ(d->GetScale(-1), nullptr);
    EXPECT_EQ(d->GetScale(), d->GetScale(VYR_SCALE_AUTO));
}

TEST_F(ThreeCurves, AutoStandardToManuOnlyFromAutomaticOrStandard) {
    d->SetStandardScale();
    d->AutoStandardToManu();
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_MANUAL, -5, 30);
    ExpectScale(*d->GetCurrentScale(), -5, 30, -3.1875, 8.5);
    // Already manual: nothing copied again.
    d->FindUnitX("s")->SetMin(VYR_SCALE_STANDARD, -100);
    d->AutoStandardToManu();
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_MANUAL, -5, 30);
}

TEST_F(ThreeCurves, DisabledCurvesTakeNoPartInTheRanges) {
    u2->SetEnabled(false);
    d->Fill();
    // X: U and T only: 0..10.
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_AUTO, 0, 10);
}

TEST_F(ThreeCurves, AxeSuivantYStepsThroughTheYUnits) {
    EXPECT_EQ(d->GetYUnits().size(), 2u);
    EXPECT_TRUE(d->AxeSuivantY());
    EXPECT_EQ(d->GetUy(), degC);
    const double gmin = -1.55 / 10.55;
    ExpectScale(*d->GetCurrentScale(), 0, 12, gmin * 210, 210);
    EXPECT_TRUE(d->AxeSuivantY());
    EXPECT_EQ(d->GetUy(), "V");
}

TEST(VyrDiagramScale, AxeSuivantYNeedsTwoRealUnits) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 1}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "s.u.", "t", "s"}, {{0, 1}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a});
    EXPECT_FALSE(d->AxeSuivantY());  // one Y unit
    d = ShowInDiagram(doc, 0, {a, b});
    EXPECT_EQ(d->GetYUnits().size(), 2u);
    EXPECT_FALSE(d->AxeSuivantY());  // the second has no unit
    EXPECT_EQ(d->GetUy(), "V");
    VyrCourbe* c = AddCurve(doc, e, {"C", "A", "t", "s"}, {{0, 1}});
    d = ShowInDiagram(doc, 0, {c});
    // V, s.u., A: from V the next real unit is A, skipping s.u.
    EXPECT_TRUE(d->AxeSuivantY());
    EXPECT_EQ(d->GetUy(), "A");
    EXPECT_TRUE(d->AxeSuivantY());
    EXPECT_EQ(d->GetUy(), "V");
}

TEST(VyrDiagramScale, EmptyDiagramHasBaseRangeZeroToOnePointZeroFive) {
    VyrBaseData doc(nullptr);
    VyrDiagram* d = doc.GetDiagram(0);
    EXPECT_TRUE(d->GetUx().empty());
    EXPECT_TRUE(d->GetUy().empty());
    ExpectScale(*d->GetScale(VYR_SCALE_AUTO), 0, 1.05, 0, 1.05);
    ExpectScale(*d->GetCurrentScale(), 0, 1.05, 0, 1.05);
}

TEST(VyrDiagramScale, WithoutUnitTheFallbackGoesToTheCurrentTypesScale) {
    VyrBaseData doc(nullptr);
    VyrDiagram* d = doc.GetDiagram(0);
    d->SetStandardScale();
    d->GetScale(VYR_SCALE_STANDARD)->Set(5, 6, 7, 8);
    d->GetScale(VYR_SCALE_AUTO)->Set(5, 6, 7, 8);
    // Kept: updating the automatic ranges writes 0..1.05 into the standard (current) scale.
    d->UpdateScale(VYR_SCALE_AUTO);
    ExpectScale(*d->GetScale(VYR_SCALE_STANDARD), 0, 1.05, 0, 1.05);
    ExpectScale(*d->GetScale(VYR_SCALE_AUTO), 5, 6, 7, 8);
}

TEST(VyrDiagramScale, ConstantXIsWidenedByATenthWithoutMargin) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, {{3, 1}, {3, 2}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {c});
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetXmin(), 2.9);
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetXmax(), 3.1);
}

TEST(VyrDiagramScale, ConstantYGetsATenthInsteadOfTheMargin) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 5}, {1, 5}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {c});
    // 4.9..5.1; the shared scaling by the magnitude 5.1 leaves it as it is.
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetYmin(), 4.9 / 5.1 * 5.1);
    EXPECT_DOUBLE_EQ(d->GetCurrentScale()->GetYmax(), 5.1);
    EXPECT_NEAR(d->GetCurrentScale()->GetYmin(), 4.9, 1e-12);
}

TEST(VyrDiagramScale, TwoYUnitsShareTheirZeroLine) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    // Ranges -1..10 and 0..200 before the margins.
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, -1}, {1, 10}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "mA", "t", "s"}, {{0, 0}, {1, 200}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a, b});
    const VyrUnit* v = d->FindUnitY("V");
    const VyrUnit* ma = d->FindUnitY("mA");
    auto zeroHeight = [](const VyrUnit* u) {
        return -u->GetMin(VYR_SCALE_AUTO) / (u->GetMax(VYR_SCALE_AUTO) - u->GetMin(VYR_SCALE_AUTO));
    };
    EXPECT_NEAR(zeroHeight(v), zeroHeight(ma), 1e-12);
    EXPECT_NEAR(zeroHeight(v), 1.55 / 12.1, 1e-12);
    // In pixels: both zeros on the same row.
    wxRect rect(0, 0, 200, 301);
    d->Move(rect);
    EXPECT_EQ(d->RealToPixelCourbe(a, 0, 0).y, d->RealToPixelCourbe(b, 0, 0).y);
}

TEST(VyrDiagramScale, AZeroZeroManualRangeStartsFromTheSharedRange) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 0}, {1, 10}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a});
    VyrUnit* v = d->FindUnitY("V");
    v->SetMin(VYR_SCALE_MANUAL, 0);
    v->SetMax(VYR_SCALE_MANUAL, 0);
    d->UpdateScale(VYR_SCALE_AUTO);
    ExpectRange(v, VYR_SCALE_MANUAL, -0.5, 10.5);
    // A manual range of its own is left alone.
    v->SetMin(VYR_SCALE_MANUAL, 1);
    v->SetMax(VYR_SCALE_MANUAL, 2);
    d->UpdateScale(VYR_SCALE_AUTO);
    ExpectRange(v, VYR_SCALE_MANUAL, 1, 2);
}

TEST(VyrDiagramScale, UpdateScaleIgnoresOtherTypes) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 0}, {1, 10}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a});
    d->UpdateScale(VYR_SCALE_MANUAL);
    d->UpdateScale(7);
    ExpectRange(d->FindUnitX("s"), VYR_SCALE_MANUAL, 0, 1);
}

TEST_F(ThreeCurves, SetZoomPourcentHalvesAndRefusesTinyFactors) {
    d->SetZoomPourcent(50, 50, 123, 456);
    ExpectScale(*d->GetCurrentScale(), 0, 6, -1.55 / 10.55 * 10.55 / 2, 10.55 / 2);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::ZoomOx(*d), 0.0);
    // 0.0005 % is a factor 0.000005, at most 1e-5: refused.
    d->SetZoomPourcent(0.0005, 50, 0, 0);
    ExpectScale(*d->GetCurrentScale(), 0, 6, -1.55 / 10.55 * 10.55 / 2, 10.55 / 2);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::ZoomKx(*d), 0.5);
    d->SetZoomPourcent(50, 0.0005, 0, 0);
    EXPECT_DOUBLE_EQ(VyrDiagramTestAccess::ZoomKy(*d), 0.5);
}

TEST_F(ThreeCurves, SetZoomRefusesEmptyRangesAndTinyFactors) {
    VyrScale flat(1, 1, 0, 5);
    d->SetZoom(&flat);
    d->SetZoom(nullptr);
    EXPECT_FALSE(d->IsZoomed());
    // 6e-5 / 12 = 5e-6: not above the limit of 1e-5.
    VyrScale tiny(0, 6e-5, 0, 5);
    d->SetZoom(&tiny);
    EXPECT_FALSE(d->IsZoomed());
    VyrScale small(0, 12e-4, 0, 5);
    d->SetZoom(&small);
    EXPECT_TRUE(d->IsZoomed());
    EXPECT_TRUE(d->IsZoomedX());
}

TEST_F(ThreeCurves, IsZoomedXLooksAtTheHorizontalFactorsOnly) {
    VyrScale vertical(0, 12, 0, 5);
    d->SetZoom(&vertical);
    EXPECT_TRUE(d->IsZoomed());
    EXPECT_FALSE(d->IsZoomedX());
}

TEST_F(ThreeCurves, NaNZoomFactorCountsAsZoomed) {
    VyrDiagramTestAccess::SetZoomFactors(*d, 1, 0, std::nan(""), 0);
    EXPECT_TRUE(d->IsZoomed());
    EXPECT_FALSE(d->IsZoomedX());
    VyrDiagramTestAccess::SetZoomFactors(*d, 1, std::nan(""), 1, 0);
    EXPECT_TRUE(d->IsZoomedX());
}

TEST(VyrDiagramScale, UpdateDiagramsKeepsTheOtherDiagramsAbscissaInStep) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 0}, {10, 10}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "mA", "t", "s"}, {{0, 0}, {10, 100}});
    VyrDiagram* d0 = ShowInDiagram(doc, 0, {a});
    VyrDiagram* d1 = ShowInDiagram(doc, 1, {b});
    const double ymin = d1->GetCurrentScale()->GetYmin();
    const double ymax = d1->GetCurrentScale()->GetYmax();
    d0->UpdateDiagrams(2, 4);
    EXPECT_EQ(d1->GetTypeScale(), VYR_SCALE_MANUAL);
    ExpectScale(*d1->GetCurrentScale(), 2, 4, ymin, ymax);
    // This diagram itself is not touched.
    EXPECT_EQ(d0->GetTypeScale(), VYR_SCALE_AUTO);

    // A horizontally zoomed diagram keeps its abscissa.
    VyrScale zoom(3, 4, ymin, ymax);
    d1->SetZoom(&zoom);
    d0->UpdateDiagrams(5, 6);
    EXPECT_DOUBLE_EQ(d1->GetCurrentScale()->GetXmin(), 3);
    d1->ZoomNormal();
    d0->SetZoomPourcent(50, 100, 0, 0);
    d0->UpdateDiagrams(5, 6);
    EXPECT_DOUBLE_EQ(d1->GetCurrentScale()->GetXmin(), 2);
}

TEST(VyrDiagramScale, UpdateDiagramsSkipsADiagramOfAnotherAbscissaUnit) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 0}, {10, 10}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "mA", "f", "Hz"}, {{0, 0}, {10, 100}});
    VyrDiagram* d0 = ShowInDiagram(doc, 0, {a});
    VyrDiagram* d1 = ShowInDiagram(doc, 1, {b});
    d0->UpdateDiagrams(2, 4);
    EXPECT_EQ(d1->GetTypeScale(), VYR_SCALE_AUTO);
    EXPECT_DOUBLE_EQ(d1->GetCurrentScale()->GetXmin(), 0);
}
