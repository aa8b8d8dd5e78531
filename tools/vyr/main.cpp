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
        {"csv", "vyr csv [FILE] [-o OUT.csv|-] [--layout table|experiments] [--force]",
         "Exports the measured data as CSV (UTF-8, \";\" separated). The default layout, table,\n"
         "is one rectangular table that vyr import reads back to the same numbers: every curve\n"
         "with its own X column (curves of the same X values share one), headings\n"
         "\"quantity (unit)\", every number in full, an empty cell where a point is missing or\n"
         "invalid. --layout experiments writes the application's own export instead: one block\n"
         "of columns per experiment, numbers to six digits. -o - writes to standard output.\n"
         "Without -o the output is named after the input, beside it, and its path is printed;\n"
         "an existing file of that name is not replaced (exit 5) unless --force is given.\n"
         "Without FILE: the bundled sample, whose CSV goes to the current directory.\n"
         "An output that is the input itself (under any spelling) is refused (exit 2).",
         &RunCsv},
        {"render",
         "vyr render [FILE] [-o OUT.png|OUT.svg|OUT.pdf|-] [--size WxH] [--diagram 0|1|all]\n"
         "           [--scale F] [--grid|--no-grid] [--time-labels] [--spectrum] [--force]\n"
         "           [--y-unit U] [--no-legend] [--plain]",
         "Paints a diagram of the document as the application shows it (its curves, notes, title\n"
         "and interval tools) into a picture, without a display: PNG (pixels), SVG or PDF\n"
         "(vectors; the PDF is one page of WxH points with its fonts embedded). --diagram all\n"
         "writes every diagram of the document as a page of one PDF. --spectrum draws line\n"
         "style 4 in the colours of the wavelengths (nm). Default size 1200x800,\n"
         "diagram 0, scale 1. -o - writes a PNG to standard output. Without -o the output is\n"
         "named after the input (.png), beside it, and its path is printed. Without FILE: the\n"
         "bundled sample, whose picture goes to the current directory. An existing file of\n"
         "the default name is not replaced (exit 5) unless --force is given. An output that\n"
         "is the input itself is refused (exit 2), as is a --diagram the document does not use.\n"
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
        {"convert", "vyr convert IN OUT|-",
         "Loads IN (UTF-16, UTF-8 or ISO-8859-1) and saves it again as OUT in the canonical\n"
         "UTF-16 form, every number in the shortest text that reads back to the same value.\n"
         "OUT - writes to standard output.",
         &RunConvert},
        {"import",
         "vyr import IN [-o OUT.vyr|-] [--separator C] [--decimal C] [--encoding E] [--skip N]\n"
         "           [--header N] [--missing NUMBER] [--force]",
         "Makes a document of a text table (CSV, a spreadsheet's, a logger's, a phone sensor\n"
         "app's, a weather service's): one column as X, one curve per further column of\n"
         "numbers, names and units from the header (\"name (unit)\", \"name [unit]\",\n"
         "\"name/unit\", or a line of units under the names). A column of clock times or dates\n"
         "is X wherever it stands (a date and a time of day in two columns make one), as\n"
         "seconds from the first row; the start is kept in the experiment's comment. Text\n"
         "columns are left out; empty cells, NaN, n/a, M, - and cells that are no numbers\n"
         "become invalid points; --missing -999 makes that number one too. Comment lines,\n"
         "preambles and footers are skipped. Encoding, separator (tab, ;, , or blanks), decimal\n"
         "mark and header lines are detected; each option sets one of them (--skip: lines\n"
         "before the table; quoted cells may hold a decimal comma beside comma separators).\n"
         "Every number is kept in full. Without -o the output is IN with the extension .vyr,\n"
         "which does not replace an existing file (exit 5) unless --force is given; -o -\n"
         "writes the document to standard output (the summary then goes to standard error).\n"
         "The summary says which column is X and why, which were left out and how many\n"
         "invalid points each curve has.",
         &RunImport},
        {"record",
         "vyr record SOURCE [-o OUT.vyr] [--separator C] [--decimal C] [--encoding E] [--skip N]\n"
         "           [--header N] [--missing NUMBER] [--rows N] [--seconds S] [--idle S]\n"
         "           [--checkpoint S] [--baud B] [--force]\n"
         "       vyr record --list-ports",
         "Records measurements as they arrive: SOURCE is - (standard input), a file (read from\n"
         "its start, then followed as it grows; a file that shrinks or is replaced is read again\n"
         "as a new experiment), a named pipe, or a serial device (set raw, --baud, default\n"
         "115200; --list-ports lists the serial ports). The lines are a table read as vyr import\n"
         "reads one (same options); each column after the first becomes a curve of one\n"
         "experiment named after the source and the start time. A line that is no row (no\n"
         "abscissa, no value) is skipped and counted. Stops at the end of a pipe or of standard\n"
         "input, after --rows rows, --seconds seconds, --idle seconds without a new row, or on\n"
         "SIGINT/SIGTERM; then saves and prints rows, skipped lines, duration and rate (exit 0).\n"
         "Every --checkpoint seconds (default 5, 0: only at the end) the recording so far is\n"
         "saved, safely: a crash costs at most that much. Without -o the output is SOURCE's name\n"
         "with .vyr in the current directory, which does not replace an existing file (exit 5)\n"
         "unless --force is given. Nothing recorded exits 4, a source that cannot be read 3.",
         &RunRecord},
        {"calc",
         "vyr calc FILE 'NAME = EXPR' [--var NAME=V]... [--unit U] [--experiment E]\n"
         "           [-o OUT.vyr]",
         "Calculates a curve from the curves and variables of an experiment: P = U*I,\n"
         "E = 0.5*m*v^2, a = deriv(v), Q = integ(I), Us = smooth(U, 5). Names are the curves'\n"
         "quantities (Y, or X for the abscissa) and the experiment's variables; --var sets a\n"
         "variable (kept in the document). The result takes the abscissas of the first curve\n"
         "named; the others are interpolated onto them (no extrapolation: points outside are\n"
         "invalid). Operators + - * / ^, functions sin cos tan asin acos atan exp ln log10 sqrt\n"
         "abs, pi. The unit follows from the operands' (V*A gives V\u00b7A) unless --unit names\n"
         "it. The experiment is the first where every name is found, or --experiment. -o writes\n"
         "the document with the new curve (-o FILE updates the input, safely); without -o only\n"
         "the summary is printed. A refused expression exits 2 with the reason.",
         &RunCalc},
        {"spectrum", "vyr spectrum FILE --curve NAME [-o OUT.vyr]",
         "The amplitude spectrum of a uniformly sampled curve, as a new curve NAME(f) in Hz (for\n"
         "X in s, ms, us, min or h; 1/unit otherwise): a sine of amplitude A reads A at its\n"
         "frequency, the value at 0 is the mean. No window. Prints the step, the resolution and\n"
         "the strongest frequency. A curve whose valid points are not evenly spaced is refused\n"
         "(exit 2). NAME is a curve's display name (U(t)), its name or its Y quantity. -o as for\n"
         "calc.",
         &RunSpectrum},
        {"stats", "vyr stats FILE --curve NAME [--from X] [--to X] [--tool LABEL] [--json]",
         "Statistics of a curve's valid points between two abscissas (bounds included, either\n"
         "order, each side open when not given): points, mean, sd (n - 1), min, max, area\n"
         "(trapezoids between the points), slope and intercept of the least-squares line.\n"
         "--tool takes the range of the document's interval tool with that label. --json prints\n"
         "one object with those keys (null where a value cannot be had).",
         &RunStats},
        {"demo", "vyr demo [DIR]",
         "Builds sample documents a science class would produce (oscillation, sound, spectrum,\n"
         "pendulum, signal, fit: the oscillation with a fitted model) through the library's\n"
         "API, saves each into DIR (default: samples),\n"
         "renders it and exports its CSV.",
         &RunDemo},
        {"fit",
         "vyr fit FILE --curve NAME (--model M | --formula F) [--start P=V,...]\n"
         "           [--from X] [--to X] [--json] [-o OUT.vyr]",
         "Fits a model to a curve (named by its name, \"Y(X)\" or its Y quantity) by nonlinear\n"
         "least squares and prints the parameters with their standard uncertainties, R\u00b2\n"
         "and the residual sum of squares. Models: linear a*x, affine a*x+b, poly2..poly5\n"
         "c0+c1*x+..., exp A*exp(-x/tau)+C, power A*x^n, sine A*sin(2*pi*f*x+phi)+C, damped\n"
         "A*exp(-x/tau)*sin(2*pi*f*x+phi)+C, gauss A*exp(-(x-mu)^2/(2*sigma^2))+C; they find\n"
         "their starting values themselves. --formula fits any formula in x: its other names\n"
         "are parameters (starting at 1 unless --start sets them), except the variables of the\n"
         "curve's experiment. --from and --to keep the points in that range of X; invalid\n"
         "points never count. --json prints {\"parameters\": {NAME: {\"value\", "
         "\"uncertainty\"}},\n"
         "\"rss\", \"r2\", \"points\", \"converged\"}. -o saves the document with the fitted\n"
         "curve and its note (the equation and the parameters); OUT may be FILE itself.\n"
         "A fit that does not converge prints no values and exits with 6.",
         &RunFit},
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
