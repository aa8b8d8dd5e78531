// The diagram's reactions to its document's notifications. Every message is passed on to the
// diagram's own observers (the application's views) after the diagram has followed it, except
// code 11.
#include "vyrbase/diagram/VyrDiagram.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeChangeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

#include "diagram/VyrDiagramShownFlag.h"

void VyrDiagram::OnUpdateObserver(VyrObserverMsg& msg) {
    void* param = msg.GetParam();
    switch (msg.GetMsg()) {
        case VYR_MSG_DATA_CHANGED:
            // Without a curve the change concerns nothing the diagram draws from.
            if (param)
                Recompute(true);
            break;
        case VYR_MSG_EXPERIENCE_DELETED:
        case VYR_MSG_EXPERIENCE_DECONNECTED:
            // After code 3 the experiment is already freed: it is only compared.
            OnDeleteExperience(static_cast<VyrExperience*>(param));
            break;
        case VYR_MSG_CURVE_DELETED:
        case VYR_MSG_CURVE_DECONNECTED:
            OnDeleteCourbe(static_cast<VyrCourbe*>(param));
            break;
        case VYR_MSG_CURVE_RECONNECTED:
            OnCreateCourbe(static_cast<VyrCourbe*>(param));
            break;
        case VYR_MSG_FILE_LOADED:
            Fill();
            break;
        case VYR_MSG_CURVE_CREATED:
            // Swallowed: a new curve is shown only when the application asks for it, and the
            // views hear of it through the document.
            return;
        case VYR_MSG_CURVE_QUANTITIES_CHANGED:
            if (auto* change = static_cast<VyrCourbeChangeParam*>(param)) {
                VyrCourbe* courbe = change->GetCourbe();
                if (courbe && (change->GetFlag(0) || change->GetFlag(1)) && courbe->GetVx()) {
                    m_sGrdX = courbe->GetVx()->GetGrandeur();
                    m_sUx = courbe->GetVx()->GetUnite();
                }
                if (courbe)
                    OnListEntityModified();
            }
            break;
        default:
            break;
    }
    UpdateAllObservers(msg);
}

void VyrDiagram::OnInitialUpdateObserver() {
    // A diagram that starts observing builds itself from the document as it is now.
    Fill();
    Notify(VYR_MSG_DATA_CHANGED, nullptr);
}

void VyrDiagram::OnCreateCourbe(VyrCourbe* courbe) {
    if (courbe && courbe->IsShownInDiagram(m_iIndex))
        ShowData(courbe, true);
}

bool VyrDiagram::OnDeleteCourbe(VyrCourbe* courbe) {
    if (courbe == m_pActiveCourbe) {
        // The last other shown curve takes over.
        m_pActiveCourbe = nullptr;
        for (auto* node = m_listShown.GetFirst(); node; node = node->GetNext()) {
            VyrEntity* entity = node->GetData();
            if (entity != courbe && entity->GetKind() == VYR_KIND_COURBE)
                m_pActiveCourbe = static_cast<VyrCourbe*>(entity);
        }
    }
    if (!courbe)
        return false;
    const bool present = m_listShown.DeleteObject(courbe);
    if (present && courbe->GetKind() == VYR_KIND_COURBE)
        VyrSetShownFlag(*this, courbe, false);
    OnListEntityModified();
    return present;
}

void VyrDiagram::OnDeleteExperience(VyrExperience* experience) {
    if (experience && experience == m_pActiveExperience) {
        m_pActiveExperience = nullptr;
        SetDefaultExperience();
    }
}

void VyrDiagram::OnListEntityModified() {
    Recompute(false);
}
