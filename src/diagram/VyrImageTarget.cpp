#include "diagram/VyrImageTarget.h"

#include <cmath>

bool VyrImageTarget::Take(wxDC* dc, const wxColour& colour) {
    wxGraphicsContext* gc = dc ? dc->GetGraphicsContext() : nullptr;
    if (!gc || gc->GetRenderer() != wxGraphicsRenderer::GetCairoRenderer() || !colour.IsOk() ||
        colour.Alpha() != wxALPHA_OPAQUE || dc->GetLogicalFunction() != wxCOPY ||
        gc->GetContentScaleFactor() != 1.0)
        return false;
    cairo_t* cr = static_cast<cairo_t*>(gc->GetNativeContext());
    if (!cr || cairo_status(cr) != CAIRO_STATUS_SUCCESS ||
        cairo_get_operator(cr) != CAIRO_OPERATOR_OVER)
        return false;
    cairo_surface_t* target = cairo_get_target(cr);
    if (cairo_surface_get_type(target) != CAIRO_SURFACE_TYPE_IMAGE)
        return false;
    const cairo_format_t format = cairo_image_surface_get_format(target);
    if (format != CAIRO_FORMAT_ARGB32 && format != CAIRO_FORMAT_RGB24)
        return false;
    cairo_matrix_t m;
    cairo_get_matrix(cr, &m);
    double ox = 0, oy = 0;
    cairo_surface_get_device_offset(target, &ox, &oy);
    const double tx = m.x0 + ox;
    const double ty = m.y0 + oy;
    if (m.xx != 1.0 || m.yy != 1.0 || m.xy != 0.0 || m.yx != 0.0 || tx != std::floor(tx) ||
        ty != std::floor(ty) || std::fabs(tx) > 1e6 || std::fabs(ty) > 1e6)
        return false;
    shift = wxPoint(static_cast<int>(tx), static_cast<int>(ty));
    clip =
        wxRect(0, 0, cairo_image_surface_get_width(target), cairo_image_surface_get_height(target));
    cairo_rectangle_list_t* clips = cairo_copy_clip_rectangle_list(cr);
    bool ok = clips && clips->status == CAIRO_STATUS_SUCCESS && clips->num_rectangles <= 1;
    if (ok && clips->num_rectangles == 1) {
        // In user space; whole pixels only, else its edges would be blended.
        const cairo_rectangle_t& c = clips->rectangles[0];
        ok = c.x == std::floor(c.x) && c.y == std::floor(c.y) && c.width == std::floor(c.width) &&
             c.height == std::floor(c.height) && std::fabs(c.x) < 1e6 && std::fabs(c.y) < 1e6 &&
             c.width < 1e6 && c.height < 1e6;
        if (ok)
            clip.Intersect(wxRect(static_cast<int>(c.x) + shift.x, static_cast<int>(c.y) + shift.y,
                                  static_cast<int>(c.width), static_cast<int>(c.height)));
    }
    cairo_rectangle_list_destroy(clips);
    if (!ok)
        return false;
    surface = target;
    data = cairo_image_surface_get_data(target);
    stride = cairo_image_surface_get_stride(target);
    antialias = gc->GetAntialiasMode();
    offset = gc->OffsetEnabled();
    colourBytes[0] = colour.Blue();
    colourBytes[1] = colour.Green();
    colourBytes[2] = colour.Red();
    colourBytes[3] = 255;
    return data != nullptr;
}
