// The library's typed, doubly linked pointer lists. None of them deletes its elements: every
// owner deletes what it owns before clearing a list. Each list class has a node class named
// after it (wxVyrListCourbeNode for VyrListCourbe, ...), through which applications iterate.
#ifndef VYRBASE_CORE_VYRLISTS_H
#define VYRBASE_CORE_VYRLISTS_H

#include <wx/list.h>
#include <wx/dynarray.h>

#include "vyrbase/core/VyrExport.h"

class VyrEntity;
class VyrCourbe;
class VyrVariable;
class VyrNote;
class VyrObserver;
class VyrObservable;
class VyrExperience;
class VyrVecteur;
class VyrOutilInterval;

// Every attached entity of a document; also a diagram's shown entities.
WX_DECLARE_USER_EXPORTED_LIST(VyrEntity, VyrListEntity, VYRBASE_API);
// An experiment's curves (the document owns them).
WX_DECLARE_USER_EXPORTED_LIST(VyrCourbe, VyrListCourbe, VYRBASE_API);
// An experiment's variables (the document owns them).
WX_DECLARE_USER_EXPORTED_LIST(VyrVariable, VyrListVariable, VYRBASE_API);
// The notes attached to a curve (the document owns them).
WX_DECLARE_USER_EXPORTED_LIST(VyrNote, VyrListNote, VYRBASE_API);
// A subject's observers, in order of registration.
WX_DECLARE_USER_EXPORTED_LIST(VyrObserver, VyrListObserver, VYRBASE_API);
// The subjects an observer is registered with.
WX_DECLARE_USER_EXPORTED_LIST(VyrObservable, VyrListObservable, VYRBASE_API);
// Experiments gathered before they are deleted.
WX_DECLARE_USER_EXPORTED_LIST(VyrExperience, VyrListExperience, VYRBASE_API);
// Orphan vectors gathered before they are deleted.
WX_DECLARE_USER_EXPORTED_LIST(VyrVecteur, VyrListVecteur, VYRBASE_API);
// Declared for the application.
WX_DECLARE_USER_EXPORTED_LIST(VyrOutilInterval, VyrListOutilInterval, VYRBASE_API);

// The document's store of entities detached for undo: a growable array of pointers that does
// not own them by itself (the document deletes them).
WX_DEFINE_USER_EXPORTED_ARRAY_PTR(VyrEntity*, VyrArrayEntity, class VYRBASE_API);

#endif
