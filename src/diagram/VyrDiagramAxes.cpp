// The axes and the grid: axis lines with arrow heads, graduations with their labels, the axis
// titles (the Y title names the plotted quantities, each in its curve's colour) and the grid.
// Every pixel size is multiplied by the line scale f so that printing at a higher resolution
// scales the drawing.
#include "vyrbase/diagram/VyrDiagram.h"

#include <algorithm>
#include <cmath>

#include <wx/dc.h>

#include "diagram/VyrPictureLayout.h"
#include "diagram/VyrPixelRound.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

// More graduations than any step of the step rule can give; a guard against absurd ranges.
const double kMaxGraduations = 10000.0;

// Calls visit(i) for every whole i from trunc(lo / step) to trunc(hi / step).
template <class Visit>
void ForEachGraduation(double lo, double hi, double step, Visit visit) {
    const double first = std::trunc(lo / step);
    const double last = std::trunc(hi / step);
    if (!std::isfinite(first) || !std::isfinite(last) || last - first > kMaxGraduations)
        return;
    const int count = static_cast<int>(last - first);
    for (int n = 0; n <= count; ++n)
        visit(first + n);
}

// The context's font, or the diagram font when the context has none yet.
wxFont FontOf(wxDC* dc) {
    const wxFont& font = dc->GetFont();
    return font.IsOk() ? font : wxFont(wxFontInfo(12).FaceName("Segoe UI"));
}

wxFont WithWeight(const wxFont& font, int weight) {
    wxFont copy(font);
    copy.SetNumericWeight(weight);
    return copy;
}

const int kWeightNormal = 400;
const int kWeightBold = 700;

// The explained picture's thinning: every stride-th graduation is labelled, the stride the
// first of 1, 2, 5, 10, 20, 50... that leaves `room` pixels per label.
double LabelStride(double pixelsPerStep, int room) {
    const double pixels = std::fabs(pixelsPerStep);
    if (!(pixels > 0.0))
        return 1.0;
    for (double decade = 1.0; decade < 1e6; decade *= 10.0)
        for (double k : {1.0, 2.0, 5.0})
            if (k * decade * pixels >= room)
                return k * decade;
    return 1e6;
}

bool OnStride(double i, double stride) {
    return std::fmod(std::fabs(i), stride) == 0.0;
}

}  // namespace

void VyrDiagram::PaintGrid(wxDC* dc, double stepX, double stepY, const wxColour& colour) {
    if (!dc)
        return;
    const wxPen savedPen = dc->GetPen();
    const int left = m_rectPlot.x;
    const int top = m_rectPlot.y;
    const int right = left + m_rectPlot.width - 1;
    const int bottom = top + m_rectPlot.height - 1;
    const VyrScale& s = m_currentScale;
    dc->SetPen(wxPen(colour, m_iLineScale));
    ForEachGraduation(s.GetXmin(), s.GetXmax(), stepX, [&](double i) {
        const int px = VyrRoundPixel(i * stepX * m_dAx + m_dBx);
        dc->DrawLine(px, top, px, bottom);
    });
    ForEachGraduation(s.GetYmin(), s.GetYmax(), stepY, [&](double j) {
        const int py = VyrRoundPixel(j * stepY * m_dAy + m_dBy);
        dc->DrawLine(left, py, right, py);
    });
    dc->SetPen(savedPen);
}

