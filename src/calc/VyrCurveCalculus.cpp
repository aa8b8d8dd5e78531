#include "vyrbase/calc/VyrCurveCalculus.h"

#include <algorithm>
#include <new>

#include "calc/VyrCalcPoints.h"
#include "calc/VyrCalcUnits.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

typedef VyrCurveCalculus::Values Values;
typedef VyrCurveCalculus::Validity Validity;

// The indices of the valid points, in order.
std::vector<size_t> ValidIndices(size_t n, const Validity& valid) {
    std::vector<size_t> v;
    v.reserve(n);
    for (size_t i = 0; i < n; ++i)
        if (valid.empty() || valid[i])
            v.push_back(i);
    return v;
}

// Whether the valid abscissas never decrease.
bool Ascending(const Values& x, const std::vector<size_t>& v) {
    for (size_t k = 1; k < v.size(); ++k)
        if (!(x[v[k]] >= x[v[k - 1]]))
            return false;
    return true;
}

// The indices of the valid points of a series of X and Y, in order; false when the sizes
// disagree or the valid abscissas decrease somewhere.
bool AscendingValidIndices(const Values& x, const Values& y, const Validity& valid,
                           std::vector<size_t>& v) {
    const size_t n = x.size();
    if (y.size() != n || (!valid.empty() && valid.size() != n))
        return false;
    v = ValidIndices(n, valid);
    return Ascending(x, v);
}

}  // namespace

bool VyrCurveCalculus::Derivative(const Values& x, const Values& y, const Validity& valid,
                                  Values& out, Validity& outValid) {
    const size_t n = x.size();
    std::vector<size_t> v;
    if (!AscendingValidIndices(x, y, valid, v))
        return false;
    Values d(n, 0.0);
    Validity ok(n, 0);
    const size_t m = v.size();
    auto put = [&](size_t i, double value) {
        d[i] = value;
        ok[i] = 1;
    };
    if (m == 2) {
        const double h = x[v[1]] - x[v[0]];
        if (h > 0.0) {
            put(v[0], (y[v[1]] - y[v[0]]) / h);
            put(v[1], (y[v[1]] - y[v[0]]) / h);
        }
    }
    for (size_t k = 0; m >= 3 && k < m; ++k) {
        // The three points the parabola goes through: the point and its neighbours, or at
        // either end the point and the next two inward.
        const size_t a = k == 0 ? 0 : (k == m - 1 ? m - 3 : k - 1);
        const size_t i0 = v[a], i1 = v[a + 1], i2 = v[a + 2];
        const double h1 = x[i1] - x[i0], h2 = x[i2] - x[i1];
        if (!(h1 > 0.0) || !(h2 > 0.0))
            continue;
        const double y0 = y[i0], y1 = y[i1], y2 = y[i2];
        if (k == 0) {
            put(v[k], -(2 * h1 + h2) / (h1 * (h1 + h2)) * y0 + (h1 + h2) / (h1 * h2) * y1 -
                          h1 / (h2 * (h1 + h2)) * y2);
        } else if (k == m - 1) {
            put(v[k], h2 / (h1 * (h1 + h2)) * y0 - (h1 + h2) / (h1 * h2) * y1 +
                          (h1 + 2 * h2) / (h2 * (h1 + h2)) * y2);
        } else if (h1 == h2) {
            // Even steps: the plain central difference, no rounding beyond it.
            put(v[k], (y2 - y0) / (x[i2] - x[i0]));
        } else {
            put(v[k],
                (h1 * h1 * y2 - h2 * h2 * y0 + (h2 * h2 - h1 * h1) * y1) / (h1 * h2 * (h1 + h2)));
        }
    }
    out.swap(d);
    outValid.swap(ok);
    return true;
}

bool VyrCurveCalculus::Integral(const Values& x, const Values& y, const Validity& valid,
                                Values& out, Validity& outValid) {
    const size_t n = x.size();
    std::vector<size_t> v;
    if (!AscendingValidIndices(x, y, valid, v))
        return false;
    Values s(n, 0.0);
    Validity ok(n, 0);
    double sum = 0.0;
    for (size_t k = 0; k < v.size(); ++k) {
        if (k > 0)
            sum += (x[v[k]] - x[v[k - 1]]) * (y[v[k]] + y[v[k - 1]]) * 0.5;
        s[v[k]] = sum;
        ok[v[k]] = 1;
    }
    out.swap(s);
    outValid.swap(ok);
    return true;
}

