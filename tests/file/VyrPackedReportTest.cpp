#include <gtest/gtest.h>

#include <random>
#include <string>

#include <zlib.h>

#include "file/VyrPackedReport.h"

namespace {

std::string Compress(const std::string& raw) {
    uLongf size = compressBound(raw.size());
    std::string out(size, '\0');
    const int status = compress(reinterpret_cast<Bytef*>(&out[0]), &size,
                                reinterpret_cast<const Bytef*>(raw.data()), raw.size());
    EXPECT_EQ(status, Z_OK);
    out.resize(size);
    return out;
}

// The application's packed form: "U", the length in eight digits, a separator, then each byte
// as two letters, low half first, in lines of 76 letters.
wxString PackStream(const std::string& stream, unsigned long declared) {
    std::string text = "U";
    char digits[16];
    snprintf(digits, sizeof digits, "%08lu", declared);
    text += digits;
    text += ' ';
    for (size_t i = 0; i < stream.size(); ++i) {
        const unsigned char b = static_cast<unsigned char>(stream[i]);
        text += static_cast<char>('A' + (b & 15));
        text += static_cast<char>('A' + (b >> 4));
        if ((i + 1) % 38 == 0)
            text += "\r\n";
    }
    return wxString::FromAscii(text.c_str());
}

wxString Pack(const std::string& raw) {
    return PackStream(Compress(raw), raw.size());
}

std::string RandomRtf(size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string s = "{\\rtf1\\ansi ";
    while (s.size() + 1 < size)
        s += static_cast<char>('a' + random() % 26);
    s += '}';
    s.resize(size);
    return s;
}

}  // namespace

TEST(VyrPackedReport, SmallReportUnpacksToRtfFromFirstBrace) {
    const std::string raw = "header junk {\\rtf1 Hello \"world\"}";
    EXPECT_EQ(VyrRtfFromPackedReport(Pack(raw)), wxString("{\\rtf1 Hello \"world\"}"));
}

TEST(VyrPackedReport, StreamsOfSeveralSizesUpToTenMegabytesRoundTrip) {
    for (size_t size :
         {size_t(2), size_t(1000), size_t(100000), size_t(1) << 20, size_t(10) << 20}) {
        const std::string raw = RandomRtf(size, static_cast<unsigned>(size));
        std::string bytes;
        ASSERT_TRUE(VyrUnpackReportBytes(Pack(raw), &bytes)) << size;
        EXPECT_EQ(bytes, raw) << size;
    }
    const std::string raw = RandomRtf(1000, 7);
    EXPECT_EQ(VyrRtfFromPackedReport(Pack(raw)), wxString::FromAscii(raw.c_str()));
}

