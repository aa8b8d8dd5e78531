// An observer that records every message it receives, for checking codes, order and parameters.
#ifndef VYR_TESTS_SUPPORT_RECORDINGOBSERVER_H
#define VYR_TESTS_SUPPORT_RECORDINGOBSERVER_H

#include <functional>
#include <utility>
#include <vector>

#include "vyrbase/core/VyrObserver.h"

class RecordingObserver : public VyrObserver {
public:
    struct Message {
        int code;
        void* param;
    };

    void OnUpdateObserver(VyrObserverMsg& msg) override;
    void OnInitialUpdateObserver() override { ++initialUpdates; }

    // The codes received, in order.
    std::vector<int> Codes() const;
    void Clear() { messages.clear(); }

    std::vector<Message> messages;
    int initialUpdates = 0;
    // Runs after a message was recorded (to remove itself, for instance).
    std::function<void(RecordingObserver&, VyrObserverMsg&)> onMessage;
};

#endif
