// Importing a text table as the tools do it.
#include "TableImporting.h"

#include <wx/filename.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrPalette.h"

namespace vyrtools {

namespace {

struct Named {
    const char* name;
    int value;
};

// The spellings each setting takes, lower case.
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

}  // namespace

wxString TableRefusal(VyrTableImport::Error error, size_t line) {
    const wxString at = wxString::Format("line %zu: ", line);
    switch (error) {
        case VyrTableImport::kErrorEmpty:
            return "not a table: the file is empty";
        case VyrTableImport::kErrorBinary:
            return "not a table: binary data (a zero byte)";
        case VyrTableImport::kErrorEncoding:
            return "not a table: the bytes are not in the encoding given";
        case VyrTableImport::kErrorLineTooLong:
            return "not a table: " + at + "longer than 1 MiB";
        case VyrTableImport::kErrorTooManyCells:
            return "not a table: " + at + "more than 16384 cells";
        case VyrTableImport::kErrorNoNumericRow:
            return "not a table: no row of numbers";
        case VyrTableImport::kErrorMemory:
            return "not enough memory for the table";
        default:
            return "cannot read the table";
    }
}

bool SetEncodingByName(VyrTableImport& import, const wxString& name) {
    const wxString lower = name.Lower();
    for (const Named& n : kEncodings)
        if (lower == n.name) {
            import.SetEncoding(static_cast<VyrTableImport::Encoding>(n.value));
            return true;
        }
    return false;
}

bool SetSeparatorByName(VyrTableImport& import, const wxString& name) {
    wchar_t separator = name.length() == 1 ? static_cast<wchar_t>(name[0].GetValue()) : 0;
    const wxString lower = name.Lower();
    for (const Named& n : kSeparators)
        if (lower == n.name)
            separator = static_cast<wchar_t>(n.value);
    return separator != 0 && import.SetSeparator(separator);
}

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

LoadResult ImportTable(const wxString& path, VyrTableImport& import, VyrBaseData& doc,
                       wxString& reason) {
    if (import.ImportFile(doc, path)) {
        // Each column's curve in the next colour that colour-blind readers tell from the others,
        // rather than the library's red for every one.
        int made = 0;
        wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
        while (node)
            if (VyrCourbe* courbe = doc.GetNextCourbe(&node))
                courbe->SetColor(VyrPalette::GetColour(made++));
        return LoadResult::Ok;
    }
    if (import.GetError() == VyrTableImport::kErrorCannotRead) {
        reason = wxFileName::DirExists(path)    ? "cannot open: Is a directory"
                 : wxFileName::FileExists(path) ? "cannot read"
                                                : "cannot open: No such file or directory";
        return LoadResult::CannotRead;
    }
    reason = TableRefusal(import.GetError(), import.GetErrorLine());
    return LoadResult::NotADocument;
}

bool IsTablePath(const wxString& path) {
    const wxString ext = wxFileName(path).GetExt().Lower();
    return ext == "csv" || ext == "txt" || ext == "tsv" || ext == "dat";
}

}  // namespace vyrtools
