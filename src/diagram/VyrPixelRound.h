// The one real-to-pixel rounding of the diagram: half away from zero (2.5 -> 3, -2.5 -> -3).
// Transforms, painters and hit tests all go through it so that a point is hit exactly where it
// was drawn.
#ifndef VYRBASE_DIAGRAM_VYRPIXELROUND_H
#define VYRBASE_DIAGRAM_VYRPIXELROUND_H

#include <climits>

// v < 0 ? truncate(v - 0.5) : truncate(v + 0.5). Values beyond the range of int saturate to
// INT_MIN / INT_MAX (a plain conversion would be undefined there) and NaN gives INT_MIN, which
// is what the processor's own conversion yields, so far-away points stay far away.
inline int VyrRoundPixel(double v) {
    const double r = v < 0.0 ? v - 0.5 : v + 0.5;
    if (r >= 2147483647.0)
        return INT_MAX;
    if (!(r > -2147483649.0))
        return INT_MIN;
    return static_cast<int>(r);
}

#endif
