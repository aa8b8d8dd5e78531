// The layout of the explained picture (VyrDiagramOption): the scale of every plotted Y unit, the
// heading that names the plotted quantities in a band above the plot, and the space that the
// scales of the other units take right of it. The classic picture never comes here.
#include <algorithm>
#include <cmath>

#include <wx/control.h>
#include <wx/dc.h>
#include <wx/font.h>
#include <wx/pen.h>
#include <wx/arrstr.h>

#include "diagram/VyrDiagramScaleGuard.h"
#include "diagram/VyrPictureLayout.h"
#include "diagram/VyrPixelRound.h"
#include "diagram/VyrUnitTypeset.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// The heading takes at most this many lines; what does not fit ends in an ellipsis.
const int kMaxHeadingLines = 3;
// A plot smaller than this keeps the whole area: a heading or scales that would leave less
// are not worth a plot nobody can read.
const int kMinPlotSide = 48;
// More graduations than the step rule ever gives; a guard against absurd ranges.
const double kMaxGraduations = 10000.0;
const wchar_t kEllipsis[] = L"\u2026";

wxString UnitOf(const VyrVecteur* v) {
    return v ? v->GetUnite() : wxString();
}

wxFont WithWeight(const wxFont& font, int weight) {
    wxFont copy(font);
    if (copy.IsOk())
        copy.SetNumericWeight(weight);
    return copy;
}

// The extent of `text` in `font`, measured with the font selected: a font passed beside the
// text is not honoured by every context's measure of several lines.
wxSize Extent(wxDC* dc, const wxString& text, const wxFont& font) {
    const wxFont selected = dc->GetFont();
    dc->SetFont(font);
    wxCoord w = 0, h = 0;
    dc->GetMultiLineTextExtent(text, &w, &h);
    dc->SetFont(selected);
    return wxSize(w, h);
}

// The title box's margin around its text (as the title painter draws it).
const int kTitreMargin = 10;

// `text` with line breaks put between words so that no line is wider than `width` (a word
// wider than that stays whole on its own line).
wxString WrapToWidth(wxDC* dc, const wxString& text, const wxFont& font, int width) {
    wxString wrapped;
    for (const wxString& paragraph : wxSplit(text, '\n', '\0')) {
        wxString line;
        for (const wxString& word : wxSplit(paragraph, ' ', '\0')) {
            const wxString longer = line.empty() ? word : line + L" " + word;
            if (!line.empty() && Extent(dc, longer, font).x > width) {
                wrapped += line + L"\n";
                line = word;
            } else {
                line = longer;
            }
        }
        wrapped += line + L"\n";
    }
    wrapped.RemoveLast();
    return wrapped;
}

// `text` shortened with an ellipsis to `width` pixels in `font`.
wxString Shorten(wxDC* dc, const wxString& text, const wxFont& font, int width) {
    const wxFont selected = dc->GetFont();
    dc->SetFont(font);
    const wxString shown =
        wxControl::Ellipsize(text, *dc, wxELLIPSIZE_END, width, wxELLIPSIZE_FLAGS_NONE);
    dc->SetFont(selected);
    return shown;
}

}  // namespace

wxString VyrFitToWidth(wxDC* dc, const wxString& text, const wxFont& font, int width) {
    // A word wider than the whole line (a formula, a path) would still run off: that line ends
    // in an ellipsis instead.
    wxString fitted;
    for (const wxString& line : wxSplit(WrapToWidth(dc, text, font, width), '\n', '\0')) {
        if (!fitted.empty())
            fitted += L"\n";
        fitted += Extent(dc, line, font).x > width ? Shorten(dc, line, font, width) : line;
    }
    return fitted;
}

