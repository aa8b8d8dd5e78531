#include "vyrbase/core/VyrObserver.h"

#include "vyrbase/core/VyrObservable.h"

VyrObserver::VyrObserver(const VyrObserver& other) : m_listObservables() {
    // Member-wise, as the diagram's copy requires: the copy lists the same subjects, which do
    // not list it.
    for (auto* node = other.m_listObservables.GetFirst(); node; node = node->GetNext())
        m_listObservables.Append(node->GetData());
}

VyrObserver& VyrObserver::operator=(const VyrObserver& other) {
    if (this != &other) {
        m_listObservables.Clear();
        for (auto* node = other.m_listObservables.GetFirst(); node; node = node->GetNext())
            m_listObservables.Append(node->GetData());
    }
    return *this;
}

VyrObserver::~VyrObserver() {
    ObservePlusRien();
}

void VyrObserver::Observe(VyrObservable* subject, bool on) {
    if (!subject)
        return;
    if (on) {
        if (!m_listObservables.Find(subject))
            m_listObservables.Append(subject);
    } else {
        m_listObservables.DeleteObject(subject);
    }
}

void VyrObserver::ObservePlusRien() {
    // RemoveObserver calls back Observe(subject, false), which unlinks the head node, so the
    // walk always restarts from the head of the own list.
    while (auto* node = m_listObservables.GetFirst()) {
        VyrObservable* subject = node->GetData();
        subject->RemoveObserver(this);
        // A subject that did not list this observer does not call back: drop it here.
        if (m_listObservables.GetFirst() == node)
            m_listObservables.Erase(node);
    }
    m_listObservables.Clear();
}
