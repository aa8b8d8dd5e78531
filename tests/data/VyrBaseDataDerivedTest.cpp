#include <gtest/gtest.h>

#include <cmath>

#include <wx/ffile.h>
#include <wx/filefn.h>
#include <wx/filename.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"

using namespace vyrtest;

namespace {
struct Doc {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
};

std::vector<double> Range(int n, double step) {
    std::vector<double> v;
    for (int k = 0; k < n; ++k)
        v.push_back(k * step);
    return v;
}
}  // namespace

TEST(VyrBaseDataDerived, EchantResamplesUniformly) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {0, 5, 10}, {0, 50, 100});
    RecordingObserver obs;
    d.doc.AddObserver(&obs);
    VyrBaseData::Echant(c, 0, 10, 11);
    EXPECT_EQ(Values(c->GetVx()), Range(11, 1));
    EXPECT_EQ(Values(c->GetVy()), Range(11, 10));
    EXPECT_EQ(c->GetTrueSize(), 11u);
    EXPECT_TRUE(obs.messages.empty());
}

TEST(VyrBaseDataDerived, EchantAbscissaeStartAtZeroNotAtX0) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {0, 5, 10}, {0, 50, 100});
    VyrBaseData::Echant(c, 5, 15, 11);
    EXPECT_EQ(Values(c->GetVx()), Range(11, 1));
    EXPECT_EQ(Values(c->GetVy()), Range(11, 10));
}

TEST(VyrBaseDataDerived, EchantAveragesTheTwoInterceptsThenAppliesTheSlope) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {0.1, 0.7, 1.3}, {0.3, 1.1, 0.2});
    VyrBaseData::Echant(c, 0, 1.5, 4);  // xk = 0, 0.5, 1.0, 1.5
    const double s1 = (1.1 - 0.3) / (0.7 - 0.1);
    const double s2 = (0.2 - 1.1) / (1.3 - 0.7);
    EXPECT_EQ(c->GetVy()->GetVal(0), 0.3);  // before the first point: its Y
    EXPECT_EQ(c->GetVy()->GetVal(1),
              ((1.1 - s1 * 0.7) + (0.3 - s1 * 0.1)) * 0.5 + s1 * (1 * (1.5 / 3)));
    EXPECT_EQ(c->GetVy()->GetVal(2),
              ((0.2 - s2 * 1.3) + (1.1 - s2 * 0.7)) * 0.5 + s2 * (2 * (1.5 / 3)));
    EXPECT_EQ(c->GetVy()->GetVal(3), 0.2);  // past the last point: the last Y
}

TEST(VyrBaseDataDerived, EchantUsesInvalidPointsAndMarksEverythingValid) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {0, 5, 10}, {0, 50, 100});
    c->GetVx()->ValidateAt(1, false);
    c->GetVy()->ValidateAt(1, false);
    c->GetVy()->ValidateAt(4, false);  // beyond the old size, inside the new one
    VyrBaseData::Echant(c, 0, 10, 6);
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{0, 20, 40, 60, 80, 100}));
    EXPECT_EQ(c->GetTrueSize(), 6u);
}

TEST(VyrBaseDataDerived, EchantGuardsAgainstFewerThanTwoPointsAndEmptyCurves) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {0, 5, 10}, {0, 50, 100});
    VyrBaseData::Echant(c, 0, 10, 1);
    VyrBaseData::Echant(c, 0, 10, 0);
    VyrBaseData::Echant(c, 0, 10, -4);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{0, 5, 10}));
    VyrCourbe* empty = Curve(d.doc, d.e, "W", {}, {});
    VyrBaseData::Echant(empty, 0, 10, 11);
    EXPECT_EQ(empty->GetSize(), 0u);
    VyrBaseData::Echant(nullptr, 0, 10, 11);
    VyrCourbe bare(99, nullptr);
    VyrBaseData::Echant(&bare, 0, 10, 11);
}

TEST(VyrBaseDataDerived, EchantWithNanBoundsStaysSafe) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {0, 5, 10}, {0, 50, 100});
    VyrBaseData::Echant(c, std::nan(""), 10, 3);
    EXPECT_EQ(c->GetSize(), 3u);
    EXPECT_EQ(c->GetVy()->GetVal(2), 100.0);  // no source point reaches a NaN abscissa
}

