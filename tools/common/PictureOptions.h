// How the tools' pictures look: explained (a scale per unit, a legend, no text over text, units
// typeset, quantities without a unit on their own range) unless the user asks for the classic
// picture. `vyr render`, the viewer and Python's render share these rules.
#ifndef VYR_TOOLS_PICTUREOPTIONS_H
#define VYR_TOOLS_PICTUREOPTIONS_H

#include <wx/string.h>

class VyrDiagram;

struct PictureOptions {
    // The classic picture, exactly as the library paints it without options.
    bool plain = false;
    // A legend when more than one curve is plotted (explained pictures only).
    bool legend = true;
    // The unit of the main (left) axis; empty keeps the diagram's.
    wxString yUnit;
};

namespace vyrtools {

// Sets the diagram's options and main unit. False, with a one-line reason, when the asked unit
// is not one of the diagram's plotted Y units (the diagram is then left as it was).
bool ApplyPictureOptions(VyrDiagram& diagram, const PictureOptions& options, wxString& reason);

}  // namespace vyrtools

#endif
