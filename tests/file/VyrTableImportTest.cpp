#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "FileTestSupport.h"
#include "TableTestSupport.h"
#include "vyrbase/VyrBase.h"

namespace {

using filetest::Latin1;
using filetest::Utf8;
using tabletest::Columns;
using tabletest::ColumnSeen;
using tabletest::Curves;
using tabletest::ExpectColumn;
using tabletest::ExpectValues;
using tabletest::Import;
using tabletest::Recorder;

}  // namespace

TEST(VyrTableImport, FrenchSpreadsheetWithMarkSemicolonsDecimalCommasAndCrlf) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc,
                       "\xEF\xBB\xBF" + Utf8(L"Temps (s);Tension (V);Intensit\u00e9 (mA)\r\n"
                                             L"0;1,5;-2\r\n0,1;2,25;\r\n0,2;NaN;3,5E-2\r\n"),
                       import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"Temps", L"s", {0, 0.1, 0.2});
    ExpectColumn(c[1], L"Tension", L"V", {1.5, 2.25, NAN});
    ExpectColumn(c[2], L"Intensit\u00e9", L"mA", {-2, NAN, 0.035});
    EXPECT_EQ(import.GetUsedEncoding(), VyrTableImport::kEncodingUtf8);
    EXPECT_EQ(import.GetUsedSeparator(), L';');
    EXPECT_EQ(import.GetUsedDecimalMark(), L',');
    EXPECT_EQ(import.GetHeaderLineCount(), 1);
    EXPECT_EQ(import.GetRowCount(), 3u);
    EXPECT_EQ(import.GetColumnCount(), 3);
    EXPECT_EQ(import.GetInvalidCount(), 2u);
}

TEST(VyrTableImport, PhoneSensorAppWithQuotedHeadingsCommasAndExponents) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc,
                       "\"Time (s)\",\"Acceleration x (m/s^2)\",\"Absolute acceleration "
                       "(m/s^2)\"\n"
                       "0.000000000E0,1.234E-1,9.81077E0\n"
                       "1.0E-2,-1.5E-1,9.80115E0\n",
                       import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"Time", L"s", {0, 0.01});
    ExpectColumn(c[1], L"Acceleration x", L"m/s^2", {0.1234, -0.15});
    ExpectColumn(c[2], L"Absolute acceleration", L"m/s^2", {9.81077, 9.80115});
    EXPECT_EQ(import.GetUsedSeparator(), L',');
    EXPECT_EQ(import.GetUsedDecimalMark(), L'.');
    EXPECT_EQ(Curves(doc)[1]->GetName(), L"Absolute acceleration(Time)");
}

TEST(VyrTableImport, LoggerWithTabsBracketedUnitsSettingsLinesAndHoles) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc,
                       Utf8(L"Logger 7 export\nrate\t10 Hz\n"
                            L"Time [s]\tT1 [\u00b0C]\tT2 [\u00b0C]\n"
                            L"0\t21.5\t\n0.1\t\t22.0\n0.2\t21.7\t---\n0.3\t21.8\n"),
                       import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"Time", L"s", {0, 0.1, 0.2, 0.3});
    ExpectColumn(c[1], L"T1", L"\u00b0C", {21.5, NAN, 21.7, 21.8});
    ExpectColumn(c[2], L"T2", L"\u00b0C", {NAN, 22.0, NAN, NAN});
    EXPECT_EQ(import.GetUsedSeparator(), L'\t');
    EXPECT_EQ(import.GetHeaderLineCount(), 3);
    EXPECT_EQ(import.GetInvalidCount(), 4u);
}

TEST(VyrTableImport, BareNumbersInRunsOfBlanksAreNamedAfterTheirColumnNumbers) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc, "  0 1.5 2.5\n1\t1.6  2.4 \n\n2  1.7   2.3\n", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 3u);
    ExpectColumn(c[0], L"C1", L"", {0, 1, 2});
    ExpectColumn(c[1], L"C2", L"", {1.5, 1.6, 1.7});
    ExpectColumn(c[2], L"C3", L"", {2.5, 2.4, 2.3});
    EXPECT_EQ(import.GetUsedSeparator(), L' ');
    EXPECT_EQ(import.GetHeaderLineCount(), 0);
}

