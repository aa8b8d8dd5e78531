// The document reader's line tokenizer: cuts a text into tokens separated by any of "\r", "\n"
// and "\t". Runs of separators count as one and empty tokens are never returned, so every token
// is one non-empty line of the file without its leading tabs (a tab inside a line splits it).
//
// The text is either wide characters (SetText: tokens are views into it, no copy) or the
// UTF-16 little-endian bytes of a file (SetUtf16: read in place, never decoded as a whole, so
// that loading needs no second copy of the file; each token is decoded into a buffer of the
// tokenizer, surrogate pairs joined into one character, a lone surrogate kept as it is).
// Positions count units of the text: characters, or 16-bit units for UTF-16.
//
// It yields exactly the tokens, and reports exactly the positions, of the toolkit's
// wxStringTokenizer set on the same (decoded) text with the delimiters "\r\n\t" in its default
// mode (the tests compare both): GetPosition is the index just after the single separator that
// ended the last token, or the end of the text when the token ran to the end.
//
// The text is not owned and must outlive the tokenizer's use of it. A token of UTF-16 text
// stays valid until the second GetNextToken after it (two buffers alternate), so a reader may
// hold its current line while it pulls the next one.
#ifndef VYRBASE_CORE_VYRLINETOKENIZER_H
#define VYRBASE_CORE_VYRLINETOKENIZER_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

class VyrLineTokenizer {
public:
    VyrLineTokenizer() = default;
    VyrLineTokenizer(const wchar_t* text, size_t length) { SetText(text, length); }

    static bool IsSeparator(unsigned long c) { return c == L'\r' || c == L'\n' || c == L'\t'; }

    // Wide text of `length` characters.
    void SetText(const wchar_t* text, size_t length) {
        m_pWide = text;
        m_pBytes = nullptr;
        m_iLength = text ? length : 0;
        m_iPos = 0;
        m_iTokenStart = m_iTokenEnd = 0;
    }
    // UTF-16LE text of `units` 16-bit units (2 * units bytes).
    void SetUtf16(const unsigned char* bytes, size_t units) {
        m_pWide = nullptr;
        m_pBytes = bytes;
        m_iLength = bytes ? units : 0;
        m_iPos = 0;
        m_iTokenStart = m_iTokenEnd = 0;
    }
    // Forgets the text.
    void Clear() { SetText(nullptr, 0); }

    bool IsUtf16() const { return m_pBytes != nullptr; }
    // The UTF-16 bytes (null for wide text).
    const unsigned char* GetUtf16Bytes() const { return m_pBytes; }
    // The wide text (null for UTF-16 bytes).
    const wchar_t* GetWideText() const { return m_pWide; }
    // The unit at index i (below GetLength): a character, or one 16-bit unit.
    unsigned long UnitAt(size_t i) const {
        return m_pBytes ? (m_pBytes[2 * i] | (static_cast<unsigned>(m_pBytes[2 * i + 1]) << 8))
                        : static_cast<unsigned long>(m_pWide[i]);
    }

    // True while a character other than a separator remains after the position.
    bool HasMoreTokens() const { return SkipSeparators(m_iPos) < m_iLength; }

