// One graph view onto a document (index 0 or 1). It knows which curves it shows, the abscissa
// quantity and unit it is drawn against and the main Y unit; it owns per-unit ranges for the
// three scale types (0 automatic, 1 standard, 2 manual) and the real-to-pixel transform that
// painting and hit testing read. It observes its document (and follows every change) and is
// observed by the application's views, to which it passes every message except
// VYR_MSG_CURVE_CREATED (11), and sends its own codes 14, 15, 17 and 20.
//
// Painting and hit tests temporarily move the current scale and transform into the units of
// each curve; they must not interleave. Every real-to-pixel conversion rounds half away from 0.
#ifndef VYRBASE_DIAGRAM_VYRDIAGRAM_H
#define VYRBASE_DIAGRAM_VYRDIAGRAM_H

#include <vector>

#include <wx/arrstr.h>
#include <wx/colour.h>
#include <wx/dynarray.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/core/VyrLists.h"
#include "vyrbase/core/VyrMaps.h"
#include "vyrbase/core/VyrObservable.h"
#include "vyrbase/core/VyrObserver.h"
#include "vyrbase/data/VyrScale.h"

class wxBitmap;
class wxDC;
class VyrBaseData;
class VyrCourbe;
class VyrEntity;
class VyrExperience;
class VyrGraphObj;
class VyrNote;
class VyrOutilInterval;
class VyrTextBoxes;
class VyrUnit;

// VyrDiagram::GetTypeScale values.
enum VyrScaleType { VYR_SCALE_AUTO = 0, VYR_SCALE_STANDARD = 1, VYR_SCALE_MANUAL = 2 };

// Pictures that explain themselves, as bits of VyrDiagram::SetOptions. None is set on a new
// diagram: Paint then draws the classic picture, pixel for pixel.
enum VyrDiagramOption {
    // Every Y unit of the plotted curves gets a scale of its own: the main unit's on the left,
    // the others' right of the plot, one beside the other, each in its first curve's colour and
    // sharing the main axis's zero line. Curves of every unit are drawn in their own colours.
    VYR_OPTION_UNIT_SCALES = 1 << 0,
    // A box naming each plotted curve beside a line of its colour and style, when more than one
    // curve is plotted; placed where it covers the fewest drawn pixels, never over a note, the
    // title or another text.
    VYR_OPTION_LEGEND = 1 << 1,
    // Texts are measured and placed so that none covers another: the heading (the plotted
    // quantities and their units) goes in a band above the plot, wrapped or shortened with an
    // ellipsis to the picture's width; graduation labels thin out; interval tool labels and
    // note boxes step aside from the texts already placed. The plot rectangle is then the
    // rectangle given to Move less the heading band and the scales of the other units.
    VYR_OPTION_TIDY_LAYOUT = 1 << 2,
    // Units shown typeset: "^2", "^3", "^-1" as superscripts (m/s², s⁻¹) and a leading "u"
    // before a unit symbol as the micro sign (uV as µV). The stored texts are unchanged.
    VYR_OPTION_TYPESET_UNITS = 1 << 3,
    // A quantity without a unit is drawn over its own range (as any unit's) instead of 0..1.05,
    // and its axis is titled with the quantity's name alone.
    VYR_OPTION_UNITLESS_RANGE = 1 << 4,
    // Everything above: what the tools show unless asked for the classic picture.
    VYR_OPTIONS_EXPLAINED = (1 << 5) - 1
};

class VYRBASE_API VyrDiagram : public VyrObserver, public VyrObservable {
public:
    // ---- Construction and lifetime ---------------------------------------------------------

    // Builds the diagram from the document's current curves and registers it as an observer of
    // the document.
    VyrDiagram(VyrBaseData* base, int index);
    // Copies every field. The per-unit range records are duplicated, so source and copy each
    // free their own.
    VyrDiagram(const VyrDiagram& other);
    VyrDiagram& operator=(const VyrDiagram& other);
    // Sends VYR_MSG_DIAGRAM_DESTROYED (15) to its observers, leaves the document's observers and
    // frees its unit records.
    ~VyrDiagram() override;

    VyrBaseData* GetBase() const { return m_pBase; }
    int GetIndex() const { return m_iIndex; }
    bool IsActive() const { return m_bActive; }
    // Used by the document; applications call VyrBaseData::SetActiveDiagram.
    void SetActive(bool active) { m_bActive = active; }

    // ---- Scales, zoom and transforms -------------------------------------------------------

