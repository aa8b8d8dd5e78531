#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Kind = RecordedPrimitive::Kind;

namespace {

const wxColour kRed(255, 0, 0);
const wxColour kBlue(0, 0, 255);
const wxRect kArea(50, 20, 401, 201);

// U(t) in V (red) and I(t) in A (blue), both shown, the main unit V.
struct TwoUnits {
    PaintScene scene;
    VyrCourbe* main = nullptr;
    VyrCourbe* other = nullptr;
    TwoUnits() {
        CurveLook v;
        v.colour = kRed;
        main = scene.AddCurve(v, {{0, 0}, {200, 150}, {400, 0}});
        CurveLook a;
        a.grdY = "I";
        a.unitY = "A";
        a.colour = kBlue;
        other = scene.AddCurve(a, {{0, 0.0}, {400, 2.0}});
        scene.Show(main);
        scene.Show(other);
        scene.Diagram().SetUy("V");
        scene.Frame(kArea);
        scene.SetUnitRangeY("A", 0.0, 2.0);
    }
    VyrDiagram& Diagram() { return scene.Diagram(); }
};

void PaintOn(VyrDiagram& d, RecordingDC& dc) {
    d.Paint(&dc, false, false, false, 1.0, nullptr, false);
}

wxRect BoxOf(const RecordedPrimitive& text) {
    return wxRect(text.Pos(), RecordingDC::Measure(text.text, text.font));
}

// Pairs of drawn texts whose boxes (as the recording context measures them) cover each other.
std::vector<std::pair<wxString, wxString>> Collisions(const RecordingDC& dc) {
    const std::vector<RecordedPrimitive> texts = dc.Primitives(Kind::Text);
    std::vector<std::pair<wxString, wxString>> found;
    for (size_t i = 0; i < texts.size(); ++i)
        for (size_t j = i + 1; j < texts.size(); ++j)
            if (BoxOf(texts[i]).Intersects(BoxOf(texts[j])))
                found.push_back({texts[i].text, texts[j].text});
    return found;
}

std::vector<wxString> TextsAndPlaces(const RecordingDC& dc) {
    std::vector<wxString> out;
    for (const RecordedPrimitive& p : dc.Primitives())
        out.push_back(wxString::Format("%d %s %d,%d %d,%d", static_cast<int>(p.kind), p.text,
                                       p.From().x, p.From().y, p.To().x, p.To().y) +
                      (p.pen.IsOk() ? wxString::Format(" %08x", p.pen.GetColour().GetRGBA())
                                    : wxString(" -")));
    return out;
}

}  // namespace

TEST(VyrDiagramLayout, ANewDiagramHasNoOptionAndOptionsOffGiveTheClassicPictureAgain) {
    TwoUnits t;
    EXPECT_EQ(t.Diagram().GetOptions(), 0);
    RecordingDC classic;
    PaintOn(t.Diagram(), classic);

    t.Diagram().SetOptions(VYR_OPTIONS_EXPLAINED);
    RecordingDC explained;
    PaintOn(t.Diagram(), explained);
    EXPECT_NE(TextsAndPlaces(explained), TextsAndPlaces(classic));

    t.Diagram().SetOptions(0);
    t.Diagram().Move(const_cast<wxRect&>(kArea));
    RecordingDC again;
    PaintOn(t.Diagram(), again);
    EXPECT_EQ(TextsAndPlaces(again), TextsAndPlaces(classic));
}

TEST(VyrDiagramLayout, OptionsOutsideTheKnownBitsAreDropped) {
    TwoUnits t;
    t.Diagram().SetOptions(VYR_OPTION_LEGEND | (1 << 20));
    EXPECT_EQ(t.Diagram().GetOptions(), VYR_OPTION_LEGEND);
    EXPECT_TRUE(t.Diagram().HasOption(VYR_OPTION_LEGEND));
    EXPECT_FALSE(t.Diagram().HasOption(VYR_OPTION_UNIT_SCALES));
}

