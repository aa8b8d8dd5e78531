#include <gtest/gtest.h>

#include "vyrbase/data/VyrUnit.h"

TEST(VyrUnit, DefaultsAndTypeRange) {
    VyrUnit u;
    EXPECT_TRUE(u.GetName().empty());
    for (int type = 0; type < 3; ++type) {
        EXPECT_EQ(u.GetMin(type), 0.0);
        EXPECT_EQ(u.GetMax(type), 1.0);
    }
    u.SetMin(2, -5.0);
    u.SetMax(2, 5.0);
    u.SetMin(3, 9.0);
    u.SetMax(-1, 9.0);
    EXPECT_EQ(u.GetMin(2), -5.0);
    EXPECT_EQ(u.GetMax(2), 5.0);
    EXPECT_EQ(u.GetMin(3), 0.0);
    EXPECT_EQ(u.GetMax(-1), 0.0);
    u.SetName("mV");
    VyrUnit copy(u);
    EXPECT_EQ(copy.GetName(), "mV");
    EXPECT_EQ(copy.GetMin(2), -5.0);
}
