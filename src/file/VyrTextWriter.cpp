// Buffered UTF-16LE output of the document writer.
#include "file/VyrTextWriter.h"

#include <wx/file.h>

#include "file/VyrNumberText.h"

VyrTextWriter::VyrTextWriter(VyrFileSink& sink) : m_sink(sink) {
    m_sBuffer.reserve(kFlushBytes + 4096);
}

VyrTextWriter::VyrTextWriter(wxFile& file) : m_sink(m_ownSink) {
    m_ownSink.Attach(file.fd());
    m_sBuffer.reserve(kFlushBytes + 4096);
}

VyrTextWriter::~VyrTextWriter() {
    Flush();
}

void VyrTextWriter::AppendUtf16(std::string& out, const wchar_t* text, size_t length) {
    for (size_t i = 0; i < length; ++i) {
        unsigned long c = static_cast<unsigned long>(text[i]);
        if (c > 0xFFFF && c <= 0x10FFFF) {
            c -= 0x10000;
            const unsigned high = 0xD800 + static_cast<unsigned>(c >> 10);
            const unsigned low = 0xDC00 + static_cast<unsigned>(c & 0x3FF);
            out.push_back(static_cast<char>(high & 0xFF));
            out.push_back(static_cast<char>(high >> 8));
            out.push_back(static_cast<char>(low & 0xFF));
            out.push_back(static_cast<char>(low >> 8));
        } else {
            out.push_back(static_cast<char>(c & 0xFF));
            out.push_back(static_cast<char>((c >> 8) & 0xFF));
        }
    }
}

void VyrTextWriter::Ascii(const char* text, size_t length) {
    for (size_t i = 0; i < length; ++i) {
        m_sBuffer.push_back(text[i]);
        m_sBuffer.push_back('\0');
    }
    FlushWhenFull();
}

VyrTextWriter& VyrTextWriter::Text(std::wstring_view text) {
    AppendUtf16(m_sBuffer, text.data(), text.size());
    FlushWhenFull();
    return *this;
}

VyrTextWriter& VyrTextWriter::Text(const wxString& text) {
    return Text(std::wstring_view(text.wc_str(), text.length()));
}

VyrTextWriter& VyrTextWriter::Int(int value) {
    char buf[VyrNumberText::kMaxChars];
    Ascii(buf, VyrNumberText::FormatInt(buf, value));
    return *this;
}

VyrTextWriter& VyrTextWriter::Hex(int value) {
    char buf[VyrNumberText::kMaxChars];
    Ascii(buf, VyrNumberText::FormatHex(buf, value));
    return *this;
}

VyrTextWriter& VyrTextWriter::G(double value) {
    char buf[VyrNumberText::kMaxChars];
    Ascii(buf, m_bExactNumbers ? VyrNumberText::FormatShortest(buf, value)
                               : VyrNumberText::FormatG(buf, value));
    return *this;
}

VyrTextWriter& VyrTextWriter::Fixed8(double value) {
    char buf[VyrNumberText::kMaxChars];
    Ascii(buf, m_bExactNumbers ? VyrNumberText::FormatShortest(buf, value)
                               : VyrNumberText::FormatFixed8(buf, value));
    return *this;
}

VyrTextWriter& VyrTextWriter::Escaped(const wxString& text) {
    const wchar_t* s = text.wc_str();
    const size_t n = text.length();
    size_t start = 0;
    for (size_t i = 0; i < n; ++i) {
        if (s[i] == L'"') {
            AppendUtf16(m_sBuffer, s + start, i - start);
            AppendUtf16(m_sBuffer, L"\\", 1);
            start = i;
        }
    }
    AppendUtf16(m_sBuffer, s + start, n - start);
    FlushWhenFull();
    return *this;
}

VyrTextWriter& VyrTextWriter::Header(std::wstring_view name) {
    return Text(L"[").Text(name).Text(L"]\r\n");
}

VyrTextWriter& VyrTextWriter::LineInt(std::wstring_view key, int value) {
    return Text(L"\t").Text(key).Text(L" = ").Int(value).Text(L"\r\n");
}

VyrTextWriter& VyrTextWriter::LineG(std::wstring_view key, double value) {
    return Text(L"\t").Text(key).Text(L" = ").G(value).Text(L"\r\n");
}

VyrTextWriter& VyrTextWriter::LineFixed8(std::wstring_view key, double value) {
    return Text(L"\t").Text(key).Text(L" = ").Fixed8(value).Text(L"\r\n");
}

VyrTextWriter& VyrTextWriter::LineRaw(std::wstring_view key, std::wstring_view value) {
    return Text(L"\t").Text(key).Text(L" = ").Text(value).Text(L"\r\n");
}

VyrTextWriter& VyrTextWriter::LineString(std::wstring_view key, const wxString& value) {
    return Text(L"\t").Text(key).Text(L" = \"").Text(value).Text(L"\"\r\n");
}

VyrTextWriter& VyrTextWriter::LineEscaped(std::wstring_view key, const wxString& value) {
    return Text(L"\t").Text(key).Text(L" = \"").Escaped(value).Text(L"\"\r\n");
}

VyrTextWriter& VyrTextWriter::EndLine() {
    return Text(L"\r\n");
}

VyrTextWriter& VyrTextWriter::TableOpen(std::wstring_view key, int count) {
    return Text(L"\t").Text(key).Text(L" = table ").Int(count).Text(L" {\r\n\t");
}

VyrTextWriter& VyrTextWriter::TableClose() {
    return Text(L"\r\n\t}\r\n");
}

bool VyrTextWriter::Flush() {
    if (m_sBuffer.empty())
        return m_bOk;
    if (m_bOk)
        m_bOk = m_sink.Write(m_sBuffer.data(), m_sBuffer.size());
    m_sBuffer.clear();
    return m_bOk;
}
