#include <gtest/gtest.h>

#include "DataTestSupport.h"
#include "vyrbase/data/VyrVariable.h"

using namespace vyrtest;

namespace {
// An experiment holding three curves built by hand (not through a document).
struct Loose {
    VyrExperience e{1, nullptr};
    VyrCourbe c1{2, nullptr}, c2{3, nullptr}, c3{4, nullptr};
    VyrVecteur x1{5, nullptr}, y1{6, nullptr}, x2{7, nullptr}, y2{8, nullptr};
    Loose() {
        c1.SetEntityName(L"COURBE_U");
        c2.SetEntityName(L"COURBE_I");
        c3.SetEntityName(L"OTHER_U");
        x1.SetGrandeur("t");
        x1.SetUnite("s");
        y1.SetGrandeur("U");
        y1.SetUnite("V");
        x2.SetGrandeur("t");
        x2.SetUnite("ms");
        y2.SetGrandeur("U");
        y2.SetUnite("V");
        c1.SetVx(&x1);
        c1.SetVy(&y1);
        c2.SetVx(&x2);
        c2.SetVy(&y2);
        e.AddCourbe(&c1);
        e.AddCourbe(&c2);
        e.AddCourbe(&c3);  // no vectors
    }
};
}  // namespace

TEST(VyrExperience, CurveListOperations) {
    Loose l;
    EXPECT_EQ(l.e.GetKind(), 1);
    EXPECT_EQ(l.e.GetNbCourbe(), 3);
    EXPECT_NE(l.e.FindCourbe(&l.c2), nullptr);
    EXPECT_EQ(l.e.FindCourbe(nullptr), nullptr);
    wxVyrListCourbeNode* node = l.e.GetFirstCourbeNode();
    EXPECT_EQ(l.e.GetNextCourbe(&node), &l.c1);
    EXPECT_EQ(l.e.GetNextCourbe(&node), &l.c2);
    EXPECT_EQ(l.e.GetNextCourbe(&node), &l.c3);
    EXPECT_EQ(node, nullptr);
    EXPECT_EQ(l.e.GetNextCourbe(&node), nullptr);
    l.e.RemoveCourbe(&l.c2);
    EXPECT_EQ(l.e.GetNbCourbe(), 2);
    EXPECT_EQ(l.e.FindCourbe(&l.c2), nullptr);
}

TEST(VyrExperience, ConnectedCountSkipsDetachedCurves) {
    Loose l;
    l.c1.SetDeconnected(true);
    EXPECT_EQ(l.e.GetNbCourbeConnected(), 2);
    EXPECT_EQ(l.e.GetNbCourbe(), 3);
}

TEST(VyrExperience, VariableListOperations) {
    VyrExperience e(1, nullptr);
    VyrVariable a(2, nullptr), b(3, nullptr);
    e.AddVariable(&a);
    e.AddVariable(&b);
    EXPECT_EQ(e.GetNbVariable(), 2);
    EXPECT_NE(e.FindVariable(&b), nullptr);
    wxVyrListVariableNode* node = e.GetFirstVariableNode();
    EXPECT_EQ(e.GetNextVariable(&node), &a);
    EXPECT_EQ(e.GetNextVariable(&node), &b);
    EXPECT_EQ(e.GetNextVariable(&node), nullptr);
    e.RemoveVariable(&a);
    EXPECT_EQ(e.GetNbVariable(), 1);
    EXPECT_EQ(e.FindVariable(&a), nullptr);
}

TEST(VyrExperience, CommentaireIsKept) {
    VyrExperience e(1, nullptr);
    EXPECT_TRUE(e.GetCommentaire().empty());
    e.SetCommentaire("notes");
    EXPECT_EQ(e.GetCommentaire(), "notes");
}

TEST(VyrExperience, DestructorLeavesCurvesAndVariablesAlive) {
    VyrCourbe c(1, nullptr);
    VyrVariable v(2, nullptr);
    {
        VyrExperience e(3, nullptr);
        e.AddCourbe(&c);
        e.AddVariable(&v);
    }
    c.SetWidth(2);
    v.SetValue(1.5);
    EXPECT_EQ(c.GetWidth(), 2);
    EXPECT_EQ(v.GetValue(), 1.5);
}

TEST(VyrExperience, FindByNameExactAndBySuffix) {
    Loose l;
    EXPECT_EQ(l.e.FindCourbeByNom(L"COURBE_I"), &l.c2);
    EXPECT_EQ(l.e.FindCourbeByNom(L"courbe_i"), nullptr);
    EXPECT_EQ(l.e.FindCourbeByNom(L"COURBE"), nullptr);
    EXPECT_EQ(l.e.FindCourbeByNom(nullptr), nullptr);
    EXPECT_EQ(l.e.FindCourbeByEndNom(L"_U"), &l.c1);
    EXPECT_EQ(l.e.FindCourbeByEndNom(L"R_U"), &l.c3);
    EXPECT_EQ(l.e.FindCourbeByEndNom(L"_u"), nullptr);
    EXPECT_EQ(l.e.FindCourbeByEndNom(nullptr), nullptr);
}

TEST(VyrExperience, FindByVectorQuantity) {
    Loose l;
    EXPECT_EQ(l.e.FindCourbeByVectNom(L"t", true), &l.c1);
    EXPECT_EQ(l.e.FindCourbeByVectNom(L"U", false), &l.c1);
    EXPECT_EQ(l.e.FindCourbeByVectNom(L"U", true), nullptr);
    EXPECT_EQ(l.e.FindCourbeByVectNom(L"T", true), nullptr);
    EXPECT_EQ(l.e.FindCourbeByVectNom(nullptr, true), nullptr);
}

TEST(VyrExperience, FindByFourQuantitiesAndUnits) {
    Loose l;
    EXPECT_EQ(l.e.FindCourbeByGrd("U", "V", "t", "ms"), &l.c2);
    EXPECT_EQ(l.e.FindCourbeByGrd("U", "V", "t", "s"), &l.c1);
    EXPECT_EQ(l.e.FindCourbeByGrd("U", "v", "t", "s"), nullptr);
    EXPECT_EQ(l.e.FindCourbeByGrd("t", "s", "U", "V"), nullptr);
}

TEST(VyrExperience, FindVectPrefersXOfEachCurveInOrder) {
    Loose l;
    EXPECT_EQ(l.e.FindVect("U", "V"), &l.y1);
    EXPECT_EQ(l.e.FindVect("t", "ms"), &l.x2);
    EXPECT_EQ(l.e.FindVect("t", "s"), &l.x1);
    EXPECT_EQ(l.e.FindVect("t", "S"), nullptr);
    // The X of a curve wins over the Y of the same curve.
    l.y1.SetGrandeur("t");
    l.y1.SetUnite("s");
    EXPECT_EQ(l.e.FindVect("t", "s"), &l.x1);
}
