// Out-of-line parts of the typed lists of core elements declared in VyrLists.h. The lists of
// data elements are defined in src/data/VyrDataLists.cpp, where their classes are complete
// (a list deletes its elements when asked to, which needs their destructors).
#include "vyrbase/core/VyrLists.h"

#include <wx/listimpl.cpp>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrObservable.h"
#include "vyrbase/core/VyrObserver.h"

WX_DEFINE_LIST(VyrListEntity);
WX_DEFINE_LIST(VyrListObserver);
WX_DEFINE_LIST(VyrListObservable);
