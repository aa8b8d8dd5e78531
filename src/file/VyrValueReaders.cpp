// The readers every section shares: values of the current line, quoted texts over several
// lines, tables, skipping a section and keeping an unknown one verbatim.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <string>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

#include "file/VyrNumberText.h"
#include "file/VyrReadText.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrVecteur.h"

using VyrReadText::IsHeader;
using VyrReadText::ToString;

int VyrBaseData::GetInt(const wchar_t* line) {
    return line ? VyrReadText::IntValue(line) : 0;
}

double VyrBaseData::GetDouble(const wchar_t* line) {
    return line ? VyrReadText::DoubleValue(line) : 0.0;
}

bool VyrBaseData::ParseString(const wchar_t* line, wxString& value) {
    if (!line) {
        value.clear();
        return false;
    }
    return ReadQuoted(line, value);
}

bool VyrBaseData::ParseTableDouble(VyrArrayDouble* values) {
    if (!values)
        return false;
    std::vector<double> read;
    const bool closed = ReadTableDouble(read);
    values->Clear();
    values->reserve(read.size());
    for (double v : read)
        values->Add(v);
    return closed;
}

namespace {

// Where the pages behind the reader go back to the system, in steps of this many units.
constexpr size_t kReleaseStep = size_t(1) << 20;

// The memory behind the reader goes back in whole blocks of this size: a large text is read
// into the system's large pages (of this size on x86-64 and most ARM systems), and giving back
// part of one would make the kernel split it into small pages first.
constexpr uintptr_t kReleaseBlock = uintptr_t(2) << 20;

// Hands the whole blocks of [from, to) back to the system: their memory is freed and reads as
// zeros from then on. Only for a buffer whose content behind the reader is never read again.
// Answers where the memory given back ends (`from` when none was).
const unsigned char* ReleaseBlocks(const unsigned char* from, const unsigned char* to) {
#if defined(__linux__)
    const uintptr_t first =
        (reinterpret_cast<uintptr_t>(from) + kReleaseBlock - 1) & ~(kReleaseBlock - 1);
    const uintptr_t last = reinterpret_cast<uintptr_t>(to) & ~(kReleaseBlock - 1);
    if (last <= first)
        return from;
    madvise(reinterpret_cast<void*>(first), last - first, MADV_DONTNEED);
    return from + (last - reinterpret_cast<uintptr_t>(from));
#else
    (void)to;
    return from;
#endif
}

// With `release`, gives back the text's memory from the units given back so far up to `upTo`,
// once a step's worth lies behind: the reader never goes back to text it has passed. What lies
// between the last whole block and `upTo` goes with the next step.
void ReleaseBehind(const VyrLineTokenizer& tokenizer, bool release, size_t& released, size_t upTo) {
    if (!release || upTo < released || upTo - released < kReleaseStep)
        return;
    const unsigned char* base =
        tokenizer.IsUtf16() ? tokenizer.GetUtf16Bytes()
                            : reinterpret_cast<const unsigned char*>(tokenizer.GetWideText());
    const size_t unit = tokenizer.IsUtf16() ? 2 : sizeof(wchar_t);
    const unsigned char* from = base + unit * released;
    const unsigned char* end = ReleaseBlocks(from, base + unit * upTo);
    // Units wholly given back; a unit cut by the block's end is read again by no one but is
    // counted with the next step.
    released += static_cast<size_t>(end - from) / unit;
}

// Appends `text` to `list` and answers the new item. When the list is full it grows by moving
// its strings over (swapped, not copied; the toolkit's own growth copies every one), so that a
// document of many large unknown sections never holds two copies of them.
wxString& AppendMovingOnGrowth(wxArrayString& list, const wxString& text) {
    const size_t count = list.GetCount();
    if (count == list.capacity()) {
        wxArrayString grown;
        grown.Alloc(std::max<size_t>(16, 2 * count));
        for (size_t i = 0; i < count; ++i) {
            grown.Add(wxString());
            grown.Last().swap(list[i]);
        }
        list.swap(grown);
    }
    list.Add(text);
    return list.Last();
}

// Takes the tokens of a table of reals up to its closing "}" (true) or the end of the text
// (false), calling add(value) for each other token, one number per token, as ReadDouble of the
// token's text. The token is narrowed straight from the text (a unit beyond ASCII ends a
// number where the wide conversion would end it); a token too long for the buffer is decoded
// and converted as wide text. With `release`, the pages of text behind the reader go
// back to the system as it goes, from `released` (the units given back so far, over the whole
// text: a document of many small tables gives its text back too) up to the current token.
// Nothing reads that text again: a reader is done with its key line before the values that
// follow it are read (over UTF-16 the line is even a copy, decoded into a buffer of the
// tokenizer's own), and unknown sections are copied from what lies after their header.
template <class Add>
bool ReadTableValues(VyrLineTokenizer& tokenizer, bool release, size_t& released, Add add) {
    char narrow[256];
    for (;;) {
        const size_t length = tokenizer.NextTokenAscii(narrow, sizeof narrow);
        if (length == 0)
            return false;
        if (narrow[0] == '}')
            return true;
        if (length <= sizeof narrow) {
            add(VyrNumberText::ReadDouble(std::string_view(narrow, length)));
        } else {
            std::wstring wide;
            tokenizer.AppendRange(wide, tokenizer.GetTokenStart(), tokenizer.GetTokenEnd());
            add(VyrNumberText::ReadDouble(std::wstring_view(wide)));
        }
        ReleaseBehind(tokenizer, release, released, tokenizer.GetTokenStart());
    }
}

// The count written after "table" on a table's line, bounded by what the rest of the text can
// hold (a value and its separator take two units at least); 0 when there is none.
size_t TableCountHint(std::wstring_view line, size_t unitsLeft) {
    const size_t table = line.find(L"table");
    if (table == std::wstring_view::npos)
        return 0;
    const int count = VyrNumberText::ReadDecimal(line.substr(table + 5));
    if (count <= 0)
        return 0;
    return std::min(static_cast<size_t>(count), unitsLeft / 2 + 1);
}

// The largest number of values a vector takes from a table (Resize adds its slack of 100).
const size_t kMostValues = static_cast<size_t>(INT_MAX - 100);

// Gives the vector the values as Resize(count) and copying them in does.
void StoreValues(VyrVecteur* vector, const double* values, size_t size) {
    const int count = static_cast<int>(std::min(size, kMostValues));
    vector->Resize(count);
    if (vector->GetSize() == count && count > 0 && vector->GetArea())
        std::memcpy(vector->GetArea(), values, count * sizeof(double));
    vector->ValuesChanged();
}

}  // namespace

