// Writing an output file without ever destroying an existing one: the content goes into a new
// file beside the target (the library's VyrSafeFile), which is made durable and renamed over
// the target only once it was written whole. Shared by the command-line tool and the viewer.
#ifndef VYR_TOOLS_COMMON_ATOMICWRITE_H
#define VYR_TOOLS_COMMON_ATOMICWRITE_H

#include <functional>

#include <wx/string.h>

class VyrBaseData;
class VyrSafeFile;

namespace vyrtools {

// Writes `target` through `write` (which writes the file it is given). Answers false, with a
// reason a person can act on in `reason` ("cannot write: ..."), when the directory is missing or
// read-only, the target is a directory, `write` failed or the new file could not be made durable
// or renamed; the target is then exactly as it was before.
bool WriteAtomically(const wxString& target, const std::function<bool(const wxString&)>& write,
                     wxString& reason);

// Writes `target` through `save`, which writes into the VyrSafeFile it is given (not yet opened)
// as the library's own writers do (VyrBaseData::SaveSafely, VyrDiagramExport::Save), so that the
// reason of a failure is the system's own ("No space left on device"). Reasons as above.
bool WriteSafely(const wxString& target, const std::function<bool(VyrSafeFile&)>& save,
                 wxString& reason);

// Saves `doc` to `target` the same way (VyrBaseData::SaveSafely), with the same reasons.
bool SaveDocument(const wxString& target, VyrBaseData& doc, wxString& reason);

}  // namespace vyrtools

#endif
