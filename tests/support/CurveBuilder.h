// Builds documents of curves for diagram tests: one call per curve, with its quantities, units
// and points, through the document's own CreateCourbe and AddPoint.
//
//     VyrBaseData doc(nullptr);
//     VyrExperience* e = AddExperience(doc, "E1");
//     VyrCourbe* u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {1, 3}});
//     ShowInDiagram(doc, 0, {u});   // flags the curve for diagram 0, then Fill()
#ifndef VYR_TESTS_SUPPORT_CURVEBUILDER_H
#define VYR_TESTS_SUPPORT_CURVEBUILDER_H

#include <initializer_list>
#include <utility>
#include <vector>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/diagram/VyrDiagram.h"

struct CurveQuantities {
    wxString grdY;
    wxString uniteY;
    wxString grdX;
    wxString uniteX;
};

inline VyrExperience* AddExperience(VyrBaseData& doc, const wxString& name) {
    VyrExperienceParam p(name);
    return doc.CreateExperience(p);
}

// A new curve (name "<grdY>(<grdX>)") with these points, all valid, and these standard
// bounds (the curve's own scale).
inline VyrCourbe* AddCurve(VyrBaseData& doc, VyrExperience* e, const CurveQuantities& q,
                           const std::vector<std::pair<double, double>>& points,
                           const VyrScale& standard = VyrScale(0.0, 1.0, -1.0, 1.0),
                           const wxColour& colour = wxColour(255, 0, 0)) {
    VyrCourbeParam p;
    p.m_sNom = q.grdY + "(" + q.grdX + ")";
    p.m_sNomVx = "VX_" + p.m_sNom;
    p.m_sNomVy = "VY_" + p.m_sNom;
    p.m_sGrdY = q.grdY;
    p.m_sUniteY = q.uniteY;
    p.m_sGrdX = q.grdX;
    p.m_sUniteX = q.uniteX;
    p.m_colour = colour;
    p.m_scale = standard;
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    for (const auto& xy : points)
        doc.AddPoint(c, xy.first, xy.second, false);
    return c;
}

// Flags the curves as shown in diagram `index` and rebuilds that diagram from the flags.
inline VyrDiagram* ShowInDiagram(VyrBaseData& doc, int index,
                                 std::initializer_list<VyrCourbe*> curves) {
    for (VyrCourbe* c : curves)
        c->SetShownInDiagram(index, true);
    VyrDiagram* d = doc.GetDiagram(index);
    d->Fill();
    return d;
}

#endif
