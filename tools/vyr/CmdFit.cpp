// vyr fit: fits a model to one curve of a document, prints the parameters with their
// uncertainties, and can keep the fitted curve and its note in a document.
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include <wx/tokenzr.h>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "CurveArguments.h"
#include "JsonWriter.h"
#include "vyrbase/calc/VyrFit.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace vyr {

namespace {

// The fit found no result (it did not converge, or had too few points): the document and the
// options were fine, so this is told apart from the input and usage errors.
const int kExitNoResult = 6;

wxString FromArg(const std::string& s) {
    return wxString::FromUTF8(s.c_str());
}

int Usage(const wxString& reason) {
    Complain("fit", reason);
    return kExitUsage;
}

std::string Utf8(const wxString& s) {
    return std::string(s.utf8_str());
}

}  // namespace

int RunFit(const Args& args) {
    Arguments parsed({"--json"}, {"--curve", "--model", "--formula", "--start", "--from", "--to",
                                  "-o", "--output"});
    std::string error;
    if (!parsed.Parse(args, error))
        return Usage(FromArg(error));
    if (parsed.Operands().size() != 1)
        return Usage("needs one FILE");
    const wxString input = FromArg(parsed.Operands()[0]);
    const wxString curveName = FromArg(parsed.Value("--curve"));
    const wxString model = FromArg(parsed.Value("--model"));
    const wxString formula = FromArg(parsed.Value("--formula"));
    const std::string output = parsed.Value("-o", parsed.Value("--output"));
    if (curveName.empty())
        return Usage("--curve NAME is needed");
    if (model.empty() == formula.empty())
        return Usage("give one of --model M and --formula F");
    double from = -std::numeric_limits<double>::infinity();
    double to = std::numeric_limits<double>::infinity();
    if (parsed.Has("--from") && !ReadNumber(parsed.Value("--from"), from))
        return Usage("--from needs a number");
    if (parsed.Has("--to") && !ReadNumber(parsed.Value("--to"), to))
        return Usage("--to needs a number");

    VyrBaseData doc(nullptr);
    if (int code = OpenDocument(input, doc))
        return code;
    VyrCourbe* curve = FindCurveArgument(doc, curveName);
    if (!curve)
        return Usage("no curve " + curveName + " in " + input + " (curves: " + CurveNames(doc) +
                     ")");

    VyrFit fit;
    // A formula may read the variables of the curve's experiment by name.
    if (VyrExperience* e = doc.FindExperienceFromCourbe(curve))
        for (auto* node = e->GetVariables().GetFirst(); node; node = node->GetNext())
            fit.BindVariable(node->GetData()->GetEntityName(), node->GetData()->GetAdressValue());
    if (!model.empty() && !fit.SetModel(model))
        return Usage(fit.GetError() + " (models: " + wxJoin(VyrFit::GetModelNames(), ' ') + ")");
    if (!formula.empty() && !fit.SetFormula(formula))
        return Usage("--formula: " + fit.GetError());
    wxStringTokenizer starts(FromArg(parsed.Value("--start")), ",");
    while (starts.HasMoreTokens()) {
        const wxString item = starts.GetNextToken().Trim(true).Trim(false);
        double value = 0;
        if (!ReadNumber(Utf8(item.AfterFirst('=')), value) ||
            !fit.SetStart(item.BeforeFirst('='), value))
            return Usage("--start: " + item + " is no NAME=VALUE of a parameter");
    }
    if (parsed.Has("--from") || parsed.Has("--to"))
        fit.SetRange(from, to);

    const bool converged = fit.Fit(curve);
    if (parsed.Has("--json")) {
        JsonWriter json;
        json.BeginObject();
        json.Key("parameters");
        json.BeginObject();
        for (size_t k = 0; k < fit.GetParameterCount(); ++k) {
            json.Key(Utf8(fit.GetParameterName(k)));
            json.BeginObject();
            json.Member("value", fit.GetValue(k));
            json.Member("uncertainty", fit.GetUncertainty(k));
            json.EndObject();
        }
        json.EndObject();
        json.Member("rss", fit.GetRss());
        json.Member("r2", fit.GetR2());
        json.Member("points", unsigned(fit.GetPoints()));
        json.Member("converged", converged);
        if (!converged)
            json.Member("error", Utf8(fit.GetError()));
        json.EndObject();
        std::printf("%s\n", json.Text().c_str());
    }
    if (!converged) {
        Complain(curveName, fit.GetError());
        return kExitNoResult;
    }
    if (!parsed.Has("--json")) {
        const wxString shown =
            curve->GetVy()->GetGrandeur() + "(" + curve->GetVx()->GetGrandeur() + ")";
        std::printf("%s: y = %s\n%s\nRSS = %.6g\n", Utf8(shown).c_str(),
                    Utf8(fit.GetEquation()).c_str(), Utf8(fit.FormatResult()).c_str(),
                    fit.GetRss());
    }
    if (output.empty())
        return kExitOk;
    // The fitted curve with its note, shown where the curve is; written safely, so that -o
    // may name the input itself.
    VyrCourbe* fitted = fit.AddToDocument(&doc, curve);
    if (!fitted) {
        Complain(curveName, "the fitted curve cannot be added");
        return kExitNoResult;
    }
    for (int d = 0; d < 2; ++d)
        if (fitted->IsShownInDiagram(d) && doc.GetDiagram(d))
            doc.GetDiagram(d)->ShowData(fitted, true);
    return SaveDocument(FromArg(output), doc);
}

}  // namespace vyr
