// Detaching entities into the document's store for undo, attaching them again, and submitting
// the undoable deletions to the toolkit document's command processor.
#include <wx/docview.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrDeleteCurveCommand.h"
#include "vyrbase/data/VyrDeleteExperienceCommand.h"
#include "vyrbase/data/VyrDeleteNoteCommand.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVariable.h"
#include "vyrbase/data/VyrVecteur.h"

void VyrBaseData::DeconnectEntity(VyrEntity* e) {
    if (!e)
        return;
    wxVyrListEntityNode* node = NodeOf(e);
    if (!node)
        return;
    EraseFromList(node);
    m_arrayDeconnected.Add(e);
    e->SetDeconnected(true);
    if (m_pDocument)
        m_pDocument->Modify(true);
}

void VyrBaseData::ReconnectEntity(VyrEntity* e) {
    if (!e)
        return;
    int index = m_arrayDeconnected.Index(e);
    if (index == wxNOT_FOUND)
        return;
    m_arrayDeconnected.RemoveAt(index);
    // The entity comes back at the end of the list, not at its old place.
    AppendToList(e);
    e->SetDeconnected(false);
    if (m_pDocument)
        m_pDocument->Modify(true);
}

void VyrBaseData::DeconnectCurve(VyrCourbe* c) {
    if (!c)
        return;
    // The curve stays in its experiment and keeps its notes, so that undo finds them again.
    DeconnectEntity(c);
    DeconnectEntity(c->GetVx());
    DeconnectEntity(c->GetVy());
    for (auto* node = c->GetNotes().GetFirst(); node; node = node->GetNext())
        DeconnectEntity(node->GetData());
    Notify(VYR_MSG_CURVE_DECONNECTED, c);
}

void VyrBaseData::ReconnectCurve(VyrCourbe* c) {
    if (!c)
        return;
    ReconnectEntity(c);
    ReconnectEntity(c->GetVx());
    ReconnectEntity(c->GetVy());
    for (auto* node = c->GetNotes().GetFirst(); node; node = node->GetNext())
        ReconnectEntity(node->GetData());
    Notify(VYR_MSG_CURVE_RECONNECTED, c);
}

void VyrBaseData::DeconnectExperience(VyrExperience* e) {
    if (!e)
        return;
    DeconnectEntity(e);
    for (auto* node = e->GetCourbes().GetFirst(); node; node = node->GetNext())
        DeconnectCurve(node->GetData());
    for (auto* node = e->GetVariables().GetFirst(); node; node = node->GetNext())
        DeconnectEntity(node->GetData());
    Notify(VYR_MSG_EXPERIENCE_DECONNECTED, e);
}

void VyrBaseData::ReconnectExperience(VyrExperience* e) {
    if (!e)
        return;
    // No message of its own: each curve announces its return (code 5).
    ReconnectEntity(e);
    for (auto* node = e->GetCourbes().GetFirst(); node; node = node->GetNext())
        ReconnectCurve(node->GetData());
    for (auto* node = e->GetVariables().GetFirst(); node; node = node->GetNext())
        ReconnectEntity(node->GetData());
}

namespace {
// The command processor of the toolkit document, or null when either is missing.
wxCommandProcessor* ProcessorOf(wxDocument* doc) {
    return doc ? doc->GetCommandProcessor() : nullptr;
}
}  // namespace

bool VyrBaseData::DeleteCurveWithUndo(VyrCourbe* c) {
    wxCommandProcessor* processor = ProcessorOf(m_pDocument);
    if (!c || !processor)
        return false;
    return processor->Submit(new VyrDeleteCurveCommand(c, FindExperienceFromCourbe(c)), true);
}

bool VyrBaseData::DeleteExperienceWithUndo(VyrExperience* e) {
    wxCommandProcessor* processor = ProcessorOf(m_pDocument);
    if (!e || !processor)
        return false;
    return processor->Submit(new VyrDeleteExperienceCommand(e), true);
}

bool VyrBaseData::DeleteNoteWithUndo(VyrDiagram* d, VyrCourbe* c, VyrNote* n) {
    wxCommandProcessor* processor = ProcessorOf(m_pDocument);
    if (!n || !processor)
        return false;
    return processor->Submit(new VyrDeleteNoteCommand(n, c, d), true);
}
