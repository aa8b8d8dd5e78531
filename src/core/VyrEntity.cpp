#include "vyrbase/core/VyrEntity.h"

VyrEntity::VyrEntity(int oid, VyrBaseData* base) : m_iOid(oid), m_pBase(base) {}

VyrEntity::~VyrEntity() = default;

void VyrEntity::SetEntityName(const wchar_t* name) {
    if (name)
        m_sName = name;
}
