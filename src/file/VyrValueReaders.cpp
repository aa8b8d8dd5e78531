// The readers every section shares: values of the current line, quoted texts over several
// lines, tables, skipping a section and keeping an unknown one verbatim.
#include "file/VyrNumberText.h"
#include "file/VyrReadText.h"
#include "vyrbase/core/VyrBaseData.h"

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
    }
    return closed;
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

bool VyrBaseData::ReadTableDouble(std::vector<double>& values) {
    values.clear();
    // One number per line; the element count after "table" is not used.
    while (m_tokenizer.HasMoreTokens()) {
        std::wstring_view token = m_tokenizer.GetNextToken();
        if (token[0] == L'}')
            return true;
        values.push_back(VyrNumberText::ReadDouble(token));
    }
    return false;
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
    while (m_tokenizer.HasMoreTokens()) {
        std::wstring_view token = m_tokenizer.GetNextToken();
        if (token[0] == L'}')
            return true;
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
    return false;
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
    // that its positions always lie inside it.
    const wchar_t* source = m_tokenizer.GetText();
    // The span starts just after the header's line separator and ends before the next header
    // (its length and the separator after it taken off the tokenizer position).
    const ptrdiff_t start = static_cast<ptrdiff_t>(m_tokenizer.GetPosition());
    wxString next = SkipSection();
    const ptrdiff_t position = static_cast<ptrdiff_t>(m_tokenizer.GetPosition());
    ptrdiff_t end = position - static_cast<ptrdiff_t>(next.length()) - 1;
    // At the end of the text the one taken off is the last line's separator; when the text
    // ends without one, nothing is taken off, so the last character is kept.
    const size_t length = m_tokenizer.GetLength();
    if (next.empty() && static_cast<size_t>(position) == length && length > 0 &&
        !VyrLineTokenizer::IsSeparator(m_tokenizer.GetText()[length - 1]))
        end = position;
    if (source && start != 0 && end > start)
        m_asUnknownSections.Add(header +
                                wxString(source + start, static_cast<size_t>(end - start)));
    return next;
}
