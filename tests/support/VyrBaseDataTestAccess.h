// Test-only access to the document's protected and private members (declared friend by
// VyrBaseData): entity creation with a chosen oid, and the document file's reading and writing
// steps (the reader's tokenizer, the section readers and writers).
#ifndef VYR_TESTS_SUPPORT_VYRBASEDATATESTACCESS_H
#define VYR_TESTS_SUPPORT_VYRBASEDATATESTACCESS_H

#include <string>

#include "vyrbase/core/VyrBaseData.h"

class VyrTextWriter;

class VyrBaseDataTestAccess {
public:
    static VyrEntity* CreateEntity(VyrBaseData& doc, int kind, int oid, const wchar_t* name) {
        return doc.CreateEntity(kind, oid, name);
    }

    explicit VyrBaseDataTestAccess(VyrBaseData& doc) : m_doc(&doc) {}

    VyrEntity* CreateEntity(int kind, int oid, const wchar_t* name) {
        return m_doc->CreateEntity(kind, oid, name);
    }

    // Sets the reader's tokenizer on `text` (kept alive by the caller).
    void SetText(const std::wstring& text) {
        m_doc->m_tokenizer.SetText(text.c_str(), text.size());
    }
    std::wstring NextToken() { return std::wstring(m_doc->m_tokenizer.GetNextToken()); }
    bool HasMoreTokens() { return m_doc->m_tokenizer.HasMoreTokens(); }
    void ClearText() { m_doc->m_tokenizer.Clear(); }

    wxString ParseUnit() { return m_doc->ParseUnit(); }
    wxString ParseVector(bool* stop) { return m_doc->ParseVector(stop); }
    wxString ParseCurve(bool* stop) { return m_doc->ParseCurve(stop); }
    wxString ParseExperience(bool* stop) { return m_doc->ParseExperience(stop); }
    static wxColour ColourFromFile(int value) { return VyrBaseData::ColourFromFile(value); }

    bool SauveUnite(VyrTextWriter& out) { return m_doc->SauveUnite(out); }
    bool SauveVecteur(VyrTextWriter& out) { return m_doc->SauveVecteur(out); }
    bool SauveCourbe(VyrTextWriter& out) { return m_doc->SauveCourbe(out); }
    bool SauveExperience(VyrTextWriter& out) { return m_doc->SauveExperience(out); }

private:
    VyrBaseData* m_doc = nullptr;
};

#endif
