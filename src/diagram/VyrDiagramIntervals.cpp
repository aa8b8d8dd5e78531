// The interval tools of the active document: a measured rectangle between two points, labelled
// with its width and height, or a labelled point when both corners are equal. Each tool is drawn
// in the ranges of its own units, like a curve.
#include <algorithm>
#include <cmath>

#include <wx/brush.h>
#include <wx/dc.h>
#include <wx/font.h>
#include <wx/pen.h>

#include "diagram/VyrCurvePoints.h"
#include "diagram/VyrDiagramScaleGuard.h"
#include "diagram/VyrPictureLayout.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// The labels' font: the context's font raised to at least 11 points, bold when selected.
wxFont LabelFont(const wxFont& base, bool selected) {
    wxFont font = base.IsOk() ? base : *wxNORMAL_FONT;
    if (font.GetPointSize() < 11)
        font.SetPointSize(11);
    font.SetNumericWeight(selected ? wxFONTWEIGHT_BOLD : wxFONTWEIGHT_NORMAL);
    return font;
}

// The texts of an interval's labels: its width in the X unit, its height in the Y unit.
wxString AcrossText(VyrDiagram& diagram, const VyrOutilInterval* tool, const wxString& unit) {
    return wxString::Format(
        "%s %s", diagram.FormatValueOnGraph(std::fabs(tool->GetX1() - tool->GetX0()), true), unit);
}

wxString UpwardText(VyrDiagram& diagram, const VyrOutilInterval* tool, const wxString& unit) {
    return wxString::Format(
        "%s %s", diagram.FormatValueOnGraph(std::fabs(tool->GetY1() - tool->GetY0()), false), unit);
}

bool IsPointTool(const VyrOutilInterval* tool) {
    return tool->GetX0() == tool->GetX1() && tool->GetY0() == tool->GetY1();
}

// How many lines up or down a tool's label may step to find a free place.
const int kMaxLabelSteps = 6;

}  // namespace

void VyrDiagram::ReserveToolLabels(wxDC* dc) {
    VyrBaseData* active = VyrBaseData::GetActiveBase();
    if (!m_pTextBoxes || !HasOption(VYR_OPTION_TIDY_LAYOUT) || !active)
        return;
    VyrTextBoxes& layout = *m_pTextBoxes;
    VyrDiagramScaleGuard guard(*this);
    const wxFont drawingFont = dc->GetFont();
    wxVyrListEntityNode* node = active->GetFirstEntityNode(VYR_KIND_OUTIL_INTERVAL);
    while (node) {
        auto* tool =
            static_cast<VyrOutilInterval*>(active->GetNextEntity(&node, VYR_KIND_OUTIL_INTERVAL));
        if (!tool || tool->GetAbs() != m_sUx ||
            !SetCurrentScaleForUnits(tool->GetAbs(), tool->GetOrd()))
            continue;
        const wxFont font = LabelFont(drawingFont, tool->IsSelected());
        const wxPoint p0 = RealToPixel(tool->GetX0(), tool->GetY0());
        const wxPoint p1 = RealToPixel(tool->GetX1(), tool->GetY1());
        // Each label's places, the classic one first; the first clear of every text wins.
        std::vector<std::vector<wxRect>> places;
        auto extent = [&](const wxString& text) {
            wxCoord w = 0, h = 0;
            dc->SetFont(font);
            dc->GetTextExtent(text, &w, &h);
            return wxSize(w, h);
        };
        if (IsPointTool(tool)) {
            const wxSize e = extent(tool->GetEtiq1());
            const bool right = tool->GetX0() >= 0, below = tool->GetY0() < 0;
            places.push_back({});
            for (int k = 0; k < 4; ++k)
                places.back().push_back(
                    wxRect(GetTextPos(p0.x, p0.y, e.x, e.y, (k & 1) ? !right : right,
                                      (k & 2) ? !below : below),
                           e));
        } else {
            const int leftmost = std::min(p0.x, p1.x), rightmost = std::max(p0.x, p1.x);
            const int topmost = std::min(p0.y, p1.y), bottommost = std::max(p0.y, p1.y);
            const wxSize across = extent(AcrossText(*this, tool, ShowUnit(tool->GetAbs())));
            const int acrossX = leftmost + (rightmost - leftmost + 1 - across.x) / 2;
            places.push_back(
                {wxRect(acrossX, GetTextPos(acrossX, topmost, across.x, across.y, true, false).y,
                        across.x, across.y),
                 wxRect(acrossX, bottommost + 6, across.x, across.y),
                 wxRect(acrossX, topmost + 6, across.x, across.y)});
            const wxSize upward = extent(UpwardText(*this, tool, ShowUnit(tool->GetOrd())));
            const int upwardY = topmost + (bottommost - topmost + 1 - upward.y) / 2;
            places.push_back(
                {wxRect(GetTextPos(rightmost, upwardY, upward.x, upward.y, true, true).x, upwardY,
                        upward.x, upward.y),
                 wxRect(leftmost - upward.x - 5, upwardY, upward.x, upward.y),
                 wxRect(rightmost - upward.x - 6, upwardY, upward.x, upward.y)});
        }
        VyrToolLabels& labels = layout.toolLabels[tool];
        labels.count = 0;
        for (std::vector<wxRect>& candidates : places) {
            // When every place beside the tool is taken, the same places further up or down,
            // a line at a time, inside the plot.
            const size_t near = candidates.size();
            for (int k = 1; k <= kMaxLabelSteps; ++k) {
                for (size_t c = 0; c < near; ++c) {
                    for (int sign : {1, -1}) {
                        wxRect moved = candidates[c];
                        moved.y += sign * k * (moved.height + layout.gap);
                        if (m_rectPlot.Contains(moved))
                            candidates.push_back(moved);
                    }
                }
            }
            wxRect chosen = candidates.front();
            for (const wxRect& candidate : candidates) {
                if (layout.IsFree(candidate)) {
                    chosen = candidate;
                    break;
                }
            }
            layout.Add(chosen);
            labels.boxes[labels.count++] = chosen;
        }
    }
    dc->SetFont(drawingFont);
}

