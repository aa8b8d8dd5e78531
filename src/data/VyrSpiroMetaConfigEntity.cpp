#include "vyrbase/data/VyrSpiroMetaConfigEntity.h"

VyrSpiroMetaConfigEntity::VyrSpiroMetaConfigEntity(int oid, VyrBaseData* base)
    : VyrEntity(oid, base) {}

VyrSpiroMetaConfigEntity::~VyrSpiroMetaConfigEntity() = default;
