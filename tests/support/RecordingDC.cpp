#include "support/RecordingDC.h"

#include <wx/bitmap.h>
#include <wx/icon.h>

class RecordingDCImpl : public wxDCImpl {
public:
    RecordingDCImpl(wxDC* owner, const wxSize& size) : wxDCImpl(owner), m_size(size) {
        m_ok = true;
        m_textForegroundColour = wxColour(0, 0, 0);
        m_textBackgroundColour = wxColour(255, 255, 255);
    }

    std::vector<RecordedPrimitive> m_record;
    wxDC* m_measuring = nullptr;
    wxSize m_size;
    wxRect m_clip;

    RecordedPrimitive& Add(RecordedPrimitive::Kind kind) {
        RecordedPrimitive p;
        p.kind = kind;
        p.pen = m_pen;
        p.brush = m_brush;
        p.font = m_font;
        p.textForeground = m_textForegroundColour;
        p.textBackground = m_textBackgroundColour;
        p.clipped = m_clipping;
        p.clip = m_clip;
        m_record.push_back(p);
        return m_record.back();
    }

    bool CanDrawBitmap() const override { return true; }
    bool CanGetTextExtent() const override { return true; }
    void DoGetSize(int* width, int* height) const override {
        if (width)
            *width = m_size.x;
        if (height)
            *height = m_size.y;
    }
    void DoGetSizeMM(int* width, int* height) const override {
        // 96 pixels per inch.
        if (width)
            *width = m_size.x * 254 / 960;
        if (height)
            *height = m_size.y * 254 / 960;
    }
    int GetDepth() const override { return 32; }
    wxSize GetPPI() const override { return wxSize(96, 96); }

    void SetFont(const wxFont& font) override { m_font = font; }
    void SetPen(const wxPen& pen) override { m_pen = pen; }
    void SetBrush(const wxBrush& brush) override { m_brush = brush; }
    void SetBackground(const wxBrush& brush) override { m_backgroundBrush = brush; }
    void SetBackgroundMode(int mode) override { m_backgroundMode = mode; }
#if wxUSE_PALETTE
    void SetPalette(const wxPalette&) override {}
#endif
    void SetLogicalFunction(wxRasterOperationMode function) override {
        m_logicalFunction = function;
    }

    wxCoord GetCharHeight() const override {
        return RecordingDC::LineHeight(m_font);
    }
    wxCoord GetCharWidth() const override {
        return RecordingDC::CharWidth(m_font);
    }
    void DoGetTextExtent(const wxString& string, wxCoord* x, wxCoord* y, wxCoord* descent,
                         wxCoord* externalLeading, const wxFont* theFont) const override {
        const wxFont& font = theFont && theFont->IsOk() ? *theFont : m_font;
        wxSize size;
        if (m_measuring) {
            if (font.IsOk())
                m_measuring->SetFont(font);
            size = m_measuring->GetTextExtent(string);
        } else {
            size = RecordingDC::Measure(string, font);
        }
        if (x)
            *x = size.x;
        if (y)
            *y = size.y;
        if (descent)
            *descent = 0;
        if (externalLeading)
            *externalLeading = 0;
    }

    void Clear() override {
        Add(RecordedPrimitive::Clear);
    }

    void DoSetClippingRegion(wxCoord x, wxCoord y, wxCoord w, wxCoord h) override {
        const wxRect asked(x, y, w, h);
        Add(RecordedPrimitive::SetClip).rect = asked;
        // As every context does: a new region is intersected with the one in force.
        m_clip = m_clipping ? m_clip.Intersect(asked) : asked;
        wxDCImpl::DoSetClippingRegion(x, y, w, h);
        m_clipping = true;
    }
    void DoSetDeviceClippingRegion(const wxRegion& region) override {
        const wxRect box = region.GetBox();
        DoSetClippingRegion(box.x, box.y, box.width, box.height);
    }
    void DestroyClippingRegion() override {
        Add(RecordedPrimitive::DestroyClip);
        m_clip = wxRect();
        wxDCImpl::DestroyClippingRegion();
    }
    bool DoGetClippingRect(wxRect& rect) const override {
        if (!m_clipping) {
            rect = wxRect(wxPoint(0, 0), m_size);
            return false;
        }
        rect = m_clip;
        return true;
    }

