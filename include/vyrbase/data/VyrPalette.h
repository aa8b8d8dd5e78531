// Colours for new curves that colour-blind readers can tell apart (the eight-colour set of Okabe
// and Ito, without its yellow, which a white background swallows): vermilion (the red of the
// set), blue, bluish green, reddish purple, orange, sky blue, black, then again from vermilion. The
// library's own new curves stay red (CreateCourbe); an application or tool that makes curves in
// numbers (a table import, a script) gives curve n the colour n, so that no two of the first seven
// look alike.
#ifndef VYRBASE_DATA_VYRPALETTE_H
#define VYRBASE_DATA_VYRPALETTE_H

#include <wx/colour.h>

#include "vyrbase/core/VyrExport.h"

class VyrBaseData;

class VYRBASE_API VyrPalette {
public:
    // The number of distinct colours before they repeat.
    static int GetCount();
    // Colour n, repeating after GetCount(); a negative n gives colour 0.
    static wxColour GetColour(int n);
    // The colour of the next curve made in `doc`: colour n for a document whose entity list
    // holds n curves. Colour 0 for a null document.
    static wxColour GetNextColour(VyrBaseData* doc);
};

#endif
