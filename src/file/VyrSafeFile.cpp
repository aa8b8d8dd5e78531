// Replacing a file through a temporary file beside it, renamed over it once durable.
#include "vyrbase/file/VyrSafeFile.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>
#include <new>

#include <sys/stat.h>
#include <unistd.h>

#include "file/VyrFileSink.h"

namespace {

wxCharBuffer FileName(const wxString& path) {
    return path.fn_str();
}

// The file a symbolic link names, so that the link stays a link; other paths as they are (a
// link that names nothing is replaced by the file).
wxString FollowLink(const wxString& path) {
    struct stat info;
    if (path.empty() || ::lstat(FileName(path), &info) != 0 || !S_ISLNK(info.st_mode))
        return path;
    char* resolved = ::realpath(FileName(path), nullptr);
    if (!resolved)
        return path;
    wxString target(resolved, wxConvFile);
    std::free(resolved);
    return target.empty() ? path : target;
}

wxString DirectoryOf(const wxString& path) {
    const size_t slash = path.rfind('/');
    if (slash == wxString::npos)
        return L".";
    if (slash == 0)
        return L"/";
    return path.substr(0, slash);
}

wxString NameOf(const wxString& path) {
    const size_t slash = path.rfind('/');
    return slash == wxString::npos ? path : path.substr(slash + 1);
}

bool SameFile(int descriptor, const wxString& path) {
    struct stat open;
    struct stat named;
    return ::fstat(descriptor, &open) == 0 && ::stat(FileName(path), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

}  // namespace

VyrSafeFile::VyrSafeFile(const wxString& target)
    : m_sTarget(FollowLink(target)), m_pSink(new VyrFileSink) {
    m_sDirectory = DirectoryOf(m_sTarget);
}

VyrSafeFile::~VyrSafeFile() {
    if (!m_bCommitted)
        Discard();
}

bool VyrSafeFile::Failed(Step step, int error) {
    m_eFailedStep = step;
    m_iError = error;
    return false;
}

bool VyrSafeFile::Open() {
    Discard();
    m_bCommitted = false;
    m_eFailedStep = kStepNone;
    m_iError = 0;
    const wxString name = NameOf(m_sTarget);
    if (name.empty())
        return Failed(kStepCreate, EISDIR);
    // Only a regular file is replaced: a directory, a device or a pipe is not something a new
    // file may take the place of.
    struct stat info;
    if (::stat(FileName(m_sTarget), &info) == 0 && !S_ISREG(info.st_mode))
        return Failed(kStepCreate, S_ISDIR(info.st_mode) ? EISDIR : EINVAL);
    // A hidden name of the target's own, so that a left-over file (after a crash) tells what
    // it was for, and the rename stays within one file system.
    if (!m_pSink->CreateUnique(m_sDirectory, L"." + name + L".tmp-", &m_sTempPath))
        return Failed(kStepCreate, m_pSink->GetError());
    // The replacement keeps the target's permission bits, as writing into it would.
    if (::stat(FileName(m_sTarget), &info) == 0)
        (void)::fchmod(m_pSink->GetDescriptor(), info.st_mode & 07777);
    return true;
}

bool VyrSafeFile::Commit() {
    if (m_sTempPath.empty())
        return Failed(kStepCreate, EBADF);
    // A writer may have put a new file in the temporary file's place: sync the one the name
    // now gives.
    if (!m_pSink->IsOpen() || !SameFile(m_pSink->GetDescriptor(), m_sTempPath)) {
        if (!m_pSink->OpenForSync(m_sTempPath)) {
            const int error = m_pSink->GetError();
            Discard();
            return Failed(kStepSync, error);
        }
    }
    if (!m_pSink->Sync()) {
        const int error = m_pSink->GetError();
        Discard();
        return Failed(kStepSync, error);
    }
    if (!m_pSink->Close()) {
        const int error = m_pSink->GetError();
        Discard();
        return Failed(kStepClose, error);
    }
    // Everything the steps after the rename need is made before it: once the target is
    // replaced, a failure can no longer give the previous file back.
    const wxCharBuffer directory = m_sDirectory.fn_str();
    int error = 0;
    if (!VyrFileSink::Rename(m_sTempPath, m_sTarget, &error)) {
        Discard();
        return Failed(kStepRename, error);
    }
    // The temporary file is the target now: nothing is left to remove.
    m_sTempPath.clear();
    m_bCommitted = true;
    if (!VyrFileSink::SyncDirectory(directory.data(), &error))
        return Failed(kStepSyncDirectory, error);
    return true;
}

void VyrSafeFile::Discard() {
    m_pSink->Close();
    if (!m_sTempPath.empty()) {
        ::unlink(FileName(m_sTempPath));
        m_sTempPath.clear();
    }
}

bool VyrSafeFile::Write(const std::function<bool(const wxString& tempPath)>& write) {
    if (!Open())
        return false;
    // What the writer's failing call leaves in errno is the only reason it can give through a
    // bool (the library's sinks leave the system's error there): "no space left" must reach
    // the person, not a bare "cannot write".
    errno = 0;
    if (!write || !write(m_sTempPath)) {
        const int error = errno;
        Discard();
        return Failed(kStepWrite, error);
    }
    return Commit();
}

bool VyrSafeFile::WriteSink(const std::function<bool(VyrFileSink& sink)>& write) {
    try {
        if (!Open())
            return false;
        if (write(*m_pSink))
            return Commit();
        const int error = m_pSink->GetError();
        Discard();
        return Failed(kStepWrite, error);
    } catch (const std::bad_alloc&) {
        // The previous file stays: the temporary one goes.
        Discard();
        return Failed(kStepWrite, ENOMEM);
    }
}

bool VyrSafeFile::WriteFile(const wxString& target,
                            const std::function<bool(const wxString& tempPath)>& write) {
    VyrSafeFile file(target);
    return file.Write(write);
}
