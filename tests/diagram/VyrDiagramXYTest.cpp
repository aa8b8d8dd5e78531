#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/DiagramTestDocument.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

std::vector<double> Values(const VyrVecteur* v) {
    std::vector<double> values;
    for (int i = 0; i < v->GetSize(); ++i)
        values.push_back(v->GetVal(i));
    return values;
}

// C = U(t) sampled at t = 0, 2, 4; D = I(t) sampled at t = 1, 3, 5, both against seconds.
class XY : public ::testing::Test {
protected:
    void SetUp() override {
        d0 = t.Diagram(0);
        c = t.AddCourbe("U", "V", {{0, 0}, {2, 20}, {4, 40}});
        d = t.AddCourbe("I", "A", {{1, 100}, {3, 300}, {5, 500}});
        d->SetColor(wxColour(0, 0, 255));
        d->SetWidth(3);
        d->SetStylePoint(4);
        d->SetStyleLiaison(2);
        d->SetText("from D");
        d0->ShowData(c, true);
        d0->ShowData(d, true);
        d0->AddObserver(&view);
        view.Clear();
    }
    void TearDown() override { d0->RemoveObserver(&view); }

    VyrCourbe* Named(const wxString& name) { return t.doc.FindCourbe(name.wc_str()); }
    wxString XYName() const { return wxString::Format("XY_%d_%d", c->GetOid(), d->GetOid()); }
    wxString InvertName() const { return wxString::Format("XY_INVERT_%d", c->GetOid()); }

    DiagramTestDocument t;
    VyrDiagram* d0 = nullptr;
    VyrCourbe* c = nullptr;
    VyrCourbe* d = nullptr;
    RecordingObserver view;
};

}  // namespace

TEST_F(XY, TwoCurvesSampledAtDifferentTimesGiveAPointWhereverBothInterpolate) {
    d0->CreateCurvesForXY(c);
    VyrCourbe* xy = Named(XYName());
    ASSERT_NE(xy, nullptr);
    // Times 0..5 merged; C reaches 0..4 and D 1..5, so t = 1, 2, 3, 4 give points.
    EXPECT_EQ(Values(xy->GetVx()), (std::vector<double>{10, 20, 30, 40}));
    EXPECT_EQ(Values(xy->GetVy()), (std::vector<double>{100, 200, 300, 400}));
    EXPECT_EQ(xy->GetTrueSize(), 4u);
}

TEST_F(XY, TheXYCurveTakesItsQuantitiesFromBothCurvesAndItsLookFromTheOther) {
    d0->CreateCurvesForXY(c);
    VyrCourbe* xy = Named(XYName());
    ASSERT_NE(xy, nullptr);
    EXPECT_EQ(xy->GetVx()->GetEntityName(), "VX_" + XYName());
    EXPECT_EQ(xy->GetVy()->GetEntityName(), "VY_" + XYName());
    EXPECT_EQ(xy->GetVx()->GetGrandeur(), "U");
    EXPECT_EQ(xy->GetVx()->GetUnite(), "V");
    EXPECT_EQ(xy->GetVy()->GetGrandeur(), "I");
    EXPECT_EQ(xy->GetVy()->GetUnite(), "A");
    EXPECT_EQ(xy->GetColor(), wxColour(0, 0, 255));
    EXPECT_EQ(xy->GetWidth(), 3);
    EXPECT_EQ(xy->GetStylePoint(), 4);
    EXPECT_EQ(xy->GetStyleLiaison(), 2);
    EXPECT_EQ(xy->GetText(), "from D");
    EXPECT_EQ(xy->GetCourbeSoeur(), d);
    EXPECT_EQ(d->GetCourbeSoeur(), xy);
    EXPECT_EQ(t.doc.FindExperienceFromCourbe(xy), t.experience);
    EXPECT_EQ(xy->GetXYDisplay(), 1);
    EXPECT_EQ(xy->GetNewlyCreated(), 1);
}

