#include "vyrbase/diagram/VyrDiagramExport.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>
#include <zlib.h>

#include <memory>
#include <new>

#include <wx/dcgraph.h>
#include <wx/filename.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/log.h>
#include <wx/stream.h>

#include "diagram/VyrSizedGCDC.h"
#include "file/VyrFileSink.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/file/VyrSafeFile.h"

namespace {

const int kMinimumSide = 16;

typedef std::vector<VyrDiagram*> Diagrams;

// Moves the diagram into the picture's plot rectangle and back into the view's when done, so
// that exporting never disturbs the window showing the diagram.
class PlotRectScope {
public:
    PlotRectScope(VyrDiagram* diagram, wxRect rect) : m_pDiagram(diagram) {
        m_saved = m_pDiagram->GetArea();
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

bool CanPaint(const Diagrams& diagrams, int width, int height, double scale) {
    if (diagrams.empty() || width < kMinimumSide || height < kMinimumSide || !(scale > 0.0))
        return false;
    for (VyrDiagram* diagram : diagrams)
        if (!diagram)
            return false;
    return true;
}

// ---- PNG ------------------------------------------------------------------------------------

// The toolkit's image writer goes on after a failed write and answers success; this stream
// remembers the first failure so that the picture is not taken for written.
class SinkOutputStream : public wxOutputStream {
public:
    explicit SinkOutputStream(VyrFileSink& sink) : m_sink(sink) {}
    bool Failed() const { return m_bFailed; }

protected:
    size_t OnSysWrite(const void* buffer, size_t size) override {
        if (m_bFailed || !m_sink.Write(buffer, size)) {
            m_bFailed = true;
            m_lasterror = wxSTREAM_WRITE_ERROR;
            return 0;
        }
        return size;
    }

private:
    VyrFileSink& m_sink;
    bool m_bFailed = false;
};

// The "sub" row filter of the PNG format, numbered as the PNG library's filter mask numbers it
// (PNG_FILTER_SUB): each byte is coded as its difference from the pixel on its left.
constexpr int kPngFilterSub = 0x10;

bool WritePng(const Diagrams& diagrams, VyrFileSink& sink, int width, int height, double scale) {
    wxImage image;
    if (!VyrDiagramExport::PaintToImage(diagrams.front(), image, width, height, scale))
        return false;
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG))
        wxImage::AddHandler(new wxPNGHandler);
    // A diagram is mostly runs of a few flat colours: the fastest deflate level over the "sub"
    // filter's differences codes them in far less time than the default effort (whose encoding
    // was a fifth of a whole render of a long recording), for a file about half as large again.
    // The pixels are the same.
    image.SetOption(wxIMAGE_OPTION_PNG_COMPRESSION_LEVEL, Z_BEST_SPEED);
    image.SetOption(wxIMAGE_OPTION_PNG_FILTER, kPngFilterSub);
    SinkOutputStream stream(sink);
    const bool saved = image.SaveFile(stream, wxBITMAP_TYPE_PNG);
    return saved && !stream.Failed();
}

// ---- SVG and PDF ----------------------------------------------------------------------------

// The sink of a vector surface, remembering a failed write itself: the surfaces do not report
// every failure in their status (cairo's PDF surface takes a failure of its last write for
// success).
struct SurfaceOutput {
    VyrFileSink& sink;
    bool failed;
};

cairo_status_t WriteToSink(void* closure, const unsigned char* data, unsigned int length) {
    SurfaceOutput& out = *static_cast<SurfaceOutput*>(closure);
    if (out.failed || !out.sink.Write(data, length)) {
        out.failed = true;
        return CAIRO_STATUS_WRITE_ERROR;
    }
    return CAIRO_STATUS_SUCCESS;
}

cairo_surface_t* MakeSvgSurface(SurfaceOutput& out, int width, int height) {
    cairo_surface_t* surface =
        cairo_svg_surface_create_for_stream(&WriteToSink, &out, width, height);
    // A picture of width x height pixels, as the PNG: the surface's default unit is the point,
    // which viewers show a third larger.
    cairo_svg_surface_set_document_unit(surface, CAIRO_SVG_UNIT_PX);
    return surface;
}

cairo_surface_t* MakePdfSurface(SurfaceOutput& out, int width, int height) {
    cairo_surface_t* surface =
        cairo_pdf_surface_create_for_stream(&WriteToSink, &out, width, height);
    cairo_pdf_surface_set_metadata(surface, CAIRO_PDF_METADATA_CREATOR, "VyrBase");
    return surface;
}

// Paints each diagram on a page of its own.
bool PaintPages(cairo_surface_t* surface, const Diagrams& diagrams, int width, int height,
                double scale) {
    for (VyrDiagram* diagram : diagrams) {
        cairo_t* cr = cairo_create(surface);
        bool painted = false;
        {
            wxGraphicsContext* gc =
                wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromNativeContext(cr);
            if (gc) {
                // The device context owns the graphics context and lets it go first.
                VyrSizedGCDC dc(gc, wxSize(width, height));
                painted = VyrDiagramExport::PaintOn(dc, diagram, width, height, scale);
            }
        }
        if (painted)
            cairo_show_page(cr);
        painted = painted && cairo_status(cr) == CAIRO_STATUS_SUCCESS;
        cairo_destroy(cr);
        if (!painted)
            return false;
    }
    return true;
}

bool WriteVector(cairo_surface_t* (*makeSurface)(SurfaceOutput&, int, int),
                 const Diagrams& diagrams, VyrFileSink& sink, int width, int height, double scale) {
    SurfaceOutput out{sink, false};
    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        makeSurface(out, width, height), &cairo_surface_destroy);
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return false;
    const bool painted = PaintPages(surface.get(), diagrams, width, height, scale);
    // The vector surfaces write most of the file when they are finished.
    cairo_surface_finish(surface.get());
    return painted && !out.failed && cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
}

