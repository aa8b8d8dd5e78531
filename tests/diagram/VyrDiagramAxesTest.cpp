// Axes and grid, checked primitive by primitive on a recording context (fixed text metric:
// 8 pixels per character and 16 high for the 12-point font, 9 per character in bold; see
// RecordingDC.h), and as pictures on a cairo image against reference PNGs.
#include <gtest/gtest.h>

#include <wx/graphics.h>
// After graphics.h: dcgraph.h tests wxUSE_GRAPHICS_CONTEXT before including anything.
#include <wx/dcgraph.h>
#include <wx/intl.h>

#include "support/CurveBuilder.h"
#include "support/RecordingDC.h"
#include "support/ReferenceImage.h"
#include "support/TranslationScope.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

const wxColour kBlue(0, 0, 255);
const wxColour kGreen(0, 128, 0);

wxFont DiagramFont() {
    return wxFont(wxFontInfo(12).FaceName("Segoe UI"));
}

// U (V) against t (s), plotted in (0, 0, 401 x 301): right = 400, bottom = 300. The manual
// range -2..8 x -20..100 gives 40 pixels per second (bx = 80) and 2.5 pixels per volt
// (by = 250), so the origin is at (80, 250).
struct AxesFixture : ::testing::Test {
    VyrBaseData doc{nullptr};
    VyrExperience* e = nullptr;
    VyrCourbe* u = nullptr;
    VyrDiagram* d = nullptr;
    RecordingDC dc{wxSize(401, 301)};

    void SetUp() override {
        e = AddExperience(doc, "E");
        u = AddCurve(doc, e, {"U", "V", "t", "s"}, {{0, 0}, {5, 50}}, VyrScale(), kBlue);
        d = ShowInDiagram(doc, 0, {u});
        wxRect rect(0, 0, 401, 301);
        d->Move(rect);
        SetRange(-2, 8, -20, 100);
        dc.SetFont(DiagramFont());
    }

    void SetRange(double xmin, double xmax, double ymin, double ymax) {
        VyrScale s(xmin, xmax, ymin, ymax);
        d->SetManualScale(&s, true);
    }

    void Paint() {
        dc.ClearRecord();
        d->PaintAxes(&dc);
    }

    std::vector<RecordedPrimitive> TextsAt(int y) const {
        std::vector<RecordedPrimitive> result;
        for (const RecordedPrimitive& p : dc.Primitives(RecordedPrimitive::Text))
            if (p.Pos().y == y)
                result.push_back(p);
        return result;
    }
};

// An application's English time texts, installed before the document: its diagrams read the
// seconds symbol when they are made.
struct EnglishTimeTexts {
    TranslationScope tr{TimeTexts()};
};
struct TimeAxesFixture : EnglishTimeTexts, AxesFixture {};

}  // namespace

TEST_F(AxesFixture, AxisLinesArrowsAndClipping) {
    dc.SetClippingRegion(wxRect(0, 0, 401, 301));
    Paint();
    const auto& all = dc.Primitives();
    ASSERT_GE(all.size(), 8u);
    // 3. The axes, in the axis colour, still under the caller's clipping.
    EXPECT_EQ(all[0].kind, RecordedPrimitive::Line);
    EXPECT_EQ(all[0].From(), wxPoint(0, 250));
    EXPECT_EQ(all[0].To(), wxPoint(400, 250));
    EXPECT_EQ(all[0].pen.GetColour(), d->GetAxisColour());
    EXPECT_EQ(all[0].pen.GetWidth(), 1);
    EXPECT_EQ(all[0].brush.GetColour(), d->GetAxisColour());
    EXPECT_TRUE(all[0].clipped);
    EXPECT_EQ(all[1].From(), wxPoint(80, 0));
    EXPECT_EQ(all[1].To(), wxPoint(80, 300));
    EXPECT_EQ(all[2].kind, RecordedPrimitive::DestroyClip);
    // 4. Arrow heads in black, unclipped, then the clipping of the plot rectangle.
    const wxPoint heads[4][2] = {{wxPoint(400, 250), wxPoint(394, 244)},
                                 {wxPoint(400, 250), wxPoint(394, 256)},
                                 {wxPoint(80, 0), wxPoint(74, 6)},
                                 {wxPoint(80, 0), wxPoint(86, 6)}};
    for (int k = 0; k < 4; ++k) {
        const RecordedPrimitive& p = all[3 + k];
        EXPECT_EQ(p.kind, RecordedPrimitive::Line);
        EXPECT_EQ(p.From(), heads[k][0]);
        EXPECT_EQ(p.To(), heads[k][1]);
        EXPECT_EQ(p.pen.GetColour(), wxColour(0, 0, 0));
        EXPECT_FALSE(p.clipped);
    }
    EXPECT_EQ(all[7].kind, RecordedPrimitive::SetClip);
    EXPECT_EQ(all[7].rect, wxRect(0, 0, 401, 301));
    // Everything after is clipped to the plot rectangle.
    for (size_t k = 8; k < all.size(); ++k)
        EXPECT_TRUE(all[k].clipped) << k;
}