TEST(VyrTableImport, Latin1HeadingKeepsItsAccents) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc, Latin1(L"Dur\u00e9e (s);Temp\u00e9rature (\u00b0C)\n0;20,5\n1;20,7\n"),
                       import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"Dur\u00e9e", L"s", {0, 1});
    ExpectColumn(c[1], L"Temp\u00e9rature", L"\u00b0C", {20.5, 20.7});
    EXPECT_EQ(import.GetUsedEncoding(), VyrTableImport::kEncodingIso8859_1);
}

TEST(VyrTableImport, Utf16IsReadWithEitherMark) {
    const std::wstring table = L"\ufeffDur\u00e9e (s)\t\u03c9 (rad/s)\r\n0\t1\r\n1\t2,5\r\n";
    std::string little, big;
    for (wchar_t ch : table) {
        little += {static_cast<char>(ch & 0xFF), static_cast<char>(ch >> 8)};
        big += {static_cast<char>(ch >> 8), static_cast<char>(ch & 0xFF)};
    }
    const std::string both[] = {little, big};
    for (const std::string& bytes : both) {
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        ASSERT_TRUE(Import(doc, bytes, import));
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u);
        ExpectColumn(c[0], L"Dur\u00e9e", L"s", {0, 1});
        ExpectColumn(c[1], L"\u03c9", L"rad/s", {1, 2.5});
        EXPECT_EQ(import.GetUsedEncoding(), &bytes == &both[0] ? VyrTableImport::kEncodingUtf16LE
                                                               : VyrTableImport::kEncodingUtf16BE);
    }
}

TEST(VyrTableImport, HeadingsGiveQuantityAndUnit) {
    struct Case {
        const char* heading;
        const wchar_t* quantity;
        const wchar_t* unit;
    };
    const Case cases[] = {
        {"U (V)", L"U", L"V"},
        {"U(V)", L"U", L"V"},
        {"T [K]", L"T", L"K"},
        {"p/hPa", L"p", L"hPa"},
        {"v / (m/s)", L"v", L"m/s"},
        {"U(t)(V)", L"U(t)", L"V"},
        {"v ((m/s))", L"v", L"(m/s)"},
        {"[U1]", L"[U1]", L""},
        {"[U1](V)", L"[U1]", L"V"},
        {"U()", L"U", L""},
        {"name only", L"name only", L""},
        {"", L"C2", L""},
        {"(s)", L"(s)", L""},
        {"\"a \"\"b\"\"; c (V)\"", L"a \"b\"; c", L"V"},
    };
    for (const Case& k : cases) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(Import(doc, std::string("x;") + k.heading + "\n1;2\n")) << k.heading;
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u) << k.heading;
        EXPECT_EQ(c[1].quantity, k.quantity) << k.heading;
        EXPECT_EQ(c[1].unit, k.unit) << k.heading;
    }
}

TEST(VyrTableImport, HeaderLineOfUnitsOnlyGivesTheUnitsOfTheNamesAbove) {
    const char* tables[] = {
        "Logger\nTime\tTemperature\tNote\n(s)\t[\u00b0C]\t\n0\t20\t1\n",
        "Time Temperature Note\n(s) [\u00b0C]\n0 20 1\n",
    };
    for (const char* table : tables) {
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        ASSERT_TRUE(Import(doc, Utf8(wxString::FromUTF8(table).ToStdWstring()), import)) << table;
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 3u) << table;
        ExpectColumn(c[0], L"Time", L"s", {0});
        ExpectColumn(c[1], L"Temperature", L"\u00b0C", {20});
        ExpectColumn(c[2], L"Note", L"", {1});
    }
}

