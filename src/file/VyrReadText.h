// Reading one line of a section: recognising its key and taking its value. Lines are views
// into the decoded text (VyrLineTokenizer); nothing here allocates except the texts handed out.
//
// A line is recognised when its first characters equal a key (a case-sensitive prefix test of
// the key's length), the keys being tried in the order of the section's list: so "oid" also
// matches any line that begins with "oid", and the order of a list is part of the format.
//
// Internal to the library; exported only for the tests.
#ifndef VYRBASE_FILE_VYRREADTEXT_H
#define VYRBASE_FILE_VYRREADTEXT_H

#include <cstddef>
#include <string_view>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

namespace VyrReadText {

inline bool IsHeader(std::wstring_view line) {
    return !line.empty() && line[0] == L'[';
}

inline bool HasPrefix(std::wstring_view line, std::wstring_view key) {
    return line.size() >= key.size() && line.compare(0, key.size(), key) == 0;
}

// The index of the first key of `keys` that begins the line, or -1.
template <size_t N>
int MatchKey(std::wstring_view line, const wchar_t* const (&keys)[N]) {
    for (size_t i = 0; i < N; ++i)
        if (HasPrefix(line, keys[i]))
            return static_cast<int>(i);
    return -1;
}

inline wxString ToString(std::wstring_view text) {
    return wxString(text.data(), text.size());
}

// The text after the first "=" of the line; `found` tells whether there was one.
inline std::wstring_view AfterEqual(std::wstring_view line, bool* found = nullptr) {
    const size_t eq = line.find(L'=');
    if (found)
        *found = eq != std::wstring_view::npos;
    return eq == std::wstring_view::npos ? std::wstring_view() : line.substr(eq + 1);
}

// GetInt: the wide decimal conversion of the text after the first "="; 0 without "=".
VYRBASE_API int IntValue(std::wstring_view line);
// GetDouble: the text after the first "=" with "," read as ".", converted in the "C" locale;
// 0.0 without "=".
VYRBASE_API double DoubleValue(std::wstring_view line);

// The closing-quote scan of one piece of a quoted value: the first double quote whose
// preceding character (raw, within the piece) is not a backslash ends the value. The text
// before it, with every backslash-quote turned into a quote and then every pair of backslashes
// into one, is appended to `value`. Answers whether the closing quote was found.
VYRBASE_API bool ScanClosingQuote(std::wstring_view piece, wxString& value);

}  // namespace VyrReadText

#endif