TEST_F(AxesFixture, XGraduationsBelowTheAxis) {
    Paint();
    // Step 1 s from -2 to 8; 0 skipped; 8 lies at 400, under the arrow (not < 391).
    const std::vector<wxString> expected = {"-2", "-1", "1", "2", "3", "4", "5", "6", "7"};
    const auto labels = TextsAt(256);  // text top = oy + 6
    std::vector<wxString> texts;
    for (const RecordedPrimitive& p : labels)
        if (p.text != "0")
            texts.push_back(p.text);
    EXPECT_EQ(texts, expected);
    for (int i : {-2, -1, 1, 2, 3, 4, 5, 6, 7}) {
        const int px = 40 * i + 80;
        EXPECT_NE(dc.FindLine(wxPoint(px, 250), wxPoint(px, 256)), nullptr) << i;
        const wxString label = wxString::Format("%d", i);
        const RecordedPrimitive* text = dc.FindText(label);
        ASSERT_NE(text, nullptr) << i;
        // Centred: px - width / 2 + f.
        EXPECT_EQ(text->Pos(), wxPoint(px - (8 * static_cast<int>(label.length())) / 2 + 1, 256));
    }
    EXPECT_EQ(dc.FindText("8"), nullptr);
}

TEST_F(AxesFixture, YGraduationsLeftOfTheAxis) {
    Paint();
    // Step 10 V from -20 to 100; 0 skipped; 100 lies at row 0, under the arrow (not > 9).
    for (int j : {-2, -1, 1, 2, 3, 4, 5, 6, 7, 8, 9}) {
        const int py = 250 - 25 * j;
        EXPECT_NE(dc.FindLine(wxPoint(80, py), wxPoint(74, py)), nullptr) << j;
        const wxString label = wxString::Format("%d", 10 * j);
        const RecordedPrimitive* text = dc.FindText(label);
        ASSERT_NE(text, nullptr) << j;
        // Right-aligned to ox - 9, centred on the tick: py - 16 / 2 - 1.
        const int width = 8 * static_cast<int>(label.length());
        EXPECT_EQ(text->Pos(), wxPoint(80 - 9 - width, py - 9)) << j;
    }
    EXPECT_EQ(dc.FindText("100"), nullptr);
}

TEST_F(AxesFixture, TitlesAndTheZeroLabel) {
    Paint();
    // X title "t (s)", 40 wide, right-aligned to 400, H + 6 above the axis.
    const RecordedPrimitive* x = dc.FindText("t (s)");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(x->Pos(), wxPoint(360, 228));
    // Y title: "U (V)" measured in bold (45), right-aligned to ox - 9 = 71: starts at 26.
    const RecordedPrimitive* name = dc.FindText("U");
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(name->Pos(), wxPoint(26, 0));
    EXPECT_TRUE(name->IsBold());
    EXPECT_EQ(name->font.GetPointSize(), 12);
    EXPECT_EQ(name->textForeground, kBlue);
    // The unit after it, in normal weight and the previous text colour, advanced by "U" (9).
    const RecordedPrimitive* unit = dc.FindText(" (V)");
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->Pos(), wxPoint(35, 0));
    EXPECT_FALSE(unit->IsBold());
    EXPECT_EQ(unit->textForeground, wxColour(0, 0, 0));
    // "0" once, at the Y labels' x (ox - 9 - W = 39) and the X labels' top (256).
    EXPECT_EQ(dc.CountText("0"), 1);
    EXPECT_EQ(dc.FindText("0")->Pos(), wxPoint(39, 256));
}

