// Loading a document file: reading the bytes, recognising and decoding the text (UTF-16LE with
// its mark, UTF-8, ISO-8859-1), cutting it into lines and handing each section to its reader.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <wx/file.h>
#include <wx/filefn.h>
#include <wx/log.h>
#include <wx/strconv.h>

#include "core/VyrLargePages.h"
#include "file/VyrReadText.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"

namespace {

// "[unité]" in UTF-8: the only sign, besides the mark, that a file without a mark is UTF-8.
const char kUtf8UnitHeader[] = "[unit\xC3\xA9]";

const int kReadPermissions = wxS_IRUSR | wxS_IWUSR | wxS_IRGRP | wxS_IWGRP | wxS_IROTH | wxS_IWOTH;

// UTF-16LE code unit i of the bytes; an odd last byte pairs with a zero.
unsigned Utf16Unit(const unsigned char* bytes, size_t length, size_t i) {
    const unsigned low = bytes[2 * i];
    const unsigned high = 2 * i + 1 < length ? bytes[2 * i + 1] : 0;
    return low | high << 8;
}

// The UTF-16LE code units of `length` bytes up to the first zero unit (an odd last byte pairs
// with a zero), as the reader's text ends there; looked for eight units at a time.
size_t Utf16TextLength(const unsigned char* bytes, size_t length) {
    const size_t whole = length / 2;
    size_t n = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    while (n + 8 <= whole) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 2 * n));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(chunk, zero)) != 0)
            break;
        n += 8;
    }
#endif
    while (n < whole && (bytes[2 * n] != 0 || bytes[2 * n + 1] != 0))
        ++n;
    if (n == whole && length % 2 != 0 && bytes[length - 1] != 0)
        ++n;
    return n;
}

// What the reader makes of a text whose first line is not a section header, decided on the raw
// code units (the separators and "[" have the same code in all three encodings), so that a
// large file that is no document is answered without decoding the whole of it into wide
// characters.
enum class FirstLine {
    kHeader,    // a header, or no line at all: the text is parsed
    kRefused,   // another line follows: the load answers false
    kLoneLine,  // nothing follows: the loop never looks at it, as for an empty text
};

template <class Unit>
FirstLine ClassifyFirstLine(Unit units, size_t count) {
    auto separator = [](unsigned c) { return c == '\r' || c == '\n' || c == '\t'; };
    size_t i = 0;
    while (i < count && separator(units(i)))
        ++i;
    if (i == count || units(i) == '[')
        return FirstLine::kHeader;
    while (i < count && !separator(units(i)))
        ++i;
    while (i < count && separator(units(i)))
        ++i;
    return i < count ? FirstLine::kRefused : FirstLine::kLoneLine;
}

// Decodes `units` UTF-16LE code units into a new NUL-terminated wide text (null when memory is
// short). Surrogate pairs become one character; a lone surrogate is kept as it is, so that the
// text goes back to the same units when written.
wchar_t* DecodeUtf16Le(const unsigned char* bytes, size_t length, size_t units) {
    wchar_t* text = new (std::nothrow) wchar_t[units + 1];
    if (!text)
        return nullptr;
    size_t n = 0;
    for (size_t i = 0; i < units; ++i) {
        unsigned c = Utf16Unit(bytes, length, i);
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < units) {
            const unsigned low = Utf16Unit(bytes, length, i + 1);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        text[n++] = static_cast<wchar_t>(c);
    }
    text[n] = L'\0';
    return text;
}

// Decodes `length` bytes (no zero among them) with the toolkit converter into a new
// NUL-terminated wide text: one call for the count, then one that fills a zeroed buffer. Null
// when the converter refuses the bytes or memory is short.
wchar_t* DecodeBytes(const wxMBConv& conv, const char* bytes, size_t length, size_t count) {
    wchar_t* text = new (std::nothrow) wchar_t[count + 1]();
    if (!text)
        return nullptr;
    if (count > 0 && conv.ToWChar(text, count, bytes, length) == wxCONV_FAILED) {
        delete[] text;
        return nullptr;
    }
    return text;
}

