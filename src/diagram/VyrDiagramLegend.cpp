// The legend of the explained picture: each plotted curve's name beside a short line of its
// colour, width and marker, in a box placed inside the plot where it covers the fewest drawn
// pixels and no text. Drawn only when more than one curve is plotted.
#include <algorithm>
#include <vector>

#include <wx/brush.h>
#include <wx/dc.h>
#include <wx/pen.h>

#include "diagram/VyrCurvePoints.h"
#include "diagram/VyrDiagramScaleGuard.h"
#include "diagram/VyrPictureLayout.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace {

// The drawn pixels are counted in cells of this side: fine enough to see a line, coarse enough
// to count a long recording quickly.
const int kCell = 4;
// Candidate places per side of the plot, the corners included.
const int kPlacesPerSide = 9;
// Length of the line sample, before the line scale.
const int kSampleLength = 24;

wxString UnitOf(const VyrVecteur* v) {
    return v ? v->GetUnite() : wxString();
}

wxString LegendName(const VyrCourbe* courbe) {
    const VyrVecteur* vy = courbe->GetVy();
    return vy ? vy->GetGrandeur() : wxString();
}

// Cells of the plot that something drawn passes through, with sums over rectangles.
class CellCounts {
public:
    CellCounts(const wxRect& plot) : m_plot(plot) {
        m_iColumns = std::max(1, plot.width / kCell + 1);
        m_iRows = std::max(1, plot.height / kCell + 1);
        m_aCells.assign(static_cast<size_t>(m_iColumns) * m_iRows, 0);
    }

    void Mark(wxPoint p) {
        const int c = (p.x - m_plot.x) / kCell;
        const int r = (p.y - m_plot.y) / kCell;
        if (p.x >= m_plot.x && p.y >= m_plot.y && c < m_iColumns && r < m_iRows)
            m_aCells[static_cast<size_t>(r) * m_iColumns + c] = 1;
    }

    // Every cell that the segment from a to b crosses (a step of half a cell at most).
    void MarkSegment(wxPoint a, wxPoint b) {
        const int dx = b.x - a.x, dy = b.y - a.y;
        const int steps = std::min(4096, std::max(std::abs(dx), std::abs(dy)) * 2 / kCell + 1);
        for (int k = 0; k <= steps; ++k)
            Mark(wxPoint(a.x + dx * k / steps, a.y + dy * k / steps));
    }

    void Sum() {
        m_aSums.assign(static_cast<size_t>(m_iColumns + 1) * (m_iRows + 1), 0);
        for (int r = 0; r < m_iRows; ++r)
            for (int c = 0; c < m_iColumns; ++c)
                At(r + 1, c + 1) = m_aCells[static_cast<size_t>(r) * m_iColumns + c] +
                                   At(r, c + 1) + At(r + 1, c) - At(r, c);
    }

    // Marked cells under `box`.
    int Count(const wxRect& box) {
        const int c0 = std::max(0, (box.x - m_plot.x) / kCell);
        const int r0 = std::max(0, (box.y - m_plot.y) / kCell);
        const int c1 = std::min(m_iColumns, (box.GetRight() - m_plot.x) / kCell + 1);
        const int r1 = std::min(m_iRows, (box.GetBottom() - m_plot.y) / kCell + 1);
        if (c1 <= c0 || r1 <= r0)
            return 0;
        return At(r1, c1) - At(r0, c1) - At(r1, c0) + At(r0, c0);
    }

private:
    int& At(int r, int c) { return m_aSums[static_cast<size_t>(r) * (m_iColumns + 1) + c]; }

    wxRect m_plot;
    int m_iColumns;
    int m_iRows;
    std::vector<unsigned char> m_aCells;
    std::vector<int> m_aSums;
};

}  // namespace

