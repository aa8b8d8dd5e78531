// Entity construction by kind, the single-record getters, interval tools and typed iteration of
// the document: the parts of the registry that need the concrete entity classes.
#include "vyrbase/core/VyrBaseData.h"

#include <memory>

#include "vyrbase/data/VyrCompteRendu.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrGrilleEntity.h"
#include "vyrbase/data/VyrImageEntity.h"
#include "vyrbase/data/VyrImageRedyEntity.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrRespihomConfigEntity.h"
#include "vyrbase/data/VyrRespihomDataEntity.h"
#include "vyrbase/data/VyrSpiroExpEntity.h"
#include "vyrbase/data/VyrSpiroMetaConfigEntity.h"
#include "vyrbase/data/VyrSpiroMetaDataEntity.h"
#include "vyrbase/data/VyrSpirogEntity.h"
#include "vyrbase/data/VyrSpiromEntity.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

template <class T>
VyrEntity* Make(int oid, VyrBaseData* base) {
    return new T(oid, base);
}

// The constructor of each kind, indexed by kind - 1.
typedef VyrEntity* (*EntityMaker)(int, VyrBaseData*);
const EntityMaker kMakers[VYR_KIND_LAST] = {
    &Make<VyrExperience>,
    &Make<VyrCourbe>,
    &Make<VyrVecteur>,
    &Make<VyrNote>,
    &Make<VyrVariable>,
    &Make<VyrGrilleEntity>,
    &Make<VyrCompteRendu>,
    &Make<VyrSpirogEntity>,
    &Make<VyrRespihomConfigEntity>,
    &Make<VyrRespihomDataEntity>,
    &Make<VyrSpiromEntity>,
    &Make<VyrSpiroMetaConfigEntity>,
    &Make<VyrSpiroMetaDataEntity>,
    &Make<VyrSpiroExpEntity>,
    &Make<VyrImageEntity>,
    &Make<VyrImageRedyEntity>,
    &Make<VyrOutilInterval>,
};

}  // namespace

VyrEntity* VyrBaseData::CreateEntity(int kind, int oid, const wchar_t* name) {
    if (kind < VYR_KIND_FIRST || kind > VYR_KIND_LAST)
        return nullptr;
    // Owned here until the list holds it: naming and appending may run out of memory.
    std::unique_ptr<VyrEntity> entity(kMakers[kind - 1](oid, this));
    entity->SetEntityName(name);
    AppendToList(entity.get());
    if (oid > m_iLastOid)
        m_iLastOid = oid;
    return entity.release();
}

VyrNote* VyrBaseData::CreateNoteEntity() {
    return static_cast<VyrNote*>(CreateEntity(VYR_KIND_NOTE, GetNewOid(), nullptr));
}

namespace {
// One record per document by convention: create=false finds the first of the kind, create=true
// always makes a new one (callers ask with false first).
template <class T>
T* SingleRecord(VyrBaseData* base, bool create, const wchar_t* name, int kind,
                VyrEntity* (VyrBaseData::*make)(int, int, const wchar_t*)) {
    if (!create)
        return static_cast<T*>(base->GetEntity(kind));
    return static_cast<T*>((base->*make)(kind, base->GetNewOid(), name));
}
}  // namespace

#define VYR_SINGLE_RECORD_GETTER(Getter, Class, Kind)                                     \
    Class* VyrBaseData::Getter(bool create, const wchar_t* name) {                        \
        return SingleRecord<Class>(this, create, name, Kind, &VyrBaseData::CreateEntity); \
    }

