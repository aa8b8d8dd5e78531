// Keeps a curve's per-diagram shown flag equal to a diagram's shown list. Internal to the
// diagram.
#ifndef VYRBASE_SRC_DIAGRAM_VYRDIAGRAMSHOWNFLAG_H
#define VYRBASE_SRC_DIAGRAM_VYRDIAGRAMSHOWNFLAG_H

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/diagram/VyrDiagram.h"

// Sets the curve's flag for the diagram's index and makes the document use at least that many
// diagrams, so that a curve shown in diagram 1 brings the second diagram in. The count is
// raised on hiding too: a change of the shown list always concerns a diagram in use.
inline void VyrSetShownFlag(const VyrDiagram& diagram, VyrCourbe* courbe, bool shown) {
    courbe->SetShownInDiagram(diagram.GetIndex(), shown);
    VyrBaseData* base = diagram.GetBase();
    if (base && base->GetDiagramCount() < diagram.GetIndex() + 1)
        base->SetDiagramCount(diagram.GetIndex() + 1);
}

#endif
