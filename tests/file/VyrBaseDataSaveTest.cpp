#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <wx/file.h>
#include <wx/strconv.h>

#include "FileTestSupport.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/file/VyrSafeFile.h"

using namespace filetest;

namespace {

std::vector<std::wstring> Headers(const std::wstring& text) {
    std::vector<std::wstring> headers;
    size_t pos = 0;
    while ((pos = text.find(L"\r\n[", pos)) != std::wstring::npos) {
        const size_t end = text.find(L']', pos);
        headers.push_back(text.substr(pos + 2, end - pos - 1));
        pos = end;
    }
    if (text.compare(0, 1, L"[") == 0)
        headers.insert(headers.begin(), text.substr(0, text.find(L']') + 1));
    return headers;
}

// Everything a round trip must keep, for one curve and its two vectors.
void ExpectSameCurve(VyrCourbe* a, VyrCourbe* b) {
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a->GetOid(), b->GetOid());
    EXPECT_EQ(a->GetEntityName(), b->GetEntityName());
    EXPECT_EQ(a->GetText(), b->GetText());
    EXPECT_EQ(a->GetColor(), b->GetColor());
    EXPECT_EQ(a->GetWidth(), b->GetWidth());
    EXPECT_EQ(a->GetStylePoint(), b->GetStylePoint());
    EXPECT_EQ(a->GetStyleLiaison(), b->GetStyleLiaison());
    EXPECT_EQ(a->IsShownInDiagram(0), b->IsShownInDiagram(0));
    EXPECT_EQ(a->IsShownInDiagram(1), b->IsShownInDiagram(1));
    EXPECT_EQ(a->GetScale().GetXmin(), b->GetScale().GetXmin());
    EXPECT_EQ(a->GetScale().GetXmax(), b->GetScale().GetXmax());
    EXPECT_EQ(a->GetScale().GetYmin(), b->GetScale().GetYmin());
    EXPECT_EQ(a->GetScale().GetYmax(), b->GetScale().GetYmax());
    for (VyrVecteur* va : {a->GetVx(), a->GetVy()}) {
        VyrVecteur* vb = va == a->GetVx() ? b->GetVx() : b->GetVy();
        ASSERT_TRUE(va && vb);
        EXPECT_EQ(va->GetOid(), vb->GetOid());
        EXPECT_EQ(va->GetGrandeur(), vb->GetGrandeur());
        EXPECT_EQ(va->GetUnite(), vb->GetUnite());
        ASSERT_EQ(va->GetSize(), vb->GetSize());
        for (int i = 0; i < va->GetSize(); ++i) {
            EXPECT_EQ(va->GetVal(i), vb->GetVal(i)) << i;
            EXPECT_EQ(va->IsValidAt(i), vb->IsValidAt(i)) << i;
        }
    }
}

// Compares two documents entity by entity, matched by oid (a load lists vectors, curves and
// experiments in file order, not in order of creation).
void ExpectSameDocument(VyrBaseData& a, VyrBaseData& b) {
    std::map<int, VyrEntity*> ea, eb;
    for (auto* n = a.GetEntityList().GetFirst(); n; n = n->GetNext())
        ea[n->GetData()->GetOid()] = n->GetData();
    for (auto* n = b.GetEntityList().GetFirst(); n; n = n->GetNext())
        eb[n->GetData()->GetOid()] = n->GetData();
    ASSERT_EQ(ea.size(), eb.size());
    for (const auto& [oid, entity] : ea) {
        ASSERT_TRUE(eb.count(oid)) << oid;
        VyrEntity* other = eb[oid];
        EXPECT_EQ(entity->GetKind(), other->GetKind());
        if (entity->GetKind() == VYR_KIND_COURBE)
            ExpectSameCurve(static_cast<VyrCourbe*>(entity), static_cast<VyrCourbe*>(other));
        if (entity->GetKind() == VYR_KIND_EXPERIENCE) {
            auto* xa = static_cast<VyrExperience*>(entity);
            auto* xb = static_cast<VyrExperience*>(other);
            EXPECT_EQ(xa->GetEntityName(), xb->GetEntityName());
            std::vector<int> ca, cb;
            for (auto* n = xa->GetCourbes().GetFirst(); n; n = n->GetNext())
                ca.push_back(n->GetData()->GetOid());
            for (auto* n = xb->GetCourbes().GetFirst(); n; n = n->GetNext())
                cb.push_back(n->GetData()->GetOid());
            EXPECT_EQ(ca, cb);
        }
    }
    EXPECT_EQ(a.GetDiagramCount(), b.GetDiagramCount());
}

