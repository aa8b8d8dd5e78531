#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

#include <wx/ffile.h>
#include <wx/filename.h>

#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCourbeParam.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrExperienceParam.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/file/VyrSafeFile.h"
#include "FileTestSupport.h"

namespace {

class CsvTest : public ::testing::Test {
protected:
    CsvTest() : doc(nullptr) {}
    void SetUp() override { path = wxFileName::CreateTempFileName("vyrcsv"); }
    void TearDown() override { wxRemoveFile(path); }

    VyrExperience* Experience(const wxString& name) {
        VyrExperienceParam p;
        p.m_sNom = name;
        return doc.CreateExperience(p);
    }

    VyrCourbe* Curve(VyrExperience* e, const wxString& grdY, const wxString& uniteY,
                     const wxString& grdX, const wxString& uniteX, const std::vector<double>& xs,
                     const std::vector<double>& ys) {
        VyrCourbeParam p;
        p.m_sNom = grdY + "(" + grdX + ")";
        p.m_sGrdX = grdX;
        p.m_sGrdY = grdY;
        p.m_sUniteX = uniteX;
        p.m_sUniteY = uniteY;
        VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
        // Sizes of X and Y are set apart so that tests can make them differ.
        c->GetVx()->Resize(static_cast<int>(xs.size()));
        for (size_t i = 0; i < xs.size(); ++i)
            c->GetVx()->SetVal(static_cast<int>(i), xs[i]);
        c->GetVy()->Resize(static_cast<int>(ys.size()));
        for (size_t i = 0; i < ys.size(); ++i)
            c->GetVy()->SetVal(static_cast<int>(i), ys[i]);
        return c;
    }

    std::string Export() {
        EXPECT_TRUE(doc.SaveAsCsvUTF8(path));
        std::string bytes;
        FILE* f = fopen(path.utf8_str(), "rb");
        if (!f)
            return bytes;
        char buffer[65536];
        size_t n;
        while ((n = fread(buffer, 1, sizeof buffer, f)) > 0)
            bytes.append(buffer, n);
        fclose(f);
        return bytes;
    }

    VyrBaseData doc;
    wxString path;
};

std::string RunCapture(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return output;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0)
        output.append(buffer, n);
    pclose(pipe);
    return output;
}

}  // namespace

TEST_F(CsvTest, EmptyDocumentWritesTwoBareLineEnds) {
    EXPECT_EQ(Export(), "\r\n\r\n");
}

TEST_F(CsvTest, OneExperienceTwoCurvesExactOutput) {
    VyrExperience* e = Experience("E1");
    Curve(e, "U", "V", "t", "s", {0, 1, 2}, {1.5, -2, 3});
    Curve(e, "I", "A", "t", "s", {0, 1, 2}, {0.25, 0.5, 0.75});
    EXPECT_EQ(Export(),
              "E1;;\r\n"
              "t(s);U(V);I(A)\r\n"
              "0;1.5;0.25\r\n"
              "1;-2;0.5\r\n"
              "2;3;0.75\r\n");
}

TEST_F(CsvTest, ValuesUseAPointAndSixSignificantDigits) {
    VyrExperience* e = Experience("E");
    Curve(e, "y", "", "x", "", {1234567, 0.1, 1e-5}, {-0.000123456789, 100000, 1e21});
    EXPECT_EQ(Export(),
              "E;\r\n"
              "x();y()\r\n"
              "1.23457e+06;-0.000123457\r\n"
              "0.1;100000\r\n"
              "1e-05;1e+21\r\n");
}

TEST_F(CsvTest, ShorterCurveCellIsOmittedWithItsSeparator) {
    VyrExperience* e = Experience("E");
    Curve(e, "a", "u", "x", "s", {1, 2, 3}, {10, 20, 30});
    Curve(e, "b", "u", "x", "s", {1, 2, 3, 4, 5}, {100, 200, 300, 400, 500});
    // Kept: rows 4 and 5 have no x value (the first curve's x is shorter) and no value for a,
    // so b's value stands in the x column.
    EXPECT_EQ(Export(),
              "E;;\r\n"
              "x(s);a(u);b(u)\r\n"
              "1;10;100\r\n"
              "2;20;200\r\n"
              "3;30;300\r\n"
              "400\r\n"
              "500\r\n");
}

