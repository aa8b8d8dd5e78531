#include "vyrbase/data/VyrRespihomDataEntity.h"

VyrRespihomDataEntity::VyrRespihomDataEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrRespihomDataEntity::~VyrRespihomDataEntity() = default;
