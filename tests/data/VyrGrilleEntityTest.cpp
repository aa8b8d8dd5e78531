#include <gtest/gtest.h>

#include "vyrbase/data/VyrGrilleEntity.h"

TEST(VyrGrilleEntity, ConstructedWithVersionOneAndNoData) {
    VyrGrilleEntity g(3, nullptr);
    EXPECT_EQ(g.GetKind(), VYR_KIND_GRILLE);
    EXPECT_EQ(g.GetOid(), 3);
    EXPECT_EQ(g.GetVersion(), 1);
    EXPECT_TRUE(g.GetData().empty());
}

TEST(VyrGrilleEntity, CopyKeepsVersionAndData) {
    VyrGrilleEntity g(3, nullptr);
    g.SetVersion(4);
    g.SetData("a\r\nb");
    VyrGrilleEntity copy(g);
    EXPECT_EQ(copy.GetVersion(), 4);
    EXPECT_EQ(copy.GetData(), "a\r\nb");
    VyrGrilleEntity other(8, nullptr);
    other = g;
    EXPECT_EQ(other.GetOid(), 3);
    EXPECT_EQ(other.GetData(), "a\r\nb");
}
