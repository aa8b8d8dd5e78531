#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>
#include <locale.h>
#include <random>
#include <string>

#include <wx/string.h>

#include "file/VyrNumberText.h"

namespace {

locale_t CLocale() {
    static locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}

// The C library's text of `format` applied to v, in the "C" locale.
std::string CFormat(const char* format, double v) {
    locale_t previous = uselocale(CLocale());
    char buf[512];
    std::snprintf(buf, sizeof buf, format, v);
    uselocale(previous);
    return buf;
}

std::string Ours(size_t (*format)(char*, double), double v) {
    char buf[VyrNumberText::kMaxChars];
    return std::string(buf, format(buf, v));
}

// strtod in the "C" locale of a text with "," read as ".".
double CStrtod(const std::wstring& text) {
    std::string narrow;
    for (wchar_t c : text)
        narrow.push_back(c == L',' ? '.' : (c < 128 ? static_cast<char>(c) : '\x7f'));
    return strtod_l(narrow.c_str(), nullptr, CLocale());
}

int CWcstol(const std::wstring& text, int base) {
    errno = 0;
    const long long v = std::wcstoll(text.c_str(), nullptr, base);
    if (v > INT_MAX)
        return INT_MAX;
    if (v < INT_MIN)
        return INT_MIN;
    return static_cast<int>(v);
}

// The narrow conversion of a text, each character beyond ASCII given as 0x7F as the reader of
// tables gives it.
double NarrowRead(const std::wstring& text) {
    std::string narrow;
    for (wchar_t c : text)
        narrow.push_back(c >= 0 && c < 128 ? static_cast<char>(c) : '\x7f');
    return VyrNumberText::ReadDouble(std::string_view(narrow));
}

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

std::wstring Widen(const std::string& s) {
    return std::wstring(s.begin(), s.end());
}

const double kSpecial[] = {0.0,
                           -0.0,
                           1e-300,
                           -1e-300,
                           1e300,
                           -1e300,
                           std::numeric_limits<double>::denorm_min(),
                           -std::numeric_limits<double>::denorm_min(),
                           2.2250738585072009e-308,
                           std::numeric_limits<double>::min(),
                           std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::lowest(),
                           std::numeric_limits<double>::quiet_NaN(),
                           -std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           1e6,
                           999999.5,
                           123456.0,
                           1234567.0,
                           1e-5,
                           0.0001,
                           0.1,
                           1.5,
                           -2.25,
                           0.5e-8,
                           0.49999999e-8,
                           1e15,
                           1e16,
                           1e22,
                           9.999995,
                           3.14159265358979};

}  // namespace

