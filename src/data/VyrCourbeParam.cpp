#include "vyrbase/data/VyrCourbeParam.h"

VyrCourbeParam::VyrCourbeParam() : m_colour(255, 0, 0), m_scale(0.0, 1.0, -1.0, 1.0) {}

VyrCourbeParam::~VyrCourbeParam() = default;
