// The document reader's line tokenizer: cuts a decoded, NUL-terminated wide text into tokens
// separated by any of "\r", "\n" and "\t". Runs of separators count as one and empty tokens are
// never returned, so every token is one non-empty line of the file without its leading tabs (a
// tab inside a line splits it). Tokens are views into the text: no copy, no allocation.
//
// It yields exactly the tokens, and reports exactly the positions, of the toolkit's
// wxStringTokenizer set on the same text with the delimiters "\r\n\t" in its default mode (the
// tests compare both): GetPosition is the index just after the single separator that ended the
// last token, or the end of the text when the token ran to the end.
//
// The text is not owned and must outlive the tokenizer's use of it.
#ifndef VYRBASE_CORE_VYRLINETOKENIZER_H
#define VYRBASE_CORE_VYRLINETOKENIZER_H

#include <cstddef>
#include <string_view>

class VyrLineTokenizer {
public:
    VyrLineTokenizer() = default;
    VyrLineTokenizer(const wchar_t* text, size_t length) { SetText(text, length); }

    static bool IsSeparator(wchar_t c) { return c == L'\r' || c == L'\n' || c == L'\t'; }

    void SetText(const wchar_t* text, size_t length) {
        m_pText = text;
        m_iLength = text ? length : 0;
        m_iPos = 0;
    }
    // Forgets the text.
    void Clear() { SetText(nullptr, 0); }

    // True while a character other than a separator remains after the position.
    bool HasMoreTokens() const {
        for (size_t i = m_iPos; i < m_iLength; ++i)
            if (!IsSeparator(m_pText[i]))
                return true;
        return false;
    }

    // The next non-empty token, or an empty view when none remains (the position then stays).
    std::wstring_view GetNextToken() {
        if (!HasMoreTokens())
            return std::wstring_view();
        for (;;) {
            const size_t start = m_iPos;
            size_t end = start;
            while (end < m_iLength && !IsSeparator(m_pText[end]))
                ++end;
            // Past the one separator that ended the token, as the toolkit's tokenizer does.
            m_iPos = end < m_iLength ? end + 1 : m_iLength;
            if (end > start)
                return std::wstring_view(m_pText + start, end - start);
        }
    }

    size_t GetPosition() const { return m_iPos; }
    const wchar_t* GetText() const { return m_pText; }
    size_t GetLength() const { return m_iLength; }

private:
    const wchar_t* m_pText = nullptr;
    size_t m_iLength = 0;
    size_t m_iPos = 0;
};

#endif
