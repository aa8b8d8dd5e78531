#include "vyrbase/data/VyrGrilleEntity.h"

VyrGrilleEntity::VyrGrilleEntity(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrGrilleEntity::~VyrGrilleEntity() = default;
