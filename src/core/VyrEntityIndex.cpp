// The document's look-up tables over its entity list (see the header for what the owner must
// do to keep them in step).
#include "vyrbase/core/VyrEntityIndex.h"

#include <algorithm>

#include "vyrbase/core/VyrEntity.h"

VyrEntityIndex::VyrEntityIndex(const VyrEntityIndex&) : m_bStale(true) {}

VyrEntityIndex& VyrEntityIndex::operator=(const VyrEntityIndex& other) {
    if (this != &other) {
        Clear();
        m_bStale = true;
    }
    return *this;
}

void VyrEntityIndex::Add(wxVyrListEntityNode* node) {
    if (m_bStale || !node || !node->GetData())
        return;
    const VyrEntity* entity = node->GetData();
    const Links links{entity->GetKind(), entity->GetOid(), entity, nullptr, nullptr};
    // Every table that needs memory first, so that running out of it leaves the index as it
    // was (the owner then takes the node out of the list again).
    if (!m_links.emplace(node, links).second)
        return;
    Chain* chain = nullptr;
    try {
        m_oids[links.oid].Append(node);
        m_entities[entity].Append(node);
        chain = &m_kinds[links.kind];
    } catch (...) {
        Forget(m_oids, links.oid, node);
        Forget(m_entities, entity, node);
        m_links.erase(node);
        throw;
    }
    // Then the links, which need none.
    Links& added = m_links.find(node)->second;
    added.previousOfKind = chain->last;
    if (chain->last)
        m_links.find(chain->last)->second.nextOfKind = node;
    else
        chain->first = node;
    chain->last = node;
}

void VyrEntityIndex::Nodes::Append(wxVyrListEntityNode* node) {
    if (!first)
        first = node;
    else
        more.push_back(node);
}

bool VyrEntityIndex::Nodes::Drop(wxVyrListEntityNode* node) {
    if (node == first) {
        if (more.empty()) {
            first = nullptr;
            return true;
        }
        first = more.front();
        more.erase(more.begin());
        return false;
    }
    auto found = std::find(more.begin(), more.end(), node);
    if (found != more.end())
        more.erase(found);
    return first == nullptr;
}

template <class Map, class Key>
void VyrEntityIndex::Forget(Map& map, const Key& key, wxVyrListEntityNode* node) {
    auto found = map.find(key);
    if (found != map.end() && found->second.Drop(node))
        map.erase(found);
}

void VyrEntityIndex::Remove(wxVyrListEntityNode* node) {
    auto found = m_links.find(node);
    if (found == m_links.end())
        return;
    const Links links = found->second;
    m_links.erase(found);

    // Nothing here allocates: the tables only shrink.
    auto chain = m_kinds.find(links.kind);
    if (links.previousOfKind)
        m_links.find(links.previousOfKind)->second.nextOfKind = links.nextOfKind;
    else
        chain->second.first = links.nextOfKind;
    if (links.nextOfKind)
        m_links.find(links.nextOfKind)->second.previousOfKind = links.previousOfKind;
    else
        chain->second.last = links.previousOfKind;
    if (!chain->second.first)
        m_kinds.erase(chain);
    Forget(m_oids, links.oid, node);
    Forget(m_entities, links.entity, node);
}

void VyrEntityIndex::Clear() {
    m_links.clear();
    m_kinds.clear();
    m_oids.clear();
    m_entities.clear();
}

void VyrEntityIndex::Rebuild(const VyrListEntity& list) {
    Clear();
    // Stale until every node is in: an index cut short by a lack of memory answers nothing.
    m_bStale = true;
    m_links.reserve(list.GetCount());
    m_bStale = false;
    try {
        for (auto* node = list.GetFirst(); node; node = node->GetNext())
            Add(node);
    } catch (...) {
        Clear();
        m_bStale = true;
        throw;
    }
}

wxVyrListEntityNode* VyrEntityIndex::FindOid(int oid) const {
    auto found = m_oids.find(oid);
    return found == m_oids.end() ? nullptr : found->second.first;
}

wxVyrListEntityNode* VyrEntityIndex::FindEntity(const VyrEntity* entity) const {
    auto found = m_entities.find(entity);
    return found == m_entities.end() ? nullptr : found->second.first;
}

wxVyrListEntityNode* VyrEntityIndex::FirstOfKind(int kind) const {
    auto found = m_kinds.find(kind);
    return found == m_kinds.end() ? nullptr : found->second.first;
}

bool VyrEntityIndex::NextOfKind(const wxVyrListEntityNode* node, int kind,
                                wxVyrListEntityNode** next) const {
    auto found = m_links.find(node);
    if (found == m_links.end() || found->second.kind != kind)
        return false;
    *next = found->second.nextOfKind;
    return true;
}
