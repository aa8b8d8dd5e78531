// XY display: a diagram whose abscissa is the values of a curve C. Every curve sampled against
// the same abscissa as C gets an XY counterpart (C's values across, its own values up), and C
// itself an inverse curve; both are curves of the document, marked as made for XY display so
// that the document can drop them once no diagram needs them.
#include "vyrbase/diagram/VyrDiagram.h"

#include <vector>

#include <wx/dynarray.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// Names the curve and its two vectors: "VX_" and "VY_" followed by the curve's name.
void SetNames(VyrCourbeParam& p, const wxString& name) {
    p.m_sNom = name;
    p.m_sNomVx = "VX_" + name;
    p.m_sNomVy = "VY_" + name;
}

// The XY curve looks like the curve it is made from.
void CopyLook(VyrCourbeParam& p, const VyrCourbe* model) {
    p.m_colour = model->GetColor();
    p.m_iWidth = model->GetWidth();
    p.m_iStylePoint = model->GetStylePoint();
    p.m_iStyleLiaison = model->GetStyleLiaison();
}

// Creates (or reuses) the XY curve in the experiment of `sister` and links the two. Null when
// the sister belongs to no experiment.
VyrCourbe* CreateXYCourbe(VyrBaseData* base, VyrCourbe* sister, VyrCourbeParam& p) {
    bool created = false;
    VyrCourbe* courbe =
        base->CreateCourbe(base->FindExperienceFromCourbe(sister), p, &created, false);
    if (!courbe)
        return nullptr;
    // Only a curve made here is marked: a reused curve may be one of the user's own with the
    // same quantities, which must never be dropped as an XY leftover.
    if (created) {
        courbe->SetNewlyCreated(1);
        courbe->SetXYDisplay(1);
    }
    courbe->SetCourbeSoeur(sister);
    return courbe;
}

// The document's diagram that shows a new XY curve: the active one (null when the curve was
// detached meanwhile or no diagram is active).
VyrDiagram* DiagramForNewCourbe(VyrBaseData* base, VyrCourbe* courbe) {
    return courbe->IsDeconnected() ? nullptr : base->GetActiveDiagram();
}

}  // namespace

void VyrDiagram::SetAbscisse(const wxString& grandeurX, const wxString& unit, VyrCourbe* courbe) {
    m_sGrdX = grandeurX;
    m_sUx = unit;
    if (courbe) {
        m_bXYMode = true;
        if (courbe->GetVx())
            m_sUy = courbe->GetVx()->GetUnite();
        InvertCurveForXY(courbe);
        CreateCurvesForXY(courbe);
    } else {
        m_bXYMode = false;
    }
    UpdateUnits();
    UpdateCourbes();
    UpdateScale(VYR_SCALE_AUTO);
    UpdateScale(VYR_SCALE_STANDARD);
    SetTypeScale(m_iTypeScale);
    Notify(VYR_MSG_ABSCISSA_CHANGED, nullptr);
    if (m_pBase)
        m_pBase->RemoveCourbesXYInutiles();
}

void VyrDiagram::CreateCurvesForXY(VyrCourbe* courbe) {
    if (!courbe || !m_pBase || !courbe->GetVx() || !courbe->GetVy())
        return;
    const VyrVecteur* cx = courbe->GetVx();

    // Gathered first: creating the XY curves appends to the experiments being walked.
    std::vector<VyrCourbe*> partners;
    wxVyrListEntityNode* node = m_pBase->GetFirstExperienceNode();
    while (node) {
        VyrExperience* experience = m_pBase->GetNextExperience(&node);
        for (auto* cn = experience->GetCourbes().GetFirst(); cn; cn = cn->GetNext()) {
            VyrCourbe* d = cn->GetData();
            if (d == courbe || d->IsDeconnected() || !d->GetVx() || !d->GetVy())
                continue;
            if (d->GetVx()->GetUnite() == cx->GetUnite() &&
                d->GetVx()->GetGrandeur() == cx->GetGrandeur())
                partners.push_back(d);
        }
    }

    for (VyrCourbe* d : partners) {
        wxArrayDouble abscissas;
        VyrVecteur::MergeVectors(courbe->GetVx(), d->GetVx(), abscissas);

        VyrCourbeParam p;
        SetNames(p, wxString::Format("XY_%d_%d", courbe->GetOid(), d->GetOid()));
        p.m_sUniteX = courbe->GetVy()->GetUnite();
        p.m_sGrdX = courbe->GetVy()->GetGrandeur();
        p.m_sUniteY = d->GetVy()->GetUnite();
        p.m_sGrdY = d->GetVy()->GetGrandeur();
        p.m_sText = d->GetText();
        CopyLook(p, d);
        VyrCourbe* xy = CreateXYCourbe(m_pBase, d, p);
        if (!xy)
            continue;

        xy->PreAlloc(static_cast<int>(abscissas.GetCount()));
        // The abscissas ascend, so each interpolation starts from the previous bracket instead
        // of searching both curves from their first point again.
        int startC = 0;
        int startD = 0;
        for (double x : abscissas) {
            double yc = 0.0;
            double yd = 0.0;
            bool interpolated = false;
            const bool okC = courbe->InterpolateEx(x, yc, interpolated, nullptr, startC);
            const bool okD = d->InterpolateEx(x, yd, interpolated, nullptr, startD);
            if (okC && okD)
                m_pBase->AddPoint(xy, yc, yd, false);
        }
        if (VyrDiagram* target = DiagramForNewCourbe(m_pBase, xy)) {
            target->ShowData(xy, true);
            target->Notify(VYR_MSG_VISIBILITY_CHANGED, xy);
        }
    }
}

void VyrDiagram::InvertCurveForXY(VyrCourbe* courbe) {
    if (!courbe || !m_pBase || !courbe->GetVx() || !courbe->GetVy())
        return;
    const VyrVecteur* cx = courbe->GetVx();
    const VyrVecteur* cy = courbe->GetVy();

    VyrCourbeParam p;
    SetNames(p, wxString::Format("XY_INVERT_%d", courbe->GetOid()));
    p.m_sUniteX = cy->GetUnite();
    p.m_sGrdX = cy->GetGrandeur();
    p.m_sUniteY = cx->GetUnite();
    p.m_sGrdY = cx->GetGrandeur();
    CopyLook(p, courbe);
    VyrCourbe* inverse = CreateXYCourbe(m_pBase, courbe, p);
    if (!inverse || !inverse->GetVx() || !inverse->GetVy())
        return;

    const int n = cx->GetSize();
    inverse->SetSize(n);
    for (int i = 0; i < n; ++i) {
        // Past the end of Y the first Y value stands in (0.0 when Y is empty).
        const double y = i < cy->GetSize() ? cy->GetVal(i) : cy->GetVal(0);
        inverse->GetVx()->SetVal(i, y);
        inverse->GetVy()->SetVal(i, cx->GetVal(i));
    }
    if (VyrDiagram* target = DiagramForNewCourbe(m_pBase, inverse)) {
        target->ShowData(inverse, true);
        target->Notify(VYR_MSG_VISIBILITY_CHANGED, inverse);
    }
}
