// The document writer's output: text appended as UTF-16 little-endian code units into a buffer
// that goes to the open file in large blocks, so that a document of millions of points is
// written with a few system calls and no formatting object per number.
//
// Lines follow the file's grammar: a section header "[name]\r\n"; a key line "\t" key " = "
// value "\r\n" (quoted or not, escaped or as held, as each section's layout says); a table
// "\tkey = table N {\r\n\t", elements, "\r\n\t}\r\n". Numbers use the C formats in the "C"
// locale (VyrNumberText), so the decimal separator is always a point.
//
// The bytes go to the file through a VyrFileSink, which checks every write. A short write is
// remembered: IsOk turns false for good and nothing more is written. Section writers answer
// IsOk(); VyrBaseData::Save flushes after each of them.
//
// Internal to the library; exported only for the tests.
#ifndef VYRBASE_FILE_VYRTEXTWRITER_H
#define VYRBASE_FILE_VYRTEXTWRITER_H

#include <cstddef>
#include <string>
#include <string_view>

#include <wx/string.h>

#include "file/VyrFileSink.h"
#include "vyrbase/core/VyrExport.h"

class wxFile;

class VYRBASE_API VyrTextWriter {
public:
    // Writes to `sink` (open for writing; not owned). Nothing is written before the first
    // Flush or before the buffer fills.
    explicit VyrTextWriter(VyrFileSink& sink);
    // Writes to the descriptor of `file` (open for writing; not owned), through a sink of its
    // own.
    explicit VyrTextWriter(wxFile& file);
    // Flushes what is left.
    ~VyrTextWriter();
    VyrTextWriter(const VyrTextWriter&) = delete;
    VyrTextWriter& operator=(const VyrTextWriter&) = delete;

    // Appends UTF-16LE code units of `text` to `out`: characters above U+FFFF become surrogate
    // pairs, everything else (lone surrogates included) one unit, so any text read from a file
    // goes back unchanged.
    static void AppendUtf16(std::string& out, const wchar_t* text, size_t length);

    // ---- Pieces ----------------------------------------------------------------------------
    VyrTextWriter& Text(std::wstring_view text);
    VyrTextWriter& Text(const wchar_t* text) { return Text(std::wstring_view(text)); }
    VyrTextWriter& Text(const wxString& text);
    VyrTextWriter& Int(int value);  // "%d"
    VyrTextWriter& Hex(int value);  // "%x"
    // "%g" and "%.8f", or both the shortest exact text once SetExactNumbers(true) was called.
    VyrTextWriter& G(double value);
    VyrTextWriter& Fixed8(double value);
    // Every double from then on in the shortest text that reads back to the same double
    // (VyrNumberText::FormatShortest) instead of its C format.
    void SetExactNumbers(bool exact) { m_bExactNumbers = exact; }
    // The text with a backslash before every double quote (VyrBaseData::GetStringSave).
    VyrTextWriter& Escaped(const wxString& text);

    // ---- Lines -----------------------------------------------------------------------------
    VyrTextWriter& Header(std::wstring_view name);                   // "[name]\r\n"
    VyrTextWriter& LineInt(std::wstring_view key, int value);        // "\tkey = %d\r\n"
    VyrTextWriter& LineG(std::wstring_view key, double value);       // "\tkey = %g\r\n"
    VyrTextWriter& LineFixed8(std::wstring_view key, double value);  // "\tkey = %.8f\r\n"
    // "\tkey = value\r\n", the value unquoted.
    VyrTextWriter& LineRaw(std::wstring_view key, std::wstring_view value);
    // "\tkey = \"value\"\r\n" with the value as it is held.
    VyrTextWriter& LineString(std::wstring_view key, const wxString& value);
    // "\tkey = \"value\"\r\n" with the value escaped.
    VyrTextWriter& LineEscaped(std::wstring_view key, const wxString& value);
    VyrTextWriter& EndLine();  // "\r\n"

    // ---- Tables ----------------------------------------------------------------------------
    // "\tkey = table count {\r\n\t".
    VyrTextWriter& TableOpen(std::wstring_view key, int count);
    // "\r\n\t}\r\n".
    VyrTextWriter& TableClose();
    // The vector tables' element layout: each element, then "\r\n" after every fourth one
    // (index i above 0 with i + 1 a multiple of 4), then "\t" after every one.
    template <class FormatElement>
    VyrTextWriter& TableElements(int count, FormatElement format) {
        for (int i = 0; i < count; ++i) {
            format(*this, i);
            if (i > 0 && (i + 1) % 4 == 0)
                Text(L"\r\n");
            Text(L"\t");
        }
        return *this;
    }

    // Writes the buffer to the file. False, now and from then on, once a write came up short.
    bool Flush();
    bool IsOk() const { return m_bOk; }

private:
    void Ascii(const char* text, size_t length);
    void FlushWhenFull() {
        if (m_sBuffer.size() >= kFlushBytes)
            Flush();
    }

    static const size_t kFlushBytes = 1 << 20;

    // Used only when the writer was given a wxFile.
    VyrFileSink m_ownSink;
    VyrFileSink& m_sink;
    std::string m_sBuffer;
    bool m_bOk = true;
    bool m_bExactNumbers = false;
};

#endif
