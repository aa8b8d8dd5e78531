#include "vyrbase/data/VyrRespihomDataEntity.h"

VyrRespihomDataEntity::VyrRespihomDataEntity(int oid, VyrBaseData* base)
    : VyrPhysioRecord(oid, base, VYR_KIND_RESPIHOM_DATA) {}

VyrRespihomDataEntity::~VyrRespihomDataEntity() = default;