TEST(VyrDiagramLayout, OtherUnitGetsAScaleRightOfThePlotInItsCurvesColour) {
    TwoUnits t;
    t.Diagram().SetOptions(VYR_OPTION_UNIT_SCALES);
    RecordingDC dc;
    PaintOn(t.Diagram(), dc);
    wxRect plot;
    t.Diagram().GetRect(plot);
    EXPECT_EQ(t.Diagram().GetArea(), kArea);
    EXPECT_EQ(plot.x, kArea.x);
    EXPECT_LT(plot.width, kArea.width);
    const int axisX = plot.GetRight();
    // The axis line of A on the plot's right edge, in blue, from the top to the bottom.
    const RecordedPrimitive* axis =
        dc.FindLine(wxPoint(axisX, plot.y), wxPoint(axisX, plot.GetBottom() + 1));
    ASSERT_NE(axis, nullptr);
    EXPECT_EQ(axis->pen.GetColour(), kBlue);
    // Its unit and numbers in blue, right of the line (1 halfway up).
    const RecordedPrimitive* unit = dc.FindText("(A)");
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->textForeground, kBlue);
    EXPECT_GT(unit->Pos().x, axisX);
    const RecordedPrimitive* one = dc.FindText("1");
    ASSERT_NE(one, nullptr) << dc.Dump();
    EXPECT_EQ(one->textForeground, kBlue);
    EXPECT_GT(one->Pos().x, axisX);
    EXPECT_NEAR(one->Pos().y + RecordingDC::LineHeight(one->font) / 2, plot.y + plot.height / 2, 2);
    // The main unit's numbers are the red curve's colour now that two units share the plot.
    const RecordedPrimitive* main = dc.FindText("120");
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(main->textForeground, kRed);
    EXPECT_EQ(dc.FindText("150")->textForeground, *wxBLACK);  // on X
    // The curve of A is drawn in its own blue, not in the disabled grey.
    bool blueLine = false;
    for (const RecordedPrimitive& p : dc.Primitives(Kind::Line))
        blueLine =
            blueLine || (p.pen.IsOk() && p.pen.GetColour() == kBlue && p.From().x < axisX - 10);
    EXPECT_TRUE(blueLine);
}

TEST(VyrDiagramLayout, HeadingNamesEachUnitsQuantitiesAboveThePlot) {
    TwoUnits t;
    t.Diagram().SetOptions(VYR_OPTION_UNIT_SCALES | VYR_OPTION_TIDY_LAYOUT);
    RecordingDC dc;
    PaintOn(t.Diagram(), dc);
    wxRect plot;
    t.Diagram().GetRect(plot);
    EXPECT_GT(plot.y, kArea.y);
    const RecordedPrimitive* u = dc.FindText("U");
    const RecordedPrimitive* v = dc.FindText("(V)");
    const RecordedPrimitive* i = dc.FindText("I");
    const RecordedPrimitive* a = dc.FindText("(A)");
    ASSERT_TRUE(u && v && i && a);
    for (const RecordedPrimitive* p : {u, v, i})
        EXPECT_LT(p->Pos().y + RecordingDC::LineHeight(p->font), plot.y + 1) << p->text;
    EXPECT_TRUE(u->IsBold());
    EXPECT_EQ(u->textForeground, kRed);
    EXPECT_EQ(i->textForeground, kBlue);
    EXPECT_LT(u->Pos().x, v->Pos().x);
    EXPECT_LT(v->Pos().x, i->Pos().x);
    EXPECT_EQ(Collisions(dc), (std::vector<std::pair<wxString, wxString>>()));
}

TEST(VyrDiagramLayout, LongHeadingWrapsInsideTheAreaAndEndsInAnEllipsisPastThreeLines) {
    PaintScene scene;
    std::vector<VyrCourbe*> curves;
    for (int k = 0; k < 12; ++k) {
        CurveLook look;
        look.grdY = wxString::Format("Quantity%02d", k);
        curves.push_back(scene.AddCurve(look, {{0, k}, {400, 10.0 * k}}));
        scene.Show(curves.back());
    }
    const wxRect narrow(10, 10, 300, 250);
    scene.Frame(narrow);
    scene.Diagram().SetOptions(VYR_OPTION_TIDY_LAYOUT);
    RecordingDC dc;
    PaintOn(scene.Diagram(), dc);
    wxRect plot;
    scene.Diagram().GetRect(plot);
    int headingTexts = 0;
    bool ellipsis = false;
    for (const RecordedPrimitive& p : dc.Primitives(Kind::Text)) {
        if (!p.text.StartsWith("Quantity"))
            continue;
        ++headingTexts;
        ellipsis = ellipsis || p.text.EndsWith(L"\u2026");
        EXPECT_LE(BoxOf(p).GetRight(), narrow.GetRight()) << p.text;
        EXPECT_LT(p.Pos().y, plot.y) << p.text;
    }
    EXPECT_GT(headingTexts, 3);
    EXPECT_LT(headingTexts, 12);
    EXPECT_TRUE(ellipsis);
    EXPECT_EQ(Collisions(dc), (std::vector<std::pair<wxString, wxString>>()));
}

