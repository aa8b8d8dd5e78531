// The toolkit's graphics device context, with the size of its drawing surface supplied.
#include "diagram/VyrSizedGCDC.h"

#include <wx/dcgraph.h>

namespace {

class SizedGCDCImpl : public wxGCDCImpl {
public:
    SizedGCDCImpl(wxDC* owner, wxGraphicsContext* context, const wxSize& size)
        : wxGCDCImpl(owner, context), m_size(size) {}

protected:
    void DoGetSize(int* width, int* height) const override {
        if (width)
            *width = m_size.x;
        if (height)
            *height = m_size.y;
    }

private:
    wxSize m_size;
};

}  // namespace

VyrSizedGCDC::VyrSizedGCDC(wxGraphicsContext* context, const wxSize& size)
    : wxDC(new SizedGCDCImpl(this, context, size)) {}
