#include <cairo.h>

#include <cstdint>

#include <gtest/gtest.h>

#include <wx/graphics.h>

#include "diagram/VyrSizedGCDC.h"

namespace {

const int kWidth = 200;
const int kHeight = 100;

// A cairo surface of its own with a native context on it, as the SVG and PDF export make.
class NativeSurface {
public:
    NativeSurface()
        : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)),
          cr(cairo_create(surface)) {}
    ~NativeSurface() {
        cairo_destroy(cr);
        cairo_surface_destroy(surface);
    }
    NativeSurface(const NativeSurface&) = delete;
    NativeSurface& operator=(const NativeSurface&) = delete;

    wxGraphicsContext* NewContext() {
        return wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromNativeContext(cr);
    }
    // The red channel of one pixel.
    int Red(int x, int y) {
        cairo_surface_flush(surface);
        const unsigned char* row =
            cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
        const uint32_t pixel = reinterpret_cast<const uint32_t*>(row)[x];
        return (pixel >> 16) & 0xFF;
    }

    cairo_surface_t* surface;
    cairo_t* cr;
};

}  // namespace

TEST(VyrSizedGCDC, KnowsTheSizeOfItsSurface) {
    NativeSurface native;
    VyrSizedGCDC dc(native.NewContext(), wxSize(kWidth, kHeight));
    EXPECT_EQ(wxSize(kWidth, kHeight), dc.GetSize());
}

TEST(VyrSizedGCDC, AClipSetAfterOneWasReleasedIsTheOneAskedFor) {
    // What the axes do in every painting: release the plot's clip to draw the arrow heads,
    // then clip to the plot again. Everything drawn after must still reach the surface.
    NativeSurface native;
    {
        VyrSizedGCDC dc(native.NewContext(), wxSize(kWidth, kHeight));
        dc.SetClippingRegion(wxRect(10, 10, 100, 50));
        dc.DestroyClippingRegion();
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        cairo_clip_extents(native.cr, &x1, &y1, &x2, &y2);
        EXPECT_EQ(0.0, x1);
        EXPECT_EQ(0.0, y1);
        EXPECT_EQ(kWidth, x2);
        EXPECT_EQ(kHeight, y2);

        dc.SetClippingRegion(wxRect(20, 20, 30, 30));
        cairo_clip_extents(native.cr, &x1, &y1, &x2, &y2);
        EXPECT_EQ(20.0, x1);
        EXPECT_EQ(20.0, y1);
        EXPECT_EQ(50.0, x2);
        EXPECT_EQ(50.0, y2);
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(*wxRED_BRUSH);
        dc.DrawRectangle(0, 0, kWidth, kHeight);
        dc.DestroyClippingRegion();
        dc.DrawRectangle(150, 70, 10, 10);
    }
    EXPECT_EQ(255, native.Red(30, 30));
    EXPECT_EQ(0, native.Red(5, 5));
    EXPECT_EQ(0, native.Red(60, 30));
    EXPECT_EQ(255, native.Red(155, 75));
}
