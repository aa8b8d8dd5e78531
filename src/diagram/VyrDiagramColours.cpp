// Colours derived from the diagram's background and axis colours, shared by the grid, the
// curves of other units and the note boxes. A black axis colour means a light drawing, whose
// derived colours are darker than the background; otherwise they are lighter.
#include "vyrbase/diagram/VyrDiagram.h"

#include <algorithm>

namespace {

// An unset colour reads as black rather than asserting.
wxColour OrBlack(const wxColour& c) {
    return c.IsOk() ? c : wxColour(0, 0, 0);
}

bool IsLightDrawing(const wxColour& axis) {
    const wxColour c = OrBlack(axis);
    return c.Red() == 0 && c.Green() == 0 && c.Blue() == 0;
}

// Each channel of c moved by delta, kept within 0..255; alpha opaque.
wxColour Shift(const wxColour& colour, int delta) {
    const wxColour c = OrBlack(colour);
    auto channel = [delta](unsigned char v) {
        return static_cast<unsigned char>(std::clamp(v + delta, 0, 255));
    };
    return wxColour(channel(c.Red()), channel(c.Green()), channel(c.Blue()));
}

}  // namespace

wxColour VyrDiagram::GetInnerColor(const wxColour& colour) {
    // Nine tenths of the way to white.
    auto channel = [](unsigned char v) {
        return static_cast<unsigned char>(v + static_cast<int>(0.9 * (255 - v)));
    };
    const wxColour c = OrBlack(colour);
    return wxColour(channel(c.Red()), channel(c.Green()), channel(c.Blue()));
}

wxColour VyrDiagram::GetDisabledCurvesColour() {
    return Shift(m_colourBackground, IsLightDrawing(m_colourAxis) ? -70 : 150);
}

void VyrDiagram::GetGridColour(wxColour& first, wxColour& second) {
    const bool light = IsLightDrawing(m_colourAxis);
    first = Shift(m_colourBackground, light ? -20 : 60);
    second = Shift(m_colourBackground, light ? -40 : 90);
}
