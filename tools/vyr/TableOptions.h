// The options that say how a text table is read (--separator, --decimal, --encoding, --skip,
// --header, --missing), one table of them for every command that reads tables.
#ifndef VYR_TOOLS_TABLEOPTIONS_H
#define VYR_TOOLS_TABLEOPTIONS_H

#include <set>
#include <string>

#include "Arguments.h"

class VyrTableImport;

namespace vyr {

// The names of those options, each followed by a value.
std::set<std::string> TableOptionNames();

// Sets `import` from the options present. False, with the message for the user in `error`,
// for a value the option does not take.
bool ApplyTableOptions(const Arguments& parsed, VyrTableImport& import, std::string& error);

}  // namespace vyr

#endif
