// Which curves the diagram shows (from the curves' per-diagram flags) and which of them are
// plotted against the current abscissa.
#include "vyrbase/diagram/VyrDiagram.h"

#include <unordered_set>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

void VyrDiagram::UpdateCourbes() {
    m_aPlottedCourbes.clear();
    for (auto* node = m_listShown.GetFirst(); node; node = node->GetNext()) {
        VyrEntity* entity = node->GetData();
        if (!entity || entity->GetKind() != VYR_KIND_COURBE)
            continue;
        auto* courbe = static_cast<VyrCourbe*>(entity);
        const VyrVecteur* vx = courbe->GetVx();
        if (vx && vx->GetGrandeur() == m_sGrdX && vx->GetUnite() == m_sUx)
            m_aPlottedCourbes.push_back(courbe);
    }
}

void VyrDiagram::Fill() {
    m_listShown.Clear();
    if (m_pBase) {
        // The curves appended so far, which the shown list holds: a search of the list for
        // each curve would cost the square of their number.
        std::unordered_set<const VyrCourbe*> shown;
        wxVyrListEntityNode* node = m_pBase->GetFirstCourbeNode();
        while (node) {
            VyrCourbe* courbe = m_pBase->GetNextCourbe(&node);
            if (!courbe->IsShownInDiagram(m_iIndex) || !shown.insert(courbe).second)
                continue;
            m_listShown.Append(courbe);
            if (m_pBase->GetDiagramCount() < m_iIndex + 1)
                m_pBase->SetDiagramCount(m_iIndex + 1);
            // The last shown curve decides the abscissa.
            if (const VyrVecteur* vx = courbe->GetVx()) {
                m_sGrdX = vx->GetGrandeur();
                m_sUx = vx->GetUnite();
            }
        }
    }
    Recompute(false);
}
