// A device context over a graphics context whose size the toolkit cannot know (one made from a
// native cairo context drawing into an SVG or PDF surface), told that size.
//
// The toolkit's graphics device context answers DestroyClippingRegion by clipping to its own
// size again; over a native context that size is 0 x 0, so the first DestroyClippingRegion of a
// painting (the axes do one to draw their arrow heads) clips everything drawn after it away, and
// every later SetClippingRegion only narrows that empty clip. Giving the context its size makes
// clipping behave as it does over a picture.
//
// Internal to the library; exported only for the tests.
#ifndef VYRBASE_DIAGRAM_VYRSIZEDGCDC_H
#define VYRBASE_DIAGRAM_VYRSIZEDGCDC_H

#include <wx/dc.h>
#include <wx/gdicmn.h>

#include "vyrbase/core/VyrExport.h"

class wxGraphicsContext;

class VYRBASE_API VyrSizedGCDC : public wxDC {
public:
    // Takes ownership of `context` (as wxGCDC does); `size` in pixels (user units).
    VyrSizedGCDC(wxGraphicsContext* context, const wxSize& size);
};

#endif
