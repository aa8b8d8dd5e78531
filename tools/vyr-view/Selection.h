// What the user picked in a document: a curve, an experiment, a note or an interval tool, held
// by oid and looked up again whenever it is used. An oid never changes and detached entities
// are not found, so a selection deleted (or undone away) in the meantime simply resolves to
// nothing instead of to a dangling pointer.
#ifndef VYR_VIEW_SELECTION_H
#define VYR_VIEW_SELECTION_H

struct Selection {
    int kind = 0;      // VYR_KIND_COURBE, _EXPERIENCE, _NOTE, _OUTIL_INTERVAL; 0 for nothing
    int oid = 0;       // the selected entity
    int curveOid = 0;  // for a note: the curve it annotates, 0 for a diagram's title
    int diagram = 0;   // the diagram it was picked in

    bool IsEmpty() const { return kind == 0; }
    bool operator==(const Selection& o) const {
        return kind == o.kind && oid == o.oid && curveOid == o.curveOid && diagram == o.diagram;
    }
    bool operator!=(const Selection& o) const { return !(*this == o); }
};

#endif
