#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <locale.h>
#include <random>
#include <string>
#include <vector>

#include "FileTestSupport.h"
#include "support/RecordingObserver.h"
#include "support/TranslationScope.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrCompteRendu.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrGrilleEntity.h"
#include "vyrbase/data/VyrImageRedyEntity.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrVecteur.h"

using namespace filetest;

namespace {

int CountKind(VyrBaseData& doc, int kind) {
    int n = 0;
    for (auto* node = doc.GetEntityList().GetFirst(); node; node = node->GetNext())
        n += node->GetData()->GetKind() == kind;
    return n;
}

// Loads `bytes` written to a temporary file.
bool LoadBytes(VyrBaseData& doc, const std::string& bytes) {
    TempDir dir;
    const std::string path = dir.File("in.vyr");
    WriteBytes(path, bytes);
    return doc.Load(Wx(path));
}

// The one-curve document as the hand-written file describes it.
void ExpectOneCurveDocument(VyrBaseData& doc) {
    EXPECT_EQ(4u, doc.GetEntityList().GetCount());
    VyrExperience* e = doc.FindExperienceByOid(1);
    ASSERT_TRUE(e);
    EXPECT_EQ(wxString(L"Exp\u00e9rience 1"), e->GetEntityName());
    ASSERT_EQ(1, e->GetNbCourbe());
    VyrCourbe* c = doc.FindCourbeByOid(2);
    ASSERT_TRUE(c);
    EXPECT_EQ(c, e->GetCourbes().GetFirst()->GetData());
    EXPECT_EQ(wxString(L"T(t)"), c->GetEntityName());
    EXPECT_EQ(wxString(L"mesure \"A\""), c->GetText());
    EXPECT_EQ(wxColour(0, 128, 255), c->GetColor());
    EXPECT_EQ(2, c->GetWidth());
    EXPECT_EQ(3, c->GetStylePoint());
    EXPECT_EQ(1, c->GetStyleLiaison());
    EXPECT_TRUE(c->IsShownInDiagram(0));
    EXPECT_FALSE(c->IsShownInDiagram(1));
    EXPECT_EQ(0.0, c->GetScale().GetXmin());
    EXPECT_EQ(10.0, c->GetScale().GetXmax());
    EXPECT_EQ(-5.0, c->GetScale().GetYmin());
    EXPECT_EQ(25.5, c->GetScale().GetYmax());
    VyrVecteur* vx = c->GetVx();
    VyrVecteur* vy = c->GetVy();
    ASSERT_TRUE(vx && vy);
    EXPECT_EQ(3, vx->GetOid());
    EXPECT_EQ(4, vy->GetOid());
    EXPECT_EQ(wxString(L"t"), vx->GetGrandeur());
    EXPECT_EQ(wxString(L"s"), vx->GetUnite());
    EXPECT_EQ(wxString(L"T"), vy->GetGrandeur());
    EXPECT_EQ(wxString(L"\u00b0C"), vy->GetUnite());
    const double xs[] = {0, 2.5, 5, 7.5, 10};
    const double ys[] = {20, 21.5, 1e6, 23.25, -0.001};
    ASSERT_EQ(5, vx->GetSize());
    ASSERT_EQ(5, vy->GetSize());
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(xs[i], vx->GetVal(i));
        EXPECT_EQ(ys[i], vy->GetVal(i));
        EXPECT_EQ(i != 2, vx->IsValidAt(i));
        EXPECT_EQ(i != 2, vy->IsValidAt(i));
    }
    EXPECT_EQ(1, doc.GetDiagramCount());
}

}  // namespace

TEST(VyrBaseDataLoad, RebuildsTheHandWrittenFileWithItsOids) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(OneCurveText())));
    ExpectOneCurveDocument(doc);
    EXPECT_EQ(4, doc.GetLastOid());
    EXPECT_EQ(0u, doc.GetUnknownSections().GetCount());
}

TEST(VyrBaseDataLoad, ReadsTheSameDocumentInUtf8WithAndWithoutMarkAndInLatin1) {
    const std::wstring text = OneCurveText();
    const std::string encodings[] = {std::string("\xEF\xBB\xBF") + Utf8(text), Utf8(text),
                                     Latin1(text)};
    for (const std::string& bytes : encodings) {
        SCOPED_TRACE(&bytes - encodings);
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(LoadBytes(doc, bytes));
        ExpectOneCurveDocument(doc);
    }
}

TEST(VyrBaseDataLoad, KeepsCharactersBeyondLatin1InUtf16AndUtf8) {
    std::wstring text = OneCurveText();
    const size_t at = text.find(L"\"T\"");
    text.replace(at, 3, L"\"\u03b8\U0001D4AF\"");
    for (const std::string& bytes : {Utf16File(text), Utf8(text)}) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(LoadBytes(doc, bytes));
        EXPECT_EQ(wxString(L"\u03b8\U0001D4AF"), doc.FindCourbeByOid(2)->GetVy()->GetGrandeur());
    }
}

TEST(VyrBaseDataLoad, WithoutMarkTheUnitHeaderDecidesBetweenUtf8AndLatin1) {
    const std::wstring body =
        L"[manipulation]\r\n\toid = 7\r\n\tnom = \"\u00e9t\u00e9\"\r\n\tcourbes = table 0 "
        L"{\r\n\t}\r\n";
    {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(LoadBytes(doc, Utf8(L"[unit\u00e9]\r\n\toid = 50\r\n" + body)));
        EXPECT_EQ(wxString(L"\u00e9t\u00e9"), doc.FindExperienceByOid(7)->GetEntityName());
    }
    {
        // No unit section: the UTF-8 bytes are read as ISO-8859-1, two characters each.
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(LoadBytes(doc, Utf8(body)));
        EXPECT_EQ(wxString(L"\u00c3\u00a9t\u00c3\u00a9"),
                  doc.FindExperienceByOid(7)->GetEntityName());
    }
}

TEST(VyrBaseDataLoad, EmptyOrBlankFileGivesOneDefaultExperiment) {
    for (const std::string& bytes :
         {std::string(), std::string("\r\n\r\n\t\n"), Utf16File(L""), Utf16File(L"\r\n\r\n")}) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(LoadBytes(doc, bytes));
        ASSERT_EQ(1u, doc.GetEntityList().GetCount());
        VyrEntity* e = doc.GetEntityList().GetFirst()->GetData();
        EXPECT_EQ(VYR_KIND_EXPERIENCE, e->GetKind());
        EXPECT_EQ(wxString(L"IDS_EXPERIENCE1"), e->GetEntityName());
        EXPECT_EQ(0, static_cast<VyrExperience*>(e)->GetNbCourbe());
    }
}

TEST(VyrBaseDataLoad, TheDefaultExperimentTakesTheApplicationsTranslation) {
    TranslationScope tr(std::map<std::string, std::string>{{"IDS_EXPERIENCE1", "Versuch 1"}});
    ASSERT_TRUE(tr.IsLoaded());
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(L"")));
    ASSERT_EQ(1u, doc.GetEntityList().GetCount());
    EXPECT_EQ(wxString(L"Versuch 1"), doc.GetEntityList().GetFirst()->GetData()->GetEntityName());
}

TEST(VyrBaseDataLoad, BigEndianMarkIsRefusedAndLeavesTheDocumentEmpty) {
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    std::string bytes("\xFE\xFF", 2);
    for (wchar_t c : OneCurveText()) {
        bytes.push_back(static_cast<char>(c >> 8));
        bytes.push_back(static_cast<char>(c & 0xFF));
    }
    EXPECT_FALSE(LoadBytes(doc, bytes));
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
}

