#include <gtest/gtest.h>

#include "DataTestSupport.h"
#include "vyrbase/data/VyrNote.h"

using namespace vyrtest;

namespace {
// A curve with its own two vectors, outside any document.
struct LooseCurve {
    VyrVecteur vx{2, nullptr};
    VyrVecteur vy{3, nullptr};
    VyrCourbe c{1, nullptr};
    LooseCurve() {
        c.SetVx(&vx);
        c.SetVy(&vy);
    }
};
}  // namespace

TEST(VyrCourbe, Defaults) {
    VyrCourbe c(4, nullptr);
    EXPECT_EQ(c.GetKind(), 2);
    EXPECT_EQ(c.GetOid(), 4);
    EXPECT_TRUE(c.GetText().empty());
    EXPECT_EQ(c.GetXYDisplay(), 0);
    EXPECT_EQ(c.GetScale().GetXmin(), 0.0);
    EXPECT_EQ(c.GetScale().GetXmax(), 1.0);
    EXPECT_EQ(c.GetScale().GetYmin(), 0.0);
    EXPECT_EQ(c.GetScale().GetYmax(), 1.0);
    EXPECT_EQ(c.GetNewlyCreated(), 0);
    EXPECT_TRUE(c.IsEnabled());
    EXPECT_FALSE(c.IsShownInDiagram(0));
    EXPECT_FALSE(c.IsShownInDiagram(1));
    EXPECT_EQ(c.GetUserTag(), 0);
    EXPECT_EQ(c.GetUserValue(), 0.0);
    EXPECT_EQ(c.GetVx(), nullptr);
    EXPECT_EQ(c.GetVy(), nullptr);
    EXPECT_EQ(c.GetNotesCount(), 0);
    EXPECT_EQ(c.GetColor(), wxColour(255, 0, 0));
    EXPECT_EQ(c.GetColor().Alpha(), wxALPHA_OPAQUE);
    EXPECT_EQ(c.GetWidth(), 1);
    EXPECT_EQ(c.GetStylePoint(), 1);
    EXPECT_EQ(c.GetStyleLiaison(), 1);
    EXPECT_EQ(c.GetCourbeSoeur(), nullptr);
}

TEST(VyrCourbe, ShownInDiagramOnlyForIndexZeroAndOne) {
    VyrCourbe c(1, nullptr);
    c.SetShownInDiagram(1, true);
    c.SetShownInDiagram(2, true);
    c.SetShownInDiagram(-1, true);
    EXPECT_FALSE(c.IsShownInDiagram(0));
    EXPECT_TRUE(c.IsShownInDiagram(1));
    EXPECT_FALSE(c.IsShownInDiagram(2));
    EXPECT_FALSE(c.IsShownInDiagram(-1));
}

TEST(VyrCourbe, SizeIsTheSizeOfX) {
    LooseCurve l;
    EXPECT_EQ(l.c.GetSize(), 0u);
    l.vx.Resize(4);
    l.vy.Resize(2);
    EXPECT_EQ(l.c.GetSize(), 4u);
    VyrCourbe bare(9, nullptr);
    EXPECT_EQ(bare.GetSize(), 0u);
    EXPECT_EQ(bare.GetTrueSize(), 0u);
}

TEST(VyrCourbe, TrueSizeCountsIndicesBothVectorsHoldValid) {
    LooseCurve l;
    l.vx.Resize(5);
    l.vy.Resize(3);  // Y shorter than X: indices 3 and 4 do not count
    EXPECT_EQ(l.c.GetTrueSize(), 3u);
    l.vx.ValidateAt(0, false);
    l.vy.ValidateAt(2, false);
    EXPECT_EQ(l.c.GetTrueSize(), 1u);
    l.c.SetVy(nullptr);
    EXPECT_EQ(l.c.GetTrueSize(), 0u);
}

TEST(VyrCourbe, SetSizeAndPreAllocActOnEachPresentVector) {
    LooseCurve l;
    l.c.SetSize(7);
    EXPECT_EQ(l.vx.GetSize(), 7);
    EXPECT_EQ(l.vy.GetSize(), 7);
    l.c.PreAlloc(500);
    EXPECT_EQ(l.vx.GetCapacity(), 500);
    EXPECT_EQ(l.vy.GetCapacity(), 500);
    l.c.SetVx(nullptr);
    l.c.SetSize(9);
    EXPECT_EQ(l.vy.GetSize(), 9);
    EXPECT_EQ(l.vx.GetSize(), 7);
}

