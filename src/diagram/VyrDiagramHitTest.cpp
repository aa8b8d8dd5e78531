// What lies under the mouse: the diagram, a curve and its point, an axis or an axis arrow. Each
// curve is measured in pixels under the range of its own units, exactly as it was painted.
#include "vyrbase/diagram/VyrDiagram.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

#include "diagram/VyrCurvePoints.h"
#include "diagram/VyrDiagramScaleGuard.h"
#include "diagram/VyrPixelDistance.h"

namespace {

// Axes and arrows are caught within this many pixels (strictly less).
const int kAxisTolerance = 25;

// Calls f(index, pixel) for every drawable point of the curve, in index order, with the
// painters' own point reader, so that a point is hit exactly where it was drawn. The diagram's
// transform must already be the curve's.
template <class F>
void ForEachValidPixel(const VyrCurvePoints& points, F f) {
    for (int i = points.Begin(); i < points.End(); i = points.Next(i))
        if (points.IsValid(i))
            f(i, points.Pixel(i));
}

template <class F>
void ForEachValidPixel(const VyrWorldTransform& world, VyrCourbe* courbe, F f) {
    ForEachValidPixel(VyrCurvePoints(courbe, world), f);
}

}  // namespace

bool VyrDiagram::SetCurrentScaleForCourbe(VyrCourbe* courbe) {
    if (!courbe || !courbe->GetVx() || !courbe->GetVy())
        return false;
    return SetCurrentScaleForUnits(courbe->GetVx()->GetUnite(), courbe->GetVy()->GetUnite());
}

VyrDiagram* VyrDiagram::HitTestDiagram(const wxPoint& p) {
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!base)
        return nullptr;
    for (int index = 0; index < 2; ++index) {
        VyrDiagram* diagram = base->GetDiagram(index);
        if (diagram && diagram->HitTestPoint(p))
            return diagram;
    }
    return nullptr;
}

bool VyrDiagram::HitTestPoint(wxPoint p) {
    return m_rectHit.Contains(p);
}

int VyrDiagram::FindPoint(VyrCourbe* courbe, int maxDist2, wxPoint p, int* dist2) {
    // A negative tolerance means "no limit": the nearest valid point whatever its distance.
    const int limit = maxDist2 < 0 ? INT_MAX : maxDist2;
    int best = -1;
    int bestDist = INT_MAX;
    if (courbe) {
        VyrDiagramScaleGuard guard(*this);
        if (SetCurrentScaleForCourbe(courbe)) {
            VyrCurvePoints points(courbe, VyrWorldTransform{m_dAx, m_dBx, m_dAy, m_dBy});
            // Only the columns within the tolerance can hold a point in range: the walk leaves
            // out the others, so a mouse over a long recording costs what lies under it.
            if (limit != INT_MAX && p.x > -(1 << 28) && p.x < (1 << 28)) {
                const int reach = static_cast<int>(std::ceil(std::sqrt(double(limit))));
                points.KeepColumns(p.x - reach, p.x + reach, 2);
            }
            ForEachValidPixel(points, [&](int i, const wxPoint& px) {
                const int d = VyrPixelDistance2(px.x, px.y, p.x, p.y);
                // Strictly smaller: on equal distances the lower index stays.
                if (d <= limit && d < bestDist) {
                    best = i;
                    bestDist = d;
                }
            });
        }
    }
    if (dist2)
        *dist2 = bestDist;
    return best;
}

int VyrDiagram::GetPoint(VyrCourbe* courbe, wxPoint p) {
    // Starts at 0, so a curve without valid points answers point 0.
    int best = 0;
    int bestDist = INT_MAX;
    if (!courbe)
        return best;
    VyrDiagramScaleGuard guard(*this);
    if (SetCurrentScaleForCourbe(courbe))
        ForEachValidPixel(VyrWorldTransform{m_dAx, m_dBx, m_dAy, m_dBy}, courbe,
                          [&](int i, const wxPoint& px) {
                              const int d = VyrPixelDistance2(px.x, 0, p.x, 0);
                              // Not strict, unlike FindPoint: on equal columns the higher index
                              // wins.
                              if (d <= bestDist) {
                                  best = i;
                                  bestDist = d;
                              }
                          });
    return best;
}

VyrCourbe* VyrDiagram::HitTestCurve(wxPoint p, int maxDist2, int* index) {
    // The first plotted curve with a point in range wins, even over a closer later one.
    for (VyrCourbe* courbe : m_aPlottedCourbes) {
        const int found = FindPoint(courbe, maxDist2, p, nullptr);
        if (found >= 0) {
            if (index)
                *index = found;
            return courbe;
        }
    }
    if (index)
        *index = -1;
    return nullptr;
}

VyrCourbe* VyrDiagram::HitTestCurvePlusProche(wxPoint p, int maxDist2, int* index) {
    if (index)
        *index = -1;
    VyrCourbe* best = nullptr;
    int bestDist = INT_MAX;
    for (VyrCourbe* courbe : m_aPlottedCourbes) {
        int d = INT_MAX;
        const int found = FindPoint(courbe, maxDist2, p, &d);
        // Strictly smaller: the earlier curve wins a tie.
        if (found >= 0 && (!best || d < bestDist)) {
            best = courbe;
            bestDist = d;
            if (index)
                *index = found;
        }
    }
    return best;
}

int VyrDiagram::HitTestAxis(wxPoint p) {
    // The horizontal axis is tested first, so a point near both is on the horizontal one.
    if (VyrAbsDiff(p.y, m_ptOrigin.y) < kAxisTolerance)
        return 0;
    if (VyrAbsDiff(p.x, m_ptOrigin.x) < kAxisTolerance)
        return 1;
    return -1;
}

int VyrDiagram::HitTestFleche(wxPoint p) {
    const int right = m_rectHit.GetRight();
    if (VyrAbsDiff(p.y, m_ptOrigin.y) < kAxisTolerance && VyrAbsDiff(p.x, right) < kAxisTolerance)
        return 2;
    if (VyrAbsDiff(p.x, m_ptOrigin.x) < kAxisTolerance &&
        VyrAbsDiff(p.y, m_rectHit.y) < kAxisTolerance)
        return 3;
    return -1;
}
