// The line styles of a curve (codes 1 to 9) and the spectrum under line style 4. Every line
// painter draws with the pen that PaintCurve selected and relies on the clipping region.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <cmath>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <wx/dc.h>
#include <wx/pen.h>

#include "diagram/VyrCurvePoints.h"
#include "diagram/VyrLineBatch.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// Calls draw(p) with the pixel of every drawable point of the walk, in order.
template <class Draw>
void ForEachValidPixel(const VyrCurvePoints& points, Draw draw) {
    for (int i = points.Begin(); i < points.End(); i = points.Next(i))
        if (points.IsValid(i))
            draw(points.Pixel(i));
}

// Doubles as ordered unsigned integers (NaN aside): a < b exactly when Ordered(a) <
// Ordered(b), and integers next to each other are doubles next to each other (+0 and -0 are
// one).
uint64_t Ordered(double d) {
    const uint64_t sign = uint64_t(1) << 63;
    uint64_t bits;
    std::memcpy(&bits, &d, sizeof bits);
    // Non-negative values above 2^63 in their own order, negative ones below it by magnitude.
    return (bits & sign) ? sign - (bits & ~sign) : bits | sign;
}

double FromOrdered(uint64_t u) {
    const uint64_t sign = uint64_t(1) << 63;
    const uint64_t bits = u >= sign ? u - sign : (sign - u) | sign;
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

// The values of X whose pixel column is `column`, as the closed interval [from, to] of doubles:
// the column of x * ax + bx never decreases (or never increases) with x, since each step of the
// transform and of the rounding is monotonic, so those values are an interval around the one
// known value x0. Its ends are found from the algebraic estimate, then exactly by galloping
// and bisecting over neighbouring doubles, testing the very rounding the painters use. False
// when the transform is degenerate (no interval to speak of).
bool ColumnInterval(const VyrWorldTransform& w, int column, double x0, double& from, double& to) {
    auto on = [&](uint64_t u) { return VyrRoundPixel(FromOrdered(u) * w.ax + w.bx) == column; };
    if (!(w.ax != 0.0) || !std::isfinite(w.ax) || !std::isfinite(w.bx) || !std::isfinite(x0))
        return false;
    const uint64_t u0 = Ordered(x0);
    const uint64_t lowest = Ordered(-std::numeric_limits<double>::infinity());
    const uint64_t highest = Ordered(std::numeric_limits<double>::infinity());
    if (!on(u0) || on(lowest) || on(highest))
        return false;
    const double e1 = (column - 0.5 - w.bx) / w.ax;
    const double e2 = (column + 0.5 - w.bx) / w.ax;
    const uint64_t most = uint64_t(1) << 62;
    // The last value on the column going up from x0 (up true) or down, starting from the
    // estimate of the end. Distances are unsigned and never cross the infinities.
    auto end = [&](bool up, double estimate) {
        uint64_t inside = u0;  // on the column
        uint64_t outside;      // past the end
        uint64_t k = std::isfinite(estimate) ? Ordered(estimate) : u0;
        if (up ? k < u0 : k > u0)
            k = u0;
        uint64_t step = 1;
        if (on(k)) {
            inside = k;
            for (;;) {
                const uint64_t room = up ? highest - inside : inside - lowest;
                const uint64_t move = std::min(step, room);
                const uint64_t next = up ? inside + move : inside - move;
                if (!on(next)) {
                    outside = next;
                    break;
                }
                inside = next;
                step = step < most ? step * 2 : step;
            }
        } else {
            outside = k;
            for (;;) {
                const uint64_t room = up ? outside - u0 : u0 - outside;
                const uint64_t move = std::min(step, room);
                const uint64_t next = up ? outside - move : outside + move;
                if (on(next)) {
                    inside = next;
                    break;
                }
                outside = next;
                step = step < most ? step * 2 : step;
            }
        }
        while ((up ? outside - inside : inside - outside) > 1) {
            const uint64_t mid =
                up ? inside + (outside - inside) / 2 : outside + (inside - outside) / 2;
            (on(mid) ? inside : outside) = mid;
        }
        return inside;
    };
    from = FromOrdered(end(false, std::min(e1, e2)));
    to = FromOrdered(end(true, std::max(e1, e2)));
    return true;
}

// The points of one pixel column that follow a first one, as far as they stay on that column:
// a tight pass that compares X with the column's interval of values and keeps the extremes of
// the raw Y values. The transform and the rounding never decrease (or never increase) with Y,
// so the extremes of the pixel rows are the rows of the extreme values (a NaN, whose row is
// INT_MIN, is only noted).
struct ColumnTail {
    double from = 0.0, to = -1.0;  // the column's X values (empty until set)
    // Extremes of the Y values taken that are not NaN (low > high: none).
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    bool nan = false;    // a NaN Y was met
    bool taken = false;  // at least one point was taken

    // Takes the points from i while their X lies in [from, to] and before `end`; answers the
    // first index not taken. Given the extremes of X's and Y's blocks (blockCount of them; X
    // ascends: see VyrCurvePoints::BlockExtremes), a whole block whose X extremes lie in the
    // column is taken from its Y extremes, which are those of its points: a column of a dense
    // recording costs its blocks, read from two small arrays in order, not its points. A block
    // holding a NaN is taken point by point, which notes the NaN.
    int Extend(const double* xs, const double* ys, int i, int end, const double* xBlocks,
               const double* yBlocks, int blockCount) {
        if (!xBlocks || !yBlocks)
            return ExtendPoints(xs, ys, i, end);
        const int size = VyrVecteur::kExtremesBlock;
        while (i < end) {
            const int b = i / size;
            if (i % size == 0 && b < blockCount && end - i >= size && xBlocks[2 * b] >= from &&
                xBlocks[2 * b + 1] <= to) {
                const double lo = yBlocks[2 * b], hi = yBlocks[2 * b + 1];
                if (lo != lo) {
                    ExtendPoints(xs, ys, i, i + size);
                } else {
                    low = lo < low ? lo : low;
                    high = hi > high ? hi : high;
                    taken = true;
                }
                i += size;
                continue;
            }
            // Point by point up to the next block.
            const int stop = std::min(end, (b + 1) * size);
            const int next = ExtendPoints(xs, ys, i, stop);
            if (next < stop)
                return next;  // a point off the column
            i = next;
        }
        return i;
    }

    int ExtendPoints(const double* xs, const double* ys, int i, int end) {
        const int start = i;
        double lo = low, hi = high;
        bool gap = nan;
        auto inside = [this](double x) { return (x >= from) & (x <= to); };
        auto take = [&](double y) {
            gap |= y != y;
            lo = y < lo ? y : lo;
            hi = y > hi ? y : hi;
        };
        // Eight at a time while all stay on the column, then one by one. With SSE2, two to a
        // register: MINPD and MAXPD keep their second operand when the first is NaN, as
        // "y < lo ? y : lo" does.
#if defined(__SSE2__)
        const __m128d f = _mm_set1_pd(from), t = _mm_set1_pd(to);
        __m128d vlo = _mm_set1_pd(lo), vhi = _mm_set1_pd(hi), vnan = _mm_setzero_pd();
        for (; i + 8 <= end; i += 8) {
            __m128d in = _mm_castsi128_pd(_mm_set1_epi32(-1));
            for (int k = 0; k < 8; k += 2) {
                const __m128d x = _mm_loadu_pd(xs + i + k);
                in = _mm_and_pd(in, _mm_and_pd(_mm_cmpge_pd(x, f), _mm_cmple_pd(x, t)));
            }
            if (_mm_movemask_pd(in) != 3)
                break;
            for (int k = 0; k < 8; k += 2) {
                const __m128d y = _mm_loadu_pd(ys + i + k);
                vnan = _mm_or_pd(vnan, _mm_cmpunord_pd(y, y));
                vlo = _mm_min_pd(y, vlo);
                vhi = _mm_max_pd(y, vhi);
            }
        }
        double lanes[2];
        _mm_storeu_pd(lanes, vlo);
        lo = lanes[0] < lanes[1] ? lanes[0] : lanes[1];
        _mm_storeu_pd(lanes, vhi);
        hi = lanes[0] > lanes[1] ? lanes[0] : lanes[1];
        gap |= _mm_movemask_pd(vnan) != 0;
#else
        for (; i + 8 <= end; i += 8) {
            bool all = true;
            for (int k = 0; k < 8; ++k)
                all &= inside(xs[i + k]);
            if (!all)
                break;
            for (int k = 0; k < 8; ++k)
                take(ys[i + k]);
        }
#endif
        for (; i < end && inside(xs[i]); ++i)
            take(ys[i]);
        low = lo;
        high = hi;
        nan = gap;
        taken = taken || i > start;
        return i;
    }

    // The lowest and highest pixel rows of the points taken, merged into low/high rows.
    void MergeRows(const VyrWorldTransform& w, int& lowRow, int& highRow) const {
        if (nan)
            lowRow = INT_MIN;
        if (low <= high) {
            const int a = VyrRoundPixel(low * w.ay + w.by);
            const int b = VyrRoundPixel(high * w.ay + w.by);
            lowRow = std::min(lowRow, std::min(a, b));
            highRow = std::max(highRow, std::max(a, b));
        }
    }
};

// Joins the valid points in order, stepping over invalid ones. Kept: a previous pixel column
// of -1 means "no previous point", so a point that lands on column -1 starts the line anew.
//
// Consecutive points on one pixel column only draw vertical segments there, whose union is the
// one segment from the lowest to the highest of them; every stroke (round or flat caps) of
// that union covers exactly the pixels of the separate strokes. So each column costs at most
// its incoming segment and one vertical segment, whatever the number of points: aliased output
// is identical to drawing every segment, and a dense recording costs a few primitives per
// pixel column. What a column's points can change is its first and last point (where the
// segments in and out join) and its lowest and highest (the vertical): the four points that
// are kept of each column.
void DrawJoinedColumns(wxDC* dc, const VyrCurvePoints& points) {
    const int count = points.End();
    const VyrWorldTransform& world = points.GetWorld();
    const double* xs = points.GetXs();
    const double* ys = points.GetYs();
    bool haveRun = false;
    wxPoint first;      // first point of the current column run
    int lastIndex = 0;  // index of its last point
    int low = 0, high = 0;
    bool repeated = false;    // the run holds more than one point
    ColumnTail tail;          // the run's points after its first, taken by the tight pass
    wxPoint previous(-1, 0);  // the last point of the run before (x == -1: none)
    VyrLineBatch lines(dc);
    const double* xBlocks = nullptr;
    const double* yBlocks = nullptr;
    const int blockCount = points.BlockExtremes(&xBlocks, &yBlocks);

    auto flush = [&]() {
        if (!haveRun)
            return;
        if (tail.taken) {
            // The points taken by the tight pass: their rows from their extremes.
            tail.MergeRows(world, low, high);
            repeated = true;
        }
        if (previous.x != -1)
            lines.Line(previous, first);
        if (repeated && first.x != -1)
            lines.Line(first.x, low, first.x, high);
        previous = points.Pixel(lastIndex);
    };

    int i = points.Begin();
    while (i < count) {
        i = points.SkipFrom(i);
        if (i >= count)
            break;
        const int end = points.ValidStretchEnd(i);
        if (end == i) {
            ++i;  // not drawable: stepped over
            continue;
        }
        // Every point of [i, end) is drawable.
        while (i < end) {
            if (haveRun && tail.from <= tail.to) {
                const int next = tail.Extend(xs, ys, i, end, xBlocks, yBlocks, blockCount);
                if (next > i) {
                    lastIndex = next - 1;
                    i = next;
                    continue;
                }
            }
            const wxPoint p = points.Pixel(i);
            if (haveRun && p.x == first.x) {
                low = std::min(low, p.y);
                high = std::max(high, p.y);
                lastIndex = i;
                repeated = true;
                ++i;
                continue;
            }
            flush();
            haveRun = true;
            first = p;
            lastIndex = i;
            low = high = p.y;
            repeated = false;
            tail = ColumnTail();
            // The tight pass needs the column's interval of X values; a saturated column, a
            // missing vector or a degenerate transform leave it empty.
            if (xs && ys && p.x != INT_MIN && p.x != INT_MAX &&
                !ColumnInterval(world, p.x, xs[i], tail.from, tail.to)) {
                tail.from = 0.0;
                tail.to = -1.0;
            }
            ++i;
        }
    }
    flush();
}

}  // namespace

