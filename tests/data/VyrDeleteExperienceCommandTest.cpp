#include <gtest/gtest.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrDeleteExperienceCommand.h"

using namespace vyrtest;

TEST(VyrDeleteExperienceCommand, IsUndoableAndNamedFromTheTranslationKey) {
    VyrDeleteExperienceCommand cmd(nullptr);
    EXPECT_TRUE(cmd.CanUndo());
    EXPECT_EQ(cmd.GetName(), "IDS_MENU_SUPPRIMER");
    EXPECT_EQ(cmd.GetExperience(), nullptr);
    EXPECT_TRUE(cmd.Do());
    EXPECT_TRUE(cmd.Undo());
}

TEST(VyrDeleteExperienceCommand, DoDetachesWithCodesUndoAttachesWithout6) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* a = Curve(doc, e, "A", {1}, {1});
    VyrCourbe* b = Curve(doc, e, "B", {1}, {1});
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrDeleteExperienceCommand cmd(e);
    EXPECT_TRUE(cmd.Do());
    EXPECT_TRUE(doc.GetEntityList().IsEmpty());
    EXPECT_EQ(Items(e->GetCourbes()), (std::vector<void*>{a, b}));
    EXPECT_TRUE(cmd.Undo());
    EXPECT_EQ(doc.GetEntityList().GetCount(), 7u);
    EXPECT_EQ(obs.Codes(), (std::vector<int>{7, 7, 6, 5, 5}));
    EXPECT_EQ(obs.messages[2].param, e);
}

TEST(VyrDeleteExperienceCommand, DestroyingTheCommandDeletesNothing) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    auto* cmd = new VyrDeleteExperienceCommand(e);
    cmd->Do();
    delete cmd;
    EXPECT_EQ(Detached(doc), (std::vector<VyrEntity*>{e}));
    EXPECT_EQ(e->GetEntityName(), "E");
}
