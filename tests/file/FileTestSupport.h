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

#include <wx/strconv.h>
#include <wx/string.h>

#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

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

}  // namespace filetest

#endif
