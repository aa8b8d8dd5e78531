// Pictures of a diagram as files: PNG through a cairo image, SVG and PDF through cairo's vector
// surfaces (curves as paths, text as glyphs; the PDF embeds its fonts). All work without a
// display. The diagram is painted exactly as a view paints it (Paint), into a plot rectangle that
// fills the picture but for a thin frame; the diagram's own plot rectangle (the view's) is put
// back afterwards.
//
// Every file is written as documents are (VyrSafeFile): into a new file beside the target through
// the library's checked sink, renamed over the target only once it is whole and durable. A
// failure (a full disk, a missing or read-only directory) answers false and leaves the previous
// file byte for byte as it was, and no new file. The overloads taking a VyrSafeFile (not yet
// opened) tell where and why a failure stopped (GetFailedStep, GetError).
//
// Sizes: a picture of width x height is width x height pixels (PNG), user units of one CSS pixel
// (SVG) or points (PDF: one page of width x height points per diagram).
#ifndef VYRBASE_DIAGRAM_VYRDIAGRAMEXPORT_H
#define VYRBASE_DIAGRAM_VYRDIAGRAMEXPORT_H

#include <vector>

#include <wx/gdicmn.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class wxDC;
class wxImage;
class VyrDiagram;
class VyrSafeFile;

class VYRBASE_API VyrDiagramExport {
public:
    // The picture formats, each named by its file extension ("png", "svg", "pdf").
    enum Format { kFormatPng, kFormatSvg, kFormatPdf };

    // The format that `path` asks for by its extension, in any letter case. False (and `format`
    // untouched) for any other extension.
    static bool GetFormatOfPath(const wxString& path, Format* format);
    // The extension of `format`, without the dot.
    static wxString GetExtension(Format format);

    // The plot rectangle used for a picture of width x height pixels at `scale` (1 for screen
    // resolution): the picture less a frame of 10 pixels (times scale).
    static wxRect GetPlotRect(int width, int height, double scale);

    // Fills `dc` (width x height) with the diagram's background and paints the diagram. Fonts
    // and pen widths follow `scale` when it differs from 1. False for a null diagram or a
    // size below 16 pixels.
    static bool PaintOn(wxDC& dc, VyrDiagram* diagram, int width, int height, double scale);
    // Paints into a new RGB picture of width x height pixels.
    static bool PaintToImage(VyrDiagram* diagram, wxImage& image, int width, int height,
                             double scale);

    // Writes the picture in `format`. False for a null diagram, a size below 16 pixels, a
    // scale that is not positive, or a failed write.
    static bool Save(VyrDiagram* diagram, Format format, VyrSafeFile& file, int width, int height,
                     double scale);
    static bool SaveAsPng(VyrDiagram* diagram, const wxString& path, int width, int height,
                          double scale);
    static bool SaveAsSvg(VyrDiagram* diagram, const wxString& path, int width, int height,
                          double scale);
    static bool SaveAsPdf(VyrDiagram* diagram, const wxString& path, int width, int height,
                          double scale);

    // One PDF of one page per diagram, in the order given (a document's two diagrams as two
    // pages). False as Save, and for an empty list or a null diagram in it.
    static bool SaveAsPdfPages(const std::vector<VyrDiagram*>& diagrams, VyrSafeFile& file,
                               int width, int height, double scale);
    static bool SaveAsPdfPages(const std::vector<VyrDiagram*>& diagrams, const wxString& path,
                               int width, int height, double scale);

private:
    // The one way every picture reaches the disk: the format's writer into the sink of `file`.
    static bool Write(const std::vector<VyrDiagram*>& diagrams, Format format, VyrSafeFile& file,
                      int width, int height, double scale);
    // Write through a VyrSafeFile of `path`.
    static bool WriteFile(const std::vector<VyrDiagram*>& diagrams, Format format,
                          const wxString& path, int width, int height, double scale);
};

#endif
