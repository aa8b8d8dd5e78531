#include <gtest/gtest.h>

#include <wx/intl.h>

#include "support/RecordingObserver.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
VyrCourbeParam Param(const wxString& grdY, const wxString& uniteY, const wxString& grdX,
                     const wxString& uniteX) {
    VyrCourbeParam p;
    p.m_sNom = "C_" + grdY;
    p.m_sNomVx = p.m_sNom + "VX";
    p.m_sNomVy = p.m_sNom + "VY";
    p.m_sGrdY = grdY;
    p.m_sUniteY = uniteY;
    p.m_sGrdX = grdX;
    p.m_sUniteX = uniteX;
    return p;
}

std::vector<int> Oids(const VyrListEntity& list) {
    std::vector<int> oids;
    for (auto* node = list.GetFirst(); node; node = node->GetNext())
        oids.push_back(node->GetData()->GetOid());
    return oids;
}
}  // namespace

TEST(VyrBaseDataCourbes, CreateExperienceNamesAppendsAndNotifies13) {
    VyrBaseData doc(nullptr);
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrExperienceParam p("Manip1");
    VyrExperience* e = doc.CreateExperience(p);
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(e->GetOid(), 1);
    EXPECT_EQ(e->GetEntityName(), "Manip1");
    EXPECT_EQ(doc.GetEntityList().GetLast()->GetData(), e);
    ASSERT_EQ(obs.messages.size(), 1u);
    EXPECT_EQ(obs.messages[0].code, VYR_MSG_EXPERIENCE_CREATED);
    EXPECT_EQ(obs.messages[0].param, e);
}

TEST(VyrBaseDataCourbes, CreateExperienceReturnsExistingSilently) {
    VyrBaseData doc(nullptr);
    VyrExperienceParam p("Manip1");
    VyrExperience* e = doc.CreateExperience(p);
    RecordingObserver obs;
    doc.AddObserver(&obs);
    EXPECT_EQ(doc.CreateExperience(p), e);
    EXPECT_TRUE(obs.messages.empty());
    VyrExperienceParam other("manip1");  // case counts
    EXPECT_NE(doc.CreateExperience(other), e);
    EXPECT_EQ(doc.GetEntityList().GetCount(), 2u);
}

TEST(VyrBaseDataCourbes, CreateCourbeMakesThreeConsecutiveOidsAndNotifies11) {
    VyrBaseData doc(nullptr);
    VyrExperienceParam ep("E");
    VyrExperience* e = doc.CreateExperience(ep);
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrCourbeParam p = Param("U", "V", "t", "s");
    p.m_sText = "note";
    p.m_colour = wxColour(0, 0, 255);
    p.m_iWidth = 3;
    p.m_iStylePoint = 4;
    p.m_iStyleLiaison = 5;
    p.m_scale.Set(-1, 2, -3, 4);
    bool created = false;
    VyrCourbe* c = doc.CreateCourbe(e, p, &created, true);
    ASSERT_NE(c, nullptr);
    EXPECT_TRUE(created);
    EXPECT_EQ(c->GetOid(), 2);
    EXPECT_EQ(c->GetVx()->GetOid(), 3);
    EXPECT_EQ(c->GetVy()->GetOid(), 4);
    EXPECT_EQ(Oids(doc.GetEntityList()), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(c->GetEntityName(), "C_U");
    EXPECT_EQ(c->GetVx()->GetEntityName(), "C_UVX");
    EXPECT_EQ(c->GetVy()->GetEntityName(), "C_UVY");
    EXPECT_EQ(c->GetVx()->GetGrandeur(), "t");
    EXPECT_EQ(c->GetVx()->GetUnite(), "s");
    EXPECT_EQ(c->GetVy()->GetGrandeur(), "U");
    EXPECT_EQ(c->GetVy()->GetUnite(), "V");
    EXPECT_EQ(c->GetText(), "note");
    EXPECT_EQ(c->GetColor(), wxColour(0, 0, 255));
    EXPECT_EQ(c->GetWidth(), 3);
    EXPECT_EQ(c->GetStylePoint(), 4);
    EXPECT_EQ(c->GetStyleLiaison(), 5);
    EXPECT_EQ(c->GetScale().GetXmin(), -1.0);
    EXPECT_EQ(c->GetScale().GetYmax(), 4.0);
    EXPECT_EQ(e->GetNbCourbe(), 1);
    EXPECT_EQ(obs.Codes(), (std::vector<int>{VYR_MSG_CURVE_CREATED}));
    EXPECT_EQ(obs.messages[0].param, c);
}
