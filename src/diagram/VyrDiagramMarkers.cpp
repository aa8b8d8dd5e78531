// The six point markers and the bands of an on/off signal (line style 10).
//
// Markers are drawn only inside the plot rectangle and never twice in a row on one pixel; a
// curve with more points than the plot has pixel columns draws each pixel position once at
// most, so a dense recording, smooth or noisy, costs one primitive per distinct visible pixel
// rather than one per point.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <new>
#include <vector>

#include <wx/brush.h>
#include <wx/dc.h>
#include <wx/pen.h>

#include "diagram/VyrCurvePoints.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

enum class Marker { Point, Plus, Cross, Square, Circle, Lozenge };

// How a marker's pen and brush are made; r = curve width + line scale, w = curve width.
struct MarkerTool {
    bool thinPen;   // pen width = line scale (else curve width x line scale)
    bool flatCaps;  // butt caps and mitre joins, so the strokes end exactly where asked
    int brush;      // 0 unchanged, 1 transparent, 2 solid in the curve's colour
};

MarkerTool ToolOf(Marker marker) {
    switch (marker) {
        case Marker::Point:
            return {true, false, 2};
        case Marker::Plus:
        case Marker::Cross:
            return {false, true, 0};
        case Marker::Square:
        case Marker::Lozenge:
            return {false, true, 1};
        case Marker::Circle:
            return {false, false, 1};
    }
    return {false, false, 0};
}

// Draws one marker at p. The "+ 1" ends make the last pixel of each stroke drawn, since a
// device line omits its end point.
template <Marker M>
inline void DrawMarker(wxDC* dc, const wxPoint& p, int r, int w, int lineScale) {
    const int x = p.x;
    const int y = p.y;
    switch (M) {
        case Marker::Point:
            dc->DrawEllipse(x - w, y - w, lineScale + 2 * w, lineScale + 2 * w);
            break;
        case Marker::Plus:
            dc->DrawLine(x - r, y, x + r + 1, y);
            dc->DrawLine(x, y - r, x, y + r + 1);
            break;
        case Marker::Cross:
            dc->DrawLine(x - r, y - r, x + r + 1, y + r + 1);
            dc->DrawLine(x - r, y + r, x + r + 1, y - r - 1);
            break;
        case Marker::Square:
            dc->DrawRectangle(x - r, y - r, 2 * r + 1, 2 * r + 1);
            break;
        case Marker::Circle:
            dc->DrawEllipse(x - r, y - r, 2 * r + 1, 2 * r + 1);
            break;
        case Marker::Lozenge: {
            wxPoint corners[4] = {wxPoint(x, y - r), wxPoint(x - r, y), wxPoint(x, y + r),
                                  wxPoint(x + r, y)};
            dc->DrawPolygon(4, corners, 0, 0, wxODDEVEN_RULE);
            break;
        }
    }
}

// The pixel positions of the plot rectangle that already have their marker: one bit each.
class DrawnPixels {
public:
    // Takes the room for the rectangle's bits; false when it cannot be had (a rectangle of
    // more than 2^31 pixels, or no memory), and then nothing is remembered.
    bool Cover(const wxRect& plot) {
        const int64_t pixels = int64_t(plot.width) * plot.height;
        if (plot.width <= 0 || plot.height <= 0 || pixels > (int64_t(1) << 31))
            return false;
        try {
            m_bits.assign(static_cast<size_t>((pixels + 63) / 64), 0);
        } catch (const std::bad_alloc&) {
            return false;
        }
        m_plot = plot;
        return true;
    }
    // True the first time it is asked for p (a pixel of the rectangle).
    bool First(const wxPoint& p) {
        const size_t at = size_t(p.y - m_plot.y) * size_t(m_plot.width) + size_t(p.x - m_plot.x);
        uint64_t& word = m_bits[at >> 6];
        const uint64_t bit = uint64_t(1) << (at & 63);
        if (word & bit)
            return false;
        word |= bit;
        return true;
    }

private:
    wxRect m_plot;
    std::vector<uint64_t> m_bits;
};

// One pass over the points. A point is drawn when its pixel lies in the plot rectangle and
// differs from the pixel of the last valid point before it (remembered even outside the
// rectangle). Kept: the remembered pixel starts at (0, 0) and only index 0 is exempt, so when
// point 0 is invalid a first valid point exactly on (0, 0) is not drawn.
//
// A marker is the same figure in the same colour wherever it stands: drawn a second time on a
// pixel position it changes no pixel of aliased output. So a curve with more points than the
// plot has columns (where positions come back, noisy data above all) draws each position the
// first time only, in the order the points first reach them: aliased output is identical to
// drawing every marker. A shorter curve is drawn as it comes: clearing the bits of the whole
// rectangle would cost more than its few repeated markers.
template <Marker M>
void DrawMarkers(wxDC* dc, const VyrCurvePoints& points, const wxRect& plot, int r, int w,
                 int lineScale) {
    wxPoint last(0, 0);
    const int count = points.GetCount();
    DrawnPixels drawn;
    const bool once = count > plot.width && drawn.Cover(plot);
    for (int i = 0; i < count; ++i) {
        if (!points.IsValid(i))
            continue;
        const wxPoint p = points.Pixel(i);
        if ((i == 0 || p != last) && plot.Contains(p) && (!once || drawn.First(p)))
            DrawMarker<M>(dc, p, r, w, lineScale);
        last = p;
    }
}

