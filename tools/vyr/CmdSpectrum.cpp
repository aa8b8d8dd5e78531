// vyr spectrum: the amplitude spectrum of a uniformly sampled curve, kept as a curve in Hz.
#include <cstdio>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "CurveArguments.h"
#include "vyrbase/calc/VyrAmplitudeSpectrum.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyr {

namespace {

int Usage(const wxString& error) {
    Complain("spectrum", error);
    return kExitUsage;
}

}  // namespace

int RunSpectrum(const Args& args) {
    Arguments parsed({}, {"--curve", "-o", "--output"});
    std::string error;
    if (!parsed.Parse(args, error))
        return Usage(wxString::FromUTF8(error.c_str()));
    if (parsed.Operands().size() != 1)
        return Usage("needs one document");
    if (!parsed.Has("--curve"))
        return Usage("needs --curve NAME");
    const wxString input = wxString::FromUTF8(parsed.Operands()[0].c_str());
    const std::string output = parsed.Value("-o", parsed.Value("--output"));
    VyrBaseData doc(nullptr);
    if (int code = OpenDocument(input, doc))
        return code;
    const wxString name = wxString::FromUTF8(parsed.Value("--curve").c_str());
    VyrCourbe* c = FindCurveArgument(doc, name);
    if (!c)
        return Usage("no curve " + name + " in " + input + " (curves: " + CurveNames(doc) + ")");
    VyrAmplitudeSpectrum spectrum;
    VyrCourbe* made = spectrum.CreateCurve(c);
    if (!made)
        return Usage(c->GetName() + ": " + spectrum.GetErrorText());
    if (!output.empty())
        if (int code = SaveDocument(wxString::FromUTF8(output.c_str()), doc))
            return code;

    // The strongest frequency above 0: the note of the tuning fork.
    const std::vector<double>& f = spectrum.GetFrequencies();
    const std::vector<double>& a = spectrum.GetAmplitudes();
    size_t peak = f.size() > 1 ? 1 : 0;
    for (size_t k = 1; k < a.size(); ++k)
        if (a[k] > a[peak])
            peak = k;
    const std::string fu(spectrum.GetFrequencyUnit().utf8_str());
    const std::string yu(c->GetVy()->GetUnite().utf8_str());
    std::printf("%s: %d point(s) used, step %.10g %s, %zu frequencies every %.10g %s\n",
                static_cast<const char*>(made->GetName().utf8_str()), spectrum.GetPointsUsed(),
                spectrum.GetStep(), static_cast<const char*>(c->GetVx()->GetUnite().utf8_str()),
                f.size(), f.size() > 1 ? f[1] : 0.0, fu.c_str());
    std::printf("mean %.10g %s; strongest %.10g %s, amplitude %.10g %s\n", a.empty() ? 0.0 : a[0],
                yu.c_str(), f.empty() ? 0.0 : f[peak], fu.c_str(), a.empty() ? 0.0 : a[peak],
                yu.c_str());
    if (output.empty())
        std::printf("(not saved: give -o OUT.vyr)\n");
    else
        std::printf("saved in %s\n", output.c_str());
    return kExitOk;
}

}  // namespace vyr
