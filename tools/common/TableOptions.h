// The options that say how a text table is read (--separator, --decimal, --encoding, --skip,
// --header, --missing), one table of them for every tool that reads tables: vyr's commands and
// vyr-view --follow.
#ifndef VYR_TOOLS_COMMON_TABLEOPTIONS_H
#define VYR_TOOLS_COMMON_TABLEOPTIONS_H

#include <functional>
#include <string>
#include <vector>

class VyrTableImport;

namespace vyrtools {

// The names of those options ("--separator"...), each followed by a value.
std::vector<std::string> TableOptionNames();

// Sets `import` from the options given: `given(name, value)` answers whether the option `name`
// was given, and its value. False, with the message for the user in `error`, for a value the
// option does not take.
bool ApplyTableOptions(
    const std::function<bool(const std::string& name, std::string& value)>& given,
    VyrTableImport& import, std::string& error);

}  // namespace vyrtools

#endif
