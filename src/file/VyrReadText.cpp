// Values of one line: integers, reals and the pieces of quoted texts.
#include "file/VyrReadText.h"

#include <string>

#include "file/VyrNumberText.h"

namespace VyrReadText {

namespace {

// Every occurrence of `from` (two characters) replaced by `to`, scanning left to right and
// going on after each replacement, as the toolkit's Replace does.
std::wstring ReplacePairs(const std::wstring& text, const wchar_t* from, wchar_t to) {
    std::wstring out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == from[0] && i + 1 < text.size() && text[i + 1] == from[1]) {
            out.push_back(to);
            ++i;
        } else {
            out.push_back(text[i]);
        }
    }
    return out;
}

}  // namespace

int IntValue(std::wstring_view line) {
    bool found = false;
    std::wstring_view value = AfterEqual(line, &found);
    return found ? VyrNumberText::ReadDecimal(value) : 0;
}

double DoubleValue(std::wstring_view line) {
    bool found = false;
    std::wstring_view value = AfterEqual(line, &found);
    return found ? VyrNumberText::ReadDouble(value) : 0.0;
}

bool ScanClosingQuote(std::wstring_view piece, wxString& value) {
    bool closed = false;
    size_t end = piece.size();
    for (size_t i = 0; i < piece.size(); ++i) {
        if (piece[i] == L'"' && (i == 0 || piece[i - 1] != L'\\')) {
            end = i;
            closed = true;
            break;
        }
    }
    std::wstring text(piece.substr(0, end));
    if (text.find(L'\\') != std::wstring::npos) {
        // Kept: quotes are unescaped first, then doubled backslashes halved, although the
        // writer escapes quotes only.
        text = ReplacePairs(text, L"\\\"", L'"');
        text = ReplacePairs(text, L"\\\\", L'\\');
    }
    value.append(text.data(), text.size());
    return closed;
}

}  // namespace VyrReadText
