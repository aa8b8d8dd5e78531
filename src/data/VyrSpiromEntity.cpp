#include "vyrbase/data/VyrSpiromEntity.h"

VyrSpiromEntity::VyrSpiromEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrSpiromEntity::~VyrSpiromEntity() = default;
