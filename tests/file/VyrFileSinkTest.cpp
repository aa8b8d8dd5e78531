// The checked descriptor output under every file writer, and its fault injection.
#include <cerrno>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "FileTestSupport.h"
#include "file/VyrFileSink.h"

using namespace filetest;

TEST(VyrFileSink, CreateWritesSyncsAndClosesAFile) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("out.bin");
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(path)));
    EXPECT_TRUE(sink.IsOpen());
    EXPECT_TRUE(sink.Write("abc", 3));
    EXPECT_TRUE(sink.Write("", 0));
    EXPECT_TRUE(sink.Sync());
    EXPECT_TRUE(sink.Close());
    EXPECT_FALSE(sink.IsOpen());
    EXPECT_EQ("abc", ReadBytes(path));
    EXPECT_EQ(0, sink.GetError());
}

TEST(VyrFileSink, CreateTruncatesAnExistingFile) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("out.bin");
    WriteBytes(path, "a longer previous content");
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(path)));
    ASSERT_TRUE(sink.Write("new", 3));
    ASSERT_TRUE(sink.Close());
    EXPECT_EQ("new", ReadBytes(path));
}

TEST(VyrFileSink, CreateGivesTheUsualPermissionsLessTheUmask) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("out.bin");
    const mode_t old = umask(022);
    VyrFileSink sink;
    const bool created = sink.Create(Wx(path));
    umask(old);
    ASSERT_TRUE(created);
    struct stat info;
    ASSERT_EQ(0, stat(path.c_str(), &info));
    EXPECT_EQ(0644u, info.st_mode & 0777u);
}

TEST(VyrFileSink, CreateInAMissingDirectoryFailsWithItsError) {
    FaultsOff off;
    VyrFileSink sink;
    EXPECT_FALSE(sink.Create(L"/nonexistent/dir/out.bin"));
    EXPECT_FALSE(sink.IsOpen());
    EXPECT_EQ(ENOENT, sink.GetError());
}

TEST(VyrFileSink, WithoutADescriptorEveryOperationFails) {
    FaultsOff off;
    VyrFileSink sink;
    EXPECT_FALSE(sink.Write("x", 1));
    EXPECT_EQ(EBADF, sink.GetError());
    EXPECT_FALSE(sink.Write("", 0));
    EXPECT_FALSE(sink.Sync());
    // Nothing open: nothing to close.
    EXPECT_TRUE(sink.Close());
}

TEST(VyrFileSink, AFullDeviceRefusesTheWrite) {
    FaultsOff off;
    VyrFileSink sink;
    if (!sink.Create(L"/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    EXPECT_FALSE(sink.Write("abc", 3));
    EXPECT_EQ(ENOSPC, sink.GetError());
}

TEST(VyrFileSink, CreateUniqueNeverTakesAnExistingNameAndKeepsTheStem) {
    FaultsOff off;
    TempDir dir;
    wxString first;
    wxString second;
    VyrFileSink a;
    VyrFileSink b;
    ASSERT_TRUE(a.CreateUnique(Wx(dir.Path()), L".doc.vyr.tmp-", &first));
    ASSERT_TRUE(b.CreateUnique(Wx(dir.Path()), L".doc.vyr.tmp-", &second));
    dir.File(std::string(first.utf8_str()).substr(dir.Path().size() + 1));
    dir.File(std::string(second.utf8_str()).substr(dir.Path().size() + 1));
    EXPECT_NE(first, second);
    EXPECT_TRUE(first.StartsWith(Wx(dir.Path() + "/.doc.vyr.tmp-")));
    EXPECT_EQ(Wx(dir.Path()).length() + 1 + 13 + 6, first.length());
    EXPECT_TRUE(a.Close());
    EXPECT_TRUE(b.Close());
}

TEST(VyrFileSink, CreateUniqueInAMissingDirectoryFails) {
    FaultsOff off;
    VyrFileSink sink;
    wxString path;
    EXPECT_FALSE(sink.CreateUnique(L"/nonexistent/dir", L"x", &path));
    EXPECT_EQ(ENOENT, sink.GetError());
    EXPECT_TRUE(path.empty());
}

TEST(VyrFileSink, OpenForSyncOpensAnExistingFileOnly) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("done.bin");
    WriteBytes(path, "written by someone else");
    VyrFileSink sink;
    ASSERT_TRUE(sink.OpenForSync(Wx(path)));
    EXPECT_TRUE(sink.Sync());
    EXPECT_TRUE(sink.Close());
    EXPECT_FALSE(sink.OpenForSync(Wx(dir.Path() + "/missing.bin")));
    EXPECT_EQ(ENOENT, sink.GetError());
}

TEST(VyrFileSink, AnAttachedDescriptorIsWrittenButNotClosed) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("attached.bin");
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    ASSERT_GE(fd, 0);
    {
        VyrFileSink sink;
        sink.Attach(fd);
        EXPECT_TRUE(sink.Write("xy", 2));
        EXPECT_TRUE(sink.Close());
    }
    // Still open: the owner closes it.
    EXPECT_EQ(1, write(fd, "z", 1));
    EXPECT_EQ(0, close(fd));
    EXPECT_EQ("xyz", ReadBytes(path));
}

