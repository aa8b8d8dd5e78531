// Pixel distances of the hit tests, computed without overflow whatever pixels the caller or a
// far-off value produces. Internal to the diagram.
#ifndef VYRBASE_SRC_DIAGRAM_VYRPIXELDISTANCE_H
#define VYRBASE_SRC_DIAGRAM_VYRPIXELDISTANCE_H

#include <algorithm>
#include <climits>
#include <cstdlib>

#include <wx/gdicmn.h>

// |a - b| in a type that cannot overflow.
inline long long VyrAbsDiff(int a, int b) {
    return std::llabs(static_cast<long long>(a) - b);
}

// Squared distance between two pixels, saturated to INT_MAX (46341 squared alone passes it).
inline int VyrPixelDistance2(int x0, int y0, int x1, int y1) {
    const long long dx = VyrAbsDiff(x0, x1);
    const long long dy = VyrAbsDiff(y0, y1);
    if (dx > 46340 || dy > 46340)
        return INT_MAX;
    const long long d = dx * dx + dy * dy;
    return d > INT_MAX ? INT_MAX : static_cast<int>(d);
}

// Whether p lies in the box with corner (x, y) and that size (right and bottom edges excluded,
// as wxRect::Contains), computed without overflow for a corner far off the device.
inline bool VyrBoxContains(int x, int y, int width, int height, const wxPoint& p) {
    return p.x >= x && p.y >= y &&
           static_cast<long long>(p.x) < static_cast<long long>(x) + width &&
           static_cast<long long>(p.y) < static_cast<long long>(y) + height;
}

// Squared distance from (x, y) to a rectangle given by its edges. Beside, above or below it:
// the distance to the nearest edge or corner. Inside: the distance to the nearest side, so that
// interval tools are caught by their edges and a click deep inside a large rectangle misses it.
inline double VyrDistance2PointToRectangle(int x, int y, int left, int top, int right, int bottom) {
    // Doubles from the start: the differences of far-off pixels must not overflow.
    const double px = x, py = y, l = left, t = top, r = right, b = bottom;
    auto square = [](double v) { return v * v; };
    auto vertical = [&]() {
        if (py <= t)
            return square(t - py);
        if (py >= b)
            return square(b - py);
        return 0.0;
    };
    if (px <= l)
        return square(l - px) + vertical();
    if (px >= r)
        return square(r - px) + vertical();
    if (py <= t || py >= b)
        return vertical();
    return square(std::min({px - l, r - px, py - t, b - py}));
}

#endif
