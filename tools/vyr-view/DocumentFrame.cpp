#include "DocumentFrame.h"

#include <wx/menu.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/splitter.h>

#include "DiagramCanvas.h"
#include "DiagramView.h"
#include "FileDrop.h"
#include "MainFrame.h"
#include "SidePanel.h"
#include "ViewerApp.h"
#include "ViewerDocument.h"
#include "ViewerIds.h"

wxIMPLEMENT_CLASS(DocumentFrame, wxDocChildFrame);

DocumentFrame::DocumentFrame(ViewerDocument* document, wxView* firstView)
    : wxDocChildFrame(document, firstView, wxGetApp().GetMainFrame(), wxID_ANY, "vyr-view",
                      wxDefaultPosition, wxSize(1000, 680)) {
    SetMenuBar(MakeMenuBar());
    CreateStatusBar(2);

    m_splitter = new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                      wxSP_LIVE_UPDATE | wxSP_3DSASH);
    m_panel = new SidePanel(m_splitter, document);
    m_diagramArea = new wxPanel(m_splitter);
    m_diagramSizer = new wxBoxSizer(wxVERTICAL);
    m_diagramArea->SetSizer(m_diagramSizer);
    m_splitter->SetMinimumPaneSize(120);
    m_splitter->SplitVertically(m_panel, m_diagramArea, 230);

    SetDropTarget(new FileDrop(wxGetApp().GetDocManager()));
    // Bound after the base class's own close handler, so called before it: closing the frame
    // closes the whole document, with the views of both diagrams.
    Bind(wxEVT_CLOSE_WINDOW, &DocumentFrame::OnCloseWindow, this);
    Bind(wxEVT_MENU, &DocumentFrame::OnExit, this, wxID_EXIT);
    Bind(wxEVT_MENU, &DocumentFrame::OnAbout, this, wxID_ABOUT);
    UpdateTitle();
}

wxMenuBar* DocumentFrame::MakeMenuBar() {
    auto* file = new wxMenu;
    file->Append(wxID_OPEN, "&Open...\tCtrl+O");
    file->Append(wxID_CLOSE, "&Close\tCtrl+W");
    file->Append(wxID_SAVE, "&Save\tCtrl+S");
    file->Append(wxID_SAVEAS, "Save &As...");
    file->Append(ID_EXPORT, "&Export...\tCtrl+E",
                 "Export the diagram as PNG, SVG or PDF, the data as CSV");
    file->AppendSeparator();
    // Answered by the document manager with the active view's printout (DiagramPrintout).
    file->Append(wxID_PRINT_SETUP, "Page Set&up...", "Paper, orientation and margins");
    file->Append(wxID_PREVIEW, "Print Pre&view", "Every diagram of the document, one a page");
    file->Append(wxID_PRINT, "&Print...\tCtrl+P", "Print every diagram, one a page");
    file->AppendSeparator();
    file->Append(wxID_EXIT, "E&xit\tCtrl+Q");

    // Undo and Redo keep their plain labels: the viewer does not hand the edit menu to the
    // command processor, which would name them after the commands.
    auto* edit = new wxMenu;
    edit->Append(wxID_UNDO, "&Undo\tCtrl+Z");
    edit->Append(wxID_REDO, "&Redo\tCtrl+Y");
    edit->AppendSeparator();
    edit->Append(wxID_DELETE, "&Delete\tDel", "Delete the selected curve, experiment or note");

    auto* view = new wxMenu;
    view->Append(ID_ZOOM_NORMAL, "&Normal zoom\tCtrl+0");
    view->Append(ID_NEXT_Y_UNIT, "Next &Y unit\tCtrl+U");
    view->AppendSeparator();
    view->AppendCheckItem(ID_SHOW_GRID, "&Grid");
    view->AppendCheckItem(ID_TWO_DIAGRAMS, "&Two diagrams");
    view->AppendCheckItem(ID_PLAIN_PICTURE, "&Plain picture",
                          "The classic picture: no scale per unit, no legend, no layout");

    auto* help = new wxMenu;
    help->Append(wxID_ABOUT, "&About vyr-view");

    auto* bar = new wxMenuBar;
    bar->Append(file, "&File");
    bar->Append(edit, "&Edit");
    bar->Append(view, "&View");
    auto* analysis = new wxMenu;
    analysis->Append(ID_FIT, "&Fit...\tCtrl+F",
                     "Fit a model to the selected curve over the range the diagram shows");
    bar->Append(analysis, "&Analysis");
    bar->Append(help, "&Help");
    return bar;
}

DiagramCanvas* DocumentFrame::AddCanvas(DiagramView* view) {
    auto* canvas = new DiagramCanvas(m_diagramArea, view);
    const size_t at = view->GetIndex() == 0 ? 0 : m_diagramSizer->GetItemCount();
    m_diagramSizer->Insert(at, canvas, 1, wxEXPAND | wxALL, 2);
    m_diagramArea->Layout();
    return canvas;
}

void DocumentFrame::RemoveCanvas(DiagramCanvas* canvas) {
    canvas->SetView(nullptr);
    m_diagramSizer->Detach(canvas);
    canvas->Destroy();
    m_diagramArea->Layout();
}

DiagramCanvas* DocumentFrame::FindCanvas(int index) const {
    for (wxSizerItem* item : m_diagramSizer->GetChildren()) {
        auto* canvas = wxDynamicCast(item->GetWindow(), DiagramCanvas);
        if (canvas && canvas->GetView() && canvas->GetView()->GetIndex() == index)
            return canvas;
    }
    return nullptr;
}

ViewerDocument* DocumentFrame::GetViewerDocument() const {
    return GetView() ? static_cast<ViewerDocument*>(GetView()->GetDocument()) : nullptr;
}

void DocumentFrame::UpdateTitle() {
    ViewerDocument* document = GetViewerDocument();
    if (!document)
        return;
    wxString title = document->GetUserReadableName();
    if (document->IsModified())
        title += " *";
    title += " - vyr-view";
    if (GetTitle() != title)
        SetTitle(title);
}

void DocumentFrame::SetPointerStatus(const wxString& coordinates, const wxString& under) {
    SetStatusText(coordinates, 0);
    SetStatusText(under, 1);
}

void DocumentFrame::OnCloseWindow(wxCloseEvent& event) {
    ViewerDocument* document = GetViewerDocument();
    if (!document) {
        event.Skip();
        return;
    }
    if (!document->Close() && event.CanVeto()) {
        event.Veto();
        return;
    }
    document->Modify(false);
    // Deleting the views deletes the document with the last one; the first view, which this
    // frame was made for, destroys the frame.
    document->DeleteAllViews();
}

void DocumentFrame::OnExit(wxCommandEvent&) {
    wxGetApp().GetMainFrame()->Close();
}

void DocumentFrame::OnAbout(wxCommandEvent&) {
    MainFrame::ShowAbout(this);
}
