// The table import's rows and columns: text columns left out, a date column as the abscissa
// wherever it stands, and the summary of what became of every column.
#include <gtest/gtest.h>

#include "TableTestSupport.h"

using tabletest::Columns;
using tabletest::ColumnSeen;
using tabletest::CurveOf;
using tabletest::Curves;
using tabletest::ExpectColumn;
using tabletest::ExpectValues;
using tabletest::Import;
using tabletest::ImportData;

TEST(TableRows, TextColumnsAreLeftOutAndTextInAFewRowsIsAHole) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "text_columns.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"t", L"s", {0, 1, 2, 3});
    ExpectColumn(c[1], L"U", L"V", {1, NAN, 3, 4});
    const std::vector<VyrTableImport::ColumnReport>& r = import.GetColumnReports();
    ASSERT_EQ(r.size(), 3u);
    EXPECT_EQ(r[0].use, VyrTableImport::kColumnAbscissa);
    EXPECT_EQ(r[1].use, VyrTableImport::kColumnCurve);
    EXPECT_EQ(r[1].holes, 1u);
    EXPECT_EQ(r[2].quantity, L"event");
    EXPECT_EQ(r[2].use, VyrTableImport::kColumnText);
    EXPECT_EQ(import.GetAbscissaReason(), VyrTableImport::kAbscissaFirstColumn);
}

TEST(TableRows, DateColumnInTheMiddleIsTheAbscissa) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "station_date_in_middle.csv", import));
    ASSERT_EQ(Curves(doc).size(), 1u);
    VyrCourbe* tmp = CurveOf(doc, L"TMP");
    ASSERT_NE(tmp, nullptr);
    EXPECT_EQ(tmp->GetVx()->GetGrandeur(), L"DATE");
    ExpectValues(tabletest::See(tmp->GetVx()).values, {0, 3600, 7200});
    ExpectValues(tabletest::See(tmp->GetVy()).values, {5.2, NAN, 4.8});
    EXPECT_EQ(import.GetAbscissaColumn(), 1);
    EXPECT_EQ(import.GetAbscissaReason(), VyrTableImport::kAbscissaTime);
    const std::vector<VyrTableImport::ColumnReport>& r = import.GetColumnReports();
    ASSERT_EQ(r.size(), 4u);
    EXPECT_EQ(r[0].use, VyrTableImport::kColumnText);
    EXPECT_EQ(r[3].use, VyrTableImport::kColumnText);
    EXPECT_EQ(r[2].holes, 1u);
    EXPECT_EQ(import.GetRowCount(), 3u);
}

TEST(TableRows, FirstColumnOfNumbersAfterTextColumnsIsTheAbscissa) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc, "name;x;y\nA;0;1\nB;1;3\n", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"x", L"", {0, 1});
    ExpectColumn(c[1], L"y", L"", {1, 3});
    EXPECT_EQ(import.GetAbscissaColumn(), 1);
    EXPECT_EQ(import.GetAbscissaReason(), VyrTableImport::kAbscissaFirstNumberColumn);
}

TEST(TableRows, SecondTimeColumnIsLeftOutAndNamed) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc, "start;stop;v\n10:00;10:05;1\n10:10;10:20;2\n", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"start", L"s", {0, 600});
    ExpectColumn(c[1], L"v", L"", {1, 2});
    EXPECT_EQ(import.GetColumnReports()[1].use, VyrTableImport::kColumnMoreTime);
}

TEST(TableRows, OneColumnOfMomentsIsPlottedAgainstTheRowNumber) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc, "time\n10:00:00\n10:00:02\n", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"n", L"", {0, 1});
    ExpectColumn(c[1], L"time", L"s", {0, 2});
    EXPECT_EQ(import.GetAbscissaColumn(), -1);
}
