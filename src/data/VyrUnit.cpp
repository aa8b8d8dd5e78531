#include "vyrbase/data/VyrUnit.h"

VyrUnit::~VyrUnit() = default;
