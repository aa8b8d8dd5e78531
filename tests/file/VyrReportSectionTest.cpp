#include <gtest/gtest.h>

#include <zlib.h>

#include "RecordTestSupport.h"
#include "vyrbase/data/VyrCompteRendu.h"

using recordtest::LoadText;
using recordtest::SaveText;
using recordtest::Section;

namespace {

std::string Compress(const std::string& raw) {
    uLongf size = compressBound(raw.size());
    std::string out(size, '\0');
    compress(reinterpret_cast<Bytef*>(&out[0]), &size, reinterpret_cast<const Bytef*>(raw.data()),
             raw.size());
    out.resize(size);
    return out;
}

std::wstring Pack(const std::string& stream, unsigned long declared) {
    std::wstring text = L"U";
    wchar_t digits[16];
    swprintf(digits, 16, L"%08lu", declared);
    text += digits;
    text += L' ';
    for (size_t i = 0; i < stream.size(); ++i) {
        const unsigned char b = static_cast<unsigned char>(stream[i]);
        text += static_cast<wchar_t>(L'A' + (b & 15));
        text += static_cast<wchar_t>(L'A' + (b >> 4));
        if ((i + 1) % 38 == 0)
            text += L"\r\n";
    }
    return text;
}

std::wstring ReportFile(const std::wstring& data, const std::wstring& rtfLine = L"") {
    return L"[compte_rendu]\r\n\toid = 9\r\n\tdata = \"" + data + L"\"\r\n" + rtfLine;
}

VyrCompteRendu* LoadReport(VyrBaseData& doc, filetest::TempDir& dir, const std::wstring& text) {
    EXPECT_TRUE(LoadText(doc, dir, text));
    return doc.GetCompteRenduEntity(false, nullptr);
}

}  // namespace

TEST(VyrReportSection, RtfQuotesAreWrittenAsCurrencySignAfterTheData) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    VyrCompteRendu* report = doc.GetCompteRenduEntity(true, nullptr);
    report->SetData("U00000010 ABCD");
    report->SetRtf("{\\rtf1 {\\fonttbl \"Arial\"} x}");
    const std::wstring text = SaveText(doc, dir);
    EXPECT_EQ(Section(text, L"[compte_rendu]"),
              L"[compte_rendu]\r\n\toid = " + std::to_wstring(report->GetOid()) +
                  L"\r\n\tdata = \"U00000010 ABCD\"\r\n"
                  L"\trtf = \"{\\rtf1 {\\fonttbl \u00a4Arial\u00a4} x}\"\r\n");
    // After the interval tools, before the units.
    EXPECT_EQ(text.find(L"[compte_rendu]"), 0u);
}

TEST(VyrReportSection, EmptyDataWritesNoDataLine) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    doc.GetCompteRenduEntity(true, nullptr)->SetRtf("{r}");
    const std::wstring section = Section(SaveText(doc, dir), L"[compte_rendu]");
    EXPECT_EQ(section.find(L"data"), std::wstring::npos);
    EXPECT_NE(section.find(L"\trtf = \"{r}\"\r\n"), std::wstring::npos);
}

TEST(VyrReportSection, RtfWithQuotesReadsBackWithTheQuotesRestored) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    const wxString rtf = "{\\rtf1 \"quoted\" and \"more\"}";
    doc.GetCompteRenduEntity(true, nullptr)->SetRtf(rtf);
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, SaveText(doc, dir)));
    ASSERT_NE(back.GetCompteRenduEntity(false, nullptr), nullptr);
    EXPECT_EQ(back.GetCompteRenduEntity(false, nullptr)->GetRtf(), rtf);
}

TEST(VyrReportSection, PackedDataGivesTheRtfAndIsKeptAsRead) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    const std::string raw = "prefix{\\rtf1 Compte rendu}";
    const std::wstring packed = Pack(Compress(raw), raw.size());
    VyrCompteRendu* report = LoadReport(doc, dir, ReportFile(packed));
    ASSERT_NE(report, nullptr);
    EXPECT_EQ(report->GetOid(), 9);
    EXPECT_EQ(report->GetRtf(), "{\\rtf1 Compte rendu}");
    // The packed text went through the multi-line reader: its lines joined by "\r\n".
    EXPECT_EQ(report->GetData(), wxString(packed));
    // Written back unchanged.
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, SaveText(doc, dir), "again.vyr"));
    EXPECT_EQ(back.GetCompteRenduEntity(false, nullptr)->GetData(), wxString(packed));
}

TEST(VyrReportSection, RtfLineReadAfterTheDataIsTheOneThatStays) {
    filetest::TempDir dir;
    VyrBaseData doc(nullptr);
    const std::string raw = "{\\rtf1 from data}";
    VyrCompteRendu* report = LoadReport(
        doc, dir,
        ReportFile(Pack(Compress(raw), raw.size()), L"\trtf = \"{\\rtf1 \u00a4line\u00a4}\"\r\n"));
    ASSERT_NE(report, nullptr);
    EXPECT_EQ(report->GetRtf(), "{\\rtf1 \"line\"}");
}

TEST(VyrReportSection, BadPackedDataLeavesTheReportWithoutRtf) {
    const std::string raw = "{\\rtf1 abcdefghijklmnopqrstuvwxyz}";
    const std::string stream = Compress(raw);
    std::string corrupt = stream;
    corrupt[corrupt.size() / 2] = static_cast<char>(corrupt[corrupt.size() / 2] ^ 0x21);
    std::wstring badLetter = Pack(stream, raw.size());
    badLetter[14] = L'z';
    const std::wstring cases[] = {
        Pack(stream.substr(0, stream.size() / 2), raw.size()),  // truncated stream
        Pack(corrupt, raw.size()),                              // corrupt stream
        Pack(stream, 99999999),                                 // far more than it can hold
        badLetter,                                              // letter outside A..P
        L"U00000020 " + std::wstring(L"not packed at all"),
        L"{\\rtf1 no U in front}",
    };
    for (const std::wstring& data : cases) {
        filetest::TempDir dir;
        VyrBaseData doc(nullptr);
        VyrCompteRendu* report = LoadReport(doc, dir, ReportFile(data));
        ASSERT_NE(report, nullptr);
        EXPECT_TRUE(report->GetRtf().empty()) << report->GetRtf();
        EXPECT_EQ(report->GetData(), wxString(data));
    }
}

TEST(VyrReportSection, DeclaredLengthsShorterAndLongerThanTheStream) {
    const std::string raw = "{\\rtf1 0123456789}";
    {
        filetest::TempDir dir;
        VyrBaseData doc(nullptr);
        VyrCompteRendu* report = LoadReport(doc, dir, ReportFile(Pack(Compress(raw), 9)));
        ASSERT_NE(report, nullptr);
        EXPECT_EQ(report->GetRtf(), "{\\rtf1 01");
    }
    {
        filetest::TempDir dir;
        VyrBaseData doc(nullptr);
        VyrCompteRendu* report = LoadReport(doc, dir, ReportFile(Pack(Compress(raw), 400)));
        ASSERT_NE(report, nullptr);
        EXPECT_EQ(report->GetRtf(), wxString(raw));
    }
}
