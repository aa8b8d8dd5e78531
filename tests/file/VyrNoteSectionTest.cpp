#include <gtest/gtest.h>

#include "RecordTestSupport.h"
#include "vyrbase/data/VyrNote.h"

using recordtest::Curve;
using recordtest::Experience;
using recordtest::LoadText;
using recordtest::SaveText;
using recordtest::Section;

namespace {

// Curve C1 (vectors 3 and 4, oid 5) in experiment E1 (oid 7); the caller adds what goes
// before and inside the curve section.
std::wstring CurveFile(const std::wstring& notes, const std::wstring& curveExtra = L"",
                       const std::wstring& curveName = L"C1") {
    return notes +
           L"[vecteur]\r\n\toid = 3\r\n\tnom = \"t\"\r\n\tpoints = table 2 {\r\n\t1\t2\t\r\n\t}\r\n"
           L"[vecteur]\r\n\toid = 4\r\n\tnom = \"U\"\r\n\tpoints = table 2 {\r\n\t5\t6\t\r\n\t}\r\n"
           L"[courbe]\r\n\toid = 5\r\n\tnom = \"" +
           curveName + L"\"\r\n\tvx = 3\r\n\tvy = 4\r\n" + curveExtra +
           L"[manipulation]\r\n\toid = 7\r\n\tnom = \"E1\"\r\n\tcourbes = table 1 "
           L"{\r\n\t5\t\r\n\t}\r\n";
}

std::wstring Note(int oid, const std::wstring& name, const std::wstring& text,
                  const std::wstring& curve) {
    return L"[Annotation]\r\n\toid = " + std::to_wstring(oid) + L"\r\n\tnom = \"" + name +
           L"\"\r\n\ttexte = \"" + text + L"\"\r\n\tindex = 1\r\n\tcurve = \"" + curve + L"\"\r\n";
}

VyrNote* NoteOf(VyrBaseData& doc, int oid) {
    VyrEntity* e = doc.FindEntity(oid);
    return e && e->GetKind() == VYR_KIND_NOTE ? static_cast<VyrNote*>(e) : nullptr;
}

std::vector<int> NotesOf(VyrCourbe* c) {
    std::vector<int> oids;
    wxVyrListNoteNode* node = c->GetFirstNote();
    while (node)
        oids.push_back(c->GetNextNote(&node)->GetOid());
    return oids;
}

}  // namespace

TEST(VyrNoteSection, CurveNoteIsWrittenWithItsPointAndCurveKey) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E1");
    VyrCourbe* c = Curve(doc, e, "C1", "U", {{1.5, 2}, {2.5, -3}});
    VyrNote* note = doc.CreateNoteEntity();
    note->SetText("hello");
    note->SetPointIndex(1);
    note->SetPosition(0.5, -1.25);
    c->AddNote(note);
    const std::wstring text = SaveText(doc, dir);
    EXPECT_EQ(Section(text, L"[Annotation]"),
              L"[Annotation]\r\n\toid = " + std::to_wstring(note->GetOid()) +
                  L"\r\n"
                  L"\tnom = \"rectangle_annotation(2.5. -3)_C1\"\r\n"
                  L"\tposx0 = 0\r\n\tposy0 = 0\r\n\tposx1 = 0\r\n\tposy1 = 22\r\n"
                  L"\ttexte = \"hello\"\r\n"
                  L"\tindex = 1\r\n"
                  L"\tcurve = \"C1E1\"\r\n"
                  L"\tposition_x = 0.5\r\n"
                  L"\tposition_y = -1.25\r\n");
    // Annotations come first in the file.
    EXPECT_EQ(text.find(L"[Annotation]"), 0u);
}

TEST(VyrNoteSection, NoteBeyondTheCurvesPointsIsWrittenAtZeroZero) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrCourbe* c = Curve(doc, Experience(doc, "E"), "C", "U", {{1, 7}, {2, 8}, {3, 9}});
    VyrNote* note = doc.CreateNoteEntity();
    note->SetPointIndex(5);
    c->AddNote(note);
    EXPECT_NE(SaveText(doc, dir).find(L"\tnom = \"rectangle_annotation(0. 0)_C\"\r\n"),
              std::wstring::npos);
}

