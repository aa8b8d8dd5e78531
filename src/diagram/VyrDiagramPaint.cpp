// Painting a whole diagram: the frame (font, line scale, clipping, badge), the curves in their
// two passes under each curve's own ranges, one curve with its marker and line, and the
// application's graph object.
#include <algorithm>
#include <cmath>
#include <memory>

#include <wx/bitmap.h>
#include <wx/dc.h>
#include <wx/font.h>
#include <wx/pen.h>

#include "diagram/VyrDiagramScaleGuard.h"
#include "diagram/VyrPictureLayout.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"
#include "vyrbase/diagram/VyrGraphObj.h"

namespace {

const double kDefaultFontPoints = 12.0;
// Scaled output: the font is scale x 9 points, so that 2.0 gives 18 points.
const double kScaledFontPointsPerUnit = 9.0;

wxString UnitOf(const VyrVecteur* v) {
    return v ? v->GetUnite() : wxString();
}

// The font every text of the diagram starts from.
wxFont MakeDiagramFont(int points) {
    return wxFont(wxFontInfo(points)
                      .Family(wxFONTFAMILY_DEFAULT)
                      .FaceName("Segoe UI")
                      .Style(wxFONTSTYLE_NORMAL)
                      .Weight(wxFONTWEIGHT_NORMAL)
                      .Underlined(false));
}

// Integral part of a non-negative factor, saturated so that absurd or NaN scales neither
// overflow nor produce a negative size.
int IntegralScale(double value) {
    if (!(value > 0.0))
        return 0;
    return static_cast<int>(std::min(value, 100000.0));
}

enum LineStyle {
    LINE_SEGMENTS = 1,
    LINE_HISTO = 2,
    LINE_STAIRS = 3,
    LINE_VSEGMENT = 4,
    LINE_HSEGMENT = 5,
    LINE_HVSEGMENT = 6,
    LINE_VLINE = 7,
    LINE_HLINE = 8,
    LINE_HVLINE = 9,
    LINE_REPERE = 10
};

}  // namespace

void VyrDiagram::Paint(wxDC* dc, bool scaled, bool noScaleA, bool noScaleB, double scale,
                       wxBitmap* badge, bool showBadge) {
    if (!dc || !dc->IsOk())
        return;

    int fontPoints = static_cast<int>(kDefaultFontPoints);
    m_iLineScale = 1;
    if (scaled && !noScaleA && !noScaleB) {
        // A font needs at least one point; tiny scales would otherwise ask for 0.
        fontPoints = std::max(1, IntegralScale(scale * kScaledFontPointsPerUnit));
        m_iLineScale = IntegralScale(scale);
    }
    const wxFont drawingFont = MakeDiagramFont(fontPoints);

    const wxFont oldFont = dc->GetFont();
    const wxPen oldPen = dc->GetPen();
    const wxBrush oldBrush = dc->GetBrush();
    const wxColour oldText = dc->GetTextForeground();
    dc->SetFont(drawingFont);
    dc->SetTextForeground(m_colourAxis);
    // The explained picture lays itself out first: the plot rectangle shrinks inside the area
    // to leave room for the heading and the other units' scales.
    std::unique_ptr<VyrTextBoxes> layout;
    if (HasOption(VYR_OPTION_TIDY_LAYOUT | VYR_OPTION_UNIT_SCALES | VYR_OPTION_LEGEND)) {
        layout.reset(new VyrTextBoxes);
        m_pTextBoxes = layout.get();
        LayOut(dc);
    }
    dc->SetClippingRegion(m_rectPlot);
    if (layout)
        ReserveUserTexts(dc);

    PaintAxes(dc);
    if (layout) {
        PaintHeading(dc);
        PaintUnitScales(dc);
    }
    PaintGraphObj(dc);
    bool repaintAxes = false;
    PaintCurves(dc, &repaintAxes);
    if (repaintAxes)
        PaintAxes(dc);
    PaintTitre(dc);
    PaintOutilIntervals(dc);
    if (layout)
        PaintLegend(dc);
    m_pTextBoxes = nullptr;

    if (m_bBadge && m_pBase && m_pBase->GetDiagramCount() >= 2 && badge && badge->IsOk() &&
        showBadge) {
        dc->DrawBitmap(*badge, m_rectPlot.x + m_rectPlot.width - 1 - badge->GetWidth(),
                       m_rectPlot.y + 10, true);
    }

    dc->DestroyClippingRegion();
    dc->SetFont(oldFont);
    dc->SetPen(oldPen);
    dc->SetBrush(oldBrush);
    dc->SetTextForeground(oldText);
}

