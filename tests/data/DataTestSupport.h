// Helpers shared by the data tests: access to a diagram's abscissa unit, curves built from
// values, and an application object whose layout runs right to left.
#ifndef VYR_TESTS_DATA_DATATESTSUPPORT_H
#define VYR_TESTS_DATA_DATATESTSUPPORT_H

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include <wx/app.h>
#include <wx/translation.h>

#include "support/TranslationScope.h"
#include "support/VyrBaseDataTestAccess.h"
#include "support/VectorContents.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

class VyrDiagramTestAccess {
public:
    static void SetUx(VyrDiagram* d, const wxString& ux) { d->m_sUx = ux; }
};

namespace vyrtest {

inline VyrCourbeParam Param(const wxString& grdY, const wxString& uniteY, const wxString& grdX,
                            const wxString& uniteX) {
    VyrCourbeParam p;
    p.m_sNom = "C_" + grdY + "_" + grdX;
    p.m_sNomVx = p.m_sNom + "VX";
    p.m_sNomVy = p.m_sNom + "VY";
    p.m_sGrdY = grdY;
    p.m_sUniteY = uniteY;
    p.m_sGrdX = grdX;
    p.m_sUniteX = uniteX;
    return p;
}

// A curve of e with quantities grdY(t), units V and s, holding the points (xs[i], ys[i]).
inline VyrCourbe* Curve(VyrBaseData& doc, VyrExperience* e, const wxString& grdY,
                        const std::vector<double>& xs, const std::vector<double>& ys) {
    VyrCourbeParam p = Param(grdY, "V", "t", "s");
    VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
    for (size_t i = 0; i < xs.size() && i < ys.size(); ++i)
        doc.AddPoint(c, xs[i], ys[i], false);
    return c;
}

inline std::vector<VyrEntity*> Entities(const VyrListEntity& list) {
    std::vector<VyrEntity*> entities;
    for (auto* node = list.GetFirst(); node; node = node->GetNext())
        entities.push_back(node->GetData());
    return entities;
}

inline std::vector<VyrEntity*> Detached(const VyrBaseData& doc) {
    std::vector<VyrEntity*> entities;
    for (size_t i = 0; i < doc.GetDeconnectedEntities().GetCount(); ++i)
        entities.push_back(doc.GetDeconnectedEntities()[i]);
    return entities;
}

template <class List>
std::vector<void*> Items(const List& list) {
    std::vector<void*> items;
    for (auto* node = list.GetFirst(); node; node = node->GetNext())
        items.push_back(node->GetData());
    return items;
}

// Replaces the process's application object by a GUI one laid out right to left while it
// lives, then puts the previous one back.
class RightToLeftAppScope {
public:
    RightToLeftAppScope() : m_previous(wxAppConsole::GetInstance()) {
        m_app = new App;
        wxAppConsole::SetInstance(m_app);
    }
    ~RightToLeftAppScope() {
        delete m_app;
        wxAppConsole::SetInstance(m_previous);
    }

private:
    class App : public wxApp {
    public:
        wxLayoutDirection GetLayoutDirection() const override { return wxLayout_RightToLeft; }
    };

    wxAppConsole* m_previous;
    App* m_app;
};

}  // namespace vyrtest

#endif
