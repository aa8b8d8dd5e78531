// The written report (entity kind 7), carried in section "[compte_rendu]": the application's
// packed copy of the report ("data", kept as read and written back unchanged) and the report as
// RTF text.
#ifndef VYRBASE_DATA_VYRCOMPTERENDU_H
#define VYRBASE_DATA_VYRCOMPTERENDU_H

#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrCompteRendu : public VyrEntity {
public:
    VyrCompteRendu(int oid, VyrBaseData* base);
    VyrCompteRendu(const VyrCompteRendu&) = default;
    VyrCompteRendu& operator=(const VyrCompteRendu&) = default;
    ~VyrCompteRendu() override;

    int GetKind() const override { return VYR_KIND_COMPTE_RENDU; }

    // The packed report; empty on construction.
    const wxString& GetData() const { return m_sData; }
    void SetData(const wxString& data) { m_sData = data; }
    // The report as RTF; empty on construction.
    const wxString& GetRtf() const { return m_sRtf; }
    void SetRtf(const wxString& rtf) { m_sRtf = rtf; }

private:
    wxString m_sData;
    wxString m_sRtf;
};

#endif
