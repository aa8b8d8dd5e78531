// Undoable deletion of an experiment with its curves and variables: Do detaches them
// (VYR_MSG_CURVE_DECONNECTED per curve, then VYR_MSG_EXPERIENCE_DECONNECTED), Undo attaches them
// again (VYR_MSG_CURVE_RECONNECTED per curve). The command owns nothing.
#ifndef VYRBASE_DATA_VYRDELETEEXPERIENCECOMMAND_H
#define VYRBASE_DATA_VYRDELETEEXPERIENCECOMMAND_H

#include <wx/cmdproc.h>

#include "vyrbase/core/VyrExport.h"

class VyrExperience;

class VYRBASE_API VyrDeleteExperienceCommand : public wxCommand {
public:
    explicit VyrDeleteExperienceCommand(VyrExperience* experience);
    ~VyrDeleteExperienceCommand() override;

    bool Do() override;
    bool Undo() override;

    VyrExperience* GetExperience() const { return m_pExperience; }

private:
    VyrExperience* m_pExperience;
};

#endif
