#include "vyrbase/data/VyrSpiromEntity.h"

VyrSpiromEntity::VyrSpiromEntity(int oid, VyrBaseData* base)
    : VyrPhysioRecord(oid, base, VYR_KIND_SPIROM) {}

VyrSpiromEntity::~VyrSpiromEntity() = default;