bool VyrBaseData::ReadQuoted(std::wstring_view line, wxString& value) {
    value.clear();
    const size_t eq = line.find(L'=');
    if (eq == std::wstring_view::npos)
        return false;
    const size_t quote = line.find(L'"', eq + 1);
    if (quote == std::wstring_view::npos)
        return false;
    bool closed = VyrReadText::ScanClosingQuote(line.substr(quote + 1), value);
    // Kept: continuation lines are joined with "\r\n", so blank lines and leading tabs inside
    // a value are lost and a tab inside it reads as a line break.
    while (!closed && m_tokenizer.HasMoreTokens()) {
        value.append(L"\r\n");
        closed = VyrReadText::ScanClosingQuote(m_tokenizer.GetNextToken(), value);
        // A value of many lines is a copy: the text it came from can go.
        ReleaseBehind(m_tokenizer, m_bReleaseConsumed, m_iReleasedUnits,
                      m_tokenizer.GetTokenStart());
    }
    return closed;
}

bool VyrBaseData::ReadTableDouble(std::vector<double>& values) {
    values.clear();
    // One number per line; the element count after "table" is not used.
    return ReadTableValues(m_tokenizer, m_bReleaseConsumed, m_iReleasedUnits,
                           [&values](double v) { values.push_back(v); });
}

bool VyrBaseData::ReadTableDoubleInto(std::wstring_view line, VyrVecteur* vector) {
    if (!vector || vector->GetSize() != 0 || vector->GetCapacity() != 0) {
        std::vector<double> values;
        const bool closed = ReadTableDouble(values);
        if (vector)
            StoreValues(vector, values.data(), values.size());
        return closed;
    }
    // A new vector: the values go straight into storage made for the count the table
    // announces, with the slack that Resize would add. The count is only a hint: when the
    // table holds another number of values, the vector is rebuilt below as Resize makes it.
    const size_t hint = TableCountHint(line, m_tokenizer.GetLength() - m_tokenizer.GetPosition());
    if (hint > 0 && hint <= kMostValues)
        vector->PreAlloc(static_cast<int>(hint + 100));
    double* room = vector->GetArea();
    const size_t capacity = room ? static_cast<size_t>(vector->GetCapacity()) : 0;
    size_t count = 0;
    std::vector<double> overflow;
    const bool closed =
        ReadTableValues(m_tokenizer, m_bReleaseConsumed, m_iReleasedUnits, [&](double v) {
            if (count < capacity)
                room[count] = v;
            else
                overflow.push_back(v);
            ++count;
        });
    if (count == hint && count > 0 && overflow.empty()) {
        vector->Resize(static_cast<int>(count));
        vector->ValuesChanged();
        return closed;
    }
    // Another count than announced (or no room could be made): the values are copied out and
    // the vector starts again from no storage, as if they had been read aside.
    std::vector<double> values(room, room + std::min(count, capacity));
    values.insert(values.end(), overflow.begin(), overflow.end());
    vector->Raz();
    StoreValues(vector, values.data(), values.size());
    return closed;
}

bool VyrBaseData::ParseTableInt(wxArrayInt* values, const wxString& line) {
    if (!values)
        return false;
    std::vector<int> read;
    const bool closed = ReadTableInt(std::wstring_view(line.wc_str(), line.length()), read);
    values->Clear();
    values->reserve(read.size());
    for (int v : read)
        values->Add(v);
    return closed;
}

