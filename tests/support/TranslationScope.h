// A translation catalogue held in memory and installed as the toolkit's translations while a
// test runs: what an application's catalogue would answer for the library's resource keys.
#ifndef VYR_TESTS_SUPPORT_TRANSLATIONSCOPE_H
#define VYR_TESTS_SUPPORT_TRANSLATIONSCOPE_H

#include <map>
#include <string>

#include <wx/translation.h>

#include "MemoryCatalogue.h"

// Installs translations from an in-memory catalogue (in French, whose keys are written in the
// toolkit's default English) while it lives; the process has no translations afterwards.
class TranslationScope {
public:
    explicit TranslationScope(const std::map<std::string, std::string>& entries) {
        auto* translations = new wxTranslations;
        translations->SetLoader(new vyrtools::MemoryCatalogueLoader("vyrtest", "fr", entries));
        translations->SetLanguage("fr");
        wxTranslations::Set(translations);
        m_loaded = translations->AddCatalog("vyrtest") && translations->IsLoaded("vyrtest");
    }
    ~TranslationScope() { wxTranslations::Set(nullptr); }
    bool IsLoaded() const { return m_loaded; }

private:
    bool m_loaded = false;
};

// The texts an English application gives the seconds symbol and the unit labels of a seconds
// axis read in days, hours or minutes.
inline const std::map<std::string, std::string>& TimeTexts() {
    static const std::map<std::string, std::string> texts = {{"IDS_SYMB_SECONDE", "s"},
                                                             {"IDS_DAY_HOUR", "d:h"},
                                                             {"IDS_HMIN", "h:min"},
                                                             {"IDS_MINS", "min:s"}};
    return texts;
}

#endif