VYR_SINGLE_RECORD_GETTER(GetGrilleEntity, VyrGrilleEntity, VYR_KIND_GRILLE)
VYR_SINGLE_RECORD_GETTER(GetCompteRenduEntity, VyrCompteRendu, VYR_KIND_COMPTE_RENDU)
VYR_SINGLE_RECORD_GETTER(GetSpirogEntity, VyrSpirogEntity, VYR_KIND_SPIROG)
VYR_SINGLE_RECORD_GETTER(GetRespihomConfigEntity, VyrRespihomConfigEntity, VYR_KIND_RESPIHOM_CONFIG)
VYR_SINGLE_RECORD_GETTER(GetRespihomDataEntity, VyrRespihomDataEntity, VYR_KIND_RESPIHOM_DATA)
VYR_SINGLE_RECORD_GETTER(GetSpiromEntity, VyrSpiromEntity, VYR_KIND_SPIROM)
VYR_SINGLE_RECORD_GETTER(GetSpiroMetaConfigEntity, VyrSpiroMetaConfigEntity,
                         VYR_KIND_SPIRO_META_CONFIG)
VYR_SINGLE_RECORD_GETTER(GetSpiroMetaDataEntity, VyrSpiroMetaDataEntity, VYR_KIND_SPIRO_META_DATA)
VYR_SINGLE_RECORD_GETTER(GetSpiroExpEntity, VyrSpiroExpEntity, VYR_KIND_SPIRO_EXP)

#undef VYR_SINGLE_RECORD_GETTER

VyrImageRedyEntity* VyrBaseData::CreateImageRedyEntity(const wchar_t* name) {
    return static_cast<VyrImageRedyEntity*>(CreateEntity(VYR_KIND_IMAGE_REDY, GetNewOid(), name));
}

bool VyrBaseData::AddOutilIntervalEntity(VyrOutilInterval* model) {
    if (!model)
        return false;
    wxVyrListEntityNode* node = GetFirstOutilIntervalNode();
    while (node) {
        VyrOutilInterval* tool = GetNextOutilInterval(&node);
        if (tool->GetEtiq1() == model->GetEtiq1() && tool->GetEtiq2() == model->GetEtiq2() &&
            tool->GetAbs() == model->GetAbs() && tool->GetOrd() == model->GetOrd() &&
            tool->GetX0() == model->GetX0() && tool->GetY0() == model->GetY0() &&
            tool->GetX1() == model->GetX1() && tool->GetY1() == model->GetY1())
            return true;
    }
    auto* tool =
        static_cast<VyrOutilInterval*>(CreateEntity(VYR_KIND_OUTIL_INTERVAL, GetNewOid(), nullptr));
    tool->SetEtiq1(model->GetEtiq1());
    tool->SetEtiq2(model->GetEtiq2());
    tool->SetAbs(model->GetAbs());
    tool->SetOrd(model->GetOrd());
    tool->SetPoints(model->GetX0(), model->GetY0(), model->GetX1(), model->GetY1());
    return false;
}

void VyrBaseData::DeleteOutilInterval(VyrOutilInterval* tool) {
    RemoveEntity(tool);
}

VyrOutilInterval* VyrBaseData::HitTestOutilInterval() {
    wxVyrListEntityNode* node = GetFirstOutilIntervalNode();
    while (node) {
        VyrOutilInterval* tool = GetNextOutilInterval(&node);
        if (tool->IsSelected())
            return tool;
    }
    return nullptr;
}

#define VYR_TYPED_ITERATION(Name, Class, Kind)                        \
    wxVyrListEntityNode* VyrBaseData::GetFirst##Name##Node() {        \
        return GetFirstEntityNode(Kind);                              \
    }                                                                 \
    Class* VyrBaseData::GetNext##Name(wxVyrListEntityNode** cursor) { \
        return static_cast<Class*>(GetNextEntity(cursor, Kind));      \
    }

VYR_TYPED_ITERATION(Experience, VyrExperience, VYR_KIND_EXPERIENCE)
VYR_TYPED_ITERATION(Courbe, VyrCourbe, VYR_KIND_COURBE)
VYR_TYPED_ITERATION(ImageRedyEntity, VyrImageRedyEntity, VYR_KIND_IMAGE_REDY)
VYR_TYPED_ITERATION(OutilInterval, VyrOutilInterval, VYR_KIND_OUTIL_INTERVAL)

#undef VYR_TYPED_ITERATION
