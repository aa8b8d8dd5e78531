#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrEntityIndex.h"

namespace {
class Kinded : public VyrEntity {
public:
    Kinded(int oid, int kind) : VyrEntity(oid, nullptr), m_kind(kind) {}
    int GetKind() const override { return m_kind; }

private:
    int m_kind;
};

// The answers of a walk of the list, which the index must give.
wxVyrListEntityNode* WalkOid(const VyrListEntity& list, int oid) {
    for (auto* node = list.GetFirst(); node; node = node->GetNext())
        if (node->GetData()->GetOid() == oid)
            return node;
    return nullptr;
}

std::vector<wxVyrListEntityNode*> WalkKind(const VyrListEntity& list, int kind) {
    std::vector<wxVyrListEntityNode*> nodes;
    for (auto* node = list.GetFirst(); node; node = node->GetNext())
        if (node->GetData()->GetKind() == kind)
            nodes.push_back(node);
    return nodes;
}

std::vector<wxVyrListEntityNode*> IndexKind(const VyrEntityIndex& index, int kind) {
    std::vector<wxVyrListEntityNode*> nodes;
    for (auto* node = index.FirstOfKind(kind); node;) {
        nodes.push_back(node);
        if (!index.NextOfKind(node, kind, &node))
            break;
    }
    return nodes;
}

struct Indexed {
    VyrListEntity list;
    VyrEntityIndex index;
    std::vector<std::unique_ptr<Kinded>> owned;

    wxVyrListEntityNode* Append(int oid, int kind) {
        owned.push_back(std::make_unique<Kinded>(oid, kind));
        wxVyrListEntityNode* node = list.Append(owned.back().get());
        index.Add(node);
        return node;
    }
    void Erase(wxVyrListEntityNode* node) {
        index.Remove(node);
        list.Erase(node);
    }
};
}  // namespace

TEST(VyrEntityIndex, AnswersLikeAWalkOfTheListThroughAppendsAndErasures) {
    Indexed d;
    std::mt19937 random(7);
    for (int step = 0; step < 2000; ++step) {
        // Few oids and kinds, so that duplicates and emptied kinds come up often.
        if (d.list.GetCount() > 0 && random() % 3 == 0) {
            auto* node = d.list.Item(random() % d.list.GetCount());
            d.Erase(node);
        } else {
            d.Append(static_cast<int>(random() % 20), static_cast<int>(1 + random() % 4));
        }
        for (int oid = 0; oid < 20; ++oid)
            ASSERT_EQ(d.index.FindOid(oid), WalkOid(d.list, oid)) << "step " << step;
        for (int kind = 1; kind <= 4; ++kind)
            ASSERT_EQ(IndexKind(d.index, kind), WalkKind(d.list, kind)) << "step " << step;
        for (auto& entity : d.owned)
            ASSERT_EQ(d.index.FindEntity(entity.get()), d.list.Find(entity.get()));
    }
}

TEST(VyrEntityIndex, NextOfKindRefusesUnknownNodesAndOtherKinds) {
    Indexed d;
    wxVyrListEntityNode* a = d.Append(1, 2);
    wxVyrListEntityNode* b = d.Append(2, 3);
    wxVyrListEntityNode* next = a;
    EXPECT_FALSE(d.index.NextOfKind(a, 3, &next));
    EXPECT_EQ(next, a);
    VyrListEntity other;
    Kinded stranger(9, 2);
    EXPECT_FALSE(d.index.NextOfKind(other.Append(&stranger), 2, &next));
    EXPECT_TRUE(d.index.NextOfKind(b, 3, &next));
    EXPECT_EQ(next, nullptr);
    d.index.Remove(other.GetFirst());  // unknown: ignored
    EXPECT_EQ(d.index.FindOid(1), a);
}

TEST(VyrEntityIndex, CopyIsStaleUntilRebuiltOnItsOwnList) {
    Indexed d;
    d.Append(5, 1);
    VyrEntityIndex copy(d.index);
    EXPECT_TRUE(copy.IsStale());
    EXPECT_EQ(copy.FindOid(5), nullptr);
    VyrListEntity list(d.list);
    copy.Rebuild(list);
    EXPECT_FALSE(copy.IsStale());
    EXPECT_EQ(copy.FindOid(5), list.GetFirst());
    EXPECT_NE(copy.FindOid(5), d.index.FindOid(5));
    copy = d.index;
    EXPECT_TRUE(copy.IsStale());
}

TEST(VyrEntityIndex, ClearForgetsEverything) {
    Indexed d;
    d.Append(5, 1);
    d.index.Clear();
    EXPECT_EQ(d.index.FindOid(5), nullptr);
    EXPECT_EQ(d.index.FirstOfKind(1), nullptr);
    EXPECT_EQ(d.index.FindEntity(d.owned[0].get()), nullptr);
}
