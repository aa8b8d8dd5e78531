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

namespace {

// UTF-16LE bytes of a wide text (characters beyond U+FFFF as surrogate pairs), and the index of
// each character's first unit.
std::string Utf16Bytes(const std::wstring& text, std::vector<size_t>* unitOf = nullptr) {
    std::string bytes;
    for (wchar_t wc : text) {
        if (unitOf)
            unitOf->push_back(bytes.size() / 2);
        unsigned long c = static_cast<unsigned long>(wc);
        auto unit = [&bytes](unsigned long u) {
            bytes.push_back(static_cast<char>(u & 0xFF));
            bytes.push_back(static_cast<char>(u >> 8));
        };
        if (c > 0xFFFF) {
            c -= 0x10000;
            unit(0xD800 + (c >> 10));
            unit(0xDC00 + (c & 0x3FF));
        } else {
            unit(c);
        }
    }
    if (unitOf)
        unitOf->push_back(bytes.size() / 2);
    return bytes;
}

// The tokenizer over the UTF-16 bytes of a text agrees with the toolkit's over the text: the
// same tokens, and positions at the same characters (counted in units).
void ExpectUtf16SameAsToolkit(const std::wstring& text) {
    std::vector<size_t> unitOf;
    const std::string bytes = Utf16Bytes(text, &unitOf);
    wxStringTokenizer reference(wxString(text), L"\r\n\t");
    VyrLineTokenizer tokenizer;
    tokenizer.SetUtf16(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size() / 2);
    ASSERT_TRUE(tokenizer.IsUtf16());
    for (;;) {
        const bool more = reference.HasMoreTokens();
        ASSERT_EQ(more, tokenizer.HasMoreTokens()) << "text: " << wxString(text);
        if (!more)
            break;
        const wxString expected = reference.GetNextToken();
        const std::wstring_view token = tokenizer.GetNextToken();
        ASSERT_EQ(expected.ToStdWstring(), std::wstring(token));
        ASSERT_EQ(unitOf[reference.GetPosition()], tokenizer.GetPosition());
    }
}

}  // namespace

TEST(VyrLineTokenizer, ReadsUtf16BytesInPlaceAsTheToolkitReadsTheDecodedText) {
    const std::vector<std::wstring> fixed = {L"",
                                             L"a",
                                             L"\r\na",
                                             L"a\r\n",
                                             L"\t\ta\t\t",
                                             L"[x]\r\n\tk = 1\r\n\r\n[y]",
                                             L"\u00e9\u00e8\r\n\U0001F600",
                                             L"\U0001F600\t\U0001F601x\r\n\u20ac"};
    for (const std::wstring& text : fixed)
        ExpectUtf16SameAsToolkit(text);
    const wchar_t alphabet[] = {L'a',  L' ', L'\r',     L'\n',
                                L'\t', L'[', L'\u00e9', static_cast<wchar_t>(0x1F600)};
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::wstring text;
        const int length = static_cast<int>(random() % 40);
        for (int i = 0; i < length; ++i)
            text.push_back(alphabet[random() % (sizeof alphabet / sizeof alphabet[0])]);
        ExpectUtf16SameAsToolkit(text);
    }
}

TEST(VyrLineTokenizer, Utf16KeepsALoneSurrogateAsOneCharacter) {
    // A high surrogate followed by no low one, then a low one alone.
    const unsigned char bytes[] = {0x3D, 0xD8, 'a', 0, '\t', 0, 0x00, 0xDE, 'b', 0};
    VyrLineTokenizer tokenizer;
    tokenizer.SetUtf16(bytes, sizeof bytes / 2);
    EXPECT_EQ(std::wstring({static_cast<wchar_t>(0xD83D), L'a'}),
              std::wstring(tokenizer.GetNextToken()));
    EXPECT_EQ(std::wstring({static_cast<wchar_t>(0xDE00), L'b'}),
              std::wstring(tokenizer.GetNextToken()));
    EXPECT_FALSE(tokenizer.HasMoreTokens());
}