    int GetTypeScale() const { return m_iTypeScale; }
    // The base scale of a type (null outside 0..2), or of the current type.
    VyrScale* GetScale(int type);
    VyrScale* GetScale();
    // The displayed range (base range after zoom).
    VyrScale* GetCurrentScale() { return &m_currentScale; }
    wxString GetGrdX() const { return m_sGrdX; }
    wxString GetUx() const { return m_sUx; }
    wxString GetUy() const { return m_sUy; }
    void GetRect(wxRect& rect) const { rect = m_rectPlot; }
    void GetOrigin(wxPoint& origin) const { origin = m_ptOrigin; }
    const wxRect& GetHitRect() const { return m_rectHit; }

    void SetAutoScale() { SetTypeScale(VYR_SCALE_AUTO); }
    void SetStandardScale() { SetTypeScale(VYR_SCALE_STANDARD); }
    // Ignored outside 0..2. Resets the zoom; type 2 sends VYR_MSG_SCALE_TYPE_CHANGED (14).
    void SetTypeScale(int type);
    // Refused unless the scale is valid; propagate moves every other Y unit's zero to the main
    // axis's zero height. Ends in manual type.
    void SetManualScale(VyrScale* scale, bool propagate);
    void AutoStandardToManu();
    void UpdateScale(int type);
    void UpdateDiagrams(double xmin, double xmax);
    // Steps the main Y axis to the next unit; false when there is none to step to.
    bool AxeSuivantY();

    void SetZoom(VyrScale* zoom);
    void SetZoomPourcent(double percentX, double percentY, double unused1, double unused2);
    void ZoomNormal();
    bool IsZoomed() const;
    bool IsZoomedX() const;

    // Sets the plot rectangle (and the hit rectangle, 6 pixels larger on every side).
    void Move(wxRect& rect);
    void UpdateWorld();
    wxPoint RealToPixel(double x, double y) const;
    wxRealPoint PixelToReal(int px, int py) const;
    wxPoint RealToPixelCourbe(VyrCourbe* courbe, double x, double y);
    wxRealPoint PixelToRealCourbe(VyrCourbe* courbe, int px, int py);

    // Rebuilds the shown list from the curves' per-diagram flags, then units and ranges.
    void Fill();
    // Rebuilds the plotted curves: shown curves drawn against the current abscissa.
    void UpdateCourbes();
    const std::vector<VyrCourbe*>& GetPlottedCourbes() const { return m_aPlottedCourbes; }
    const VyrListEntity& GetShownEntities() const { return m_listShown; }
    // The range records of the X and Y units (null when the unit has none).
    VyrUnit* FindUnitX(const wxString& unit) const;
    VyrUnit* FindUnitY(const wxString& unit) const;
    const wxArrayString& GetAllUnits() const { return m_asAllUnits; }
    const wxArrayString& GetYUnits() const { return m_asYUnits; }

    // ---- Axes, units and value formatting --------------------------------------------------

    // The divisor for values of about the size `value` in `unit`, and the unit label to show.
    double GetMultiple(double value, wxString& unit, wxString& label);
    static bool IsStopFormatMultiple(const wxString& unit);
    // `value` with as many decimals as one pixel of the X (onX) or Y axis resolves.
    wxString FormatValueOnGraph(double value, bool onX);
    // Restore the context's pen, brush and font.
    void PaintAxes(wxDC* dc);
    void PaintGrid(wxDC* dc, double stepX, double stepY, const wxColour& colour);
    void SetUnits(const wxString& grandeurX, const wxString& ux, const wxString& uy);
    void SetUy(const wxString& uy);
    void UpdateUnits();
    void DeleteMapUnit();
    wxColour GetInnerColor(const wxColour& colour);
    wxColour GetDisabledCurvesColour();
    void GetGridColour(wxColour& first, wxColour& second);

    // ---- Display settings (set by the application) -----------------------------------------

