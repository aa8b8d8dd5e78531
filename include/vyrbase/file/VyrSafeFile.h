// Replacing a file so that a failure never costs the file that was there: the new content goes
// into a new file of a unique name in the target's directory, every write checked; the file is
// synced and closed, checked again, and only then renamed over the target in one step (the
// target is never removed first), after which the directory is synced so that the rename
// survives a crash. Any failure before the rename removes the new file and leaves the target
// byte for byte as it was.
//
//     VyrSafeFile file(path);
//     if (!file.Write([&](const wxString& temp) { return WriteMyFormat(temp); }))
//         report(file.GetFailedStep(), file.GetError());
//
// The new file gets the target's permission bits when the target exists, else 0666 less the
// umask. A target that is a symbolic link is followed: the file it names is replaced and the
// link stays. Only regular files are replaced: a target that is a directory, a device or a pipe
// fails at kStepCreate.
//
// Threads: one VyrSafeFile per thread. Errors: no exceptions; false and GetFailedStep.
#ifndef VYRBASE_FILE_VYRSAFEFILE_H
#define VYRBASE_FILE_VYRSAFEFILE_H

#include <functional>
#include <memory>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrFileSink;

class VYRBASE_API VyrSafeFile {
public:
    // Where a failed replacement stopped.
    enum Step {
        kStepNone,           // nothing failed
        kStepCreate,         // the temporary file could not be created (no directory, no right)
        kStepWrite,          // the content could not be written (the writer answered false)
        kStepSync,           // the content could not be made durable
        kStepClose,          // closing the temporary file reported an error
        kStepRename,         // the temporary file could not take the target's place
        kStepSyncDirectory,  // after the rename: the directory could not be synced
    };

    explicit VyrSafeFile(const wxString& target);
    // Discards the temporary file unless Commit succeeded.
    ~VyrSafeFile();
    VyrSafeFile(const VyrSafeFile&) = delete;
    VyrSafeFile& operator=(const VyrSafeFile&) = delete;

    // Creates the temporary file beside the target. False (kStepCreate) when it cannot be.
    bool Open();
    // The temporary file's path once Open succeeded, else empty.
    const wxString& GetTempPath() const { return m_sTempPath; }
    // The file that Commit replaces (the target, or the file its symbolic link names).
    const wxString& GetTarget() const { return m_sTarget; }

    // Syncs and closes the temporary file and renames it over the target, then syncs the
    // directory. A failure before the rename removes the temporary file and leaves the target
    // untouched. A failure of the last step (kStepSyncDirectory) answers false with the new
    // content already in the target's place: the replacement is complete but whether it
    // survives a crash is not known.
    bool Commit();
    // Closes and removes the temporary file; the target stays as it was.
    void Discard();

    // Open, then `write` with the temporary file's path (it writes the whole content there,
    // creating or truncating that file as it likes, and answers whether it succeeded), then
    // Commit, or Discard when `write` answered false (kStepWrite, with the errno that the
    // writer's failing call left, so that a full disk is told as such; 0 when none was left).
    bool Write(const std::function<bool(const wxString& tempPath)>& write);

    Step GetFailedStep() const { return m_eFailedStep; }
    // The system's error number (errno) of the failed step; 0 when the writer answered false
    // without one.
    int GetError() const { return m_iError; }

    // One call: VyrSafeFile(target).Write(write).
    static bool WriteFile(const wxString& target,
                          const std::function<bool(const wxString& tempPath)>& write);

private:
    friend class VyrBaseData;
    friend class VyrDiagramExport;

    bool Failed(Step step, int error);
    // Open, `write` into the temporary file's sink, then Commit; Discard when `write` answers
    // false (kStepWrite with the sink's error) or memory cannot be had (kStepWrite, ENOMEM).
    // How the library's own writers (documents, pictures) reach the disk.
    bool WriteSink(const std::function<bool(VyrFileSink& sink)>& write);
    // The descriptor the document writer writes through (VyrBaseData::SaveSafely).
    VyrFileSink& GetSink() { return *m_pSink; }

    wxString m_sTarget;
    wxString m_sDirectory;
    wxString m_sTempPath;
    // Owned through a smart pointer so that a constructor that runs out of memory after making
    // it does not leak it.
    std::unique_ptr<VyrFileSink> m_pSink;
    bool m_bCommitted = false;
    Step m_eFailedStep = kStepNone;
    int m_iError = 0;
};

#endif
