// The one data source that needs the diagram: a title note belongs to a diagram, not a curve.
#include "vyrbase/data/VyrDeleteNoteCommand.h"

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {
// The note's document; a note made outside any document falls back to the active one.
VyrBaseData* BaseOf(VyrNote* note) {
    VyrBaseData* base = note ? note->GetBase() : nullptr;
    return base ? base : VyrBaseData::GetActiveBase();
}

void NotifyDataChanged(VyrBaseData* base, VyrCourbe* courbe) {
    if (!base)
        return;
    VyrObserverMsg msg(VYR_MSG_DATA_CHANGED, courbe);
    base->UpdateAllObservers(msg);
}
}  // namespace

VyrDeleteNoteCommand::VyrDeleteNoteCommand(VyrNote* note, VyrCourbe* courbe, VyrDiagram* diagram)
    : wxCommand(true, VyrResourceText::Get("IDS_MENU_SUPPRIMER")),
      m_pNote(note),
      m_pCourbe(courbe),
      m_pDiagram(diagram) {}

// Owns nothing: the detached note stays in the document's store, deleted with the document.
VyrDeleteNoteCommand::~VyrDeleteNoteCommand() = default;

bool VyrDeleteNoteCommand::Do() {
    if (!m_pNote)
        return true;
    if (!m_pCourbe) {
        if (m_pDiagram)
            m_pDiagram->SetNoteTitre(nullptr);
    } else {
        m_pCourbe->RemoveNote(m_pNote);
    }
    VyrBaseData* base = BaseOf(m_pNote);
    if (base)
        base->DeconnectEntity(m_pNote);
    NotifyDataChanged(base, m_pCourbe);
    return true;
}

bool VyrDeleteNoteCommand::Undo() {
    if (!m_pNote)
        return true;
    if (!m_pCourbe) {
        if (m_pDiagram)
            m_pDiagram->SetNoteTitre(m_pNote);
    } else {
        m_pCourbe->AddNote(m_pNote);
    }
    VyrBaseData* base = BaseOf(m_pNote);
    if (base)
        base->ReconnectEntity(m_pNote);
    NotifyDataChanged(base, m_pCourbe);
    return true;
}
