// The annotation section "[Annotation]": the notes of every curve, then the diagrams' titles;
// and the binding of notes to curves by name once a whole file has been read.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "file/VyrExperienceOwners.h"
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

enum NoteKey {
    kNoteOid,
    kNoteNom,
    kNoteTexte,
    kNoteIndex,
    kNoteDiagramme,
    kNoteCurve,
    kNotePositionX,
    kNotePositionY
};
// "posx0", "posy0", "posx1", "posy1" and "taille_font" are written but never read.
const wchar_t* const kNoteKeys[] = {L"oid",       L"nom",   L"texte",      L"index",
                                    L"diagramme", L"curve", L"position_x", L"position_y"};

// The first eleven characters of a note's name give its type.
const size_t kTypePrefixLength = 11;

// The constant box lines every annotation section carries.
void BoxLines(VyrTextWriter& out) {
    out.Text(L"\tposx0 = 0\r\n\tposy0 = 0\r\n\tposx1 = 0\r\n\tposy1 = 22\r\n");
}

// The name under which a note's "curve" line names its curve: the curve's name immediately
// followed by its experiment's.
wxString CurveKey(VyrBaseData& doc, VyrCourbe* curve) {
    wxString key = curve->GetEntityName();
    if (VyrExperience* experience = doc.FindExperienceFromCourbe(curve))
        key += experience->GetEntityName();
    return key;
}

// CurveKey of an attached curve, its experiment taken from `owners`.
wxString CurveKey(const VyrExperienceOwners& owners, VyrCourbe* curve) {
    wxString key = curve->GetEntityName();
    if (VyrExperience* experience = owners.OfCourbe(curve))
        key += experience->GetEntityName();
    return key;
}

// Writes the name line of a curve's note: the point's values and the curve's name, formatted as
// one line in which every "," then becomes "." (the separator between the two numbers and any
// comma of the curve's name included), as every formatted line of the file is treated. The
// numbers hold no comma; the name is written in runs between its commas, so that the line costs
// no allocation (a save that runs out of memory must leave nothing behind).
void WriteNameLine(VyrTextWriter& out, double x, double y, VyrCourbe* curve) {
    out.Text(L"\tnom = \"rectangle_annotation(").G(x).Text(L". ").G(y).Text(L")_");
    const wxString& name = curve->GetEntityName();
    std::wstring_view rest(name.wc_str(), name.length());
    for (size_t comma = rest.find(L','); comma != std::wstring_view::npos;
         comma = rest.find(L',')) {
        out.Text(rest.substr(0, comma)).Text(L".");
        rest.remove_prefix(comma + 1);
    }
    out.Text(rest).Text(L"\"\r\n");
}

}  // namespace

bool VyrBaseData::SauveAnnotations(VyrTextWriter& out) {
    const VyrExperienceOwners owners(*this);
    wxVyrListEntityNode* node = GetFirstCourbeNode();
    while (node) {
        VyrCourbe* curve = GetNextCourbe(&node);
        const wxString curveKey = CurveKey(owners, curve);
        wxVyrListNoteNode* noteNode = curve->GetFirstNote();
        while (noteNode) {
            VyrNote* note = curve->GetNextNote(&noteNode);
            // The point's values, or 0 for both when the index lies outside either vector.
            const int index = note->GetPointIndex();
            VyrVecteur* vx = curve->GetVx();
            VyrVecteur* vy = curve->GetVy();
            double x = 0.0, y = 0.0;
            if (vx && vy && index >= 0 && index < vx->GetSize() && index < vy->GetSize()) {
                x = vx->GetVal(index);
                y = vy->GetVal(index);
            }
            // Kept: the text is written without escaping, so a quote in it cuts it on reading.
            out.Header(L"Annotation").LineInt(L"oid", note->GetOid());
            WriteNameLine(out, x, y, curve);
            BoxLines(out);
            out.LineString(L"texte", note->GetText())
                .LineInt(L"index", index)
                .LineString(L"curve", curveKey)
                .LineG(L"position_x", note->GetPositionX())
                .LineG(L"position_y", note->GetPositionY());
        }
    }
    for (int slot = 0; slot < 2; ++slot) {
        VyrNote* title = GetDiagramTitle(slot);
        if (!title)
            continue;
        out.Header(L"Annotation")
            .LineInt(L"oid", title->GetOid())
            .LineString(L"nom", L"rectangle_titre")
            .LineInt(L"diagramme", slot);
        BoxLines(out);
        out.LineString(L"texte", title->GetText())
            .LineInt(L"taille_font", -18)
            .LineG(L"position_x", title->GetPositionX())
            .LineG(L"position_y", title->GetPositionY());
    }
    return out.IsOk();
}

