#include <gtest/gtest.h>

#include "vyrbase/data/VyrCourbeParam.h"

TEST(VyrCourbeParam, DefaultsRedAndScaleYFromMinusOne) {
    VyrCourbeParam p;
    for (const wxString* text : {&p.m_sNom, &p.m_sNomVx, &p.m_sNomVy, &p.m_sUniteX, &p.m_sUniteY,
                                 &p.m_sGrdX, &p.m_sGrdY, &p.m_sText})
        EXPECT_TRUE(text->empty());
    EXPECT_EQ(p.m_colour, wxColour(255, 0, 0));
    EXPECT_EQ(p.m_scale.GetXmin(), 0.0);
    EXPECT_EQ(p.m_scale.GetXmax(), 1.0);
    EXPECT_EQ(p.m_scale.GetYmin(), -1.0);
    EXPECT_EQ(p.m_scale.GetYmax(), 1.0);
}
