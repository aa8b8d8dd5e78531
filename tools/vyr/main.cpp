// vyr: opens lab documents and renders, exports and describes them, headless.
#include <cstdio>
#include <cstring>

#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include "CliCommon.h"
#include "Commands.h"

namespace vyr {

const std::vector<Command>& AllCommands() {
    static const std::vector<Command> commands = {
        {"info", "vyr info [--json] [FILE...]",
         "Describes each document: the encoding detected, experiments and their curves (names,\n"
         "quantities, units, point counts, invalid points, ranges), notes, interval tools, "
         "report,\n"
         "grid, pictures, physiology records, diagram count and unknown sections kept.\n"
         "--json prints the same as one JSON array for scripts. Without FILE: the bundled sample.",
         &RunInfo},
        {"csv", "vyr csv [FILE] [-o OUT.csv]",
         "Exports the measured data as CSV (UTF-8, \";\" separated). Without -o the output is\n"
         "named after the input. Without FILE: the bundled sample.",
         &RunCsv},
        {"render",
         "vyr render [FILE] [-o OUT.png|OUT.svg] [--size WxH] [--diagram 0|1]\n"
         "           [--scale F] [--grid] [--time-labels] [--spectrum]",
         "Paints a diagram of the document as the application shows it (its curves, notes, title\n"
         "and interval tools) into a PNG or SVG picture, without a display. --spectrum draws line\n"
         "style 4 in the colours of the wavelengths (nm). Default size 1200x800,\n"
         "diagram 0, scale 1; without -o the output is named after the input (.png).\n"
         "Without FILE: the bundled sample.",
         &RunRender},
        {"convert", "vyr convert IN OUT",
         "Loads IN (UTF-16, UTF-8 or ISO-8859-1) and saves it again as OUT in the canonical\n"
         "UTF-16 form.",
         &RunConvert},
        {"import",
         "vyr import IN [-o OUT.vyr] [--separator C] [--decimal C] [--encoding E] [--skip N]\n"
         "           [--header N]",
         "Makes a document of a text table (CSV, a spreadsheet's, a logger's, a phone sensor\n"
         "app's): the first column as X, one curve per further column, names and units from\n"
         "the header (\"name (unit)\", \"name [unit]\", \"name/unit\"); empty cells and cells\n"
         "that are no numbers become invalid points. Encoding, separator (tab, ;, , or blanks),\n"
         "decimal mark and header lines are detected; each option sets one of them (--skip:\n"
         "lines before the table). Without -o the output is IN with the extension .vyr.",
         &RunImport},
        {"demo", "vyr demo [DIR]",
         "Builds sample documents a science class would produce (oscillation, sound, spectrum,\n"
         "pendulum, signal) through the library's API, saves each into DIR (default: samples),\n"
         "renders it and exports its CSV.",
         &RunDemo},
    };
    return commands;
}

}  // namespace vyr

namespace {

void PrintUsage(FILE* out) {
    std::fprintf(out, "usage: vyr COMMAND [ARGS]\n\ncommands:\n");
    for (const vyr::Command& c : vyr::AllCommands())
        std::fprintf(out, "  %s\n", c.synopsis);
    std::fprintf(out, "\nvyr help COMMAND describes one command.\n");
}

const vyr::Command* FindCommand(const char* name) {
    for (const vyr::Command& c : vyr::AllCommands())
        if (std::strcmp(c.name, name) == 0)
            return &c;
    return nullptr;
}

int Help(const vyr::Args& args) {
    if (args.empty()) {
        PrintUsage(stdout);
        return vyr::kExitOk;
    }
    const vyr::Command* command = FindCommand(args[0].c_str());
    if (!command) {
        vyr::Complain(wxString::FromUTF8(args[0].c_str()), "unknown command");
        return vyr::kExitUsage;
    }
    std::printf("usage: %s\n\n%s\n", command->synopsis, command->description);
    return vyr::kExitOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        PrintUsage(stderr);
        return vyr::kExitUsage;
    }
    wxInitializer toolkit(argc, argv);
    if (!toolkit.IsOk()) {
        std::fprintf(stderr, "vyr: cannot initialise the toolkit\n");
        return 1;
    }
    // Every failure is reported by vyr itself, on one line; the toolkit's messages would need
    // a display to be shown.
    wxLog::EnableLogging(false);
    wxInitAllImageHandlers();

    const char* name = argv[1];
    vyr::Args args(argv + 2, argv + argc);
    if (std::strcmp(name, "--help") == 0 || std::strcmp(name, "-h") == 0)
        return Help({});
    if (std::strcmp(name, "help") == 0)
        return Help(args);
    const vyr::Command* command = FindCommand(name);
    if (!command) {
        vyr::Complain(wxString::FromUTF8(name), "unknown command (see vyr --help)");
        return vyr::kExitUsage;
    }
    for (const std::string& arg : args)
        if (arg == "--help" || arg == "-h")
            return Help({name});
    return command->run(args);
}