    bool IsGridShown() const { return m_bGrid; }
    void SetGridShown(bool shown) { m_bGrid = shown; }
    bool IsTimeLabels() const { return m_bTimeLabels; }
    void SetTimeLabels(bool on) { m_bTimeLabels = on; }
    bool IsPrefixes() const { return m_bPrefixes; }
    void SetPrefixes(bool on) { m_bPrefixes = on; }
    bool IsAllCurvesInColour() const { return m_bAllCurvesColour; }
    void SetAllCurvesInColour(bool on) { m_bAllCurvesColour = on; }
    int GetLabelsAbove() const { return m_iLabelsAbove; }
    void SetLabelsAbove(int value) { m_iLabelsAbove = value; }
    bool IsSpectrum() const { return m_bSpectrum; }
    void SetSpectrum(bool on) { m_bSpectrum = on; }
    bool IsBadge() const { return m_bBadge; }
    void SetBadge(bool on) { m_bBadge = on; }
    // Off by default: the automatic ranges take in every stored number, invalid points
    // included (VyrVecteur::GetMinMax). On: only the valid points' numbers, so that the
    // number an invalid point holds, never measured, cannot stretch an axis (a curve without
    // any valid point still counts with all its numbers). Takes effect at the next update of
    // the ranges (UpdateScale, which every change of the data or of the shown curves runs).
    bool IsValidRangesOnly() const { return m_bValidRangesOnly; }
    void SetValidRangesOnly(bool on) { m_bValidRangesOnly = on; }
    int GetLineScale() const { return m_iLineScale; }
    const wxColour& GetBackgroundColour() const { return m_colourBackground; }
    void SetBackgroundColour(const wxColour& c) { m_colourBackground = c; }
    const wxColour& GetAxisColour() const { return m_colourAxis; }
    void SetAxisColour(const wxColour& c) { m_colourAxis = c; }
    bool IsXYMode() const { return m_bXYMode; }

    // Bits of VyrDiagramOption. Changing them does not recompute anything but the ranges of a
    // quantity without a unit (VYR_OPTION_UNITLESS_RANGE), which are recomputed at once.
    int GetOptions() const { return m_iOptions; }
    bool HasOption(int option) const { return (m_iOptions & option) != 0; }
    void SetOptions(int options);
    // The rectangle last given to Move. Without VYR_OPTION_TIDY_LAYOUT and
    // VYR_OPTION_UNIT_SCALES it is the plot rectangle; with them Paint lays the plot out inside
    // it and the plot rectangle (GetRect) is what is left for the data.
    const wxRect& GetArea() const { return m_rectArea; }

    // ---- Painting --------------------------------------------------------------------------

    // Draws the whole diagram on `dc`: axes, graph object, curves with their notes, title,
    // interval tools and the badge. Fonts and pen widths follow `scale` only when `scaled` is
    // true and both noScale flags are false. Restores the context's font and clipping.
    void Paint(wxDC* dc, bool scaled, bool noScaleA, bool noScaleB, double scale, wxBitmap* badge,
               bool showBadge);
    // Stores the object (null allowed) without taking ownership.
    void SetGraphObj(VyrGraphObj* object);
    VyrGraphObj* GetGraphObj() const { return m_pGraphObj; }
    // The colour of a wavelength in nanometres; transparent black outside 380..779 unless
    // blackOutside.
    static wxColour WaveLengthToRGB(int nanometres, double intensityPercent, bool blackOutside);

    // ---- Notes, title, interval tools ------------------------------------------------------

    wxPoint GetTitrePos(VyrNote* note);
    void SetTitrePos(VyrNote* note, wxPoint p);
    VyrNote* GetNoteTitre() const { return m_pNoteTitre; }
    // Stores the pointer as it is: no ownership, no check.
    void SetNoteTitre(VyrNote* note) { m_pNoteTitre = note; }

    // ---- Hit testing -----------------------------------------------------------------------

    static VyrDiagram* HitTestDiagram(const wxPoint& p);
    bool HitTestPoint(wxPoint p);
    int HitTestAxis(wxPoint p);
    int HitTestFleche(wxPoint p);
    VyrNote* HitTestTitre(wxPoint p);
    VyrOutilInterval* HitOutilInterval(wxPoint p, bool* changed);

    // ---- Visibility, XY curves and reactions -----------------------------------------------

    bool ShowData(VyrEntity* entity, bool show);
    void ShowCourbeInterne(VyrCourbe* courbe, bool show);
    bool IsVisibleInterne(VyrCourbe* courbe);
    int GetNbCourbe();
    void SetActiveCourbe(VyrCourbe* courbe);
    VyrCourbe* GetActiveCourbe() const { return m_pActiveCourbe; }
    void SetActiveExperience(VyrExperience* experience);
    VyrExperience* GetActiveExperience() const { return m_pActiveExperience; }
    void SetDefaultExperience();
    void SetAbscisse(const wxString& grandeurX, const wxString& unit, VyrCourbe* courbe);
    void CreateCurvesForXY(VyrCourbe* courbe);
    void InvertCurveForXY(VyrCourbe* courbe);

    void OnUpdateObserver(VyrObserverMsg& msg) override;
    void OnInitialUpdateObserver() override;
    void OnCreateCourbe(VyrCourbe* courbe);
    bool OnDeleteCourbe(VyrCourbe* courbe);
    void OnDeleteExperience(VyrExperience* experience);
    void OnListEntityModified();