bool VyrCurveCalculus::Smooth(const Values& y, const Validity& valid, int width, Values& out,
                              Validity& outValid) {
    const size_t n = y.size();
    if (width < 1 || (!valid.empty() && valid.size() != n))
        return false;
    const std::vector<size_t> v = ValidIndices(n, valid);
    const size_t m = v.size();
    // Running sums in extended precision: a window's sum is the difference of two of them.
    std::vector<long double> sums(m + 1, 0.0L);
    for (size_t k = 0; k < m; ++k)
        sums[k + 1] = sums[k] + y[v[k]];
    const size_t half = static_cast<size_t>(width / 2);
    Values s(n, 0.0);
    Validity ok(n, 0);
    for (size_t k = 0; k < m; ++k) {
        const size_t h = std::min({half, k, m - 1 - k});
        s[v[k]] = static_cast<double>((sums[k + h + 1] - sums[k - h]) / (2 * h + 1));
        ok[v[k]] = 1;
    }
    out.swap(s);
    outValid.swap(ok);
    return true;
}

namespace {

enum class Operation { Derivative, Integral, Smooth };

VyrCourbe* CreateFrom(VyrCourbe* c, Operation op, int width, const wxString& name) {
    VyrExperience* e = vyrcalc::ExperienceOf(c);
    if (!e || !c->GetBase())
        return nullptr;
    try {
        vyrcalc::Points p;
        vyrcalc::CollectAllPoints(c, p);
        vyrcalc::Points result;
        result.x = p.x;
        bool done = false;
        const wxString& gx = c->GetVx()->GetGrandeur();
        const wxString& gy = c->GetVy()->GetGrandeur();
        const wxString& ux = c->GetVx()->GetUnite();
        const wxString& uy = c->GetVy()->GetUnite();
        vyrcalc::ResultCurve want;
        want.grdX = gx;
        want.uniteX = ux;
        switch (op) {
            case Operation::Derivative:
                done = VyrCurveCalculus::Derivative(p.x, p.y, p.valid, result.y, result.valid);
                want.grdY = "d" + gy + "/d" + gx;
                want.uniteY = vyrcalc::UnitQuotient(uy, ux);
                break;
            case Operation::Integral:
                done = VyrCurveCalculus::Integral(p.x, p.y, p.valid, result.y, result.valid);
                want.grdY = "integ(" + gy + ")";
                want.uniteY = vyrcalc::UnitProduct(uy, ux);
                break;
            case Operation::Smooth:
                done = VyrCurveCalculus::Smooth(p.y, p.valid, width, result.y, result.valid);
                want.grdY = "smooth(" + gy + ")";
                want.uniteY = uy;
                break;
        }
        if (!done)
            return nullptr;
        if (!name.empty())
            want.grdY = name;
        want.name = "CALC_" + want.grdY + "_" + c->GetEntityName();
        // Written as the calculator writes its curves, so that either may replace it.
        const wxString call = op == Operation::Derivative ? "deriv(" + gy + ")"
                              : op == Operation::Integral
                                  ? "integ(" + gy + ")"
                                  : wxString::Format("smooth(%s, %d)", gy, width);
        want.text = want.grdY + " = " + call;
        if (vyrcalc::FindBlockingCurve(e, want, want.grdY + " = "))
            return nullptr;
        return vyrcalc::StoreCurve(*c->GetBase(), e, want, result, c);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

VyrCourbe* VyrCurveCalculus::CreateDerivative(VyrCourbe* c, const wxString& name) {
    return CreateFrom(c, Operation::Derivative, 1, name);
}

VyrCourbe* VyrCurveCalculus::CreateIntegral(VyrCourbe* c, const wxString& name) {
    return CreateFrom(c, Operation::Integral, 1, name);
}

VyrCourbe* VyrCurveCalculus::CreateSmoothed(VyrCourbe* c, int width, const wxString& name) {
    if (width < 1)
        return nullptr;
    return CreateFrom(c, Operation::Smooth, width, name);
}
