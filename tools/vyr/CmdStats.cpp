// vyr stats: the statistics of a curve between two abscissas, as an interval tool reads them.
#include <cmath>
#include <cstdio>
#include <limits>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "CurveArguments.h"
#include "JsonWriter.h"
#include "vyrbase/calc/VyrIntervalStats.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyr {

namespace {

int Usage(const wxString& error) {
    Complain("stats", error);
    return kExitUsage;
}

std::string Utf8(const wxString& s) {
    return std::string(s.utf8_str());
}

}  // namespace

int RunStats(const Args& args) {
    Arguments parsed({"--json"}, {"--curve", "--from", "--to", "--tool"});
    std::string error;
    if (!parsed.Parse(args, error))
        return Usage(wxString::FromUTF8(error.c_str()));
    if (parsed.Operands().size() != 1)
        return Usage("needs one document");
    if (!parsed.Has("--curve"))
        return Usage("needs --curve NAME");
    const double inf = std::numeric_limits<double>::infinity();
    double from = -inf, to = inf;
    if (parsed.Has("--from") && !ReadNumber(parsed.Value("--from"), from))
        return Usage("--from wants a number");
    if (parsed.Has("--to") && !ReadNumber(parsed.Value("--to"), to))
        return Usage("--to wants a number");

    const wxString input = wxString::FromUTF8(parsed.Operands()[0].c_str());
    VyrBaseData doc(nullptr);
    if (int code = OpenDocument(input, doc))
        return code;
    const wxString name = wxString::FromUTF8(parsed.Value("--curve").c_str());
    VyrCourbe* c = FindCurveArgument(doc, name);
    if (!c)
        return Usage("no curve " + name + " in " + input + " (curves: " + CurveNames(doc) + ")");
    if (parsed.Has("--tool")) {
        // The range of an interval tool of the document, by either of its labels.
        if (parsed.Has("--from") || parsed.Has("--to"))
            return Usage("--tool gives the range: no --from or --to with it");
        const wxString label = wxString::FromUTF8(parsed.Value("--tool").c_str());
        const VyrOutilInterval* tool = nullptr;
        wxVyrListEntityNode* node = doc.GetFirstOutilIntervalNode();
        while (node && !tool) {
            VyrOutilInterval* t = doc.GetNextOutilInterval(&node);
            if (t && (t->GetEtiq1() == label || t->GetEtiq2() == label))
                tool = t;
        }
        if (!tool)
            return Usage("no interval tool labelled " + label + " in " + input);
        from = std::fmin(tool->GetX0(), tool->GetX1());
        to = std::fmax(tool->GetX0(), tool->GetX1());
    }
    VyrIntervalStats s;
    if (!s.Compute(c, from, to)) {
        Complain(input, "not enough memory for the statistics");
        return kExitInput;
    }

    struct Row {
        const char* key;
        double value;
        wxString unit;
    };
    const wxString ux = c->GetVx()->GetUnite(), uy = c->GetVy()->GetUnite();
    const wchar_t dot = L'\u00b7';
    const Row rows[] = {
        {"mean", s.GetMean(), uy},
        {"sd", s.GetSd(), uy},
        {"min", s.GetMin(), uy},
        {"max", s.GetMax(), uy},
        {"area", s.GetArea(),
         uy.empty()   ? ux
         : ux.empty() ? uy
                      : uy + dot + ux},
        {"slope", s.GetSlope(), ux.empty() ? uy : (uy.empty() ? wxString("1") : uy) + "/" + ux},
        {"intercept", s.GetIntercept(), uy},
    };
    if (parsed.Has("--json")) {
        JsonWriter json;
        json.BeginObject();
        json.Member("points", s.GetPoints());
        for (const Row& r : rows)
            json.Member(r.key, r.value);
        json.EndObject();
        std::printf("%s\n", json.Text().c_str());
        return kExitOk;
    }
    std::printf("%s", Utf8(c->GetName()).c_str());
    if (parsed.Has("--from") || parsed.Has("--to") || parsed.Has("--tool"))
        std::printf(" from %.10g to %.10g %s", std::fmin(from, to), std::fmax(from, to),
                    Utf8(ux).c_str());
    std::printf("\n  %-10s %d\n", "points", s.GetPoints());
    for (const Row& r : rows) {
        if (std::isnan(r.value))
            std::printf("  %-10s -\n", r.key);
        else
            std::printf("  %-10s %.10g %s\n", r.key, r.value, Utf8(r.unit).c_str());
    }
    return kExitOk;
}

}  // namespace vyr
