#include <gtest/gtest.h>

#include "file/VyrReadText.h"

TEST(VyrReadText, KeysMatchAsPrefixesInTheListsOrder) {
    const wchar_t* const keys[] = {L"oid", L"nom", L"style_ex", L"style"};
    EXPECT_EQ(0, VyrReadText::MatchKey(L"oid = 3", keys));
    EXPECT_EQ(0, VyrReadText::MatchKey(L"oiddataselected = 3", keys));
    EXPECT_EQ(1, VyrReadText::MatchKey(L"nom = \"x\"", keys));
    EXPECT_EQ(2, VyrReadText::MatchKey(L"style_ex = \"1|1|1|0|0|0\"", keys));
    EXPECT_EQ(3, VyrReadText::MatchKey(L"style = 1", keys));
    EXPECT_EQ(-1, VyrReadText::MatchKey(L"Oid = 3", keys));
    EXPECT_EQ(-1, VyrReadText::MatchKey(L"oi", keys));
    EXPECT_EQ(-1, VyrReadText::MatchKey(L"", keys));
}

TEST(VyrReadText, HeadersBeginWithABracket) {
    EXPECT_TRUE(VyrReadText::IsHeader(L"[courbe]"));
    EXPECT_TRUE(VyrReadText::IsHeader(L"["));
    EXPECT_FALSE(VyrReadText::IsHeader(L" [courbe]"));
    EXPECT_FALSE(VyrReadText::IsHeader(L""));
}

TEST(VyrReadText, ValuesAreTakenAfterTheFirstEqualSign) {
    bool found = false;
    EXPECT_EQ(L" 3 = 4", VyrReadText::AfterEqual(L"a = 3 = 4", &found));
    EXPECT_TRUE(found);
    EXPECT_TRUE(VyrReadText::AfterEqual(L"a 3", &found).empty());
    EXPECT_FALSE(found);
    EXPECT_EQ(7, VyrReadText::IntValue(L"x=7"));
    EXPECT_EQ(0, VyrReadText::IntValue(L"x 7"));
    EXPECT_EQ(0.25, VyrReadText::DoubleValue(L"x = 0,25"));
}

TEST(VyrReadText, ClosingQuoteScan) {
    wxString value;
    EXPECT_TRUE(VyrReadText::ScanClosingQuote(L"abc\" trailing", value));
    EXPECT_EQ(wxString(L"abc"), value);
    value.clear();
    EXPECT_TRUE(VyrReadText::ScanClosingQuote(L"\"", value));
    EXPECT_TRUE(value.empty());
    EXPECT_FALSE(VyrReadText::ScanClosingQuote(L"say \\\"hi\\\" and", value));
    EXPECT_EQ(wxString(L"say \"hi\" and"), value);
    value.clear();
    EXPECT_FALSE(VyrReadText::ScanClosingQuote(L"a\\\\\\\\b", value));
    EXPECT_EQ(wxString(L"a\\\\b"), value);
}
