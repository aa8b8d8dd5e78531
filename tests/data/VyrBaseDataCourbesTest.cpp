#include <gtest/gtest.h>

#include <wx/intl.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

using namespace vyrtest;

namespace {
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
    p.m_sNom = "C_U";
    p.m_sNomVx = "C_UVX";
    p.m_sNomVy = "C_UVY";
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

TEST(VyrBaseDataCourbes, CreateCourbeWithNullExperienceGivesNull) {
    VyrBaseData doc(nullptr);
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrCourbeParam p = Param("U", "V", "t", "s");
    bool created = true;
    EXPECT_EQ(doc.CreateCourbe(nullptr, p, &created, true), nullptr);
    EXPECT_TRUE(created);  // untouched
    EXPECT_TRUE(doc.GetEntityList().IsEmpty());
    EXPECT_TRUE(obs.messages.empty());
    EXPECT_EQ(doc.GetNewOid(), 1);
}

TEST(VyrBaseDataCourbes, SameQuantitiesTwiceReusesTheCurveEmptiedAndSends11BothTimes) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrCourbeParam p = Param("U", "V", "t", "s");
    bool created = false;
    VyrCourbe* c = doc.CreateCourbe(e, p, &created, false);
    ASSERT_TRUE(created);
    doc.AddPoint(c, 1.0, 2.0, false);
    doc.AddPoint(c, 2.0, 3.0, false);
    c->GetVy()->ValidateAt(1, false);
    VyrNote* note = doc.CreateNoteEntity();
    c->AddNote(note);
    c->SetUserValue(4.5);
    const size_t entities = doc.GetEntityList().GetCount();
    p.m_sText = "second";
    p.m_iWidth = 2;
    VyrCourbe* again = doc.CreateCourbe(e, p, &created, false);
    EXPECT_EQ(again, c);
    EXPECT_FALSE(created);
    EXPECT_EQ(c->GetVx()->GetSize(), 0);
    EXPECT_EQ(c->GetVy()->GetSize(), 0);
    EXPECT_EQ(c->GetNotesCount(), 0);                         // notes deleted
    EXPECT_EQ(doc.GetEntityList().GetCount(), entities - 1);  // the note is gone
    EXPECT_EQ(c->GetText(), "second");
    EXPECT_EQ(c->GetWidth(), 2);
    EXPECT_EQ(c->GetUserValue(), 0.0);
    EXPECT_EQ(e->GetNbCourbe(), 1);
    // The emptied vectors keep their masks: the invalid mark comes back with the points.
    doc.AddPoint(c, 1.0, 1.0, false);
    doc.AddPoint(c, 2.0, 2.0, false);
    EXPECT_FALSE(c->GetVy()->IsValidAt(1));
    ASSERT_EQ(obs.messages.size(), 2u);
    EXPECT_EQ(obs.messages[0].code, VYR_MSG_CURVE_CREATED);
    EXPECT_EQ(obs.messages[0].param, c);
    EXPECT_EQ(obs.messages[1].code, VYR_MSG_CURVE_CREATED);
    EXPECT_EQ(obs.messages[1].param, c);
}

TEST(VyrBaseDataCourbes, ReuseWithNotifySendsDataChangedNullThen11) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbeParam p = Param("U", "V", "t", "s");
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, true);
    RecordingObserver obs;
    doc.AddObserver(&obs);
    EXPECT_EQ(doc.CreateCourbe(e, p, nullptr, true), c);
    ASSERT_EQ(obs.messages.size(), 2u);
    EXPECT_EQ(obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(obs.messages[0].param, nullptr);
    EXPECT_EQ(obs.messages[1].code, VYR_MSG_CURVE_CREATED);
    EXPECT_EQ(obs.messages[1].param, c);
}

TEST(VyrBaseDataCourbes, NewCurveNeverSends1EvenWhenAsked) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrCourbeParam p = Param("U", "V", "t", "s");
    doc.CreateCourbe(e, p, nullptr, true);
    EXPECT_EQ(obs.Codes(), (std::vector<int>{VYR_MSG_CURVE_CREATED}));
}

TEST(VyrBaseDataCourbes, DifferentUnitMakesANewCurve) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbeParam p = Param("U", "V", "t", "s");
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    p.m_sUniteY = "mV";
    bool created = false;
    EXPECT_NE(doc.CreateCourbe(e, p, &created, false), c);
    EXPECT_TRUE(created);
    EXPECT_EQ(e->GetNbCourbe(), 2);
}

TEST(VyrBaseDataCourbes, CreateCourbeStylesFollowToTheSister) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbeParam p = Param("U", "V", "t", "s");
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    VyrCourbe sister(99, nullptr);
    c->SetCourbeSoeur(&sister);
    p.m_colour = wxColour(0, 128, 0);
    p.m_iStyleLiaison = 7;
    doc.CreateCourbe(e, p, nullptr, false);
    EXPECT_EQ(sister.GetColor(), wxColour(0, 128, 0));
    EXPECT_EQ(sister.GetStyleLiaison(), 7);
    c->SetCourbeSoeur(nullptr);
}