bool WriteSvg(const Diagrams& diagrams, VyrFileSink& sink, int width, int height, double scale) {
    return WriteVector(&MakeSvgSurface, diagrams, sink, width, height, scale);
}

bool WritePdf(const Diagrams& diagrams, VyrFileSink& sink, int width, int height, double scale) {
    return WriteVector(&MakePdfSurface, diagrams, sink, width, height, scale);
}

// ---- The formats ----------------------------------------------------------------------------

typedef bool (*PictureWriter)(const Diagrams&, VyrFileSink&, int, int, double);

struct FormatEntry {
    VyrDiagramExport::Format format;
    const char* extension;
    PictureWriter write;
    // Whether one file holds several diagrams (one a page).
    bool pages;
};

const FormatEntry kFormats[] = {
    {VyrDiagramExport::kFormatPng, "png", &WritePng, false},
    {VyrDiagramExport::kFormatSvg, "svg", &WriteSvg, false},
    {VyrDiagramExport::kFormatPdf, "pdf", &WritePdf, true},
};

const FormatEntry* FindFormat(VyrDiagramExport::Format format) {
    for (const FormatEntry& entry : kFormats)
        if (entry.format == format)
            return &entry;
    return nullptr;
}

}  // namespace

bool VyrDiagramExport::GetFormatOfPath(const wxString& path, Format* format) {
    const wxString extension = wxFileName(path).GetExt().Lower();
    for (const FormatEntry& entry : kFormats) {
        if (extension == entry.extension) {
            if (format)
                *format = entry.format;
            return true;
        }
    }
    return false;
}

wxString VyrDiagramExport::GetExtension(Format format) {
    const FormatEntry* entry = FindFormat(format);
    return entry ? wxString(entry->extension) : wxString();
}

wxRect VyrDiagramExport::GetPlotRect(int width, int height, double scale) {
    // The axes are drawn through the origin and their labels move inside the plot when there is
    // no room outside (clipping is the plot rectangle), so a thin frame is all the margin needed.
    const int margin = Scaled(10, scale);
    return wxRect(margin, margin, width - 2 * margin, height - 2 * margin);
}

bool VyrDiagramExport::PaintOn(wxDC& dc, VyrDiagram* diagram, int width, int height, double scale) {
    if (!CanPaint(Diagrams{diagram}, width, height, scale))
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
    if (!CanPaint(Diagrams{diagram}, width, height, scale))
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

bool VyrDiagramExport::Write(const std::vector<VyrDiagram*>& diagrams, Format format,
                             VyrSafeFile& file, int width, int height, double scale) {
    const FormatEntry* entry = FindFormat(format);
    if (!entry || !CanPaint(diagrams, width, height, scale) ||
        (diagrams.size() > 1 && !entry->pages))
        return false;
    // Failures are answered as false; the toolkit's own messages would need a display.
    wxLogNull quiet;
    return file.WriteSink(
        [&](VyrFileSink& sink) { return entry->write(diagrams, sink, width, height, scale); });
}

bool VyrDiagramExport::WriteFile(const std::vector<VyrDiagram*>& diagrams, Format format,
                                 const wxString& path, int width, int height, double scale) {
    try {
        VyrSafeFile file(path);
        return Write(diagrams, format, file, width, height, scale);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool VyrDiagramExport::Save(VyrDiagram* diagram, Format format, VyrSafeFile& file, int width,
                            int height, double scale) {
    return Write(Diagrams{diagram}, format, file, width, height, scale);
}

bool VyrDiagramExport::SaveAsPng(VyrDiagram* diagram, const wxString& path, int width, int height,
                                 double scale) {
    return WriteFile(Diagrams{diagram}, kFormatPng, path, width, height, scale);
}

bool VyrDiagramExport::SaveAsSvg(VyrDiagram* diagram, const wxString& path, int width, int height,
                                 double scale) {
    return WriteFile(Diagrams{diagram}, kFormatSvg, path, width, height, scale);
}

bool VyrDiagramExport::SaveAsPdf(VyrDiagram* diagram, const wxString& path, int width, int height,
                                 double scale) {
    return WriteFile(Diagrams{diagram}, kFormatPdf, path, width, height, scale);
}

bool VyrDiagramExport::SaveAsPdfPages(const std::vector<VyrDiagram*>& diagrams, VyrSafeFile& file,
                                      int width, int height, double scale) {
    return Write(diagrams, kFormatPdf, file, width, height, scale);
}

bool VyrDiagramExport::SaveAsPdfPages(const std::vector<VyrDiagram*>& diagrams,
                                      const wxString& path, int width, int height, double scale) {
    return WriteFile(diagrams, kFormatPdf, path, width, height, scale);
}
