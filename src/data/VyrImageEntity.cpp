#include "vyrbase/data/VyrImageEntity.h"

VyrImageEntity::VyrImageEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrImageEntity::~VyrImageEntity() = default;