wxArrayString VyrDiagram::GetPlottedYUnits() const {
    wxArrayString units;
    units.Add(m_sUy);
    for (VyrCourbe* courbe : m_aPlottedCourbes) {
        const wxString unit = courbe ? UnitOf(courbe->GetVy()) : wxString();
        if (courbe && units.Index(unit, true) == wxNOT_FOUND)
            units.Add(unit);
    }
    // The main unit has no place when no plotted curve is in it.
    bool mainPlotted = false;
    for (VyrCourbe* courbe : m_aPlottedCourbes)
        mainPlotted = mainPlotted || (courbe && UnitOf(courbe->GetVy()) == m_sUy);
    if (!mainPlotted && units.size() > 1)
        units.RemoveAt(0);
    return units;
}

wxString VyrDiagram::ShowUnit(const wxString& unit) const {
    return HasOption(VYR_OPTION_TYPESET_UNITS) ? VyrTypesetUnit(unit) : unit;
}

void VyrDiagram::LayOut(wxDC* dc) {
    VyrTextBoxes& layout = *m_pTextBoxes;
    const int f = m_iLineScale;
    layout.gap = 3 * f;
    const wxFont font = dc->GetFont();
    const wxFont bold = WithWeight(font, wxFONTWEIGHT_BOLD);
    wxRect plot = m_rectArea;
    const wxArrayString units = GetPlottedYUnits();
    const bool severalUnits = units.size() > 1;

    // 1. Every plotted unit's scale, the main one from the displayed range.
    const VyrScale mainRange = m_currentScale;
    {
        VyrDiagramScaleGuard guard(*this);
        for (size_t k = 0; k < units.size(); ++k) {
            const wxString& unit = units[k];
            if (unit != m_sUy && !SetCurrentScaleForUnits(m_sUx, unit))
                continue;
            const VyrScale& s = unit == m_sUy ? mainRange : m_currentScale;
            VyrUnitScale scale;
            scale.unit = unit;
            scale.multiple = GetAxisMultiple(
                std::max(std::fabs(s.GetYmin()), std::fabs(s.GetYmax())), unit, scale.label);
            scale.step = GetGraduationStep(s.GetYmax() - s.GetYmin(), scale.multiple);
            scale.colour = m_colourAxis;
            for (VyrCourbe* courbe : m_aPlottedCourbes) {
                if (severalUnits && courbe && UnitOf(courbe->GetVy()) == unit) {
                    scale.colour = courbe->GetColor();
                    break;
                }
            }
            // The other units' columns: the widest label and the unit above them.
            if (unit != m_sUy && HasOption(VYR_OPTION_UNIT_SCALES)) {
                int widest = Extent(dc, ShowUnit(scale.label), font).x;
                const double first = std::trunc(s.GetYmin() / scale.step);
                const double last = std::trunc(s.GetYmax() / scale.step);
                if (std::isfinite(first) && std::isfinite(last) && last - first <= kMaxGraduations)
                    for (double j = first; j <= last; j += 1.0)
                        widest = std::max(
                            widest,
                            Extent(dc, FormatGraduation(j * scale.step, scale.multiple), font).x);
                scale.width = 9 * f + widest + 2 * layout.gap;
            }
            layout.scales.push_back(scale);
        }
    }

    // 2. The other units' scales right of the plot, the first on its right edge.
    int columns = 0;
    for (const VyrUnitScale& scale : layout.scales)
        columns += scale.width;
    if (columns > 0 && plot.width - columns >= kMinPlotSide) {
        plot.width -= columns;
        int x = plot.x + plot.width - 1;
        for (VyrUnitScale& scale : layout.scales) {
            if (scale.width == 0)
                continue;
            scale.axisX = x;
            x += scale.width;
        }
    } else {
        for (VyrUnitScale& scale : layout.scales)
            scale.width = 0;
    }

    // 3. The heading: the plotted quantities, grouped by unit when every unit has its scale,
    // flowed over as many lines as the area's width asks.
    if (HasOption(VYR_OPTION_TIDY_LAYOUT)) {
        std::vector<VyrHeadingPiece> pieces;
        const bool grouped = HasOption(VYR_OPTION_UNIT_SCALES);
        for (const VyrUnitScale& scale : layout.scales) {
            std::vector<VyrCourbe*> named;
            for (VyrCourbe* courbe : m_aPlottedCourbes)
                if (courbe && (!grouped || UnitOf(courbe->GetVy()) == scale.unit))
                    named.push_back(courbe);
            for (size_t k = 0; k < named.size(); ++k) {
                const bool mainUnit = UnitOf(named[k]->GetVy()) == m_sUy;
                const VyrVecteur* vy = named[k]->GetVy();
                const wxString name = vy ? vy->GetGrandeur() : wxString();
                const bool own = mainUnit || m_bAllCurvesColour || grouped;
                pieces.push_back({k + 1 < named.size() ? name + L"," : name,
                                  own ? named[k]->GetColor() : GetDisabledCurvesColour(), mainUnit,
                                  wxPoint()});
            }
            if (!named.empty() && !scale.label.empty())
                pieces.push_back({L"(" + ShowUnit(scale.label) + L")",
                                  grouped ? scale.colour : m_colourAxis, false, wxPoint()});
            if (!grouped)
                break;
        }
        const int space = Extent(dc, L" ", font).x;
        const int groupSpace = 3 * space;
        const int lineHeight = Extent(dc, L"Mg", bold).y;
        int x = 0, line = 0;
        for (size_t k = 0; k < pieces.size() && line < kMaxHeadingLines; ++k) {
            VyrHeadingPiece& piece = pieces[k];
            const wxFont& pieceFont = piece.bold ? bold : font;
            int w = Extent(dc, piece.text, pieceFont).x;
            // A group after the first starts after a wider space.
            const bool newGroup = k > 0 && pieces[k - 1].text.StartsWith(L"(");
            const int before = x == 0 ? 0 : (newGroup ? groupSpace : space);
            if (x > 0 && x + before + w > m_rectArea.width) {
                ++line;
                x = 0;
                if (line == kMaxHeadingLines) {
                    // No room for the rest: the last line ends in an ellipsis.
                    VyrHeadingPiece& last = layout.heading.back();
                    last.text += kEllipsis;
                    break;
                }
            }
            if (w > m_rectArea.width) {
                piece.text = Shorten(dc, piece.text, pieceFont, m_rectArea.width);
                w = Extent(dc, piece.text, pieceFont).x;
            }
            x += x == 0 ? 0 : before;
            piece.at = wxPoint(m_rectArea.x + x, m_rectArea.y + line * lineHeight);
            x += w;
            layout.heading.push_back(piece);
        }
        // The last line's ellipsis must fit too.
        if (!layout.heading.empty()) {
            VyrHeadingPiece& last = layout.heading.back();
            const wxFont& lastFont = last.bold ? bold : font;
            if (last.at.x + Extent(dc, last.text, lastFont).x > m_rectArea.GetRight())
                last.text = Shorten(dc, last.text, lastFont, m_rectArea.GetRight() - last.at.x);
        }
        const int height =
            layout.heading.empty() ? 0 : layout.heading.back().at.y - m_rectArea.y + lineHeight;
        const int band = height > 0 ? height + 2 * layout.gap : 0;
        if (plot.height - band >= kMinPlotSide) {
            plot.y += band;
            plot.height -= band;
        }
        for (const VyrHeadingPiece& piece : layout.heading) {
            const wxSize size = Extent(dc, piece.text, piece.bold ? bold : font);
            layout.Add(wxRect(piece.at, size));
        }
    }

    m_rectPlot = plot;
    m_rectHit = wxRect(plot.x - 6, plot.y - 6, plot.width + 12, plot.height + 12);
    UpdateWorld();
}

