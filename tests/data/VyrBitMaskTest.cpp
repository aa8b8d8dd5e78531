#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <vector>

#include "vyrbase/data/VyrBitMask.h"

TEST(VyrBitMask, DefaultHoldsNoBytesAndEveryBitReadsSet) {
    VyrBitMask m;
    EXPECT_EQ(m.GetSize(), 0);
    EXPECT_TRUE(m.IsSet(0));
    EXPECT_TRUE(m.IsSet(1000));
}

TEST(VyrBitMask, SizedConstructorHoldsBitsOver8PlusOneZeroBytes) {
    VyrBitMask m(16);
    EXPECT_EQ(m.GetSize(), 3);
    for (int k = 0; k < 3; ++k)
        EXPECT_EQ(m.GetOctetAt(k), 0);
    EXPECT_TRUE(m.IsSet(5));
}

TEST(VyrBitMask, StoredSenseIsInvertedUnsetStoresOne) {
    VyrBitMask m;
    m.Unset(3);
    EXPECT_FALSE(m.IsSet(3));
    EXPECT_EQ(m.GetOctetAt(0), 0x08);
    m.Unset(9);
    EXPECT_EQ(m.GetOctetAt(1), 0x02);
    m.Set(3);
    EXPECT_TRUE(m.IsSet(3));
    EXPECT_EQ(m.GetOctetAt(0), 0x00);
    EXPECT_FALSE(m.IsSet(9));
}

TEST(VyrBitMask, SetAndUnsetGrowToHoldTheBit) {
    VyrBitMask m;
    m.Set(20);
    EXPECT_EQ(m.GetSize(), 3);  // SetSize(21): 21/8 + 1
    m.Unset(40);
    EXPECT_EQ(m.GetSize(), 6);  // SetSize(41): 41/8 + 1
    EXPECT_FALSE(m.IsSet(40));
    EXPECT_TRUE(m.IsSet(20));
}

TEST(VyrBitMask, SetSizeNeverShrinksAlsoNotForZero) {
    VyrBitMask m;
    m.Unset(30);
    ASSERT_EQ(m.GetSize(), 4);
    m.SetSize(0);
    EXPECT_EQ(m.GetSize(), 4);
    EXPECT_FALSE(m.IsSet(30));
    m.SetSize(8);
    EXPECT_EQ(m.GetSize(), 4);
    VyrBitMask empty;
    empty.SetSize(0);  // 0/8 + 1: an empty mask takes one byte
    EXPECT_EQ(empty.GetSize(), 1);
}

TEST(VyrBitMask, GrowingKeepsOldBytesAndAddsValidOnes) {
    VyrBitMask m;
    m.Unset(2);
    m.SetSize(100);
    EXPECT_EQ(m.GetSize(), 13);
    EXPECT_FALSE(m.IsSet(2));
    for (int i = 3; i < 104; ++i)
        EXPECT_TRUE(m.IsSet(i)) << i;
}

TEST(VyrBitMask, InvertFlipsAndAnswersNewState) {
    VyrBitMask m;
    EXPECT_FALSE(m.Invert(12));
    EXPECT_FALSE(m.IsSet(12));
    EXPECT_TRUE(m.Invert(12));
    EXPECT_TRUE(m.IsSet(12));
    EXPECT_EQ(m.GetSize(), 2);
}

TEST(VyrBitMask, SetBitsGrowsToCountPlusOneAndStoresLowBytes) {
    VyrBitMask m;
    int octets[] = {0x1FF, 0x02, 0x80};
    m.SetBits(3, octets);
    EXPECT_EQ(m.GetSize(), 4);
    EXPECT_EQ(m.GetOctetAt(0), 0xFF);
    EXPECT_EQ(m.GetOctetAt(1), 0x02);
    EXPECT_EQ(m.GetOctetAt(2), 0x80);
    EXPECT_EQ(m.GetOctetAt(3), 0x00);
    EXPECT_FALSE(m.IsSet(0));
    EXPECT_FALSE(m.IsSet(9));
    EXPECT_TRUE(m.IsSet(8));
    EXPECT_FALSE(m.IsSet(23));
    // A larger mask is not shrunk.
    VyrBitMask big(80);
    int one[] = {1};
    big.SetBits(1, one);
    EXPECT_EQ(big.GetSize(), 11);
    EXPECT_EQ(big[0], 1);
}

TEST(VyrBitMask, SetOctetAtGrowsFirst) {
    VyrBitMask m;
    m.SetOctetAt(4, 0xF0);
    EXPECT_EQ(m.GetSize(), 5);
    EXPECT_EQ(m.GetOctetAt(4), 0xF0);
    EXPECT_EQ(m[4], 0xF0);
    EXPECT_FALSE(m.IsSet(39));
    EXPECT_TRUE(m.IsSet(35));
}

TEST(VyrBitMask, CopyAndAssignmentAreDeep) {
    VyrBitMask a;
    a.Unset(5);
    VyrBitMask b(a);
    VyrBitMask c(64);
    c = a;
    a.Set(5);
    EXPECT_FALSE(b.IsSet(5));
    EXPECT_FALSE(c.IsSet(5));
    EXPECT_EQ(c.GetSize(), 1);  // assignment takes the source's bytes exactly
    c = c;
    EXPECT_FALSE(c.IsSet(5));
}

