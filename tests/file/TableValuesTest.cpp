// The table import's values: clock times and dates as seconds from the first row, stamps,
// markers of missing values and sentinel numbers.
#include <gtest/gtest.h>

#include "TableTestSupport.h"

using tabletest::Columns;
using tabletest::ColumnSeen;
using tabletest::CurveOf;
using tabletest::ExpectColumn;
using tabletest::ExpectValues;
using tabletest::ExperimentComment;
using tabletest::Import;
using tabletest::ImportData;

TEST(TableValues, ClockTimesBecomeSecondsFromTheFirstAcrossMidnight) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "clock_past_midnight.txt", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"Time", L"s", {0, 15, 30, 45});
    ExpectColumn(c[1], L"Temperature", L"\u00b0C", {20.5, 20.4, 20.3, 20.2});
    EXPECT_EQ(import.GetStart(), L"23:59:30");
    EXPECT_EQ(ExperimentComment(doc), L"start: 23:59:30");
    EXPECT_EQ(import.GetAbscissaReason(), VyrTableImport::kAbscissaTime);
}

TEST(TableValues, ClockStepBackOfLessThanHalfADayIsNoNewDay) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Import(doc, "time;v\n10:00:05;1\n10:00:04;2\n22:00:00;3\n09:00:00;4\n"));
    ExpectValues(Columns(doc)[0].values, {0, -1, 43195, 82795});
}

TEST(TableValues, IsoDateTimesWithFractionsCrossTheDay) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "iso_date_times.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"time", L"s", {0, 60, 120.5});
    ExpectColumn(c[1], L"pressure", L"hPa", {1013.2, 1013.3, 1012.9});
    EXPECT_EQ(ExperimentComment(doc), L"start: 2026-04-01T23:59:30");
}

TEST(TableValues, GermanDatesWithTimes) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "german_date_times.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"Datum Zeit", L"s", {0, 60, 120});
    ExpectColumn(c[1], L"Temperatur", L"\u00b0C", {5.1, 5.0, 4.9});
    EXPECT_EQ(import.GetStart(), L"01.04.2026 23:59:30");
}

TEST(TableValues, DateAndTimeOfDayInTwoColumnsAreOneInstant) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "date_split_in_two.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"Time", L"s", {0, 300, 600});
    ExpectColumn(c[1], L"T", L"\u00b0C", {12.5, 12.4, 12.3});
    ExpectColumn(c[2], L"RH", L"%", {80, 81, NAN});
    EXPECT_EQ(import.GetAbscissaReason(), VyrTableImport::kAbscissaDateAndTime);
    EXPECT_EQ(import.GetAbscissaColumn(), 0);
    EXPECT_EQ(import.GetStart(), L"31/03/2026 23:50:00");
    const std::vector<VyrTableImport::ColumnReport>& r = import.GetColumnReports();
    ASSERT_EQ(r.size(), 4u);
    EXPECT_EQ(r[0].use, VyrTableImport::kColumnAbscissa);
    EXPECT_EQ(r[1].use, VyrTableImport::kColumnAbscissa);
    EXPECT_EQ(r[3].holes, 1u);
}

TEST(TableValues, SlashDatesAreReadMonthFirstWhenACellSaysSo) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Import(doc, "date,v\n03/30/2026,1\n03/31/2026,2\n04/01/2026,3\n"));
    ExpectValues(Columns(doc)[0].values, {0, 86400, 2 * 86400});
    ASSERT_TRUE(Import(doc, "date,v\n01/02/2026,1\n01/03/2026,2\n"));
    ExpectValues(Columns(doc)[0].values, {0, 28 * 86400});
}

TEST(TableValues, StampsUnderADateHeadingAndSentinelsAsHoles) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    import.AddMissingValue(-999);
    ASSERT_TRUE(ImportData(doc, "stamps_with_sentinel.txt", import));
    ASSERT_EQ(import.GetAbscissaColumn(), 1);
    VyrCourbe* t = CurveOf(doc, L"TT_TU");
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->GetVx()->GetGrandeur(), L"MESS_DATUM");
    EXPECT_EQ(t->GetVx()->GetUnite(), L"s");
    ExpectValues(tabletest::See(t->GetVx()).values, {0, 600, 1200});
    ExpectValues(tabletest::See(t->GetVy()).values, {5.2, NAN, 5.0});
    EXPECT_EQ(import.GetStart(), L"202604010000");
    // The "eor" column is left out; the station's number is a curve of its own.
    const std::vector<VyrTableImport::ColumnReport>& r = import.GetColumnReports();
    ASSERT_EQ(r.size(), 6u);
    EXPECT_EQ(r[5].quantity, L"eor");
    EXPECT_EQ(r[5].use, VyrTableImport::kColumnText);
    EXPECT_EQ(r[3].holes, 1u);
    EXPECT_NE(CurveOf(doc, L"STATIONS_ID"), nullptr);

    // Without the setting, -999 is a number as any other.
    VyrTableImport plain;
    ASSERT_TRUE(ImportData(doc, "stamps_with_sentinel.txt", plain));
    ExpectValues(tabletest::See(CurveOf(doc, L"TT_TU")->GetVy()).values, {5.2, -999, 5.0});
    // Under a heading that names no date, such digits are numbers.
    ASSERT_TRUE(Import(doc, "id;v\n202604010000;1\n202604010010;2\n"));
    ExpectValues(Columns(doc)[0].values, {202604010000.0, 202604010010.0});
}

TEST(TableValues, MarkersOfMissingValuesAreHoles) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "missing_markers.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 4u);
    ExpectColumn(c[1], L"a", L"V", {1, NAN, NAN, 5});
    ExpectColumn(c[2], L"b", L"V", {NAN, 3, 4, NAN});
    ExpectColumn(c[3], L"c", L"V", {2, NAN, NAN, 6});
    EXPECT_EQ(import.GetInvalidCount(), 6u);
    for (const VyrTableImport::ColumnReport& r : import.GetColumnReports())
        EXPECT_NE(r.use, VyrTableImport::kColumnText) << r.quantity;
}

TEST(TableValues, CellsAreMomentsOnlyAsAWhole) {
    struct Case {
        const char* cell;
        double seconds;  // after 00:00:00 on 2026-04-01; NaN: a hole
    };
    const Case cases[] = {
        {"2026-04-01 10:00", 36000},
        {"2026-04-01T10:00:00.5", 36000.5},
        {"2026-04-01T12:00:00+02:00", 36000},
        {"2026-04-01T10:00:00Z", 36000},
        {"2026-04-02", 86400},
        {"01.04.2026 10:00:00", 36000},
        {"2026/04/01 10:00", 36000},
        {"2026-04-01 10:00 PM", 79200},
        {"2026-02-30", NAN},
        {"2026-04-01 25:00", NAN},
        {"2026-04-01T10:00:00X", NAN},
        {"10:00", NAN},
    };
    for (const Case& k : cases) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(Import(
            doc, std::string("date;v\n2026-04-01T00:00:00;0\n2026-04-01;0\n") + k.cell + ";1\n"))
            << k.cell;
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u) << k.cell;
        ASSERT_EQ(c[0].unit, L"s") << k.cell;
        if (std::isnan(k.seconds))
            EXPECT_TRUE(std::isnan(c[0].values[2])) << k.cell;
        else
            EXPECT_EQ(c[0].values[2], k.seconds) << k.cell;
    }
}