// Reads the whole file into a new buffer. Null when the length is unknown, memory is short or a
// read fails.
unsigned char* ReadAll(wxFile& file, size_t* length) {
    const wxFileOffset fileLength = file.Length();
    if (fileLength < 0 || static_cast<unsigned long long>(fileLength) > SIZE_MAX - 1)
        return nullptr;
    const size_t total = static_cast<size_t>(fileLength);
    // One byte more, so that an empty file still gets a buffer. Not zeroed beforehand: the read
    // fills it (a file that shrank meanwhile is zeroed below), and a large buffer's pages are
    // not touched before the advice below can take effect.
    unsigned char* bytes = new (std::nothrow) unsigned char[total + 1];
    if (!bytes)
        return nullptr;
    bytes[total] = 0;
    // A file of many megabytes goes into few large pages.
    VyrAdviseLargePages(bytes, total);
    size_t done = 0;
    while (done < total) {
        const ssize_t got = file.Read(bytes + done, total - done);
        if (got == wxInvalidOffset) {
            delete[] bytes;
            return nullptr;
        }
        if (got == 0) {
            // The file shrank meanwhile: the rest reads as zeros.
            std::memset(bytes + done, 0, total - done);
            break;
        }
        done += static_cast<size_t>(got);
    }
    *length = total;
    return bytes;
}

}  // namespace

bool VyrBaseData::IsUTF8TextFile(unsigned char* bytes, int length, bool* hasMark) {
    if (hasMark)
        *hasMark = false;
    if (!bytes)
        return false;
    if (length >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF) {
        if (hasMark)
            *hasMark = true;
        return true;
    }
    // A plain C substring search: it ends at the first zero byte of the buffer (which the
    // caller terminates with zeros).
    return std::strstr(reinterpret_cast<const char*>(bytes), kUtf8UnitHeader) != nullptr;
}

bool VyrBaseData::IsUnicodeTextFile(unsigned char* bytes, int length, bool* littleEndian) {
    if (littleEndian)
        *littleEndian = true;
    if (!bytes || length < 2)
        return false;
    if (bytes[0] == 0xFF && bytes[1] == 0xFE)
        return true;
    if (bytes[0] == 0xFE && bytes[1] == 0xFF) {
        if (littleEndian)
            *littleEndian = false;
        return true;
    }
    return false;
}

void VyrBaseData::BeginLoad() {
    DeleteUnits();
    m_mapUnits.clear();
    m_mapVectorUnit.clear();
}

bool VyrBaseData::EndLoad(bool result) {
    // After every attempt: unit records live only while a file is read.
    DeleteUnits();
    m_mapUnits.clear();
    m_mapVectorUnit.clear();
    try {
        UnshareLoadedLinks();
    } catch (const std::bad_alloc&) {
        result = false;
        DropLoadedLinks();
    }
    try {
        RemoveVecteurOrphelin();
    } catch (const std::bad_alloc&) {
        result = false;
    }
    try {
        Notify(VYR_MSG_FILE_LOADED, nullptr);
    } catch (const std::bad_alloc&) {
        result = false;
    }
    return result;
}