template <Marker M>
void PaintMarkers(wxDC* dc, VyrCourbe* courbe, const wxColour& colour,
                  const VyrWorldTransform& world, const wxRect& plot, int lineScale) {
    if (!dc || !courbe)
        return;
    const MarkerTool tool = ToolOf(M);
    const int w = courbe->GetWidth();
    const int r = w + lineScale;
    wxPen pen(colour, tool.thinPen ? lineScale : w * lineScale, wxPENSTYLE_SOLID);
    if (tool.flatCaps) {
        pen.SetCap(wxCAP_BUTT);
        pen.SetJoin(wxJOIN_MITER);
    }
    dc->SetPen(pen);
    if (tool.brush == 1)
        dc->SetBrush(*wxTRANSPARENT_BRUSH);
    else if (tool.brush == 2)
        dc->SetBrush(wxBrush(colour, wxBRUSHSTYLE_SOLID));

    DrawMarkers<M>(dc, VyrCurvePoints(courbe, world), plot, r, w, lineScale);

    dc->SetPen(wxNullPen);
    if (tool.brush != 0)
        dc->SetBrush(wxNullBrush);
}

// Pixel column of x, safe for the +/- 2 of a band's edges.
int BandColumn(double x, const VyrWorldTransform& world) {
    return VyrSafeCoord(VyrRoundPixel(x * world.ax + world.bx));
}

}  // namespace

void VyrDiagram::PaintCurvePoint(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    // The filled dot would hide under any line; it is drawn for unjoined points only.
    if (!courbe || courbe->GetStyleLiaison() != 0)
        return;
    PaintMarkers<Marker::Point>(dc, courbe, colour, {m_dAx, m_dBx, m_dAy, m_dBy}, m_rectPlot,
                                m_iLineScale);
}

void VyrDiagram::PaintCurvePlus(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    PaintMarkers<Marker::Plus>(dc, courbe, colour, {m_dAx, m_dBx, m_dAy, m_dBy}, m_rectPlot,
                               m_iLineScale);
}

void VyrDiagram::PaintCurveCross(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    PaintMarkers<Marker::Cross>(dc, courbe, colour, {m_dAx, m_dBx, m_dAy, m_dBy}, m_rectPlot,
                                m_iLineScale);
}

void VyrDiagram::PaintCurveSquare(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    PaintMarkers<Marker::Square>(dc, courbe, colour, {m_dAx, m_dBx, m_dAy, m_dBy}, m_rectPlot,
                                 m_iLineScale);
}

void VyrDiagram::PaintCurveCircle(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    PaintMarkers<Marker::Circle>(dc, courbe, colour, {m_dAx, m_dBx, m_dAy, m_dBy}, m_rectPlot,
                                 m_iLineScale);
}

void VyrDiagram::PaintCurveLozenge(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    PaintMarkers<Marker::Lozenge>(dc, courbe, colour, {m_dAx, m_dBx, m_dAy, m_dBy}, m_rectPlot,
                                  m_iLineScale);
}

// The Y values are an on/off signal: a band opens above 0.5 (strictly), holds while the value
// is at least 0.5 and closes below it or at the end of Y. Validity is not consulted, a missing
// X value reads as 0.0. Each band is a 30-pixel rectangle standing on the row of y = 0,
// outlined with the pen that PaintCurve selected.
void VyrDiagram::PaintCurveRepere(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    if (!dc || !courbe || !courbe->GetVy())
        return;
    const VyrVecteur* vx = courbe->GetVx();
    const VyrVecteur* vy = courbe->GetVy();
    const double* ys = vy->GetArea();
    const int count = std::max(0, vy->GetSize());
    const VyrWorldTransform world{m_dAx, m_dBx, m_dAy, m_dBy};
    const int bottom = VyrSafeCoord(VyrRoundPixel(m_dBy));
    const int bandHeight = 30;

    auto xAt = [vx](int i) {
        return (vx && vx->GetArea() && i < vx->GetSize()) ? vx->GetArea()[i] : 0.0;
    };
    auto drawBand = [&](int first, int last) {
        const int left = BandColumn(xAt(first), world) - 2;
        const int right = BandColumn(xAt(last), world) + 2;
        dc->DrawRectangle(left, bottom - bandHeight, right - left, bandHeight);
    };

    dc->SetBrush(wxBrush(colour, wxBRUSHSTYLE_SOLID));
    int start = -1;
    for (int i = 0; i < count; ++i) {
        const double y = ys ? ys[i] : 0.0;
        if (start < 0) {
            if (y > 0.5)
                start = i;
        } else if (!(y >= 0.5)) {
            drawBand(start, i - 1);
            start = -1;
        }
    }
    if (start >= 0)
        drawBand(start, count - 1);
    dc->SetBrush(wxNullBrush);
}
