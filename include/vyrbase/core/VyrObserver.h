// Receiver of change notifications. The registration with a subject is symmetric: the subject
// lists the observer and the observer lists the subject, so either side may go away first.
#ifndef VYRBASE_CORE_VYROBSERVER_H
#define VYRBASE_CORE_VYROBSERVER_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/core/VyrLists.h"
#include "vyrbase/core/VyrObserverMsg.h"

class VYRBASE_API VyrObserver {
public:
    VyrObserver() = default;
    VyrObserver(const VyrObserver& other);
    VyrObserver& operator=(const VyrObserver& other);
    // Unregisters from every subject, so a destroyed observer is never called again.
    virtual ~VyrObserver();

    // Called synchronously by every subject this observer is registered with.
    virtual void OnUpdateObserver(VyrObserverMsg& msg) = 0;
    // Called once, right after registration, so the observer builds its state from the subject.
    virtual void OnInitialUpdateObserver() = 0;

    // The subjects this observer is registered with (not owned).
    const VyrListObservable& GetObservables() const { return m_listObservables; }

private:
    friend class VyrObservable;

    // Records (on) or forgets (off) a subject on this side only; called by the subject.
    void Observe(VyrObservable* subject, bool on);
    // Unregisters from every subject and empties the own list.
    void ObservePlusRien();

    VyrListObservable m_listObservables;
};

#endif
