#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include <wx/cmdproc.h>
#include <wx/docview.h>

#include "DataTestSupport.h"
#include "support/RecordingObserver.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVariable.h"

using namespace vyrtest;

namespace {
// A document bound to a real toolkit document with a real command processor.
struct UndoDoc {
    wxDocument toolkitDoc;
    VyrBaseData* doc;
    VyrExperience* e;
    VyrCourbe* u;
    VyrCourbe* i;
    VyrNote* n1;
    VyrNote* n2;
    RecordingObserver obs;
    UndoDoc() {
        toolkitDoc.SetCommandProcessor(new wxCommandProcessor);
        doc = new VyrBaseData(&toolkitDoc);
        e = Experience(*doc, "E");
        u = Curve(*doc, e, "U", {1, 2}, {10, 20});
        i = Curve(*doc, e, "I", {1, 2}, {1, 2});
        n1 = doc->CreateNoteEntity();
        n2 = doc->CreateNoteEntity();
        u->AddNote(n1);
        u->AddNote(n2);
        doc->AddObserver(&obs);
    }
    ~UndoDoc() { delete doc; }
    wxCommandProcessor* Processor() { return toolkitDoc.GetCommandProcessor(); }
};
}  // namespace

TEST(VyrBaseDataUndo, DeconnectEntityMovesItToTheStoreAndModifiesTheDocument) {
    UndoDoc d;
    EXPECT_FALSE(d.toolkitDoc.IsModified());
    d.doc->DeconnectEntity(d.i->GetVx());
    EXPECT_TRUE(d.i->GetVx()->IsDeconnected());
    EXPECT_EQ(Detached(*d.doc), (std::vector<VyrEntity*>{d.i->GetVx()}));
    EXPECT_EQ(d.doc->FindEntity(d.i->GetVx()->GetOid()), nullptr);
    EXPECT_TRUE(d.toolkitDoc.IsModified());
    EXPECT_TRUE(d.obs.messages.empty());
}

TEST(VyrBaseDataUndo, DeconnectEntityIgnoresWhatIsNotInTheList) {
    UndoDoc d;
    VyrNote loose(100, d.doc);
    d.doc->DeconnectEntity(&loose);
    d.doc->DeconnectEntity(nullptr);
    d.doc->DeconnectEntity(d.n1);
    d.toolkitDoc.Modify(false);
    d.doc->DeconnectEntity(d.n1);  // already detached
    EXPECT_FALSE(d.toolkitDoc.IsModified());
    EXPECT_FALSE(loose.IsDeconnected());
    EXPECT_EQ(Detached(*d.doc), (std::vector<VyrEntity*>{d.n1}));
}

TEST(VyrBaseDataUndo, ReconnectEntityAppendsAtTheEndAndKeepsTheStoreOrder) {
    UndoDoc d;
    d.doc->DeconnectEntity(d.n1);
    d.doc->DeconnectEntity(d.e);
    d.doc->DeconnectEntity(d.n2);
    d.toolkitDoc.Modify(false);
    d.doc->ReconnectEntity(d.e);
    EXPECT_FALSE(d.e->IsDeconnected());
    EXPECT_EQ(Detached(*d.doc), (std::vector<VyrEntity*>{d.n1, d.n2}));
    EXPECT_EQ(d.doc->GetEntityList().GetLast()->GetData(), d.e);
    EXPECT_EQ(d.doc->GetEntityList().GetFirst()->GetData(), d.u);
    EXPECT_TRUE(d.toolkitDoc.IsModified());
    d.toolkitDoc.Modify(false);
    d.doc->ReconnectEntity(d.e);  // not in the store: nothing
    d.doc->ReconnectEntity(nullptr);
    EXPECT_FALSE(d.toolkitDoc.IsModified());
    EXPECT_EQ(d.doc->GetEntityList().GetCount(), 7u);  // n1 and n2 are still detached
}

TEST(VyrBaseDataUndo, DeconnectCurveDetachesCurveVectorsNotesAndSends7) {
    UndoDoc d;
    d.doc->DeconnectCurve(d.u);
    EXPECT_EQ(Detached(*d.doc),
              (std::vector<VyrEntity*>{d.u, d.u->GetVx(), d.u->GetVy(), d.n1, d.n2}));
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.u, d.i}));  // stays in E
    EXPECT_EQ(d.u->GetNotesCount(), 2);
    ASSERT_EQ(d.obs.messages.size(), 1u);
    EXPECT_EQ(d.obs.messages[0].code, VYR_MSG_CURVE_DECONNECTED);
    EXPECT_EQ(d.obs.messages[0].param, d.u);
    // Again: nothing left to detach, code 7 anyway.
    d.doc->DeconnectCurve(d.u);
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{7, 7}));
    EXPECT_EQ(Detached(*d.doc).size(), 5u);
}