TEST(VyrBaseDataLoad, AKeyLineFirstAnswersFalse) {
    VyrBaseData doc(nullptr);
    EXPECT_FALSE(LoadBytes(doc, Utf16File(L"\r\n\toid = 3\r\n[vecteur]\r\n\toid = 4\r\n")));
    // Nothing was read, and no default experiment is made.
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
    VyrBaseData other(nullptr);
    EXPECT_FALSE(LoadBytes(other, Utf16File(L"vecteur]\r\n\toid = 4\r\n")));
}

TEST(VyrBaseDataLoad, ACapitalisedVectorHeaderIsKeptVerbatimAsUnknown) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(
        doc, Utf16File(L"[Vecteur]\r\n\toid = 3\r\n\tnom = \"x\"\r\n\r\n" + OneCurveText())));
    ASSERT_EQ(1u, doc.GetUnknownSections().GetCount());
    EXPECT_EQ(wxString(L"[Vecteur]\n\toid = 3\r\n\tnom = \"x\"\r\n\r\n"),
              doc.GetUnknownSections()[0]);
    EXPECT_FALSE(doc.FindEntity(3) && doc.FindEntity(3)->GetKind() != VYR_KIND_VECTEUR);
    ExpectOneCurveDocument(doc);
    // Written back at the end of the next save, after every known section.
    TempDir dir;
    const std::string path = dir.File("out.vyr");
    ASSERT_TRUE(doc.Save(Wx(path)));
    const std::wstring written = FromUtf16(ReadBytes(path));
    const std::wstring tail = L"[Vecteur]\n\toid = 3\r\n\tnom = \"x\"\r\n\r\n\r\n";
    ASSERT_GT(written.size(), tail.size());
    EXPECT_EQ(tail, written.substr(written.size() - tail.size()));
}

TEST(VyrBaseDataLoad, KnownRecordSectionsAreNotKeptAsUnknown) {
    const wchar_t* const headers[] = {L"[Annotation]",
                                      L"[outil_Interval]",
                                      L"[compte_rendu]",
                                      L"[cellules]",
                                      L"[spirog]",
                                      L"[spirom]",
                                      L"[spiroexp]",
                                      L"[Param_RespihomConfig]",
                                      L"[Param_RespihomData]",
                                      L"[Param_SpiroMetaConfig]",
                                      L"[Param_SpiroMetaData]",
                                      L"[image_Redy]"};
    std::wstring text;
    for (const wchar_t* header : headers)
        text += std::wstring(header) + L"\r\n\toid = 900\r\n\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(text + OneCurveText())));
    EXPECT_EQ(0u, doc.GetUnknownSections().GetCount());
    EXPECT_TRUE(doc.FindExperienceByOid(1));
}

TEST(VyrBaseDataLoad, AHeaderThatIsTheLastLineIsDropped) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(L"[Inconnu]\r\n\tk = 1\r\n[manipulation]\r\n")));
    // The experiment header was never dispatched: the default experiment stands in.
    ASSERT_EQ(1, CountKind(doc, VYR_KIND_EXPERIENCE));
    EXPECT_EQ(wxString(L"IDS_EXPERIENCE1"),
              doc.GetEntityList().GetFirst()->GetData()->GetEntityName());
}

TEST(VyrBaseDataLoad, MissingFileAnswersFalseKeepsTheDocumentAndNotifies) {
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    RecordingObserver observer;
    doc.AddObserver(&observer);
    observer.Clear();
    EXPECT_FALSE(doc.Load(L"/nonexistent/dir/file.vyr"));
    EXPECT_EQ(4u, doc.GetEntityList().GetCount());
    EXPECT_EQ(std::vector<int>{VYR_MSG_FILE_LOADED}, observer.Codes());
    EXPECT_EQ(nullptr, observer.messages[0].param);
    doc.RemoveObserver(&observer);
}

TEST(VyrBaseDataLoad, ADirectoryAnswersFalse) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    EXPECT_FALSE(doc.Load(Wx(dir.Path())));
}

TEST(VyrBaseDataLoad, NotifiesFileLoadedAfterASuccessfulLoad) {
    VyrBaseData doc(nullptr);
    RecordingObserver observer;
    doc.AddObserver(&observer);
    observer.Clear();
    ASSERT_TRUE(LoadBytes(doc, Utf16File(OneCurveText())));
    ASSERT_FALSE(observer.Codes().empty());
    EXPECT_EQ(VYR_MSG_FILE_LOADED, observer.Codes().back());
    doc.RemoveObserver(&observer);
}

TEST(VyrBaseDataLoad, UnitRecordsAndMapsAreEmptiedAfterEveryAttempt) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(OneCurveText())));
    EXPECT_TRUE(doc.GetUnitMap().empty());
    EXPECT_TRUE(doc.GetVectorUnitMap().empty());
    EXPECT_FALSE(LoadBytes(doc, std::string("\xFE\xFF", 2)));
    EXPECT_TRUE(doc.GetUnitMap().empty());
    EXPECT_TRUE(doc.GetVectorUnitMap().empty());
}

TEST(VyrBaseDataLoad, VectorsNoCurveUsesAreRemoved) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(
        doc, Utf16File(L"[vecteur]\r\n\toid = 40\r\n\tnom = \"lost\"\r\n" + OneCurveText())));
    EXPECT_EQ(nullptr, doc.FindEntity(40));
    ExpectOneCurveDocument(doc);
}

TEST(VyrBaseDataLoad, OneByteAndOddUtf16Files) {
    {
        // One byte: no mark possible; read as ISO-8859-1, a lone first line and nothing after.
        VyrBaseData doc(nullptr);
        EXPECT_TRUE(LoadBytes(doc, "["));
        EXPECT_EQ(1, CountKind(doc, VYR_KIND_EXPERIENCE));
    }
    {
        VyrBaseData doc(nullptr);
        EXPECT_FALSE(LoadBytes(doc, "x\r\n[y]\r\n"));
    }
    {
        // An odd UTF-16 length: the last byte pairs with a zero and reads as a character.
        VyrBaseData doc(nullptr);
        std::string bytes = Utf16File(L"[manipulation]\r\n\toid = 5\r\n\tnom = \"");
        bytes += "A";
        EXPECT_TRUE(LoadBytes(doc, bytes));
        ASSERT_TRUE(doc.FindExperienceByOid(5));
        // The quoted name ends with the text: "A" without its closing quote.
        EXPECT_EQ(wxString(L"A"), doc.FindExperienceByOid(5)->GetEntityName());
    }
    {
        // Just the mark and one byte.
        VyrBaseData doc(nullptr);
        EXPECT_TRUE(LoadBytes(doc, std::string("\xFF\xFE[", 3)));
    }
}

TEST(VyrBaseDataLoad, InvalidUtf8AfterTheMarkAnswersFalse) {
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    RecordingObserver observer;
    doc.AddObserver(&observer);
    observer.Clear();
    EXPECT_FALSE(
        LoadBytes(doc, std::string("\xEF\xBB\xBF[manipulation]\r\n\tnom = \"\xC3\x28\"\r\n")));
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
    // Emptying the document announced its deletions; the load attempt ends with code 8.
    ASSERT_FALSE(observer.Codes().empty());
    EXPECT_EQ(VYR_MSG_FILE_LOADED, observer.Codes().back());
    doc.RemoveObserver(&observer);
}

