// vyr info: what a document holds, as text or JSON.
#include <cstdio>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "DocumentInfo.h"
#include "JsonWriter.h"
#include "vyrbase/core/VyrBaseData.h"

namespace vyr {

int RunInfo(const Args& args) {
    Arguments parsed({"--json"}, {});
    std::string error;
    if (!parsed.Parse(args, error)) {
        Complain("info", wxString::FromUTF8(error.c_str()));
        return kExitUsage;
    }
    std::vector<wxString> inputs;
    for (const std::string& s : parsed.Operands())
        inputs.push_back(wxString::FromUTF8(s.c_str()));
    if (inputs.empty())
        inputs.push_back(DefaultSample());

    const bool json = parsed.Has("--json");
    JsonWriter writer;
    if (json)
        writer.BeginArray();
    int result = kExitOk;
    for (const wxString& input : inputs) {
        VyrBaseData doc(nullptr);
        wxString encoding;
        if (int code = OpenDocument(input, doc, &encoding)) {
            if (result == kExitOk)
                result = code;
            continue;
        }
        const DocumentInfo info =
            Describe(doc, std::string(input.utf8_str()), std::string(encoding.utf8_str()));
        if (json)
            WriteJson(writer, info);
        else
            std::fputs(FormatText(info).c_str(), stdout);
    }
    if (json) {
        writer.EndArray();
        std::printf("%s\n", writer.Text().c_str());
    }
    return result;
}

}  // namespace vyr