TEST(VyrPackedReport, TextWithoutLeadingUYieldsNothing) {
    const wxString packed = Pack("{\\rtf1 x}");
    std::string bytes = "stale";
    EXPECT_FALSE(VyrUnpackReportBytes(packed.Mid(1), &bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_TRUE(VyrRtfFromPackedReport("").empty());
    EXPECT_TRUE(VyrRtfFromPackedReport("u00000009 AAAA").empty());
}

TEST(VyrPackedReport, DeclaredLengthZeroYieldsNothing) {
    const std::string stream = Compress("{\\rtf1 x}");
    EXPECT_TRUE(VyrRtfFromPackedReport(PackStream(stream, 0)).empty());
}

TEST(VyrPackedReport, DeclaredLengthShorterThanStreamGivesThePrefix) {
    const std::string raw = "{\\rtf1 abcdefghij}";
    std::string bytes;
    ASSERT_TRUE(VyrUnpackReportBytes(PackStream(Compress(raw), 8), &bytes));
    EXPECT_EQ(bytes, raw.substr(0, 8));
    EXPECT_EQ(VyrRtfFromPackedReport(PackStream(Compress(raw), 8)), wxString("{\\rtf1 a"));
}

TEST(VyrPackedReport, DeclaredLengthLongerThanCompleteStreamKeepsWhatItHolds) {
    const std::string raw = "{\\rtf1 abc}";
    std::string bytes;
    ASSERT_TRUE(VyrUnpackReportBytes(PackStream(Compress(raw), 500), &bytes));
    EXPECT_EQ(bytes, raw);
}

TEST(VyrPackedReport, LengthTheStreamCannotProduceIsRefusedBeforeAllocating) {
    const std::string stream = Compress("{\\rtf1 abc}");
    std::string bytes;
    EXPECT_FALSE(VyrUnpackReportBytes(PackStream(stream, 99999999), &bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(
        VyrUnpackReportBytes(PackStream(stream, kVyrMaxInflateRatio * stream.size() + 1), &bytes));
}

TEST(VyrPackedReport, HighlyCompressibleReportWithinTheRatioIsAccepted) {
    // Ten megabytes of one letter come close to deflate's best ratio and must still pass.
    std::string raw(size_t(10) << 20, 'a');
    raw[0] = '{';
    const std::string stream = Compress(raw);
    EXPECT_GT(raw.size() / stream.size(), 900u);
    std::string bytes;
    ASSERT_TRUE(VyrUnpackReportBytes(PackStream(stream, raw.size()), &bytes));
    EXPECT_EQ(bytes.size(), raw.size());
    EXPECT_EQ(bytes, raw);
}

TEST(VyrPackedReport, TruncatedStreamYieldsNothing) {
    const std::string raw = RandomRtf(5000, 3);
    const std::string stream = Compress(raw);
    std::string bytes;
    EXPECT_FALSE(
        VyrUnpackReportBytes(PackStream(stream.substr(0, stream.size() / 2), 5000), &bytes));
    EXPECT_TRUE(bytes.empty());
    // Cut just before the checksum: every byte is there but the end is not.
    EXPECT_FALSE(
        VyrUnpackReportBytes(PackStream(stream.substr(0, stream.size() - 4), 5000), &bytes));
}

TEST(VyrPackedReport, CorruptStreamYieldsNothing) {
    const std::string raw = RandomRtf(5000, 4);
    std::string stream = Compress(raw);
    std::string header = stream;
    header[0] = static_cast<char>(header[0] ^ 0x55);
    std::string bytes;
    EXPECT_FALSE(VyrUnpackReportBytes(PackStream(header, 5000), &bytes));
    std::string checksum = stream;
    checksum[checksum.size() - 1] = static_cast<char>(checksum.back() ^ 1);
    EXPECT_FALSE(VyrUnpackReportBytes(PackStream(checksum, 5000), &bytes));
    std::string middle = stream;
    middle[middle.size() / 2] = static_cast<char>(middle[middle.size() / 2] ^ 0x10);
    EXPECT_FALSE(VyrUnpackReportBytes(PackStream(middle, 5000), &bytes));
}

TEST(VyrPackedReport, LettersOutsideAToPYieldNothing) {
    wxString packed = Pack("{\\rtf1 abc}");
    packed[12] = 'Q';
    EXPECT_TRUE(VyrRtfFromPackedReport(packed).empty());
    packed[12] = 'a';
    EXPECT_TRUE(VyrRtfFromPackedReport(packed).empty());
}

TEST(VyrPackedReport, WhiteSpaceBetweenLettersIsDropped) {
    const wxString packed = Pack("{\\rtf1 spaced}");
    wxString spaced = packed.Left(10);
    for (size_t i = 10; i < packed.length(); ++i) {
        spaced += packed[i];
        spaced += (i % 3 == 0) ? wxString("\t") : wxString(" \r\n ");
    }
    EXPECT_EQ(VyrRtfFromPackedReport(spaced), wxString("{\\rtf1 spaced}"));
}

TEST(VyrPackedReport, TextEndsAtFirstZeroByteAndNeedsABrace) {
    EXPECT_EQ(VyrRtfFromPackedReport(Pack(std::string("{\\rtf1 a}\0tail", 14))),
              wxString("{\\rtf1 a}"));
    EXPECT_TRUE(VyrRtfFromPackedReport(Pack("no brace here")).empty());
    EXPECT_TRUE(VyrRtfFromPackedReport(Pack(std::string("x\0{\\rtf1}", 9))).empty());
}

TEST(VyrPackedReport, EightBitTextIsConvertedToCharacters) {
    // In the C locale of the tests the local set cannot convert 0xE9; ISO-8859-1 takes over.
    const wxString rtf = VyrRtfFromPackedReport(Pack("{\\rtf1 caf\xe9}"));
    EXPECT_EQ(rtf, wxString(L"{\\rtf1 caf\u00e9}"));
}

TEST(VyrPackedReport, BlanksBeforeTheDeclaredLengthAreSkippedAndNoBufferMeansNothing) {
    const std::string rtf = "{\\rtf1 blank}";
    wxString packed = Pack(rtf);
    // "U" then the eight characters of the length, leading zeros turned into blanks.
    for (size_t i = 1; i <= 8 && packed[i] == '0'; ++i)
        packed[i] = ' ';
    std::string bytes;
    EXPECT_TRUE(VyrUnpackReportBytes(packed, &bytes));
    EXPECT_EQ(rtf, bytes);
    EXPECT_FALSE(VyrUnpackReportBytes(packed, nullptr));
}
