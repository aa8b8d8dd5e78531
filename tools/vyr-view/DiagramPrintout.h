// What File > Print and Print Preview print: every diagram of a document, one a page, fitted to
// the printable area inside the margins of File > Page Setup. The diagram is painted as a view
// paints it, scaled to the printer's resolution (Paint's `scaled` and `scale`, printer pixels
// per screen pixel), so that fonts, pen widths and markers keep the size they have on screen
// while the page is drawn in the printer's own pixels. The preview draws the same pages smaller.
#ifndef VYR_VIEW_DIAGRAMPRINTOUT_H
#define VYR_VIEW_DIAGRAMPRINTOUT_H

#include <wx/print.h>

class ViewerDocument;

class DiagramPrintout : public wxPrintout {
public:
    explicit DiagramPrintout(ViewerDocument* document);

    bool OnPrintPage(int page) override;
    bool HasPage(int page) override;
    void GetPageInfo(int* minPage, int* maxPage, int* selPageFrom, int* selPageTo) override;

private:
    int PageCount() const;

    ViewerDocument* m_document;
};

#endif
