#include "vyrbase/data/VyrSpirogEntity.h"

VyrSpirogEntity::VyrSpirogEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrSpirogEntity::~VyrSpirogEntity() = default;
