// One change notification: a code and an untyped parameter that the message does not own.
// Messages are built on the stack, handed to every observer in turn and destroyed; they are
// never queued or stored.
#ifndef VYRBASE_CORE_VYROBSERVERMSG_H
#define VYRBASE_CORE_VYROBSERVERMSG_H

#include "vyrbase/core/VyrExport.h"

// The codes the library sends. Codes not listed here are free for the application.
enum VyrMessageCode {
    // Document data changed; parameter: the curve concerned, or null.
    VYR_MSG_DATA_CHANGED = 1,
    // An experiment is being deleted; parameter: its address (already freed: compare only).
    VYR_MSG_EXPERIENCE_DELETED = 3,
    // A curve is being deleted; parameter: the curve, sent before it leaves its experiment.
    VYR_MSG_CURVE_DELETED = 4,
    // A detached curve was attached again; parameter: the curve.
    VYR_MSG_CURVE_RECONNECTED = 5,
    // An experiment was detached; parameter: the experiment.
    VYR_MSG_EXPERIENCE_DECONNECTED = 6,
    // A curve was detached; parameter: the curve.
    VYR_MSG_CURVE_DECONNECTED = 7,
    // A file was loaded into the document; parameter: null.
    VYR_MSG_FILE_LOADED = 8,
    // A curve was created, or emptied for reuse; parameter: the curve. Diagrams swallow it.
    VYR_MSG_CURVE_CREATED = 11,
    // An experiment was created; parameter: the experiment.
    VYR_MSG_EXPERIENCE_CREATED = 13,
    // A diagram's scale type became manual; parameter: null.
    VYR_MSG_SCALE_TYPE_CHANGED = 14,
    // A diagram is being destroyed; parameter: the diagram.
    VYR_MSG_DIAGRAM_DESTROYED = 15,
    // Curve visibility changed; parameter: a curve or null.
    VYR_MSG_VISIBILITY_CHANGED = 17,
    // A curve's quantities were changed by the application; parameter: a VyrCourbeChangeParam.
    VYR_MSG_CURVE_QUANTITIES_CHANGED = 18,
    // A diagram's abscissa changed; parameter: null.
    VYR_MSG_ABSCISSA_CHANGED = 20,
    // The active diagram changed; parameter: the now active diagram.
    VYR_MSG_ACTIVE_DIAGRAM_CHANGED = 21,
    // The number of diagrams changed; parameter: null.
    VYR_MSG_DIAGRAM_COUNT_CHANGED = 30
};

class VYRBASE_API VyrObserverMsg {
public:
    VyrObserverMsg(int code, void* param) : m_iMsg(code), m_pParam(param) {}
    VyrObserverMsg(const VyrObserverMsg&) = default;
    VyrObserverMsg& operator=(const VyrObserverMsg&) = default;
    virtual ~VyrObserverMsg();

    int GetMsg() const { return m_iMsg; }
    void* GetParam() const { return m_pParam; }
    void SetMsg(int code) { m_iMsg = code; }

private:
    int m_iMsg;
    void* m_pParam;
};

#endif
