#include "vyrbase/data/VyrSpiroExpEntity.h"

VyrSpiroExpEntity::VyrSpiroExpEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrSpiroExpEntity::~VyrSpiroExpEntity() = default;