void VyrDiagram::PaintOutilIntervals(wxDC* dc) {
    VyrBaseData* active = VyrBaseData::GetActiveBase();
    if (!dc || !active)
        return;
    // Each tool is drawn in its own units' ranges; the main range comes back at the end.
    VyrDiagramScaleGuard guard(*this);
    wxVyrListEntityNode* node = active->GetFirstEntityNode(VYR_KIND_OUTIL_INTERVAL);
    while (node) {
        auto* tool =
            static_cast<VyrOutilInterval*>(active->GetNextEntity(&node, VYR_KIND_OUTIL_INTERVAL));
        if (!tool || tool->GetAbs() != m_sUx)
            continue;
        if (SetCurrentScaleForUnits(tool->GetAbs(), tool->GetOrd()))
            PaintOutilInterval(dc, tool);
    }
}

void VyrDiagram::PaintOutilInterval(wxDC* dc, VyrOutilInterval* tool) {
    if (!dc || !tool)
        return;
    const VyrWorldTransform world{m_dAx, m_dBx, m_dAy, m_dBy};
    const bool selected = tool->IsSelected();
    const int penWidth = selected ? 2 : 1;
    const wxFont oldFont = dc->GetFont();
    const wxColour oldText = dc->GetTextForeground();
    const double x0 = tool->GetX0();
    const double y0 = tool->GetY0();
    const double x1 = tool->GetX1();
    const double y1 = tool->GetY1();
    // Where the explained picture put the labels, clear of every other text.
    const VyrToolLabels* laidOut = nullptr;
    if (m_pTextBoxes) {
        auto found = m_pTextBoxes->toolLabels.find(tool);
        if (found != m_pTextBoxes->toolLabels.end())
            laidOut = &found->second;
    }

    if (x0 == x1 && y0 == y1) {
        const wxPoint raw = world.ToPixel(x0, y0);
        const wxPoint p(VyrSafeCoord(raw.x), VyrSafeCoord(raw.y));
        dc->SetPen(wxPen(*wxRED, penWidth, wxPENSTYLE_SOLID));
        dc->SetBrush(*wxRED_BRUSH);
        dc->DrawEllipse(p.x - 3, p.y - 3, 7, 7);
        dc->SetPen(wxNullPen);
        dc->SetBrush(wxNullBrush);

        dc->SetTextForeground(m_colourAxis);
        dc->SetFont(LabelFont(oldFont, selected));
        wxCoord w = 0;
        wxCoord h = 0;
        dc->GetTextExtent(tool->GetEtiq1(), &w, &h);
        // Away from the origin: right of points with x >= 0, below points with y < 0.
        const wxPoint at =
            laidOut ? laidOut->boxes[0].GetTopLeft() : GetTextPos(p.x, p.y, w, h, x0 >= 0, y0 < 0);
        dc->DrawText(tool->GetEtiq1(), at);
    } else {
        const wxPoint rawA = world.ToPixel(x0, y0);
        const wxPoint rawC = world.ToPixel(x1, y1);
        const int a = VyrSafeCoord(rawA.x);
        const int b = VyrSafeCoord(rawA.y);
        const int c = VyrSafeCoord(rawC.x);
        const int d = VyrSafeCoord(rawC.y);
        // Negative when the tool was dragged right to left or bottom to top.
        const int width = c - a + 1;
        const int height = d - b + 1;
        dc->SetPen(wxPen(m_colourAxis, penWidth, wxPENSTYLE_DOT));
        dc->SetBrush(*wxTRANSPARENT_BRUSH);
        dc->DrawRectangle(a, b, width, height);
        dc->SetPen(wxNullPen);
        dc->SetBrush(wxNullBrush);

        dc->SetTextForeground(m_colourAxis);
        dc->SetFont(LabelFont(oldFont, selected));
        const int leftmost = std::min(a, c);
        const int topmost = std::min(b, d);

        // Width label, centred over the rectangle, normally 5 pixels above it.
        const wxString across = AcrossText(*this, tool, ShowUnit(tool->GetAbs()));
        wxCoord w = 0;
        wxCoord h = 0;
        dc->GetTextExtent(across, &w, &h);
        const int acrossX = leftmost + (std::abs(width) - w) / 2;
        const int acrossY = GetTextPos(acrossX, topmost, w, h, true, false).y;
        dc->DrawText(across, laidOut ? laidOut->boxes[0].GetTopLeft() : wxPoint(acrossX, acrossY));

        // Height label, centred beside the rectangle, normally 6 pixels right of it.
        const wxString upward = UpwardText(*this, tool, ShowUnit(tool->GetOrd()));
        dc->GetTextExtent(upward, &w, &h);
        const int upwardY = topmost + (std::abs(height) - h) / 2;
        const int upwardX = GetTextPos(std::max(a, c), upwardY, w, h, true, true).x;
        dc->DrawText(upward, laidOut && laidOut->count > 1 ? laidOut->boxes[1].GetTopLeft()
                                                           : wxPoint(upwardX, upwardY));
    }

    dc->SetFont(oldFont);
    dc->SetTextForeground(oldText);
}
