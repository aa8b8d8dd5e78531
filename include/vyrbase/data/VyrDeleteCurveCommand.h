// Undoable deletion of a curve: Do detaches the curve, its vectors and notes from the document
// (VYR_MSG_CURVE_DECONNECTED), Undo attaches them again (VYR_MSG_CURVE_RECONNECTED). The
// command owns nothing: detached entities stay in the document's store, deleted with it.
#ifndef VYRBASE_DATA_VYRDELETECURVECOMMAND_H
#define VYRBASE_DATA_VYRDELETECURVECOMMAND_H

#include <wx/cmdproc.h>

#include "vyrbase/core/VyrExport.h"

class VyrCourbe;
class VyrExperience;

class VYRBASE_API VyrDeleteCurveCommand : public wxCommand {
public:
    // `experience` may be null (the curve then belongs to no experiment).
    VyrDeleteCurveCommand(VyrCourbe* courbe, VyrExperience* experience);
    ~VyrDeleteCurveCommand() override;

    bool Do() override;
    bool Undo() override;

    VyrCourbe* GetCourbe() const { return m_pCourbe; }
    VyrExperience* GetExperience() const { return m_pExperience; }

private:
    VyrCourbe* m_pCourbe;
    VyrExperience* m_pExperience;
};

#endif
