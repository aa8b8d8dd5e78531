// Construction, registration, destruction and copies of a diagram.
#include <gtest/gtest.h>

#include <wx/intl.h>

#include "support/CurveBuilder.h"
#include "support/RecordingObserver.h"
#include "support/TranslationScope.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrUnit.h"

namespace {

bool Lists(const VyrListObserver& list, VyrObserver* o) {
    return list.Find(o) != nullptr;
}

}  // namespace

TEST(VyrDiagram, ConstructionInitialisesTheModel) {
    VyrBaseData doc(nullptr);
    VyrDiagram d(&doc, 1);
    EXPECT_EQ(d.GetBase(), &doc);
    EXPECT_EQ(d.GetIndex(), 1);
    EXPECT_EQ(d.GetTypeScale(), VYR_SCALE_AUTO);
    EXPECT_FALSE(d.IsZoomed());
    EXPECT_FALSE(d.IsXYMode());
    EXPECT_EQ(d.GetActiveCourbe(), nullptr);
    EXPECT_EQ(d.GetActiveExperience(), nullptr);
    EXPECT_EQ(d.GetGraphObj(), nullptr);
    EXPECT_TRUE(d.GetShownEntities().IsEmpty());
    EXPECT_TRUE(d.GetPlottedCourbes().empty());
    EXPECT_EQ(VyrDiagramTestAccess::SecondsSymbol(d), "IDS_SYMB_SECONDE");
    EXPECT_TRUE(d.IsPrefixes());
    EXPECT_FALSE(d.IsTimeLabels());
    EXPECT_FALSE(d.IsGridShown());
    // The scales of the other types keep 0, 1, 0, 1.
    const VyrScale* standard = d.GetScale(VYR_SCALE_STANDARD);
    EXPECT_EQ(standard->GetXmax(), 1.0);
    EXPECT_EQ(standard->GetYmax(), 1.0);
}

TEST(VyrDiagram, TheSecondsSymbolIsTheApplicationsTranslation) {
    TranslationScope tr(std::map<std::string, std::string>{{"IDS_SYMB_SECONDE", "sec"}});
    ASSERT_TRUE(tr.IsLoaded());
    VyrBaseData doc(nullptr);
    VyrDiagram d(&doc, 0);
    EXPECT_EQ(VyrDiagramTestAccess::SecondsSymbol(d), "sec");
}

TEST(VyrDiagram, ConstructionRegistersWithTheDocumentLast) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {4, 3}});
    c->SetShownInDiagram(0, true);
    VyrDiagram d(&doc, 0);
    EXPECT_TRUE(Lists(doc.GetObservers(), &d));
    // Registering filled the diagram from the curves' flags.
    EXPECT_NE(d.GetShownEntities().Find(c), nullptr);
    ASSERT_EQ(d.GetPlottedCourbes().size(), 1u);
    EXPECT_EQ(d.GetUx(), "s");
    EXPECT_EQ(d.GetUy(), "V");
    EXPECT_DOUBLE_EQ(d.GetCurrentScale()->GetXmax(), 4);
}

TEST(VyrDiagram, ConstructionWithoutDocument) {
    VyrDiagram d(nullptr, 0);
    EXPECT_EQ(d.GetBase(), nullptr);
    EXPECT_DOUBLE_EQ(d.GetCurrentScale()->GetXmax(), 1.05);
    d.Fill();
    d.UpdateDiagrams(0, 1);
    EXPECT_TRUE(d.GetPlottedCourbes().empty());
}

TEST(VyrDiagram, OnInitialUpdateFillsThenNotifiesDataChanged) {
    VyrBaseData doc(nullptr);
    VyrDiagram* d = doc.GetDiagram(0);
    RecordingObserver obs;
    d->AddObserver(&obs);
    EXPECT_EQ(obs.initialUpdates, 1);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}});
    c->SetShownInDiagram(0, true);
    obs.Clear();
    d->OnInitialUpdateObserver();
    EXPECT_NE(d->GetShownEntities().Find(c), nullptr);
    ASSERT_EQ(obs.messages.size(), 1u);
    EXPECT_EQ(obs.messages[0].code, VYR_MSG_DATA_CHANGED);
    EXPECT_EQ(obs.messages[0].param, nullptr);
}

TEST(VyrDiagram, DestructionNotifiesAndLeavesTheDocument) {
    VyrBaseData doc(nullptr);
    RecordingObserver obs;
    VyrDiagram* d = new VyrDiagram(&doc, 0);
    d->AddObserver(&obs);
    ASSERT_TRUE(Lists(doc.GetObservers(), d));
    obs.Clear();
    delete d;
    ASSERT_EQ(obs.messages.size(), 1u);
    EXPECT_EQ(obs.messages[0].code, VYR_MSG_DIAGRAM_DESTROYED);
    EXPECT_EQ(obs.messages[0].param, d);
    EXPECT_FALSE(Lists(doc.GetObservers(), d));
    // The observer no longer lists the diagram either.
    EXPECT_TRUE(obs.GetObservables().IsEmpty());
}

