// vyr csv, vyr render and vyr convert: load a document, write one file from it.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <wx/filename.h>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "PictureOptions.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramExport.h"
#include "vyrbase/file/VyrTableExport.h"

namespace vyr {

namespace {

wxString FromArg(const std::string& s) {
    return wxString::FromUTF8(s.c_str());
}

// Runs `one` on every input (the bundled sample when there is none; `bundled` tells) and
// answers the first failure's exit code, after every input was tried.
template <class Fn>
int ForEachInput(const Args& operands, Fn one) {
    if (operands.empty())
        return one(DefaultSample(), true);
    int result = kExitOk;
    for (const std::string& s : operands) {
        const int code = one(FromArg(s), false);
        if (code != kExitOk && result == kExitOk)
            result = code;
    }
    return result;
}

// Where an output goes when no -o names it: named after the input, beside it; the bundled
// sample's in the current directory, since the samples folder is not the user's to write in.
wxString DefaultOutput(const wxString& input, bool bundled, const wxString& extension) {
    wxFileName name(input);
    name.SetExt(extension);
    if (bundled)
        name.SetPath(wxString());
    return name.GetFullPath();
}

// The one output of an input: refused (usage error) when it is the input itself.
int CheckOutput(const char* command, const wxString& input, const wxString& target) {
    if (target == kStandardOutput || !IsSameFile(input, target))
        return kExitOk;
    Complain(command, target + " is the input itself; choose another output with -o");
    return kExitUsage;
}

// Writes `target` through `write`: "-" to standard output, anything else atomically. An output
// the user did not name is announced, so that it can be found.
int WriteOutput(const wxString& target, bool named,
                const std::function<bool(const wxString&)>& write) {
    if (target == kStandardOutput)
        return WriteToStandardOutput(write);
    const int code = WriteAtomically(target, write);
    if (code == kExitOk && !named)
        std::printf("%s\n", (const char*)target.utf8_str());
    return code;
}

bool ParseSize(const std::string& text, int& width, int& height) {
    const size_t x = text.find_first_of("xX");
    if (x == std::string::npos)
        return false;
    char* end = nullptr;
    const long w = std::strtol(text.c_str(), &end, 10);
    if (end != text.c_str() + x)
        return false;
    const long h = std::strtol(text.c_str() + x + 1, &end, 10);
    if (*end != '\0' || w < 16 || h < 16 || w > 20000 || h > 20000)
        return false;
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    return true;
}

int UsageError(const char* command, const std::string& error) {
    Complain(command, wxString::FromUTF8(error.c_str()));
    return kExitUsage;
}

}  // namespace

int RunCsv(const Args& args) {
    Arguments parsed({"--force"}, {"-o", "--output", "--layout"});
    std::string error;
    if (!parsed.Parse(args, error))
        return UsageError("csv", error);
    std::string output = parsed.Value("-o", parsed.Value("--output"));
    if (!output.empty() && parsed.Operands().size() > 1)
        return UsageError("csv", "-o takes one input file");
    // "table": every curve with its own abscissa, exact numbers, invalid points as empty cells;
    // "experiments": the library's export, one block of columns per experiment.
    const std::string layout = parsed.Value("--layout", "table");
    if (layout != "table" && layout != "experiments")
        return UsageError("csv", "--layout wants table or experiments");
    return ForEachInput(parsed.Operands(), [&](const wxString& input, bool bundled) {
        const wxString target =
            output.empty() ? DefaultOutput(input, bundled, "csv") : FromArg(output);
        if (int code = CheckOutput("csv", input, target))
            return code;
        if (output.empty())
            if (int code = CheckDefaultOutput(target, parsed.Has("--force")))
                return code;
        VyrBaseData doc(nullptr);
        if (int code = OpenDocument(input, doc))
            return code;
        return WriteOutput(target, !output.empty(), [&](const wxString& path) {
            return layout == "table" ? VyrTableExport().SaveFile(doc, path)
                                     : doc.SaveAsCsvUTF8(path);
        });
    });
}

int RunConvert(const Args& args) {
    Arguments parsed({}, {});
    std::string error;
    if (!parsed.Parse(args, error))
        return UsageError("convert", error);
    if (parsed.Operands().size() != 2)
        return UsageError("convert", "needs IN and OUT");
    VyrBaseData doc(nullptr);
    const wxString input = FromArg(parsed.Operands()[0]);
    if (int code = OpenDocument(input, doc))
        return code;
    // Every value goes out as it was read, not rounded to six digits.
    doc.SetExactNumbers(true);
    const wxString target = FromArg(parsed.Operands()[1]);
    if (target == kStandardOutput)
        return WriteToStandardOutput([&](const wxString& path) { return doc.Save(path); });
    return SaveDocument(target, doc);
}

int RunRender(const Args& args) {
    Arguments parsed(
        {"--grid", "--no-grid", "--time-labels", "--spectrum", "--plain", "--no-legend", "--force"},
        {"-o", "--output", "--size", "--diagram", "--scale", "--y-unit"});
    std::string error;
    if (!parsed.Parse(args, error))
        return UsageError("render", error);
    int width = 1200, height = 800;
    if (parsed.Has("--size") && !ParseSize(parsed.Value("--size"), width, height))
        return UsageError("render", "--size wants WxH, each from 16 to 20000");
    // "all": every diagram of the document, one page each, which only a PDF can hold.
    const std::string diagramText = parsed.Value("--diagram", "0");
    if (diagramText != "0" && diagramText != "1" && diagramText != "all")
        return UsageError("render", "--diagram wants 0, 1 or all");
    const bool allDiagrams = diagramText == "all";
    const int diagramIndex = allDiagrams ? 0 : diagramText[0] - '0';
    double scale = 1.0;
    if (parsed.Has("--scale")) {
        char* end = nullptr;
        const std::string text = parsed.Value("--scale");
        scale = std::strtod(text.c_str(), &end);
        if (text.empty() || *end != '\0' || !(scale >= 0.25 && scale <= 8.0))
            return UsageError("render", "--scale wants a number from 0.25 to 8");
    }
    const std::string output = parsed.Value("-o", parsed.Value("--output"));
    if (!output.empty() && parsed.Operands().size() > 1)
        return UsageError("render", "-o takes one input file");
    if (parsed.Has("--grid") && parsed.Has("--no-grid"))
        return UsageError("render", "--grid and --no-grid contradict each other");
    // Pictures explain themselves unless --plain asks for the classic one.
    PictureOptions look;
    look.plain = parsed.Has("--plain");
    look.legend = !parsed.Has("--no-legend");
    if (parsed.Has("--y-unit")) {
        look.yUnit = FromArg(parsed.Value("--y-unit"));
        if (look.yUnit.empty())
            return UsageError("render", "--y-unit wants a unit of the diagram's curves");
    }
    // Standard output takes a PNG picture.
    VyrDiagramExport::Format format = VyrDiagramExport::kFormatPng;
    if (!output.empty() && output != kStandardOutput &&
        !VyrDiagramExport::GetFormatOfPath(FromArg(output), &format))
        return UsageError("render", "the output must end in .png, .svg or .pdf");
    if (allDiagrams && format != VyrDiagramExport::kFormatPdf)
        return UsageError("render", "--diagram all needs a .pdf output (one page a diagram)");

    return ForEachInput(parsed.Operands(), [&](const wxString& input, bool bundled) {
        const wxString target =
            output.empty() ? DefaultOutput(input, bundled, "png") : FromArg(output);
        if (int code = CheckOutput("render", input, target))
            return code;
        if (output.empty())
            if (int code = CheckDefaultOutput(target, parsed.Has("--force")))
                return code;
        VyrBaseData doc(nullptr);
        // The axes span what was measured: an invalid point's number stretches none.
        for (int d = 0; d < 2; ++d)
            doc.GetDiagram(d)->SetValidRangesOnly(true);
        if (int code = OpenDocument(input, doc))
            return code;
        // A diagram the document does not use would be an empty picture.
        if (!allDiagrams && diagramIndex >= doc.GetDiagramCount()) {
            Complain(input, wxString::Format("has %d diagram(s): --diagram %d does not exist",
                                             doc.GetDiagramCount(), diagramIndex));
            return static_cast<int>(kExitUsage);
        }
        std::vector<VyrDiagram*> diagrams;
        const int count = allDiagrams ? doc.GetDiagramCount() : 1;
        for (int i = 0; i < count; ++i) {
            VyrDiagram* diagram = doc.GetDiagram(allDiagrams ? i : diagramIndex);
            // The diagram's own settings stand unless an option forces one.
            if (parsed.Has("--grid") || parsed.Has("--no-grid"))
                diagram->SetGridShown(parsed.Has("--grid"));
            if (parsed.Has("--time-labels"))
                diagram->SetTimeLabels(true);
            if (parsed.Has("--spectrum"))
                diagram->SetSpectrum(true);
            wxString reason;
            if (!vyrtools::ApplyPictureOptions(*diagram, look, reason)) {
                Complain("render", input + ": " + reason);
                return static_cast<int>(kExitUsage);
            }
            diagrams.push_back(diagram);
        }
        // Interval tools are drawn from the active document.
        VyrBaseData::SetActiveBase(&doc);
        int code = kExitOk;
        if (target == kStandardOutput) {
            code = WriteToStandardOutput([&](const wxString& path) {
                return VyrDiagramExport::SaveAsPng(diagrams.front(), path, width, height, scale);
            });
        } else {
            code = WriteSafely(target, [&](VyrSafeFile& file) {
                return allDiagrams
                           ? VyrDiagramExport::SaveAsPdfPages(diagrams, file, width, height, scale)
                           : VyrDiagramExport::Save(diagrams.front(), format, file, width, height,
                                                    scale);
            });
            // An output the user did not name is announced, so that it can be found.
            if (code == kExitOk && output.empty())
                std::printf("%s\n", (const char*)target.utf8_str());
        }
        VyrBaseData::SetActiveBase(nullptr);
        return code;
    });
}

}  // namespace vyr