TEST_F(AxesFixture, RestoresPenBrushFontAndTextColour) {
    const wxPen pen(wxColour(1, 2, 3), 7);
    const wxBrush brush(wxColour(4, 5, 6));
    const wxFont font = wxFont(wxFontInfo(10).FaceName("Segoe UI").Italic());
    dc.SetPen(pen);
    dc.SetBrush(brush);
    dc.SetFont(font);
    dc.SetTextForeground(wxColour(7, 8, 9));
    d->SetGridShown(true);
    Paint();
    EXPECT_EQ(dc.GetPen(), pen);
    EXPECT_EQ(dc.GetBrush(), brush);
    EXPECT_EQ(dc.GetFont(), font);
    EXPECT_EQ(dc.GetTextForeground(), wxColour(7, 8, 9));
    // The labels used that font's size (10 points: 6 per character, 13 high).
    const RecordedPrimitive* label = dc.FindText("10");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->font.GetPointSize(), 10);
    EXPECT_EQ(label->Pos(), wxPoint(80 - 9 - 12, 225 - 6 - 1));
    EXPECT_EQ(dc.FindText("U")->font.GetPointSize(), 10);
}

TEST_F(AxesFixture, RestoresPenBrushAndFontOfACairoContext) {
    wxImage image = MakeFilledImage(401, 301, *wxWHITE);
    wxGCDC gc(wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image));
    const wxPen pen(wxColour(1, 2, 3), 3);
    const wxBrush brush(wxColour(4, 5, 6));
    const wxFont font = DiagramFont();
    gc.SetPen(pen);
    gc.SetBrush(brush);
    gc.SetFont(font);
    d->SetGridShown(true);
    d->PaintAxes(&gc);
    EXPECT_EQ(gc.GetPen(), pen);
    EXPECT_EQ(gc.GetBrush(), brush);
    EXPECT_EQ(gc.GetFont(), font);
}

TEST_F(AxesFixture, YLabelsGoRightOfAnAxisAtTheLeftEdge) {
    SetRange(0, 10, -20, 100);
    Paint();
    // ox = 0: 0 - 9 - 32 < -5, so labels at ox + 9 and ticks to ox + 6.
    EXPECT_NE(dc.FindLine(wxPoint(0, 225), wxPoint(6, 225)), nullptr);
    ASSERT_NE(dc.FindText("10"), nullptr);
    EXPECT_EQ(dc.FindText("10")->Pos(), wxPoint(9, 225 - 9));
    // The "0" follows the Y labels.
    EXPECT_EQ(dc.FindText("0")->Pos(), wxPoint(9, 256));
    // The Y title would start left of the plot: it starts at ox + 9 instead.
    EXPECT_EQ(dc.FindText("U")->Pos(), wxPoint(9, 0));
}

TEST_F(AxesFixture, XLabelsGoAboveAnAxisAtTheBottom) {
    SetRange(-2, 8, 0, 100);
    Paint();
    // oy = 300: 300 + 6 + 16 > 300.
    EXPECT_NE(dc.FindLine(wxPoint(120, 300), wxPoint(120, 294)), nullptr);
    EXPECT_EQ(dc.FindText("1")->Pos(), wxPoint(117, 300 - 6 - 16));
    // The title goes 2 (H + 3) above the axis.
    EXPECT_EQ(dc.FindText("t (s)")->Pos(), wxPoint(360, 300 - 38));
}

TEST_F(AxesFixture, LabelsAboveSettingForcesXLabelsAbove) {
    d->SetLabelsAbove(1);
    Paint();
    EXPECT_NE(dc.FindLine(wxPoint(120, 250), wxPoint(120, 244)), nullptr);
    EXPECT_EQ(dc.FindText("1")->Pos(), wxPoint(117, 250 - 22));
    EXPECT_EQ(dc.FindText("t (s)")->Pos(), wxPoint(360, 250 - 38));
    // Another value than 1 does not.
    d->SetLabelsAbove(2);
    Paint();
    EXPECT_EQ(dc.FindText("1")->Pos(), wxPoint(117, 256));
}