// Two experiments, three curves with different looks, diagrams and validity.
void BuildRichDocument(VyrBaseData& doc) {
    BuildOneCurveDocument(doc);
    VyrExperienceParam ep(L"Second \u00e9t\u00e9");
    VyrExperience* e = doc.CreateExperience(ep);
    VyrCourbeParam p;
    p.m_sNom = L"U(t)";
    p.m_sGrdX = L"t";
    p.m_sUniteX = L"ms";
    p.m_sGrdY = L"[U1]";
    p.m_sUniteY = L"V";
    p.m_sText = L"first line\r\nsecond line";
    p.m_colour = wxColour(12, 34, 56);
    p.m_iWidth = 5;
    p.m_iStylePoint = 15;
    p.m_iStyleLiaison = 0;
    VyrCourbe* u = doc.CreateCourbe(e, p, nullptr, false);
    u->SetSize(11);
    for (int i = 0; i < 11; ++i) {
        u->GetVx()->SetVal(i, i * 0.25);
        u->GetVy()->SetVal(i, i % 2 ? -1.5e-7 : 3e12);
        if (i % 3 == 0)
            u->GetVy()->ValidateAt(i, false);
    }
    u->SetShownInDiagram(1, true);
    p.m_sNom = L"I(t)";
    p.m_sGrdY = L"I";
    p.m_sUniteY = L"\u00b5A";
    p.m_sText = L"";
    p.m_colour = wxColour(255, 255, 255);
    p.m_iWidth = 1;
    VyrCourbe* i = doc.CreateCourbe(e, p, nullptr, false);
    i->SetShownInDiagram(0, true);
    i->SetShownInDiagram(1, true);
    doc.SetDiagramCount(2);
}

}  // namespace

TEST(VyrBaseDataSave, WritesTheHandWrittenFileOfOneCurveByteForByte) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    const std::string path = dir.File("one.vyr");
    ASSERT_TRUE(doc.Save(Wx(path)));
    const std::string expected = Utf16File(OneCurveText());
    const std::string written = ReadBytes(path);
    EXPECT_EQ(expected.size(), written.size());
    EXPECT_TRUE(expected == written) << "written:\n" << wxString(FromUtf16(written));
}

TEST(VyrBaseDataSave, WritesTheSectionsInTheirFixedOrder) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    BuildRichDocument(doc);
    const std::string path = dir.File("rich.vyr");
    ASSERT_TRUE(doc.Save(Wx(path)));
    const std::vector<std::wstring> headers = Headers(FromUtf16(ReadBytes(path)));
    const std::vector<std::wstring> expected = {
        L"[unit\u00e9]",   L"[unit\u00e9]",  L"[unit\u00e9]", L"[unit\u00e9]", L"[unit\u00e9]",
        L"[unit\u00e9]",   L"[vecteur]",     L"[vecteur]",    L"[vecteur]",    L"[vecteur]",
        L"[vecteur]",      L"[vecteur]",     L"[courbe]",     L"[courbe]",     L"[courbe]",
        L"[manipulation]", L"[manipulation]"};
    EXPECT_EQ(expected, headers);
}

TEST(VyrBaseDataSave, TakesOneFreshOidPerVectorAndEmptiesTheUnitMap) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    ASSERT_EQ(4, doc.GetLastOid());
    ASSERT_TRUE(doc.Save(Wx(dir.File("a.vyr"))));
    EXPECT_EQ(6, doc.GetLastOid());
    EXPECT_TRUE(doc.GetVectorUnitMap().empty());
    ASSERT_TRUE(doc.Save(Wx(dir.File("b.vyr"))));
    EXPECT_EQ(8, doc.GetLastOid());
}

