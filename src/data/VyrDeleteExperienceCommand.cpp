#include "vyrbase/data/VyrDeleteExperienceCommand.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrExperience.h"

VyrDeleteExperienceCommand::VyrDeleteExperienceCommand(VyrExperience* experience)
    : wxCommand(true, VyrResourceText::Get("IDS_MENU_SUPPRIMER")), m_pExperience(experience) {}

// Owns nothing: the detached experiment stays in the document's store, deleted with it.
VyrDeleteExperienceCommand::~VyrDeleteExperienceCommand() = default;

bool VyrDeleteExperienceCommand::Do() {
    if (m_pExperience && m_pExperience->GetBase())
        m_pExperience->GetBase()->DeconnectExperience(m_pExperience);
    return true;
}

bool VyrDeleteExperienceCommand::Undo() {
    if (m_pExperience && m_pExperience->GetBase())
        m_pExperience->GetBase()->ReconnectExperience(m_pExperience);
    return true;
}
