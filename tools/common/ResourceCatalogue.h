// The application's texts for the library's resource keys ("IDS_..."): the library looks every
// text it shows up by key in the toolkit's translations and answers the bare key where no
// catalogue translates it, so the tools bring a catalogue of their own.
#ifndef VYR_TOOLS_COMMON_RESOURCECATALOGUE_H
#define VYR_TOOLS_COMMON_RESOURCECATALOGUE_H

#include <map>
#include <string>

namespace vyrtools {

// The English text of each resource key of the library (UTF-8), the stems that experiment names
// are numbered on ending with a space: "IDS_EXPERIENCE" "Experiment ", "IDS_MANIPULATION"
// "Manipulation ", "IDS_EXPERIENCE1" "Experiment 1", "IDS_MENU_SUPPRIMER" "Delete",
// "IDS_SYMB_SECONDE" "s", and the unit labels of a seconds axis read in minutes, hours or days,
// whose graduations read "%d:%02d": "IDS_DAY_HOUR" "d:h", "IDS_HMIN" "h:min", "IDS_MINS" "min:s".
const std::map<std::string, std::string>& ResourceTexts();

// Makes the toolkit's translations answer the keys with ResourceTexts(), when the process has
// no translations yet: an application that set up its own translations first keeps them, and
// its catalogues alone answer the keys. Answers true when the catalogue was installed and
// translates the keys; false, and nothing changed, when translations were already set.
bool InstallResourceCatalogue();

}  // namespace vyrtools

#endif