TEST_F(AxesFixture, XTitleGoesUnderAnAxisAtTheTop) {
    SetRange(-2, 8, -100, 0);
    Paint();
    // oy = 0: 0 - 22 < 1, so the title goes to 0 + 22.
    EXPECT_EQ(dc.FindText("t (s)")->Pos(), wxPoint(360, 22));
}

TEST_F(AxesFixture, NoZeroLabelWhenTheOriginIsOutOfView) {
    SetRange(2, 12, 10, 100);
    Paint();
    EXPECT_EQ(dc.FindText("0"), nullptr);
    // 6 pixels outside still counts (the hit rectangle).
    SetRange(0.1, 10.1, -20, 100);
    Paint();
    EXPECT_EQ(dc.CountText("0"), 1);
}

TEST_F(AxesFixture, YTitleNamesEveryPlottedQuantity) {
    VyrCourbe* w = AddCurve(doc, e, {"W", "V", "t", "s"}, {{0, 1}}, VyrScale(), kGreen);
    VyrCourbe* i = AddCurve(doc, e, {"I", "mA", "t", "s"}, {{0, 1}}, VyrScale(), kGreen);
    ShowInDiagram(doc, 0, {u, w, i});
    SetRange(-2, 8, -20, 100);
    d->SetBackgroundColour(wxColour(255, 255, 255));
    Paint();
    // "U, W, I (V)" in bold is 11 * 9 = 99 wide: 71 - 99 < 0, so it starts at ox + 9 = 89.
    const RecordedPrimitive* first = dc.FindText("U, ");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->Pos(), wxPoint(89, 0));
    EXPECT_TRUE(first->IsBold());
    EXPECT_EQ(first->textForeground, kBlue);
    const RecordedPrimitive* second = dc.FindText("W, ");
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->Pos(), wxPoint(89 + 27, 0));
    EXPECT_TRUE(second->IsBold());
    EXPECT_EQ(second->textForeground, kGreen);
    // Another unit: normal weight, disabled colour.
    const RecordedPrimitive* third = dc.FindText("I");
    ASSERT_NE(third, nullptr);
    EXPECT_EQ(third->Pos(), wxPoint(89 + 54, 0));
    EXPECT_FALSE(third->IsBold());
    EXPECT_EQ(third->textForeground, wxColour(185, 185, 185));
    EXPECT_EQ(dc.FindText(" (V)")->Pos(), wxPoint(89 + 54 + 8, 0));
    // With every curve in colour, the other unit's name keeps its curve's colour.
    d->SetAllCurvesInColour(true);
    Paint();
    EXPECT_EQ(dc.FindText("I")->textForeground, kGreen);
    EXPECT_FALSE(dc.FindText("I")->IsBold());
}

TEST_F(AxesFixture, NoTitlesWithoutUnits) {
    d->SetUnits("", "", "");
    Paint();
    EXPECT_EQ(dc.FindText("U"), nullptr);
    EXPECT_EQ(dc.FindText(" ()"), nullptr);
    for (const wxString& t : dc.Texts())
        EXPECT_FALSE(t.Contains("(")) << t;
}

TEST_F(AxesFixture, PrefixedUnitsInTitlesAndScaledLabels) {
    SetRange(-0.002, 0.008, -0.02, 0.1);
    Paint();
    // Largest magnitudes 0.008 s and 0.1 V: ms and mV; labels in those units.
    EXPECT_NE(dc.FindText("t (ms)"), nullptr);
    EXPECT_NE(dc.FindText(" (mV)"), nullptr);
    EXPECT_NE(dc.FindText("7"), nullptr);
    EXPECT_NE(dc.FindText("90"), nullptr);
    d->SetPrefixes(false);
    Paint();
    EXPECT_NE(dc.FindText("t (s)"), nullptr);
    EXPECT_NE(dc.FindText(" (V)"), nullptr);
    // Under the bare unit the numbers are the values themselves.
    EXPECT_NE(dc.FindText("0.09"), nullptr);
    EXPECT_NE(dc.FindText("0.007"), nullptr);
    EXPECT_EQ(dc.FindText("90"), nullptr);
    EXPECT_EQ(dc.FindText("7"), nullptr);
}

