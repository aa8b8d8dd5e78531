#include "diagram/VyrUnitTypeset.h"

namespace {

const wchar_t kSuperscriptDigits[] =
    L"\u2070\u00b9\u00b2\u00b3\u2074\u2075\u2076\u2077\u2078\u2079";
const wchar_t kSuperscriptMinus = L'\u207b';
const wchar_t kMicro = L'\u00b5';

// Unit symbols that a micro prefix can stand before, longest first so that "mol" wins over "m".
const wchar_t* const kMicroable[] = {L"mol", L"Pa", L"Hz", L"Wb", L"V", L"A",     L"s",
                                     L"m",   L"g",  L"L",  L"l",  L"S", L"F",     L"H",
                                     L"T",   L"W",  L"J",  L"C",  L"N", L"\u03a9"};

bool IsFactorSeparator(wxUniChar c) {
    return c == '/' || c == '*' || c == ' ' || c == '(' || c == wxUniChar(0x00b7);
}

// Whether `rest` (what follows a "u" at the start of a factor) is a unit symbol that ends the
// factor or is followed by a power.
bool IsMicroUnit(const wxString& unit, size_t at) {
    for (const wchar_t* symbol : kMicroable) {
        const wxString s(symbol);
        if (unit.compare(at, s.length(), s) != 0)
            continue;
        const size_t end = at + s.length();
        if (end == unit.length() || IsFactorSeparator(unit[end]) || unit[end] == '^')
            return true;
    }
    return false;
}

}  // namespace

wxString VyrTypesetUnit(const wxString& unit) {
    wxString shown;
    shown.reserve(unit.length());
    bool factorStart = true;
    for (size_t i = 0; i < unit.length(); ++i) {
        const wxUniChar c = unit[i];
        if (factorStart && c == 'u' && IsMicroUnit(unit, i + 1)) {
            shown += kMicro;
            factorStart = false;
            continue;
        }
        if (c == '^') {
            // A power: an optional minus and at least one digit, all raised.
            size_t j = i + 1;
            const bool minus = j < unit.length() && unit[j] == '-';
            if (minus)
                ++j;
            size_t digits = j;
            while (digits < unit.length() && unit[digits] >= '0' && unit[digits] <= '9')
                ++digits;
            if (digits > j) {
                if (minus)
                    shown += kSuperscriptMinus;
                for (size_t k = j; k < digits; ++k)
                    shown += kSuperscriptDigits[unit[k].GetValue() - '0'];
                i = digits - 1;
                factorStart = false;
                continue;
            }
        }
        shown += c;
        factorStart = IsFactorSeparator(c);
    }
    return shown;
}
