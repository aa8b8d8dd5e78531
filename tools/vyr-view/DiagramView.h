// The view of one diagram of a document (index 0 or 1). It observes its VyrDiagram, so that every
// change the library announces repaints its canvas, and it answers the menu commands that act on
// the active diagram: delete the selection, export, normal zoom, next Y unit, two diagrams, grid.
// The first view of a document creates the document's frame; a second view adds its canvas to
// that frame.
#ifndef VYR_VIEW_DIAGRAMVIEW_H
#define VYR_VIEW_DIAGRAMVIEW_H

#include <wx/docview.h>

#include "vyrbase/core/VyrObserver.h"

class DiagramCanvas;
class DocumentFrame;
class ViewerDocument;
class VyrDiagram;

class DiagramView : public wxView, public VyrObserver {
public:
    explicit DiagramView(int index = 0);
    ~DiagramView() override;

    int GetIndex() const { return m_index; }
    // Null once the diagram was destroyed.
    VyrDiagram* GetDiagram() const { return m_diagram; }
    ViewerDocument* GetViewerDocument() const;
    DocumentFrame* GetDocumentFrame() const;
    DiagramCanvas* GetCanvas() const { return m_canvas; }

    bool OnCreate(wxDocument* doc, long flags) override;
    bool OnClose(bool deleteWindow) override;
    void OnDraw(wxDC* dc) override;
    void OnUpdate(wxView* sender, wxObject* hint) override;
    void OnActivateView(bool activate, wxView* activeView, wxView* deactiveView) override;
    void OnChangeFilename() override;
    // File > Print and Print Preview (through the document manager): every diagram of the
    // document, one a page.
    wxPrintout* OnCreatePrintout() override;

    void OnUpdateObserver(VyrObserverMsg& msg) override;
    void OnInitialUpdateObserver() override;

    // Writes the diagram as PNG, SVG or PDF, or the document's data as CSV, by the extension of
    // `path`, at the canvas's size. Errors are logged.
    bool ExportTo(const wxString& path);

private:
    void OnDelete(wxCommandEvent& event);
    void OnUpdateDelete(wxUpdateUIEvent& event);
    void OnExport(wxCommandEvent& event);
    void OnZoomNormal(wxCommandEvent& event);
    void OnNextYUnit(wxCommandEvent& event);
    void OnTwoDiagrams(wxCommandEvent& event);
    void OnUpdateTwoDiagrams(wxUpdateUIEvent& event);
    void OnShowGrid(wxCommandEvent& event);
    void OnFit(wxCommandEvent& event);
    void OnUpdateFit(wxUpdateUIEvent& event);
    void OnUpdateShowGrid(wxUpdateUIEvent& event);
    void OnPlainPicture(wxCommandEvent& event);
    void OnUpdatePlainPicture(wxUpdateUIEvent& event);

    int m_index;
    VyrDiagram* m_diagram = nullptr;
    DiagramCanvas* m_canvas = nullptr;

    wxDECLARE_DYNAMIC_CLASS(DiagramView);
    wxDECLARE_EVENT_TABLE();
};

#endif