TEST(VyrBaseDataLoad, AZeroByteEndsAnEightBitText) {
    VyrBaseData doc(nullptr);
    std::string bytes = Latin1(OneCurveText());
    bytes.insert(bytes.find("[manipulation]"), std::string(1, '\0'));
    ASSERT_TRUE(LoadBytes(doc, bytes));
    // The experiment section was cut off: the default one holds the curve.
    EXPECT_EQ(nullptr, doc.FindExperienceByOid(1));
    ASSERT_EQ(1, CountKind(doc, VYR_KIND_EXPERIENCE));
}

TEST(VyrBaseDataLoad, ATableWithoutClosingBraceConsumesTheRestAndStops) {
    const std::wstring text =
        L"[vecteur]\r\n\toid = 3\r\n\tpoints = table 2 {\r\n\t1\t2\r\n"
        L"[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 3\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(text)));
    // The curve section was read as table elements: no curve, and the vector went with the
    // orphans.
    EXPECT_EQ(0, CountKind(doc, VYR_KIND_COURBE));
    EXPECT_EQ(0, CountKind(doc, VYR_KIND_VECTEUR));
    EXPECT_EQ(1, CountKind(doc, VYR_KIND_EXPERIENCE));
}

TEST(VyrBaseDataLoad, AQuoteNeverClosedEndsTheLoadWithWhatWasRead) {
    // No double quote follows the comment's opening one.
    const std::wstring text =
        L"[vecteur]\r\n\toid = 3\r\n"
        L"[courbe]\r\n\toid = 2\r\n\tcommentaire = \"open\r\n\tvx = 3\r\n\r\n"
        L"[manipulation]\r\n\toid = 1\r\n\tcourbes = table 1 {\r\n\t2\t\r\n\t}\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(text)));
    VyrCourbe* c = doc.FindCourbeByOid(2);
    ASSERT_TRUE(c);
    // The comment ran to the end of the text, line by line; nothing after it was read as
    // lines of their own.
    EXPECT_EQ(
        wxString(L"open\r\nvx = 3\r\n[manipulation]\r\noid = 1\r\ncourbes = table 1 {\r\n2\r\n}"),
        c->GetText());
    EXPECT_EQ(nullptr, c->GetVx());
    EXPECT_EQ(nullptr, doc.FindExperienceByOid(1));
    // The default experiment stands in for the section that was never reached.
    EXPECT_EQ(1, CountKind(doc, VYR_KIND_EXPERIENCE));
}

TEST(VyrBaseDataLoad, OidsThatNameNothing) {
    std::wstring text = OneCurveText();
    text.replace(text.find(L"\tvx = 3"), 7, L"\tvx = 99");
    text.replace(text.find(L"\t2\t\r\n\t}"), 3, L"\t2 77\t");
    text += L"[manipulation]\r\n\toid = 8\r\n\tnom = \"after\"\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(text)));
    VyrCourbe* c = doc.FindCourbeByOid(2);
    ASSERT_TRUE(c);
    EXPECT_EQ(nullptr, c->GetVx());
    // 77 names nothing: the experiment keeps its curve, and the load ends there.
    ASSERT_TRUE(doc.FindExperienceByOid(1));
    EXPECT_EQ(1, doc.FindExperienceByOid(1)->GetNbCourbe());
    EXPECT_EQ(nullptr, doc.FindExperienceByOid(8));
}

TEST(VyrBaseDataLoad, HugeAndNegativeCountsAndOids) {
    const std::wstring text =
        L"[vecteur]\r\n\toid = 3\r\n\tpoints = table 2147483647 {\r\n\t1\t2\r\n\t}\r\n"
        L"\tvalidit\u00e9 = table -5 {\r\n\t255\r\n\t}\r\n"
        L"[vecteur]\r\n\toid = -4\r\n\tpoints = table -1 {\r\n\t7\r\n\t}\r\n"
        L"[courbe]\r\n\toid = 99999999999999\r\n\tvx = 3\r\n\tvy = -4\r\n"
        L"\tlesdiagrammes = table 99 {\r\n\t0\t0\t1\t1\r\n\t}\r\n"
        L"\tdiagramme = -3\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(text)));
    VyrCourbe* c = doc.FindCourbeByOid(INT_MAX);
    ASSERT_TRUE(c);
    ASSERT_TRUE(c->GetVx() && c->GetVy());
    EXPECT_EQ(2, c->GetVx()->GetSize());
    EXPECT_EQ(2.0, c->GetVx()->GetVal(1));
    EXPECT_FALSE(c->GetVx()->IsValidAt(0));
    EXPECT_EQ(-4, c->GetVy()->GetOid());
    EXPECT_EQ(1, c->GetVy()->GetSize());
    EXPECT_FALSE(c->IsShownInDiagram(0));
    EXPECT_FALSE(c->IsShownInDiagram(1));
    EXPECT_EQ(1, doc.GetDiagramCount());
    // The default experiment took the next oid, which cannot go past the largest int.
    EXPECT_EQ(INT_MAX, doc.GetLastOid());
    ASSERT_TRUE(doc.GetEntity(VYR_KIND_EXPERIENCE));
    EXPECT_EQ(INT_MAX, doc.GetEntity(VYR_KIND_EXPERIENCE)->GetOid());
}

TEST(VyrBaseDataLoad, AHundredMegabyteLine) {
    // One line of 100 MB (ISO-8859-1): a vector name.
    std::string bytes = "[vecteur]\r\n\toid = 3\r\n\tnom = \"";
    bytes.append(100u << 20, 'a');
    bytes += "\"\r\n[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 3\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, bytes));
    VyrCourbe* c = doc.FindCourbeByOid(2);
    ASSERT_TRUE(c && c->GetVx());
    EXPECT_EQ(100u << 20, c->GetVx()->GetGrandeur().length());
}