void VyrDiagram::PaintCurveLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    VyrKeepVisibleColumns(points, dc, VyrFigureReach(courbe->GetWidth(), m_iLineScale));
    DrawJoinedColumns(dc, points);
}

// Bars: each point's value held from the previous point's column to its own, standing on the
// X axis row. An invalid point breaks the chain; as for style 1, a previous column of -1 means
// none.
//
// On one pixel column every bar of a point whose previous point lies on the same column draws
// only the vertical from its value to the axis row there (twice) and a horizontal of no
// length inside it; all those verticals contain the axis row, so their union is the one
// vertical from the lowest to the highest of their ends, and that is what is drawn, once per
// column. The bar of the first point of a column (previous point on another column) is drawn
// as it is. Aliased output is identical to drawing every bar.
void VyrDiagram::PaintCurveHisto(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    VyrKeepVisibleColumns(points, dc, VyrFigureReach(courbe->GetWidth(), m_iLineScale));
    const int axisRow = m_ptOrigin.y;
    int previousX = -1;
    bool inColumn = false;  // a column of consecutive valid points is open
    int columnX = 0;
    // The column's verticals to the axis row drawn so far, and the union of all of them.
    bool drawn = false;
    int drawnLow = 0, drawnHigh = 0;
    int low = axisRow, high = axisRow;
    auto flush = [&]() {
        if (inColumn && (low < drawnLow || high > drawnHigh))
            lines.Line(columnX, low, columnX, high);
        inColumn = false;
    };
    for (int i = points.Begin(); i < points.End(); i = points.Next(i)) {
        if (!points.IsValid(i)) {
            flush();
            previousX = -1;
            continue;
        }
        const wxPoint p = points.Pixel(i);
        if (!inColumn || p.x != columnX) {
            flush();
            inColumn = true;
            columnX = p.x;
            drawn = false;
            low = high = drawnLow = drawnHigh = axisRow;
        }
        if (previousX != -1) {
            if (!drawn) {
                // The first bar of the column, as it is: a column of one point costs what
                // it always did.
                lines.Line(previousX, p.y, previousX, axisRow);
                lines.Line(p.x, p.y, p.x, axisRow);
                lines.Line(previousX, p.y, p.x, p.y);
                drawn = true;
                drawnLow = std::min(p.y, axisRow);
                drawnHigh = std::max(p.y, axisRow);
            } else if (previousX != p.x) {
                lines.Line(previousX, p.y, previousX, axisRow);
                lines.Line(previousX, p.y, p.x, p.y);
            }
            low = std::min(low, p.y);
            high = std::max(high, p.y);
        }
        previousX = p.x;
    }
    flush();
}