void VyrDiagram::PaintAxes(wxDC* dc) {
    if (!dc)
        return;
    const wxPen savedPen = dc->GetPen();
    const wxBrush savedBrush = dc->GetBrush();
    const wxFont savedFont = dc->GetFont();
    const wxFont font = FontOf(dc);
    const int f = m_iLineScale;
    const VyrScale& s = m_currentScale;
    const int left = m_rectPlot.x;
    const int top = m_rectPlot.y;
    const int right = left + m_rectPlot.width - 1;
    const int bottom = top + m_rectPlot.height - 1;
    const int ox = m_ptOrigin.x;
    const int oy = m_ptOrigin.y;

    // 1. Multiples, unit labels and graduation steps; the numbers drawn always agree with the
    // unit label drawn beside them.
    wxString labelX, labelY;
    const double mx =
        GetAxisMultiple(std::max(std::fabs(s.GetXmin()), std::fabs(s.GetXmax())), m_sUx, labelX);
    const double my =
        GetAxisMultiple(std::max(std::fabs(s.GetYmin()), std::fabs(s.GetYmax())), m_sUy, labelY);
    const double sx = GetGraduationStep(s.GetXmax() - s.GetXmin(), mx);
    const double sy = GetGraduationStep(s.GetYmax() - s.GetYmin(), my);

    // 2. The grid, minor lines first so that the major ones lie over them.
    if (m_bGrid) {
        wxColour minor, major;
        GetGridColour(minor, major);
        PaintGrid(dc, sx / 5, sy / 5, minor);
        PaintGrid(dc, sx, sy, major);
    }

    // 3. The axis lines, then the arrow heads, which may reach out of the plot rectangle.
    dc->SetPen(wxPen(m_colourAxis, f));
    dc->SetBrush(wxBrush(m_colourAxis));
    dc->DrawLine(left, oy, right, oy);
    dc->DrawLine(ox, top, ox, bottom);
    dc->DestroyClippingRegion();
    dc->SetPen(wxPen(wxColour(0, 0, 0), f));

    // 4.
    dc->DrawLine(right, oy, right - 6 * f, oy - 6 * f);
    dc->DrawLine(right, oy, right - 6 * f, oy + 6 * f);
    dc->DrawLine(ox, top, ox - 6 * f, top + 6 * f);
    dc->DrawLine(ox, top, ox + 6 * f, top + 6 * f);
    dc->SetClippingRegion(m_rectPlot);

    // 5. Which side of its axis each set of labels goes.
    dc->SetFont(font);
    wxCoord boxW = 0, boxH = 0;
    dc->GetTextExtent("MMMM", &boxW, &boxH);
    const int leftLabelX = ox - 9 * f - boxW;
    const bool yLabelsRight = leftLabelX < -5;
    const int yLabelX = yLabelsRight ? ox + 9 * f : leftLabelX;
    const int yTickEnd = yLabelsRight ? ox + 6 * f : ox - 6 * f;
    const bool xLabelsBelow = oy + 6 * f + boxH <= bottom && m_iLabelsAbove != 1;
    const int xTickEnd = xLabelsBelow ? oy + 6 * f : oy - 6 * f;
    const int xTextTop = xLabelsBelow ? oy + 6 * f : oy - 6 * f - boxH;

    // The explained picture places every text clear of those placed before it.
    VyrTextBoxes* const boxes = HasOption(VYR_OPTION_TIDY_LAYOUT) ? m_pTextBoxes : nullptr;
    auto place = [boxes](const wxRect& box) { return !boxes || boxes->Place(box); };
    const bool unitless = HasOption(VYR_OPTION_UNITLESS_RANGE);

    // 6. The X title, right-aligned to the plot's right edge, on the side away from the labels.
    if ((!m_sUx.empty() || unitless) && !m_aPlottedCourbes.empty()) {
        const wxString title = labelX.empty() && unitless
                                   ? m_sGrdX
                                   : wxString::Format(L"%s (%s)", m_sGrdX, ShowUnit(labelX));
        wxCoord w = 0, h = 0;
        dc->GetTextExtent(title, &w, &h);
        const int distance = xLabelsBelow ? boxH + 6 * f : 2 * (boxH + 3 * f);
        int y = oy - distance;
        if (y < 1 || (boxes && !boxes->IsFree(wxRect(right - w, y, w, h))))
            y = oy + distance;
        if (place(wxRect(right - w, y, w, h)))
            dc->DrawText(title, right - w, y);
    }

    // The "0" of step 10 goes before the graduations, which give way to it.
    const bool zeroInView = m_rectHit.Contains(RealToPixel(0.0, 0.0));
    bool zeroPlaced = zeroInView;
    if (boxes && zeroInView) {
        wxCoord w = 0, h = 0;
        dc->GetTextExtent("0", &w, &h);
        zeroPlaced = place(wxRect(yLabelX, xTextTop, w, h));
    }

    // 7. X graduations (not at zero, and not under the arrow head).
    double strideX = 1.0;
    if (boxes) {
        wxCoord wFirst = 0, wLast = 0, h = 0;
        dc->GetTextExtent(FormatGraduation(std::trunc(s.GetXmin() / sx) * sx, mx), &wFirst, &h);
        dc->GetTextExtent(FormatGraduation(std::trunc(s.GetXmax() / sx) * sx, mx), &wLast, &h);
        strideX = LabelStride(sx * m_dAx, std::max(wFirst, wLast) + 2 * boxes->gap);
    }
    ForEachGraduation(s.GetXmin(), s.GetXmax(), sx, [&](double i) {
        if (i == 0.0)
            return;
        const int px = VyrRoundPixel(i * sx * m_dAx + m_dBx);
        if (px >= right - 9 * f)
            return;
        const wxString label = FormatGraduation(i * sx, mx);
        dc->DrawLine(px, oy, px, xTickEnd);
        wxCoord w = 0, h = 0;
        dc->GetTextExtent(label, &w, &h);
        if (OnStride(i, strideX) && place(wxRect(px - w / 2 + f, xTextTop, w, h)))
            dc->DrawText(label, px - w / 2 + f, xTextTop);
    });

    // 8. The Y title: the plotted quantities, those of the main unit in bold and in their
    // curve's colour, the others in normal weight and in the disabled colour (or their own
    // when every curve keeps its colour), then the unit label.
    // The explained picture names the plotted quantities in its heading instead.
    if ((!m_sUy.empty() || unitless) && !boxes) {
        const wxString unitTitle =
            labelY.empty() && unitless ? wxString() : wxString::Format(L" (%s)", ShowUnit(labelY));
        const wxFont bold = WithWeight(font, kWeightBold);
        const wxFont normal = WithWeight(font, kWeightNormal);
        wxString names;
        for (size_t k = 0; k < m_aPlottedCourbes.size(); ++k) {
            const VyrVecteur* vy = m_aPlottedCourbes[k]->GetVy();
            names += vy ? vy->GetGrandeur() : wxString();
            if (k + 1 < m_aPlottedCourbes.size())
                names += L", ";
        }
        wxCoord titleW = 0, titleH = 0;
        dc->GetTextExtent(names + unitTitle, &titleW, &titleH, nullptr, nullptr, &bold);
        int x = ox - 9 * f - titleW;
        if (x < left)
            x = ox + 9 * f;
        const wxColour previousText = dc->GetTextForeground();
        for (size_t k = 0; k < m_aPlottedCourbes.size(); ++k) {
            VyrCourbe* courbe = m_aPlottedCourbes[k];
            const VyrVecteur* vy = courbe->GetVy();
            wxString text = vy ? vy->GetGrandeur() : wxString();
            if (k + 1 < m_aPlottedCourbes.size())
                text += L", ";
            const bool mainUnit = vy && vy->GetUnite() == m_sUy;
            dc->SetFont(mainUnit ? bold : normal);
            dc->SetTextForeground(mainUnit || m_bAllCurvesColour ? courbe->GetColor()
                                                                 : GetDisabledCurvesColour());
            dc->DrawText(text, x, top);
            wxCoord w = 0, h = 0;
            dc->GetTextExtent(text, &w, &h);
            x += w;
        }
        dc->SetFont(normal);
        dc->SetTextForeground(previousText);
        dc->DrawText(unitTitle, x, top);
        dc->SetFont(font);
    }

    // 9. Y graduations (not at zero, and not under the arrow head), in the main unit's colour
    // when every unit has a scale of its own.
    double strideY = 1.0;
    const wxColour previousText = dc->GetTextForeground();
    if (m_pTextBoxes && !m_pTextBoxes->scales.empty() && HasOption(VYR_OPTION_UNIT_SCALES))
        dc->SetTextForeground(m_pTextBoxes->scales.front().colour);
    if (boxes)
        strideY = LabelStride(sy * m_dAy, boxH + boxes->gap);
    ForEachGraduation(s.GetYmin(), s.GetYmax(), sy, [&](double j) {
        if (j == 0.0)
            return;
        const int py = VyrRoundPixel(j * sy * m_dAy + m_dBy);
        if (py <= top + 9 * f)
            return;
        const wxString label = FormatGraduation(j * sy, my);
        dc->DrawLine(ox, py, yTickEnd, py);
        wxCoord w = 0, h = 0;
        dc->GetTextExtent(label, &w, &h);
        const int x = yLabelsRight ? ox + 9 * f : ox - 9 * f - w;
        if (OnStride(j, strideY) && place(wxRect(x, py - h / 2 - f, w, h)))
            dc->DrawText(label, x, py - h / 2 - f);
    });
    dc->SetTextForeground(previousText);

    // 10. One "0" for both axes, where the real origin is in view.
    if (zeroPlaced)
        dc->DrawText("0", yLabelX, xTextTop);

    // 11.
    dc->SetPen(savedPen);
    dc->SetBrush(savedBrush);
    dc->SetFont(savedFont);
}