TEST(VyrBaseDataDerived, CreateCourbeForCalcNamesWithConsecutiveCounter) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    VyrCourbe* a = d.doc.CreateCourbeForCalc(c, 0, 10);
    VyrCourbe* b = d.doc.CreateCourbeForCalc(c, 0, 10);
    ASSERT_NE(a, nullptr);
    ASSERT_NE(b, nullptr);
    long na = 0, nb = 0;
    ASSERT_TRUE(a->GetEntityName().StartsWith("COURBE_FOR_CALC_"));
    ASSERT_TRUE(a->GetEntityName().Mid(16).ToLong(&na));
    ASSERT_TRUE(b->GetEntityName().Mid(16).ToLong(&nb));
    EXPECT_EQ(nb, na + 1);
    EXPECT_GE(na, 1);
    EXPECT_EQ(a->GetVx()->GetEntityName(), a->GetEntityName() + "VX");
    EXPECT_EQ(a->GetVy()->GetEntityName(), a->GetEntityName() + "VY");
    EXPECT_EQ(a->GetVy()->GetGrandeur(), a->GetEntityName());
    EXPECT_EQ(a->GetVx()->GetGrandeur(), "t");
    EXPECT_EQ(a->GetVx()->GetUnite(), "s");
    EXPECT_EQ(a->GetVy()->GetUnite(), "V");
    EXPECT_EQ(a->GetColor(), wxColour(255, 0, 0));
    EXPECT_TRUE(a->GetText().empty());
    EXPECT_EQ(d.doc.FindExperienceFromCourbe(a), d.e);
}

TEST(VyrBaseDataDerived, CreateCourbeForCalcTakesValidPointsInRangeSortedWithoutDuplicates) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {5, 1, 4, 2, 3, 4, 9}, {50, 10, 40, 20, 30, 41, 90});
    c->GetVx()->ValidateAt(3, false);  // X = 2 invalid
    c->GetVy()->ValidateAt(4, false);  // Y of X = 3 invalid
    RecordingObserver obs;
    d.doc.AddObserver(&obs);
    VyrCourbe* r = d.doc.CreateCourbeForCalc(c, 1, 5);
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(Values(r->GetVx()), (std::vector<double>{1, 4, 5}));
    ASSERT_EQ(r->GetVy()->GetSize(), 3);
    EXPECT_EQ(r->GetVy()->GetVal(0), 10.0);
    EXPECT_TRUE(r->GetVy()->GetVal(1) == 40.0 || r->GetVy()->GetVal(1) == 41.0);
    EXPECT_EQ(r->GetVy()->GetVal(2), 50.0);
    EXPECT_EQ(obs.Codes(), (std::vector<int>{VYR_MSG_CURVE_CREATED}));
    EXPECT_EQ(obs.messages[0].param, r);
}

TEST(VyrBaseDataDerived, CreateCourbeForCalcWithEqualBoundsTakesEveryValidPoint) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3, 4}, {10, 20, 30, 40});
    c->GetVy()->ValidateAt(1, false);
    VyrCourbe* r = d.doc.CreateCourbeForCalc(c, 3, 3);
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(Values(r->GetVx()), (std::vector<double>{1, 3, 4}));
    EXPECT_EQ(Values(r->GetVy()), (std::vector<double>{10, 30, 40}));
}

TEST(VyrBaseDataDerived, CreateCourbeForCalcRefusesBadInput) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2}, {10, 20});
    const size_t count = d.doc.GetEntityList().GetCount();
    EXPECT_EQ(d.doc.CreateCourbeForCalc(nullptr, 0, 1), nullptr);
    EXPECT_EQ(d.doc.CreateCourbeForCalc(c, 2, 1), nullptr);
    EXPECT_EQ(d.doc.CreateCourbeForCalc(c, std::nan(""), 1), nullptr);
    EXPECT_EQ(d.doc.CreateCourbeForCalc(c, 0, std::nan("")), nullptr);
    VyrCourbe* loose = static_cast<VyrCourbe*>(
        VyrBaseDataTestAccess::CreateEntity(d.doc, VYR_KIND_COURBE, d.doc.GetNewOid(), L"L"));
    EXPECT_EQ(d.doc.CreateCourbeForCalc(loose, 0, 1), nullptr);  // in no experiment
    EXPECT_EQ(d.doc.GetEntityList().GetCount(), count + 1);
}

