// A device context for tests that records what is drawn instead of rasterising it, so that a
// test can assert the exact primitives a painter produces: their kind, coordinates, text, and
// the pen, brush, font, text colours and clipping in force when each was drawn.
//
//     RecordingDC dc(wxSize(400, 300));
//     dc.SetFont(font);
//     diagram.PaintAxes(&dc);
//     for (const RecordedPrimitive& p : dc.Primitives(RecordedPrimitive::Text)) ...
//     const RecordedPrimitive* label = dc.FindText("0:10");
//
// Every drawing call of wxDC ends in one primitive (DrawLine -> Line with points {p1, p2},
// DrawRectangle -> Rectangle with rect, DrawText -> Text with points {p} and text, DrawPolygon ->
// Polygon with the offset already applied to points, and so on). SetClippingRegion and
// DestroyClippingRegion are recorded as SetClip / DestroyClip primitives too, so that their
// place in the sequence can be checked; every primitive also carries the clipping in force
// (`clipped`, `clip`). Pen, brush, font and colour changes are not primitives: they are state,
// captured in each primitive. Coordinates are recorded as given (logical = device: the
// context has no origin, scale or mirroring of its own).
//
// Text measurement (GetTextExtent, GetCharWidth/Height) uses, by default, a fixed metric that
// depends only on the font, so that expected coordinates can be computed by hand:
//     width  = number of characters * CharWidth(font)
//     height = LineHeight(font)
// with, for a font of P points (12 when the font is not set or has no size),
//     CharWidth  = (2 * P) / 3, plus 1 when the font's weight is bold (> 500);
//     LineHeight = (4 * P) / 3.
// A 12-point normal font thus measures 8 pixels per character and 16 pixels high, and the same
// font in bold 9 per character. Descent and external leading are 0. Text with several lines is
// measured as one line (as wxDC::GetTextExtent does on most ports). Alternatively
// SetMeasuringDC() delegates measurement to a real context (a wxMemoryDC or wxGCDC), selecting
// the font of the call into it first.
//
// Reading pixels, blitting and flood fills are not supported: they answer false and record
// nothing. The context is always Ok, has the size given at construction, 96 PPI and depth 32.
#ifndef VYR_TESTS_SUPPORT_RECORDINGDC_H
#define VYR_TESTS_SUPPORT_RECORDINGDC_H

#include <string>
#include <vector>

#include <wx/brush.h>
#include <wx/colour.h>
#include <wx/dc.h>
#include <wx/font.h>
#include <wx/gdicmn.h>
#include <wx/pen.h>
#include <wx/string.h>

struct RecordedPrimitive {
    enum Kind {
        Point,             // points: {p}
        Line,              // points: {from, to}
        Lines,             // points: every vertex, offset applied
        Polygon,           // points: every vertex, offset applied; fillMode
        Rectangle,         // rect
        RoundedRectangle,  // rect, radius
        Ellipse,           // rect (bounding box)
        Arc,               // points: {start, end, centre}
        EllipticArc,       // rect; startAngle, endAngle
        Text,              // points: {top left}; text
        RotatedText,       // points: {top left}; text; angle
        Bitmap,            // points: {top left}; rect: (x, y, bitmap width, height); useMask
        Icon,              // points: {top left}
        CrossHair,         // points: {p}
        Clear,             // (nothing)
        SetClip,           // rect: the region asked for
        DestroyClip        // (nothing)
    };

    Kind kind;
    std::vector<wxPoint> points;
    wxRect rect;
    wxString text;
    double angle = 0.0;       // RotatedText
    double radius = 0.0;      // RoundedRectangle
    double startAngle = 0.0;  // EllipticArc
    double endAngle = 0.0;
    bool useMask = false;  // Bitmap
    wxPolygonFillMode fillMode = wxODDEVEN_RULE;
    // The state in force when the primitive was recorded.
    wxPen pen;
    wxBrush brush;
    wxFont font;
    wxColour textForeground;
    wxColour textBackground;
    bool clipped = false;  // a clipping region was set
    wxRect clip;           // that region (the intersection of the regions set since the last
                           // DestroyClippingRegion)

    // Convenience for lines and texts.
    wxPoint From() const { return points.empty() ? wxPoint() : points[0]; }
    wxPoint To() const { return points.size() < 2 ? wxPoint() : points[1]; }
    wxPoint Pos() const { return From(); }
    bool IsBold() const { return font.IsOk() && font.GetWeight() > 500; }
};

class RecordingDCImpl;

class RecordingDC : public wxDC {
public:
    explicit RecordingDC(const wxSize& size = wxSize(800, 600));

    // Every primitive in drawing order.
    const std::vector<RecordedPrimitive>& Primitives() const;
    // The primitives of one kind, in drawing order (copies).
    std::vector<RecordedPrimitive> Primitives(RecordedPrimitive::Kind kind) const;
    // The texts drawn, in order.
    std::vector<wxString> Texts() const;
    // The first Text primitive with exactly this text, or null; CountText counts them.
    const RecordedPrimitive* FindText(const wxString& text) const;
    int CountText(const wxString& text) const;
    // The first Line primitive from `from` to `to` (in that direction), or null.
    const RecordedPrimitive* FindLine(const wxPoint& from, const wxPoint& to) const;
    void ClearRecord();
    // Every primitive, one a line (kind, text, ends, rectangle, pen colour), for the messages of
    // failed expectations.
    std::string Dump() const;

    // The fixed metric described above.
    static int CharWidth(const wxFont& font);
    static int LineHeight(const wxFont& font);
    static wxSize Measure(const wxString& text, const wxFont& font);
    // Measure with a real context instead (null: back to the fixed metric). Not owned.
    void SetMeasuringDC(wxDC* dc);

private:
    RecordingDCImpl* Impl() const;
};

#endif