    // Moves to the next non-empty token and answers whether there was one (the position stays
    // otherwise). Its units are [GetTokenStart(), GetTokenEnd()).
    bool NextToken() {
        const size_t start = SkipSeparators(m_iPos);
        if (start >= m_iLength)
            return false;
        size_t end = start + 1;
        if (m_pBytes) {
            while (end < m_iLength && !IsSeparator(UnitAt(end)))
                ++end;
        } else {
            while (end < m_iLength && !IsSeparator(static_cast<unsigned long>(m_pWide[end])))
                ++end;
        }
        // Past the one separator that ended the token, as the toolkit's tokenizer does.
        m_iPos = end < m_iLength ? end + 1 : m_iLength;
        m_iTokenStart = start;
        m_iTokenEnd = end;
        return true;
    }
    // NextToken that also copies the token's first `capacity` units into `ascii`, each unit
    // beyond ASCII as 0x7F (a byte that belongs to no number); answers the token's length in
    // units, or 0 at the end of the text. For readers of numbers, which need no wide text.
    size_t NextTokenAscii(char* ascii, size_t capacity) {
        const size_t start = SkipSeparators(m_iPos);
        if (start >= m_iLength)
            return 0;
        size_t end = start;
        if (m_pBytes) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
            // Four units at a time while they are ASCII and none is a control character (the
            // separators among them): one test and the four low bytes.
            while (end + 4 <= m_iLength && end - start + 4 <= capacity) {
                uint64_t word;
                std::memcpy(&word, m_pBytes + 2 * end, sizeof word);
                const bool ascii4 = (word & 0xFF80FF80FF80FF80ULL) == 0;
                const bool control =
                    ((word - 0x000E000E000E000EULL) & ~word & 0x8000800080008000ULL) != 0;
                if (!ascii4 || control)
                    break;
                char* out = ascii + (end - start);
                out[0] = static_cast<char>(word);
                out[1] = static_cast<char>(word >> 16);
                out[2] = static_cast<char>(word >> 32);
                out[3] = static_cast<char>(word >> 48);
                end += 4;
            }
#endif
            for (; end < m_iLength; ++end) {
                const unsigned unit =
                    m_pBytes[2 * end] | (static_cast<unsigned>(m_pBytes[2 * end + 1]) << 8);
                if (IsSeparator(unit))
                    break;
                if (end - start < capacity)
                    ascii[end - start] = unit < 0x80 ? static_cast<char>(unit) : '\x7f';
            }
        } else {
            for (; end < m_iLength; ++end) {
                const unsigned long unit = static_cast<unsigned long>(m_pWide[end]);
                if (IsSeparator(unit))
                    break;
                if (end - start < capacity)
                    ascii[end - start] = unit < 0x80 ? static_cast<char>(unit) : '\x7f';
            }
        }
        m_iPos = end < m_iLength ? end + 1 : m_iLength;
        m_iTokenStart = start;
        m_iTokenEnd = end;
        return end - start;
    }
    size_t GetTokenStart() const {
        return m_iTokenStart;
    }
    size_t GetTokenEnd() const {
        return m_iTokenEnd;
    }

    // The next non-empty token, or an empty view when none remains (the position then stays).
    std::wstring_view GetNextToken() {
        if (!NextToken())
            return std::wstring_view();
        if (!m_pBytes)
            return std::wstring_view(m_pWide + m_iTokenStart, m_iTokenEnd - m_iTokenStart);
        std::wstring& buffer = m_sToken[m_iBuffer];
        m_iBuffer ^= 1;
        buffer.clear();
        AppendRange(buffer, m_iTokenStart, m_iTokenEnd);
        return buffer;
    }

    // Appends the characters of units [start, end) to `out`, decoding UTF-16.
    void AppendRange(std::wstring& out, size_t start, size_t end) const {
        if (end > m_iLength)
            end = m_iLength;
        if (start >= end)
            return;
        if (!m_pBytes) {
            out.append(m_pWide + start, end - start);
            return;
        }
        for (size_t i = start; i < end; ++i) {
            unsigned long c = UnitAt(i);
            if (sizeof(wchar_t) > 2 && c >= 0xD800 && c <= 0xDBFF && i + 1 < end) {
                const unsigned long low = UnitAt(i + 1);
                if (low >= 0xDC00 && low <= 0xDFFF) {
                    c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
            out.push_back(static_cast<wchar_t>(c));
        }
    }

    size_t GetPosition() const {
        return m_iPos;
    }
    size_t GetLength() const {
        return m_iLength;
    }

private:
    size_t SkipSeparators(size_t i) const {
        if (m_pBytes) {
            while (i < m_iLength && IsSeparator(UnitAt(i)))
                ++i;
        } else {
            while (i < m_iLength && IsSeparator(static_cast<unsigned long>(m_pWide[i])))
                ++i;
        }
        return i;
    }

    const wchar_t* m_pWide = nullptr;
    const unsigned char* m_pBytes = nullptr;
    size_t m_iLength = 0;
    size_t m_iPos = 0;
    size_t m_iTokenStart = 0;
    size_t m_iTokenEnd = 0;
    std::wstring m_sToken[2];
    int m_iBuffer = 0;
};

#endif
