#include <gtest/gtest.h>

#include "vyrbase/data/VyrImageEntity.h"

TEST(VyrImageEntity, ConstructedDefaults) {
    VyrImageEntity i(6, nullptr);
    EXPECT_EQ(i.GetKind(), VYR_KIND_IMAGE);
    EXPECT_TRUE(i.GetCurve().empty());
    EXPECT_EQ(i.GetPointIndex(), -1);
    EXPECT_EQ(i.GetPosX(), 0.0);
    EXPECT_EQ(i.GetPosY(), 0.0);
    EXPECT_TRUE(i.IsVisible());
    EXPECT_EQ(i.GetPosition(), 0);
    EXPECT_FALSE(i.GetImage().IsOk());
}

TEST(VyrImageEntity, CopyKeepsEveryField) {
    VyrImageEntity i(6, nullptr);
    i.SetCurve("U(t)");
    i.SetPointIndex(4);
    i.SetPos(1.5, -2.5);
    i.SetVisible(false);
    i.SetPosition(2);
    i.SetImage(wxImage(3, 3));
    VyrImageEntity copy(9, nullptr);
    copy = i;
    EXPECT_EQ(copy.GetCurve(), "U(t)");
    EXPECT_EQ(copy.GetPointIndex(), 4);
    EXPECT_EQ(copy.GetPosX(), 1.5);
    EXPECT_EQ(copy.GetPosY(), -2.5);
    EXPECT_FALSE(copy.IsVisible());
    EXPECT_EQ(copy.GetPosition(), 2);
    EXPECT_TRUE(copy.GetImage().IsOk());
}