TEST(VyrDiagramLayout, GraduationLabelsThinOutWhereTheClassicOnesCollide) {
    PaintScene scene;
    VyrCourbe* c = scene.AddCurve(CurveLook(), {{0, 0}, {123456, 2000}});
    scene.Show(c);
    scene.Frame(wxRect(10, 10, 160, 120), 0.0, 123456.0, -2000.0, 2000.0);
    RecordingDC classic;
    PaintOn(scene.Diagram(), classic);
    ASSERT_FALSE(Collisions(classic).empty());

    scene.Diagram().SetOptions(VYR_OPTION_TIDY_LAYOUT);
    RecordingDC tidy;
    PaintOn(scene.Diagram(), tidy);
    EXPECT_EQ(Collisions(tidy), (std::vector<std::pair<wxString, wxString>>()));
    // Thinned, not emptied: some numbers remain on both axes.
    EXPECT_GT(tidy.Primitives(Kind::Text).size(), 4u);
}

TEST(VyrDiagramLayout, NoteOverAToolLabelStepsAsideAndTheToolLabelFindsAFreePlace) {
    TwoUnits t;
    VyrNote* note = t.scene.Doc().CreateNoteEntity();
    note->SetText("a note over the label");
    note->SetPointIndex(1);
    // The box right of the top of the curve, where the tool's label goes too.
    note->SetPosition(205, 175);
    t.main->AddNote(note);
    VyrOutilInterval model(0, &t.scene.Doc());
    model.SetAbs("s");
    model.SetOrd("V");
    model.SetPoints(200, 150, 200, 150);
    model.SetEtiq1("top");
    t.scene.Doc().AddOutilIntervalEntity(&model);
    RecordingDC classic;
    PaintOn(t.Diagram(), classic);
    ASSERT_FALSE(Collisions(classic).empty()) << classic.Dump();

    t.Diagram().SetOptions(VYR_OPTION_TIDY_LAYOUT);
    RecordingDC tidy;
    PaintOn(t.Diagram(), tidy);
    EXPECT_NE(tidy.FindText("top"), nullptr);
    EXPECT_NE(tidy.FindText("a note over the label"), nullptr);
    EXPECT_EQ(Collisions(tidy), (std::vector<std::pair<wxString, wxString>>()));
}

TEST(VyrDiagramLayout, TypesetUnitsShowSuperscriptsAndMicroButKeepTheStoredUnit) {
    PaintScene scene;
    CurveLook look;
    look.grdY = "a";
    look.unitY = "m/s^2";
    look.unitX = "us";
    VyrCourbe* c = scene.AddCurve(look, {{0, 0}, {400, 200}});
    scene.Show(c);
    scene.Frame();
    scene.Diagram().SetOptions(VYR_OPTION_TYPESET_UNITS | VYR_OPTION_TIDY_LAYOUT);
    RecordingDC dc;
    PaintOn(scene.Diagram(), dc);
    EXPECT_NE(dc.FindText(L"(m/s\u00b2)"), nullptr);
    EXPECT_NE(dc.FindText(L"t (\u00b5s)"), nullptr);
    EXPECT_EQ(c->GetVy()->GetUnite(), "m/s^2");
    EXPECT_EQ(c->GetVx()->GetUnite(), "us");
}

TEST(VyrDiagramLayout, QuantityWithoutUnitIsDrawnOnItsOwnRangeAndNamed) {
    PaintScene scene;
    CurveLook look;
    look.grdX = "x";
    look.unitX = "";
    look.grdY = "y";
    look.unitY = "";
    VyrCourbe* c = scene.AddCurve(look, {{100, 10}, {300, 30}});
    scene.Show(c);
    VyrDiagram& d = scene.Diagram();
    wxRect area = kArea;
    d.Move(area);
    d.SetAutoScale();
    // Kept: without the option the main axes of an empty unit span 0..1.05.
    EXPECT_DOUBLE_EQ(d.GetCurrentScale()->GetXmax(), 1.05);
    EXPECT_DOUBLE_EQ(d.GetCurrentScale()->GetYmax(), 1.05);

    d.SetOptions(VYR_OPTION_UNITLESS_RANGE | VYR_OPTION_TIDY_LAYOUT);
    EXPECT_DOUBLE_EQ(d.GetCurrentScale()->GetXmin(), 100.0);
    EXPECT_DOUBLE_EQ(d.GetCurrentScale()->GetXmax(), 300.0);
    EXPECT_LE(d.GetCurrentScale()->GetYmin(), 10.0);
    EXPECT_GE(d.GetCurrentScale()->GetYmax(), 30.0);
    EXPECT_LT(d.GetCurrentScale()->GetYmax(), 35.0);
    RecordingDC dc;
    PaintOn(d, dc);
    // Named by its quantities alone, without empty parentheses.
    EXPECT_NE(dc.FindText("x"), nullptr);
    EXPECT_NE(dc.FindText("y"), nullptr);
    for (const wxString& text : dc.Texts())
        EXPECT_EQ(text.Find("()"), wxNOT_FOUND) << text;

    d.SetOptions(0);
    EXPECT_DOUBLE_EQ(d.GetCurrentScale()->GetXmax(), 1.05);
}
