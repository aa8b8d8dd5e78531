#include "AtomicWrite.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

#include <wx/filename.h>

namespace vyrtools {

bool WriteAtomically(const wxString& target, const std::function<bool(const wxString&)>& write,
                     wxString& reason) {
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
    // A fresh name beside the target, so the rename stays within one file system.
    const wxString temp =
        dir + "/." + name.GetFullName() + wxString::Format(".vyr-%ld.tmp", (long)getpid());
    const bool written = write(temp);
    if (!written || ::rename(temp.fn_str(), target.fn_str()) != 0) {
        const int err = errno;
        ::unlink(temp.fn_str());
        reason =
            written ? wxString("cannot write: ") + std::strerror(err) : wxString("cannot write");
        return false;
    }
    return true;
}

}  // namespace vyrtools