bool VyrBaseData::ParseFileBytes(const unsigned char* bytes, size_t length, bool ownBuffer) {
    // The text ends at its first zero (a zero code unit in UTF-16), as a C string would.
    if (length >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) {
        const unsigned char* body = bytes + 2;
        const size_t bodyLength = length - 2;
        auto unit = [body, bodyLength](size_t i) { return Utf16Unit(body, bodyLength, i); };
        const size_t units = Utf16TextLength(body, bodyLength);
        const FirstLine first = ClassifyFirstLine(unit, units);
        if (first != FirstLine::kHeader)
            return ParseFirstLineOnly(first == FirstLine::kLoneLine);
        // Whole code units are read in place; an odd last byte (which pairs with a zero) takes
        // the decoding copy. Only a buffer of the load's own may give back the pages the reader
        // has passed.
        if (bodyLength % 2 == 0)
            return ParseUtf16Text(body, units, ownBuffer);
        std::unique_ptr<wchar_t[]> text(DecodeUtf16Le(body, bodyLength, units));
        return text && ParseOwnText(text.get());
    }
    if (length >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF) {
        // Deliberate: big-endian text is refused, although IsUnicodeTextFile knows its mark.
        return false;
    }
    const char* chars = reinterpret_cast<const char*>(bytes);
    const void* zero = std::memchr(chars, 0, length);
    const size_t textLength = zero ? static_cast<const char*>(zero) - chars : length;
    // IsUTF8TextFile's test, bounded by the text's length rather than by a terminating zero.
    const bool hasMark =
        textLength >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF;
    const bool utf8 =
        hasMark || std::search(chars, chars + textLength, kUtf8UnitHeader,
                               kUtf8UnitHeader + sizeof kUtf8UnitHeader - 1) != chars + textLength;
    const size_t skip = hasMark ? 3 : 0;
    const char* start = chars + skip;
    const size_t size = textLength - skip;
    const wxMBConv& conv = utf8 ? static_cast<const wxMBConv&>(wxConvUTF8) : wxConvISO8859_1;
    // Every byte is a character in ISO-8859-1; UTF-8 must be valid, or there is no text.
    const size_t count = utf8 ? conv.ToWChar(nullptr, 0, start, size) : size;
    if (count == wxCONV_FAILED)
        return false;
    const FirstLine first = ClassifyFirstLine(
        [start](size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(start[i])); },
        size);
    if (first != FirstLine::kHeader)
        return ParseFirstLineOnly(first == FirstLine::kLoneLine);
    std::unique_ptr<wchar_t[]> text(DecodeBytes(conv, start, size, count));
    return text && ParseOwnText(text.get());
}

bool VyrBaseData::ParseFirstLineOnly(bool lone) {
    if (!lone) {
        // What ParseUnicodeText does with a first line that is no header and more lines.
        m_asUnknownSections.Clear();
        return false;
    }
    // A lone line is never looked at: the text reads as an empty one.
    wchar_t empty[1] = {L'\0'};
    return ParseUnicodeText(empty);
}

bool VyrBaseData::Load(const wxString& path) {
    // File operations answer false and show no message.
    wxLogNull noMessages;
    BeginLoad();
    bool result = false;
    try {
        wxFile file;
        // A directory opens for reading but has no content: it is a file that cannot be
        // opened.
        if (!wxDirExists(path) && file.Open(path, wxFile::read, kReadPermissions)) {
            Delete();
            size_t length = 0;
            std::unique_ptr<unsigned char[]> bytes(ReadAll(file, &length));
            file.Close();
            if (bytes)
                result = ParseFileBytes(bytes.get(), length, true);
        }
    } catch (const std::bad_alloc&) {
        // The library has no exceptions of its own: memory that cannot be had is a failed
        // load, like any other (what was read so far stays in the document).
        result = false;
    }
    return EndLoad(result);
}

bool VyrBaseData::LoadFromMemory(const void* bytes, size_t length) {
    wxLogNull noMessages;
    BeginLoad();
    bool result = false;
    // Null bytes of a non-zero length are content that cannot be had, as a file that cannot
    // be opened: the document keeps its entities.
    if (bytes || length == 0) {
        try {
            Delete();
            static const unsigned char kNothing[1] = {0};
            result = ParseFileBytes(bytes ? static_cast<const unsigned char*>(bytes) : kNothing,
                                    length, false);
        } catch (const std::bad_alloc&) {
            result = false;
        }
    }
    return EndLoad(result);
}

