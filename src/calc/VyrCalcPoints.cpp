#include "calc/VyrCalcPoints.h"

#include <algorithm>
#include <cmath>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyrcalc {

void CollectValidPoints(const VyrCourbe* c, double lo, double hi, Points& out) {
    if (!c || !c->GetVx() || !c->GetVy())
        return;
    const VyrVecteur& vx = *c->GetVx();
    const VyrVecteur& vy = *c->GetVy();
    const int n = std::min(vx.GetSize(), vy.GetSize());
    const double* xs = vx.GetArea();
    const double* ys = vy.GetArea();
    if (n <= 0 || !xs || !ys)
        return;
    out.x.reserve(out.x.size() + n);
    out.y.reserve(out.y.size() + n);
    for (int i = 0; i < n; ++i) {
        const double x = xs[i];
        if (x >= lo && x <= hi && vx.IsValidAt(i) && vy.IsValidAt(i)) {
            out.x.push_back(x);
            out.y.push_back(ys[i]);
        }
    }
}

void CollectAllPoints(const VyrCourbe* c, Points& out) {
    out = Points();
    if (!c || !c->GetVx() || !c->GetVy())
        return;
    const VyrVecteur& vx = *c->GetVx();
    const VyrVecteur& vy = *c->GetVy();
    const int n = std::min(vx.GetSize(), vy.GetSize());
    if (n <= 0 || !vx.GetArea() || !vy.GetArea())
        return;
    out.x.assign(vx.GetArea(), vx.GetArea() + n);
    out.y.assign(vy.GetArea(), vy.GetArea() + n);
    out.valid.resize(n);
    for (int i = 0; i < n; ++i)
        out.valid[i] = vx.IsValidAt(i) && vy.IsValidAt(i);
}

VyrExperience* ExperienceOf(const VyrCourbe* c) {
    if (!c || !c->GetBase())
        return nullptr;
    return c->GetBase()->FindExperienceFromCourbe(const_cast<VyrCourbe*>(c));
}

bool IsAscending(const std::vector<double>& x) {
    for (size_t i = 1; i < x.size(); ++i)
        if (!(x[i] >= x[i - 1]))
            return false;
    return true;
}

namespace {

// Smallest and largest finite value among the valid points; false when there is none.
bool ValidRange(const std::vector<double>& v, const std::vector<unsigned char>& valid, double& lo,
                double& hi) {
    bool seen = false;
    for (size_t i = 0; i < v.size(); ++i) {
        if ((!valid.empty() && !valid[i]) || !std::isfinite(v[i]))
            continue;
        if (!seen) {
            lo = hi = v[i];
            seen = true;
        }
        lo = std::min(lo, v[i]);
        hi = std::max(hi, v[i]);
    }
    return seen;
}

}  // namespace

VyrCourbe* StoreCurve(VyrBaseData& doc, VyrExperience* e, const CurveSpec& spec,
                      const Points& points, const VyrCourbe* like) {
    if (!e || points.x.size() != points.y.size() ||
        points.x.size() > static_cast<size_t>(0x7fffffff - 200))
        return nullptr;
    VyrCourbeParam p;
    p.m_sNom = spec.name;
    p.m_sNomVx = spec.name + "VX";
    p.m_sNomVy = spec.name + "VY";
    p.m_sGrdX = spec.grdX;
    p.m_sUniteX = spec.uniteX;
    p.m_sGrdY = spec.grdY;
    p.m_sUniteY = spec.uniteY;
    p.m_sText = spec.text;
    if (like) {
        p.m_iWidth = like->GetWidth();
        p.m_iStylePoint = like->GetStylePoint();
        p.m_iStyleLiaison = like->GetStyleLiaison();
    }
    double lo = 0.0, hi = 0.0;
    if (ValidRange(points.x, points.valid, lo, hi) && lo < hi) {
        p.m_scale.SetXmin(lo);
        p.m_scale.SetXmax(hi);
    }
    if (ValidRange(points.y, points.valid, lo, hi) && lo < hi) {
        p.m_scale.SetYmin(lo);
        p.m_scale.SetYmax(hi);
    }
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    if (!c || !c->GetVx() || !c->GetVy())
        return nullptr;
    const int n = static_cast<int>(points.x.size());
    c->SetSize(n);
    VyrVecteur& vx = *c->GetVx();
    VyrVecteur& vy = *c->GetVy();
    if (vx.GetSize() != n || vy.GetSize() != n) {
        c->SetSize(0);
        return nullptr;
    }
    if (n > 0) {
        std::copy(points.x.begin(), points.x.end(), vx.GetArea());
        std::copy(points.y.begin(), points.y.end(), vy.GetArea());
    }
    for (int i = 0; i < n; ++i) {
        // A point that did not come out of the calculation keeps a value the file can hold.
        const bool valid = points.valid.empty() || points.valid[i];
        vx.ValidateAt(i, true);
        vy.ValidateAt(i, valid);
        if (!valid)
            vy.GetArea()[i] = 0.0;
    }
    VyrObserverMsg changed(VYR_MSG_DATA_CHANGED, c);
    doc.UpdateAllObservers(changed);
    return c;
}

}  // namespace vyrcalc