TEST_F(AxesFixture, NumbersUnderAUnitWithoutPrefixAreTheValues) {
    // A pendulum's speed, -0.74 .. 0.66 m/s: "m/s" takes no prefix, so its numbers stay in m/s
    // (never -800 .. 600 under "m/s").
    VyrCourbe* v = AddCurve(doc, e, {"v", "m/s", "t", "s"}, {{0, -0.74}, {5, 0.66}});
    ShowInDiagram(doc, 0, {v});
    d->SetUnits("t", "s", "m/s");
    SetRange(-2, 8, -0.8, 0.7);
    Paint();
    EXPECT_NE(dc.FindText(" (m/s)"), nullptr);
    for (const char* label : {"-0.8", "-0.6", "-0.2", "0.2", "0.6"})
        EXPECT_NE(dc.FindText(label), nullptr) << label;
    for (const char* label : {"-800", "-600", "600", "200"})
        EXPECT_EQ(dc.FindText(label), nullptr) << label;
}

TEST_F(TimeAxesFixture, TranslatedTimeLabelsReadInDaysAndHours) {
    ASSERT_TRUE(tr.IsLoaded());
    // A recording of 226,755 s with time labels: the seconds symbol translates to "s", so the
    // time rule applies and the axis reads in days and hours, in the catalogue's words.
    VyrCourbe* c = AddCurve(doc, e, {"T", L"\u00b0C", "t", "s"}, {{0, 18}, {226755, 24}});
    ShowInDiagram(doc, 0, {c});
    d->SetUnits("t", "s", L"\u00b0C");
    d->SetTimeLabels(true);
    SetRange(0, 226755, -5, 30);
    Paint();
    EXPECT_NE(dc.FindText("t (d:h)"), nullptr);
    // Steps of 6 hours: 0:06, 0:12, 0:18, 1:00, ...
    for (const char* label : {"0:06", "0:18", "1:00", "2:12"})
        EXPECT_NE(dc.FindText(label), nullptr) << label;
    ASSERT_FALSE(dc.Texts().empty());
    for (const wxString& text : dc.Texts())
        EXPECT_FALSE(text.Contains("IDS_")) << text;
    d->SetTimeLabels(false);
    Paint();
    EXPECT_NE(dc.FindText("t (ks)"), nullptr);
}

TEST_F(AxesFixture, UntranslatedTimeLabelsShowTheKeys) {
    // Without a catalogue the seconds symbol is its key: a unit spelt "s" is no time unit, and
    // a unit spelt like the key is labelled with the key of its reading.
    const wxString seconds = "IDS_SYMB_SECONDE";
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", seconds}, {{0, 0}, {7300, 50}});
    ShowInDiagram(doc, 0, {c});
    d->SetUnits("t", seconds, "V");
    d->SetTimeLabels(true);
    SetRange(0, 7400, -20, 100);
    Paint();
    EXPECT_NE(dc.FindText("t (IDS_HMIN)"), nullptr);
    EXPECT_NE(dc.FindText("1:00"), nullptr);
}

TEST_F(TimeAxesFixture, SecondsAxisInHoursAndMinutes) {
    ASSERT_TRUE(tr.IsLoaded());
    const wxString seconds = "s";
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", seconds}, {{0, 0}, {7300, 50}});
    ShowInDiagram(doc, 0, {c});
    d->SetUnits("t", seconds, "V");
    d->SetTimeLabels(true);
    // 0..7400 s: multiple 3600 (hours and minutes), step 600 (12 intervals); 2:00 lies at
    // column 389, left of the arrow head (391).
    SetRange(0, 7400, -20, 100);
    Paint();
    std::vector<wxString> labels;
    for (const RecordedPrimitive& p : TextsAt(256))
        if (p.text != "0")
            labels.push_back(p.text);
    EXPECT_EQ(labels, (std::vector<wxString>{"0:10", "0:20", "0:30", "0:40", "0:50", "1:00", "1:10",
                                             "1:20", "1:30", "1:40", "1:50", "2:00"}));
    EXPECT_NE(dc.FindText("t (h:min)"), nullptr);
    // 600 s is 400 * 600 / 7400 = 32.4 pixels: column 32.
    EXPECT_NE(dc.FindLine(wxPoint(32, 250), wxPoint(32, 256)), nullptr);
    EXPECT_NE(dc.FindLine(wxPoint(389, 250), wxPoint(389, 256)), nullptr);
}

