// The diagram's reactions to its document's notifications.
#include "vyrbase/diagram/VyrDiagram.h"

void VyrDiagram::OnUpdateObserver(VyrObserverMsg& msg) {
    // Code 11 is swallowed: a new curve is shown only when the application asks for it.
    if (msg.GetMsg() == VYR_MSG_CURVE_CREATED)
        return;
    UpdateAllObservers(msg);
}

void VyrDiagram::OnInitialUpdateObserver() {
    // A diagram that starts observing builds itself from the document as it is now.
    Fill();
    Notify(VYR_MSG_DATA_CHANGED, nullptr);
}
