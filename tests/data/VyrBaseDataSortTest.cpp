#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "DataTestSupport.h"

using namespace vyrtest;

namespace {
struct Doc {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
};
}  // namespace

TEST(VyrBaseDataSort, SortsPairsByX) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {3, 1, 2}, {30, 10, 20});
    VyrBaseData::SortCurve(c, false);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 20, 30}));
}

TEST(VyrBaseDataSort, ValidityMarksStayWithPositions) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {3, 1, 2}, {30, 10, 20});
    c->GetVx()->ValidateAt(0, false);
    c->GetVy()->ValidateAt(0, false);
    VyrBaseData::SortCurve(c, false);
    EXPECT_EQ(c->GetVx()->GetVal(0), 1.0);
    EXPECT_EQ(Validity(c->GetVx()), (std::vector<bool>{false, true, true}));
    EXPECT_EQ(Validity(c->GetVy()), (std::vector<bool>{false, true, true}));
}

TEST(VyrBaseDataSort, RemovingDuplicatesKeepsTheLastOfEachX) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 2, 3}, {10, 20, 21, 30});
    VyrBaseData::SortCurve(c, true);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 2, 3}));
    ASSERT_EQ(c->GetVy()->GetSize(), 3);
    // Which of the two 2's comes last after an unstable sort depends on the pivots; it is
    // one of them, and its own Y came along.
    EXPECT_TRUE(c->GetVy()->GetVal(1) == 20.0 || c->GetVy()->GetVal(1) == 21.0);
    EXPECT_EQ(c->GetVy()->GetVal(2), 30.0);
}

TEST(VyrBaseDataSort, DuplicatesWithoutRemovalAreKept) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {2, 1, 2, 2}, {1, 2, 3, 4});
    VyrBaseData::SortCurve(c, false);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 2, 2, 2}));
    EXPECT_EQ(c->GetVy()->GetVal(0), 2.0);
    VyrBaseData::SortCurve(c, true);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 2}));
}

TEST(VyrBaseDataSort, EqualKeysEndWhereThePivotMovesPutThem) {
    // With equal X the order of the Ys (Y = original index) pins each swap of the quicksort:
    // the middle element is swapped into p first, and the pivot that ends at lo only moves lo.
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {2, 2, 1, 2, 2}, {0, 1, 2, 3, 4});
    VyrBaseData::SortCurve(c, false);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 2, 2, 2, 2}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{2, 0, 3, 1, 4}));
}

TEST(VyrBaseDataSort, PivotMovesToQAndBack) {
    // 0..4 first: pivot 2 (index 2, swapped to 0) goes to q = 3 after 0 comes down to index 0;
    // the right side (one element) is the shorter and sorted first, then 0..2 with pivot 1.
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {2, 1, 2, 0, 2}, {0, 1, 2, 3, 4});
    VyrBaseData::SortCurve(c, false);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{0, 1, 2, 2, 2}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{3, 1, 0, 2, 4}));
}

TEST(VyrBaseDataSort, RandomDataEndsSortedWithPairsIntact) {
    Doc d;
    std::mt19937 rng(42);
    std::uniform_real_distribution<double> dist(-1000, 1000);
    std::vector<double> xs, ys;
    for (int i = 0; i < 5000; ++i) {
        xs.push_back(std::floor(dist(rng)));  // many duplicates
        ys.push_back(xs.back() * 3 + 1);
    }
    VyrCourbe* c = Curve(d.doc, d.e, "U", xs, ys);
    VyrBaseData::SortCurve(c, false);
    std::vector<double> sorted = xs;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(Values(c->GetVx()), sorted);
    for (int i = 0; i < c->GetVx()->GetSize(); ++i)
        ASSERT_EQ(c->GetVy()->GetVal(i), c->GetVx()->GetVal(i) * 3 + 1);
    VyrBaseData::SortCurve(c, true);
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    EXPECT_EQ(Values(c->GetVx()), sorted);
    EXPECT_EQ(c->GetVy()->GetSize(), static_cast<int>(sorted.size()));
}

TEST(VyrBaseDataSort, SortedAndReversedInputs) {
    Doc d;
    std::vector<double> up, down;
    for (int i = 0; i < 2000; ++i) {
        up.push_back(i);
        down.push_back(2000 - i);
    }
    VyrCourbe* a = Curve(d.doc, d.e, "A", up, up);
    VyrCourbe* b = Curve(d.doc, d.e, "B", down, down);
    VyrBaseData::SortCurve(a, false);
    VyrBaseData::SortCurve(b, false);
    EXPECT_EQ(Values(a->GetVx()), up);
    std::vector<double> bx = Values(b->GetVx());
    EXPECT_TRUE(std::is_sorted(bx.begin(), bx.end()));
    EXPECT_EQ(Values(b->GetVy()), bx);
}

TEST(VyrBaseDataSort, FewerThanTwoPointsOrShortYLeaveTheCurveAlone) {
    Doc d;
    VyrCourbe* one = Curve(d.doc, d.e, "U", {5}, {50});
    VyrBaseData::SortCurve(one, true);
    EXPECT_EQ(Values(one->GetVx()), (std::vector<double>{5}));
    VyrCourbe* shortY = Curve(d.doc, d.e, "W", {3, 1, 2}, {30, 10, 20});
    shortY->GetVy()->Resize(2);
    VyrBaseData::SortCurve(shortY, true);
    EXPECT_EQ(Values(shortY->GetVx()), (std::vector<double>{3, 1, 2}));
    VyrCourbe bare(99, nullptr);
    VyrBaseData::SortCurve(&bare, true);
}

TEST(VyrBaseDataSort, NanDoesNotBreakTheSort) {
    Doc d;
    const double nan = std::nan("");
    VyrCourbe* c = Curve(d.doc, d.e, "U", {3, nan, 1, nan, 2}, {3, 0, 1, 0, 2});
    VyrBaseData::SortCurve(c, true);
    EXPECT_LE(c->GetVx()->GetSize(), 5);
    EXPECT_GE(c->GetVx()->GetSize(), 3);
}
