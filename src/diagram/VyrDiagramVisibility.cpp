// Which curves a diagram shows (its shown list, kept equal to the curves' per-diagram flags),
// the active curve and experience, and the static operations on the diagrams of the active
// document.
#include "vyrbase/diagram/VyrDiagram.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"

#include "diagram/VyrDiagramShownFlag.h"

bool VyrDiagram::ShowData(VyrEntity* entity, bool show) {
    if (!entity)
        return false;
    const bool present = m_listShown.Find(entity) != nullptr;
    bool changed = false;
    if (show && !present) {
        m_listShown.Append(entity);
        changed = true;
    } else if (!show && present) {
        m_listShown.DeleteObject(entity);
        changed = true;
    }
    if (changed && entity->GetKind() == VYR_KIND_COURBE) {
        auto* courbe = static_cast<VyrCourbe*>(entity);
        VyrSetShownFlag(*this, courbe, show);
        // A newly shown curve brings its abscissa with it.
        if (show && courbe->GetVx()) {
            m_sGrdX = courbe->GetVx()->GetGrandeur();
            m_sUx = courbe->GetVx()->GetUnite();
        }
    }
    // Recomputed even without a change: the caller may have changed the data meanwhile.
    OnListEntityModified();
    return changed;
}

void VyrDiagram::ShowCourbeInterne(VyrCourbe* courbe, bool show) {
    ShowData(courbe, show);
}

bool VyrDiagram::IsVisibleInterne(VyrCourbe* courbe) {
    return courbe && m_listShown.Find(courbe) != nullptr;
}

int VyrDiagram::GetNbCourbe() {
    int count = 0;
    for (auto* node = m_listShown.GetFirst(); node; node = node->GetNext())
        if (node->GetData()->GetKind() == VYR_KIND_COURBE)
            ++count;
    return count;
}

void VyrDiagram::SetActiveCourbe(VyrCourbe* courbe) {
    m_pActiveCourbe = courbe;
    Notify(VYR_MSG_DATA_CHANGED, nullptr);
}

void VyrDiagram::SetActiveExperience(VyrExperience* experience) {
    m_pActiveExperience = experience;
    Notify(VYR_MSG_DATA_CHANGED, nullptr);
}

void VyrDiagram::SetDefaultExperience() {
    m_pActiveExperience = nullptr;
    for (auto* node = m_listShown.GetFirst(); node; node = node->GetNext()) {
        VyrEntity* entity = node->GetData();
        if (entity->GetKind() == VYR_KIND_COURBE) {
            if (m_pBase)
                m_pActiveExperience =
                    m_pBase->FindExperienceFromCourbe(static_cast<VyrCourbe*>(entity));
            break;
        }
    }
    Notify(VYR_MSG_DATA_CHANGED, nullptr);
}

// ---- Static operations on the active document -----------------------------------------------

void VyrDiagram::ShowCourbe(VyrCourbe* courbe, bool show, int diagram) {
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!base || !courbe || courbe->IsDeconnected())
        return;
    VyrDiagram* target = diagram == -1 ? base->GetActiveDiagram() : base->GetDiagram(diagram);
    if (!target)
        return;
    target->ShowData(courbe, show);
    target->Notify(VYR_MSG_VISIBILITY_CHANGED, courbe);
}

void VyrDiagram::HideAllCourbe() {
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!base)
        return;
    for (int index = 0; index < 2; ++index) {
        VyrDiagram* diagram = base->GetDiagram(index);
        if (!diagram)
            continue;
        wxVyrListEntityNode* node = diagram->m_listShown.GetFirst();
        while (node) {
            wxVyrListEntityNode* next = node->GetNext();
            VyrEntity* entity = node->GetData();
            if (entity->GetKind() == VYR_KIND_COURBE) {
                diagram->m_listShown.Erase(node);
                VyrSetShownFlag(*diagram, static_cast<VyrCourbe*>(entity), false);
                diagram->OnListEntityModified();
            }
            node = next;
        }
        diagram->Notify(VYR_MSG_VISIBILITY_CHANGED, nullptr);
    }
}

bool VyrDiagram::IsVisible(VyrCourbe* courbe) {
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!courbe || !base)
        return false;
    VyrDiagram* active = base->GetActiveDiagram();
    return active && active->IsVisibleInterne(courbe);
}

int VyrDiagram::GetListDiagramsIsVisible(VyrCourbe* courbe, wxArrayInt* list) {
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!courbe || !base || !base->GetDiagram(0))
        return -1;
    int first = -1;
    for (int index = 0; index < 2; ++index) {
        VyrDiagram* diagram = base->GetDiagram(index);
        if (diagram && diagram->IsVisibleInterne(courbe)) {
            if (list)
                list->Add(index);
            if (first < 0)
                first = index;
        }
    }
    return first;
}

void VyrDiagram::ObserveLesDiagram(VyrObserver* observer) {
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!observer || !base)
        return;
    for (int index = 0; index < 2; ++index)
        if (VyrDiagram* diagram = base->GetDiagram(index))
            diagram->AddObserver(observer);
}

void VyrDiagram::UnObserveLesDiagram(VyrObserver* observer) {
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!observer || !base)
        return;
    for (int index = 0; index < 2; ++index)
        if (VyrDiagram* diagram = base->GetDiagram(index))
            diagram->RemoveObserver(observer);
}
