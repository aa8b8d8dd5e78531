// Undoable deletion of a note: a curve's note (curve given) or a diagram's title (curve null).
// Do and Undo each send VYR_MSG_DATA_CHANGED with the curve (null for a title). The command owns
// nothing.
#ifndef VYRBASE_DATA_VYRDELETENOTECOMMAND_H
#define VYRBASE_DATA_VYRDELETENOTECOMMAND_H

#include <wx/cmdproc.h>

#include "vyrbase/core/VyrExport.h"

class VyrCourbe;
class VyrDiagram;
class VyrNote;

class VYRBASE_API VyrDeleteNoteCommand : public wxCommand {
public:
    VyrDeleteNoteCommand(VyrNote* note, VyrCourbe* courbe, VyrDiagram* diagram);
    ~VyrDeleteNoteCommand() override;

    bool Do() override;
    bool Undo() override;

    VyrNote* GetNote() const { return m_pNote; }
    VyrCourbe* GetCourbe() const { return m_pCourbe; }
    VyrDiagram* GetDiagram() const { return m_pDiagram; }

private:
    VyrNote* m_pNote;
    VyrCourbe* m_pCourbe;
    VyrDiagram* m_pDiagram;
};

#endif