TEST(VyrTableImport, CellsAreNumbersOnlyAsAWhole) {
    struct Case {
        const char* cell;
        double value;  // NaN: an invalid point
    };
    const Case cases[] = {
        {"1.5", 1.5},   {"1,5", 1.5},       {"+2", 2},         {"-0.25", -0.25}, {".5", 0.5},
        {"5.", 5},      {"1e3", 1000},      {"3,5E-2", 0.035}, {"\"7\"", 7},     {" 8 ", 8},
        {"NaN", NAN},   {"nan", NAN},       {"---", NAN},      {"-", NAN},       {"inf", NAN},
        {"-inf", NAN},  {"1e999", NAN},     {"12 V", NAN},     {"0x10", NAN},    {"", NAN},
        {"1.2.3", NAN}, {"1,5,5", NAN},     {"+-1", NAN},      {"\"\"", NAN},    {"1e", NAN},
        {"abc", NAN},   {"\"1\"\"\"", NAN},
    };
    for (const Case& k : cases) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(Import(doc, std::string("x;y\n0;") + k.cell + "\n1;9\n")) << k.cell;
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u) << k.cell;
        ASSERT_EQ(c[1].values.size(), 2u) << k.cell;
        if (std::isnan(k.value))
            EXPECT_TRUE(std::isnan(c[1].values[0])) << k.cell;
        else
            EXPECT_EQ(c[1].values[0], k.value) << k.cell;
    }
}

TEST(VyrTableImport, InvalidPointsHoldTheirColumnsNeighbouringNumber) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Import(doc, "x;y;z\n0;;\n1;;\n2;5;\n3;x;\n4;7;\n"));
    VyrVecteur* y = Curves(doc)[0]->GetVy();
    VyrVecteur* z = Curves(doc)[1]->GetVy();
    const double held[] = {5, 5, 5, 5, 7};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(y->GetVal(i), held[i]) << i;
        EXPECT_EQ(y->IsValidAt(i), i == 2 || i == 4) << i;
        EXPECT_EQ(z->GetVal(i), 0.0) << i;
        EXPECT_FALSE(z->IsValidAt(i)) << i;
    }
    // The ranges the diagrams compute from every point are the data's.
    EXPECT_EQ(y->GetMin(), 5);
    EXPECT_EQ(y->GetMax(), 7);
}

TEST(VyrTableImport, ShortRowsLongRowsTrailingSeparatorsAndBlankLines) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc, "a;b;c;\n1;2;3;\n\n;;;\n4\n5;6;7;8;;\n9;10;11;\n", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 4u);
    ExpectColumn(c[0], L"a", L"", {1, 4, 5, 9});
    ExpectColumn(c[1], L"b", L"", {2, NAN, 6, 10});
    ExpectColumn(c[2], L"c", L"", {3, NAN, 7, 11});
    ExpectColumn(c[3], L"C4", L"", {NAN, NAN, 8, NAN});
    EXPECT_EQ(import.GetRowCount(), 4u);
}

TEST(VyrTableImport, QuotedCellsHoldSeparatorsAndLineEndsAreCrlfLfOrCr) {
    for (const char* end : {"\r\n", "\n", "\r"}) {
        VyrBaseData doc(nullptr);
        const std::string e = end;
        ASSERT_TRUE(Import(doc, "\"t; x\";\"u\"" + e + "\"1,5\";2" + e + "3;\"4\"junk" + e)) << end;
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u);
        ExpectColumn(c[0], L"t; x", L"", {1.5, 3});
        ExpectColumn(c[1], L"u", L"", {2, 4});
    }
}

TEST(VyrTableImport, OneColumnIsPlottedAgainstTheRowNumber) {
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(Import(doc, "value (V)\n1\n2\n\nx\n4\n", import));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 2u);
    ExpectColumn(c[0], L"n", L"", {0, 1, 2, 3});
    ExpectColumn(c[1], L"value", L"V", {1, 2, NAN, 4});
    EXPECT_EQ(import.GetAbscissaColumn(), -1);
    EXPECT_EQ(import.GetAbscissaReason(), VyrTableImport::kAbscissaRowNumber);
}

