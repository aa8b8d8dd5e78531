// What the fuzz targets share: the toolkit started once, documents saved into memory files, and
// a description of a document's content that two loads of the same file must agree on.
#ifndef VYR_FUZZ_FUZZSUPPORT_H
#define VYR_FUZZ_FUZZSUPPORT_H

#include <cstddef>
#include <cstdint>
#include <string>

#include <wx/string.h>

class VyrBaseData;

namespace vyrfuzz {

// Starts the toolkit (without a display) once per process.
void StartToolkit();

// An anonymous file in memory, reachable by a path, so that the library's writers (which take
// paths) can be fuzzed without touching a disk.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    bool IsOk() const { return m_iDescriptor >= 0; }
    // "/proc/self/fd/N": opening it opens this file.
    const wxString& GetPath() const { return m_sPath; }
    // The whole content.
    std::string Read() const;

private:
    int m_iDescriptor = -1;
    wxString m_sPath;
};

// The document as Save writes it (empty when the save failed; `ok` receives Save's answer).
std::string SaveToMemory(VyrBaseData& doc, bool* ok);

// A text listing the document's entities by kind, in list order within a kind, with their oid and
// what each carries (numbers bit for bit, texts as held, links by oid), the diagram titles and
// count, and with `unknown` the unknown sections. Those are left out of round trips on purpose: a
// kept section loses the line break after its header at every load ("[X]\r\n\tk" is kept as
// "[X]\n\tk", read back as "[X]\tk", then as "[X]k"), so it changes from one save to the next.
// With `noteNames`, the notes' names: the file does not keep them (the writer makes a note's
// name from its curve and point), so round trips leave them out.
std::string Describe(VyrBaseData& doc, bool unknown = true, bool noteNames = true);

// True when the document is one the library's own operations could have built: every oid
// unique, every curve held by an experiment, every note by a curve or a diagram title, one
// report and one grid at most (the writer writes the document's one of each). Files can state
// anything else (two entities of one oid, a curve no experiment lists, a note naming no curve);
// the writer's output for those is kept as it is (a curve without an experiment is written
// without its vectors, colour and diagrams), so their round trips are not stable and are
// checked only for crashes.
bool IsWellFormed(VyrBaseData& doc);

// True when the writer's output reads back as the document: no text that the writer puts
// between quotes without escaping (curve, experiment and picture names, descriptions, note
// texts, tool labels, grid data, report texts, record texts) holds a double quote or a
// backslash, which the reader takes for the end of the text or for an escape; every curve's
// point and line styles are one hexadecimal digit (0 to 15) and its width 1 to 5, as the style
// fields are read at fixed character positions and the width field (twice the width less 2)
// goes out in hexadecimal and comes back in decimal; and no two curves of one experiment share a
// name, as a curve that no "annotations" table gives notes takes the notes written for its name
// (another curve's, which then change hands at every load). All kept: the format works so.
bool ReadsBackAsWritten(VyrBaseData& doc);

// Stops the run with a message when `condition` is false.
void Check(bool condition, const char* what);
// Stops the run when two descriptions differ, showing the first line where they do.
void CheckSame(const std::string& expected, const std::string& actual, const char* what);

}  // namespace vyrfuzz

#endif
