// Replacing a file through a temporary file beside it: the target is replaced whole or not at
// all.
#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "FileTestSupport.h"
#include "vyrbase/file/VyrSafeFile.h"

using namespace filetest;

namespace {

// A writer that writes `content` to the path it is given, the way the library's writers do
// (create or truncate).
std::function<bool(const wxString&)> Writing(const std::string& content) {
    return [content](const wxString& path) {
        WriteBytes(std::string(path.utf8_str()), content);
        return true;
    };
}

}  // namespace

TEST(VyrSafeFile, WriteReplacesTheTargetAndLeavesNothingElse) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    WriteBytes(target, "previous");
    VyrSafeFile file(Wx(target));
    EXPECT_TRUE(file.Write(Writing("replacement")));
    EXPECT_EQ(VyrSafeFile::kStepNone, file.GetFailedStep());
    EXPECT_EQ(0, file.GetError());
    EXPECT_EQ("replacement", ReadBytes(target));
    EXPECT_EQ(std::vector<std::string>{"doc.vyr"}, DirEntries(dir.Path()));
    EXPECT_TRUE(file.GetTempPath().empty());
}

TEST(VyrSafeFile, WriteCreatesAMissingTarget) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("new.csv");
    EXPECT_TRUE(VyrSafeFile::WriteFile(Wx(target), Writing("a;b\r\n")));
    EXPECT_EQ("a;b\r\n", ReadBytes(target));
}

TEST(VyrSafeFile, TheTemporaryFileIsHiddenBesideTheTarget) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    VyrSafeFile file(Wx(target));
    ASSERT_TRUE(file.Open());
    const wxString temp = file.GetTempPath();
    EXPECT_TRUE(temp.StartsWith(Wx(dir.Path() + "/.doc.vyr.tmp-")));
    EXPECT_TRUE(wxFileExists(temp));
    file.Discard();
    EXPECT_FALSE(wxFileExists(temp));
    EXPECT_TRUE(DirEntries(dir.Path()).empty());
}

TEST(VyrSafeFile, AFailingWriterLeavesTheTargetAndNoTemporaryFile) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    WriteBytes(target, "previous");
    VyrSafeFile file(Wx(target));
    EXPECT_FALSE(file.Write([](const wxString& path) {
        WriteBytes(std::string(path.utf8_str()), "half of it");
        return false;
    }));
    EXPECT_EQ(VyrSafeFile::kStepWrite, file.GetFailedStep());
    EXPECT_EQ(0, file.GetError());
    EXPECT_EQ("previous", ReadBytes(target));
    EXPECT_EQ(std::vector<std::string>{"doc.vyr"}, DirEntries(dir.Path()));
    // No writer at all is a writer that fails.
    EXPECT_FALSE(file.Write(nullptr));
    EXPECT_EQ(VyrSafeFile::kStepWrite, file.GetFailedStep());
}

TEST(VyrSafeFile, AFailingWritersErrnoIsTheReason) {
    // A writer that answers only true or false tells why through errno, as the library's sinks
    // leave it (a full disk: ENOSPC).
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("data.csv");
    WriteBytes(target, "previous");
    VyrSafeFile file(Wx(target));
    EXPECT_FALSE(file.Write([](const wxString&) {
        errno = ENOSPC;
        return false;
    }));
    EXPECT_EQ(VyrSafeFile::kStepWrite, file.GetFailedStep());
    EXPECT_EQ(ENOSPC, file.GetError());
    EXPECT_EQ("previous", ReadBytes(target));
    EXPECT_EQ(std::vector<std::string>{"data.csv"}, DirEntries(dir.Path()));
}

TEST(VyrSafeFile, AnErrnoLeftFromBeforeTheWriterIsNoReason) {
    FaultsOff off;
    TempDir dir;
    VyrSafeFile file(Wx(dir.File("data.csv")));
    errno = EACCES;
    EXPECT_FALSE(file.Write([](const wxString&) { return false; }));
    EXPECT_EQ(0, file.GetError());
}