TEST(VyrBaseDataLoad, DetectorsRecogniseOnlyTheirMarksAndTheUnitHeader) {
    bool flag = true;
    unsigned char utf8Mark[] = {0xEF, 0xBB, 0xBF, 0};
    EXPECT_TRUE(VyrBaseData::IsUTF8TextFile(utf8Mark, 3, &flag));
    EXPECT_TRUE(flag);
    unsigned char header[] = "x\r\n[unit\xC3\xA9]";
    EXPECT_TRUE(VyrBaseData::IsUTF8TextFile(header, sizeof header - 1, &flag));
    EXPECT_FALSE(flag);
    unsigned char latin[] = "[unit\xE9]";
    EXPECT_FALSE(VyrBaseData::IsUTF8TextFile(latin, sizeof latin - 1, &flag));
    // The search ends at the first zero byte.
    unsigned char hidden[] = "ab\0[unit\xC3\xA9]";
    EXPECT_FALSE(VyrBaseData::IsUTF8TextFile(hidden, sizeof hidden - 1, &flag));
    EXPECT_FALSE(VyrBaseData::IsUTF8TextFile(utf8Mark, 2, &flag));
    EXPECT_FALSE(VyrBaseData::IsUTF8TextFile(nullptr, 0, &flag));

    unsigned char le[] = {0xFF, 0xFE}, be[] = {0xFE, 0xFF}, none[] = {'a', 'b'};
    EXPECT_TRUE(VyrBaseData::IsUnicodeTextFile(le, 2, &flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(VyrBaseData::IsUnicodeTextFile(be, 2, &flag));
    EXPECT_FALSE(flag);
    EXPECT_FALSE(VyrBaseData::IsUnicodeTextFile(none, 2, &flag));
    EXPECT_TRUE(flag);
    EXPECT_FALSE(VyrBaseData::IsUnicodeTextFile(le, 1, &flag));
    EXPECT_FALSE(VyrBaseData::IsUnicodeTextFile(nullptr, 2, &flag));
}

TEST(VyrBaseDataLoad, ParseUnicodeTextOfNullAnswersFalse) {
    VyrBaseData doc(nullptr);
    EXPECT_FALSE(doc.ParseUnicodeText(nullptr));
}

TEST(VyrBaseDataLoad, SimuleSectionManipTakesEveryCurveInListOrder) {
    VyrBaseData doc(nullptr);
    VyrBaseDataTestAccess access(doc);
    access.CreateEntity(VYR_KIND_COURBE, 10, L"a");
    access.CreateEntity(VYR_KIND_VECTEUR, 11, nullptr);
    access.CreateEntity(VYR_KIND_COURBE, 5, L"b");
    doc.SimuleSectionManip();
    VyrExperience* e = static_cast<VyrExperience*>(doc.GetEntity(VYR_KIND_EXPERIENCE));
    ASSERT_TRUE(e);
    EXPECT_EQ(12, e->GetOid());
    EXPECT_EQ(wxString(L"IDS_EXPERIENCE1"), e->GetEntityName());
    ASSERT_EQ(2, e->GetNbCourbe());
    EXPECT_EQ(10, e->GetCourbes().GetFirst()->GetData()->GetOid());
    EXPECT_EQ(5, e->GetCourbes().GetLast()->GetData()->GetOid());
}

// ---- Loading from memory ------------------------------------------------------------------

namespace {

// The document's content as a text (kinds, oids, names, sizes), to compare two loads.
std::string Summary(VyrBaseData& doc) {
    std::string text;
    for (auto* node = doc.GetEntityList().GetFirst(); node; node = node->GetNext()) {
        VyrEntity* e = node->GetData();
        text += std::to_string(e->GetKind()) + ":" + std::to_string(e->GetOid()) + ":" +
                std::string(e->GetEntityName().utf8_str());
        if (e->GetKind() == VYR_KIND_VECTEUR)
            text += ":" + std::to_string(static_cast<VyrVecteur*>(e)->GetSize());
        text += "\n";
    }
    for (const wxString& section : doc.GetUnknownSections())
        text += "unknown:" + std::string(section.utf8_str()) + "\n";
    return text;
}

// Every file of a folder of the regression corpus (tests/corpus/<kind>).
std::vector<std::string> CorpusFiles(const std::string& kind) {
    const std::string dir = std::string(VYR_SOURCE_DIR) + "/tests/corpus/" + kind;
    std::vector<std::string> files;
    for (const std::string& name : DirEntries(dir))
        if (name[0] != '.')
            files.push_back(dir + "/" + name);
    return files;
}

}  // namespace

TEST(VyrBaseDataLoad, LoadFromMemoryReadsWhatLoadReadsFromAFile) {
    const std::string inputs[] = {
        Utf16File(OneCurveText()),
        Utf8(OneCurveText()),
        "\xEF\xBB\xBF" + Utf8(OneCurveText()),
        Latin1(L"[Vecteur]\r\n\toid = 3\r\n" + OneCurveText()),
        std::string(),
        std::string("\xFE\xFF", 2),
        Utf16File(L"\toid = 3\r\n[vecteur]\r\n"),
        ReadBytes(SampleFile("oscillation.vyr")),
    };
    for (const std::string& bytes : inputs) {
        VyrBaseData fromFile(nullptr);
        VyrBaseData fromMemory(nullptr);
        const bool loaded = LoadBytes(fromFile, bytes);
        EXPECT_EQ(loaded, fromMemory.LoadFromMemory(bytes.data(), bytes.size()));
        EXPECT_EQ(Summary(fromFile), Summary(fromMemory));
    }
}

TEST(VyrBaseDataLoad, LoadFromMemoryNeedsNoTerminatingZero) {
    // The exact bytes in a buffer of their own size: a read past them would be reported by the
    // address sanitizer.
    const std::string text = Utf8(OneCurveText());
    std::vector<char> exact(text.begin(), text.end());
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(doc.LoadFromMemory(exact.data(), exact.size()));
    ExpectOneCurveDocument(doc);
    const std::string utf16 = Utf16File(OneCurveText()) + "x";  // an odd last byte
    std::vector<char> odd(utf16.begin(), utf16.end());
    VyrBaseData other(nullptr);
    ASSERT_TRUE(other.LoadFromMemory(odd.data(), odd.size()));
    ExpectOneCurveDocument(other);
}

TEST(VyrBaseDataLoad, LoadFromMemoryEndsTheTextAtItsFirstZero) {
    const std::string text = Latin1(OneCurveText());
    const std::string cut = text.substr(0, text.find("[courbe]")) + std::string(1, '\0') +
                            text.substr(text.find("[courbe]"));
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(doc.LoadFromMemory(cut.data(), cut.size()));
    EXPECT_EQ(0, CountKind(doc, VYR_KIND_COURBE));
}

TEST(VyrBaseDataLoad, LoadFromMemoryOfNothing) {
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    RecordingObserver observer;
    doc.AddObserver(&observer);
    observer.Clear();
    // Null bytes of some length: content that cannot be had, the document stays.
    EXPECT_FALSE(doc.LoadFromMemory(nullptr, 10));
    EXPECT_EQ(4u, doc.GetEntityList().GetCount());
    EXPECT_EQ(std::vector<int>{VYR_MSG_FILE_LOADED}, observer.Codes());
    // No bytes at all: an empty file.
    EXPECT_TRUE(doc.LoadFromMemory(nullptr, 0));
    EXPECT_EQ(1u, doc.GetEntityList().GetCount());
    EXPECT_EQ(1, CountKind(doc, VYR_KIND_EXPERIENCE));
    doc.RemoveObserver(&observer);
}

TEST(VyrBaseDataLoad, ALargeTextThatIsNoDocumentIsRefusedWithoutDecodingIt) {
    // A first line that is no header, then more lines: refused in every encoding, and the
    // unknown sections of the previous load are gone as after any parse.
    VyrBaseData doc(nullptr);
    const std::string kept = "[A]\r\n\tk = 1\r\n[manipulation]\r\n";
    ASSERT_TRUE(doc.LoadFromMemory(kept.data(), kept.size()));
    ASSERT_EQ(1u, doc.GetUnknownSections().GetCount());
    std::string garbage(4 << 20, 'x');
    for (size_t i = 100; i < garbage.size(); i += 100)
        garbage[i] = '\n';
    EXPECT_FALSE(doc.LoadFromMemory(garbage.data(), garbage.size()));
    EXPECT_TRUE(doc.GetUnknownSections().IsEmpty());
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
    const std::string marked = "\xEF\xBB\xBF" + garbage;
    EXPECT_FALSE(doc.LoadFromMemory(marked.data(), marked.size()));
    const std::string wide = Utf16File(L"no header\r\nsecond line");
    EXPECT_FALSE(doc.LoadFromMemory(wide.data(), wide.size()));
    // One line only is no refusal: the loop never looks at it.
    std::string single(1 << 20, 'y');
    EXPECT_TRUE(doc.LoadFromMemory(single.data(), single.size()));
    EXPECT_EQ(1, CountKind(doc, VYR_KIND_EXPERIENCE));
    // Invalid UTF-8 in a text marked as UTF-8: no text, no load.
    const std::string invalid = "\xEF\xBB\xBF[vecteur]\r\n\xC3\x28\r\n";
    EXPECT_FALSE(doc.LoadFromMemory(invalid.data(), invalid.size()));
}

// The regression corpus: files that must load and files that must fail, read from memory and
// from disk alike (every input a fuzzer found to crash the reader is added to it).
TEST(VyrBaseDataLoad, TheRegressionCorpusLoadsOrFailsAsItShould) {
    const std::vector<std::string> good = CorpusFiles("load");
    const std::vector<std::string> bad = CorpusFiles("fail");
    ASSERT_FALSE(good.empty());
    ASSERT_FALSE(bad.empty());
    for (const auto& [files, expected] : {std::make_pair(good, true), std::make_pair(bad, false)}) {
        for (const std::string& file : files) {
            SCOPED_TRACE(file);
            const std::string bytes = ReadBytes(file);
            VyrBaseData fromMemory(nullptr);
            EXPECT_EQ(expected, fromMemory.LoadFromMemory(bytes.data(), bytes.size()));
            VyrBaseData fromFile(nullptr);
            EXPECT_EQ(expected, fromFile.Load(Wx(file)));
            EXPECT_EQ(Summary(fromMemory), Summary(fromFile));
            // Whatever loaded saves, and loads again.
            if (expected) {
                TempDir dir;
                const std::string saved = dir.File("saved.vyr");
                EXPECT_TRUE(fromMemory.Save(Wx(saved)));
                VyrBaseData again(nullptr);
                EXPECT_TRUE(again.Load(Wx(saved)));
            }
            // Emptying a document must not meet any element twice.
            fromMemory.Delete();
            EXPECT_EQ(0u, fromMemory.GetEntityList().GetCount());
        }
    }
}

TEST(VyrBaseDataLoad, ParseUnicodeTextRefusesAKeyLineBeforeAnyHeader) {
    VyrBaseData doc(nullptr);
    wchar_t text[] = L"\toid = 3\r\n[vecteur]\r\n\toid = 4\r\n";
    EXPECT_FALSE(doc.ParseUnicodeText(text));
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
    EXPECT_FALSE(doc.ParseUnicodeText(nullptr));
}

namespace {

locale_t CLocaleForTest() {
    static locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
    return locale;
}

// strtod in the "C" locale of a token with "," read as "." (characters beyond ASCII end it).
double CStrtod(const std::wstring& text) {
    std::string narrow;
    for (wchar_t c : text)
        narrow.push_back(c == L',' ? '.' : (c < 128 ? static_cast<char>(c) : '\x7f'));
    return strtod_l(narrow.c_str(), nullptr, CLocaleForTest());
}

std::string CFormat(const char* format, double v) {
    locale_t previous = uselocale(CLocaleForTest());
    char buf[512];
    std::snprintf(buf, sizeof buf, format, v);
    uselocale(previous);
    return buf;
}

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// A document text whose only curve has X = the given tokens as its points table (announced
// with `count`) and Y = one value.
std::wstring TableDocument(const std::vector<std::wstring>& tokens, long count) {
    std::wstring text =
        L"[vecteur]\r\n\toid = 3\r\n\tpoints = table " + std::to_wstring(count) + L" {\r\n\t";
    for (size_t i = 0; i < tokens.size(); ++i) {
        text += tokens[i];
        if (i > 0 && (i + 1) % 4 == 0)
            text += L"\r\n";
        text += L"\t";
    }
    text +=
        L"\r\n\t}\r\n[vecteur]\r\n\toid = 4\r\n\tpoints = table 1 {\r\n\t1\r\n\t}\r\n"
        L"[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 4\r\n";
    return text;
}

VyrVecteur* XOf(VyrBaseData& doc) {
    VyrCourbe* c = doc.FindCourbeByOid(2);
    return c ? c->GetVx() : nullptr;
}

// The number texts of the conversion tests: odd forms, the C formats of random doubles, and
// random strings of the characters numbers are made of.
std::vector<std::wstring> NumberCorpus() {
    std::vector<std::wstring> corpus = {L"1.5",
                                        L"1.5abc",
                                        L"  2,5",
                                        L"+4",
                                        L"+-1",
                                        L"--1",
                                        L".",
                                        L".5",
                                        L"5.",
                                        L"1e",
                                        L"1e+",
                                        L"1e-3x",
                                        L"1E5",
                                        L"0x1p3",
                                        L"-0x1p3",
                                        L"0x",
                                        L"0xg",
                                        L"0x.8p1",
                                        L"0X1P-2",
                                        L"0x-1",
                                        L"inf",
                                        L"-inf",
                                        L"infinity",
                                        L"infin",
                                        L"nan",
                                        L"-nan",
                                        L"nan(123)",
                                        L"nan(",
                                        L"1e400",
                                        L"-1e400",
                                        L"1e-400",
                                        L"4.9e-324",
                                        L"1e-310",
                                        L"abc",
                                        L"1,5,6",
                                        L"1.5.6",
                                        L"\u00e91",
                                        L"1\u00e9",
                                        L"1\u0131",
                                        L"\u01311",
                                        L"0,000001",
                                        L"123456789012345678901234567890",
                                        L"0.000000000000000000000000000000000001e36",
                                        std::wstring(300, L'1') + L"e-290",
                                        L"1\U0001F600"};
    std::mt19937_64 random(17);
    for (int i = 0; i < 20000; ++i) {
        const uint64_t bits = random();
        double v;
        std::memcpy(&v, &bits, sizeof v);
        for (const char* format : {"%g", "%.17g", "%a"}) {
            const std::string text = CFormat(format, v);
            corpus.emplace_back(text.begin(), text.end());
        }
    }
    const wchar_t alphabet[] = L"0123456789.,+-eExXpPinfatyNAI()_ 9";
    const size_t letters = sizeof alphabet / sizeof alphabet[0] - 1;
    std::mt19937 pick(99);
    for (int round = 0; round < 20000; ++round) {
        std::wstring text;
        const int length = 1 + static_cast<int>(pick() % 14);
        for (int i = 0; i < length; ++i)
            text.push_back(alphabet[pick() % letters]);
        // A token that begins with "}" closes the table.
        if (text[0] != L'}')
            corpus.push_back(text);
    }
    return corpus;
}

}  // namespace

// The reader converts the numbers of a UTF-16 file straight from its bytes, and those of UTF-8
// and ISO-8859-1 files from the decoded text: both give strtod's value in the "C" locale, bit
// for bit, on every form.
TEST(VyrBaseDataLoad, TableValuesReadLikeStrtodInTheCLocaleInEveryEncoding) {
    const std::vector<std::wstring> corpus = NumberCorpus();
    const std::wstring text = TableDocument(corpus, static_cast<long>(corpus.size()));
    for (int encoding = 0; encoding < 2; ++encoding) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(LoadBytes(
            doc, encoding == 0 ? Utf16File(text) : std::string("\xEF\xBB\xBF") + Utf8(text)));
        VyrVecteur* x = XOf(doc);
        ASSERT_TRUE(x);
        ASSERT_EQ(static_cast<int>(corpus.size()), x->GetSize());
        int differences = 0;
        for (size_t i = 0; i < corpus.size(); ++i) {
            if (!SameBits(CStrtod(corpus[i]), x->GetVal(static_cast<int>(i))) && ++differences < 5)
                ADD_FAILURE() << "encoding " << encoding << ", " << wxString(corpus[i]);
        }
        EXPECT_EQ(0, differences);
    }
}

// The count after "table" is written but not used: it only tells how much room to make. A table
// holding more or fewer values than it announces gives the vector Resize would give (size the
// values read, capacity 100 more, none for an empty table).
TEST(VyrBaseDataLoad, TheTableCountOnlyHintsTheRoomForTheValues) {
    struct Case {
        long announced;
        int values;
    };
    const Case cases[] = {{5, 5}, {3, 5}, {3, 250}, {10, 2}, {5, 0}, {0, 4}, {-2, 3}, {0, 0}};
    for (const Case& c : cases) {
        std::vector<std::wstring> tokens;
        for (int i = 0; i < c.values; ++i)
            tokens.push_back(std::to_wstring(i) + L".5");
        const std::wstring text = TableDocument(tokens, c.announced);
        for (int encoding = 0; encoding < 2; ++encoding) {
            VyrBaseData doc(nullptr);
            ASSERT_TRUE(LoadBytes(doc, encoding == 0 ? Utf16File(text) : Latin1(text)));
            VyrVecteur* x = XOf(doc);
            ASSERT_TRUE(x);
            SCOPED_TRACE(testing::Message() << "announced " << c.announced << ", values "
                                            << c.values << ", encoding " << encoding);
            ASSERT_EQ(c.values, x->GetSize());
            EXPECT_EQ(c.values ? c.values + 100 : 0, x->GetCapacity());
            EXPECT_EQ(1 + c.values / 8, x->GetValidity()->GetSize());
            for (int i = 0; i < c.values; ++i)
                EXPECT_EQ(i + 0.5, x->GetVal(i));
        }
    }
}

// A second "points" line in one section replaces the values of the first, as Resize does.
TEST(VyrBaseDataLoad, ASecondPointsTableResizesTheVector) {
    const std::wstring text =
        L"[vecteur]\r\n\toid = 3\r\n\tpoints = table 3 {\r\n\t1\t2\t3\r\n\t}\r\n"
        L"\tpoints = table 2 {\r\n\t7\t8\r\n\t}\r\n"
        L"[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 3\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(text)));
    VyrVecteur* x = XOf(doc);
    ASSERT_TRUE(x);
    ASSERT_EQ(2, x->GetSize());
    EXPECT_EQ(103, x->GetCapacity());
    EXPECT_EQ(7.0, x->GetVal(0));
    EXPECT_EQ(8.0, x->GetVal(1));
}

// Reading a UTF-16 file in place gives back the pages it has passed while it reads a long table:
// every value still reads right, and what comes after the table too.
TEST(VyrBaseDataLoad, ALongUtf16TableReadsWhollyWhileItsPagesAreGivenBack) {
    std::vector<std::wstring> tokens;
    const int n = 600000;  // about 5 million units: several steps of the reader
    for (int i = 0; i < n; ++i)
        tokens.push_back(std::to_wstring(i) + L".25");
    std::wstring text = TableDocument(tokens, n);
    text += L"\tnom = \"after\"\r\n[Inconnue]\r\n\tk = 1\r\n\r\n";
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, Utf16File(text)));
    VyrVecteur* x = XOf(doc);
    ASSERT_TRUE(x);
    ASSERT_EQ(n, x->GetSize());
    int wrong = 0;
    for (int i = 0; i < n; ++i)
        wrong += x->GetVal(i) != i + 0.25;
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(wxString(L"after"), doc.FindCourbeByOid(2)->GetEntityName());
    ASSERT_EQ(1u, doc.GetUnknownSections().GetCount());
    // The last section of the text ends before the separator after its last line.
    EXPECT_EQ(wxString(L"[Inconnue]\n\tk = 1"), doc.GetUnknownSections()[0]);
}

