#include <gtest/gtest.h>

#include "RecordTestSupport.h"
#include "vyrbase/data/VyrGrilleEntity.h"

using recordtest::LoadText;
using recordtest::SaveText;
using recordtest::Section;

TEST(VyrGrilleSection, GridIsWrittenWithItsDataOnItsOwnLine) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrGrilleEntity* grid = doc.GetGrilleEntity(true, nullptr);
    grid->SetVersion(7);
    grid->SetData("A1;B1\r\nA2;B2");
    const std::wstring text = SaveText(doc, dir);
    EXPECT_EQ(Section(text, L"[cellules]"),
              L"[cellules]\r\n\toid = " + std::to_wstring(grid->GetOid()) +
                  L"\r\n\tname = \"\"\r\n\tversion = 1\r\n\tdata = \"\r\nA1;B1\r\nA2;B2\"\r\n\r\n");
    // After the experiments, before the pictures.
    EXPECT_EQ(text.find(L"[cellules]"), text.size() - Section(text, L"[cellules]").size());
}

TEST(VyrGrilleSection, NoGridWritesNothing) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    EXPECT_EQ(SaveText(doc, dir).find(L"[cellules]"), std::wstring::npos);
}

TEST(VyrGrilleSection, DataLinesReadBackJoinedByCrLf) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    doc.GetGrilleEntity(true, nullptr)->SetData("l1\nl2\n\n\tl3\tl4");
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, SaveText(doc, dir)));
    VyrGrilleEntity* grid = back.GetGrilleEntity(false, nullptr);
    ASSERT_NE(grid, nullptr);
    // Kept: the line break that starts the value, "\r\n" between lines, blank lines and leading
    // tabs lost, a tab inside a line read as a line break.
    EXPECT_EQ(grid->GetData(), "\r\nl1\r\nl2\r\nl3\r\nl4");
    EXPECT_EQ(grid->GetVersion(), 1);
    // Stable from then on: a second trip gives the same text.
    VyrBaseData again(nullptr);
    ASSERT_TRUE(LoadText(again, dir, SaveText(back, dir, "second.vyr"), "second-load.vyr"));
    EXPECT_EQ(again.GetGrilleEntity(false, nullptr)->GetData(), grid->GetData());
}

TEST(VyrGrilleSection, ReaderTakesOidNameVersionAndData) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         L"[cellules]\r\n\toid = 40\r\n\tname = \"grille\"\r\n\tversion = 3\r\n"
                         L"\tdata = \"x\"\r\n"));
    VyrGrilleEntity* grid = doc.GetGrilleEntity(false, nullptr);
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->GetOid(), 40);
    EXPECT_EQ(grid->GetEntityName(), "grille");
    EXPECT_EQ(grid->GetVersion(), 3);
    EXPECT_EQ(grid->GetData(), "x");
}
