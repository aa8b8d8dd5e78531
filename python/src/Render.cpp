#include "Render.h"

#include <pybind11/pybind11.h>

#include <wx/image.h>
#include <wx/mstream.h>

#include "AtomicWrite.h"
#include "Paths.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramExport.h"

namespace py = pybind11;

namespace {

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

// The picture's look (options, main unit) while it paints; the diagram's own afterwards.
class LookWhilePainting {
public:
    LookWhilePainting(VyrDiagram* diagram, const PictureOptions& look)
        : m_pDiagram(diagram), m_iOptions(diagram->GetOptions()), m_sUy(diagram->GetUy()) {
        wxString reason;
        if (!vyrtools::ApplyPictureOptions(*diagram, look, reason))
            throw py::value_error(std::string(reason.utf8_str()));
    }
    ~LookWhilePainting() {
        if (m_pDiagram->GetUy() != m_sUy)
            m_pDiagram->SetUy(m_sUy);
        m_pDiagram->SetOptions(m_iOptions);
    }
    LookWhilePainting(const LookWhilePainting&) = delete;
    LookWhilePainting& operator=(const LookWhilePainting&) = delete;

private:
    VyrDiagram* m_pDiagram;
    int m_iOptions;
    wxString m_sUy;
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
    for (VyrDiagramExport::Format format :
         {VyrDiagramExport::kFormatPng, VyrDiagramExport::kFormatSvg, VyrDiagramExport::kFormatPdf})
        list += (list.empty() ? "" : ", ") +
                std::string(VyrDiagramExport::GetExtension(format).utf8_str());
    return list;
}

std::vector<unsigned char> RenderPng(VyrBaseData& doc, int diagram, const RenderSize& size,
                                     const PictureOptions& look) {
    ActiveWhilePainting active(doc);
    LookWhilePainting looking(doc.GetDiagram(diagram), look);
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

void RenderToFile(VyrBaseData& doc, int diagram, const RenderSize& size, const PictureOptions& look,
                  const wxString& path) {
    VyrDiagramExport::Format format;
    if (!VyrDiagramExport::GetFormatOfPath(path, &format))
        throw py::value_error("the picture's format follows the file's extension: " +
                              PictureExtensions());
    ActiveWhilePainting active(doc);
    VyrDiagram* painted = doc.GetDiagram(diagram);
    LookWhilePainting looking(painted, look);
    wxString reason;
    if (!vyrtools::WriteSafely(
            path,
            [&](VyrSafeFile& file) {
                return VyrDiagramExport::Save(painted, format, file, size.width, size.height,
                                              size.scale);
            },
            reason))
        ThrowCannotWrite(path, reason);
}
