#include <gtest/gtest.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/diagram/VyrDiagram.h"

TEST(VyrBaseDataDiagramTitle, TitleGoesToTheDiagramOfItsSlot) {
    VyrBaseData doc(nullptr);
    VyrNote* note = doc.CreateNoteEntity();
    EXPECT_EQ(doc.GetDiagramTitle(0), nullptr);
    EXPECT_EQ(doc.GetDiagramTitle(1), nullptr);
    doc.SetDiagramTitle(1, note);
    EXPECT_EQ(doc.GetDiagramTitle(1), note);
    EXPECT_EQ(doc.GetDiagram(1)->GetNoteTitre(), note);
    EXPECT_EQ(doc.GetDiagramTitle(0), nullptr);
    doc.SetDiagramTitle(1, nullptr);
    EXPECT_EQ(doc.GetDiagram(1)->GetNoteTitre(), nullptr);
}

TEST(VyrBaseDataDiagramTitle, SlotsOutsideZeroAndOneAreIgnored) {
    VyrBaseData doc(nullptr);
    VyrNote* note = doc.CreateNoteEntity();
    doc.SetDiagramTitle(2, note);
    doc.SetDiagramTitle(-1, note);
    EXPECT_EQ(doc.GetDiagramTitle(2), nullptr);
    EXPECT_EQ(doc.GetDiagramTitle(-1), nullptr);
    EXPECT_EQ(doc.GetDiagramTitle(0), nullptr);
    EXPECT_EQ(doc.GetDiagramTitle(1), nullptr);
}