void VyrDiagram::SetGraphObj(VyrGraphObj* object) {
    m_pGraphObj = object;
    if (object)
        object->SetDiagram(this);
}

void VyrDiagram::PaintGraphObj(wxDC* dc) {
    if (m_pGraphObj)
        m_pGraphObj->Paint(dc);
}

void VyrDiagram::PaintCurves(wxDC* dc, bool* repaintAxes) {
    // Each curve is drawn in its own units' ranges; the main range comes back at the end.
    VyrDiagramScaleGuard guard(*this);
    // Pass 0 draws the curves of other Y units, pass 1 those of the main unit, so that the
    // latter lie on top. Band curves (style 10) are drawn in both passes.
    for (int pass = 0; pass < 2; ++pass) {
        for (VyrCourbe* courbe : m_aPlottedCourbes) {
            if (!courbe)
                continue;
            const wxString unitY = UnitOf(courbe->GetVy());
            const bool mainUnit = unitY == m_sUy;
            if (mainUnit != (pass == 1) && courbe->GetStyleLiaison() != LINE_REPERE)
                continue;
            if (SetCurrentScaleForUnits(UnitOf(courbe->GetVx()), unitY))
                PaintCurve(dc, courbe,
                           m_bAllCurvesColour || pass == 1 || HasOption(VYR_OPTION_UNIT_SCALES),
                           repaintAxes);
        }
    }
}

void VyrDiagram::PaintCurve(wxDC* dc, VyrCourbe* courbe, bool ownColour, bool* repaintAxes) {
    if (!dc || !courbe)
        return;
    const wxColour colour = ownColour ? courbe->GetColor() : GetDisabledCurvesColour();

    // Marker first, so that the line lies over it. Unknown codes draw nothing. (Switches rather
    // than tables of member pointers: those trip the bounds sanitizer of some compilers.)
    switch (courbe->GetStylePoint()) {
        case 1:
            PaintCurvePoint(dc, courbe, colour);
            break;
        case 2:
            PaintCurvePlus(dc, courbe, colour);
            break;
        case 3:
            PaintCurveCross(dc, courbe, colour);
            break;
        case 4:
            PaintCurveSquare(dc, courbe, colour);
            break;
        case 5:
            PaintCurveCircle(dc, courbe, colour);
            break;
        case 6:
            PaintCurveLozenge(dc, courbe, colour);
            break;
        default:
            break;
    }

    const int penWidth = courbe->GetWidth() * m_iLineScale;
    dc->SetPen(wxPen(colour, penWidth, wxPENSTYLE_SOLID));

    switch (courbe->GetStyleLiaison()) {
        case LINE_SEGMENTS:
            PaintCurveLine(dc, courbe);
            break;
        case LINE_HISTO:
            PaintCurveHisto(dc, courbe);
            break;
        case LINE_STAIRS:
            PaintCurveLineHV(dc, courbe);
            break;
        case LINE_VSEGMENT:
            if (m_bSpectrum) {
                PaintCurveVSegmentSpectro(dc, courbe);
                // The curve itself goes over its spectrum, in the curve's own colour.
                dc->SetPen(wxPen(courbe->GetColor(), penWidth, wxPENSTYLE_SOLID));
                PaintCurveLine(dc, courbe);
                if (repaintAxes)
                    *repaintAxes = true;
            } else {
                PaintCurveVSegment(dc, courbe);
            }
            break;
        case LINE_HSEGMENT:
            PaintCurveHSegment(dc, courbe);
            break;
        case LINE_HVSEGMENT:
            PaintCurveHVSegment(dc, courbe);
            break;
        case LINE_VLINE:
            PaintCurveVLine(dc, courbe);
            break;
        case LINE_HLINE:
            PaintCurveHLine(dc, courbe);
            break;
        case LINE_HVLINE:
            PaintCurveHVLine(dc, courbe);
            break;
        case LINE_REPERE:
            PaintCurveRepere(dc, courbe, colour);
            break;
        default:
            break;
    }

    dc->SetPen(wxNullPen);
    PaintNotes(dc, courbe, colour);
}
