// Opening a document file with a reason a person can act on when it fails: the file is read
// once, into memory, which tells a missing or unreadable file from one that is not a document,
// names the encoding the document is read with, and is what the document is then loaded from.
// Shared by the command-line tool and the viewer.
#ifndef VYR_TOOLS_COMMON_DOCUMENTLOADING_H
#define VYR_TOOLS_COMMON_DOCUMENTLOADING_H

#include <vector>

#include <wx/string.h>

class VyrBaseData;

namespace vyrtools {

enum class LoadResult {
    Ok,
    CannotRead,    // missing, a directory, unreadable
    NotADocument,  // read, but big-endian text or no document structure
};

// The encoding a document file is read with, as Load detects it ("UTF-16LE", "UTF-8 with
// mark", "UTF-8", "ISO-8859-1"), or "big-endian UTF-16" which Load refuses.
wxString DetectEncoding(const std::vector<unsigned char>& bytes);

// Loads `path` into `doc`. On failure `reason` says why ("cannot open: ...", "not a document:
// ..."). `encoding` receives the detected encoding when not null and the file could be read.
LoadResult LoadDocument(const wxString& path, VyrBaseData& doc, wxString& reason,
                        wxString* encoding = nullptr);

}  // namespace vyrtools

#endif
