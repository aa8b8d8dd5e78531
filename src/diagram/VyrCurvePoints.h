// Read-only access to the drawable points of a curve for the painters: one pass, no allocation.
// A point i is drawable when it lies below both vectors' sizes and is valid in both masks; a
// vector without storage reads as 0.0. Pixels come from the diagram's current transform with
// the diagram's rounding (half away from zero).
#ifndef VYRBASE_SRC_DIAGRAM_VYRCURVEPOINTS_H
#define VYRBASE_SRC_DIAGRAM_VYRCURVEPOINTS_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include <wx/dc.h>
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
        m_pVx = vx;
        m_pVy = vy;
        m_iEnd = m_iCount;
    }

    // Indices at or past this are never drawable.
    int GetCount() const { return m_iCount; }

    // The points a painter walks: from Begin, by Next, while below End; all of them unless
    // KeepColumns narrowed the walk. Next is called with ascending indices.
    int Begin() const { return m_iBegin; }
    int End() const { return m_iEnd; }
    int Next(int i) const { return SkipFrom(i + 1); }
    // i, or past the points skipped from i on.
    int SkipFrom(int i) const {
        while (m_iSkip < m_skips.size() && m_skips[m_iSkip].second <= i)
            ++m_iSkip;
        if (m_iSkip < m_skips.size() && m_skips[m_iSkip].first <= i)
            return m_skips[m_iSkip].second;
        return i;
    }

    // For a curve whose X values ascend, narrows the walk to the points whose pixel column can
    // lie within [left - margin, right + margin], found by bisection, and the nearest drawable
    // point on either side of them: what joins them to the points beyond. Every figure a
    // painter draws for a point further out, or between two such points on one side, lies
    // wholly beyond the margin, where the clipping removes it; so the aliased picture is the
    // same as from every point. Only for painters whose figures of a point stay within a
    // margin of its own column and of its neighbours' columns. Nothing changes when the
    // transform is not increasing.
    //
    // When X does not ascend, one pass finds the runs of consecutive drawable points that all
    // lie beyond the margin on one side, and the walk skips each run's points but its first
    // and last: the figures joining those lie beyond the margin too.
    void KeepColumns(int left, int right, int margin) {
        const double ax = m_world.ax, bx = m_world.bx;
        if (!m_pX || !m_pY || m_iCount < 2 || !(ax > 0.0) || !std::isfinite(ax) ||
            !std::isfinite(bx))
            return;
        if (!m_pVx->IsSortedAscending()) {
            SkipRunsBeyond(static_cast<double>(left) - margin, static_cast<double>(right) + margin);
            return;
        }
        const double from = (static_cast<double>(left) - margin - bx) / ax;
        const double to = (static_cast<double>(right) + margin - bx) / ax;
        int first = static_cast<int>(std::lower_bound(m_pX, m_pX + m_iCount, from) - m_pX);
        int end = static_cast<int>(std::upper_bound(m_pX, m_pX + m_iCount, to) - m_pX);
        // The nearest drawable point before and after (or the ends of the curve).
        while (first > 0 && !IsValid(first - 1))
            --first;
        first = first > 0 ? first - 1 : 0;
        while (end < m_iCount && !IsValid(end))
            ++end;
        end = end < m_iCount ? end + 1 : m_iCount;
        m_iBegin = first;
        m_iEnd = end;
    }
    bool IsValid(int i) const {
        return i >= 0 && i < m_iCount && VyrIsMaskBitSet(*m_pMaskX, i) &&
               VyrIsMaskBitSet(*m_pMaskY, i);
    }
    // The first index at or after i that is not drawable (i itself when it is not), or End():
    // the end of the stretch of drawable points that begins at i. Whole bytes of the masks are
    // tested at once, so a recording without invalid points costs a few tests per eight points.
    // A stretch also ends where the walk skips points (i itself not skipped: see SkipFrom).
    int ValidStretchEnd(int i) const {
        int limit = m_iEnd;
        while (m_iSkip < m_skips.size() && m_skips[m_iSkip].second <= i)
            ++m_iSkip;
        if (m_iSkip < m_skips.size() && m_skips[m_iSkip].first > i)
            limit = std::min(limit, m_skips[m_iSkip].first);
        if (i >= limit || !IsValid(i))
            return i;
        int j = i + 1;
        while (j < limit && (j & 7) != 0 && IsValid(j))
            ++j;
        if (j < limit && (j & 7) != 0)
            return j;  // stopped at an invalid point
        while (j + 64 <= limit && AllValid8(*m_pMaskX, j >> 3) && AllValid8(*m_pMaskY, j >> 3))
            j += 64;
        while (j + 8 <= limit && AllValid(*m_pMaskX, j >> 3) && AllValid(*m_pMaskY, j >> 3))
            j += 8;
        while (j < limit && IsValid(j))
            ++j;
        return j;
    }
    // The extremes of X's and Y's blocks of VyrVecteur::kExtremesBlock points (see
    // VyrVecteur::GetBlockExtremes), when X ascends, so that the points of one pixel column
    // are consecutive and a block lies on a column when its extremes do; else none. Answers
    // the number of blocks both vectors know.
    int BlockExtremes(const double** xExtremes, const double** yExtremes) const {
        *xExtremes = *yExtremes = nullptr;
        if (!m_pVx || !m_pVy || !m_pX || !m_pY || !m_pVx->IsSortedAscending())
            return 0;
        const int count =
            std::min(m_pVx->GetBlockExtremes(xExtremes), m_pVy->GetBlockExtremes(yExtremes));
        if (count == 0)
            *xExtremes = *yExtremes = nullptr;
        return count;
    }
    const double* GetXs() const { return m_pX; }
    const double* GetYs() const { return m_pY; }
    double X(int i) const { return m_pX ? m_pX[i] : 0.0; }
    double Y(int i) const { return m_pY ? m_pY[i] : 0.0; }
    wxPoint Pixel(int i) const { return m_world.ToPixel(X(i), Y(i)); }
    const VyrWorldTransform& GetWorld() const { return m_world; }

