// The table import's text: zero bytes of a logger's card, lines that are no rows wherever they
// stand, the comma that both separates and marks decimals when quotes tell them apart.
#include <gtest/gtest.h>

#include "TableTestSupport.h"

using tabletest::Columns;
using tabletest::ColumnSeen;
using tabletest::ExpectColumn;
using tabletest::Import;
using tabletest::ImportData;

TEST(TableText, ZeroBytesAroundTheTextAreSkipped) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "sd_card_zeros.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"millis", L"", {0, 1000, 2000});
    ExpectColumn(c[1], L"temp", L"C", {20.5, 20.6, 20.8});
    // Zeros after the text too; a zero inside it is still no text.
    ASSERT_TRUE(Import(doc, std::string("t;u\n1;2\n\0\0\0", 11)));
    EXPECT_FALSE(Import(doc, std::string("t;u\n1;2\n\0x\0", 11), import));
    EXPECT_EQ(import.GetError(), VyrTableImport::kErrorBinary);
}

TEST(TableText, PreambleMarkerCommentsAndFooterAreNoRows) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "preamble_marker_footer.txt", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"t", L"s", {0, 0.01, 0.02});
    ExpectColumn(c[1], L"U", L"V", {1, 2, 3});
    EXPECT_EQ(import.GetRowCount(), 3u);
    EXPECT_EQ(import.GetInvalidCount(), 0u);
    // Comment, Device, Rate, Start, [Data], the names.
    EXPECT_EQ(import.GetHeaderLineCount(), 6);
}

TEST(TableText, QuotedDecimalCommasAreNumbersBesideCommaSeparators) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(ImportData(doc, "quoted_decimal_commas.csv", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"t", L"s", {0, 0.5, 1});
    ExpectColumn(c[1], L"U", L"V", {1.5, 1.75, 2});
    EXPECT_EQ(import.GetUsedSeparator(), L',');
    EXPECT_EQ(import.GetUsedDecimalMark(), L',');

    // Both set to the comma: the quotes decide, and the guess finds the same.
    for (bool set : {true, false}) {
        VyrTableImport both;
        ASSERT_TRUE(both.SetDecimalMark(L','));
        if (set) {
            ASSERT_TRUE(both.SetSeparator(L','));
        }
        ASSERT_TRUE(ImportData(doc, "quoted_decimal_commas.csv", both)) << set;
        ExpectColumn(Columns(doc)[1], L"U", L"V", {1.5, 1.75, 2});
        EXPECT_EQ(both.GetUsedSeparator(), L',');
    }
    // A point set as the mark leaves the quoted comma no decimal mark.
    VyrTableImport point;
    ASSERT_TRUE(point.SetDecimalMark(L'.'));
    ASSERT_TRUE(Import(doc, "\"t\",\"U\"\n\"0\",\"1,5\"\n\"1\",\"2\"\n", point));
    ExpectColumn(Columns(doc)[1], L"U", L"", {NAN, 2});
}

TEST(TableText, TitleThatIsADateAndKeyValuePreambleBeforeTheHeading) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc,
                       "2026-04-01\n\nInterval;0.5\n1;first run\n"
                       "t (s);U (V);I (mA)\n0;1;10\n0.5;2;20\n",
                       import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"t", L"s", {0, 0.5});
    ExpectColumn(c[1], L"U", L"V", {1, 2});
    ExpectColumn(c[2], L"I", L"mA", {10, 20});
    EXPECT_EQ(import.GetHeaderLineCount(), 4);
    // A heading repeated between rows as wide as it is a row of holes, not a new start.
    ASSERT_TRUE(Import(doc, "t;U\n0;1\n1;2\nt;U\n2;3\n", import));
    ExpectColumn(Columns(doc)[1], L"U", L"", {1, 2, NAN, 3});
}
