// The text of a table as the import sees it: its encoding, its lines and their cells, and the
// separator that cuts them. Nothing here knows numbers or headings; a reader of live rows cuts
// its lines with the same SplitCells.
#ifndef VYRBASE_FILE_TABLETEXT_H
#define VYRBASE_FILE_TABLETEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <wx/string.h>

#include "vyrbase/file/VyrTableImport.h"

namespace vyrtable {

// Runs of blanks, as a separator.
const wchar_t kBlanks = L' ';

// The text after its mark: units of one byte, or of two in either byte order.
struct Units {
    const unsigned char* bytes = nullptr;
    size_t count = 0;
    bool wide = false;
    bool bigEndian = false;

    unsigned At(size_t i) const {
        if (!wide)
            return bytes[i];
        const unsigned a = bytes[2 * i], b = bytes[2 * i + 1];
        return bigEndian ? (a << 8 | b) : (b << 8 | a);
    }
};

// Where a walk over the lines stands: the next unit and the number of lines read so far.
struct LineMark {
    size_t position = 0;
    size_t number = 0;
};

// The lines of the text (ended by CRLF, LF or CR), each seen as narrow characters: the bytes
// themselves for one-byte units; for UTF-16 a copy in which a unit above ASCII becomes 0x80,
// which is neither a separator nor part of a number.
class Lines {
public:
    explicit Lines(const Units& text) : m_text(text) {}

    // The next line, without its end. False at the end of the text, and in front of a line
    // above the limit (TooLong).
    bool Next(std::string_view& line) {
        if (m_mark.position >= m_text.count || m_tooLong)
            return false;
        const size_t begin = m_mark.position;
        const size_t limit = std::min(m_text.count, begin + VyrTableImport::kMaxLineUnits + 1);
        size_t end = begin;
        if (!m_text.wide) {
            const char* chars = reinterpret_cast<const char*>(m_text.bytes);
            while (end < limit && chars[end] != '\n' && chars[end] != '\r')
                ++end;
        } else {
            while (end < limit && m_text.At(end) != '\n' && m_text.At(end) != '\r')
                ++end;
        }
        ++m_mark.number;
        if (end - begin > VyrTableImport::kMaxLineUnits) {
            m_tooLong = true;
            return false;
        }
        m_begin = begin;
        m_end = end;
        m_mark.position = end;
        if (end < m_text.count) {
            const unsigned c = m_text.At(end);
            ++m_mark.position;
            if (c == '\r' && m_mark.position < m_text.count && m_text.At(m_mark.position) == '\n')
                ++m_mark.position;
        }
        if (!m_text.wide) {
            line =
                std::string_view(reinterpret_cast<const char*>(m_text.bytes) + begin, end - begin);
        } else {
            m_narrow.resize(end - begin);
            for (size_t i = begin; i < end; ++i) {
                const unsigned c = m_text.At(i);
                m_narrow[i - begin] = c < 0x80 ? static_cast<char>(c) : '\x80';
            }
            line = m_narrow;
        }
        return true;
    }

    LineMark Mark() const { return m_mark; }
    void Seek(const LineMark& mark) {
        m_mark = mark;
        m_tooLong = false;
    }
    // The number (from 1) of the line last read, or refused as too long.
    size_t Number() const { return m_mark.number; }
    bool TooLong() const { return m_tooLong; }
    // The units of the line last read.
    size_t Begin() const { return m_begin; }
    size_t End() const { return m_end; }

private:
    const Units& m_text;
    LineMark m_mark;
    bool m_tooLong = false;
    size_t m_begin = 0;
    size_t m_end = 0;
    std::string m_narrow;
};

// One cell of a line: its content without the blanks around it, or the text between the quotes
// of a quoted cell (`escaped` when that holds doubled quotes).
template <class Char>
struct Cell {
    std::basic_string_view<Char> content;
    bool quoted = false;
    bool escaped = false;
};

// Cuts a line into cells and hands each to `take`; answers the number of cells. With runs of
// blanks as separator, blanks at either end of the line make no cell; with any other separator
// a line ending in the separator ends with an empty cell. Anything between a closing quote and
// the next separator is dropped; a quote left open ends with the line.
template <class Char, class Take>
size_t SplitCells(std::basic_string_view<Char> line, wchar_t separator, Take take) {
    const size_t n = line.size();
    const bool blanks = separator == kBlanks;
    auto isBlank = [separator](Char c) {
        return c == Char(' ') || (c == Char('\t') && separator != L'\t');
    };
    auto isSeparator = [&](Char c) {
        return blanks ? isBlank(c) : static_cast<wchar_t>(c) == separator;
    };
    size_t i = 0;
    if (blanks) {
        while (i < n && isBlank(line[i]))
            ++i;
        if (i == n)
            return 0;
    }
    size_t cells = 0;
    for (;;) {
        while (i < n && isBlank(line[i]) && !isSeparator(line[i]))
            ++i;
        Cell<Char> cell;
        if (i < n && line[i] == Char('"')) {
            cell.quoted = true;
            const size_t start = ++i;
            while (i < n) {
                if (line[i] == Char('"')) {
                    if (i + 1 < n && line[i + 1] == Char('"')) {
                        cell.escaped = true;
                        i += 2;
                        continue;
                    }
                    break;
                }
                ++i;
            }
            cell.content = line.substr(start, i - start);
            while (i < n && !isSeparator(line[i]))
                ++i;
        } else {
            const size_t start = i;
            while (i < n && !isSeparator(line[i]))
                ++i;
            size_t end = i;
            while (end > start && isBlank(line[end - 1]))
                --end;
            cell.content = line.substr(start, end - start);
        }
        ++cells;
        take(cell);
        if (i >= n)
            break;
        if (blanks) {
            while (i < n && isBlank(line[i]))
                ++i;
            if (i == n)
                break;
        } else {
            ++i;
        }
    }
    return cells;
}

// Where the text starts and how it is read: the setting, or the mark, or the bytes themselves.
// Zero bytes before the text (the unwritten sectors of a logger's card) are skipped, as are
// zero bytes after it. kErrorNone, or why the bytes are no text.
VyrTableImport::Error OpenText(const unsigned char* bytes, size_t length,
                               VyrTableImport::Encoding setting, Units& text,
                               VyrTableImport::Encoding& used);

// The units of [begin, end) decoded into wide text.
wxString Decode(const Units& text, VyrTableImport::Encoding encoding, size_t begin, size_t end);

// Guesses the separator from the first lines with content: the first of tab, ";", "," and runs
// of blanks that splits more than half of the later half of them into several cells. A comma
// that is a decimal mark separates only lines whose cells are all quoted. 0 when none does.
wchar_t GuessSeparator(const std::vector<std::string>& sample, bool commaIsMark);

// A comment line: "#" its first character that is not blank.
bool IsCommentLine(std::string_view line);

}  // namespace vyrtable

#endif