TEST(VyrSafeFile, TheDestructorDiscardsAnUncommittedFile) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    {
        VyrSafeFile file(Wx(target));
        ASSERT_TRUE(file.Open());
    }
    EXPECT_TRUE(DirEntries(dir.Path()).empty());
}

TEST(VyrSafeFile, AWriterThatPutsANewFileInThePlaceIsSyncedToo) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    VyrSafeFile file(Wx(target));
    EXPECT_TRUE(file.Write([](const wxString& path) {
        const std::string name(path.utf8_str());
        std::remove(name.c_str());
        WriteBytes(name, "rewritten");
        return true;
    }));
    EXPECT_EQ("rewritten", ReadBytes(target));
}

TEST(VyrSafeFile, AWriterThatRemovesTheFileFailsAtTheSync) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    WriteBytes(target, "previous");
    VyrSafeFile file(Wx(target));
    EXPECT_FALSE(file.Write([](const wxString& path) {
        std::remove(std::string(path.utf8_str()).c_str());
        return true;
    }));
    EXPECT_EQ(VyrSafeFile::kStepSync, file.GetFailedStep());
    EXPECT_EQ(ENOENT, file.GetError());
    EXPECT_EQ("previous", ReadBytes(target));
}

TEST(VyrSafeFile, TheTargetKeepsItsPermissions) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    WriteBytes(target, "previous");
    ASSERT_EQ(0, chmod(target.c_str(), 0640));
    ASSERT_TRUE(VyrSafeFile::WriteFile(Wx(target), Writing("replacement")));
    EXPECT_EQ(0640, PermissionBits(target));
}

TEST(VyrSafeFile, ANewTargetGetsTheUsualPermissionsLessTheUmask) {
    FaultsOff off;
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    const mode_t old = umask(027);
    const bool written = VyrSafeFile::WriteFile(Wx(target), Writing("x"));
    umask(old);
    ASSERT_TRUE(written);
    EXPECT_EQ(0640, PermissionBits(target));
}

TEST(VyrSafeFile, ASymbolicLinkStaysAndItsFileIsReplaced) {
    FaultsOff off;
    TempDir dir;
    const std::string real = dir.File("real.vyr");
    const std::string link = dir.File("link.vyr");
    WriteBytes(real, "previous");
    ASSERT_EQ(0, symlink(real.c_str(), link.c_str()));
    VyrSafeFile file(Wx(link));
    EXPECT_EQ(Wx(real), file.GetTarget());
    ASSERT_TRUE(file.Write(Writing("through the link")));
    struct stat info;
    ASSERT_EQ(0, lstat(link.c_str(), &info));
    EXPECT_TRUE(S_ISLNK(info.st_mode));
    EXPECT_EQ("through the link", ReadBytes(real));
}

TEST(VyrSafeFile, ADirectoryOrADeviceIsNotReplaced) {
    FaultsOff off;
    TempDir dir;
    VyrSafeFile directory(Wx(dir.Path()));
    EXPECT_FALSE(directory.Write(Writing("x")));
    EXPECT_EQ(VyrSafeFile::kStepCreate, directory.GetFailedStep());
    EXPECT_EQ(EISDIR, directory.GetError());
    VyrSafeFile device(L"/dev/null");
    EXPECT_FALSE(device.Write(Writing("x")));
    EXPECT_EQ(VyrSafeFile::kStepCreate, device.GetFailedStep());
    EXPECT_EQ(EINVAL, device.GetError());
    VyrSafeFile empty(L"");
    EXPECT_FALSE(empty.Open());
    EXPECT_EQ(VyrSafeFile::kStepCreate, empty.GetFailedStep());
}

TEST(VyrSafeFile, TheRootDirectoryIsNotReplaced) {
    FaultsOff off;
    VyrSafeFile root(L"/");
    EXPECT_FALSE(root.Open());
    EXPECT_EQ(VyrSafeFile::kStepCreate, root.GetFailedStep());
    EXPECT_EQ(EISDIR, root.GetError());
}