// Kept: the name line is formatted whole and then every "," of it becomes ".", the separator
// between the two numbers and the commas of the curve's name included.
TEST(VyrNoteSection, NameLineHasEveryCommaTurnedIntoAPoint) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* u = Curve(doc, e, "U(t)", "U", {{0, 0}, {1.5, -20.5}});
    VyrCourbe* ab = Curve(doc, e, "a,b", "W", {{-0.25, 1e-7}});
    for (VyrCourbe* c : {u, ab}) {
        VyrNote* note = doc.CreateNoteEntity();
        note->SetPointIndex(c == u ? 1 : 0);
        c->AddNote(note);
    }
    const std::wstring text = SaveText(doc, dir);
    EXPECT_NE(text.find(L"\tnom = \"rectangle_annotation(1.5. -20.5)_U(t)\"\r\n"),
              std::wstring::npos);
    EXPECT_NE(text.find(L"\tnom = \"rectangle_annotation(-0.25. 1e-07)_a.b\"\r\n"),
              std::wstring::npos);
    EXPECT_EQ(text.find(L"rectangle_annotation(1.5, "), std::wstring::npos);
    // The name line reads back as written: the note is a curve annotation of that name.
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, text));
    VyrCourbe* loaded = back.FindCourbe(L"U(t)");
    ASSERT_NE(loaded, nullptr);
    ASSERT_EQ(loaded->GetNotesCount(), 1);
    wxVyrListNoteNode* node = loaded->GetFirstNote();
    VyrNote* note = loaded->GetNextNote(&node);
    EXPECT_EQ(note->GetEntityName(), L"rectangle_annotation(1.5. -20.5)_U(t)");
    EXPECT_EQ(note->GetType(), VYR_NOTE_ANNOTATION);
}

TEST(VyrNoteSection, NoteTextIsWrittenUnescapedAndReadsBackCutAtItsQuote) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrCourbe* c = Curve(doc, Experience(doc, "E"), "C", "U", {{1, 7}});
    VyrNote* note = doc.CreateNoteEntity();
    note->SetText(L"a \"b\" c");
    note->SetPointIndex(0);
    c->AddNote(note);
    const std::wstring text = SaveText(doc, dir);
    EXPECT_NE(text.find(L"\ttexte = \"a \"b\" c\"\r\n"), std::wstring::npos);
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, text));
    ASSERT_NE(NoteOf(back, note->GetOid()), nullptr);
    EXPECT_EQ(NoteOf(back, note->GetOid())->GetText(), "a ");
}

TEST(VyrNoteSection, TitlesOfBothDiagramsFollowTheCurveNotes) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrCourbe* c = Curve(doc, Experience(doc, "E"), "C", "U", {{1, 7}});
    VyrNote* curveNote = doc.CreateNoteEntity();
    curveNote->SetPointIndex(0);
    c->AddNote(curveNote);
    VyrNote* t0 = doc.CreateNoteEntity();
    t0->SetText("Titre A");
    t0->SetPosition(0.25, 0.125);
    VyrNote* t1 = doc.CreateNoteEntity();
    t1->SetText("Titre B");
    doc.SetDiagramTitle(0, t0);
    doc.SetDiagramTitle(1, t1);
    const std::wstring text = SaveText(doc, dir);
    EXPECT_EQ(Section(text, L"[Annotation]", 1),
              L"[Annotation]\r\n\toid = " + std::to_wstring(t0->GetOid()) +
                  L"\r\n"
                  L"\tnom = \"rectangle_titre\"\r\n"
                  L"\tdiagramme = 0\r\n"
                  L"\tposx0 = 0\r\n\tposy0 = 0\r\n\tposx1 = 0\r\n\tposy1 = 22\r\n"
                  L"\ttexte = \"Titre A\"\r\n"
                  L"\ttaille_font = -18\r\n"
                  L"\tposition_x = 0.25\r\n"
                  L"\tposition_y = 0.125\r\n");
    EXPECT_NE(Section(text, L"[Annotation]", 2).find(L"\tdiagramme = 1\r\n"), std::wstring::npos);
    EXPECT_NE(Section(text, L"[Annotation]", 2).find(L"Titre B"), std::wstring::npos);

    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, text));
    ASSERT_NE(back.GetDiagramTitle(0), nullptr);
    ASSERT_NE(back.GetDiagramTitle(1), nullptr);
    EXPECT_EQ(back.GetDiagramTitle(0)->GetText(), "Titre A");
    EXPECT_EQ(back.GetDiagramTitle(0)->GetType(), VYR_NOTE_TITRE);
    EXPECT_EQ(back.GetDiagramTitle(0)->GetPositionX(), 0.25);
    EXPECT_EQ(back.GetDiagramTitle(1)->GetText(), "Titre B");
    EXPECT_EQ(back.GetDiagramTitle(1)->GetOid(), t1->GetOid());
}

