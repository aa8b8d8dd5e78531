#include <gtest/gtest.h>

#include "FileTestSupport.h"

namespace {

// A document whose reader walks `text`; the first line is taken as the current line.
class Reader {
public:
    explicit Reader(const std::wstring& text) : m_text(text), m_doc(nullptr), m_access(m_doc) {
        m_access.SetText(m_text);
    }
    ~Reader() { m_access.ClearText(); }
    VyrBaseData& Doc() { return m_doc; }
    VyrBaseDataTestAccess& Access() { return m_access; }
    std::wstring Line() { return m_access.NextToken(); }

private:
    std::wstring m_text;
    VyrBaseData m_doc;
    VyrBaseDataTestAccess m_access;
};

}  // namespace

TEST(VyrValueReaders, GetIntReadsTheDecimalAfterTheFirstEqualSign) {
    EXPECT_EQ(12, VyrBaseData::GetInt(L"oid = 12"));
    EXPECT_EQ(-3, VyrBaseData::GetInt(L"x =   -3abc"));
    EXPECT_EQ(4, VyrBaseData::GetInt(L"a = 4 = 5"));
    EXPECT_EQ(0, VyrBaseData::GetInt(L"oid 12"));
    EXPECT_EQ(0, VyrBaseData::GetInt(L"oid = "));
    EXPECT_EQ(0, VyrBaseData::GetInt(nullptr));
}

TEST(VyrValueReaders, GetDoubleAcceptsACommaAndTakesTheLongestNumericPrefix) {
    EXPECT_EQ(2.5, VyrBaseData::GetDouble(L"x =   2,5"));
    EXPECT_EQ(1.5, VyrBaseData::GetDouble(L"x = 1.5abc"));
    EXPECT_EQ(-1000.0, VyrBaseData::GetDouble(L"x = -1e3"));
    EXPECT_EQ(1.5, VyrBaseData::GetDouble(L"vi = 1,5"));
    EXPECT_EQ(0.0, VyrBaseData::GetDouble(L"x 2.5"));
    EXPECT_EQ(0.0, VyrBaseData::GetDouble(L"x = abc"));
    EXPECT_EQ(0.0, VyrBaseData::GetDouble(nullptr));
}

TEST(VyrValueReaders, ParseStringUnescapesQuotesAndHalvesBackslashes) {
    Reader r(L"nom = \"a\\\"b\\\\c\"\r\n");
    wxString value;
    EXPECT_TRUE(r.Doc().ParseString(r.Line().c_str(), value));
    EXPECT_EQ(wxString(L"a\"b\\c"), value);
}

TEST(VyrValueReaders, ParseStringTurnsATabIntoALineBreak) {
    Reader r(L"nom = \"a\tb\"\r\n[next]");
    wxString value;
    EXPECT_TRUE(r.Doc().ParseString(r.Line().c_str(), value));
    EXPECT_EQ(wxString(L"a\r\nb"), value);
    EXPECT_EQ(L"[next]", r.Line());
}

TEST(VyrValueReaders, ParseStringJoinsLinesLosingBlankLinesAndLeadingTabs) {
    Reader r(L"data = \"first\r\n\r\n\t\tsecond\r\nthird\"\r\n\tnext = 1");
    wxString value;
    EXPECT_TRUE(r.Doc().ParseString(r.Line().c_str(), value));
    EXPECT_EQ(wxString(L"first\r\nsecond\r\nthird"), value);
    EXPECT_EQ(L"next = 1", r.Line());
}

TEST(VyrValueReaders, ParseStringBackslashBackslashQuoteDoesNotClose) {
    Reader r(L"nom = \"a\\\\\"b\"");
    wxString value;
    EXPECT_TRUE(r.Doc().ParseString(r.Line().c_str(), value));
    // The raw text before the closing quote is a\\"b: the escaped quote first, then the
    // remaining lone backslash stays.
    EXPECT_EQ(wxString(L"a\\\"b"), value);
}

TEST(VyrValueReaders, ParseStringWithoutClosingQuoteTakesEveryLine) {
    Reader r(L"nom = \"open\r\nnext line\r\n[header]");
    wxString value;
    EXPECT_FALSE(r.Doc().ParseString(r.Line().c_str(), value));
    EXPECT_EQ(wxString(L"open\r\nnext line\r\n[header]"), value);
    EXPECT_FALSE(r.Access().HasMoreTokens());
}

TEST(VyrValueReaders, ParseStringNeedsAnEqualSignAndAQuote) {
    wxString value = L"old";
    EXPECT_FALSE(VyrBaseData(nullptr).ParseString(L"nom \"x\"", value));
    EXPECT_TRUE(value.empty());
    value = L"old";
    EXPECT_FALSE(VyrBaseData(nullptr).ParseString(L"nom = x", value));
    EXPECT_TRUE(value.empty());
    EXPECT_FALSE(VyrBaseData(nullptr).ParseString(nullptr, value));
    EXPECT_TRUE(VyrBaseData(nullptr).ParseString(L"nom = \"\"", value));
    EXPECT_TRUE(value.empty());
}

TEST(VyrValueReaders, ParseTableDoubleReadsOneNumberPerLineUntilTheBrace) {
    Reader r(L"points = table 99 {\r\n\t1\t2,5\t-3e2\r\n\t4abc\r\n\t}\r\n[next]");
    r.Line();
    VyrArrayDouble values;
    values.Add(42);
    EXPECT_TRUE(r.Doc().ParseTableDouble(&values));
    ASSERT_EQ(4u, values.GetCount());
    EXPECT_EQ(1.0, values[0]);
    EXPECT_EQ(2.5, values[1]);
    EXPECT_EQ(-300.0, values[2]);
    EXPECT_EQ(4.0, values[3]);
    EXPECT_EQ(L"[next]", r.Line());
}

