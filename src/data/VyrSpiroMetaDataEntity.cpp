#include "vyrbase/data/VyrSpiroMetaDataEntity.h"

VyrSpiroMetaDataEntity::VyrSpiroMetaDataEntity(int oid, VyrBaseData* base)
    : VyrPhysioRecord(oid, base, VYR_KIND_SPIRO_META_DATA) {}

VyrSpiroMetaDataEntity::~VyrSpiroMetaDataEntity() = default;
