// Texts shown to the user, looked up by resource key ("IDS_...") in the toolkit's translations.
//
// The catalogues belong to the application: the library holds no text of its own for a key.
// Where no catalogue translates a key, the key itself is the text, so that an application
// without a catalogue shows the key rather than a text in a language it never chose.
#ifndef VYRBASE_CORE_VYRRESOURCETEXT_H
#define VYRBASE_CORE_VYRRESOURCETEXT_H

#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrResourceText {
public:
    VyrResourceText() = delete;

    // The toolkit's translation of `key` by the application's catalogues, else `key` itself.
    // The keys the library looks up: "IDS_EXPERIENCE" and "IDS_MANIPULATION" (the stems that
    // experiment names are numbered on), "IDS_EXPERIENCE1" (the experiment a file without one
    // gets), "IDS_MENU_SUPPRIMER" (the name of the undoable deletions), "IDS_SYMB_SECONDE" (the
    // seconds symbol that time labels recognise) and the unit labels of a seconds axis read in
    // days, hours or minutes: "IDS_DAY_HOUR", "IDS_HMIN", "IDS_MINS".
    static wxString Get(const wxString& key);
};

#endif