TEST_F(CsvTest, LongerFirstCurveKeepsXAndLosesOnlyTheMissingCells) {
    VyrExperience* e = Experience("E");
    Curve(e, "a", "u", "x", "s", {1, 2, 3, 4, 5}, {10, 20, 30, 40, 50});
    Curve(e, "b", "u", "x", "s", {1, 2, 3}, {100, 200, 300});
    EXPECT_EQ(Export(),
              "E;;\r\n"
              "x(s);a(u);b(u)\r\n"
              "1;10;100\r\n"
              "2;20;200\r\n"
              "3;30;300\r\n"
              "4;40;\r\n"
              "5;50;\r\n");
}

TEST_F(CsvTest, TwoExperiencesRunTheirBoundaryTitlesTogether) {
    VyrExperience* e1 = Experience("E1");
    Curve(e1, "a", "V", "t", "s", {0, 1}, {1, 2});
    Curve(e1, "b", "V", "t", "s", {0, 1}, {3, 4});
    VyrExperience* e2 = Experience("E2");
    Curve(e2, "c", "A", "t", "s", {5, 6}, {7, 8});
    EXPECT_EQ(Export(),
              "E1;;E2;\r\n"
              "t(s);a(V);b(V)t(s);c(A)\r\n"
              "0;1;35;7\r\n"
              "1;2;46;8\r\n");
}

TEST_F(CsvTest, CurveDetachedForUndoAppearsNowhere) {
    VyrExperience* e = Experience("E");
    Curve(e, "a", "V", "t", "s", {0, 1}, {1, 2});
    VyrCourbe* gone = Curve(e, "b", "V", "t", "s", {0, 1, 2, 3}, {3, 4, 5, 6});
    Curve(e, "c", "V", "t", "s", {0, 1}, {7, 8});
    doc.DeconnectCurve(gone);
    EXPECT_EQ(Export(),
              "E;;\r\n"
              "t(s);a(V);c(V)\r\n"
              "0;1;7\r\n"
              "1;2;8\r\n");
}

TEST_F(CsvTest, DetachedFirstCurveGivesTheXColumnToTheNext) {
    VyrExperience* e = Experience("E");
    VyrCourbe* gone = Curve(e, "a", "V", "t", "s", {0, 1}, {1, 2});
    Curve(e, "c", "V", "u", "ms", {5, 6}, {7, 8});
    doc.DeconnectCurve(gone);
    EXPECT_EQ(Export(),
              "E;\r\n"
              "u(ms);c(V)\r\n"
              "5;7\r\n"
              "6;8\r\n");
}

TEST_F(CsvTest, InvalidPointsAreExportedWithTheirStoredValues) {
    VyrExperience* e = Experience("E");
    VyrCourbe* c = Curve(e, "a", "V", "t", "s", {0, 1}, {1, 2});
    c->GetVy()->ValidateAt(1, false);
    c->GetVx()->ValidateAt(0, false);
    EXPECT_EQ(Export(), "E;\r\nt(s);a(V)\r\n0;1\r\n1;2\r\n");
}

TEST_F(CsvTest, ExperienceWithoutCurvesWritesOnlyItsName) {
    Experience("Vide");
    VyrExperience* e = Experience("E");
    Curve(e, "a", "V", "t", "s", {0}, {1});
    EXPECT_EQ(Export(), "Vide;E;\r\nt(s);a(V)\r\n0;1\r\n");
}

TEST_F(CsvTest, UnopenablePathAnswersFalse) {
    EXPECT_FALSE(doc.SaveAsCsvUTF8("/nonexistent-dir/x/y.csv"));
}

