#include "DocumentLoading.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include <sys/stat.h>

#include "vyrbase/core/VyrBaseData.h"

namespace vyrtools {

wxString DetectEncoding(const std::vector<unsigned char>& bytes) {
    if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE)
        return "UTF-16LE";
    if (bytes.size() >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF)
        return "big-endian UTF-16";
    std::vector<unsigned char> copy(bytes);
    copy.push_back(0);
    bool mark = false;
    if (VyrBaseData::IsUTF8TextFile(copy.data(), static_cast<int>(bytes.size()), &mark))
        return mark ? "UTF-8 with mark" : "UTF-8";
    return "ISO-8859-1";
}

namespace {
bool ReadAll(const wxString& path, std::vector<unsigned char>& bytes, wxString& reason) {
    struct stat info;
    const wxCharBuffer name = path.fn_str();
    if (::stat(name, &info) != 0) {
        reason = wxString("cannot open: ") + std::strerror(errno);
        return false;
    }
    if (S_ISDIR(info.st_mode)) {
        reason = "cannot open: Is a directory";
        return false;
    }
    std::ifstream in(name.data(), std::ios::binary);
    if (!in) {
        reason = wxString("cannot open: ") + std::strerror(errno);
        return false;
    }
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (in.bad()) {
        reason = "cannot read";
        return false;
    }
    return true;
}
}  // namespace

LoadResult LoadDocument(const wxString& path, VyrBaseData& doc, wxString& reason,
                        wxString* encoding) {
    std::vector<unsigned char> bytes;
    if (!ReadAll(path, bytes, reason))
        return LoadResult::CannotRead;
    const wxString detected = DetectEncoding(bytes);
    if (encoding)
        *encoding = detected;
    if (detected == "big-endian UTF-16") {
        reason = "not a document: big-endian UTF-16 text is not supported";
        return LoadResult::NotADocument;
    }
    if (!doc.Load(path)) {
        reason = "not a document: no section header where one was expected";
        return LoadResult::NotADocument;
    }
    return LoadResult::Ok;
}

}  // namespace vyrtools
