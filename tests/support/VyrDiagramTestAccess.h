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
    // The multiple and unit label an axis draws.
    static double GetAxisMultiple(VyrDiagram& d, double value, const wxString& unit,
                                  wxString& label) {
        return d.GetAxisMultiple(value, unit, label);
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
        switch (style) {
            case 1:
                d.PaintCurvePoint(dc, c, colour);
                return true;
            case 2:
                d.PaintCurvePlus(dc, c, colour);
                return true;
            case 3:
                d.PaintCurveCross(dc, c, colour);
                return true;
            case 4:
                d.PaintCurveSquare(dc, c, colour);
                return true;
            case 5:
                d.PaintCurveCircle(dc, c, colour);
                return true;
            case 6:
                d.PaintCurveLozenge(dc, c, colour);
                return true;
            default:
                return false;
        }
    }
    // The line painter of a line style code (1..9, and 10 with `colour`); false for another.
    static bool PaintLine(VyrDiagram& d, int style, wxDC* dc, VyrCourbe* c,
                          const wxColour& colour = wxColour(0, 0, 0)) {
        switch (style) {
            case 1:
                d.PaintCurveLine(dc, c);
                return true;
            case 2:
                d.PaintCurveHisto(dc, c);
                return true;
            case 3:
                d.PaintCurveLineHV(dc, c);
                return true;
            case 4:
                d.PaintCurveVSegment(dc, c);
                return true;
            case 5:
                d.PaintCurveHSegment(dc, c);
                return true;
            case 6:
                d.PaintCurveHVSegment(dc, c);
                return true;
            case 7:
                d.PaintCurveVLine(dc, c);
                return true;
            case 8:
                d.PaintCurveHLine(dc, c);
                return true;
            case 9:
                d.PaintCurveHVLine(dc, c);
                return true;
            case 10:
                d.PaintCurveRepere(dc, c, colour);
                return true;
            default:
                return false;
        }
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
