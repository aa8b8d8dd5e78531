// Test-only access to the diagram's private members (VyrDiagram declares this class a friend).
// One definition for every diagram test: add the forwarding functions a test needs here.
#ifndef VYR_TESTS_SUPPORT_VYRDIAGRAMTESTACCESS_H
#define VYR_TESTS_SUPPORT_VYRDIAGRAMTESTACCESS_H

#include <wx/colour.h>
#include <wx/gdicmn.h>

#include "vyrbase/diagram/VyrDiagram.h"

class wxDC;
class VyrCourbe;
class VyrNote;
class VyrOutilInterval;

class VyrDiagramTestAccess {
public:
    // Axes: the step rule and the label rule.
    static double GetGraduationStep(double range, double multiple) {
        return VyrDiagram::GetGraduationStep(range, multiple);
    }
    static wxString FormatGraduation(double value, double multiple) {
        return VyrDiagram::FormatGraduation(value, multiple);
    }

    // Transforms.
    static wxPoint ClipPixel(VyrDiagram& d, wxPoint p) { return d.ClipPixel(p); }
    static bool SetCurrentScaleForUnits(VyrDiagram& d, const wxString& ux, const wxString& uy) {
        return d.SetCurrentScaleForUnits(ux, uy);
    }
    // The world transform: pixel = a * real + b on each axis.
    static double Ax(const VyrDiagram& d) { return d.m_dAx; }
    static double Bx(const VyrDiagram& d) { return d.m_dBx; }
    static double Ay(const VyrDiagram& d) { return d.m_dAy; }
    static double By(const VyrDiagram& d) { return d.m_dBy; }
    // The zoom: current = k * base + o on each axis.
    static double ZoomKx(const VyrDiagram& d) { return d.m_dZoomKx; }
    static double ZoomOx(const VyrDiagram& d) { return d.m_dZoomOx; }
    static double ZoomKy(const VyrDiagram& d) { return d.m_dZoomKy; }
    static double ZoomOy(const VyrDiagram& d) { return d.m_dZoomOy; }
    static void SetZoomFactors(VyrDiagram& d, double kx, double ox, double ky, double oy) {
        d.m_dZoomKx = kx;
        d.m_dZoomOx = ox;
        d.m_dZoomKy = ky;
        d.m_dZoomOy = oy;
    }

    // Painting reads the line scale that Paint sets; tests of single painters set it here.
    static void SetLineScale(VyrDiagram& d, int f) { d.m_iLineScale = f; }
    static const wxString& SecondsSymbol(const VyrDiagram& d) { return d.m_sSecondsSymbol; }

    // Painters, one at a time.
    static void PaintCurves(VyrDiagram& d, wxDC* dc, bool* repaintAxes) {
        d.PaintCurves(dc, repaintAxes);
    }
    static void PaintCurve(VyrDiagram& d, wxDC* dc, VyrCourbe* c, bool ownColour,
                           bool* repaintAxes) {
        d.PaintCurve(dc, c, ownColour, repaintAxes);
    }
    static void PaintGraphObj(VyrDiagram& d, wxDC* dc) { d.PaintGraphObj(dc); }

    // The marker painter of a marker style code (1..6); false for another code.
    static bool PaintMarker(VyrDiagram& d, int style, wxDC* dc, VyrCourbe* c,
                            const wxColour& colour) {
        using Painter = void (VyrDiagram::*)(wxDC*, VyrCourbe*, const wxColour&);
        static const Painter painters[] = {
            &VyrDiagram::PaintCurvePoint,  &VyrDiagram::PaintCurvePlus,
            &VyrDiagram::PaintCurveCross,  &VyrDiagram::PaintCurveSquare,
            &VyrDiagram::PaintCurveCircle, &VyrDiagram::PaintCurveLozenge};
        if (style < 1 || style > 6)
            return false;
        (d.*painters[style - 1])(dc, c, colour);
        return true;
    }
    // The line painter of a line style code (1..9, and 10 with `colour`); false for another.
    static bool PaintLine(VyrDiagram& d, int style, wxDC* dc, VyrCourbe* c,
                          const wxColour& colour = wxColour(0, 0, 0)) {
        using Painter = void (VyrDiagram::*)(wxDC*, VyrCourbe*);
        static const Painter painters[] = {
            &VyrDiagram::PaintCurveLine,     &VyrDiagram::PaintCurveHisto,
            &VyrDiagram::PaintCurveLineHV,   &VyrDiagram::PaintCurveVSegment,
            &VyrDiagram::PaintCurveHSegment, &VyrDiagram::PaintCurveHVSegment,
            &VyrDiagram::PaintCurveVLine,    &VyrDiagram::PaintCurveHLine,
            &VyrDiagram::PaintCurveHVLine};
        if (style == 10) {
            d.PaintCurveRepere(dc, c, colour);
            return true;
        }
        if (style < 1 || style > 9)
            return false;
        (d.*painters[style - 1])(dc, c);
        return true;
    }
    static void PaintCurveVSegmentSpectro(VyrDiagram& d, wxDC* dc, VyrCourbe* c) {
        d.PaintCurveVSegmentSpectro(dc, c);
    }

    static void PaintNotes(VyrDiagram& d, wxDC* dc, VyrCourbe* c, const wxColour& colour) {
        d.PaintNotes(dc, c, colour);
    }
    static void PaintNote(VyrDiagram& d, wxDC* dc, VyrNote* note, wxPoint anchor) {
        d.PaintNote(dc, note, anchor);
    }
    static void PaintTitre(VyrDiagram& d, wxDC* dc) { d.PaintTitre(dc); }
    static wxPoint GetTextPos(VyrDiagram& d, int x, int y, int w, int h, bool toRight, bool below) {
        return d.GetTextPos(x, y, w, h, toRight, below);
    }
    static void PaintOutilIntervals(VyrDiagram& d, wxDC* dc) { d.PaintOutilIntervals(dc); }
    static void PaintOutilInterval(VyrDiagram& d, wxDC* dc, VyrOutilInterval* tool) {
        d.PaintOutilInterval(dc, tool);
    }
};

#endif
