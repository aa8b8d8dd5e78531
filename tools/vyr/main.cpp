// vyr: opens lab documents and renders, exports and describes them, headless.
#include <cstdio>
#include <cstring>

#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include "CliCommon.h"
#include "Commands.h"
#include "ResourceCatalogue.h"

namespace vyr {

const std::vector<Command>& AllCommands() {
    static const std::vector<Command> commands = {
        {"info", "vyr info [--json] [FILE...]",
         "Describes each document: the encoding detected, experiments and their curves (names,\n"
         "quantities, units, point counts, invalid points, ranges), notes, interval tools, "
         "report,\n"
         "grid, pictures, physiology records, diagram count and unknown sections kept.\n"
         "--json prints the same as one JSON array for scripts. Without FILE: the bundled sample.\n"
         "A file without an experiment (empty, or curves only) shows the one that loading gives\n"
         "it, \"Experiment 1\", as the application does. \"grid\" is the table of the\n"
         "application's table view, not the diagram's grid.",
         &RunInfo},
        {"csv", "vyr csv [FILE] [-o OUT.csv|-]",
         "Exports the measured data as CSV (UTF-8, \";\" separated). -o - writes it to standard\n"
         "output. Without -o the output is named after the input, beside it, and its path is\n"
         "printed. Without FILE: the bundled sample, whose CSV goes to the current directory.\n"
         "An output that is the input itself (under any spelling) is refused (exit 2).",
         &RunCsv},
        {"render",
         "vyr render [FILE] [-o OUT.png|OUT.svg|OUT.pdf|-] [--size WxH] [--diagram 0|1|all]\n"
         "           [--scale F] [--grid|--no-grid] [--time-labels] [--spectrum]\n"
         "           [--y-unit U] [--no-legend] [--plain]",
         "Paints a diagram of the document as the application shows it (its curves, notes, title\n"
         "and interval tools) into a picture, without a display: PNG (pixels), SVG or PDF\n"
         "(vectors; the PDF is one page of WxH points with its fonts embedded). --diagram all\n"
         "writes every diagram of the document as a page of one PDF. --spectrum draws line\n"
         "style 4 in the colours of the wavelengths (nm). Default size 1200x800,\n"
         "diagram 0, scale 1. -o - writes a PNG to standard output. Without -o the output is\n"
         "named after the input (.png), beside it, and its path is printed. Without FILE: the\n"
         "bundled sample, whose picture goes to the current directory. An output that is the\n"
         "input itself is refused (exit 2).\n"
         "Grid: the document file keeps no diagram settings, so the diagram's grid is off as the\n"
         "application opens the document; --grid draws it, --no-grid never draws it.\n"
         "--time-labels labels a seconds axis of a minute or more in min:s, h:min or d:h.\n"
         "Axis numbers always agree with the unit shown beside them: a unit that takes no\n"
         "prefix (m/s, \u00b0C, %, or none) keeps its numbers unscaled below 1000 and says\n"
         "\"x 10e3\" and up above.\n"
         "The picture explains itself: every Y unit has a scale of its own in its curves' colour\n"
         "(the main unit left, the others right), a legend names the curves when there are\n"
         "several, no text covers another at any size or --scale, units are typeset (m/s^2 as\n"
         "m/s\u00b2, uV as \u00b5V) and a quantity without a unit is drawn on its own range.\n"
         "--y-unit U puts unit U on the left axis (exit 2 when no curve has it); --no-legend\n"
         "leaves the legend out; --plain paints the classic picture, exactly as the library\n"
         "paints a diagram without options.",
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
    std::fprintf(out,
                 "\nvyr help COMMAND describes one command; vyr --version prints the version.\n");
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
    // The library's texts (experiment names, time labels) come from the tool's catalogue.
    vyrtools::InstallResourceCatalogue();

    const char* name = argv[1];
    if (std::strcmp(name, "--version") == 0 || std::strcmp(name, "version") == 0) {
        // The version the build declares for the whole project (library and tools).
        std::printf("vyr %s\n", VYR_VERSION);
        return vyr::kExitOk;
    }
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
