#include <gtest/gtest.h>

#include "vyrbase/core/VyrObserverMsg.h"

TEST(VyrObserverMsg, HoldsCodeAndParameterWithoutOwningIt) {
    int value = 7;
    VyrObserverMsg msg(VYR_MSG_FILE_LOADED, &value);
    EXPECT_EQ(msg.GetMsg(), 8);
    EXPECT_EQ(msg.GetParam(), &value);
    msg.SetMsg(VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(msg.GetMsg(), 1);
    VyrObserverMsg copy(msg);
    EXPECT_EQ(copy.GetMsg(), 1);
    EXPECT_EQ(copy.GetParam(), &value);
}

TEST(VyrObserverMsg, CodesHaveTheirDocumentedValues) {
    const int codes[] = {VYR_MSG_DATA_CHANGED,
                         VYR_MSG_EXPERIENCE_DELETED,
                         VYR_MSG_CURVE_DELETED,
                         VYR_MSG_CURVE_RECONNECTED,
                         VYR_MSG_EXPERIENCE_DECONNECTED,
                         VYR_MSG_CURVE_DECONNECTED,
                         VYR_MSG_FILE_LOADED,
                         VYR_MSG_CURVE_CREATED,
                         VYR_MSG_EXPERIENCE_CREATED,
                         VYR_MSG_SCALE_TYPE_CHANGED,
                         VYR_MSG_DIAGRAM_DESTROYED,
                         VYR_MSG_VISIBILITY_CHANGED,
                         VYR_MSG_CURVE_QUANTITIES_CHANGED,
                         VYR_MSG_ABSCISSA_CHANGED,
                         VYR_MSG_ACTIVE_DIAGRAM_CHANGED,
                         VYR_MSG_DIAGRAM_COUNT_CHANGED};
    const int expected[] = {1, 3, 4, 5, 6, 7, 8, 11, 13, 14, 15, 17, 18, 20, 21, 30};
    for (size_t i = 0; i < sizeof(codes) / sizeof(codes[0]); ++i)
        EXPECT_EQ(codes[i], expected[i]);
}
