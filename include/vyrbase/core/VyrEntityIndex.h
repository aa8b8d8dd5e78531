// The document's look-up tables over its entity list: the nodes by oid, by entity and by kind,
// so that finding an entity and walking the entities of one kind cost what the answer costs,
// not a walk of the whole list. The list stays the one record of the entities and their order
// (files are written and documents iterated in list order); the index only answers questions
// about it and gives the same answers a walk of the list would.
//
// The owner keeps the index in step: Add right after appending a node at the list's end,
// Remove before erasing a node, Clear when the list is cleared. The list only ever grows at
// its end, so the nodes of one oid, one entity or one kind are recorded in list order.
//
// A copy of an index answers nothing until it is rebuilt (IsStale): the copy of a list has
// nodes of its own, which the copied tables do not know.
//
// Threads: single-threaded, as its document.
#ifndef VYRBASE_CORE_VYRENTITYINDEX_H
#define VYRBASE_CORE_VYRENTITYINDEX_H

#include <unordered_map>
#include <vector>

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/core/VyrLists.h"

class VYRBASE_API VyrEntityIndex {
public:
    VyrEntityIndex() = default;
    VyrEntityIndex(const VyrEntityIndex&);
    VyrEntityIndex& operator=(const VyrEntityIndex&);

    // Records `node`, just appended at the end of the indexed list (its entity not null). When
    // memory runs out it throws and leaves the index as it was.
    void Add(wxVyrListEntityNode* node);
    // Forgets `node`, still in the list and still holding its entity. Unknown nodes are
    // ignored.
    void Remove(wxVyrListEntityNode* node);
    void Clear();
    // Forgets everything and records every node of `list` in its order; no longer stale.
    void Rebuild(const VyrListEntity& list);
    bool IsStale() const { return m_bStale; }

    // The first node, in list order, whose entity has that oid; null when none.
    wxVyrListEntityNode* FindOid(int oid) const;
    // The first node, in list order, that holds `entity`; null when none.
    wxVyrListEntityNode* FindEntity(const VyrEntity* entity) const;
    // The first node, in list order, whose entity has that kind; null when none.
    wxVyrListEntityNode* FirstOfKind(int kind) const;
    // For a recorded node whose entity has that kind: true, with the next node of that kind in
    // *next (null at the end). False for any other node (not recorded, or of another kind),
    // which the caller then walks from by itself.
    bool NextOfKind(const wxVyrListEntityNode* node, int kind, wxVyrListEntityNode** next) const;

private:
    // What is known of a recorded node: its entity's kind and oid as they were when it was
    // added (both fixed for an entity's life), and its neighbours of the same kind.
    struct Links {
        int kind;
        int oid;
        const VyrEntity* entity;
        wxVyrListEntityNode* previousOfKind;
        wxVyrListEntityNode* nextOfKind;
    };
    struct Chain {
        wxVyrListEntityNode* first = nullptr;
        wxVyrListEntityNode* last = nullptr;
    };
    // The nodes of one oid or one entity in list order: nearly always one (an oid or an entity
    // met twice comes only from a damaged file), held without an allocation of its own.
    struct Nodes {
        wxVyrListEntityNode* first = nullptr;
        std::vector<wxVyrListEntityNode*> more;

        void Append(wxVyrListEntityNode* node);
        // Takes the node out (a node not held is ignored); answers whether none is left.
        bool Drop(wxVyrListEntityNode* node);
    };
    // Takes the node out of the nodes of `key`, and the key out when none is left.
    template <class Map, class Key>
    static void Forget(Map& map, const Key& key, wxVyrListEntityNode* node);

    std::unordered_map<const wxVyrListEntityNode*, Links> m_links;
    std::unordered_map<int, Chain> m_kinds;
    std::unordered_map<int, Nodes> m_oids;
    std::unordered_map<const VyrEntity*, Nodes> m_entities;
    bool m_bStale = false;
};

#endif
