// vyr import: a text table (spreadsheet, logger, phone sensor app) made into a document.
#include <cstdio>
#include <cstdlib>
#include <string>

#include <wx/filename.h>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrPalette.h"
#include "vyrbase/file/VyrTableImport.h"

namespace vyr {

namespace {

struct Named {
    const char* name;
    int value;
};

// The spellings each option takes, lower case.
const Named kEncodings[] = {
    {"utf-8", VyrTableImport::kEncodingUtf8},
    {"utf8", VyrTableImport::kEncodingUtf8},
    {"utf-16", VyrTableImport::kEncodingUtf16},
    {"utf16", VyrTableImport::kEncodingUtf16},
    {"utf-16le", VyrTableImport::kEncodingUtf16LE},
    {"utf-16be", VyrTableImport::kEncodingUtf16BE},
    {"iso-8859-1", VyrTableImport::kEncodingIso8859_1},
    {"latin1", VyrTableImport::kEncodingIso8859_1},
    {"latin-1", VyrTableImport::kEncodingIso8859_1},
};
const Named kSeparators[] = {
    {"tab", L'\t'}, {"\\t", L'\t'}, {"\t", L'\t'}, {"blank", L' '}, {"space", L' '}, {" ", L' '},
};

const char* EncodingName(VyrTableImport::Encoding encoding) {
    switch (encoding) {
        case VyrTableImport::kEncodingUtf16LE:
            return "UTF-16LE";
        case VyrTableImport::kEncodingUtf16BE:
            return "UTF-16BE";
        case VyrTableImport::kEncodingIso8859_1:
            return "ISO-8859-1";
        default:
            return "UTF-8";
    }
}

// Why a table was refused, for the one-line message.
wxString Reason(const VyrTableImport& import) {
    const wxString line = wxString::Format("line %zu: ", import.GetErrorLine());
    switch (import.GetError()) {
        case VyrTableImport::kErrorEmpty:
            return "not a table: the file is empty";
        case VyrTableImport::kErrorBinary:
            return "not a table: binary data (a zero byte)";
        case VyrTableImport::kErrorEncoding:
            return "not a table: the bytes are not in the encoding given";
        case VyrTableImport::kErrorLineTooLong:
            return "not a table: " + line + "longer than 1 MiB";
        case VyrTableImport::kErrorTooManyCells:
            return "not a table: " + line + "more than 16384 cells";
        case VyrTableImport::kErrorNoNumericRow:
            return "not a table: no row begins with a number";
        case VyrTableImport::kErrorMemory:
            return "not enough memory for the table";
        default:
            return "cannot read the table";
    }
}

int Usage(const std::string& error) {
    Complain("import", wxString::FromUTF8(error.c_str()));
    return kExitUsage;
}

bool ReadCount(const std::string& text, int& count) {
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value < 0 || value > 1000000)
        return false;
    count = static_cast<int>(value);
    return true;
}

}  // namespace

int RunImport(const Args& args) {
    Arguments parsed(
        {}, {"-o", "--output", "--separator", "--decimal", "--encoding", "--skip", "--header"});
    std::string error;
    if (!parsed.Parse(args, error))
        return Usage(error);
    if (parsed.Operands().size() != 1)
        return Usage("needs one input table");
    VyrTableImport import;
    if (parsed.Has("--separator")) {
        const std::string text = parsed.Value("--separator");
        wchar_t separator = text.size() == 1 ? static_cast<wchar_t>(text[0]) : 0;
        for (const Named& n : kSeparators)
            if (wxString::FromUTF8(text.c_str()).Lower() == n.name)
                separator = static_cast<wchar_t>(n.value);
        if (separator == 0 || !import.SetSeparator(separator))
            return Usage("--separator wants one character, tab or blank");
    }
    if (parsed.Has("--decimal")) {
        const std::string text = parsed.Value("--decimal");
        if (text.size() != 1 || !import.SetDecimalMark(static_cast<wchar_t>(text[0])))
            return Usage("--decimal wants . or ,");
        if (text == "," && parsed.Value("--separator") == ",")
            return Usage("\",\" cannot be both the separator and the decimal mark");
    }
    if (parsed.Has("--encoding")) {
        const wxString text = wxString::FromUTF8(parsed.Value("--encoding").c_str()).Lower();
        bool known = false;
        for (const Named& n : kEncodings)
            if (text == n.name) {
                import.SetEncoding(static_cast<VyrTableImport::Encoding>(n.value));
                known = true;
            }
        if (!known)
            return Usage("--encoding wants utf-8, utf-16, utf-16le, utf-16be or iso-8859-1");
    }
    int count = 0;
    if (parsed.Has("--skip")) {
        if (!ReadCount(parsed.Value("--skip"), count))
            return Usage("--skip wants a number of lines");
        import.SetSkipLines(count);
    }
    if (parsed.Has("--header")) {
        if (!ReadCount(parsed.Value("--header"), count))
            return Usage("--header wants a number of lines");
        import.SetHeaderLines(count);
    }

    const wxString input = wxString::FromUTF8(parsed.Operands()[0].c_str());
    const std::string output = parsed.Value("-o", parsed.Value("--output"));
    wxFileName beside(input);
    beside.SetExt("vyr");
    const wxString target =
        output.empty() ? beside.GetFullPath() : wxString::FromUTF8(output.c_str());
    if (IsSameFile(input, target))
        return Usage("the output would replace the input table: give -o OUT.vyr");

    VyrBaseData doc(nullptr);
    if (!import.ImportFile(doc, input)) {
        if (import.GetError() == VyrTableImport::kErrorCannotRead) {
            Complain(input, wxFileName::DirExists(input) ? "cannot open: Is a directory"
                            : wxFileName::FileExists(input)
                                ? "cannot read"
                                : "cannot open: No such file or directory");
            return kExitInput;
        }
        Complain(input, Reason(import));
        return kExitFormat;
    }
    // Each column's curve in the next colour that colour-blind readers tell from the others.
    int made = 0;
    wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
    while (node)
        if (VyrCourbe* courbe = doc.GetNextCourbe(&node))
            courbe->SetColor(VyrPalette::GetColour(made++));
    if (int code = SaveDocument(target, doc))
        return code;
    const wchar_t separator = import.GetUsedSeparator();
    const std::string shown = separator == L'\t'  ? "tab"
                              : separator == L' ' ? "blanks"
                                                  : std::string(1, static_cast<char>(separator));
    std::printf(
        "%s: %d column(s), %zu row(s), %zu invalid cell(s) (%s, separator %s, decimal "
        "mark %c, %d header line(s))\n",
        static_cast<const char*>(target.utf8_str()), import.GetColumnCount(), import.GetRowCount(),
        import.GetInvalidCount(), EncodingName(import.GetUsedEncoding()), shown.c_str(),
        static_cast<char>(import.GetUsedDecimalMark()), import.GetHeaderLineCount());
    return kExitOk;
}

}  // namespace vyr