// Characters beyond U+FFFF (two units in UTF-16) are one character of the text: in values, in
// names and in unknown sections kept verbatim, UTF-16 reads as UTF-8 does.
TEST(VyrBaseDataLoad, Utf16ReadInPlaceGivesWhatUtf8Gives) {
    const std::wstring text =
        L"[Inconnue \U0001F600]\r\n\tk = \"\U0001F600\u00e9\"\r\n\t\U0001F600\r\n\r\n"
        L"[vecteur]\r\n\toid = 3\r\n\tnom = \"\U0001F600\"\r\n\tpoints = table 2 {\r\n\t1\t2"
        L"\r\n\t}\r\n[Autre]\r\n\tx\U0001F600"
        L"\r\n[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 3\r\n\tcommentaire = \"a\tb\U0001F600"
        L"\r\n\U0001F600c\"\r\n[Fin\U0001F600]\r\n\tz = \U0001F600";
    VyrBaseData utf16(nullptr), utf8(nullptr);
    ASSERT_TRUE(LoadBytes(utf16, Utf16File(text)));
    ASSERT_TRUE(LoadBytes(utf8, std::string("\xEF\xBB\xBF") + Utf8(text)));
    ASSERT_EQ(3u, utf8.GetUnknownSections().GetCount());
    EXPECT_EQ(utf8.GetUnknownSections(), utf16.GetUnknownSections());
    EXPECT_EQ(wxString(L"[Fin\U0001F600]\n\tz = \U0001F600"), utf16.GetUnknownSections()[2]);
    ASSERT_TRUE(XOf(utf16));
    EXPECT_EQ(wxString(L"\U0001F600"), XOf(utf16)->GetGrandeur());
    EXPECT_EQ(utf8.FindCourbeByOid(2)->GetText(), utf16.FindCourbeByOid(2)->GetText());
    EXPECT_EQ(wxString(L"a\r\nb\U0001F600\r\n\U0001F600c"), utf16.FindCourbeByOid(2)->GetText());
}

