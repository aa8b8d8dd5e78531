#include <gtest/gtest.h>

#include "FileTestSupport.h"
#include "file/VyrExperienceOwners.h"

using namespace filetest;

namespace {

VyrCourbe* AddCurve(VyrBaseData& doc, VyrExperience* e, const wchar_t* y) {
    VyrCourbeParam p;
    p.m_sNom = y;
    p.m_sGrdX = L"t";
    p.m_sUniteX = L"s";
    p.m_sGrdY = y;
    p.m_sUniteY = L"V";
    return doc.CreateCourbe(e, p, nullptr, false);
}

}  // namespace

// The writers take each curve's and vector's experiment from one walk: every answer must be the
// document's own search's, also where a curve sits in two experiments, a vector serves two
// curves of different experiments, or nothing holds an entity.
TEST(VyrExperienceOwners, AnswersAsTheDocumentsSearchesDo) {
    VyrBaseData doc(nullptr);
    VyrExperienceParam first(L"E1"), second(L"E2"), third(L"E3");
    VyrExperience* e1 = doc.CreateExperience(first);
    VyrExperience* e2 = doc.CreateExperience(second);
    VyrExperience* e3 = doc.CreateExperience(third);
    VyrCourbe* a = AddCurve(doc, e1, L"A");
    VyrCourbe* b = AddCurve(doc, e2, L"B");
    VyrCourbe* c = AddCurve(doc, e3, L"C");
    // A curve held by two experiments: the first in list order answers.
    e3->AddCourbe(b);
    // A vector used by curves of two experiments: the first experiment holding one answers.
    // (The document owns each curve and vector once: the sharing is undone before it goes.)
    VyrVecteur* ownVx = c->GetVx();
    c->SetVx(a->GetVx());
    // A curve that no experiment holds, with vectors of its own.
    VyrBaseDataTestAccess access(doc);
    auto* orphan = static_cast<VyrCourbe*>(access.CreateEntity(VYR_KIND_COURBE, 90, nullptr));
    auto* lone = static_cast<VyrVecteur*>(access.CreateEntity(VYR_KIND_VECTEUR, 91, nullptr));
    orphan->SetVy(lone);

    const VyrExperienceOwners owners(doc);
    EXPECT_EQ(e1, owners.OfCourbe(a));
    EXPECT_EQ(e2, owners.OfCourbe(b));
    EXPECT_EQ(e3, owners.OfCourbe(c));
    EXPECT_EQ(nullptr, owners.OfCourbe(orphan));
    EXPECT_EQ(e1, owners.OfVecteur(c->GetVx()));
    EXPECT_EQ(e3, owners.OfVecteur(c->GetVy()));
    EXPECT_EQ(nullptr, owners.OfVecteur(lone));
    EXPECT_EQ(nullptr, owners.OfVecteur(nullptr));
    for (VyrCourbe* curve : {a, b, c, orphan}) {
        EXPECT_EQ(doc.FindExperienceFromCourbe(curve), owners.OfCourbe(curve));
        for (VyrVecteur* v : {curve->GetVx(), curve->GetVy()}) {
            if (v) {
                EXPECT_EQ(doc.FindExperienceByVect(v), owners.OfVecteur(v));
            }
        }
    }
    e3->RemoveCourbe(b);
    c->SetVx(ownVx);
    orphan->SetVy(nullptr);
}

TEST(VyrExperienceOwners, EmptyDocumentHoldsNothing) {
    VyrBaseData doc(nullptr);
    const VyrExperienceOwners owners(doc);
    EXPECT_EQ(nullptr, owners.OfCourbe(nullptr));
    EXPECT_EQ(nullptr, owners.OfVecteur(nullptr));
}
