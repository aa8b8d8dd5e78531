// Deleting curves, notes and experiments for good. Detached entities (held for undo) are never
// deleted here: the document deletes them when it is emptied or destroyed.
#include "vyrbase/core/VyrBaseData.h"

#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

void VyrBaseData::DeleteCourbe(VyrCourbe* c, VyrExperience* e) {
    if (!c)
        return;
    // The experiment given is a hint: when another one really holds the curve, that one loses
    // it, so that no experiment keeps a pointer to a deleted curve.
    if (!e || !e->FindCourbe(c)) {
        VyrExperience* holder = FindExperienceFromCourbe(c);
        if (holder)
            e = holder;
        else if (!e)
            return;
    }
    Notify(VYR_MSG_CURVE_DELETED, c);
    e->RemoveCourbe(c);
    // Vectors go with their curve without any check for sharing: each vector belongs to exactly
    // one curve. A curve that survives (detached) must not keep pointers to deleted vectors.
    VyrVecteur* vx = c->GetVx();
    VyrVecteur* vy = c->GetVy();
    if (vx && !vx->IsDeconnected() && NodeOf(vx)) {
        RemoveEntity(vx);
        c->SetVx(nullptr);
        if (vy == vx) {
            c->SetVy(nullptr);
            vy = nullptr;
        }
    }
    if (vy && !vy->IsDeconnected() && NodeOf(vy)) {
        RemoveEntity(vy);
        c->SetVy(nullptr);
    }
    DeleteNoteOfCourbe(c);
    RemoveEntity(c);
}

void VyrBaseData::DeleteNoteOfCourbe(VyrCourbe* c) {
    if (!c)
        return;
    // Walk a copy: removing edits the curve's list.
    VyrListNote notes;
    for (auto* node = c->GetNotes().GetFirst(); node; node = node->GetNext())
        notes.Append(node->GetData());
    for (auto* node = notes.GetFirst(); node; node = node->GetNext()) {
        c->RemoveNote(node->GetData());
        RemoveEntity(node->GetData());
    }
}

void VyrBaseData::DeleteExperience(VyrExperience* e) {
    if (!e)
        return;
    // Walk copies: each deletion edits the experiment's lists.
    VyrListCourbe courbes;
    for (auto* node = e->GetCourbes().GetFirst(); node; node = node->GetNext())
        courbes.Append(node->GetData());
    for (auto* node = courbes.GetFirst(); node; node = node->GetNext())
        DeleteCourbe(node->GetData(), e);
    DeleteAllVariables(e);
    RemoveEntity(e);
    // Observers may only compare this address: the experiment is gone when it arrives.
    Notify(VYR_MSG_EXPERIENCE_DELETED, e);
}

void VyrBaseData::DeleteAllExperiences() {
    // Gathered first: each deletion edits the entity list.
    VyrListExperience experiences;
    wxVyrListEntityNode* node = GetFirstExperienceNode();
    while (node)
        experiences.Append(GetNextExperience(&node));
    for (auto* n = experiences.GetFirst(); n; n = n->GetNext())
        DeleteExperience(n->GetData());
}

void VyrBaseData::EraseCourbe(const wchar_t* name) {
    if (VyrCourbe* c = FindCourbe(name))
        DeleteCourbe(c, nullptr);
}

void VyrBaseData::EraseExperience(const wchar_t* name) {
    if (VyrExperience* e = FindExperience(name))
        DeleteExperience(e);
}
