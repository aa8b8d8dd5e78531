// The plot rectangle and the real-to-pixel transforms, including the per-curve transforms that
// draw a curve of another unit against its own unit's range (secondary axes).
#include "vyrbase/diagram/VyrDiagram.h"

#include <algorithm>

#include "diagram/VyrPixelRound.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// The unit text of a curve's vector; a missing vector reads as the empty unit.
wxString UnitOf(const VyrVecteur* v) {
    return v ? v->GetUnite() : wxString();
}
}  // namespace

void VyrDiagram::Move(wxRect& rect) {
    m_rectArea = rect;
    m_rectPlot = rect;
    m_rectHit = wxRect(rect.x - 6, rect.y - 6, rect.width + 12, rect.height + 12);
    UpdateWorld();
}

void VyrDiagram::UpdateWorld() {
    if (!m_currentScale.IsValid() || m_rectPlot.width <= 0 || m_rectPlot.height <= 0)
        return;
    const int left = m_rectPlot.x;
    const int top = m_rectPlot.y;
    const int right = left + m_rectPlot.width - 1;
    const int bottom = top + m_rectPlot.height - 1;
    const VyrScale& s = m_currentScale;
    m_dAx = (right - left) / (s.GetXmax() - s.GetXmin());
    m_dBx = left - m_dAx * s.GetXmin();
    // Negative: pixel rows grow downwards while values grow upwards.
    m_dAy = (top - bottom) / (s.GetYmax() - s.GetYmin());
    m_dBy = bottom - m_dAy * s.GetYmin();
    m_ptOrigin.x = std::clamp(VyrRoundPixel(m_dBx), left, right);
    m_ptOrigin.y = std::clamp(VyrRoundPixel(m_dBy), top, bottom);
}

wxPoint VyrDiagram::RealToPixel(double x, double y) const {
    return wxPoint(VyrRoundPixel(m_dAx * x + m_dBx), VyrRoundPixel(m_dAy * y + m_dBy));
}

wxRealPoint VyrDiagram::PixelToReal(int px, int py) const {
    return wxRealPoint((px - m_dBx) / m_dAx, (py - m_dBy) / m_dAy);
}

bool VyrDiagram::SetCurrentScaleForUnits(const wxString& unitX, const wxString& unitY) {
    const int type = m_iTypeScale;
    double xmin, xmax, ymin, ymax;
    if (const VyrUnit* u = FindUnitX(unitX)) {
        xmin = m_dZoomKx * u->GetMin(type) + m_dZoomOx;
        xmax = m_dZoomKx * u->GetMax(type) + m_dZoomOx;
    } else {
        // Kept: a unit without a record is shown over -1..1 (under the same zoom).
        xmin = m_dZoomOx - m_dZoomKx;
        xmax = m_dZoomOx + m_dZoomKx;
    }
    if (const VyrUnit* u = FindUnitY(unitY)) {
        ymin = m_dZoomKy * u->GetMin(type) + m_dZoomOy;
        ymax = m_dZoomKy * u->GetMax(type) + m_dZoomOy;
    } else {
        ymin = m_dZoomOy - m_dZoomKy;
        ymax = m_dZoomOy + m_dZoomKy;
    }
    m_currentScale.Set(xmin, xmax, ymin, ymax);
    if (!m_currentScale.IsValid())
        return false;
    UpdateWorld();
    return true;
}

wxPoint VyrDiagram::RealToPixelCourbe(VyrCourbe* courbe, double x, double y) {
    wxPoint result(0, 0);
    if (!courbe)
        return result;
    const VyrScale saved = m_currentScale;
    if (SetCurrentScaleForUnits(UnitOf(courbe->GetVx()), UnitOf(courbe->GetVy())))
        result = RealToPixel(x, y);
    m_currentScale = saved;
    UpdateWorld();
    return result;
}

wxRealPoint VyrDiagram::PixelToRealCourbe(VyrCourbe* courbe, int px, int py) {
    wxRealPoint result(0.0, 0.0);
    if (!courbe)
        return result;
    const VyrScale saved = m_currentScale;
    if (SetCurrentScaleForUnits(UnitOf(courbe->GetVx()), UnitOf(courbe->GetVy())))
        result = PixelToReal(px, py);
    m_currentScale = saved;
    UpdateWorld();
    return result;
}

wxPoint VyrDiagram::ClipPixel(wxPoint p) {
    const int left = m_rectPlot.x;
    const int top = m_rectPlot.y;
    const int right = left + m_rectPlot.width - 1;
    const int bottom = top + m_rectPlot.height - 1;
    p.x = std::min(std::max(p.x, left), right);
    p.y = std::min(std::max(p.y, top), bottom);
    return p;
}