TEST(VyrTableImport, SameHeadingsKeepTheirQuantityAndTheCurvesAreNamedApart) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(Import(doc, "t (s);U (V);U (V);U (mV)\n0;1;2;3\n"));
    const std::vector<ColumnSeen> c = Columns(doc);
    ASSERT_EQ(c.size(), 4u);
    for (size_t k = 1; k < 4; ++k)
        EXPECT_EQ(c[k].quantity, L"U");
    const std::vector<VyrCourbe*> curves = Curves(doc);
    EXPECT_EQ(curves[0]->GetEntityName(), L"U");
    EXPECT_EQ(curves[1]->GetEntityName(), L"U1");
    EXPECT_EQ(curves[2]->GetEntityName(), L"U2");
    EXPECT_EQ(curves[1]->GetName(), L"U(t)");
}

TEST(VyrTableImport, SettingsOverrideEachDetection) {
    {
        // A comma separates although semicolons are there; a comma then is no decimal mark.
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        ASSERT_TRUE(import.SetSeparator(L','));
        ASSERT_TRUE(Import(doc, "x,a;b\n1,2;3\n4,5\n", import));
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u);
        ExpectColumn(c[0], L"x", L"", {1, 4});
        ExpectColumn(c[1], L"a;b", L"", {NAN, 5});
    }
    {
        // Only the point is a decimal mark.
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        ASSERT_TRUE(import.SetDecimalMark(L'.'));
        ASSERT_TRUE(Import(doc, "x;y\n1.5;2,5\n2;3\n", import));
        ExpectValues(Columns(doc)[1].values, {NAN, 3});
    }
    {
        // Only the comma is; the separator guess then leaves the comma alone.
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        ASSERT_TRUE(import.SetDecimalMark(L','));
        ASSERT_TRUE(Import(doc, "x y\n1,5 2.5\n2 3\n", import));
        ExpectValues(Columns(doc)[0].values, {1.5, 2});
        ExpectValues(Columns(doc)[1].values, {NAN, 3});
    }
    {
        // Lines skipped, then two header lines of which the last names the columns.
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        import.SetSkipLines(2);
        import.SetHeaderLines(2);
        ASSERT_TRUE(Import(doc, "1;2\n\nnames;here\nt (s);U (V)\nx;5\n1;6\n", import));
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u);
        ExpectColumn(c[0], L"t", L"s", {NAN, 1});
        ExpectColumn(c[1], L"U", L"V", {5, 6});
        EXPECT_EQ(import.GetHeaderLineCount(), 2);
    }
    {
        // UTF-8 bytes read as ISO-8859-1 give two characters for an accented letter.
        VyrBaseData doc(nullptr);
        VyrTableImport import;
        import.SetEncoding(VyrTableImport::kEncodingIso8859_1);
        ASSERT_TRUE(Import(doc, Utf8(L"x;\u00e9\n1;2\n"), import));
        EXPECT_EQ(Columns(doc)[1].quantity, L"\u00c3\u00a9");
    }
    VyrTableImport import;
    EXPECT_FALSE(import.SetSeparator(L'"'));
    EXPECT_FALSE(import.SetSeparator(L'5'));
    EXPECT_FALSE(import.SetSeparator(L'.'));
    EXPECT_FALSE(import.SetDecimalMark(L';'));
}

