#include "vyrbase/data/VyrRespihomConfigEntity.h"

VyrRespihomConfigEntity::VyrRespihomConfigEntity(int oid, VyrBaseData* base)
    : VyrPhysioRecord(oid, base, VYR_KIND_RESPIHOM_CONFIG) {}

VyrRespihomConfigEntity::~VyrRespihomConfigEntity() = default;
