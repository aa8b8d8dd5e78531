// The grid of the application's table view (entity kind 6), carried in section "[cellules]".
// The library keeps the grid's own serialisation as an opaque text.
#ifndef VYRBASE_DATA_VYRGRILLEENTITY_H
#define VYRBASE_DATA_VYRGRILLEENTITY_H

#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrGrilleEntity : public VyrEntity {
public:
    VyrGrilleEntity(int oid, VyrBaseData* base);
    VyrGrilleEntity(const VyrGrilleEntity&) = default;
    VyrGrilleEntity& operator=(const VyrGrilleEntity&) = default;
    ~VyrGrilleEntity() override;

    int GetKind() const override { return VYR_KIND_GRILLE; }

    // The version read from the file; 1, the version every save writes, on construction.
    int GetVersion() const { return m_iVersion; }
    void SetVersion(int version) { m_iVersion = version; }
    // The grid's own serialisation; empty on construction.
    const wxString& GetData() const { return m_sData; }
    void SetData(const wxString& data) { m_sData = data; }

private:
    int m_iVersion = 1;
    wxString m_sData;
};

#endif
