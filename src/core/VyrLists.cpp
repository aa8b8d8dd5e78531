// Out-of-line parts of the typed lists declared in VyrLists.h.
#include "vyrbase/core/VyrLists.h"

#include <wx/listimpl.cpp>

WX_DEFINE_LIST(VyrListEntity);
WX_DEFINE_LIST(VyrListCourbe);
WX_DEFINE_LIST(VyrListVariable);
WX_DEFINE_LIST(VyrListNote);
WX_DEFINE_LIST(VyrListObserver);
WX_DEFINE_LIST(VyrListObservable);
WX_DEFINE_LIST(VyrListExperience);
WX_DEFINE_LIST(VyrListVecteur);
WX_DEFINE_LIST(VyrListOutilInterval);
