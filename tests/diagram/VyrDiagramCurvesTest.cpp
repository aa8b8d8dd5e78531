// Which curves a diagram shows and plots.
#include <gtest/gtest.h>

#include "support/CurveBuilder.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

std::vector<VyrEntity*> Shown(const VyrDiagram& d) {
    std::vector<VyrEntity*> result;
    for (auto* node = d.GetShownEntities().GetFirst(); node; node = node->GetNext())
        result.push_back(node->GetData());
    return result;
}

}  // namespace

TEST(VyrDiagramCurves, FillShowsTheFlaggedCurvesInDocumentOrder) {
    VyrBaseData doc(nullptr);
    VyrExperience* e1 = AddExperience(doc, "E1");
    VyrExperience* e2 = AddExperience(doc, "E2");
    VyrCourbe* a = AddCurve(doc, e1, {"A", "V", "t", "s"}, {{0, 1}});
    VyrCourbe* b = AddCurve(doc, e2, {"B", "V", "t", "s"}, {{0, 1}});
    VyrCourbe* c = AddCurve(doc, e1, {"C", "V", "t", "s"}, {{0, 1}});
    c->SetShownInDiagram(0, true);
    a->SetShownInDiagram(0, true);
    b->SetShownInDiagram(1, true);
    VyrDiagram* d = doc.GetDiagram(0);
    d->Fill();
    EXPECT_EQ(Shown(*d), (std::vector<VyrEntity*>{a, c}));
    // A curve no longer flagged leaves the list on the next Fill.
    a->SetShownInDiagram(0, false);
    d->Fill();
    EXPECT_EQ(Shown(*d), (std::vector<VyrEntity*>{c}));
}

TEST(VyrDiagramCurves, FillTakesTheAbscissaOfTheLastShownCurve) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 1}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "V", "[x]", "mm"}, {{0, 1}});
    VyrDiagram* d = ShowInDiagram(doc, 0, {a, b});
    EXPECT_EQ(d->GetGrdX(), "[x]");
    EXPECT_EQ(d->GetUx(), "mm");
    ASSERT_EQ(d->GetPlottedCourbes().size(), 1u);
    EXPECT_EQ(d->GetPlottedCourbes()[0], b);
}

TEST(VyrDiagramCurves, FillRaisesTheDiagramCountForDiagramOne) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 1}});
    RecordingObserver obs;
    doc.AddObserver(&obs);
    ShowInDiagram(doc, 0, {a});
    EXPECT_EQ(doc.GetDiagramCount(), 1);
    EXPECT_TRUE(obs.messages.empty());
    ShowInDiagram(doc, 1, {a});
    EXPECT_EQ(doc.GetDiagramCount(), 2);
    EXPECT_EQ(obs.Codes(),
              (std::vector<int>{VYR_MSG_ACTIVE_DIAGRAM_CHANGED, VYR_MSG_DIAGRAM_COUNT_CHANGED}));
    // Already two: nothing more.
    obs.Clear();
    doc.GetDiagram(1)->Fill();
    EXPECT_TRUE(obs.messages.empty());
}

TEST(VyrDiagramCurves, UpdateCourbesPlotsTheShownCurvesOfTheAbscissaOnly) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 1}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "V", "t", "ms"}, {{0, 1}});
    VyrCourbe* c = AddCurve(doc, e, {"C", "V", "T", "s"}, {{0, 1}});
    VyrCourbe* f = AddCurve(doc, e, {"F", "mA", "t", "s"}, {{0, 1}});
    AddCurve(doc, e, {"G", "V", "t", "s"}, {{0, 1}});  // not shown
    VyrDiagram* d = ShowInDiagram(doc, 0, {a, b, c, f});
    d->SetUnits("t", "s", "V");
    EXPECT_EQ(d->GetPlottedCourbes(), (std::vector<VyrCourbe*>{a, f}));
    d->SetUnits("t", "ms", "V");
    EXPECT_EQ(d->GetPlottedCourbes(), (std::vector<VyrCourbe*>{b}));
    // Quantity names are compared exactly, case included.
    d->SetUnits("T", "s", "V");
    EXPECT_EQ(d->GetPlottedCourbes(), (std::vector<VyrCourbe*>{c}));
}
