// Base of every object of a document: an oid unique within the document, a kind, a name and a
// pointer back to the document (not owned).
#ifndef VYRBASE_CORE_VYRENTITY_H
#define VYRBASE_CORE_VYRENTITY_H

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VyrBaseData;

// The value returned by VyrEntity::GetKind, and the first argument of CreateEntity.
enum VyrEntityKind {
    VYR_KIND_EXPERIENCE = 1,
    VYR_KIND_COURBE = 2,
    VYR_KIND_VECTEUR = 3,
    VYR_KIND_NOTE = 4,
    VYR_KIND_VARIABLE = 5,
    VYR_KIND_GRILLE = 6,
    VYR_KIND_COMPTE_RENDU = 7,
    VYR_KIND_SPIROG = 8,
    VYR_KIND_RESPIHOM_CONFIG = 9,
    VYR_KIND_RESPIHOM_DATA = 10,
    VYR_KIND_SPIROM = 11,
    VYR_KIND_SPIRO_META_CONFIG = 12,
    VYR_KIND_SPIRO_META_DATA = 13,
    VYR_KIND_SPIRO_EXP = 14,
    VYR_KIND_IMAGE = 15,
    VYR_KIND_IMAGE_REDY = 16,
    VYR_KIND_OUTIL_INTERVAL = 17,
    VYR_KIND_FIRST = VYR_KIND_EXPERIENCE,
    VYR_KIND_LAST = VYR_KIND_OUTIL_INTERVAL
};

class VYRBASE_API VyrEntity {
public:
    VyrEntity(int oid, VyrBaseData* base);
    // Member-wise: a copy has the same oid, name, document and deconnected flag.
    VyrEntity(const VyrEntity&) = default;
    VyrEntity& operator=(const VyrEntity&) = default;
    virtual ~VyrEntity();

    virtual int GetKind() const = 0;

    int GetOid() const { return m_iOid; }
    VyrBaseData* GetBase() const { return m_pBase; }
    const wxString& GetEntityName() const { return m_sName; }
    // A null name is ignored.
    void SetEntityName(const wchar_t* name);

    // True while the entity is detached from its document and held for undo.
    bool IsDeconnected() const { return m_bDeconnected; }
    void SetDeconnected(bool deconnected) { m_bDeconnected = deconnected; }

private:
    bool m_bDeconnected = false;
    int m_iOid;
    VyrBaseData* m_pBase;
    wxString m_sName;
};

#endif
