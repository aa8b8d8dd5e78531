// The document registry: construction, oids, lookups by oid and kind, removal, units table and
// the process-wide active document. Entity construction by kind lives with the entity classes
// (data/), the diagram slots with the diagrams (diagram/).
#include "vyrbase/core/VyrBaseData.h"

#include <climits>

#include <wx/docview.h>

VyrBaseData* VyrBaseData::m_pActiveBase = nullptr;

namespace {
// The toolkit's next prime above 100, so the maps start with the bucket count it would pick.
const size_t kInitialBuckets = 101;
}  // namespace

VyrBaseData::VyrBaseData(wxDocument* doc)
    : m_pDiagrams{nullptr, nullptr},
      m_iDiagramCount(1),
      m_listEntity(),
      m_iLastOid(0),
      m_mapUnits(kInitialBuckets),
      m_mapVectorUnit(kInitialBuckets),
      m_mapNoteCurve(kInitialBuckets),
      m_pDocument(doc) {
    CreateDiagrams();
}

VyrBaseData::~VyrBaseData() {
    DestroyDiagrams();
    RemoveAllObservers();
    Delete();
    if (m_pActiveBase == this)
        m_pActiveBase = nullptr;
}

void VyrBaseData::Delete() {
    if (++m_uEmptyingNumber == 0)
        m_uEmptyingNumber = 1;
    ++m_iEmptying;
    DeleteAllExperiences();
    Cleanup();
    for (size_t i = 0; i < m_arrayDeconnected.GetCount(); ++i)
        delete m_arrayDeconnected[i];
    m_arrayDeconnected.Clear();
    m_iLastOid = 0;
    --m_iEmptying;
}

void VyrBaseData::Cleanup() {
    for (auto* node = m_listEntity.GetFirst(); node; node = node->GetNext())
        delete node->GetData();
    m_listEntity.Clear();
    m_entityIndex.Clear();
}

wxVyrListEntityNode* VyrBaseData::AppendToList(VyrEntity* entity) {
    wxVyrListEntityNode* node = m_listEntity.Append(entity);
    try {
        m_entityIndex.Add(node);
    } catch (...) {
        // An entity the index cannot hold is not in the list either.
        m_listEntity.Erase(node);
        throw;
    }
    return node;
}

void VyrBaseData::EraseFromList(wxVyrListEntityNode* node) {
    m_entityIndex.Remove(node);
    m_listEntity.Erase(node);
}

const VyrEntityIndex& VyrBaseData::Index() {
    if (m_entityIndex.IsStale())
        m_entityIndex.Rebuild(m_listEntity);
    return m_entityIndex;
}

void VyrBaseData::Dump() {
    // Kept as an empty walk: a place to put a breakpoint when inspecting a document.
    for (auto* node = m_listEntity.GetFirst(); node; node = node->GetNext())
        (void)node->GetData()->GetKind();
}

int VyrBaseData::GetNewOid() {
    // A file may name an entity with the largest int: the counter then stays there rather
    // than overflow.
    if (m_iLastOid < INT_MAX)
        ++m_iLastOid;
    return m_iLastOid;
}

void VyrBaseData::RemoveEntity(VyrEntity* entity) {
    if (!entity || entity->IsDeconnected())
        return;
    wxVyrListEntityNode* node = NodeOf(entity);
    if (!node)
        return;
    EraseFromList(node);
    delete entity;
}

VyrEntity* VyrBaseData::FindEntity(int oid) {
    wxVyrListEntityNode* node = Index().FindOid(oid);
    return node ? node->GetData() : nullptr;
}

VyrEntity* VyrBaseData::GetEntity(int kind) {
    wxVyrListEntityNode* node = GetFirstEntityNode(kind);
    return node ? node->GetData() : nullptr;
}

wxVyrListEntityNode* VyrBaseData::GetFirstEntityNode(int kind) {
    return Index().FirstOfKind(kind);
}

VyrEntity* VyrBaseData::GetNextEntity(wxVyrListEntityNode** cursor, int kind) {
    if (!cursor || !*cursor)
        return nullptr;
    VyrEntity* entity = (*cursor)->GetData();
    wxVyrListEntityNode* node = nullptr;
    if (Index().NextOfKind(*cursor, kind, &node)) {
        *cursor = node;
        return entity;
    }
    // A cursor of another kind than asked, or on another list: the next node is found by
    // walking, as it always was.
    node = (*cursor)->GetNext();
    while (node && node->GetData()->GetKind() != kind)
        node = node->GetNext();
    *cursor = node;
    return entity;
}

VyrBaseData* VyrBaseData::GetActiveBase() {
    return m_pActiveBase;
}

void VyrBaseData::SetActiveBase(VyrBaseData* base) {
    m_pActiveBase = base;
}
