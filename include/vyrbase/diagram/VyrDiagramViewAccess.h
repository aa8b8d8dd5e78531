// The application's view reaches a diagram's private searches through this class, and only
// through it: the searches move the diagram's shared current scale while they run (and the note
// searches leave it moved), so they are kept out of the diagram's public interface and gathered
// here, where a view that handles the mouse calls them on purpose.
//
// Every function forwards to the diagram's private search of the same name; a null diagram gets
// the answer of "nothing found". Pixels are device pixels; distances are squared pixel
// distances. Like the diagram's painting, none of them may run during a paint of the same
// diagram.
#ifndef VYRBASE_DIAGRAM_VYRDIAGRAMVIEWACCESS_H
#define VYRBASE_DIAGRAM_VYRDIAGRAMVIEWACCESS_H

#include <wx/gdicmn.h>

#include "vyrbase/core/VyrExport.h"

class VyrCourbe;
class VyrDiagram;
class VyrNote;

class VYRBASE_API VyrDiagramViewAccess {
public:
    VyrDiagramViewAccess() = delete;

    // The index of the curve's drawable point nearest to p whose squared distance is at most
    // maxDist2 (no limit when maxDist2 is negative), the lower index on a tie; -1 when none.
    // *dist2 (when given) receives that distance, 2147483647 when nothing was found.
    static int FindPoint(VyrDiagram* diagram, VyrCourbe* courbe, int maxDist2, wxPoint p,
                         int* dist2);
    // The index of the drawable point whose column is nearest to p's (rows ignored), the higher
    // index on a tie; 0 for a curve without drawable points or a null diagram.
    static int GetPoint(VyrDiagram* diagram, VyrCourbe* courbe, wxPoint p);
    // The first plotted curve with a point within maxDist2 of p (not the nearest curve), its
    // point in *index; null and -1 when none.
    static VyrCourbe* HitTestCurve(VyrDiagram* diagram, wxPoint p, int maxDist2, int* index);
    // The plotted curve with the nearest point within maxDist2 of p (the earlier on a tie), its
    // point in *index; null and -1 when none.
    static VyrCourbe* HitTestCurvePlusProche(VyrDiagram* diagram, wxPoint p, int maxDist2,
                                             int* index);
    // The first note of the curve whose box (its stored size at the pixel of its position)
    // contains p, or null. On a hit the diagram stays in the curve's units.
    static VyrNote* FindNote(VyrDiagram* diagram, VyrCourbe* courbe, wxPoint p);
    // FindNote over the plotted curves in order; *courbe receives the curve (null on a miss).
    // On a hit the diagram stays in that curve's units.
    static VyrNote* HitTestNote(VyrDiagram* diagram, wxPoint p, VyrCourbe** courbe);
    // Squared distance from (x, y) to the rectangle's edges (to the nearest side from inside);
    // uses no diagram state.
    static double Distance2PointToRectangle(VyrDiagram* diagram, int x, int y, int left, int top,
                                            int right, int bottom);
};

#endif
