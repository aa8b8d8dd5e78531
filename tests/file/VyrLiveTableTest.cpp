// A table read as its bytes arrive: cut anywhere, it gives the rows that the import gives the
// same table as a file, appended with notifications; lines that are no rows are counted.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "TableTestSupport.h"
#include "support/RecordingObserver.h"

using tabletest::Columns;
using tabletest::ColumnSeen;
using tabletest::Curves;
using tabletest::ExpectColumn;
using tabletest::ExpectValues;

namespace {

// Feeds `bytes` in pieces of `piece` bytes, then ends the input.
void FeedInPieces(VyrLiveTable& live, const std::string& bytes, size_t piece) {
    for (size_t at = 0; at < bytes.size(); at += piece)
        live.Feed(bytes.data() + at, std::min(piece, bytes.size() - at));
    live.Finish();
}

size_t Count(const std::vector<int>& codes, int code) {
    return static_cast<size_t>(std::count(codes.begin(), codes.end(), code));
}

}  // namespace

TEST(VyrLiveTable, RowsCutAnywhereGiveWhatTheImportGives) {
    const std::string table =
        "t (s);U (V);I (mA)\r\n0;1,5;10\r\n0.5;2.25;11\n1;-3e-1;12\r\n1.5;4;13\n";
    VyrBaseData imported(nullptr);
    ASSERT_TRUE(tabletest::Import(imported, table));
    const std::vector<ColumnSeen> expected = Columns(imported);
    for (size_t piece : {1, 2, 3, 7, 1000}) {
        VyrBaseData doc(nullptr);
        VyrTableImport settings;
        VyrLiveTable live(doc, settings);
        live.Start(L"live");
        FeedInPieces(live, table, piece);
        EXPECT_EQ(live.GetError(), VyrTableImport::kErrorNone);
        EXPECT_EQ(live.GetRowCount(), 4u) << "pieces of " << piece;
        EXPECT_EQ(live.GetSkippedCount(), 0u);
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), expected.size());
        for (size_t k = 0; k < c.size(); ++k) {
            EXPECT_EQ(c[k].quantity, expected[k].quantity);
            EXPECT_EQ(c[k].unit, expected[k].unit);
            ExpectValues(c[k].values, expected[k].values);
        }
        ASSERT_NE(live.GetExperience(), nullptr);
        EXPECT_EQ(live.GetExperience()->GetEntityName(), L"live");
    }
}

TEST(VyrLiveTable, GarbageLinesAreSkippedAndCounted) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"live");
    FeedInPieces(live,
                 "t;U\n0;1\n@@@ noise @@@\n1;2\n# a comment\n\n ;-\nxx;3\n2;4\n3;oops\n"
                 "4;5\n",
                 5);
    EXPECT_EQ(live.GetRowCount(), 4u);
    // "@@@ noise @@@", " ;-" (no value), "xx;3" (no abscissa) and "3;oops" (no value).
    EXPECT_EQ(live.GetSkippedCount(), 4u);
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"t", L"", {0, 1, 2, 4});
    ExpectColumn(c[1], L"U", L"", {1, 2, 4, 5});
}

TEST(VyrLiveTable, AHoleHoldsThePreviousNumberAndIsInvalid) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"live");
    FeedInPieces(live, "t;U;I\n0;;5\n1;2;6\n2;NaN;7\n3;4;8\n", 4);
    EXPECT_EQ(live.GetRowCount(), 4u);
    EXPECT_EQ(live.GetInvalidCount(), 2u);
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[1], L"U", L"", {NAN, 2, NAN, 4});
    VyrVecteur* u = Curves(doc)[0]->GetVy();
    // Before its first number a hole takes that number, after it the previous one.
    EXPECT_EQ(u->GetVal(0), 2.0);
    EXPECT_EQ(u->GetVal(2), 2.0);
}

TEST(VyrLiveTable, EachPointIsNotifiedAndEachBatchAnnouncedOncePerCurve) {
    VyrBaseData doc(nullptr);
    RecordingObserver observer;
    doc.AddObserver(&observer);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"live");
    live.Feed("t;U;I\n0;1;2\n1;2;3\n", 18);
    const std::vector<int> first = observer.Codes();
    EXPECT_EQ(Count(first, VYR_MSG_EXPERIENCE_CREATED), 1u);
    EXPECT_EQ(Count(first, VYR_MSG_CURVE_CREATED), 2u);
    // Two rows of two points, then the batch's announcement of each curve.
    EXPECT_EQ(Count(first, VYR_MSG_DATA_CHANGED), 6u);
    observer.Clear();
    live.Feed("2;3;4\n3;4;5\n4;5", 15);
    EXPECT_EQ(Count(observer.Codes(), VYR_MSG_DATA_CHANGED), 6u);
    ASSERT_EQ(observer.messages.size(), 6u);
    for (size_t k = 0; k < 6; ++k)
        EXPECT_EQ(observer.messages[k].param, Curves(doc)[k % 2]) << k;
    observer.Clear();
    // Nothing complete: nothing to tell.
    live.Feed(";6", 2);
    EXPECT_TRUE(observer.messages.empty());
    live.Finish();
    EXPECT_EQ(Count(observer.Codes(), VYR_MSG_DATA_CHANGED), 4u);
    EXPECT_EQ(live.GetRowCount(), 5u);
    doc.RemoveObserver(&observer);
}

