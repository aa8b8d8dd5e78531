#include "DiagramView.h"

#include <wx/filedlg.h>
#include <wx/log.h>

#include "DiagramCanvas.h"
#include "DiagramPrintout.h"
#include "DocumentFrame.h"
#include "Export.h"
#include "FitDialog.h"
#include "PictureOptions.h"
#include "ViewerApp.h"
#include "ViewerDocument.h"
#include "ViewerIds.h"
#include "vyrbase/core/VyrObserverMsg.h"
#include "vyrbase/diagram/VyrDiagram.h"

wxIMPLEMENT_DYNAMIC_CLASS(DiagramView, wxView);

wxBEGIN_EVENT_TABLE(DiagramView, wxView) EVT_MENU(wxID_DELETE, DiagramView::OnDelete)
    EVT_UPDATE_UI(wxID_DELETE, DiagramView::OnUpdateDelete)
        EVT_MENU(ID_EXPORT, DiagramView::OnExport)
            EVT_MENU(ID_ZOOM_NORMAL, DiagramView::OnZoomNormal)
                EVT_MENU(ID_NEXT_Y_UNIT, DiagramView::OnNextYUnit)
                    EVT_MENU(ID_TWO_DIAGRAMS, DiagramView::OnTwoDiagrams)
                        EVT_UPDATE_UI(ID_TWO_DIAGRAMS, DiagramView::OnUpdateTwoDiagrams)
                            EVT_MENU(ID_SHOW_GRID, DiagramView::OnShowGrid)
                                EVT_UPDATE_UI(ID_SHOW_GRID, DiagramView::OnUpdateShowGrid)
                                    EVT_MENU(ID_FIT, DiagramView::OnFit)
                                        EVT_UPDATE_UI(ID_FIT, DiagramView::OnUpdateFit)
                                            EVT_MENU(ID_PLAIN_PICTURE, DiagramView::OnPlainPicture)
                                                EVT_UPDATE_UI(ID_PLAIN_PICTURE,
                                                              DiagramView::OnUpdatePlainPicture)
                                                    wxEND_EVENT_TABLE()

                                                        DiagramView::DiagramView(int index)
    : m_index(index) {}

DiagramView::~DiagramView() {
    // Stop hearing from the diagram before the canvas goes.
    if (m_diagram)
        m_diagram->RemoveObserver(this);
    m_diagram = nullptr;
    if (m_canvas) {
        if (DocumentFrame* frame = GetDocumentFrame())
            frame->RemoveCanvas(m_canvas);
        m_canvas = nullptr;
    }
}

ViewerDocument* DiagramView::GetViewerDocument() const {
    return static_cast<ViewerDocument*>(GetDocument());
}

DocumentFrame* DiagramView::GetDocumentFrame() const {
    return wxDynamicCast(GetFrame(), DocumentFrame);
}

bool DiagramView::OnCreate(wxDocument* doc, long) {
    auto* document = static_cast<ViewerDocument*>(doc);
    DocumentFrame* frame = document->GetFrame();
    if (!frame) {
        frame = new DocumentFrame(document, this);
        document->SetFrame(frame);
    }
    SetFrame(frame);
    m_canvas = frame->AddCanvas(this);
    m_diagram = document->GetData().GetDiagram(m_index);
    if (m_diagram) {
        m_diagram->AddObserver(this);
        // The picture explains itself unless the command line asked for the plain one.
        wxString reason;
        vyrtools::ApplyPictureOptions(*m_diagram, wxGetApp().GetPictureOptions(), reason);
    }
    // The window may have had its size before it had a diagram.
    m_canvas->FitDiagram();
    frame->Show();
    Activate(true);
    return true;
}

bool DiagramView::OnClose(bool deleteWindow) {
    if (!wxView::OnClose(deleteWindow))
        return false;
    Activate(false);
    return true;
}

void DiagramView::OnDraw(wxDC* dc) {
    if (m_canvas && dc)
        m_canvas->Render(*dc);
}

void DiagramView::OnUpdate(wxView*, wxObject*) {
    if (m_canvas)
        m_canvas->Refresh();
    if (DocumentFrame* frame = GetDocumentFrame())
        frame->UpdateTitle();
}

void DiagramView::OnActivateView(bool activate, wxView*, wxView*) {
    ViewerDocument* document = GetViewerDocument();
    if (!activate || !document)
        return;
    document->MakeActive();
    document->GetData().SetActiveDiagram(m_diagram);
}

void DiagramView::OnChangeFilename() {
    if (DocumentFrame* frame = GetDocumentFrame())
        frame->UpdateTitle();
}

wxPrintout* DiagramView::OnCreatePrintout() {
    return new DiagramPrintout(GetViewerDocument());
}

