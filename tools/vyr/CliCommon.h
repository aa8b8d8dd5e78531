// What every vyr command shares: exit codes, messages a person can act on, opening documents,
// and writing output files without ever destroying an existing one on failure.
#ifndef VYR_TOOLS_CLICOMMON_H
#define VYR_TOOLS_CLICOMMON_H

#include <functional>
#include <string>
#include <vector>

#include <wx/string.h>

class VyrBaseData;
class VyrSafeFile;

namespace vyr {

// Exit codes: each kind of failure has its own, so scripts can tell them apart.
enum ExitCode {
    kExitOk = 0,
    kExitUsage = 2,   // unknown command or option, missing argument
    kExitInput = 3,   // an input file cannot be opened or read
    kExitFormat = 4,  // an input file is not a document (or big-endian text)
    kExitOutput = 5,  // an output file cannot be written
};

// The sample document used when a command is given no file.
wxString DefaultSample();

// Prints "vyr: <subject>: <reason>" on stderr.
void Complain(const wxString& subject, const wxString& reason);

// The encoding a document file is read with, as Load detects it ("UTF-16LE", "UTF-8 with
// mark", "UTF-8", "ISO-8859-1"), or "big-endian UTF-16" which Load refuses.
wxString DetectEncoding(const std::vector<unsigned char>& bytes);

// Loads `path` into `doc`. On failure complains (naming the file and the reason) and answers the
// exit code; kExitOk on success. `encoding` receives the detected encoding when not null.
int OpenDocument(const wxString& path, VyrBaseData& doc, wxString* encoding = nullptr);

// Writes `target` through `write` (which writes the file it is given) into a new file beside
// the target, renamed over it only when `write` succeeded: a failure never destroys or
// half-writes an existing file. Complains and answers kExitOutput on failure.
int WriteAtomically(const wxString& target, const std::function<bool(const wxString&)>& write);

// Writes `target` through `save`, which writes into the VyrSafeFile it is given as the library's
// writers do (pictures: VyrDiagramExport::Save), complaining with the system's reason on failure.
int WriteSafely(const wxString& target, const std::function<bool(VyrSafeFile&)>& save);

// Saves `doc` to `target` in the same way (VyrBaseData::SaveSafely), complaining on failure.
int SaveDocument(const wxString& target, VyrBaseData& doc);

// The output name that stands for standard output ("-o -").
extern const char* const kStandardOutput;

// Writes the output through `write` (which writes the file it is given) into a temporary file,
// then copies it to standard output. Complains and answers kExitOutput when `write` failed or
// standard output refused the bytes (a full disk, a closed pipe).
int WriteToStandardOutput(const std::function<bool(const wxString&)>& write);

// An output that the user did not name (-o) never replaces a file: when `target` exists and
// `force` is false, complains with a message naming -o and --force and answers kExitOutput;
// kExitOk otherwise.
int CheckDefaultOutput(const wxString& target, bool force);

// Whether both paths exist and name the same file, however they are spelt (relative or
// absolute, through symbolic or hard links).
bool IsSameFile(const wxString& a, const wxString& b);

}  // namespace vyr

#endif
