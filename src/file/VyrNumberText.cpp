// Locale-independent number text: std::to_chars / std::from_chars give the C formats' text and
// the C conversions' values (the tests compare them with snprintf and strtod_l over many values)
// without touching the process locale and without allocating. The rare inputs from_chars does
// not cover the way strtod does (out-of-range magnitudes, NaN payloads) go through strtod_l in
// a "C" locale.
#include "file/VyrNumberText.h"

#include <charconv>
#include <climits>
#include <cstdlib>
#include <locale.h>
#include <string>
#include <type_traits>

namespace VyrNumberText {

namespace {

bool IsBlank(wchar_t c) {
    // The white space of the "C" locale, which the C conversions skip.
    return c == L' ' || c == L'\t' || c == L'\n' || c == L'\v' || c == L'\f' || c == L'\r';
}

size_t SkipBlanks(std::wstring_view text) {
    size_t i = 0;
    while (i < text.size() && IsBlank(text[i]))
        ++i;
    return i;
}

int HexDigit(wchar_t c) {
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    if (c >= L'a' && c <= L'f')
        return c - L'a' + 10;
    if (c >= L'A' && c <= L'F')
        return c - L'A' + 10;
    return -1;
}

// wcstol followed by a saturating conversion to int.
int ReadInteger(std::wstring_view text, int base) {
    size_t i = SkipBlanks(text);
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) {
        negative = text[i] == L'-';
        ++i;
    }
    // wcstol skips "0x" only when a hexadecimal digit follows; otherwise it reads the "0".
    if (base == 16 && i + 2 < text.size() && text[i] == L'0' &&
        (text[i + 1] == L'x' || text[i + 1] == L'X') && HexDigit(text[i + 2]) >= 0)
        i += 2;
    // Accumulate as a negative magnitude so that INT_MIN is reachable without overflow.
    long long magnitude = 0;
    const long long limit = static_cast<long long>(INT_MAX) + 1;
    for (; i < text.size(); ++i) {
        const int digit = HexDigit(text[i]);
        if (digit < 0 || digit >= base)
            break;
        if (magnitude <= limit)
            magnitude = magnitude * base + digit;
    }
    if (negative)
        return magnitude >= limit ? INT_MIN : static_cast<int>(-magnitude);
    return magnitude > INT_MAX ? INT_MAX : static_cast<int>(magnitude);
}

// The characters that can belong to what strtod reads: digits, signs, points, exponent and
// hexadecimal letters, "inf"/"nan" and the n-char sequence of "nan(...)". A table, since every
// character of every number of a file passes through it.
struct NumberCharTable {
    bool belongs[128] = {};
    constexpr NumberCharTable() {
        for (int c = 0; c < 128; ++c)
            belongs[c] = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                         (c >= 'A' && c <= 'Z') || c == '.' || c == ',' || c == '+' || c == '-' ||
                         c == '(' || c == ')' || c == '_';
    }
};
constexpr NumberCharTable kNumberChars;

template <class Unit>
bool MayBelongToNumber(Unit unit) {
    // Through unsigned: a narrow byte above 127 (a negative char) belongs to no number.
    const auto c = static_cast<std::make_unsigned_t<Unit>>(unit);
    return c < 128 && kNumberChars.belongs[c];
}

locale_t CLocale() {
    static locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}

double ReadDoubleNarrow(const char* first, const char* last) {
    const char* p = first;
    bool negative = false;
    if (p < last && (*p == '+' || *p == '-')) {
        negative = *p == '-';
        ++p;
    }
    // A second sign (from_chars would take "-") means nothing is converted.
    if (p == last || *p == '+' || *p == '-')
        return 0.0;
    double value = 0.0;
    std::from_chars_result result;
    if (last - p >= 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) {
        const char* digits = p + 2;
        if (digits < last && (*digits == '+' || *digits == '-'))
            result = {digits, std::errc::invalid_argument};
        else
            result = std::from_chars(digits, last, value, std::chars_format::hex);
        // "0x" not followed by a hexadecimal number: strtod reads the "0".
        if (result.ec == std::errc::invalid_argument) {
            value = 0.0;
            result.ec = std::errc();
        }
    } else {
        result = std::from_chars(p, last, value, std::chars_format::general);
        if (result.ec == std::errc::invalid_argument)
            return 0.0;
    }
    if (result.ec == std::errc::result_out_of_range || value != value) {
        // Overflow to an infinity, underflow to a subnormal or zero, and the payload of
        // "nan(...)": strtod's own answer.
        std::string copy(first, last);
        return strtod_l(copy.c_str(), nullptr, CLocale());
    }
    return negative ? -value : value;
}

// strtod on the text (wide or narrow units): blanks skipped, the candidate characters narrowed
// with "," read as ".", then converted.
template <class Text>
double ReadDoubleUnits(Text text) {
    size_t i = 0;
    while (i < text.size() && IsBlank(static_cast<wchar_t>(text[i])))
        ++i;
    size_t end = i;
    bool comma = false;
    while (end < text.size() && MayBelongToNumber(text[end])) {
        comma = comma || text[end] == ',';
        ++end;
    }
    if (end == i)
        return 0.0;
    // Narrow text without a comma is converted where it lies.
    if constexpr (std::is_same_v<Text, std::string_view>) {
        if (!comma)
            return ReadDoubleNarrow(text.data() + i, text.data() + end);
    }
    // The candidate characters are ASCII: narrow them, with "," read as ".".
    char small[128];
    std::string large;
    char* narrow = small;
    const size_t count = end - i;
    if (count > sizeof small) {
        large.resize(count);
        narrow = &large[0];
    }
    for (size_t k = 0; k < count; ++k) {
        const auto c = text[i + k];
        narrow[k] = c == ',' ? '.' : static_cast<char>(c);
    }
    return ReadDoubleNarrow(narrow, narrow + count);
}

}  // namespace

size_t FormatInt(char* buf, int value) {
    return static_cast<size_t>(std::to_chars(buf, buf + kMaxChars, value).ptr - buf);
}

size_t FormatHex(char* buf, int value) {
    return static_cast<size_t>(
        std::to_chars(buf, buf + kMaxChars, static_cast<unsigned>(value), 16).ptr - buf);
}

size_t FormatG(char* buf, double value) {
    return static_cast<size_t>(
        std::to_chars(buf, buf + kMaxChars, value, std::chars_format::general, 6).ptr - buf);
}

size_t FormatFixed8(char* buf, double value) {
    return static_cast<size_t>(
        std::to_chars(buf, buf + kMaxChars, value, std::chars_format::fixed, 8).ptr - buf);
}

size_t FormatShortest(char* buf, double value) {
    return static_cast<size_t>(std::to_chars(buf, buf + kMaxChars, value).ptr - buf);
}

int ReadDecimal(std::wstring_view text) {
    return ReadInteger(text, 10);
}

int ReadHex(std::wstring_view text) {
    return ReadInteger(text, 16);
}

double ReadDouble(std::wstring_view text) {
    return ReadDoubleUnits(text);
}

double ReadDoubleNarrowText(std::string_view text) {
    return ReadDoubleUnits(text);
}

}  // namespace VyrNumberText
