// The diagram's one recomputation after a change of its document. A live acquisition sends a
// data change for every point it appends; what a point changes is the vectors' ranges, which
// the vectors keep up to date themselves, so the recomputation costs what the diagram holds,
// not the points. The units are the part that walks the document and rebuilds string arrays:
// after a change of values only they are kept when nothing they are made from has changed.
#include "vyrbase/diagram/VyrDiagram.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// Every curve of the document in the order UpdateUnits walks them (experiments, then their
// curves), with or without vectors.
template <class Visit>
void ForEachCourbe(VyrBaseData* base, Visit visit) {
    if (!base)
        return;
    wxVyrListEntityNode* node = base->GetFirstExperienceNode();
    while (node) {
        VyrExperience* experience = base->GetNextExperience(&node);
        wxVyrListCourbeNode* cnode = experience->GetFirstCourbeNode();
        while (cnode) {
            if (VyrCourbe* courbe = experience->GetNextCourbe(&cnode))
                visit(courbe);
        }
    }
}

const wxString& UnitOf(const VyrVecteur* v) {
    static const wxString none;
    return v ? v->GetUnite() : none;
}

const wxString& GrandeurOf(const VyrVecteur* v) {
    static const wxString none;
    return v ? v->GetGrandeur() : none;
}

}  // namespace

void VyrDiagram::Recompute(bool dataOnly) {
    if (!dataOnly || !UnitsWouldStay()) {
        RecordUnitsShape(true);
        UpdateUnits();
        RecordUnitsShape(false);
    }
    UpdateCourbes();
    UpdateScale(VYR_SCALE_AUTO);
    UpdateScale(VYR_SCALE_STANDARD);
    SetTypeScale(m_iTypeScale);
    if (m_iTypeScale == VYR_SCALE_MANUAL) {
        VyrScale manual = m_scales[VYR_SCALE_MANUAL];
        SetManualScale(&manual, true);
    }
}

void VyrDiagram::RecordUnitsShape(bool before) {
    UnitsShape& shape = m_unitsShape;
    if (before) {
        shape.known = false;
        shape.curves.clear();
        ForEachCourbe(m_pBase, [&](VyrCourbe* courbe) {
            const VyrVecteur* vx = courbe->GetVx();
            const VyrVecteur* vy = courbe->GetVy();
            shape.curves.push_back({courbe, vx, vy, UnitOf(vx), UnitOf(vy), GrandeurOf(vx),
                                    courbe->IsShownInDiagram(m_iIndex)});
        });
        shape.grdXBefore = m_sGrdX;
        shape.uxBefore = m_sUx;
        shape.uyBefore = m_sUy;
        return;
    }
    shape.grdX = m_sGrdX;
    shape.ux = m_sUx;
    shape.uy = m_sUy;
    shape.run = m_iUnitsRuns;
    // Kept only when that run left the abscissa and units as it found them, so that running it
    // on what it left gives what it left; and when some curve matched the abscissa or there is
    // none, since otherwise UpdateUnits also searches the document's whole entity list.
    shape.known = m_pBase && (!m_asYUnits.IsEmpty() || m_sUx.empty()) &&
                  shape.grdXBefore == m_sGrdX && shape.uxBefore == m_sUx && shape.uyBefore == m_sUy;
}

bool VyrDiagram::UnitsWouldStay() const {
    const UnitsShape& shape = m_unitsShape;
    if (!shape.known || m_iUnitsRuns != shape.run || m_sGrdX != shape.grdX || m_sUx != shape.ux ||
        m_sUy != shape.uy)
        return false;
    size_t k = 0;
    bool same = true;
    ForEachCourbe(m_pBase, [&](VyrCourbe* courbe) {
        if (!same)
            return;
        if (k >= shape.curves.size()) {
            same = false;
            return;
        }
        const UnitsShapeCurve& was = shape.curves[k++];
        const VyrVecteur* vx = courbe->GetVx();
        const VyrVecteur* vy = courbe->GetVy();
        same = was.courbe == courbe && was.vx == vx && was.vy == vy && was.ux == UnitOf(vx) &&
               was.uy == UnitOf(vy) && was.grdX == GrandeurOf(vx) &&
               was.shown == courbe->IsShownInDiagram(m_iIndex);
    });
    return same && k == shape.curves.size();
}
