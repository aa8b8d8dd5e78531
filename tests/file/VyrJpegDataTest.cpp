#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include <wx/filename.h>

#include "file/VyrJpegData.h"

namespace {

wxImage Gradient(int w, int h) {
    wxImage image(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.SetRGB(x, y, static_cast<unsigned char>(x * 255 / w),
                         static_cast<unsigned char>(y * 255 / h), 128);
    return image;
}

bool HaveTool(const char* tool) {
    return std::system((std::string("command -v ") + tool + " >/dev/null 2>&1").c_str()) == 0;
}

std::string ReadFile(const wxString& path) {
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

void WriteFile(const wxString& path, const std::string& bytes) {
    FILE* f = fopen(path.utf8_str(), "wb");
    ASSERT_NE(f, nullptr);
    fwrite(bytes.data(), 1, bytes.size(), f);
    fclose(f);
}

const unsigned char* U(const std::string& s) {
    return reinterpret_cast<const unsigned char*>(s.data());
}

// Offset of the frame header's height field in a baseline JPEG made by the toolkit.
size_t FrameSizeOffset(const std::string& jpeg) {
    for (size_t i = 2; i + 9 < jpeg.size(); ++i)
        if (static_cast<unsigned char>(jpeg[i]) == 0xFF &&
            (static_cast<unsigned char>(jpeg[i + 1]) == 0xC0 ||
             static_cast<unsigned char>(jpeg[i + 1]) == 0xC2))
            return i + 5;
    return std::string::npos;
}

}  // namespace

TEST(VyrJpegData, EncodedPictureIsACompleteJpegOfItsSize) {
    const std::string jpeg = VyrEncodeJpeg(Gradient(40, 30));
    ASSERT_GT(jpeg.size(), 100u);
    int w = 0, h = 0;
    EXPECT_TRUE(VyrCheckJpeg(U(jpeg), jpeg.size(), &w, &h));
    EXPECT_EQ(w, 40);
    EXPECT_EQ(h, 30);
    const wxImage back = VyrDecodeJpeg(U(jpeg), jpeg.size());
    ASSERT_TRUE(back.IsOk());
    EXPECT_EQ(back.GetWidth(), 40);
    EXPECT_EQ(back.GetHeight(), 30);
    EXPECT_NEAR(back.GetRed(39, 0), 248, 12);
    EXPECT_NEAR(back.GetGreen(0, 29), 246, 12);
}

TEST(VyrJpegData, InvalidPictureEncodesToNothing) {
    EXPECT_TRUE(VyrEncodeJpeg(wxImage()).empty());
    EXPECT_TRUE(VyrImageToBase64(wxImage()).empty());
}

TEST(VyrJpegData, Base64TextHasLinesOf76AndDecodesBack) {
    const wxString text = VyrImageToBase64(Gradient(64, 48));
    ASSERT_FALSE(text.empty());
    const size_t firstBreak = text.find("\r\n");
    EXPECT_EQ(firstBreak, 76u);
    const wxImage back = VyrImageFromBase64(text);
    ASSERT_TRUE(back.IsOk());
    EXPECT_EQ(back.GetWidth(), 64);
    EXPECT_EQ(back.GetHeight(), 48);
}

TEST(VyrJpegData, PictureWrittenByTheLibraryDecodesWithDjpeg) {
    if (!HaveTool("djpeg"))
        GTEST_SKIP() << "djpeg not installed";
    const wxString jpegPath = wxFileName::CreateTempFileName("vyrjpg");
    const wxString ppmPath = wxFileName::CreateTempFileName("vyrppm");
    WriteFile(jpegPath, VyrEncodeJpeg(Gradient(33, 17)));
    const std::string command =
        "djpeg -pnm '" + jpegPath.ToStdString() + "' > '" + ppmPath.ToStdString() + "' 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    const std::string ppm = ReadFile(ppmPath);
    EXPECT_EQ(ppm.substr(0, 9), "P6\n33 17\n");
    EXPECT_EQ(ppm.size(), 9u + 4u + 33u * 17u * 3u);  // "255\n" then the pixels
    wxRemoveFile(jpegPath);
    wxRemoveFile(ppmPath);
}

TEST(VyrJpegData, JpegMadeByCjpegDecodesBaselineAndProgressive) {
    if (!HaveTool("cjpeg"))
        GTEST_SKIP() << "cjpeg not installed";
    const wxString ppmPath = wxFileName::CreateTempFileName("vyrppm");
    const wxString jpegPath = wxFileName::CreateTempFileName("vyrjpg");
    std::string ppm = "P6\n21 13\n255\n";
    for (int i = 0; i < 21 * 13; ++i)
        ppm += std::string{char(i % 21 * 12), char(i / 21 * 19), char(200)};
    WriteFile(ppmPath, ppm);
    for (const char* options : {"", "-progressive", "-grayscale -restart 1"}) {
        const std::string command = std::string("cjpeg ") + options + " '" + ppmPath.ToStdString() +
                                    "' > '" + jpegPath.ToStdString() + "'";
        ASSERT_EQ(std::system(command.c_str()), 0) << options;
        const std::string jpeg = ReadFile(jpegPath);
        int w = 0, h = 0;
        EXPECT_TRUE(VyrCheckJpeg(U(jpeg), jpeg.size(), &w, &h)) << options;
        EXPECT_EQ(w, 21);
        EXPECT_EQ(h, 13);
        const wxImage image = VyrDecodeJpeg(U(jpeg), jpeg.size());
        ASSERT_TRUE(image.IsOk()) << options;
        EXPECT_EQ(image.GetWidth(), 21);
    }
    wxRemoveFile(ppmPath);
    wxRemoveFile(jpegPath);
}

TEST(VyrJpegData, PictureDeclaringMoreThan64MegapixelsIsRefused) {
    std::string jpeg = VyrEncodeJpeg(Gradient(16, 16));
    const size_t at = FrameSizeOffset(jpeg);
    ASSERT_NE(at, std::string::npos);
    // 10000 x 10000 = 100 megapixels.
    jpeg[at] = char(0x27);
    jpeg[at + 1] = char(0x10);
    jpeg[at + 2] = char(0x27);
    jpeg[at + 3] = char(0x10);
    EXPECT_FALSE(VyrCheckJpeg(U(jpeg), jpeg.size(), nullptr, nullptr));
    EXPECT_FALSE(VyrDecodeJpeg(U(jpeg), jpeg.size()).IsOk());
    // 8000 x 8000 = 64 megapixels exactly is still accepted by the check.
    jpeg[at] = char(0x1F);
    jpeg[at + 1] = char(0x40);
    jpeg[at + 2] = char(0x1F);
    jpeg[at + 3] = char(0x40);
    EXPECT_TRUE(VyrCheckJpeg(U(jpeg), jpeg.size(), nullptr, nullptr));
    // An empty frame is refused too.
    jpeg[at] = 0;
    jpeg[at + 1] = 0;
    EXPECT_FALSE(VyrCheckJpeg(U(jpeg), jpeg.size(), nullptr, nullptr));
}

TEST(VyrJpegData, TruncatedJpegIsRefused) {
    const std::string jpeg = VyrEncodeJpeg(Gradient(24, 24));
    for (size_t cut : {jpeg.size() - 1, jpeg.size() - 2, jpeg.size() / 2, size_t(3)}) {
        const std::string part = jpeg.substr(0, cut);
        EXPECT_FALSE(VyrCheckJpeg(U(part), part.size(), nullptr, nullptr)) << cut;
        EXPECT_FALSE(VyrDecodeJpeg(U(part), part.size()).IsOk()) << cut;
    }
}

TEST(VyrJpegData, BytesThatAreNotAJpegAreRefused) {
    EXPECT_FALSE(VyrDecodeJpeg(nullptr, 0).IsOk());
    const std::string text = "not a picture at all";
    EXPECT_FALSE(VyrDecodeJpeg(U(text), text.size()).IsOk());
    const std::string header = "\xFF\xD8\xFF\xD9";
    EXPECT_FALSE(VyrCheckJpeg(U(header), header.size(), nullptr, nullptr));
    // A segment length running past the end.
    const std::string overlong =
        "\xFF\xD8\xFF\xE0\x7F\xFF"
        "abc\xFF\xD9";
    EXPECT_FALSE(VyrCheckJpeg(U(overlong), overlong.size(), nullptr, nullptr));
}

TEST(VyrJpegData, CorruptBase64GivesNoPicture) {
    EXPECT_FALSE(VyrImageFromBase64("").IsOk());
    EXPECT_FALSE(VyrImageFromBase64("!!!! ####").IsOk());
    EXPECT_FALSE(VyrImageFromBase64("SGVsbG8gd29ybGQ=").IsOk());
    wxString text = VyrImageToBase64(Gradient(20, 20));
    // Losing characters shifts every later byte: the stream no longer holds its end marker.
    text.erase(100, 3);
    EXPECT_FALSE(VyrImageFromBase64(text).IsOk());
}

TEST(VyrJpegData, CorruptEntropyDataStillDecodesToAPictureOfItsSize) {
    std::string jpeg = VyrEncodeJpeg(Gradient(32, 32));
    // Bytes inside the scan, never turned into or taken from a marker: the structure stays
    // whole and the decoder draws something of the declared size.
    for (size_t i = jpeg.size() - 60; i < jpeg.size() - 20; i += 3) {
        const unsigned char old = static_cast<unsigned char>(jpeg[i]);
        if (old == 0xFF || static_cast<unsigned char>(jpeg[i - 1]) == 0xFF)
            continue;
        const unsigned char flipped = old ^ 0x5A;
        jpeg[i] = char(flipped == 0xFF ? 0x00 : flipped);
    }
    ASSERT_TRUE(VyrCheckJpeg(U(jpeg), jpeg.size(), nullptr, nullptr));
    const wxImage image = VyrDecodeJpeg(U(jpeg), jpeg.size());
    ASSERT_TRUE(image.IsOk());
    EXPECT_EQ(image.GetWidth(), 32);
    EXPECT_EQ(image.GetHeight(), 32);
}

// Each way a stream can break the JPEG structure is refused by the check, before the decoder
// sees it; the structures it must let through (fill bytes, restart and TEM markers) pass.
TEST(VyrJpegData, EveryBrokenStructureIsRefusedByTheCheck) {
    const std::string soi = "\xFF\xD8";
    const std::string eoi = "\xFF\xD9";
    // Frame header of 16 x 16, one component; scan header of one component.
    const std::string sof = std::string("\xFF\xC0\x00\x0B\x08\x00\x10\x00\x10\x01\x01\x11\x00", 13);
    const std::string sos = std::string("\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00", 10);
    const std::string data = "\x12\x34\xFF\x00\x56";
    const std::string good = soi + sof + sos + data + eoi;
    int width = 0;
    int height = 0;
    ASSERT_TRUE(VyrCheckJpeg(U(good), good.size(), &width, &height));
    EXPECT_EQ(16, width);
    EXPECT_EQ(16, height);
    const struct {
        const char* what;
        std::string bytes;
        bool accepted;
    } cases[] = {
        {"fill bytes before a marker", soi + "\xFF\xFF" + sof + sos + data + eoi, true},
        {"a TEM and a restart marker", soi + "\xFF\x01\xFF\xD0" + sof + sos + data + eoi, true},
        {"a restart marker inside the scan", soi + sof + sos + "\x12\xFF\xD3\x34" + eoi, true},
        {"bytes where a marker must be", soi + "x" + sof + sos + data + eoi, false},
        {"fill bytes up to the end", soi + "\xFF\xFF\xFF", false},
        {"a second start marker", soi + "\xFF\xD8" + sof + sos + data + eoi, false},
        {"a stuffed zero where a marker must be", soi + std::string("\xFF\x00", 2) + eoi, false},
        {"a segment length cut off", soi + "\xFF\xE0\x00", false},
        {"a segment length below 2", soi + std::string("\xFF\xE0\x00\x01", 4) + eoi, false},
        {"a frame header too short",
         soi + std::string("\xFF\xC0\x00\x06\x08\x00\x10\x00", 8) + sos + data + eoi, false},
        {"two frame headers", soi + sof + sof + sos + data + eoi, false},
        {"a scan before any frame", soi + sos + data + eoi, false},
        {"a scan running to the end", soi + sof + sos + data, false},
        {"an end marker without a frame", soi + eoi, false},
        {"no end marker after the segments", soi + sof, false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.accepted, VyrCheckJpeg(U(c.bytes), c.bytes.size(), nullptr, nullptr)) << c.what;
}

TEST(VyrJpegData, AStreamThatPassesTheCheckButCannotBeDecodedGivesNoPicture) {
    // Well formed markers around a scan of nothing that makes sense: no Huffman tables.
    const std::string bogus =
        std::string("\xFF\xD8\xFF\xC0\x00\x0B\x08\x00\x10\x00\x10\x01\x01\x11\x00", 15) +
        std::string("\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00", 10) + "\x12\x34\xFF\xD9";
    ASSERT_TRUE(VyrCheckJpeg(U(bogus), bogus.size(), nullptr, nullptr));
    EXPECT_FALSE(VyrDecodeJpeg(U(bogus), bogus.size()).IsOk());
}
