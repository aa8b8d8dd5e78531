// Numbers as the document file writes and reads them, independent of the process locale.
//
// Writing gives exactly the text of the C formats "%d", "%x", "%g" and "%.8f" in the "C"
// locale (so the decimal separator is always a point and no "," ever needs replacing).
// Reading follows the C library's conversions in the "C" locale: leading blanks skipped, the
// longest numeric prefix taken, nothing at all read as 0; a "," is read as a decimal point so
// that files written with a decimal comma read correctly.
//
// Internal to the library; exported only so that the tests can pin the equivalence with the C
// library over many values.
#ifndef VYRBASE_FILE_VYRNUMBERTEXT_H
#define VYRBASE_FILE_VYRNUMBERTEXT_H

#include <charconv>
#include <cstddef>
#include <system_error>
#include <string_view>

#include "vyrbase/core/VyrExport.h"

namespace VyrNumberText {

// Room for the longest text of any formatter below ("%.8f" of the largest double: 309
// digits, sign, point and 8 decimals).
constexpr size_t kMaxChars = 352;

// Each writes into `buf` (at least kMaxChars) and answers the number of characters, without
// a terminating NUL.
VYRBASE_API size_t FormatInt(char* buf, int value);        // "%d"
VYRBASE_API size_t FormatHex(char* buf, int value);        // "%x" (the value taken unsigned)
VYRBASE_API size_t FormatG(char* buf, double value);       // "%g"
VYRBASE_API size_t FormatFixed8(char* buf, double value);  // "%.8f"
// The shortest text that ReadDouble turns back into the very same double (the digits of
// std::to_chars without a precision): "0.1", "1000.001", "1e+300", "-0", "inf", "nan".
VYRBASE_API size_t FormatShortest(char* buf, double value);

// The C library's wide decimal conversion (wcstol, base 10): blanks, an optional sign, then
// digits up to the first other character. Out-of-range values saturate at the int limits.
VYRBASE_API int ReadDecimal(std::wstring_view text);
// The same in base 16, with the optional "0x" prefix that wcstol accepts.
VYRBASE_API int ReadHex(std::wstring_view text);
// strtod in the "C" locale on the text with every "," taken as ".": decimal and hexadecimal
// forms, "inf", "infinity" and "nan" included, overflow giving an infinity and underflow the
// correctly rounded tiny value. Bit for bit the value of that conversion.
VYRBASE_API double ReadDouble(std::wstring_view text);
// The same on narrow text (the characters of a number are ASCII; other bytes end it).
VYRBASE_API double ReadDoubleNarrowText(std::string_view text);
inline double ReadDouble(std::string_view text) {
    // The usual text of a file, a decimal number that from_chars reads whole without a range
    // error, converts in one call; from_chars and strtod both round correctly, so they agree.
    // Everything else (signs, blanks, commas, hexadecimal, inf, nan, trailing text, overflow
    // and underflow) takes the general way.
    if (!text.empty()) {
        const char* first = text.data();
        const char* last = first + text.size();
        const char* digits = *first == '-' ? first + 1 : first;
        if (digits < last && ((*digits >= '0' && *digits <= '9') || *digits == '.')) {
            double value;
            const std::from_chars_result result = std::from_chars(first, last, value);
            if (result.ec == std::errc() && result.ptr == last)
                return value;
        }
    }
    return ReadDoubleNarrowText(text);
}

}  // namespace VyrNumberText

#endif