TEST(VyrFileSink, RenameReplacesTheTargetAndReportsItsError) {
    FaultsOff off;
    TempDir dir;
    const std::string from = dir.File("from.bin");
    const std::string to = dir.File("to.bin");
    WriteBytes(from, "new");
    WriteBytes(to, "old");
    int error = -1;
    EXPECT_TRUE(VyrFileSink::Rename(Wx(from), Wx(to), &error));
    EXPECT_EQ(0, error);
    EXPECT_EQ("new", ReadBytes(to));
    EXPECT_FALSE(VyrFileSink::Rename(Wx(from), Wx(to), &error));
    EXPECT_EQ(ENOENT, error);
    EXPECT_FALSE(VyrFileSink::Rename(Wx(from), Wx(to), nullptr));
}

TEST(VyrFileSink, SyncDirectoryNeedsADirectory) {
    FaultsOff off;
    TempDir dir;
    int error = -1;
    EXPECT_TRUE(VyrFileSink::SyncDirectory(dir.Path().c_str(), &error));
    EXPECT_EQ(0, error);
    EXPECT_FALSE(VyrFileSink::SyncDirectory("/nonexistent/dir", &error));
    EXPECT_EQ(ENOENT, error);
    EXPECT_TRUE(VyrFileSink::SyncDirectory(dir.Path().c_str(), nullptr));
}

TEST(VyrFileFaults, UnarmedTheyOnlyCount) {
    FaultsOff off;
    TempDir dir;
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(dir.File("count.bin"))));
    ASSERT_TRUE(sink.Write("a", 1));
    ASSERT_TRUE(sink.Write("b", 1));
    ASSERT_TRUE(sink.Sync());
    ASSERT_TRUE(sink.Close());
    EXPECT_EQ(5, VyrFileFaults::Count());
    EXPECT_EQ(0, VyrFileFaults::Injected());
}

TEST(VyrFileFaults, TheNthWriteFailsOnceAfterWritingHalfItsBytes) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("half.bin");
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(path)));
    VyrFileFaults::Arm(VyrFileFaults::kWrite, 2, false, ENOSPC);
    EXPECT_TRUE(sink.Write("1234", 4));
    EXPECT_FALSE(sink.Write("abcd", 4));
    EXPECT_EQ(ENOSPC, sink.GetError());
    EXPECT_TRUE(sink.Write("!", 1));
    EXPECT_EQ(3, VyrFileFaults::Count());
    EXPECT_EQ(1, VyrFileFaults::Injected());
    ASSERT_TRUE(sink.Close());
    EXPECT_EQ("1234ab!", ReadBytes(path));
}

