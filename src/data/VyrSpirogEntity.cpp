#include "vyrbase/data/VyrSpirogEntity.h"

VyrSpirogEntity::VyrSpirogEntity(int oid, VyrBaseData* base)
    : VyrPhysioRecord(oid, base, VYR_KIND_SPIROG) {}

VyrSpirogEntity::~VyrSpirogEntity() = default;