void VyrDiagram::PlaceLegend(wxDC* dc) {
    VyrTextBoxes& layout = *m_pTextBoxes;
    layout.legend = wxRect();
    if (m_aPlottedCourbes.size() < 2)
        return;
    const int f = m_iLineScale;
    const int pad = 2 * layout.gap;
    int textWidth = 0, rowHeight = 0;
    for (VyrCourbe* courbe : m_aPlottedCourbes) {
        wxCoord w = 0, h = 0;
        dc->GetTextExtent(LegendName(courbe), &w, &h);
        textWidth = std::max(textWidth, static_cast<int>(w));
        rowHeight = std::max(rowHeight, static_cast<int>(h));
    }
    const wxSize size(pad + kSampleLength * f + pad + textWidth + pad,
                      pad + rowHeight * static_cast<int>(m_aPlottedCourbes.size()) + pad);
    const wxRect inner(m_rectPlot.x + pad, m_rectPlot.y + pad, m_rectPlot.width - 2 * pad,
                       m_rectPlot.height - 2 * pad);
    if (size.x > inner.width || size.y > inner.height)
        return;

    // What is drawn: every curve in its own range, and the two axis lines.
    CellCounts cells(m_rectPlot);
    {
        VyrDiagramScaleGuard guard(*this);
        for (VyrCourbe* courbe : m_aPlottedCourbes) {
            if (!courbe ||
                !SetCurrentScaleForUnits(UnitOf(courbe->GetVx()), UnitOf(courbe->GetVy())))
                continue;
            const VyrCurvePoints points(courbe, {m_dAx, m_dBx, m_dAy, m_dBy});
            bool joined = false;
            wxPoint last;
            for (int i = 0; i < points.GetCount(); ++i) {
                if (!points.IsValid(i)) {
                    joined = false;
                    continue;
                }
                const wxPoint p = points.Pixel(i);
                if (joined && p != last)
                    cells.MarkSegment(last, p);
                else
                    cells.Mark(p);
                last = p;
                joined = true;
            }
        }
    }
    cells.MarkSegment(wxPoint(m_rectPlot.x, m_ptOrigin.y),
                      wxPoint(m_rectPlot.GetRight(), m_ptOrigin.y));
    cells.MarkSegment(wxPoint(m_ptOrigin.x, m_rectPlot.y),
                      wxPoint(m_ptOrigin.x, m_rectPlot.GetBottom()));
    cells.Sum();

    // The top right corner first (where readers look for a legend), then the other corners,
    // then every other place; the first of the fewest covered cells wins.
    std::vector<wxPoint> places;
    const int spanX = inner.width - size.x, spanY = inner.height - size.y;
    for (int corner : {0, 1, 2, 3})
        places.push_back(
            wxPoint(inner.x + (corner % 2 == 0 ? spanX : 0), inner.y + (corner < 2 ? 0 : spanY)));
    for (int r = 0; r < kPlacesPerSide; ++r)
        for (int c = 0; c < kPlacesPerSide; ++c)
            places.push_back(wxPoint(inner.x + spanX * c / (kPlacesPerSide - 1),
                                     inner.y + spanY * r / (kPlacesPerSide - 1)));
    int best = -1;
    for (const wxPoint& at : places) {
        const wxRect box(at, size);
        if (!layout.IsFree(box))
            continue;
        const int covered = cells.Count(box);
        if (best < 0 || covered < best) {
            best = covered;
            layout.legend = box;
        }
    }
    if (best >= 0)
        layout.Add(layout.legend);
}

void VyrDiagram::PaintLegend(wxDC* dc) {
    if (!m_pTextBoxes || m_pTextBoxes->legend.IsEmpty())
        return;
    const wxRect box = m_pTextBoxes->legend;
    const int f = m_iLineScale;
    const int pad = 2 * m_pTextBoxes->gap;
    const wxPen pen = dc->GetPen();
    const wxBrush brush = dc->GetBrush();
    const wxColour text = dc->GetTextForeground();
    wxColour minor, major;
    GetGridColour(minor, major);
    dc->SetPen(wxPen(major, f));
    dc->SetBrush(wxBrush(m_colourBackground));
    dc->DrawRectangle(box);
    dc->SetTextForeground(m_colourAxis);
    int y = box.y + pad;
    for (VyrCourbe* courbe : m_aPlottedCourbes) {
        wxCoord w = 0, h = 0;
        const wxString name = LegendName(courbe);
        dc->GetTextExtent(name, &w, &h);
        const int rowHeight = (box.height - 2 * pad) / static_cast<int>(m_aPlottedCourbes.size());
        const int middle = y + rowHeight / 2;
        const int x0 = box.x + pad, x1 = x0 + kSampleLength * f;
        const wxColour colour = courbe->GetColor();
        if (courbe->GetStyleLiaison() != 0) {
            dc->SetPen(wxPen(colour, std::max(1, courbe->GetWidth() * f)));
            dc->DrawLine(x0, middle, x1, middle);
        }
        if (courbe->GetStylePoint() != 0 || courbe->GetStyleLiaison() == 0) {
            // One marker in the middle of the sample, as wide as the curve's line allows.
            const int r = (2 + courbe->GetWidth()) * f;
            dc->SetPen(wxPen(colour, f));
            dc->SetBrush(wxBrush(colour));
            dc->DrawRectangle((x0 + x1) / 2 - r, middle - r, 2 * r + 1, 2 * r + 1);
        }
        dc->DrawText(name, x1 + pad, middle - h / 2);
        y += rowHeight;
    }
    dc->SetPen(pen);
    dc->SetBrush(brush);
    dc->SetTextForeground(text);
}