TEST(VyrFileFaults, PersistentFaultsFailEveryLaterOperationOfTheirKinds) {
    FaultsOff off;
    TempDir dir;
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(dir.File("persist.bin"))));
    VyrFileFaults::Arm(VyrFileFaults::kWrite | VyrFileFaults::kSync, 1, true, EIO);
    EXPECT_FALSE(sink.Write("a", 1));
    EXPECT_FALSE(sink.Sync());
    EXPECT_FALSE(sink.Write("b", 1));
    EXPECT_EQ(EIO, sink.GetError());
    // Not a counted kind: closing works.
    EXPECT_TRUE(sink.Close());
    EXPECT_EQ(3, VyrFileFaults::Injected());
}

TEST(VyrFileFaults, AFailingCloseStillReleasesTheDescriptor) {
    FaultsOff off;
    TempDir dir;
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(dir.File("close.bin"))));
    const int fd = sink.GetDescriptor();
    VyrFileFaults::Arm(VyrFileFaults::kClose, 1, false, EIO);
    EXPECT_FALSE(sink.Close());
    EXPECT_EQ(EIO, sink.GetError());
    EXPECT_FALSE(sink.IsOpen());
    EXPECT_EQ(-1, fcntl(fd, F_GETFD));
}

TEST(VyrFileFaults, OpenRenameAndDirectorySyncFailWithoutEffect) {
    FaultsOff off;
    TempDir dir;
    const std::string from = dir.File("from.bin");
    const std::string to = dir.File("to.bin");
    WriteBytes(from, "new");
    WriteBytes(to, "old");
    VyrFileFaults::Arm(
        VyrFileFaults::kOpen | VyrFileFaults::kRename | VyrFileFaults::kSyncDirectory, 1, true,
        EACCES);
    VyrFileSink sink;
    wxString path;
    EXPECT_FALSE(sink.Create(Wx(to)));
    EXPECT_FALSE(sink.CreateUnique(Wx(dir.Path()), L"x", &path));
    EXPECT_FALSE(sink.OpenForSync(Wx(to)));
    EXPECT_EQ(EACCES, sink.GetError());
    int error = 0;
    EXPECT_FALSE(VyrFileSink::Rename(Wx(from), Wx(to), &error));
    EXPECT_EQ(EACCES, error);
    EXPECT_FALSE(VyrFileSink::SyncDirectory(dir.Path().c_str(), &error));
    EXPECT_EQ("old", ReadBytes(to));
    EXPECT_EQ("new", ReadBytes(from));
    EXPECT_EQ(5, VyrFileFaults::Injected());
}

namespace {

// Stand-ins for the system calls, each answering as a file system does only rarely.
int g_interruptions = 0;  // calls left to answer EINTR before the real call is made
int g_opens = 0;

const VyrFileFaults::SystemCalls& Real() {
    return VyrFileFaults::RealSystemCalls();
}

// Interrupted first, then short: three bytes at most per call.
ssize_t InterruptedShortWrite(int fd, const void* data, size_t size) {
    if (g_interruptions > 0) {
        --g_interruptions;
        errno = EINTR;
        return -1;
    }
    return Real().writeFile(fd, data, size < 3 ? size : 3);
}

int InterruptedSync(int fd) {
    if (g_interruptions > 0) {
        --g_interruptions;
        errno = EINTR;
        return -1;
    }
    return Real().syncFile(fd);
}

ssize_t WriteOfNothing(int, const void*, size_t) {
    return 0;
}

// Linux releases the descriptor even when close reports an error.
int FailingClose(int fd) {
    Real().closeFile(fd);
    errno = EIO;
    return -1;
}

int FailingSync(int) {
    errno = EIO;
    return -1;
}

int UnsupportedSync(int) {
    errno = EINVAL;
    return -1;
}

int TakenName(const char*, int, mode_t) {
    ++g_opens;
    errno = EEXIST;
    return -1;
}

// Puts `calls` in place for the life of the object.
class SystemCallsInPlace {
public:
    explicit SystemCallsInPlace(const VyrFileFaults::SystemCalls& calls) : m_calls(calls) {
        VyrFileFaults::SetSystemCalls(&m_calls);
    }
    ~SystemCallsInPlace() { VyrFileFaults::SetSystemCalls(nullptr); }

private:
    VyrFileFaults::SystemCalls m_calls;
};

VyrFileFaults::SystemCalls With(ssize_t (*write)(int, const void*, size_t),
                                int (*sync)(int) = nullptr, int (*close)(int) = nullptr,
                                int (*open)(const char*, int, mode_t) = nullptr) {
    VyrFileFaults::SystemCalls calls = Real();
    if (write)
        calls.writeFile = write;
    if (sync)
        calls.syncFile = sync;
    if (close)
        calls.closeFile = close;
    if (open)
        calls.openFile = open;
    return calls;
}

}  // namespace

