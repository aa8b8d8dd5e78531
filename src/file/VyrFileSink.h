// The one way the library's file writers reach the disk: opening for writing, writing, syncing,
// closing and renaming over POSIX descriptors, every call checked. The document writer
// (VyrTextWriter), the CSV export, SaveDataInFile and VyrSafeFile all write through it, so that
// a failure of any of these calls is seen in one place and answered as false.
//
// VyrFileFaults is the tests' hook into it: armed, it makes the Nth operation (or the Nth and
// every later one) fail as a full or failing disk would. Unarmed it only counts, so the library
// carries it always at the cost of one comparison per call. The tests can also put their own
// system calls in place, to give the sink answers that real disks give only rarely.
//
// Internal to the library; exported only for the tests.
#ifndef VYRBASE_FILE_VYRFILESINK_H
#define VYRBASE_FILE_VYRFILESINK_H

#include <cstddef>

#include <sys/types.h>

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrFileSink {
public:
    VyrFileSink() = default;
    // Closes a descriptor the sink opened (its result is lost: callers that care call Close).
    ~VyrFileSink();
    VyrFileSink(const VyrFileSink&) = delete;
    VyrFileSink& operator=(const VyrFileSink&) = delete;

    // Opens `path` for writing, created with the permission bits 0666 less the umask, or
    // truncated when it exists.
    bool Create(const wxString& path);
    // Creates a new file in `dir` whose name starts with `stem`, never an existing one: a
    // random suffix is tried again while the name is taken. `path` receives the file's path.
    bool CreateUnique(const wxString& dir, const wxString& stem, wxString* path);
    // Opens an existing file only to sync it (a file that another writer wrote by its path).
    bool OpenForSync(const wxString& path);
    // Writes to a descriptor that someone else opened and will close (a wxFile's).
    void Attach(int descriptor);

    bool IsOpen() const { return m_iDescriptor >= 0; }
    int GetDescriptor() const { return m_iDescriptor; }
    // The errno of the last failed operation, 0 when none failed.
    int GetError() const { return m_iError; }

    // Writes all `size` bytes, going on after short counts and interruptions. False when the
    // file would not take them all (a full disk, a failing device, no descriptor).
    bool Write(const void* data, size_t size);
    // Makes the written bytes durable (fsync).
    bool Sync();
    // Closes a descriptor the sink opened; false when the system reports an error, which on
    // some file systems is the first sign that written data were lost. The descriptor is
    // released either way. An attached descriptor is only forgotten.
    bool Close();

    // rename(2): replaces `to` in one step. `error` (may be null) receives errno on failure.
    static bool Rename(const wxString& from, const wxString& to, int* error);
    // Makes a rename in `dir` (a name in the file system's encoding) durable: fsync of the
    // directory. File systems that cannot sync a directory count as done. Allocates nothing, so
    // that it can follow a rename that has already taken place.
    static bool SyncDirectory(const char* dir, int* error);

private:
    bool Fail(int error);

    int m_iDescriptor = -1;
    bool m_bOwned = false;
    int m_iError = 0;
};

// Test-only fault injection into VyrFileSink.
namespace VyrFileFaults {

// The operations that can be made to fail, as a mask.
enum Operation : unsigned {
    kOpen = 1u << 0,
    kWrite = 1u << 1,
    kSync = 1u << 2,
    kClose = 1u << 3,
    kRename = 1u << 4,
    kSyncDirectory = 1u << 5,
    kAll = (1u << 6) - 1,
};

// From now on, counts the operations of the kinds in `operations` and makes the `nth` of them
// (1 for the next one) fail with `error`, and every later one too when `persistent`. A failing
// write first writes half of its bytes, as a disk that fills up does; a failing close releases
// the descriptor; a failing rename, sync or open does nothing.
VYRBASE_API void Arm(unsigned operations, long nth, bool persistent, int error);
// Back to normal operation; the count starts again from 0 over every kind.
VYRBASE_API void Disarm();
// Operations of the counted kinds since the last Arm or Disarm.
VYRBASE_API long Count();
// Operations that failed by injection since the last Arm or Disarm.
VYRBASE_API long Injected();

// The system calls behind the sink. Tests put their own in place to see how the sink meets what
// a file system answers only rarely: an interrupted call, a write of nothing, a close or a
// directory sync that reports an error, no free temporary name.
struct SystemCalls {
    int (*openFile)(const char* path, int flags, mode_t mode);
    ssize_t (*writeFile)(int descriptor, const void* data, size_t size);
    int (*syncFile)(int descriptor);
    int (*closeFile)(int descriptor);
};
// The calls of the system itself.
VYRBASE_API const SystemCalls& RealSystemCalls();
// Makes the sink use `calls` (kept by the caller) from now on; null goes back to the real ones.
VYRBASE_API void SetSystemCalls(const SystemCalls* calls);

}  // namespace VyrFileFaults

#endif
