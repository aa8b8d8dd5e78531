// vyr calc: a calculated curve, NAME = EXPR over the curves and variables of an experiment.
#include <cstdio>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "CurveArguments.h"
#include "vyrbase/calc/VyrCurveCalculator.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyr {

namespace {

int Usage(const wxString& error) {
    Complain("calc", error);
    return kExitUsage;
}

struct Variable {
    wxString name;
    double value;
};

}  // namespace

int RunCalc(const Args& args) {
    // --var may be given several times: gathered here, the rest goes to the parser.
    Args rest;
    std::vector<Variable> variables;
    for (size_t i = 0; i < args.size(); ++i) {
        std::string text;
        if (args[i] == "--var" && i + 1 < args.size())
            text = args[++i];
        else if (args[i].compare(0, 6, "--var=") == 0)
            text = args[i].substr(6);
        else if (args[i] == "--var")
            return Usage("option --var needs a value");
        else {
            rest.push_back(args[i]);
            continue;
        }
        const size_t eq = text.find('=');
        double value = 0.0;
        if (eq == std::string::npos || eq == 0 || !ReadNumber(text.substr(eq + 1), value))
            return Usage("--var wants NAME=NUMBER, not \"" + wxString::FromUTF8(text.c_str()) +
                         "\"");
        variables.push_back({wxString::FromUTF8(text.substr(0, eq).c_str()), value});
    }
    Arguments parsed({}, {"-o", "--output", "--unit", "--experiment"});
    std::string error;
    if (!parsed.Parse(rest, error))
        return Usage(wxString::FromUTF8(error.c_str()));
    if (parsed.Operands().size() != 2)
        return Usage("needs a document and one 'NAME = EXPR'");
    const wxString input = wxString::FromUTF8(parsed.Operands()[0].c_str());
    const wxString assignment = wxString::FromUTF8(parsed.Operands()[1].c_str());
    const std::string output = parsed.Value("-o", parsed.Value("--output"));

    VyrBaseData doc(nullptr);
    if (int code = OpenDocument(input, doc))
        return code;
    VyrExperience* e = nullptr;
    if (parsed.Has("--experiment")) {
        const wxString name = wxString::FromUTF8(parsed.Value("--experiment").c_str());
        e = doc.FindExperience(name.wc_str());
        if (!e)
            return Usage("no experiment " + name + " in " + input);
    } else {
        // The variables given count as names of the experiment too.
        wxArrayString given;
        for (const Variable& v : variables)
            given.Add(v.name);
        e = VyrCurveCalculator::FindExperience(doc, assignment, given);
        if (!e) {
            wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
            e = node ? doc.GetNextExperience(&node) : nullptr;
        }
        if (!e)
            return Usage(input + " holds no experiment");
    }
    VyrCurveCalculator calc(e);
    for (const Variable& v : variables)
        if (!calc.SetVariable(v.name, v.value))
            return Usage("--var: " + v.name + " cannot name a variable");
    if (parsed.Has("--unit"))
        calc.SetUnit(wxString::FromUTF8(parsed.Value("--unit").c_str()));
    VyrCourbe* made = calc.Calculate(assignment);
    if (!made)
        return Usage(calc.GetError());

    if (!output.empty()) {
        // -o may name the input itself: the document is written beside it and renamed over it
        // only once complete.
        if (int code = SaveDocument(wxString::FromUTF8(output.c_str()), doc))
            return code;
    }
    const unsigned points = made->GetSize();
    const unsigned valid = made->GetTrueSize();
    std::printf("%s in %s: %u point(s), %u invalid, unit \"%s\"%s%s\n",
                static_cast<const char*>(made->GetName().utf8_str()),
                static_cast<const char*>(e->GetEntityName().utf8_str()), points, points - valid,
                static_cast<const char*>(made->GetVy()->GetUnite().utf8_str()),
                output.empty() ? " (not saved: give -o OUT.vyr)" : ", saved in ", output.c_str());
    return kExitOk;
}

}  // namespace vyr