TEST(VyrTableImport, RefusedTablesLeaveTheDocumentAsItWasAndNotifyNothing) {
    struct Case {
        std::string bytes;
        VyrTableImport::Encoding encoding;
        VyrTableImport::Error error;
        size_t line;
    };
    std::string wide(VyrTableImport::kMaxLineUnits + 1, 'a');
    std::string cells;
    for (int k = 0; k <= VyrTableImport::kMaxColumns; ++k)
        cells += "1;";
    const Case cases[] = {
        {"", VyrTableImport::kEncodingAuto, VyrTableImport::kErrorEmpty, 0},
        {"\xEF\xBB\xBF \r\n\t\n", VyrTableImport::kEncodingAuto, VyrTableImport::kErrorEmpty, 0},
        {"\xFF\xFE", VyrTableImport::kEncodingAuto, VyrTableImport::kErrorEmpty, 0},
        {std::string("1;2\n\0\x01\x02", 7), VyrTableImport::kEncodingAuto,
         VyrTableImport::kErrorBinary, 0},
        {"name;value\nfoo;bar\n", VyrTableImport::kEncodingAuto, VyrTableImport::kErrorNoNumericRow,
         0},
        {"x;y\nNaN;1\n", VyrTableImport::kEncodingAuto, VyrTableImport::kErrorNoNumericRow, 0},
        {"x\n1\n" + wide + "\n", VyrTableImport::kEncodingAuto, VyrTableImport::kErrorLineTooLong,
         3},
        {"x\n" + cells + "\n", VyrTableImport::kEncodingAuto, VyrTableImport::kErrorTooManyCells,
         2},
        {"x;y\n1;\xE9\n", VyrTableImport::kEncodingUtf8, VyrTableImport::kErrorEncoding, 0},
    };
    for (const Case& k : cases) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(Import(doc, "t;u\n1;2\n"));
        const int before = doc.GetLastOid();
        Recorder recorder;
        doc.AddObserver(&recorder);
        VyrTableImport import;
        import.SetEncoding(k.encoding);
        EXPECT_FALSE(Import(doc, k.bytes, import)) << k.error;
        EXPECT_EQ(import.GetError(), k.error);
        EXPECT_EQ(import.GetErrorLine(), k.line) << k.error;
        EXPECT_TRUE(recorder.codes.empty()) << k.error;
        EXPECT_EQ(doc.GetLastOid(), before);
        const std::vector<ColumnSeen> c = Columns(doc);
        ASSERT_EQ(c.size(), 2u);
        ExpectColumn(c[1], L"u", L"", {2});
        doc.RemoveObserver(&recorder);
    }
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    filetest::TempDir dir;
    EXPECT_FALSE(import.ImportFile(doc, filetest::Wx(dir.File("missing.csv"))));
    EXPECT_EQ(import.GetError(), VyrTableImport::kErrorCannotRead);
    EXPECT_FALSE(import.ImportFile(doc, filetest::Wx(dir.Path())));
    EXPECT_EQ(import.GetError(), VyrTableImport::kErrorCannotRead);
    EXPECT_FALSE(import.ImportMemory(doc, nullptr, 3));
    EXPECT_EQ(import.GetError(), VyrTableImport::kErrorCannotRead);
}

