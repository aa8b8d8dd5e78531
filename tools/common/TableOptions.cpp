// The table-reading options, each a setting of VyrTableImport with the message for a refused
// value.
#include "TableOptions.h"

#include <cmath>
#include <cstdlib>

#include "TableImporting.h"
#include "vyrbase/file/VyrTableImport.h"

namespace vyrtools {

namespace {

bool ReadCount(const std::string& text, int& count) {
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value < 0 || value > 1000000)
        return false;
    count = static_cast<int>(value);
    return true;
}

bool Separator(VyrTableImport& import, const std::string& text) {
    return SetSeparatorByName(import, wxString::FromUTF8(text.c_str()));
}
bool Decimal(VyrTableImport& import, const std::string& text) {
    return text.size() == 1 && import.SetDecimalMark(static_cast<wchar_t>(text[0]));
}
bool Encoding(VyrTableImport& import, const std::string& text) {
    return SetEncodingByName(import, wxString::FromUTF8(text.c_str()));
}
bool Skip(VyrTableImport& import, const std::string& text) {
    int count = 0;
    if (!ReadCount(text, count))
        return false;
    import.SetSkipLines(count);
    return true;
}
bool Header(VyrTableImport& import, const std::string& text) {
    int count = 0;
    if (!ReadCount(text, count))
        return false;
    import.SetHeaderLines(count);
    return true;
}
bool Missing(VyrTableImport& import, const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(value))
        return false;
    import.AddMissingValue(value);
    return true;
}

struct TableOption {
    const char* name;
    bool (*apply)(VyrTableImport& import, const std::string& text);
    const char* refusal;
};

const TableOption kOptions[] = {
    {"--separator", &Separator, "--separator wants one character, tab or blank"},
    {"--decimal", &Decimal, "--decimal wants . or ,"},
    {"--encoding", &Encoding, "--encoding wants utf-8, utf-16, utf-16le, utf-16be or iso-8859-1"},
    {"--skip", &Skip, "--skip wants a number of lines"},
    {"--header", &Header, "--header wants a number of lines"},
    {"--missing", &Missing, "--missing wants a number (such as -999)"},
};

}  // namespace

std::vector<std::string> TableOptionNames() {
    std::vector<std::string> names;
    for (const TableOption& option : kOptions)
        names.push_back(option.name);
    return names;
}

bool ApplyTableOptions(
    const std::function<bool(const std::string& name, std::string& value)>& given,
    VyrTableImport& import, std::string& error) {
    std::string value;
    for (const TableOption& option : kOptions)
        if (given(option.name, value) && !option.apply(import, value)) {
            error = option.refusal;
            return false;
        }
    return true;
}

}  // namespace vyrtools