    // Static operations on the diagrams of the active document (nothing without one).
    static void ShowCourbe(VyrCourbe* courbe, bool show, int diagram);
    static void HideAllCourbe();
    static bool IsVisible(VyrCourbe* courbe);
    static int GetListDiagramsIsVisible(VyrCourbe* courbe, wxArrayInt* list);
    static void ObserveLesDiagram(VyrObserver* observer);
    static void UnObserveLesDiagram(VyrObserver* observer);

private:
    // The application's view reaches the private searches through VyrDiagramViewAccess; the
    // tests reach the private painters through VyrDiagramTestAccess.
    friend class VyrDiagramViewAccess;
    friend class VyrDiagramTestAccess;

    // Painting (called by Paint in a fixed order).
    void PaintGraphObj(wxDC* dc);
    void PaintCurves(wxDC* dc, bool* repaintAxes);
    void PaintCurve(wxDC* dc, VyrCourbe* courbe, bool ownColour, bool* repaintAxes);
    void PaintCurvePoint(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintCurvePlus(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintCurveCross(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintCurveSquare(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintCurveCircle(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintCurveLozenge(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintCurveRepere(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintCurveLine(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveHisto(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveLineHV(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveVSegment(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveVSegmentSpectro(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveHSegment(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveHVSegment(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveVLine(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveHLine(wxDC* dc, VyrCourbe* courbe);
    void PaintCurveHVLine(wxDC* dc, VyrCourbe* courbe);
    wxPoint ClipPixel(wxPoint p);

    void PaintNotes(wxDC* dc, VyrCourbe* courbe, const wxColour& colour);
    void PaintNote(wxDC* dc, VyrNote* note, wxPoint anchor);
    void PaintTitre(wxDC* dc);
    wxPoint GetTextPos(int x, int y, int width, int height, bool toRight, bool below);
    void PaintOutilIntervals(wxDC* dc);
    void PaintOutilInterval(wxDC* dc, VyrOutilInterval* tool);

    // The layout of the explained picture (VyrDiagramLayout.cpp): the plot rectangle inside the
    // area, the heading above it and the scales of the other Y units beside it. The text boxes
    // placed so far live in m_pTextBoxes while Paint runs (null otherwise, and in the classic
    // picture), so that each later text can step aside or be left out.
    void LayOut(wxDC* dc);
    void PaintHeading(wxDC* dc);
    void PaintUnitScales(wxDC* dc);
    void PaintLegend(wxDC* dc);
    // Reserves the boxes of the title, the notes and the interval tools' labels before the
    // axes are drawn, so that graduation labels give way to them.
    void ReserveUserTexts(wxDC* dc);
    void ReserveNotes(wxDC* dc);
    // The box of a note's `text` near its stored corner, inside the plot and clear of the texts
    // placed so far; false when there is no such place.
    bool PlaceNoteBox(wxDC* dc, const wxString& text, wxPoint stored, wxRect& box) const;
    void ReserveToolLabels(wxDC* dc);
    // Chooses the legend's box among places inside the plot (VyrDiagramLegend.cpp).
    void PlaceLegend(wxDC* dc);
    // The Y units of the plotted curves, the main one first, then in order of discovery.
    wxArrayString GetPlottedYUnits() const;
    // A unit as the picture shows it (typeset when VYR_OPTION_TYPESET_UNITS is set).
    wxString ShowUnit(const wxString& unit) const;
    // Whether `unit` has a range of its own: every named unit, and the empty one only under
    // VYR_OPTION_UNITLESS_RANGE (otherwise the main axes fall back to 0..1.05).
    bool HasOwnRange(const wxString& unit) const;

    // GetMultiple as an axis shows it: the divisor of the numbers drawn and the unit label
    // drawn with them, which never disagree. Where GetMultiple's label does not carry its
    // divisor (a bare unit, a unit the title does not show, a prefix that cannot apply to the
    // unit) the numbers are drawn unscaled, or the divisor is written out as " x 10e".
    double GetAxisMultiple(double value, const wxString& unit, wxString& label);
    // Graduation step of a range R shown with multiple m, and the label of one graduation.
    static double GetGraduationStep(double range, double multiple);
    static wxString FormatGraduation(double value, double multiple);

    // Private searches of the application's view (see VyrDiagramViewAccess).
    int FindPoint(VyrCourbe* courbe, int maxDist2, wxPoint p, int* dist2);
    int GetPoint(VyrCourbe* courbe, wxPoint p);
    VyrCourbe* HitTestCurve(wxPoint p, int maxDist2, int* index);
    VyrCourbe* HitTestCurvePlusProche(wxPoint p, int maxDist2, int* index);
    VyrNote* FindNote(VyrCourbe* courbe, wxPoint p);
    VyrNote* HitTestNote(wxPoint p, VyrCourbe** courbe);
    double Distance2PointToRectangle(int x, int y, int left, int top, int right, int bottom);

    // Sets the current scale from a curve's (or tool's) X and Y units: with a record of the
    // unit, k*min[type]+o .. k*max[type]+o; without one, o-k .. o+k (the zoom of each axis).
    // When that range is valid it also updates the transform and answers true; otherwise the
    // transform is left as it was and the answer is false. It does not save anything: callers
    // save the current scale first and restore it (then UpdateWorld) when they are done.
    bool SetCurrentScaleForUnits(const wxString& unitX, const wxString& unitY);
    // The same for a curve's X and Y vector units; false for a curve without both vectors or
    // with an empty range.
    bool SetCurrentScaleForCourbe(VyrCourbe* courbe);
    void CopyFrom(const VyrDiagram& other);

    // The one recomputation of units, plotted curves, both data scales, the scale type and the
    // manual propagation, in that order, after any change of the data or of the curve set.
    // After a change of values only (dataOnly), UpdateUnits is not run again when nothing it
    // reads has changed since it last ran and that run changed nothing of what it reads: it
    // would give the same units.
    void Recompute(bool dataOnly);
    bool UnitsWouldStay() const;
    void RecordUnitsShape(bool before);

    // What UpdateUnits read when Recompute last ran it: each curve of the document (in the
    // order of its experiments) with its vectors, their units, the abscissa quantity and the
    // shown flag; and the diagram's own abscissa, units and unit arrays before and after.
    struct UnitsShapeCurve {
        const VyrCourbe* courbe;
        const void* vx;
        const void* vy;
        wxString ux;
        wxString uy;
        wxString grdX;
        bool shown;
    };
    struct UnitsShape {
        bool known = false;
        std::vector<UnitsShapeCurve> curves;
        wxString grdXBefore, uxBefore, uyBefore;
        wxString grdX, ux, uy;
        wxArrayString allUnits, yUnits;
    };

    wxArrayString m_asAllUnits;
    wxArrayString m_asYUnits;
    wxString m_sGrdX;
    wxColour m_colourBackground;
    wxColour m_colourAxis;
    bool m_bGrid = false;
    bool m_bTimeLabels = false;
    bool m_bAllCurvesColour = false;
    bool m_bPrefixes = true;
    int m_iLabelsAbove = 0;
    int m_iLineScale = 1;
    bool m_bSpectrum = false;
    bool m_bBadge = false;
    bool m_bValidRangesOnly = false;
    std::vector<VyrCourbe*> m_aPlottedCourbes;
    bool m_bXYMode = false;
    double m_dAx = 1.0;
    double m_dBx = 0.0;
    double m_dAy = 1.0;
    double m_dBy = 0.0;
    wxPoint m_ptOrigin;
    int m_iTypeScale = VYR_SCALE_AUTO;
    VyrScale m_scales[3];
    VyrScale m_currentScale;
    wxString m_sUx;
    wxString m_sUy;
    VyrExperience* m_pActiveExperience = nullptr;
    VyrCourbe* m_pActiveCourbe = nullptr;
    VyrBaseData* m_pBase;
    VyrListEntity m_listShown;
    wxRect m_rectPlot;
    wxRect m_rectHit;
    VyrGraphObj* m_pGraphObj = nullptr;
    VyrStrToUnitMap m_mapUnitX;
    VyrStrToUnitMap m_mapUnitY;
    double m_dZoomKx = 1.0;
    double m_dZoomOx = 0.0;
    double m_dZoomKy = 1.0;
    double m_dZoomOy = 0.0;
    int m_iIndex;
    wxString m_sSecondsSymbol;
    bool m_bActive = false;
    VyrNote* m_pNoteTitre = nullptr;
    UnitsShape m_unitsShape;
    // UpdateScale's lists of the plotted curves' distinct X and Y units (pointers to the
    // vectors' strings, valid during one call), kept to spare their allocation.
    std::vector<const wxString*> m_aScaleUnits[2];
    int m_iOptions = 0;
    wxRect m_rectArea;
    VyrTextBoxes* m_pTextBoxes = nullptr;
};

#endif
