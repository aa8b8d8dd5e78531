#include "support/RecordingObserver.h"

void RecordingObserver::OnUpdateObserver(VyrObserverMsg& msg) {
    messages.push_back({msg.GetMsg(), msg.GetParam()});
    if (onMessage)
        onMessage(*this, msg);
}

std::vector<int> RecordingObserver::Codes() const {
    std::vector<int> codes;
    for (const Message& m : messages)
        codes.push_back(m.code);
    return codes;
}
