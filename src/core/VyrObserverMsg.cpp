#include "vyrbase/core/VyrObserverMsg.h"

VyrObserverMsg::~VyrObserverMsg() = default;