TEST(VyrCourbe, StyleSettersCarryOverToTheSister) {
    VyrCourbe a(1, nullptr), b(2, nullptr);
    a.SetCourbeSoeur(&b);
    a.SetColor(wxColour(1, 2, 3));
    a.SetWidth(4);
    a.SetStylePoint(5);
    a.SetStyleLiaison(6);
    EXPECT_EQ(b.GetColor(), wxColour(1, 2, 3));
    EXPECT_EQ(b.GetWidth(), 4);
    EXPECT_EQ(b.GetStylePoint(), 5);
    EXPECT_EQ(b.GetStyleLiaison(), 6);
    b.SetColor(wxColour(7, 8, 9));
    EXPECT_EQ(a.GetColor(), wxColour(7, 8, 9));
}

TEST(VyrCourbe, SisterLinkIsMutualAndNullUnlinksBothSides) {
    VyrCourbe a(1, nullptr), b(2, nullptr);
    a.SetCourbeSoeur(&b);
    EXPECT_EQ(a.GetCourbeSoeur(), &b);
    EXPECT_EQ(b.GetCourbeSoeur(), &a);
    a.SetCourbeSoeur(nullptr);
    EXPECT_EQ(a.GetCourbeSoeur(), nullptr);
    EXPECT_EQ(b.GetCourbeSoeur(), nullptr);
    a.SetColor(wxColour(0, 0, 1));
    EXPECT_EQ(b.GetColor(), wxColour(255, 0, 0));
}

TEST(VyrCourbe, NewSisterReplacesOldOnBothSides) {
    VyrCourbe a(1, nullptr), b(2, nullptr), c(3, nullptr), d(4, nullptr);
    a.SetCourbeSoeur(&b);
    c.SetCourbeSoeur(&d);
    a.SetCourbeSoeur(&c);  // b loses a, d loses c
    EXPECT_EQ(a.GetCourbeSoeur(), &c);
    EXPECT_EQ(c.GetCourbeSoeur(), &a);
    EXPECT_EQ(b.GetCourbeSoeur(), nullptr);
    EXPECT_EQ(d.GetCourbeSoeur(), nullptr);
    a.SetCourbeSoeur(&c);  // already the sister: nothing
    EXPECT_EQ(c.GetCourbeSoeur(), &a);
}

TEST(VyrCourbe, DestructorClearsTheSistersBackLink) {
    VyrCourbe a(1, nullptr);
    {
        VyrCourbe b(2, nullptr);
        b.SetCourbeSoeur(&a);
        EXPECT_EQ(a.GetCourbeSoeur(), &b);
    }
    EXPECT_EQ(a.GetCourbeSoeur(), nullptr);
    a.SetWidth(3);  // no write through a dangling sister
    EXPECT_EQ(a.GetWidth(), 3);
}

TEST(VyrCourbe, NotesAreListedInOrderAndNeverDeleted) {
    VyrCourbe c(1, nullptr);
    VyrNote n1(2, nullptr), n2(3, nullptr);
    c.AddNote(&n1);
    c.AddNote(&n2);
    EXPECT_EQ(c.GetNotesCount(), 2);
    wxVyrListNoteNode* node = c.GetFirstNote();
    EXPECT_EQ(c.GetNextNote(&node), &n1);
    EXPECT_EQ(c.GetNextNote(&node), &n2);
    EXPECT_EQ(node, nullptr);
    EXPECT_EQ(c.GetNextNote(&node), nullptr);
    EXPECT_EQ(c.GetNextNote(nullptr), nullptr);
    c.RemoveNote(&n1);
    EXPECT_EQ(c.GetNotesCount(), 1);
    EXPECT_EQ(c.GetFirstNote()->GetData(), &n2);
    c.RemoveNote(nullptr);
    EXPECT_EQ(c.GetNotesCount(), 1);
}

TEST(VyrCourbe, NameIsYOfXWithBrackets) {
    LooseCurve l;
    l.vx.SetGrandeur("t");
    l.vy.SetGrandeur("[U1]");
    EXPECT_EQ(l.c.GetName(), "[U1](t)");
    VyrCourbe bare(1, nullptr);
    EXPECT_EQ(bare.GetName(), "()");
}

TEST(VyrCourbe, NameInRightToLeftLayoutIsWrappedInLeftToRightMarks) {
    LooseCurve l;
    l.vx.SetGrandeur("t");
    l.vy.SetGrandeur("U");
    {
        RightToLeftAppScope rtl;
        EXPECT_EQ(l.c.GetName(), wxString(L"\u200eU\u200e(\u200et\u200e)\u200e"));
    }
    EXPECT_EQ(l.c.GetName(), "U(t)");
}