TEST(VyrBaseDataSave, AnswersFalseAndLeavesNoFileWhenThePathCannotBeCreated) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    const std::string path = dir.Path() + "/missing/dir/x.vyr";
    EXPECT_FALSE(doc.Save(Wx(path)));
    EXPECT_FALSE(wxFileExists(Wx(path)));
}

TEST(VyrBaseDataSave, AnswersFalseOnAShortWrite) {
    TempDir dir;
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    const std::string path = dir.File("short.vyr");
    // A file size limit makes the writes beyond 200 bytes fail (EFBIG) instead of raising
    // SIGXFSZ, which is ignored meanwhile.
    rlimit previous;
    ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &previous));
    rlimit limited = previous;
    limited.rlim_cur = 200;
    void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limited));
    const bool saved = doc.Save(Wx(path));
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(saved);
    EXPECT_TRUE(doc.GetVectorUnitMap().empty());
    // The part written before the failure stays: nothing is rolled back.
    EXPECT_EQ(200u, ReadBytes(path).size());
}

TEST(VyrBaseDataSave, WriteHeaderUnicodeWritesTheMark) {
    TempDir dir;
    const std::string path = dir.File("mark");
    {
        wxFile file(Wx(path), wxFile::write);
        EXPECT_TRUE(VyrBaseData::WriteHeaderUnicode(file));
    }
    EXPECT_EQ(std::string("\xFF\xFE", 2), ReadBytes(path));
}

TEST(VyrBaseDataSave, WriteInFileWritesUtf16UnitsOrGoesThroughTheConverter) {
    TempDir dir;
    const std::string plain = dir.File("plain");
    const std::string converted = dir.File("converted");
    wxString text(L"a\u00e9\U0001F600");
    {
        wxFile file(Wx(plain), wxFile::write);
        EXPECT_TRUE(VyrBaseData::WriteInFile(file, text, nullptr));
    }
    EXPECT_EQ(std::string("a\0\xE9\0\x3D\xD8\x00\xDE", 8), ReadBytes(plain));
    {
        wxFile file(Wx(converted), wxFile::write);
        EXPECT_TRUE(VyrBaseData::WriteInFile(file, text, &wxConvUTF8));
    }
    EXPECT_EQ(std::string("a\xC3\xA9\xF0\x9F\x98\x80"), ReadBytes(converted));
}

TEST(VyrBaseDataSave, GetStringSaveEscapesQuotesOnly) {
    EXPECT_EQ(wxString(L"say \\\"hi\\\""), VyrBaseData::GetStringSave(L"say \"hi\""));
    EXPECT_EQ(wxString(L"a\\b\\\\c"), VyrBaseData::GetStringSave(L"a\\b\\\\c"));
    EXPECT_EQ(wxString(L"line\r\nbreak\ttab"), VyrBaseData::GetStringSave(L"line\r\nbreak\ttab"));
    EXPECT_EQ(wxString(), VyrBaseData::GetStringSave(wxString()));
}

