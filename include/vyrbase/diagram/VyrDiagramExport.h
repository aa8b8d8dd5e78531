// Pictures of a diagram as files: PNG through a cairo image, SVG through cairo's SVG surface.
// Both work without a display. The diagram is painted exactly as a view paints it (Paint), into a
// plot rectangle that fills the picture but for a thin frame; the diagram's own plot rectangle
// (the view's) is put back afterwards.
#ifndef VYRBASE_DIAGRAM_VYRDIAGRAMEXPORT_H
#define VYRBASE_DIAGRAM_VYRDIAGRAMEXPORT_H

#include <wx/gdicmn.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"

class wxDC;
class wxImage;
class VyrDiagram;

class VYRBASE_API VyrDiagramExport {
public:
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
    // Writes the picture as PNG. False when painting or writing fails.
    static bool SaveAsPng(VyrDiagram* diagram, const wxString& path, int width, int height,
                          double scale);
    // Writes the picture as SVG (width x height user units). False when painting or writing
    // fails.
    static bool SaveAsSvg(VyrDiagram* diagram, const wxString& path, int width, int height,
                          double scale);
};

#endif