    bool DoFloodFill(wxCoord, wxCoord, const wxColour&, wxFloodFillStyle) override {
        return false;
    }
    bool DoGetPixel(wxCoord, wxCoord, wxColour*) const override {
        return false;
    }

    void DoDrawPoint(wxCoord x, wxCoord y) override {
        Add(RecordedPrimitive::Point).points = {wxPoint(x, y)};
    }
    void DoDrawLine(wxCoord x1, wxCoord y1, wxCoord x2, wxCoord y2) override {
        Add(RecordedPrimitive::Line).points = {wxPoint(x1, y1), wxPoint(x2, y2)};
    }
    void DoDrawArc(wxCoord x1, wxCoord y1, wxCoord x2, wxCoord y2, wxCoord xc,
                   wxCoord yc) override {
        Add(RecordedPrimitive::Arc).points = {wxPoint(x1, y1), wxPoint(x2, y2), wxPoint(xc, yc)};
    }
    void DoDrawEllipticArc(wxCoord x, wxCoord y, wxCoord w, wxCoord h, double sa,
                           double ea) override {
        RecordedPrimitive& p = Add(RecordedPrimitive::EllipticArc);
        p.rect = wxRect(x, y, w, h);
        p.startAngle = sa;
        p.endAngle = ea;
    }
    void DoDrawRectangle(wxCoord x, wxCoord y, wxCoord w, wxCoord h) override {
        Add(RecordedPrimitive::Rectangle).rect = wxRect(x, y, w, h);
    }
    void DoDrawRoundedRectangle(wxCoord x, wxCoord y, wxCoord w, wxCoord h,
                                double radius) override {
        RecordedPrimitive& p = Add(RecordedPrimitive::RoundedRectangle);
        p.rect = wxRect(x, y, w, h);
        p.radius = radius;
    }
    void DoDrawEllipse(wxCoord x, wxCoord y, wxCoord w, wxCoord h) override {
        Add(RecordedPrimitive::Ellipse).rect = wxRect(x, y, w, h);
    }
    void DoCrossHair(wxCoord x, wxCoord y) override {
        Add(RecordedPrimitive::CrossHair).points = {wxPoint(x, y)};
    }
    void DoDrawIcon(const wxIcon&, wxCoord x, wxCoord y) override {
        Add(RecordedPrimitive::Icon).points = {wxPoint(x, y)};
    }
    void DoDrawBitmap(const wxBitmap& bmp, wxCoord x, wxCoord y, bool useMask) override {
        RecordedPrimitive& p = Add(RecordedPrimitive::Bitmap);
        p.points = {wxPoint(x, y)};
        p.rect = wxRect(x, y, bmp.IsOk() ? bmp.GetWidth() : 0, bmp.IsOk() ? bmp.GetHeight() : 0);
        p.useMask = useMask;
    }
    void DoDrawText(const wxString& text, wxCoord x, wxCoord y) override {
        RecordedPrimitive& p = Add(RecordedPrimitive::Text);
        p.points = {wxPoint(x, y)};
        p.text = text;
    }
    void DoDrawRotatedText(const wxString& text, wxCoord x, wxCoord y, double angle) override {
        RecordedPrimitive& p = Add(RecordedPrimitive::RotatedText);
        p.points = {wxPoint(x, y)};
        p.text = text;
        p.angle = angle;
    }
    bool DoBlit(wxCoord, wxCoord, wxCoord, wxCoord, wxDC*, wxCoord, wxCoord, wxRasterOperationMode,
                bool, wxCoord, wxCoord) override {
        return false;
    }
    void DoDrawLines(int n, const wxPoint points[], wxCoord xoffset, wxCoord yoffset) override {
        RecordedPrimitive& p = Add(RecordedPrimitive::Lines);
        for (int i = 0; i < n; ++i)
            p.points.push_back(wxPoint(points[i].x + xoffset, points[i].y + yoffset));
    }
    void DoDrawPolygon(int n, const wxPoint points[], wxCoord xoffset, wxCoord yoffset,
                       wxPolygonFillMode fillStyle) override {
        RecordedPrimitive& p = Add(RecordedPrimitive::Polygon);
        for (int i = 0; i < n; ++i)
            p.points.push_back(wxPoint(points[i].x + xoffset, points[i].y + yoffset));
        p.fillMode = fillStyle;
    }
};

