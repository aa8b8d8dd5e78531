#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "DataTestSupport.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrPalette.h"

namespace {

std::tuple<int, int, int> Rgb(const wxColour& c) {
    return std::make_tuple(c.Red(), c.Green(), c.Blue());
}

}  // namespace

TEST(VyrPaletteTest, FirstColoursAreDistinctAndNoneIsTheRedOfANewCurve) {
    std::set<std::tuple<int, int, int>> seen;
    for (int n = 0; n < VyrPalette::GetCount(); ++n) {
        const wxColour c = VyrPalette::GetColour(n);
        EXPECT_TRUE(seen.insert(Rgb(c)).second) << "colour " << n << " repeats";
        EXPECT_NE(Rgb(c), std::make_tuple(255, 0, 0));
    }
    EXPECT_EQ(VyrPalette::GetCount(), 7);
    EXPECT_EQ(Rgb(VyrPalette::GetColour(0)), std::make_tuple(213, 94, 0));
    EXPECT_EQ(Rgb(VyrPalette::GetColour(1)), std::make_tuple(0, 114, 178));
}

TEST(VyrPaletteTest, ColoursRepeatAfterTheCountAndNegativeIndexGivesTheFirst) {
    EXPECT_EQ(Rgb(VyrPalette::GetColour(VyrPalette::GetCount())), Rgb(VyrPalette::GetColour(0)));
    EXPECT_EQ(Rgb(VyrPalette::GetColour(VyrPalette::GetCount() + 2)),
              Rgb(VyrPalette::GetColour(2)));
    EXPECT_EQ(Rgb(VyrPalette::GetColour(-3)), Rgb(VyrPalette::GetColour(0)));
}

TEST(VyrPaletteTest, NextColourFollowsTheNumberOfCurvesOfTheDocument) {
    EXPECT_EQ(Rgb(VyrPalette::GetNextColour(nullptr)), Rgb(VyrPalette::GetColour(0)));
    VyrBaseData doc(nullptr);
    EXPECT_EQ(Rgb(VyrPalette::GetNextColour(&doc)), Rgb(VyrPalette::GetColour(0)));
    VyrExperienceParam ep(L"E");
    VyrExperience* e = doc.CreateExperience(ep);
    VyrCourbeParam p;
    p.m_sGrdX = L"t";
    p.m_sUniteX = L"s";
    p.m_sGrdY = L"U";
    p.m_sUniteY = L"V";
    ASSERT_NE(doc.CreateCourbe(e, p, nullptr, false), nullptr);
    EXPECT_EQ(Rgb(VyrPalette::GetNextColour(&doc)), Rgb(VyrPalette::GetColour(1)));
    p.m_sGrdY = L"I";
    p.m_sUniteY = L"A";
    ASSERT_NE(doc.CreateCourbe(e, p, nullptr, false), nullptr);
    EXPECT_EQ(Rgb(VyrPalette::GetNextColour(&doc)), Rgb(VyrPalette::GetColour(2)));
}
