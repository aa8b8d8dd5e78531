#include "vyrbase/data/VyrSpiroMetaConfigEntity.h"

VyrSpiroMetaConfigEntity::VyrSpiroMetaConfigEntity(int oid, VyrBaseData* base)
    : VyrPhysioRecord(oid, base, VYR_KIND_SPIRO_META_CONFIG) {}

VyrSpiroMetaConfigEntity::~VyrSpiroMetaConfigEntity() = default;
