// The blend of stamped markers: Mul's rounding on all four bytes of a pixel at once.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "diagram/VyrPixelBlend.h"

using VyrPixelBlend::ColourShare;
using VyrPixelBlend::Mul;
using VyrPixelBlend::Over;

TEST(VyrPixelBlend, MulRoundsTheProductOverTwoHundredFiftyFiveToNearest) {
    EXPECT_EQ(Mul(255, 255), 255u);
    EXPECT_EQ(Mul(255, 0), 0u);
    EXPECT_EQ(Mul(0, 255), 0u);
    EXPECT_EQ(Mul(128, 255), 128u);
    EXPECT_EQ(Mul(128, 128), 64u);  // 64.25
    EXPECT_EQ(Mul(255, 128), 128u);
    EXPECT_EQ(Mul(1, 128), 1u);  // 0.502
    EXPECT_EQ(Mul(1, 127), 0u);  // 0.498
    for (unsigned a = 0; a < 256; ++a)
        EXPECT_EQ(Mul(a, 255), a);
}

// Every byte value under every cover, in each of the four places of the pixel, next to bytes
// that would carry into it if a lane overflowed: each byte is the colour's share plus
// Mul(byte, 255 - cover), and the others are untouched by it.
TEST(VyrPixelBlend, OverIsMulOfEachByteForEveryCoverAndByte) {
    const uint8_t colours[][4] = {
        {0, 0, 0, 255}, {255, 255, 255, 255}, {200, 0, 17, 255}, {1, 128, 254, 127}};
    int wrong = 0;
    for (const uint8_t* colour : colours) {
        for (unsigned cover = 1; cover <= 255; ++cover) {
            const uint32_t share = ColourShare(colour, cover);
            const unsigned keep = 255 - cover;
            for (unsigned p = 0; p < 256; ++p) {
                for (int place = 0; place < 4; ++place) {
                    for (uint8_t others : {uint8_t(0), uint8_t(255), uint8_t(p ^ 0x5A)}) {
                        uint8_t px[4] = {others, others, others, others};
                        px[place] = static_cast<uint8_t>(p);
                        uint8_t expected[4];
                        for (int c = 0; c < 4; ++c)
                            expected[c] =
                                static_cast<uint8_t>(Mul(colour[c], cover) + Mul(px[c], keep));
                        Over(px, keep, share);
                        if (std::memcmp(px, expected, 4) != 0)
                            ++wrong;
                    }
                }
            }
        }
    }
    EXPECT_EQ(wrong, 0);
}

// What lets the four bytes be added in one word: no byte's blend exceeds 255, for any colour,
// pixel and cover.
TEST(VyrPixelBlend, NoByteOfABlendExceedsOneByte) {
    int over = 0;
    for (unsigned cover = 0; cover <= 255; ++cover)
        for (unsigned c = 0; c < 256; ++c)
            for (unsigned p = 0; p < 256; ++p)
                over += Mul(c, cover) + Mul(p, 255 - cover) > 255;
    EXPECT_EQ(over, 0);
}

TEST(VyrPixelBlend, FullCoverWritesTheColourAndHalfCoverMixes) {
    const uint8_t colour[4] = {200, 10, 30, 255};
    uint8_t px[4] = {1, 2, 3, 4};
    Over(px, 0, ColourShare(colour, 255));
    EXPECT_EQ(std::memcmp(px, colour, 4), 0);

    uint8_t white[4] = {255, 255, 255, 255};
    Over(white, 127, ColourShare(colour, 128));
    EXPECT_EQ(white[0], 227);  // 100.4 + 126.9
    EXPECT_EQ(white[1], 132);  // 5.0 + 127.0
    EXPECT_EQ(white[2], 142);  // 15.1 + 127.0
    EXPECT_EQ(white[3], 255);
}

// Two pixels side by side blended at once are the bytes of two Overs, for every keep of either
// pixel over pixels of every byte value.
TEST(VyrPixelBlend, OverPairIsTwoOvers) {
    const uint8_t colour[4] = {17, 200, 90, 255};
    long compared = 0;
    for (uint32_t keep0 = 0; keep0 < 255; keep0 += 3) {
        for (uint32_t keep1 = 0; keep1 < 255; keep1 += 7) {
            const uint32_t share0 = ColourShare(colour, 255u - keep0);
            const uint32_t share1 = ColourShare(colour, 255u - keep1);
            for (uint32_t b = 0; b < 256; b += 5) {
                uint8_t pair[8], single[8];
                for (int k = 0; k < 8; ++k)
                    pair[k] = single[k] = static_cast<uint8_t>((b + 37 * k) & 0xFF);
                VyrPixelBlend::OverPair(pair, keep0, share0, keep1, share1);
                Over(single, keep0, share0);
                Over(single + 4, keep1, share1);
                ASSERT_EQ(std::memcmp(pair, single, 8), 0)
                    << "keeps " << keep0 << ", " << keep1 << ", byte " << b;
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 100000);
}
