#include "Export.h"

#include <iterator>

#include <wx/filename.h>

#include "AtomicWrite.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagramExport.h"
#include "vyrbase/file/VyrTableExport.h"

namespace {
// In the order of the dialog's filters.
const char* const kExtensions[] = {"png", "svg", "pdf", "csv"};
}  // namespace

wxString ExportWildcard() {
    return "PNG picture (*.png)|*.png|SVG picture (*.svg)|*.svg|PDF document (*.pdf)|*.pdf|"
           "CSV data (*.csv)|*.csv";
}

wxString WithExportExtension(const wxString& path, int filterIndex) {
    const wxString ext = wxFileName(path).GetExt().Lower();
    for (const char* known : kExtensions)
        if (ext == known)
            return path;
    if (filterIndex < 0 || filterIndex >= static_cast<int>(std::size(kExtensions)))
        return path;
    return path + "." + kExtensions[filterIndex];
}

bool ExportDocument(VyrBaseData& data, VyrDiagram* diagram, const wxString& path, wxSize size,
                    wxString& reason) {
    VyrDiagramExport::Format format;
    if (VyrDiagramExport::GetFormatOfPath(path, &format))
        return vyrtools::WriteSafely(
            path,
            [&](VyrSafeFile& file) {
                return VyrDiagramExport::Save(diagram, format, file, size.x, size.y, 1.0);
            },
            reason);
    // The lossless table: every curve with its own abscissa, every number exact, invalid
    // points as empty cells.
    if (wxFileName(path).GetExt().Lower() == "csv")
        return vyrtools::WriteAtomically(
            path, [&](const wxString& out) { return VyrTableExport().SaveFile(data, out); },
            reason);
    reason = "cannot export: the name must end in .png, .svg, .pdf or .csv";
    return false;
}
