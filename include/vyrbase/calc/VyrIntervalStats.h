// The statistics of a curve between two abscissas, as an interval tool reads them: how many
// points, their mean, standard deviation, extremes, the area under the curve and the
// least-squares line through them.
//
// Only the points valid in both vectors take part, those whose X lies between the two bounds
// (bounds included, given in either order). Values are in the curve's own units: the area in
// the Y unit times the X unit, the slope in the Y unit per X unit.
#ifndef VYRBASE_CALC_VYRINTERVALSTATS_H
#define VYRBASE_CALC_VYRINTERVALSTATS_H

#include <limits>

#include "vyrbase/core/VyrExport.h"

class VyrCourbe;
class VyrOutilInterval;

class VYRBASE_API VyrIntervalStats {
public:
    // Over the points with from <= X <= to (or to <= X <= from). An infinite bound leaves that
    // side open. False, and every value reset, for a null curve, a curve without both vectors
    // or a NaN bound; true otherwise, also when no point lies in the interval (GetPoints 0).
    // False too when memory runs out.
    bool Compute(const VyrCourbe* c, double from, double to);
    // Over every valid point of the curve.
    bool Compute(const VyrCourbe* c);
    // Between the abscissas of an interval tool's two points (x0 and x1); false for a null
    // tool, as for a null curve.
    bool Compute(const VyrCourbe* c, const VyrOutilInterval* tool);

    // What a value is when it cannot be had (too few points, no spread in X): NaN.
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    // The number of points taken.
    int GetPoints() const { return m_iPoints; }
    // Mean of Y; NaN without points.
    double GetMean() const { return m_dMean; }
    // Standard deviation of Y with n - 1 in the denominator (the sample's, as a class computes
    // the spread of repeated measurements); NaN below two points.
    double GetSd() const { return m_dSd; }
    double GetMin() const { return m_dMin; }
    double GetMax() const { return m_dMax; }
    // The integral of Y over X by trapezoids between consecutive points taken (in order of X):
    // 0 for one point, NaN for none. Nothing is extrapolated to the bounds themselves.
    double GetArea() const { return m_dArea; }
    // The least-squares line Y = slope X + intercept; NaN below two distinct abscissas.
    double GetSlope() const { return m_dSlope; }
    double GetIntercept() const { return m_dIntercept; }

private:
    void Reset();

    int m_iPoints = 0;
    double m_dMean = kNone;
    double m_dSd = kNone;
    double m_dMin = kNone;
    double m_dMax = kNone;
    double m_dArea = kNone;
    double m_dSlope = kNone;
    double m_dIntercept = kNone;
};

#endif