TEST(VyrBaseDataUndo, ReconnectCurveBringsEverythingBackAtTheEndAndSends5) {
    UndoDoc d;
    d.doc->DeconnectCurve(d.u);
    d.doc->ReconnectCurve(d.u);
    EXPECT_EQ(Entities(d.doc->GetEntityList()),
              (std::vector<VyrEntity*>{d.e, d.i, d.i->GetVx(), d.i->GetVy(), d.u, d.u->GetVx(),
                                       d.u->GetVy(), d.n1, d.n2}));
    EXPECT_TRUE(Detached(*d.doc).empty());
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{7, 5}));
    EXPECT_EQ(d.obs.messages[1].param, d.u);
}

TEST(VyrBaseDataUndo, DeconnectExperienceSends7PerCurveThen6) {
    UndoDoc d;
    VyrVariable* v = d.doc->CreateVariableEntity(d.e, "a");
    d.doc->DeconnectExperience(d.e);
    EXPECT_TRUE(d.doc->GetEntityList().IsEmpty());
    EXPECT_EQ(Detached(*d.doc),
              (std::vector<VyrEntity*>{d.e, d.u, d.u->GetVx(), d.u->GetVy(), d.n1, d.n2, d.i,
                                       d.i->GetVx(), d.i->GetVy(), v}));
    ASSERT_EQ(d.obs.Codes(), (std::vector<int>{7, 7, 6}));
    EXPECT_EQ(d.obs.messages[0].param, d.u);
    EXPECT_EQ(d.obs.messages[1].param, d.i);
    EXPECT_EQ(d.obs.messages[2].param, d.e);
    d.obs.Clear();
    d.doc->ReconnectExperience(d.e);
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{5, 5}));
    EXPECT_EQ(Entities(d.doc->GetEntityList()),
              (std::vector<VyrEntity*>{d.e, d.u, d.u->GetVx(), d.u->GetVy(), d.n1, d.n2, d.i,
                                       d.i->GetVx(), d.i->GetVy(), v}));
    EXPECT_TRUE(Detached(*d.doc).empty());
}

TEST(VyrBaseDataUndo, WithoutToolkitDocumentOrProcessorNothingIsDeleted) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* c = Curve(doc, e, "U", {1}, {1});
    VyrNote* n = doc.CreateNoteEntity();
    EXPECT_FALSE(doc.DeleteCurveWithUndo(c));
    EXPECT_FALSE(doc.DeleteExperienceWithUndo(e));
    EXPECT_FALSE(doc.DeleteNoteWithUndo(nullptr, c, n));
    EXPECT_EQ(doc.GetEntityList().GetCount(), 5u);
    EXPECT_TRUE(Detached(doc).empty());
    wxDocument bare;  // no command processor
    VyrBaseData bound(&bare);
    VyrExperience* f = Experience(bound, "F");
    EXPECT_FALSE(bound.DeleteExperienceWithUndo(f));
    EXPECT_EQ(bound.FindExperience(L"F"), f);
}

TEST(VyrBaseDataUndo, NullEntitiesAreRefused) {
    UndoDoc d;
    EXPECT_FALSE(d.doc->DeleteCurveWithUndo(nullptr));
    EXPECT_FALSE(d.doc->DeleteExperienceWithUndo(nullptr));
    EXPECT_FALSE(d.doc->DeleteNoteWithUndo(d.doc->GetDiagram(0), d.u, nullptr));
    EXPECT_FALSE(d.Processor()->CanUndo());
    d.doc->DeconnectCurve(nullptr);
    d.doc->ReconnectCurve(nullptr);
    d.doc->DeconnectExperience(nullptr);
    d.doc->ReconnectExperience(nullptr);
    EXPECT_TRUE(d.obs.messages.empty());
}

TEST(VyrBaseDataUndo, CurveWithTwoNotesUndoPutsEverythingBackAtTheEnd) {
    UndoDoc d;
    EXPECT_TRUE(d.doc->DeleteCurveWithUndo(d.u));
    EXPECT_EQ(d.doc->FindCourbe(L"C_U_t"), nullptr);
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.i}));
    EXPECT_EQ(Entities(d.doc->GetEntityList()),
              (std::vector<VyrEntity*>{d.e, d.i, d.i->GetVx(), d.i->GetVy()}));
    ASSERT_TRUE(d.Processor()->Undo());
    EXPECT_EQ(d.doc->FindCourbe(L"C_U_t"), d.u);
    EXPECT_EQ(Entities(d.doc->GetEntityList()),
              (std::vector<VyrEntity*>{d.e, d.i, d.i->GetVx(), d.i->GetVy(), d.u, d.u->GetVx(),
                                       d.u->GetVy(), d.n1, d.n2}));
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.i, d.u}));
    EXPECT_EQ(Items(d.u->GetNotes()), (std::vector<void*>{d.n1, d.n2}));
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{7, 5}));
    EXPECT_EQ(d.obs.messages[0].param, d.u);
    EXPECT_EQ(d.obs.messages[1].param, d.u);
}

