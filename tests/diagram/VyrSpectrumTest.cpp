#include <gtest/gtest.h>

#include "vyrbase/diagram/VyrDiagram.h"

namespace {

const wxColour kTransparentBlack(0, 0, 0, wxALPHA_TRANSPARENT);
const wxColour kOpaqueBlack(0, 0, 0, wxALPHA_OPAQUE);

bool SameRgba(const wxColour& a, const wxColour& b) {
    return a.Red() == b.Red() && a.Green() == b.Green() && a.Blue() == b.Blue() &&
           a.Alpha() == b.Alpha();
}

}  // namespace

TEST(VyrSpectrum, OutsideTheVisibleRangeIsTransparentBlackUnlessBlackOutside) {
    for (int nm : {379, 780, 0, 1000, 2000}) {
        EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(nm, 100.0, false), kTransparentBlack))
            << nm;
        EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(nm, 100.0, true), kOpaqueBlack)) << nm;
    }
}

TEST(VyrSpectrum, BeyondZeroToTwoThousandIsOpaqueBlack) {
    for (int nm : {-1, 2001, -100000, 1000000}) {
        EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(nm, 100.0, false), kOpaqueBlack)) << nm;
        EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(nm, 100.0, true), kOpaqueBlack)) << nm;
    }
}

TEST(VyrSpectrum, FallOffIsOneUpTo700AndStartsAt701) {
    // 700: R = 1, factor 1.0: 255.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(700, 100.0, false), wxColour(255, 0, 0)));
    // 701: factor 0.3 + 0.7 x 79 / 80 = 0.99125; 0.99125^0.8 = 0.99299; x 255 + 0.5 = 253.71.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(701, 100.0, false), wxColour(253, 0, 0)));
    // 779: factor 0.3 + 0.7 / 80 = 0.30875; ^0.8 = 0.39028; x 255 + 0.5 = 100.02.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(779, 100.0, false), wxColour(100, 0, 0)));
}

TEST(VyrSpectrum, BandsOfTheVisibleRange) {
    // 380: R = 1, B = 1, factor 0.3; 0.3^0.8 = 0.38168 -> 97.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(380, 100.0, false), wxColour(97, 0, 97)));
    // 440: G = 0, B = 1.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(440, 100.0, false), wxColour(0, 0, 255)));
    // 500: G = 1, B = 0.5; 0.5^0.8 = 0.57435 -> 146.96 -> 146.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(500, 100.0, false), wxColour(0, 255, 146)));
    // 545: R = 0.5, G = 1.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(545, 100.0, false), wxColour(146, 255, 0)));
    // 612: R = 1, G = 33 / 65 = 0.50769; ^0.8 = 0.58138 -> 148.75 -> 148.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(612, 100.0, false), wxColour(255, 148, 0)));
}

TEST(VyrSpectrum, IntensityScalesTheBytesAndKeepsTheirLowEightBits) {
    // 253 x 50 / 100 = 126.5 -> 126.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(701, 50.0, false), wxColour(126, 0, 0)));
    // 255 x 2 = 510 -> low 8 bits 254; 0 stays 0.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(700, 200.0, false), wxColour(254, 0, 0)));
    // -255 -> low 8 bits 1.
    EXPECT_TRUE(SameRgba(VyrDiagram::WaveLengthToRGB(700, -100.0, false), wxColour(1, 0, 0)));
}
