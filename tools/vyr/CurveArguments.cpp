#include "CurveArguments.h"

#include <cmath>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace vyr {

VyrCourbe* FindCurveArgument(VyrBaseData& doc, const wxString& name) {
    for (int pass = 0; pass < 3; ++pass) {
        wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
        while (node) {
            VyrCourbe* c = doc.GetNextCourbe(&node);
            if (!c || !c->GetVx() || !c->GetVy())
                continue;
            const wxString candidate = pass == 0   ? c->GetName()
                                       : pass == 1 ? c->GetEntityName()
                                                   : c->GetVy()->GetGrandeur();
            if (candidate == name)
                return c;
        }
    }
    return nullptr;
}

wxString CurveNames(VyrBaseData& doc) {
    wxString names;
    wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = doc.GetNextCourbe(&node);
        if (!c || !c->GetVx() || !c->GetVy())
            continue;
        names += (names.empty() ? "" : ", ") + c->GetName();
    }
    return names.empty() ? wxString("none") : names;
}

bool ReadNumber(const std::string& text, double& value) {
    double v = 0.0;
    if (text.empty() || !wxString::FromUTF8(text.c_str()).ToCDouble(&v) || !std::isfinite(v))
        return false;
    value = v;
    return true;
}

}  // namespace vyr
