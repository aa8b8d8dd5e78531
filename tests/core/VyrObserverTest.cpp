#include <gtest/gtest.h>

#include <memory>

#include "support/RecordingObserver.h"
#include "vyrbase/core/VyrObservable.h"

namespace {
class Subject : public VyrObservable {
public:
    void Send(int code) { Notify(code, nullptr); }
};
}  // namespace

TEST(VyrObserver, DestroyingAnObserverRemovesItFromEverySubject) {
    Subject first, second;
    {
        RecordingObserver observer;
        first.AddObserver(&observer);
        second.AddObserver(&observer);
        EXPECT_EQ(observer.GetObservables().GetCount(), 2u);
    }
    EXPECT_EQ(first.GetObservers().GetCount(), 0u);
    EXPECT_EQ(second.GetObservers().GetCount(), 0u);
    // Sending after the observer is gone must not touch it (ASan would report a use after free).
    first.Send(1);
    second.Send(1);
}

TEST(VyrObserver, OneObserverReceivesFromSeveralSubjects) {
    Subject first, second;
    RecordingObserver observer;
    first.AddObserver(&observer);
    second.AddObserver(&observer);
    first.Send(3);
    second.Send(4);
    EXPECT_EQ(observer.Codes(), (std::vector<int>{3, 4}));
}

TEST(VyrObserver, SubjectsDestroyedInAnyOrderLeaveNoDanglingEntry) {
    auto observer = std::make_unique<RecordingObserver>();
    auto first = std::make_unique<Subject>();
    auto second = std::make_unique<Subject>();
    first->AddObserver(observer.get());
    second->AddObserver(observer.get());
    second.reset();
    EXPECT_EQ(observer->GetObservables().GetCount(), 1u);
    observer.reset();
    EXPECT_EQ(first->GetObservers().GetCount(), 0u);
}
