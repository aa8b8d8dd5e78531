// Curves derived from others: resampling, working copies for calculations, duplicates under
// another quantity, and the clean-up of vectors no curve uses.
#include <unordered_set>
#include <vector>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// Names of the working curves: never reset, so that two calculations never share a curve.
int s_iCourbeForCalcCounter = 0;

// A point of a curve, copied out before the destination is (re)made.
struct Point {
    double x;
    double y;
};

// Fills the curve's two vectors with the points, all valid.
void WritePoints(VyrCourbe* c, const std::vector<Point>& points) {
    int n = static_cast<int>(points.size());
    c->SetSize(n);
    for (int i = 0; i < n && i < c->GetVx()->GetSize() && i < c->GetVy()->GetSize(); ++i) {
        c->GetVx()->SetVal(i, points[i].x);
        c->GetVy()->SetVal(i, points[i].y);
    }
}

// The parameters of a curve with the X quantity and unit of `c`, the Y unit of `c` and another
// Y quantity.
VyrCourbeParam ParamLike(VyrCourbe* c, const wxString& name, const wxString& grdY) {
    VyrCourbeParam p;
    p.m_sNom = name;
    p.m_sNomVx = name + "VX";
    p.m_sNomVy = name + "VY";
    if (c->GetVx()) {
        p.m_sUniteX = c->GetVx()->GetUnite();
        p.m_sGrdX = c->GetVx()->GetGrandeur();
    }
    if (c->GetVy())
        p.m_sUniteY = c->GetVy()->GetUnite();
    p.m_sGrdY = grdY;
    return p;
}
}  // namespace

void VyrBaseData::Echant(VyrCourbe* c, double x0, double x1, int n) {
    if (!c || !c->GetVx() || !c->GetVy())
        return;
    VyrVecteur& vx = *c->GetVx();
    VyrVecteur& vy = *c->GetVy();
    const int m = vx.GetSize();
    // Fewer than two new points leaves no step to compute: the curve stays as it is.
    if (m < 1 || n < 2)
        return;
    // Validity is neither copied nor consulted: invalid source points take part.
    std::vector<double> xs(m), ys(m);
    const VyrVecteur& cvx = vx;
    const VyrVecteur& cvy = vy;
    for (int j = 0; j < m; ++j) {
        xs[j] = cvx[j];
        ys[j] = cvy[j];
    }
    c->SetSize(n);
    if (vx.GetSize() != n || vy.GetSize() != n)
        return;  // out of memory
    const double step = (x1 - x0) / (n - 1);
    for (int k = 0; k < n; ++k) {
        // The new abscissae start at 0: x0 only enters through the step (callers rely on it).
        const double xk = k * step;
        double yk = ys[m - 1];
        for (int j = 0; j < m; ++j) {
            if (xs[j] == xk) {
                yk = ys[j];
                break;
            }
            if (xs[j] > xk) {
                if (j == 0) {
                    yk = ys[0];
                } else {
                    // The two intercepts averaged, then the slope applied: this order of
                    // evaluation is kept so that resampled values stay bit for bit the same.
                    const double s = (ys[j] - ys[j - 1]) / (xs[j] - xs[j - 1]);
                    yk = ((ys[j] - s * xs[j]) + (ys[j - 1] - s * xs[j - 1])) * 0.5 + s * xk;
                }
                break;
            }
        }
        vx.SetVal(k, xk);
        vy.SetVal(k, yk);
        vx.ValidateAt(k, true);
        vy.ValidateAt(k, true);
    }
}

