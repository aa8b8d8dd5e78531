#include "calc/VyrCalcPoints.h"

#include <algorithm>
#include <cmath>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrBitMask.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyrcalc {

void ReadValidity(const VyrVecteur& v, int n, unsigned char* out) {
    const VyrBitMask& mask = *v.GetValidity();
    const int size = std::min(n, v.GetSize());
    // A stored 0 is a valid point; bytes beyond the mask's read as valid.
    const int stored = std::min(mask.GetSize(), (size + 7) / 8);
    int i = 0;
    for (int k = 0; k < stored; ++k) {
        const unsigned char byte = mask[k];
        for (int b = 0; b < 8 && i < size; ++b, ++i)
            out[i] = !(byte & (1u << b));
    }
    for (; i < size; ++i)
        out[i] = 1;
    for (; i < n; ++i)
        out[i] = 0;
}

void WriteValidity(VyrVecteur& v, const unsigned char* valid, int n) {
    if (n <= 0)
        return;
    VyrBitMask& mask = *v.GetValidity();
    mask.SetSize(n);
    const int bytes = (n + 7) / 8;
    for (int k = 0; k < bytes; ++k) {
        const int count = std::min(8, n - k * 8);
        // The bits of the last byte beyond n keep their state.
        unsigned char byte = count == 8 ? 0 : mask.GetOctetAt(k) & (0xffu << count);
        if (valid)
            for (int b = 0; b < count; ++b)
                if (!valid[k * 8 + b])
                    byte |= static_cast<unsigned char>(1u << b);
        mask.SetOctetAt(k, byte);
    }
}

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
    std::vector<unsigned char> validX(n), validY(n);
    ReadValidity(vx, n, validX.data());
    ReadValidity(vy, n, validY.data());
    out.x.reserve(out.x.size() + n);
    out.y.reserve(out.y.size() + n);
    for (int i = 0; i < n; ++i) {
        const double x = xs[i];
        if (x >= lo && x <= hi && validX[i] && validY[i]) {
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
    std::vector<unsigned char> validY(n);
    out.valid.resize(n);
    ReadValidity(vx, n, out.valid.data());
    ReadValidity(vy, n, validY.data());
    for (int i = 0; i < n; ++i)
        out.valid[i] = out.valid[i] && validY[i];
}

VyrExperience* ExperienceOf(const VyrCourbe* c) {
    if (!c || !c->GetBase())
        return nullptr;
    return c->GetBase()->FindExperienceFromCourbe(const_cast<VyrCourbe*>(c));
}

VyrCourbe* FindBlockingCurve(VyrExperience* e, const ResultCurve& want, const wxString& ownPrefix) {
    if (!e)
        return nullptr;
    VyrCourbe* existing = e->FindCourbeByGrd(want.grdY, want.uniteY, want.grdX, want.uniteX);
    return existing && !existing->GetText().StartsWith(ownPrefix) ? existing : nullptr;
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

VyrCourbe* StoreCurve(VyrBaseData& doc, VyrExperience* e, const ResultCurve& want,
                      const Points& points, const VyrCourbe* like) {
    if (!e || points.x.size() != points.y.size() ||
        points.x.size() > static_cast<size_t>(0x7fffffff - 200))
        return nullptr;
    VyrCourbeParam p;
    p.m_sNom = want.name;
    p.m_sNomVx = want.name + "VX";
    p.m_sNomVy = want.name + "VY";
    p.m_sGrdX = want.grdX;
    p.m_sUniteX = want.uniteX;
    p.m_sGrdY = want.grdY;
    p.m_sUniteY = want.uniteY;
    p.m_sText = want.text;
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
    const unsigned char* valid = points.valid.empty() ? nullptr : points.valid.data();
    WriteValidity(vx, nullptr, n);
    WriteValidity(vy, valid, n);
    // A point that did not come out of the calculation keeps a value the file can hold.
    for (int i = 0; valid && i < n; ++i)
        if (!valid[i])
            vy.GetArea()[i] = 0.0;
    VyrObserverMsg changed(VYR_MSG_DATA_CHANGED, c);
    doc.UpdateAllObservers(changed);
    return c;
}

}  // namespace vyrcalc
