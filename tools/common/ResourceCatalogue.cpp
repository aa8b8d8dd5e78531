#include "ResourceCatalogue.h"

#include <wx/intl.h>
#include <wx/translation.h>

#include "MemoryCatalogue.h"

namespace vyrtools {

namespace {

// The domain and language the catalogue is installed under.
const char kDomain[] = "vyrbase-resources";
const char kLanguage[] = "en";

}  // namespace

const std::map<std::string, std::string>& ResourceTexts() {
    static const std::map<std::string, std::string> texts = {
        {"IDS_EXPERIENCE", "Experiment "},
        {"IDS_EXPERIENCE1", "Experiment 1"},
        {"IDS_MANIPULATION", "Manipulation "},
        {"IDS_MENU_SUPPRIMER", "Delete"},
        {"IDS_SYMB_SECONDE", "s"},
        {"IDS_DAY_HOUR", "d:h"},
        {"IDS_HMIN", "h:min"},
        {"IDS_MINS", "min:s"},
    };
    return texts;
}

bool InstallResourceCatalogue() {
    if (wxTranslations::Get())
        return false;
    auto* translations = new wxTranslations;
    translations->SetLoader(new MemoryCatalogueLoader(kDomain, kLanguage, ResourceTexts()));
    translations->SetLanguage(kLanguage);
    wxTranslations::Set(translations);
    // The keys are written in no language. Adding a catalogue in the language its keys are
    // written in (English by default) succeeds without loading it, as the keys would then be
    // the texts: the keys' language is declared as one the catalogue is not in.
    translations->AddCatalog(kDomain, wxLANGUAGE_UNKNOWN);
    return translations->IsLoaded(kDomain);
}

}  // namespace vyrtools