TEST_F(AxesFixture, LineScaleMultipliesEveryPixelSize) {
    VyrDiagramTestAccess::SetLineScale(*d, 2);
    Paint();
    const auto& all = dc.Primitives();
    EXPECT_EQ(all[0].pen.GetWidth(), 2);
    EXPECT_NE(dc.FindLine(wxPoint(400, 250), wxPoint(388, 238)), nullptr);
    EXPECT_NE(dc.FindLine(wxPoint(80, 0), wxPoint(92, 12)), nullptr);
    // Ticks 12 long, labels 12 + 18 away, centring offset + 2.
    EXPECT_NE(dc.FindLine(wxPoint(120, 250), wxPoint(120, 262)), nullptr);
    EXPECT_EQ(dc.FindText("1")->Pos(), wxPoint(120 - 4 + 2, 262));
    EXPECT_NE(dc.FindLine(wxPoint(80, 225), wxPoint(68, 225)), nullptr);
    EXPECT_EQ(dc.FindText("10")->Pos(), wxPoint(80 - 18 - 16, 225 - 8 - 2));
    EXPECT_EQ(dc.FindText("t (s)")->Pos(), wxPoint(360, 250 - (16 + 12)));
    for (const RecordedPrimitive& p : dc.Primitives(RecordedPrimitive::Line))
        EXPECT_EQ(p.pen.GetWidth(), 2);
}

TEST_F(AxesFixture, GridMinorThenMajorInTheGridColours) {
    d->SetBackgroundColour(wxColour(255, 255, 255));
    d->SetGridShown(true);
    Paint();
    const auto lines = dc.Primitives(RecordedPrimitive::Line);
    ASSERT_FALSE(lines.empty());
    // The minor grid (sx / 5, sy / 5) comes first, then the major one, then the axes.
    EXPECT_EQ(lines.front().pen.GetColour(), wxColour(235, 235, 235));
    size_t k = 0;
    while (k < lines.size() && lines[k].pen.GetColour() == wxColour(235, 235, 235))
        ++k;
    EXPECT_GT(k, 90u);  // about 50 vertical and 60 horizontal lines
    std::vector<RecordedPrimitive> major;
    while (k < lines.size() && lines[k].pen.GetColour() == wxColour(215, 215, 215))
        major.push_back(lines[k++]);
    // Major: x = -2..8 every second, y = -20..100 every 10 V.
    ASSERT_EQ(major.size(), 11u + 13u);
    for (int i = 0; i <= 10; ++i) {
        EXPECT_EQ(major[i].From(), wxPoint(40 * (i - 2) + 80, 0));
        EXPECT_EQ(major[i].To(), wxPoint(40 * (i - 2) + 80, 300));
    }
    for (int j = 0; j <= 12; ++j) {
        EXPECT_EQ(major[11 + j].From(), wxPoint(0, 250 - 25 * (j - 2)));
        EXPECT_EQ(major[11 + j].To(), wxPoint(400, 250 - 25 * (j - 2)));
    }
    // Then the X axis.
    EXPECT_EQ(lines[k].From(), wxPoint(0, 250));
}