bool VyrBaseData::ReadTableInt(std::wstring_view line, std::vector<int>& values) {
    values.clear();
    if (line.find(L'}') != std::wstring_view::npos) {
        // The whole table on its own line: one element between the braces.
        const size_t open = line.find(L'{');
        const size_t start = open == std::wstring_view::npos ? 0 : open + 1;
        const size_t close = line.find(L'}', start);
        const size_t end = close == std::wstring_view::npos ? line.size() : close;
        values.push_back(VyrNumberText::ReadDecimal(line.substr(start, end - start)));
        return true;
    }
    char narrow[64];
    std::wstring wide;
    for (;;) {
        const size_t length = m_tokenizer.NextTokenAscii(narrow, sizeof narrow);
        if (length == 0)
            return false;
        if (narrow[0] == '}')
            return true;
        // The usual line of a mask table holds one byte value: a few digits.
        if (length <= 9) {
            int value = 0;
            size_t k = 0;
            while (k < length && narrow[k] >= '0' && narrow[k] <= '9')
                value = value * 10 + (narrow[k++] - '0');
            if (k == length) {
                values.push_back(value);
                continue;
            }
        }
        wide.clear();
        m_tokenizer.AppendRange(wide, m_tokenizer.GetTokenStart(), m_tokenizer.GetTokenEnd());
        const std::wstring_view token(wide);
        // Elements of one line are separated by spaces or tabs; empty pieces are skipped.
        size_t i = 0;
        while (i < token.size()) {
            while (i < token.size() && (token[i] == L' ' || token[i] == L'\t'))
                ++i;
            size_t end = i;
            while (end < token.size() && token[end] != L' ' && token[end] != L'\t')
                ++end;
            if (end > i)
                values.push_back(VyrNumberText::ReadDecimal(token.substr(i, end - i)));
            i = end;
        }
    }
}

bool VyrBaseData::NextSectionLine(std::wstring_view& line, wxString& header) {
    if (!m_tokenizer.HasMoreTokens()) {
        header.clear();
        return false;
    }
    line = m_tokenizer.GetNextToken();
    if (IsHeader(line)) {
        header = ToString(line);
        return false;
    }
    return true;
}

wxString VyrBaseData::SkipSection() {
    while (m_tokenizer.HasMoreTokens()) {
        std::wstring_view token = m_tokenizer.GetNextToken();
        if (IsHeader(token))
            return ToString(token);
    }
    return wxString();
}

wxString VyrBaseData::ParseInconnu(const wxString& header, wchar_t* /*text*/, bool* stop) {
    if (stop)
        *stop = false;
    // The span is taken from the text the tokenizer walks (the whole text being parsed), so
    // that its positions always lie inside it. Positions and lengths count the tokenizer's
    // units (16-bit units for UTF-16 text).
    // The span starts just after the header's line separator and ends before the next header
    // (its length and the separator after it taken off the tokenizer position).
    const ptrdiff_t start = static_cast<ptrdiff_t>(m_tokenizer.GetPosition());
    wxString next = SkipSection();
    const ptrdiff_t position = static_cast<ptrdiff_t>(m_tokenizer.GetPosition());
    const ptrdiff_t nextUnits =
        next.empty()
            ? 0
            : static_cast<ptrdiff_t>(m_tokenizer.GetTokenEnd() - m_tokenizer.GetTokenStart());
    ptrdiff_t end = position - nextUnits - 1;
    // At the end of the text the one taken off is the last line's separator; when the text
    // ends without one, nothing is taken off, so the last character is kept.
    const size_t length = m_tokenizer.GetLength();
    if (next.empty() && static_cast<size_t>(position) == length && length > 0 &&
        !VyrLineTokenizer::IsSeparator(m_tokenizer.UnitAt(length - 1)))
        end = position;
    if (start != 0 && end > start) {
        // Built in its place in the list, in steps, with the text behind each step given back:
        // a section of any size costs its own copy and little more.
        const size_t last = static_cast<size_t>(end);
        wxString& section = AppendMovingOnGrowth(m_asUnknownSections, header);
        section.reserve(header.length() + (last - static_cast<size_t>(start)));
        std::wstring piece;
        for (size_t from = static_cast<size_t>(start); from < last;) {
            size_t to = last - from > kReleaseStep ? from + kReleaseStep : last;
            // A surrogate pair of UTF-16 text stays in one step, to make one character.
            if (to < last && m_tokenizer.IsUtf16() && m_tokenizer.UnitAt(to - 1) >= 0xD800 &&
                m_tokenizer.UnitAt(to - 1) <= 0xDBFF)
                ++to;
            piece.clear();
            m_tokenizer.AppendRange(piece, from, to);
            section.append(piece.data(), piece.size());
            ReleaseBehind(m_tokenizer, m_bReleaseConsumed, m_iReleasedUnits, to);
            from = to;
        }
    }
    return next;
}