TEST_F(CsvTest, AccentedNamesAreUtf8WithoutMarkAndReadBackByPythonCsv) {
    VyrExperience* e = Experience(wxString(L"Expérience été"));
    Curve(e, wxString(L"Température"), wxString(L"\u00b0C"), wxString(L"durée"), "s", {0, 1.5, 2e7},
          {-273.15, 1e300, -0.5});
    Curve(e, wxString(L"Pression"), wxString(L"\u00b5bar"), wxString(L"durée"), "s", {0, 1},
          {-1234567, 3});
    const std::string bytes = Export();
    ASSERT_GE(bytes.size(), 3u);
    EXPECT_NE(bytes.substr(0, 3), "\xEF\xBB\xBF");
    EXPECT_EQ(bytes.substr(0, 5), "Exp\xC3\xA9");

    const std::string python = "/usr/bin/python3";
    if (!wxFileName::IsFileExecutable(python))
        GTEST_SKIP() << "no Debian python3";
    const std::string script =
        "import csv,sys\n"
        "with open(sys.argv[1], encoding='utf-8', newline='') as f:\n"
        "    for row in csv.reader(f, delimiter=';'):\n"
        "        sys.stdout.buffer.write(('|'.join(row) + '\\n').encode('utf-8'))\n";
    const std::string cells =
        RunCapture(python + " -c \"" + script + "\" '" + path.ToStdString() + "'");
    EXPECT_EQ(cells,
              "Exp\xC3\xA9rience \xC3\xA9t\xC3\xA9||\n"
              "dur\xC3\xA9"
              "e(s)|Temp\xC3\xA9rature(\xC2\xB0"
              "C)|Pression(\xC2\xB5"
              "bar)\n"
              "0|-273.15|-1.23457e+06\n"
              "1.5|1e+300|3\n"
              "2e+07|-0.5|\n");

    const std::string kind = RunCapture("file -b '" + path.ToStdString() + "'");
    if (kind.empty())
        GTEST_SKIP() << "file(1) not installed";
    EXPECT_NE(kind.find("UTF-8"), std::string::npos) << kind;
    EXPECT_EQ(kind.find("BOM"), std::string::npos) << kind;
}

TEST_F(CsvTest, ShortWriteAnswersFalse) {
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "no /dev/full";
    VyrExperience* e = Experience("E");
    Curve(e, "a", "V", "t", "s", {0, 1}, {1, 2});
    EXPECT_FALSE(doc.SaveAsCsvUTF8("/dev/full"));
    VyrBaseData empty(nullptr);
    EXPECT_FALSE(empty.SaveAsCsvUTF8("/dev/full"));
}

// Every operation of an export of a real document (open, each write, close), made to fail once:
// the export answers false and leaves no descriptor open. Through VyrSafeFile the previous
// export stays whole.
TEST(VyrBaseDataCsvFaults, AnyFailingOperationAnswersFalseAndClosesTheFile) {
    VyrFileFaults::Disarm();
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(doc.Load(wxString::FromUTF8(VYR_SOURCE_DIR "/samples/sound.vyr")));
    const wxString path = wxFileName::CreateTempFileName("vyrcsvfault");
    ASSERT_TRUE(doc.SaveAsCsvUTF8(path));
    const long count = VyrFileFaults::Count();
    // Open, the blocks of a 100 000-row export, close.
    EXPECT_GE(count, 4);
    wxFFile previous(path, "rb");
    wxString before;
    ASSERT_TRUE(previous.ReadAll(&before, wxConvISO8859_1));
    previous.Close();
    for (long n = 1; n <= count; ++n) {
        SCOPED_TRACE(n);
        const int descriptors = filetest::OpenDescriptors();
        VyrFileFaults::Arm(VyrFileFaults::kAll, n, false, ENOSPC);
        EXPECT_FALSE(doc.SaveAsCsvUTF8(path));
        EXPECT_EQ(descriptors, filetest::OpenDescriptors());
        VyrFileFaults::Arm(VyrFileFaults::kAll, n, false, ENOSPC);
        EXPECT_FALSE(VyrSafeFile::WriteFile(
            path, [&](const wxString& temp) { return doc.SaveAsCsvUTF8(temp); }));
        VyrFileFaults::Disarm();
        // The plain export broke the file; the safe one put it back whole first.
        ASSERT_TRUE(VyrSafeFile::WriteFile(
            path, [&](const wxString& temp) { return doc.SaveAsCsvUTF8(temp); }));
        wxFFile after(path, "rb");
        wxString now;
        ASSERT_TRUE(after.ReadAll(&now, wxConvISO8859_1));
        EXPECT_TRUE(before == now);
    }
    wxRemoveFile(path);
}