VyrCourbe* VyrBaseData::CreateCourbeForCalc(VyrCourbe* c, double xmin, double xmax) {
    // Written so that a NaN bound gives null too.
    if (!c || !(xmax >= xmin))
        return nullptr;
    const bool ranged = xmin != xmax;
    wxString name = wxString::Format("COURBE_FOR_CALC_%d", ++s_iCourbeForCalcCounter);
    VyrCourbeParam p = ParamLike(c, name, name);
    std::vector<Point> points;
    if (c->GetVx() && c->GetVy()) {
        const VyrVecteur& vx = *c->GetVx();
        const VyrVecteur& vy = *c->GetVy();
        for (int i = 0; i < vx.GetSize() && i < vy.GetSize(); ++i)
            if (vx.IsValidAt(i) && vy.IsValidAt(i) && (!ranged || (xmin <= vx[i] && vx[i] <= xmax)))
                points.push_back({vx[i], vy[i]});
    }
    VyrCourbe* copy = CreateCourbe(FindExperienceFromCourbe(c), p, nullptr, false);
    if (!copy)
        return nullptr;
    WritePoints(copy, points);
    SortCurve(copy, true);
    return copy;
}

VyrCourbe* VyrBaseData::DupliqueCourbe(VyrCourbe* c, wxString& grdY, wxColour colour) {
    if (!c)
        return nullptr;
    VyrCourbeParam p = ParamLike(c, wxString(), grdY);
    p.m_sNom = wxString::Format("COURBE_%s_%s_%s_%s", p.m_sUniteX, p.m_sGrdX, p.m_sUniteY, grdY);
    p.m_sNomVx = p.m_sNom + "VX";
    p.m_sNomVy = p.m_sNom + "VY";
    p.m_colour = colour;
    p.m_iWidth = 1;
    p.m_iStylePoint = 1;
    p.m_iStyleLiaison = 1;
    // The points are copied out first: when grdY names the source's own quantity, the curve
    // reused below is the source itself, emptied by CreateCourbe.
    std::vector<Point> points;
    if (c->GetVx() && c->GetVy()) {
        const VyrVecteur& vx = *c->GetVx();
        const VyrVecteur& vy = *c->GetVy();
        for (int i = 0; i < vx.GetSize() && i < vy.GetSize(); ++i)
            if (vx.IsValidAt(i) && vy.IsValidAt(i))
                points.push_back({vx[i], vy[i]});
    }
    VyrCourbe* copy = CreateCourbe(FindExperienceFromCourbe(c), p, nullptr, false);
    if (!copy)
        return nullptr;
    WritePoints(copy, points);
    return copy;
}

void VyrBaseData::RemoveVecteurOrphelin() {
    // A vector is in use when a curve of the document refers to it, attached or detached (a
    // detached curve comes back with its vectors on undo).
    std::unordered_set<VyrVecteur*> used;
    auto markUsed = [&used](VyrEntity* entity) {
        if (entity && entity->GetKind() == VYR_KIND_COURBE) {
            auto* c = static_cast<VyrCourbe*>(entity);
            used.insert(c->GetVx());
            used.insert(c->GetVy());
        }
    };
    for (auto* node = m_listEntity.GetFirst(); node; node = node->GetNext())
        markUsed(node->GetData());
    for (size_t i = 0; i < m_arrayDeconnected.GetCount(); ++i)
        markUsed(m_arrayDeconnected[i]);
    VyrListVecteur orphans;
    wxVyrListEntityNode* node = GetFirstEntityNode(VYR_KIND_VECTEUR);
    while (node) {
        auto* v = static_cast<VyrVecteur*>(GetNextEntity(&node, VYR_KIND_VECTEUR));
        if (!used.count(v))
            orphans.Append(v);
    }
    for (auto* n = orphans.GetFirst(); n; n = n->GetNext())
        RemoveEntity(n->GetData());
}

void VyrBaseData::ChangeAllVecteurX(const wxString& grandeur, const wxString& unite) {
    // Nothing is notified: the caller refreshes the diagrams.
    wxVyrListEntityNode* node = GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = GetNextExperience(&node);
        for (auto* cn = e->GetCourbes().GetFirst(); cn; cn = cn->GetNext()) {
            VyrCourbe* c = cn->GetData();
            if (c && c->GetVx()) {
                c->GetVx()->SetGrandeur(grandeur);
                c->GetVx()->SetUnite(unite);
            }
        }
    }
}
