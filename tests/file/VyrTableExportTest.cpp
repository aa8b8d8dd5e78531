#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "FileTestSupport.h"
#include "support/CurveBuilder.h"
#include "vyrbase/VyrBase.h"

using namespace filetest;

namespace {

std::string Table(VyrBaseData& doc, wchar_t separator = L';') {
    VyrTableExport table;
    EXPECT_TRUE(table.SetSeparator(separator));
    std::string text;
    EXPECT_TRUE(table.ToText(doc, text));
    return text;
}

std::vector<VyrCourbe*> Curves(VyrBaseData& doc) {
    std::vector<VyrCourbe*> curves;
    wxVyrListEntityNode* node = doc.GetFirstCourbeNode();
    while (node)
        curves.push_back(doc.GetNextCourbe(&node));
    return curves;
}

// A vector's values with its invalid points as NaN.
std::vector<double> Seen(const VyrVecteur* v) {
    std::vector<double> values;
    for (int i = 0; i < v->GetSize(); ++i)
        values.push_back(v->IsValidAt(i) ? v->GetVal(i) : NAN);
    return values;
}

// Equal bit for bit, NaN (an invalid point) matching NaN.
void ExpectSameValues(const std::vector<double>& a, const std::vector<double>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i) {
        if (std::isnan(a[i]) || std::isnan(b[i]))
            EXPECT_TRUE(std::isnan(a[i]) && std::isnan(b[i])) << "point " << i;
        else
            EXPECT_EQ(0, std::memcmp(&a[i], &b[i], sizeof(double))) << "point " << i;
    }
}

bool Import(VyrBaseData& doc, const std::string& bytes) {
    VyrTableImport import;
    return import.ImportMemory(doc, bytes.data(), bytes.size(), L"table");
}

}  // namespace

TEST(VyrTableExport, ImportedTableComesBackWithTheSameNumbers) {
    // A 1 kHz time base past 1000 s, hPa to the hundredth, holes in both curves.
    const std::string source =
        "t (s);p (hPa);U (V)\r\n"
        "1000.001;1013.25;1.2345678\r\n"
        "1000.002;;1\r\n"
        "1000.003;1013.27;\r\n"
        "1000.004;1013.26;0.000123456789012\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Import(doc, source));
    const std::string table = Table(doc);
    // The holes stay holes: no cell shows the number an invalid point holds.
    EXPECT_EQ(table, source);

    VyrBaseData back(nullptr);
    ASSERT_TRUE(Import(back, table));
    const std::vector<VyrCourbe*> a = Curves(doc), b = Curves(back);
    ASSERT_EQ(a.size(), 2u);
    ASSERT_EQ(b.size(), 2u);
    for (size_t k = 0; k < a.size(); ++k) {
        EXPECT_EQ(a[k]->GetVy()->GetGrandeur(), b[k]->GetVy()->GetGrandeur());
        EXPECT_EQ(a[k]->GetVy()->GetUnite(), b[k]->GetVy()->GetUnite());
        ExpectSameValues(Seen(a[k]->GetVx()), Seen(b[k]->GetVx()));
        ExpectSameValues(Seen(a[k]->GetVy()), Seen(b[k]->GetVy()));
    }
}

TEST(VyrTableExport, EveryCurveKeepsItsOwnAbscissaInARectangularTable) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 1}, {1, 2}, {2, 3}, {3, 4}});
    AddCurve(doc, e, {"B", "V", "t", "s"}, {{0.5, 10}, {1.5, 20}});
    EXPECT_EQ(Table(doc),
              "t (s);A (V);t (s);B (V)\r\n"
              "0;1;0.5;10\r\n"
              "1;2;1.5;20\r\n"
              "2;3;;\r\n"
              "3;4;;\r\n");
}

TEST(VyrTableExport, CurvesOfTheSameAbscissaShareOneColumnInItsGroup) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    AddCurve(doc, e, {"A", "V", "t", "s"}, {{0, 1}, {1, 2}});
    AddCurve(doc, e, {"F", "N", "x", "m"}, {{5, 7}});
    // Same values as A's abscissa: it joins A's group, ahead of the later group.
    AddCurve(doc, e, {"B", "V", "t", "s"}, {{0, 5}, {1, 6}});
    // Same values, another quantity: a column of its own.
    AddCurve(doc, e, {"C", "V", "u", "s"}, {{0, 8}, {1, 9}});
    EXPECT_EQ(Table(doc, L'\t'),
              "t (s)\tA (V)\tB (V)\tx (m)\tF (N)\tu (s)\tC (V)\r\n"
              "0\t1\t5\t5\t7\t0\t8\r\n"
              "1\t2\t6\t\t\t1\t9\r\n");
}