TEST(VyrBaseDataDerived, DupliqueCourbeCopiesValidPointsUnderAnotherQuantity) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    c->GetVx()->ValidateAt(1, false);
    c->SetWidth(4);
    wxString grd = "P";
    VyrCourbe* dup = d.doc.DupliqueCourbe(c, grd, wxColour(0, 0, 255));
    ASSERT_NE(dup, nullptr);
    EXPECT_NE(dup, c);
    EXPECT_EQ(dup->GetEntityName(), "COURBE_s_t_V_P");
    EXPECT_EQ(dup->GetVx()->GetEntityName(), "COURBE_s_t_V_PVX");
    EXPECT_EQ(dup->GetVy()->GetEntityName(), "COURBE_s_t_V_PVY");
    EXPECT_EQ(dup->GetVy()->GetGrandeur(), "P");
    EXPECT_EQ(dup->GetVy()->GetUnite(), "V");
    EXPECT_EQ(dup->GetVx()->GetGrandeur(), "t");
    EXPECT_EQ(dup->GetColor(), wxColour(0, 0, 255));
    EXPECT_EQ(dup->GetWidth(), 1);
    EXPECT_EQ(Values(dup->GetVx()), (std::vector<double>{1, 3}));
    EXPECT_EQ(Values(dup->GetVy()), (std::vector<double>{10, 30}));
    EXPECT_EQ(d.e->GetNbCourbe(), 2);
}

TEST(VyrBaseDataDerived, DupliqueCourbeReusesTheCurveOfTheSameQuantities) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    wxString grd = "P";
    VyrCourbe* first = d.doc.DupliqueCourbe(c, grd, wxColour(0, 0, 255));
    first->SetWidth(5);
    first->SetStylePoint(6);
    first->SetStyleLiaison(7);
    d.doc.RemovePointAt(c, 0, false);
    VyrCourbe* second = d.doc.DupliqueCourbe(c, grd, wxColour(0, 255, 0));
    EXPECT_EQ(second, first);
    EXPECT_EQ(second->GetWidth(), 1);
    EXPECT_EQ(second->GetStylePoint(), 1);
    EXPECT_EQ(second->GetStyleLiaison(), 1);
    EXPECT_EQ(second->GetColor(), wxColour(0, 255, 0));
    EXPECT_EQ(Values(second->GetVx()), (std::vector<double>{2, 3}));
    EXPECT_EQ(d.e->GetNbCourbe(), 2);
}

TEST(VyrBaseDataDerived, DupliqueCourbeUnderItsOwnQuantityKeepsItsValidPoints) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    c->GetVy()->ValidateAt(0, false);
    wxString grd = "U";
    EXPECT_EQ(d.doc.DupliqueCourbe(c, grd, wxColour(0, 0, 0)), c);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{2, 3}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{20, 30}));
}

TEST(VyrBaseDataDerived, DupliqueCourbeBadInput) {
    Doc d;
    wxString grd = "P";
    EXPECT_EQ(d.doc.DupliqueCourbe(nullptr, grd, wxColour(0, 0, 0)), nullptr);
    VyrCourbe* loose = static_cast<VyrCourbe*>(
        VyrBaseDataTestAccess::CreateEntity(d.doc, VYR_KIND_COURBE, d.doc.GetNewOid(), L"L"));
    EXPECT_EQ(d.doc.DupliqueCourbe(loose, grd, wxColour(0, 0, 0)), nullptr);
}