TEST(VyrNumberText, FormatsLikeTheCFormatsOnSpecialValues) {
    for (double v : kSpecial) {
        EXPECT_EQ(CFormat("%g", v), Ours(&VyrNumberText::FormatG, v)) << v;
        EXPECT_EQ(CFormat("%.8f", v), Ours(&VyrNumberText::FormatFixed8, v)) << v;
    }
    EXPECT_EQ("1e+06", Ours(&VyrNumberText::FormatG, 1e6));
    EXPECT_EQ("-nan", Ours(&VyrNumberText::FormatG, -std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ("-inf", Ours(&VyrNumberText::FormatG, -std::numeric_limits<double>::infinity()));
    EXPECT_EQ("0.00000000", Ours(&VyrNumberText::FormatFixed8, 0.0));
}

TEST(VyrNumberText, FormatsLikeTheCFormatsOnManyValues) {
    std::mt19937_64 random(42);
    int differences = 0;
    for (int i = 0; i < 400000; ++i) {
        double v;
        if (i % 2 == 0) {
            // Any bit pattern: every exponent, subnormals, NaN payloads.
            const uint64_t bits = random();
            std::memcpy(&v, &bits, sizeof v);
        } else {
            // Values a lab writes: a few significant digits over a moderate range.
            v = std::ldexp(static_cast<double>(random() % 100000000),
                           static_cast<int>(random() % 90) - 60);
            if (random() % 2)
                v = -v;
        }
        if (CFormat("%g", v) != Ours(&VyrNumberText::FormatG, v))
            ++differences;
        if (i % 8 == 0 && CFormat("%.8f", v) != Ours(&VyrNumberText::FormatFixed8, v))
            ++differences;
    }
    EXPECT_EQ(0, differences);
}

TEST(VyrNumberText, FormatsIntegersLikePercentDAndPercentX) {
    const int values[] = {0, 1, -1, 42, 257, 16777215, INT_MAX, INT_MIN, -2};
    for (int v : values) {
        char c[64], ours[VyrNumberText::kMaxChars];
        std::snprintf(c, sizeof c, "%d", v);
        EXPECT_EQ(std::string(c), std::string(ours, VyrNumberText::FormatInt(ours, v)));
        std::snprintf(c, sizeof c, "%x", static_cast<unsigned>(v));
        EXPECT_EQ(std::string(c), std::string(ours, VyrNumberText::FormatHex(ours, v)));
    }
}

TEST(VyrNumberText, ReadsWhatItWritesBitForBitThroughPercentA) {
    // "%a" is exact, so reading it back must give the same bits (hexadecimal form included).
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const uint64_t bits = random();
        double v;
        std::memcpy(&v, &bits, sizeof v);
        if (std::isnan(v))
            continue;
        const std::string text = CFormat("%a", v);
        EXPECT_TRUE(SameBits(v, VyrNumberText::ReadDouble(Widen(text)))) << text;
    }
}

TEST(VyrNumberText, ReadsLikeStrtodInTheCLocale) {
    const std::vector<std::wstring> fixed = {L"1.5",
                                             L"1.5abc",
                                             L"  2,5",
                                             L"\t-3",
                                             L"+4",
                                             L"+-1",
                                             L"--1",
                                             L"-+1",
                                             L".",
                                             L".5",
                                             L"5.",
                                             L"1e",
                                             L"1e+",
                                             L"1e-3x",
                                             L"1E5",
                                             L"0x1p3",
                                             L"-0x1p3",
                                             L"0x",
                                             L"0xg",
                                             L"0x.8p1",
                                             L"0x1.8",
                                             L"0X1P-2",
                                             L"0x-1",
                                             L"inf",
                                             L"-inf",
                                             L"infinity",
                                             L"INFINITY",
                                             L"infin",
                                             L"nan",
                                             L"-nan",
                                             L"NaN",
                                             L"nan(123)",
                                             L"nan(",
                                             L"nan()",
                                             L"1e400",
                                             L"-1e400",
                                             L"1e-400",
                                             L"2e-324",
                                             L"4.9e-324",
                                             L"1e-310",
                                             L"abc",
                                             L"",
                                             L" ",
                                             L"1,5,6",
                                             L"1.5.6",
                                             L"\u00e91",
                                             L"1\u00e9",
                                             L"0,000001",
                                             L"123456789012345678901234567890",
                                             L"0.000000000000000000000000000000000001e36"};
    for (const std::wstring& text : fixed) {
        EXPECT_TRUE(SameBits(CStrtod(text), VyrNumberText::ReadDouble(text))) << wxString(text);
        EXPECT_TRUE(SameBits(CStrtod(text), NarrowRead(text))) << "narrow " << wxString(text);
    }

    // Random texts over the characters numbers are made of.
    const wchar_t alphabet[] = L"0123456789.,+-eExXpPinfatyNAI()_ 9";
    const size_t letters = sizeof alphabet / sizeof alphabet[0] - 1;
    std::mt19937 random(99);
    int differences = 0;
    for (int round = 0; round < 200000; ++round) {
        std::wstring text;
        const int length = 1 + static_cast<int>(random() % 14);
        for (int i = 0; i < length; ++i)
            text.push_back(alphabet[random() % letters]);
        if (!SameBits(CStrtod(text), VyrNumberText::ReadDouble(text)) ||
            !SameBits(CStrtod(text), NarrowRead(text))) {
            if (++differences < 5)
                ADD_FAILURE() << "differs on " << wxString(text);
        }
    }
    EXPECT_EQ(0, differences);
}

TEST(VyrNumberText, ReadsTheGformatOfManyValuesBackLikeStrtod) {
    std::mt19937_64 random(3);
    for (int i = 0; i < 50000; ++i) {
        const uint64_t bits = random();
        double v;
        std::memcpy(&v, &bits, sizeof v);
        for (const char* format : {"%g", "%.17g", "%.8f"}) {
            if (format[1] == '.' && format[3] == 'f' && std::fabs(v) > 1e30)
                continue;
            const std::wstring text = Widen(CFormat(format, v));
            ASSERT_TRUE(SameBits(CStrtod(text), VyrNumberText::ReadDouble(text))) << wxString(text);
            ASSERT_TRUE(SameBits(CStrtod(text), NarrowRead(text))) << "narrow " << wxString(text);
        }
    }
}

TEST(VyrNumberText, ReadsIntegersLikeWcstolSaturatedToInt) {
    const std::vector<std::wstring> fixed = {L"12",
                                             L"  12",
                                             L"-7",
                                             L"+7",
                                             L"12abc",
                                             L"abc",
                                             L"",
                                             L"2147483647",
                                             L"2147483648",
                                             L"-2147483648",
                                             L"-2147483649",
                                             L"99999999999999999999999",
                                             L"-99999999999999999999999",
                                             L"+-3",
                                             L"3 4",
                                             L"0x1A",
                                             L"1A",
                                             L"ff",
                                             L"0xg",
                                             L"\u00e93"};
    for (const std::wstring& text : fixed) {
        EXPECT_EQ(CWcstol(text, 10), VyrNumberText::ReadDecimal(text)) << wxString(text);
        EXPECT_EQ(CWcstol(text, 16), VyrNumberText::ReadHex(text)) << wxString(text);
    }
    const wchar_t alphabet[] = L"0123456789abcdefxX+- 9";
    const size_t letters = sizeof alphabet / sizeof alphabet[0] - 1;
    std::mt19937 random(5);
    for (int round = 0; round < 50000; ++round) {
        std::wstring text;
        const int length = 1 + static_cast<int>(random() % 22);
        for (int i = 0; i < length; ++i)
            text.push_back(alphabet[random() % letters]);
        ASSERT_EQ(CWcstol(text, 10), VyrNumberText::ReadDecimal(text)) << wxString(text);
        ASSERT_EQ(CWcstol(text, 16), VyrNumberText::ReadHex(text)) << wxString(text);
    }
}

TEST(VyrNumberText, ReadsOnlyWithinTheGivenText) {
    // A view cut out of a longer line: the conversion must not run into the rest.
    const std::wstring line = L"12345";
    EXPECT_EQ(12, VyrNumberText::ReadDecimal(std::wstring_view(line).substr(0, 2)));
    EXPECT_EQ(1.0, VyrNumberText::ReadDouble(std::wstring_view(line).substr(0, 1)));
}
