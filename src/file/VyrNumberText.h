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

#include <cstddef>
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

// The C library's wide decimal conversion (wcstol, base 10): blanks, an optional sign, then
// digits up to the first other character. Out-of-range values saturate at the int limits.
VYRBASE_API int ReadDecimal(std::wstring_view text);
// The same in base 16, with the optional "0x" prefix that wcstol accepts.
VYRBASE_API int ReadHex(std::wstring_view text);
// strtod in the "C" locale on the text with every "," taken as ".": decimal and hexadecimal
// forms, "inf", "infinity" and "nan" included, overflow giving an infinity and underflow the
// correctly rounded tiny value. Bit for bit the value of that conversion.
VYRBASE_API double ReadDouble(std::wstring_view text);

}  // namespace VyrNumberText

#endif
