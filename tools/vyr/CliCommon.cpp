#include "CliCommon.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

#include <wx/filename.h>

#include "vyrbase/core/VyrBaseData.h"

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

int OpenDocument(const wxString& path, VyrBaseData& doc, wxString* encoding) {
    std::vector<unsigned char> bytes;
    wxString reason;
    if (!ReadAll(path, bytes, reason)) {
        Complain(path, reason);
        return kExitInput;
    }
    const wxString detected = DetectEncoding(bytes);
    if (encoding)
        *encoding = detected;
    if (detected == "big-endian UTF-16") {
        Complain(path, "not a document: big-endian UTF-16 text is not supported");
        return kExitFormat;
    }
    if (!doc.Load(path)) {
        Complain(path, "not a document: no section header where one was expected");
        return kExitFormat;
    }
    return kExitOk;
}

int WriteAtomically(const wxString& target, const std::function<bool(const wxString&)>& write) {
    wxFileName name(target);
    wxString dir = name.GetPath();
    if (dir.empty())
        dir = ".";
    if (wxFileName::DirExists(target)) {
        Complain(target, "cannot write: Is a directory");
        return kExitOutput;
    }
    if (!wxFileName::DirExists(dir)) {
        Complain(target, "cannot write: No such directory");
        return kExitOutput;
    }
    if (::access(dir.fn_str(), W_OK) != 0) {
        Complain(target, wxString("cannot write: ") + std::strerror(errno));
        return kExitOutput;
    }
    // A fresh name beside the target, so the rename stays within one file system.
    wxString temp =
        dir + "/." + name.GetFullName() + wxString::Format(".vyr-%ld.tmp", (long)getpid());
    const bool written = write(temp);
    if (!written || ::rename(temp.fn_str(), target.fn_str()) != 0) {
        const int err = errno;
        ::unlink(temp.fn_str());
        Complain(target, written ? wxString("cannot write: ") + std::strerror(err)
                                 : wxString("cannot write"));
        return kExitOutput;
    }
    return kExitOk;
}

wxString WithExtension(const wxString& path, const wxString& extension) {
    wxFileName name(path);
    name.SetExt(extension);
    return name.GetFullPath();
}

}  // namespace vyr
