// Loading a document file: reading the bytes, recognising and decoding the text (UTF-16LE with
// its mark, UTF-8, ISO-8859-1), cutting it into lines and handing each section to its reader.
#include <climits>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <new>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <wx/file.h>
#include <wx/filefn.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/strconv.h>

#include "core/VyrLargePages.h"
#include "file/VyrReadText.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"

namespace {

// "[unité]" in UTF-8: the only sign, besides the mark, that a file without a mark is UTF-8.
const char kUtf8UnitHeader[] = "[unit\xC3\xA9]";

// The number of UTF-16LE code units before the first zero unit; `available` units can be read
// whole and the buffer holds a zero unit behind them. Looked for four units at a time.
size_t Utf16Units(const unsigned char* bytes, size_t available) {
    size_t units = 0;
#if defined(__SSE2__)
    // Eight units to a register.
    const __m128i zero = _mm_setzero_si128();
    while (units + 8 <= available) {
        const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 2 * units));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(chunk, zero)) != 0)
            break;
        units += 8;
    }
#endif
    while (units + 4 <= available) {
        uint64_t word;
        std::memcpy(&word, bytes + 2 * units, sizeof word);
        // Some 16-bit lane is zero exactly when this is not zero (the lanes' byte order does
        // not matter: a lane is zero in either).
        if (((word - 0x0001000100010001ULL) & ~word & 0x8000800080008000ULL) != 0)
            break;
        units += 4;
    }
    while (bytes[2 * units] != 0 || bytes[2 * units + 1] != 0)
        ++units;
    return units;
}

// Decodes a NUL-terminated byte text with the toolkit converter into a new wide text (null
// when the bytes are not valid for the converter or memory is short): one call for the
// count, one to fill a zeroed buffer.
wchar_t* DecodeBytes(const wxMBConv& conv, const char* bytes) {
    const size_t count = conv.MB2WC(nullptr, bytes, 0);
    if (count == wxCONV_FAILED)
        return nullptr;
    wchar_t* text = new (std::nothrow) wchar_t[count + 1]();
    if (!text)
        return nullptr;
    if (conv.MB2WC(text, bytes, count + 1) == wxCONV_FAILED) {
        delete[] text;
        return nullptr;
    }
    return text;
}

// Reads the whole file into a zero-filled buffer with room behind the data: two zero bytes end
// the text in any of the three encodings, and two more keep the UTF-16 scan inside the buffer
// when the length is odd (the last byte then pairs with a zero). Null when the length is
// unknown, memory is short or a read fails.
unsigned char* ReadAll(wxFile& file, size_t* length) {
    const wxFileOffset fileLength = file.Length();
    if (fileLength < 0 || static_cast<unsigned long long>(fileLength) > SIZE_MAX - 4)
        return nullptr;
    const size_t total = static_cast<size_t>(fileLength);
    // Only the bytes behind the data need zeroing beforehand: the read fills the rest (a
    // file that shrank meanwhile is zeroed below), and untouched pages of a large buffer cost
    // nothing until they are read into.
    unsigned char* bytes = new (std::nothrow) unsigned char[total + 4];
    if (!bytes)
        return nullptr;
    // A file of many megabytes goes into few large pages.
    VyrAdviseLargePages(bytes, total);
    std::memset(bytes + total, 0, 4);
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

bool VyrBaseData::Load(const wxString& path) {
    // File operations answer false and show no message.
    wxLogNull noMessages;

    DeleteUnits();
    m_mapUnits.clear();
    m_mapVectorUnit.clear();

    bool result = false;
    wxFile file;
    // A directory opens for reading but has no content: it is a file that cannot be opened.
    if (!wxDirExists(path) &&
        file.Open(path, wxFile::read,
                  wxS_IRUSR | wxS_IWUSR | wxS_IRGRP | wxS_IWGRP | wxS_IROTH | wxS_IWOTH)) {
        Delete();
        size_t length = 0;
        unsigned char* bytes = ReadAll(file, &length);
        file.Close();
        if (bytes) {
            wchar_t* text = nullptr;
            bool refused = false;
            if (length >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) {
                // Read in place, up to the zero unit that ends the text: the buffer is ours,
                // so the reader may give back the pages it has passed.
                result = ParseUtf16Text(bytes + 2, Utf16Units(bytes + 2, (length - 2) / 2), true);
            } else if (length >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF) {
                // Deliberate: big-endian text is refused, although IsUnicodeTextFile knows
                // its mark.
                refused = true;
            } else {
                bool hasMark = false;
                const int shown =
                    length > static_cast<size_t>(INT_MAX) ? INT_MAX : static_cast<int>(length);
                if (IsUTF8TextFile(bytes, shown, &hasMark))
                    text = DecodeBytes(wxConvUTF8,
                                       reinterpret_cast<const char*>(bytes + (hasMark ? 3 : 0)));
                else
                    text = DecodeBytes(wxConvISO8859_1, reinterpret_cast<const char*>(bytes));
            }
            // The decoded text is all that is needed from here on.
            delete[] bytes;
            if (text && !refused)
                result = ParseUnicodeText(text);
            delete[] text;
        }
    }

    // After every attempt: unit records live only while a file is read.
    DeleteUnits();
    m_mapUnits.clear();
    m_mapVectorUnit.clear();
    RemoveVecteurOrphelin();
    Notify(VYR_MSG_FILE_LOADED, nullptr);
    return result;
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
    return ParseTokenizedText();
}

bool VyrBaseData::ParseUtf16Text(const unsigned char* bytes, size_t units, bool releaseConsumed) {
    if (!bytes)
        return false;
    m_tokenizer.SetUtf16(bytes, units);
    m_bReleaseConsumed = releaseConsumed;
    m_iReleasedUnits = 0;
    const bool result = ParseTokenizedText();
    m_bReleaseConsumed = false;
    return result;
}

bool VyrBaseData::ParseTokenizedText() {
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
    // The tokenizer must not outlive the text it points into.
    m_tokenizer.Clear();
    return result;
}

void VyrBaseData::SimuleSectionManip() {
    VyrExperience* experience = static_cast<VyrExperience*>(CreateEntity(
        VYR_KIND_EXPERIENCE, GetNewOid(), wxGetTranslation(L"IDS_EXPERIENCE1").wc_str()));
    wxVyrListEntityNode* node = GetFirstCourbeNode();
    while (node)
        experience->AddCourbe(GetNextCourbe(&node));
}