TEST_F(XY, TheXYCurveIsShownInTheActiveDiagramWithCodeSeventeen) {
    t.doc.SetActiveDiagram(t.Diagram(1));
    RecordingObserver v1;
    t.Diagram(1)->AddObserver(&v1);
    v1.Clear();
    view.Clear();
    d0->CreateCurvesForXY(c);
    VyrCourbe* xy = Named(XYName());
    EXPECT_TRUE(t.Diagram(1)->IsVisibleInterne(xy));
    EXPECT_FALSE(d0->IsVisibleInterne(xy));
    EXPECT_TRUE(xy->IsShownInDiagram(1));
    ASSERT_FALSE(v1.messages.empty());
    EXPECT_EQ(v1.messages.back().code, 17);
    EXPECT_EQ(v1.messages.back().param, xy);
    EXPECT_TRUE(view.messages.empty() || view.messages.back().code != 17);
    t.Diagram(1)->RemoveObserver(&v1);
}

TEST_F(XY, OnlyCurvesOfTheSameAbscissaAreTakenAndDetachedOnesAreSkipped) {
    VyrCourbe* otherUnit = t.AddCourbe("P", "Pa", {{1, 1}}, "t", "min");
    VyrCourbe* otherQuantity = t.AddCourbe("Q", "W", {{1, 1}}, "x", "s");
    VyrCourbe* detached = t.AddCourbe("R", "Ohm", {{1, 1}, {3, 3}});
    t.doc.DeconnectCurve(detached);
    d0->CreateCurvesForXY(c);
    EXPECT_NE(Named(XYName()), nullptr);
    for (VyrCourbe* skipped : {otherUnit, otherQuantity, detached})
        EXPECT_EQ(Named(wxString::Format("XY_%d_%d", c->GetOid(), skipped->GetOid())), nullptr);
    EXPECT_EQ(Named(wxString::Format("XY_%d_%d", c->GetOid(), c->GetOid())), nullptr);
    t.doc.ReconnectCurve(detached);
}

TEST_F(XY, BuildingAgainReusesTheXYCurve) {
    d0->CreateCurvesForXY(c);
    VyrCourbe* xy = Named(XYName());
    const size_t entities = t.doc.GetEntityList().GetCount();
    d0->CreateCurvesForXY(c);
    EXPECT_EQ(Named(XYName()), xy);
    EXPECT_EQ(t.doc.GetEntityList().GetCount(), entities);
    EXPECT_EQ(xy->GetVx()->GetSize(), 4);
}

TEST_F(XY, TheInverseCurveExchangesXAndY) {
    d0->InvertCurveForXY(c);
    VyrCourbe* inverse = Named(InvertName());
    ASSERT_NE(inverse, nullptr);
    EXPECT_EQ(Values(inverse->GetVx()), (std::vector<double>{0, 20, 40}));
    EXPECT_EQ(Values(inverse->GetVy()), (std::vector<double>{0, 2, 4}));
    EXPECT_EQ(inverse->GetVx()->GetGrandeur(), "U");
    EXPECT_EQ(inverse->GetVx()->GetUnite(), "V");
    EXPECT_EQ(inverse->GetVy()->GetGrandeur(), "t");
    EXPECT_EQ(inverse->GetVy()->GetUnite(), "s");
    EXPECT_EQ(inverse->GetVx()->GetEntityName(), "VX_" + InvertName());
    EXPECT_EQ(inverse->GetVy()->GetEntityName(), "VY_" + InvertName());
    EXPECT_EQ(inverse->GetCourbeSoeur(), c);
    EXPECT_EQ(inverse->GetColor(), c->GetColor());
    EXPECT_TRUE(inverse->GetText().empty());
    EXPECT_EQ(inverse->GetXYDisplay(), 1);
    EXPECT_TRUE(d0->IsVisibleInterne(inverse));
    ASSERT_FALSE(view.messages.empty());
    EXPECT_EQ(view.messages.back().code, 17);
    EXPECT_EQ(view.messages.back().param, inverse);
}

