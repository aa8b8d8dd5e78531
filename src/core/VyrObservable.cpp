#include "vyrbase/core/VyrObservable.h"

#include "vyrbase/core/VyrObserver.h"

VyrObservable::VyrObservable(const VyrObservable& other) : m_listObservers() {
    for (auto* node = other.m_listObservers.GetFirst(); node; node = node->GetNext())
        m_listObservers.Append(node->GetData());
}

VyrObservable& VyrObservable::operator=(const VyrObservable& other) {
    if (this != &other) {
        m_listObservers.Clear();
        for (auto* node = other.m_listObservers.GetFirst(); node; node = node->GetNext())
            m_listObservers.Append(node->GetData());
    }
    return *this;
}

VyrObservable::~VyrObservable() {
    RemoveAllObservers();
}

void VyrObservable::AddObserver(VyrObserver* observer) {
    if (!observer || m_listObservers.Find(observer))
        return;
    m_listObservers.Append(observer);
    observer->Observe(this, true);
    observer->OnInitialUpdateObserver();
}

void VyrObservable::RemoveObserver(VyrObserver* observer) {
    if (!observer || !m_listObservers.Find(observer))
        return;
    m_listObservers.DeleteObject(observer);
    observer->Observe(this, false);
}

void VyrObservable::RemoveAllObservers() {
    while (auto* node = m_listObservers.GetFirst()) {
        VyrObserver* observer = node->GetData();
        m_listObservers.Erase(node);
        observer->Observe(this, false);
    }
    m_listObservers.Clear();
}

void VyrObservable::UpdateAllObservers(VyrObserverMsg& msg) {
    // The next node is taken before each call so that an observer may remove itself.
    for (auto* node = m_listObservers.GetFirst(); node;) {
        auto* next = node->GetNext();
        node->GetData()->OnUpdateObserver(msg);
        node = next;
    }
}

void VyrObservable::Notify(int code, void* param) {
    VyrObserverMsg msg(code, param);
    UpdateAllObservers(msg);
}
