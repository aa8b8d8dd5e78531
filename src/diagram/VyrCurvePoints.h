// Read-only access to the drawable points of a curve for the painters: one pass, no allocation.
// A point i is drawable when it lies below both vectors' sizes and is valid in both masks; a
// vector without storage reads as 0.0. Pixels come from the diagram's current transform with
// the diagram's rounding (half away from zero).
#ifndef VYRBASE_SRC_DIAGRAM_VYRCURVEPOINTS_H
#define VYRBASE_SRC_DIAGRAM_VYRCURVEPOINTS_H

#include <algorithm>

#include <wx/gdicmn.h>

#include "diagram/VyrPixelRound.h"
#include "vyrbase/data/VyrBitMask.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

// The transform pixel = a * value + b on each axis (VyrDiagram's current world transform).
struct VyrWorldTransform {
    double ax;
    double bx;
    double ay;
    double by;

    wxPoint ToPixel(double x, double y) const {
        return wxPoint(VyrRoundPixel(x * ax + bx), VyrRoundPixel(y * ay + by));
    }
};

// Inlined copy of VyrBitMask::IsSet: the painters test millions of points.
inline bool VyrIsMaskBitSet(const VyrBitMask& mask, int i) {
    const int byte = i >> 3;
    return byte >= mask.GetSize() || (mask[byte] & (1u << (i & 7))) == 0;
}

class VyrCurvePoints {
public:
    VyrCurvePoints(const VyrCourbe* courbe, const VyrWorldTransform& world) : m_world(world) {
        const VyrVecteur* vx = courbe ? courbe->GetVx() : nullptr;
        const VyrVecteur* vy = courbe ? courbe->GetVy() : nullptr;
        if (!vx || !vy)
            return;
        m_pX = vx->GetArea();
        m_pY = vy->GetArea();
        m_pMaskX = vx->GetValidity();
        m_pMaskY = vy->GetValidity();
        m_iCount = std::max(0, std::min(vx->GetSize(), vy->GetSize()));
    }

    // Indices at or past this are never drawable.
    int GetCount() const { return m_iCount; }
    bool IsValid(int i) const {
        return i >= 0 && i < m_iCount && VyrIsMaskBitSet(*m_pMaskX, i) &&
               VyrIsMaskBitSet(*m_pMaskY, i);
    }
    // The first index at or after i that is not drawable (i itself when it is not): the end of
    // the stretch of drawable points that begins at i. Whole bytes of the masks are tested at
    // once, so a recording without invalid points costs a few tests per eight points.
    int ValidStretchEnd(int i) const {
        if (!IsValid(i))
            return i;
        int j = i + 1;
        while (j < m_iCount && (j & 7) != 0 && IsValid(j))
            ++j;
        if (j < m_iCount && (j & 7) != 0)
            return j;  // stopped at an invalid point
        while (j + 8 <= m_iCount && AllValid(*m_pMaskX, j >> 3) && AllValid(*m_pMaskY, j >> 3))
            j += 8;
        while (j < m_iCount && IsValid(j))
            ++j;
        return j;
    }
    const double* GetXs() const { return m_pX; }
    const double* GetYs() const { return m_pY; }
    double X(int i) const { return m_pX ? m_pX[i] : 0.0; }
    double Y(int i) const { return m_pY ? m_pY[i] : 0.0; }
    wxPoint Pixel(int i) const { return m_world.ToPixel(X(i), Y(i)); }
    const VyrWorldTransform& GetWorld() const { return m_world; }

private:
    // The eight points of mask byte k are all valid (a byte beyond the mask reads as valid).
    static bool AllValid(const VyrBitMask& mask, int k) {
        return k >= mask.GetSize() || mask[k] == 0;
    }

    VyrWorldTransform m_world;
    const double* m_pX = nullptr;
    const double* m_pY = nullptr;
    const VyrBitMask* m_pMaskX = nullptr;
    const VyrBitMask* m_pMaskY = nullptr;
    int m_iCount = 0;
};

// Coordinates that further arithmetic (offsets, widths) cannot overflow; far-away points stay
// far outside any device.
inline int VyrSafeCoord(int v) {
    const int limit = 1 << 28;
    return v < -limit ? -limit : (v > limit ? limit : v);
}

#endif
