#include "CliCommon.h"

#include <cstdio>

#include <wx/filename.h>

#include "AtomicWrite.h"
#include "DocumentLoading.h"

namespace vyr {

wxString DefaultSample() {
#ifdef VYR_SAMPLES_DIR
    // The installed samples first, then the source tree's (running from a build directory).
    for (const char* dir : {VYR_INSTALLED_SAMPLES_DIR, VYR_SAMPLES_DIR}) {
        wxString candidate = wxString::FromUTF8(dir) + "/oscillation.vyr";
        if (wxFileName::FileExists(candidate))
            return candidate;
    }
    return wxString::FromUTF8(VYR_SAMPLES_DIR) + "/oscillation.vyr";
#else
    return "samples/oscillation.vyr";
#endif
}

void Complain(const wxString& subject, const wxString& reason) {
    std::fprintf(stderr, "vyr: %s: %s\n", (const char*)subject.utf8_str(),
                 (const char*)reason.utf8_str());
}

wxString DetectEncoding(const std::vector<unsigned char>& bytes) {
    return vyrtools::DetectEncoding(bytes);
}

int OpenDocument(const wxString& path, VyrBaseData& doc, wxString* encoding) {
    wxString reason;
    switch (vyrtools::LoadDocument(path, doc, reason, encoding)) {
        case vyrtools::LoadResult::Ok:
            return kExitOk;
        case vyrtools::LoadResult::CannotRead:
            Complain(path, reason);
            return kExitInput;
        case vyrtools::LoadResult::NotADocument:
            break;
    }
    Complain(path, reason);
    return kExitFormat;
}

int WriteAtomically(const wxString& target, const std::function<bool(const wxString&)>& write) {
    wxString reason;
    if (vyrtools::WriteAtomically(target, write, reason))
        return kExitOk;
    Complain(target, reason);
    return kExitOutput;
}

int WriteSafely(const wxString& target, const std::function<bool(VyrSafeFile&)>& save) {
    wxString reason;
    if (vyrtools::WriteSafely(target, save, reason))
        return kExitOk;
    Complain(target, reason);
    return kExitOutput;
}

int SaveDocument(const wxString& target, VyrBaseData& doc) {
    wxString reason;
    if (vyrtools::SaveDocument(target, doc, reason))
        return kExitOk;
    Complain(target, reason);
    return kExitOutput;
}

wxString WithExtension(const wxString& path, const wxString& extension) {
    wxFileName name(path);
    name.SetExt(extension);
    return name.GetFullPath();
}

}  // namespace vyr
