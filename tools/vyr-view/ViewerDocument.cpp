#include "ViewerDocument.h"

#include <wx/cmdproc.h>
#include <wx/filename.h>
#include <wx/log.h>

#include "AtomicWrite.h"
#include "CurveDeletion.h"
#include "DiagramView.h"
#include "DocumentLoading.h"
#include "LiveFollow.h"
#include "TableImporting.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/diagram/VyrDiagram.h"

wxIMPLEMENT_DYNAMIC_CLASS(ViewerDocument, wxDocument);

ViewerDocument::ViewerDocument() : m_data(this) {
    // Save keeps every value exactly as it was measured or read, not rounded to six digits.
    m_data.SetExactNumbers(true);
    // The axes span what was measured: an invalid point's number stretches none.
    for (int d = 0; d < 2; ++d)
        m_data.GetDiagram(d)->SetValidRangesOnly(true);
}

ViewerDocument::~ViewerDocument() {
    ForgetHistory();
    if (VyrBaseData::GetActiveBase() == &m_data)
        VyrBaseData::SetActiveBase(nullptr);
}

void ViewerDocument::MakeActive() {
    VyrBaseData::SetActiveBase(&m_data);
}

DiagramView* ViewerDocument::FindView(int index) const {
    for (wxList::compatibility_iterator node = m_documentViews.GetFirst(); node;
         node = node->GetNext()) {
        auto* view = wxDynamicCast(node->GetData(), DiagramView);
        if (view && view->GetIndex() == index)
            return view;
    }
    return nullptr;
}

void ViewerDocument::SyncDiagramViews() {
    if (!m_frame)
        return;
    DiagramView* second = FindView(1);
    const bool wanted = m_data.GetDiagramCount() >= 2;
    if (wanted && !second) {
        second = new DiagramView(1);
        second->SetDocument(this);
        if (!second->OnCreate(this, 0))
            delete second;
    } else if (!wanted && second) {
        if (m_selection.diagram == 1)
            Select(Selection());
        delete second;
    }
}

void ViewerDocument::Select(const Selection& selection) {
    if (selection == m_selection)
        return;
    VyrCourbe* courbe = nullptr;
    if (VyrNote* old = GetSelectedNote(&courbe))
        old->SetState(VYR_NOTE_NORMAL);
    m_selection = selection;
    VyrDiagram* diagram = m_data.GetDiagram(selection.diagram);
    switch (selection.kind) {
        case VYR_KIND_COURBE:
            if (VyrCourbe* c = m_data.FindCourbeByOid(selection.oid); c && diagram)
                diagram->SetActiveCourbe(c);
            break;
        case VYR_KIND_EXPERIENCE:
            if (VyrExperience* e = m_data.FindExperienceByOid(selection.oid); e && diagram)
                diagram->SetActiveExperience(e);
            break;
        case VYR_KIND_NOTE:
            if (VyrNote* note = GetSelectedNote(&courbe))
                note->SetState(VYR_NOTE_SELECTED);
            break;
        default:
            break;
    }
    UpdateAllViews();
}

VyrCourbe* ViewerDocument::GetSelectedCourbe() {
    if (m_selection.kind != VYR_KIND_COURBE)
        return nullptr;
    return m_data.FindCourbeByOid(m_selection.oid);
}

VyrNote* ViewerDocument::GetSelectedNote(VyrCourbe** courbe) {
    *courbe = nullptr;
    if (m_selection.kind != VYR_KIND_NOTE)
        return nullptr;
    VyrEntity* entity = m_data.FindEntity(m_selection.oid);
    if (!entity || entity->GetKind() != VYR_KIND_NOTE)
        return nullptr;
    if (m_selection.curveOid) {
        *courbe = m_data.FindCourbeByOid(m_selection.curveOid);
        if (!*courbe)
            return nullptr;
    }
    return static_cast<VyrNote*>(entity);
}

