#include <gtest/gtest.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrDeleteNoteCommand.h"
#include "vyrbase/data/VyrNote.h"

using namespace vyrtest;

TEST(VyrDeleteNoteCommand, IsUndoableAndNamedFromTheTranslationKey) {
    VyrDeleteNoteCommand cmd(nullptr, nullptr, nullptr);
    EXPECT_TRUE(cmd.CanUndo());
    EXPECT_EQ(cmd.GetName(), "IDS_MENU_SUPPRIMER");
    EXPECT_TRUE(cmd.Do());  // no note: nothing to do
    EXPECT_TRUE(cmd.Undo());
}

TEST(VyrDeleteNoteCommand, CurveNoteLeavesAndReturnsAtTheEndWithCode1) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* c = Curve(doc, e, "U", {1}, {1});
    VyrNote* n1 = doc.CreateNoteEntity();
    VyrNote* n2 = doc.CreateNoteEntity();
    c->AddNote(n1);
    c->AddNote(n2);
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrDeleteNoteCommand cmd(n1, c, doc.GetDiagram(0));
    EXPECT_EQ(cmd.GetNote(), n1);
    EXPECT_EQ(cmd.GetCourbe(), c);
    EXPECT_EQ(cmd.GetDiagram(), doc.GetDiagram(0));
    EXPECT_TRUE(cmd.Do());
    EXPECT_EQ(Items(c->GetNotes()), (std::vector<void*>{n2}));
    EXPECT_EQ(Detached(doc), (std::vector<VyrEntity*>{n1}));
    EXPECT_TRUE(cmd.Undo());
    EXPECT_EQ(Items(c->GetNotes()), (std::vector<void*>{n2, n1}));
    EXPECT_EQ(doc.GetEntityList().GetLast()->GetData(), n1);
    EXPECT_TRUE(Detached(doc).empty());
    ASSERT_EQ(obs.messages.size(), 2u);
    EXPECT_EQ(obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(obs.messages[0].param, c);
    EXPECT_EQ(obs.messages[1].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(obs.messages[1].param, c);
}

TEST(VyrDeleteNoteCommand, TitleNoteLeavesTheDiagramAndComesBack) {
    VyrBaseData doc(nullptr);
    VyrNote* title = doc.CreateNoteEntity();
    VyrDiagram* diagram = doc.GetDiagram(1);
    diagram->SetNoteTitre(title);
    RecordingObserver obs;
    doc.AddObserver(&obs);
    VyrDeleteNoteCommand cmd(title, nullptr, diagram);
    EXPECT_TRUE(cmd.Do());
    EXPECT_EQ(diagram->GetNoteTitre(), nullptr);
    EXPECT_TRUE(title->IsDeconnected());
    EXPECT_TRUE(cmd.Undo());
    EXPECT_EQ(diagram->GetNoteTitre(), title);
    EXPECT_FALSE(title->IsDeconnected());
    ASSERT_EQ(obs.messages.size(), 2u);
    EXPECT_EQ(obs.Codes(), (std::vector<int>{VYR_MSG_DATA_CHANGED, VYR_MSG_DATA_CHANGED}));
    EXPECT_EQ(obs.messages[0].param, nullptr);
    EXPECT_EQ(obs.messages[1].param, nullptr);
    diagram->SetNoteTitre(nullptr);
}

TEST(VyrDeleteNoteCommand, TitleWithoutDiagramOnlyDetaches) {
    VyrBaseData doc(nullptr);
    VyrNote* title = doc.CreateNoteEntity();
    VyrDeleteNoteCommand cmd(title, nullptr, nullptr);
    EXPECT_TRUE(cmd.Do());
    EXPECT_TRUE(title->IsDeconnected());
    EXPECT_TRUE(cmd.Undo());
    EXPECT_FALSE(title->IsDeconnected());
}

TEST(VyrDeleteNoteCommand, DestroyingTheCommandDeletesNothing) {
    VyrBaseData doc(nullptr);
    VyrNote* n = doc.CreateNoteEntity();
    n->SetText("kept");
    auto* cmd = new VyrDeleteNoteCommand(n, nullptr, doc.GetDiagram(0));
    cmd->Do();
    delete cmd;
    EXPECT_EQ(Detached(doc), (std::vector<VyrEntity*>{n}));
    EXPECT_EQ(n->GetText(), "kept");
}