TEST(VyrBaseDataSave, StyleStrings) {
    VyrBaseData doc(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(doc);
    EXPECT_EQ(wxString(L"1"), VyrBaseData::GetStringStyle(c));
    EXPECT_EQ(wxString(L"1"), VyrBaseData::GetStringStyle(nullptr));
    EXPECT_EQ(wxString(), VyrBaseData::GetStringStyleEx(nullptr));
    c->SetStylePoint(10);
    c->SetStyleLiaison(2);
    c->SetWidth(3);
    EXPECT_EQ(wxString(L"1|a|2|4|0|0"), VyrBaseData::GetStringStyleEx(c));
    c->SetWidth(0);
    EXPECT_EQ(wxString(L"1|a|2|fffffffe|0|0"), VyrBaseData::GetStringStyleEx(c));
    // The largest width a file can give: 2^30, from "style_ex" 1|3|2|2147483647 (2^31 - 1
    // halved, plus 1). Twice it minus 2 still fits; one more wraps as an int would.
    c->SetWidth(1073741824);
    EXPECT_EQ(wxString(L"1|a|2|7ffffffe|0|0"), VyrBaseData::GetStringStyleEx(c));
    c->SetWidth(1073741825);
    EXPECT_EQ(wxString(L"1|a|2|80000000|0|0"), VyrBaseData::GetStringStyleEx(c));
}

TEST(VyrBaseDataSave, UnknownSectionsComeBackAfterEveryKnownSectionInTheirOrder) {
    TempDir dir;
    const std::wstring text = L"[B]\r\n\tb = 1\r\n\r\n[A]\r\n\ta = 2\r\n\r\n" + OneCurveText();
    const std::string in = dir.File("in.vyr");
    WriteBytes(in, Utf16File(text));
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(doc.Load(Wx(in)));
    ASSERT_EQ(2u, doc.GetUnknownSections().GetCount());
    const std::string out = dir.File("out.vyr");
    ASSERT_TRUE(doc.Save(Wx(out)));
    const std::wstring written = FromUtf16(ReadBytes(out));
    // The known sections first (they end with the experiment), then B and then A, each as it
    // was read (from just after its header's first separator) and followed by "\r\n".
    const std::wstring tail = L"[B]\n\tb = 1\r\n\r\n\r\n[A]\n\ta = 2\r\n\r\n\r\n";
    ASSERT_GE(written.size(), tail.size());
    EXPECT_EQ(tail, written.substr(written.size() - tail.size()));
    EXPECT_LT(written.find(L"[manipulation]"), written.find(L"[B]"));
    // The list survives the save.
    EXPECT_EQ(2u, doc.GetUnknownSections().GetCount());
}

TEST(VyrBaseDataSave, SaveDataInFileWritesTheBlockOrNothing) {
    TempDir dir;
    const std::string path = dir.File("block");
    const unsigned char data[] = {0, 1, 2, 255};
    VyrBaseData::SaveDataInFile(Wx(path).wc_str(), data, 4);
    EXPECT_EQ(std::string("\0\1\2\xFF", 4), ReadBytes(path));
    VyrBaseData::SaveDataInFile(Wx(dir.Path() + "/no/such/dir").wc_str(), data, 4);
    EXPECT_FALSE(wxFileExists(Wx(dir.Path() + "/no/such/dir")));
    VyrBaseData::SaveDataInFile(nullptr, data, 4);
}

TEST(VyrBaseDataSave, RoundTripKeepsEverything) {
    TempDir dir;
    VyrBaseData built(nullptr);
    BuildRichDocument(built);
    const std::string first = dir.File("first.vyr");
    ASSERT_TRUE(built.Save(Wx(first)));

    VyrBaseData loaded(nullptr);
    ASSERT_TRUE(loaded.Load(Wx(first)));
    // Every value of the built document is exact in "%g", so the first load already matches.
    ExpectSameDocument(built, loaded);

    const std::string second = dir.File("second.vyr");
    ASSERT_TRUE(loaded.Save(Wx(second)));
    VyrBaseData reloaded(nullptr);
    ASSERT_TRUE(reloaded.Load(Wx(second)));
    ExpectSameDocument(loaded, reloaded);
}

TEST(VyrBaseDataSave, RoundTripOfRoundedValuesIsStableAfterTheFirstLoad) {
    TempDir dir;
    VyrBaseData built(nullptr);
    VyrCourbe* c = BuildOneCurveDocument(built);
    c->GetVy()->SetVal(1, 0.123456789);
    const std::string first = dir.File("first.vyr");
    ASSERT_TRUE(built.Save(Wx(first)));
    VyrBaseData loaded(nullptr);
    ASSERT_TRUE(loaded.Load(Wx(first)));
    // "%g" keeps six significant digits.
    EXPECT_EQ(0.123457, loaded.FindCourbeByOid(2)->GetVy()->GetVal(1));
    const std::string second = dir.File("second.vyr");
    ASSERT_TRUE(loaded.Save(Wx(second)));
    VyrBaseData reloaded(nullptr);
    ASSERT_TRUE(reloaded.Load(Wx(second)));
    ExpectSameDocument(loaded, reloaded);
}

namespace {

// Doubles that "%g" rounds and that only their shortest exact text brings back: a 1 kHz time
// base past 1000 s, a pressure in hPa, the steps of a 44.1 kHz recording, thirds, the
// extremes of the type, a negative zero.
const double kAwkwardValues[] = {
    1000.001, 1013.25 + 0.01,         1.0 / 44100, 4.0 / 44100,  1.0 / 3, 0.1, -2.5e-7, 1e-300,
    5e-324,   1.7976931348623157e308, -0.0,        123456789.125};

// The one-curve document with the awkward values in both vectors and in the curve's bounds.
VyrCourbe* BuildAwkwardDocument(VyrBaseData& doc) {
    VyrCourbe* c = BuildOneCurveDocument(doc);
    const int n = static_cast<int>(sizeof kAwkwardValues / sizeof kAwkwardValues[0]);
    c->SetSize(n);
    for (int i = 0; i < n; ++i) {
        c->GetVx()->SetVal(i, kAwkwardValues[i]);
        c->GetVy()->SetVal(i, -kAwkwardValues[n - 1 - i]);
    }
    c->GetScale() = VyrScale(1000.001, 1000.002, 1.0 / 3, 1013.26);
    return c;
}

bool SameBits(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

TEST(VyrBaseDataSave, ExactNumbersAreOffByDefaultAndTheFormatsStay) {
    VyrBaseData doc(nullptr);
    EXPECT_FALSE(doc.GetExactNumbers());
    BuildAwkwardDocument(doc);
    TempDir dir;
    const std::string path = dir.File("g.vyr");
    ASSERT_TRUE(doc.Save(Wx(path)));
    const std::wstring text = FromUtf16(ReadBytes(path));
    EXPECT_NE(text.find(L"\txmin = 1000\r\n"), std::wstring::npos);
    EXPECT_NE(text.find(L"points = table 12 {\r\n\t1000\t1013.26\t2.26757e-05\t"),
              std::wstring::npos);
    EXPECT_NE(text.find(L"ech_min = 0.00000000\r\n"), std::wstring::npos);
}

TEST(VyrBaseDataSave, ExactNumbersWriteTheShortestTextThatReadsBackTheSameDouble) {
    VyrBaseData doc(nullptr);
    doc.SetExactNumbers(true);
    BuildAwkwardDocument(doc);
    TempDir dir;
    const std::string path = dir.File("exact.vyr");
    ASSERT_TRUE(doc.Save(Wx(path)));
    const std::wstring text = FromUtf16(ReadBytes(path));
    EXPECT_NE(text.find(L"\txmin = 1000.001\r\n\txmax = 1000.002\r\n"
                        L"\tymin = 0.3333333333333333\r\n\tymax = 1013.26\r\n"),
              std::wstring::npos);
    EXPECT_NE(text.find(L"points = table 12 {\r\n\t1000.001\t1013.26\t"
                        L"2.2675736961451248e-05\t9.070294784580499e-05\r\n\t0.3333333333333333\t"),
              std::wstring::npos);
    EXPECT_NE(text.find(L"\t5e-324\t1.7976931348623157e+308\t-0\t123456789.125\r\n"),
              std::wstring::npos);
    EXPECT_NE(text.find(L"ech_min = 0\r\n"), std::wstring::npos);
    // Everything but the numbers is written as before: the sections and their order.
    VyrBaseData plain(nullptr);
    BuildAwkwardDocument(plain);
    const std::string plainPath = dir.File("plain.vyr");
    ASSERT_TRUE(plain.Save(Wx(plainPath)));
    EXPECT_EQ(Headers(text), Headers(FromUtf16(ReadBytes(plainPath))));
}

TEST(VyrBaseDataSave, ExactNumbersMakeSaveAndLoadBitIdentical) {
    VyrBaseData built(nullptr);
    built.SetExactNumbers(true);
    VyrCourbe* c = BuildAwkwardDocument(built);
    TempDir dir;
    const std::string path = dir.File("exact.vyr");
    ASSERT_TRUE(built.Save(Wx(path)));
    VyrBaseData loaded(nullptr);
    ASSERT_TRUE(loaded.Load(Wx(path)));
    VyrCourbe* back = loaded.FindCourbeByOid(c->GetOid());
    ExpectSameCurve(c, back);
    ASSERT_TRUE(back);
    for (int i = 0; i < c->GetVx()->GetSize(); ++i) {
        EXPECT_TRUE(SameBits(c->GetVx()->GetVal(i), back->GetVx()->GetVal(i))) << i;
        EXPECT_TRUE(SameBits(c->GetVy()->GetVal(i), back->GetVy()->GetVal(i))) << i;
    }
    EXPECT_TRUE(SameBits(back->GetScale().GetXmin(), 1000.001));
    EXPECT_TRUE(SameBits(back->GetScale().GetYmin(), 1.0 / 3));
    EXPECT_FALSE(back->GetVy()->IsValidAt(2));
}

// ---- Saving safely ------------------------------------------------------------------------

namespace {

// The bundled sample that holds every section kind (notes, tools, report, grid, picture,
// records), loaded.
void LoadFullSample(VyrBaseData& doc) {
    ASSERT_TRUE(doc.Load(Wx(SampleFile("oscillation.vyr"))));
}

// Saves with the file size limited to `limit` bytes (writes beyond it fail with EFBIG; the
// signal that would stop the process is ignored meanwhile).
template <class Save>
bool WithFileSizeLimit(rlim_t limit, Save save) {
    rlimit previous;
    getrlimit(RLIMIT_FSIZE, &previous);
    rlimit limited = previous;
    limited.rlim_cur = limit;
    void (*handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limited);
    const bool saved = save();
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, handler);
    return saved;
}

}  // namespace

TEST(VyrBaseDataSave, SaveSafelyWritesTheSameBytesAsSave) {
    FaultsOff off;
    TempDir dir;
    // Two documents in the same state: each save takes the same fresh unit oids.
    VyrBaseData plainDoc(nullptr);
    VyrBaseData safeDoc(nullptr);
    LoadFullSample(plainDoc);
    LoadFullSample(safeDoc);
    const std::string plain = dir.File("plain.vyr");
    const std::string safe = dir.File("safe.vyr");
    ASSERT_TRUE(plainDoc.Save(Wx(plain)));
    WriteBytes(safe, "an older document");
    ASSERT_TRUE(safeDoc.SaveSafely(Wx(safe)));
    EXPECT_GT(ReadBytes(plain).size(), 10000u);
    EXPECT_TRUE(ReadBytes(plain) == ReadBytes(safe));
    EXPECT_EQ(2u, DirEntries(dir.Path()).size());
    EXPECT_TRUE(safeDoc.GetVectorUnitMap().empty());
}

TEST(VyrBaseDataSave, SaveSafelyIntoAMissingDirectoryAnswersFalse) {
    FaultsOff off;
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    EXPECT_FALSE(doc.SaveSafely(L"/nonexistent/dir/x.vyr"));
    VyrSafeFile file(L"/nonexistent/dir/x.vyr");
    EXPECT_FALSE(doc.SaveSafely(file));
    EXPECT_EQ(VyrSafeFile::kStepCreate, file.GetFailedStep());
    EXPECT_EQ(ENOENT, file.GetError());
}

// For every write-side operation of saving a real document (each open, write, sync, close,
// rename and directory sync), failing once or from then on: SaveSafely answers false, the
// previous file keeps its bytes (after the rename, only the directory sync can fail: the new
// document is then whole in its place), no temporary file is left and no descriptor stays open.
TEST(VyrBaseDataSave, SaveSafelyKeepsThePreviousFileWhateverOperationFails) {
    FaultsOff off;
    VyrBaseData doc(nullptr);
    LoadFullSample(doc);
    TempDir scratch;
    const std::string reference = scratch.File("reference.vyr");
    const std::string previous = ReadBytes(SampleFile("signal.vyr"));
    ASSERT_FALSE(previous.empty());

    const unsigned kinds[] = {VyrFileFaults::kOpen,   VyrFileFaults::kWrite,
                              VyrFileFaults::kSync,   VyrFileFaults::kClose,
                              VyrFileFaults::kRename, VyrFileFaults::kSyncDirectory};
    int failures = 0;
    for (unsigned kind : kinds) {
        // How many operations of this kind one save makes.
        VyrFileFaults::Arm(kind, 0, false, EIO);
        ASSERT_TRUE(doc.SaveSafely(Wx(reference)));
        const long count = VyrFileFaults::Count();
        VyrFileFaults::Disarm();
        ASSERT_GE(count, 1) << "kind " << kind;
        if (kind == VyrFileFaults::kWrite) {
            EXPECT_GE(count, 10) << "one write per section at least";
        }
        std::printf("operations of kind %u in one save: %ld\n", kind, count);
        for (bool persistent : {false, true}) {
            for (long n = 1; n <= count; ++n) {
                SCOPED_TRACE(testing::Message() << "kind " << kind << " operation " << n
                                                << (persistent ? " and later" : " once"));
                TempDir dir;
                const std::string target = dir.File("doc.vyr");
                WriteBytes(target, previous);
                const int descriptors = OpenDescriptors();
                VyrFileFaults::Arm(kind, n, persistent, ENOSPC);
                const bool saved = doc.SaveSafely(Wx(target));
                const long injected = VyrFileFaults::Injected();
                VyrFileFaults::Disarm();
                EXPECT_GE(injected, 1);
                EXPECT_FALSE(saved);
                if (kind == VyrFileFaults::kSyncDirectory) {
                    VyrBaseData reread(nullptr);
                    EXPECT_TRUE(reread.Load(Wx(target)));
                    EXPECT_EQ(ReadBytes(reference).size(), ReadBytes(target).size());
                } else {
                    EXPECT_TRUE(previous == ReadBytes(target));
                }
                EXPECT_EQ(std::vector<std::string>{"doc.vyr"}, DirEntries(dir.Path()));
                EXPECT_EQ(descriptors, OpenDescriptors());
                EXPECT_TRUE(doc.GetVectorUnitMap().empty());
                ++failures;
            }
        }
    }
    EXPECT_GT(failures, 20);
    std::printf("failed saves, each leaving the previous file: %d\n", failures);
}

// The same, without injection: the file system itself fills up.
TEST(VyrBaseDataSave, SaveSafelyOnAFullFileSystemKeepsThePreviousFile) {
    FaultsOff off;
    VyrBaseData doc(nullptr);
    LoadFullSample(doc);
    const std::string previous = ReadBytes(SampleFile("spectrum.vyr"));
    ASSERT_LT(previous.size(), 40000u);

    // Past a file size limit (any user can set one): the write fails with EFBIG.
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    WriteBytes(target, previous);
    const int descriptors = OpenDescriptors();
    EXPECT_FALSE(WithFileSizeLimit(previous.size(), [&] { return doc.SaveSafely(Wx(target)); }));
    EXPECT_TRUE(previous == ReadBytes(target));
    EXPECT_EQ(std::vector<std::string>{"doc.vyr"}, DirEntries(dir.Path()));
    EXPECT_EQ(descriptors, OpenDescriptors());

    // A file system of 64 KiB (a fresh tmpfs; mounting needs root).
    char pattern[] = "/tmp/vyrfullXXXXXX";
    const char* mountPoint = mkdtemp(pattern);
    ASSERT_TRUE(mountPoint);
    if (std::system((std::string("mount -t tmpfs -o size=64k tmpfs ") + mountPoint + " 2>/dev/null")
                        .c_str()) != 0) {
        rmdir(mountPoint);
        GTEST_SKIP() << "cannot mount a tmpfs (not root)";
    }
    const std::string full = std::string(mountPoint) + "/doc.vyr";
    WriteBytes(full, previous);
    const bool saved = doc.SaveSafely(Wx(full));
    const bool plainSaved = doc.Save(Wx(std::string(mountPoint) + "/plain.vyr"));
    const std::string after = ReadBytes(full);
    const std::vector<std::string> left = DirEntries(mountPoint);
    std::system((std::string("umount ") + mountPoint).c_str());
    rmdir(mountPoint);
    EXPECT_FALSE(saved);
    EXPECT_TRUE(previous == after);
    // Save writes into the file itself: it fails too, leaving its partial file.
    EXPECT_FALSE(plainSaved);
    EXPECT_EQ((std::vector<std::string>{"doc.vyr", "plain.vyr"}), [&] {
        std::vector<std::string> sorted = left;
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }());
    EXPECT_EQ(descriptors, OpenDescriptors());
}

TEST(VyrBaseDataSave, SaveAnswersFalseWhateverOperationFailsAndClosesItsFile) {
    FaultsOff off;
    VyrBaseData doc(nullptr);
    LoadFullSample(doc);
    TempDir dir;
    const std::string target = dir.File("doc.vyr");
    VyrFileFaults::Disarm();
    ASSERT_TRUE(doc.Save(Wx(target)));
    const long count = VyrFileFaults::Count();
    // Open, one write per section at least, close.
    EXPECT_GE(count, 12);
    for (long n = 1; n <= count; ++n) {
        SCOPED_TRACE(n);
        const int descriptors = OpenDescriptors();
        VyrFileFaults::Arm(VyrFileFaults::kAll, n, false, EIO);
        EXPECT_FALSE(doc.Save(Wx(target)));
        VyrFileFaults::Disarm();
        EXPECT_EQ(descriptors, OpenDescriptors());
        EXPECT_TRUE(doc.GetVectorUnitMap().empty());
    }
}

TEST(VyrBaseDataSave, SaveToAFullDeviceAnswersFalse) {
    FaultsOff off;
    VyrBaseData doc(nullptr);
    BuildOneCurveDocument(doc);
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "no /dev/full";
    EXPECT_FALSE(doc.Save(L"/dev/full"));
    // Replacing a device is refused rather than done.
    EXPECT_FALSE(doc.SaveSafely(L"/dev/full"));
    struct stat info;
    ASSERT_EQ(0, stat("/dev/full", &info));
    EXPECT_TRUE(S_ISCHR(info.st_mode));
}

TEST(VyrBaseDataSave, TheWxFileWritersAnswerFalseWhenTheWriteFails) {
    FaultsOff off;
    TempDir dir;
    wxFile file(Wx(dir.File("out")), wxFile::write);
    VyrFileFaults::Arm(VyrFileFaults::kWrite, 1, true, ENOSPC);
    EXPECT_FALSE(VyrBaseData::WriteHeaderUnicode(file));
    wxString text(L"abc");
    EXPECT_FALSE(VyrBaseData::WriteInFile(file, text, nullptr));
    // Through a converter the outcome is not checked.
    EXPECT_TRUE(VyrBaseData::WriteInFile(file, text, &wxConvUTF8));
    VyrBaseData doc(nullptr);
    const std::string kept = "[X]\r\n\tk = 1\r\n[manipulation]\r\n\toid = 1\r\n";
    ASSERT_TRUE(doc.LoadFromMemory(kept.data(), kept.size()));
    ASSERT_EQ(1u, doc.GetUnknownSections().GetCount());
    EXPECT_FALSE(doc.SauveSectionInconnue(file));
    VyrFileFaults::Disarm();
    EXPECT_TRUE(doc.SauveSectionInconnue(file));
}

TEST(VyrBaseDataSave, SaveDataInFileClosesItsFileWhenTheWriteFails) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("block");
    const int descriptors = OpenDescriptors();
    VyrFileFaults::Arm(VyrFileFaults::kWrite, 1, false, ENOSPC);
    const unsigned char data[4] = {1, 2, 3, 4};
    VyrBaseData::SaveDataInFile(Wx(path).wc_str(), data, 4);
    VyrFileFaults::Disarm();
    EXPECT_EQ(descriptors, OpenDescriptors());
    EXPECT_EQ(2u, ReadBytes(path).size());
}

TEST(VyrBaseDataSave, WriteInFileOfAnEmptyTextWritesNothing) {
    FaultsOff off;
    TempDir dir;
    const std::string path = dir.File("empty");
    {
        wxFile file(Wx(path), wxFile::write);
        wxString nothing;
        // Even a failing disk cannot refuse nothing.
        VyrFileFaults::Arm(VyrFileFaults::kWrite, 1, true, ENOSPC);
        EXPECT_TRUE(VyrBaseData::WriteInFile(file, nothing, nullptr));
        EXPECT_EQ(0, VyrFileFaults::Injected());
    }
    EXPECT_TRUE(ReadBytes(path).empty());
}
