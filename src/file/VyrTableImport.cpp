// Importing a text table into a document. The bytes are read in place, twice: a first walk
// finds the header, the columns and the number of rows without converting a number, so that
// a refused table leaves the document untouched and the vectors get exactly their size; a
// second walk converts every cell straight into the vectors' storage. Only the line that names
// the columns is decoded into wide text: a table of millions of rows is never held as wide
// characters, and UTF-16 lines are narrowed one at a time for reading their numbers.
#include "vyrbase/file/VyrTableImport.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <wx/file.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/log.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

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

// How numbers are written in the table.
struct NumberStyle {
    bool point = true;  // "." is a decimal mark
    bool comma = true;  // "," is a decimal mark
};

// A cell read as a number: the whole cell must be one (an optional sign, digits with at most
// one decimal mark, an optional exponent). "NaN", infinities, hexadecimal forms, numbers out of
// the range of a double and anything followed by text are not numbers. `commaRead` is set when
// a comma was read as the decimal mark.
bool ReadNumber(std::string_view cell, const NumberStyle& style, double& value,
                bool* commaRead = nullptr) {
    if (cell.empty())
        return false;
    size_t at = cell[0] == '+' || cell[0] == '-' ? 1 : 0;
    if (at >= cell.size())
        return false;
    const char lead = cell[at];
    if (!((lead >= '0' && lead <= '9') || (lead == '.' && style.point) ||
          (lead == ',' && style.comma)))
        return false;
    // from_chars takes a leading "-" but no "+".
    if (cell[0] == '+')
        cell.remove_prefix(1);
    const bool hasComma = style.comma && cell.find(',') != std::string_view::npos;
    if (!style.point && cell.find('.') != std::string_view::npos)
        return false;
    std::string copy;
    char small[96];
    const char* first = cell.data();
    const char* last = first + cell.size();
    if (hasComma) {
        char* out = small;
        if (cell.size() > sizeof small) {
            copy.assign(cell);
            out = &copy[0];
        }
        for (size_t k = 0; k < cell.size(); ++k)
            out[k] = cell[k] == ',' ? '.' : cell[k];
        first = out;
        last = out + cell.size();
    }
    const std::from_chars_result result = std::from_chars(first, last, value);
    if (result.ec != std::errc() || result.ptr != last)
        return false;
    if (hasComma && commaRead)
        *commaRead = true;
    return true;
}

// True when the bytes are valid UTF-8: no stray continuation byte, no overlong form, no
// surrogate, nothing above U+10FFFF.
bool IsValidUtf8(const unsigned char* s, size_t n) {
    size_t i = 0;
    while (i < n) {
        const unsigned c = s[i];
        if (c < 0x80) {
            ++i;
            continue;
        }
        size_t extra;
        unsigned code;
        if (c >= 0xC2 && c <= 0xDF) {
            extra = 1;
            code = c & 0x1F;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2;
            code = c & 0x0F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3;
            code = c & 0x07;
        } else {
            return false;
        }
        if (n - i <= extra)
            return false;
        for (size_t k = 1; k <= extra; ++k) {
            if ((s[i + k] & 0xC0) != 0x80)
                return false;
            code = code << 6 | (s[i + k] & 0x3F);
        }
        if ((extra == 2 && (code < 0x800 || (code >= 0xD800 && code <= 0xDFFF))) ||
            (extra == 3 && (code < 0x10000 || code > 0x10FFFF)))
            return false;
        i += extra + 1;
    }
    return true;
}

