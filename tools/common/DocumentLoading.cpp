#include "DocumentLoading.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "vyrbase/core/VyrBaseData.h"

namespace vyrtools {

namespace {
// DetectEncoding of `length` bytes followed by a zero byte (IsUTF8TextFile reads up to a zero).
wxString DetectEncodingOfTerminated(unsigned char* bytes, size_t length) {
    if (length >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE)
        return "UTF-16LE";
    if (length >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF)
        return "big-endian UTF-16";
    bool mark = false;
    if (VyrBaseData::IsUTF8TextFile(bytes, static_cast<int>(length), &mark))
        return mark ? "UTF-8 with mark" : "UTF-8";
    return "ISO-8859-1";
}
}  // namespace

wxString DetectEncoding(const std::vector<unsigned char>& bytes) {
    std::vector<unsigned char> copy(bytes);
    copy.push_back(0);
    return DetectEncodingOfTerminated(copy.data(), bytes.size());
}

namespace {
// The whole file in one buffer, read once, with one zero byte after its `length` bytes. The
// size the file states is only where reading starts: a file that grows or shrinks meanwhile
// (or a device that states no size) is read to its end.
bool ReadAll(const wxString& path, std::vector<unsigned char>& bytes, size_t& length,
             wxString& reason) {
    const wxCharBuffer name = path.fn_str();
    const int fd = ::open(name, O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        reason = wxString("cannot open: ") + std::strerror(errno);
        return false;
    }
    struct stat info;
    if (::fstat(fd, &info) != 0) {
        reason = wxString("cannot open: ") + std::strerror(errno);
        ::close(fd);
        return false;
    }
    if (S_ISDIR(info.st_mode)) {
        reason = "cannot open: Is a directory";
        ::close(fd);
        return false;
    }
    const size_t stated = info.st_size > 0 ? static_cast<size_t>(info.st_size) : 0;
    bytes.resize(stated + 1);
    length = 0;
    for (;;) {
        if (length == bytes.size() - 1)
            bytes.resize(bytes.size() + bytes.size() / 2 + 4096);
        const ssize_t got = ::read(fd, bytes.data() + length, bytes.size() - 1 - length);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            reason = "cannot read";
            ::close(fd);
            return false;
        }
        if (got == 0)
            break;
        length += static_cast<size_t>(got);
    }
    ::close(fd);
    bytes.resize(length + 1);
    bytes[length] = 0;
    return true;
}
}  // namespace

LoadResult LoadDocument(const wxString& path, VyrBaseData& doc, wxString& reason,
                        wxString* encoding) {
    std::vector<unsigned char> bytes;
    size_t length = 0;
    if (!ReadAll(path, bytes, length, reason))
        return LoadResult::CannotRead;
    const wxString detected = DetectEncodingOfTerminated(bytes.data(), length);
    if (encoding)
        *encoding = detected;
    if (detected == "big-endian UTF-16") {
        reason = "not a document: big-endian UTF-16 text is not supported";
        return LoadResult::NotADocument;
    }
    // The bytes already read are the document: the file is not opened a second time.
    if (!doc.LoadFromMemory(bytes.data(), length)) {
        reason = "not a document: no section header where one was expected";
        return LoadResult::NotADocument;
    }
    return LoadResult::Ok;
}

}  // namespace vyrtools