RecordingDC::RecordingDC(const wxSize& size) : wxDC(new RecordingDCImpl(this, size)) {}

RecordingDCImpl* RecordingDC::Impl() const {
    return static_cast<RecordingDCImpl*>(m_pimpl);
}

std::string RecordingDC::Dump() const {
    std::string out;
    for (const RecordedPrimitive& p : Primitives())
        out += wxString::Format("%d '%s' (%d,%d)-(%d,%d) rect %d,%d %dx%d pen %s\n",
                                static_cast<int>(p.kind), p.text, p.From().x, p.From().y, p.To().x,
                                p.To().y, p.rect.x, p.rect.y, p.rect.width, p.rect.height,
                                p.pen.IsOk() ? wxString::Format("%06x", p.pen.GetColour().GetRGB())
                                             : wxString("-"))
                   .ToStdString();
    return out;
}

const std::vector<RecordedPrimitive>& RecordingDC::Primitives() const {
    return Impl()->m_record;
}

std::vector<RecordedPrimitive> RecordingDC::Primitives(RecordedPrimitive::Kind kind) const {
    std::vector<RecordedPrimitive> result;
    for (const RecordedPrimitive& p : Impl()->m_record)
        if (p.kind == kind)
            result.push_back(p);
    return result;
}

std::vector<wxString> RecordingDC::Texts() const {
    std::vector<wxString> result;
    for (const RecordedPrimitive& p : Impl()->m_record)
        if (p.kind == RecordedPrimitive::Text)
            result.push_back(p.text);
    return result;
}

const RecordedPrimitive* RecordingDC::FindText(const wxString& text) const {
    for (const RecordedPrimitive& p : Impl()->m_record)
        if (p.kind == RecordedPrimitive::Text && p.text == text)
            return &p;
    return nullptr;
}

int RecordingDC::CountText(const wxString& text) const {
    int count = 0;
    for (const RecordedPrimitive& p : Impl()->m_record)
        if (p.kind == RecordedPrimitive::Text && p.text == text)
            ++count;
    return count;
}

const RecordedPrimitive* RecordingDC::FindLine(const wxPoint& from, const wxPoint& to) const {
    for (const RecordedPrimitive& p : Impl()->m_record)
        if (p.kind == RecordedPrimitive::Line && p.From() == from && p.To() == to)
            return &p;
    return nullptr;
}

void RecordingDC::ClearRecord() {
    Impl()->m_record.clear();
}

namespace {
int PointSizeOf(const wxFont& font) {
    const int size = font.IsOk() ? font.GetPointSize() : 0;
    return size > 0 ? size : 12;
}
}  // namespace

int RecordingDC::CharWidth(const wxFont& font) {
    const bool bold = font.IsOk() && font.GetWeight() > 500;
    return (2 * PointSizeOf(font)) / 3 + (bold ? 1 : 0);
}

int RecordingDC::LineHeight(const wxFont& font) {
    return (4 * PointSizeOf(font)) / 3;
}

wxSize RecordingDC::Measure(const wxString& text, const wxFont& font) {
    return wxSize(static_cast<int>(text.length()) * CharWidth(font), LineHeight(font));
}

void RecordingDC::SetMeasuringDC(wxDC* dc) {
    Impl()->m_measuring = dc;
}
