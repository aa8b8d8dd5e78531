// The lines a line painter draws with the pen selected in the context.
//
// Through a graphics context every DrawLine is a stroke of its own, rasterised and composited
// on its own: an antialiased stroke with round caps costs several microseconds, and a dense
// curve draws a few thousand lines per picture. On an image that qualifies (VyrImageTarget)
// the lines are blended into its pixels instead, each from its shape learnt once: a line with
// integer ends moved by whole pixels covers the same pixels, each by the same fraction, moved
// by those pixels, so its shape depends only on the pen, the antialiasing and (dx, dy), its
// end relative to its start. A shape is learnt by drawing that line with the same renderer,
// pen and antialiasing on a small black image in white, and kept for the thread's later
// pictures. Each line is blended where it comes, in the order of the calls, with the image's
// "over" blend of the pen's opaque colour through the shape's cover, clipped to the context's
// clipping rectangle.
//
// Aliased, a pixel is covered wholly or not at all and the blend is the colour itself: the
// pixels are exactly those of drawing each line. Antialiased, a partly covered pixel may
// differ from the renderer's own blend by a unit of a channel, which no eye sees.
//
// Only lines whose shape is narrow (at most two pixels across in one direction: the
// segments, verticals and horizontals that dense curves are made of) and not too long are
// learnt; any other line, any pen that is not solid and opaque, wider than 4 pixels (or than
// one pixel when antialiased: the renderer rasterises wider caps a little differently from
// one whole-pixel position to the next), and any other context are drawn through DrawLine,
// as they always were.
#ifndef VYRBASE_SRC_DIAGRAM_VYRLINEBATCH_H
#define VYRBASE_SRC_DIAGRAM_VYRLINEBATCH_H

#include <cstdint>
#include <memory>

#include <wx/dc.h>
#include <wx/gdicmn.h>
#include <wx/pen.h>

#include "diagram/VyrImageTarget.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrLineBatch {
public:
    explicit VyrLineBatch(wxDC* dc);
    // Tells the image that its pixels changed.
    ~VyrLineBatch();
    VyrLineBatch(const VyrLineBatch&) = delete;
    VyrLineBatch& operator=(const VyrLineBatch&) = delete;

    // The line from (x1, y1) to (x2, y2) in logical coordinates, as wxDC::DrawLine draws it.
    void Line(int x1, int y1, int x2, int y2);
    void Line(const wxPoint& a, const wxPoint& b) { Line(a.x, a.y, b.x, b.y); }

    // Whether lines are blended into the image (for the tests).
    bool IsStamping() const { return m_bStamping; }

    // A learnt line: the pixels it covers around its start, and by how much.
    struct Shape;

private:
    // The shape of a line from (0, 0) to (dx, dy), learnt or remembered; null when it is not
    // learnt (then the line is drawn).
    const Shape* ShapeOf(int dx, int dy);
    // Draws that line on a small image; null when the picture does not make a shape.
    std::unique_ptr<Shape> Learn(int dx, int dy) const;
    void Draw(int x1, int y1, int x2, int y2);

    wxDC* m_dc;
    bool m_bStamping = false;
    bool m_bDirty = false;  // pixels written since cairo last drew
    VyrImageTarget m_target;
    wxPen m_pen;           // the context's pen, white: what shapes are learnt with
    uint64_t m_iLook = 0;  // pen width, cap, join, antialiasing and offset: part of a shape's key
    uint32_t m_share[256] = {};  // the colour's share of a pixel it covers by 0..255
};

#endif