TEST(VyrTableExport, InvalidPointsAreEmptyCellsAndSplitAnAbscissa) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    VyrCourbe* a = AddCurve(doc, e, {"A", "", "t", ""}, {{0, 1}, {1, 70.8}, {2, 3}});
    VyrCourbe* b = AddCurve(doc, e, {"B", "", "t", ""}, {{0, 4}, {1, 5}, {2, 6}});
    a->GetVy()->ValidateAt(1, false);
    // An invalid time is no longer the same abscissa as a measured one.
    b->GetVx()->ValidateAt(2, false);
    EXPECT_EQ(Table(doc, L','),
              "t,A,t,B\r\n"
              "0,1,0,4\r\n"
              "1,,1,5\r\n"
              "2,3,,6\r\n");
}

TEST(VyrTableExport, HeadingsHoldingTheSeparatorOrQuotesAreQuoted) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    AddCurve(doc, e, {"U; \"in\"", "V", "[t]", "s"}, {{1, 2}});
    const std::string text = Table(doc);
    EXPECT_EQ(text, "t (s);\"U; \"\"in\"\" (V)\"\r\n1;2\r\n");
    VyrBaseData back(nullptr);
    ASSERT_TRUE(Import(back, text));
    ASSERT_EQ(Curves(back).size(), 1u);
    EXPECT_EQ(Curves(back)[0]->GetVy()->GetGrandeur(), L"U; \"in\"");
    EXPECT_EQ(Curves(back)[0]->GetVy()->GetUnite(), L"V");
}

TEST(VyrTableExport, DetachedCurvesAreLeftOutAndExperimentsShareAnAbscissa) {
    VyrBaseData doc(nullptr);
    VyrExperience* e1 = AddExperience(doc, "E1");
    VyrExperience* e2 = AddExperience(doc, "E2");
    AddCurve(doc, e1, {"A", "V", "t", "s"}, {{0, 1}});
    VyrCourbe* gone = AddCurve(doc, e1, {"G", "V", "t", "s"}, {{0, 9}});
    AddCurve(doc, e2, {"B", "V", "t", "s"}, {{0, 2}});
    doc.DeconnectCurve(gone);
    // The second experiment's curve shares the first one's abscissa.
    EXPECT_EQ(Table(doc), "t (s);A (V);B (V)\r\n0;1;2\r\n");
}

TEST(VyrTableExport, ADocumentWithoutCurvesGivesAnEmptyTable) {
    VyrBaseData doc(nullptr);
    AddExperience(doc, "E");
    EXPECT_EQ(Table(doc), "");
}

TEST(VyrTableExport, SeparatorsOtherThanSemicolonCommaAndTabAreRefused) {
    VyrTableExport table;
    EXPECT_FALSE(table.SetSeparator(L'x'));
    EXPECT_FALSE(table.SetSeparator(L'.'));
    EXPECT_EQ(table.GetSeparator(), L';');
    EXPECT_TRUE(table.SetSeparator(L','));
    EXPECT_EQ(table.GetSeparator(), L',');
}

TEST(VyrTableExport, SaveFileWritesTheSameBytesOrAnswersFalse) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    AddCurve(doc, e, {L"T", L"\u00b0C", L"t", L"s"}, {{0, 20.5}, {60, 19.25}});
    TempDir dir;
    const std::string path = dir.File("table.csv");
    VyrTableExport table;
    ASSERT_TRUE(table.SaveFile(doc, Wx(path)));
    EXPECT_EQ(ReadBytes(path), Utf8(L"t (s);T (\u00b0C)\r\n0;20.5\r\n60;19.25\r\n"));
    EXPECT_FALSE(table.SaveFile(doc, Wx(dir.File("missing/table.csv"))));
}

TEST(VyrTableExport, LargeTablesArriveWhole) {
    VyrBaseData doc(nullptr);
    VyrExperience* e = AddExperience(doc, "E");
    std::vector<std::pair<double, double>> points;
    for (int i = 0; i < 200000; ++i)
        points.emplace_back(i / 44100.0, std::sin(i / 7.0));
    VyrCourbe* c = AddCurve(doc, e, {"U", "V", "t", "s"}, points);
    TempDir dir;
    const std::string path = dir.File("large.csv");
    ASSERT_TRUE(VyrTableExport().SaveFile(doc, Wx(path)));
    VyrBaseData back(nullptr);
    const std::string bytes = ReadBytes(path);
    ASSERT_GT(bytes.size(), size_t(1) << 20);
    ASSERT_TRUE(Import(back, bytes));
    ASSERT_EQ(Curves(back).size(), 1u);
    ExpectSameValues(Seen(c->GetVx()), Seen(Curves(back)[0]->GetVx()));
    ExpectSameValues(Seen(c->GetVy()), Seen(Curves(back)[0]->GetVy()));
}
