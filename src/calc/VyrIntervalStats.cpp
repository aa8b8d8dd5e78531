#include "vyrbase/calc/VyrIntervalStats.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numeric>

#include "calc/VyrCalcPoints.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrOutilInterval.h"

void VyrIntervalStats::Reset() {
    *this = VyrIntervalStats();
}

bool VyrIntervalStats::Compute(const VyrCourbe* c) {
    const double inf = std::numeric_limits<double>::infinity();
    return Compute(c, -inf, inf);
}

bool VyrIntervalStats::Compute(const VyrCourbe* c, const VyrOutilInterval* tool) {
    if (!tool) {
        Reset();
        return false;
    }
    return Compute(c, tool->GetX0(), tool->GetX1());
}

bool VyrIntervalStats::Compute(const VyrCourbe* c, double from, double to) {
    Reset();
    if (!c || !c->GetVx() || !c->GetVy() || std::isnan(from) || std::isnan(to))
        return false;
    if (to < from)
        std::swap(from, to);
    vyrcalc::Points p;
    try {
        vyrcalc::CollectValidPoints(c, from, to, p);
        // The area walks the points in order of X; a curve kept sorted needs no copy.
        if (!vyrcalc::IsAscending(p.x)) {
            std::vector<size_t> order(p.x.size());
            std::iota(order.begin(), order.end(), 0);
            std::stable_sort(order.begin(), order.end(),
                             [&](size_t a, size_t b) { return p.x[a] < p.x[b]; });
            vyrcalc::Points sorted;
            sorted.x.reserve(order.size());
            sorted.y.reserve(order.size());
            for (size_t i : order) {
                sorted.x.push_back(p.x[i]);
                sorted.y.push_back(p.y[i]);
            }
            p = std::move(sorted);
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
    const size_t n = p.x.size();
    m_iPoints = static_cast<int>(n);
    if (n == 0)
        return true;

    // Two passes: the deviations from the mean, not the difference of two large sums, which
    // loses every digit of a small spread on a large offset.
    double sumX = 0.0, sumY = 0.0;
    m_dMin = m_dMax = p.y[0];
    for (size_t i = 0; i < n; ++i) {
        sumX += p.x[i];
        sumY += p.y[i];
        m_dMin = std::min(m_dMin, p.y[i]);
        m_dMax = std::max(m_dMax, p.y[i]);
    }
    const double meanX = sumX / n;
    m_dMean = sumY / n;
    double sxx = 0.0, syy = 0.0, sxy = 0.0, area = 0.0;
    for (size_t i = 0; i < n; ++i) {
        const double dx = p.x[i] - meanX, dy = p.y[i] - m_dMean;
        sxx += dx * dx;
        syy += dy * dy;
        sxy += dx * dy;
        if (i > 0)
            area += (p.x[i] - p.x[i - 1]) * (p.y[i] + p.y[i - 1]) * 0.5;
    }
    m_dArea = area;
    if (n >= 2)
        m_dSd = std::sqrt(syy / (n - 1));
    if (n >= 2 && sxx > 0.0) {
        m_dSlope = sxy / sxx;
        m_dIntercept = m_dMean - m_dSlope * meanX;
    }
    return true;
}