TEST(VyrBitMask, BadIndicesAreIgnored) {
    VyrBitMask m;
    m.Set(-1);
    m.Unset(-8);
    m.SetOctetAt(-1, 7);
    m.SetBits(-3, nullptr);
    m.SetSize(-5);
    EXPECT_EQ(m.GetSize(), 0);
    EXPECT_FALSE(m.IsSet(-1));
    EXPECT_EQ(m.GetOctetAt(-1), 0);
    EXPECT_EQ(m.GetOctetAt(3), 0);
    m.SetBits(2, nullptr);  // grows, writes nothing
    EXPECT_EQ(m.GetSize(), 3);
}

namespace {
// Bit-by-bit references for the byte-wise shifts.
std::vector<bool> Bits(const VyrBitMask& m, int n) {
    std::vector<bool> bits;
    for (int i = 0; i < n; ++i)
        bits.push_back(m.IsSet(i));
    return bits;
}
}  // namespace

TEST(VyrBitMask, ShiftsMatchBitByBitMovesOverRandomRanges) {
    std::mt19937 rng(3);
    for (int round = 0; round < 2000; ++round) {
        const int n = 1 + static_cast<int>(rng() % 70);
        VyrBitMask m(n);
        for (int i = 0; i < n; ++i)
            if (rng() % 2)
                m.Unset(i);
        const int first = static_cast<int>(rng() % n);
        const int end = first + 1 + static_cast<int>(rng() % (n - first));
        std::vector<bool> before = Bits(m, n + 8);
        std::vector<bool> up = before, down = before;
        for (int k = end - 1; k > first; --k)
            up[k] = up[k - 1];
        for (int k = first; k + 1 < end; ++k)
            down[k] = down[k + 1];
        VyrBitMask a(m), b(m);
        a.ShiftUp(first, end);
        b.ShiftDown(first, end);
        ASSERT_EQ(Bits(a, n + 8), up) << n << " " << first << " " << end;
        ASSERT_EQ(Bits(b, n + 8), down) << n << " " << first << " " << end;
        ASSERT_EQ(a.GetSize(), m.GetSize());
    }
}

TEST(VyrBitMask, ShiftsIgnoreRangesTheMaskDoesNotHold) {
    VyrBitMask m(8);  // two bytes: bits 0..15
    m.Unset(0);
    m.ShiftUp(0, 17);
    m.ShiftDown(0, 17);
    m.ShiftUp(-1, 3);
    m.ShiftDown(5, 5);
    EXPECT_EQ(m.GetSize(), 2);
    EXPECT_FALSE(m.IsSet(0));
    EXPECT_TRUE(m.IsSet(1));
}

namespace {
// The first bit that reads as not set, found bit by bit over the stored bytes.
int FirstUnsetByWalking(const VyrBitMask& m) {
    for (int i = 0; i < m.GetSize() * 8; ++i)
        if (!m.IsSet(i))
            return i;
    return INT_MAX;
}
}  // namespace

TEST(VyrBitMask, FindFirstUnsetAnswersIntMaxWhenEveryBitReadsSet) {
    VyrBitMask m;
    EXPECT_EQ(m.FindFirstUnset(), INT_MAX);
    m.SetSize(100);
    EXPECT_EQ(m.FindFirstUnset(), INT_MAX);
    m.Unset(42);
    EXPECT_EQ(m.FindFirstUnset(), 42);
    m.Set(42);
    EXPECT_EQ(m.FindFirstUnset(), INT_MAX);
}

TEST(VyrBitMask, FindFirstUnsetFollowsEveryKindOfChange) {
    // Asked between changes, so that what it remembered is put to the test by each of them.
    std::mt19937 rng(11);
    VyrBitMask m(8);
    for (int step = 0; step < 20000; ++step) {
        const int held = m.GetSize() * 8;
        const int i = static_cast<int>(rng() % (held + 9));
        switch (rng() % 9) {
            case 0:
            case 1:
                m.Set(i);
                break;
            case 2:
                if (rng() % 8 == 0)
                    m.Unset(i);
                break;
            case 3:
                m.Invert(i);
                break;
            case 4:
                m.SetOctetAt(i / 8, rng() % 4 == 0 ? static_cast<unsigned char>(rng()) : 0);
                break;
            case 5:
                m.ShiftUp(i / 2, i / 2 + 1 + static_cast<int>(rng() % 20));
                break;
            case 6:
                m.ShiftDown(i / 2, i / 2 + 1 + static_cast<int>(rng() % 20));
                break;
            case 7:
                if (rng() % 50 == 0) {
                    int octets[3] = {0, static_cast<int>(rng() % 2), 0};
                    m.SetBits(3, octets);
                }
                break;
            default:
                if (rng() % 20 == 0) {
                    VyrBitMask copy(m);
                    m = copy;
                }
                m.SetSize(held + static_cast<int>(rng() % 16));
                break;
        }
        ASSERT_EQ(m.FindFirstUnset(), FirstUnsetByWalking(m)) << "step " << step;
    }
}
