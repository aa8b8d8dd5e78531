// The raster image behind a device context, for painters that blend learnt figures into its
// pixels instead of drawing them through the toolkit (markers, the lines of a dense curve).
//
// Only an image surface of 32-bit pixels drawn through cairo, with a whole-pixel translation,
// no content scaling, no clipping other than one rectangle of whole pixels, the default "over"
// operator, wxCOPY and an opaque colour qualifies; any other context (a vector surface, a printer,
// a scaled one) has its figures drawn.
#ifndef VYRBASE_SRC_DIAGRAM_VYRIMAGETARGET_H
#define VYRBASE_SRC_DIAGRAM_VYRIMAGETARGET_H

#include <cstdint>

#include <cairo.h>

#include <wx/colour.h>
#include <wx/dc.h>
#include <wx/gdicmn.h>
#include <wx/graphics.h>

struct VyrImageTarget {
    // Takes the image behind dc for figures of `colour`; false when it does not qualify.
    bool Take(wxDC* dc, const wxColour& colour);

    // Our writes into the pixels are done: the surface learns that its memory changed.
    void MarkDirty() const { cairo_surface_mark_dirty(surface); }
    // Cairo's own drawing is done: its pending operations reach the memory.
    void Flush() const { cairo_surface_flush(surface); }

    // The pixel at device (x, y) (inside the image).
    uint8_t* At(int x, int y) const { return data + ptrdiff_t(y) * stride + ptrdiff_t(x) * 4; }

    cairo_surface_t* surface = nullptr;
    uint8_t* data = nullptr;
    int stride = 0;
    wxPoint shift;  // device position of logical (0, 0)
    wxRect clip;    // device pixels that may be written
    wxAntialiasMode antialias = wxANTIALIAS_DEFAULT;
    // Whether the context moves thin lines by half a pixel onto pixel centres (a context made
    // over a window's or a bitmap's DC does, one made over an image need not): the figures are
    // learnt with the same setting, else a line covers two half pixels instead of one whole.
    bool offset = false;
    uint8_t colourBytes[4] = {0, 0, 0, 255};  // in the image's byte order: blue, green, red, alpha
};

#endif
