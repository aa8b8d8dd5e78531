// Checked POSIX output for every file the library writes, with the tests' fault injection.
#include "file/VyrFileSink.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const mode_t kCreateMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

// How many random names CreateUnique tries before it gives up.
constexpr int kUniqueAttempts = 100;

// ---- Fault injection state ------------------------------------------------------------------
// The library is single-threaded; atomics only keep a stray call from another thread defined.
std::atomic<unsigned> g_mask{VyrFileFaults::kAll};
std::atomic<long> g_nth{0};  // 0: never fail
std::atomic<bool> g_persistent{false};
std::atomic<int> g_error{EIO};
std::atomic<long> g_count{0};
std::atomic<long> g_injected{0};

// open(2) takes its mode through "...": a plain function can stand in the table.
int RealOpen(const char* path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}

const VyrFileFaults::SystemCalls kRealCalls = {&RealOpen, &::write, &::fsync, &::close};
std::atomic<const VyrFileFaults::SystemCalls*> g_calls{&kRealCalls};

const VyrFileFaults::SystemCalls& Calls() {
    return *g_calls.load();
}

// Counts one operation and answers the errno it must fail with, or 0 to go on normally.
int Injected(VyrFileFaults::Operation op) {
    if ((g_mask.load() & op) == 0)
        return 0;
    const long n = ++g_count;
    const long nth = g_nth.load();
    if (nth <= 0 || n < nth || (n > nth && !g_persistent.load()))
        return 0;
    ++g_injected;
    return g_error.load();
}

const char* FileName(const wxString& path, wxCharBuffer& holder) {
    holder = path.fn_str();
    return holder.data();
}

// Six characters of a name no other writer is likely to pick at the same moment.
wxString RandomSuffix() {
    static std::atomic<uint64_t> counter{0};
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    uint64_t x = (static_cast<uint64_t>(now.tv_sec) << 32) ^ static_cast<uint64_t>(now.tv_nsec) ^
                 (static_cast<uint64_t>(getpid()) << 16) ^ (++counter * 0x9E3779B97F4A7C15ull);
    // splitmix64 finaliser: spreads every input bit over the whole word.
    x ^= x >> 30;
    x *= 0xBF58476D1CE4E5B9ull;
    x ^= x >> 27;
    x *= 0x94D049BB133111EBull;
    x ^= x >> 31;
    static const char kAlphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    wxString suffix;
    for (int i = 0; i < 6; ++i) {
        suffix += kAlphabet[x % 62];
        x /= 62;
    }
    return suffix;
}

}  // namespace

namespace VyrFileFaults {

void Arm(unsigned operations, long nth, bool persistent, int error) {
    g_mask = operations;
    g_nth = nth;
    g_persistent = persistent;
    g_error = error;
    g_count = 0;
    g_injected = 0;
}

void Disarm() {
    Arm(kAll, 0, false, EIO);
}

long Count() {
    return g_count.load();
}

long Injected() {
    return g_injected.load();
}

const SystemCalls& RealSystemCalls() {
    return kRealCalls;
}

void SetSystemCalls(const SystemCalls* calls) {
    g_calls = calls ? calls : &kRealCalls;
}

}  // namespace VyrFileFaults

VyrFileSink::~VyrFileSink() {
    if (m_bOwned && m_iDescriptor >= 0)
        Calls().closeFile(m_iDescriptor);
}

bool VyrFileSink::Fail(int error) {
    m_iError = error;
    errno = error;
    return false;
}

bool VyrFileSink::Create(const wxString& path) {
    Close();
    m_iError = 0;
    if (const int error = Injected(VyrFileFaults::kOpen))
        return Fail(error);
    wxCharBuffer name;
    const int fd = Calls().openFile(FileName(path, name), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC,
                                    kCreateMode);
    if (fd < 0)
        return Fail(errno);
    m_iDescriptor = fd;
    m_bOwned = true;
    return true;
}