TEST_F(AxesFixture, PaintGridDrawsEveryMultipleAndRestoresThePen) {
    const wxPen pen(wxColour(9, 9, 9), 4);
    dc.SetPen(pen);
    d->PaintGrid(&dc, 2.5, 50, wxColour(1, 2, 3));
    EXPECT_EQ(dc.GetPen(), pen);
    const auto lines = dc.Primitives(RecordedPrimitive::Line);
    // x: trunc(-2 / 2.5) = 0 .. trunc(8 / 2.5) = 3; y: trunc(-20 / 50) = 0 .. 2.
    ASSERT_EQ(lines.size(), 4u + 3u);
    EXPECT_EQ(lines[0].From(), wxPoint(80, 0));
    EXPECT_EQ(lines[3].From(), wxPoint(380, 0));
    EXPECT_EQ(lines[4].From(), wxPoint(0, 250));
    EXPECT_EQ(lines[6].From(), wxPoint(0, 0));
    EXPECT_EQ(lines[6].To(), wxPoint(400, 0));
    EXPECT_EQ(lines[0].pen.GetColour(), wxColour(1, 2, 3));
    // A zero or absurd step draws nothing rather than looping.
    dc.ClearRecord();
    d->PaintGrid(&dc, 0, 0, wxColour(1, 2, 3));
    d->PaintGrid(&dc, 1e-300, 1e-300, wxColour(1, 2, 3));
    EXPECT_TRUE(dc.Primitives(RecordedPrimitive::Line).empty());
    d->PaintGrid(nullptr, 1, 1, wxColour(1, 2, 3));
    d->PaintAxes(nullptr);
}

// ---- Reference pictures ---------------------------------------------------------------------

namespace {

wxImage RenderAxes(VyrDiagram* d, const wxSize& size) {
    wxImage image = MakeFilledImage(size.x, size.y, wxColour(255, 255, 255));
    {
        wxGCDC dc(wxGraphicsRenderer::GetCairoRenderer()->CreateContextFromImage(image));
        dc.SetFont(DiagramFont());
        dc.SetTextForeground(d->GetAxisColour());
        wxRect rect;
        d->GetRect(rect);
        dc.SetClippingRegion(rect);
        d->PaintAxes(&dc);
        dc.DestroyClippingRegion();
    }
    return image;
}

}  // namespace

TEST_F(AxesFixture, ReferencePictureOfPlainAxes) {
    EXPECT_TRUE(MatchesReference(RenderAxes(d, wxSize(401, 301)), "diagram/axes_plain.png"));
}

TEST_F(AxesFixture, ReferencePictureComparisonSeesAChangeInDrawing) {
    // Thicker lines and the grid must not pass for the plain picture.
    VyrDiagramTestAccess::SetLineScale(*d, 2);
    EXPECT_FALSE(MatchesReference(RenderAxes(d, wxSize(401, 301)), "diagram/axes_plain.png"));
    VyrDiagramTestAccess::SetLineScale(*d, 1);
    d->SetGridShown(true);
    EXPECT_FALSE(MatchesReference(RenderAxes(d, wxSize(401, 301)), "diagram/axes_plain.png"));
    // A different size never matches.
    EXPECT_FALSE(MatchesReference(RenderAxes(d, wxSize(400, 301)), "diagram/axes_plain.png"));
}

TEST_F(AxesFixture, ReferencePictureOfAxesWithGridAndTwoUnits) {
    VyrCourbe* i = AddCurve(doc, e, {"I", "mA", "t", "s"}, {{0, 1}}, VyrScale(), kGreen);
    ShowInDiagram(doc, 0, {u, i});
    SetRange(-0.002, 0.008, -20, 100);
    d->SetBackgroundColour(wxColour(255, 255, 255));
    d->SetGridShown(true);
    EXPECT_TRUE(MatchesReference(RenderAxes(d, wxSize(401, 301)), "diagram/axes_grid.png"));
}

TEST_F(TimeAxesFixture, ReferencePictureOfATimeAxisWithLabelsOnTheRight) {
    ASSERT_TRUE(tr.IsLoaded());
    const wxString seconds = "s";
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", seconds}, {{0, 0}, {7300, 50}});
    ShowInDiagram(doc, 0, {c});
    d->SetUnits("t", seconds, "V");
    d->SetTimeLabels(true);
    SetRange(0, 7400, -20, 100);
    EXPECT_TRUE(MatchesReference(RenderAxes(d, wxSize(401, 301)), "diagram/axes_time.png"));
}
