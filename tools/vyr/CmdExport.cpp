// vyr csv, vyr render and vyr convert: load a document, write one file from it.
#include <cstdlib>
#include <string>
#include <vector>

#include <wx/filename.h>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramExport.h"

namespace vyr {

namespace {

wxString FromArg(const std::string& s) {
    return wxString::FromUTF8(s.c_str());
}

// Runs `one` on every input (the bundled sample when there is none) and answers the first
// failure's exit code, after every input was tried.
template <class Fn>
int ForEachInput(const Args& operands, Fn one) {
    std::vector<wxString> inputs;
    for (const std::string& s : operands)
        inputs.push_back(FromArg(s));
    if (inputs.empty())
        inputs.push_back(DefaultSample());
    int result = kExitOk;
    for (const wxString& input : inputs) {
        const int code = one(input);
        if (code != kExitOk && result == kExitOk)
            result = code;
    }
    return result;
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
    Arguments parsed({}, {"-o", "--output"});
    std::string error;
    if (!parsed.Parse(args, error))
        return UsageError("csv", error);
    std::string output = parsed.Value("-o", parsed.Value("--output"));
    if (!output.empty() && parsed.Operands().size() > 1)
        return UsageError("csv", "-o takes one input file");
    return ForEachInput(parsed.Operands(), [&](const wxString& input) {
        VyrBaseData doc(nullptr);
        if (int code = OpenDocument(input, doc))
            return code;
        const wxString target = output.empty() ? WithExtension(input, "csv") : FromArg(output);
        return WriteAtomically(target,
                               [&](const wxString& path) { return doc.SaveAsCsvUTF8(path); });
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
    return SaveDocument(FromArg(parsed.Operands()[1]), doc);
}

int RunRender(const Args& args) {
    Arguments parsed({"--grid", "--time-labels", "--spectrum"},
                     {"-o", "--output", "--size", "--diagram", "--scale"});
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
    VyrDiagramExport::Format format = VyrDiagramExport::kFormatPng;
    if (!output.empty() && !VyrDiagramExport::GetFormatOfPath(FromArg(output), &format))
        return UsageError("render", "the output must end in .png, .svg or .pdf");
    if (allDiagrams && format != VyrDiagramExport::kFormatPdf)
        return UsageError("render", "--diagram all needs a .pdf output (one page a diagram)");

    return ForEachInput(parsed.Operands(), [&](const wxString& input) {
        VyrBaseData doc(nullptr);
        if (int code = OpenDocument(input, doc))
            return code;
        std::vector<VyrDiagram*> diagrams;
        const int count = allDiagrams ? doc.GetDiagramCount() : 1;
        for (int i = 0; i < count; ++i) {
            VyrDiagram* diagram = doc.GetDiagram(allDiagrams ? i : diagramIndex);
            diagram->SetGridShown(parsed.Has("--grid"));
            diagram->SetTimeLabels(parsed.Has("--time-labels"));
            diagram->SetSpectrum(parsed.Has("--spectrum"));
            diagrams.push_back(diagram);
        }
        // Interval tools are drawn from the active document.
        VyrBaseData::SetActiveBase(&doc);
        const wxString target = output.empty() ? WithExtension(input, "png") : FromArg(output);
        const int code = WriteSafely(target, [&](VyrSafeFile& file) {
            return allDiagrams
                       ? VyrDiagramExport::SaveAsPdfPages(diagrams, file, width, height, scale)
                       : VyrDiagramExport::Save(diagrams.front(), format, file, width, height,
                                                scale);
        });
        VyrBaseData::SetActiveBase(nullptr);
        return code;
    });
}

}  // namespace vyr
