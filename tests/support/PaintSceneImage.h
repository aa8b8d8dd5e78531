// Template part of PaintScene.h: painting onto a cairo image through wxGCDC.
#ifndef VYR_TESTS_SUPPORT_PAINTSCENEIMAGE_H
#define VYR_TESTS_SUPPORT_PAINTSCENEIMAGE_H

#include <wx/defs.h>

#include <wx/dc.h>
#include <wx/dcgraph.h>
#include <wx/graphics.h>
#include <wx/image.h>

template <class Paint>
wxImage PaintToImage(const wxSize& size, Paint paint, bool antialias) {
    wxImage image(size);
    image.SetRGB(wxRect(size), 255, 255, 255);
    {
        // The context writes the image back when it is destroyed, which the wxGCDC does.
        wxGraphicsContext* gc =
            wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image);
        wxGCDC dc(gc);
        if (!antialias)
            gc->SetAntialiasMode(wxANTIALIAS_NONE);
        paint(dc);
    }
    return image;
}

#endif
