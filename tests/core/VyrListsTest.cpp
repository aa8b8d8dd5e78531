#include <gtest/gtest.h>

#include <memory>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrLists.h"
#include "vyrbase/core/VyrMaps.h"

namespace {
// Counts live instances, to show that clearing a container leaves its objects alive.
class Counted : public VyrEntity {
public:
    explicit Counted(int oid) : VyrEntity(oid, nullptr) { ++alive; }
    ~Counted() override { --alive; }
    int GetKind() const override { return 3; }
    static int alive;
};
int Counted::alive = 0;
}  // namespace

TEST(VyrLists, ClearingAListLeavesItsElementsAlive) {
    {
        Counted a(1), b(2);
        VyrListEntity list;
        list.Append(&a);
        list.Append(&b);
        list.Clear();
        EXPECT_EQ(Counted::alive, 2);
        EXPECT_EQ(list.GetCount(), 0u);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(VyrLists, FindComparesPointersNeverContents) {
    Counted a(1), twin(1);
    twin.SetEntityName(a.GetEntityName().wc_str());
    VyrListEntity list;
    list.Append(&a);
    EXPECT_NE(list.Find(&a), nullptr);
    EXPECT_EQ(list.Find(&twin), nullptr);
    EXPECT_TRUE(list.Member(&a));
    EXPECT_EQ(list.IndexOf(&a), 0);
    EXPECT_EQ(list.IndexOf(&twin), wxNOT_FOUND);
}

TEST(VyrLists, TypedOperationsWorkThroughNodes) {
    Counted a(1), b(2), c(3);
    VyrListEntity list;
    list.Append(&b);
    list.Insert(&a);     // at the front
    list.Insert(2, &c);  // at an index
    ASSERT_EQ(list.GetCount(), 3u);
    EXPECT_EQ(list[0], &a);
    EXPECT_EQ(list[1], &b);
    EXPECT_EQ(list[2], &c);
    EXPECT_EQ(list.GetFirst()->GetData(), &a);
    EXPECT_EQ(list.GetLast()->GetData(), &c);
    int sum = 0;
    for (VyrEntity* e : list)
        sum += e->GetOid();
    EXPECT_EQ(sum, 6);
    EXPECT_TRUE(list.DeleteObject(&b));
    EXPECT_EQ(list.GetCount(), 2u);
    EXPECT_EQ(Counted::alive, 3);
}

TEST(VyrMaps, ClearingAMapLeavesPointedObjectsAlive) {
    {
        Counted a(1);
        VyrIntToVecteurMap byOid;
        byOid[1] = reinterpret_cast<VyrVecteur*>(&a);
        VyrIntToVecteurMap copy(byOid);
        byOid.clear();
        copy.clear();
        EXPECT_EQ(Counted::alive, 1);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST(VyrMaps, CopyIsDeepForEntriesAndShallowForPointers) {
    VyrIntToIntMap original;
    original[4] = 40;
    VyrIntToIntMap copy(original);
    copy[4] = 41;
    copy[5] = 50;
    EXPECT_EQ(original[4], 40);
    EXPECT_EQ(original.count(5), 0u);
    VyrIntToStringMap texts;
    texts[1] = L"C1E1";
    VyrIntToStringMap textsCopy;
    textsCopy = texts;
    EXPECT_EQ(textsCopy[1], L"C1E1");
    VyrStrToUnitMap units;
    EXPECT_EQ(units.find(L"V"), units.end());
    units[L"V"] = nullptr;  // operator[] finds or creates the entry
    EXPECT_EQ(units.size(), 1u);
    VyrLongToVecteurMap longs;
    longs[7L] = nullptr;
    EXPECT_EQ(longs.erase(7L), 1u);
}
