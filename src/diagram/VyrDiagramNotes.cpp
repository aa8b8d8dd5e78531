// Notes of a curve (a text box tied to one point by a leader line), the diagram's title box,
// the title's position as fractions of the plot rectangle, and the placing of a label next to
// a point without leaving the plot rectangle.
#include <algorithm>
#include <cmath>

#include <wx/brush.h>
#include <wx/dc.h>
#include <wx/font.h>
#include <wx/pen.h>

#include "diagram/VyrCurvePoints.h"
#include "diagram/VyrDiagramScaleGuard.h"
#include "diagram/VyrPictureLayout.h"
#include "diagram/VyrSystemColours.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// Margins between a box and its text.
const int kNoteMargin = 4;
const int kTitreMargin = 10;

const wxColour kTitreOrange(255, 153, 0);

// The mark of a note's text shortened to fit the picture.
const wchar_t kEllipsis[] = L"\u2026";

wxString UnitOf(const VyrVecteur* v) {
    return v ? v->GetUnite() : wxString();
}

// Truncation toward zero of a pixel position, saturated so that absurd fractions stay far
// outside any device instead of overflowing.
int TruncatePixel(double v) {
    const double limit = 1 << 28;
    if (!(v > -limit))
        return -(1 << 28);
    if (v > limit)
        return 1 << 28;
    return static_cast<int>(v);
}

}  // namespace

void VyrDiagram::PaintNotes(wxDC* dc, VyrCourbe* courbe, const wxColour& colour) {
    if (!dc || !courbe || courbe->GetNotesCount() == 0)
        return;
    const wxColour highlight = VyrSystemColours::Highlight();
    const wxColour highlightText = VyrSystemColours::HighlightText();
    const wxColour inner = GetInnerColor(colour);
    const VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
    const wxColour oldText = dc->GetTextForeground();

    wxVyrListNoteNode* node = courbe->GetFirstNote();
    while (node) {
        VyrNote* note = courbe->GetNextNote(&node);
        if (!note)
            continue;
        // A note on an invalid or missing point is not drawn, not even its leader line.
        const int index = note->GetPointIndex();
        if (!points.IsValid(index))
            continue;
        const bool selected = note->GetState() != VYR_NOTE_NORMAL;
        dc->SetPen(wxPen(selected ? highlight : colour, m_iLineScale, wxPENSTYLE_SOLID));
        dc->SetBrush(wxBrush(selected ? highlight : inner, wxBRUSHSTYLE_SOLID));
        dc->SetTextForeground(selected ? highlightText : *wxBLACK);
        PaintNote(dc, note, points.Pixel(index));
        dc->SetPen(wxNullPen);
        dc->SetBrush(wxNullBrush);
    }
    dc->SetTextForeground(oldText);
}

void VyrDiagram::PaintNote(wxDC* dc, VyrNote* note, wxPoint anchor) {
    if (!dc || !note)
        return;
    const VyrWorldTransform world{m_dAx, m_dBx, m_dAy, m_dBy};
    const wxPoint raw = world.ToPixel(note->GetPositionX(), note->GetPositionY());
    wxPoint corner(VyrSafeCoord(raw.x), VyrSafeCoord(raw.y));
    wxString text = note->GetText();
    // The explained picture may have moved the box aside from a text it would have covered,
    // and wrapped a text wider than the plot.
    if (m_pTextBoxes) {
        auto moved = m_pTextBoxes->noteCorners.find(note);
        if (moved != m_pTextBoxes->noteCorners.end())
            corner = moved->second;
        if (m_pTextBoxes->hiddenNotes.count(note))
            return;
        auto fitted = m_pTextBoxes->noteTexts.find(note);
        if (fitted != m_pTextBoxes->noteTexts.end())
            text = fitted->second;
    }
    anchor = wxPoint(VyrSafeCoord(anchor.x), VyrSafeCoord(anchor.y));

    if (note->GetState() == VYR_NOTE_MOVING) {
        // The box follows the mouse and is drawn by the caller that moves it.
        dc->DrawLine(anchor, wxPoint(corner.x + note->GetBoxWidth() / 2,
                                     corner.y + note->GetBoxHeight() / 2));
        return;
    }

    wxCoord textWidth = 0;
    wxCoord textHeight = 0;
    dc->GetMultiLineTextExtent(text, &textWidth, &textHeight);
    const int width = textWidth + 2 * kNoteMargin;
    const int height = textHeight + 2 * kNoteMargin;
    note->SetBoxSize(width, height);

    dc->DrawLine(anchor, wxPoint(corner.x + width / 2, corner.y + height / 2));
    dc->DrawRectangle(corner.x, corner.y, width, height);
    dc->DrawText(text, corner.x + kNoteMargin, corner.y + kNoteMargin);
}