// The units of [begin, end) decoded into wide text.
wxString Decode(const Units& text, VyrTableImport::Encoding encoding, size_t begin, size_t end) {
    if (encoding == VyrTableImport::kEncodingUtf8)
        return wxString::FromUTF8(reinterpret_cast<const char*>(text.bytes) + begin, end - begin);
    wxString out;
    out.reserve(end - begin);
    for (size_t i = begin; i < end; ++i) {
        unsigned c = text.At(i);
        if (text.wide && c >= 0xD800 && c <= 0xDBFF && i + 1 < end) {
            const unsigned low = text.At(i + 1);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        out.append(1, static_cast<wchar_t>(c));
    }
    return out;
}

bool IsBlankText(const wxString& s) {
    return s.find_first_not_of(L" \t") == wxString::npos;
}

// A column heading as quantity and unit: "name (unit)", "name [unit]" (the last bracketed part,
// brackets nested within it allowed), "name/unit" (at the first "/"), else the name alone. A
// heading that is wholly bracketed ("[U1]") is a name: the document writes quantity names so.
void SplitHeading(wxString heading, wxString& name, wxString& unit) {
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

// The cells of the line that names the columns, as texts, control characters made blanks. With
// runs of blanks as separator, a bracketed unit standing apart ("t (s)") joins the name before
// it (not another unit: "(s) (V)" is a line of units).
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

// Whether the cells of a header line are units only: every cell empty or wholly in
// parentheses or brackets, and one at least not empty (whose blanks HeadingCells trimmed).
bool IsUnitsLine(std::vector<wxString>& cells) {
    bool any = false;
    for (wxString& cell : cells) {
        cell.Trim(true).Trim(false);
        if (cell.empty())
            continue;
        const bool bracketed = cell.length() >= 2 && ((cell[0] == L'(' && cell.Last() == L')') ||
                                                      (cell[0] == L'[' && cell.Last() == L']'));
        if (!bracketed)
            return false;
        any = true;
    }
    return any;
}

// Guesses the separator from the first lines with content: the first of tab, ";", "," and runs
// of blanks that splits more than half of the later half of them into several cells (the first
// lines are often a title or settings of the instrument). 0 when none does.
wchar_t GuessSeparator(const std::vector<std::string>& sample, bool commaIsMark) {
    const size_t from = sample.size() / 2;
    const size_t lines = sample.size() - from;
    for (wchar_t candidate : {L'\t', L';', L',', kBlanks}) {
        if (candidate == L',' && commaIsMark)
            continue;
        size_t split = 0;
        for (size_t k = from; k < sample.size(); ++k)
            if (SplitCells(std::string_view(sample[k]), candidate, [](const Cell<char>&) {}) > 1)
                ++split;
        if (lines > 0 && 2 * split > lines)
            return candidate;
    }
    return 0;
}

// What the first walk finds in one line.
struct LineShape {
    size_t cells = 0;
    size_t width = 0;  // up to the last cell with content
    bool numberFirst = false;
};

LineShape ShapeOf(std::string_view line, wchar_t separator, const NumberStyle& style) {
    LineShape shape;
    SplitCells(line, separator, [&](const Cell<char>& cell) {
        ++shape.cells;
        if (!cell.content.empty())
            shape.width = shape.cells;
        double value;
        if (shape.cells == 1)
            shape.numberFirst = !cell.escaped && ReadNumber(cell.content, style, value);
    });
    return shape;
}

// Whether a line has a cell with content (the first walk's test, ShapeOf's width, without
// cutting the line when it holds no quote: every other character then lands in a cell).
bool HasContent(std::string_view line, wchar_t separator, const NumberStyle& style) {
    if (line.find('"') != std::string_view::npos)
        return ShapeOf(line, separator, style).width > 0;
    for (char c : line)
        if (c != ' ' && c != '\t' && static_cast<wchar_t>(c) != separator)
            return true;
    return false;
}

// The colours given to the curves in column order: red first, as for any new curve.
const wxColour& CurveColour(size_t k) {
    static const wxColour kColours[] = {
        wxColour(255, 0, 0),   wxColour(0, 90, 200),  wxColour(0, 150, 0),   wxColour(230, 130, 0),
        wxColour(150, 0, 170), wxColour(0, 150, 150), wxColour(140, 80, 20), wxColour(90, 90, 90),
    };
    return kColours[k % (sizeof kColours / sizeof kColours[0])];
}

// One column while the rows are read: where its numbers go, the last number seen (which
// invalid points hold), how many invalid points precede its first number, and the range of
// its numbers.
struct Column {
    double* values = nullptr;
    VyrBitMask* validity = nullptr;
    bool seen = false;
    double last = 0.0;
    size_t leading = 0;
    double lo = 0.0, hi = 0.0;

    void Put(size_t row, bool ok, double value) {
        if (ok) {
            if (!seen) {
                seen = true;
                lo = hi = value;
            }
            lo = std::min(lo, value);
            hi = std::max(hi, value);
            last = value;
        } else {
            if (!seen)
                ++leading;
            validity->Unset(static_cast<int>(row));
        }
        values[row] = ok ? value : last;
    }
    // Invalid points before the first number take that number.
    void Finish() {
        const double first = seen ? values[leading] : 0.0;
        std::fill(values, values + leading, first);
    }
};

}  // namespace

VyrTableImport::VyrTableImport() = default;

bool VyrTableImport::SetSeparator(wchar_t separator) {
    if (separator == L'"' || separator == L'\r' || separator == L'\n' || separator == L'.' ||
        (separator >= L'0' && separator <= L'9') || separator > 0x7F)
        return false;
    m_cSeparator = separator;
    return true;
}

bool VyrTableImport::SetDecimalMark(wchar_t mark) {
    if (mark != 0 && mark != L'.' && mark != L',')
        return false;
    m_cDecimalMark = mark;
    return true;
}

bool VyrTableImport::Refuse(Error error, size_t line) {
    m_eError = error;
    m_iErrorLine = line;
    return false;
}

bool VyrTableImport::ImportFile(VyrBaseData& doc, const wxString& path) {
    wxLogNull quiet;
    m_eError = kErrorNone;
    std::unique_ptr<unsigned char[]> bytes;
    size_t length = 0;
    try {
        wxFile file;
        if (wxDirExists(path) || !file.Open(path, wxFile::read))
            return Refuse(kErrorCannotRead);
        const wxFileOffset size = file.Length();
        if (size < 0 || static_cast<unsigned long long>(size) > SIZE_MAX - 1)
            return Refuse(kErrorCannotRead);
        length = static_cast<size_t>(size);
        bytes.reset(new (std::nothrow) unsigned char[length + 1]);
        if (!bytes)
            return Refuse(kErrorMemory);
        size_t done = 0;
        while (done < length) {
            const ssize_t got = file.Read(bytes.get() + done, length - done);
            if (got == wxInvalidOffset)
                return Refuse(kErrorCannotRead);
            if (got == 0) {
                length = done;  // the file shrank meanwhile
                break;
            }
            done += static_cast<size_t>(got);
        }
    } catch (const std::bad_alloc&) {
        return Refuse(kErrorMemory);
    }
    return Import(doc, bytes.get(), length, wxFileName(path).GetName());
}

bool VyrTableImport::ImportMemory(VyrBaseData& doc, const void* bytes, size_t length,
                                  const wxString& name) {
    wxLogNull quiet;
    m_eError = kErrorNone;
    if (!bytes && length > 0)
        return Refuse(kErrorCannotRead);
    static const unsigned char kNothing[1] = {0};
    return Import(doc, bytes ? static_cast<const unsigned char*>(bytes) : kNothing, length,
                  name.empty() ? wxGetTranslation(L"IDS_EXPERIENCE1") : name);
}

bool VyrTableImport::Import(VyrBaseData& doc, const unsigned char* bytes, size_t length,
                            const wxString& name) {
    m_iErrorLine = 0;
    m_iHeaderCount = 0;
    m_iRows = 0;
    m_iColumns = 0;
    m_iInvalid = 0;

    // ---- Encoding: the mark, or a setting, or the bytes themselves -------------------------
    Units text;
    Encoding encoding = m_eEncoding;
    size_t skip = 0;
    const bool markLE = length >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    const bool markBE = length >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF;
    const bool markUtf8 = length >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF;
    if (encoding == kEncodingAuto)
        encoding = markLE ? kEncodingUtf16LE : markBE ? kEncodingUtf16BE : kEncodingUtf8;
    if (encoding == kEncodingUtf16)
        encoding = markBE ? kEncodingUtf16BE : kEncodingUtf16LE;
    if ((encoding == kEncodingUtf16LE && markLE) || (encoding == kEncodingUtf16BE && markBE))
        skip = 2;
    if (encoding == kEncodingUtf8 && markUtf8)
        skip = 3;
    text.bytes = bytes + skip;
    text.wide = encoding == kEncodingUtf16LE || encoding == kEncodingUtf16BE;
    text.bigEndian = encoding == kEncodingUtf16BE;
    text.count = text.wide ? (length - skip) / 2 : length - skip;
    if (!text.wide) {
        if (std::memchr(text.bytes, 0, text.count))
            return Refuse(kErrorBinary);
        if (encoding == kEncodingUtf8 && !IsValidUtf8(text.bytes, text.count)) {
            if (m_eEncoding != kEncodingAuto)
                return Refuse(kErrorEncoding);
            encoding = kEncodingIso8859_1;
        }
    } else {
        for (size_t i = 0; i < text.count; ++i)
            if (text.At(i) == 0)
                return Refuse(kErrorBinary);
    }
    m_eUsedEncoding = encoding;
    {
        size_t i = 0;
        while (i < text.count) {
            const unsigned c = text.At(i);
            if (c != ' ' && c != '\t' && c != '\r' && c != '\n')
                break;
            ++i;
        }
        if (i == text.count)
            return Refuse(kErrorEmpty);
    }

    NumberStyle style;
    bool touched = false;
    style.point = m_cDecimalMark != L',';
    style.comma = m_cDecimalMark != L'.';

    try {
        // ---- First walk: separator, header, columns, rows ----------------------------------
        Lines lines(text);
        std::string_view line;
        for (int k = 0; k < m_iSkipLines && lines.Next(line); ++k) {
        }
        if (lines.TooLong())
            return Refuse(kErrorLineTooLong, lines.Number());
        const LineMark tableStart = lines.Mark();

        wchar_t separator = m_cSeparator;
        if (separator == 0) {
            std::vector<std::string> sample;
            while (static_cast<int>(sample.size()) < kSampleLines && lines.Next(line))
                if (line.find_first_not_of(" \t") != std::string_view::npos)
                    sample.emplace_back(line);
            if (lines.TooLong())
                return Refuse(kErrorLineTooLong, lines.Number());
            separator = GuessSeparator(sample, m_cDecimalMark == L',');
            if (separator == 0)  // one column: nothing splits its lines
                separator = m_cDecimalMark == L',' ? L';' : L',';
            lines.Seek(tableStart);
        }
        m_cUsedSeparator = separator;
        // A comma that separates cells is no decimal mark.
        if (separator == L',')
            style.comma = false;

        bool started = false;
        // The last two header lines: the names, or the names and then their units.
        int named = 0;
        size_t namesBegin[2] = {0, 0}, namesEnd[2] = {0, 0}, namesWidth[2] = {0, 0};
        LineMark rowsStart;
        size_t columns = 0;
        size_t rows = 0;
        bool numeric = false;
        LineMark before = lines.Mark();
        while (lines.Next(line)) {
            const LineShape shape = ShapeOf(line, separator, style);
            if (shape.cells > static_cast<size_t>(kMaxColumns))
                return Refuse(kErrorTooManyCells, lines.Number());
            if (shape.width > 0) {
                if (!started) {
                    const bool header =
                        m_iHeaderLines >= 0 ? m_iHeaderCount < m_iHeaderLines : !shape.numberFirst;
                    if (header) {
                        ++m_iHeaderCount;
                        named = std::min(named + 1, 2);
                        namesBegin[0] = namesBegin[1];
                        namesEnd[0] = namesEnd[1];
                        namesBegin[1] = lines.Begin();
                        namesEnd[1] = lines.End();
                        namesWidth[0] = namesWidth[1];
                        namesWidth[1] = shape.width;
                    } else {
                        started = true;
                        rowsStart = before;
                    }
                }
                if (started) {
                    ++rows;
                    columns = std::max(columns, shape.width);
                    numeric = numeric || shape.numberFirst;
                }
            }
            before = lines.Mark();
        }
        if (lines.TooLong())
            return Refuse(kErrorLineTooLong, lines.Number());
        if (!numeric)
            return Refuse(kErrorNoNumericRow);
        if (rows > static_cast<size_t>(INT_MAX - 200))
            return Refuse(kErrorMemory);

        // ---- The columns' quantities and units ---------------------------------------------
        std::vector<wxString> quantities, units;
        {
            std::vector<wxString> headings, unitCells;
            if (named > 0)
                headings =
                    HeadingCells(Decode(text, encoding, namesBegin[1], namesEnd[1]), separator);
            // A last header line of units only ("(s)", "[V]") gives the units of the names above.
            if (named == 2 && IsUnitsLine(headings)) {
                unitCells.swap(headings);
                headings =
                    HeadingCells(Decode(text, encoding, namesBegin[0], namesEnd[0]), separator);
            }
            // A named column is a column, even when no row has a cell in it.
            columns = std::max(columns, namesWidth[1]);
            if (!unitCells.empty())
                columns = std::max(columns, namesWidth[0]);
            quantities.resize(columns);
            units.resize(columns);
            for (size_t k = 0; k < columns; ++k) {
                if (k < headings.size())
                    SplitHeading(headings[k], quantities[k], units[k]);
                if (k < unitCells.size() && !unitCells[k].empty())
                    units[k] =
                        unitCells[k].Mid(1, unitCells[k].length() - 2).Trim(true).Trim(false);
                if (IsBlankText(quantities[k]))
                    quantities[k] = wxString::Format(L"C%d", static_cast<int>(k + 1));
            }
        }
        // A table of one column is plotted against the row number.
        const bool byIndex = columns == 1;
        const size_t curves = byIndex ? 1 : columns - 1;
        const wxString xQuantity = byIndex ? wxString(L"n") : quantities[0];
        const wxString xUnit = byIndex ? wxString() : units[0];

        // ---- The document, emptied as a load empties it -------------------------------------
        touched = true;
        doc.Delete();
        doc.m_asUnknownSections.Clear();
        auto* experience = static_cast<VyrExperience*>(
            doc.CreateEntity(VYR_KIND_EXPERIENCE, doc.GetNewOid(), name.wc_str()));
        const int size = static_cast<int>(rows);
        bool room = true;
        std::vector<VyrCourbe*> made;
        // The curve names taken, and for each quantity the next number to try after it.
        std::set<wxString> taken;
        std::map<wxString, int> nextNumber;
        for (size_t k = 0; k < curves && room; ++k) {
            const size_t column = byIndex ? 0 : k + 1;
            // The quantity stays as the heading says (the table goes back out as it came in);
            // the curve's own name is made unique in the experiment, as notes find their curve
            // by it.
            const wxString& quantity = quantities[column];
            wxString curveName = quantity;
            while (!taken.insert(curveName).second)
                curveName = wxString::Format(L"%s%d", quantity, ++nextNumber[quantity]);
            auto* curve = static_cast<VyrCourbe*>(
                doc.CreateEntity(VYR_KIND_COURBE, doc.GetNewOid(), curveName.wc_str()));
            auto* vx = static_cast<VyrVecteur*>(
                doc.CreateEntity(VYR_KIND_VECTEUR, doc.GetNewOid(), (curveName + L"VX").wc_str()));
            auto* vy = static_cast<VyrVecteur*>(
                doc.CreateEntity(VYR_KIND_VECTEUR, doc.GetNewOid(), (curveName + L"VY").wc_str()));
            curve->SetVx(vx);
            curve->SetVy(vy);
            experience->AddCourbe(curve);
            curve->SetColor(CurveColour(k));
            curve->SetWidth(1);
            curve->SetStylePoint(0);
            curve->SetStyleLiaison(1);
            curve->SetShownInDiagram(0, true);
            vx->SetGrandeur(xQuantity);
            vx->SetUnite(xUnit);
            vy->SetGrandeur(quantity);
            vy->SetUnite(units[column]);
            // Only the first curve's X vector is read into; the others copy it.
            for (VyrVecteur* v : {vx, vy}) {
                if (v == vx && k > 0)
                    continue;
                v->PreAlloc(size);
                if (v->GetCapacity() < size) {
                    room = false;
                    break;
                }
                v->Resize(size);
            }
            made.push_back(curve);
        }
        auto outOfMemory = [&]() {
            doc.Delete();
            doc.Notify(VYR_MSG_FILE_LOADED, nullptr);
            return Refuse(kErrorMemory);
        };
        if (!room)
            return outOfMemory();

        // ---- Second walk: the numbers -------------------------------------------------------
        std::vector<Column> targets(columns);
        for (size_t k = 0; k < columns; ++k) {
            VyrVecteur* v = byIndex  ? made[0]->GetVy()
                            : k == 0 ? made[0]->GetVx()
                                     : made[k - 1]->GetVy();
            targets[k].values = v->GetArea();
            targets[k].validity = v->GetValidity();
        }
        bool commaRead = false;
        lines.Seek(rowsStart);
        size_t row = 0;
        while (row < rows && lines.Next(line)) {
            if (!HasContent(line, separator, style))
                continue;
            size_t k = 0;
            SplitCells(line, separator, [&](const Cell<char>& cell) {
                if (k < columns) {
                    double value = 0.0;
                    const bool ok =
                        !cell.escaped && ReadNumber(cell.content, style, value, &commaRead);
                    targets[k].Put(row, ok, value);
                }
                ++k;
            });
            for (; k < columns; ++k)
                targets[k].Put(row, false, 0.0);
            ++row;
        }
        for (Column& column : targets)
            column.Finish();
        m_cUsedDecimalMark = commaRead ? L',' : L'.';

        // ---- Abscissas, ranges ---------------------------------------------------------------
        VyrVecteur* firstX = made[0]->GetVx();
        if (byIndex) {
            double* values = firstX->GetArea();
            for (int i = 0; i < size; ++i)
                values[i] = i;
        }
        for (size_t k = 1; k < made.size(); ++k) {
            VyrVecteur* vx = made[k]->GetVx();
            *vx = *firstX;
            if (vx->GetSize() != size)
                return outOfMemory();
        }
        const Column xRange = byIndex ? Column() : targets[0];
        for (size_t k = 0; k < made.size(); ++k) {
            const Column& y = targets[byIndex ? 0 : k + 1];
            VyrScale& scale = made[k]->GetScale();
            const double xlo = byIndex ? 0.0 : xRange.lo;
            const double xhi = byIndex ? size - 1.0 : xRange.hi;
            if (xlo < xhi) {
                scale.SetXmin(xlo);
                scale.SetXmax(xhi);
            }
            if (y.seen && y.lo < y.hi) {
                scale.SetYmin(y.lo);
                scale.SetYmax(y.hi);
            }
        }
        for (const Column& column : targets)
            for (int i = 0; i < size; ++i)
                if (!column.validity->IsSet(i))
                    ++m_iInvalid;
        m_iRows = rows;
        m_iColumns = static_cast<int>(columns);
        doc.Notify(VYR_MSG_FILE_LOADED, nullptr);
        return true;
    } catch (const std::bad_alloc&) {
        // Memory ran out: before the document was touched it stays as it was; after, it is
        // emptied (a half-built table is no table).
        if (touched) {
            doc.Delete();
            doc.Notify(VYR_MSG_FILE_LOADED, nullptr);
        }
        return Refuse(kErrorMemory);
    }
}