TEST(VyrValueReaders, ParseTableDoubleWithoutBraceConsumesTheRest) {
    Reader r(L"points = table 2 {\r\n\t1\t2\r\n[next]\r\n\toid = 3");
    r.Line();
    VyrArrayDouble values;
    EXPECT_FALSE(r.Doc().ParseTableDouble(&values));
    EXPECT_EQ(4u, values.GetCount());
    EXPECT_FALSE(r.Access().HasMoreTokens());
    EXPECT_FALSE(r.Doc().ParseTableDouble(nullptr));
}

TEST(VyrValueReaders, ParseTableIntOnOneLineGivesTheSingleElement) {
    VyrBaseData doc(nullptr);
    wxArrayInt values;
    EXPECT_TRUE(doc.ParseTableInt(&values, L"courbes = table 1 {3}"));
    ASSERT_EQ(1u, values.GetCount());
    EXPECT_EQ(3, values[0]);
    EXPECT_TRUE(doc.ParseTableInt(&values, L"courbes = table 2 { 3 4 }"));
    ASSERT_EQ(1u, values.GetCount());
    EXPECT_EQ(3, values[0]);
    EXPECT_FALSE(doc.ParseTableInt(nullptr, L"x = {3}"));
}

TEST(VyrValueReaders, ParseTableIntOverSeveralLinesGivesEveryElement) {
    Reader r(L"courbes = table 3 {\r\n\t3\t4\r\n\t5 6  7\r\n\t}\r\n[next]");
    const std::wstring line = r.Line();
    wxArrayInt values;
    EXPECT_TRUE(r.Doc().ParseTableInt(&values, line));
    ASSERT_EQ(5u, values.GetCount());
    EXPECT_EQ(3, values[0]);
    EXPECT_EQ(7, values[4]);
    EXPECT_EQ(L"[next]", r.Line());
}

TEST(VyrValueReaders, ParseTableIntWithoutBraceConsumesTheRest) {
    Reader r(L"courbes = table 3 {\r\n\t3\t4\r\n[next]");
    const std::wstring line = r.Line();
    wxArrayInt values;
    EXPECT_FALSE(r.Doc().ParseTableInt(&values, line));
    EXPECT_FALSE(r.Access().HasMoreTokens());
}

TEST(VyrValueReaders, SkipSectionAnswersTheNextHeaderOrNothing) {
    Reader r(L"a = 1\r\n\tb = 2\r\n[next]\r\n\tc = 3\r\n");
    EXPECT_EQ(wxString(L"[next]"), r.Doc().SkipSection());
    EXPECT_EQ(wxString(), r.Doc().SkipSection());
    EXPECT_FALSE(r.Access().HasMoreTokens());
}

TEST(VyrValueReaders, ParseInconnuKeepsTheSectionTextFromAfterItsHeadersSeparator) {
    Reader r(L"[X]\r\n\tk = 1\r\n\tl = \"2\"\r\n\r\n[Y]\r\n\tm = 3\r\n");
    const std::wstring header = r.Line();
    bool stop = true;
    EXPECT_EQ(wxString(L"[Y]"), r.Doc().ParseInconnu(header, nullptr, &stop));
    EXPECT_FALSE(stop);
    ASSERT_EQ(1u, r.Doc().GetUnknownSections().GetCount());
    EXPECT_EQ(wxString(L"[X]\n\tk = 1\r\n\tl = \"2\"\r\n\r\n"), r.Doc().GetUnknownSections()[0]);
    // At the end of the text the last line's separator is left out.
    EXPECT_EQ(wxString(), r.Doc().ParseInconnu(L"[Y]", nullptr, &stop));
    ASSERT_EQ(2u, r.Doc().GetUnknownSections().GetCount());
    EXPECT_EQ(wxString(L"[Y]\n\tm = 3"), r.Doc().GetUnknownSections()[1]);
}

TEST(VyrValueReaders, ParseInconnuAtTheEndWithoutSeparatorKeepsTheLastCharacter) {
    Reader r(L"[X]\r\n\tk = 1");
    const std::wstring header = r.Line();
    EXPECT_EQ(wxString(), r.Doc().ParseInconnu(header, nullptr, nullptr));
    ASSERT_EQ(1u, r.Doc().GetUnknownSections().GetCount());
    EXPECT_EQ(wxString(L"[X]\n\tk = 1"), r.Doc().GetUnknownSections()[0]);
}

TEST(VyrValueReaders, ParseInconnuOfAnEmptySectionKeepsItsSeparator) {
    Reader r(L"[X]\r\n[Y]\r\n\tk = 1\r\n");
    const std::wstring header = r.Line();
    EXPECT_EQ(wxString(L"[Y]"), r.Doc().ParseInconnu(header, nullptr, nullptr));
    ASSERT_EQ(1u, r.Doc().GetUnknownSections().GetCount());
    EXPECT_EQ(wxString(L"[X]\n"), r.Doc().GetUnknownSections()[0]);
}

TEST(VyrValueReaders, ParseInconnuWithoutTextKeepsNothing) {
    VyrBaseData doc(nullptr);
    bool stop = true;
    EXPECT_EQ(wxString(), doc.ParseInconnu(L"[X]", nullptr, &stop));
    EXPECT_FALSE(stop);
    EXPECT_EQ(0u, doc.GetUnknownSections().GetCount());
}