TEST(VyrBaseDataDerived, RemoveVecteurOrphelinDeletesVectorsNoCurveUses) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1}, {1});
    VyrEntity* orphan1 =
        VyrBaseDataTestAccess::CreateEntity(d.doc, VYR_KIND_VECTEUR, d.doc.GetNewOid(), L"o1");
    VyrEntity* orphan2 =
        VyrBaseDataTestAccess::CreateEntity(d.doc, VYR_KIND_VECTEUR, d.doc.GetNewOid(), L"o2");
    const int oid1 = orphan1->GetOid(), oid2 = orphan2->GetOid();
    d.doc.RemoveVecteurOrphelin();
    EXPECT_EQ(d.doc.FindEntity(oid1), nullptr);
    EXPECT_EQ(d.doc.FindEntity(oid2), nullptr);
    EXPECT_EQ(d.doc.FindEntity(c->GetVx()->GetOid()), c->GetVx());
    EXPECT_EQ(d.doc.FindEntity(c->GetVy()->GetOid()), c->GetVy());
    EXPECT_EQ(d.doc.GetEntityList().GetCount(), 4u);
}

TEST(VyrBaseDataDerived, RemoveVecteurOrphelinKeepsVectorsOfDetachedCurves) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1}, {1});
    d.doc.DeconnectEntity(c);  // the curve alone: its vectors stay in the list
    d.doc.RemoveVecteurOrphelin();
    EXPECT_EQ(d.doc.FindEntity(c->GetVx()->GetOid()), c->GetVx());
    // A detached orphan is never deleted here.
    VyrEntity* orphan =
        VyrBaseDataTestAccess::CreateEntity(d.doc, VYR_KIND_VECTEUR, d.doc.GetNewOid(), L"o");
    d.doc.DeconnectEntity(orphan);
    d.doc.RemoveVecteurOrphelin();
    EXPECT_EQ(Detached(d.doc), (std::vector<VyrEntity*>{c, orphan}));
}

TEST(VyrBaseDataDerived, ChangeAllVecteurXRenamesEveryCurvesX) {
    Doc d;
    VyrExperience* f = Experience(d.doc, "F");
    VyrCourbe* a = Curve(d.doc, d.e, "U", {1}, {1});
    VyrCourbe* b = Curve(d.doc, f, "I", {1}, {1});
    RecordingObserver obs;
    d.doc.AddObserver(&obs);
    d.doc.ChangeAllVecteurX("[x]", "m");
    for (VyrCourbe* c : {a, b}) {
        EXPECT_EQ(c->GetVx()->GetGrandeur(), "[x]");
        EXPECT_EQ(c->GetVx()->GetGrandeurForTable(), "x");
        EXPECT_EQ(c->GetVx()->GetUnite(), "m");
        EXPECT_NE(c->GetVy()->GetUnite(), "m");
    }
    EXPECT_TRUE(obs.messages.empty());
}

TEST(VyrBaseDataDerived, LoadingDropsVectorsNoCurveUses) {
    const wxString path = wxFileName::CreateTempFileName("vyrorphan");
    int orphanOid = 0;
    int usedOid = 0;
    {
        Doc d;
        VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2}, {10, 20});
        usedOid = c->GetVy()->GetOid();
        // Made last, so that it is the last vector the writer meets.
        VyrEntity* orphan =
            VyrBaseDataTestAccess::CreateEntity(d.doc, VYR_KIND_VECTEUR, d.doc.GetNewOid(), L"o");
        orphanOid = orphan->GetOid();
        ASSERT_TRUE(d.doc.Save(path));
    }
    // The orphan is in the file, so it is the load that drops it.
    wxString text;
    wxFFile file(path, "rb");
    ASSERT_TRUE(file.ReadAll(&text, wxMBConvUTF16LE()));
    file.Close();
    EXPECT_TRUE(text.Contains(wxString::Format("oid = %d", orphanOid)));
    VyrBaseData loaded(nullptr);
    ASSERT_TRUE(loaded.Load(path));
    wxRemoveFile(path);
    EXPECT_EQ(loaded.FindEntity(orphanOid), nullptr);
    ASSERT_NE(loaded.FindEntity(usedOid), nullptr);
    EXPECT_EQ(loaded.FindEntity(usedOid)->GetKind(), VYR_KIND_VECTEUR);
}