wxString ViewerDocument::DescribeSelection() {
    VyrCourbe* courbe = nullptr;
    switch (m_selection.kind) {
        case VYR_KIND_COURBE:
            if (VyrCourbe* c = GetSelectedCourbe())
                return "curve " + c->GetName();
            break;
        case VYR_KIND_EXPERIENCE:
            if (VyrExperience* e = m_data.FindExperienceByOid(m_selection.oid))
                return "experiment " + e->GetEntityName();
            break;
        case VYR_KIND_NOTE:
            if (VyrNote* note = GetSelectedNote(&courbe))
                return (courbe ? "note " : "title ") + note->GetText();
            break;
        case VYR_KIND_OUTIL_INTERVAL:
            if (VyrOutilInterval* tool = m_data.HitTestOutilInterval())
                return "interval tool " + tool->GetEtiq1();
            break;
        default:
            break;
    }
    return wxString();
}

bool ViewerDocument::DeleteSelection() {
    MakeActive();
    bool done = false;
    VyrCourbe* courbe = nullptr;
    switch (m_selection.kind) {
        case VYR_KIND_COURBE:
            // Through the viewer's own command, whose undo puts the curve back as it was.
            if (VyrCourbe* c = GetSelectedCourbe(); c && GetCommandProcessor())
                done = GetCommandProcessor()->Submit(
                    new CurveDeletion(this, c, m_data.FindExperienceFromCourbe(c)), true);
            break;
        case VYR_KIND_EXPERIENCE:
            if (VyrExperience* e = m_data.FindExperienceByOid(m_selection.oid))
                done = m_data.DeleteExperienceWithUndo(e);
            break;
        case VYR_KIND_NOTE:
            if (VyrNote* note = GetSelectedNote(&courbe)) {
                note->SetState(VYR_NOTE_NORMAL);
                done =
                    m_data.DeleteNoteWithUndo(m_data.GetDiagram(m_selection.diagram), courbe, note);
            }
            break;
        default:
            break;
    }
    if (done) {
        m_selection = Selection();
        UpdateAllViews();
    }
    return done;
}

bool ViewerDocument::OnOpenDocument(const wxString& file) {
    if (!wxDocument::OnOpenDocument(file))
        return false;
    if (vyrtools::IsTablePath(file)) {
        wxFileName beside(file);
        beside.SetExt("vyr");
        SetFilename(beside.GetFullPath(), true);
        SetDocumentSaved(false);
        // Saved as a lab document: the template of those gives Save As its file types.
        for (wxObjectList::compatibility_iterator node =
                 GetDocumentManager()->GetTemplates().GetFirst();
             node; node = node->GetNext()) {
            auto* temple = static_cast<wxDocTemplate*>(node->GetData());
            if (temple->GetDefaultExtension() == "vyr")
                SetDocumentTemplate(temple);
        }
    }
    return true;
}

bool ViewerDocument::DoOpenDocument(const wxString& file) {
    ForgetHistory();
    m_selection = Selection();
    wxString reason;
    if (vyrtools::IsTablePath(file)) {
        VyrTableImport import;
        if (vyrtools::ImportTable(file, import, m_data, reason) != vyrtools::LoadResult::Ok) {
            wxLogError("%s: %s", file, reason);
            return false;
        }
        SyncDiagramViews();
        return true;
    }
    if (vyrtools::LoadDocument(file, m_data, reason) != vyrtools::LoadResult::Ok) {
        wxLogError("%s: %s", file, reason);
        return false;
    }
    // Loading may have put curves into the second diagram.
    SyncDiagramViews();
    return true;
}

bool ViewerDocument::DoSaveDocument(const wxString& file) {
    wxString reason;
    if (!vyrtools::SaveDocument(file, m_data, reason)) {
        wxLogError("%s: %s", file, reason);
        return false;
    }
    return true;
}

void ViewerDocument::Follow(std::unique_ptr<LiveFollow> follow) {
    m_follow = std::move(follow);
}

bool ViewerDocument::DeleteContents() {
    // The recording holds the curves it appends to: it stops before they go.
    m_follow.reset();
    ForgetHistory();
    m_selection = Selection();
    m_data.Delete();
    return true;
}

void ViewerDocument::ForgetHistory() {
    if (wxCommandProcessor* processor = GetCommandProcessor())
        processor->ClearCommands();
}
