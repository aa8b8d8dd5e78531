// File > Export: a picture of a diagram (PNG, SVG, PDF) or the document's measured data (CSV),
// written through the same library calls as the command-line tool and, like it, atomically.
#ifndef VYR_VIEW_EXPORT_H
#define VYR_VIEW_EXPORT_H

#include <wx/gdicmn.h>
#include <wx/string.h>

class VyrBaseData;
class VyrDiagram;

// The file dialog's wildcard: PNG, SVG, PDF, CSV, in that order.
wxString ExportWildcard();
// `path` with the extension of the dialog's filter `index` when it has none of the four.
wxString WithExportExtension(const wxString& path, int filterIndex);
// Writes `path` by its extension (png, svg, pdf, csv; any letter case): a picture of `diagram` of
// `size` pixels, or the data of `data` as CSV. False with a reason when the extension is
// unknown, the size too small, or writing failed; an existing file is then left as it was.
bool ExportDocument(VyrBaseData& data, VyrDiagram* diagram, const wxString& path, wxSize size,
                    wxString& reason);

#endif
