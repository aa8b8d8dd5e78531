// The recording context that the painting tests rely on: what it records and how it measures.
#include <gtest/gtest.h>

#include <wx/graphics.h>
// After graphics.h: dcgraph.h tests wxUSE_GRAPHICS_CONTEXT before including anything.
#include <wx/dcgraph.h>
#include <wx/image.h>

#include "support/RecordingDC.h"

TEST(RecordingDC, RecordsLinesWithTheStateInForce) {
    RecordingDC dc(wxSize(100, 50));
    wxPen pen(wxColour(10, 20, 30), 3);
    dc.SetPen(pen);
    dc.SetBrush(wxBrush(wxColour(1, 2, 3)));
    dc.SetTextForeground(wxColour(4, 5, 6));
    dc.DrawLine(1, 2, 3, 4);
    dc.SetPen(wxPen(wxColour(0, 0, 255), 1));
    dc.DrawRectangle(5, 6, 7, 8);

    ASSERT_EQ(dc.Primitives().size(), 2u);
    const RecordedPrimitive& line = dc.Primitives()[0];
    EXPECT_EQ(line.kind, RecordedPrimitive::Line);
    EXPECT_EQ(line.From(), wxPoint(1, 2));
    EXPECT_EQ(line.To(), wxPoint(3, 4));
    EXPECT_EQ(line.pen.GetColour(), wxColour(10, 20, 30));
    EXPECT_EQ(line.pen.GetWidth(), 3);
    EXPECT_EQ(line.brush.GetColour(), wxColour(1, 2, 3));
    EXPECT_EQ(line.textForeground, wxColour(4, 5, 6));
    const RecordedPrimitive& rect = dc.Primitives()[1];
    EXPECT_EQ(rect.kind, RecordedPrimitive::Rectangle);
    EXPECT_EQ(rect.rect, wxRect(5, 6, 7, 8));
    EXPECT_EQ(rect.pen.GetColour(), wxColour(0, 0, 255));
    EXPECT_NE(dc.FindLine(wxPoint(1, 2), wxPoint(3, 4)), nullptr);
    EXPECT_EQ(dc.FindLine(wxPoint(3, 4), wxPoint(1, 2)), nullptr);
}

TEST(RecordingDC, RecordsClippingAsPrimitivesAndAsState) {
    RecordingDC dc;
    dc.SetClippingRegion(wxRect(10, 10, 100, 100));
    dc.SetClippingRegion(wxRect(50, 0, 100, 50));
    dc.DrawText("in", 0, 0);
    dc.DestroyClippingRegion();
    dc.DrawText("out", 0, 0);
    const auto& all = dc.Primitives();
    ASSERT_EQ(all.size(), 5u);
    EXPECT_EQ(all[0].kind, RecordedPrimitive::SetClip);
    EXPECT_EQ(all[1].rect, wxRect(50, 0, 100, 50));
    EXPECT_TRUE(all[2].clipped);
    EXPECT_EQ(all[2].clip, wxRect(50, 10, 60, 40));
    EXPECT_EQ(all[3].kind, RecordedPrimitive::DestroyClip);
    EXPECT_FALSE(all[4].clipped);
    EXPECT_EQ(dc.Texts(), (std::vector<wxString>{"in", "out"}));
}

TEST(RecordingDC, MeasuresWithTheFixedMetric) {
    RecordingDC dc;
    // No font set: a 12-point normal font is assumed.
    EXPECT_EQ(dc.GetTextExtent("MMMM"), wxSize(32, 16));
    wxFont font(wxFontInfo(12).FaceName("Segoe UI"));
    dc.SetFont(font);
    EXPECT_EQ(dc.GetTextExtent("abc"), wxSize(24, 16));
    dc.SetFont(font.Bold());
    EXPECT_EQ(dc.GetTextExtent("abc"), wxSize(27, 16));
    dc.SetFont(wxFont(wxFontInfo(18)));
    EXPECT_EQ(dc.GetTextExtent("ab"), wxSize(24, 24));
    EXPECT_EQ(dc.GetCharHeight(), 24);
}

TEST(RecordingDC, CanDelegateMeasuringToARealContext) {
    wxImage image(50, 50);
    wxGCDC real(wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image));
    RecordingDC dc;
    const wxFont font(wxFontInfo(12));
    dc.SetFont(font);
    dc.SetMeasuringDC(&real);
    real.SetFont(font);
    const wxSize expected = real.GetTextExtent("Hello");
    EXPECT_EQ(dc.GetTextExtent("Hello"), expected);
    EXPECT_GT(expected.x, 0);
}

TEST(RecordingDC, RecordsPolygonsWithTheirOffset) {
    RecordingDC dc;
    const wxPoint pts[3] = {wxPoint(0, 0), wxPoint(5, 0), wxPoint(0, 5)};
    dc.DrawPolygon(3, pts, 10, 20, wxWINDING_RULE);
    const auto polygons = dc.Primitives(RecordedPrimitive::Polygon);
    ASSERT_EQ(polygons.size(), 1u);
    EXPECT_EQ(polygons[0].points,
              (std::vector<wxPoint>{wxPoint(10, 20), wxPoint(15, 20), wxPoint(10, 25)}));
    EXPECT_EQ(polygons[0].fillMode, wxWINDING_RULE);
}
