// The window of one diagram. It paints through VyrDiagram::Paint (double-buffered), keeps the
// diagram's plot rectangle on its size with Move, and turns the mouse into the library's hit
// tests: the status bar follows the pointer (real coordinates in the active curve's units, the
// curve and point under it); a click selects a note, the title, an interval tool or a curve; a
// note or the title is dragged to move it; a rectangle dragged elsewhere zooms and a double click
// restores; a click on an axis arrow steps the main Y unit.
#ifndef VYR_VIEW_DIAGRAMCANVAS_H
#define VYR_VIEW_DIAGRAMCANVAS_H

#include <wx/bitmap.h>
#include <wx/window.h>

class DiagramView;
class VyrCourbe;
class VyrDiagram;
class VyrNote;

class DiagramCanvas : public wxWindow {
public:
    DiagramCanvas(wxWindow* parent, DiagramView* view);

    // The view goes away before the window: the window then shows an empty background.
    void SetView(DiagramView* view) { m_view = view; }
    DiagramView* GetView() const { return m_view; }

    // Paints what the window shows (diagram, the note being moved, the zoom rectangle) on a
    // device context of the window's size.
    void Render(wxDC& dc);
    // The window's picture, rendered into a bitmap of its client size.
    wxBitmap Snapshot();
    // Puts the diagram's plot rectangle on the window's size (Move).
    void FitDiagram();

private:
    VyrDiagram* Diagram() const;
    void OnPaint(wxPaintEvent& event);
    void OnSize(wxSizeEvent& event);
    void OnLeftDown(wxMouseEvent& event);
    void OnLeftUp(wxMouseEvent& event);
    void OnLeftDClick(wxMouseEvent& event);
    void OnMotion(wxMouseEvent& event);
    void OnLeave(wxMouseEvent& event);
    void OnCaptureLost(wxMouseCaptureLostEvent& event);

    // Starts moving a note (courbe null: the diagram's title) grabbed at `p`.
    void BeginNoteDrag(VyrNote* note, VyrCourbe* courbe, wxPoint p);
    // The top left pixel of a note's box (the title's, or a curve note's in its curve's units).
    wxPoint NoteCorner(VyrNote* note, VyrCourbe* courbe);
    // The note being moved (still attached), with its curve.
    VyrNote* DraggedNote(VyrCourbe** courbe);
    void PaintMovingNote(wxDC& dc);
    void ShowPointerStatus(wxPoint p);
    void Release();

    DiagramView* m_view;
    enum class Drag { None, Note, Zoom } m_drag = Drag::None;
    wxPoint m_dragStart;
    wxPoint m_dragNow;
    // The grabbed note (by oid) and where in its box it was grabbed.
    int m_noteOid = 0;
    int m_noteCurveOid = 0;
    wxPoint m_grabOffset;
    bool m_moved = false;

    wxDECLARE_EVENT_TABLE();
};

#endif
