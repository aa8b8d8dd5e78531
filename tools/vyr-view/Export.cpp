#include "Export.h"

#include <functional>
#include <iterator>

#include <wx/filename.h>

#include "AtomicWrite.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagramExport.h"

namespace {
const char* const kExtensions[] = {"png", "svg", "csv"};
}

wxString ExportWildcard() {
    return "PNG picture (*.png)|*.png|SVG picture (*.svg)|*.svg|CSV data (*.csv)|*.csv";
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
    const wxString ext = wxFileName(path).GetExt().Lower();
    std::function<bool(const wxString&)> write;
    if (ext == "png")
        write = [&](const wxString& out) {
            return VyrDiagramExport::SaveAsPng(diagram, out, size.x, size.y, 1.0);
        };
    else if (ext == "svg")
        write = [&](const wxString& out) {
            return VyrDiagramExport::SaveAsSvg(diagram, out, size.x, size.y, 1.0);
        };
    else if (ext == "csv")
        write = [&](const wxString& out) { return data.SaveAsCsvUTF8(out); };
    else {
        reason = "cannot export: the name must end in .png, .svg or .csv";
        return false;
    }
    return vyrtools::WriteAtomically(path, write, reason);
}
