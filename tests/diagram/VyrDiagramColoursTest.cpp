// Colours derived from the background and axis colours.
#include <gtest/gtest.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

struct Colours : ::testing::Test {
    VyrBaseData doc{nullptr};
    VyrDiagram& d = *doc.GetDiagram(0);
};

}  // namespace

TEST_F(Colours, LightDrawingOnWhite) {
    d.SetBackgroundColour(wxColour(255, 255, 255));
    d.SetAxisColour(wxColour(0, 0, 0));
    EXPECT_EQ(d.GetDisabledCurvesColour(), wxColour(185, 185, 185));
    wxColour first, second;
    d.GetGridColour(first, second);
    EXPECT_EQ(first, wxColour(235, 235, 235));
    EXPECT_EQ(second, wxColour(215, 215, 215));
    EXPECT_EQ(d.GetInnerColor(wxColour(0, 0, 0)), wxColour(229, 229, 229));
}

TEST_F(Colours, InnerColourMovesNineTenthsToWhite) {
    // 100 + int(139.5), 200 + int(49.5), 50 + int(184.5).
    EXPECT_EQ(d.GetInnerColor(wxColour(100, 200, 50)), wxColour(239, 249, 234));
    EXPECT_EQ(d.GetInnerColor(wxColour(255, 153, 0)), wxColour(255, 244, 229));
    EXPECT_EQ(d.GetInnerColor(wxColour(255, 255, 255)), wxColour(255, 255, 255));
    // Opaque whatever the alpha given.
    EXPECT_EQ(d.GetInnerColor(wxColour(0, 0, 0, 10)).Alpha(), 255);
}

TEST_F(Colours, LightDrawingClampsAtZero) {
    d.SetBackgroundColour(wxColour(60, 30, 10, 7));
    d.SetAxisColour(wxColour(0, 0, 0));
    EXPECT_EQ(d.GetDisabledCurvesColour(), wxColour(0, 0, 0));
    wxColour first, second;
    d.GetGridColour(first, second);
    EXPECT_EQ(first, wxColour(40, 10, 0));
    EXPECT_EQ(second, wxColour(20, 0, 0));
    EXPECT_EQ(first.Alpha(), 255);
}

TEST_F(Colours, DarkDrawingLightensAndClampsAt255) {
    d.SetBackgroundColour(wxColour(0, 100, 200));
    d.SetAxisColour(wxColour(255, 255, 255));
    EXPECT_EQ(d.GetDisabledCurvesColour(), wxColour(150, 250, 255));
    wxColour first, second;
    d.GetGridColour(first, second);
    EXPECT_EQ(first, wxColour(60, 160, 255));
    EXPECT_EQ(second, wxColour(90, 190, 255));
}

TEST_F(Colours, AnyAxisColourOtherThanBlackIsADarkDrawing) {
    d.SetBackgroundColour(wxColour(10, 10, 10));
    d.SetAxisColour(wxColour(0, 0, 1));
    EXPECT_EQ(d.GetDisabledCurvesColour(), wxColour(160, 160, 160));
}
