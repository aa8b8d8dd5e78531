#include "vyrbase/data/VyrSpiroMetaDataEntity.h"

VyrSpiroMetaDataEntity::VyrSpiroMetaDataEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrSpiroMetaDataEntity::~VyrSpiroMetaDataEntity() = default;
