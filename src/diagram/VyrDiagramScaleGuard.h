// Saves a diagram's current scale and puts it back (with UpdateWorld) when the guard ends, for
// the searches that measure each curve or tool in its own units. Internal to the diagram.
#ifndef VYRBASE_SRC_DIAGRAM_VYRDIAGRAMSCALEGUARD_H
#define VYRBASE_SRC_DIAGRAM_VYRDIAGRAMSCALEGUARD_H

#include "vyrbase/data/VyrScale.h"
#include "vyrbase/diagram/VyrDiagram.h"

class VyrDiagramScaleGuard {
public:
    explicit VyrDiagramScaleGuard(VyrDiagram& diagram)
        : m_diagram(diagram), m_saved(*diagram.GetCurrentScale()) {}
    VyrDiagramScaleGuard(const VyrDiagramScaleGuard&) = delete;
    VyrDiagramScaleGuard& operator=(const VyrDiagramScaleGuard&) = delete;
    ~VyrDiagramScaleGuard() {
        if (m_bRestore)
            Restore();
    }

    // Puts the saved range back now (the guard stays armed).
    void Restore() {
        *m_diagram.GetCurrentScale() = m_saved;
        m_diagram.UpdateWorld();
    }
    // Leaves the diagram in the units it was moved to: the note searches keep the hit curve's
    // range until something sets the current scale again.
    void Keep() { m_bRestore = false; }

private:
    VyrDiagram& m_diagram;
    VyrScale m_saved;
    bool m_bRestore = true;
};

#endif
