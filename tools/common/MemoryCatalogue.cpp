#include "MemoryCatalogue.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace vyrtools {

std::string BuildMoCatalogue(std::map<std::string, std::string> entries) {
    // The empty key carries the catalogue's header, which names its character set.
    entries[""] = "Content-Type: text/plain; charset=UTF-8\n";
    // Layout: magic, revision, count, offsets of the two string tables, no hash table; the
    // tables are sorted by key, which std::map already is.
    const uint32_t n = static_cast<uint32_t>(entries.size());
    const uint32_t originals = 28, translations = originals + 8 * n;
    const uint32_t offset = translations + 8 * n;
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

MemoryCatalogueLoader::MemoryCatalogueLoader(const wxString& domain, const wxString& language,
                                             const std::map<std::string, std::string>& entries)
    : m_sDomain(domain), m_sLanguage(language), m_data(BuildMoCatalogue(entries)) {}

wxMsgCatalog* MemoryCatalogueLoader::LoadCatalog(const wxString& domain, const wxString& language) {
    if (domain != m_sDomain || language.BeforeFirst('_').BeforeFirst('.') != m_sLanguage)
        return nullptr;
    // The catalogue keeps the buffer it is given: each load gets its own copy.
    char* copy = static_cast<char*>(std::malloc(m_data.size()));
    if (!copy)
        return nullptr;
    std::memcpy(copy, m_data.data(), m_data.size());
    return wxMsgCatalog::CreateFromData(wxScopedCharBuffer::CreateOwned(copy, m_data.size()),
                                        domain);
}

wxArrayString MemoryCatalogueLoader::GetAvailableTranslations(const wxString& domain) const {
    wxArrayString languages;
    if (domain == m_sDomain)
        languages.Add(m_sLanguage);
    return languages;
}

}  // namespace vyrtools
