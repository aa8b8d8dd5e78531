// JPEG pictures in base64 text, with a structural check before decoding.
#include "file/VyrJpegData.h"

#include <vector>

#include <wx/log.h>
#include <wx/mstream.h>

#include "vyrbase/file/VyrEncodeBase64.h"

namespace {

constexpr int kLineSize = 76;

constexpr unsigned char kMarker = 0xFF;
constexpr unsigned char kSOI = 0xD8;
constexpr unsigned char kEOI = 0xD9;
constexpr unsigned char kSOS = 0xDA;
constexpr unsigned char kTEM = 0x01;

bool IsStandalone(unsigned char m) {
    return m == kTEM || (m >= 0xD0 && m <= 0xD7);
}

// Frame headers: C0..CF except DHT (C4), JPG (C8) and DAC (CC).
bool IsFrameHeader(unsigned char m) {
    return m >= 0xC0 && m <= 0xCF && m != 0xC4 && m != 0xC8 && m != 0xCC;
}

unsigned Read16(const unsigned char* p) {
    return static_cast<unsigned>(p[0]) << 8 | p[1];
}

// The toolkit's image handlers are the application's business, but a document with pictures
// must load even when the application registered none.
void EnsureJpegHandler() {
    if (!wxImage::FindHandler(wxBITMAP_TYPE_JPEG))
        wxImage::AddHandler(new wxJPEGHandler);
}

}  // namespace

bool VyrCheckJpeg(const unsigned char* bytes, size_t size, int* width, int* height) {
    if (!bytes || size < 4 || bytes[0] != kMarker || bytes[1] != kSOI)
        return false;
    bool frame = false;
    size_t pos = 2;
    while (pos < size) {
        // Fill bytes: any number of 0xFF may precede a marker code.
        if (bytes[pos] != kMarker)
            return false;
        while (pos < size && bytes[pos] == kMarker)
            ++pos;
        if (pos >= size)
            return false;
        const unsigned char marker = bytes[pos++];
        if (marker == kEOI)
            return frame;
        if (marker == kSOI || marker == 0x00)
            return false;
        if (IsStandalone(marker))
            continue;
        if (pos + 2 > size)
            return false;
        const size_t length = Read16(bytes + pos);
        if (length < 2 || pos + length > size)
            return false;
        if (IsFrameHeader(marker)) {
            // precision (1), height (2), width (2), components (1)
            if (length < 8 || frame)
                return false;
            const unsigned h = Read16(bytes + pos + 3);
            const unsigned w = Read16(bytes + pos + 5);
            if (w == 0 || h == 0 || static_cast<unsigned long long>(w) * h > kVyrMaxJpegPixels)
                return false;
            if (width)
                *width = static_cast<int>(w);
            if (height)
                *height = static_cast<int>(h);
            frame = true;
        }
        pos += length;
        if (marker == kSOS) {
            if (!frame)
                return false;
            // Entropy-coded data: runs until a marker other than a stuffed zero or a restart.
            while (pos + 1 < size) {
                if (bytes[pos] == kMarker && bytes[pos + 1] != 0x00 &&
                    !(bytes[pos + 1] >= 0xD0 && bytes[pos + 1] <= 0xD7) &&
                    bytes[pos + 1] != kMarker)
                    break;
                ++pos;
            }
            if (pos + 1 >= size)
                return false;
        }
    }
    return false;
}

std::string VyrEncodeJpeg(const wxImage& image) {
    std::string bytes;
    if (!image.IsOk())
        return bytes;
    EnsureJpegHandler();
    wxLogNull quiet;
    wxMemoryOutputStream out;
    if (!image.SaveFile(out, wxBITMAP_TYPE_JPEG))
        return bytes;
    bytes.resize(out.GetSize());
    if (!bytes.empty())
        out.CopyTo(&bytes[0], bytes.size());
    return bytes;
}

wxImage VyrDecodeJpeg(const unsigned char* bytes, size_t size) {
    if (!VyrCheckJpeg(bytes, size, nullptr, nullptr))
        return wxImage();
    EnsureJpegHandler();
    wxLogNull quiet;
    wxMemoryInputStream in(bytes, size);
    wxImage image;
    if (!image.LoadFile(in, wxBITMAP_TYPE_JPEG))
        return wxImage();
    return image;
}

wxString VyrImageToBase64(const wxImage& image) {
    std::string jpeg = VyrEncodeJpeg(image);
    if (jpeg.empty())
        return wxString();
    std::vector<unsigned char> text(
        VyrEncodeBase64::GetSizeEncode64(kLineSize, static_cast<int>(jpeg.size())));
    int length = 0;
    VyrEncodeBase64::EncodeBinaryToBase64(reinterpret_cast<unsigned char*>(&jpeg[0]), text.data(),
                                          kLineSize, static_cast<int>(jpeg.size()), &length);
    // Base64 is ASCII: each byte is its character (the UTF-8 reading of it), widened here
    // rather than through the toolkit's converter, which loses its buffer when memory runs out.
    return wxString(std::wstring(text.begin(), text.begin() + length));
}

wxImage VyrImageFromBase64(const wxString& text) {
    const wxScopedCharBuffer utf8 = text.utf8_str();
    if (utf8.length() == 0)
        return wxImage();
    std::vector<unsigned char> bytes(utf8.length() * 3 / 4 + 3);
    unsigned int length = 0;
    VyrEncodeBase64::DecodeBase64ToBinary(utf8.data(), bytes.data(), &length);
    return VyrDecodeJpeg(bytes.data(), length);
}