bool VyrFileSink::CreateUnique(const wxString& dir, const wxString& stem, wxString* path) {
    Close();
    m_iError = 0;
    if (const int error = Injected(VyrFileFaults::kOpen))
        return Fail(error);
    for (int attempt = 0; attempt < kUniqueAttempts; ++attempt) {
        const wxString candidate = dir + L"/" + stem + RandomSuffix();
        wxCharBuffer name;
        // O_EXCL: the name must be new, so nobody else's file is ever taken over.
        const int fd = Calls().openFile(FileName(candidate, name),
                                        O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kCreateMode);
        if (fd >= 0) {
            m_iDescriptor = fd;
            m_bOwned = true;
            if (path)
                *path = candidate;
            return true;
        }
        if (errno != EEXIST)
            return Fail(errno);
    }
    return Fail(EEXIST);
}

bool VyrFileSink::OpenForSync(const wxString& path) {
    Close();
    m_iError = 0;
    if (const int error = Injected(VyrFileFaults::kOpen))
        return Fail(error);
    wxCharBuffer name;
    const int fd = Calls().openFile(FileName(path, name), O_RDONLY | O_CLOEXEC, 0);
    if (fd < 0)
        return Fail(errno);
    m_iDescriptor = fd;
    m_bOwned = true;
    return true;
}

void VyrFileSink::Attach(int descriptor) {
    Close();
    m_iError = 0;
    m_iDescriptor = descriptor;
    m_bOwned = false;
}

bool VyrFileSink::Write(const void* data, size_t size) {
    if (size == 0)
        return m_iDescriptor >= 0 || Fail(EBADF);
    const char* bytes = static_cast<const char*>(data);
    if (const int error = Injected(VyrFileFaults::kWrite)) {
        // As a disk that fills up: part of the bytes go in, then the write stops short.
        if (m_iDescriptor >= 0 && size / 2 > 0)
            (void)!Calls().writeFile(m_iDescriptor, bytes, size / 2);
        return Fail(error);
    }
    size_t done = 0;
    while (done < size) {
        const ssize_t n = Calls().writeFile(m_iDescriptor, bytes + done, size - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return Fail(errno);
        }
        if (n == 0)
            return Fail(ENOSPC);
        done += static_cast<size_t>(n);
    }
    return true;
}

bool VyrFileSink::Sync() {
    if (const int error = Injected(VyrFileFaults::kSync))
        return Fail(error);
    while (Calls().syncFile(m_iDescriptor) != 0) {
        if (errno != EINTR)
            return Fail(errno);
    }
    return true;
}

bool VyrFileSink::Close() {
    if (m_iDescriptor < 0)
        return true;
    const int fd = m_iDescriptor;
    const bool owned = m_bOwned;
    m_iDescriptor = -1;
    m_bOwned = false;
    if (!owned)
        return true;
    const int error = Injected(VyrFileFaults::kClose);
    // Linux releases the descriptor even when close reports an error: never call it twice.
    const int closed = Calls().closeFile(fd);
    if (error)
        return Fail(error);
    if (closed != 0)
        return Fail(errno);
    return true;
}

bool VyrFileSink::Rename(const wxString& from, const wxString& to, int* error) {
    int failure = Injected(VyrFileFaults::kRename);
    if (!failure) {
        wxCharBuffer source;
        wxCharBuffer target;
        if (::rename(FileName(from, source), FileName(to, target)) != 0)
            failure = errno;
    }
    if (error)
        *error = failure;
    return failure == 0;
}

bool VyrFileSink::SyncDirectory(const char* dir, int* error) {
    int failure = Injected(VyrFileFaults::kSyncDirectory);
    if (!failure) {
        const int fd = Calls().openFile(dir, O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
        if (fd < 0) {
            failure = errno;
        } else {
            while (Calls().syncFile(fd) != 0) {
                // EINVAL: the file system cannot sync a directory; its renames are as durable
                // as it makes them.
                if (errno != EINTR) {
                    if (errno != EINVAL)
                        failure = errno;
                    break;
                }
            }
            Calls().closeFile(fd);
        }
    }
    if (error)
        *error = failure;
    return failure == 0;
}
