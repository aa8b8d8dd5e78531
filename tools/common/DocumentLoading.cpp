#include "DocumentLoading.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
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
// A file of many megabytes goes into the system's large pages (2 MB, where it gives them on
// request): one fault each instead of one per 4 KB page. Called before the pages are touched.
void AdviseLargePages(void* buffer, size_t bytes) {
    const uintptr_t huge = uintptr_t(2) << 20;
    if (bytes < 4 * huge)
        return;
    const uintptr_t first = (reinterpret_cast<uintptr_t>(buffer) + huge - 1) & ~(huge - 1);
    const uintptr_t last = (reinterpret_cast<uintptr_t>(buffer) + bytes) & ~(huge - 1);
    if (last > first)
        ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

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
    bytes.reserve(stated + 1);
    AdviseLargePages(bytes.data(), bytes.capacity());
    bytes.resize(stated + 1);
    length = 0;
    for (;;) {
        // With the buffer full (the stated size read), one byte read aside tells the end of the
        // file from a file that grew, before the buffer is grown: growing it would move and
        // touch again every page already read, for nothing in the usual case.
        const bool full = length == bytes.size() - 1;
        unsigned char probe = 0;
        const ssize_t got = full ? ::read(fd, &probe, 1)
                                 : ::read(fd, bytes.data() + length, bytes.size() - 1 - length);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            reason = "cannot read";
            ::close(fd);
            return false;
        }
        if (got == 0)
            break;
        if (full) {
            bytes.resize(bytes.size() + bytes.size() / 2 + 4096);
            bytes[length] = probe;
        }
        length += static_cast<size_t>(got);
    }
    ::close(fd);
    bytes.resize(length + 1);
    bytes[length] = 0;
    return true;
}
}  // namespace

namespace {
// What the text of a document file holds, as far as the library reads it (to its first zero
// byte, or zero unit in UTF-16): nothing but blanks, or a line that begins (after blanks)
// with "[", the start of a section.
enum class Content { Blank, Sections, NoSection };

template <class Unit>
Content ContentOf(const Unit* text, size_t count) {
    bool blank = true;
    bool lineStart = true;
    for (size_t i = 0; i < count && text[i] != 0; ++i) {
        const unsigned c = static_cast<unsigned>(text[i]);
        if (c == '\r' || c == '\n') {
            lineStart = true;
            continue;
        }
        if (c == ' ' || c == '\t' || c == '\v' || c == '\f')
            continue;
        if (lineStart && c == '[')
            return Content::Sections;
        blank = false;
        lineStart = false;
    }
    return blank ? Content::Blank : Content::NoSection;
}

Content ContentOf(const unsigned char* bytes, size_t length, const wxString& encoding) {
    if (encoding == "UTF-16LE") {
        std::vector<uint16_t> units((length - 2) / 2);
        for (size_t i = 0; i < units.size(); ++i)
            units[i] = static_cast<uint16_t>(bytes[2 + 2 * i] | (bytes[3 + 2 * i] << 8));
        return ContentOf(units.data(), units.size());
    }
    const size_t mark = encoding == "UTF-8 with mark" ? 3 : 0;
    return ContentOf(bytes + mark, length - mark);
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
    // The library reads a text without any section as an empty document (random bytes whose
    // first line is their only token, or that a zero byte cuts short); the tools refuse it.
    if (ContentOf(bytes.data(), length, detected) == Content::NoSection) {
        reason = "not a document: no section header (a line such as [manipulation])";
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
