// The viewer's undoable deletion of one curve: the library's command (VyrDeleteCurveCommand)
// detaches and re-attaches the curve, and puts it back at the end of its experiment, unticked
// in every diagram, with the document marked modified. The viewer's undo puts it back as it
// was: in its place among its experiment's curves, shown in the diagrams that showed it (with
// the Y unit they had then), and the document unmodified again when it was unmodified before
// the deletion.
#ifndef VYR_VIEW_CURVEDELETION_H
#define VYR_VIEW_CURVEDELETION_H

#include <wx/cmdproc.h>

#include "vyrbase/data/VyrDeleteCurveCommand.h"

class ViewerDocument;
class VyrCourbe;
class VyrExperience;

class CurveDeletion : public wxCommand {
public:
    // `experience` (may be null) holds `courbe`; both stay the document's.
    CurveDeletion(ViewerDocument* document, VyrCourbe* courbe, VyrExperience* experience);

    bool Do() override;
    bool Undo() override;

private:
    ViewerDocument* m_document;
    VyrDeleteCurveCommand m_deletion;
    // What Do found, for Undo: the curve's place in its experiment, the diagrams that showed
    // it and the Y unit each of them had on its main axis, and whether the document was
    // modified.
    int m_place = -1;
    bool m_shown[2] = {false, false};
    wxString m_unitY[2];
    bool m_wasModified = false;
};

#endif
