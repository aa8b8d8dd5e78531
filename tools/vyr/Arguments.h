// A small command-line parser: options are declared per command (with or without a value);
// anything else that begins with "-" is refused, the rest are operands.
#ifndef VYR_TOOLS_ARGUMENTS_H
#define VYR_TOOLS_ARGUMENTS_H

#include <map>
#include <set>
#include <string>
#include <vector>

namespace vyr {

class Arguments {
public:
    // `flags`: options without value; `valued`: options followed by a value ("-o FILE" or
    // "--size=WxH" both work).
    Arguments(std::set<std::string> flags, std::set<std::string> valued);

    // False with `error` set for an unknown option or a missing value.
    bool Parse(const std::vector<std::string>& args, std::string& error);

    bool Has(const std::string& option) const { return m_present.count(option) != 0; }
    std::string Value(const std::string& option, const std::string& fallback = "") const;
    const std::vector<std::string>& Operands() const { return m_operands; }

private:
    std::set<std::string> m_flags;
    std::set<std::string> m_valued;
    std::set<std::string> m_present;
    std::map<std::string, std::string> m_values;
    std::vector<std::string> m_operands;
};

}  // namespace vyr

#endif