// A staircase holding each value until the next point. An invalid point breaks the chain.
//
// On one pixel column the steps between consecutive points are verticals joined end to end
// (and horizontals of no length on them), from the value of the point before the column to
// each point of it in turn: their union is the one vertical from the lowest to the highest of
// those values, drawn once per column after the horizontal that leads into it. Aliased output
// is identical to drawing every step.
void VyrDiagram::PaintCurveLineHV(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    VyrKeepVisibleColumns(points, dc, VyrFigureReach(courbe->GetWidth(), m_iLineScale));
    bool havePrevious = false;
    wxPoint previous;       // the last point drawn to (the last point of the open column)
    bool inColumn = false;  // a column of consecutive valid points is open
    // The column's vertical drawn so far, and the union of all its steps.
    bool drawn = false;
    int drawnLow = 0, drawnHigh = 0;
    bool steps = false;
    int low = 0, high = 0;
    auto flush = [&]() {
        if (inColumn && steps && (!drawn || low < drawnLow || high > drawnHigh))
            lines.Line(previous.x, low, previous.x, high);
        inColumn = false;
    };
    for (int i = points.Begin(); i < points.End(); i = points.Next(i)) {
        if (!points.IsValid(i)) {
            flush();
            havePrevious = false;
            continue;
        }
        const wxPoint p = points.Pixel(i);
        if (inColumn && p.x == previous.x) {
            // A step on the column: a vertical from the previous value to this one.
            low = std::min(low, p.y);
            high = std::max(high, p.y);
            steps = true;
        } else {
            flush();
            inColumn = true;
            drawn = false;
            steps = false;
            low = high = p.y;
            if (havePrevious) {
                // The step into the column, as it is: a column of one point costs what it
                // always did.
                lines.Line(previous.x, previous.y, p.x, previous.y);
                lines.Line(p.x, previous.y, p.x, p.y);
                drawn = steps = true;
                low = drawnLow = std::min(previous.y, p.y);
                high = drawnHigh = std::max(previous.y, p.y);
            }
        }
        previous = p;
        havePrevious = true;
    }
    flush();
}

