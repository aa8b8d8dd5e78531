#include <gtest/gtest.h>

#include "vyrbase/data/VyrExperienceParam.h"

TEST(VyrExperienceParam, HoldsTheName) {
    VyrExperienceParam empty;
    EXPECT_TRUE(empty.m_sNom.empty());
    VyrExperienceParam named("Manip");
    EXPECT_EQ(named.m_sNom, "Manip");
}
