// Helpers of the record section tests: documents saved to and loaded from wide text.
#ifndef VYR_TESTS_FILE_RECORDTESTSUPPORT_H
#define VYR_TESTS_FILE_RECORDTESTSUPPORT_H

#include <initializer_list>
#include <string>
#include <utility>

#include <wx/string.h>

#include "FileTestSupport.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"

namespace recordtest {

// Saves the document and answers the file's text (after its mark); empty when Save failed.
inline std::wstring SaveText(VyrBaseData& doc, filetest::TempDir& dir,
                             const std::string& name = "saved.vyr") {
    const std::string path = dir.File(name);
    if (!doc.Save(filetest::Wx(path)))
        return std::wstring();
    const std::string bytes = filetest::ReadBytes(path);
    if (bytes.size() < 2 || bytes[0] != '\xFF' || bytes[1] != '\xFE')
        return std::wstring();
    return filetest::FromUtf16(bytes);
}

// Loads a document from a text written as UTF-16LE with its mark.
inline bool LoadText(VyrBaseData& doc, filetest::TempDir& dir, const std::wstring& text,
                     const std::string& name = "loaded.vyr") {
    const std::string path = dir.File(name);
    filetest::WriteBytes(path, filetest::Utf16File(text));
    return doc.Load(filetest::Wx(path));
}

inline VyrExperience* Experience(VyrBaseData& doc, const wxString& name) {
    VyrExperienceParam p(name);
    return doc.CreateExperience(p);
}

// A curve named `name` of quantities y(x), with the given points.
inline VyrCourbe* Curve(VyrBaseData& doc, VyrExperience* e, const wxString& name,
                        const wxString& grdY,
                        std::initializer_list<std::pair<double, double>> points) {
    VyrCourbeParam p;
    p.m_sNom = name;
    p.m_sGrdX = L"t";
    p.m_sUniteX = L"s";
    p.m_sGrdY = grdY;
    p.m_sUniteY = L"V";
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    for (const auto& point : points)
        doc.AddPoint(c, point.first, point.second, false);
    return c;
}

// The text from the first line equal to `header` up to the next header (or the end).
inline std::wstring Section(const std::wstring& text, const std::wstring& header, size_t nth = 0) {
    size_t at = 0;
    for (size_t k = 0;; ++k) {
        at = text.find(header + L"\r\n", at);
        if (at == std::wstring::npos)
            return std::wstring();
        if (k == nth)
            break;
        at += header.size();
    }
    size_t end = text.find(L"\r\n[", at);
    return text.substr(at, end == std::wstring::npos ? std::wstring::npos : end + 2 - at);
}

inline size_t Count(const std::wstring& text, const std::wstring& what) {
    size_t n = 0;
    for (size_t at = text.find(what); at != std::wstring::npos; at = text.find(what, at + 1))
        ++n;
    return n;
}

}  // namespace recordtest

#endif
