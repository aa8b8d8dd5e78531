// Unpacking of the report's packed "data" text: "U", the unpacked length in eight decimal
// digits, a separator, then the zlib stream written as letter pairs "A".."P" (low half of the
// byte first). The report's RTF text is the unpacked text from its first "{".
//
// Internal to the file subsystem; exported only so that the tests can reach it.
#ifndef VYRBASE_SRC_FILE_VYRPACKEDREPORT_H
#define VYRBASE_SRC_FILE_VYRPACKEDREPORT_H

#include <string>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

// deflate cannot expand data by more than this ratio, so a declared length above
// kVyrMaxInflateRatio times the stream size cannot be honest and is refused before any
// allocation.
constexpr unsigned long kVyrMaxInflateRatio = 1032;

// The bytes of a packed report, at most the declared length of them. Answers false (bytes
// emptied) for a text without the leading "U", a declared length of 0, a letter outside
// "A".."P", a declared length the stream cannot possibly produce, or a zlib stream that is
// corrupt or ends before it has produced the declared length or reached its own end. A stream
// longer than the declared length gives its first declared-length bytes.
VYRBASE_API bool VyrUnpackReportBytes(const wxString& data, std::string* bytes);

// The RTF text of a packed report: the unpacked text (up to its first zero byte) from its first
// "{", converted from the local 8-bit character set (ISO-8859-1 when the local set cannot
// convert it). Empty when the data cannot be unpacked or holds no "{".
VYRBASE_API wxString VyrRtfFromPackedReport(const wxString& data);

#endif
