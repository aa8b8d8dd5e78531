#include "vyrbase/data/VyrScale.h"

VyrScale::~VyrScale() = default;