TEST_F(XY, PastTheEndOfYTheInverseCurveUsesTheFirstYValue) {
    c->GetVy()->Resize(2);
    d0->InvertCurveForXY(c);
    VyrCourbe* inverse = Named(InvertName());
    ASSERT_NE(inverse, nullptr);
    EXPECT_EQ(Values(inverse->GetVx()), (std::vector<double>{0, 20, 0}));
    EXPECT_EQ(Values(inverse->GetVy()), (std::vector<double>{0, 2, 4}));
}

TEST_F(XY, NothingIsBuiltForANullCurve) {
    const size_t entities = t.doc.GetEntityList().GetCount();
    d0->CreateCurvesForXY(nullptr);
    d0->InvertCurveForXY(nullptr);
    EXPECT_EQ(t.doc.GetEntityList().GetCount(), entities);
    EXPECT_TRUE(view.messages.empty());
}

TEST_F(XY, SetAbscisseWithACurveBuildsTheXYCurvesAndBackToTimeRemovesThem) {
    d0->SetAbscisse("U", "V", c);
    EXPECT_TRUE(d0->IsXYMode());
    EXPECT_EQ(d0->GetGrdX(), "U");
    EXPECT_EQ(d0->GetUx(), "V");
    VyrCourbe* xy = Named(XYName());
    VyrCourbe* inverse = Named(InvertName());
    ASSERT_NE(xy, nullptr);
    ASSERT_NE(inverse, nullptr);
    // Plotted against U: the inverse curve (t against U) and the XY curve (I against U).
    EXPECT_EQ(d0->GetPlottedCourbes(), (std::vector<VyrCourbe*>{inverse, xy}));
    ASSERT_FALSE(view.messages.empty());
    EXPECT_EQ(view.messages.back().code, 20);

    view.Clear();
    d0->SetAbscisse("t", "s", nullptr);
    EXPECT_FALSE(d0->IsXYMode());
    // No diagram is drawn against volts any more: both XY curves are gone, and hidden first.
    EXPECT_EQ(Named(XYName()), nullptr);
    EXPECT_EQ(Named(InvertName()), nullptr);
    EXPECT_EQ(d0->GetNbCourbe(), 2);
    EXPECT_EQ(d0->GetPlottedCourbes(), (std::vector<VyrCourbe*>{c, d}));
    EXPECT_EQ(c->GetCourbeSoeur(), nullptr);
    EXPECT_EQ(d->GetCourbeSoeur(), nullptr);
    const std::vector<int> codes = view.Codes();
    ASSERT_GE(codes.size(), 3u);
    EXPECT_EQ(codes[0], 20);
    EXPECT_EQ(std::count(codes.begin(), codes.end(), 4), 2);
}

TEST_F(XY, XYCurvesThatAnotherDiagramStillUsesAreKept) {
    VyrDiagram* d1 = t.Diagram(1);
    d1->SetAbscisse("U", "V", c);
    d0->SetAbscisse("t", "s", nullptr);
    EXPECT_NE(Named(XYName()), nullptr);
    EXPECT_NE(Named(InvertName()), nullptr);
    d1->SetAbscisse("t", "s", nullptr);
    EXPECT_EQ(Named(XYName()), nullptr);
}

TEST_F(XY, AUserCurveReusedForXYIsNeverMarkedForRemoval) {
    // The user's own I(U) curve has the quantities the XY curve would have.
    VyrCourbe* own = t.AddCourbe("I", "A", {{1, 1}}, "U", "V");
    d0->CreateCurvesForXY(c);
    EXPECT_EQ(t.experience->FindCourbeByGrd("I", "A", "U", "V"), own);
    EXPECT_EQ(own->GetXYDisplay(), 0);
    d0->SetAbscisse("t", "s", nullptr);
    EXPECT_EQ(t.doc.FindCourbeByOid(own->GetOid()), own);
}
