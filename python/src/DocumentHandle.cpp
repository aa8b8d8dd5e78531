#include "DocumentHandle.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/diagram/VyrDiagram.h"

DocumentHandle::DocumentHandle() : m_pDoc(new VyrBaseData(nullptr)) {
    // save() writes every value exactly as it is held, not rounded to six digits.
    m_pDoc->SetExactNumbers(true);
    // The pictures' axes span what was measured: an invalid point's number stretches none.
    for (int d = 0; d < 2; ++d)
        m_pDoc->GetDiagram(d)->SetValidRangesOnly(true);
}

DocumentHandle::~DocumentHandle() {
    // A render makes its document the active one only while it paints, but a document must
    // never stay the active one past its life.
    if (VyrBaseData::GetActiveBase() == m_pDoc.get())
        VyrBaseData::SetActiveBase(nullptr);
}

void DocumentHandle::AddView(const VyrVecteur* vector) {
    ++m_views[vector];
}

void DocumentHandle::RemoveView(const VyrVecteur* vector) {
    auto it = m_views.find(vector);
    if (it != m_views.end() && --it->second <= 0)
        m_views.erase(it);
}

int DocumentHandle::ViewCount(const VyrVecteur* vector) const {
    auto it = m_views.find(vector);
    return it == m_views.end() ? 0 : it->second;
}
