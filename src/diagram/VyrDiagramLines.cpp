// The line styles of a curve (codes 1 to 9) and the spectrum under line style 4. Every line
// painter draws with the pen that PaintCurve selected and relies on the clipping region.
#include <algorithm>

#include <wx/dc.h>
#include <wx/pen.h>

#include "diagram/VyrCurvePoints.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// Calls draw(p) with the pixel of every drawable point, in order.
template <class Draw>
void ForEachValidPixel(const VyrCurvePoints& points, Draw draw) {
    const int count = points.GetCount();
    for (int i = 0; i < count; ++i)
        if (points.IsValid(i))
            draw(points.Pixel(i));
}

// Joins the valid points in order, stepping over invalid ones. Kept: a previous pixel column
// of -1 means "no previous point", so a point that lands on column -1 starts the line anew.
//
// Consecutive points on one pixel column only draw vertical segments there, whose union is the
// one segment from the lowest to the highest of them; every stroke (round or flat caps) of
// that union covers exactly the pixels of the separate strokes. So each column costs at most
// its incoming segment and one vertical segment, whatever the number of points: aliased output
// is identical to drawing every segment, and a dense recording costs a few primitives per
// pixel column.
void DrawJoinedColumns(wxDC* dc, const VyrCurvePoints& points) {
    const int count = points.GetCount();
    bool haveRun = false;
    wxPoint first, last;  // first and last point of the current column run
    int low = 0, high = 0;
    bool repeated = false;    // the run holds more than one point
    wxPoint previous(-1, 0);  // the last point of the run before (x == -1: none)

    auto flush = [&]() {
        if (!haveRun)
            return;
        if (previous.x != -1)
            dc->DrawLine(previous, first);
        if (repeated && first.x != -1)
            dc->DrawLine(first.x, low, first.x, high);
        previous = last;
    };

    for (int i = 0; i < count; ++i) {
        if (!points.IsValid(i))
            continue;
        const wxPoint p = points.Pixel(i);
        if (haveRun && p.x == first.x) {
            low = std::min(low, p.y);
            high = std::max(high, p.y);
            last = p;
            repeated = true;
            continue;
        }
        flush();
        haveRun = true;
        first = last = p;
        low = high = p.y;
        repeated = false;
    }
    flush();
}

}  // namespace

void VyrDiagram::PaintCurveLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    DrawJoinedColumns(dc, VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}));
}

// Bars: each point's value held from the previous point's column to its own, standing on the
// X axis row. An invalid point breaks the chain; as for style 1, a previous column of -1 means
// none.
void VyrDiagram::PaintCurveHisto(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    const int axisRow = m_ptOrigin.y;
    int previousX = -1;
    for (int i = 0; i < points.GetCount(); ++i) {
        if (!points.IsValid(i)) {
            previousX = -1;
            continue;
        }
        const wxPoint p = points.Pixel(i);
        if (previousX != -1) {
            dc->DrawLine(previousX, p.y, previousX, axisRow);
            dc->DrawLine(p.x, p.y, p.x, axisRow);
            dc->DrawLine(previousX, p.y, p.x, p.y);
        }
        previousX = p.x;
    }
}

// A staircase holding each value until the next point. An invalid point breaks the chain.
void VyrDiagram::PaintCurveLineHV(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    bool havePrevious = false;
    wxPoint previous;
    for (int i = 0; i < points.GetCount(); ++i) {
        if (!points.IsValid(i)) {
            havePrevious = false;
            continue;
        }
        const wxPoint p = points.Pixel(i);
        if (havePrevious) {
            dc->DrawLine(previous.x, previous.y, p.x, previous.y);
            dc->DrawLine(p.x, previous.y, p.x, p.y);
        }
        previous = p;
        havePrevious = true;
    }
}

void VyrDiagram::PaintCurveVSegment(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const int axisRow = m_ptOrigin.y;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}),
                      [&](const wxPoint& p) { dc->DrawLine(p.x, p.y, p.x, axisRow); });
}

void VyrDiagram::PaintCurveHSegment(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const int axisColumn = m_ptOrigin.x;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}),
                      [&](const wxPoint& p) { dc->DrawLine(p.x, p.y, axisColumn, p.y); });
}

void VyrDiagram::PaintCurveHVSegment(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const wxPoint origin = m_ptOrigin;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}), [&](const wxPoint& p) {
        dc->DrawLine(p.x, p.y, p.x, origin.y);
        dc->DrawLine(p.x, p.y, origin.x, p.y);
    });
}

void VyrDiagram::PaintCurveVLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const int top = m_rectPlot.y;
    const int bottom = m_rectPlot.y + m_rectPlot.height - 1;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}),
                      [&](const wxPoint& p) { dc->DrawLine(p.x, top, p.x, bottom); });
}

void VyrDiagram::PaintCurveHLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const int left = m_rectPlot.x;
    const int right = m_rectPlot.x + m_rectPlot.width - 1;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}),
                      [&](const wxPoint& p) { dc->DrawLine(left, p.y, right, p.y); });
}

void VyrDiagram::PaintCurveHVLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const wxRect& r = m_rectPlot;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}), [&](const wxPoint& p) {
        dc->DrawLine(p.x, r.y, p.x, r.y + r.height - 1);
        dc->DrawLine(r.x, p.y, r.x + r.width - 1, p.y);
    });
}

// Each point as a 1-pixel vertical line to the X axis in the colour of its wavelength (the X
// value in nanometres); wavelengths without a colour are skipped.
void VyrDiagram::PaintCurveVSegmentSpectro(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    const VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    const int axisRow = m_ptOrigin.y;
    const wxColour none(0, 0, 0, wxALPHA_TRANSPARENT);
    // Colours and pens are made only when the wavelength changes.
    int wavelength = -2;  // below every wavelength that the clamping below produces
    bool drawable = false;
    wxColour penColour;
    for (int i = 0; i < points.GetCount(); ++i) {
        if (!points.IsValid(i))
            continue;
        // Outside 0..2000 every wavelength is black; clamping first keeps the conversion to
        // int defined for any value (NaN counts as beyond the range).
        const double x = points.X(i);
        const int nm = static_cast<int>(x >= -1.0 ? std::min(x, 2001.0) : -1.0);
        if (nm != wavelength) {
            wavelength = nm;
            const wxColour colour = WaveLengthToRGB(nm, 100.0, false);
            drawable = colour != none;
            if (drawable && (!penColour.IsOk() || colour != penColour)) {
                dc->SetPen(wxPen(colour, 1, wxPENSTYLE_SOLID));
                penColour = colour;
            }
        }
        if (!drawable)
            continue;
        const wxPoint p = points.Pixel(i);
        dc->DrawLine(p.x, p.y, p.x, axisRow);
    }
}
