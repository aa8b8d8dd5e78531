#include "CliCommon.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>

#include <wx/filefn.h>
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

const char* const kStandardOutput = "-";

namespace {

// Copies the file at `path` to standard output; the system's reason on failure.
bool CopyToStandardOutput(const wxString& path, wxString& reason) {
    std::FILE* in = std::fopen(path.fn_str(), "rb");
    if (!in) {
        reason = wxString("cannot write: ") + std::strerror(errno);
        return false;
    }
    char buffer[1 << 16];
    bool ok = true;
    size_t n;
    while (ok && (n = std::fread(buffer, 1, sizeof buffer, in)) > 0)
        ok = std::fwrite(buffer, 1, n, stdout) == n;
    // The last bytes are still buffered: only the flush tells whether they arrived.
    ok = ok && !std::ferror(in) && std::fflush(stdout) == 0;
    const int error = errno;
    std::fclose(in);
    if (!ok)
        reason = wxString("cannot write: ") + std::strerror(error);
    return ok;
}

}  // namespace

int WriteToStandardOutput(const std::function<bool(const wxString&)>& write) {
    const wxString temporary = wxFileName::CreateTempFileName("vyr");
    wxString reason = "cannot write: cannot create a temporary file";
    bool ok = !temporary.empty();
    if (ok) {
        ok = write(temporary);
        if (!ok)
            reason = "cannot write";
        ok = ok && CopyToStandardOutput(temporary, reason);
        wxRemoveFile(temporary);
    }
    if (ok)
        return kExitOk;
    Complain("standard output", reason);
    return kExitOutput;
}

int CheckDefaultOutput(const wxString& target, bool force) {
    struct stat info;
    if (force || ::lstat(target.fn_str(), &info) != 0)
        return kExitOk;
    Complain(target,
             "exists and was not named with -o: name another output with -o OUT, or "
             "replace it with --force");
    return kExitOutput;
}

bool IsSameFile(const wxString& a, const wxString& b) {
    struct stat first, second;
    return ::stat(a.fn_str(), &first) == 0 && ::stat(b.fn_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

}  // namespace vyr
