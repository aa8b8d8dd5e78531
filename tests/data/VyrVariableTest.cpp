#include <gtest/gtest.h>

#include "vyrbase/data/VyrVariable.h"

TEST(VyrVariable, ValueAndExpressionWithBindableAddress) {
    VyrVariable v(3, nullptr);
    EXPECT_EQ(v.GetKind(), 5);
    EXPECT_EQ(v.GetValue(), 0.0);
    EXPECT_TRUE(v.GetExpression().empty());
    *v.GetAdressValue() = 2.5;
    EXPECT_EQ(v.GetValue(), 2.5);
    v.SetValue(-1.0);
    EXPECT_EQ(*v.GetAdressValue(), -1.0);
    v.SetExpression("a*b");
    EXPECT_EQ(v.GetExpression(), "a*b");
}
