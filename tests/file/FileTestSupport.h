// Helpers of the document file tests: temporary files, encodings, the reader's private steps.
#ifndef VYR_TESTS_FILE_FILETESTSUPPORT_H
#define VYR_TESTS_FILE_FILETESTSUPPORT_H

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <wx/file.h>
#include <wx/log.h>
#include <wx/strconv.h>
#include <wx/string.h>

#include "file/VyrFileSink.h"
#include "file/VyrTextWriter.h"
#include "support/VyrBaseDataTestAccess.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace filetest {

// A fresh directory under the system's temporary directory, removed with its files.
class TempDir {
public:
    TempDir() {
        char pattern[] = "/tmp/vyrfiletestXXXXXX";
        const char* made = mkdtemp(pattern);
        m_path = made ? made : "/tmp";
    }
    ~TempDir() {
        for (const std::string& f : m_files)
            std::remove(f.c_str());
        rmdir(m_path.c_str());
    }
    std::string File(const std::string& name) {
        m_files.push_back(m_path + "/" + name);
        return m_files.back();
    }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
    std::vector<std::string> m_files;
};

// The names in a directory, "." and ".." left out.
inline std::vector<std::string> DirEntries(const std::string& dir) {
    std::vector<std::string> names;
    if (DIR* d = opendir(dir.c_str())) {
        while (const dirent* entry = readdir(d)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..")
                names.push_back(name);
        }
        closedir(d);
    }
    return names;
}

// How many descriptors the process holds (the entries of /proc/self/fd, less the one that
// reads it).
inline int OpenDescriptors() {
    return static_cast<int>(DirEntries("/proc/self/fd").size()) - 1;
}

// Disarms the file writers' fault injection when a test ends, whatever happened.
struct FaultsOff {
    FaultsOff() { VyrFileFaults::Disarm(); }
    ~FaultsOff() { VyrFileFaults::Disarm(); }
    FaultsOff(const FaultsOff&) = delete;
    FaultsOff& operator=(const FaultsOff&) = delete;
};

// A sample document of the source tree (samples/<name>), every section kind in "oscillation".
inline std::string SampleFile(const std::string& name) {
    return std::string(VYR_SOURCE_DIR) + "/samples/" + name;
}

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// The permission bits of a file (its mode less the type), or -1 when it cannot be looked at.
inline int PermissionBits(const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0 ? static_cast<int>(info.st_mode & 07777) : -1;
}

inline std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// UTF-16LE code units of a wide text, without mark.
inline std::string Utf16(const std::wstring& text) {
    std::string bytes;
    VyrTextWriter::AppendUtf16(bytes, text.c_str(), text.size());
    return bytes;
}

// The whole file as Save writes it: the mark FF FE and the text in UTF-16LE.
inline std::string Utf16File(const std::wstring& text) {
    return std::string("\xFF\xFE", 2) + Utf16(text);
}

inline std::string Utf8(const std::wstring& text) {
    return wxString(text).ToStdString(wxConvUTF8);
}

// ISO-8859-1 bytes of a text whose characters are all below U+0100.
inline std::string Latin1(const std::wstring& text) {
    std::string bytes;
    for (wchar_t c : text)
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(c)));
    return bytes;
}

// The decoded wide text of a file written by Save (mark checked by the caller).
inline std::wstring FromUtf16(const std::string& bytes, size_t from = 2) {
    std::wstring text;
    for (size_t i = from; i + 1 < bytes.size(); i += 2)
        text.push_back(static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                            (static_cast<unsigned char>(bytes[i + 1]) << 8)));
    return text;
}

inline wxString Wx(const std::string& path) {
    return wxString::FromUTF8(path.c_str());
}

inline std::wstring FromUtf8(const std::string& bytes) {
    return wxString::FromUTF8(bytes.data(), bytes.size()).ToStdWstring();
}

// The content of a test data file (tests/data/), as bytes.
inline std::string DataFile(const std::string& name) {
    return ReadBytes(std::string(VYR_TEST_DATA_DIR) + "/" + name);
}

// The hand-written expected file of the one-curve document below, as text (the data file holds
// it in UTF-8 with its CR LF line ends; Save writes it in UTF-16LE with a mark).
inline std::wstring OneCurveText() {
    return FromUtf8(DataFile("file_one_curve.vyr.txt"));
}

// One experiment "Expérience 1" (oid 1) holding the curve "T(t)" (oid 2) of X "t" in s (oid
// 3) and Y "T" in °C (oid 4): five points, the third invalid in both vectors, blue-ish, width
// 2, point style 3, shown in the first diagram, a comment holding quotes.
inline VyrCourbe* BuildOneCurveDocument(VyrBaseData& doc) {
    VyrExperienceParam experience(L"Exp\u00e9rience 1");
    VyrExperience* e = doc.CreateExperience(experience);
    VyrCourbeParam p;
    p.m_sNom = L"T(t)";
    p.m_sNomVx = L"TVX";
    p.m_sNomVy = L"TVY";
    p.m_sGrdX = L"t";
    p.m_sUniteX = L"s";
    p.m_sGrdY = L"T";
    p.m_sUniteY = L"\u00b0C";
    p.m_sText = L"mesure \"A\"";
    p.m_colour = wxColour(0, 128, 255);
    p.m_iWidth = 2;
    p.m_iStylePoint = 3;
    p.m_iStyleLiaison = 1;
    p.m_scale = VyrScale(0, 10, -5, 25.5);
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    const double xs[] = {0, 2.5, 5, 7.5, 10};
    const double ys[] = {20, 21.5, 1e6, 23.25, -0.001};
    c->SetSize(5);
    for (int i = 0; i < 5; ++i) {
        c->GetVx()->SetVal(i, xs[i]);
        c->GetVy()->SetVal(i, ys[i]);
    }
    c->GetVx()->ValidateAt(2, false);
    c->GetVy()->ValidateAt(2, false);
    c->SetShownInDiagram(0, true);
    return c;
}

// What a section writer of `doc` writes, as text; `ok` receives the writer's answer.
inline std::wstring WrittenBy(
    VyrBaseData& doc, const std::function<bool(VyrBaseDataTestAccess&, VyrTextWriter&)>& write,
    bool* ok = nullptr) {
    char pattern[] = "/tmp/vyrsectionXXXXXX";
    const int fd = mkstemp(pattern);
    if (fd < 0)
        return L"(no temporary file)";
    close(fd);
    bool answer = false;
    {
        wxFile file(Wx(pattern), wxFile::write);
        VyrTextWriter out(file);
        VyrBaseDataTestAccess access(doc);
        answer = write(access, out);
        out.Flush();
    }
    if (ok)
        *ok = answer;
    const std::string bytes = ReadBytes(pattern);
    std::remove(pattern);
    return FromUtf16(bytes, 0);
}

// Reads `text` with one section reader of `doc` (the header line is taken first) and answers
// the header the reader returned.
inline wxString ReadWith(VyrBaseData& doc, const std::wstring& text,
                         const std::function<wxString(VyrBaseDataTestAccess&)>& read) {
    VyrBaseDataTestAccess access(doc);
    access.SetText(text);
    access.NextToken();
    const wxString next = read(access);
    access.ClearText();
    return next;
}

}  // namespace filetest

#endif
