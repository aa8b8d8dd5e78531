// The window of one document: the side panel (experiments, curves, scale type) beside the
// canvases of its one or two diagrams, the menus, and a status bar that follows the pointer.
// Every view of the document renders into this one frame; closing it closes the document.
#ifndef VYR_VIEW_DOCUMENTFRAME_H
#define VYR_VIEW_DOCUMENTFRAME_H

#include <wx/docview.h>

class DiagramCanvas;
class DiagramView;
class SidePanel;
class ViewerDocument;
class wxBoxSizer;
class wxSplitterWindow;

class DocumentFrame : public wxDocChildFrame {
public:
    DocumentFrame(ViewerDocument* document, wxView* firstView);

    // Adds the canvas of a diagram's view (diagram 0 above diagram 1).
    DiagramCanvas* AddCanvas(DiagramView* view);
    // Takes a view's canvas away (the view of diagram 1 when one diagram is left).
    void RemoveCanvas(DiagramCanvas* canvas);
    // The canvas of diagram `index`, or null.
    DiagramCanvas* FindCanvas(int index) const;

    SidePanel* GetSidePanel() const { return m_panel; }
    // Null once the document's views are gone.
    ViewerDocument* GetViewerDocument() const;

    // "name - vyr-view", with " *" after the name while the document is modified.
    void UpdateTitle();
    void SetPointerStatus(const wxString& coordinates, const wxString& under);

private:
    wxMenuBar* MakeMenuBar();
    void OnCloseWindow(wxCloseEvent& event);
    void OnExit(wxCommandEvent& event);
    void OnAbout(wxCommandEvent& event);

    wxSplitterWindow* m_splitter = nullptr;
    SidePanel* m_panel = nullptr;
    wxWindow* m_diagramArea = nullptr;
    wxBoxSizer* m_diagramSizer = nullptr;

    wxDECLARE_CLASS(DocumentFrame);
};

#endif