TEST(VyrLineTokenizer, AUtf16TokenStaysValidUntilTheSecondTokenAfterIt) {
    const std::string bytes = Utf16Bytes(L"first line\r\n\tsecond\r\nthird");
    VyrLineTokenizer tokenizer;
    tokenizer.SetUtf16(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size() / 2);
    const std::wstring_view first = tokenizer.GetNextToken();
    const std::wstring_view second = tokenizer.GetNextToken();
    EXPECT_EQ(L"first line", first);
    EXPECT_EQ(L"second", second);
    EXPECT_EQ(L"third", tokenizer.GetNextToken());
    EXPECT_EQ(L"second", second);
}

TEST(VyrLineTokenizer, TokenBoundsAndRangesCountUnits) {
    const std::wstring text = L"\U0001F600a\tbc\r\n";
    const std::string bytes = Utf16Bytes(text);
    VyrLineTokenizer utf16;
    utf16.SetUtf16(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size() / 2);
    ASSERT_TRUE(utf16.NextToken());
    EXPECT_EQ(0u, utf16.GetTokenStart());
    EXPECT_EQ(3u, utf16.GetTokenEnd());
    ASSERT_TRUE(utf16.NextToken());
    EXPECT_EQ(4u, utf16.GetTokenStart());
    EXPECT_EQ(6u, utf16.GetTokenEnd());
    EXPECT_FALSE(utf16.NextToken());
    std::wstring range;
    utf16.AppendRange(range, 0, 100);
    EXPECT_EQ(text, range);
    EXPECT_EQ(0xD83Du, utf16.UnitAt(0));

    VyrLineTokenizer wide(text.c_str(), text.size());
    ASSERT_TRUE(wide.NextToken());
    EXPECT_EQ(2u, wide.GetTokenEnd());
    range.clear();
    wide.AppendRange(range, 1, 4);
    EXPECT_EQ(L"a\tb", range);
}

// NextTokenAscii walks the same tokens as GetNextToken and gives their units narrowed: ASCII
// as it is, everything beyond as 0x7F, cut at the capacity; in both kinds of text.
TEST(VyrLineTokenizer, AsciiTokensAreTheTokensNarrowed) {
    const wchar_t alphabet[] = {L'1', L'.', L'e', L'-', L' ', L'\r', L'\n', L'\t', L'\v',
                                L'\u00e9', L'\u0131', static_cast<wchar_t>(0x1F600), L'}'};
    std::mt19937 random(11);
    for (int round = 0; round < 3000; ++round) {
        std::wstring text;
        const int length = static_cast<int>(random() % 60);
        for (int i = 0; i < length; ++i)
            text.push_back(alphabet[random() % (sizeof alphabet / sizeof alphabet[0])]);
        const std::string bytes = Utf16Bytes(text);
        for (bool utf16 : {false, true}) {
            VyrLineTokenizer reference, ascii;
            if (utf16) {
                const auto* b = reinterpret_cast<const unsigned char*>(bytes.data());
                reference.SetUtf16(b, bytes.size() / 2);
                ascii.SetUtf16(b, bytes.size() / 2);
            } else {
                reference.SetText(text.c_str(), text.size());
                ascii.SetText(text.c_str(), text.size());
            }
            const size_t capacity = 1 + random() % 12;
            for (;;) {
                char narrow[16];
                const size_t units = ascii.NextTokenAscii(narrow, capacity);
                ASSERT_EQ(units != 0, reference.NextToken());
                if (units == 0)
                    break;
                ASSERT_EQ(reference.GetTokenStart(), ascii.GetTokenStart());
                ASSERT_EQ(reference.GetTokenEnd(), ascii.GetTokenEnd());
                ASSERT_EQ(reference.GetPosition(), ascii.GetPosition());
                ASSERT_EQ(reference.GetTokenEnd() - reference.GetTokenStart(), units);
                for (size_t k = 0; k < units && k < capacity; ++k) {
                    const unsigned long unit = reference.UnitAt(reference.GetTokenStart() + k);
                    ASSERT_EQ(unit < 0x80 ? static_cast<char>(unit) : '\x7f', narrow[k]);
                }
            }
        }
    }
}
