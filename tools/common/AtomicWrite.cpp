#include "AtomicWrite.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

#include <wx/filename.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/file/VyrSafeFile.h"

namespace vyrtools {

namespace {

// What can be told before writing anything, in the words a person acts on.
bool CanWrite(const wxString& target, wxString& reason) {
    wxFileName name(target);
    wxString dir = name.GetPath();
    if (dir.empty())
        dir = ".";
    if (wxFileName::DirExists(target)) {
        reason = "cannot write: Is a directory";
        return false;
    }
    if (!wxFileName::DirExists(dir)) {
        reason = "cannot write: No such directory";
        return false;
    }
    if (::access(dir.fn_str(), W_OK) != 0) {
        reason = wxString("cannot write: ") + std::strerror(errno);
        return false;
    }
    return true;
}

// The reason of a failed VyrSafeFile: the system's error when one was reported.
bool Failed(const VyrSafeFile& file, wxString& reason) {
    reason = file.GetError() != 0 ? wxString("cannot write: ") + std::strerror(file.GetError())
                                  : wxString("cannot write");
    return false;
}

}  // namespace

bool WriteAtomically(const wxString& target, const std::function<bool(const wxString&)>& write,
                     wxString& reason) {
    if (!CanWrite(target, reason))
        return false;
    VyrSafeFile file(target);
    return file.Write(write) || Failed(file, reason);
}

bool WriteSafely(const wxString& target, const std::function<bool(VyrSafeFile&)>& save,
                 wxString& reason) {
    if (!CanWrite(target, reason))
        return false;
    VyrSafeFile file(target);
    return save(file) || Failed(file, reason);
}

bool SaveDocument(const wxString& target, VyrBaseData& doc, wxString& reason) {
    return WriteSafely(
        target, [&doc](VyrSafeFile& file) { return doc.SaveSafely(file); }, reason);
}

}  // namespace vyrtools