// A write that fails wherever the export stands: the first experiment's name is made long
// enough that the export's first block (it hands its text to the file in blocks of 1 MiB) ends
// at each byte of what follows in turn, the names line, the titles and the rows. Every run
// answers false and closes its file.
TEST(VyrBaseDataCsvFaults, AWriteFailingAtAnyPlaceOfTheExportAnswersFalse) {
    VyrFileFaults::Disarm();
    VyrBaseData doc(nullptr);
    auto curve = [&doc](VyrExperience* e, const wchar_t* y, int points) {
        VyrCourbeParam p;
        p.m_sGrdX = L"t";
        p.m_sUniteX = L"s";
        p.m_sGrdY = y;
        p.m_sUniteY = L"V";
        VyrCourbe* c = doc.CreateCourbe(e, p, nullptr, false);
        for (int i = 0; i < points; ++i)
            doc.AddPoint(c, i, 0.5 * i, false);
    };
    VyrExperienceParam first(L"E1");
    VyrExperience* e1 = doc.CreateExperience(first);
    curve(e1, L"a", 3);
    curve(e1, L"b", 2);
    VyrExperienceParam second(L"E2");
    curve(doc.CreateExperience(second), L"c", 4);
    const wxString path = wxFileName::CreateTempFileName("vyrcsvplace");
    ASSERT_TRUE(doc.SaveAsCsvUTF8(path));
    wxFFile whole(path, "rb");
    wxString text;
    ASSERT_TRUE(whole.ReadAll(&text, wxConvISO8859_1));
    whole.Close();
    const size_t block = size_t(1) << 20;
    int failures = 0;
    for (size_t tail = 0; tail <= text.length(); ++tail) {
        e1->SetEntityName(wxString(block - tail, L'n').wc_str());
        const int descriptors = filetest::OpenDescriptors();
        VyrFileFaults::Arm(VyrFileFaults::kWrite, 1, true, ENOSPC);
        const bool saved = doc.SaveAsCsvUTF8(path);
        VyrFileFaults::Disarm();
        EXPECT_FALSE(saved) << tail;
        EXPECT_EQ(descriptors, filetest::OpenDescriptors());
        failures += !saved;
    }
    EXPECT_EQ(static_cast<int>(text.length()) + 1, failures);
    wxRemoveFile(path);
}

TEST(VyrBaseDataCsvFaults, AnEmptyNameWritesOnlyItsSeparator) {
    VyrFileFaults::Disarm();
    VyrBaseData doc(nullptr);
    VyrExperienceParam p(L"E");
    doc.CreateExperience(p)->SetEntityName(L"");
    const wxString path = wxFileName::CreateTempFileName("vyrcsvname");
    ASSERT_TRUE(doc.SaveAsCsvUTF8(path));
    wxFFile file(path, "rb");
    wxString text;
    ASSERT_TRUE(file.ReadAll(&text, wxConvISO8859_1));
    EXPECT_EQ(wxString(";\r\n\r\n"), text);
    wxRemoveFile(path);
}

// A name that has no UTF-8 form (a code point beyond U+10FFFF) cannot be written as it is: the
// export answers false rather than leave the name out of its file.
TEST(VyrBaseDataCsv, ANameWithoutUtf8FormFailsTheExport) {
    VyrFileFaults::Disarm();
    VyrBaseData doc(nullptr);
    VyrExperienceParam p(L"E");
    wxString name = L"E";
    name += static_cast<wchar_t>(0x110000);
    doc.CreateExperience(p)->SetEntityName(name);
    const wxString path = wxFileName::CreateTempFileName("vyrcsvsurrogate");
    EXPECT_FALSE(doc.SaveAsCsvUTF8(path));
    doc.FindExperienceByOid(doc.GetLastOid())->SetEntityName(L"E");
    EXPECT_TRUE(doc.SaveAsCsvUTF8(path));
    wxRemoveFile(path);
}
