#include "vyrbase/data/VyrRespihomConfigEntity.h"

VyrRespihomConfigEntity::VyrRespihomConfigEntity(int oid, VyrBaseData* base)
<<<<<<< HEAD
    : VyrEntity(oid, base) {}
=======
    : VyrPhysioRecord(oid, base, VYR_KIND_RESPIHOM_CONFIG) {}
>>>>>>> file2

VyrRespihomConfigEntity::~VyrRespihomConfigEntity() = default;
