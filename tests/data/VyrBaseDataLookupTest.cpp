#include <gtest/gtest.h>

#include "DataTestSupport.h"

using namespace vyrtest;

namespace {
// Two experiments: E with U(t) and I(t), F with U(t) again (same quantities, other experiment).
struct Doc {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
    VyrExperience* f = Experience(doc, "F");
    VyrCourbe* u = Curve(doc, e, "U", {1}, {2});
    VyrCourbe* i = Curve(doc, e, "I", {1}, {2});
    VyrCourbe* fu = Curve(doc, f, "U", {1}, {2});
};
}  // namespace

TEST(VyrBaseDataLookup, CurvesByNameAndOid) {
    Doc d;
    EXPECT_EQ(d.doc.FindCourbe(L"C_I_t"), d.i);
    EXPECT_EQ(d.doc.FindCourbe(L"C_U_t"), d.u);  // the first in list order
    EXPECT_EQ(d.doc.FindCourbe(L"c_i_t"), nullptr);
    EXPECT_EQ(d.doc.FindCourbe(nullptr), nullptr);
    EXPECT_EQ(d.doc.FindCourbeByOid(d.i->GetOid()), d.i);
    EXPECT_EQ(d.doc.FindCourbeByOid(d.i->GetVx()->GetOid()), nullptr);  // a vector, not a curve
    EXPECT_EQ(d.doc.FindCourbeByOid(-1), nullptr);
}

TEST(VyrBaseDataLookup, ExperimentsByNameOidAndCurve) {
    Doc d;
    EXPECT_EQ(d.doc.FindExperience(L"F"), d.f);
    EXPECT_EQ(d.doc.FindExperience(L"f"), nullptr);
    EXPECT_EQ(d.doc.FindExperience(nullptr), nullptr);
    EXPECT_EQ(d.doc.FindExperienceByOid(1), d.e);
    EXPECT_EQ(d.doc.FindExperienceByOid(d.u->GetOid()), nullptr);
    EXPECT_EQ(d.doc.FindExperienceFromCourbe(d.fu), d.f);
    EXPECT_EQ(d.doc.FindExperienceFromCourbe(d.i), d.e);
    EXPECT_EQ(d.doc.FindExperienceFromCourbe(nullptr), nullptr);
    VyrCourbe loose(500, nullptr);
    EXPECT_EQ(d.doc.FindExperienceFromCourbe(&loose), nullptr);
}

TEST(VyrBaseDataLookup, CurveByVectorTellsWhichAxis) {
    Doc d;
    bool isX = false;
    EXPECT_EQ(d.doc.FindCourbeByVect(d.i->GetVx(), &isX), d.i);
    EXPECT_TRUE(isX);
    EXPECT_EQ(d.doc.FindCourbeByVect(d.fu->GetVy(), &isX), d.fu);
    EXPECT_FALSE(isX);
    isX = true;
    VyrVecteur loose(600, nullptr);
    EXPECT_EQ(d.doc.FindCourbeByVect(&loose, &isX), nullptr);
    EXPECT_FALSE(isX);
    isX = true;
    EXPECT_EQ(d.doc.FindCourbeByVect(nullptr, &isX), nullptr);
    EXPECT_FALSE(isX);
    EXPECT_EQ(d.doc.FindCourbeByVect(d.u->GetVx(), nullptr), d.u);
}

TEST(VyrBaseDataLookup, ExperimentByVector) {
    Doc d;
    EXPECT_EQ(d.doc.FindExperienceByVect(d.fu->GetVx()), d.f);
    EXPECT_EQ(d.doc.FindExperienceByVect(d.i->GetVy()), d.e);
    EXPECT_EQ(d.doc.FindExperienceByVect(nullptr), nullptr);
    VyrVecteur loose(600, nullptr);
    EXPECT_EQ(d.doc.FindExperienceByVect(&loose), nullptr);
}

TEST(VyrBaseDataLookup, VectorAndCurvesByQuantity) {
    Doc d;
    EXPECT_EQ(d.doc.FindVector("t"), d.u->GetVx());
    EXPECT_EQ(d.doc.FindVector("I"), d.i->GetVy());
    EXPECT_EQ(d.doc.FindVector("i"), nullptr);
    EXPECT_EQ(d.doc.FindFirstCourbeByGrdY("U"), d.u);
    EXPECT_EQ(d.doc.FindFirstCourbeByGrdY("t"), nullptr);
    EXPECT_EQ(d.doc.FindFirstCourbeByGrdxUx("t", "s"), d.u);
    EXPECT_EQ(d.doc.FindFirstCourbeByGrdxUx("t", "ms"), nullptr);
    EXPECT_EQ(d.doc.FindFirstCourbeByGrdxUx("U", "V"), nullptr);
}

TEST(VyrBaseDataLookup, DetachedEntitiesAreNotFound) {
    Doc d;
    d.doc.DeconnectCurve(d.u);
    EXPECT_EQ(d.doc.FindCourbe(L"C_U_t"), d.fu);
    EXPECT_EQ(d.doc.FindCourbeByOid(d.u->GetOid()), nullptr);
    EXPECT_EQ(d.doc.FindCourbeByVect(d.u->GetVx(), nullptr), nullptr);
    EXPECT_EQ(d.doc.FindFirstCourbeByGrdY("U"), d.fu);
    EXPECT_EQ(d.doc.FindVector("t"), d.i->GetVx());
    d.doc.DeconnectExperience(d.e);
    EXPECT_EQ(d.doc.FindExperience(L"E"), nullptr);
    EXPECT_EQ(d.doc.FindExperienceFromCourbe(d.i), nullptr);
    EXPECT_EQ(d.doc.FindExperienceByVect(d.i->GetVx()), nullptr);
}
