// The table import's headings: a line of units under the names, units spelled out, an
// uncertainty after the unit, quoted and padded headings, tables without a heading.
#include <gtest/gtest.h>

#include "TableTestSupport.h"

using tabletest::Columns;
using tabletest::ColumnSeen;
using tabletest::ExpectColumn;
using tabletest::Import;
using tabletest::ImportData;

TEST(TableHeadings, LineOfBareUnitsUnderTheNamesGivesTheirUnits) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "units_line_de.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"Zeit", L"s", {0, 0.5, 1});
    ExpectColumn(c[1], L"Spannung", L"V", {1.52, 1.61, 1.70});
    ExpectColumn(c[2], L"Strom", L"mA", {20.1, 20.4, 20.9});
    EXPECT_EQ(import.GetHeaderLineCount(), 2);
}

TEST(TableHeadings, UnitsSpelledOutAreWrittenAsTheirSymbols) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "spelled_units.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"Time", L"s", {0, 1});
    ExpectColumn(c[1], L"Voltage", L"V", {1.5, 1.6});
    ExpectColumn(c[2], L"Current", L"mA", {10, 11});
    // Spelled out inside the heading too.
    ASSERT_TRUE(Import(doc, "Time (seconds);Voltage (Volts)\n0;1\n"));
    EXPECT_EQ(Columns(doc)[0].unit, L"s");
    EXPECT_EQ(Columns(doc)[1].unit, L"V");
}

TEST(TableHeadings, UncertaintyAfterTheUnitIsNoPartOfIt) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "uncertainty_headings.txt", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"TIME", L"s", {0, 0.05, 0.10});
    ExpectColumn(c[1], L"POS", L"m", {0.1, 0.12, 0.15});
    for (const char* heading : {"U (V \xC2\xB1 0.1 V)", "U (V +/- 0.1)", "U [V+-0.1]"}) {
        ASSERT_TRUE(Import(doc, std::string("t;") + heading + "\n0;1\n")) << heading;
        EXPECT_EQ(Columns(doc)[1].unit, L"V") << heading;
    }
}

TEST(TableHeadings, EveryFieldQuotedCommasInsideHeadingsAndPaddingGo) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "every_field_quoted.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"Time", L"s", {0, 0.01});
    ExpectColumn(c[1], L"Acceleration", L"m/s^2, x", {0.1, 0.2});
    ExpectColumn(c[2], L"Pressure", L"hPa", {1013.2, 1013.3});
    EXPECT_EQ(import.GetUsedSeparator(), L',');
}

TEST(TableHeadings, TableWithoutHeadingNamesItsColumnsByNumber) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "no_heading.txt", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"C1", L"", {0, 1, 2});
    ExpectColumn(c[1], L"C2", L"", {1.5, 1.6, 1.7});
    ExpectColumn(c[2], L"C3", L"", {20, 21, 22});
    EXPECT_EQ(import.GetHeaderLineCount(), 0);
}

TEST(TableHeadings, NamesThatLookLikeNoUnitsStayNames) {
    // "t" and "U" are no units: the last line names the columns, the one above is a title.
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Import(doc, "Run 3;heated\nt;U\n0;1\n"));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"t", L"", {0});
    ExpectColumn(c[1], L"U", L"", {1});
}
