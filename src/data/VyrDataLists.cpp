// Out-of-line parts of the typed lists of data elements declared in core/VyrLists.h, defined
// here where the element classes are complete (a list deletes its elements when asked to).
#include "vyrbase/core/VyrLists.h"

#include <wx/listimpl.cpp>

#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

WX_DEFINE_LIST(VyrListCourbe);
WX_DEFINE_LIST(VyrListVariable);
WX_DEFINE_LIST(VyrListNote);
WX_DEFINE_LIST(VyrListExperience);
WX_DEFINE_LIST(VyrListVecteur);
WX_DEFINE_LIST(VyrListOutilInterval);
