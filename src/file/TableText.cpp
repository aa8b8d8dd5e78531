// The text layer of the table import: encodings, decoding, the separator guess.
#include "TableText.h"

#include <cstring>

namespace vyrtable {

namespace {

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

}  // namespace

VyrTableImport::Error OpenText(const unsigned char* bytes, size_t length,
                               VyrTableImport::Encoding setting, Units& text,
                               VyrTableImport::Encoding& used) {
    // A card's unwritten sectors are zero bytes; in UTF-16 a zero byte is half of most
    // characters, so only whole zero units go, and only where no mark says UTF-16.
    const bool markLE0 = length >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    const bool markBE0 = length >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF;
    const bool sixteen = setting == VyrTableImport::kEncodingUtf16 ||
                         setting == VyrTableImport::kEncodingUtf16LE ||
                         setting == VyrTableImport::kEncodingUtf16BE || markLE0 || markBE0;
    if (!sixteen) {
        while (length > 0 && bytes[0] == 0) {
            ++bytes;
            --length;
        }
        while (length > 0 && bytes[length - 1] == 0)
            --length;
    }
    VyrTableImport::Encoding encoding = setting;
    size_t skip = 0;
    const bool markLE = length >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    const bool markBE = length >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF;
    const bool markUtf8 = length >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF;
    if (encoding == VyrTableImport::kEncodingAuto)
        encoding = markLE   ? VyrTableImport::kEncodingUtf16LE
                   : markBE ? VyrTableImport::kEncodingUtf16BE
                            : VyrTableImport::kEncodingUtf8;
    if (encoding == VyrTableImport::kEncodingUtf16)
        encoding = markBE ? VyrTableImport::kEncodingUtf16BE : VyrTableImport::kEncodingUtf16LE;
    if ((encoding == VyrTableImport::kEncodingUtf16LE && markLE) ||
        (encoding == VyrTableImport::kEncodingUtf16BE && markBE))
        skip = 2;
    if (encoding == VyrTableImport::kEncodingUtf8 && markUtf8)
        skip = 3;
    text.bytes = bytes + skip;
    text.wide = encoding == VyrTableImport::kEncodingUtf16LE ||
                encoding == VyrTableImport::kEncodingUtf16BE;
    text.bigEndian = encoding == VyrTableImport::kEncodingUtf16BE;
    text.count = text.wide ? (length - skip) / 2 : length - skip;
    if (!text.wide) {
        if (std::memchr(text.bytes, 0, text.count))
            return VyrTableImport::kErrorBinary;
        if (encoding == VyrTableImport::kEncodingUtf8 && !IsValidUtf8(text.bytes, text.count)) {
            if (setting != VyrTableImport::kEncodingAuto)
                return VyrTableImport::kErrorEncoding;
            encoding = VyrTableImport::kEncodingIso8859_1;
        }
    } else {
        for (size_t i = 0; i < text.count; ++i)
            if (text.At(i) == 0)
                return VyrTableImport::kErrorBinary;
    }
    used = encoding;
    for (size_t i = 0; i < text.count; ++i) {
        const unsigned c = text.At(i);
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n')
            return VyrTableImport::kErrorNone;
    }
    return VyrTableImport::kErrorEmpty;
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

wchar_t GuessSeparator(const std::vector<std::string>& sample, bool commaIsMark) {
    const size_t from = sample.size() / 2;
    const size_t lines = sample.size() - from;
    for (wchar_t candidate : {L'\t', L';', L',', kBlanks}) {
        size_t split = 0;
        for (size_t k = from; k < sample.size(); ++k) {
            bool unquoted = false;
            const size_t cells =
                SplitCells(std::string_view(sample[k]), candidate, [&](const Cell<char>& cell) {
                    unquoted = unquoted || (!cell.quoted && !cell.content.empty());
                });
            // "1,5,2,5" cannot be told from two cells when the comma is a decimal mark;
            // "1,5","2,5" can.
            if (cells > 1 && !(candidate == L',' && commaIsMark && unquoted))
                ++split;
        }
        if (lines > 0 && 2 * split > lines)
            return candidate;
    }
    return 0;
}

bool IsCommentLine(std::string_view line) {
    const size_t first = line.find_first_not_of(" \t");
    return first != std::string_view::npos && line[first] == '#';
}

}  // namespace vyrtable