TEST(VyrFileSinkSystemCalls, InterruptedAndShortCallsAreCarriedOnToTheEnd) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("out.bin");
    SystemCallsInPlace calls(With(&InterruptedShortWrite, &InterruptedSync));
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(path)));
    g_interruptions = 3;
    EXPECT_TRUE(sink.Write("measured values", 15));
    g_interruptions = 2;
    EXPECT_TRUE(sink.Sync());
    EXPECT_EQ(0, g_interruptions);
    EXPECT_TRUE(sink.Close());
    EXPECT_EQ("measured values", ReadBytes(path));
    g_interruptions = 2;
    EXPECT_TRUE(VyrFileSink::SyncDirectory(dir.Path().c_str(), nullptr));
    EXPECT_EQ(0, g_interruptions);
}

TEST(VyrFileSinkSystemCalls, AWriteOfNothingIsAFullDisk) {
    FaultsOff off;
    TempDir dir;
    SystemCallsInPlace calls(With(&WriteOfNothing));
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(dir.File("out.bin"))));
    EXPECT_FALSE(sink.Write("abc", 3));
    EXPECT_EQ(ENOSPC, sink.GetError());
}

TEST(VyrFileSinkSystemCalls, AFailingCloseReportsItsErrorAndReleasesTheDescriptor) {
    FaultsOff off;
    TempDir dir;
    SystemCallsInPlace calls(With(nullptr, nullptr, &FailingClose));
    const int descriptors = OpenDescriptors();
    VyrFileSink sink;
    ASSERT_TRUE(sink.Create(Wx(dir.File("out.bin"))));
    ASSERT_TRUE(sink.Write("abc", 3));
    EXPECT_FALSE(sink.Close());
    EXPECT_EQ(EIO, sink.GetError());
    EXPECT_FALSE(sink.IsOpen());
    EXPECT_EQ(descriptors, OpenDescriptors());
}

TEST(VyrFileSinkSystemCalls, ADirectorySyncErrorFailsButAnUnsupportedOneCountsAsDone) {
    FaultsOff off;
    TempDir dir;
    const int descriptors = OpenDescriptors();
    int error = 0;
    {
        SystemCallsInPlace calls(With(nullptr, &FailingSync));
        EXPECT_FALSE(VyrFileSink::SyncDirectory(dir.Path().c_str(), &error));
        EXPECT_EQ(EIO, error);
    }
    {
        SystemCallsInPlace calls(With(nullptr, &UnsupportedSync));
        EXPECT_TRUE(VyrFileSink::SyncDirectory(dir.Path().c_str(), &error));
        EXPECT_EQ(0, error);
    }
    EXPECT_EQ(descriptors, OpenDescriptors());
}

TEST(VyrFileSinkSystemCalls, CreateUniqueGivesUpAfterAHundredTakenNames) {
    FaultsOff off;
    TempDir dir;
    SystemCallsInPlace calls(With(nullptr, nullptr, nullptr, &TakenName));
    g_opens = 0;
    VyrFileSink sink;
    wxString path;
    EXPECT_FALSE(sink.CreateUnique(Wx(dir.Path()), L".doc.tmp-", &path));
    EXPECT_EQ(EEXIST, sink.GetError());
    EXPECT_EQ(100, g_opens);
    EXPECT_TRUE(path.empty());
}
