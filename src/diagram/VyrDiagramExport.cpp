#include "vyrbase/diagram/VyrDiagramExport.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <memory>

#include <wx/dcgraph.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/log.h>

#include "vyrbase/diagram/VyrDiagram.h"

namespace {

const int kMinimumSide = 16;

// Moves the diagram into the picture's plot rectangle and back into the view's when done, so
// that exporting never disturbs the window showing the diagram.
class PlotRectScope {
public:
    PlotRectScope(VyrDiagram* diagram, wxRect rect) : m_pDiagram(diagram) {
        m_pDiagram->GetRect(m_saved);
        m_pDiagram->Move(rect);
    }
    ~PlotRectScope() { m_pDiagram->Move(m_saved); }

private:
    VyrDiagram* m_pDiagram;
    wxRect m_saved;
};

int Scaled(int pixels, double scale) {
    return static_cast<int>(pixels * (scale > 0.0 ? scale : 1.0));
}

}  // namespace

wxRect VyrDiagramExport::GetPlotRect(int width, int height, double scale) {
    // The axes are drawn through the origin and their labels move inside the plot when there is
    // no room outside (clipping is the plot rectangle), so a thin frame is all the margin needed.
    const int margin = Scaled(10, scale);
    return wxRect(margin, margin, width - 2 * margin, height - 2 * margin);
}

bool VyrDiagramExport::PaintOn(wxDC& dc, VyrDiagram* diagram, int width, int height,
                               double scale) {
    if (!diagram || width < kMinimumSide || height < kMinimumSide || !(scale > 0.0))
        return false;
    dc.SetBackground(wxBrush(diagram->GetBackgroundColour()));
    dc.Clear();
    PlotRectScope scope(diagram, GetPlotRect(width, height, scale));
    const bool scaled = scale != 1.0;
    diagram->Paint(&dc, scaled, false, false, scale, nullptr, false);
    return true;
}

bool VyrDiagramExport::PaintToImage(VyrDiagram* diagram, wxImage& image, int width, int height,
                                    double scale) {
    if (!diagram || width < kMinimumSide || height < kMinimumSide)
        return false;
    image.Create(width, height, false);
    if (!image.IsOk())
        return false;
    wxGraphicsContext* gc = wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image);
    if (!gc)
        return false;
    // The context writes its pixels back into the image when the device context goes away.
    wxGCDC dc(gc);
    return PaintOn(dc, diagram, width, height, scale);
}

bool VyrDiagramExport::SaveAsPng(VyrDiagram* diagram, const wxString& path, int width, int height,
                                 double scale) {
    wxImage image;
    if (!PaintToImage(diagram, image, width, height, scale))
        return false;
    // A failed write answers false; the toolkit's own message would need a display to show.
    wxLogNull quiet;
    return image.SaveFile(path, wxBITMAP_TYPE_PNG);
}

bool VyrDiagramExport::SaveAsSvg(VyrDiagram* diagram, const wxString& path, int width, int height,
                                 double scale) {
    if (!diagram || width < kMinimumSide || height < kMinimumSide)
        return false;
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        cairo_svg_surface_create(path.utf8_str(), width, height), &cairo_surface_destroy);
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return false;
    cairo_t* cr = cairo_create(surface.get());
    bool painted = false;
    {
        wxGraphicsContext* gc =
            wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromNativeContext(cr);
        if (gc) {
            wxGCDC dc(gc);
            painted = PaintOn(dc, diagram, width, height, scale);
        }
    }
    cairo_destroy(cr);
    cairo_surface_finish(surface.get());
    return painted && cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
}