wxString VyrBaseData::ParseNote() {
    VyrNote* note = nullptr;
    bool named = false;
    int slot = 0;
    // A note without a "nom" line is taken for a curve annotation; a title goes to the slot
    // that its section named.
    auto finish = [&]() {
        if (!note)
            return;
        if (!named)
            note->SetType(VYR_NOTE_ANNOTATION);
        if (note->GetType() == VYR_NOTE_TITRE)
            SetDiagramTitle(slot, note);
    };
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        const int key = VyrReadText::MatchKey(line, kNoteKeys);
        if (key == kNoteOid) {
            finish();
            const int oid = VyrReadText::IntValue(line);
            note = static_cast<VyrNote*>(CreateEntity(VYR_KIND_NOTE, oid, nullptr));
            named = false;
            // An entry left by an earlier load must not bind this new note.
            m_mapNoteCurve.erase(oid);
            continue;
        }
        if (key == kNoteDiagramme) {
            slot = VyrReadText::IntValue(line);
            continue;
        }
        if (key < 0)
            continue;
        // Quoted texts are consumed even before the "oid" line, so that their continuation
        // lines are not taken for keys.
        wxString text;
        if (key == kNoteNom || key == kNoteTexte || key == kNoteCurve)
            ReadQuoted(line, text);
        if (!note)
            continue;
        switch (key) {
            case kNoteNom: {
                note->SetEntityName(text.wc_str());
                named = true;
                const wxString prefix = text.Left(kTypePrefixLength);
                if (prefix == L"rectangle_a")
                    note->SetType(VYR_NOTE_ANNOTATION);
                else if (prefix == L"rectangle_t")
                    note->SetType(VYR_NOTE_TITRE);
                else if (prefix == L"rectangle_c")
                    note->SetType(VYR_NOTE_RECTANGLE_C);
                break;
            }
            case kNoteTexte:
                note->SetText(text);
                break;
            case kNoteIndex:
                note->SetPointIndex(VyrReadText::IntValue(line));
                break;
            case kNoteCurve:
                m_mapNoteCurve[note->GetOid()] = text;
                break;
            case kNotePositionX:
                note->SetPosition(VyrReadText::DoubleValue(line), note->GetPositionY());
                break;
            case kNotePositionY:
                note->SetPosition(note->GetPositionX(), VyrReadText::DoubleValue(line));
                break;
            default:
                break;
        }
    }
    finish();
    return header;
}

void VyrBaseData::AttribuerLesAnnotations() {
    // What ResolveTolvaneNotes does for every curve without notes, with the experiments and
    // the notes' texts each looked through once. A note text names at most one taker: the
    // first curve of its key takes every note of that key (the ones that are no notes are
    // passed over by every curve alike), so the key is done with after it.
    std::unordered_map<std::wstring, std::vector<int>> waiting;
    for (VyrIntToStringMap::iterator it = m_mapNoteCurve.begin(); it != m_mapNoteCurve.end(); ++it)
        if (!it->second.empty())
            waiting[it->second.ToStdWstring()].push_back(it->first);
    if (waiting.empty())
        return;
    for (auto& key : waiting)
        std::sort(key.second.begin(), key.second.end());
    const VyrExperienceOwners owners(*this);
    // Curves that an "annotations" table gave notes to are not matched by name.
    wxVyrListEntityNode* node = GetFirstCourbeNode();
    while (node) {
        VyrCourbe* curve = GetNextCourbe(&node);
        if (curve->GetNotesCount() != 0)
            continue;
        auto found = waiting.find(CurveKey(owners, curve).ToStdWstring());
        if (found == waiting.end())
            continue;
        for (int oid : found->second) {
            VyrEntity* entity = FindEntity(oid);
            if (!entity || entity->GetKind() != VYR_KIND_NOTE)
                continue;
            curve->AddNote(static_cast<VyrNote*>(entity));
            m_mapNoteCurve[oid].clear();
        }
        waiting.erase(found);
    }
}

void VyrBaseData::ResolveTolvaneNotes(VyrCourbe* c) {
    if (!c)
        return;
    const wxString key = CurveKey(*this, c);
    // An emptied text marks a note already taken: an empty key takes nothing.
    if (key.empty())
        return;
    // Notes are attached in the order of their oids (the hash map's own order is arbitrary).
    std::vector<int> oids;
    for (VyrIntToStringMap::iterator it = m_mapNoteCurve.begin(); it != m_mapNoteCurve.end(); ++it)
        if (it->second == key)
            oids.push_back(it->first);
    std::sort(oids.begin(), oids.end());
    for (int oid : oids) {
        VyrEntity* entity = FindEntity(oid);
        if (!entity || entity->GetKind() != VYR_KIND_NOTE)
            continue;
        c->AddNote(static_cast<VyrNote*>(entity));
        // So that no other curve takes it.
        m_mapNoteCurve[oid].clear();
    }
}
