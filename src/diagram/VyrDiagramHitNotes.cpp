// What lies under the mouse among the things laid over the curves: curve notes, the title box
// and the interval tools. Boxes are measured with the sizes painting stored into the notes.
#include "vyrbase/diagram/VyrDiagram.h"

#include <algorithm>
#include <climits>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"

#include "diagram/VyrDiagramScaleGuard.h"
#include "diagram/VyrPixelDistance.h"

namespace {

// An interval tool is caught within 20 pixels (squared).
const int kToolTolerance2 = 400;

bool NoteBoxContains(const wxPoint& corner, const VyrNote* note, const wxPoint& p) {
    return VyrBoxContains(corner.x, corner.y, note->GetBoxWidth(), note->GetBoxHeight(), p);
}

}  // namespace

VyrNote* VyrDiagram::FindNote(VyrCourbe* courbe, wxPoint p) {
    if (!courbe)
        return nullptr;
    VyrDiagramScaleGuard guard(*this);
    if (!SetCurrentScaleForCourbe(courbe))
        return nullptr;
    // Neither the annotated point nor the note's state matters: only where its box lies.
    for (auto* node = courbe->GetNotes().GetFirst(); node; node = node->GetNext()) {
        VyrNote* note = node->GetData();
        const wxPoint corner = RealToPixel(note->GetPositionX(), note->GetPositionY());
        if (NoteBoxContains(corner, note, p)) {
            // The diagram stays in this curve's units, so that the caller can go on moving
            // the note with RealToPixel/PixelToReal in the units it is stored in.
            guard.Keep();
            return note;
        }
    }
    return nullptr;
}

VyrNote* VyrDiagram::HitTestNote(wxPoint p, VyrCourbe** courbe) {
    for (VyrCourbe* candidate : m_aPlottedCourbes) {
        if (VyrNote* note = FindNote(candidate, p)) {
            if (courbe)
                *courbe = candidate;
            return note;
        }
    }
    if (courbe)
        *courbe = nullptr;
    return nullptr;
}

VyrNote* VyrDiagram::HitTestTitre(wxPoint p) {
    if (!m_pNoteTitre)
        return nullptr;
    // Neither the shown flag nor the state matters: a hidden title can still be caught.
    return NoteBoxContains(GetTitrePos(m_pNoteTitre), m_pNoteTitre, p) ? m_pNoteTitre : nullptr;
}

VyrOutilInterval* VyrDiagram::HitOutilInterval(wxPoint p, bool* changed) {
    if (changed)
        *changed = false;
    VyrBaseData* base = VyrBaseData::GetActiveBase();
    if (!base)
        return nullptr;

    VyrOutilInterval* best = nullptr;
    int bestDist = INT_MAX;
    {
        VyrDiagramScaleGuard guard(*this);
        wxVyrListEntityNode* node = base->GetFirstOutilIntervalNode();
        while (node) {
            VyrOutilInterval* tool = base->GetNextOutilInterval(&node);
            // Tools are drawn only on a diagram of their X unit: only those can be clicked.
            if (tool->GetAbs() != m_sUx)
                continue;
            if (!SetCurrentScaleForUnits(tool->GetAbs(), tool->GetOrd()))
                continue;
            int d;
            const wxPoint a = RealToPixel(tool->GetX0(), tool->GetY0());
            if (tool->IsPoint()) {
                d = VyrPixelDistance2(p.x, p.y, a.x, a.y);
            } else {
                const wxPoint c = RealToPixel(tool->GetX1(), tool->GetY1());
                const double d2 =
                    Distance2PointToRectangle(p.x, p.y, std::min(a.x, c.x), std::min(a.y, c.y),
                                              std::max(a.x, c.x), std::max(a.y, c.y));
                d = d2 >= static_cast<double>(INT_MAX) ? INT_MAX : static_cast<int>(d2);
            }
            // Strictly smaller: on a tie the earlier tool stays.
            if (d <= kToolTolerance2 && d < bestDist) {
                best = tool;
                bestDist = d;
            }
        }
    }

    // The hit tool becomes the only selected one, whatever the units of the others; a miss
    // clears every selection.
    wxVyrListEntityNode* node = base->GetFirstOutilIntervalNode();
    while (node) {
        VyrOutilInterval* tool = base->GetNextOutilInterval(&node);
        const bool selected = tool == best;
        if (tool->IsSelected() != selected) {
            tool->SetSelected(selected);
            if (changed)
                *changed = true;
        }
    }
    return best;
}

double VyrDiagram::Distance2PointToRectangle(int x, int y, int left, int top, int right,
                                             int bottom) {
    return VyrDistance2PointToRectangle(x, y, left, top, right, bottom);
}
