#include "vyrbase/core/VyrResourceText.h"

#include <wx/intl.h>

wxString VyrResourceText::Get(const wxString& key) {
    // The toolkit answers the key itself when no catalogue translates it, or when the
    // application set up no translations at all.
    return wxGetTranslation(key);
}
