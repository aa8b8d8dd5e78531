#include "DiagramCanvas.h"

#include <algorithm>
#include <cstdlib>

#include <wx/dcbuffer.h>
#include <wx/dcmemory.h>
#include <wx/settings.h>

#include "DiagramView.h"
#include "DocumentFrame.h"
#include "ViewerDocument.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramExport.h"
#include "vyrbase/diagram/VyrDiagramViewAccess.h"

namespace {

// A curve counts as under the pointer within 8 pixels of one of its points.
const int kCurveHitDistance2 = 8 * 8;
// A press becomes a drag once the pointer moved this far (pixels, on either axis).
const int kDragThreshold = 3;
// A zoom rectangle smaller than this on either side is taken for a click.
const int kMinZoomSide = 4;

// The note searches leave the diagram in the units of the curve they hit; the view wants its
// main units back before it converts anything else.
class CurrentScaleKeeper {
public:
    explicit CurrentScaleKeeper(VyrDiagram* diagram)
        : m_diagram(diagram), m_saved(*diagram->GetCurrentScale()) {}
    ~CurrentScaleKeeper() {
        *m_diagram->GetCurrentScale() = m_saved;
        m_diagram->UpdateWorld();
    }

private:
    VyrDiagram* m_diagram;
    VyrScale m_saved;
};

// Painting and hit testing the interval tools use the active document's; while one window of
// a document paints, its document is the active one, then the previous one is put back.
class ActiveBaseScope {
public:
    explicit ActiveBaseScope(VyrBaseData* base) : m_saved(VyrBaseData::GetActiveBase()) {
        VyrBaseData::SetActiveBase(base);
    }
    ~ActiveBaseScope() { VyrBaseData::SetActiveBase(m_saved); }

private:
    VyrBaseData* m_saved;
};

wxString QuantityAndUnit(const VyrVecteur* v, const wxString& value) {
    return wxString::Format("%s = %s %s", v->GetGrandeur(), value, v->GetUnite());
}

}  // namespace

wxBEGIN_EVENT_TABLE(DiagramCanvas, wxWindow) EVT_PAINT(DiagramCanvas::OnPaint)
    EVT_SIZE(DiagramCanvas::OnSize) EVT_LEFT_DOWN(DiagramCanvas::OnLeftDown)
        EVT_LEFT_UP(DiagramCanvas::OnLeftUp) EVT_LEFT_DCLICK(DiagramCanvas::OnLeftDClick)
            EVT_MOTION(DiagramCanvas::OnMotion) EVT_LEAVE_WINDOW(DiagramCanvas::OnLeave)
                EVT_MOUSE_CAPTURE_LOST(DiagramCanvas::OnCaptureLost) wxEND_EVENT_TABLE()

                    DiagramCanvas::DiagramCanvas(wxWindow* parent, DiagramView* view)
    : m_view(view) {
    // Every pixel is painted by the diagram: no background erase, and the buffered paint
    // context needs this style set before the window exists.
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxSize(400, 300), wxFULL_REPAINT_ON_RESIZE);
    SetMinSize(wxSize(160, 120));
}

VyrDiagram* DiagramCanvas::Diagram() const {
    return m_view ? m_view->GetDiagram() : nullptr;
}

void DiagramCanvas::FitDiagram() {
    VyrDiagram* diagram = Diagram();
    const wxSize size = GetClientSize();
    wxRect plot = VyrDiagramExport::GetPlotRect(size.x, size.y, 1.0);
    if (diagram && plot.width > 0 && plot.height > 0)
        diagram->Move(plot);
}

void DiagramCanvas::Render(wxDC& dc) {
    VyrDiagram* diagram = Diagram();
    dc.SetBackground(wxBrush(diagram ? diagram->GetBackgroundColour() : *wxWHITE));
    dc.Clear();
    ViewerDocument* document = m_view ? m_view->GetViewerDocument() : nullptr;
    if (!diagram || !document)
        return;
    ActiveBaseScope active(&document->GetData());
    diagram->Paint(&dc, false, false, false, 1.0, nullptr, false);
    if (m_drag == Drag::Note && m_moved)
        PaintMovingNote(dc);
    if (m_drag == Drag::Zoom && m_moved) {
        dc.SetPen(wxPen(diagram->GetAxisColour(), 1, wxPENSTYLE_DOT));
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(wxRect(m_dragStart, m_dragNow));
        dc.SetPen(wxNullPen);
        dc.SetBrush(wxNullBrush);
    }
}

wxBitmap DiagramCanvas::Snapshot() {
    const wxSize size = GetClientSize();
    if (size.x <= 0 || size.y <= 0)
        return wxBitmap();
    wxBitmap bitmap(size, 24);
    {
        wxMemoryDC dc(bitmap);
        Render(dc);
    }
    return bitmap;
}

void DiagramCanvas::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    Render(dc);
}

void DiagramCanvas::OnSize(wxSizeEvent& event) {
    FitDiagram();
    Refresh();
    event.Skip();
}

