#include "Arguments.h"

namespace vyr {

Arguments::Arguments(std::set<std::string> flags, std::set<std::string> valued)
    : m_flags(std::move(flags)), m_valued(std::move(valued)) {}

bool Arguments::Parse(const std::vector<std::string>& args, std::string& error) {
    bool operandsOnly = false;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (operandsOnly || arg.size() < 2 || arg[0] != '-') {
            m_operands.push_back(arg);
            continue;
        }
        if (arg == "--") {
            operandsOnly = true;
            continue;
        }
        std::string name = arg, value;
        const size_t eq = arg.find('=');
        const bool inlineValue = eq != std::string::npos && arg.compare(0, 2, "--") == 0;
        if (inlineValue) {
            name = arg.substr(0, eq);
            value = arg.substr(eq + 1);
        }
        if (m_flags.count(name) && !inlineValue) {
            m_present.insert(name);
        } else if (m_valued.count(name)) {
            if (!inlineValue) {
                if (i + 1 >= args.size()) {
                    error = "option " + name + " needs a value";
                    return false;
                }
                value = args[++i];
            }
            m_present.insert(name);
            m_values[name] = value;
        } else {
            error = "unknown option " + arg;
            return false;
        }
    }
    return true;
}

std::string Arguments::Value(const std::string& option, const std::string& fallback) const {
    auto it = m_values.find(option);
    return it == m_values.end() ? fallback : it->second;
}

}  // namespace vyr