void VyrDiagram::PaintTitre(wxDC* dc) {
    VyrNote* titre = m_pNoteTitre;
    if (!dc || !titre || titre->GetState() == VYR_NOTE_MOVING || !titre->IsShown())
        return;
    const bool selected = titre->GetState() == VYR_NOTE_SELECTED;
    const wxColour highlight = VyrSystemColours::Highlight();

    const wxFont oldFont = dc->GetFont();
    const wxColour oldText = dc->GetTextForeground();
    dc->SetPen(wxPen(selected ? highlight : kTitreOrange, m_iLineScale, wxPENSTYLE_SOLID));
    dc->SetBrush(wxBrush(selected ? highlight : GetInnerColor(kTitreOrange), wxBRUSHSTYLE_SOLID));
    dc->SetTextForeground(selected ? VyrSystemColours::HighlightText() : *wxBLACK);
    wxFont bold = oldFont;
    if (bold.IsOk())
        bold.SetNumericWeight(wxFONTWEIGHT_BOLD);
    dc->SetFont(bold);

    // The explained picture wraps the title to the picture's width and keeps it inside.
    const bool laidOut = m_pTextBoxes && !m_pTextBoxes->titleText.empty();
    const wxString text = laidOut ? m_pTextBoxes->titleText : titre->GetText();
    const wxPoint corner = laidOut ? m_pTextBoxes->titleCorner : GetTitrePos(titre);
    wxCoord textWidth = 0;
    wxCoord textHeight = 0;
    dc->GetMultiLineTextExtent(text, &textWidth, &textHeight);
    const int width = textWidth + 2 * kTitreMargin;
    const int height = textHeight + 2 * kTitreMargin;
    titre->SetBoxSize(width, height);
    dc->DrawRectangle(corner.x, corner.y, width, height);
    dc->DrawText(text, corner.x + kTitreMargin, corner.y + kTitreMargin);

    dc->SetPen(wxNullPen);
    dc->SetBrush(wxNullBrush);
    dc->SetFont(oldFont);
    dc->SetTextForeground(oldText);
}

wxPoint VyrDiagram::GetTitrePos(VyrNote* note) {
    if (!note)
        return wxPoint(0, 0);
    // Truncated, not rounded.
    return wxPoint(TruncatePixel(m_rectPlot.width * note->GetPositionX() + m_rectPlot.x),
                   TruncatePixel(m_rectPlot.height * note->GetPositionY() + m_rectPlot.y));
}

void VyrDiagram::SetTitrePos(VyrNote* note, wxPoint p) {
    if (!note || m_rectPlot.width < 1 || m_rectPlot.height < 1)
        return;
    note->SetPosition(static_cast<double>(p.x - m_rectPlot.x) / m_rectPlot.width,
                      static_cast<double>(p.y - m_rectPlot.y) / m_rectPlot.height);
}

// The corner of a w x h text next to (x, y): preferably right of / below the point as asked,
// on the other side when that leaves the plot rectangle, and finally clamped into it (the
// upper bound last, so a text wider than the rectangle ends at its right edge).
wxPoint VyrDiagram::GetTextPos(int x, int y, int width, int height, bool toRight, bool below) {
    x = VyrSafeCoord(x);
    y = VyrSafeCoord(y);
    width = VyrSafeCoord(width);
    height = VyrSafeCoord(height);
    const int left = m_rectPlot.x;
    const int top = m_rectPlot.y;
    const int right = left + m_rectPlot.width - 1;
    const int bottom = top + m_rectPlot.height - 1;

    const int rightColumn = x + 6;
    const int leftColumn = x - width - 5;
    int column = toRight ? rightColumn : leftColumn;
    if (column - 3 < left)
        column = rightColumn;
    if (column + width + 3 > right)
        column = leftColumn;

    const int belowRow = y + 6;
    const int aboveRow = y - height - 5;
    int row = below ? belowRow : aboveRow;
    if (row < top)
        row = belowRow;
    if (row + height > bottom)
        row = aboveRow;

    column = std::min(std::max(column, left), right - width);
    row = std::min(std::max(row, top), bottom - height);
    return wxPoint(column, row);
}

