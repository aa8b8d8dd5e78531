#include "vyrbase/diagram/VyrGraphObj.h"

VyrGraphObj::~VyrGraphObj() = default;

void VyrGraphObj::Paint(wxDC*) {}
