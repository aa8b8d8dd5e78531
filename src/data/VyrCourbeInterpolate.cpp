// Linear interpolation of a curve's Y at any X.
#include <cmath>

#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// Single-precision epsilon, used as an absolute tolerance on X.
const double kTolerance = 1.1920928955078125e-7;  // 2^-23
}  // namespace

bool VyrCourbe::InterpolateEx(double x, double& y, bool& interpolated, int* index, int& start) {
    if (!m_pVx || !m_pVy)
        return false;
    const VyrVecteur& vx = *m_pVx;
    const VyrVecteur& vy = *m_pVy;
    int i = vx.FindIndex(x, start);
    if (i < 0) {
        if (index)
            *index = start;
        return false;
    }
    // The validity of Y is never consulted; a Y shorter than X reads 0.0.
    double x0 = vx[i];
    double y0 = vy[i];
    start = i;
    if (index)
        *index = i;
    if (std::fabs(x - x0) < kTolerance) {
        y = y0;
        interpolated = false;
        return true;
    }
    // No extrapolation: past the last valid point there is nothing to join to.
    int j = i + 1;
    while (j < vx.GetSize() && !vx.GetValidity()->IsSet(j))
        ++j;
    if (j >= vx.GetSize())
        return false;
    double dx = vx[j] - x0;
    if (std::fabs(dx) < kTolerance)
        return false;
    double slope = (vy[j] - y0) / dx;
    y = y0 - slope * x0 + slope * x;
    interpolated = true;
    return true;
}

bool VyrCourbe::Interpolate(double x, double& y, bool& interpolated, int* index) {
    int start = 0;
    return InterpolateEx(x, y, interpolated, index, start);
}