TEST(VyrSafeFile, AMissingDirectoryFailsAtCreation) {
    FaultsOff off;
    VyrSafeFile file(L"/nonexistent/dir/doc.vyr");
    EXPECT_FALSE(file.Write(Writing("x")));
    EXPECT_EQ(VyrSafeFile::kStepCreate, file.GetFailedStep());
    EXPECT_EQ(ENOENT, file.GetError());
}

TEST(VyrSafeFile, ARelativeNameIsWrittenInTheWorkingDirectory) {
    FaultsOff off;
    TempDir dir;
    char previous[4096];
    ASSERT_TRUE(getcwd(previous, sizeof previous));
    ASSERT_EQ(0, chdir(dir.Path().c_str()));
    dir.File("relative.vyr");
    const bool written = VyrSafeFile::WriteFile(L"relative.vyr", Writing("here"));
    ASSERT_EQ(0, chdir(previous));
    EXPECT_TRUE(written);
    EXPECT_EQ("here", ReadBytes(dir.Path() + "/relative.vyr"));
}

TEST(VyrSafeFile, CommitWithoutOpenFails) {
    FaultsOff off;
    TempDir dir;
    VyrSafeFile file(Wx(dir.File("doc.vyr")));
    EXPECT_FALSE(file.Commit());
    EXPECT_EQ(VyrSafeFile::kStepCreate, file.GetFailedStep());
}

// Every step after the writer, made to fail: the step is reported with its error, the target is
// untouched (or, for the directory sync after the rename, already whole), no file is left and
// no descriptor stays open.
TEST(VyrSafeFile, EachFailingStepIsReportedAndLeavesNoTrace) {
    FaultsOff off;
    struct Case {
        unsigned operation;
        VyrSafeFile::Step step;
    };
    const Case cases[] = {
        {VyrFileFaults::kOpen, VyrSafeFile::kStepCreate},
        {VyrFileFaults::kSync, VyrSafeFile::kStepSync},
        {VyrFileFaults::kClose, VyrSafeFile::kStepClose},
        {VyrFileFaults::kRename, VyrSafeFile::kStepRename},
        {VyrFileFaults::kSyncDirectory, VyrSafeFile::kStepSyncDirectory},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.step);
        TempDir dir;
        const std::string target = dir.File("doc.vyr");
        WriteBytes(target, "previous");
        const int descriptors = OpenDescriptors();
        VyrFileFaults::Arm(c.operation, 1, false, EIO);
        VyrSafeFile file(Wx(target));
        EXPECT_FALSE(file.Write(Writing("replacement")));
        VyrFileFaults::Disarm();
        EXPECT_EQ(c.step, file.GetFailedStep());
        EXPECT_EQ(EIO, file.GetError());
        const bool renamed = c.step == VyrSafeFile::kStepSyncDirectory;
        EXPECT_EQ(renamed ? "replacement" : "previous", ReadBytes(target));
        EXPECT_EQ(std::vector<std::string>{"doc.vyr"}, DirEntries(dir.Path()));
        EXPECT_EQ(descriptors, OpenDescriptors());
    }
}

TEST(VyrSafeFile, ASymbolicLinkThatNamesNothingIsReplacedByTheFile) {
    FaultsOff off;
    TempDir dir;
    const std::string link = dir.File("dangling.vyr");
    ASSERT_EQ(0, symlink((dir.Path() + "/nowhere").c_str(), link.c_str()));
    VyrSafeFile file(Wx(link));
    EXPECT_EQ(Wx(link), file.GetTarget());
    ASSERT_TRUE(file.Write(Writing("a file now")));
    struct stat info;
    ASSERT_EQ(0, lstat(link.c_str(), &info));
    EXPECT_TRUE(S_ISREG(info.st_mode));
    EXPECT_EQ("a file now", ReadBytes(link));
}
