#include "vyrbase/data/VyrExperienceParam.h"

VyrExperienceParam::~VyrExperienceParam() = default;
