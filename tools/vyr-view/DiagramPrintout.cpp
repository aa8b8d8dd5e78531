#include "DiagramPrintout.h"

#include <wx/docview.h>

#include "ViewerDocument.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrDiagramExport.h"

namespace {

// Puts the area the window gave the diagram back once the page is painted.
class PlotRectScope {
public:
    PlotRectScope(VyrDiagram* diagram, wxRect rect) : m_diagram(diagram) {
        m_saved = m_diagram->GetArea();
        m_diagram->Move(rect);
    }
    ~PlotRectScope() { m_diagram->Move(m_saved); }

private:
    VyrDiagram* m_diagram;
    wxRect m_saved;
};

}  // namespace

DiagramPrintout::DiagramPrintout(ViewerDocument* document)
    : wxPrintout(document ? document->GetUserReadableName() : wxString("vyr-view")),
      m_document(document) {}

int DiagramPrintout::PageCount() const {
    return m_document ? m_document->GetData().GetDiagramCount() : 0;
}

bool DiagramPrintout::HasPage(int page) {
    return page >= 1 && page <= PageCount();
}

void DiagramPrintout::GetPageInfo(int* minPage, int* maxPage, int* selPageFrom, int* selPageTo) {
    *minPage = 1;
    *maxPage = PageCount();
    *selPageFrom = 1;
    *selPageTo = PageCount();
}

bool DiagramPrintout::OnPrintPage(int page) {
    wxDC* dc = GetDC();
    VyrDiagram* diagram = HasPage(page) ? m_document->GetData().GetDiagram(page - 1) : nullptr;
    if (!dc || !diagram)
        return false;
    // The printer's pixels as logical units, on paper as in the preview (which scales them down
    // to its own bitmap).
    FitThisSizeToPaper(GetPaperRectPixels().GetSize());
    const wxRect area =
        GetLogicalPageMarginsRect(wxDocManager::GetDocumentManager()->GetPageSetupDialogData());
    int printerX = 0, printerY = 0, screenX = 0, screenY = 0;
    GetPPIPrinter(&printerX, &printerY);
    GetPPIScreen(&screenX, &screenY);
    const double scale = printerX > 0 && screenX > 0 ? double(printerX) / screenX : 1.0;
    if (area.width < 16 || area.height < 16)
        return false;

    OffsetLogicalOrigin(area.x, area.y);
    dc->SetPen(*wxTRANSPARENT_PEN);
    dc->SetBrush(wxBrush(diagram->GetBackgroundColour()));
    dc->DrawRectangle(0, 0, area.width, area.height);
    dc->SetBrush(wxNullBrush);
    dc->SetPen(wxNullPen);
    // Interval tools are drawn from the active document.
    m_document->MakeActive();
    PlotRectScope scope(diagram, VyrDiagramExport::GetPlotRect(area.width, area.height, scale));
    diagram->Paint(dc, true, false, false, scale, nullptr, false);
    return true;
}
