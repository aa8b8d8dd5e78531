#include <gtest/gtest.h>

#include "vyrbase/data/VyrCompteRendu.h"

TEST(VyrCompteRendu, ConstructedEmpty) {
    VyrCompteRendu r(2, nullptr);
    EXPECT_EQ(r.GetKind(), VYR_KIND_COMPTE_RENDU);
    EXPECT_TRUE(r.GetData().empty());
    EXPECT_TRUE(r.GetRtf().empty());
}

TEST(VyrCompteRendu, CopyKeepsDataAndRtf) {
    VyrCompteRendu r(2, nullptr);
    r.SetData("U00000010 AB");
    r.SetRtf("{\\rtf1 \"x\"}");
    VyrCompteRendu copy(r);
    EXPECT_EQ(copy.GetData(), "U00000010 AB");
    EXPECT_EQ(copy.GetRtf(), "{\\rtf1 \"x\"}");
}