TEST(VyrNoteSection, TitleReadWithDiagramOneBecomesTheSecondDiagramsTitle) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         L"[Annotation]\r\n\toid = 4\r\n\tnom = \"rectangle_titre\"\r\n"
                         L"\tdiagramme = 1\r\n\ttexte = \"T\"\r\n\ttaille_font = -18\r\n"));
    EXPECT_EQ(doc.GetDiagramTitle(0), nullptr);
    ASSERT_NE(doc.GetDiagramTitle(1), nullptr);
    EXPECT_EQ(doc.GetDiagramTitle(1)->GetOid(), 4);
    EXPECT_EQ(doc.GetDiagramTitle(1)->GetText(), "T");
}

TEST(VyrNoteSection, TitleWithoutDiagramLineGoesToTheFirstDiagram) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         L"[Annotation]\r\n\toid = 4\r\n\tnom = \"rectangle_titre\"\r\n"
                         L"\ttexte = \"T\"\r\n[Annotation]\r\n\toid = 5\r\n"
                         L"\tnom = \"rectangle_titre\"\r\n\tdiagramme = 7\r\n"));
    ASSERT_NE(doc.GetDiagramTitle(0), nullptr);
    EXPECT_EQ(doc.GetDiagramTitle(0)->GetOid(), 4);
    // A slot outside 0 and 1 binds nothing; the note stays an entity.
    EXPECT_EQ(doc.GetDiagramTitle(1), nullptr);
    EXPECT_NE(NoteOf(doc, 5), nullptr);
}

TEST(VyrNoteSection, TypeComesFromTheFirstElevenCharactersOfTheName) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(
        LoadText(doc, dir,
                 L"[Annotation]\r\n\toid = 1\r\n\tnom = \"rectangle_annotation(1, 2)_C\"\r\n"
                 L"[Annotation]\r\n\toid = 2\r\n\tnom = \"rectangle_titre\"\r\n"
                 L"[Annotation]\r\n\toid = 3\r\n\tnom = \"rectangle_cadre\"\r\n"
                 L"[Annotation]\r\n\toid = 4\r\n\tnom = \"cercle\"\r\n"
                 L"[Annotation]\r\n\toid = 5\r\n\ttexte = \"sans nom\"\r\n"
                 L"\tposition_x = 1,5\r\n"));
    EXPECT_EQ(NoteOf(doc, 1)->GetType(), VYR_NOTE_ANNOTATION);
    EXPECT_EQ(NoteOf(doc, 2)->GetType(), VYR_NOTE_TITRE);
    EXPECT_EQ(NoteOf(doc, 3)->GetType(), VYR_NOTE_RECTANGLE_C);
    // Any other name leaves the type as constructed.
    EXPECT_EQ(NoteOf(doc, 4)->GetType(), -1);
    EXPECT_EQ(NoteOf(doc, 4)->GetEntityName(), "cercle");
    // No name at all: a curve annotation at 0, 0 unless its lines say otherwise.
    EXPECT_EQ(NoteOf(doc, 5)->GetType(), VYR_NOTE_ANNOTATION);
    EXPECT_EQ(NoteOf(doc, 5)->GetPositionX(), 1.5);
    EXPECT_EQ(NoteOf(doc, 5)->GetPositionY(), 0.0);
    EXPECT_GE(doc.GetLastOid(), 5);
}

TEST(VyrNoteSection, CurveAndExperienceNamesTogetherBindANoteByName) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         CurveFile(Note(1, L"rectangle_annotation(0, 0)_C1", L"oui", L"C1E1") +
                                   Note(2, L"rectangle_annotation(0, 0)_C1", L"non", L"C1"))));
    VyrCourbe* c = doc.FindCourbeByOid(5);
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(NotesOf(c), std::vector<int>({1}));
    // The note that matched no curve stays an entity of the document.
    ASSERT_NE(NoteOf(doc, 2), nullptr);
    EXPECT_EQ(doc.GetNoteCurveMap()[1], "");
    EXPECT_EQ(doc.GetNoteCurveMap()[2], "C1");
}