wxString VyrBaseData::ReadSection(const wxString& header, bool* stop, bool* experienceSeen) {
    // The section readers, tested in this order on the exact header text (case included).
    // Only the vector, curve and experiment readers can end the whole load.
    typedef wxString (VyrBaseData::*Reader)();
    typedef wxString (VyrBaseData::*StoppingReader)(bool*);
    struct Section {
        const wchar_t* header;
        Reader read;
        StoppingReader readOrStop;
    };
    static const Section kSections[] = {
        {L"[unit\u00e9]", &VyrBaseData::ParseUnit, nullptr},
        {L"[vecteur]", nullptr, &VyrBaseData::ParseVector},
        {L"[courbe]", nullptr, &VyrBaseData::ParseCurve},
        {L"[manipulation]", nullptr, &VyrBaseData::ParseExperience},
        {L"[Annotation]", &VyrBaseData::ParseNote, nullptr},
        {L"[outil_Interval]", &VyrBaseData::ParseOutilInterval, nullptr},
        {L"[compte_rendu]", &VyrBaseData::ParseReport, nullptr},
        {L"[cellules]", &VyrBaseData::ParseGrille, nullptr},
        {L"[spirog]", &VyrBaseData::ParseSpirog, nullptr},
        {L"[spirom]", &VyrBaseData::ParseSpirom, nullptr},
        {L"[spiroexp]", &VyrBaseData::ParseSpiroExp, nullptr},
        {L"[Param_RespihomConfig]", &VyrBaseData::ParseRespihomConfig, nullptr},
        {L"[Param_RespihomData]", &VyrBaseData::ParseRespihomData, nullptr},
        {L"[Param_SpiroMetaConfig]", &VyrBaseData::ParseSpiroMetaConfig, nullptr},
        {L"[Param_SpiroMetaData]", &VyrBaseData::ParseSpiroMetaData, nullptr},
        {L"[image_Redy]", &VyrBaseData::ParseImageRedy, nullptr},
    };
    for (const Section& section : kSections) {
        if (header != section.header)
            continue;
        if (section.readOrStop == &VyrBaseData::ParseExperience)
            *experienceSeen = true;
        return section.read ? (this->*section.read)() : (this->*section.readOrStop)(stop);
    }
    // Unknown sections are taken from the text the tokenizer walks.
    return ParseInconnu(header, nullptr, stop);
}

bool VyrBaseData::ParseUnicodeText(wchar_t* text) {
    if (!text)
        return false;
    m_tokenizer.SetText(text, std::wcslen(text));
    return ParseTokenizedText(false);
}

bool VyrBaseData::ParseOwnText(wchar_t* text) {
    if (!text)
        return false;
    m_tokenizer.SetText(text, std::wcslen(text));
    return ParseTokenizedText(true);
}

bool VyrBaseData::ParseUtf16Text(const unsigned char* bytes, size_t units, bool releaseConsumed) {
    if (!bytes)
        return false;
    m_tokenizer.SetUtf16(bytes, units);
    return ParseTokenizedText(releaseConsumed);
}

bool VyrBaseData::ParseTokenizedText(bool releaseConsumed) {
    // However the parse ends (an allocation may fail anywhere in it), the reader lets go of the
    // text: the tokenizer must not outlive it, and no later reading may give its pages back.
    struct LetGoOfText {
        VyrLineTokenizer& tokenizer;
        bool& releaseConsumed;
        ~LetGoOfText() {
            tokenizer.Clear();
            releaseConsumed = false;
        }
    } letGo{m_tokenizer, m_bReleaseConsumed};
    m_bReleaseConsumed = releaseConsumed;
    m_iReleasedUnits = 0;
    m_asUnknownSections.Clear();
    bool result = true;
    if (!m_tokenizer.HasMoreTokens()) {
        SimuleSectionManip();
        AttribuerLesAnnotations();
    } else {
        bool stop = false;
        bool experienceSeen = false;
        wxString header = VyrReadText::ToString(m_tokenizer.GetNextToken());
        // The loop tests for remaining lines first: a header that is the very last line of
        // the text is dropped.
        while (result && m_tokenizer.HasMoreTokens() && !stop) {
            if (!header.StartsWith(L"[")) {
                result = false;
                break;
            }
            header = ReadSection(header, &stop, &experienceSeen);
        }
        if (result) {
            if (!experienceSeen)
                SimuleSectionManip();
            AttribuerLesAnnotations();
        }
    }
    return result;
}

void VyrBaseData::SimuleSectionManip() {
    VyrExperience* experience = static_cast<VyrExperience*>(CreateEntity(
        VYR_KIND_EXPERIENCE, GetNewOid(), VyrResourceText::Get(L"IDS_EXPERIENCE1").wc_str()));
    wxVyrListEntityNode* node = GetFirstCourbeNode();
    while (node)
        experience->AddCourbe(GetNextCourbe(&node));
}
