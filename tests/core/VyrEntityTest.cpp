#include <gtest/gtest.h>

#include "vyrbase/core/VyrEntity.h"

namespace {
class Plain : public VyrEntity {
public:
    using VyrEntity::VyrEntity;
    int GetKind() const override { return 99; }
};
}  // namespace

TEST(VyrEntity, ConstructionKeepsOidAndDocumentWithEmptyNameAndAttached) {
    VyrBaseData* doc = reinterpret_cast<VyrBaseData*>(0x1000);
    Plain e(42, doc);
    EXPECT_EQ(e.GetOid(), 42);
    EXPECT_EQ(e.GetBase(), doc);
    EXPECT_TRUE(e.GetEntityName().empty());
    EXPECT_FALSE(e.IsDeconnected());
}

TEST(VyrEntity, NullNameIsIgnored) {
    Plain e(1, nullptr);
    e.SetEntityName(L"U(t)");
    e.SetEntityName(nullptr);
    EXPECT_EQ(e.GetEntityName(), L"U(t)");
}

TEST(VyrEntity, CopyHasSameOidNameAndFlag) {
    Plain e(3, nullptr);
    e.SetEntityName(L"name");
    e.SetDeconnected(true);
    Plain copy(e);
    EXPECT_EQ(copy.GetOid(), 3);
    EXPECT_EQ(copy.GetEntityName(), L"name");
    EXPECT_TRUE(copy.IsDeconnected());
    Plain assigned(9, nullptr);
    assigned = e;
    EXPECT_EQ(assigned.GetOid(), 3);
}
