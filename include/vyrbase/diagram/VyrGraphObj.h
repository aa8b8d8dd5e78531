// An extra drawing that the application hangs on one diagram, painted under the curves. The
// application owns it: the diagram never deletes it, so detach it (SetGraphObj(nullptr)) before
// destroying it while the diagram lives.
#ifndef VYRBASE_DIAGRAM_VYRGRAPHOBJ_H
#define VYRBASE_DIAGRAM_VYRGRAPHOBJ_H

#include "vyrbase/core/VyrExport.h"

class wxDC;
class VyrDiagram;

class VYRBASE_API VyrGraphObj {
public:
    VyrGraphObj() = default;
    VyrGraphObj(const VyrGraphObj&) = default;
    VyrGraphObj& operator=(const VyrGraphObj&) = default;
    virtual ~VyrGraphObj();

    // Draws the object; the base class draws nothing.
    virtual void Paint(wxDC* dc);

    // The diagram that holds the object (null until attached with VyrDiagram::SetGraphObj).
    VyrDiagram* GetDiagram() const { return m_pDiagram; }
    void SetDiagram(VyrDiagram* diagram) { m_pDiagram = diagram; }

private:
    VyrDiagram* m_pDiagram = nullptr;
};

#endif
