#include <gtest/gtest.h>

#include <wx/file.h>

#include "FileTestSupport.h"

using namespace filetest;

namespace {

// What `write` appends through a writer over a fresh file, as bytes.
std::string Written(const std::function<void(VyrTextWriter&)>& write, bool* ok = nullptr) {
    TempDir dir;
    const std::string path = dir.File("w");
    {
        wxFile file(Wx(path), wxFile::write);
        VyrTextWriter out(file);
        write(out);
        const bool flushed = out.Flush();
        if (ok)
            *ok = flushed && out.IsOk();
    }
    return ReadBytes(path);
}

}  // namespace

TEST(VyrTextWriter, WritesUtf16LittleEndianWithSurrogatePairsAndLoneSurrogatesKept) {
    const std::string bytes = Written([](VyrTextWriter& out) {
        const wchar_t lone = static_cast<wchar_t>(0xD800);
        out.Text(L"A\u00e9\u20ac\U0001F600").Text(std::wstring_view(&lone, 1));
    });
    EXPECT_EQ(std::string("A\0\xE9\0\xAC\x20\x3D\xD8\x00\xDE\x00\xD8", 12), bytes);
}

TEST(VyrTextWriter, LinesFollowTheFilesGrammar) {
    const std::string bytes = Written([](VyrTextWriter& out) {
        out.Header(L"courbe")
            .LineInt(L"oid", -3)
            .LineG(L"xmin", 1234567.0)
            .LineFixed8(L"ech_min", 0.5)
            .LineRaw(L"style", L"1")
            .LineString(L"nom", L"a\"b")
            .LineEscaped(L"nom", L"a\"b\\c")
            .EndLine();
        out.Text(L"x").Hex(255).Text(L"|").Int(7).G(-0.0);
    });
    EXPECT_EQ(std::wstring(L"[courbe]\r\n\toid = -3\r\n\txmin = 1.23457e+06\r\n"
                           L"\tech_min = 0.50000000\r\n\tstyle = 1\r\n\tnom = \"a\"b\"\r\n"
                           L"\tnom = \"a\\\"b\\c\"\r\n\r\nxff|7-0"),
              FromUtf16(bytes, 0));
}

TEST(VyrTextWriter, TablesPutFourElementsOnALine) {
    for (int count : {0, 1, 3, 4, 5, 8, 9}) {
        const std::string bytes = Written([count](VyrTextWriter& out) {
            out.TableOpen(L"points", count)
                .TableElements(count, [](VyrTextWriter& w, int i) { w.Int(i); })
                .TableClose();
        });
        std::wstring expected = L"\tpoints = table " + std::to_wstring(count) + L" {\r\n\t";
        for (int i = 0; i < count; ++i) {
            expected += std::to_wstring(i);
            if (i > 0 && (i + 1) % 4 == 0)
                expected += L"\r\n";
            expected += L"\t";
        }
        expected += L"\r\n\t}\r\n";
        EXPECT_EQ(expected, FromUtf16(bytes, 0)) << count;
    }
}

TEST(VyrTextWriter, LargeOutputGoesOutInBlocksAndArrivesWhole) {
    const int count = 400000;
    bool ok = false;
    const std::string bytes = Written(
        [](VyrTextWriter& out) {
            for (int i = 0; i < count; ++i)
                out.Int(i).Text(L"\t");
        },
        &ok);
    EXPECT_TRUE(ok);
    const std::wstring text = FromUtf16(bytes, 0);
    EXPECT_EQ(0u, text.find(L"0\t1\t2\t"));
    EXPECT_EQ(text.size() - 7, text.rfind(L"399999\t"));
    size_t tabs = 0;
    for (wchar_t c : text)
        tabs += c == L'\t';
    EXPECT_EQ(static_cast<size_t>(count), tabs);
}

TEST(VyrTextWriter, AShortWriteIsRememberedAndNothingMoreIsWritten) {
    TempDir dir;
    const std::string path = dir.File("ro");
    WriteBytes(path, "");
    // A file opened for reading only: every write fails.
    wxLogNull quiet;
    wxFile file(Wx(path), wxFile::read);
    VyrTextWriter out(file);
    out.Text(L"abc");
    EXPECT_TRUE(out.IsOk());
    EXPECT_FALSE(out.Flush());
    EXPECT_FALSE(out.IsOk());
    out.Text(L"more");
    EXPECT_FALSE(out.Flush());
    EXPECT_EQ(std::string(), ReadBytes(path));
}
