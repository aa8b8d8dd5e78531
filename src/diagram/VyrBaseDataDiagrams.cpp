// The document's two diagram slots and which of them is active.
#include "vyrbase/core/VyrBaseData.h"

#include "vyrbase/diagram/VyrDiagram.h"

void VyrBaseData::CreateDiagrams() {
    m_pDiagrams[0] = new VyrDiagram(this, 0);
    m_pDiagrams[1] = new VyrDiagram(this, 1);
    m_pDiagrams[0]->SetActive(true);
}

void VyrBaseData::DestroyDiagrams() {
    for (VyrDiagram*& diagram : m_pDiagrams) {
        delete diagram;
        diagram = nullptr;
    }
}

VyrDiagram* VyrBaseData::GetDiagram(int index) const {
    // Compared unsigned, so negative indices fall out too.
    return static_cast<unsigned>(index) < 2u ? m_pDiagrams[index] : nullptr;
}

VyrDiagram* VyrBaseData::GetActiveDiagram() const {
    for (VyrDiagram* diagram : m_pDiagrams)
        if (diagram && diagram->IsActive())
            return diagram;
    return nullptr;
}

void VyrBaseData::SetActiveDiagram(VyrDiagram* diagram) {
    if (!diagram)
        return;
    VyrDiagram* active = GetActiveDiagram();
    if (active == diagram)
        return;
    if (active)
        active->SetActive(false);
    diagram->SetActive(true);
    Notify(VYR_MSG_ACTIVE_DIAGRAM_CHANGED, diagram);
}

bool VyrBaseData::SetDiagramCount(int count) {
    if (count != 1 && count != 2)
        return false;
    if (count == m_iDiagramCount)
        return true;
    VyrDiagram* wasActive = nullptr;
    if (m_pDiagrams[1] && m_pDiagrams[1]->IsActive())
        wasActive = m_pDiagrams[1];
    else if (m_pDiagrams[0] && m_pDiagrams[0]->IsActive())
        wasActive = m_pDiagrams[0];
    for (VyrDiagram* diagram : m_pDiagrams)
        if (diagram)
            diagram->SetActive(false);
    VyrDiagram* nowActive = m_pDiagrams[count - 1];
    if (nowActive)
        nowActive->SetActive(true);
    if (nowActive != wasActive)
        Notify(VYR_MSG_ACTIVE_DIAGRAM_CHANGED, nowActive);
    m_iDiagramCount = count;
    Notify(VYR_MSG_DIAGRAM_COUNT_CHANGED, nullptr);
    return true;
}

VyrNote* VyrBaseData::GetDiagramTitle(int index) const {
    VyrDiagram* diagram = GetDiagram(index);
    return diagram ? diagram->GetNoteTitre() : nullptr;
}

void VyrBaseData::SetDiagramTitle(int index, VyrNote* note) {
    if (VyrDiagram* diagram = GetDiagram(index))
        diagram->SetNoteTitre(note);
}
