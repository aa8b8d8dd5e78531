// Deleting curves, notes and experiments for good. Detached entities (held for undo) are never
// deleted here: the document deletes them when it is emptied or destroyed.
#include "vyrbase/core/VyrBaseData.h"

#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {
// Removes an attached entity from the list and deletes it; detached or foreign ones stay.
void DeleteIfAttached(VyrListEntity& list, VyrEntity* entity) {
    if (!entity || entity->IsDeconnected())
        return;
    wxVyrListEntityNode* node = list.Find(entity);
    if (!node)
        return;
    list.Erase(node);
    delete entity;
}
}  // namespace

void VyrBaseData::DeleteCourbe(VyrCourbe* c, VyrExperience* e) {
    if (!c)
        return;
    if (!e) {
        wxVyrListEntityNode* node = GetFirstExperienceNode();
        while (node && !e) {
            VyrExperience* candidate = GetNextExperience(&node);
            if (candidate->FindCourbe(c))
                e = candidate;
        }
        if (!e)
            return;
    }
    Notify(VYR_MSG_CURVE_DELETED, c);
    e->RemoveCourbe(c);
    DeleteIfAttached(m_listEntity, c->GetVx());
    DeleteIfAttached(m_listEntity, c->GetVy());
    DeleteNoteOfCourbe(c);
    DeleteIfAttached(m_listEntity, c);
}

void VyrBaseData::DeleteNoteOfCourbe(VyrCourbe* c) {
    if (!c)
        return;
    VyrListNote notes;
    for (auto* node = c->GetNotes().GetFirst(); node; node = node->GetNext())
        notes.Append(node->GetData());
    for (auto* node = notes.GetFirst(); node; node = node->GetNext()) {
        c->RemoveNote(node->GetData());
        DeleteIfAttached(m_listEntity, node->GetData());
    }
}

void VyrBaseData::DeleteExperience(VyrExperience* e) {
    if (!e)
        return;
    while (wxVyrListCourbeNode* node = e->GetFirstCourbeNode())
        DeleteCourbe(node->GetData(), e);
    while (wxVyrListVariableNode* node = e->GetFirstVariableNode()) {
        VyrVariable* v = node->GetData();
        e->RemoveVariable(v);
        DeleteIfAttached(m_listEntity, v);
    }
    DeleteIfAttached(m_listEntity, e);
    // Observers may only compare this address: the experiment is gone when it arrives.
    Notify(VYR_MSG_EXPERIENCE_DELETED, e);
}

void VyrBaseData::DeleteAllExperiences() {
    VyrListExperience experiences;
    wxVyrListEntityNode* node = GetFirstExperienceNode();
    while (node)
        experiences.Append(GetNextExperience(&node));
    for (auto* n = experiences.GetFirst(); n; n = n->GetNext())
        DeleteExperience(n->GetData());
}