void DiagramCanvas::OnLeftDown(wxMouseEvent& event) {
    event.Skip();  // the window still takes the focus
    VyrDiagram* diagram = Diagram();
    if (!diagram)
        return;
    ViewerDocument* document = m_view->GetViewerDocument();
    m_view->Activate(true);
    document->MakeActive();
    const wxPoint p = event.GetPosition();
    m_dragStart = m_dragNow = p;
    m_moved = false;

    // The title and the notes lie over the curves: they are tried first.
    VyrNote* title = diagram->HitTestTitre(p);
    if (title && title->IsShown()) {
        BeginNoteDrag(title, nullptr, p);
        return;
    }
    VyrCourbe* courbe = nullptr;
    VyrNote* note = nullptr;
    {
        CurrentScaleKeeper keep(diagram);
        note = VyrDiagramViewAccess::HitTestNote(diagram, p, &courbe);
    }
    if (note) {
        BeginNoteDrag(note, courbe, p);
        return;
    }
    const int arrow = diagram->HitTestFleche(p);
    if (arrow == 2 || arrow == 3) {
        if (diagram->AxeSuivantY())
            Refresh();
        return;
    }

    Selection selection;
    selection.diagram = m_view->GetIndex();
    bool toolsChanged = false;
    if (VyrOutilInterval* tool = diagram->HitOutilInterval(p, &toolsChanged)) {
        selection.kind = VYR_KIND_OUTIL_INTERVAL;
        selection.oid = tool->GetOid();
        document->Select(selection);
        Refresh();
        return;
    }
    int index = -1;
    if (VyrCourbe* hit =
            VyrDiagramViewAccess::HitTestCurvePlusProche(diagram, p, kCurveHitDistance2, &index)) {
        selection.kind = VYR_KIND_COURBE;
        selection.oid = hit->GetOid();
    }
    document->Select(selection);
    if (toolsChanged)
        Refresh();
    // Anywhere else a press may become a zoom rectangle.
    m_drag = Drag::Zoom;
    if (!HasCapture())
        CaptureMouse();
}

void DiagramCanvas::BeginNoteDrag(VyrNote* note, VyrCourbe* courbe, wxPoint p) {
    Selection selection;
    selection.kind = VYR_KIND_NOTE;
    selection.oid = note->GetOid();
    selection.curveOid = courbe ? courbe->GetOid() : 0;
    selection.diagram = m_view->GetIndex();
    m_view->GetViewerDocument()->Select(selection);
    m_drag = Drag::Note;
    m_noteOid = selection.oid;
    m_noteCurveOid = selection.curveOid;
    m_grabOffset = p - NoteCorner(note, courbe);
    if (!HasCapture())
        CaptureMouse();
    Refresh();
}

wxPoint DiagramCanvas::NoteCorner(VyrNote* note, VyrCourbe* courbe) {
    VyrDiagram* diagram = Diagram();
    if (!courbe)
        return diagram->GetTitrePos(note);
    return diagram->RealToPixelCourbe(courbe, note->GetPositionX(), note->GetPositionY());
}

VyrNote* DiagramCanvas::DraggedNote(VyrCourbe** courbe) {
    *courbe = nullptr;
    ViewerDocument* document = m_view ? m_view->GetViewerDocument() : nullptr;
    if (!document || !Diagram())
        return nullptr;
    VyrBaseData& data = document->GetData();
    VyrEntity* entity = data.FindEntity(m_noteOid);
    if (!entity || entity->GetKind() != VYR_KIND_NOTE)
        return nullptr;
    if (m_noteCurveOid) {
        *courbe = data.FindCourbeByOid(m_noteCurveOid);
        if (!*courbe)
            return nullptr;
    }
    return static_cast<VyrNote*>(entity);
}

void DiagramCanvas::PaintMovingNote(wxDC& dc) {
    // A note being moved is drawn by the diagram as its leader line only; its box follows the
    // pointer here, in the selection colours.
    VyrCourbe* courbe = nullptr;
    VyrNote* note = DraggedNote(&courbe);
    if (!note || note->GetState() != VYR_NOTE_MOVING)
        return;
    const wxPoint corner = NoteCorner(note, courbe);
    const int margin = courbe ? 4 : 10;
    dc.SetPen(wxPen(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.DrawRectangle(corner, wxSize(note->GetBoxWidth(), note->GetBoxHeight()));
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT));
    // The face and size the diagram draws its texts with (the title in bold), so that the text
    // fits the box size the diagram measured.
    const wxFont oldFont = dc.GetFont();
    dc.SetFont(wxFont(wxFontInfo(12).FaceName("Segoe UI").Bold(!courbe)));
    dc.DrawText(note->GetText(), corner + wxPoint(margin, margin));
    dc.SetFont(oldFont);
    dc.SetPen(wxNullPen);
    dc.SetBrush(wxNullBrush);
}