TEST(VyrNoteSection, AnnotationsTableBindsExactlyItsNotesAndNameMatchingIsNotTried) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         CurveFile(Note(1, L"rectangle_annotation(0, 0)_C1", L"A", L"C1E1") +
                                       Note(2, L"rectangle_annotation(0, 0)_C1", L"B", L"C1E1"),
                                   L"\tannotations = table 1 {\r\n\t2\r\n\t}\r\n")));
    VyrCourbe* c = doc.FindCourbeByOid(5);
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(NotesOf(c), std::vector<int>({2}));
}

TEST(VyrNoteSection, FirstOfTwoSameNamedCurvesTakesEveryMatchingNote) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrExperience* e = Experience(doc, "E");
    VyrCourbe* first = Curve(doc, e, "C", "U", {{1, 2}});
    VyrCourbe* second = Curve(doc, e, "C", "I", {{1, 2}});
    VyrIntToStringMap& map = doc.GetNoteCurveMap();
    VyrNote* n1 = doc.CreateNoteEntity();
    VyrNote* n2 = doc.CreateNoteEntity();
    map[n2->GetOid()] = "CE";
    map[n1->GetOid()] = "CE";
    doc.AttribuerLesAnnotations();
    EXPECT_EQ(NotesOf(first), std::vector<int>({n1->GetOid(), n2->GetOid()}));
    EXPECT_EQ(second->GetNotesCount(), 0);
    // Taken notes are not taken again.
    doc.ResolveTolvaneNotes(second);
    EXPECT_EQ(second->GetNotesCount(), 0);
    doc.ResolveTolvaneNotes(nullptr);
}

TEST(VyrNoteSection, CurveWithoutExperienceIsMatchedByItsNameAlone) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = Curve(doc, Experience(doc, "E"), "C", "U", {{1, 2}});
    doc.FindExperience(L"E")->RemoveCourbe(c);
    VyrNote* n = doc.CreateNoteEntity();
    doc.GetNoteCurveMap()[n->GetOid()] = "C";
    doc.ResolveTolvaneNotes(c);
    EXPECT_EQ(NotesOf(c), std::vector<int>({n->GetOid()}));
}

TEST(VyrNoteSection, NotesRoundTripThroughTheCurvesTable) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrCourbe* c = Curve(doc, Experience(doc, "E1"), "C1", "U", {{1, 2}, {3, 4}});
    for (int i = 0; i < 5; ++i) {
        VyrNote* n = doc.CreateNoteEntity();
        n->SetText(wxString::Format("note %d", i));
        n->SetPointIndex(i % 2);
        n->SetPosition(i * 0.5, -i);
        c->AddNote(n);
    }
    const std::wstring text = SaveText(doc, dir);
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, text));
    VyrCourbe* b = back.FindCourbeByOid(c->GetOid());
    ASSERT_NE(b, nullptr);
    ASSERT_EQ(NotesOf(b), NotesOf(c));
    for (int oid : NotesOf(c)) {
        VyrNote* original = NoteOf(doc, oid);
        VyrNote* read = NoteOf(back, oid);
        EXPECT_EQ(read->GetText(), original->GetText());
        EXPECT_EQ(read->GetPointIndex(), original->GetPointIndex());
        EXPECT_EQ(read->GetPositionX(), original->GetPositionX());
        EXPECT_EQ(read->GetPositionY(), original->GetPositionY());
        EXPECT_EQ(read->GetType(), VYR_NOTE_ANNOTATION);
    }
}

TEST(VyrNoteSection, LinesBeforeTheOidLineGoNowhereAndQuotedContinuationsAreConsumed) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         L"[Annotation]\r\n\ttexte = \"first line\r\noid = 99\"\r\n"
                         L"\toid = 3\r\n\ttexte = \"kept\"\r\n"));
    EXPECT_EQ(NoteOf(doc, 99), nullptr);
    ASSERT_NE(NoteOf(doc, 3), nullptr);
    EXPECT_EQ(NoteOf(doc, 3)->GetText(), "kept");
}

TEST(VyrNoteSection, NoteCurveEntryOfAnEarlierLoadDoesNotBindANewNote) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir,
                         CurveFile(Note(1, L"rectangle_annotation(0, 0)_C1", L"x", L"C9E1")),
                         "first.vyr"));
    doc.GetNoteCurveMap()[1] = "C1E1";  // as if left over
    ASSERT_TRUE(LoadText(doc, dir, CurveFile(L"[Annotation]\r\n\toid = 1\r\n"), "second.vyr"));
    EXPECT_EQ(doc.FindCourbeByOid(5)->GetNotesCount(), 0);
}
