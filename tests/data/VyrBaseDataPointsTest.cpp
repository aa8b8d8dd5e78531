#include <gtest/gtest.h>

#include <cmath>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"

using namespace vyrtest;

namespace {
struct Doc {
    VyrBaseData doc{nullptr};
    VyrExperience* e = Experience(doc, "E");
    RecordingObserver obs;
};
}  // namespace

TEST(VyrBaseDataPoints, AddPointAppendsToBothVectorsAndNotifiesTheCurve) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {}, {});
    d.doc.AddObserver(&d.obs);
    d.doc.AddPoint(c, 1.0, 10.0, true);
    d.doc.AddPoint(c, 2.0, 20.0, false);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 2}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 20}));
    EXPECT_EQ(c->GetVx()->GetCapacity(), 101);
    ASSERT_EQ(d.obs.messages.size(), 1u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(d.obs.messages[0].param, c);
}

TEST(VyrBaseDataPoints, AddPointMakesYFollowXLength) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    c->GetVy()->Resize(1);
    d.doc.AddPoint(c, 4.0, 40.0, false);
    EXPECT_EQ(c->GetVy()->GetSize(), 4);
    EXPECT_EQ(c->GetVy()->GetVal(3), 40.0);
    EXPECT_EQ(c->GetVy()->GetVal(1), 20.0);  // storage kept within the capacity
}

TEST(VyrBaseDataPoints, AddPointKeepsAnInvalidMarkLeftByRemovalOrEmptying) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    d.doc.RemovePointAt(c, 0, false);  // position 2 is now marked invalid in both vectors
    d.doc.AddPoint(c, 4.0, 40.0, false);
    EXPECT_FALSE(c->GetVx()->IsValidAt(2));
    EXPECT_FALSE(c->GetVy()->IsValidAt(2));
    d.doc.RazCourbe(c, false);
    d.doc.AddPoint(c, 1.0, 1.0, false);
    d.doc.AddPoint(c, 2.0, 2.0, false);
    d.doc.AddPoint(c, 3.0, 3.0, false);
    EXPECT_TRUE(c->GetVy()->IsValidAt(1));
    EXPECT_FALSE(c->GetVy()->IsValidAt(2));
    d.doc.ValidePoint(c, true, false);
    EXPECT_TRUE(c->GetVy()->IsValidAt(2));
    EXPECT_FALSE(c->GetVx()->IsValidAt(2));
}

TEST(VyrBaseDataPoints, AddSortPointInsertsInXOrder) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 3}, {10, 30});
    d.doc.AddObserver(&d.obs);
    EXPECT_EQ(d.doc.AddSortPoint(c, 2.0, 20.0, false, true), 1);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 20, 30}));
    ASSERT_EQ(d.obs.messages.size(), 1u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(d.obs.messages[0].param, c);
    EXPECT_EQ(d.doc.AddSortPoint(c, 0.5, 5.0, false, false), 0);
    EXPECT_EQ(d.doc.AddSortPoint(c, 9.0, 90.0, false, false), 4);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{0.5, 1, 2, 3, 9}));
    EXPECT_EQ(d.obs.messages.size(), 1u);
}

TEST(VyrBaseDataPoints, AddSortPointOnExistingXReplacesOnlyWhenAsked) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 3}, {10, 30});
    c->GetVy()->ValidateAt(1, false);
    d.doc.AddObserver(&d.obs);
    EXPECT_EQ(d.doc.AddSortPoint(c, 3.0, 99.0, false, true), 1);
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 30}));
    EXPECT_EQ(c->GetVx()->GetSize(), 2);
    EXPECT_EQ(d.doc.AddSortPoint(c, 3.0, 99.0, true, true), 1);
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 99}));
    EXPECT_FALSE(c->GetVy()->IsValidAt(1));  // validity unchanged
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{VYR_MSG_DATA_CHANGED, VYR_MSG_DATA_CHANGED}));
}

TEST(VyrBaseDataPoints, AddSortPointOnEmptyCurveGivesOneValidPoint) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {}, {});
    EXPECT_EQ(d.doc.AddSortPoint(c, 5.0, 50.0, false, false), 0);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{5}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{50}));
    EXPECT_EQ(c->GetTrueSize(), 1u);
}

TEST(VyrBaseDataPoints, AddSortPointMarksInsertedValidAndMovesMarksUp) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 3, 5}, {10, 30, 50});
    c->GetVy()->ValidateAt(1, false);
    d.doc.RazCourbe(c, false);  // leave marks behind: position 1 stays invalid in Y
    d.doc.AddSortPoint(c, 1.0, 10.0, false, false);
    d.doc.AddSortPoint(c, 3.0, 30.0, false, false);
    EXPECT_TRUE(c->GetVy()->IsValidAt(1));  // the inserted point is marked valid
    c->GetVy()->ValidateAt(1, false);
    EXPECT_EQ(d.doc.AddSortPoint(c, 2.0, 20.0, false, false), 1);
    EXPECT_EQ(Validity(c->GetVy()), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 20, 30}));
}

