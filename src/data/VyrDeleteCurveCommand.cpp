#include "vyrbase/data/VyrDeleteCurveCommand.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"

VyrDeleteCurveCommand::VyrDeleteCurveCommand(VyrCourbe* courbe, VyrExperience* experience)
    : wxCommand(true, VyrResourceText::Get("IDS_MENU_SUPPRIMER")),
      m_pCourbe(courbe),
      m_pExperience(experience) {}

// Owns nothing: the detached curve stays in the document's store, deleted with the document.
VyrDeleteCurveCommand::~VyrDeleteCurveCommand() = default;

bool VyrDeleteCurveCommand::Do() {
    if (m_pExperience)
        m_pExperience->RemoveCourbe(m_pCourbe);
    if (m_pCourbe && m_pCourbe->GetBase())
        m_pCourbe->GetBase()->DeconnectCurve(m_pCourbe);
    return true;
}

bool VyrDeleteCurveCommand::Undo() {
    // Back at the end of the experiment's curves, as at the end of the entity list.
    if (m_pExperience)
        m_pExperience->AddCourbe(m_pCourbe);
    if (m_pCourbe && m_pCourbe->GetBase())
        m_pCourbe->GetBase()->ReconnectCurve(m_pCourbe);
    return true;
}
