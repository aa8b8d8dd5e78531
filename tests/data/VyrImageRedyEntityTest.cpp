#include <gtest/gtest.h>

#include "vyrbase/data/VyrImageRedyEntity.h"

TEST(VyrImageRedyEntity, ConstructedWithoutPicture) {
    VyrImageRedyEntity i(6, nullptr);
    EXPECT_EQ(i.GetKind(), VYR_KIND_IMAGE_REDY);
    EXPECT_EQ(i.GetExperienceOid(), 0);
    EXPECT_EQ(i.GetPosition(), 0);
    EXPECT_EQ(i.GetEncoding(), 0);
    EXPECT_FALSE(i.GetImage().IsOk());
}

TEST(VyrImageRedyEntity, CopyKeepsEveryField) {
    VyrImageRedyEntity i(6, nullptr);
    i.SetEntityName(L"photo");
    i.SetExperienceOid(2);
    i.SetPosition(3);
    i.SetEncoding(4);
    i.SetImage(wxImage(5, 7));
    VyrImageRedyEntity copy(i);
    EXPECT_EQ(copy.GetEntityName(), "photo");
    EXPECT_EQ(copy.GetExperienceOid(), 2);
    EXPECT_EQ(copy.GetPosition(), 3);
    EXPECT_EQ(copy.GetEncoding(), 4);
    ASSERT_TRUE(copy.GetImage().IsOk());
    EXPECT_EQ(copy.GetImage().GetWidth(), 5);
    EXPECT_EQ(copy.GetImage().GetHeight(), 7);
}
