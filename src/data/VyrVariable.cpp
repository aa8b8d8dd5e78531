#include "vyrbase/data/VyrVariable.h"

VyrVariable::VyrVariable(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrVariable::~VyrVariable() = default;