TEST(VyrBaseDataUndo, SubmitUndoRedoUndoThenDestroyWithCodesInOrder) {
    UndoDoc d;
    VyrExperience* f = Experience(*d.doc, "F");
    VyrCourbe* w = Curve(*d.doc, f, "W", {1}, {1});
    VyrNote* wn = d.doc->CreateNoteEntity();
    w->AddNote(wn);
    d.obs.Clear();

    ASSERT_TRUE(d.doc->DeleteExperienceWithUndo(d.e));                    // 7 (u), 7 (i), 6 (e)
    ASSERT_TRUE(d.doc->DeleteNoteWithUndo(d.doc->GetDiagram(0), w, wn));  // 1 (w)
    ASSERT_TRUE(d.doc->DeleteCurveWithUndo(w));                           // 7 (w)
    ASSERT_TRUE(d.Processor()->Undo());                                   // 5 (w)
    ASSERT_TRUE(d.Processor()->Undo());                                   // 1 (w)
    ASSERT_TRUE(d.Processor()->Undo());                                   // 5 (u), 5 (i)
    ASSERT_TRUE(d.Processor()->Redo());                                   // 7, 7, 6
    ASSERT_TRUE(d.Processor()->Redo());                                   // 1
    ASSERT_TRUE(d.Processor()->Undo());                                   // 1
    ASSERT_TRUE(d.Processor()->Undo());                                   // 5, 5
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{7, 7, 6, 1, 7, 5, 1, 5, 5, 7, 7, 6, 1, 1, 5, 5}));
    const std::vector<void*> params = {d.u, d.i, d.e, w,   w, w, w,   d.u,
                                       d.i, d.u, d.i, d.e, w, w, d.u, d.i};
    for (size_t k = 0; k < params.size(); ++k)
        EXPECT_EQ(d.obs.messages[k].param, params[k]) << k;
    // Everything is back: E with its curves in order, W with its note at the end.
    EXPECT_EQ(Items(d.e->GetCourbes()), (std::vector<void*>{d.u, d.i}));
    EXPECT_EQ(Items(w->GetNotes()), (std::vector<void*>{wn}));
    EXPECT_EQ(Items(f->GetCourbes()), (std::vector<void*>{w}));

    // Leave E detached, then empty the document: only F is deleted for good (4, 3).
    ASSERT_TRUE(d.Processor()->Redo());  // 7, 7, 6
    d.obs.Clear();
    d.doc->Delete();
    EXPECT_EQ(d.obs.Codes(), (std::vector<int>{VYR_MSG_CURVE_DELETED, VYR_MSG_EXPERIENCE_DELETED}));
    EXPECT_EQ(d.obs.messages[0].param, w);
    EXPECT_EQ(d.obs.messages[1].param, f);
    EXPECT_TRUE(d.doc->GetEntityList().IsEmpty());
    EXPECT_TRUE(Detached(*d.doc).empty());
    // The processor still holds commands that point to deleted objects: the application clears
    // its history when it empties a document.
    d.Processor()->ClearCommands();
}

TEST(VyrBaseDataUndo, DestroyingTheDocumentWhileEntitiesAreDetachedFreesThem) {
    UndoDoc d;
    VyrVariable* v = d.doc->CreateVariableEntity(d.e, "a");
    (void)v;
    ASSERT_TRUE(d.doc->DeleteNoteWithUndo(d.doc->GetDiagram(0), d.u, d.n1));
    ASSERT_TRUE(d.doc->DeleteCurveWithUndo(d.i));
    ASSERT_TRUE(d.doc->DeleteExperienceWithUndo(d.e));
    EXPECT_EQ(d.doc->GetEntityList().GetCount(), 0u);
    EXPECT_EQ(Detached(*d.doc).size(), 10u);
    // ~UndoDoc deletes the document first (freeing the store), then the toolkit document and
    // its processor, whose commands delete nothing.
}