// A document of many small tables gives its text back across them while it loads: every
// vector, curve and unknown section after the given-back text still reads whole.
TEST(VyrBaseDataLoad, ManySmallTablesReadWhollyWhileTheTextIsGivenBack) {
    VyrBaseData built(nullptr);
    VyrExperienceParam ep(L"E");
    VyrExperience* e = built.CreateExperience(ep);
    const int curves = 200, points = 2000;
    for (int k = 0; k < curves; ++k) {
        VyrCourbeParam p;
        p.m_sGrdX = L"t";
        p.m_sGrdY = wxString::Format(L"U%d", k);
        VyrCourbe* c = built.CreateCourbe(e, p, nullptr, false);
        c->SetSize(points);
        for (int i = 0; i < points; ++i) {
            c->GetVx()->SetVal(i, i * 0.5 + k);
            c->GetVy()->SetVal(i, k * 1000.0 + i);
        }
    }
    TempDir dir;
    const std::string path = dir.File("many.vyr");
    ASSERT_TRUE(built.Save(Wx(path)));
    std::string bytes = ReadBytes(path);
    ASSERT_GT(bytes.size(), 8u << 20);  // several steps of the reader, and large pages
    bytes += Utf16(L"[Inconnue]\r\n\tk = \"fin\"\r\n\r\n");
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadBytes(doc, bytes));
    int wrong = 0, found = 0;
    for (auto* node = doc.GetFirstCourbeNode(); node;) {
        VyrCourbe* c = doc.GetNextCourbe(&node);
        ASSERT_TRUE(c->GetVx() && c->GetVy());
        ASSERT_EQ(points, c->GetVy()->GetSize());
        const int k = static_cast<int>(c->GetVy()->GetVal(0) / 1000.0);
        EXPECT_EQ(wxString::Format(L"U%d", k), c->GetVy()->GetGrandeur());
        for (int i = 0; i < points; ++i)
            wrong +=
                c->GetVx()->GetVal(i) != i * 0.5 + k || c->GetVy()->GetVal(i) != k * 1000.0 + i;
        ++found;
    }
    EXPECT_EQ(curves, found);
    EXPECT_EQ(0, wrong);
    ASSERT_EQ(1u, doc.GetUnknownSections().GetCount());
    EXPECT_EQ(wxString(L"[Inconnue]\n\tk = \"fin\""), doc.GetUnknownSections()[0]);
}