void VyrDiagram::PaintHeading(wxDC* dc) {
    if (!m_pTextBoxes || m_pTextBoxes->heading.empty())
        return;
    const wxFont font = dc->GetFont();
    const wxColour text = dc->GetTextForeground();
    dc->DestroyClippingRegion();
    for (const VyrHeadingPiece& piece : m_pTextBoxes->heading) {
        dc->SetFont(piece.bold ? WithWeight(font, wxFONTWEIGHT_BOLD) : font);
        dc->SetTextForeground(piece.colour);
        dc->DrawText(piece.text, piece.at);
    }
    dc->SetClippingRegion(m_rectPlot);
    dc->SetFont(font);
    dc->SetTextForeground(text);
}

void VyrDiagram::PaintUnitScales(wxDC* dc) {
    if (!m_pTextBoxes)
        return;
    VyrTextBoxes& layout = *m_pTextBoxes;
    const int f = m_iLineScale;
    const int top = m_rectPlot.y;
    const int bottom = top + m_rectPlot.height - 1;
    const wxPen pen = dc->GetPen();
    const wxColour text = dc->GetTextForeground();
    VyrDiagramScaleGuard guard(*this);
    dc->DestroyClippingRegion();
    for (const VyrUnitScale& scale : layout.scales) {
        if (scale.width == 0 || !SetCurrentScaleForUnits(m_sUx, scale.unit))
            continue;
        dc->SetPen(wxPen(scale.colour, f));
        dc->SetTextForeground(scale.colour);
        dc->DrawLine(scale.axisX, top, scale.axisX, bottom + 1);
        // The unit atop the column, then the numbers, which give way to it.
        const wxString unit =
            scale.label.empty() ? wxString() : L"(" + ShowUnit(scale.label) + L")";
        if (!unit.empty()) {
            wxCoord w = 0, h = 0;
            dc->GetTextExtent(unit, &w, &h);
            const wxRect box(scale.axisX + 2 * f, top, w, h);
            if (layout.Place(box))
                dc->DrawText(unit, box.GetTopLeft());
        }
        const VyrScale& s = m_currentScale;
        const double first = std::trunc(s.GetYmin() / scale.step);
        const double last = std::trunc(s.GetYmax() / scale.step);
        if (!std::isfinite(first) || !std::isfinite(last) || last - first > kMaxGraduations)
            continue;
        for (double j = first; j <= last; j += 1.0) {
            const int py = VyrRoundPixel(j * scale.step * m_dAy + m_dBy);
            if (py < top || py > bottom)
                continue;
            dc->DrawLine(scale.axisX, py, scale.axisX + 6 * f, py);
            // + 0.0: a graduation at -0 reads "0".
            const wxString label = FormatGraduation(j * scale.step + 0.0, scale.multiple);
            wxCoord w = 0, h = 0;
            dc->GetTextExtent(label, &w, &h);
            const wxRect box(scale.axisX + 9 * f, py - h / 2 - f, w, h);
            if (layout.Place(box))
                dc->DrawText(label, box.GetTopLeft());
        }
    }
    dc->SetClippingRegion(m_rectPlot);
    dc->SetPen(pen);
    dc->SetTextForeground(text);
}