void DiagramCanvas::OnMotion(wxMouseEvent& event) {
    const wxPoint p = event.GetPosition();
    VyrDiagram* diagram = Diagram();
    if (!diagram)
        return;
    if (m_drag == Drag::None || !event.LeftIsDown()) {
        ShowPointerStatus(p);
        return;
    }
    m_dragNow = p;
    if (!m_moved && std::abs(p.x - m_dragStart.x) < kDragThreshold &&
        std::abs(p.y - m_dragStart.y) < kDragThreshold)
        return;
    m_moved = true;
    if (m_drag == Drag::Note) {
        VyrCourbe* courbe = nullptr;
        VyrNote* note = DraggedNote(&courbe);
        if (!note) {
            Release();
            return;
        }
        note->SetState(VYR_NOTE_MOVING);
        const wxPoint corner = p - m_grabOffset;
        if (!courbe) {
            diagram->SetTitrePos(note, corner);
        } else {
            const wxRealPoint real = diagram->PixelToRealCourbe(courbe, corner.x, corner.y);
            note->SetPosition(real.x, real.y);
        }
    }
    Refresh();
    ShowPointerStatus(p);
}

void DiagramCanvas::OnLeftUp(wxMouseEvent& event) {
    VyrDiagram* diagram = Diagram();
    if (!diagram || m_drag == Drag::None) {
        Release();
        return;
    }
    if (m_drag == Drag::Note) {
        VyrCourbe* courbe = nullptr;
        if (VyrNote* note = DraggedNote(&courbe)) {
            note->SetState(VYR_NOTE_SELECTED);
            if (m_moved)
                m_view->GetViewerDocument()->Modify(true);
        }
    } else if (m_moved) {
        const wxRect band(m_dragStart, event.GetPosition());
        if (band.width >= kMinZoomSide && band.height >= kMinZoomSide) {
            const wxRealPoint low = diagram->PixelToReal(band.GetLeft(), band.GetBottom());
            const wxRealPoint high = diagram->PixelToReal(band.GetRight(), band.GetTop());
            VyrScale zoom;
            zoom.Set(low.x, high.x, low.y, high.y);
            diagram->SetZoom(&zoom);
        }
    }
    Release();
    Refresh();
}

void DiagramCanvas::OnLeftDClick(wxMouseEvent&) {
    if (VyrDiagram* diagram = Diagram()) {
        diagram->ZoomNormal();
        Refresh();
    }
}

void DiagramCanvas::OnLeave(wxMouseEvent&) {
    if (DocumentFrame* frame = m_view ? m_view->GetDocumentFrame() : nullptr)
        frame->SetPointerStatus(wxEmptyString, wxEmptyString);
}

void DiagramCanvas::OnCaptureLost(wxMouseCaptureLostEvent&) {
    VyrCourbe* courbe = nullptr;
    if (m_drag == Drag::Note)
        if (VyrNote* note = DraggedNote(&courbe))
            note->SetState(VYR_NOTE_SELECTED);
    m_drag = Drag::None;
    m_moved = false;
    Refresh();
}

void DiagramCanvas::Release() {
    m_drag = Drag::None;
    m_moved = false;
    if (HasCapture())
        ReleaseMouse();
}

void DiagramCanvas::ShowPointerStatus(wxPoint p) {
    DocumentFrame* frame = m_view ? m_view->GetDocumentFrame() : nullptr;
    VyrDiagram* diagram = Diagram();
    if (!frame || !diagram)
        return;
    wxString coordinates, under;
    if (diagram->HitTestPoint(p)) {
        // The real coordinates in the units of the active curve, or of the first curve drawn.
        const std::vector<VyrCourbe*>& plotted = diagram->GetPlottedCourbes();
        VyrCourbe* active = diagram->GetActiveCourbe();
        if (std::find(plotted.begin(), plotted.end(), active) == plotted.end())
            active = plotted.empty() ? nullptr : plotted.front();
        if (active && active->GetVx() && active->GetVy()) {
            const wxRealPoint real = diagram->PixelToRealCourbe(active, p.x, p.y);
            coordinates =
                QuantityAndUnit(active->GetVx(), diagram->FormatValueOnGraph(real.x, true)) +
                "   " +
                QuantityAndUnit(active->GetVy(), diagram->FormatValueOnGraph(real.y, false));
        }
        int index = -1;
        VyrCourbe* hit =
            VyrDiagramViewAccess::HitTestCurvePlusProche(diagram, p, kCurveHitDistance2, &index);
        if (hit && index >= 0 && hit->GetVx() && hit->GetVy())
            under =
                wxString::Format("%s, point %d: ", hit->GetName(), index) +
                QuantityAndUnit(hit->GetVx(), wxString::Format("%g", hit->GetVx()->GetVal(index))) +
                ", " +
                QuantityAndUnit(hit->GetVy(), wxString::Format("%g", hit->GetVy()->GetVal(index)));
    }
    frame->SetPointerStatus(coordinates, under);
}
