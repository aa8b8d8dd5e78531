// Helpers of the document file tests: temporary files, encodings, the reader's private steps.
#ifndef VYR_TESTS_FILE_FILETESTSUPPORT_H
#define VYR_TESTS_FILE_FILETESTSUPPORT_H

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include <wx/string.h>

#include "vyrbase/core/VyrBaseData.h"
#include "file/VyrTextWriter.h"

// Reaches the document's reading and writing steps that are not public.
class VyrBaseDataTestAccess {
public:
    explicit VyrBaseDataTestAccess(VyrBaseData& doc) : m_doc(doc) {}

    // Sets the reader's tokenizer on `text` (kept alive by the caller).
    void SetText(const std::wstring& text) { m_doc.m_tokenizer.SetText(text.c_str(), text.size()); }
    std::wstring NextToken() { return std::wstring(m_doc.m_tokenizer.GetNextToken()); }
    bool HasMoreTokens() { return m_doc.m_tokenizer.HasMoreTokens(); }
    void ClearText() { m_doc.m_tokenizer.Clear(); }

    wxString ParseUnit() { return m_doc.ParseUnit(); }
    wxString ParseVector(bool* stop) { return m_doc.ParseVector(stop); }
    wxString ParseCurve(bool* stop) { return m_doc.ParseCurve(stop); }
    wxString ParseExperience(bool* stop) { return m_doc.ParseExperience(stop); }
    VyrEntity* CreateEntity(int kind, int oid, const wchar_t* name) {
        return m_doc.CreateEntity(kind, oid, name);
    }
    static wxColour ColourFromFile(int value) { return VyrBaseData::ColourFromFile(value); }

    bool SauveUnite(VyrTextWriter& out) { return m_doc.SauveUnite(out); }
    bool SauveVecteur(VyrTextWriter& out) { return m_doc.SauveVecteur(out); }
    bool SauveCourbe(VyrTextWriter& out) { return m_doc.SauveCourbe(out); }
    bool SauveExperience(VyrTextWriter& out) { return m_doc.SauveExperience(out); }

private:
    VyrBaseData& m_doc;
};

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

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
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
    const wxScopedCharBuffer buf = wxString(text).utf8_str();
    return std::string(buf.data(), buf.length());
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

}  // namespace filetest

#endif