private:
    // Pixel columns (unrounded) below `low` or above `high` are beyond the margin; a NaN is
    // never beyond.
    void SkipRunsBeyond(double low, double high) {
        const double ax = m_world.ax, bx = m_world.bx;
        int start = -1, last = -1, side = 0;
        auto close = [&]() {
            if (side != 0 && last - start >= 2)
                m_skips.push_back({start + 1, last});
            side = 0;
        };
        for (int i = 0; i < m_iCount; ++i) {
            if (!IsValid(i)) {
                close();
                continue;
            }
            const double column = m_pX[i] * ax + bx;
            const int s = column < low ? -1 : (column > high ? 1 : 0);
            if (s != 0 && s == side) {
                last = i;
                continue;
            }
            close();
            if (s != 0) {
                side = s;
                start = last = i;
            }
        }
        close();
    }

    // The eight points of mask byte k are all valid (a byte beyond the mask reads as valid).
    static bool AllValid(const VyrBitMask& mask, int k) {
        return k >= mask.GetSize() || mask[k] == 0;
    }
    // The 64 points of mask bytes k..k+7 are all valid.
    static bool AllValid8(const VyrBitMask& mask, int k) {
        if (k + 8 <= mask.GetSize()) {
            uint64_t word;
            std::memcpy(&word, mask.GetBytes() + k, sizeof word);
            return word == 0;
        }
        for (int b = k; b < k + 8; ++b)
            if (!AllValid(mask, b))
                return false;
        return true;
    }

    VyrWorldTransform m_world;
    const double* m_pX = nullptr;
    const double* m_pY = nullptr;
    const VyrBitMask* m_pMaskX = nullptr;
    const VyrBitMask* m_pMaskY = nullptr;
    int m_iCount = 0;
    const VyrVecteur* m_pVx = nullptr;
    const VyrVecteur* m_pVy = nullptr;
    int m_iBegin = 0;
    int m_iEnd = 0;
    // Ranges [first, end) of points the walk skips, ascending; the one SkipFrom reached.
    std::vector<std::pair<int, int>> m_skips;
    mutable size_t m_iSkip = 0;
};

// How far past its own pixel column, and the columns of the points it joins, a figure of a
// point can reach: half a pen of the curve's scaled width, its caps and joins, the widest
// marker, with room to spare.
inline int VyrFigureReach(int width, int lineScale) {
    const long long w =
        std::min<long long>(width < 0 ? -static_cast<long long>(width) : width, 1 << 20);
    const long long s = std::min<long long>(std::max(lineScale, 1), 1 << 10);
    return static_cast<int>(std::min<long long>(4 * (w + 1) * s + 8, 1 << 28));
}

// Narrows the painter's walk to the points that can touch the columns the device context
// shows (its clipping box, or its whole extent). Nothing changes when the context tells no
// extent.
inline void VyrKeepVisibleColumns(VyrCurvePoints& points, wxDC* dc, int reach) {
    wxRect box;
    dc->GetClippingBox(box);
    if (box.width > 0 && box.height > 0)
        points.KeepColumns(box.x, box.x + box.width - 1, reach);
}

// Coordinates that further arithmetic (offsets, widths) cannot overflow; far-away points stay
// far outside any device.
inline int VyrSafeCoord(int v) {
    const int limit = 1 << 28;
    return v < -limit ? -limit : (v > limit ? limit : v);
}

#endif
