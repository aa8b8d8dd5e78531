#include "vyrbase/data/VyrCompteRendu.h"

VyrCompteRendu::VyrCompteRendu(int oid, VyrBaseData* base) : VyrEntity(oid, base) {}

VyrCompteRendu::~VyrCompteRendu() = default;