bool VyrDiagram::PlaceNoteBox(wxDC* dc, const wxString& text, wxPoint stored, wxRect& box) const {
    const VyrTextBoxes& layout = *m_pTextBoxes;
    wxCoord w = 0, h = 0;
    dc->GetMultiLineTextExtent(text, &w, &h);
    box = wxRect(stored, wxSize(w + 2 * kNoteMargin, h + 2 * kNoteMargin));
    if (box.width > m_rectPlot.width || box.height > m_rectPlot.height)
        return false;
    // Inside the plot first (texts are clipped to it), then clear of other texts: downward first,
    // then upward, a quarter of the box's height at a time, as far as the plot reaches.
    const int top = m_rectPlot.y;
    const int bottom = m_rectPlot.GetBottom();
    box.x = std::max(m_rectPlot.x, std::min(box.x, m_rectPlot.GetRight() + 1 - box.width));
    box.y = std::max(top, std::min(box.y, bottom + 1 - box.height));
    const int step = std::max(2, (box.height + layout.gap) / 4);
    for (int k = 0; k <= 2 * (m_rectPlot.height / step + 1); ++k) {
        wxRect candidate = box;
        candidate.y += (k % 2 == 1 ? 1 : -1) * ((k + 1) / 2) * step;
        if (candidate.y < top || candidate.GetBottom() > bottom)
            continue;
        if (layout.IsFree(candidate)) {
            box = candidate;
            return true;
        }
    }
    return false;
}

void VyrDiagram::ReserveNotes(wxDC* dc) {
    if (!m_pTextBoxes || !HasOption(VYR_OPTION_TIDY_LAYOUT))
        return;
    VyrTextBoxes& layout = *m_pTextBoxes;
    VyrDiagramScaleGuard guard(*this);
    // In the order PaintCurves draws them: the other units' curves first.
    for (int pass = 0; pass < 2; ++pass) {
        for (VyrCourbe* courbe : m_aPlottedCourbes) {
            if (!courbe || courbe->GetNotesCount() == 0 ||
                (UnitOf(courbe->GetVy()) == m_sUy) != (pass == 1) ||
                !SetCurrentScaleForUnits(UnitOf(courbe->GetVx()), UnitOf(courbe->GetVy())))
                continue;
            const VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
            for (auto* node = courbe->GetNotes().GetFirst(); node; node = node->GetNext()) {
                const VyrNote* note = node->GetData();
                if (!note || note->GetState() == VYR_NOTE_MOVING ||
                    !points.IsValid(note->GetPointIndex()))
                    continue;
                const wxPoint raw =
                    points.GetWorld().ToPixel(note->GetPositionX(), note->GetPositionY());
                const wxPoint stored(VyrSafeCoord(raw.x), VyrSafeCoord(raw.y));
                // The text as written; wrapped when wider than the plot; one shortened line
                // when the wrapped box finds no room; left out of this picture when even that
                // would cover another text.
                const int room = m_rectPlot.width - 2 * kNoteMargin;
                wxString text = note->GetText();
                wxRect box;
                bool placed = PlaceNoteBox(dc, text, stored, box);
                if (!placed && box.width > m_rectPlot.width) {
                    text = VyrFitToWidth(dc, text, dc->GetFont(), room);
                    placed = PlaceNoteBox(dc, text, stored, box);
                }
                if (!placed) {
                    const wxString firstLine = note->GetText().BeforeFirst('\n');
                    text = VyrFitToWidth(dc, firstLine, dc->GetFont(), room).BeforeFirst('\n');
                    if (text != firstLine && !text.EndsWith(kEllipsis))
                        text += kEllipsis;
                    placed = PlaceNoteBox(dc, text, stored, box);
                }
                if (!placed) {
                    layout.hiddenNotes.insert(note);
                    continue;
                }
                if (text != note->GetText())
                    layout.noteTexts[note] = text;
                if (box.GetTopLeft() != stored)
                    layout.noteCorners[note] = box.GetTopLeft();
                layout.Add(box);
            }
        }
    }
}