void VyrDiagram::ReserveUserTexts(wxDC* dc) {
    VyrTextBoxes& layout = *m_pTextBoxes;
    // The title where the user put it, wrapped and moved only as far as the plot
    // (the clipping of every text but the heading's and the scales') asks.
    VyrNote* titre = m_pNoteTitre;
    if (titre && titre->GetState() != VYR_NOTE_MOVING && titre->IsShown()) {
        const wxFont bold = WithWeight(dc->GetFont(), wxFONTWEIGHT_BOLD);
        layout.titleText =
            VyrFitToWidth(dc, titre->GetText(), bold, m_rectPlot.width - 2 * kTitreMargin);
        const wxSize text = Extent(dc, layout.titleText, bold);
        wxRect box(GetTitrePos(titre),
                   wxSize(text.x + 2 * kTitreMargin, text.y + 2 * kTitreMargin));
        box.x = std::max(m_rectPlot.x, std::min(box.x, m_rectPlot.GetRight() + 1 - box.width));
        box.y = std::max(m_rectPlot.y, std::min(box.y, m_rectPlot.GetBottom() + 1 - box.height));
        layout.titleCorner = box.GetTopLeft();
        layout.Add(box);
    }
    ReserveNotes(dc);
    ReserveToolLabels(dc);
    if (HasOption(VYR_OPTION_LEGEND))
        PlaceLegend(dc);
}