void VyrDiagram::PaintCurveVSegment(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    const int axisRow = m_ptOrigin.y;
    // Verticals: a point draws on its own column only.
    VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    VyrKeepVisibleColumns(points, dc, VyrFigureReach(courbe->GetWidth(), m_iLineScale));
    ForEachValidPixel(points, [&](const wxPoint& p) { lines.Line(p.x, p.y, p.x, axisRow); });
}

void VyrDiagram::PaintCurveHSegment(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    const int axisColumn = m_ptOrigin.x;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}),
                      [&](const wxPoint& p) { lines.Line(p.x, p.y, axisColumn, p.y); });
}

void VyrDiagram::PaintCurveHVSegment(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    const wxPoint origin = m_ptOrigin;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}), [&](const wxPoint& p) {
        lines.Line(p.x, p.y, p.x, origin.y);
        lines.Line(p.x, p.y, origin.x, p.y);
    });
}

void VyrDiagram::PaintCurveVLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    const int top = m_rectPlot.y;
    const int bottom = m_rectPlot.y + m_rectPlot.height - 1;
    VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    VyrKeepVisibleColumns(points, dc, VyrFigureReach(courbe->GetWidth(), m_iLineScale));
    ForEachValidPixel(points, [&](const wxPoint& p) { lines.Line(p.x, top, p.x, bottom); });
}

