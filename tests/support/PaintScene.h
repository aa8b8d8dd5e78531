// A document with one experiment and a diagram framed on a known rectangle and range, for the
// painting tests. With the default frame (plot rectangle x 50, y 20, 401 x 201 pixels; manual
// range X 0..400, Y 0..200) a data point (x, y) lands on pixel (50 + x, 220 - y), and the
// axes cross at the plot's bottom left corner (50, 220).
#ifndef VYR_TESTS_SUPPORT_PAINTSCENE_H
#define VYR_TESTS_SUPPORT_PAINTSCENE_H

#include <utility>
#include <vector>

#include <wx/colour.h>
#include <wx/gdicmn.h>
#include <wx/image.h>
#include <wx/string.h>

#include "vyrbase/core/VyrBaseData.h"

class VyrCourbe;
class VyrDiagram;
class VyrExperience;

struct CurveLook {
    wxString grdX = "t";
    wxString unitX = "s";
    wxString grdY = "U";
    wxString unitY = "V";
    wxColour colour = wxColour(255, 0, 0);
    int width = 1;
    int stylePoint = 0;
    int styleLiaison = 1;
};

class PaintScene {
public:
    // The document becomes the active one (interval tools are read from it); the destructor
    // clears that again.
    PaintScene();
    ~PaintScene();
    PaintScene(const PaintScene&) = delete;
    PaintScene& operator=(const PaintScene&) = delete;

    VyrBaseData& Doc() { return m_doc; }
    VyrDiagram& Diagram();
    VyrExperience* Experience() { return m_pExperience; }

    // A curve of the experiment with these points (not yet shown).
    VyrCourbe* AddCurve(const CurveLook& look, const std::vector<std::pair<double, double>>& pts);
    // Marks point i invalid in the Y vector (or valid again).
    static void SetValid(VyrCourbe* c, int i, bool valid);
    // Shows the curve in diagram 0 and rebuilds the diagram's curves and ranges.
    void Show(VyrCourbe* c);
    // Places the plot rectangle and sets the manual range of the main units.
    void Frame(const wxRect& plot = wxRect(50, 20, 401, 201), double xmin = 0.0,
               double xmax = 400.0, double ymin = 0.0, double ymax = 200.0);
    // Sets the manual range of one Y unit (secondary axes), then re-selects the manual type.
    void SetUnitRangeY(const wxString& unit, double ymin, double ymax);

private:
    VyrBaseData m_doc;
    VyrExperience* m_pExperience = nullptr;
};

// Paints with `paint` on a wxGCDC over a cairo context of a white image of the given size and
// answers the image. Antialiasing can be switched off for pixel-exact comparisons.
template <class Paint>
wxImage PaintToImage(const wxSize& size, Paint paint, bool antialias = true);

// The number of pixels whose channels differ by more than `tolerance` on any channel; the
// sizes must be equal (otherwise -1).
long CountDifferentPixels(const wxImage& a, const wxImage& b, int tolerance);

#include "support/PaintSceneImage.h"

#endif