// A file read in place may hand the pages of a long table back to the system behind the reader:
// what follows the table (kept sections, later values) must read the same as from memory.
TEST(VyrBaseDataLoad, ALongTableReadsTheSameFromAFileAsFromMemory) {
    const int count = 3000000;
    std::wstring text = L"[vecteur]\r\n\toid = 300\r\n\tpoints = table 3000000 {\r\n\t";
    for (int i = 0; i < count; ++i)
        text += std::to_wstring(i % 977) + ((i + 1) % 4 == 0 ? L"\r\n\t" : L"\t");
    text +=
        L"\r\n\t}\r\n[Kept]\r\n\tk = \"after the table\"\r\n[courbe]\r\n\toid = 301\r\n"
        L"\tvx = 300\r\n\tvy = 300\r\n[manipulation]\r\n\toid = 302\r\n"
        L"\tcourbes = table 1 {\r\n\t301\r\n\t}\r\n";
    const std::string bytes = Utf16File(text);
    VyrBaseData fromFile(nullptr);
    VyrBaseData fromMemory(nullptr);
    ASSERT_TRUE(LoadBytes(fromFile, bytes));
    ASSERT_TRUE(fromMemory.LoadFromMemory(bytes.data(), bytes.size()));
    EXPECT_EQ(Summary(fromMemory), Summary(fromFile));
    ASSERT_EQ(1u, fromFile.GetUnknownSections().GetCount());
    EXPECT_TRUE(fromFile.GetUnknownSections()[0].StartsWith(L"[Kept]\n\tk = \"after the table\""));
    VyrCourbe* a = fromFile.FindCourbeByOid(301);
    VyrCourbe* b = fromMemory.FindCourbeByOid(301);
    ASSERT_TRUE(a && b && a->GetVx() && b->GetVx());
    ASSERT_EQ(count, a->GetVx()->GetSize());
    ASSERT_EQ(count, b->GetVx()->GetSize());
    EXPECT_EQ(0, std::memcmp(a->GetVx()->GetArea(), b->GetVx()->GetArea(), count * sizeof(double)));
    EXPECT_EQ(976.0, a->GetVx()->GetVal(976));
    EXPECT_EQ(static_cast<double>((count - 1) % 977), a->GetVx()->GetVal(count - 1));
}