TEST(VyrBaseDataPoints, AddSortPointCountsInvalidPointsForPosition) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 3}, {10, 30});
    c->GetVx()->ValidateAt(1, false);
    EXPECT_EQ(d.doc.AddSortPoint(c, 3.0, 33.0, true, false), 1);
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 33}));
}

TEST(VyrBaseDataPoints, RemovePointAtRemovesFromBothAndNotifiesTheCurve) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    d.doc.AddObserver(&d.obs);
    d.doc.RemovePointAt(c, 1, true);
    EXPECT_EQ(Values(c->GetVx()), (std::vector<double>{1, 3}));
    EXPECT_EQ(Values(c->GetVy()), (std::vector<double>{10, 30}));
    ASSERT_EQ(d.obs.messages.size(), 1u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(d.obs.messages[0].param, c);
    d.doc.RemovePointAt(c, 5, false);
    d.doc.RemovePointAt(c, -1, false);
    EXPECT_EQ(c->GetSize(), 2u);
}

TEST(VyrBaseDataPoints, RemovePointAtEachVectorIgnoresItsOwnRange) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    c->GetVy()->Resize(2);
    d.doc.RemovePointAt(c, 2, false);
    EXPECT_EQ(c->GetVx()->GetSize(), 2);
    EXPECT_EQ(c->GetVy()->GetSize(), 2);
}

TEST(VyrBaseDataPoints, ValidePointMarksOnlyYOfTheLastPoint) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    d.doc.AddObserver(&d.obs);
    d.doc.ValidePoint(c, false, true);
    EXPECT_EQ(Validity(c->GetVy()), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(Validity(c->GetVx()), (std::vector<bool>{true, true, true}));
    ASSERT_EQ(d.obs.messages.size(), 1u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(d.obs.messages[0].param, nullptr);
    d.doc.ValidePoint(c, true, false);
    EXPECT_TRUE(c->GetVy()->IsValidAt(2));
    // The last index of X beyond Y's end: nothing.
    c->GetVy()->Resize(2);
    d.doc.ValidePoint(c, false, false);
    EXPECT_EQ(Validity(c->GetVy()), (std::vector<bool>{true, true}));
    VyrCourbe* empty = Curve(d.doc, d.e, "W", {}, {});
    d.doc.ValidePoint(empty, false, false);
    EXPECT_TRUE(empty->GetVy()->GetValidity()->IsSet(0));
}

TEST(VyrBaseDataPoints, RazCourbeEmptiesBothAndNotifiesNull) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 2, 3}, {10, 20, 30});
    d.doc.AddObserver(&d.obs);
    d.doc.RazCourbe(c, true);
    EXPECT_EQ(c->GetVx()->GetSize(), 0);
    EXPECT_EQ(c->GetVy()->GetSize(), 0);
    EXPECT_EQ(c->GetVx()->GetArea(), nullptr);
    ASSERT_EQ(d.obs.messages.size(), 1u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(d.obs.messages[0].param, nullptr);
}

TEST(VyrBaseDataPoints, NullCurveDoesNothingAndSendsNothing) {
    Doc d;
    d.doc.AddObserver(&d.obs);
    d.doc.AddPoint(nullptr, 1, 1, true);
    EXPECT_EQ(d.doc.AddSortPoint(nullptr, 1, 1, true, true), -1);
    d.doc.RemovePointAt(nullptr, 0, true);
    d.doc.ValidePoint(nullptr, true, true);
    d.doc.RazCourbe(nullptr, true);
    VyrBaseData::SortCurve(nullptr, true);
    EXPECT_TRUE(d.obs.messages.empty());
}

TEST(VyrBaseDataPoints, CurveWithoutVectorsTakesNoPoint) {
    Doc d;
    VyrCourbe bare(100, &d.doc);
    d.doc.AddObserver(&d.obs);
    d.doc.AddPoint(&bare, 1, 1, true);
    EXPECT_EQ(d.doc.AddSortPoint(&bare, 1, 1, true, true), -1);
    d.doc.RemovePointAt(&bare, 0, false);
    d.doc.RazCourbe(&bare, false);
    d.doc.ValidePoint(&bare, false, false);
    EXPECT_TRUE(d.obs.messages.empty());
}

TEST(VyrBaseDataPoints, NanValuesAreStoredAsGiven) {
    Doc d;
    VyrCourbe* c = Curve(d.doc, d.e, "U", {1, 3}, {10, 30});
    d.doc.AddPoint(c, std::nan(""), 1.0, false);
    EXPECT_TRUE(std::isnan(c->GetVx()->GetVal(2)));
    EXPECT_EQ(d.doc.AddSortPoint(c, std::nan(""), 2.0, true, false), 0);
    EXPECT_EQ(c->GetSize(), 4u);
}
