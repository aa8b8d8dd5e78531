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
    Links links{entity->GetKind(), entity->GetOid(), entity, nullptr, nullptr};
    Chain& chain = m_kinds[links.kind];
    links.previousOfKind = chain.last;
    if (chain.last)
        m_links[chain.last].nextOfKind = node;
    else
        chain.first = node;
    chain.last = node;
    m_links[node] = links;
    m_oids[links.oid].Append(node);
    m_entities[entity].Append(node);
}

void VyrEntityIndex::Nodes::Append(wxVyrListEntityNode* node) {
    if (!first)
        first = node;
    else
        more.push_back(node);
}

bool VyrEntityIndex::Nodes::Drop(wxVyrListEntityNode* node) {
    if (node == first) {
        if (more.empty())
            return true;
        first = more.front();
        more.erase(more.begin());
    } else {
        more.erase(std::find(more.begin(), more.end(), node));
    }
    return false;
}

void VyrEntityIndex::Remove(wxVyrListEntityNode* node) {
    auto found = m_links.find(node);
    if (found == m_links.end())
        return;
    const Links links = found->second;
    m_links.erase(found);

    auto chain = m_kinds.find(links.kind);
    if (links.previousOfKind)
        m_links[links.previousOfKind].nextOfKind = links.nextOfKind;
    else
        chain->second.first = links.nextOfKind;
    if (links.nextOfKind)
        m_links[links.nextOfKind].previousOfKind = links.previousOfKind;
    else
        chain->second.last = links.previousOfKind;
    if (!chain->second.first)
        m_kinds.erase(chain);

    auto oid = m_oids.find(links.oid);
    if (oid->second.Drop(node))
        m_oids.erase(oid);
    auto entity = m_entities.find(links.entity);
    if (entity->second.Drop(node))
        m_entities.erase(entity);
}

void VyrEntityIndex::Clear() {
    m_links.clear();
    m_kinds.clear();
    m_oids.clear();
    m_entities.clear();
}

void VyrEntityIndex::Rebuild(const VyrListEntity& list) {
    Clear();
    m_bStale = false;
    m_links.reserve(list.GetCount());
    for (auto* node = list.GetFirst(); node; node = node->GetNext())
        Add(node);
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
