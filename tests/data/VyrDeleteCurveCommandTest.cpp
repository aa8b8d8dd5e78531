#include <gtest/gtest.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrDeleteCurveCommand.h"

using namespace vyrtest;

TEST(VyrDeleteCurveCommand, IsUndoableAndNamedFromTheTranslationKey) {
    VyrDeleteCurveCommand cmd(nullptr, nullptr);
    EXPECT_TRUE(cmd.CanUndo());
    EXPECT_EQ(cmd.GetName(), "IDS_MENU_SUPPRIMER");
    TranslationScope tr(std::map<std::string, std::string>{{"IDS_MENU_SUPPRIMER", "Supprimer"}});
    ASSERT_TRUE(tr.IsLoaded());
    VyrDeleteCurveCommand translated(nullptr, nullptr);
    EXPECT_EQ(translated.GetName(), "Supprimer");
}

TEST(VyrDeleteCurveCommand, DoDetachesUndoAttachesAtTheEndOfTheExperiment) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* a = Curve(doc, e, "A", {1}, {1});
    VyrCourbe* b = Curve(doc, e, "B", {1}, {1});
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrDeleteCurveCommand cmd(a, e);
    EXPECT_EQ(cmd.GetCourbe(), a);
    EXPECT_EQ(cmd.GetExperience(), e);
    EXPECT_TRUE(cmd.Do());
    EXPECT_EQ(Items(e->GetCourbes()), (std::vector<void*>{b}));
    EXPECT_TRUE(a->IsDeconnected());
    EXPECT_TRUE(cmd.Undo());
    EXPECT_EQ(Items(e->GetCourbes()), (std::vector<void*>{b, a}));
    EXPECT_FALSE(a->IsDeconnected());
    EXPECT_EQ(obs.Codes(),
              (std::vector<int>{VYR_MSG_CURVE_DECONNECTED, VYR_MSG_CURVE_RECONNECTED}));
}

TEST(VyrDeleteCurveCommand, WithoutExperienceOnlyDetaches) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* a = Curve(doc, e, "A", {1}, {1});
    VyrDeleteCurveCommand cmd(a, nullptr);
    EXPECT_TRUE(cmd.Do());
    EXPECT_TRUE(a->IsDeconnected());
    EXPECT_EQ(Items(e->GetCourbes()), (std::vector<void*>{a}));
    EXPECT_TRUE(cmd.Undo());
    EXPECT_FALSE(a->IsDeconnected());
    EXPECT_EQ(Items(e->GetCourbes()), (std::vector<void*>{a}));
}

TEST(VyrDeleteCurveCommand, CurveWithoutDocumentOrNullCurveIsHarmless) {
    VyrExperience e(1, nullptr);
    VyrCourbe loose(2, nullptr);
    e.AddCourbe(&loose);
    VyrDeleteCurveCommand cmd(&loose, &e);
    EXPECT_TRUE(cmd.Do());
    EXPECT_EQ(e.GetNbCourbe(), 0);
    EXPECT_TRUE(cmd.Undo());
    EXPECT_EQ(e.GetNbCourbe(), 1);
    VyrDeleteCurveCommand none(nullptr, nullptr);
    EXPECT_TRUE(none.Do());
    EXPECT_TRUE(none.Undo());
}

TEST(VyrDeleteCurveCommand, DestroyingTheCommandDeletesNothing) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* a = Curve(doc, e, "A", {1, 2}, {3, 4});
    auto* cmd = new VyrDeleteCurveCommand(a, e);
    cmd->Do();
    delete cmd;
    EXPECT_EQ(Detached(doc), (std::vector<VyrEntity*>{a, a->GetVx(), a->GetVy()}));
    EXPECT_EQ(a->GetVy()->GetVal(1), 4.0);
}
