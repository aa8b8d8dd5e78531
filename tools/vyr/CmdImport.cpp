// vyr import: a text table (spreadsheet, logger, phone sensor app) made into a document.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <wx/filename.h>

#include "Arguments.h"
#include "CliCommon.h"
#include "Commands.h"
#include "TableImporting.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/file/VyrTableImport.h"

namespace vyr {

namespace {

// A column as the summary names it: column 2 "U (V)".
std::string ColumnName(const VyrTableImport& import, int column) {
    const VyrTableImport::ColumnReport& r = import.GetColumnReports()[column];
    wxString name = r.quantity;
    if (!r.unit.empty())
        name += " (" + r.unit + ")";
    return "column " + std::to_string(column + 1) + " \"" + std::string(name.utf8_str()) + "\"";
}

// What became of every column: X and why, the curves and their invalid points, the columns
// left out.
void PrintColumns(const VyrTableImport& import, std::FILE* out) {
    const std::vector<VyrTableImport::ColumnReport>& columns = import.GetColumnReports();
    const int x = import.GetAbscissaColumn();
    std::string why;
    switch (import.GetAbscissaReason()) {
        case VyrTableImport::kAbscissaFirstColumn:
            why = "the first column";
            break;
        case VyrTableImport::kAbscissaFirstNumberColumn:
            why = "the first column of numbers";
            break;
        case VyrTableImport::kAbscissaTime:
            why = "clock times or dates, as seconds from the first";
            break;
        case VyrTableImport::kAbscissaDateAndTime:
            why = "a date and a time of day, as seconds from the first";
            break;
        case VyrTableImport::kAbscissaRowNumber:
            why = "one column of values: the row number";
            break;
    }
    if (x < 0) {
        std::fprintf(out, "  X: n, %s\n", why.c_str());
    } else {
        std::string joined;
        for (size_t k = 0; k < columns.size(); ++k)
            if (columns[k].use == VyrTableImport::kColumnAbscissa && static_cast<int>(k) != x)
                joined = " and " + ColumnName(import, static_cast<int>(k));
        std::fprintf(out, "  X: %s%s, %s", ColumnName(import, x).c_str(), joined.c_str(),
                     why.c_str());
        if (!import.GetStart().empty())
            std::fprintf(out, " (start %s)",
                         static_cast<const char*>(import.GetStart().utf8_str()));
        std::fprintf(out, ": %zu invalid point(s)\n", columns[x].holes);
    }
    for (size_t k = 0; k < columns.size(); ++k) {
        const int column = static_cast<int>(k);
        switch (columns[k].use) {
            case VyrTableImport::kColumnCurve:
                std::fprintf(out, "  curve: %s: %zu invalid point(s)\n",
                             ColumnName(import, column).c_str(), columns[k].holes);
                break;
            case VyrTableImport::kColumnText:
                std::fprintf(out, "  left out: %s, text\n", ColumnName(import, column).c_str());
                break;
            case VyrTableImport::kColumnMoreTime:
                std::fprintf(out, "  left out: %s, another date or time column\n",
                             ColumnName(import, column).c_str());
                break;
            default:
                break;
        }
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
    Arguments parsed({"--force"}, {"-o", "--output", "--separator", "--decimal", "--encoding",
                                   "--skip", "--header", "--missing"});
    std::string error;
    if (!parsed.Parse(args, error))
        return Usage(error);
    if (parsed.Operands().size() != 1)
        return Usage("needs one input table");
    VyrTableImport import;
    if (parsed.Has("--separator") &&
        !vyrtools::SetSeparatorByName(import,
                                      wxString::FromUTF8(parsed.Value("--separator").c_str())))
        return Usage("--separator wants one character, tab or blank");
    if (parsed.Has("--decimal")) {
        const std::string text = parsed.Value("--decimal");
        if (text.size() != 1 || !import.SetDecimalMark(static_cast<wchar_t>(text[0])))
            return Usage("--decimal wants . or ,");
    }
    if (parsed.Has("--encoding") &&
        !vyrtools::SetEncodingByName(import,
                                     wxString::FromUTF8(parsed.Value("--encoding").c_str())))
        return Usage("--encoding wants utf-8, utf-16, utf-16le, utf-16be or iso-8859-1");
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

    if (parsed.Has("--missing")) {
        const std::string text = parsed.Value("--missing");
        char* end = nullptr;
        const double value = std::strtod(text.c_str(), &end);
        if (text.empty() || *end != '\0' || !std::isfinite(value))
            return Usage("--missing wants a number (such as -999)");
        import.AddMissingValue(value);
    }

    const wxString input = wxString::FromUTF8(parsed.Operands()[0].c_str());
    const std::string output = parsed.Value("-o", parsed.Value("--output"));
    wxFileName beside(input);
    beside.SetExt("vyr");
    const wxString target =
        output.empty() ? beside.GetFullPath() : wxString::FromUTF8(output.c_str());
    if (target != kStandardOutput && IsSameFile(input, target))
        return Usage("the output would replace the input table: give -o OUT.vyr");
    const bool toStandardOutput = target == kStandardOutput;

    VyrBaseData doc(nullptr);
    wxString reason;
    switch (vyrtools::ImportTable(input, import, doc, reason)) {
        case vyrtools::LoadResult::Ok:
            break;
        case vyrtools::LoadResult::CannotRead:
            Complain(input, reason);
            return kExitInput;
        case vyrtools::LoadResult::NotADocument:
            Complain(input, reason);
            return kExitFormat;
    }
    // Checked once the table was read: a file that is no table is told as such first.
    if (output.empty())
        if (int code = CheckDefaultOutput(target, parsed.Has("--force")))
            return code;
    // Every number goes into the document as the table gave it, not rounded to six digits.
    doc.SetExactNumbers(true);
    if (int code = toStandardOutput
                       ? WriteToStandardOutput([&](const wxString& path) { return doc.Save(path); })
                       : SaveDocument(target, doc))
        return code;
    const wchar_t separator = import.GetUsedSeparator();
    const std::string shown = separator == L'\t'  ? "tab"
                              : separator == L' ' ? "blanks"
                                                  : std::string(1, static_cast<char>(separator));
    // Standard output carries the document alone: the summary goes to standard error then.
    std::FILE* summary = toStandardOutput ? stderr : stdout;
    std::fprintf(summary,
                 "%s: %d column(s), %zu row(s), %zu invalid cell(s) (%s, separator %s, decimal "
                 "mark %c, %d header line(s))\n",
                 static_cast<const char*>(target.utf8_str()), import.GetColumnCount(),
                 import.GetRowCount(), import.GetInvalidCount(),
                 vyrtools::EncodingName(import.GetUsedEncoding()), shown.c_str(),
                 static_cast<char>(import.GetUsedDecimalMark()), import.GetHeaderLineCount());
    PrintColumns(import, summary);
    return kExitOk;
}

}  // namespace vyr
