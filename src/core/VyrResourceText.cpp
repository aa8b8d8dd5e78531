#include "vyrbase/core/VyrResourceText.h"

#include <wx/intl.h>

namespace {

struct ResourceText {
    const char* key;
    const wchar_t* text;
};

// The numbered stems end with a space: the first experiment reads "Experiment 1".
const ResourceText kBuiltInTexts[] = {
    {"IDS_EXPERIENCE", L"Experiment "},
    {"IDS_EXPERIENCE1", L"Experiment 1"},
    {"IDS_MANIPULATION", L"Manipulation "},
    {"IDS_MENU_SUPPRIMER", L"Delete"},
    {"IDS_SYMB_SECONDE", L"s"},
    // A time axis labels its graduations "%d:%02d": days and hours, hours and minutes,
    // minutes and seconds.
    {"IDS_DAY_HOUR", L"d:h"},
    {"IDS_HMIN", L"h:min"},
    {"IDS_MINS", L"min:s"},
};

}  // namespace

wxString VyrResourceText::BuiltIn(const wxString& key) {
    for (const ResourceText& entry : kBuiltInTexts)
        if (key == entry.key)
            return entry.text;
    return wxString();
}

wxString VyrResourceText::Get(const wxString& key) {
    // The toolkit answers the key itself when no catalogue translates it.
    const wxString translated = wxGetTranslation(key);
    if (translated != key)
        return translated;
    const wxString builtIn = BuiltIn(key);
    return builtIn.empty() ? key : builtIn;
}
