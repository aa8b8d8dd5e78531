// The commands of vyr, each a function of its own arguments answering an exit code.
#ifndef VYR_TOOLS_COMMANDS_H
#define VYR_TOOLS_COMMANDS_H

#include <string>
#include <vector>

namespace vyr {

typedef std::vector<std::string> Args;

struct Command {
    const char* name;
    const char* synopsis;
    const char* description;
    int (*run)(const Args& args);
};

// Every command, in the order the help lists them.
const std::vector<Command>& AllCommands();

int RunInfo(const Args& args);
int RunCsv(const Args& args);
int RunRender(const Args& args);
int RunConvert(const Args& args);
int RunImport(const Args& args);
int RunDemo(const Args& args);
int RunCalc(const Args& args);
int RunSpectrum(const Args& args);
int RunStats(const Args& args);
int RunFit(const Args& args);
int RunRecord(const Args& args);

}  // namespace vyr

#endif
