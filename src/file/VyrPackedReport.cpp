// Unpacking of the report's packed data into its RTF text.
#include "file/VyrPackedReport.h"

#include <cstring>
#include <memory>
#include <new>

#include <wx/crt.h>
#include <wx/strconv.h>
#include <zlib.h>

namespace {

// "U", eight digits, one separator.
constexpr size_t kLengthDigits = 8;
constexpr size_t kDataStart = 10;
// The collected bytes start with this much room, as the report writer's packer expects.
constexpr size_t kInitialCapacity = 1024;

// Characters 1 to 8 as an unsigned decimal number: leading blanks skipped, digits up to the
// first non-digit.
unsigned long ReadDeclaredLength(const wxString& data) {
    unsigned long length = 0;
    size_t i = 1;
    const size_t end = data.length() < 1 + kLengthDigits ? data.length() : 1 + kLengthDigits;
    while (i < end && (data[i] == ' ' || data[i] == '\t'))
        ++i;
    for (; i < end && data[i] >= '0' && data[i] <= '9'; ++i)
        length = length * 10 + static_cast<unsigned long>(data[i] - '0');
    return length;
}

// The letter pairs from `start` on, white space dropped. False for a letter outside "A".."P".
bool CollectBytes(const wxString& data, size_t start, std::string* bytes) {
    bytes->reserve(kInitialCapacity);
    int low = -1;
    for (size_t i = start; i < data.length(); ++i) {
        const wxUniChar c = data[i];
        if (wxIsspace(c))
            continue;
        if (c < 'A' || c > 'P')
            return false;
        const int nibble = static_cast<int>(c.GetValue() - 'A');
        if (low < 0) {
            low = nibble;
        } else {
            bytes->push_back(static_cast<char>(low | nibble << 4));
            low = -1;
        }
    }
    // A lone last letter makes no byte.
    return true;
}

// The bytes decoded with `conv` (empty when it refuses them). The wide text is built in a buffer
// of its own: the toolkit's narrow-text constructor loses its conversion buffer when memory runs
// out while the string is built.
wxString Decode(const wxMBConv& conv, const char* bytes, size_t length) {
    const size_t count = conv.ToWChar(nullptr, 0, bytes, length);
    if (count == wxCONV_FAILED || count == 0)
        return wxString();
    std::wstring text(count, L'\0');
    if (conv.ToWChar(&text[0], count, bytes, length) == wxCONV_FAILED)
        return wxString();
    return wxString(text);
}

}  // namespace

bool VyrUnpackReportBytes(const wxString& data, std::string* bytes) {
    if (!bytes)
        return false;
    bytes->clear();
    if (data.empty() || data[0] != 'U')
        return false;  // unpacked from character 0 with a length of 0: nothing
    const unsigned long declared = ReadDeclaredLength(data);
    if (declared == 0)
        return false;

    std::string stream;
    if (!CollectBytes(data, kDataStart, &stream) || stream.empty())
        return false;
    if (declared > kVyrMaxInflateRatio * stream.size())
        return false;

    // One spare byte beyond the declared length lets zlib go on to the stream's checksum when
    // the stream holds exactly the declared length, so that corruption is caught there too.
    const size_t room = declared + 1;
    std::unique_ptr<unsigned char[]> out(new (std::nothrow) unsigned char[room]);
    if (!out)
        return false;

    z_stream z;
    std::memset(&z, 0, sizeof z);
    if (inflateInit(&z) != Z_OK)
        return false;
    z.next_in = reinterpret_cast<Bytef*>(&stream[0]);
    z.avail_in = static_cast<uInt>(stream.size());
    z.next_out = out.get();
    z.avail_out = static_cast<uInt>(room);
    const int status = inflate(&z, Z_FINISH);
    const size_t produced = room - z.avail_out;
    inflateEnd(&z);

    // Complete stream (possibly shorter than declared), or one that holds more than declared.
    const bool complete = status == Z_STREAM_END;
    const bool filled = z.avail_out == 0 && (status == Z_OK || status == Z_BUF_ERROR);
    if (!complete && !filled)
        return false;
    bytes->assign(reinterpret_cast<const char*>(out.get()),
                  produced < declared ? produced : declared);
    return true;
}

wxString VyrRtfFromPackedReport(const wxString& data) {
    std::string bytes;
    if (!VyrUnpackReportBytes(data, &bytes))
        return wxString();
    // The unpacked text is a C string: it ends at its first zero byte.
    const size_t end = bytes.find('\0');
    if (end != std::string::npos)
        bytes.resize(end);
    const size_t brace = bytes.find('{');
    if (brace == std::string::npos)
        return wxString();
    const char* rtf = bytes.c_str() + brace;
    const size_t length = bytes.size() - brace;
    wxString text = Decode(wxConvLocal, rtf, length);
    if (text.empty())
        text = Decode(wxConvISO8859_1, rtf, length);
    return text;
}
