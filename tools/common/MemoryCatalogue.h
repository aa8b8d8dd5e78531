// A gettext message catalogue built in memory and served to the toolkit's translations, so that
// an application can carry the texts of its resource keys inside its own binary.
#ifndef VYR_TOOLS_COMMON_MEMORYCATALOGUE_H
#define VYR_TOOLS_COMMON_MEMORYCATALOGUE_H

#include <map>
#include <string>

#include <wx/arrstr.h>
#include <wx/translation.h>

namespace vyrtools {

// The bytes of a catalogue (.mo, UTF-8) that translates each key of `entries` to its value.
std::string BuildMoCatalogue(std::map<std::string, std::string> entries);

// Answers the toolkit's translations with one catalogue held in memory: `domain` in `language`
// (and in any variant of it, "en_GB" for "en"); every other domain or language has none.
class MemoryCatalogueLoader : public wxTranslationsLoader {
public:
    MemoryCatalogueLoader(const wxString& domain, const wxString& language,
                          const std::map<std::string, std::string>& entries);

    wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString& language) override;
    wxArrayString GetAvailableTranslations(const wxString& domain) const override;

private:
    wxString m_sDomain;
    wxString m_sLanguage;
    std::string m_data;
};

}  // namespace vyrtools

#endif
