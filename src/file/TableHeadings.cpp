// Headings and units of the table import.
#include "TableHeadings.h"

#include <cstring>

#include "TableText.h"

namespace vyrtable {

namespace {

// Units spelled out, lower case, and their symbols.
struct Spelled {
    const wchar_t* word;
    const wchar_t* symbol;
};
const Spelled kSpelled[] = {
    {L"second", L"s"},
    {L"seconds", L"s"},
    {L"sec", L"s"},
    {L"secs", L"s"},
    {L"millisecond", L"ms"},
    {L"milliseconds", L"ms"},
    {L"minute", L"min"},
    {L"minutes", L"min"},
    {L"hour", L"h"},
    {L"hours", L"h"},
    {L"volt", L"V"},
    {L"volts", L"V"},
    {L"millivolt", L"mV"},
    {L"millivolts", L"mV"},
    {L"ampere", L"A"},
    {L"amperes", L"A"},
    {L"amp", L"A"},
    {L"amps", L"A"},
    {L"milliampere", L"mA"},
    {L"milliamperes", L"mA"},
    {L"metre", L"m"},
    {L"metres", L"m"},
    {L"meter", L"m"},
    {L"meters", L"m"},
    {L"kelvin", L"K"},
    {L"celsius", L"\u00b0C"},
    {L"degc", L"\u00b0C"},
    {L"deg c", L"\u00b0C"},
    {L"degrees c", L"\u00b0C"},
    {L"hertz", L"Hz"},
    {L"pascal", L"Pa"},
    {L"hectopascal", L"hPa"},
    {L"newton", L"N"},
    {L"newtons", L"N"},
    {L"gram", L"g"},
    {L"grams", L"g"},
    {L"kilogram", L"kg"},
    {L"kilograms", L"kg"},
    {L"watt", L"W"},
    {L"watts", L"W"},
    {L"joule", L"J"},
    {L"joules", L"J"},
    {L"ohm", L"\u03a9"},
    {L"ohms", L"\u03a9"},
    {L"lux", L"lx"},
    {L"percent", L"%"},
    {L"radian", L"rad"},
    {L"radians", L"rad"},
    {L"degree", L"\u00b0"},
    {L"degrees", L"\u00b0"},
    {L"tesla", L"T"},
    {L"microtesla", L"\u00b5T"},
};

// Symbols a unit of its own is built of, and the prefixes they take.
const wchar_t* const kSymbols[] = {
    L"s",       L"m",       L"g",      L"A",   L"K",   L"mol",  L"cd",     L"Hz",  L"N",
    L"Pa",      L"J",       L"W",      L"C",   L"V",   L"F",    L"\u03a9", L"ohm", L"S",
    L"T",       L"H",       L"lx",     L"lm",  L"Bq",  L"Gy",   L"rad",    L"sr",  L"min",
    L"h",       L"L",       L"l",      L"bar", L"atm", L"mmHg", L"eV",     L"dB",  L"ppm",
    L"\u00b0C", L"\u00b0F", L"\u00b0", L"%",   L"deg", L"rpm",  L"Wh",     L"VA",  L"G",
};
const wchar_t kPrefixes[] = L"pnu\u00b5mcdhkMG";

bool IsSymbol(const wxString& factor) {
    for (const wchar_t* symbol : kSymbols) {
        if (factor == symbol)
            return true;
        if (factor.length() == std::wcslen(symbol) + 1 && factor.Mid(1) == symbol &&
            std::wcschr(kPrefixes, factor[0]))
            return true;
    }
    return false;
}

// A unit as such: symbols with prefixes, joined by "/", "*", "." or "·", each with an optional
// power ("m/s^2", "m s-2", "kg·m²").
bool IsUnit(const wxString& unit) {
    if (unit.empty() || unit.length() > 16)
        return false;
    wxString factor;
    auto flush = [&factor]() {
        // The power: "^2", "2", "-1", "²", "³".
        while (!factor.empty() &&
               (wxIsdigit(factor.Last()) || factor.Last() == L'-' || factor.Last() == L'^' ||
                factor.Last() == L'\u00b2' || factor.Last() == L'\u00b3'))
            factor.RemoveLast();
        const bool ok = IsSymbol(factor);
        factor.clear();
        return ok;
    };
    for (wxUniChar c : unit) {
        if (c == L'/' || c == L'*' || c == L'.' || c == L'\u00b7' || c == L' ') {
            if (!flush())
                return false;
        } else {
            factor += c;
        }
    }
    return flush();
}

const wchar_t* SpelledSymbol(const wxString& unit) {
    const wxString lower = unit.Lower();
    for (const Spelled& s : kSpelled)
        if (lower == s.word)
            return s.symbol;
    return nullptr;
}

}  // namespace

bool IsBlankText(const wxString& s) {
    return s.find_first_not_of(L" \t") == wxString::npos;
}

// The heading cut as it stands, before its unit is made plain.
static void SplitHeadingAsWritten(wxString heading, wxString& name, wxString& unit) {
    heading.Trim(true).Trim(false);
    name = heading;
    unit.clear();
    if (heading.empty())
        return;
    const wxUniChar close = heading.Last();
    if (close == L')' || close == L']') {
        const wchar_t open = close == L')' ? L'(' : L'[';
        int depth = 0;
        for (size_t k = heading.length(); k-- > 0;) {
            const wxUniChar c = heading[k];
            if (c == close)
                ++depth;
            else if (c == open && --depth == 0) {
                if (k == 0)
                    return;
                unit = heading.Mid(k + 1, heading.length() - k - 2);
                unit.Trim(true).Trim(false);
                name = heading.Left(k);
                name.Trim(true);
                // "v / (m/s)": the stroke before a bracketed unit belongs to neither.
                if (name.EndsWith(L"/")) {
                    name.RemoveLast();
                    name.Trim(true);
                }
                return;
            }
        }
        return;
    }
    const size_t stroke = heading.find(L'/');
    if (stroke != wxString::npos && stroke > 0) {
        name = heading.Left(stroke);
        name.Trim(true);
        unit = heading.Mid(stroke + 1);
        unit.Trim(false);
    }
}

void SplitHeading(wxString heading, wxString& name, wxString& unit) {
    SplitHeadingAsWritten(heading, name, unit);
    name.Trim(true).Trim(false);
    unit = PlainUnit(unit);
}

std::vector<wxString> HeadingCells(const wxString& line, wchar_t separator) {
    std::vector<wxString> cells;
    const std::wstring_view view(line.wc_str(), line.length());
    SplitCells(view, separator, [&](const Cell<wchar_t>& cell) {
        wxString text(cell.content.data(), cell.content.size());
        if (cell.escaped)
            text.Replace(L"\"\"", L"\"");
        // A control character (a tab inside quotes) is no part of a name: a blank.
        for (wxString::iterator c = text.begin(); c != text.end(); ++c)
            if (*c < 0x20)
                *c = L' ';
        auto opens = [](const wxString& t) { return !t.empty() && (t[0] == L'(' || t[0] == L'['); };
        if (separator == kBlanks && !cell.quoted && !cells.empty() && opens(text) &&
            !opens(cells.back())) {
            cells.back() += L" " + text;
            return;
        }
        cells.push_back(text);
    });
    return cells;
}

bool IsUnitsLine(std::vector<wxString>& cells, bool bare) {
    std::vector<wxString> units = cells;
    bool any = false;
    for (wxString& cell : units) {
        cell.Trim(true).Trim(false);
        if (cell.empty())
            continue;
        const bool bracketed = cell.length() >= 2 && ((cell[0] == L'(' && cell.Last() == L')') ||
                                                      (cell[0] == L'[' && cell.Last() == L']'));
        if (bracketed)
            cell = cell.Mid(1, cell.length() - 2).Trim(true).Trim(false);
        else if (!bare || !(IsUnit(cell) || SpelledSymbol(cell)))
            return false;
        any = true;
    }
    if (any)
        cells.swap(units);
    return any;
}

wxString PlainUnit(wxString unit) {
    for (const wchar_t* mark : {L"+-", L"+/-", L"\u00b1"}) {
        const size_t at = unit.find(mark);
        if (at != wxString::npos && at > 0)
            unit.Truncate(at);
    }
    unit.Trim(true).Trim(false);
    if (const wchar_t* symbol = SpelledSymbol(unit))
        return symbol;
    return unit;
}

bool NamesDateOrTime(const wxString& quantity) {
    static const wchar_t* const kWords[] = {L"date", L"datum", L"time",  L"zeit",   L"heure",
                                            L"hora", L"fecha", L"stamp", L"uhrzeit"};
    const wxString lower = quantity.Lower();
    for (const wchar_t* word : kWords)
        if (lower.find(word) != wxString::npos)
            return true;
    return false;
}

}  // namespace vyrtable
