#include "Render.h"

#include <pybind11/pybind11.h>

#include <wx/filename.h>
#include <wx/image.h>
#include <wx/mstream.h>

#include "AtomicWrite.h"
#include "Paths.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramExport.h"

namespace py = pybind11;

namespace {

// One row per picture format a file can be written in, found by the file's extension.
struct PictureFormat {
    const char* extension;
    bool (*save)(VyrDiagram* diagram, const wxString& path, int width, int height, double scale);
};

const PictureFormat kPictureFormats[] = {
    {"png", &VyrDiagramExport::SaveAsPng},
    {"svg", &VyrDiagramExport::SaveAsSvg},
};

const PictureFormat* FindFormat(const wxString& extension) {
    for (const PictureFormat& format : kPictureFormats)
        if (extension == format.extension)
            return &format;
    return nullptr;
}

// Interval tools are drawn from the active document: this one is active while it paints, and
// the one that was active before is put back however the painting ends.
class ActiveWhilePainting {
public:
    explicit ActiveWhilePainting(VyrBaseData& doc) : m_pBefore(VyrBaseData::GetActiveBase()) {
        VyrBaseData::SetActiveBase(&doc);
    }
    ~ActiveWhilePainting() { VyrBaseData::SetActiveBase(m_pBefore); }
    ActiveWhilePainting(const ActiveWhilePainting&) = delete;
    ActiveWhilePainting& operator=(const ActiveWhilePainting&) = delete;

private:
    VyrBaseData* m_pBefore;
};

}  // namespace

void CheckRenderArguments(const RenderSize& size, int diagram) {
    // The limits of `vyr render`.
    if (size.width < 16 || size.height < 16 || size.width > 20000 || size.height > 20000)
        throw py::value_error("size wants (width, height), each from 16 to 20000 pixels");
    if (!(size.scale >= 0.25 && size.scale <= 8.0))
        throw py::value_error("scale wants a number from 0.25 to 8");
    if (diagram != 0 && diagram != 1)
        throw py::value_error("diagram wants 0 or 1");
}

std::string PictureExtensions() {
    std::string list;
    for (const PictureFormat& format : kPictureFormats)
        list += (list.empty() ? "" : ", ") + std::string(format.extension);
    return list;
}

std::vector<unsigned char> RenderPng(VyrBaseData& doc, int diagram, const RenderSize& size) {
    ActiveWhilePainting active(doc);
    wxImage image;
    if (!VyrDiagramExport::PaintToImage(doc.GetDiagram(diagram), image, size.width, size.height,
                                        size.scale))
        throw std::runtime_error("the diagram could not be painted");
    wxMemoryOutputStream out;
    if (!image.SaveFile(out, wxBITMAP_TYPE_PNG))
        throw std::runtime_error("the picture could not be encoded as PNG");
    std::vector<unsigned char> bytes(out.GetLength());
    out.CopyTo(bytes.data(), bytes.size());
    return bytes;
}

void RenderToFile(VyrBaseData& doc, int diagram, const RenderSize& size, const wxString& path) {
    const PictureFormat* format = FindFormat(wxFileName(path).GetExt().Lower());
    if (!format)
        throw py::value_error("the picture's format follows the file's extension: " +
                              PictureExtensions());
    ActiveWhilePainting active(doc);
    VyrDiagram* painted = doc.GetDiagram(diagram);
    wxString reason;
    if (!vyrtools::WriteAtomically(
            path,
            [&](const wxString& file) {
                return format->save(painted, file, size.width, size.height, size.scale);
            },
            reason))
        ThrowCannotWrite(path, reason);
}
