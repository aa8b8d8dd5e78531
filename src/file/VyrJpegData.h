// Pictures of the document file: JPEG bytes in base64 text. Decoding checks the JPEG's own
// structure first, so that a corrupt or hostile "data" value cannot make the decoder allocate
// a huge picture or read a truncated stream.
//
// Internal to the file subsystem; exported only so that the tests can reach it.
#ifndef VYRBASE_SRC_FILE_VYRJPEGDATA_H
#define VYRBASE_SRC_FILE_VYRJPEGDATA_H

#include <cstddef>
#include <string>

#include <wx/image.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

// Pictures larger than this many pixels are refused before decoding.
constexpr unsigned long long kVyrMaxJpegPixels = 64ull * 1000 * 1000;

// True when `bytes` hold a complete JPEG stream: the start marker, well-formed segments, a frame
// header declaring a non-empty picture of at most kVyrMaxJpegPixels, and the end marker. The
// frame size is returned through width and height when they are not null.
VYRBASE_API bool VyrCheckJpeg(const unsigned char* bytes, size_t size, int* width, int* height);

// The picture as JPEG bytes; empty when the picture is not Ok or cannot be encoded.
VYRBASE_API std::string VyrEncodeJpeg(const wxImage& image);
// The picture held by JPEG bytes; an invalid image when VyrCheckJpeg refuses them or the
// decoder fails.
VYRBASE_API wxImage VyrDecodeJpeg(const unsigned char* bytes, size_t size);

// The picture saved as JPEG and encoded in base64 with CR LF every 76 characters; empty when it
// cannot be encoded.
VYRBASE_API wxString VyrImageToBase64(const wxImage& image);
// The picture held by a base64 text of JPEG bytes; an invalid image when the text does not
// decode to an acceptable JPEG.
VYRBASE_API wxImage VyrImageFromBase64(const wxString& text);

#endif