void DiagramView::OnUpdateObserver(VyrObserverMsg& msg) {
    switch (msg.GetMsg()) {
        case VYR_MSG_DIAGRAM_DESTROYED:
            m_diagram = nullptr;
            break;
        case VYR_MSG_DIAGRAM_COUNT_CHANGED:
            // Not from inside the document's notification: the new view registers with a
            // diagram that may be walking its observers right now.
            if (ViewerDocument* document = GetViewerDocument())
                document->CallAfter([document] { document->SyncDiagramViews(); });
            break;
        default:
            break;
    }
    if (m_canvas)
        m_canvas->Refresh();
    if (DocumentFrame* frame = GetDocumentFrame())
        frame->UpdateTitle();
}

void DiagramView::OnInitialUpdateObserver() {
    if (m_canvas)
        m_canvas->Refresh();
}

bool DiagramView::ExportTo(const wxString& path) {
    ViewerDocument* document = GetViewerDocument();
    if (!document || !m_diagram || !m_canvas)
        return false;
    document->MakeActive();
    wxString reason;
    if (!ExportDocument(document->GetData(), m_diagram, path, m_canvas->GetClientSize(), reason)) {
        wxLogError("%s: %s", path, reason);
        return false;
    }
    return true;
}

void DiagramView::OnDelete(wxCommandEvent&) {
    if (ViewerDocument* document = GetViewerDocument())
        document->DeleteSelection();
}

void DiagramView::OnUpdateDelete(wxUpdateUIEvent& event) {
    ViewerDocument* document = GetViewerDocument();
    event.Enable(document && !document->DescribeSelection().empty() &&
                 document->GetSelection().kind != VYR_KIND_OUTIL_INTERVAL);
}

void DiagramView::OnExport(wxCommandEvent&) {
    wxFileDialog dialog(GetFrame(), "Export", wxEmptyString, wxEmptyString, ExportWildcard(),
                        wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (dialog.ShowModal() != wxID_OK)
        return;
    wxString path = dialog.GetPath();
    ExportTo(WithExportExtension(path, dialog.GetFilterIndex()));
}

void DiagramView::OnZoomNormal(wxCommandEvent&) {
    if (!m_diagram)
        return;
    m_diagram->ZoomNormal();
    if (m_canvas)
        m_canvas->Refresh();
}

void DiagramView::OnNextYUnit(wxCommandEvent&) {
    if (m_diagram && m_diagram->AxeSuivantY() && m_canvas)
        m_canvas->Refresh();
}

void DiagramView::OnTwoDiagrams(wxCommandEvent& event) {
    if (ViewerDocument* document = GetViewerDocument())
        document->GetData().SetDiagramCount(event.IsChecked() ? 2 : 1);
}

void DiagramView::OnUpdateTwoDiagrams(wxUpdateUIEvent& event) {
    ViewerDocument* document = GetViewerDocument();
    event.Check(document && document->GetData().GetDiagramCount() == 2);
}

void DiagramView::OnShowGrid(wxCommandEvent& event) {
    if (!m_diagram)
        return;
    m_diagram->SetGridShown(event.IsChecked());
    if (m_canvas)
        m_canvas->Refresh();
}

void DiagramView::OnUpdateShowGrid(wxUpdateUIEvent& event) {
    event.Check(m_diagram && m_diagram->IsGridShown());
}

void DiagramView::OnFit(wxCommandEvent&) {
    ViewerDocument* document = GetViewerDocument();
    VyrCourbe* curve = document ? document->GetSelectedCourbe() : nullptr;
    if (!curve || !m_diagram)
        return;
    // The range the diagram shows: a zoom on part of the curve fits that part.
    const VyrScale* shown = m_diagram->GetCurrentScale();
    FitDialog dialog(GetFrame(), document->GetData(), curve, shown->GetXmin(), shown->GetXmax());
    dialog.ShowModal();
    if (dialog.HasKeptAFit()) {
        document->Modify(true);
        if (m_canvas)
            m_canvas->Refresh();
    }
}

void DiagramView::OnUpdateFit(wxUpdateUIEvent& event) {
    ViewerDocument* document = GetViewerDocument();
    event.Enable(document && document->GetSelectedCourbe());
}

void DiagramView::OnPlainPicture(wxCommandEvent& event) {
    if (!m_diagram)
        return;
    PictureOptions look = wxGetApp().GetPictureOptions();
    look.plain = event.IsChecked();
    look.yUnit.clear();
    wxString reason;
    vyrtools::ApplyPictureOptions(*m_diagram, look, reason);
    // The plot fills the window again until the next paint lays it out.
    if (m_canvas) {
        m_canvas->FitDiagram();
        m_canvas->Refresh();
    }
}

void DiagramView::OnUpdatePlainPicture(wxUpdateUIEvent& event) {
    event.Check(m_diagram && m_diagram->GetOptions() == 0);
}
