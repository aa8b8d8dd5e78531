#include "CurveDeletion.h"

#include <vector>

#include "ViewerDocument.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/diagram/VyrDiagram.h"

CurveDeletion::CurveDeletion(ViewerDocument* document, VyrCourbe* courbe, VyrExperience* experience)
    : wxCommand(true), m_document(document), m_deletion(courbe, experience) {
    // The library's name for the deletion ("IDS_MENU_SUPPRIMER" translated) in the Edit menu.
    m_commandName = m_deletion.GetName();
}

bool CurveDeletion::Do() {
    VyrBaseData& data = m_document->GetData();
    VyrCourbe* courbe = m_deletion.GetCourbe();
    m_wasModified = m_document->IsModified();
    m_place = -1;
    if (VyrExperience* e = m_deletion.GetExperience()) {
        int k = 0;
        for (wxVyrListCourbeNode* node = e->GetFirstCourbeNode(); node; ++k)
            if (e->GetNextCourbe(&node) == courbe)
                m_place = k;
    }
    for (int d = 0; d < 2; ++d) {
        VyrDiagram* diagram = data.GetDiagram(d);
        m_shown[d] = diagram && diagram->IsVisibleInterne(courbe);
        m_unitY[d] = diagram ? diagram->GetUy() : wxString();
    }
    return m_deletion.Do();
}

bool CurveDeletion::Undo() {
    VyrBaseData& data = m_document->GetData();
    VyrCourbe* courbe = m_deletion.GetCourbe();
    m_deletion.Undo();
    // The library appends the curve to its experiment: the curves that stood after it go to
    // the end again, behind it, in their order.
    if (VyrExperience* e = m_deletion.GetExperience(); e && m_place >= 0) {
        std::vector<VyrCourbe*> after;
        int k = 0;
        for (wxVyrListCourbeNode* node = e->GetFirstCourbeNode(); node; ++k) {
            VyrCourbe* c = e->GetNextCourbe(&node);
            if (k >= m_place && c != courbe)
                after.push_back(c);
        }
        for (VyrCourbe* c : after) {
            e->RemoveCourbe(c);
            e->AddCourbe(c);
        }
    }
    for (int d = 0; d < 2; ++d) {
        VyrDiagram* diagram = data.GetDiagram(d);
        if (!m_shown[d] || !diagram)
            continue;
        diagram->ShowData(courbe, true);
        // The deletion may have moved the main axis to another unit.
        if (diagram->GetUy() != m_unitY[d])
            diagram->SetUy(m_unitY[d]);
    }
    // Back to the state before the deletion: unmodified when it was.
    if (!m_wasModified)
        m_document->Modify(false);
    m_document->UpdateAllViews();
    return true;
}
