// Removing the XY display curves that no diagram needs any more. Kept apart from the other
// derived-curve operations because it reads the diagrams' abscissa units.
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

void VyrBaseData::RemoveCourbesXYInutiles() {
    VyrListCourbe useless;
    wxVyrListEntityNode* node = GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = GetNextCourbe(&node);
        if (c->GetXYDisplay() != 1)
            continue;
        const wxString ux = c->GetVx() ? c->GetVx()->GetUnite() : wxString();
        bool needed = false;
        for (int index = 0; index < 2 && !needed; ++index) {
            VyrDiagram* d = GetDiagram(index);
            needed = d && d->GetUx() == ux;
        }
        if (!needed)
            useless.Append(c);
    }
    // Deleted after the walk: each deletion edits the entity list.
    for (auto* n = useless.GetFirst(); n; n = n->GetNext())
        DeleteCourbe(n->GetData(), nullptr);
}
