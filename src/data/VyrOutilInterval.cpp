#include "vyrbase/data/VyrOutilInterval.h"

VyrOutilInterval::VyrOutilInterval(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrOutilInterval::~VyrOutilInterval() = default;