TEST(VyrLiveTable, ClockTimesBecomeSecondsFromTheFirst) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"logger");
    FeedInPieces(live,
                 "Time;T (\xC2\xB0"
                 "C)\n23:59:58;20.5\n23:59:59;20.6\n00:00:01;20.7\n",
                 6);
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"Time", L"s", {0, 1, 3});
    ExpectColumn(c[1], L"T", L"\u00b0C", {20.5, 20.6, 20.7});
    EXPECT_EQ(live.GetExperience()->GetCommentaire(), L"start: 23:59:58");
}

TEST(VyrLiveTable, StartAgainMakesANewExperimentWithItsOwnHeader) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"run");
    live.Feed("t;U\n0;1\n1;2\n2;", 14);
    VyrExperience* first = live.GetExperience();
    live.Start(L"run");
    live.Feed("x;P;Q\n5;6;7\n", 12);
    live.Finish();
    ASSERT_NE(live.GetExperience(), nullptr);
    EXPECT_NE(live.GetExperience(), first);
    EXPECT_EQ(live.GetExperience()->GetEntityName(), L"run (2)");
    EXPECT_EQ(live.GetRowCount(), 3u);
    const std::vector<VyrCourbe*> curves = Curves(doc);
    ASSERT_EQ(curves.size(), 3u);
    EXPECT_EQ(curves[0]->GetVy()->GetSize(), 2);  // the unfinished "2;" was dropped
    EXPECT_EQ(curves[1]->GetVy()->GetGrandeur(), L"P");
    EXPECT_EQ(curves[2]->GetVy()->GetVal(0), 7.0);
}

TEST(VyrLiveTable, SettingsAreTheImports) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    settings.SetSeparator(L' ');
    settings.SetDecimalMark(L',');
    settings.SetSkipLines(1);
    settings.AddMissingValue(-999);
    VyrLiveTable live(doc, settings);
    live.Start(L"live");
    FeedInPieces(live, "logger v2\nt U I\n0 1,5 3\n1 -999 4\n2 2,5 5\n", 3);
    EXPECT_EQ(live.GetUsedSeparator(), L' ');
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"t", L"", {0, 1, 2});
    ExpectColumn(c[1], L"U", L"", {1.5, NAN, 2.5});
}

TEST(VyrLiveTable, NoRowIsRefusedAtTheEnd) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"live");
    live.Feed("just words\nand more\n", 20);
    EXPECT_EQ(live.GetError(), VyrTableImport::kErrorNone);
    live.Finish();
    EXPECT_EQ(live.GetError(), VyrTableImport::kErrorNoNumericRow);
    EXPECT_EQ(live.GetExperience(), nullptr);
    live.Start(L"again");
    live.Finish();
    EXPECT_EQ(live.GetError(), VyrTableImport::kErrorEmpty);
    live.Start(L"binary");
    live.Feed("t;U\n0;\0\n", 8);
    EXPECT_EQ(live.GetError(), VyrTableImport::kErrorBinary);
    EXPECT_EQ(live.Feed("1;2\n", 4), 0u);
}

TEST(VyrLiveTable, ALineAboveTheLimitIsSkippedWithItsRest) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.Start(L"live");
    live.Feed("t;U\n0;1\n", 8);
    const std::string longLine(VyrTableImport::kMaxLineUnits + 10, '7');
    live.Feed(longLine.data(), longLine.size());
    live.Feed(";8\n1;2\n", 7);
    live.Finish();
    EXPECT_EQ(live.GetRowCount(), 2u);
    EXPECT_EQ(live.GetSkippedCount(), 1u);
    ExpectValues(Columns(doc)[1].values, {1, 2});
}

TEST(VyrLiveTable, TheRowLimitLeavesTheRestUnread) {
    VyrBaseData doc(nullptr);
    VyrTableImport settings;
    VyrLiveTable live(doc, settings);
    live.SetRowLimit(3);
    live.Start(L"live");
    EXPECT_EQ(live.Feed("t;U\n0;1\n1;2\n", 12), 2u);
    EXPECT_FALSE(live.IsFull());
    EXPECT_EQ(live.Feed("2;3\n3;4\nzz\n4;5\n", 16), 1u);
    EXPECT_TRUE(live.IsFull());
    EXPECT_EQ(live.GetSkippedCount(), 0u);
    ExpectValues(Columns(doc)[1].values, {1, 2, 3});
}