TEST(VyrBaseDataUndo, ManyCyclesOverSeveralExperimentsKeepTheDocumentConsistent) {
    wxDocument toolkitDoc;
    toolkitDoc.SetCommandProcessor(new wxCommandProcessor);
    auto* doc = new VyrBaseData(&toolkitDoc);
    std::vector<VyrExperience*> experiences;
    std::vector<VyrCourbe*> curves;
    std::vector<std::pair<VyrNote*, VyrCourbe*>> notes;
    for (int k = 0; k < 4; ++k) {
        VyrExperience* e = Experience(*doc, wxString::Format("E%d", k));
        experiences.push_back(e);
        doc->CreateVariableEntity(e, "v");
        for (int j = 0; j < 3; ++j) {
            VyrCourbe* c = Curve(*doc, e, wxString::Format("G%d", j), {1, 2, 3},
                                 {double(j), double(j), double(j)});
            curves.push_back(c);
            for (int m = 0; m < 2; ++m) {
                VyrNote* n = doc->CreateNoteEntity();
                c->AddNote(n);
                notes.push_back({n, c});
            }
        }
    }
    const size_t total = doc->GetEntityList().GetCount();
    ASSERT_EQ(total, 4u * (1 + 1 + 3 * (3 + 2)));
    wxCommandProcessor* processor = toolkitDoc.GetCommandProcessor();
    std::mt19937 rng(7);
    auto check = [&]() {
        // Every entity is in exactly one place, with a flag that says which.
        std::vector<VyrEntity*> attached = Entities(doc->GetEntityList());
        std::vector<VyrEntity*> detached = Detached(*doc);
        ASSERT_EQ(attached.size() + detached.size(), total);
        for (VyrEntity* entity : attached) {
            ASSERT_FALSE(entity->IsDeconnected());
            ASSERT_EQ(doc->FindEntity(entity->GetOid()), entity);
        }
        // Iteration by kind sees the attached entities of that kind in list order.
        for (int kind = VYR_KIND_FIRST; kind <= VYR_KIND_LAST; ++kind) {
            std::vector<VyrEntity*> walked, iterated;
            for (VyrEntity* entity : attached)
                if (entity->GetKind() == kind)
                    walked.push_back(entity);
            wxVyrListEntityNode* node = doc->GetFirstEntityNode(kind);
            while (node)
                iterated.push_back(doc->GetNextEntity(&node, kind));
            ASSERT_EQ(iterated, walked);
        }
        for (VyrEntity* entity : detached) {
            ASSERT_TRUE(entity->IsDeconnected());
            ASSERT_EQ(doc->FindEntity(entity->GetOid()), nullptr);
            ASSERT_EQ(std::count(attached.begin(), attached.end(), entity), 0);
        }
        for (VyrCourbe* c : curves) {
            // A curve and its vectors are attached or detached together.
            ASSERT_EQ(c->GetVx()->IsDeconnected(), c->IsDeconnected());
            ASSERT_EQ(c->GetVy()->IsDeconnected(), c->IsDeconnected());
        }
    };
    for (int step = 0; step < 400; ++step) {
        switch (rng() % 5) {
            case 0: {
                VyrCourbe* c = curves[rng() % curves.size()];
                if (!c->IsDeconnected() && doc->FindExperienceFromCourbe(c)) {
                    ASSERT_TRUE(doc->DeleteCurveWithUndo(c));
                }
                break;
            }
            case 1: {
                VyrExperience* e = experiences[rng() % experiences.size()];
                if (!e->IsDeconnected()) {
                    ASSERT_TRUE(doc->DeleteExperienceWithUndo(e));
                }
                break;
            }
            case 2: {
                auto& entry = notes[rng() % notes.size()];
                if (!entry.first->IsDeconnected() && !entry.second->IsDeconnected() &&
                    entry.second->GetNotes().Find(entry.first)) {
                    ASSERT_TRUE(
                        doc->DeleteNoteWithUndo(doc->GetDiagram(0), entry.second, entry.first));
                }
                break;
            }
            case 3:
                processor->Undo();
                break;
            default:
                processor->Redo();
                break;
        }
        check();
    }
    // Undo everything: the document holds every entity again, attached.
    while (processor->CanUndo())
        ASSERT_TRUE(processor->Undo());
    check();
    EXPECT_EQ(doc->GetEntityList().GetCount(), total);
    for (VyrExperience* e : experiences)
        EXPECT_EQ(e->GetNbCourbe(), 3);
    for (auto& entry : notes)
        EXPECT_TRUE(entry.second->GetNotes().Find(entry.first) != nullptr);
    // Redo part of it, then destroy the document with entities detached.
    for (int k = 0; k < 10 && processor->CanRedo(); ++k)
        ASSERT_TRUE(processor->Redo());
    EXPECT_FALSE(Detached(*doc).empty());
    delete doc;
}
