// Test-only access to the private painters and fields of VyrDiagram (a friend of it), so that
// tests can call one painter at a time instead of making them public.
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
    // The transform pixel = a * value + b currently in force.
    struct World {
        double ax, bx, ay, by;
    };

    static void SetLineScale(VyrDiagram& d, int lineScale) { d.m_iLineScale = lineScale; }
    static World GetWorld(const VyrDiagram& d) { return {d.m_dAx, d.m_dBx, d.m_dAy, d.m_dBy}; }

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
        }
        return false;
    }
    // The line painter of a line style code (1..9, 10 with `colour`); false for another code.
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
        }
        return false;
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
    static bool SetCurrentScaleForUnits(VyrDiagram& d, const wxString& ux, const wxString& uy) {
        return d.SetCurrentScaleForUnits(ux, uy);
    }
};

#endif
