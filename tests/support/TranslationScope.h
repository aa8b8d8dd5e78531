// A translation catalogue held in memory and installed as the toolkit's translations while a
// test runs: what an application's catalogue would answer for the library's resource keys.
#ifndef VYR_TESTS_SUPPORT_TRANSLATIONSCOPE_H
#define VYR_TESTS_SUPPORT_TRANSLATIONSCOPE_H

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include <wx/translation.h>

// Builds a gettext catalogue (.mo) in memory from msgid -> msgstr pairs.
inline std::string MoData(std::map<std::string, std::string> entries) {
    entries[""] = "Content-Type: text/plain; charset=UTF-8\n";
    const uint32_t n = static_cast<uint32_t>(entries.size());
    const uint32_t originals = 28, translations = originals + 8 * n;
    uint32_t offset = translations + 8 * n;
    std::vector<uint32_t> header = {0x950412de, 0, n, originals, translations, 0, offset};
    std::vector<uint32_t> origTable, transTable;
    std::string strings;
    for (const auto& entry : entries) {
        origTable.push_back(static_cast<uint32_t>(entry.first.size()));
        origTable.push_back(offset + static_cast<uint32_t>(strings.size()));
        strings += entry.first + '\0';
    }
    for (const auto& entry : entries) {
        transTable.push_back(static_cast<uint32_t>(entry.second.size()));
        transTable.push_back(offset + static_cast<uint32_t>(strings.size()));
        strings += entry.second + '\0';
    }
    std::string data;
    for (const auto* table : {&header, &origTable, &transTable})
        for (uint32_t word : *table)
            data.append(reinterpret_cast<const char*>(&word), 4);
    return data + strings;
}

// Installs translations from an in-memory catalogue while it lives.
class TranslationScope {
public:
    explicit TranslationScope(const std::map<std::string, std::string>& entries) {
        auto* translations = new wxTranslations;
        translations->SetLoader(new Loader(MoData(entries)));
        translations->SetLanguage("fr");
        wxTranslations::Set(translations);
        m_loaded = translations->AddCatalog("vyrtest");
    }
    ~TranslationScope() { wxTranslations::Set(nullptr); }
    bool IsLoaded() const { return m_loaded; }

private:
    class Loader : public wxTranslationsLoader {
    public:
        explicit Loader(std::string data) : m_data(std::move(data)) {}
        wxMsgCatalog* LoadCatalog(const wxString& domain, const wxString& lang) override {
            if (domain != "vyrtest" || !lang.StartsWith("fr"))
                return nullptr;
            char* copy = static_cast<char*>(std::malloc(m_data.size()));
            std::memcpy(copy, m_data.data(), m_data.size());
            return wxMsgCatalog::CreateFromData(
                wxScopedCharBuffer::CreateOwned(copy, m_data.size()), domain);
        }
        wxArrayString GetAvailableTranslations(const wxString&) const override {
            wxArrayString langs;
            langs.Add("fr");
            return langs;
        }

    private:
        std::string m_data;
    };

    bool m_loaded = false;
};

#endif
