// The two system colours that notes and titles use when selected (highlight and highlight
// text). The toolkit answers them when it has a display; without one (tests, servers rendering
// to bitmaps) asking it would crash on GTK, so a fixed fallback is used instead: highlight
// (0, 120, 215), highlight text white.
#ifndef VYRBASE_SRC_DIAGRAM_VYRSYSTEMCOLOURS_H
#define VYRBASE_SRC_DIAGRAM_VYRSYSTEMCOLOURS_H

#include <wx/colour.h>

namespace VyrSystemColours {

// True when the toolkit can answer system colours: on GTK, when GDK has a default display;
// on every other port, always.
bool HasDisplay();

// wxSYS_COLOUR_HIGHLIGHT, or (0, 120, 215) without a display.
wxColour Highlight();
// wxSYS_COLOUR_HIGHLIGHTTEXT, or white without a display.
wxColour HighlightText();

}  // namespace VyrSystemColours

#endif
