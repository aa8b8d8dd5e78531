#include <gtest/gtest.h>

#include "support/PaintScene.h"
#include "support/RecordingDC.h"
#include "support/VyrDiagramTestAccess.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/diagram/VyrDiagram.h"

using Kind = RecordedPrimitive::Kind;

// The tests run without a display, as CI does: asking the toolkit for system colours would
// crash there, so selected notes and titles take the fixed fallback.
TEST(VyrSystemColours, WithoutADisplaySelectionUsesTheFallbackHighlightColours) {
    PaintScene scene;
    VyrCourbe* c = scene.AddCurve(CurveLook(), {{100, 100}});
    scene.Show(c);
    scene.Frame();
    VyrNote* note = scene.Doc().CreateNoteEntity();
    note->SetText("peak");
    note->SetPointIndex(0);
    note->SetPosition(200, 150);
    note->SetState(VYR_NOTE_SELECTED);
    c->AddNote(note);
    VyrNote* titre = scene.Doc().CreateNoteEntity();
    titre->SetText("Title");
    titre->SetState(VYR_NOTE_SELECTED);
    scene.Diagram().SetNoteTitre(titre);

    RecordingDC dc;
    scene.Diagram().Paint(&dc, false, false, false, 1.0, nullptr, false);
    const wxColour highlight(0, 120, 215);
    const wxColour white(255, 255, 255);
    const RecordedPrimitive* peak = dc.FindText("peak");
    const RecordedPrimitive* title = dc.FindText("Title");
    ASSERT_NE(peak, nullptr);
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(peak->textForeground, white);
    EXPECT_EQ(title->textForeground, white);
    int boxes = 0;
    for (const auto& r : dc.Primitives(Kind::Rectangle)) {
        EXPECT_EQ(r.brush.GetColour(), highlight);
        EXPECT_EQ(r.pen.GetColour(), highlight);
        ++boxes;
    }
    EXPECT_EQ(boxes, 2);
}