TEST(VyrTableImport, ImportReplacesTheDocumentAsALoadAndTheDiagramShowsTheCurves) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(doc.LoadFromMemory(filetest::Utf16File(filetest::OneCurveText()).data(),
                                   filetest::Utf16File(filetest::OneCurveText()).size()));
    Recorder recorder;
    doc.AddObserver(&recorder);
    ASSERT_TRUE(Import(doc, "t (s);U (V);I (A)\n0;1;2\n1;3;4\n"));
    // Creations are not announced one by one; the load's code ends the import, once.
    ASSERT_FALSE(recorder.codes.empty());
    EXPECT_EQ(recorder.codes.back(), VYR_MSG_FILE_LOADED);
    for (int code : recorder.codes) {
        EXPECT_NE(code, VYR_MSG_CURVE_CREATED);
        EXPECT_NE(code, VYR_MSG_EXPERIENCE_CREATED);
    }
    EXPECT_EQ(std::count(recorder.codes.begin(), recorder.codes.end(), VYR_MSG_FILE_LOADED), 1);
    doc.RemoveObserver(&recorder);

    // One experiment, oids from 1: experiment, then each curve and its two vectors.
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    ASSERT_NE(node, nullptr);
    VyrExperience* e = doc.GetNextExperience(&node);
    EXPECT_EQ(node, nullptr);
    EXPECT_EQ(e->GetOid(), 1);
    EXPECT_EQ(e->GetEntityName(), L"table");
    EXPECT_EQ(doc.GetEntityList().GetCount(), 7u);
    const std::vector<VyrCourbe*> curves = Curves(doc);
    ASSERT_EQ(curves.size(), 2u);
    EXPECT_EQ(curves[0]->GetOid(), 2);
    EXPECT_EQ(curves[0]->GetVx()->GetOid(), 3);
    EXPECT_EQ(curves[0]->GetVy()->GetOid(), 4);
    EXPECT_NE(curves[0]->GetVx(), curves[1]->GetVx());
    EXPECT_NE(curves[0]->GetColor(), curves[1]->GetColor());
    EXPECT_EQ(curves[0]->GetColor(), wxColour(255, 0, 0));
    EXPECT_TRUE(doc.GetUnknownSections().IsEmpty());

    // Diagram 0 heard code 8 and shows both curves against t.
    VyrDiagram* d = doc.GetDiagram(0);
    EXPECT_EQ(d->GetNbCourbe(), 2);
    EXPECT_TRUE(d->IsVisibleInterne(curves[0]));
    EXPECT_TRUE(d->IsVisibleInterne(curves[1]));
    // The curves' own ranges are the data's.
    EXPECT_EQ(curves[1]->GetScale().GetXmax(), 1);
    EXPECT_EQ(curves[1]->GetScale().GetYmin(), 2);
    EXPECT_EQ(curves[1]->GetScale().GetYmax(), 4);
}

TEST(VyrTableImport, ExperimentIsNamedAfterTheFileOrAsALoadNamesIt) {
    filetest::TempDir dir;
    const std::string path = dir.File("mesures.2024.csv");
    filetest::WriteBytes(path, "t;u\n1;2\n");
    VyrBaseData doc(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(import.ImportFile(doc, filetest::Wx(path)));
    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    EXPECT_EQ(doc.GetNextExperience(&node)->GetEntityName(), L"mesures.2024");
    const std::string bytes = "t;u\n1;2\n";
    ASSERT_TRUE(import.ImportMemory(doc, bytes.data(), bytes.size()));
    node = doc.GetFirstExperienceNode();
    EXPECT_EQ(doc.GetNextExperience(&node)->GetEntityName(), L"IDS_EXPERIENCE1");
}

TEST(VyrTableImport, CsvExportImportsBackIntoTheSameTable) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrCourbe* c = filetest::BuildOneCurveDocument(doc);
    VyrCourbeParam p;
    p.m_sNom = L"I";
    p.m_sGrdX = c->GetVx()->GetGrandeur();
    p.m_sUniteX = c->GetVx()->GetUnite();
    p.m_sGrdY = L"I";
    p.m_sUniteY = L"mA";
    VyrCourbe* second = doc.CreateCourbe(doc.FindExperienceFromCourbe(c), p, nullptr, false);
    for (int i = 0; i < c->GetVx()->GetSize(); ++i)
        doc.AddPoint(second, c->GetVx()->GetVal(i), 1234567.0 / (i + 3), false);
    const std::string first = dir.File("first.csv"), again = dir.File("again.csv");
    ASSERT_TRUE(doc.SaveAsCsvUTF8(filetest::Wx(first)));
    VyrBaseData imported(nullptr);
    VyrTableImport import;
    ASSERT_TRUE(import.ImportFile(imported, filetest::Wx(first)));
    ASSERT_TRUE(imported.SaveAsCsvUTF8(filetest::Wx(again)));
    const std::string a = filetest::ReadBytes(first), b = filetest::ReadBytes(again);
    // The names line names the experiment: the file's name now.
    EXPECT_EQ(b.substr(0, b.find("\r\n")), "first;;");
    EXPECT_EQ(a.substr(a.find("\r\n")), b.substr(b.find("\r\n")));
    EXPECT_EQ(import.GetHeaderLineCount(), 2);
}
