#include <gtest/gtest.h>

#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeChangeParam.h"

TEST(VyrCourbeChangeParam, SecondAndThirdTextsOfEachGroupAreExchanged) {
    VyrCourbe c(1, nullptr);
    VyrCourbeChangeParam p(&c, true, false, "a1", "a2", "a3", "a4", false, true, "b1", "b2", "b3",
                           "b4");
    EXPECT_EQ(p.GetCourbe(), &c);
    EXPECT_TRUE(p.GetFlag(0));
    EXPECT_FALSE(p.GetFlag(1));
    EXPECT_FALSE(p.GetFlag(2));
    EXPECT_TRUE(p.GetFlag(3));
    EXPECT_FALSE(p.GetFlag(4));
    EXPECT_FALSE(p.GetFlag(-1));
    EXPECT_EQ(p.GetText(0, 0), "a1");
    EXPECT_EQ(p.GetText(0, 1), "a3");
    EXPECT_EQ(p.GetText(0, 2), "a2");
    EXPECT_EQ(p.GetText(0, 3), "a4");
    EXPECT_EQ(p.GetText(1, 0), "b1");
    EXPECT_EQ(p.GetText(1, 1), "b3");
    EXPECT_EQ(p.GetText(1, 2), "b2");
    EXPECT_EQ(p.GetText(1, 3), "b4");
    EXPECT_TRUE(p.GetText(2, 0).empty());
    EXPECT_TRUE(p.GetText(0, 4).empty());
    EXPECT_TRUE(p.GetText(-1, 0).empty());
}

TEST(VyrCourbeChangeParam, CounterCountsEveryConstructionAndNeverDecreases) {
    const int before = VyrCourbeChangeParam::m_iNum;
    {
        VyrCourbeChangeParam a(nullptr, false, false, "", "", "", "", false, false, "", "", "", "");
        EXPECT_EQ(VyrCourbeChangeParam::m_iNum, before + 1);
        VyrCourbeChangeParam b(a);
        EXPECT_EQ(VyrCourbeChangeParam::m_iNum, before + 2);
        EXPECT_EQ(b.GetText(0, 0), a.GetText(0, 0));
        b = a;
        EXPECT_EQ(VyrCourbeChangeParam::m_iNum, before + 2);
    }
    EXPECT_EQ(VyrCourbeChangeParam::m_iNum, before + 2);
}