void VyrDiagram::PaintCurveHLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    const int left = m_rectPlot.x;
    const int right = m_rectPlot.x + m_rectPlot.width - 1;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}),
                      [&](const wxPoint& p) { lines.Line(left, p.y, right, p.y); });
}

void VyrDiagram::PaintCurveHVLine(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrLineBatch lines(dc);
    const wxRect& r = m_rectPlot;
    ForEachValidPixel(VyrCurvePoints(courbe, {m_dAx, m_dBx, m_dAy, m_dBy}), [&](const wxPoint& p) {
        lines.Line(p.x, r.y, p.x, r.y + r.height - 1);
        lines.Line(r.x, p.y, r.x + r.width - 1, p.y);
    });
}

// Each point as a 1-pixel vertical line to the X axis in the colour of its wavelength (the X
// value in nanometres); wavelengths without a colour are skipped.
void VyrDiagram::PaintCurveVSegmentSpectro(wxDC* dc, VyrCourbe* courbe) {
    if (!dc || !courbe)
        return;
    VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    VyrKeepVisibleColumns(points, dc, VyrFigureReach(courbe->GetWidth(), m_iLineScale));
    const int axisRow = m_ptOrigin.y;
    const wxColour none(0, 0, 0, wxALPHA_TRANSPARENT);
    // Colours and pens are made only when the wavelength changes.
    int wavelength = -2;  // below every wavelength that the clamping below produces
    bool drawable = false;
    wxColour penColour;
    for (int i = points.Begin(); i < points.End(); i = points.Next(i)) {
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
