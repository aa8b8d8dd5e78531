#include <gtest/gtest.h>

#include <random>
#include <string>

#include <wx/tokenzr.h>

#include "vyrbase/core/VyrLineTokenizer.h"

namespace {

// Walks both tokenizers over the text and checks that they agree on every step: whether
// tokens remain, each token, and the position after it.
void ExpectSameAsToolkit(const std::wstring& text) {
    wxStringTokenizer reference(wxString(text), L"\r\n\t");
    VyrLineTokenizer tokenizer(text.c_str(), text.size());
    for (;;) {
        const bool more = reference.HasMoreTokens();
        ASSERT_EQ(more, tokenizer.HasMoreTokens()) << "text: " << wxString(text);
        if (!more)
            break;
        const wxString expected = reference.GetNextToken();
        const std::wstring_view token = tokenizer.GetNextToken();
        ASSERT_EQ(expected.ToStdWstring(), std::wstring(token));
        ASSERT_EQ(reference.GetPosition(), tokenizer.GetPosition());
    }
}

}  // namespace

TEST(VyrLineTokenizer, CutsOnLineBreaksAndTabsWithoutEmptyTokens) {
    const std::wstring text = L"[vecteur]\r\n\toid = 3\r\n\r\n\tpoints = table 2 {\r\n\t1\t2\r\n";
    VyrLineTokenizer tokenizer(text.c_str(), text.size());
    std::vector<std::wstring> tokens;
    while (tokenizer.HasMoreTokens())
        tokens.emplace_back(tokenizer.GetNextToken());
    EXPECT_EQ(tokens, (std::vector<std::wstring>{L"[vecteur]", L"oid = 3", L"points = table 2 {",
                                                 L"1", L"2"}));
}

TEST(VyrLineTokenizer, PositionIsJustAfterTheOneSeparatorEndingTheToken) {
    const std::wstring text = L"[X]\r\n\tk = 1";
    VyrLineTokenizer tokenizer(text.c_str(), text.size());
    EXPECT_EQ(L"[X]", tokenizer.GetNextToken());
    EXPECT_EQ(4u, tokenizer.GetPosition());  // on the "\n"
    EXPECT_EQ(L"k = 1", tokenizer.GetNextToken());
    EXPECT_EQ(text.size(), tokenizer.GetPosition());
}

TEST(VyrLineTokenizer, NoTokenLeavesThePositionWhereItWas) {
    const std::wstring text = L"a\r\n\r\n";
    VyrLineTokenizer tokenizer(text.c_str(), text.size());
    EXPECT_EQ(L"a", tokenizer.GetNextToken());
    EXPECT_EQ(2u, tokenizer.GetPosition());
    EXPECT_FALSE(tokenizer.HasMoreTokens());
    EXPECT_TRUE(tokenizer.GetNextToken().empty());
    EXPECT_EQ(2u, tokenizer.GetPosition());
}

TEST(VyrLineTokenizer, NullAndEmptyTextsHaveNoToken) {
    VyrLineTokenizer none(nullptr, 5);
    EXPECT_FALSE(none.HasMoreTokens());
    EXPECT_TRUE(none.GetNextToken().empty());
    const std::wstring blank = L"\r\n\t\t\r\n";
    VyrLineTokenizer onlySeparators(blank.c_str(), blank.size());
    EXPECT_FALSE(onlySeparators.HasMoreTokens());
}

TEST(VyrLineTokenizer, GivesTheToolkitTokenizersTokensAndPositions) {
    const std::vector<std::wstring> fixed = {L"",
                                             L"a",
                                             L"\r",
                                             L"\r\na",
                                             L"a\r\n",
                                             L"a\tb",
                                             L"\t\ta\t\t",
                                             L"[x]\r\n\tk = 1\r\n\r\n[y]",
                                             L" a b \r\n c ",
                                             L"\u00e9\u00e8\r\n\U0001F600"};
    for (const std::wstring& text : fixed)
        ExpectSameAsToolkit(text);

    // Random texts over an alphabet rich in separators, spaces and brackets.
    const wchar_t alphabet[] = {L'a', L'b', L' ', L'\r', L'\n', L'\t', L'[', L'=', L'\u00e9'};
    std::mt19937 random(20240611);
    for (int round = 0; round < 3000; ++round) {
        std::wstring text;
        const int length = static_cast<int>(random() % 40);
        for (int i = 0; i < length; ++i)
            text.push_back(alphabet[random() % (sizeof alphabet / sizeof alphabet[0])]);
        ExpectSameAsToolkit(text);
    }
}
