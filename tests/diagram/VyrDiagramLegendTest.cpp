#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Kind = RecordedPrimitive::Kind;

namespace {

const wxColour kRed(255, 0, 0);
const wxColour kBlue(0, 0, 255);

void PaintOn(VyrDiagram& d, RecordingDC& dc) {
    d.Paint(&dc, false, false, false, 1.0, nullptr, false);
}

// The legend's frame: the last rectangle drawn with the background's brush (white).
const RecordedPrimitive* LegendBox(const RecordingDC& dc) {
    const RecordedPrimitive* found = nullptr;
    for (const RecordedPrimitive& p : dc.Primitives())
        if (p.kind == Kind::Rectangle && p.brush.IsOk() && p.brush.GetColour() == *wxWHITE)
            found = &p;
    return found;
}

}  // namespace

TEST(VyrDiagramLegend, OneCurveHasNoLegend) {
    PaintScene scene;
    VyrCourbe* c = scene.AddCurve(CurveLook(), {{0, 0}, {400, 200}});
    scene.Show(c);
    scene.Frame();
    scene.Diagram().SetOptions(VYR_OPTION_LEGEND);
    RecordingDC dc;
    PaintOn(scene.Diagram(), dc);
    EXPECT_EQ(LegendBox(dc), nullptr);
}

TEST(VyrDiagramLegend, TwoCurvesAreNamedBesideALineOfTheirColourInsideTheBox) {
    PaintScene scene;
    CurveLook u;
    u.colour = kRed;
    u.width = 2;
    VyrCourbe* a = scene.AddCurve(u, {{0, 0}, {400, 200}});
    CurveLook i;
    i.grdY = "I";
    i.colour = kBlue;
    VyrCourbe* b = scene.AddCurve(i, {{0, 200}, {400, 0}});
    scene.Show(a);
    scene.Show(b);
    scene.Frame();
    scene.Diagram().SetOptions(VYR_OPTION_LEGEND);
    RecordingDC dc;
    PaintOn(scene.Diagram(), dc);
    const RecordedPrimitive* box = LegendBox(dc);
    ASSERT_NE(box, nullptr);
    wxRect plot;
    scene.Diagram().GetRect(plot);
    EXPECT_TRUE(plot.Contains(box->rect));
    for (const auto& entry :
         {std::make_pair(wxString("U"), kRed), std::make_pair(wxString("I"), kBlue)}) {
        RecordedPrimitive name;
        bool named = false;
        for (const RecordedPrimitive& p : dc.Primitives(Kind::Text))
            if (p.text == entry.first && box->rect.Contains(p.Pos())) {
                name = p;
                named = true;
            }
        ASSERT_TRUE(named) << entry.first;
        // A line sample of the curve's colour left of its name, at the name's height.
        bool sample = false;
        for (const RecordedPrimitive& p : dc.Primitives(Kind::Line))
            sample = sample ||
                     (p.pen.IsOk() && p.pen.GetColour() == entry.second && p.From().y == p.To().y &&
                      box->rect.Contains(p.From()) && p.To().x < name.Pos().x);
        EXPECT_TRUE(sample) << entry.first << dc.Dump();
    }
    // The curves are the plot's two diagonals: the legend lies between them, off both.
    for (int x = plot.x; x <= plot.GetRight(); ++x) {
        const int rising = 220 - (x - 50) / 2;
        const int falling = 20 + (x - 50) / 2;
        EXPECT_FALSE(box->rect.Contains(wxPoint(x, rising))) << x;
        EXPECT_FALSE(box->rect.Contains(wxPoint(x, falling))) << x;
    }
}

TEST(VyrDiagramLegend, LegendGoesWhereTheCurvesAreNotAndNeverOverANote) {
    PaintScene scene;
    // One curve along the top, one rising from the bottom's middle: the left half below the
    // first is empty.
    CurveLook u;
    VyrCourbe* a = scene.AddCurve(u, {{0, 200}, {400, 200}});
    CurveLook i;
    i.grdY = "I";
    VyrCourbe* b = scene.AddCurve(i, {{200, 0}, {400, 200}});
    scene.Show(a);
    scene.Show(b);
    scene.Frame();
    scene.Diagram().SetOptions(VYR_OPTION_LEGEND | VYR_OPTION_TIDY_LAYOUT);
    RecordingDC first;
    PaintOn(scene.Diagram(), first);
    const RecordedPrimitive* box = LegendBox(first);
    ASSERT_NE(box, nullptr);
    wxRect plot;
    scene.Diagram().GetRect(plot);
    // Left of the rising curve's start and clear of the flat one along the top.
    EXPECT_LT(box->rect.GetRight(), plot.x + plot.width / 2) << first.Dump();
    const wxPoint top = scene.Diagram().RealToPixel(0, 200);
    EXPECT_GT(box->rect.y, top.y) << first.Dump();

    // A note where the legend was: the legend moves away from it.
    VyrNote* note = scene.Doc().CreateNoteEntity();
    note->SetText("a note where the legend was");
    note->SetPointIndex(0);
    const wxRealPoint at = scene.Diagram().PixelToReal(box->rect.x, box->rect.y);
    note->SetPosition(at.x, at.y);
    a->AddNote(note);
    RecordingDC second;
    PaintOn(scene.Diagram(), second);
    const RecordedPrimitive* moved = LegendBox(second);
    const RecordedPrimitive* text = second.FindText("a note where the legend was");
    ASSERT_NE(text, nullptr);
    ASSERT_NE(moved, nullptr);
    EXPECT_FALSE(
        moved->rect.Intersects(wxRect(text->Pos(), RecordingDC::Measure(text->text, text->font))));
    EXPECT_NE(moved->rect, box->rect);
}
