// Test-only access to the diagram's private members (VyrDiagram declares this class a friend).
// One definition for every diagram test: add the forwarding functions a test needs here.
#ifndef VYR_TESTS_SUPPORT_VYRDIAGRAMTESTACCESS_H
#define VYR_TESTS_SUPPORT_VYRDIAGRAMTESTACCESS_H

#include "vyrbase/diagram/VyrDiagram.h"

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
};

#endif