TEST(VyrDiagram, CopyDuplicatesTheUnitRecords) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {4, 3}});
    VyrDiagram* source = ShowInDiagram(doc, 0, {c});
    wxRect rect(0, 0, 100, 50);
    source->Move(rect);
    source->SetZoomPourcent(50, 50, 0, 0);
    {
        VyrDiagram copy(*source);
        EXPECT_EQ(copy.GetUx(), "s");
        EXPECT_EQ(copy.GetUy(), "V");
        EXPECT_EQ(copy.GetIndex(), 0);
        EXPECT_TRUE(copy.IsZoomed());
        EXPECT_EQ(copy.GetPlottedCourbes(), source->GetPlottedCourbes());
        EXPECT_NE(copy.GetShownEntities().Find(c), nullptr);
        EXPECT_EQ(copy.RealToPixel(1, 2), source->RealToPixel(1, 2));
        VyrUnit* mine = copy.FindUnitY("V");
        VyrUnit* theirs = source->FindUnitY("V");
        ASSERT_NE(mine, nullptr);
        ASSERT_NE(theirs, nullptr);
        EXPECT_NE(mine, theirs);
        EXPECT_EQ(mine->GetMax(VYR_SCALE_AUTO), theirs->GetMax(VYR_SCALE_AUTO));
        mine->SetMax(VYR_SCALE_AUTO, 1234);
        EXPECT_NE(theirs->GetMax(VYR_SCALE_AUTO), 1234);
        EXPECT_NE(copy.FindUnitX("s"), source->FindUnitX("s"));
    }
    // The source's records outlive the copy (the sanitizer run checks for use after free).
    EXPECT_DOUBLE_EQ(source->FindUnitY("V")->GetMax(VYR_SCALE_AUTO),
                     source->GetScale(VYR_SCALE_AUTO)->GetYmax());
}

TEST(VyrDiagram, AssignmentReplacesTheRecordsWithCopies) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {4, 3}});
    VyrCourbe* b = AddCurve(doc, e, {"F", "N", "x", "m"}, {{0, 1}, {4, 3}});
    VyrDiagram* d0 = ShowInDiagram(doc, 0, {a});
    VyrDiagram* d1 = ShowInDiagram(doc, 1, {b});
    VyrDiagram target(*d1);
    target = *d0;
    EXPECT_EQ(target.GetUx(), "s");
    EXPECT_EQ(target.GetIndex(), 0);
    ASSERT_NE(target.FindUnitY("V"), nullptr);
    EXPECT_NE(target.FindUnitY("V"), d0->FindUnitY("V"));
    EXPECT_NE(target.FindUnitY("N"), d0->FindUnitY("N"));
    target = target;  // self-assignment keeps everything
    EXPECT_NE(target.FindUnitY("V"), nullptr);
}

TEST(VyrDiagram, AssignmentForgetsTheRecordsFoundBefore) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 1}, {4, 3}});
    VyrCourbe* b = AddCurve(doc, e, {"W", "V", "x", "m"}, {{0, -10}, {4, 30}});
    VyrDiagram* d0 = ShowInDiagram(doc, 0, {a});
    VyrDiagram* d1 = ShowInDiagram(doc, 1, {b});
    VyrDiagram target(*d1);
    // -10 .. 30 with the 5 % margin: the record of the copy of diagram 1, found once.
    ASSERT_NE(target.FindUnitY("V"), nullptr);
    EXPECT_DOUBLE_EQ(target.FindUnitY("V")->GetMax(VYR_SCALE_AUTO), 32.0);
    target = *d0;
    // The same name now finds the copy of diagram 0's record (1 .. 3 with the margin).
    const VyrUnit* found = target.FindUnitY("V");
    ASSERT_NE(found, nullptr);
    EXPECT_NE(found, d0->FindUnitY("V"));
    EXPECT_DOUBLE_EQ(found->GetMax(VYR_SCALE_AUTO), 3.1);
    EXPECT_DOUBLE_EQ(d0->FindUnitY("V")->GetMax(VYR_SCALE_AUTO), 3.1);
}

TEST(VyrDiagram, DocumentDiagramsAreObserversFromTheStart) {
    VyrBaseData doc(nullptr);
    EXPECT_TRUE(Lists(doc.GetObservers(), doc.GetDiagram(0)));
    EXPECT_TRUE(Lists(doc.GetObservers(), doc.GetDiagram(1)));
}
