// Subject of change notifications: the document and each diagram.
#ifndef VYRBASE_CORE_VYROBSERVABLE_H
#define VYRBASE_CORE_VYROBSERVABLE_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/core/VyrLists.h"
#include "vyrbase/core/VyrObserverMsg.h"

class VyrObserver;

class VYRBASE_API VyrObservable {
public:
    VyrObservable() = default;
    VyrObservable(const VyrObservable& other);
    VyrObservable& operator=(const VyrObservable& other);
    // Unregisters every observer (RemoveAllObservers).
    virtual ~VyrObservable();

    // Appends the observer, records this subject on its side, then calls its
    // OnInitialUpdateObserver at once. Ignored for null or an observer already registered.
    void AddObserver(VyrObserver* observer);
    // Removes the observer from both sides. Ignored for null or an unknown observer.
    void RemoveObserver(VyrObserver* observer);
    // Removes every observer from both sides.
    void RemoveAllObservers();
    // Hands the message to every observer in registration order. An observer may remove itself
    // during its own call; removing another observer during the walk is not supported.
    void UpdateAllObservers(VyrObserverMsg& msg);

    // The observers (not owned), in registration order.
    const VyrListObserver& GetObservers() const { return m_listObservers; }

protected:
    // Builds a message with this code and parameter and sends it to every observer.
    void Notify(int code, void* param);

private:
    VyrListObserver m_listObservers;
};

#endif
