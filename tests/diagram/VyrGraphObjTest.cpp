#include <gtest/gtest.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrGraphObj.h"

TEST(VyrGraphObj, BaseObjectDrawsNothingAndStartsDetached) {
    VyrGraphObj object;
    EXPECT_EQ(object.GetDiagram(), nullptr);
    RecordingDC dc;
    object.Paint(&dc);
    EXPECT_TRUE(dc.Primitives().empty());
}

TEST(VyrGraphObj, CopiesKeepTheDiagram) {
    PaintScene scene;
    VyrGraphObj object;
    scene.Diagram().SetGraphObj(&object);
    EXPECT_EQ(object.GetDiagram(), &scene.Diagram());
    VyrGraphObj copy(object);
    EXPECT_EQ(copy.GetDiagram(), &scene.Diagram());
    VyrGraphObj assigned;
    assigned = object;
    EXPECT_EQ(assigned.GetDiagram(), &scene.Diagram());
    scene.Diagram().SetGraphObj(nullptr);
    // Detaching leaves the object's own link alone.
    EXPECT_EQ(object.GetDiagram(), &scene.Diagram());
}
