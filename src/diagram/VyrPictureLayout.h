// What the explained picture (VyrDiagramOption) decides before anything is drawn: the heading's
// lines, the scales of the other Y units beside the plot, and every text box placed so far, so
// that a later text can step aside or be left out instead of covering it. Internal to the
// diagram; it lives while Paint runs.
#ifndef VYRBASE_SRC_DIAGRAM_VYRPICTURELAYOUT_H
#define VYRBASE_SRC_DIAGRAM_VYRPICTURELAYOUT_H

#include <map>
#include <set>
#include <vector>

#include <wx/colour.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

class wxDC;
class wxFont;
class VyrNote;
class VyrOutilInterval;

// A piece of the heading: one quantity name, or the unit that closes a group of names.
struct VyrHeadingPiece {
    wxString text;
    wxColour colour;
    bool bold;
    // Where it is drawn (set by the layout).
    wxPoint at;
};

// One Y unit's scale: its divisor and unit label as the axis shows them, its graduation step,
// its colour, and (for the units beside the plot) the column of its axis line.
struct VyrUnitScale {
    wxString unit;
    double multiple = 1.0;
    double step = 1.0;
    wxString label;
    wxColour colour;
    // Axis line and width of the column right of it (labels), for the other units.
    int axisX = 0;
    int width = 0;
};

// The two labels of an interval tool (one for a point tool), where the layout put them.
struct VyrToolLabels {
    wxRect boxes[2];
    int count = 0;
};

// `text` with line breaks between words so that no line is wider than `width` pixels in `font`;
// a word wider than that alone ends its line in an ellipsis. The stored text is not changed.
wxString VyrFitToWidth(wxDC* dc, const wxString& text, const wxFont& font, int width);

class VyrTextBoxes {
public:
    // Whether `box` lies clear of every box placed so far.
    bool IsFree(const wxRect& box) const {
        for (const wxRect& placed : m_boxes)
            if (placed.Intersects(box))
                return false;
        return true;
    }
    void Add(const wxRect& box) { m_boxes.push_back(box); }
    // Places `box` when it is free; false (and nothing placed) when it would cover a text. A
    // box placed before is placed again (the axes are drawn twice over a spectrum).
    bool Place(const wxRect& box) {
        for (const wxRect& placed : m_boxes)
            if (placed == box)
                return true;
        if (!IsFree(box))
            return false;
        Add(box);
        return true;
    }
    const std::vector<wxRect>& GetBoxes() const { return m_boxes; }

    std::vector<VyrHeadingPiece> heading;
    // Scales of the plotted Y units, the main unit first.
    std::vector<VyrUnitScale> scales;
    // Note boxes moved aside from a text they would have covered (top left corners), and the
    // texts of notes too wide for the plot, as drawn: wrapped, a too long word shortened.
    std::map<const VyrNote*, wxPoint> noteCorners;
    std::map<const VyrNote*, wxString> noteTexts;
    // Notes that found no room clear of other texts: this picture leaves them out.
    std::set<const VyrNote*> hiddenNotes;
    std::map<const VyrOutilInterval*, VyrToolLabels> toolLabels;
    // The title as drawn: wrapped to the plot's width and kept inside it (empty: as stored).
    wxString titleText;
    wxPoint titleCorner;
    // Space around the labels of a scale, and the legend's box (empty when none is drawn).
    int gap = 3;
    wxRect legend;

private:
    std::vector<wxRect> m_boxes;
};

#endif
