// Helpers shared by the calculator's tests: an experiment, curves built from values (invalid
// points marked), and the values of a curve read back.
#ifndef VYR_TESTS_CALC_CALCTESTSUPPORT_H
#define VYR_TESTS_CALC_CALCTESTSUPPORT_H

#include <vector>

#include "support/VectorContents.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"

namespace calctest {

using vyrtest::Experience;
using vyrtest::Validity;
using vyrtest::Values;

// A curve grdY(grdX) of e in the given units; the points at the indices in `invalid` are
// marked invalid in Y.
inline VyrCourbe* Curve(VyrBaseData& doc, VyrExperience* e, const wxString& grdY,
                        const wxString& uniteY, const std::vector<double>& xs,
                        const std::vector<double>& ys, const std::vector<int>& invalid = {},
                        const wxString& grdX = "t", const wxString& uniteX = "s") {
    VyrCourbeParam p;
    p.m_sNom = grdY + "(" + grdX + ")";
    p.m_sNomVx = p.m_sNom + "VX";
    p.m_sNomVy = p.m_sNom + "VY";
    p.m_sGrdY = grdY;
    p.m_sUniteY = uniteY;
    p.m_sGrdX = grdX;
    p.m_sUniteX = uniteX;
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    for (size_t i = 0; i < xs.size() && i < ys.size(); ++i) {
        doc.AddPoint(c, xs[i], ys[i], false);
        c->GetVx()->ValidateAt(static_cast<int>(i), true);
        c->GetVy()->ValidateAt(static_cast<int>(i), true);
    }
    for (int i : invalid)
        c->GetVy()->ValidateAt(i, false);
    return c;
}

}  // namespace calctest

#endif