// Every record section: lines that come before its "oid" line have no record to go to and are
// skipped, quoted texts with their continuation lines (which are never taken for keys), and so
// are keys the section does not know; the record made by the "oid" line starts empty and the
// next sections read as usual (a curve that keeps the vector of the vector case).
TEST(VyrBaseDataLoad, LinesBeforeTheOidAndUnknownKeysAreSkippedInEverySection) {
    struct Case {
        const wchar_t* header;
        int kind;
        const wchar_t* early;  // known keys, before the oid line
        std::function<void(VyrBaseData&, VyrEntity*)> check;
    };
    const wchar_t* const quoted = L"\"early\r\n\toid = 99\"\r\n";
    const std::vector<Case> cases = {
        {L"[courbe]", VYR_KIND_COURBE,
         L"\txmin = 5\r\n\tdiagramme = 1\r\n\tlesdiagrammes = table 2 {\r\n\t0\t1\r\n\t}\r\n"
         L"\tannotations = table 1 {\r\n\t7\r\n\t}\r\n\tcommentaire = ",
         [](VyrBaseData& doc, VyrEntity* e) {
             VyrCourbe* c = static_cast<VyrCourbe*>(e);
             EXPECT_NE(5.0, c->GetScale().GetXmin());
             EXPECT_EQ(0, c->GetNotesCount());
             EXPECT_EQ(1, doc.GetDiagramCount());
         }},
        {L"[vecteur]", VYR_KIND_VECTEUR,
         L"\tunit\u00e9 = 10\r\n\tvalidit\u00e9 = table 1 {\r\n\t1\r\n\t}\r\n\tnom = ",
         [](VyrBaseData& doc, VyrEntity* e) {
             EXPECT_TRUE(static_cast<VyrVecteur*>(e)->GetGrandeur().empty());
             EXPECT_EQ(0u, doc.GetVectorUnitMap().count(40));
         }},
        {L"[cellules]", VYR_KIND_GRILLE, L"\tversion = 3\r\n\tname = ",
         [](VyrBaseData&, VyrEntity* e) {
             EXPECT_NE(3, static_cast<VyrGrilleEntity*>(e)->GetVersion());
         }},
        {L"[image_Redy]", VYR_KIND_IMAGE_REDY, L"\tposition = 2\r\n\tnom = ",
         [](VyrBaseData&, VyrEntity* e) {
             EXPECT_NE(2, static_cast<VyrImageRedyEntity*>(e)->GetPosition());
         }},
        {L"[Annotation]", VYR_KIND_NOTE, L"\tindex = 3\r\n\ttexte = ",
         [](VyrBaseData&, VyrEntity* e) {
             EXPECT_NE(3, static_cast<VyrNote*>(e)->GetPointIndex());
             EXPECT_TRUE(static_cast<VyrNote*>(e)->GetText().empty());
         }},
        {L"[outil_Interval]", VYR_KIND_OUTIL_INTERVAL, L"\tx0 = 5\r\n\tetiq1 = ",
         [](VyrBaseData&, VyrEntity* e) {
             EXPECT_NE(5.0, static_cast<VyrOutilInterval*>(e)->GetX0());
             EXPECT_TRUE(static_cast<VyrOutilInterval*>(e)->GetEtiq1().empty());
         }},
        {L"[compte_rendu]", VYR_KIND_COMPTE_RENDU, L"\trtf = ",
         [](VyrBaseData&, VyrEntity* e) {
             EXPECT_TRUE(static_cast<VyrCompteRendu*>(e)->GetRtf().empty());
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(wxString(c.header).utf8_str().data());
        const std::wstring text = std::wstring(c.header) + L"\r\n" + c.early + quoted +
                                  L"\tinconnue = \"x\"\r\n\toid = 40\r\n" +
                                  L"[courbe]\r\n\toid = 42\r\n\tvx = 40\r\n" +
                                  L"[manipulation]\r\n\toid = 41\r\n\tnom = \"after\"\r\n" +
                                  L"\tcourbes = table 1 {\r\n\t42\r\n\t}\r\n";
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(doc.LoadFromMemory(Utf16File(text).data(), Utf16File(text).size()));
        EXPECT_EQ(nullptr, doc.FindEntity(99));
        ASSERT_TRUE(doc.FindExperienceByOid(41));
        EXPECT_EQ(wxString(L"after"), doc.FindExperienceByOid(41)->GetEntityName());
        VyrEntity* record = doc.FindEntity(40);
        ASSERT_TRUE(record);
        EXPECT_EQ(c.kind, record->GetKind());
        EXPECT_FALSE(record->GetEntityName().StartsWith(L"early"));
        c.check(doc, record);
    }
}

// What is not a readable file of known length answers false: a directory (its read fails), a
// pipe (its length cannot be known), a name that does not exist.
TEST(VyrBaseDataLoad, ADirectoryAPipeOrNothingAnswersFalse) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    EXPECT_FALSE(doc.Load(Wx(dir.Path())));
    EXPECT_FALSE(doc.Load(Wx(dir.File("missing.vyr"))));
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    const std::string header = Utf16File(L"[manipulation]\r\n\toid = 1\r\n");
    ASSERT_EQ(static_cast<ssize_t>(header.size()), write(ends[1], header.data(), header.size()));
    // The write end stays open: opening the read end by name does not wait for a writer.
    EXPECT_FALSE(doc.Load(wxString::Format("/proc/self/fd/%d", ends[0])));
    close(ends[0]);
    close(ends[1]);
    EXPECT_EQ(0u, doc.GetEntityList().GetCount());
}

// A UTF-16 file with an odd last byte goes through the decoding copy instead of being read in
// place: its surrogate pairs still make one character each.
TEST(VyrBaseDataLoad, AnOddLastByteStillReadsSurrogatePairs) {
    const std::wstring text =
        L"[vecteur]\r\n\toid = 3\r\n\tnom = \"\U0001F600x\"\r\n\tpoints = table 1 {\r\n\t1\r\n"
        L"\t}\r\n[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 3\r\n"
        L"[Fin\U0001F600]\r\n\tz = \"\U0001F600\"\r\n";
    VyrBaseData even(nullptr), odd(nullptr);
    ASSERT_TRUE(LoadBytes(even, Utf16File(text)));
    ASSERT_TRUE(LoadBytes(odd, Utf16File(text) + "\x41"));
    for (VyrBaseData* doc : {&even, &odd}) {
        ASSERT_TRUE(XOf(*doc));
        EXPECT_EQ(wxString(L"\U0001F600x"), XOf(*doc)->GetGrandeur());
        ASSERT_EQ(1u, doc->GetUnknownSections().GetCount());
        EXPECT_TRUE(
            doc->GetUnknownSections()[0].StartsWith(L"[Fin\U0001F600]\n\tz = \"\U0001F600\""));
    }
    // The odd byte pairs with a zero: one more line, "A", at the end of the kept section.
    EXPECT_EQ(even.GetUnknownSections()[0] + L"\r\nA", odd.GetUnknownSections()[0]);
}

// Kernel files state a length (a page) longer than what they give: what the read does not
// reach reads as zeros, that is as the end of the text.
TEST(VyrBaseDataLoad, AFileShorterThanItsStatedLengthEndsWhereItsBytesEnd) {
    const char* path = "/sys/devices/system/cpu/online";
    if (access(path, R_OK) != 0)
        GTEST_SKIP() << path << " cannot be read here";
    const std::string bytes = ReadBytes(path);
    wxFile file(path);
    ASSERT_GT(file.Length(), static_cast<wxFileOffset>(bytes.size()));
    VyrBaseData fromFile(nullptr), fromBytes(nullptr);
    EXPECT_TRUE(fromFile.Load(path));
    ASSERT_TRUE(fromBytes.LoadFromMemory(bytes.data(), bytes.size()));
    EXPECT_EQ(Summary(fromBytes), Summary(fromFile));
}

// A UTF-8 file is decoded into a text of the load's own, whose pages go back to the system
// behind the reader: past a long table, through a value of many lines and across many large
// unknown sections. What it reads is what the same text in UTF-16, read from memory (where
// nothing is given back), gives.
TEST(VyrBaseDataLoad, TextGivenBackBehindTheReaderReadsTheSameInEveryEncoding) {
    std::wstring text =
        L"[vecteur]\r\n\toid = 3\r\n\tnom = \"x\"\r\n\tpoints = table 2000000 {\r\n\t";
    for (int i = 0; i < 2000000; ++i)
        text += std::to_wstring(i % 1013) + ((i + 1) % 4 == 0 ? L"\r\n\t" : L"\t");
    text += L"\r\n\t}\r\n[courbe]\r\n\toid = 2\r\n\tvx = 3\r\n\tvy = 3\r\n\tcommentaire = \"first";
    for (int i = 0; i < 40000; ++i)
        text += L"\r\n\tline " + std::to_wstring(i) + L" of a comment longer than a step of text";
    text += L"\"\r\n";
    for (int k = 0; k < 40; ++k) {
        text += L"[Kept" + std::to_wstring(k) + L"]\r\n";
        for (int i = 0; i < 3000; ++i)
            text += L"\tk" + std::to_wstring(i) + L" = \"\u00e9t\u00e9 " + std::to_wstring(k) +
                    L"\"\r\n";
    }
    text +=
        L"[manipulation]\r\n\toid = 1\r\n\tnom = \"E\"\r\n\tcourbes = table 1 {\r\n\t2\r\n\t}\r\n";
    VyrBaseData fromUtf8(nullptr), fromUtf16(nullptr);
    // The mark makes it UTF-8 (there is no unit section to tell).
    ASSERT_TRUE(LoadBytes(fromUtf8, "\xEF\xBB\xBF" + Utf8(text)));
    const std::string utf16 = Utf16File(text);
    ASSERT_TRUE(fromUtf16.LoadFromMemory(utf16.data(), utf16.size()));
    EXPECT_EQ(40u, fromUtf8.GetUnknownSections().GetCount());
    EXPECT_TRUE(Summary(fromUtf16) == Summary(fromUtf8));
    VyrCourbe* a = fromUtf8.FindCourbeByOid(2);
    VyrCourbe* b = fromUtf16.FindCourbeByOid(2);
    ASSERT_TRUE(a && b && a->GetVx() && b->GetVx());
    EXPECT_TRUE(a->GetText() == b->GetText());
    EXPECT_TRUE(a->GetText().EndsWith(L"line 39999 of a comment longer than a step of text"));
    ASSERT_EQ(2000000, a->GetVx()->GetSize());
    EXPECT_EQ(0,
              std::memcmp(a->GetVx()->GetArea(), b->GetVx()->GetArea(), 2000000 * sizeof(double)));
    EXPECT_EQ(static_cast<double>(1999999 % 1013), a->GetVx()->GetVal(1999999));
    EXPECT_EQ(wxString(L"E"), fromUtf8.FindExperienceByOid(1)->GetEntityName());
}

// An unknown section is copied a step of 2^20 units at a time; a surrogate pair that a step
// would cut stays whole (one character), wherever it falls.
TEST(VyrBaseDataLoad, ASurrogatePairAcrossTheCopyingStepsOfAnUnknownSectionStaysWhole) {
    // The kept text starts at unit 4 (the "\n" after "[K]\r"), the pair at unit 5 + before:
    // with before = step - 2 its first unit is the last of the first step.
    const size_t step = size_t(1) << 20;
    for (size_t before : {step - 2, step - 1, step}) {
        SCOPED_TRACE(before);
        const std::wstring body = L"\tk" + std::wstring(before - 2, L'a') + L"\U0001F600z";
        const std::string bytes = Utf16File(L"[K]\r\n" + body + L"\r\n");
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(doc.LoadFromMemory(bytes.data(), bytes.size()));
        ASSERT_EQ(1u, doc.GetUnknownSections().GetCount());
        // Kept from the header's second separator on, without the last line's separator.
        EXPECT_TRUE(doc.GetUnknownSections()[0] == wxString(L"[K]\n") + wxString(body));
    }
}
