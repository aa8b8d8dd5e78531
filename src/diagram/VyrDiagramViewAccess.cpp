// Forwards the view's calls to the diagram's private searches.
#include "vyrbase/diagram/VyrDiagramViewAccess.h"

#include <climits>

#include "vyrbase/diagram/VyrDiagram.h"

#include "diagram/VyrPixelDistance.h"

int VyrDiagramViewAccess::FindPoint(VyrDiagram* diagram, VyrCourbe* courbe, int maxDist2, wxPoint p,
                                    int* dist2) {
    if (!diagram) {
        if (dist2)
            *dist2 = INT_MAX;
        return -1;
    }
    return diagram->FindPoint(courbe, maxDist2, p, dist2);
}

int VyrDiagramViewAccess::GetPoint(VyrDiagram* diagram, VyrCourbe* courbe, wxPoint p) {
    return diagram ? diagram->GetPoint(courbe, p) : 0;
}

VyrCourbe* VyrDiagramViewAccess::HitTestCurve(VyrDiagram* diagram, wxPoint p, int maxDist2,
                                              int* index) {
    if (!diagram) {
        if (index)
            *index = -1;
        return nullptr;
    }
    return diagram->HitTestCurve(p, maxDist2, index);
}

VyrCourbe* VyrDiagramViewAccess::HitTestCurvePlusProche(VyrDiagram* diagram, wxPoint p,
                                                        int maxDist2, int* index) {
    if (!diagram) {
        if (index)
            *index = -1;
        return nullptr;
    }
    return diagram->HitTestCurvePlusProche(p, maxDist2, index);
}

VyrNote* VyrDiagramViewAccess::FindNote(VyrDiagram* diagram, VyrCourbe* courbe, wxPoint p) {
    return diagram ? diagram->FindNote(courbe, p) : nullptr;
}

VyrNote* VyrDiagramViewAccess::HitTestNote(VyrDiagram* diagram, wxPoint p, VyrCourbe** courbe) {
    if (!diagram) {
        if (courbe)
            *courbe = nullptr;
        return nullptr;
    }
    return diagram->HitTestNote(p, courbe);
}

double VyrDiagramViewAccess::Distance2PointToRectangle(VyrDiagram* diagram, int x, int y, int left,
                                                       int top, int right, int bottom) {
    // The measure uses no diagram state, so it answers without a diagram too.
    if (!diagram)
        return VyrDistance2PointToRectangle(x, y, left, top, right, bottom);
    return diagram->Distance2PointToRectangle(x, y, left, top, right, bottom);
}
