#include "vyrbase/data/VyrSpiroExpEntity.h"

VyrSpiroExpEntity::VyrSpiroExpEntity(int oid, VyrBaseData* base)
    : VyrPhysioRecord(oid, base, VYR_KIND_SPIRO_EXP) {}

VyrSpiroExpEntity::~VyrSpiroExpEntity() = default;
