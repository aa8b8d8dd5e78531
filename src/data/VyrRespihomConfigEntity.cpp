#include "vyrbase/data/VyrRespihomConfigEntity.h"

VyrRespihomConfigEntity::VyrRespihomConfigEntity(int oid, VyrBaseData* base)
    : VyrEntity(oid, base) {}

VyrRespihomConfigEntity::~VyrRespihomConfigEntity() = default;
