// Importing a text table as the tools do it: the spellings of the settings that the command
// line, Python and the viewer take, and a reason a person can act on when a table is refused.
#ifndef VYR_TOOLS_COMMON_TABLEIMPORTING_H
#define VYR_TOOLS_COMMON_TABLEIMPORTING_H

#include <wx/string.h>

#include "DocumentLoading.h"
#include "vyrbase/file/VyrTableImport.h"

class VyrBaseData;

namespace vyrtools {

// "utf-8", "utf-16", "utf-16le", "utf-16be", "iso-8859-1" and their other spellings (any case)
// set the encoding; false for a name not known.
bool SetEncodingByName(VyrTableImport& import, const wxString& name);
// One character, or "tab", "\t", "blank", "space" (any case); false for anything the import
// refuses.
bool SetSeparatorByName(VyrTableImport& import, const wxString& name);
// Why a table was refused, as a person reads it ("not a table: no row of numbers"); `line` is
// the line at fault where the error names one.
wxString TableRefusal(VyrTableImport::Error error, size_t line = 0);
// The name of an encoding as the summaries show it ("UTF-8", "UTF-16LE"...).
const char* EncodingName(VyrTableImport::Encoding encoding);

// Imports the table `path` into `doc`. On failure `reason` says why ("cannot open: No such file
// or directory", "not a table: no row of numbers") and the result tells a file that cannot be
// read (CannotRead) from one that is no table (NotADocument).
LoadResult ImportTable(const wxString& path, VyrTableImport& import, VyrBaseData& doc,
                       wxString& reason);

// Whether a file is opened as a table rather than as a document: by its extension (.csv,
// .txt, .tsv, .dat, any case).
bool IsTablePath(const wxString& path);

}  // namespace vyrtools

#endif
