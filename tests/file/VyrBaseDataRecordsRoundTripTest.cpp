// A document holding every kind of record goes through load, save and load with every field
// kept.
#include <gtest/gtest.h>

#include <zlib.h>

#include "RecordTestSupport.h"
#include "file/VyrJpegData.h"
#include "vyrbase/data/VyrCompteRendu.h"
#include "vyrbase/data/VyrGrilleEntity.h"
#include "vyrbase/data/VyrImageRedyEntity.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrPhysioRecord.h"
#include "vyrbase/data/VyrSpiromEntity.h"
#include "vyrbase/data/VyrVecteur.h"

using recordtest::Curve;
using recordtest::Experience;
using recordtest::LoadText;
using recordtest::SaveText;

namespace {

// Pictures enter a document through the reader; the test makes them the same way.
class Document : public VyrBaseData {
public:
    Document() : VyrBaseData(nullptr) {}
    using VyrBaseData::CreateEntity;
};

wxImage Picture(int w, int h, unsigned char blue) {
    wxImage image(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.SetRGB(x, y, static_cast<unsigned char>(x * 7), static_cast<unsigned char>(y * 5),
                         blue);
    return image;
}

wxString PackedReport(const std::string& raw) {
    uLongf size = compressBound(raw.size());
    std::string stream(size, '\0');
    compress(reinterpret_cast<Bytef*>(&stream[0]), &size,
             reinterpret_cast<const Bytef*>(raw.data()), raw.size());
    stream.resize(size);
    wxString text = wxString::Format("U%08lu ", static_cast<unsigned long>(raw.size()));
    for (size_t i = 0; i < stream.size(); ++i) {
        const unsigned char b = static_cast<unsigned char>(stream[i]);
        text += wxUniChar('A' + (b & 15));
        text += wxUniChar('A' + (b >> 4));
        if ((i + 1) % 38 == 0)
            text += "\r\n";
    }
    return text;
}

VyrNote* AddNote(VyrBaseData& doc, VyrCourbe* c, const wxString& text, int index, double x,
                 double y) {
    VyrNote* n = doc.CreateNoteEntity();
    n->SetText(text);
    n->SetPointIndex(index);
    n->SetPosition(x, y);
    n->SetType(VYR_NOTE_ANNOTATION);
    c->AddNote(n);
    return n;
}

void Build(Document& doc) {
    VyrExperience* e1 = Experience(doc, L"Exp\u00e9rience 1");
    VyrCourbe* c1 = Curve(doc, e1, "C1", "U", {{0, 1.5}, {1, 2.5}, {2, -3}});
    VyrCourbe* c2 = Curve(doc, e1, "C2", "I", {{0, 0.1}, {1, 0.2}});
    VyrExperience* e2 = Experience(doc, "E2");
    Curve(doc, e2, "C3", "P", {{5, 6}});
    AddNote(doc, c1, "premier", 0, 0.5, 1.25);
    AddNote(doc, c1, L"deuxi\u00e8me", 2, -1, 3e-3);
    AddNote(doc, c2, "par le nom", 1, 2, 2);
    AddNote(doc, c2, "aussi", 0, 4, 4);

    for (int slot = 0; slot < 2; ++slot) {
        VyrNote* title = doc.CreateNoteEntity();
        title->SetText(wxString::Format("Titre %d", slot + 1));
        title->SetPosition(0.25 + slot, 0.5);
        title->SetType(VYR_NOTE_TITRE);
        doc.SetDiagramTitle(slot, title);
    }

    for (int k = 0; k < 2; ++k) {
        VyrOutilInterval model(0, nullptr);
        model.SetEtiq1(wxString::Format("D%d", k));
        model.SetEtiq2(wxString::Format("F%d", k));
        model.SetAbs("s");
        model.SetOrd("V");
        model.SetPoints(k, -k * 0.5, k + 2.75, 1e5);
        doc.AddOutilIntervalEntity(&model);
    }

    VyrGrilleEntity* grid = doc.GetGrilleEntity(true, nullptr);
    grid->SetData("A1;B1\r\nA2;B2\r\n=SOMME(A1:A2)");

    VyrCompteRendu* report = doc.GetCompteRenduEntity(true, nullptr);
    report->SetData(
        PackedReport("{\\rtf1 version emball\xe9"
                     "e}"));
    report->SetRtf("{\\rtf1\\ansi {\\fonttbl{\\f0 \"Segoe UI\";}} Mesure \"U\" = 5 V}");

    for (int k = 0; k < 2; ++k) {
        auto* picture = static_cast<VyrImageRedyEntity*>(
            doc.CreateEntity(VYR_KIND_IMAGE_REDY, doc.GetNewOid(), nullptr));
        picture->SetEntityName(wxString::Format("image %d", k).wc_str());
        picture->SetExperienceOid(e1->GetOid());
        picture->SetPosition(k + 1);
        picture->SetEncoding(2 * k);
        picture->SetImage(Picture(20 + 13 * k, 16 + k, static_cast<unsigned char>(60 * k)));
    }

    for (int kind = VYR_KIND_SPIROG; kind <= VYR_KIND_SPIRO_EXP; ++kind) {
        auto* record =
            static_cast<VyrPhysioRecord*>(doc.CreateEntity(kind, doc.GetNewOid(), nullptr));
        for (int i = 0; i < record->GetFieldCount(); ++i) {
            switch (record->GetField(i).format) {
                case VYR_PHYSIO_REAL:
                    record->SetRealAt(i, kind * 1.5 + i);
                    break;
                case VYR_PHYSIO_INT:
                    record->SetIntAt(i, kind * 100 + i);
                    break;
                default:
                    record->SetTextAt(i, wxString::Format(L"%d \u00b5%d", kind, i));
                    break;
            }
        }
    }
}

// Takes the "annotations" table out of curve C2's section, so that its notes are bound by
// name when the text is read.
std::wstring WithoutAnnotationsTableOfC2(std::wstring text) {
    const size_t curve = text.find(L"\tnom = \"C2\"");
    const size_t table = text.find(L"\tannotations = table", curve);
    const size_t end = text.find(L"\t}\r\n", table);
    if (curve == std::wstring::npos || table == std::wstring::npos || end == std::wstring::npos)
        return std::wstring();
    text.erase(table, end + 4 - table);
    return text;
}

std::vector<int> NoteOids(VyrCourbe* c) {
    std::vector<int> oids;
    wxVyrListNoteNode* node = c->GetFirstNote();
    while (node)
        oids.push_back(c->GetNextNote(&node)->GetOid());
    return oids;
}

// Compares every record field of two documents, entity by entity (matched by oid). A document
// built in memory differs from its first reading in two ways only: notes are named by the
// reader after their "nom" line, and the grid's data gains the line break that starts it in
// the file.
void ExpectSameRecords(VyrBaseData& a, VyrBaseData& b, bool fromMemory) {
    int compared = 0;
    for (wxVyrListEntityNode* node = a.GetEntityList().GetFirst(); node; node = node->GetNext()) {
        VyrEntity* x = node->GetData();
        VyrEntity* y = b.FindEntity(x->GetOid());
        ASSERT_NE(y, nullptr) << "oid " << x->GetOid();
        ASSERT_EQ(y->GetKind(), x->GetKind()) << "oid " << x->GetOid();
        if (!fromMemory || x->GetKind() != VYR_KIND_NOTE) {
            EXPECT_EQ(y->GetEntityName(), x->GetEntityName()) << "oid " << x->GetOid();
        }
        ++compared;
        switch (x->GetKind()) {
            case VYR_KIND_NOTE: {
                auto* n = static_cast<VyrNote*>(x);
                auto* m = static_cast<VyrNote*>(y);
                EXPECT_EQ(m->GetText(), n->GetText());
                EXPECT_EQ(m->GetPointIndex(), n->GetPointIndex());
                EXPECT_EQ(m->GetPositionX(), n->GetPositionX());
                EXPECT_EQ(m->GetPositionY(), n->GetPositionY());
                EXPECT_EQ(m->GetType(), n->GetType());
                break;
            }
            case VYR_KIND_COURBE: {
                auto* c = static_cast<VyrCourbe*>(x);
                auto* d = static_cast<VyrCourbe*>(y);
                EXPECT_EQ(NoteOids(d), NoteOids(c)) << c->GetEntityName();
                EXPECT_TRUE(d->GetVy()->IsEqual(c->GetVy()));
                break;
            }
            case VYR_KIND_OUTIL_INTERVAL: {
                auto* t = static_cast<VyrOutilInterval*>(x);
                auto* u = static_cast<VyrOutilInterval*>(y);
                EXPECT_EQ(u->GetEtiq1(), t->GetEtiq1());
                EXPECT_EQ(u->GetEtiq2(), t->GetEtiq2());
                EXPECT_EQ(u->GetAbs(), t->GetAbs());
                EXPECT_EQ(u->GetOrd(), t->GetOrd());
                EXPECT_EQ(u->GetX0(), t->GetX0());
                EXPECT_EQ(u->GetY0(), t->GetY0());
                EXPECT_EQ(u->GetX1(), t->GetX1());
                EXPECT_EQ(u->GetY1(), t->GetY1());
                break;
            }
            case VYR_KIND_GRILLE: {
                auto* g = static_cast<VyrGrilleEntity*>(x);
                auto* h = static_cast<VyrGrilleEntity*>(y);
                EXPECT_EQ(h->GetVersion(), g->GetVersion());
                if (fromMemory)
                    EXPECT_EQ(h->GetData(), "\r\n" + g->GetData());
                else
                    EXPECT_EQ(h->GetData(), g->GetData());
                break;
            }
            case VYR_KIND_COMPTE_RENDU: {
                auto* r = static_cast<VyrCompteRendu*>(x);
                auto* s = static_cast<VyrCompteRendu*>(y);
                EXPECT_EQ(s->GetData(), r->GetData());
                EXPECT_EQ(s->GetRtf(), r->GetRtf());
                break;
            }
            case VYR_KIND_IMAGE_REDY: {
                auto* p = static_cast<VyrImageRedyEntity*>(x);
                auto* q = static_cast<VyrImageRedyEntity*>(y);
                EXPECT_EQ(q->GetExperienceOid(), p->GetExperienceOid());
                EXPECT_EQ(q->GetPosition(), p->GetPosition());
                EXPECT_EQ(q->GetEncoding(), p->GetEncoding());
                ASSERT_TRUE(q->GetImage().IsOk());
                EXPECT_EQ(q->GetImage().GetWidth(), p->GetImage().GetWidth());
                EXPECT_EQ(q->GetImage().GetHeight(), p->GetImage().GetHeight());
                EXPECT_NEAR(q->GetImage().GetBlue(3, 3), p->GetImage().GetBlue(3, 3), 12);
                break;
            }
            default:
                if (x->GetKind() >= VYR_KIND_SPIROG && x->GetKind() <= VYR_KIND_SPIRO_EXP) {
                    auto* r = static_cast<VyrPhysioRecord*>(x);
                    auto* s = static_cast<VyrPhysioRecord*>(y);
                    for (int i = 0; i < r->GetFieldCount(); ++i) {
                        EXPECT_EQ(s->GetRealAt(i), r->GetRealAt(i)) << r->GetField(i).key;
                        EXPECT_EQ(s->GetIntAt(i), r->GetIntAt(i)) << r->GetField(i).key;
                        EXPECT_EQ(s->GetTextAt(i), r->GetTextAt(i)) << r->GetField(i).key;
                    }
                }
                break;
        }
    }
    for (int slot = 0; slot < 2; ++slot) {
        ASSERT_NE(a.GetDiagramTitle(slot), nullptr);
        ASSERT_NE(b.GetDiagramTitle(slot), nullptr);
        EXPECT_EQ(b.GetDiagramTitle(slot)->GetOid(), a.GetDiagramTitle(slot)->GetOid());
        EXPECT_EQ(b.GetDiagramTitle(slot)->GetText(), a.GetDiagramTitle(slot)->GetText());
    }
    // 2 experiments, 3 curves and their 6 vectors, 4 notes and 2 titles, 2 tools, the grid,
    // the report, 2 pictures and 7 physiology records.
    EXPECT_EQ(compared, 30);
}

}  // namespace

TEST(VyrBaseDataRecordsRoundTrip, LoadSaveLoadKeepsEveryFieldOfEveryRecord) {
    filetest::TempDir dir;
    Document original;
    Build(original);
    const std::wstring written = SaveText(original, dir, "original.vyr");
    ASSERT_FALSE(written.empty());
    const std::wstring byName = WithoutAnnotationsTableOfC2(written);
    ASSERT_FALSE(byName.empty());

    VyrBaseData first(nullptr);
    ASSERT_TRUE(LoadText(first, dir, byName, "by-name.vyr"));
    // C2's notes came back through their "curve" lines, C1's through its table.
    VyrCourbe* c2 = first.FindCourbe(L"C2");
    ASSERT_NE(c2, nullptr);
    EXPECT_EQ(c2->GetNotesCount(), 2);
    ExpectSameRecords(original, first, true);

    VyrBaseData second(nullptr);
    ASSERT_TRUE(LoadText(second, dir, SaveText(first, dir, "first.vyr"), "first-load.vyr"));
    ExpectSameRecords(first, second, false);
    ExpectSameRecords(second, first, false);

    // The spirometry flag is not carried by its section.
    wxVyrListEntityNode* node = second.GetFirstEntityNode(VYR_KIND_SPIROM);
    ASSERT_NE(node, nullptr);
    EXPECT_FALSE(static_cast<VyrSpiromEntity*>(node->GetData())->GetExtraFlag());
}
