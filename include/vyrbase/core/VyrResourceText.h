// Texts shown to the user, looked up by resource key ("IDS_...") in the toolkit's translations.
//
// The catalogues belong to the application. Where none of them translates a key, the library
// answers its own built-in English text instead, so that no resource name ever reaches a
// picture, a file or a command's output; a key the library has no text for comes back as it is.
#ifndef VYRBASE_CORE_VYRRESOURCETEXT_H
#define VYRBASE_CORE_VYRRESOURCETEXT_H

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrResourceText {
public:
    VyrResourceText() = delete;

    // The application's translation of `key`, else the built-in text, else `key` itself.
    static wxString Get(const wxString& key);

    // The library's own text for `key`, or an empty string when it has none:
    //   "IDS_EXPERIENCE" "Experiment " and "IDS_MANIPULATION" "Manipulation " (stems that
    //   experiment names number on), "IDS_EXPERIENCE1" "Experiment 1" (the experiment a file
    //   without one gets), "IDS_MENU_SUPPRIMER" "Delete" (the undoable deletions),
    //   "IDS_SYMB_SECONDE" "s" (the seconds symbol that time labels recognise), and the unit
    //   labels of a seconds axis read as "%d:%02d": "IDS_DAY_HOUR" "d:h", "IDS_HMIN" "h:min",
    //   "IDS_MINS" "min:s".
    static wxString BuiltIn(const wxString& key);
};

#endif
