#include <gtest/gtest.h>

#include <memory>

#include "support/RecordingObserver.h"
#include "vyrbase/core/VyrObservable.h"

namespace {

// A subject whose notification helper the tests can call.
class Subject : public VyrObservable {
public:
    void Send(int code, void* param = nullptr) { Notify(code, param); }
};

}  // namespace

TEST(VyrObservable, AddObserverRegistersBothSidesAndCallsInitialUpdate) {
    Subject subject;
    RecordingObserver observer;
    subject.AddObserver(&observer);
    EXPECT_EQ(subject.GetObservers().GetCount(), 1u);
    ASSERT_EQ(observer.GetObservables().GetCount(), 1u);
    EXPECT_EQ(observer.GetObservables().GetFirst()->GetData(), &subject);
    EXPECT_EQ(observer.initialUpdates, 1);
}

TEST(VyrObservable, AddingTheSameObserverTwiceRegistersItOnce) {
    Subject subject;
    RecordingObserver observer;
    subject.AddObserver(&observer);
    subject.AddObserver(&observer);
    EXPECT_EQ(subject.GetObservers().GetCount(), 1u);
    EXPECT_EQ(observer.GetObservables().GetCount(), 1u);
    EXPECT_EQ(observer.initialUpdates, 1);
}

TEST(VyrObservable, AddNullObserverIsIgnored) {
    Subject subject;
    subject.AddObserver(nullptr);
    subject.RemoveObserver(nullptr);
    EXPECT_EQ(subject.GetObservers().GetCount(), 0u);
}

TEST(VyrObservable, RemoveObserverUnregistersBothSides) {
    Subject subject;
    RecordingObserver observer;
    subject.AddObserver(&observer);
    subject.RemoveObserver(&observer);
    EXPECT_EQ(subject.GetObservers().GetCount(), 0u);
    EXPECT_EQ(observer.GetObservables().GetCount(), 0u);
    subject.Send(1);
    EXPECT_TRUE(observer.messages.empty());
}

TEST(VyrObservable, RemovingAnUnknownObserverChangesNothing) {
    Subject subject;
    RecordingObserver registered, stranger;
    subject.AddObserver(&registered);
    subject.RemoveObserver(&stranger);
    EXPECT_EQ(subject.GetObservers().GetCount(), 1u);
}

TEST(VyrObservable, MessagesReachObserversInRegistrationOrder) {
    Subject subject;
    std::vector<int> order;
    RecordingObserver first, second;
    first.onMessage = [&](RecordingObserver&, VyrObserverMsg&) { order.push_back(1); };
    second.onMessage = [&](RecordingObserver&, VyrObserverMsg&) { order.push_back(2); };
    subject.AddObserver(&first);
    subject.AddObserver(&second);
    int payload = 0;
    subject.Send(17, &payload);
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    ASSERT_EQ(first.messages.size(), 1u);
    EXPECT_EQ(first.messages[0].code, 17);
    EXPECT_EQ(first.messages[0].param, &payload);
}

TEST(VyrObservable, ObserverRemovingItselfDuringItsCallDoesNotBreakTheWalk) {
    Subject subject;
    RecordingObserver before, leaver, after;
    leaver.onMessage = [&](RecordingObserver& self, VyrObserverMsg&) {
        subject.RemoveObserver(&self);
    };
    subject.AddObserver(&before);
    subject.AddObserver(&leaver);
    subject.AddObserver(&after);
    subject.Send(1);
    EXPECT_EQ(before.messages.size(), 1u);
    EXPECT_EQ(leaver.messages.size(), 1u);
    EXPECT_EQ(after.messages.size(), 1u);
    EXPECT_EQ(subject.GetObservers().GetCount(), 2u);
    EXPECT_EQ(leaver.GetObservables().GetCount(), 0u);
    subject.Send(2);
    EXPECT_EQ(leaver.messages.size(), 1u);
    EXPECT_EQ(after.messages.size(), 2u);
}

TEST(VyrObservable, DestroyedSubjectLeavesObserversWithEmptyLists) {
    RecordingObserver a, b;
    {
        Subject subject;
        subject.AddObserver(&a);
        subject.AddObserver(&b);
    }
    EXPECT_EQ(a.GetObservables().GetCount(), 0u);
    EXPECT_EQ(b.GetObservables().GetCount(), 0u);
}

TEST(VyrObservable, RemoveAllObserversUnregistersEveryone) {
    Subject subject;
    RecordingObserver a, b;
    subject.AddObserver(&a);
    subject.AddObserver(&b);
    subject.RemoveAllObservers();
    EXPECT_EQ(subject.GetObservers().GetCount(), 0u);
    EXPECT_EQ(a.GetObservables().GetCount(), 0u);
    EXPECT_EQ(b.GetObservables().GetCount(), 0u);
}

TEST(VyrObservable, CopyListsTheSameObserversWhichDoNotListTheCopy) {
    Subject subject;
    RecordingObserver observer;
    subject.AddObserver(&observer);
    {
        Subject copy(subject);
        EXPECT_EQ(copy.GetObservers().GetCount(), 1u);
        EXPECT_EQ(observer.GetObservables().GetCount(), 1u);
    }
    // The copy's destruction must not unregister the observer from the original.
    EXPECT_EQ(observer.GetObservables().GetCount(), 1u);
    subject.Send(5);
    EXPECT_EQ(observer.messages.size(), 1u);
}
