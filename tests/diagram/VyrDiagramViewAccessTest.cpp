#include <gtest/gtest.h>

#include <climits>

#include "support/DiagramTestDocument.h"
#include "vyrbase/VyrBase.h"

// The umbrella header brings the view's access class in.
TEST(VyrDiagramViewAccess, ANullDiagramAnswersNothingFound) {
    int dist2 = 0;
    EXPECT_EQ(VyrDiagramViewAccess::FindPoint(nullptr, nullptr, -1, wxPoint(1, 1), &dist2), -1);
    EXPECT_EQ(dist2, INT_MAX);
    EXPECT_EQ(VyrDiagramViewAccess::GetPoint(nullptr, nullptr, wxPoint(1, 1)), 0);
    int index = 3;
    EXPECT_EQ(VyrDiagramViewAccess::HitTestCurve(nullptr, wxPoint(1, 1), -1, &index), nullptr);
    EXPECT_EQ(index, -1);
    index = 3;
    EXPECT_EQ(VyrDiagramViewAccess::HitTestCurvePlusProche(nullptr, wxPoint(1, 1), -1, &index),
              nullptr);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(VyrDiagramViewAccess::FindNote(nullptr, nullptr, wxPoint(1, 1)), nullptr);
    VyrCourbe* courbe = reinterpret_cast<VyrCourbe*>(&index);
    EXPECT_EQ(VyrDiagramViewAccess::HitTestNote(nullptr, wxPoint(1, 1), &courbe), nullptr);
    EXPECT_EQ(courbe, nullptr);
}

TEST(VyrDiagramViewAccess, NullCurvesAndMissingOutputsAreAccepted) {
    DiagramTestDocument t;
    VyrDiagram* d = t.Diagram(0);
    int dist2 = 0;
    EXPECT_EQ(VyrDiagramViewAccess::FindPoint(d, nullptr, -1, wxPoint(1, 1), &dist2), -1);
    EXPECT_EQ(dist2, INT_MAX);
    EXPECT_EQ(VyrDiagramViewAccess::GetPoint(d, nullptr, wxPoint(1, 1)), 0);
    EXPECT_EQ(VyrDiagramViewAccess::FindNote(d, nullptr, wxPoint(1, 1)), nullptr);
    EXPECT_EQ(VyrDiagramViewAccess::HitTestCurve(d, wxPoint(1, 1), -1, nullptr), nullptr);
    EXPECT_EQ(VyrDiagramViewAccess::HitTestCurvePlusProche(d, wxPoint(1, 1), -1, nullptr), nullptr);
    EXPECT_EQ(VyrDiagramViewAccess::HitTestNote(d, wxPoint(1, 1), nullptr), nullptr);
    // A curve without vectors has no points.
    VyrCourbe* bare = t.AddCourbe("U", "V", {});
    bare->SetVx(nullptr);
    EXPECT_EQ(VyrDiagramViewAccess::FindPoint(d, bare, -1, wxPoint(1, 1), nullptr), -1);
    EXPECT_EQ(d->HitOutilInterval(wxPoint(1, 1), nullptr), nullptr);
}

TEST(VyrDiagramViewAccess, TheDistanceToARectangleIsTheSameWithOrWithoutADiagram) {
    DiagramTestDocument t;
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(t.Diagram(0), 0, 0, 3, 4, 10, 10),
              25.0);
    EXPECT_EQ(VyrDiagramViewAccess::Distance2PointToRectangle(nullptr, 0, 0, 3, 4, 10, 10), 25.0);
}