TEST(VyrBaseDataCourbes, GenerateExperienceNameUsesOneMoreThanTheLargest) {
    TranslationScope tr({{"IDS_EXPERIENCE", "E"}, {"IDS_MANIPULATION", "Manip"}});
    ASSERT_TRUE(tr.IsLoaded());
    VyrBaseData doc(nullptr);
    Experience(doc, "E1");
    Experience(doc, "E7");
    Experience(doc, "Ex");
    EXPECT_EQ(doc.GenerateExperienceName("", false), "E8");
    EXPECT_EQ(doc.GenerateExperienceName("", true), "Manip1");
    Experience(doc, "Manip3");
    EXPECT_EQ(doc.GenerateExperienceName("", true), "Manip4");
}

TEST(VyrBaseDataCourbes, GenerateExperienceNameFallsBackToTheKey) {
    VyrBaseData doc(nullptr);
    EXPECT_EQ(doc.GenerateExperienceName("", false), "IDS_EXPERIENCE1");
    EXPECT_EQ(doc.GenerateExperienceName("", true), "IDS_MANIPULATION1");
    Experience(doc, "IDS_EXPERIENCE2");
    EXPECT_EQ(doc.GenerateExperienceName("", false), "IDS_EXPERIENCE3");
}

TEST(VyrBaseDataCourbes, GenerateExperienceNameWithPrefixIgnoresNonNumbers) {
    VyrBaseData doc(nullptr);
    Experience(doc, "Run");
    Experience(doc, "Run2b");
    Experience(doc, "Run12");
    Experience(doc, "run40");                    // case counts
    Experience(doc, "Run99999999999999999999");  // not an int
    EXPECT_EQ(doc.GenerateExperienceName("Run", false), "Run13");
    EXPECT_EQ(doc.GenerateExperienceName("Other", true), "Other1");
}

TEST(VyrBaseDataCourbes, UniqueGrandeurCountsUpWhileTaken) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    EXPECT_EQ(VyrBaseData::GetUniqueGrandeur(e, "U", "V", "t", "s"), "U");
    VyrCourbeParam p = Param("U", "V", "t", "s");
    doc.CreateCourbe(e, p, nullptr, false);
    EXPECT_EQ(VyrBaseData::GetUniqueGrandeur(e, "U", "V", "t", "s"), "U1");
    p = Param("U1", "V", "t", "s");
    doc.CreateCourbe(e, p, nullptr, false);
    EXPECT_EQ(VyrBaseData::GetUniqueGrandeur(e, "U", "V", "t", "s"), "U2");
    EXPECT_EQ(VyrBaseData::GetUniqueGrandeur(e, "U", "mV", "t", "s"), "U");
    EXPECT_EQ(VyrBaseData::GetUniqueGrandeur(nullptr, "U", "V", "t", "s"), "U");
}

TEST(VyrBaseDataCourbes, CreateVariableEntityReusesByName) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrVariable* a = doc.CreateVariableEntity(e, "a");
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->GetOid(), 2);
    EXPECT_EQ(a->GetEntityName(), "a");
    EXPECT_EQ(doc.CreateVariableEntity(e, "a"), a);
    VyrVariable* b = doc.CreateVariableEntity(e, "A");
    EXPECT_NE(b, a);
    EXPECT_EQ(e->GetNbVariable(), 2);
    EXPECT_EQ(Oids(doc.GetEntityList()), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(doc.CreateVariableEntity(nullptr, "a"), nullptr);
}

TEST(VyrBaseDataCourbes, DeleteVariableFindsItsExperience) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrExperience* other = Experience(doc, "F");
    VyrVariable* a = doc.CreateVariableEntity(e, "a");
    VyrVariable* b = doc.CreateVariableEntity(e, "b");
    doc.DeleteVariable(a, nullptr);
    EXPECT_EQ(e->GetNbVariable(), 1);
    EXPECT_EQ(doc.FindEntity(2 + 1), nullptr);
    // A wrong experiment is only a hint: the one that holds the variable loses it.
    doc.DeleteVariable(b, other);
    EXPECT_EQ(e->GetNbVariable(), 0);
    EXPECT_EQ(Oids(doc.GetEntityList()), (std::vector<int>{1, 2}));
    doc.DeleteVariable(nullptr, e);
}

TEST(VyrBaseDataCourbes, DeleteVariableKeepsADetachedOneAlive) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrVariable* a = doc.CreateVariableEntity(e, "a");
    doc.DeconnectEntity(a);
    doc.DeleteVariable(a, e);
    EXPECT_EQ(e->GetNbVariable(), 0);
    ASSERT_EQ(doc.GetDeconnectedEntities().GetCount(), 1u);
    EXPECT_EQ(doc.GetDeconnectedEntities()[0], a);
    EXPECT_EQ(a->GetEntityName(), "a");
}

TEST(VyrBaseDataCourbes, DeleteAllVariablesEmptiesTheExperiment) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    doc.CreateVariableEntity(e, "a");
    doc.CreateVariableEntity(e, "b");
    doc.CreateVariableEntity(e, "c");
    doc.DeleteAllVariables(e);
    EXPECT_EQ(e->GetNbVariable(), 0);
    EXPECT_EQ(Oids(doc.GetEntityList()), (std::vector<int>{1}));
    doc.DeleteAllVariables(nullptr);
}
