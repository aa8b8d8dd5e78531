#include "vyrbase/data/VyrImageRedyEntity.h"

VyrImageRedyEntity::VyrImageRedyEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrImageRedyEntity::~VyrImageRedyEntity() = default;
